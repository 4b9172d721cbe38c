#include "app/groups/GroupRows.h"
#include "app/groups/MultiplexDialog.h"
#include "app/support/TestDoor.h"
#include "conversion/ConversionStore.h"
#include "core/document/GroupFiles.h"
#include "groups/MeasurementNames.h"
#include "support/TestContext.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

constexpr char kHead[] = "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Link 1;\r\n";
constexpr char kRow[] =
    "M-1\\SI\\N:1;\r\nM-1\\SI1-1:1;\r\nM-1\\SI2-1:PCM;\r\nM-1\\SI3-1:POS;\r\n"
    "M-1\\SIF1-1:6;\r\nM-1\\SIF2-1:CA;\r\nM-1\\SI\\DLN-1:Link 2;\r\n";

class MultiplexDialogTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('M', 1), bytes); }
    [[nodiscard]] std::string file() { return t.read(groupFile('M', 1)); }
    bool edit(const test::TestDoor::Driver& driver) {
        form.edition = t.document.version;
        door.next(driver);
        return editMultiplex(form, {t.context, conversions, names}, "Src");
    }
    static void choose(QWidget& dialog, const char* name, const char* text) {
        auto* const box = find<QComboBox>(dialog, name);
        const int index = box->findText(QString::fromLatin1(text));
        ASSERT_GE(index, 0) << text;
        box->setFocus();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    static IdentifiedList& list(QDialog& dialog) { return *find<IdentifiedList>(dialog, "SI"); }

    test::TestContext t{2009};
    ConversionStore conversions{t.context};
    MeasurementNames names{t.context};
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(MultiplexDialogTest, ShowsTheGroupAndStoresEveryField) {
    put(kHead);
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Multiplex/Modulation - Data Source: Src"));
        EXPECT_EQ(find<QComboBox>(dialog, "BSG1")->currentText(), QStringLiteral("PCM"));
        EXPECT_EQ(find<QPushButton>(dialog, "signalName")->text(), QStringLiteral("Link 1"));
        choose(dialog, "BB1", "SCO's");
        choose(dialog, "BB2", "NEGative");
        type(dialog, "BB3", QStringLiteral("750"));
        type(dialog, "BSF1", QStringLiteral("500"));
        choose(dialog, "BSF2", "CD - Constant Delay");
        type(dialog, "SCO\\N", QStringLiteral("12"));
        choose(dialog, "SO", "Yes");
        type(dialog, "RC", QStringLiteral("240"));
        type(dialog, "COM", QStringLiteral("note"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "M-1\\ID:Src;\r\nM-1\\BB1:SCO's;\r\nM-1\\BB2:NEG;\r\nM-1\\BB3:750;\r\n"
              "M-1\\BSG1:PCM;\r\nM-1\\BSF1:500;\r\nM-1\\BSF2:CD;\r\nM-1\\BB\\DLN:Link 1;\r\n"
              "M-1\\SCO\\N:12;\r\nM-1\\SI\\N:0;\r\nM-1\\SO:Y;\r\nM-1\\RC:240;\r\n"
              "M-1\\COM:note;\r\n");
}

TEST_F(MultiplexDialogTest, SubcarriersBehindTheCountAreNotTheNewOnes) {
    put(std::string(kHead) + kRow +
        "M-1\\SI1-2:9;\r\nM-1\\SI2-2:ANA;\r\nM-1\\SI\\MN-2:Hidden;\r\nM-1\\SI9-1:x;\r\n"
        "M-1\\BB9-1:free;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        ASSERT_EQ(list(dialog).rowCount(), 1);
        door.next([](QDialog& row) {
            type(row, "SI1-n", QStringLiteral("12"));
            press(row, "ok");
        });
        press(list(dialog), "add");
        press(dialog, "ok");
    }));
    const auto text = file();
    for (const auto* const line :
         {"M-1\\SI\\N:3;", "M-1\\SI1-1:1;", "M-1\\SI1-2:9;", "M-1\\SI2-2:ANA;",
          "M-1\\SI\\MN-2:Hidden;", "M-1\\SI1-3:12;", "M-1\\SI9-1:x;", "M-1\\BB9-1:free;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
    EXPECT_EQ(text.find("SI\\MN-3"), std::string::npos) << text;
}

TEST_F(MultiplexDialogTest, OkWithoutAChangeWritesNothing) {
    put(std::string(kHead) + "M-1\\X:1;\r\n");
    EXPECT_FALSE(edit([](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_EQ(file(), std::string(kHead) + "M-1\\X:1;\r\n");
}

TEST_F(MultiplexDialogTest, TheFilterTypesFollowTheEdition) {
    put(kHead);
    t.document.version = 1996;
    edit([](QDialog& dialog) {
        EXPECT_GE(find<QComboBox>(dialog, "BSF2")->findText(QStringLiteral("OTH - Other")), 0);
        press(dialog, "cancel");
    });
    t.document.version = 1999;
    edit([](QDialog& dialog) {
        auto* const types = find<QComboBox>(dialog, "BSF2");
        EXPECT_GE(types->findText(QStringLiteral("OT - Other")), 0);
        EXPECT_LT(types->findText(QStringLiteral("OTH - Other")), 0);
        press(dialog, "cancel");
    });
}

TEST_F(MultiplexDialogTest, TheNameBoxFollowsTheSignalType) {
    put(kHead);
    EXPECT_TRUE(edit([](QDialog& dialog) {
        auto* const box = find<QGroupBox>(dialog, "nameBox");
        EXPECT_EQ(box->title(), QStringLiteral("Data Link Name"));
        choose(dialog, "BSG1", "ANALOG");
        EXPECT_EQ(box->title(), QStringLiteral("Measurement Name"));
        choose(dialog, "BSG1", "NONE");
        EXPECT_TRUE(box->isHidden());
        choose(dialog, "BSG1", "PAM");
        EXPECT_FALSE(box->isHidden());
        choose(dialog, "BSG1", "OTHER");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:OTH;\r\nM-1\\SI\\N:0;\r\n");
}

TEST_F(MultiplexDialogTest, ALinkIsRenamedAtOnceAndCancelIsOver) {
    put(kHead);
    t.write(groupFile('P', 1), "P-1\\DLN:Link 1;\r\n");
    t.ui.texts = {"New Link"};
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        press(dialog, "signalName");
        EXPECT_EQ(find<QPushButton>(dialog, "signalName")->text(), QStringLiteral("New Link"));
        EXPECT_EQ(t.read(groupFile('P', 1)), "P-1\\DLN:New Link;\r\n");
        EXPECT_FALSE(find<QPushButton>(dialog, "cancel")->isEnabled());
        dialog.close();
    }));
    ASSERT_EQ(t.ui.textPrompts.size(), 1U);
    EXPECT_EQ(t.ui.textPrompts[0].title, "Enter Data Link Name");
    EXPECT_EQ(t.ui.textPrompts[0].initial, "Link 1");
    EXPECT_EQ(t.ui.textPrompts[0].limit, 32U);
    EXPECT_NE(file().find("M-1\\BB\\DLN:New Link;"), std::string::npos);
}

TEST_F(MultiplexDialogTest, ANewGroupIsWrittenByOkAlone) {
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        EXPECT_TRUE(t.ui.hasBox(145));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:0;\r\n");
}

TEST_F(MultiplexDialogTest, ANameThatWasEnteredHereCanBeCorrected) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\n");
    t.ui.texts = {"Typo", "Right"};
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        press(dialog, "signalName");
        press(dialog, "signalName");
        EXPECT_TRUE(t.ui.boxes.empty()) << t.ui.boxes.back().text;
        EXPECT_TRUE(find<QPushButton>(dialog, "cancel")->isEnabled()) << "nothing was renamed";
        for (const auto* const name : {"Typo", "Right"}) {
            door.next([name](QDialog& row) {
                type(row, "name", QString::fromLatin1(name) + u'2');
                press(row, "ok");
            });
            press(list(dialog), list(dialog).rowCount() == 0 ? "add" : "edit");
        }
        EXPECT_TRUE(t.ui.boxes.empty()) << t.ui.boxes.back().text;
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("M-1\\BB\\DLN:Right;"), std::string::npos) << file();
    EXPECT_NE(file().find("M-1\\SI\\DLN-1:Right2;"), std::string::npos) << file();
}

TEST_F(MultiplexDialogTest, ANameThatIsEmptiedAndTypedAgainIsARename) {
    put(std::string(kHead) + kRow);
    t.write(groupFile('P', 1), "P-1\\DLN:Link 1;\r\n");
    t.write(groupFile('P', 2), "P-2\\DLN:Link 2;\r\n");
    t.write(groupFile('D', 2), "D-2\\DLN:Link 2;\r\n");
    t.ui.texts = {"", "New 1"};
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        press(dialog, "signalName");
        EXPECT_TRUE(find<QPushButton>(dialog, "cancel")->isEnabled());
        press(dialog, "signalName");
        EXPECT_EQ(t.read(groupFile('P', 1)), "P-1\\DLN:New 1;\r\n");
        EXPECT_FALSE(find<QPushButton>(dialog, "cancel")->isEnabled());
        for (const auto* const name : {"", "New 2"}) {
            door.next([name](QDialog& row) {
                find<QLineEdit>(row, "name")->clear();
                type(row, "name", QString::fromLatin1(name));
                press(row, "ok");
            });
            press(list(dialog), "edit");
        }
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.read(groupFile('P', 2)), "P-2\\DLN:New 2;\r\n");
    EXPECT_EQ(t.read(groupFile('D', 2)), "D-2\\DLN:New 2;\r\n");
    EXPECT_NE(file().find("M-1\\BB\\DLN:New 1;"), std::string::npos) << file();
    EXPECT_NE(file().find("M-1\\SI\\DLN-1:New 2;"), std::string::npos) << file();
}

TEST_F(MultiplexDialogTest, TheOldNameOfAnEmptiedSignalCanBeTypedAgain) {
    put(kHead);
    t.write(groupFile('P', 1), "P-1\\DLN:Link 1;\r\n");
    t.ui.texts = {"", "Link 1"};
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        press(dialog, "signalName");
        press(dialog, "signalName");
        EXPECT_TRUE(t.ui.boxes.empty()) << t.ui.boxes.back().text;
        EXPECT_TRUE(find<QPushButton>(dialog, "cancel")->isEnabled());
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("M-1\\BB\\DLN:Link 1;"), std::string::npos);
}

TEST_F(MultiplexDialogTest, ANameThatBecomesALinksByTheSignalTypeIsARename) {
    put(kHead);
    t.write(groupFile('P', 1), "P-1\\DLN:Link 1;\r\n");
    t.ui.texts = {"New"};
    EXPECT_TRUE(edit([](QDialog& dialog) {
        choose(dialog, "BSG1", "ANALOG");
        press(dialog, "signalName");
        choose(dialog, "BSG1", "PCM");
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.read(groupFile('P', 1)), "P-1\\DLN:New;\r\n");
    EXPECT_NE(file().find("M-1\\BB\\DLN:New;"), std::string::npos) << file();
}

TEST_F(MultiplexDialogTest, ANewSubcarrierHasTheFirstTypeSoThatItsNameStays) {
    put(kHead);
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        door.next([](QDialog& row) {
            EXPECT_EQ(find<QComboBox>(row, "SI2-n")->currentText(), QStringLiteral("PCM"));
            type(row, "name", QStringLiteral("Link 3"));
            press(row, "ok");
        });
        press(list(dialog), "add");
        press(dialog, "ok");
    }));
    EXPECT_TRUE(file().ends_with("M-1\\SI2-1:PCM;\r\nM-1\\SI\\DLN-1:Link 3;\r\n")) << file();
}

