#include "app/pcm/CounterStage.h"

#include <QListWidget>

namespace kavu {
namespace {

using test::buttonText;
using test::CounterStage;
using test::enabled;
using test::find;
using test::pick;
using test::press;
using test::operator+;

TEST(IdCounterDialog, IsThatOfTheEditionWithItsTitle) {
    for (const int edition : {2009, 2011}) {
        CounterStage s(edition);
        s.counter([edition](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit ID Counter Definition (FWP: 1)"));
            EXPECT_EQ(dialog.objectName(), edition < 2011
                                               ? QStringLiteral("Pre_106_11_IDCounterDialog")
                                               : QStringLiteral("IDCounterDialog"));
            EXPECT_EQ(dialog.findChild<QListWidget*>() != nullptr, edition < 2011);
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            press(dialog, "cancel");
        });
        EXPECT_TRUE(s.ui.boxes.empty());
    }
}

TEST(IdCounterDialog, OffersTheDefaultOrderFromTheEditionThatHasIt) {
    for (const int edition : {2007, 2009}) {
        CounterStage s(edition);
        s.counter([edition](QDialog& dialog) {
            EXPECT_EQ(find<QComboBox>(dialog, "IDC5")->count(), edition < 2009 ? 2 : 3);
            press(dialog, "cancel");
        });
    }
}

TEST(IdCounterDialog, OkStoresAllFields) {
    CounterStage s;
    s.ui.integers = {2, 10, 2, 7};
    EXPECT_TRUE(s.counter([](QDialog& dialog) {
        test::type(dialog, "ISF1", QStringLiteral("COUNT"));
        pick(dialog, "ISF2", QStringLiteral("OTher"));
        test::type(dialog, "IDC2", QStringLiteral("12"));
        press(dialog, "IDC3");
        test::type(dialog, "IDC4", QStringLiteral("11"));
        pick(dialog, "IDC5", QStringLiteral("LSB"));
        press(dialog, "IDC6");
        EXPECT_EQ(find<QLineEdit>(dialog, "IDC8")->text(), QStringLiteral("17"));
        press(dialog, "IDC7");
        press(dialog, "IDC9");
        EXPECT_EQ(find<QLineEdit>(dialog, "IDC8")->text(), QStringLiteral("15"));
        pick(dialog, "IDC10", QStringLiteral("DECrease"));
        EXPECT_EQ(find<QLineEdit>(dialog, "IDC8")->text(), QStringLiteral("5"));
        EXPECT_TRUE(find<QLineEdit>(dialog, "IDC8")->isReadOnly());
        press(dialog, "ok");
    }));
    const auto& counter = *s.format.idCounterOfWord(1);
    EXPECT_EQ(counter.name, "COUNT");
    EXPECT_EQ(counter.type, "OT");
    EXPECT_EQ(counter.wordLength, "12");
    EXPECT_EQ(counter.msbStartBit, "2");
    EXPECT_EQ(counter.counterLength, "11");
    EXPECT_EQ(counter.transferOrder, "L");
    EXPECT_EQ(counter.initialValue, "10");
    EXPECT_EQ(counter.startFrame, "2");
    EXPECT_EQ(counter.endFrame, "7");
    EXPECT_EQ(counter.endValue, "5");
    EXPECT_EQ(counter.countDirection, "DEC");
    EXPECT_EQ(counter.subframes.size(), 2U) << "the subframes stay";
    EXPECT_TRUE(s.format.changed);
}

TEST(IdCounterDialog, RefusedValuesAreToldAndTheOldOnesStay) {
    CounterStage s;
    s.ui.integers = {0, 0, 9, 8, 9, 1};
    s.counter([&](QDialog& dialog) {
        struct Row {
            const char* button;
            int message;
            const char16_t* stays;
        };
        for (const auto& row :
             {Row{"IDC3", 366, u"1"}, Row{"IDC7", 363, u"1"}, Row{"IDC7", 363, u"1"},
              Row{"IDC7", 364, u"1"}, Row{"IDC9", 363, u"8"}, Row{"IDC9", 364, u"8"}}) {
            s.ui.boxes.clear();
            press(dialog, row.button);
            EXPECT_EQ(s.lastBox(), row.message) << row.button;
            EXPECT_EQ(buttonText(dialog, row.button), QString::fromUtf16(row.stays));
        }
        s.ui.boxes.clear();
        press(dialog, "cancel");
        EXPECT_TRUE(s.ui.boxes.empty()) << "a refused value is no edit";
    });
    EXPECT_FALSE(s.format.changed);
}

TEST(IdCounterDialog, AnotherEndFrameAsksWhatBecomesOfRangesAndCancelKeepsItOpen) {
    CounterStage s(2011);
    ASSERT_TRUE(s.load(test::plainFormat(32, 8) + test::counterAt(1, 8),
                       test::listOf({test::wordFrame("A", 5, 7, 0, 7)})));
    s.ui.integers = {4};
    s.ui.queued = {Button::Cancel, Button::Yes};
    EXPECT_TRUE(s.counter([&](QDialog& dialog) {
        press(dialog, "IDC9");
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(s.format.idCounters[0].endFrame, "8");
        EXPECT_TRUE(s.format.hasMeasurement("A"));
        press(dialog, "ok");
    }));
    ASSERT_EQ(s.ui.boxes.size(), 2U);
    EXPECT_NE(s.ui.boxes[0].text.find("A: none of its places is left"), std::string::npos)
        << s.ui.boxes[0].text;
    EXPECT_EQ(s.format.idCounters[0].endFrame, "4");
}

TEST(IdCounterDialog, ABadNameOrLengthKeepsItOpen) {
    CounterStage s;
    createIdCounter(s.format, nullptr, 2);
    s.format.changed = false;
    s.counter([&](QDialog& dialog) {
        test::type(dialog, "ISF1", QStringLiteral("SFID2"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 365);
        EXPECT_NE(s.boxText(365).find("#2"), std::string::npos);
        find<QLineEdit>(dialog, "ISF1")->setFocus();
        QTest::keyClick(find<QLineEdit>(dialog, "ISF1"), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(find<QLineEdit>(dialog, "ISF1"), Qt::Key_Delete);
        EXPECT_FALSE(enabled(dialog, "delete")) << "without a name there is nothing to delete";
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 361);
        test::type(dialog, "ISF1", QStringLiteral("X"));
        test::type(dialog, "IDC4", QStringLiteral("17"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 362);
        EXPECT_TRUE(dialog.isVisible());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_EQ(s.format.idCounterOfWord(1)->name, "SFID");
    EXPECT_FALSE(s.format.changed);
}

TEST(IdCounterDialog, CancelAsksAfterAnEdit) {
    CounterStage s;
    s.ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(s.counter([](QDialog& dialog) {
        test::type(dialog, "ISF1", QStringLiteral("X"));
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.ui.boxes.size(), 2U);
    EXPECT_EQ(s.format.idCounterOfWord(1)->name, "SFID");
}

TEST(IdCounterDialog, DeleteIsRefusedWhileASubframeRefersToIt) {
    CounterStage s;
    s.counter([&](QDialog& dialog) {
        press(dialog, "delete");
        EXPECT_EQ(s.lastBox(), 360);
        EXPECT_EQ(s.boxText(360),
                  "You cannot delete this ID Counter. S references this ID Counter.");
        press(dialog, "cancel");
    });
    createIdCounter(s.format, nullptr, 2);
    s.ui.byId[129] = Button::Yes;
    EXPECT_TRUE(s.counter([](QDialog& dialog) { press(dialog, "delete"); }, 2));
    EXPECT_EQ(s.format.wordType(2), WordType::Minor);
}

TEST(IdCounterDialog, DeleteAsksAboutTheCountersThatTheNextLoadWouldNotFind) {
    CounterStage s;
    for (const int fwp : {5, 6}) {
        ASSERT_TRUE(deleteSubframe(s.format, nullptr, fwp, true));
    }
    ASSERT_TRUE(createIdCounter(s.format, nullptr, 2));
    s.ui.byId[129] = Button::Yes;
    EXPECT_FALSE(s.counter([&](QDialog& dialog) {
        s.ui.otherwise = Button::Cancel;
        press(dialog, "delete");
        EXPECT_EQ(s.ui.boxes.back().title, "Adjust Measurements?");
        EXPECT_NE(s.ui.boxes.back().text.find("ID counter SFID2: lost."), std::string::npos);
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(countIdCounters(s.format), 2);
    s.ui.otherwise = Button::Yes;
    EXPECT_TRUE(s.counter([](QDialog& dialog) { press(dialog, "delete"); }));
    ASSERT_EQ(s.format.idCounters.size(), 1U);
    EXPECT_EQ(s.format.idCounters[0].name, "SFID2");
    EXPECT_EQ(wordOfIdCounter(s.format, 0), 2);
}

TEST(IdCounterDialog, ACounterThatHasGoneIsToldWhenItIsStoredOrDeleted) {
    CounterStage s(2011);
    s.counter([&](QDialog& dialog) {
        ASSERT_TRUE(deleteIdCounter(s.format, nullptr, 1));
        s.format.changed = false;
        test::type(dialog, "ISF1", QStringLiteral("NEW"));
        for (const auto* const button : {"ok", "delete"}) {
            s.ui.boxes.clear();
            press(dialog, button);
            ASSERT_EQ(s.lastBox(), 359) << button;
            EXPECT_EQ(s.ui.boxes.back().titleId, 81);
            EXPECT_TRUE(dialog.isVisible());
        }
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.format.changed);
}

TEST(IdCounterDialog, ADoubleClickOpensASubframeWhichStaysEditedAfterCancel) {
    CounterStage s;
    EXPECT_TRUE(s.counter([&](QDialog& dialog) {
        auto* const list = find<QListWidget>(dialog, "editSubframes");
        ASSERT_EQ(list->count(), 2);
        s.door.next([](QDialog& subframe) {
            EXPECT_EQ(subframe.windowTitle(), QStringLiteral("Edit Subframe Definition (FWP: 6)"));
            test::type(subframe, "name", QStringLiteral("U"));
            press(subframe, "ok");
        });
        emit list->itemActivated(list->item(1));
        EXPECT_EQ(list->item(1)->text(), QStringLiteral("U"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.format.subframeOfWord(6)->name, "U");
}

TEST(IdCounterDialog, EnterInTheListOpensTheSubframeAndIsNoOkForTheCounter) {
    CounterStage s;
    s.counter([&](QDialog& dialog) {
        auto* const list = find<QListWidget>(dialog, "editSubframes");
        s.door.next([](QDialog& subframe) { press(subframe, "cancel"); });
        QTest::keyClick(list, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    });
    EXPECT_EQ(s.door.names.size(), 2U);
}

TEST(IdCounterDialog, NamesThatAreNoCharactersLeadToTheirSubframesAndStay) {
    CounterStage s;
    const std::string name = "T\xe9l\xe9";
    s.format.subframeOfWord(6)->name = name;
    s.format.subframesChanged();
    EXPECT_TRUE(s.counter([&](QDialog& dialog) {
        auto* const list = find<QListWidget>(dialog, "editSubframes");
        s.door.next([](QDialog& subframe) {
            test::type(subframe, "depth", QStringLiteral("2"));
            press(subframe, "ok");
        });
        const auto at = list->visualItemRect(list->item(1)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.format.subframeOfWord(6)->name.str(), name);
    EXPECT_EQ(s.format.subframeOfWord(6)->depth, "2");
}

}  // namespace
}  // namespace kavu
