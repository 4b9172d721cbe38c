#include "app/bus/MessageSheet.h"
#include "app/bus/StreamDataForms.h"
#include "app/bus/StreamDataStage.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;
using Lines = std::vector<std::string>;

constexpr const char* kMessageCommands =
    "TA:X1;NS\\N:2;SNA-1:S1;MDT-1:BINARY;MDL-1:FIXED;MES-1:16;MIDL-1:1;MLEN-1:64;"
    "DO-1:BIG ENDIAN;NMS\\N-1:1;MID-1-1:7;MNA-1-1:Temp;NFLDS\\N-1-1:1;FNUM-1-1-1:1;FPOS-1-1-1:8;"
    "FLEN-1-1-1:8;MN\\N-1-1:1;MN-1-1-1:M1;MN1-1-1-1:EV;MN2-1-1-1:L;MBFM-1-1-1:FLOAT;"
    "MFPF-1-1-1:IEEE_32;MDO-1-1-1:B;NML\\N-1-1-1:1;MFN-1-1-1-1:1;MBM-1-1-1-1:FW;MTO-1-1-1-1:MSB;"
    "MFP-1-1-1-1:1;SNA-2:S2;MDT-2:ascii;MDL-2:DELIMITED;MDEL-2:LF;NMS\\N-2:0;COM:a;";

/// The rows of the tree by their places.
const TreePath kStreamRow{0};
const TreePath kMessageRow{0, 0};
const TreePath kFieldsRow{0, 0, 0};
const TreePath kFieldRow{0, 0, 0, 0};
const TreePath kMeasurementsRow{0, 0, 1};
const TreePath kMeasurementRow{0, 0, 1, 0};
const TreePath kLocationRow{0, 0, 1, 0, 0};

class MessageSheetTest : public test::StreamDataStage {
  protected:
    MessageSheetTest() : StreamDataStage(2011) { putGroup(kMessageCommands); }
    bool edit(const test::TestDoor::Driver& driver) {
        door.next(driver);
        return editMessages(form, t.application, "Link");
    }
};

TEST_F(MessageSheetTest, ShowsTheTreeAndThePageOfTheRest) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        auto& sheet = dynamic_cast<MessageSheet&>(dialog);
        EXPECT_EQ(dialog.windowTitle(), u"Edit Message Attributes - Data Link: Link");
        ASSERT_EQ(sheet.pageCount(), 2);
        const Lines all{
            "Streams",
            " Stream:S1, Type:Binary, Layout:Fixed, Element Size:16, ID Location:1, Length:64, "
            "Delimiter:, Delimiter Length:, Field Delimiter:, Orientation:Big Endian",
            "  Message:7, Description:Temp",
            "   Fields",
            "    Number:1, Position:8, Length:8",
            "   Measurements",
            "    Name:M1, Parity:Even, Parity Transfer Order:Leads Word, Data Type:Float, Floating "
            "Point Format:IEEE 754 Single Precision, Orientation:Big Endian",
            "     Message Field Number:1, Bitmask:FW, Transfer Order:MSB, Fragment:1",
            " Stream:S2, Type:ascii, Layout:Delimited, Element Size:, ID Location:, Length:, "
            "Delimiter:LF, Delimiter Length:, Field Delimiter:, Orientation:"};
        EXPECT_EQ(lines(dialog), all);
        EXPECT_EQ(test::checkWindow(dialog), Lines{});
        sheet.openPage(1);
        EXPECT_EQ(find<QLineEdit>(dialog, "TA")->text(), u"X1");
        EXPECT_EQ(find<QPlainTextEdit>(dialog, "COM")->toPlainText(), u"a");
        EXPECT_EQ(test::checkWindow(dialog), Lines{});
        press(dialog, "ok");
    }));
    EXPECT_FALSE(canUndo()) << "nothing was edited, nothing is written";
}

TEST_F(MessageSheetTest, OpensThePageThatWasShownLast) {
    EXPECT_FALSE(edit([](QDialog& dialog) {
        dynamic_cast<MessageSheet&>(dialog).openPage(1);
        press(dialog, "cancel");
    }));
    auto& settings = t.application.context().settings;
    EXPECT_EQ(settings.profileInteger("PropSheet", "LastSMessagePage", 1), 2);
    EXPECT_FALSE(edit([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<MessageSheet&>(dialog).openedPage(), 1);
        press(dialog, "cancel");
    }));
}

