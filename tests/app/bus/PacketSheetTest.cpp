#include "app/bus/PacketSheet.h"
#include "app/bus/StreamDataForms.h"
#include "app/bus/StreamDataStage.h"
#include "app/framework/EditableList.h"
#include "conversion/ConversionStore.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;
using Lines = std::vector<std::string>;

constexpr const char* kPacketCommands =
    "ASM:0001;FEF:7;TFL:1115;VID:010;SHF:1;SHL:4;"
    "TNMS\\N:2;TMN-1:T1;TPAR-1:EV;TPTO-1:L;TNML\\N-1:2;TWP-1-1:1;TWL-1-1:16;TBM-1-1:FW;"
    "TTO-1-1:MSB;TFP-1-1:1;TWP-1-2:2;TWL-1-2:16;TMN-2:T2;TNML\\N-2:0;"
    "DFL:1100;SP\\N:1;PSHF-1:1;APID-1:64;PDL-1:256;PSHL-1:8;"
    "HNMS\\N-1:0;SNMS\\N-1:1;SMN-1-1:V1;SPAR-1-1:OD;SNML\\N-1-1:1;SWP-1-1-1:5;SWL-1-1-1:12;"
    "COM-1:Housekeeping;COM:All;";

/// The rows of the tree by their places.
const TreePath kPacketRow{0};
const TreePath kHeaderRow{0, 0};
const TreePath kDataRow{0, 1};
const TreePath kCommentRow{0, 2};
const TreePath kPacketMeasurementRow{0, 1, 0};
const TreePath kPacketLocationsRow{0, 1, 0, 0};
const TreePath kPacketLocationRow{0, 1, 0, 0, 0};

class PacketSheetTest : public test::StreamDataStage {
  protected:
    PacketSheetTest() : StreamDataStage(2007) { putGroup(kPacketCommands); }
    bool edit(const test::TestDoor::Driver& driver) {
        door.next(driver);
        return editPackets(form, t.application, "Link");
    }
    static PacketSheet& openPage(QDialog& dialog, int page) {
        auto& sheet = dynamic_cast<PacketSheet&>(dialog);
        sheet.openPage(page);
        QApplication::processEvents();
        return sheet;
    }
};

TEST_F(PacketSheetTest, HasItsFivePagesAndRemembersTheLastOne) {
    const auto before = file();
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        auto& sheet = dynamic_cast<PacketSheet&>(dialog);
        EXPECT_EQ(dialog.windowTitle(), u"Edit Packet Attributes - Data Link: Link");
        const std::vector<std::pair<const char*, const char*>> pages{
            {"Packet1", "Input Data"},
            {"Packet2", "Transfer Frame Primary Header"},
            {"Packet3", "Transfer Frame Secondary Header"},
            {"Packet4", "Source Packet"},
            {"Packet5", "Comments"}};
        ASSERT_EQ(sheet.pageCount(), 5);
        for (int i = 0; i < 5; ++i) {
            const auto& [name, title] = pages[static_cast<std::size_t>(i)];
            EXPECT_EQ(sheet.page(i).objectName(), QLatin1String(name));
            EXPECT_EQ(sheet.page(i).title(), title);
            openPage(dialog, i);
            EXPECT_EQ(test::checkWindow(dialog), Lines{}) << name;
        }
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), before);
    EXPECT_EQ(t.application.context().settings.profileInteger("PropSheet", "LastPacketPage", 1), 5);
    EXPECT_EQ(file("SGROUP.TMP"), before) << "the pages are read from a copy";
}

TEST_F(PacketSheetTest, AnAbsentListShowsItsFirstEntryAndAnUnknownValueItself) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        openPage(dialog, 0);
        EXPECT_EQ(find<QComboBox>(dialog, "FEF")->placeholderText(), u"7");
        EXPECT_EQ(find<QComboBox>(dialog, "CEF")->currentIndex(), -1);
        EXPECT_EQ(find<QComboBox>(dialog, "CEF")->placeholderText(),
                  u"1 - Convolutional Error Correction/Detection used");
        EXPECT_EQ(find<QComboBox>(dialog, "VID")->currentText(), u"010 (2)");
        EXPECT_FALSE(dynamic_cast<PacketSheet&>(dialog).isChanged());
        press(dialog, "cancel");
    }));
}

