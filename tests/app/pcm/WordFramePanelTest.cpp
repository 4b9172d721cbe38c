#include "app/pcm/WordFrameMap.h"
#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"
#include "pcm/edit/MeasurementEditWordFrame.h"

namespace kavu {
namespace {

using test::choose;
using test::find;
using test::listText;
using test::press;
using test::textOf;
using test::type;
using test::WordStage;

TEST(WordFramePanelTest, ANewMeasurementIsAtItsPlaceInEveryFrame) {
    WordStage stage(2011);
    stage.settings.write("DFragWDFR", "1111");
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("EditDataWord"));
        EXPECT_NE(dialog.findChild<QWidget*>(QStringLiteral("WORD_FRAME_LOCATIONS")), nullptr);
        EXPECT_EQ(listText(dialog, "locations"),
                  "1 | 16 | 1 | 3 | 0 | 3 | 1 | 1 | 8 | 0000000000001111 | Default");
        type(dialog, "measurementName", QStringLiteral("A"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 4));
    EXPECT_EQ(stage.places("A"), "3/1 ");
    EXPECT_EQ(stage.at(3, 1, "A").locationType, "WDFR");
    EXPECT_EQ(stage.at(3, 1, "A").mask, "1111");
}

TEST(WordFramePanelTest, ALocationIsAddedCheckedAsItIsTypedAndShownOnTheMap) {
    WordStage stage(2011);
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        stage.door.next([&](QDialog& entry) {
            EXPECT_EQ(entry.objectName(), QStringLiteral("EditWordFrameEntry"));
            EXPECT_EQ(toBytes(entry.windowTitle()), "Edit Word/Frame Entry");
            EXPECT_EQ(test::checkWindow(entry), std::vector<std::string>{});
            auto* map = find<WordFrameMap>(entry, "map");
            EXPECT_EQ(map->covered(), 8);
            EXPECT_EQ(textOf(entry, "covered"), "Covers 1 word in 8 frames (8 places).");
            EXPECT_EQ(map->accessibleDescription(), find<QLabel>(entry, "covered")->text());
            type(entry, "startWord", QStringLiteral("40"));
            EXPECT_EQ(textOf(entry, "endWord"), "40");  // follows a single word
            EXPECT_NE(textOf(entry, "problem").find("measurement 'A'"), std::string::npos);
            EXPECT_EQ(map->covered(), 0);
            type(entry, "startWord", QStringLiteral("8"));
            EXPECT_EQ(textOf(entry, "problem"), "");
            type(entry, "endWord", QStringLiteral("12"));
            EXPECT_NE(textOf(entry, "problem"), "");
            press(entry, "ok");
            EXPECT_EQ(stage.lastBox(), 293);
            EXPECT_TRUE(entry.isVisible());
            type(entry, "wordInterval", QStringLiteral("2"));
            type(entry, "startFrame", QStringLiteral("2"));
            type(entry, "frameInterval", QStringLiteral("3"));
            EXPECT_EQ(textOf(entry, "covered"), "Covers 3 words in 3 frames (9 places).");
            EXPECT_EQ(map->covered(), 9);
            EXPECT_FALSE(map->grab().isNull());
            choose(entry, "fragmentTransferOrder", QStringLiteral("MSB"));
            press(entry, "ok");
        });
        press(dialog, "add");
        EXPECT_EQ(listText(dialog, "locations"),
                  "1 | 16 | 1 | 3 | 0 | 3 | 1 | 1 | 8 | FW | Default\n"
                  "2 | 16 | 1 | 8 | 2 | 12 | 2 | 3 | 8 | FW | MSB");
        EXPECT_FALSE(stage.format.hasMeasurement("A"));
        EXPECT_EQ(stage.format.wordType(8), WordType::Minor);  // nothing is made before OK
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("A"), "3/1 8/2 8/5 8/8 10/2 10/5 10/8 12/2 12/5 12/8 ");
    EXPECT_TRUE(stage.format.subframeOfWord(8)->hidden);
}

