#include "app/bus/BusFormStage.h"
#include "app/bus/BusMessageSheet.h"
#include "core/talk/ProfileSettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kavu {
namespace {

using test::BusFormStage;
using test::choose;
using test::find;
using test::openPage;
using test::press;
using test::smallBus;
using test::type;
using test::typeInto;

const BusPlace kFirstMessage = {1, 1};

PropertySheet& sheetOf(QDialog& dialog) {
    return dynamic_cast<PropertySheet&>(dialog);
}
std::string textOf(QDialog& dialog, const char* name) {
    return toBytes(find<QComboBox>(dialog, name)->currentText());
}
/// Leaves the message as it was.
void giveUp(BusFormStage& stage, QDialog& dialog) {
    stage.ui().otherwise = Button::Yes;
    press(dialog, "cancel");
}

TEST(BusMessageForm, EveryPageIsFilledWithRealInput) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"77"};
    EXPECT_TRUE(stage.open(kFirstMessage, [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bus Message"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "MID");
        type(dialog, "MNA", QStringLiteral("Height"));
        choose(dialog, "TRM", QStringLiteral("Transmit"));
        typeInto(dialog, "TRN", QStringLiteral("GPS"));
        typeInto(dialog, "TRA", QStringLiteral("110"));
        typeInto(dialog, "STN", QStringLiteral("ALT"));
        typeInto(dialog, "STA", QStringLiteral("0X1"));
        type(dialog, "DWC", QStringLiteral("5"));
        choose(dialog, "CWE", QStringLiteral("Use Command Word value"));
        type(dialog, "CMD", QStringLiteral("0bF4"));
        choose(dialog, "BMG\\FOT", QStringLiteral("True"));
        openPage(dialog, 1);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        stage.door.next([](QDialog& measurement) {
            type(measurement, "MN", QStringLiteral("HEIGHT"));
            press(measurement, "ok");
        });
        find<EditableList>(dialog, "measurements")->addRow();
        openPage(dialog, 2);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        choose(dialog, "RCWE", QStringLiteral("Use Command Word value"));
        type(dialog, "RCMD", QStringLiteral("12"));
        typeInto(dialog, "RTRN", QStringLiteral("INS"));
        typeInto(dialog, "RTRA", QStringLiteral("11"));
        typeInto(dialog, "RSTN", QStringLiteral("NAV"));
        typeInto(dialog, "RSTA", QStringLiteral("100"));
        type(dialog, "RDWC", QStringLiteral("6"));
        openPage(dialog, 3);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        type(dialog, "SPR", QStringLiteral("none"));
        auto* const text = find<QPlainTextEdit>(dialog, "SPR");
        QTest::keyClick(text, Qt::Key_Return);
        QTest::keyClicks(text, QStringLiteral("at all"));
        openPage(dialog, 4);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        type(dialog, "MCD", QStringLiteral("code"));
        type(dialog, "MCW", QStringLiteral("word"));
        press(dialog, "ok");
    }));
    const std::vector<std::pair<const char*, const char*>> expected = {
        {"MID", "77"},     {"MNA", "Height"}, {"TRM", "1"},   {"TRN", "GPS"},  {"TRA", "00110"},
        {"STN", "ALT"},    {"STA", "000X1"},  {"DWC", "5"},   {"CWE", "W"},    {"CMD", "0bF4"},
        {"BMG\\FOT", "T"}, {"RCWE", "W"},     {"RCMD", "12"}, {"MCD", "code"}, {"MCW", "word"}};
    for (const auto& [stem, value] : expected) {
        EXPECT_EQ(stage.value(kFirstMessage, stem), value) << stem;
    }
    const auto& command = receiveOf(std::as_const(*busRowAt(stage.definition, kFirstMessage)));
    EXPECT_EQ(busValue(command, BusLevel::Receive, "RTRN"), "INS");
    EXPECT_EQ(busValue(command, BusLevel::Receive, "RTRA"), "00011");
    EXPECT_EQ(busValue(command, BusLevel::Receive, "RSTA"), "00100");
    EXPECT_EQ(busValue(command, BusLevel::Receive, "RDWC"), "6");
    EXPECT_EQ(stage.value({1, 1, 2}, "MN"), "HEIGHT");
    EXPECT_EQ(stage.ui().textPrompts[0].title, "Enter New Message Number");
    EXPECT_NE(stage.bus.pack(stage.definition).find("SPR-1-1:none"), std::string::npos);
}

