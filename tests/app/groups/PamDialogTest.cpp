#include "app/groups/GroupRows.h"
#include "app/groups/PamDialog.h"
#include "app/support/TestDoor.h"
#include "core/document/GroupFiles.h"
#include "support/TestContext.h"

#include <QComboBox>
#include <QLineEdit>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class PamDialogTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string file(int index = 1) { return t.read(groupFile('A', index)); }
    bool edit(const test::TestDoor::Driver& driver) {
        door.next(driver);
        return editPam(form, t.context);
    }
    static void choose(QWidget& dialog, const char* name, const char* text) {
        auto* const box = find<QComboBox>(dialog, name);
        const int index = box->findText(QString::fromLatin1(text));
        ASSERT_GE(index, 0) << text;
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    test::TestContext t{2009};
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(PamDialogTest, EveryFieldAndASubframeAreStored) {
    t.write(groupFile('A', 1), "A-1\\DLN:PAM 1;\r\n");
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("PAM Attributes - Data Link: PAM 1"));
        choose(dialog, "A1", "NR - 100% Duty Cycle");
        choose(dialog, "A2", "Inverted");
        choose(dialog, "A3", "OTHer");
        for (const auto& [name, text] : {std::pair{"A4", "0FFFH"},
                                         {"A5", "900"},
                                         {"A\\N", "45"},
                                         {"RC1", "1"},
                                         {"RC2", "23"},
                                         {"RC3", "45"},
                                         {"COM", "note"}}) {
            type(dialog, name, QString::fromLatin1(text));
        }
        door.next([](QDialog& row) {
            type(row, "SF1", QStringLiteral("7"));
            choose(row, "SF2", "STD - IRIG 106");
            type(row, "SF3", QStringLiteral("XX"));
            press(row, "ok");
        });
        press(*find<IdentifiedList>(dialog, "SF"), "add");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "A-1\\DLN:PAM 1;\r\nA-1\\A1:NR;\r\nA-1\\A2:I;\r\nA-1\\A3:OTH;\r\nA-1\\A4:0FFFH;\r\n"
              "A-1\\A5:900;\r\nA-1\\A\\N:45;\r\nA-1\\RC1:1;\r\nA-1\\RC2:23;\r\nA-1\\RC3:45;\r\n"
              "A-1\\SF\\N:1;\r\nA-1\\SF1-1:7;\r\nA-1\\SF2-1:STD;\r\nA-1\\SF3-1:XX;\r\n"
              "A-1\\COM:note;\r\n");
}

TEST_F(PamDialogTest, AFileWithoutPamStreamsSaysWhereToMakeOne) {
    EXPECT_FALSE(editPam(form, t.context));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_NE(t.ui.boxes[0].text.find("no PAM stream"), std::string::npos);
}

TEST_F(PamDialogTest, OneOfSeveralStreamsIsChosen) {
    t.write(groupFile('A', 1), "A-1\\DLN:One;\r\n");
    t.write(groupFile('A', 2), "A-2\\DLN:Two;\r\nA-2\\SF\\N:1;\r\nA-2\\SF2-1:QQ;\r\n");
    t.ui.rows = {-1};
    EXPECT_FALSE(editPam(form, t.context));
    t.ui.rows = {1};
    EXPECT_TRUE(edit([](QDialog& dialog) {
        type(dialog, "A5", QStringLiteral("10"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(2), "A-2\\DLN:Two;\r\nA-2\\A5:10;\r\nA-2\\SF\\N:1;\r\nA-2\\SF2-1:QQ;\r\n");
    EXPECT_EQ(file(1), "A-1\\DLN:One;\r\n");
}

TEST_F(PamDialogTest, CancelStoresNothing) {
    t.write(groupFile('A', 1), "A-1\\DLN:One;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_FALSE(edit([](QDialog& dialog) {
        type(dialog, "A5", QStringLiteral("10"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), "A-1\\DLN:One;\r\n");
}

}  // namespace
}  // namespace kavu