TEST(WordFramePanelTest, TheBitmaskOfTheDialogIsThatOfTheFragmentAtThePlace) {
    WordStage stage(2011);
    stage.placeFragments(
        "A", {{3, 0, 3, 1, 1, 8, "1111000000000000", 'D', 1}, {4, 0, 4, 1, 1, 8, "11", 'D', 2}});
    for (const auto& [word, mask] :
         {std::pair(3, "1111000000000000"), std::pair(4, "0000000000000011")}) {
        stage.door.next([&, shown = mask](QDialog& dialog) {
            EXPECT_EQ(textOf(dialog, "bitmask"), shown);
            stage.door.next([&](QDialog& entry) {
                choose(entry, "fragment", QStringLiteral("2"));
                stage.ui.texts = {"0000000000001111"};
                press(entry, "editMask");
                press(entry, "ok");
            });
            press(dialog, "edit");
            EXPECT_EQ(textOf(dialog, "bitmask"), word == 3 ? shown : "0000000000001111");
            stage.ui.otherwise = Button::Yes;
            press(dialog, "cancel");
        });
        EXPECT_FALSE(stage.edit(word, 5));
    }
    EXPECT_EQ(stage.at(4, 1, "A").mask, "11");
}

TEST(WordFramePanelTest, FragmentsOfALocationAreEditedOneByOne) {
    WordStage stage(2011);
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        stage.door.next([&](QDialog& entry) {
            EXPECT_FALSE(find<QWidget>(entry, "fragment")->isEnabled());
            EXPECT_FALSE(find<QWidget>(entry, "measurementWordLength")->isEnabled());
            choose(entry, "numberOfFragments", QStringLiteral("2"));
            ASSERT_EQ(test::entries(entry, "fragment").size(), 2);
            choose(entry, "fragment", QStringLiteral("2"));
            EXPECT_EQ(textOf(entry, "startWord"), "4");  // beside the first one
            stage.ui.texts = {"11111111"};
            press(entry, "editMask");
            choose(entry, "fragment", QStringLiteral("1"));
            EXPECT_EQ(textOf(entry, "startWord"), "3");
            EXPECT_EQ(textOf(entry, "bitMask"), "FW");
            type(entry, "measurementWordLength", QStringLiteral("0"));
            press(entry, "ok");
            EXPECT_EQ(stage.lastBox(), 336);
            type(entry, "measurementWordLength", QStringLiteral("32"));
            press(entry, "ok");
            EXPECT_EQ(stage.lastBox(), 294);
        });
        press(dialog, "edit");
        EXPECT_EQ(listText(dialog, "locations"),
                  "1 | 24 | 2 | 3, 4 | 0, 0 | 3, 4 | 1, 1 | 1, 1 | 8, 8 | FW, 1111111100000000 | "
                  "Default, Default");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("A"), "3/1 4/1 ");
    const auto* const ranges = stage.format.wordFrameDefinition(stage.at(3, 1, "A").wordFrameIndex);
    ASSERT_NE(ranges, nullptr);
    EXPECT_EQ(ranges->locations[0].wordLength, 24);
    EXPECT_EQ(ranges->locations[0].fragments[1].fragmentPosition, 2);
}

TEST(WordFramePanelTest, CancelOfAnEntryAndOfTheDialogLeaveEverythingAsItWas) {
    WordStage stage(2011);
    stage.placeInEveryFrame(3, "A");
    stage.format.changed = false;
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        const auto before = listText(dialog, "locations");
        stage.door.next([](QDialog& entry) { press(entry, "cancel"); });
        press(dialog, "add");
        EXPECT_EQ(listText(dialog, "locations"), before);
        stage.door.next([&](QDialog& entry) {
            type(entry, "startFrame", QStringLiteral("2"));
            stage.ui.queued = {Button::No, Button::Yes};
            press(entry, "cancel");
            EXPECT_TRUE(entry.isVisible());
            press(entry, "cancel");
        });
        press(dialog, "edit");
        EXPECT_EQ(listText(dialog, "locations"), before);
        press(dialog, "cancel");  // nothing has changed: no question
    }));
    EXPECT_EQ(stage.ui.boxes.size(), 2U);
}

TEST(WordFramePanelTest, WithoutALocationThereIsNothingToStore) {
    WordStage stage(2011);
    stage.placeInEveryFrame(3, "A");
    stage.format.changed = false;
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        stage.ui.otherwise = Button::Yes;
        press(dialog, "delete");  // of the list: it comes before the one of the dialog
        if (listText(dialog, "locations").empty()) {
            press(dialog, "ok");
            EXPECT_EQ(stage.lastBox(), 328);
        } else {
            ADD_FAILURE() << "the location is still there";
        }
        press(dialog, "cancel");
    }));
}

