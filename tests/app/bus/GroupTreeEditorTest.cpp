#include "app/bus/GroupTreeEditor.h"
#include "app/bus/GroupTreeItems.h"
#include "app/support/FormStage.h"
#include "app/support/TreeLines.h"
#include "app/support/WidgetChecks.h"

#include <chrono>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {
namespace {

using test::find;
using test::press;

/// Families with children: the smallest group that has two kinds of rows.
class Families : public GroupTreeModel {
  public:
    struct Family {
        std::string name;
        std::vector<std::string> children;
    };

    static constexpr GroupTreeKind kRoot{
        .icon = "folder", .add = "Add New Family", .pastes = "family"};
    static constexpr GroupTreeKind kFamily{.icon = "message",
                                           .add = "Add New Child",
                                           .edit = "Edit This Family",
                                           .remove = "Delete This Family",
                                           .clip = "family",
                                           .pastes = "child"};
    static constexpr GroupTreeKind kChild{.icon = "measurement",
                                          .edit = "Edit This Child",
                                          .remove = "Delete This Child",
                                          .clip = "child"};

    [[nodiscard]] GroupTreeRow row(const TreePath& at) const override {
        ++asked;
        if (at.empty()) {
            return {&kRoot, "Families", families.size()};
        }
        const auto& family = families[at[0]];
        return at.size() == 1 ? GroupTreeRow{&kFamily, family.name, family.children.size()}
                              : GroupTreeRow{&kChild, family.children[at[1]], 0};
    }
    bool add(const TreePath& owner, QWidget* /*window*/) override {
        owner.empty() ? (void)families.push_back({entered, {}})
                      : (void)families[owner[0]].children.push_back(entered);
        return accepted;
    }
    bool edit(const TreePath& at, QWidget* /*window*/) override {
        (at.size() == 1 ? families[at[0]].name : families[at[0]].children[at[1]]) = entered;
        return accepted;
    }
    bool remove(const TreePath& at) override {
        if (!accepted) {
            return false;
        }
        const auto number = static_cast<std::ptrdiff_t>(at.back());
        if (at.size() == 1) {
            families.erase(families.begin() + number);
        } else {
            families[at[0]].children.erase(families[at[0]].children.begin() + number);
        }
        return true;
    }
    [[nodiscard]] TableClip copy(const TreePath& at) const override {
        TableClip clip{.rows = {{row(at).label}}, .own = {{row(at).label}}};
        if (at.size() == 1) {
            clip.own.push_back(families[at[0]].children);
        }
        return clip;
    }
    bool paste(const TreePath& owner, const TableClip& clip) override {
        if (owner.empty()) {
            families.push_back({clip.own[0][0], clip.own[1]});
        } else {
            families[owner[0]].children.push_back(clip.own[0][0]);
        }
        return true;
    }
    [[nodiscard]] std::vector<GroupTreeEntry> entries(const TreePath& at) override {
        if (at.size() != 1) {
            return {};
        }
        return {{"Marry", "edit", [this, at](QWidget*) {
                     families[at[0]].name += " & Co";
                     return true;
                 }}};
    }
    [[nodiscard]] GroupTreeState state() const override { return stateOf(families, 100); }
    void restore(const GroupTreeState& state) override { restoreTo(families, state); }