TEST_F(MessageSheetTest, EachKindHasTheEntriesOfItsMenu) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        EXPECT_EQ(menuOf(dialog, {}), Lines{"Add New Stream"});
        EXPECT_EQ(menuOf(dialog, kStreamRow),
                  (Lines{"Add New Message", "Edit This Stream", "Delete This Stream"}));
        EXPECT_EQ(menuOf(dialog, kMessageRow), (Lines{"Edit This Message", "Delete This Message"}));
        EXPECT_EQ(menuOf(dialog, kFieldsRow), Lines{"Add New Message Field"});
        EXPECT_EQ(menuOf(dialog, kFieldRow),
                  (Lines{"Edit This Message Field", "Delete This Message Field"}));
        EXPECT_EQ(menuOf(dialog, kMeasurementsRow), Lines{"Add New Measurement"});
        EXPECT_EQ(menuOf(dialog, kMeasurementRow),
                  (Lines{"Add New Measurement Location", "Edit This Measurement",
                         "Delete This Measurement"}));
        EXPECT_EQ(menuOf(dialog, kLocationRow),
                  (Lines{"Edit This Measurement Location", "Delete This Measurement Location"}));
        press(dialog, "cancel");
    }));
}

TEST_F(MessageSheetTest, AMessageWithThreeMeasurementsIsAddedAndWrittenAsOneLevelOfTheHistory) {
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        door.next(fill({{"id", "8"}, {"name", "Pressure"}}));
        key(dialog, kStreamRow, Qt::Key_Insert);
        for (const auto* const name : {"P1", "P2", "P3"}) {
            door.next(fill({{"name", name}, {"dataType", "Unsigned"}, {"parity", "Odd"}}));
            key(dialog, {0, 1, 1}, Qt::Key_Insert);
        }
        door.next(fill({{"number", "2"}, {"bitmask", "FW"}, {"transferOrder", "LSB"}}));
        key(dialog, {0, 1, 1, 2}, Qt::Key_Insert);
        EXPECT_EQ(editorOf(dialog).current(), (TreePath{0, 1, 1, 2, 0}));
        press(dialog, "ok");
    }));
    ASSERT_EQ(door.titles.size(), 6U);
    EXPECT_EQ(door.titles[1], "Edit Message");
    EXPECT_EQ(door.titles[2], "Edit Measurement");
    EXPECT_EQ(door.titles[5], "Edit Measurement Location");
    for (const auto* const command :
         {"NMS\\N-1:2", "MID-1-2:8", "MNA-1-2:Pressure", "MN\\N-1-2:3", "MN-1-2-1:P1",
          "MN1-1-2-2:OD", "MN2-1-2-2:T", "MBFM-1-2-3:UNSIGNED", "MDO-1-2-1:B", "NML\\N-1-2-3:1",
          "MFN-1-2-3-1:2", "MTO-1-2-3-1:LSB", "MN-1-1-1:M1", "COM:a"}) {
        EXPECT_TRUE(has(command)) << command << "\n" << file();
    }
    ASSERT_TRUE(canUndo());
    const auto after = file();
    EXPECT_TRUE(t.application.context().history.undo(nullptr));
    EXPECT_EQ(file().find("P1"), std::string::npos);
    EXPECT_FALSE(canUndo()) << "all of it was one level";
    EXPECT_NE(file(), after);
}

TEST_F(MessageSheetTest, CancelLeavesTheGroupAsItWas) {
    const auto before = file();
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        key(dialog, kMessageRow, Qt::Key_Delete);
        EXPECT_EQ(t.ui.boxes.back().title, "Delete this Message");
        type(dialog, "TA", QStringLiteral("Y2"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), before);
    EXPECT_FALSE(canUndo());
}

TEST_F(MessageSheetTest, StepsThatWereUndoneLeaveNothingToWrite) {
    const auto before = file();
    t.ui.queued = {Button::Yes};
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        key(dialog, kMeasurementRow, Qt::Key_Delete);
        EXPECT_EQ(lines(dialog).size(), 7U);
        key(dialog, {}, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(lines(dialog).size(), 9U);
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), before);
    EXPECT_FALSE(canUndo());
}

