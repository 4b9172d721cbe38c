#include "app/groups/GenericEditDialog.h"
#include "app/support/TestDoor.h"
#include "core/document/GroupFiles.h"
#include "support/TestContext.h"

#include <QGroupBox>
#include <QPlainTextEdit>

namespace kavu {
namespace {

using test::find;
using test::press;

class GenericEditDialogTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('H'), bytes); }
    [[nodiscard]] std::string file() { return t.read(groupFile('H')); }
    bool edit(const test::TestDoor::Driver& driver) {
        form.edition = t.document.version;
        door.next(driver);
        return editGroupText(form, t.context, 'H');
    }
    static QPlainTextEdit* field(QWidget& dialog) {
        return find<QPlainTextEdit>(dialog, "commands");
    }

    test::TestContext t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(GenericEditDialogTest, ShowsTheCommandsOfTheFileAndStoresTheEditedOnes) {
    put("H\\A:1;\r\nH\\COM:one\x14\x15two;\r\n");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("GenericEditDialog"));
        EXPECT_EQ(dialog.findChild<QGroupBox*>()->title(), QStringLiteral("Edit Existing"));
        auto* const commands = field(dialog);
        EXPECT_EQ(commands->toPlainText().trimmed(), QStringLiteral("H\\A:1;\nH\\COM:one\ntwo;"));
        commands->moveCursor(QTextCursor::Start);
        QTest::keyClicks(commands, QStringLiteral("H\\NEW:x;"));
        QTest::keyClick(commands, Qt::Key_Return);
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "H\\NEW:x;\r\nH\\A:1;\r\nH\\COM:one\x14\x15two;\r\n");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(GenericEditDialogTest, AMissingFileIsToldAndStartsEmpty) {
    EXPECT_TRUE(edit([](QDialog& dialog) {
        EXPECT_EQ(field(dialog)->toPlainText(), QString());
        QTest::keyClicks(field(dialog), QStringLiteral("H\\A:1;"));
        press(dialog, "ok");
    }));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 85);
    EXPECT_EQ(file(), "H\\A:1;\r\n");
}

TEST_F(GenericEditDialogTest, AnEmptyTextRemovesTheFile) {
    put("H\\A:1;\r\n");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        QTest::keyClick(field(dialog), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field(dialog), Qt::Key_Delete);
        press(dialog, "ok");
    }));
    EXPECT_FALSE(t.has(groupFile('H')));
}

TEST_F(GenericEditDialogTest, AFileOfZeroLengthIsEditedAsAnEmptyText) {
    put("");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QGroupBox*>()->title(), QStringLiteral("Edit Existing"));
        EXPECT_EQ(field(dialog)->toPlainText(), QString());
        QTest::keyClicks(field(dialog), QStringLiteral("H\\A:1;"));
        press(dialog, "ok");
    }));
    EXPECT_TRUE(t.ui.boxes.empty()) << "there is a file";
    EXPECT_EQ(file(), "H\\A:1;\r\n");
}

TEST_F(GenericEditDialogTest, LinesThatWereNotEditedKeepTheirBytes) {
    put("H\\A:gr\xFC\xDF;\r\nH\\B:2;\r\nH\\C:\xE4;\r\n");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        auto* const commands = field(dialog);
        auto cursor = commands->textCursor();
        cursor.movePosition(QTextCursor::NextBlock);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.movePosition(QTextCursor::PreviousCharacter);
        commands->setTextCursor(cursor);
        QTest::keyClicks(commands, QStringLiteral("00"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "H\\A:gr\xFC\xDF;\r\nH\\B:200;\r\nH\\C:\xE4;\r\n");
}

TEST_F(GenericEditDialogTest, AnUnfinishedCommandKeepsTheDialogOpen) {
    put("H\\A:1;\r\n");
    EXPECT_FALSE(edit([this](QDialog& dialog) {
        field(dialog)->moveCursor(QTextCursor::End);
        QTest::keyClicks(field(dialog), QStringLiteral("H\\B:2"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_NE(t.ui.boxes.back().text.find("H\\B:2"), std::string::npos);
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), "H\\A:1;\r\n");
    EXPECT_FALSE(t.document.changed);
}

TEST_F(GenericEditDialogTest, CommandsOfAnotherGroupAreAskedFor) {
    put("H\\A:1;\r\n");
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        field(dialog)->moveCursor(QTextCursor::End);
        QTest::keyClicks(field(dialog), QStringLiteral("P-1\\X:2;"));
        t.ui.queued = {Button::No, Button::Yes};
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(file(), "H\\A:1;\r\n");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "H\\A:1;\r\nP-1\\X:2;\r\n");
    EXPECT_EQ(t.ui.boxes.size(), 2U);
}

TEST_F(GenericEditDialogTest, CancelAsksOnlyAfterAChange) {
    put("H\\A:1;\r\n");
    EXPECT_FALSE(edit([](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_FALSE(edit([this](QDialog& dialog) {
        QTest::keyClicks(field(dialog), QStringLiteral("x"));
        t.ui.queued = {Button::No, Button::Yes};
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(t.ui.boxes.size(), 2U);
    EXPECT_EQ(file(), "H\\A:1;\r\n");
}

TEST_F(GenericEditDialogTest, TheVendorGroupNeedsItsEdition) {
    t.document.version = 2002;
    EXPECT_FALSE(editGroupText(form, t.context, 'V', "Src"));
    EXPECT_EQ(t.ui.boxes.back().id, 73);
    t.document.version = 2004;
    door.next([](QDialog& dialog) {
        EXPECT_NE(dialog.windowTitle().indexOf(QStringLiteral("Src")), -1);
        QTest::keyClicks(field(dialog), QStringLiteral("V-1\\VN:ACM;"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(editGroupText(form, t.context, 'V', "Src"));
    EXPECT_EQ(t.read(groupFile('V', 1)), "V-1\\ID:Src;\r\nV-1\\VN:ACM;\r\n");
}

TEST_F(GenericEditDialogTest, AVendorGroupMayDoWithoutTheNameOfTheVendor) {
    t.document.version = 2009;
    t.write(groupFile('V', 2), "V-2\\ID:Src;\r\nV-2\\X:1;\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(field(dialog)->toPlainText().trimmed(),
                  QStringLiteral("V-2\\ID:Src;\nV-2\\X:1;"));
        field(dialog)->moveCursor(QTextCursor::End);
        QTest::keyClicks(field(dialog), QStringLiteral("V-2\\Y:2;"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(editGroupText(form, t.context, 'V', "Src"));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.read(groupFile('V', 2)), "V-2\\ID:Src;\r\nV-2\\X:1;\r\nV-2\\Y:2;\r\n");
}

}  // namespace
}  // namespace kavu