TEST(BusMessageForm, ThePagesAreThoseOfTheEditionAndOfTheBus) {
    struct Case {
        int edition;
        const char* type;
        const char* third;
        int pages;
    };
    for (const auto& each :
         {Case{2011, "1553", "1553_EDIT_MESSAGE3", 5}, Case{2011, "a429", "1553_EDIT_MESSAGE3", 6},
          Case{2009, "1553", "1553_EDIT_MESSAGE3_PRE_2011", 5},
          Case{2004, "A429", "1553_EDIT_MESSAGE3_PRE_2011", 6},
          Case{2001, "A429", "1553_EDIT_MESSAGE3_PRE_2011", 5}}) {
        BusFormStage stage(smallBus({std::string("BT-1:") + each.type}), each.edition);
        stage.open(kFirstMessage, [&](QDialog& dialog) {
            auto& sheet = sheetOf(dialog);
            EXPECT_EQ(sheet.pageCount(), each.pages) << each.edition;
            EXPECT_EQ(toBytes(sheet.page(2).objectName()), each.third);
            EXPECT_EQ(sheet.page(2).title(), "RT/RT Receive Command List");
            const bool has2011 = each.edition >= 2011;
            for (const auto* const code : {"CWE", "CMD", "RCWE", "RCMD"}) {
                EXPECT_EQ(dialog.findChild<QWidget*>(QLatin1String(code)) != nullptr, has2011)
                    << code;
            }
            EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("BMG\\FOT")) != nullptr,
                      each.edition >= 2009);
            press(dialog, "cancel");
        });
    }
}

TEST(BusMessageForm, AnArincMessageHasItsLabelAndNoTerminalIsMissed) {
    BusFormStage stage({"NBS\\N:1", "BT-1:A429", "NMS\\N-1:1", "MID-1-1:1"}, 2004);
    EXPECT_TRUE(stage.open(kFirstMessage, [](QDialog& dialog) {
        openPage(dialog, 5);
        EXPECT_EQ(sheetOf(dialog).page(5).title(), "ARINC 429 Information");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        type(dialog, "LBL", QStringLiteral("203"));
        choose(dialog, "SDI", QStringLiteral("ALL"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value(kFirstMessage, "LBL"), "203");
    EXPECT_EQ(stage.value(kFirstMessage, "SDI"), "ALL");
    EXPECT_TRUE(stage.ui().boxes.empty());
}

TEST(BusMessageForm, TheTypeOfTheMessageIsShown) {
    BusFormStage stage(smallBus());
    stage.open(kFirstMessage, [](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "TYPE"), "Controller To RT");
        EXPECT_EQ(find<QComboBox>(dialog, "TYPE")->count(), 8);
        press(dialog, "cancel");
    });
    BusFormStage without(smallBus({"TRM-1-1:1"}));
    without.open(kFirstMessage, [](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "TYPE")->currentIndex(), -1)
            << "no type fits a transmitting message without a receive command";
        press(dialog, "cancel");
    });
}

TEST(BusMessageForm, AChosenTypeChangesModeAndAddressAtOnceAndTellsIt) {
    BusFormStage stage(smallBus());
    stage.open(kFirstMessage, [&](QDialog& dialog) {
        choose(dialog, "TYPE", QStringLiteral("RT To Controller"));
        EXPECT_EQ(textOf(dialog, "TRM"), "Transmit");
        EXPECT_EQ(stage.shown().front(), 382);
        choose(dialog, "TYPE", QStringLiteral("Broadcast Mode Command"));
        EXPECT_EQ(textOf(dialog, "TRA"), "11111");
        EXPECT_EQ(stage.ui().countBoxes(380), 1);
        giveUp(stage, dialog);
    });
}