TEST_F(MessageSheetTest, TheFormOfAStreamEnablesWhatItsLayoutAndTypeHave) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), u"Edit Message Stream");
            const auto enabled = [&] {
                std::string all;
                for (const auto* const name :
                     {"length", "delimiter", "delimiterLength", "fieldDelimiter", "orientation"}) {
                    all += find<QWidget>(dialog, name)->isEnabled() ? "+" : "-";
                }
                return all;
            };
            EXPECT_EQ(enabled(), "+---+");
            enter(dialog, {{"layout", "Delimited"}});
            EXPECT_EQ(enabled(), "-++++");
            enter(dialog, {{"dataType", "ASCII"}});
            EXPECT_EQ(enabled(), "-+++-");
            const auto* const orientation = find<QComboBox>(dialog, "orientation");
            EXPECT_EQ(orientation->itemText(0), u"Little Endian");
            EXPECT_EQ(orientation->itemText(1), u"Big Endian");
            press(dialog, "cancel");
        });
        t.ui.queued = {Button::Yes};
        key(sheet, kStreamRow, Qt::Key_F2);
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, AStreamShowsTheFirstEntryForAValueOfNoList) {
    putGroup(
        "NS\\N:2;SNA-1:S1;MDT-1:FOO;MDL-1:BAR;NMS\\N-1:0;SNA-2:S2;MDT-2:BINARY;DO-2:B;"
        "NMS\\N-2:0;");
    EXPECT_TRUE(edit([&](QDialog& sheet) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(find<QComboBox>(dialog, "dataType")->currentText(), u"Binary");
            EXPECT_EQ(find<QComboBox>(dialog, "layout")->currentText(), u"Fixed");
            EXPECT_EQ(find<QComboBox>(dialog, "orientation")->currentText(), u"Little Endian");
            press(dialog, "ok");
        });
        key(sheet, {0}, Qt::Key_F2);
        door.next([](QDialog& dialog) {
            EXPECT_EQ(find<QComboBox>(dialog, "orientation")->currentText(), u"Big Endian")
                << "the entry that begins with the value comes first";
            press(dialog, "cancel");
        });
        key(sheet, {1}, Qt::Key_F2);
        press(sheet, "ok");
    }));
    EXPECT_TRUE(has("MDT-1:BINARY"));
    EXPECT_TRUE(has("MDL-1:FIXED"));
    EXPECT_TRUE(has("DO-1:LITTLE ENDIAN"));
    EXPECT_TRUE(has("DO-2:B"));
}

TEST_F(MessageSheetTest, AFieldHasAPlaceOnlyInAFixedLayout) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), u"Edit Field");
            EXPECT_TRUE(find<QWidget>(dialog, "position")->isEnabled());
            press(dialog, "cancel");
        });
        key(sheet, kFieldRow, Qt::Key_F2);
        door.next(fill({{"layout", "Delimited"}}));
        key(sheet, kStreamRow, Qt::Key_F2);
        EXPECT_EQ(lines(sheet)[4], "    Number:1, Position:, Length:");
        door.next([](QDialog& dialog) {
            EXPECT_FALSE(find<QWidget>(dialog, "position")->isEnabled());
            EXPECT_FALSE(find<QWidget>(dialog, "length")->isEnabled());
            press(dialog, "cancel");
        });
        key(sheet, kFieldRow, Qt::Key_F2);
        t.ui.queued = {Button::Yes};
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, AMeasurementHasAFloatFormatAndAnOrientationWhereTheyApply) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        door.next([](QDialog& dialog) {
            EXPECT_TRUE(find<QWidget>(dialog, "floatingPointFormat")->isEnabled());
            EXPECT_TRUE(find<QWidget>(dialog, "orientation")->isEnabled());
            enter(dialog, {{"dataType", "Hex"}});
            EXPECT_FALSE(find<QWidget>(dialog, "floatingPointFormat")->isEnabled());
            press(dialog, "ok");
        });
        key(sheet, kMeasurementRow, Qt::Key_Return);
        EXPECT_EQ(lines(sheet)[6],
                  "    Name:M1, Parity:Even, Parity Transfer Order:Leads Word, Data Type:Hex, "
                  "Floating Point Format:, Orientation:Big Endian");
        door.next(fill({{"dataType", "ASCII"}}));
        key(sheet, kStreamRow, Qt::Key_F2);
        door.next([](QDialog& dialog) {
            EXPECT_FALSE(find<QWidget>(dialog, "orientation")->isEnabled());
            press(dialog, "cancel");
        });
        key(sheet, kMeasurementRow, Qt::Key_F2);
        t.ui.queued = {Button::Yes};
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, RefusesACommaAndASemicolonAndTheFormStaysOpen) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        door.next([this](QDialog& dialog) {
            enter(dialog, {{"name", "a,b"}});
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_TRUE(
                t.ui.hasText("You are not allowed to use a comma (,) as part of this "
                             "field. Please remove the comma."));
            enter(dialog, {{"name", "a;b"}});
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(t.ui.boxes.back().id, 402);
            t.ui.queued = {Button::Yes};
            press(dialog, "cancel");
        });
        key(sheet, kMessageRow, Qt::Key_F2);
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, RefusesTheNameThatAnotherStreamHas) {
    takeName("Taken");
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        door.next([this](QDialog& dialog) {
            enter(dialog, {{"name", "Taken"}});
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(t.ui.boxes.back().id, 455);
            t.ui.queued = {Button::Yes};
            press(dialog, "cancel");
        });
        key(sheet, kMeasurementRow, Qt::Key_F2);
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, CopiesMeasurementsAndMessagesBetweenStreamsAndDocuments) {
    EXPECT_TRUE(edit([&](QDialog& sheet) {
        key(sheet, kMessageRow, Qt::Key_C, Qt::ControlModifier);
        key(sheet, {1}, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editorOf(sheet).current(), (TreePath{1, 0}));
        key(sheet, kMeasurementRow, Qt::Key_C, Qt::ControlModifier);
        press(sheet, "ok");
    }));
    EXPECT_TRUE(has("MID-2-1:7"));
    EXPECT_TRUE(has("MN-2-1-1:M1"));
    EXPECT_TRUE(has("MFN-2-1-1-1:1"));
    // The clipboard outlives the document.
    putGroup("NS\\N:1;SNA-1:Z;NMS\\N-1:1;MID-1-1:1;NFLDS\\N-1-1:0;MN\\N-1-1:0;");
    EXPECT_TRUE(edit([&](QDialog& sheet) {
        key(sheet, {0, 0}, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editorOf(sheet).current(), (TreePath{0, 0, 1, 0}));
        press(sheet, "ok");
    }));
    EXPECT_TRUE(has("MN-1-1-1:M1"));
    EXPECT_TRUE(has("NML\\N-1-1-1:1"));
}

