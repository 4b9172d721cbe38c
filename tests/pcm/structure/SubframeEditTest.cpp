#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::StreamFixture;

TEST(SubframeEdit, ASubframeNeedsACounter) {
    StreamFixture f;
    EXPECT_FALSE(createSubframe(f.format, f.parent, {.fwp = 5, .name = "S"}));
    EXPECT_EQ(f.ui.countBoxes(355), 1);
    EXPECT_TRUE(f.format.idCounters.empty());
}

TEST(SubframeEdit, OneLocationIsNotSupercommutated) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    f.format.changed = false;
    ASSERT_TRUE(createSubframe(f.format, f.parent, {.fwp = 5, .name = "S", .depth = 4}));
    const auto& record = f.subframe(0, 0);
    EXPECT_EQ(record.name, "S");
    EXPECT_FALSE(record.hidden);
    EXPECT_EQ(record.supercommutated, "NO");
    EXPECT_EQ(record.locationMode, "NA");
    EXPECT_EQ(record.interval, "0");
    EXPECT_EQ(record.depth, "4");
    EXPECT_EQ(f.format.cells().cellCount(5), 4);
    EXPECT_TRUE(f.format.changed);
}

TEST(SubframeEdit, SeveralLocationsStepByTheInterval) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, f.parent,
                               {.fwp = 5, .name = "S", .locations = 3, .interval = 10}));
    EXPECT_EQ(f.wordsOf("S"), (std::vector<int>{5, 15, 25}));
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "3");
    EXPECT_EQ(f.subframe(0, 0).locationMode, "FI");
    EXPECT_EQ(f.subframe(0, 0).interval, "10");
    EXPECT_EQ(f.subframe(0, 0).depth, "8");
    EXPECT_EQ(f.format.cells().cellCount(25), 8);
}

TEST(SubframeEdit, EveryWordMustBeAPlainOne) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 25));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5}));
    struct Row {
        int fwp, locations, interval;
    };
    for (const auto& [fwp, locations, interval] :
         {Row{5, 1, 0}, Row{25, 1, 0}, Row{0, 1, 0}, Row{32, 1, 0}, Row{15, 2, 10}, Row{6, 4, 10},
          Row{6, 0, 1}, Row{6, -1, 1}, Row{6, 2, -1}, Row{6, 1000000000, 0},
          Row{6, 3, 2000000000}}) {
        EXPECT_FALSE(createSubframe(f.format, f.parent,
                                    {.fwp = fwp, .locations = locations, .interval = interval}))
            << fwp << " " << locations << " " << interval;
    }
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(SubframeEdit, ANameInUseIsRefusedExactly) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .name = "S"}));
    EXPECT_FALSE(createSubframe(f.format, f.parent, {.fwp = 6, .name = "S"}));
    EXPECT_EQ(f.ui.countBoxes(354), 1);
    EXPECT_TRUE(createSubframe(f.format, f.parent, {.fwp = 6, .name = "s"}));
    EXPECT_TRUE(subframeNameExists(f.format, "s"));
    EXPECT_FALSE(subframeNameExists(f.format, "T"));
    EXPECT_FALSE(subframeNameExists(f.format, ""));
}

TEST(SubframeEdit, ANameIsMadeFromTheWord) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .name = "SF-6"}));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 6}));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 7}));
    EXPECT_EQ(f.format.subframeOfWord(6)->name, "SF-6-2");
    EXPECT_EQ(f.format.subframeOfWord(7)->name, "SF-7");
}

TEST(SubframeEdit, TheNameOfAMeasurementIsNotThatOfItsHiddenSubframe) {
    StreamFixture f(2004);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    f.format.changed = false;
    ASSERT_TRUE(createSubframe(f.format, nullptr,
                               {.fwp = 5, .name = "MEAS", .hidden = HiddenMode::ForMeasurement}));
    EXPECT_EQ(f.subframe(0, 0).name, "SF-5");
    EXPECT_TRUE(f.subframe(0, 0).hidden);
    // Nothing of it is written.
    EXPECT_FALSE(f.format.changed);
}