TEST(BusMessageForm, ASubTerminalOf31IsRefusedForRtToRtAndAcceptedForRtToController) {
    BusFormStage stage(smallBus({"STA-1-1:11111", "RTRA-1-1:00001", "RSTA-1-1:00001"}));
    EXPECT_TRUE(stage.open(kFirstMessage, [&](QDialog& dialog) {
        auto* const types = find<QComboBox>(dialog, "TYPE");
        types->setCurrentIndex(types->findText(QStringLiteral("RT To RT")));
        stage.ui().boxes.clear();
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(stage.shown(), std::vector{387});
        types->setCurrentIndex(types->findText(QStringLiteral("RT To Controller")));
        stage.ui().boxes.clear();
        press(dialog, "ok");
        EXPECT_EQ(stage.shown(), std::vector<int>{});
    }));
    EXPECT_EQ(stage.value(kFirstMessage, "TRM"), "1");
}

TEST(BusMessageForm, AnRtToRtBroadcastMakesTheReceiveAddress31) {
    BusFormStage stage(smallBus({"RTRA-1-1:00001", "RSTA-1-1:00001"}));
    EXPECT_TRUE(stage.open(kFirstMessage, [&](QDialog& dialog) {
        auto* const types = find<QComboBox>(dialog, "TYPE");
        types->setCurrentIndex(types->findText(QStringLiteral("RT To RT(s) Broadcast")));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.shown(), (std::vector{382, 386}));
    EXPECT_EQ(busValue(receiveOf(std::as_const(*busRowAt(stage.definition, kFirstMessage))),
                       BusLevel::Receive, "RTRA"),
              "11111");
}

TEST(BusMessageForm, RefusedAddressesAndWordsKeepTheSheetOpenWithTheFocusOnThem) {
    BusFormStage stage(smallBus());
    stage.open(kFirstMessage, [&](QDialog& dialog) {
        typeInto(dialog, "TRA", QStringLiteral("00x"));
        openPage(dialog, 4);
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(sheetOf(dialog).openedPage(), 0);
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("TRA"));
        typeInto(dialog, "TRA", QStringLiteral("1"));
        type(dialog, "CMD", QStringLiteral("12G"));
        press(dialog, "ok");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("CMD"));
        type(dialog, "CMD", QString());
        QTest::keyClick(find<QWidget>(dialog, "CMD"), Qt::Key_Delete);
        openPage(dialog, 2);
        typeInto(dialog, "RSTA", QStringLiteral("2"));
        openPage(dialog, 0);
        press(dialog, "ok");
        EXPECT_EQ(sheetOf(dialog).openedPage(), 2);
        giveUp(stage, dialog);
    });
    std::vector<std::pair<int, std::string>> refused;
    for (const auto& box : stage.ui().boxes) {
        if (box.id != 0) {
            refused.emplace_back(box.id, box.title);
        }
    }
    EXPECT_EQ(refused,
              (std::vector<std::pair<int, std::string>>{{376, "Invalid Address Entered"},
                                                        {392, "Illegal Value Entered"},
                                                        {376, "Invalid Address Entered"}}));
    EXPECT_EQ(stage.value(kFirstMessage, "TRA"), "00101");
}

TEST(BusMessageForm, ANewMessageIsToldWhatItMissesInOrder) {
    BusFormStage stage(smallBus());
    stage.add({1}, [&](QDialog& dialog) {
        press(dialog, "ok");
        typeInto(dialog, "TRN", QStringLiteral("GPS"));
        press(dialog, "ok");
        typeInto(dialog, "STN", QStringLiteral("ALT"));
        press(dialog, "ok");
        type(dialog, "DWC", QStringLiteral("1"));
        press(dialog, "ok");
    });
    EXPECT_EQ(stage.shown(), (std::vector{383, 383, 384}));
    EXPECT_TRUE(stage.ui().hasText("Please select a Remote Terminal before exiting."));
    EXPECT_TRUE(stage.ui().hasText("Please select a Sub Terminal before exiting."));
    EXPECT_EQ(stage.value({1, 2}, "STN"), "ALT");
}