TEST_F(PacketSheetTest, EveryFieldIsWrittenAndWhatWasNotEditedStays) {
    t.ui.texts = {"ART-2"};
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 0);
        type(dialog, "ASM", QStringLiteral("1111"));
        enter(dialog, {{"CEF", "0 - Convolutional Error Correction/Detection is not used"}});
        openPage(dialog, 1);
        type(dialog, "TFL", QStringLiteral("900"));
        press(dialog, "TA");
        enter(dialog, {{"VID", "111 (7)"},
                       {"OCF", "1 - Field Present"},
                       {"SHF", "0 - Field is not Present"},
                       {"OSF", "1 - Privately defined data are inserted"}});
        openPage(dialog, 2);
        type(dialog, "SHL", QStringLiteral("6"));
        type(dialog, "DFL", QStringLiteral("800"));
        openPage(dialog, 4);
        type(dialog, "COM", QStringLiteral("Whole"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.ui.textPrompts.at(0).title, "Enter Test Article ID");
    for (const auto* const command :
         {"ASM:1111", "FEF:7", "CEF:0", "TFL:900", "TA:ART-2", "VID:111", "OCF:1", "SHF:0", "OSF:1",
          "SHL:6", "DFL:800", "COM:Whole", "TMN-1:T1", "TWP-1-2:2", "TNML\\N-2:0",
          "COM-1:Housekeeping"}) {
        EXPECT_TRUE(has(command)) << command << "\n" << file();
    }
}

TEST_F(PacketSheetTest, TheRowsOfTheFrameHeaderAreItsMeasurementsWithTheirLocations) {
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 2);
        auto* const list = find<EditableList>(dialog, "measurements");
        ASSERT_EQ(list->rowCount(), 3);
        const auto cells = [&](int row) {
            auto all = list->rows()[static_cast<std::size_t>(row)];
            all.pop_back();
            return all;
        };
        EXPECT_EQ(cells(0), (Lines{"T1", "Even", "Leads Word", "1", "16", "FW", "MSB", "1"}));
        EXPECT_EQ(cells(1), (Lines{"", "", "", "2", "16", "", "", ""}));
        EXPECT_EQ(cells(2), (Lines{"T2", "", "", "", "", "", "", ""}));
        list->selectRow(2);
        door.next([&](QDialog& row) {
            EXPECT_EQ(find<QLineEdit>(row, "TMN")->text(), u"NewName");
            EXPECT_EQ(find<QComboBox>(row, "TFP")->count(), 9);
            enter(row, {{"TMN", "T3"}, {"TFP", "9"}});
            press(row, "ok");
        });
        press(*list, "add");
        press(dialog, "ok");
    }));
    for (const auto* const command :
         {"TNMS\\N:3", "TNML\\N-1:2", "TWP-1-2:2", "TNML\\N-2:0", "TMN-3:T3", "TPAR-3:NO",
          "TPTO-3:L", "TNML\\N-3:1", "TWP-3-1:1", "TWL-3-1:1", "TBM-3-1:FW", "TTO-3-1:MSB",
          "TFP-3-1:9"}) {
        EXPECT_TRUE(has(command)) << command << "\n" << file();
    }
}