TEST_F(MultiplexDialogTest, ANameWithATypeThatIsNoEntryIsNotThrownAway) {
    put(std::string(kHead) + "M-1\\SI\\N:1;\r\nM-1\\SI2-1:XYZ;\r\n");
    edit([this](QDialog& dialog) {
        door.next([this](QDialog& row) {
            type(row, "name", QStringLiteral("Link 3"));
            press(row, "ok");
            EXPECT_TRUE(row.isVisible());
            EXPECT_TRUE(t.ui.hasText("You must select a Data Type for this name."));
            choose(row, "SI2-n", "PAM");
            press(row, "ok");
        });
        press(list(dialog), "edit");
        press(dialog, "ok");
    });
    EXPECT_NE(file().find("M-1\\SI\\DLN-1:Link 3;"), std::string::npos) << file();
}

TEST_F(MultiplexDialogTest, F2OpensTheRowSoThatNoNamePassesTheRename) {
    put(std::string(kHead) + kRow);
    edit([this](QDialog& dialog) {
        door.next([](QDialog& row) {
            EXPECT_EQ(row.objectName(), QStringLiteral("EditRow"));
            press(row, "cancel");
        });
        QTest::keyClick(list(dialog).view(), Qt::Key_F2);
        press(dialog, "cancel");
    });
}

