// Counters, subframes and async formats in whole loads, together with measurements.
#include "pcm/LoadFixture.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::wordFrame;
using test::operator+;

constexpr const char* kPFile = "[kavu]PCMFMT.P01";
constexpr const char* kDFile = "[kavu]PCMMEAS.D01";

/// Saves, loads and saves again: the groups must be what they were.
void expectStable(LoadFixture& f) {
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    const auto p = f.read(kPFile);
    const auto d = f.read(kDFile);
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read(kPFile), p);
    EXPECT_EQ(f.read(kDFile), d);
}

TEST(SubframeLoad, SubframesAndTheirMeasurementsComeBack) {
    LoadFixture f(2007);
    const auto subframes =
        Commands{"SF\\N-1:2"} + subframeAt(1, "S", 5, 4) +
        Commands{"SF1-1-2:T", "SF2-1-2:2", "SF3-1-2:FI", "SF4-1-2-1:7", "SF5-1-2:4", "SF6-1-2:8"};
    ASSERT_TRUE(f.load(plainFormat(16, 8) + counterAt(15, 8, subframes),
                       listOf({{"MN@:A", "LT@:SF", "SF1@:S", "SF2@:3", "SFM@:FW"},
                               {"MN@:B", "LT@:SFSC", "SFS1@:T", "SFS\\N@:2", "SFS2@:E", "SFS6@-1:3",
                                "SFS7@-1:FW", "SFS6@-2:4", "SFS7@-2:FW"}})));
    EXPECT_EQ(f.result(), 0);
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 2);
    EXPECT_EQ(f.places("B"), (test::Places{{7, 2}, {11, 2}}));
    expectStable(f);
    EXPECT_EQ(f.places("B"), (test::Places{{7, 2}, {11, 2}}));
}

TEST(SubframeLoad, AnEmbeddedFormatOfTheLatestEditionSharesAHiddenSubframeWithMeasurements) {
    LoadFixture f(2011);
    ASSERT_TRUE(f.load(plainFormat(16, 8) + counterAt(15, 8) +
                           Commands{"AEF\\N:1", "AEF\\DLN-1:INNER", "AEF1-1:NO", "AEF3-1-1:5",
                                    "AEF5-1-1:8", "AEF6-1-1:11110000", "AEF7-1-1:1", "AEF8-1-1-1:2",
                                    "AEF9-1-1-1:2", "AEF10-1-1-1:8"},
                       listOf({wordFrame("A", 5, 1, 2, 7), wordFrame("B", 6, 1, 1, 8)})));
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
    ASSERT_EQ(f.format.asyncCount(), 1);
    for (int fn = 1; fn <= 8; ++fn) {
        EXPECT_EQ(isAsyncAt(f.format, 5, fn, 1), fn % 2 == 0) << fn;
        EXPECT_EQ(static_cast<bool>(f.format.findInCell(5, fn, "A")), fn % 2 == 1) << fn;
        EXPECT_TRUE(f.format.findInCell(6, fn, "B")) << fn;
    }
    expectStable(f);
    EXPECT_TRUE(isAsyncAt(f.format, 5, 8, 1));
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4);
}

TEST(SubframeLoad, TheQuestionForACounterIsAskedOnceInAWholeLoad) {
    LoadFixture f(2011);
    ASSERT_TRUE(
        f.load(plainFormat(16, 8), listOf({wordFrame("A", 5, 2, 2, 8), wordFrame("B", 6, 3, 0, 3),
                                           wordFrame("C", 7, 1, 1, 8)})));
    EXPECT_EQ(f.ui.countBoxes(357) + f.ui.countBoxes(358), 1);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.hasMeasurement("C"));
}

TEST(SubframeLoad, BeforeThatAMeasurementAsksAndAfterANoTheOthersDoNot) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(plainFormat(16, 8),
                       listOf({wordFrame("A", 5, 2, 2, 8), wordFrame("B", 6, 3, 0, 3)})));
    EXPECT_TRUE(f.format.implicitSubframes);
    EXPECT_EQ(f.ui.countBoxes(358), 1);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_FALSE(f.format.hasMeasurement("B"));
}

TEST(SubframeLoad, ACounterThatWasMadeForAMeasurementIsSaved) {
    LoadFixture f(2009);
    f.ui.byId[358] = Button::Yes;
    f.ui.choices = {10};  // word 5 is left out: 12
    ASSERT_TRUE(f.load(plainFormat(16, 8),
                       listOf({wordFrame("A", 5, 2, 2, 8), wordFrame("B", 6, 3, 0, 3)})));
    EXPECT_EQ(f.ui.countBoxes(358), 1);
    EXPECT_TRUE(f.format.changed);
    EXPECT_EQ(f.format.wordType(12), WordType::IdCounter);
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4);
    EXPECT_TRUE(f.format.subframeOfWord(5)->hidden);
    expectStable(f);
    EXPECT_EQ(f.format.wordType(12), WordType::IdCounter);
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(SubframeLoad, WhatIsInEveryFrameStaysThereWhenItsWordGetsAHiddenSubframe) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(plainFormat(16, 8) + counterAt(15, 8),
                       listOf({wordFrame("EVERY", 5, 1, 1, 8), wordFrame("SOME", 5, 2, 2, 8)})));
    EXPECT_EQ(f.result(), 0);
    EXPECT_EQ(f.format.countMeasurementOccurences("EVERY"), 8);
    EXPECT_EQ(f.format.countMeasurementOccurences("SOME"), 4);
    expectStable(f);
    EXPECT_EQ(f.format.countMeasurementOccurences("EVERY"), 8);
}

TEST(SubframeLoad, ACancelInTheCountersFailsTheLoad) {
    LoadFixture f(2007);
    for (int poll = 1; poll < 12; ++poll) {
        f.ui.polls = 0;
        f.ui.cancelAtPoll = poll;
        EXPECT_FALSE(f.load(plainFormat(16, 8) +
                            counterAt(15, 8, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 5, 4)) +
                            Commands{"AEF\\N:1", "AEF3-1-1:6", "ADM\\N:1", "ADM3-1-1:7"}))
            << poll;
        EXPECT_FALSE(f.format.loaded()) << poll;
    }
}

TEST(SubframeLoad, HostileCountsStillOpenTheStream) {
    LoadFixture f(2007);
    ASSERT_TRUE(f.load(plainFormat(16, 8) +
                       Commands{"ISF\\N:1000000000", "SF\\N-1:1000000000", "SF2-1-1:999",
                                "SF3-1-1:FI", "SF4-1-1-1:1", "SF5-1-1:-5", "AEF\\N:1000000000",
                                "ADM\\N:17", "ADM1-1:999", "ADM2-1:FI", "ADM3-1-1:6", "ADM4-1:0"}));
    EXPECT_EQ(f.result(), 1);
    EXPECT_EQ(f.ui.countLogs(177), 1);
    EXPECT_EQ(f.ui.countLogs(180), 1);
    EXPECT_EQ(f.ui.countLogs(187), 1);
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_EQ(countIdCounters(f.format), 99);
}

}  // namespace
}  // namespace kavu
