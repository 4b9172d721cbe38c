#include "app/pcm/CounterStage.h"
#include "pcm/PlaceFragments.h"
#include "pcm/structure/AsyncEdit.h"

namespace kavu {
namespace {

using test::CounterStage;
using test::press;

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
        EXPECT_FALSE(s.format.changed);
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

TEST(SheetSteps, NoRoomForASubframeCreatesNone) {
    CounterStage s;
    Subframe taken;
    taken.name = "TAKEN";
    s.format.idCounters[0].subframes.resize(kMostSubframes, taken);
    s.format.subframesChanged();
    s.ui.choices = {0};
    EXPECT_FALSE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_EQ(s.lastBox(), 352);
    EXPECT_EQ(s.format.wordType(9), WordType::Minor);
}

TEST(SheetSteps, FromTheNewestEditionOnOnlyACounterIsCreated) {
    CounterStage s(2011);
    s.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_TRUE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_EQ(s.format.wordType(9), WordType::IdCounter);
    EXPECT_TRUE(s.ui.listPrompts.empty());
}

/// Word 9 in use, from 106-11 on: ONCE is in frame 3 of it and of word 10, ALWAYS in every frame of
/// words 8 to 10, SPLIT has one of its two fragments there, INNER is an async format.
struct WordInUse : CounterStage {
    WordInUse() : CounterStage(2011) {
        placeOf("ALWAYS", {{8, 1, 10, 1, 1, 8, "11110000", 'D', 1}});
        placeOf("ONCE", {{9, 1, 10, 3, 0, 3, "1", 'D', 1}});
        placeOf("SPLIT", {{9, 0, 9, 2, 2, 8, "10", 'D', 1}, {12, 0, 12, 2, 2, 8, "10", 'D', 2}});
        AsyncFormat contents;
        contents.dataLinkName = "INNER";
        EXPECT_TRUE(saveAsyncFormat(format, nullptr, 0, contents, {{9, {}, {}}}));
        format.changed = false;
        ui.boxes.clear();
    }
    void placeOf(const char* name, const std::vector<WordFrameFragment>& fragments) {
        test::placeFragments(format, parent, name, fragments);
    }
};

// Measurements of single frames vanished with the next load, and nobody had been asked.
TEST(SheetSteps, ACounterOnAWordInUseNamesWhatItWouldDeleteAndNoLeavesIt) {
    WordInUse s;
    StreamUndo before(s.format);
    s.ui.queued = {Button::No};
    EXPECT_FALSE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_FALSE(before.commit());
    EXPECT_FALSE(s.format.changed);
    ASSERT_EQ(s.ui.boxes.size(), 1U);
    const auto& text = s.ui.boxes[0].text;
    EXPECT_NE(text.find("Measurement 'SPLIT'\nMeasurement 'ONCE'\nAsync format 'INNER'\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("ALWAYS"), std::string::npos) << "it is in every frame, as a counter is";
    EXPECT_EQ(text.find("SF-"), std::string::npos) << "the name of a hidden subframe";

    s.ui.queued = {Button::Yes};
    s.door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_FALSE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_FALSE(before.commit()) << "and Cancel of the counter leaves it, too";
}

TEST(SheetSteps, ACounterOnAWordInUseKeepsWhatIsInEveryFrameAndComesBackFromTheFile) {
    WordInUse s;
    s.ui.queued = {Button::Yes};
    s.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_TRUE(s.steps.createSubframeAt(s.window, 9, 1));
    EXPECT_EQ(s.format.wordType(9), WordType::IdCounter);
    EXPECT_EQ(s.format.asyncCount(), 0);
    for (const auto* const name : {"ONCE", "SPLIT"}) {
        EXPECT_FALSE(s.format.hasMeasurement(name)) << name;
    }
    const auto samples = s.format.countMeasurementOccurences("ALWAYS");
    EXPECT_EQ(samples, 3 * 8);
    ASSERT_TRUE(savePcmFormat(s.format, s.parent));
    ASSERT_TRUE(s.reload());
    EXPECT_TRUE(s.ui.logs.empty()) << s.ui.logs.front().text;
    EXPECT_EQ(s.format.countMeasurementOccurences("ALWAYS"), samples);
    EXPECT_TRUE(s.format.findInCell(9, 1, "ALWAYS"));
}

TEST(SheetSteps, ACounterOnAFreeWordAsksNothing) {
    WordInUse s;
    s.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_TRUE(s.steps.createSubframeAt(s.window, 14, 1));
    EXPECT_TRUE(s.ui.boxes.empty());
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
