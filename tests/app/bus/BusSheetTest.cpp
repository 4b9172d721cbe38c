#include "app/bus/BusFormStage.h"
#include "app/bus/BusSheet.h"
#include "core/talk/ProfileSettings.h"

#include <QLineEdit>
#include <QTableView>

namespace kavu {
namespace {

using test::BusFormStage;
using test::choose;
using test::find;
using test::listOf;
using test::openPage;
using test::press;
using test::smallBus;
using test::type;

TEST(BusSheet, EveryPageIsFilledWithRealInput) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"9"};
    EXPECT_TRUE(stage.open({1}, [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bus"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        choose(dialog, "BID", QStringLiteral("011"));
        type(dialog, "BNA", QStringLiteral("Left wing"));
        choose(dialog, "BT", QStringLiteral("A429"));
        stage.door.next([](QDialog& word) {
            EXPECT_EQ(test::checkWindow(word), std::vector<std::string>{});
            type(word, "UMN1", QStringLiteral("TIME"));
            choose(word, "U1P", QStringLiteral("Odd"));
            choose(word, "U1PT", QStringLiteral("Leads Word"));
            type(word, "U1M", QStringLiteral("0011"));
            choose(word, "U1T", QStringLiteral("LSB First"));
            press(word, "ok");
        });
        listOf(dialog, "userDefinedWords").addRow();
        openPage(dialog, 1);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        stage.door.next([](QDialog& message) {
            EXPECT_EQ(message.windowTitle(), QStringLiteral("Message #2"));
            type(message, "MNA", QStringLiteral("Second"));
            type(message, "DWC", QStringLiteral("1"));
            test::typeInto(message, "TRA", QStringLiteral("1"));
            test::typeInto(message, "STA", QStringLiteral("10"));
            press(message, "ok");
        });
        listOf(dialog, "messages").addRow();
        openPage(dialog, 2);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        stage.door.next([](QDialog& terminal) {
            type(terminal, "name", QStringLiteral("GPS"));
            type(terminal, "address", QStringLiteral("111"));
            press(terminal, "ok");
        });
        listOf(dialog, "remoteTerminals").addRow();
        openPage(dialog, 3);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        listOf(dialog, "trackSequences").addRow();
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value({1}, "BID"), "011");
    EXPECT_EQ(stage.value({1}, "BNA"), "Left wing");
    EXPECT_EQ(stage.value({1}, "BT"), "A429");
    EXPECT_EQ(stage.value({1}, "UMN1"), "TIME");
    EXPECT_EQ(stage.value({1}, "U1P"), "OD");
    EXPECT_EQ(stage.value({1}, "U1PT"), "L");
    EXPECT_EQ(stage.value({1}, "U1M"), "0011");
    EXPECT_EQ(stage.value({1}, "U1T"), "LSB");
    EXPECT_EQ(stage.value({1, 2}, "MNA"), "Second");
    EXPECT_EQ(stage.value({1, 2}, "TRA"), "00001");
    const auto& lists = stage.definition.listKnownTerminals(1);
    ASSERT_EQ(lists.remote.size(), 3U);
    EXPECT_EQ(lists.remote[2], (Terminal{"GPS", "00111"}));
    EXPECT_NE(stage.bus.pack(stage.definition).find("TS-1-2:9;"), std::string::npos);
    EXPECT_EQ(stage.ui().textPrompts[0].title, "Enter New Track Sequence");
}

TEST(BusSheet, CancelTakesBackWhatItsListsHaveDone) {
    BusFormStage stage(smallBus());
    const auto before = stage.definition.group;
    const auto terminals = stage.definition.terminals;
    stage.ui().otherwise = Button::Yes;
    EXPECT_FALSE(stage.open({1}, [&](QDialog& dialog) {
        openPage(dialog, 1);
        listOf(dialog, "messages").deleteRow();
        openPage(dialog, 3);
        listOf(dialog, "trackSequences").deleteRow();
        EXPECT_EQ(stage.value({1, 1}, "MID"), "no row");
        press(dialog, "cancel");
    }));
    EXPECT_EQ(stage.definition.group, before);
    EXPECT_EQ(stage.definition.terminals, terminals);
}

TEST(BusSheet, ANewBusIsCalledByItsNumberAndIsGoneAfterCancel) {
    BusFormStage stage(smallBus());
    stage.ui().otherwise = Button::Yes;
    const auto before = stage.definition.group;
    EXPECT_FALSE(stage.add({}, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Bus #2"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(stage.definition.group, before);
    EXPECT_TRUE(stage.add({}, [](QDialog& dialog) {
        type(dialog, "BNA", QStringLiteral("Second"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value({2}, "BNA"), "Second");
}

TEST(BusSheet, DeletesAskUnderTheirTitles) {
    BusFormStage stage(smallBus({"UMN1-1:A", "UMN2-1:B"}));
    stage.ui().otherwise = Button::Yes;
    EXPECT_TRUE(stage.open({1}, [&](QDialog& dialog) {
        listOf(dialog, "userDefinedWords").deleteRow();
        openPage(dialog, 1);
        listOf(dialog, "messages").deleteRow();
        openPage(dialog, 3);
        listOf(dialog, "trackSequences").deleteRow();
        press(dialog, "ok");
    }));
    std::vector<std::string> titles;
    for (const auto& box : stage.ui().boxes) {
        EXPECT_EQ(box.id, -82);
        titles.push_back(box.title);
    }
    EXPECT_EQ(titles, (std::vector<std::string>{"Delete This User Defined Word?",
                                                "Delete This Message", "Delete Track Sequence"}));
    EXPECT_EQ(stage.value({1}, "UMN1"), "B");
    EXPECT_EQ(stage.value({1}, "UMN2"), "");
}

TEST(BusSheet, ATrackIsEditedUnderItsOwnPromptAndRefusedWithASemicolon) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"a;b", "8"};
    EXPECT_TRUE(stage.open({1}, [](QDialog& dialog) {
        openPage(dialog, 3);
        listOf(dialog, "trackSequences").editRow();
        press(dialog, "ok");
    }));
    ASSERT_EQ(stage.ui().textPrompts.size(), 2U);
    EXPECT_EQ(stage.ui().textPrompts[0].title, "Edit Track Sequence");
    EXPECT_EQ(stage.ui().textPrompts[0].initial, "7");
    EXPECT_EQ(stage.ui().textPrompts[0].limit, 3U);
    EXPECT_EQ(stage.ui().textPrompts[1].initial, "a;b") << "what was entered is not lost";
    EXPECT_EQ(stage.shown(), std::vector{402});
    EXPECT_NE(stage.bus.pack(stage.definition).find("TS-1-1:8;"), std::string::npos);
}

TEST(BusSheet, TypesAndUserDefinedWordsComeWithTheirEditions) {
    struct Case {
        int edition;
        bool hasType;
        int wordColumns;
    };
    for (const auto& each : {Case{2001, false, 0}, Case{2004, true, 0}, Case{2007, true, 1},
                             Case{2009, true, 5}, Case{2011, true, 5}}) {
        BusFormStage stage(smallBus(), each.edition);
        stage.open({1}, [&](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("BT")) != nullptr, each.hasType)
                << each.edition;
            auto* const words = dialog.findChild<EditableList*>(QStringLiteral("userDefinedWords"));
            EXPECT_EQ(words == nullptr ? 0 : words->view()->model()->columnCount(),
                      each.wordColumns)
                << each.edition;
            press(dialog, "cancel");
        });
    }
}

TEST(BusSheet, AWordIsKnownByAMaskOnly) {
    BusFormStage stage(smallBus({"UMN1-1:A"}));
    stage.ui().otherwise = Button::Yes;
    stage.open({1}, [&](QDialog& dialog) {
        stage.door.next([&](QDialog& word) {
            type(word, "U1M", QStringLiteral("12"));
            press(word, "ok");
            EXPECT_TRUE(word.isVisible());
            EXPECT_EQ(word.focusWidget()->objectName(), QStringLiteral("U1M"));
            press(word, "cancel");
        });
        listOf(dialog, "userDefinedWords").editRow();
        press(dialog, "cancel");
    });
    ASSERT_FALSE(stage.ui().boxes.empty());
    EXPECT_EQ(stage.ui().boxes[0].id, 142);
    EXPECT_EQ(stage.ui().boxes[0].title, "Invalid BitMask Entered");
}

TEST(BusSheet, ThePageThatWasOpenLastIsRemembered) {
    BusFormStage stage(smallBus());
    stage.open({1}, [](QDialog& dialog) {
        openPage(dialog, 2);
        press(dialog, "cancel");
    });
    EXPECT_EQ(stage.form.settings.profileInteger("PropSheet", "Last1553BusPage", 1), 3);
    stage.open({1}, [](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<PropertySheet&>(dialog).openedPage(), 2);
        press(dialog, "cancel");
    });
}

// --- "Defined Terminals" ------------------------------------------------------------------------

TEST(BusTerminalsPage, AWrongAddressIsRefusedAndTheDialogStaysOpen) {
    BusFormStage stage(smallBus());
    stage.ui().otherwise = Button::Yes;
    stage.open({1}, [&](QDialog& dialog) {
        openPage(dialog, 2);
        stage.door.next([&](QDialog& terminal) {
            EXPECT_EQ(terminal.windowTitle(), QStringLiteral("Subterminal"));
            type(terminal, "address", QStringLiteral("012"));
            press(terminal, "ok");
            EXPECT_TRUE(terminal.isVisible());
            type(terminal, "address", QStringLiteral("00010"));
            press(terminal, "ok");
            EXPECT_TRUE(terminal.isVisible()) << "the address is in the list";
            type(terminal, "address", QStringLiteral("1X1"));
            press(terminal, "ok");
        });
        listOf(dialog, "subTerminals").addRow();
        press(dialog, "ok");
    });
    EXPECT_EQ(stage.shown(), (std::vector{376, 321}));
    EXPECT_EQ(stage.ui().boxes[0].title, "Invalid Address Entered");
    EXPECT_EQ(stage.definition.listKnownTerminals(1).sub.back(), (Terminal{"", "001X1"}));
}

TEST(BusTerminalsPage, DefaultsAreSavedAndLoadedIntoAnotherBus) {
    BusFormStage stage(smallBus());
    stage.ui().otherwise = Button::Yes;
    stage.open({1}, [](QDialog& dialog) {
        openPage(dialog, 2);
        press(dialog, "saveAsDefaults");
        press(dialog, "loadDefaults");
        press(dialog, "cancel");
    });
    ASSERT_EQ(stage.ui().boxes.size(), 2U);
    EXPECT_EQ(stage.ui().boxes[0].id, 394);
    EXPECT_EQ(stage.ui().boxes[1].text,
              "No new default terminal definitions existed, or they are already defined");
    stage.add({}, [](QDialog& dialog) {
        openPage(dialog, 2);
        press(dialog, "loadDefaults");
        EXPECT_EQ(listOf(dialog, "remoteTerminals").rows(),
                  (std::vector<ListRow>{{"RADAR", "00101"}}));
        press(dialog, "ok");
    });
    EXPECT_EQ(stage.ui().boxes.back().id, 393);
    EXPECT_EQ(stage.definition.listKnownTerminals(2).sub,
              (std::vector<Terminal>{{"STATUS", "00010"}}));
}

}  // namespace
}  // namespace kavu