TEST(WordFramePanelTest, RangesThatNeedACounterAskForItOnOk) {
    WordStage stage(2011);
    ASSERT_TRUE(deleteIdCounter(stage.format, nullptr, 30));
    stage.format.changed = false;
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        stage.door.next([](QDialog& entry) {
            type(entry, "startFrame", QStringLiteral("2"));
            press(entry, "ok");
        });
        press(dialog, "edit");
        EXPECT_FALSE(stage.ui.hasBox(357));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 357);
        EXPECT_TRUE(dialog.isVisible());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(WordFrameMapTest, OverlapsAndPlacesOutsideAreShownOnce) {
    WordFrameMap map;
    map.setPlaces(31, 8, {{3, 1}, {3, 1}, {40, 1}, {3, 9}}, {{3, 1}, {4, 1}});
    EXPECT_EQ(map.covered(), 1);
    map.resize(400, 200);
    const auto picture = map.grab().toImage();
    // The middle of word 3 in frame 1 is marked, that of word 20 is not.
    EXPECT_NE(picture.pixel(400 * 5 / 62, 12), picture.pixel(400 * 39 / 62, 12));
    // The largest frame that there is.
    WordFrameMap::Places all;
    for (int word = 1; word <= 2047; word += 2) {
        for (int frame = 1; frame <= 256; ++frame) {
            all.emplace_back(word, frame);
        }
    }
    map.setPlaces(2047, 256, all, {});
    EXPECT_EQ(map.covered(), 1024 * 256);
    EXPECT_FALSE(map.grab().isNull());
    map.setPlaces(0, 0, all, {});
    EXPECT_EQ(map.covered(), 0);
    EXPECT_FALSE(map.grab().isNull());
}

TEST(WordFramePanelTest, EachRangeThatCanNotBeIsToldAsItIsTypedAndOnOk) {
    struct Row {
        const char* field;
        const char* value;
        int message;
    };
    WordStage stage;  // word 6 is of a supercommutated subframe, word 30 the counter
    stage.format.implicitSubframes = true;
    const Row rows[] = {{"startWord", "6", 285},     {"startWord", "30", 287},
                        {"startWord", "99", 276},    {"startWord", "0", 276},
                        {"endWord", "2", 292},       {"endWord", "4", 293},
                        {"frameInterval", "0", 293}, {"endFrame", "9", 286},
                        {"startFrame", "0", 286},    {"startFrame", "9", 286}};
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        for (const auto& row : rows) {
            stage.door.next([&](QDialog& entry) {
                type(entry, row.field, QString::fromLatin1(row.value));
                if (row.message == 287) {
                    type(entry, "startFrame", QStringLiteral("2"));
                }
                const auto told = textOf(entry, "problem");
                EXPECT_NE(told, "") << row.field << " " << row.value;
                press(entry, "ok");
                EXPECT_EQ(stage.lastBox(), row.message) << row.field << " " << row.value;
                EXPECT_EQ(stage.ui.boxes.back().text, told);
                EXPECT_TRUE(entry.isVisible());
                stage.ui.queued = {Button::Yes};
                press(entry, "cancel");
            });
            press(dialog, "edit");
        }
        press(dialog, "cancel");
    }));
}

TEST(WordFramePanelTest, AnEditionWithoutEndsShowsWhereARangeWillEnd) {
    WordStage stage(2007);
    stage.format.implicitSubframes = true;
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        stage.door.next([&](QDialog& entry) {
            EXPECT_FALSE(find<QWidget>(entry, "endWord")->isEnabled());
            EXPECT_FALSE(find<QWidget>(entry, "endFrame")->isEnabled());
            EXPECT_EQ(textOf(entry, "endFrame"), "8");
            type(entry, "startWord", QStringLiteral("7"));
            EXPECT_EQ(textOf(entry, "endWord"), "7");
            type(entry, "wordInterval", QStringLiteral("10"));
            EXPECT_EQ(textOf(entry, "endWord"), "31");
            EXPECT_EQ(textOf(entry, "covered"), "Covers 3 words in 8 frames (24 places).");
            type(entry, "frameInterval", QStringLiteral("0"));
            EXPECT_EQ(textOf(entry, "endFrame"), "1");
            type(entry, "frameInterval", QStringLiteral("1"));
            press(entry, "ok");
        });
        press(dialog, "edit");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("A"), "7/1 17/1 27/1 ");
}

}  // namespace
}  // namespace kavu