TEST_F(MessageSheetTest, ACopyThatAnotherStreamMayNotHaveIsRefusedAsAWhole) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        key(sheet, kMessageRow, Qt::Key_C, Qt::ControlModifier);
        takeName("M1");
        key(sheet, {1}, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(t.ui.boxes.back().id, 455);
        EXPECT_EQ(lines(sheet).size(), 9U);
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, AClipboardFromElsewhereThatIsNoRowIsRefused) {
    EXPECT_FALSE(edit([&](QDialog& sheet) {
        const std::vector<TableRows> bad{
            {},
            {{"0", "5002"}},
            {{"0", "5003"}},
            {{"0", "99"}},
            {{"1", "5002", "a", "b"}},
            {{"0", "5002", "a", "b"}, {"1", "5001", "", "", "", "", "", "", "", "", "", ""}},
            {{"0", "5002", "a", "b"}, {"2", "5004", "1", "2", "3"}},
            {{"0", "5002", "a", "b;c"}},
        };
        for (const auto& own : bad) {
            copyTable({.rows = {{"x"}}, .kind = "message", .own = own});
            key(sheet, {1}, Qt::Key_V, Qt::ControlModifier);
            EXPECT_EQ(lines(sheet).size(), 9U);
        }
        press(sheet, "cancel");
    }));
}

TEST_F(MessageSheetTest, CommandsThatNoPageReadsAreAskedAboutOnOk) {
    putGroup(std::string(kMessageCommands) + "XYZ-1:kept;");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit([&](QDialog& sheet) {
        door.next(fill({{"name", "New"}}));
        key(sheet, kStreamRow, Qt::Key_F2);
        press(sheet, "ok");
    }));
    EXPECT_TRUE(has("XYZ-1:kept"));
    EXPECT_TRUE(has("SNA-1:New"));
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_NE(t.ui.boxes.back().text.find("XYZ-1"), std::string::npos);
}

TEST_F(MessageSheetTest, ALinkWithoutAGroupOpensEmptyAndGetsOneWhenItIsWritten) {
    std::filesystem::remove(t.application.context().store.pathOf("[kavu]PCMS.S01"));
    EXPECT_TRUE(edit([&](QDialog& sheet) {
        EXPECT_EQ(lines(sheet), Lines{"Streams"});
        door.next(fill({{"name", "First"}}));
        key(sheet, {}, Qt::Key_Insert);
        press(sheet, "ok");
    }));
    EXPECT_TRUE(has("DLN:Link"));
    EXPECT_TRUE(has("SNA-1:First"));
    EXPECT_TRUE(has("MDT-1:BINARY")) << "the lists of a new stream show their first entries";
}

TEST_F(MessageSheetTest, AnEarlierEditionIsToldSinceWhenThereAreMessages) {
    t.application.context().document.version = 2007;
    EXPECT_FALSE(editMessages(form, t.application, "Link"));
    EXPECT_EQ(t.ui.boxes.back().id, 73);
}

TEST_F(MessageSheetTest, WithoutANameTheLinkIsChosenAmongThoseWithMessageData) {
    t.ui.rows = {0};
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Edit Message Attributes - Data Link: Link");
        press(dialog, "cancel");
    });
    EXPECT_FALSE(editMessages(form, t.application, ""));
    ASSERT_EQ(t.ui.tablePrompts.size(), 1U);
    ASSERT_EQ(t.ui.tablePrompts[0].rows.size(), 1U) << "the other link has no S group";
    EXPECT_FALSE(editMessagesOf(form, t.application, "Nobody"));
    EXPECT_TRUE(t.ui.hasText("This data source has no message data streams."));
}

}  // namespace
}  // namespace kavu
