#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;

/// A stream with one counter in word 31 and these commands of its subframes.
Commands withCounter(const Commands& subframes, int frames = 8) {
    return Commands{"ISF\\N:1"} + plainCounter(1, 31, frames, "SFID") + subframes;
}

TEST(SubframeReading, AnOrdinarySubframeHasOneWord) {
    StreamFixture f;
    ASSERT_TRUE(
        f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:NO", "SF4-1-1-1:5", "SF6-1-1:4"})));
    EXPECT_EQ(f.subframe(0, 0).name, "S");
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "NO");
    EXPECT_EQ(f.subframe(0, 0).locationMode, "NA");
    EXPECT_EQ(f.subframe(0, 0).depth, "4");
    EXPECT_FALSE(f.subframe(0, 0).hidden);
    EXPECT_EQ(f.wordsOf("S"), std::vector<int>{5});
    EXPECT_EQ(f.format.cells().cellCount(5), 4);
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeReading, FirstWordAndIntervalMakesAllWordsFromOneCommand) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:3", "SF3-1-1:FI",
                                    "SF4-1-1-1:5", "SF5-1-1:10", "SF6-1-1:8"})));
    EXPECT_EQ(f.wordsOf("S"), (std::vector<int>{5, 15, 25}));
    EXPECT_EQ(f.subframe(0, 0).interval, "10");
    EXPECT_EQ(f.result(), 0);
    const auto lines = f.written();
    EXPECT_EQ(StreamFixture::countStarting(lines, "SF4-1-1-"), 1);
    EXPECT_TRUE(StreamFixture::holds(lines, "SF4-1-1-1:5"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF5-1-1:10"));
}

TEST(SubframeReading, EveryLocationWithItsSecondWordMissingEndsWithTwo) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:3", "SF3-1-1:EL",
                                    "SF4-1-1-1:5", "SF4-1-1-3:9", "SF6-1-1:8"})));
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "2");
    EXPECT_EQ(f.subframe(0, 0).locationMode, "EL");
    EXPECT_EQ(f.wordsOf("S"), (std::vector<int>{5, 9}));
    EXPECT_EQ(f.logText(186),
              "Unable to locate 'P-1\\SF4-1-1-2' subframe location definition entry in TMATS file "
              "for subframe 'S'. This subframe definition will be ignored.");
    EXPECT_EQ(f.result(), 1);
}

TEST(SubframeReading, EveryLocationLeftWithOneIsNotSupercommutated) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter(
        {"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:3", "SF3-1-1:EL", "SF4-1-1-2:9", "SF6-1-1:8"})));
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "NO");
    EXPECT_EQ(f.wordsOf("S"), std::vector<int>{9});
    EXPECT_EQ(f.ui.countLogs(186), 2);
}

TEST(SubframeReading, APlaceOutsideTheFrameOrTakenIsOneLocationFewer) {
    struct Row {
        const char* place;
        int message;
    };
    for (const auto& [place, message] :
         {Row{"0", 184}, Row{"32", 184}, Row{"-1", 184}, Row{"31", 185}, Row{"5", 185}}) {
        StreamFixture f;
        ASSERT_TRUE(
            f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:3", "SF3-1-1:EL", "SF4-1-1-1:5",
                                std::string("SF4-1-1-2:") + place, "SF4-1-1-3:9", "SF6-1-1:8"})));
        EXPECT_EQ(f.subframe(0, 0).supercommutated, "2") << place;
        EXPECT_EQ(f.ui.countLogs(message), 1) << place;
        EXPECT_EQ(f.result(), 1) << place;
    }
}

TEST(SubframeReading, ASubframeWithoutNameIsCalledByItsNumber) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF4-1-1-1:5", "SF6-1-1:8"})));
    EXPECT_EQ(f.subframe(0, 0).name, "SF#1");
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "NO");
    EXPECT_EQ(f.ui.countLogs(208), 1);
    EXPECT_EQ(f.result(), 0);
}