TEST_F(PacketSheetTest, AMeasurementWithMoreLocationsIsDeletedFromTheLastOne) {
    t.ui.queued = {Button::Ok, Button::Yes, Button::Yes};
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 2);
        auto* const list = find<EditableList>(dialog, "measurements");
        list->selectRow(0);
        press(*list, "delete");
        EXPECT_EQ(list->rowCount(), 3);
        EXPECT_NE(t.ui.boxes.back().text.find("Please delete them first"), std::string::npos);
        list->selectRow(1);
        press(*list, "delete");
        list->selectRow(0);
        press(*list, "delete");
        EXPECT_EQ(list->rowCount(), 1);
        press(dialog, "ok");
    }));
    EXPECT_TRUE(has("TNMS\\N:1"));
    EXPECT_TRUE(has("TMN-1:T2"));
    EXPECT_FALSE(has("TMN-2:T2"));
}

TEST_F(PacketSheetTest, AFirstRowWithoutANameIsRefused) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        openPage(dialog, 2);
        auto* const list = find<EditableList>(dialog, "measurements");
        auto first = list->rows()[0];
        first[0].clear();
        list->replaceRow(0, first);
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(t.ui.boxes.back().text,
                  "The first row has no measurement name. Please enter one.");
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
}

TEST_F(PacketSheetTest, ShowsPacketsWithTheirPartsAndTheMenuOfEachKind) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        EXPECT_EQ(lines(dialog),
                  (Lines{"Source Packets",
                         " Secondary Header Flag:1, Process ID:64, Data Length:256, Secondary "
                         "Header Length:8",
                         "  Secondary Header", "  Source Data",
                         "   Measurement:V1, Parity:OD, Parity Transfer Order:",
                         "    Measurement Locations",
                         "     Position:5, Word Length:12, BitMask:, Transfer Order:, Fragment:",
                         "  Comment:Housekeeping"}));
        EXPECT_EQ(menuOf(dialog, {}), Lines{"Add New Source Packet Definition"});
        EXPECT_EQ(menuOf(dialog, kPacketRow),
                  (Lines{"Edit This Source Packet", "Delete This Source Packet"}));
        EXPECT_EQ(menuOf(dialog, kHeaderRow), Lines{"Add New Measurement"});
        EXPECT_EQ(menuOf(dialog, kCommentRow), (Lines{"Edit This Comment", "Delete This Comment"}));
        EXPECT_EQ(menuOf(dialog, kPacketMeasurementRow),
                  (Lines{"Edit This Measurement Definition", "Edit Data Conversion Attributes",
                         "Delete This Measurement"}));
        EXPECT_EQ(menuOf(dialog, kPacketLocationsRow), Lines{"Add New Measurement Location"});
        EXPECT_EQ(menuOf(dialog, kPacketLocationRow),
                  (Lines{"Edit This Measurement Location", "Delete This Measurement Location"}));
        press(dialog, "cancel");
    }));
}

TEST_F(PacketSheetTest, NewRowsBeginWithTheirTextsAndAreWritten) {
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        const auto ok = [](QDialog& row) {
            EXPECT_EQ(test::checkWindow(row), Lines{});
            press(row, "ok");
        };
        door.next(ok);
        key(dialog, {}, Qt::Key_Insert);
        door.next(ok);
        key(dialog, {1, 0}, Qt::Key_Insert);
        door.next(fill({{"FP", "9"}}));
        key(dialog, {1, 0, 0, 0}, Qt::Key_Insert);
        const auto all = lines(dialog);
        const Lines fresh{
            " Secondary Header Flag:0, Process ID:0, Data Length:0, Secondary Header Length:0",
            "  Secondary Header", "   Measurement:NewName, Parity:NO, Parity Transfer Order:L",
            "    Measurement Locations",
            "     Position:1, Word Length:1, BitMask:FW, Transfer Order:MSB, Fragment:9"};
        EXPECT_EQ(Lines(all.begin() + 8, all.begin() + 13), fresh);
        press(dialog, "ok");
    }));
    for (const auto* const command :
         {"SP\\N:2", "PSHF-2:0", "PSHL-2:0", "HNMS\\N-2:1", "HMN-2-1:NewName", "HPAR-2-1:NO",
          "HPTO-2-1:L", "HNML\\N-2-1:1", "HFP-2-1-1:9", "SNMS\\N-2:0"}) {
        EXPECT_TRUE(has(command)) << command << "\n" << file();
    }
}

