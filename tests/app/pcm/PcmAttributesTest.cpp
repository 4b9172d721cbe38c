#include "app/framework/EditableList.h"
#include "app/pcm/PcmAttributes.h"
#include "app/pcm/SheetStage.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/model/PcmFormatFields.h"

#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>

namespace kavu {
namespace {

using test::buttonText;
using test::chosen;
using test::Commands;
using test::enabled;
using test::enter;
using test::find;
using test::pick;
using test::press;
using test::SheetStage;

class PcmAttributesTest : public ::testing::Test {
  protected:
    bool edit(SheetStage& s, const test::TestDoor::Driver& driver) {
        s.door.next(driver);
        return editPcmAttributes(s.form, s.format, calls);
    }
    static void openPage(const QDialog& dialog, int index) {
        find<QTabWidget>(dialog, "pages")->setCurrentIndex(index);
    }
    PcmSheetCalls calls;
};

TEST_F(PcmAttributesTest, HasItsPagesAndTheLastOneFromMinorFrameFilteringOn) {
    for (const int edition : {2007, 2009}) {
        SheetStage s(edition);
        edit(s, [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Edit PCM Attributes - Data Link: PCM 1"));
            const auto* const tabs = find<QTabWidget>(dialog, "pages");
            QStringList titles;
            for (int i = 0; i < tabs->count(); ++i) {
                titles.append(tabs->tabText(i).replace(u'\n', u' '));  // of a narrow screen
            }
            const auto all = QStringLiteral(
                                 "Input Data|Stream Attributes|Frame Sync Pattern|Sync Criteria|"
                                 "Format Switch|Alt Tag//Data|Comments|Minor Frame Filtering")
                                 .replace(QStringLiteral("//"), QStringLiteral("/"))
                                 .split(u'|');
            EXPECT_EQ(titles, edition >= 2009 ? all : all.mid(0, 7));
            for (int i = 0; i < tabs->count(); ++i) {
                openPage(dialog, i);
                EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << i;
            }
            press(dialog, "cancel");
        });
        EXPECT_EQ(s.ui.statusTexts.front(), "Initializing Stream Format Information...");
        EXPECT_NE(std::find(s.ui.statusTexts.begin(), s.ui.statusTexts.end(),
                            "Edit PCM Format Information."),
                  s.ui.statusTexts.end());
        EXPECT_NE(s.settings.profileText("PropSheet", "LastPcmFmtPage"), "");
    }
}

TEST_F(PcmAttributesTest, OkStoresWhatEveryPageHas) {
    SheetStage s;
    s.ui.texts = {"1234567"};
    s.ui.integers = {20, 6, 30, 12};
    EXPECT_TRUE(edit(s, [](QDialog& dialog) {
        pick(dialog, "D1", QStringLiteral("OTHER"));
        test::type(dialog, "nonStandardCode", QStringLiteral("XYZ"));
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        press(dialog, "D2");
        EXPECT_EQ(buttonText(dialog, "D2"), QStringLiteral("1234567"));
        openPage(dialog, 1);
        press(dialog, "F1");
        press(dialog, "MF\\N");
        press(dialog, "MF1");
        EXPECT_EQ(find<QLineEdit>(dialog, "MF2")->text(), QString::number(24 + 29 * 20));
        EXPECT_TRUE(find<QLineEdit>(dialog, "MF2")->isReadOnly());
        pick(dialog, "F3", QStringLiteral("EVEN"));
        openPage(dialog, 3);
        enter(dialog, "SYNC1", QStringLiteral("77"));
        pick(dialog, "SYNC3", QStringLiteral("NS"));
        test::type(dialog, "SYNC2", QStringLiteral("5"));
        openPage(dialog, 4);
        press(dialog, "FFI1");
        test::type(dialog, "FFI2", QStringLiteral("1100"));
        openPage(dialog, 5);
        test::type(dialog, "ALT\\N", QStringLiteral("2"));
        pick(dialog, "ALT4", QStringLiteral("Reversed"));
        openPage(dialog, 6);
        find<QPlainTextEdit>(dialog, "COM")->setFocus();
        QTest::keyClicks(find<QPlainTextEdit>(dialog, "COM"), QStringLiteral("A comment"));
        press(dialog, "ok");
    }));
    EXPECT_FALSE(s.format.changed);
    EXPECT_TRUE(s.document.changed);
    for (const auto* const line :
         {"D1:OTHER", "D2:1234567", "D3:E", "F1:20", "MF\\N:6", "MF1:30", "MF2:604", "F3:EV",
          "SYNC1:77", "SYNC2:5", "SYNC3:NS", "FFI1:12", "FFI2:1100", "ALT\\N:2", "ALT4:R"}) {
        EXPECT_TRUE(s.saved(line)) << line;
    }
    const auto text = s.read("[kavu]PCMFMT.P01");
    EXPECT_NE(text.find("COM:[KAVU: D1=XYZ]"), std::string::npos) << text;
    EXPECT_NE(text.find("A comment"), std::string::npos);
}

TEST_F(PcmAttributesTest, CancelAsksOnlyAfterAnEditAndWritesNothing) {
    SheetStage s;
    const auto before = s.read("[kavu]PCMFMT.P01");
    EXPECT_FALSE(edit(s, [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(s.ui.boxes.empty());
    s.ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(edit(s, [&](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Unencrypted"));
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.ui.boxes.size(), 2U);
    EXPECT_EQ(s.read("[kavu]PCMFMT.P01"), before);
}

TEST_F(PcmAttributesTest, OkWithoutAnEditSavesWhatTheLoadHasCorrected) {
    SheetStage s;
    EXPECT_FALSE(edit(s, [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_FALSE(s.document.changed);
    s.format.changed = true;
    EXPECT_TRUE(edit(s, [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_TRUE(s.document.changed);
}

TEST_F(PcmAttributesTest, RefusedNumbersAreToldAndTheOldOnesStay) {
    SheetStage s(2009, {}, "ONE");
    s.ui.integers = {33, 0, 257, 0, 1025};
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 1);
        press(dialog, "F1");
        EXPECT_EQ(s.lastBox(), 219);
        EXPECT_EQ(buttonText(dialog, "F1"), QStringLiteral("16"));
        for (int i = 0; i < 2; ++i) {
            press(dialog, "MF\\N");
            EXPECT_EQ(s.lastBox(), 216);
        }
        EXPECT_EQ(buttonText(dialog, "MF\\N"), QStringLiteral("8"));
        press(dialog, "MF1");
        EXPECT_EQ(s.lastBox(), 161);
        press(dialog, "MF1");
        EXPECT_EQ(s.lastBox(), 223);
        EXPECT_EQ(buttonText(dialog, "MF1"), QStringLiteral("32"));
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.format.changed);
}

TEST_F(PcmAttributesTest, WithoutATypeACommonWordLengthIsRefused) {
    SheetStage s;
    s.ui.integers = {17};
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 1);
        QTest::keyClick(find<QComboBox>(dialog, "TF"), Qt::Key_Delete);
        press(dialog, "F1");
        EXPECT_EQ(s.lastBox(), 218);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

TEST_F(PcmAttributesTest, AStoredTypeThatTheListDoesNotOfferStays) {
    SheetStage s(2009, {}, "OTHR");
    EXPECT_TRUE(edit(s, [&](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "TF")->findText(QStringLiteral("OTHR - Other")), -1)
            << "from 106-09 on the list ends in front of it";
        EXPECT_EQ(chosen(dialog, "TF"), QString());
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        press(dialog, "ok");
    }));
    EXPECT_TRUE(s.saved("TF:OTHR"));
    EXPECT_TRUE(s.saved("D3:E"));
}

TEST_F(PcmAttributesTest, ApplySavesAndTheSheetGoesOn) {
    SheetStage s(2009, {"FFI1:3"});
    int saves = 0;
    int cancels = 0;
    calls.saved = [&] { ++saves; };
    calls.cancelled = [&] { ++cancels; };
    s.ui.otherwise = Button::Yes;
    s.ui.integers = {7};
    EXPECT_TRUE(edit(s, [&](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        openPage(dialog, 4);
        press(dialog, "FFI1");
        press(dialog, "apply");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(s.saved("D3:E"));
        EXPECT_TRUE(s.saved("FFI1:7"));
        EXPECT_TRUE(s.document.changed);
        EXPECT_FALSE(s.format.changed);
        EXPECT_FALSE(enabled(dialog, "apply"));
        openPage(dialog, 0);
        pick(dialog, "D3", QStringLiteral("Unencrypted"));
        EXPECT_TRUE(enabled(dialog, "apply"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(s.saved("D3:E")) << "what came after Apply is dropped";
}

TEST_F(PcmAttributesTest, AClassOneStreamThatIsMoreIsToldAndShownAsClassTwo) {
    SheetStage s(2009, {}, "ONE");
    s.ui.texts = {"10000001"};
    edit(s, [&](QDialog& dialog) {
        press(dialog, "D2");
        EXPECT_EQ(s.lastBox(), 221);
        EXPECT_EQ(chosen(dialog, "TF"), QStringLiteral("TWO - Class II"));
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

TEST_F(PcmAttributesTest, TheCodeLeadsTheControlsOfTheRandomizer) {
    SheetStage s;
    edit(s, [&](QDialog& dialog) {
        EXPECT_FALSE(enabled(dialog, "nonStandardCode"));
        pick(dialog, "D1", QStringLiteral("RNRZ-L"));
        EXPECT_EQ(chosen(dialog, "D7"), QStringLiteral("No"));
        EXPECT_EQ(chosen(dialog, "D8"), QStringLiteral("N/A"));
        EXPECT_FALSE(enabled(dialog, "D8"));
        pick(dialog, "D1", QStringLiteral("NRZ-L"));
        EXPECT_EQ(chosen(dialog, "D7"), QStringLiteral("Yes"));
        EXPECT_TRUE(enabled(dialog, "D8"));
        pick(dialog, "D1", QStringLiteral("OTHER"));
        EXPECT_TRUE(enabled(dialog, "nonStandardCode"));
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

TEST_F(PcmAttributesTest, ABusStreamFixesItsValuesAndAnyOtherTypeFreesThem) {
    SheetStage s;
    calls.viewFrame = [](QWidget&) { return false; };
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 1);
        pick(dialog, "TF", QStringLiteral("1553"));
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bus Attributes - Data Link: PCM 1"));
        EXPECT_EQ(buttonText(dialog, "F1"), QStringLiteral("24"));
        EXPECT_EQ(buttonText(dialog, "MF\\N"), QStringLiteral("1"));
        EXPECT_EQ(chosen(dialog, "F3"), QStringLiteral("ODD"));
        EXPECT_EQ(chosen(dialog, "F4"), QStringLiteral("Leads Word"));
        EXPECT_EQ(find<QComboBox>(dialog, "F2")->placeholderText(), QStringLiteral("Default"));
        EXPECT_EQ(chosen(dialog, "MF3"), QStringLiteral("FPT - Fixed Pattern"));
        EXPECT_EQ(chosen(dialog, "MF4"), QStringLiteral("24"));
        for (const auto* const name : {"MF\\N", "F2", "F3", "F4", "MF3", "MF4", "MF5", "frames",
                                       "MFF\\FDT", "setAllToYes", "viewEditStream"}) {
            EXPECT_FALSE(enabled(dialog, name)) << name;
        }
        EXPECT_EQ(find<QTableWidget>(dialog, "frames")->rowCount(), 0);
        const auto* const codes = find<QComboBox>(dialog, "D1");
        const auto* const items = qobject_cast<QStandardItemModel*>(codes->model());
        QStringList offered;
        for (int i = 0; i < items->rowCount(); ++i) {
            if (items->item(i)->isEnabled()) {
                offered.append(codes->itemText(i));
            }
        }
        EXPECT_EQ(offered, (QStringList{QStringLiteral("NRZ-L"), QStringLiteral("BIO-L"),
                                        QStringLiteral("RNRZ-L")}));
        pick(dialog, "TF", QStringLiteral("TWO"));
        EXPECT_TRUE(enabled(dialog, "MF\\N"));
        EXPECT_TRUE(enabled(dialog, "viewEditStream"));
        EXPECT_TRUE(items->item(1)->isEnabled());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

// A look at the bus type cost the stream the order in which its words are sent.
TEST_F(PcmAttributesTest, ALookAtABusLeavesTheWordTransferOrderAsItWas) {
    for (const auto& before : {Commands{"F2:L"}, Commands{"F2:M"}, Commands{}}) {
        SheetStage s(2009, before);
        edit(s, [&](QDialog& dialog) {
            openPage(dialog, 1);
            const auto shown = chosen(dialog, "F2");
            pick(dialog, "TF", QStringLiteral("1553"));
            EXPECT_EQ(chosen(dialog, "F2"), QString());
            pick(dialog, "TF", QStringLiteral("TWO"));
            EXPECT_EQ(chosen(dialog, "F2"), shown);
            EXPECT_TRUE(enabled(dialog, "F2"));
            press(dialog, "ok");
        });
        const auto text = s.read("[kavu]PCMFMT.P01");
        EXPECT_EQ(text.find("\\F2:") != std::string::npos, !before.empty()) << text;
        EXPECT_TRUE(before.empty() || s.saved(before.front())) << text;
    }
}

TEST_F(PcmAttributesTest, TheCommonWordLengthLeavesTheSyncWordAsLongAsItsPattern) {
    SheetStage s;
    s.ui.integers = {20};
    EXPECT_TRUE(edit(s, [](QDialog& dialog) {
        openPage(dialog, 2);
        pick(dialog, "MF4", QStringLiteral("16"));
        openPage(dialog, 1);
        EXPECT_EQ(find<QLineEdit>(dialog, "MF2")->text(), QString::number(16 + 31 * 16));
        press(dialog, "F1");
        EXPECT_EQ(find<QLineEdit>(dialog, "MF2")->text(), QString::number(16 + 31 * 20));
        press(dialog, "ok");
    }));
    EXPECT_TRUE(s.saved("MF4:16"));
    EXPECT_TRUE(s.saved("MF2:636"));
    ASSERT_TRUE(s.reload());
    EXPECT_EQ(s.logText(176), "");
}

TEST_F(PcmAttributesTest, AnotherNumberOfFramesAdjustsRangesOrIsTakenBack) {
    SheetStage s;
    ASSERT_TRUE(s.load(test::plainFormat(32, 8), test::listOf({test::wordFrame("A", 5, 1, 1, 8)})));
    s.ui.integers = {16, 16};
    s.ui.queued = {Button::Cancel, Button::Yes};
    EXPECT_TRUE(edit(s, [&](QDialog& dialog) {
        openPage(dialog, 1);
        press(dialog, "MF\\N");
        EXPECT_EQ(buttonText(dialog, "MF\\N"), QStringLiteral("8"));
        press(dialog, "MF\\N");
        EXPECT_EQ(buttonText(dialog, "MF\\N"), QStringLiteral("16"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.ui.boxes.size(), 2U);
    EXPECT_EQ(s.ui.boxes[0].title, "Adjust Measurements?");
    EXPECT_NE(s.read("[kavu]PCMMEAS.D01").find("EFP-1-1-1-1:16;"), std::string::npos);
}

TEST_F(PcmAttributesTest, PatternsAreEnteredPickedAndSwitched) {
    SheetStage s;
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 2);
        EXPECT_TRUE(find<QRadioButton>(dialog, "binary")->isChecked());
        EXPECT_EQ(find<QComboBox>(dialog, "MF5")->count(), 27);
        pick(dialog, "MF4", QStringLiteral("16"));
        EXPECT_EQ(chosen(dialog, "MF5"), QStringLiteral("111 010 111 001 000 0"));
        press(dialog, "hexadecimal");
        EXPECT_EQ(chosen(dialog, "MF5"), QStringLiteral("EB90"));
        EXPECT_EQ(s.settings.integer("HexFSP", 0), 1);
        pick(dialog, "MF5", QStringLiteral("FA F320"));
        EXPECT_EQ(chosen(dialog, "MF4"), QStringLiteral("24"));
        enter(dialog, "MF5", QStringLiteral("15"));
        EXPECT_EQ(chosen(dialog, "MF4"), QStringLiteral("5"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(s.saved("MF4:5"));
    EXPECT_TRUE(s.saved("MF5:10101")) << "in the file it is binary";
}

TEST_F(PcmAttributesTest, ARefusedPatternKeepsTheOldOne) {
    SheetStage s;
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 2);
        const auto before = chosen(dialog, "MF5");
        enter(dialog, "MF5", QStringLiteral("102"));
        EXPECT_EQ(s.lastBox(), 439);
        EXPECT_EQ(chosen(dialog, "MF5"), before);
        enter(dialog, "MF5", QString(34, u'1'));
        EXPECT_EQ(s.lastBox(), 440);
        EXPECT_EQ(chosen(dialog, "MF5"), before);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.format.changed);
}

TEST_F(PcmAttributesTest, Mf5In10101HexadecimalModeIsShownAs15AndWrittenBackAs10101) {
    SheetStage s(2009, {"MF5:10101", "MF4:5"});
    s.settings.writeInteger("HexFSP", 1);
    s.writeGroup('P', {"TF:TWO", "F1:16", "MF\\N:8", "MF1:32", "MF2:501", "MF4:5", "MF5:10101"});
    ASSERT_TRUE(s.reload());
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 2);
        EXPECT_TRUE(find<QRadioButton>(dialog, "hexadecimal")->isChecked());
        EXPECT_EQ(chosen(dialog, "MF5"), QStringLiteral("15"));
        pick(dialog, "MF3", QStringLiteral("OTHER"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(s.saved("MF5:10101"));
    EXPECT_TRUE(s.saved("MF3:OTH"));
}

TEST_F(PcmAttributesTest, TheLocationOfTheFormatIdentifierIsChecked) {
    SheetStage s(2009, {"FFI1:3"});
    s.ui.integers = {33, 0, 32};
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 4);
        for (int i = 0; i < 2; ++i) {
            press(dialog, "FFI1");
            EXPECT_EQ(s.lastBox(), 160);
            EXPECT_EQ(buttonText(dialog, "FFI1"), QStringLiteral("3"));
        }
        press(dialog, "FFI1");
        EXPECT_EQ(buttonText(dialog, "FFI1"), QStringLiteral("32"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(s.saved("FFI1:32"));
}

TEST_F(PcmAttributesTest, ListsOfTheFormatSwitchAreEdited) {
    SheetStage s(2009, {"MLC\\N:1", "MLC1-1:01", "MLC2-1:List A"});
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 4);
        auto* const lists = find<EditableList>(dialog, "MLC");
        EXPECT_EQ(lists->rows(), (std::vector<ListRow>{{"01", "List A"}}));
        s.door.next([](QDialog& row) {
            test::type(row, "FSC1-n", QStringLiteral("11"));
            test::type(row, "FSC2-n", QStringLiteral("Link B"));
            press(row, "ok");
        });
        find<EditableList>(dialog, "FSC")->addRow();
        s.ui.byId[83] = Button::Yes;
        s.ui.otherwise = Button::Yes;
        lists->selectRow(0);
        lists->deleteRow();
        press(dialog, "ok");
    });
    EXPECT_TRUE(s.saved("FSC\\N:1"));
    EXPECT_TRUE(s.saved("FSC1-1:11"));
    EXPECT_TRUE(s.saved("FSC2-1:Link B"));
    EXPECT_FALSE(s.saved("MLC1-1:01"));
}

TEST_F(PcmAttributesTest, FramesAreFilteredByDoubleClickSpaceAndAllAtOnce) {
    SheetStage s(2009, {"MFF\\FDT:IN", "MFF\\N:1", "MFF\\MFN-1:2"});
    s.ui.integers = {4};
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 7);
        auto* const list = find<QTableWidget>(dialog, "frames");
        ASSERT_EQ(list->rowCount(), 8);
        const auto texts = [list] {
            QString all;
            for (int row = 0; row < list->rowCount(); ++row) {
                all += list->item(row, 1)->text().left(1);
            }
            return all;
        };
        EXPECT_EQ(texts(), QStringLiteral("NYNNNNNN"));
        emit list->cellDoubleClicked(0, 1);
        list->selectRow(1);
        QTest::keyClick(list, Qt::Key_Space);
        EXPECT_EQ(texts(), QStringLiteral("YNNNNNNN"));
        press(dialog, "setAllToYes");
        EXPECT_EQ(texts(), QStringLiteral("YYYYYYYY"));
        press(dialog, "setAllToNo");
        emit list->cellDoubleClicked(2, 0);
        pick(dialog, "MFF\\FDT", QStringLiteral("EXclusive"));
        openPage(dialog, 1);
        press(dialog, "MF\\N");
        EXPECT_EQ(texts(), QStringLiteral("NNYN")) << "rows follow the frames";
        press(dialog, "ok");
    });
    EXPECT_TRUE(s.saved("MFF\\FDT:EX"));
    EXPECT_TRUE(s.saved("MFF\\N:1"));
    EXPECT_TRUE(s.saved("MFF\\MFN-1:3"));
}

TEST_F(PcmAttributesTest, NewFramesAreNotFiltered) {
    SheetStage s(2009, {"MFF\\N:1", "MFF\\MFN-1:8"});
    s.ui.integers = {4, 10};
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 1);
        press(dialog, "MF\\N");
        press(dialog, "MF\\N");
        const auto* const list = find<QTableWidget>(dialog, "frames");
        ASSERT_EQ(list->rowCount(), 10);
        EXPECT_EQ(list->item(7, 1)->text(), QStringLiteral("No"));
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

TEST_F(PcmAttributesTest, TheButtonsOpenTheViewOfTheKindAndTheReports) {
    SheetStage s(2007);
    std::string opened;
    calls.viewFrame = [&](QWidget&) {
        opened += "frame ";
        return s.format.setWordsPerMinorFrame(nullptr, 20);
    };
    calls.viewBus = [&](QWidget&) {
        opened += "bus ";
        return false;
    };
    calls.viewPackets = [&](QWidget&) {
        opened += "packets ";
        return false;
    };
    calls.reports = [&](QWidget&) {
        opened += "reports ";
        return false;
    };
    EXPECT_TRUE(edit(s, [&](QDialog& dialog) {
        press(dialog, "viewEditStream");
        EXPECT_EQ(buttonText(dialog, "MF1"), QStringLiteral("20")) << "what the display has done";
        EXPECT_EQ(find<QLineEdit>(dialog, "MF2")->text(), QString::number(24 + 19 * 16));
        pick(dialog, "TF", QStringLiteral("PKTM"));
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("Edit Packet Attributes - Data Link: PCM 1"));
        press(dialog, "viewEditStream");
        pick(dialog, "TF", QStringLiteral("1553"));
        press(dialog, "viewEditStream");
        press(dialog, "reports");
        pick(dialog, "TF", QStringLiteral("TWO"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(opened, "frame packets bus reports ");
    EXPECT_TRUE(s.saved("MF1:20"));
}

TEST_F(PcmAttributesTest, ButtonsWithoutAStepAreDisabled) {
    SheetStage s;
    edit(s, [&](QDialog& dialog) {
        EXPECT_FALSE(enabled(dialog, "viewEditStream"));
        EXPECT_FALSE(enabled(dialog, "reports"));
        press(dialog, "cancel");
    });
}

TEST_F(PcmAttributesTest, ASemicolonKeepsTheSheetOpen) {
    SheetStage s;
    edit(s, [&](QDialog& dialog) {
        openPage(dialog, 6);
        auto* const comment = find<QPlainTextEdit>(dialog, "COM");
        comment->setFocus();
        QTest::keyClicks(comment, QStringLiteral("a;b"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(s.lastBox(), 402);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

}  // namespace
}  // namespace kavu