TEST(SubframeReading, ANameInUseByAnyCounterLeavesAHole) {
    StreamFixture f;
    ASSERT_TRUE(
        f.read(Commands{"ISF\\N:2"} + plainCounter(1, 30, 8, "A") + plainCounter(2, 31, 8, "B") +
               Commands{"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:5", "SF6-1-1:8", "SF\\N-2:2",
                        "SF1-2-1:S", "SF4-2-1-1:6", "SF1-2-2:s", "SF4-2-2-1:7", "SF6-2-2:8"}));
    EXPECT_TRUE(f.subframe(1, 0).name.empty());
    EXPECT_EQ(f.subframe(1, 1).name, "s");
    EXPECT_EQ(f.format.wordType(6), WordType::Minor);
    EXPECT_EQ(f.ui.countLogs(205), 1);
    EXPECT_EQ(f.result(), 1);
}

TEST(SubframeReading, LocationModeAndCountMustAgree) {
    StreamFixture f;
    ASSERT_TRUE(
        f.read(withCounter({"SF\\N-1:2", "SF1-1-1:S", "SF2-1-1:NO", "SF3-1-1:EL", "SF4-1-1-1:5",
                            "SF6-1-1:8", "SF1-1-2:T", "SF2-1-2:3", "SF4-1-2-1:6", "SF6-1-2:8"})));
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "NO");
    EXPECT_EQ(f.subframe(0, 0).locationMode, "NA");
    EXPECT_EQ(f.ui.countLogs(182), 1);
    EXPECT_EQ(f.subframe(0, 1).supercommutated, "NO");
    EXPECT_EQ(f.subframe(0, 1).locationMode, "NA");
    EXPECT_EQ(f.ui.countLogs(183), 1);
    EXPECT_EQ(f.result(), 1);
}

TEST(SubframeReading, TheIntervalPassesOverACounterAndTakesWordsOfOthers) {
    StreamFixture f;
    ASSERT_TRUE(f.read(
        withCounter({"SF\\N-1:2", "SF1-1-1:S", "SF4-1-1-1:21", "SF6-1-1:8", "SF1-1-2:T",
                     "SF2-1-2:3", "SF3-1-2:FI", "SF4-1-2-1:11", "SF5-1-2:10", "SF6-1-2:8"})));
    EXPECT_EQ(f.wordsOf("T"), (std::vector<int>{11, 21}));
    EXPECT_TRUE(f.wordsOf("S").empty());
    EXPECT_EQ(f.format.wordType(31), WordType::IdCounter);
    EXPECT_EQ(f.logText(211),
              "Unable to add subframe 'T' to frame word position 31. This frame word position is "
              "defined as an ID Counter.");
    EXPECT_EQ(f.result(), 0);
}

TEST(SubframeReading, AnIntervalOfZeroOrBelowOrOutOfTheFrameStaysWithinIt) {
    struct Row {
        const char* interval;
        std::vector<int> words;
    };
    for (const auto& [interval, words] :
         {Row{"0", {5}}, Row{"-4", {5}}, Row{"9999", {5}}, Row{"27", {5}}, Row{"x", {5}}}) {
        StreamFixture f;
        ASSERT_TRUE(
            f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:999", "SF3-1-1:FI",
                                "SF4-1-1-1:5", std::string("SF5-1-1:") + interval, "SF6-1-1:8"})));
        EXPECT_EQ(f.wordsOf("S"), words) << interval;
        EXPECT_EQ(f.format.wordType(0), WordType::Sync) << interval;
    }
}

TEST(SubframeReading, ADepthOfOneOrLessBecomesThatOfTheCounter) {
    for (const auto* const depth : {"1", "0", "-2", "x"}) {
        StreamFixture f;
        ASSERT_TRUE(f.read(withCounter(
            {"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:5", std::string("SF6-1-1:") + depth})));
        EXPECT_EQ(f.subframe(0, 0).depth, "8");
        EXPECT_EQ(f.ui.countLogs(212), 1);
        EXPECT_EQ(f.logText(212), "Warning: Subframe 'S' was defined with a depth of '" +
                                      std::to_string(leadingInt(depth)) +
                                      "'. This is illogical. The depth has been changed to 8. "
                                      "This may produce undesirable results");
        EXPECT_EQ(f.result(), 1);
    }
}

TEST(SubframeReading, AMissingDepthIsThatOfTheCounterAndNoCorrection) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:5"})));
    EXPECT_EQ(f.subframe(0, 0).depth, "8");
    EXPECT_EQ(f.ui.countLogs(213), 1);
    EXPECT_EQ(f.result(), 0);
}

