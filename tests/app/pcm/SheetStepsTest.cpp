#include "app/pcm/CounterStage.h"

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
