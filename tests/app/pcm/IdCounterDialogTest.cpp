#include "app/pcm/IdCounterDialog.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SheetStage.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/SubframeDialog.h"
#include "pcm/SubframeCodes.h"

#include <QListWidget>

namespace kavu {
namespace {

using test::buttonText;
using test::chosen;
using test::enabled;
using test::find;
using test::pick;
using test::press;
using test::SheetStage;

/// Counter SFID in word 1, and before 106-11 the subframes S (word 5, depth 4) and T (word 6,
/// depth 8).
class CounterStage : public SheetStage {
  public:
    explicit CounterStage(int edition = 2009) : SheetStage(edition) {
        if (format.idCounters.empty()) {
            EXPECT_TRUE(createIdCounter(format, nullptr, 1));
        }
        format.implicitSubframes = edition >= 2011;
        if (edition < 2011) {
            EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
            EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 6, .name = "T", .depth = 8}));
        }
        installSheetSteps(steps, form, format);
        format.changed = false;
    }
    bool counter(const test::TestDoor::Driver& driver, int fwp = 1, bool isNew = false) {
        door.next(driver);
        return editIdCounter(form, format, nullptr, fwp, isNew);
    }
    bool subframe(const test::TestDoor::Driver& driver, int fwp = 5) {
        door.next(driver);
        return editSubframe(form, format, nullptr, fwp, false);
    }
    PcmFormSteps steps;
    QWidget window;
};

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
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.format.changed);
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