TEST_F(MultiplexDialogTest, ANameThatIsTakenOrHoldsASemicolonPutsTheOldOneBack) {
    put(kHead);
    t.write(groupFile('P', 1), "P-1\\DLN:Link 1;\r\n");
    t.write(groupFile('P', 2), "P-2\\DLN:Taken;\r\n");
    t.ui.texts = {"Taken", "a;b", std::nullopt};
    EXPECT_FALSE(edit([this](QDialog& dialog) {
        auto* const name = find<QPushButton>(dialog, "signalName");
        press(dialog, "signalName");
        EXPECT_EQ(t.ui.boxes.back().id, 306);
        EXPECT_EQ(name->text(), QStringLiteral("Link 1"));
        press(dialog, "signalName");
        EXPECT_EQ(t.ui.boxes.back().id, 402);
        EXPECT_EQ(name->text(), QStringLiteral("Link 1"));
        press(dialog, "signalName");
        EXPECT_EQ(name->text(), QStringLiteral("Link 1"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(t.ui.boxes.size(), 2U);
    EXPECT_EQ(file(), kHead);
}

TEST_F(MultiplexDialogTest, AnAnalogSignalHasAMeasurementWhoseNameIsNoLink) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:ANA;\r\nM-1\\BB\\MN:TEMP;\r\n");
    t.ui.texts = {"SPEED"};
    EXPECT_TRUE(edit([](QDialog& dialog) {
        press(dialog, "signalName");
        EXPECT_TRUE(find<QPushButton>(dialog, "cancel")->isEnabled());
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.ui.textPrompts[0].title, "Enter Measurement Name");
    EXPECT_NE(file().find("M-1\\BB\\MN:SPEED;"), std::string::npos);
}

TEST_F(MultiplexDialogTest, ASubcarrierIsAdded) {
    put(kHead);
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        door.next([](QDialog& row) {
            type(row, "SI1-n", QStringLiteral("7"));
            choose(row, "SI2-n", "ANAlog");
            choose(row, "SI3-n", "POSitive");
            type(row, "SIF1-n", QStringLiteral("6.5"));
            choose(row, "SIF2-n", "CD - Constant Delay");
            type(row, "name", QStringLiteral("TEMP"));
            press(row, "ok");
        });
        press(list(dialog), "add");
        EXPECT_EQ(list(dialog).cellsOfRow(0),
                  (ListRow{"7", "ANAlog", "POSitive", "6.5", "CD - Constant Delay", "TEMP"}));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), std::string(kHead) +
                          "M-1\\SI\\N:1;\r\nM-1\\SI1-1:7;\r\nM-1\\SI2-1:ANA;\r\nM-1\\SI3-1:POS;\r\n"
                          "M-1\\SIF1-1:6.5;\r\nM-1\\SIF2-1:CD;\r\nM-1\\SI\\MN-1:TEMP;\r\n");
}

TEST_F(MultiplexDialogTest, AnAddThatIsCancelledLeavesNoRow) {
    put(std::string(kHead) + kRow);
    EXPECT_FALSE(edit([this](QDialog& dialog) {
        door.next([](QDialog& row) { press(row, "cancel"); });
        press(list(dialog), "add");
        EXPECT_EQ(list(dialog).rowCount(), 1);
        EXPECT_EQ(list(dialog).currentRow(), 0);
        press(dialog, "cancel");
    }));
}

TEST_F(MultiplexDialogTest, ARowThatBecomesOtherLosesItsName) {
    put(std::string(kHead) + kRow);
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        door.next([](QDialog& row) {
            EXPECT_EQ(find<QComboBox>(row, "SIF2-n")->currentText(),
                      QStringLiteral("CA - Constant Amplitude"));
            choose(row, "SI2-n", "OTHer");
            press(row, "ok");
        });
        press(list(dialog), "edit");
        EXPECT_EQ(list(dialog).cellsOfRow(0).back(), "");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file().find("Link 2"), std::string::npos);
}

TEST_F(MultiplexDialogTest, ATakenNameKeepsTheRowDialogOpenAndAFreeOneIsRenamed) {
    put(std::string(kHead) + kRow);
    t.write(groupFile('P', 1), "P-1\\DLN:Taken;\r\n");
    t.write(groupFile('P', 2), "P-2\\DLN:Link 2;\r\n");
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        door.next([this](QDialog& row) {
            type(row, "name", QStringLiteral("Taken"));
            press(row, "ok");
            EXPECT_TRUE(row.isVisible());
            EXPECT_EQ(t.ui.boxes.back().id, 306);
            type(row, "name", QStringLiteral("Free"));
            press(row, "ok");
        });
        press(list(dialog), "edit");
        EXPECT_EQ(t.read(groupFile('P', 2)), "P-2\\DLN:Free;\r\n");
        EXPECT_FALSE(find<QPushButton>(dialog, "cancel")->isEnabled());
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("M-1\\SI\\DLN-1:Free;"), std::string::npos);
}

TEST_F(MultiplexDialogTest, DeletingARowAsksUnderTheNameOfTheList) {
    put(std::string(kHead) + kRow);
    t.ui.byId[83] = Button::Yes;
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        press(list(dialog), "delete");
        EXPECT_EQ(t.ui.boxes.back().title, "IRIG Sub Carriers");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), std::string(kHead) + "M-1\\SI\\N:0;\r\n");
}