// Oddity: whichever counter a subframe goes in step with, it is held by the first one.
TEST(SubframeEdit, HiddenSubframesAlwaysGoToTheFirstCountersArray) {
    StreamFixture f(2004);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 29));
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    f.format.idCounters[1].endFrame = "6";
    ASSERT_TRUE(deleteIdCounter(f.format, nullptr, 29));
    ASSERT_TRUE(f.counter(0).name.empty());
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .hidden = HiddenMode::Hidden}));
    EXPECT_EQ(f.counter(0).subframes.size(), 1U);
    EXPECT_TRUE(f.counter(1).subframes.empty());
    EXPECT_EQ(f.format.word(5).idCounterIndex, 0);
    // The depth is that of the counter that was found.
    EXPECT_EQ(f.subframe(0, 0).depth, "6");
}

TEST(SubframeEdit, AMeasurementWithoutCounterIsAskedForOncePerLoad) {
    StreamFixture f(2004);
    CounterQuestion question;
    const SubframeRequest request{
        .fwp = 5, .name = "M", .hidden = HiddenMode::ForMeasurement, .depth = 8};
    EXPECT_FALSE(createSubframe(f.format, f.parent, request, &question));
    EXPECT_FALSE(createSubframe(f.format, f.parent, request, &question));
    ASSERT_EQ(f.ui.countBoxes(358), 1);
    EXPECT_TRUE(f.ui.boxes[0].text.starts_with("Error reading measurement 'M'."));
    // Without a load each is asked for.
    EXPECT_FALSE(
        createSubframe(f.format, f.parent, {.fwp = 5, .hidden = HiddenMode::ForMeasurement}));
    ASSERT_EQ(f.ui.countBoxes(358), 2);
    EXPECT_TRUE(f.ui.boxes[1].text.starts_with("Error reading measurement '<no name defined>'."));
}

TEST(SubframeEdit, AYesWithoutAWordIsANo) {
    StreamFixture f(2004);
    CounterQuestion question;
    f.ui.byId[358] = Button::Yes;
    EXPECT_FALSE(createSubframe(f.format, f.parent,
                                {.fwp = 5, .name = "M", .hidden = HiddenMode::ForMeasurement},
                                &question));
    EXPECT_TRUE(question.refused);
    EXPECT_TRUE(f.format.idCounters.empty());
}

TEST(SubframeEdit, OnlyFreeWordsAreOfferedForTheCounter) {
    StreamFixture f(2004);
    f.place(2, 1, "BUSY");
    f.ui.byId[358] = Button::Yes;
    f.ui.choices = {1};
    ASSERT_TRUE(createSubframe(f.format, f.parent,
                               {.fwp = 5, .name = "M", .hidden = HiddenMode::ForMeasurement}));
    ASSERT_EQ(f.ui.listPrompts.size(), 1U);
    EXPECT_EQ(f.ui.listPrompts[0].second.size(), 29U);
    EXPECT_EQ(f.ui.listPrompts[0].second[1], "3");
    EXPECT_FALSE(f.ui.hasBox(231));
    EXPECT_EQ(f.format.wordType(3), WordType::IdCounter);
    EXPECT_EQ(f.format.wordType(5), WordType::Subframe);
}

TEST(SubframeEdit, ACounterInOneOfItsOwnWordsEndsTheSubframe) {
    StreamFixture f(2004);
    f.ui.byId[357] = Button::Yes;
    f.ui.choices = {0};
    EXPECT_TRUE(
        createSubframe(f.format, f.parent,
                       {.fwp = 5, .hidden = HiddenMode::Hidden, .locations = 2, .interval = 1}));
    EXPECT_EQ(f.format.wordType(1), WordType::IdCounter);

    StreamFixture g(2004);
    g.ui.byId[357] = Button::Yes;
    g.ui.choices = {4};  // word 6
    EXPECT_FALSE(
        createSubframe(g.format, g.parent,
                       {.fwp = 5, .hidden = HiddenMode::Hidden, .locations = 2, .interval = 1}));
    EXPECT_EQ(g.format.wordType(6), WordType::IdCounter);
    EXPECT_EQ(g.format.wordType(5), WordType::Minor);
}