TEST(SubframeDialog, OkStoresNameAndDepth) {
    CounterStage s;
    EXPECT_TRUE(s.subframe([](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(chosen(dialog, "idCounter"), QStringLiteral("SFID"));
        EXPECT_FALSE(enabled(dialog, "locations"));
        test::type(dialog, "name", QStringLiteral("NEW"));
        test::type(dialog, "depth", QStringLiteral("2"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.subframeOfWord(5)->name, "NEW");
    EXPECT_EQ(s.format.subframeOfWord(5)->depth, "2");
}

TEST(SubframeDialog, EachRefusedValueIsToldAndKeepsItOpen) {
    CounterStage s;
    StreamUndo before(s.format);
    s.subframe([&](QDialog& dialog) {
        struct Row {
            const char* name;
            const char* depth;
            int message;
        };
        for (const auto& row : {Row{" ", "4", 0}, Row{"T", "4", 354}, Row{"S", "0", 349},
                                Row{"S", "9", 350}, Row{"S", "3", 351}}) {
            if (row.message == 0) {
                find<QLineEdit>(dialog, "name")->selectAll();
                QTest::keyClick(find<QLineEdit>(dialog, "name"), Qt::Key_Delete);
            } else {
                test::type(dialog, "name", QLatin1String(row.name));
            }
            test::type(dialog, "depth", QLatin1String(row.depth));
            press(dialog, "ok");
            EXPECT_EQ(s.lastBox(), row.message == 0 ? 353 : row.message);
            EXPECT_TRUE(dialog.isVisible());
        }
        test::type(dialog, "name", QStringLiteral("a;b"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 402);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(before.commit());
    EXPECT_FALSE(s.format.changed);
}

TEST(SubframeDialog, ADepthThatDoesNotDivideTheDepthOfTheCounterCanNotBeSaved) {
    CounterStage s;
    s.subframe([&](QDialog& dialog) {
        test::type(dialog, "depth", QStringLiteral("5"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 351);
        EXPECT_TRUE(dialog.isVisible());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_EQ(s.format.subframeOfWord(5)->depth, "4");
}

TEST(SubframeDialog, YesOpensTheLocationsAndTheirCancelIsNo) {
    CounterStage s;
    EXPECT_TRUE(s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) { press(locations, "cancel"); });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        EXPECT_EQ(chosen(dialog, "supercommutated"), QStringLiteral("No"));
        s.door.next([](QDialog& locations) {
            EXPECT_EQ(test::checkWindow(locations), std::vector<std::string>{});
            test::type(locations, "numberOfLocations", QStringLiteral("3"));
            test::type(locations, "interval", QStringLiteral("10"));
            EXPECT_FALSE(enabled(locations, "wordPositions"));
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        EXPECT_TRUE(enabled(dialog, "locations"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.wordsOf({0, 0}), (std::vector<int>{5, 15, 25}));
    EXPECT_EQ(s.format.subframeOfWord(15)->locationMode, "FI");
    EXPECT_TRUE(s.subframe([](QDialog& dialog) {
        pick(dialog, "supercommutated", QStringLiteral("No"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.wordsOf({0, 0}), std::vector<int>{5});
}

TEST(SubframeDialog, EveryLocationIsAListThatStaysSorted) {
    CounterStage s;
    s.ui.integers = {9, 3, 0, 20, 4};
    EXPECT_TRUE(s.subframe([&](QDialog& dialog) {
        s.door.next([&](QDialog& locations) {
            pick(locations, "locationMode", QStringLiteral("EL"));
            EXPECT_FALSE(enabled(locations, "interval"));
            auto* const list = find<QListWidget>(locations, "wordPositions");
            const auto words = [list] {
                QStringList all;
                for (int i = 0; i < list->count(); ++i) {
                    all.append(list->item(i)->text());
                }
                return all.join(u' ');
            };
            EXPECT_EQ(words(), QStringLiteral("5"));
            press(locations, "add");
            press(locations, "add");
            EXPECT_EQ(words(), QStringLiteral("3 5 9"));
            press(locations, "add");
            EXPECT_EQ(s.lastBox(), 161);
            list->setCurrentRow(2);
            press(locations, "edit");
            EXPECT_EQ(words(), QStringLiteral("3 5 20"));
            list->setCurrentRow(0);
            press(locations, "delete");
            EXPECT_EQ(words(), QStringLiteral("5 20"));
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.wordsOf({0, 0}), (std::vector<int>{5, 20}));
    EXPECT_EQ(s.format.subframeOfWord(5)->supercommutated, "2");
    EXPECT_EQ(s.format.subframeOfWord(5)->locationMode, "EL");
}

TEST(SubframeDialog, ASubframeOfElLeftWithOneLocationBecomesNo) {
    CounterStage s;
    EXPECT_TRUE(s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) {
            pick(locations, "locationMode", QStringLiteral("EL"));
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        test::type(dialog, "name", QStringLiteral("ONE"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.subframeOfWord(5)->supercommutated, "NO");
    EXPECT_EQ(s.format.subframeOfWord(5)->locationMode, "NA");
}

TEST(SubframeDialog, RefusedLocationsKeepItOpen) {
    struct Row {
        const char* mode;
        const char* count;
        const char* interval;
        std::vector<long> words;
        int message;
        int titleId;
    };
    const std::vector<Row> rows = {{"FI", "0", "1", {}, 160, 125}, {"FI", "100", "1", {}, 160, 125},
                                   {"FI", "2", "0", {}, 160, 120}, {"FI", "3", "20", {}, 343, 126},
                                   {"FI", "2", "1", {}, 344, 126}, {"FI", "2", "4", {}, 341, 87},
                                   {"EL", "", "", {32}, 346, 87},  {"EL", "", "", {6}, 347, 126},
                                   {"EL", "", "", {9}, 341, 87}};
    for (const auto& row : rows) {
        CounterStage s;
        Measurement cell;
        cell.name = "PLAIN";
        cell.locationType = "MF";
        s.format.cells().store(s.format.getFreeCell(nullptr, 9, 1), cell);
        s.ui.integers.assign(row.words.begin(), row.words.end());
        s.subframe([&](QDialog& dialog) {
            s.door.next([&](QDialog& locations) {
                pick(locations, "locationMode", QLatin1String(row.mode));
                if (row.words.empty()) {
                    test::type(locations, "numberOfLocations", QLatin1String(row.count));
                    test::type(locations, "interval", QLatin1String(row.interval));
                } else {
                    press(locations, "add");
                }
                press(locations, "ok");
            });
            pick(dialog, "supercommutated", QStringLiteral("Yes"));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
            ASSERT_FALSE(s.ui.boxes.empty()) << row.message;
            EXPECT_EQ(s.ui.boxes.back().id, row.message);
            EXPECT_EQ(s.ui.boxes.back().titleId, row.titleId);
            s.ui.otherwise = Button::Yes;
            press(dialog, "cancel");
        });
        EXPECT_FALSE(s.format.changed);
    }
}

TEST(SubframeDialog, TheWordItselfCanNotLeaveItsLocations) {
    CounterStage s;
    s.ui.integers = {20};
    s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) {
            pick(locations, "locationMode", QStringLiteral("EL"));
            press(locations, "edit");
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 348);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
}

TEST(SubframeDialog, AnotherCounterTakesTheSubframeAndIsEditedFromHere) {
    CounterStage s;
    createIdCounter(s.format, nullptr, 2);
    EXPECT_TRUE(s.subframe([&](QDialog& dialog) {
        pick(dialog, "idCounter", QStringLiteral("SFID2"));
        s.door.next([](QDialog& counter) {
            EXPECT_EQ(counter.windowTitle(), QStringLiteral("Edit ID Counter Definition (FWP: 2)"));
            test::type(counter, "ISF1", QStringLiteral("OTHER"));
            press(counter, "ok");
        });
        press(dialog, "editIdCounter");
        EXPECT_EQ(chosen(dialog, "idCounter"), QStringLiteral("OTHER"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.word(5).idCounterIndex, 1);
}

TEST(SubframeDialog, DeleteAsksFirst) {
    CounterStage s;
    s.ui.byId[123] = Button::No;
    EXPECT_FALSE(s.subframe([](QDialog& dialog) {
        press(dialog, "delete");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.ui.boxes.back().titleId, 124);
    s.ui.byId[123] = Button::Yes;
    EXPECT_TRUE(s.subframe([](QDialog& dialog) { press(dialog, "delete"); }));
    EXPECT_EQ(s.format.wordType(5), WordType::Minor);
}

TEST(SheetSteps, WhatIsCreatedAtAWordIsTakenBackByCancel) {
    CounterStage s;
    s.ui.choices = {0, 1, 0, 1, -1};
    for (const auto* const title :
         {"Create New Subframe Definition (FWP: 9)", "Create New ID Counter Definition (FWP: 9)"}) {
        s.door.next([title](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QLatin1String(title));
            press(dialog, "cancel");
        });
        EXPECT_FALSE(s.steps.createSubframeAt(s.window, 9, 1));
        EXPECT_EQ(s.format.wordType(9), WordType::Minor);
    }
    EXPECT_TRUE(s.ui.boxes.empty()) << "nothing was edited, so nothing is asked";
    for (const auto type : {WordType::Subframe, WordType::IdCounter}) {
        const int word = type == WordType::Subframe ? 9 : 10;
        s.door.next([](QDialog& dialog) { press(dialog, "ok"); });
        EXPECT_TRUE(s.steps.createSubframeAt(s.window, word, 1));
        EXPECT_EQ(s.format.wordType(word), type);
    }
    EXPECT_FALSE(s.steps.createSubframeAt(s.window, 11, 1)) << "nothing was chosen";
}

TEST(SheetSteps, FromTheNewestEditionOnOnlyACounterIsCreated) {
    CounterStage s(2011);
    s.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_TRUE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_EQ(s.format.wordType(9), WordType::IdCounter);
    EXPECT_TRUE(s.ui.listPrompts.empty());
}

TEST(SheetSteps, ThePlaceOpensItsForm) {
    CounterStage s;
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("SubframeDialog"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.steps.editSubframeAt(s.window, 5, 1));
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("Pre_106_11_IDCounterDialog"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(s.steps.editSubframeAt(s.window, 1, 1));
    EXPECT_FALSE(s.steps.editSubframeAt(s.window, 9, 1)) << "a plain word has none";
}

TEST(SheetSteps, HiddenSubframesAreNotOpened) {
    CounterStage s(2011);
    createSubframe(s.format, nullptr, {.fwp = 9, .hidden = HiddenMode::Hidden});
    EXPECT_FALSE(s.steps.editSubframeAt(s.window, 9, 1));
}

}  // namespace
}  // namespace kavu