    std::vector<Family> families{{"Adams", {"Ann", "Bob"}}, {"Brown", {"Cid"}}, {"Clark", {}}};
    std::string entered = "New";
    bool accepted = true;
    mutable int asked = 0;
};

class GroupTreeEditorTest : public testing::Test {
  protected:
    GroupTreeEditorTest() { open(); }
    void open() {
        window = std::make_unique<QWidget>();
        editor = new GroupTreeEditor(stage.form, model, "families", QStringLiteral("Families"));
        (new QVBoxLayout(window.get()))->addWidget(editor);
        QObject::connect(editor, &GroupTreeEditor::changed, [this] { ++changes; });
        window->show();
        window->activateWindow();
        editor->tree()->setFocus();
        QApplication::processEvents();
    }
    void key(Qt::Key each, Qt::KeyboardModifiers with = {}) {
        editor->tree()->setFocus();
        QTest::keyClick(editor->tree(), each, with);
    }
    std::string note() { return toBytes(find<QLabel>(*editor, "note")->text()); }
    std::vector<std::string> lines() { return test::openLines(*editor->tree()); }
    std::vector<std::string> menuTexts() {
        QMenu menu;
        editor->fillMenu(menu);
        std::vector<std::string> texts;
        for (const auto* action : menu.actions()) {
            if (!action->isSeparator()) {
                texts.push_back(toBytes(action->text()) + (action->isEnabled() ? "" : " -"));
            }
        }
        return texts;
    }
    void choose(const char* text) {
        QMenu menu;
        editor->fillMenu(menu);
        for (auto* action : menu.actions()) {
            if (action->text() == QLatin1String(text)) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no " << text;
    }

    test::FormStage stage;
    Families model;
    std::unique_ptr<QWidget> window;
    GroupTreeEditor* editor = nullptr;
    int changes = 0;
};

using Lines = std::vector<std::string>;

TEST_F(GroupTreeEditorTest, OpensWithTheFirstLevelAndTheRootSelected) {
    EXPECT_EQ(lines(), (Lines{"Families", " Adams", " Brown", " Clark"}));
    EXPECT_EQ(editor->current(), TreePath{});
    EXPECT_TRUE(test::checkWindow(*window).empty());
}

TEST_F(GroupTreeEditorTest, InsertAddsToTheRowOrToTheOneAroundIt) {
    model.entered = "Davis";
    key(Qt::Key_Insert);
    EXPECT_EQ(lines(), (Lines{"Families", " Adams", " Brown", " Clark", " Davis"}));
    EXPECT_EQ(editor->current(), TreePath{3});
    editor->select({1, 0});
    model.entered = "Dan";
    key(Qt::Key_Insert);
    EXPECT_EQ(editor->current(), (TreePath{1, 1}));
    EXPECT_EQ(model.families[1].children, (Lines{"Cid", "Dan"}));
    EXPECT_EQ(changes, 2);
}

TEST_F(GroupTreeEditorTest, EnterF2AndADoubleClickOpenTheForm) {
    editor->select({0});
    model.entered = "A";
    key(Qt::Key_Return);
    EXPECT_EQ(lines()[1], " A");
    model.entered = "B";
    key(Qt::Key_F2);
    EXPECT_EQ(lines()[1], " B");
    model.entered = "C";
    auto* const tree = editor->tree();
    const auto place = tree->visualRect(tree->currentIndex()).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(lines()[1], " C");
    editor->select({});
    key(Qt::Key_Return);
    EXPECT_EQ(lines(), Lines{"Families"}) << "a row without a form closes and opens";
}

TEST_F(GroupTreeEditorTest, AFormLeftWithCancelChangesNothingWhateverWasDoneInIt) {
    model.accepted = false;
    editor->select({0});
    for (const auto each : {Qt::Key_Insert, Qt::Key_F2, Qt::Key_Delete}) {
        key(each);
    }
    EXPECT_EQ(model.families.size(), 3U);
    EXPECT_EQ(model.families[0].children, (Lines{"Ann", "Bob"}));
    EXPECT_EQ(model.families[0].name, "Adams");
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(find<QPushButton>(*editor, "undoButton")->isEnabled());
}

TEST_F(GroupTreeEditorTest, DeleteSelectsTheNextRowAndBranchesStayOpen) {
    editor->tree()->expand(
        editor->tree()->model()->index(1, 0, editor->tree()->model()->index(0, 0)));
    editor->select({0});
    key(Qt::Key_Delete);
    EXPECT_EQ(lines(), (Lines{"Families", " Brown", "  Cid", " Clark"}));
    EXPECT_EQ(editor->current(), TreePath{0});
    editor->select({0, 0});
    press(*editor, "deleteButton");
    EXPECT_EQ(editor->current(), TreePath{0}) << "of an empty branch the row around it";
}

TEST_F(GroupTreeEditorTest, EachStepIsUndoneAndDoneAgainByItsName) {
    editor->tree()->expand(
        editor->tree()->model()->index(1, 0, editor->tree()->model()->index(0, 0)));
    editor->select({0});
    key(Qt::Key_Delete);
    model.entered = "Z";
    key(Qt::Key_F2);
    EXPECT_EQ(find<QPushButton>(*editor, "undoButton")->toolTip(), u"Undo Edit This Family");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(note(), "Undone: Edit This Family");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(lines(), (Lines{"Families", " Adams", " Brown", "  Cid", " Clark"}));
    EXPECT_EQ(editor->current(), TreePath{0});
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(lines().size(), 5U) << "there is no more to undo";
    key(Qt::Key_Y, Qt::ControlModifier);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(lines(), (Lines{"Families", " Z", "  Cid", " Clark"}));
    EXPECT_EQ(note(), "Done again: Edit This Family");
    press(*editor, "undoButton");
    model.entered = "Y";
    key(Qt::Key_F2);
    EXPECT_FALSE(find<QPushButton>(*editor, "redoButton")->isEnabled());
}

TEST_F(GroupTreeEditorTest, CopyAndPasteTakeARowWithAllInItToWhereItsKindBelongs) {
    editor->select({0});
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Adams\n");
    editor->select({1, 0});
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(model.families.size(), 4U);
    EXPECT_EQ(model.families[3].children, (Lines{"Ann", "Bob"}));
    EXPECT_EQ(editor->current(), TreePath{3});
    editor->select({0, 0});
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(model.families[0].children, Lines{"Bob"});
    editor->select({2});
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(model.families[2].children, Lines{"Ann"});
}

TEST_F(GroupTreeEditorTest, PasteSaysWhenTheClipboardHasNothingForThisTree) {
    QGuiApplication::clipboard()->setText(QStringLiteral("text\n"));
    editor->select({1});
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(note(), "There is nothing in the clipboard that can be put here.");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(menuTexts()[6], "Paste -");
}

TEST_F(GroupTreeEditorTest, TheMenuHasTheEntriesOfTheKind) {
    QGuiApplication::clipboard()->clear();
    editor->select({0});
    EXPECT_EQ(menuTexts(), (Lines{"Add New Child", "Edit This Family", "Marry",
                                  "Delete This Family", "Cut", "Copy", "Paste -", "Undo -",
                                  "Redo -", "Expand Branch", "Expand Branch And Its Children",
                                  "Collapse Branch", "Collapse Branch And Its Children"}));
    choose("Marry");
    EXPECT_EQ(model.families[0].name, "Adams & Co");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(model.families[0].name, "Adams");
    editor->select({});
    EXPECT_EQ(menuTexts()[0], "Add New Family");
    EXPECT_EQ(menuTexts()[1], "Cut -");
}

TEST_F(GroupTreeEditorTest, BranchesOpenAndCloseWithAllInThem) {
    choose("Expand Branch And Its Children");
    EXPECT_EQ(lines(),
              (Lines{"Families", " Adams", "  Ann", "  Bob", " Brown", "  Cid", " Clark"}));
    choose("Collapse Branch");
    choose("Expand Branch");
    EXPECT_EQ(lines().size(), 7U);
    choose("Collapse Branch And Its Children");
    choose("Expand Branch");
    EXPECT_EQ(lines().size(), 4U);
}

TEST_F(GroupTreeEditorTest, SearchFindsClosedRowsForwardAndBackward) {
    key(Qt::Key_F, Qt::ControlModifier);
    auto* const field = find<QLineEdit>(*editor, "find");
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("B"));
    const auto next = [&](Qt::Key each, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(field, each, with);
        return editor->current();
    };
    EXPECT_EQ(next(Qt::Key_Return), (TreePath{0, 1}));
    EXPECT_EQ(next(Qt::Key_F3), (TreePath{1}));
    EXPECT_EQ(next(Qt::Key_F3), (TreePath{0, 1})) << "around the end";
    EXPECT_EQ(next(Qt::Key_F3, Qt::ShiftModifier), (TreePath{1}));
    field->setText(QStringLiteral("xyz"));
    EXPECT_EQ(next(Qt::Key_Return), (TreePath{1}));
    EXPECT_EQ(note(), "No line has 'xyz'.");
}

TEST_F(GroupTreeEditorTest, KeysOfTheFieldThatSearchesEditItsText) {
    auto* const field = find<QLineEdit>(*editor, "find");
    editor->select({0});
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("ab"));
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_Delete);
    EXPECT_EQ(field->text(), u"b");
    EXPECT_EQ(model.families.size(), 3U);
}