TEST(SubframeEdit, WhatIsInEveryMinorFrameStaysInEveryFrameOfAHiddenSubframe) {
    StreamFixture f(2011);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    f.placeInEveryFrame(5, "EVERY");
    f.place(5, 1, "ONCE", "WDFR");
    EXPECT_EQ(f.format.countMeasurementOccurences("EVERY"), 8);
    makeHiddenSubframes(f.format, f.parent);
    EXPECT_EQ(f.format.countMeasurementOccurences("EVERY"), 8);
    EXPECT_EQ(f.format.countMeasurementOccurences("ONCE"), 1);
    for (int fn = 2; fn <= 8; ++fn) {
        EXPECT_EQ(f.format.countMeasurementsAt(5, fn, true), 1) << fn;
    }
}

TEST(SubframeEdit, AFreeEntryIsTakenBeforeANewOne) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    EXPECT_EQ(getSubframeSlot(f.format, nullptr, 0), 0);
    f.format.idCounters[0].subframes.resize(9999);
    for (auto& record : f.format.idCounters[0].subframes) {
        record.name = "X";
    }
    EXPECT_FALSE(getSubframeSlot(f.format, f.parent, 0));
    EXPECT_EQ(f.ui.countBoxes(352), 1);
    f.format.idCounters[0].subframes[77].name = "";
    EXPECT_EQ(getSubframeSlot(f.format, f.parent, 0), 77);
    EXPECT_FALSE(getSubframeSlot(f.format, f.parent, 1));
    EXPECT_FALSE(getSubframeSlot(f.format, f.parent, -1));
}

TEST(SubframeEdit, DeletingASubframeAsksAndResetsAllItsWords) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(
        createSubframe(f.format, nullptr, {.fwp = 5, .name = "S", .locations = 2, .interval = 4}));
    f.place(9, 3, "A", "SFSC");
    f.ui.byId[123] = Button::No;
    EXPECT_FALSE(deleteSubframe(f.format, f.parent, 9, true));
    EXPECT_TRUE(f.ui.boxes.back().text.starts_with(
        "You are about to permanently delete the definition for subframe 'S'"));
    EXPECT_EQ(f.boxTitle(123), 124);
    f.ui.byId[123] = Button::Yes;
    EXPECT_TRUE(deleteSubframe(f.format, f.parent, 9, true));
    EXPECT_EQ(f.format.wordType(5), WordType::Minor);
    EXPECT_EQ(f.format.wordType(9), WordType::Minor);
    EXPECT_EQ(f.format.word(9).subframeIndex, -1);
    EXPECT_EQ(f.format.cells().cellCount(9), 1);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_FALSE(subframeNameExists(f.format, "S"));
    EXPECT_TRUE(f.subframe(0, 0).name.empty());
    EXPECT_FALSE(deleteSubframe(f.format, f.parent, 9, true));
    EXPECT_FALSE(deleteSubframe(f.format, f.parent, 500, true));
}

TEST(SubframeEdit, AResetWithoutCellsKeepsTheFirstFrame) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5}));
    f.place(5, 1, "FIRST", "SF");
    f.place(5, 2, "SECOND", "SF");
    resetWord(f.format, f.parent, 5, false);
    EXPECT_TRUE(f.format.hasMeasurement("FIRST"));
    EXPECT_FALSE(f.format.hasMeasurement("SECOND"));
    resetWord(f.format, f.parent, 5, true);
    EXPECT_FALSE(f.format.hasMeasurement("FIRST"));
    resetWord(f.format, f.parent, 0, true);
    EXPECT_EQ(f.format.wordType(0), WordType::Sync);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(SubframeEdit, ASubframeMovesToAFreeEntryOfAnotherCounter) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 29));
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(
        createSubframe(f.format, nullptr, {.fwp = 5, .name = "S", .locations = 2, .interval = 4}));
    f.place(9, 3, "A", "SFSC");
    auto record = f.subframe(0, 0);
    record.name = "T";
    ASSERT_TRUE(moveSubframeToCounter(f.format, 5, record, 1));
    EXPECT_TRUE(f.subframe(0, 0).name.empty());
    EXPECT_EQ(f.subframe(1, 0).name, "T");
    EXPECT_EQ(f.wordsOf("T"), (std::vector<int>{5, 9}));
    EXPECT_EQ(f.format.word(9).idCounterIndex, 1);
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    // The record may be the one that is moved.
    ASSERT_TRUE(moveSubframeToCounter(f.format, 5, *f.format.subframeOfWord(5), 0));
    EXPECT_EQ(f.wordsOf("T"), (std::vector<int>{5, 9}));
    EXPECT_FALSE(moveSubframeToCounter(f.format, 5, record, 2));
    EXPECT_FALSE(moveSubframeToCounter(f.format, 6, record, 0));
}

