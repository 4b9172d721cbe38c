#include "app/framework/TreeEditor.h"
#include "app/support/FormStage.h"

#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>

namespace kavu {

static bool operator==(const TreeNode& a, const TreeNode& b) {
    return a.kind == b.kind && a.name == b.name && a.id == b.id && a.children == b.children;
}

namespace {

using test::find;
using test::press;
using Path = std::vector<int>;

constexpr int kBus = 0;
constexpr int kMessage = 1;
constexpr int kWord = 2;

class TreeEditorTest : public testing::Test {
  protected:
    TreeEditorTest() {
        TreeSetup setup;
        setup.kinds = {{.name = "Bus", .icon = "bus", .holds = {kMessage}, .canDelete = false},
                       {.name = "Message",
                        .icon = "message",
                        .holds = {kWord},
                        .nameLimit = 8,
                        .uniqueAmongSiblings = true},
                       {.name = "Word", .icon = "measurement", .holds = {}, .canRename = false}};
        setup.topKinds = {kBus};
        editor = std::make_unique<TreeEditor>(stage.form, "editor", setup);
        editor->setNodes(nodes);
        QObject::connect(editor.get(), &TreeEditor::changed, [this] { ++changes; });
        editor->show();
        editor->activateWindow();
        QApplication::processEvents();
    }
    std::string name(const Path& path) {
        EXPECT_TRUE(editor->select(path));
        return editor->current().name;
    }

    test::FormStage stage;
    const std::vector<TreeNode> nodes = {
        {kBus, "A", 1, {{kMessage, "m1", 2, {{kWord, "w\xF6", 3, {}}}}, {kMessage, "m2", 4, {}}}},
        {kBus, "B", 5, {}}};
    std::unique_ptr<TreeEditor> editor;
    int changes = 0;
};

TEST_F(TreeEditorTest, ShowsNodesAndGivesThemBackWithTheirBytes) {
    EXPECT_EQ(editor->nodes(), nodes);
    EXPECT_EQ(editor->currentPath(), Path{0});
    EXPECT_EQ(name({0, 0, 0}), "w\xF6");
    EXPECT_FALSE(editor->select({0, 7}));
    EXPECT_TRUE(editor->select({}));
    EXPECT_EQ(editor->current().kind, -1);
    EXPECT_EQ(changes, 0);
}

TEST_F(TreeEditorTest, AddAsksForTheNameOfTheOneKindThatFits) {
    stage.ui.texts = {"m3"};
    press(*editor, "add");
    EXPECT_EQ(editor->currentPath(), (Path{0, 2}));
    EXPECT_EQ(editor->current().name, "m3");
    EXPECT_EQ(editor->current().kind, kMessage);
    EXPECT_EQ(stage.ui.textPrompts[0].prompt, "Message:");
    EXPECT_EQ(stage.ui.textPrompts[0].limit, 8u);
    EXPECT_EQ(changes, 1);
    stage.ui.texts = {std::nullopt};
    press(*editor, "add");
    EXPECT_EQ(changes, 1);
}

TEST_F(TreeEditorTest, AKindThatDoesNotFitIsNotAdded) {
    stage.ui.texts = {"x"};
    editor->addChild(kWord);
    editor->insertBefore(kMessage);
    EXPECT_EQ(editor->nodes(), nodes);
    EXPECT_TRUE(editor->select({0, 0, 0}));
    EXPECT_FALSE(find<QPushButton>(*editor, "add")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(*editor, "rename")->isEnabled());
}

TEST_F(TreeEditorTest, InsertPutsAnItemInFront) {
    editor->select({0, 1});
    stage.ui.texts = {"between"};
    editor->insertBefore(kMessage);
    EXPECT_EQ(name({0, 1}), "between");
    EXPECT_EQ(name({0, 2}), "m2");
}

TEST_F(TreeEditorTest, ANameThatASiblingHasIsAskedForAgain) {
    editor->select({0, 0});
    stage.ui.texts = {"M2", "m9"};
    QTest::keyClick(editor->tree(), Qt::Key_F2);
    EXPECT_EQ(editor->current().name, "m9");
    EXPECT_EQ(editor->current().id, 2);
    EXPECT_TRUE(stage.ui.hasText("Another 'Message' exists with this same value."));
    ASSERT_EQ(stage.ui.textPrompts.size(), 2u);
    EXPECT_EQ(stage.ui.textPrompts[0].initial, "m1");
}

TEST_F(TreeEditorTest, DeleteAsksAndTellsThatThereIsMoreBelow) {
    editor->select({0, 0});
    stage.ui.queued = {Button::No, Button::Yes};
    press(*editor, "delete");
    EXPECT_EQ(stage.ui.boxes[0].text, "Do you wish to delete 'm1' and everything below it?");
    EXPECT_EQ(changes, 0);
    QTest::keyClick(editor->tree(), Qt::Key_Delete);
    EXPECT_EQ(name({0, 0}), "m2");
    EXPECT_EQ(changes, 1);
    editor->select({1});
    EXPECT_FALSE(find<QPushButton>(*editor, "delete")->isEnabled());
    editor->deleteCurrent();
    EXPECT_EQ(name({1}), "B");
}

TEST_F(TreeEditorTest, ItemsMoveAmongTheirSiblingsWithWhatIsBelow) {
    editor->select({0, 0});
    EXPECT_FALSE(find<QPushButton>(*editor, "moveUp")->isEnabled());
    press(*editor, "moveDown");
    EXPECT_EQ(editor->currentPath(), (Path{0, 1}));
    EXPECT_EQ(name({0, 1, 0}), "w\xF6");
    editor->select({0, 1});
    QTest::keyClick(editor->tree(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(editor->nodes(), nodes);
    EXPECT_EQ(changes, 2);
}

TEST_F(TreeEditorTest, TheContextMenuOffersWhatIsAllowedAndWhatTheFormAdds) {
    editor->select({0, 0});
    editor->extendMenu = [](QMenu& menu) { menu.addAction(QStringLiteral("Own")); };
    QMenu menu;
    editor->fillMenu(menu);
    std::vector<std::string> texts;
    for (const auto* action : menu.actions()) {
        if (!action->isSeparator()) {
            texts.push_back(toBytes(action->text()) + (action->isEnabled() ? "" : " -"));
        }
    }
    EXPECT_EQ(texts,
              (std::vector<std::string>{"Add Word...", "Insert Message Before...", "Rename...",
                                        "Delete", "Move Up -", "Move Down", "Own"}));
}

TEST_F(TreeEditorTest, EnterAndADoubleClickOpenTheItem) {
    std::vector<std::string> opened;
    editor->opened = [&](const TreeNode& node) { opened.push_back(node.name); };
    editor->select({0, 1});
    QTest::keyClick(editor->tree(), Qt::Key_Return);
    auto* tree = editor->tree();
    const auto place = tree->visualItemRect(tree->topLevelItem(1)).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(opened, (std::vector<std::string>{"m2", "B"}));
}

}  // namespace
}  // namespace kavu