TEST(BusMessageForm, DeriveFromOtherFieldsDeletesTheWord) {
    BusFormStage stage(smallBus({"CWE-1-1:W", "CMD-1-1:0BF4"}));
    EXPECT_TRUE(stage.open(kFirstMessage, [](QDialog& dialog) {
        choose(dialog, "CWE", QStringLiteral("Derive from other fields"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value(kFirstMessage, "CWE"), "F");
    EXPECT_EQ(stage.value(kFirstMessage, "CMD"), "");
}

TEST(BusMessageForm, AKnownTerminalGivesItsAddressAndAnAddressItsName) {
    BusFormStage stage(smallBus());
    stage.definition.terminals[0].remote.push_back({"GPS", "01110"});
    stage.definition.terminals[0].sub.push_back({"POSITION", "00111"});
    stage.open(kFirstMessage, [&](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "TRN")->count(), 2);
        typeInto(dialog, "TRN", QStringLiteral("GPS"));
        EXPECT_EQ(textOf(dialog, "TRA"), "01110");
        typeInto(dialog, "STA", QStringLiteral("00111"));
        EXPECT_EQ(textOf(dialog, "STN"), "STATUS") << "a name that is there stays";
        find<QComboBox>(dialog, "STN")->clearEditText();
        QTest::keyClick(find<QWidget>(dialog, "STN"), Qt::Key_Tab);
        typeInto(dialog, "STA", QStringLiteral("00010"));
        EXPECT_EQ(textOf(dialog, "STN"), "STATUS");
        giveUp(stage, dialog);
    });
}

TEST(BusMessageForm, WhatNobodyEditedKeepsItsBytes) {
    BusFormStage stage(smallBus({"MNA-1-1:K\xF6ln", "CWE-1-1:F", "CMD-1-1:0BF4", "TRM-1-1:0"}));
    const auto before = *busRowAt(std::as_const(stage.definition), kFirstMessage);
    EXPECT_TRUE(stage.open(kFirstMessage, [](QDialog& dialog) {
        openPage(dialog, 4);
        type(dialog, "MCD", QStringLiteral("code"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value(kFirstMessage, "MNA"), "K\xF6ln");
    EXPECT_EQ(stage.value(kFirstMessage, "CMD"), "0BF4") << "the word stays until F is chosen";
}

TEST(BusMessageForm, OfSeveralReceiveCommandsTheFirstIsShownAndTheOthersStay) {
    BusFormStage stage(smallBus({"RNRT\\N-1-1:2", "RTRN-1-1-1:A", "RTRN-1-1-2:B"}), 1996);
    EXPECT_TRUE(stage.open(kFirstMessage, [](QDialog& dialog) {
        openPage(dialog, 2);
        EXPECT_NE(find<QLabel>(dialog, "moreCommands"), nullptr);
        typeInto(dialog, "RTRN", QStringLiteral("C"));
        press(dialog, "ok");
    }));
    const auto text = stage.bus.pack(stage.definition);
    EXPECT_NE(text.find("RTRN-1-1-1:C;"), std::string::npos);
    EXPECT_NE(text.find("RTRN-1-1-2:B;"), std::string::npos);
}

TEST(BusMessageForm, ThePageThatWasOpenLastIsRemembered) {
    BusFormStage stage(smallBus());
    stage.open(kFirstMessage, [](QDialog& dialog) {
        openPage(dialog, 3);
        press(dialog, "cancel");
    });
    EXPECT_EQ(stage.form.settings.profileInteger("PropSheet", "Last1553MsgPage", 1), 4);
}

TEST(BusMessageForm, TheDatabaseHasItsPlaceUntilThereIsOneToAskFor) {
    BusFormStage stage(smallBus());
    stage.open(kFirstMessage, [](QDialog& dialog) {
        EXPECT_FALSE(find<QPushButton>(dialog, "addFromDatabase")->isEnabled());
        press(dialog, "cancel");
    });
    BusPlace asked;
    stage.setup.addFromDatabase = [&](QWidget&, const BusPlace& owner) {
        asked = owner;
        return true;
    };
    stage.open(kFirstMessage, [&](QDialog& dialog) {
        openPage(dialog, 1);
        press(dialog, "addFromDatabase");
        giveUp(stage, dialog);
    });
    EXPECT_EQ(asked, kFirstMessage);
}

}  // namespace
}  // namespace kavu
