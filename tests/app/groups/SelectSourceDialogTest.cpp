#include "app/groups/SelectSourceDialog.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "support/SourceStage.h"

#include <QTreeView>

namespace kavu {
namespace {

using test::find;
using test::press;

class SelectSourceDialogTest : public ::testing::Test {
  protected:
    SelectSourceDialogTest() { t.open(test::threeSources()); }
    std::optional<SourceRow> select(char letter, const test::TestDoor::Driver& driver) {
        door.next(driver);
        return selectDataSource(form, t.parts, letter);
    }
    static QAbstractItemModel& rows(QDialog& dialog) {
        return *find<QTreeView>(dialog, "sources")->model();
    }

    test::SourceStage t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(SelectSourceDialogTest, EditGivesTheSelectedSource) {
    const auto chosen = select('T', [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Select Data Source"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(rows(dialog).rowCount(), 2);
        QTest::keyClick(find<QTreeView>(dialog, "sources"), Qt::Key_Down);
        press(dialog, "edit");
    });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->name, "Second");
    EXPECT_EQ(chosen->index, 2);
}

TEST_F(SelectSourceDialogTest, OnlySourcesOfTheGroupAreOffered) {
    const auto chosen = select('R', [](QDialog& dialog) {
        EXPECT_EQ(rows(dialog).rowCount(), 1);
        EXPECT_EQ(rows(dialog).index(0, 2).data().toString(), QStringLiteral("R-1"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->name, "Recorder");
}

TEST_F(SelectSourceDialogTest, CloseGivesNothing) {
    EXPECT_FALSE(select('T', [](QDialog& dialog) { press(dialog, "close"); }));
    EXPECT_FALSE(select('T', [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SelectSourceDialogTest, ANewSourceIsMadeFromATemplateAndSelected) {
    t.ui.otherwise = Button::Yes;
    t.ui.texts = {"New"};
    t.ui.choices = {0, 0, 0};  // template, RF, PCM
    const auto chosen = select('T', [this](QDialog& dialog) {
        press(dialog, "createNew");
        EXPECT_EQ(t.ui.listPrompts.at(0).second, (std::vector<std::string>{"Template", "Import"}));
        EXPECT_EQ(rows(dialog).rowCount(), 3);
        press(dialog, "edit");
    });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->name, "New");
    EXPECT_EQ(chosen->index, 3);
    EXPECT_TRUE(t.document.changed);
}

TEST_F(SelectSourceDialogTest, ANewSourceIsImported) {
    t.offerFile(t.otherFile("R-1\\ID:Alone;\n"));
    t.ui.choices = {1};
    t.ui.rows = {0};
    t.ui.queued = {Button::No, Button::No};
    const auto chosen = select('R', [](QDialog& dialog) {
        press(dialog, "createNew");
        EXPECT_EQ(rows(dialog).rowCount(), 2);
        press(dialog, "edit");
    });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->name, "Alone");
}

TEST_F(SelectSourceDialogTest, WithoutASourceThereIsNothingToEdit) {
    t.open("G\\106:09;\r\nG\\DSI\\N:0;\r\n");
    EXPECT_FALSE(select('T', [](QDialog& dialog) {
        EXPECT_FALSE(find<QAbstractButton>(dialog, "edit")->isEnabled());
        press(dialog, "close");
    }));
}

}  // namespace
}  // namespace kavu
