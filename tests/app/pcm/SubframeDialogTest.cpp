#include "app/pcm/CounterStage.h"
#include "pcm/structure/AsyncEdit.h"

#include <QListWidget>

namespace kavu {
namespace {

using test::chosen;
using test::CounterStage;
using test::enabled;
using test::find;
using test::pick;
using test::press;

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

TEST(SubframeDialog, LessDepthNamesWhatItCutsAndACancelThereKeepsTheDialogOpen) {
    CounterStage s;
    Measurement measurement;
    measurement.name = "A";
    measurement.locationType = "SF";
    measurement.mask = "FW";
    s.format.cells().store(s.format.cellAt(5, 3), measurement);
    EXPECT_TRUE(s.subframe([&](QDialog& dialog) {
        test::type(dialog, "depth", QStringLiteral("2"));
        s.ui.otherwise = Button::Cancel;
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(s.format.wordDepth(5), 4);
        EXPECT_TRUE(s.format.hasMeasurement("A"));
        s.ui.otherwise = Button::Yes;
        press(dialog, "ok");
    }));
    ASSERT_EQ(s.ui.boxes.size(), 2U);
    EXPECT_EQ(s.ui.boxes[0].title, "Adjust Measurements?");
    EXPECT_NE(s.ui.boxes[0].text.find("A: none of its places is left"), std::string::npos)
        << s.ui.boxes[0].text;
    EXPECT_EQ(s.format.wordDepth(5), 2);
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
    // From a later word the interval does not begin anew.
    EXPECT_TRUE(s.subframe(
        [](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Subframe Definition (FWP: 5)"));
            test::type(dialog, "name", QStringLiteral("RENAMED"));
            press(dialog, "ok");
        },
        25));
    EXPECT_EQ(s.format.subframeOfWord(5)->name, "RENAMED");
    EXPECT_EQ(s.format.wordsOf({0, 0}), (std::vector<int>{5, 15, 25}));
    EXPECT_TRUE(s.subframe([](QDialog& dialog) {
        pick(dialog, "supercommutated", QStringLiteral("No"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.format.wordsOf({0, 0}), std::vector<int>{5});
}

// The measurement could not be read again, and was gone after the next load.
TEST(SubframeDialog, AWordFrameMeasurementKeepsItsSubframeFromBecomingSupercommutated) {
    CounterStage s;
    Measurement measurement;
    measurement.name = "RANGED";
    measurement.locationType = "WDFR";
    s.format.cells().store(s.format.getFreeCell(s.parent, 5, 2), measurement);
    StreamUndo before(s.format);
    s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) {
            test::type(locations, "numberOfLocations", QStringLiteral("3"));
            test::type(locations, "interval", QStringLiteral("10"));
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 356);
        EXPECT_TRUE(dialog.isVisible());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(before.commit());
    EXPECT_TRUE(s.format.findInCell(5, 2, "RANGED"));
}

TEST(SubframeDialog, ANewNameKeepsTheLocationsOfItsMeasurements) {
    CounterStage s;
    Measurement measurement;
    measurement.name = "TWICE";
    measurement.locationType = "SFSC";
    measurement.locationMode = "E";
    measurement.locationCount = 2;
    for (const int fn : {1, 3}) {
        s.format.cells().store(s.format.getFreeCell(s.parent, 5, fn), measurement);
    }
    EXPECT_TRUE(s.subframe([](QDialog& dialog) {
        test::type(dialog, "name", QStringLiteral("NEW"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(s.first("TWICE"), measurement);
    ASSERT_TRUE(savePcmFormat(s.format, s.parent));
    ASSERT_TRUE(s.reload());
    EXPECT_EQ(s.places("TWICE"), (test::Places{{5, 1}, {5, 3}}));
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

TEST(SubframeDialog, EnterInTheListOfWordsEditsOneAndIsNoOkForTheList) {
    CounterStage s;
    s.ui.integers = {9, 10};
    s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) {
            pick(locations, "locationMode", QStringLiteral("EL"));
            press(locations, "add");
            auto* const list = find<QListWidget>(locations, "wordPositions");
            list->setCurrentRow(1);
            QTest::keyClick(list, Qt::Key_Return);
            EXPECT_EQ(list->item(1)->text(), QStringLiteral("10"));
            EXPECT_TRUE(locations.isVisible());
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        press(dialog, "ok");
    });
    EXPECT_EQ(s.format.wordsOf({0, 0}), (std::vector<int>{5, 10}));
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

TEST(SubframeDialog, ASubframeThatHasGoneIsToldWhenItIsStored) {
    CounterStage s;
    s.subframe([&](QDialog& dialog) {
        ASSERT_TRUE(deleteSubframe(s.format, nullptr, 5, true));
        test::type(dialog, "name", QStringLiteral("NEW"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 342);
        EXPECT_EQ(s.ui.boxes.back().titleId, 102);
        EXPECT_TRUE(dialog.isVisible());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_EQ(s.format.wordType(5), WordType::Minor);
}

TEST(SubframeDialog, ACounterWithoutRoomTakesNoSubframe) {
    CounterStage s;
    createIdCounter(s.format, nullptr, 2);
    Subframe taken;
    taken.name = "TAKEN";
    s.format.idCounters[1].subframes.assign(kMostSubframes, taken);
    s.format.subframesChanged();
    s.format.changed = false;
    s.subframe([&](QDialog& dialog) {
        pick(dialog, "idCounter", QStringLiteral("SFID2"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 352);
        EXPECT_EQ(s.ui.boxes.back().titleId, 78);
        EXPECT_EQ(s.boxText(352),
                  "PCM format too big. This program only allows 9999 subframe definitions for "
                  "each ID Counter.");
        EXPECT_TRUE(dialog.isVisible());
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_EQ(s.format.word(5).idCounterIndex, 0);
    EXPECT_FALSE(s.format.changed);
}

TEST(SubframeDialog, TheStepsOfAnIntervalNeverLeaveOutTheWordItself) {
    // The walk begins at the word: whatever is entered, message 345 has nothing to tell.
    for (const auto* const count : {"1", "2", "99", "0"}) {
        for (const auto* const interval : {"1", "13", "26", "27", "9999", ""}) {
            CounterStage s;
            s.ui.otherwise = Button::Yes;
            s.subframe([&](QDialog& dialog) {
                s.door.next([&](QDialog& locations) {
                    test::type(locations, "numberOfLocations", QLatin1String(count));
                    test::type(locations, "interval", QLatin1String(interval));
                    press(locations, "ok");
                });
                pick(dialog, "supercommutated", QStringLiteral("Yes"));
                press(dialog, "ok");
                if (dialog.isVisible()) {
                    press(dialog, "cancel");
                }
            });
            EXPECT_FALSE(s.ui.hasBox(345)) << count << " " << interval;
            const auto& words = s.format.wordsOf({0, 0});
            EXPECT_NE(std::find(words.begin(), words.end(), 5), words.end());
        }
    }
}

TEST(SubframeDialog, AWordOfAnAsyncFormatIsNoLocation) {
    CounterStage s;
    AsyncFormat contents;
    contents.dataLinkName = "INNER";
    ASSERT_TRUE(saveAsyncFormat(s.format, nullptr, 0, contents, {{9, {}, {}}}));
    s.subframe([&](QDialog& dialog) {
        s.door.next([](QDialog& locations) {
            test::type(locations, "numberOfLocations", QStringLiteral("2"));
            test::type(locations, "interval", QStringLiteral("4"));
            press(locations, "ok");
        });
        pick(dialog, "supercommutated", QStringLiteral("Yes"));
        press(dialog, "ok");
        EXPECT_EQ(s.lastBox(), 341);
        s.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_TRUE(isAsyncAt(s.format, 9, 1, 1));
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

}  // namespace
}  // namespace kavu