TEST_F(PacketSheetTest, ACommentIsEditedAndDeletedByItsOwnForm) {
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        door.next([](QDialog& row) {
            EXPECT_EQ(row.windowTitle(), u"Edit Comment Field");
            type(row, "COM", QStringLiteral("Other"));
            press(row, "ok");
        });
        key(dialog, kCommentRow, Qt::Key_F2);
        EXPECT_EQ(lines(dialog).back(), "  Comment:Other");
        key(dialog, kCommentRow, Qt::Key_Delete);
        EXPECT_EQ(t.ui.boxes.back().title, "Delete this Comment");
        EXPECT_EQ(lines(dialog).back(), "  Comment");
        key(dialog, {}, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(lines(dialog).back(), "  Comment:Other");
        press(dialog, "ok");
    }));
    EXPECT_TRUE(has("COM-1:Other"));
}

TEST_F(PacketSheetTest, CancelLeavesTheGroupAsItWas) {
    const auto before = file();
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        key(dialog, kPacketRow, Qt::Key_Delete);
        EXPECT_EQ(t.ui.boxes.back().title, "Delete this Source Packet");
        EXPECT_EQ(lines(dialog), Lines{"Source Packets"});
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), before);
    EXPECT_FALSE(canUndo());
}

TEST_F(PacketSheetTest, MeasurementsAreCopiedBetweenTheirLists) {
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        key(dialog, kPacketMeasurementRow, Qt::Key_C, Qt::ControlModifier);
        key(dialog, kHeaderRow, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editorOf(dialog).current(), (TreePath{0, 0, 0}));
        key(dialog, kPacketRow, Qt::Key_C, Qt::ControlModifier);
        key(dialog, {}, Qt::Key_V, Qt::ControlModifier);
        copyTable({.rows = {{"x"}}, .kind = "packet", .own = {{"Q"}, {"0", ""}, {"7", ""}}});
        key(dialog, {}, Qt::Key_V, Qt::ControlModifier);
        press(dialog, "ok");
    }));
    for (const auto* const command :
         {"SP\\N:2", "HMN-1-1:V1", "HPAR-1-1:OD", "HWP-1-1-1:5", "HMN-2-1:V1", "SMN-2-1:V1",
          "SWL-2-1-1:12", "COM-2:Housekeeping"}) {
        EXPECT_TRUE(has(command)) << command << "\n" << file();
    }
}

TEST_F(PacketSheetTest, TheConversionOfAMeasurementIsEditedFromItsMenu) {
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openPage(dialog, 3);
        editorOf(dialog).select(kPacketMeasurementRow);
        QMenu menu;
        editorOf(dialog).fillMenu(menu);
        door.next([](QDialog& conversion) {
            EXPECT_TRUE(conversion.windowTitle().contains(u"V1"));
            press(conversion, "ok");
        });
        menu.actions().at(1)->trigger();
        EXPECT_FALSE(dynamic_cast<PacketSheet&>(dialog).isChanged());
        press(dialog, "ok");
    }));
    EXPECT_TRUE(t.application.conversions().locateDefinition("V1").found);
}

TEST_F(PacketSheetTest, OtherEditionsAreToldWhenThereWerePackets) {
    t.application.context().document.version = 2009;
    EXPECT_FALSE(editPackets(form, t.application, "Link"));
    EXPECT_EQ(t.ui.boxes.back().id, 73);
    EXPECT_NE(t.ui.boxes.back().text.find(", and was removed in 106-09"), std::string::npos);
    t.application.context().document.version = 2004;
    EXPECT_FALSE(editPackets(form, t.application, "Link"));
    EXPECT_EQ(t.ui.boxes.back().id, 73);
}

}  // namespace
}  // namespace kavu