TEST_F(GroupTreeEditorTest, OpensAGroupOfManyRowsAtOnce) {
    model.families.assign(10000, {"Family", Lines(32, "child")});
    model.asked = 0;
    const auto start = std::chrono::steady_clock::now();
    open();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_LE(model.asked, 10010) << "no row of a closed branch is asked for";
}

TEST(GroupTreeUndo, DropsTheOldestStepsOverTheLimitButNeverTheLatest) {
    Families model;
    GroupTreeUndo undo(model, 250);
    for (const auto* const name : {"a", "b", "c"}) {
        auto before = model.state();
        model.families[0].name = name;
        undo.add({name, {}, false, std::move(before)});
    }
    EXPECT_EQ(undo.undo()->title, "c");
    EXPECT_EQ(undo.undo()->title, "b");
    EXPECT_FALSE(undo.undo().has_value());
    EXPECT_EQ(model.families[0].name, "a");
    GroupTreeUndo small(model, 1);
    small.add({"x", {}, false, model.state()});
    EXPECT_TRUE(small.canUndo());
}

TEST(TreePath, MovesWithARowThatWasRemovedInFrontOfIt) {
    EXPECT_EQ(movedPath({0, 2, 5}, {0, 1}, -1), (TreePath{0, 1, 5}));
    EXPECT_EQ(movedPath({0, 0, 5}, {0, 1}, -1), (TreePath{0, 0, 5}));
    EXPECT_EQ(movedPath({1, 2}, {0, 1}, -1), (TreePath{1, 2}));
    EXPECT_EQ(movedPath({0, 1}, {0, 1}, 1), (TreePath{0, 2}));
    EXPECT_EQ(movedPath({3}, {0, 1}, 1), (TreePath{3}));
}

}  // namespace
}  // namespace kavu