TEST_F(MultiplexDialogTest, WhatWasNotReadOfARowStaysWithItWhenRowsAreSorted) {
    put(std::string(kHead) +
        "M-1\\SI\\N:2;\r\nM-1\\SI1-1:9;\r\nM-1\\SI2-1:OTH;\r\nM-1\\SI\\DLN-1:Old;\r\n"
        "M-1\\SI1-2:3;\r\nM-1\\SI2-2:OTH;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit([this](QDialog& dialog) {
        list(dialog).sortBy(0);
        list(dialog).selectRow(1);
        door.next([](QDialog& row) {
            type(row, "SI1-n", QStringLiteral("4"));
            press(row, "ok");
        });
        press(list(dialog), "edit");
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("M-1\\SI1-2:4;"), std::string::npos) << file();
    EXPECT_TRUE(file().ends_with("M-1\\SI\\DLN-1:Old;\r\n")) << file();
}

TEST_F(MultiplexDialogTest, NoMoreThanNinetyNineSubcarriers) {
    std::string bytes = std::string(kHead) + "M-1\\SI\\N:99;\r\n";
    put(bytes);
    edit([this](QDialog& dialog) {
        EXPECT_EQ(list(dialog).rowCount(), 99);
        EXPECT_FALSE(find<QPushButton>(list(dialog), "add")->isEnabled());
        press(dialog, "cancel");
    });
}

TEST_F(MultiplexDialogTest, WhatThePageDoesNotKnowIsKeptIfTheUserWants) {
    put(std::string(kHead) + "M-1\\NEW:1;\r\nM-1\\NEW:2;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit([](QDialog& dialog) {
        type(dialog, "RC", QStringLiteral("9"));
        press(dialog, "ok");
    }));
    EXPECT_TRUE(file().ends_with("M-1\\RC:9;\r\nM-1\\NEW:1;\r\nM-1\\NEW:2;\r\n")) << file();
}

}  // namespace
}  // namespace kavu