TEST(SubframeReading, TooManySubframesAreCutToTheMost) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1000000000", "SF1-1-9999:LAST", "SF4-1-9999-1:7"})));
    EXPECT_EQ(f.counter(0).subframes.size(), 9999U);
    EXPECT_EQ(f.subframe(0, 9998).name, "LAST");
    EXPECT_EQ(f.wordsOf("LAST"), std::vector<int>{7});
    EXPECT_EQ(f.ui.countLogs(180), 1);
    EXPECT_EQ(f.result(), 1);
}

// A small file can claim a million subframes: they are read, in bounded time, and what they
// report is cut short.
TEST(SubframeReading, NinetyNineCountersOfNineThousandSubframesAreReadInBoundedTime) {
    StreamFixture f;
    Commands commands{"ISF\\N:99"};
    for (int n = 1; n <= 99; ++n) {
        commands.push_back("SF\\N-" + std::to_string(n) + ":9999");
        commands.push_back("IDC1-" + std::to_string(n) + ":1");
    }
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(countIdCounters(f.format), 99);
    for (int n = 0; n < 99; ++n) {
        EXPECT_EQ(f.counter(n).subframes.size(), 9999U);
    }
    EXPECT_EQ(f.subframe(0, 9998).name, "SF#9999");
    EXPECT_TRUE(f.subframe(1, 0).name.empty());
    EXPECT_TRUE(f.load->logIsFull());
}

TEST(SubframeReading, ManyClaimedLocationsThatAreNotThereAreBounded) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:999", "SF3-1-1:EL",
                                    "SF4-1-1-1:5", "SF4-1-1-200:6", "SF6-1-1:8"})));
    EXPECT_EQ(f.subframe(0, 0).supercommutated, "2");
    EXPECT_EQ(f.wordsOf("S"), (std::vector<int>{5, 6}));
    EXPECT_EQ(f.ui.countLogs(186), 198);
}

TEST(SubframeReading, EveryMessageBearsItsTitle) {
    StreamFixture f;
    ASSERT_TRUE(f.read(Commands{
        "ISF\\N:120",  "ISF1-1:A",     "IDC1-1:31",    "IDC2-1:8",  "IDC3-1:0",  "SF\\N-1:10000",
        "SF2-1-1:NO",  "SF3-1-1:FI",   "SF4-1-1-1:99", "SF6-1-1:1", "SF1-1-2:T", "SF2-1-2:2",
        "SF3-1-2:NA",  "SF4-1-2-1:31", "SF1-1-3:T",    "SF1-1-4:U", "SF2-1-4:2", "SF3-1-4:FI",
        "SF4-1-4-1:1", "SF5-1-4:30",   "ISF1-2:A",     "ISF1-3:B",  "IDC1-3:99"}));
    std::map<int, int> titles;
    for (const auto& log : f.ui.logs) {
        const auto [at, isNew] = titles.emplace(log.id, log.titleId);
        EXPECT_TRUE(isNew || at->second == log.titleId) << log.id;
    }
    const std::map<int, int> expected{
        {177, 78}, {179, 88}, {180, 78}, {182, 88}, {183, 88}, {184, 88}, {185, 88},
        {186, 88}, {199, 88}, {200, 88}, {201, 86}, {202, 80}, {203, 88}, {204, 88},
        {205, 88}, {208, 88}, {209, 88}, {210, 86}, {211, 88}, {212, 86}, {213, 86}};
    EXPECT_EQ(titles, expected);
}

TEST(SubframeReading, ACancelEndsTheRead) {
    StreamFixture f;
    f.ui.cancelAtPoll = 3;
    EXPECT_FALSE(f.read(withCounter({"SF\\N-1:3"})));
}

TEST(SubframeReading, TheSubframesOfOneCounterCanBeReadAlone) {
    StreamFixture f;
    ASSERT_TRUE(f.read(withCounter({"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:5", "SF6-1-1:8"})));
    f.format.idCounters[0].subframes.clear();
    f.format.subframesChanged();
    f.format.setWord(5, WordType::Minor, -1, -1);
    EXPECT_TRUE(readSubframes(*f.load, 0));
    EXPECT_EQ(f.wordsOf("S"), std::vector<int>{5});
}

}  // namespace
}  // namespace kavu