TEST(SubframeEdit, CreatingIsForFreePlainWords) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5}));
    f.place(7, 1, "A");
    EXPECT_TRUE(canCreateAt(f.format, f.parent, 6));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 5));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 30));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 0));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 32));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 7));
    EXPECT_EQ(f.ui.countBoxes(231), 1);
}

TEST(SubframeEdit, AWordOfAnAsyncFormatIsInUse) {
    StreamFixture f;
    AsyncFormat contents;
    contents.dataLinkName = "INNER";
    ASSERT_TRUE(saveAsyncFormat(f.format, f.parent, 0, contents, {{7, {}, {}}}));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 7));
    EXPECT_EQ(f.ui.countBoxes(231), 1);
}

TEST(SubframeEdit, InTheLatestEditionACounterMayTakeAnyWordOfMeasurements) {
    StreamFixture f(2011);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    makeHiddenSubframes(f.format, nullptr);
    f.place(7, 1, "A", "WDFR");
    EXPECT_TRUE(canCreateAt(f.format, f.parent, 6));
    EXPECT_TRUE(canCreateAt(f.format, f.parent, 7));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 30));
    EXPECT_FALSE(canCreateAt(f.format, f.parent, 0));
}

TEST(SubframeEdit, APersonChoosesWhatToMakeAtAWord) {
    StreamFixture f;
    f.ui.choices = {1, 0, -1};
    EXPECT_EQ(createAt(f.format, f.parent, 5), Created::IdCounter);
    ASSERT_EQ(f.ui.listPrompts.size(), 1U);
    EXPECT_EQ(f.ui.listPrompts[0].first, "Which type of subframe do you wish to create?");
    EXPECT_EQ(f.ui.listPrompts[0].second,
              (std::vector<std::string>{"Create Subframe", "Create ID Counter"}));
    EXPECT_EQ(createAt(f.format, f.parent, 6), Created::Subframe);
    EXPECT_EQ(f.format.subframeOfWord(6)->name, "SF-6");
    EXPECT_EQ(createAt(f.format, f.parent, 7), Created::Nothing);
    EXPECT_EQ(createAt(f.format, f.parent, 6), Created::Nothing);
    EXPECT_EQ(createAt(f.format, nullptr, 7), Created::Nothing);
    EXPECT_EQ(f.ui.listPrompts.size(), 3U);
}

TEST(SubframeEdit, WhileMeasurementsDoWithoutSubframesOnlyTheCounterIsOffered) {
    StreamFixture f;
    f.format.implicitSubframes = true;
    f.ui.choices = {0};
    EXPECT_EQ(createAt(f.format, f.parent, 5), Created::IdCounter);
    EXPECT_EQ(f.ui.countBoxes(233), 1);
    EXPECT_EQ(f.ui.listPrompts[0].second, (std::vector<std::string>{"Create ID Counter"}));
}

TEST(SubframeEdit, InTheLatestEditionACounterIsMadeAtOnce) {
    StreamFixture f(2011);
    EXPECT_EQ(createAt(f.format, f.parent, 5), Created::IdCounter);
    EXPECT_TRUE(f.ui.listPrompts.empty());
}

TEST(SubframeEdit, TwoThousandHiddenSubframesCostNoScans) {
    StreamFixture f(2011, 2048, 256);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 2047));
    makeHiddenSubframes(f.format, nullptr);
    EXPECT_EQ(f.counter(0).subframes.size(), 2046U);
    EXPECT_EQ(f.format.findSubframe("SF-2046")->index, 2045);
}

}  // namespace
}  // namespace kavu
