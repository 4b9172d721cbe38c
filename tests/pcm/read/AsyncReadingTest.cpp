#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;
using Frames = std::vector<FrameRange>;

const AsyncFormat& record(const StreamFixture& f, int number) {
    return f.format.asyncFormats.at(static_cast<std::size_t>(number - 1));
}

/// The words that a record takes, with their masks.
std::vector<std::pair<int, std::string>> places(const StreamFixture& f, int number) {
    std::vector<std::pair<int, std::string>> found;
    const auto all = asyncPlaces(f.format);
    for (const auto& place : all.at(static_cast<std::size_t>(number - 1))) {
        found.emplace_back(place.fwp, place.mask);
    }
    return found;
}

using SlotPlaces = std::vector<std::pair<int, std::string>>;

TEST(AsyncReading, ARecordOfOneWord) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:INNER", "AEF1-1:NO", "AEF3-1-1:7", "AEF5-1-1:8",
                        "AEF6-1-1:00001111"}));
    ASSERT_EQ(f.format.asyncCount(), 1);
    EXPECT_EQ(record(f, 1).dataLinkName, "INNER");
    EXPECT_FALSE(record(f, 1).isDataMerge);
    EXPECT_EQ(record(f, 1).supercom, "NO");
    EXPECT_EQ(record(f, 1).locationMode, "NA");
    EXPECT_EQ(record(f, 1).interval, 1);
    EXPECT_EQ(record(f, 1).locations, (std::vector<AsyncLocation>{{7, Frames{{1, 1, 8}}}}));
    EXPECT_EQ(places(f, 1), (SlotPlaces{{7, "00001111"}}));
    EXPECT_TRUE(isAsyncAt(f.format, 7, 5, 1));
    EXPECT_FALSE(isAsyncAt(f.format, 7, 5, 2));
    EXPECT_EQ(f.format.countMeasurementsAt(7, 1, false), 1);
    EXPECT_EQ(f.format.countMeasurementsAt(7, 1, true), 0);
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(AsyncReading, NineteenFormatsAreNotProcessedAndTheStreamStillLoads) {
    for (const auto* const count : {"19", "1000000000", "99999999999999"}) {
        StreamFixture f(2009);
        ASSERT_TRUE(f.read({std::string("AEF\\N:") + count, "AEF\\DLN-1:X", "AEF3-1-1:7"}));
        EXPECT_EQ(f.format.asyncCount(), 0);
        EXPECT_EQ(f.ui.countLogs(187), 1);
        EXPECT_FALSE(isAsyncAt(f.format, -1, -1, 0));
        EXPECT_EQ(f.result(), 0);
    }
}

TEST(AsyncReading, EighteenFormatsAreRead) {
    StreamFixture f(2009);
    Commands commands{"AEF\\N:18"};
    for (int n = 1; n <= 18; ++n) {
        commands.push_back("AEF\\DLN-" + std::to_string(n) + ":L" + std::to_string(n));
        commands.push_back("AEF3-" + std::to_string(n) + "-1:" + std::to_string(n));
    }
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(f.format.asyncCount(), 18);
    EXPECT_TRUE(isAsyncAt(f.format, 18, 1, 18));
}

// Oddity: with a merge among them, one fewer than there is room for is taken.
TEST(AsyncReading, MergesThatWouldFillTheListAreNotProcessed) {
    struct Row {
        int embedded, merges, read;
    };
    for (const auto& [embedded, merges, read] :
         {Row{10, 7, 17}, Row{10, 8, 10}, Row{18, 0, 18}, Row{0, 18, 0}, Row{17, 1, 17}}) {
        StreamFixture f(2009, 64);
        Commands commands{"AEF\\N:" + std::to_string(embedded), "ADM\\N:" + std::to_string(merges)};
        for (int n = 1; n <= 18; ++n) {
            commands.push_back("AEF3-" + std::to_string(n) + "-1:" + std::to_string(n));
            commands.push_back("ADM3-" + std::to_string(n) + "-1:" + std::to_string(30 + n));
        }
        ASSERT_TRUE(f.read(commands));
        EXPECT_EQ(f.format.asyncCount(), read) << embedded << " " << merges;
        EXPECT_EQ(f.ui.countLogs(215), read < embedded + merges ? 1 : 0);
        EXPECT_EQ(f.result(), 0);
    }
}

TEST(AsyncReading, AMissingNameIsMade) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF3-1-1:7", "ADM\\N:1", "ADM3-1-1:8"}));
    EXPECT_EQ(record(f, 1).dataLinkName, "AsyncDataLink1");
    EXPECT_EQ(record(f, 2).dataLinkName, "AsyncDataMerge1");
    EXPECT_EQ(f.logText(191),
              "Async Embdedded PCM Stream definition found without a data link name defined. "
              "Unable to locate 'P-1\\AEF\\DLN-1' command in TMATS file. A default data link name "
              "has been created for this format definition."
              "Async Data Merge definition found without a data link name defined. Unable to "
              "locate 'P-1\\ADM\\DMN-1' command in TMATS file. A default data link name has been "
              "created for this format definition.");
    EXPECT_EQ(f.result(), 0);
}

TEST(AsyncReading, FirstWordAndInterval) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:3", "AEF2-1:FI", "AEF3-1-1:4",
                        "AEF4-1:9", "AEF5-1-2:4"}));
    EXPECT_EQ(record(f, 1).supercom, "3");
    EXPECT_EQ(record(f, 1).locationMode, "FI");
    EXPECT_EQ(record(f, 1).interval, 9);
    EXPECT_EQ(places(f, 1),
              (SlotPlaces{{4, std::string(16, '1')}, {13, "1111"}, {22, std::string(16, '1')}}));
    EXPECT_EQ(f.result(), 0);
}

TEST(AsyncReading, EveryLocationInRisingOrderWhateverTheFilesOrder) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:2", "AEF2-1:EL", "AEF3-1-1:9",
                        "AEF6-1-1:01", "AEF7-1-1:1", "AEF8-1-1-1:2", "AEF9-1-1-1:2",
                        "AEF10-1-1-1:6", "AEF3-1-2:4", "AEF6-1-2:10"}));
    EXPECT_EQ(places(f, 1), (SlotPlaces{{4, "10"}, {9, "01"}}));
    EXPECT_EQ(record(f, 1).locations,
              (std::vector<AsyncLocation>{{4, Frames{{1, 1, 8}}}, {9, Frames{{2, 2, 6}}}}));
}

TEST(AsyncReading, ASupercommutatedRecordWithoutModeFails) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read(
        {"AEF\\N:2", "AEF\\DLN-1:X", "AEF1-1:3", "AEF3-1-1:4", "AEF\\DLN-2:Y", "AEF3-2-1:5"}));
    ASSERT_EQ(f.format.asyncCount(), 1);
    // The later one has moved up, with its slots.
    EXPECT_EQ(record(f, 1).dataLinkName, "Y");
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 1));
    EXPECT_EQ(f.logText(192),
              "Illegal location definition found for async embedded format definition #1 (X). "
              "According to the definition, this format is suppercommutated, but an invalid "
              "location definition type (P-1\\AEF2-1) field was found. This stream definition will "
              "not be processed.");
}

TEST(AsyncReading, WithoutIntervalTheRecordFails) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:3", "AEF2-1:FI", "AEF3-1-1:4"}));
    EXPECT_EQ(f.format.asyncCount(), 0);
    EXPECT_EQ(f.logText(193),
              "Async Embedded Format definition #1 (X) missing interval field (P-1\\AEF4-1). This "
              "stream definition will not be processed.");
}

TEST(AsyncReading, ABadFirstLocationFailsTheRecord) {
    struct Row {
        const char* word;
        int message;
    };
    for (const auto& [word, message] :
         {Row{"", 194}, Row{"0", 195}, Row{"32", 195}, Row{"4000000000", 195}, Row{"31", 196}}) {
        StreamFixture f(2009);
        ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
                           Commands{"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:2", "AEF2-1:EL",
                                    std::string("AEF3-1-1:") + word, "AEF3-1-2:5"}));
        EXPECT_EQ(f.format.asyncCount(), 0) << word;
        EXPECT_EQ(f.ui.countLogs(message), 1) << word;
        EXPECT_FALSE(isAsyncAt(f.format, -1, -1, 0)) << word;
        EXPECT_EQ(f.result(), 0) << word;
    }
}

TEST(AsyncReading, ALocationAtAnIdCounterFailsTheRecordAndOnlyEarlierRecordsKeepTheirSlots) {
    StreamFixture f(2009);
    ASSERT_TRUE(
        f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
               Commands{"AEF\\N:2", "AEF\\DLN-1:X", "AEF3-1-1:5", "AEF\\DLN-2:Y", "AEF3-2-1:31"}));
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_EQ(f.logText(196),
              "Invalid Async Embedded Format location definition found. Frame Word Position 31 is "
              "NOT defined as a minor word location. Async stream definition #2 ('Y') will not be "
              "processed.");
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 1));
    EXPECT_FALSE(isAsyncAt(f.format, 31, 1, 0));
}

TEST(AsyncReading, ARecordForWhichNoCellIsLeftFails) {
    StreamFixture f(2009);
    f.format.cells().limitChained(0);
    // The second record's slot of word 5 would have to be chained to that of the first.
    ASSERT_TRUE(f.read({"AEF\\N:2", "AEF\\DLN-1:X", "AEF3-1-1:5", "AEF\\DLN-2:Y", "AEF3-2-1:5"}));
    EXPECT_EQ(f.ui.countLogs(197), 1);
    EXPECT_THAT(f.logText(197), testing::HasSubstr("frame word position #5 (start frame:1 "));
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 1));
}

TEST(AsyncReading, ABadLaterLocationIsSkipped) {
    struct Row {
        const char* word;
        int message;
    };
    for (const auto& [word, message] :
         {Row{"", 194}, Row{"0", 195}, Row{"32", 195}, Row{"31", 196}, Row{"4", 373}}) {
        StreamFixture f(2009);
        ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
                           Commands{"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:3", "AEF2-1:EL",
                                    "AEF3-1-1:4", std::string("AEF3-1-2:") + word, "AEF3-1-3:9"}));
        ASSERT_EQ(f.format.asyncCount(), 1) << word;
        EXPECT_EQ(places(f, 1).size(), 2U) << word;
        EXPECT_TRUE(isAsyncAt(f.format, 9, 1, 1)) << word;
        EXPECT_EQ(record(f, 1).supercom, "3") << word;
        EXPECT_EQ(f.ui.countLogs(message), 1) << word;
    }
}

TEST(AsyncReading, AMaskThatIsNotBinaryIsAllOnesOfTheWordLength) {
    for (const auto* const mask : {"", "FF", "0102", "FW"}) {
        StreamFixture f(2009);
        ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF5-1-1:6",
                            std::string("AEF6-1-1:") + mask}));
        EXPECT_EQ(places(f, 1), (SlotPlaces{{4, "111111"}})) << mask;
        EXPECT_EQ(f.result(), *mask == 0 ? 0 : 1) << mask;
    }
}

TEST(AsyncReading, AnIllegalWordLengthIsThatOfTheWord) {
    for (const auto* const length : {"0", "-5", "17", "99999"}) {
        StreamFixture f(2009);
        ASSERT_TRUE(
            f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", std::string("AEF5-1-1:") + length}));
        EXPECT_EQ(places(f, 1), (SlotPlaces{{4, std::string(16, '1')}})) << length;
        EXPECT_EQ(f.ui.countLogs(207), 1) << length;
        EXPECT_EQ(f.result(), 1) << length;
    }
}

TEST(AsyncReading, FrameRangesOfTheLatestEdition) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF7-1-1:2", "AEF8-1-1-1:2",
                        "AEF9-1-1-1:3", "AEF10-1-1-1:5", "AEF9-1-1-2:0"}));
    EXPECT_EQ(record(f, 1).locations[0].frames, (Frames{{2, 3, 5}, {1, 0, 8}}));
    EXPECT_EQ(f.result(), 0);
}

TEST(AsyncReading, BeforeThatThereIsOneRangeOfAllFrames) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF7-1-1:1", "AEF8-1-1-1:2"}));
    EXPECT_EQ(record(f, 1).locations[0].frames, (Frames{{1, 1, 8}}));
}

TEST(AsyncReading, RangesOutOfTheFormatAreReplaced) {
    struct Row {
        const char* start;
        const char* interval;
        const char* end;
        FrameRange range;
        const char* reason;
    };
    const auto* const kStart =
        "Start frame can not be less than 1, or greater than the number of frames in this format. "
        "TMATS command read: P-1\\AEF8-1-1-1:";
    const auto* const kInterval =
        "Frame interval can not be less than 0. TMATS command read: P-1\\AEF9-1-1-1:";
    const auto* const kLess =
        "End frame can not be less than start frame. TMATS command read: P-1\\AEF10-1-1-1:";
    const auto* const kGreater =
        "End frame can not be greater than the number of frames in this format. TMATS command "
        "read: P-1\\AEF10-1-1-1:";
    for (const auto& row :
         {Row{"0", "1", "8", {1, 1, 8}, kStart}, Row{"-3", "1", "8", {1, 1, 8}, kStart},
          Row{"9", "1", "8", {1, 1, 8}, kStart}, Row{"1", "-1", "8", {1, 1, 8}, kInterval},
          Row{"4", "1", "3", {4, 1, 8}, kLess}, Row{"4", "1", "9", {4, 1, 8}, kGreater}}) {
        StreamFixture f(2011);
        ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF7-1-1:1",
                            std::string("AEF8-1-1-1:") + row.start,
                            std::string("AEF9-1-1-1:") + row.interval,
                            std::string("AEF10-1-1-1:") + row.end}));
        EXPECT_EQ(record(f, 1).locations[0].frames, Frames{row.range}) << row.reason;
        EXPECT_EQ(f.ui.countLogs(214), 1);
        EXPECT_NE(f.logText(214).find(std::string("definition of async embedded format 'X'. ") +
                                      row.reason),
                  std::string::npos)
            << f.logText(214);
        EXPECT_EQ(f.result(), 1);
    }
}

TEST(AsyncReading, MoreRangesThanFramesAreCutToTheFrames) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF7-1-1:1000000000"}));
    EXPECT_EQ(record(f, 1).locations[0].frames.size(), 8U);
    EXPECT_EQ(f.result(), 1);
}

TEST(AsyncReading, AHiddenSubframesWordCountsAsAPlainOneWithSlotsInTheFramesOfTheRanges) {
    StreamFixture f(2011);
    ASSERT_TRUE(
        f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
               Commands{"AEF\\N:2", "AEF\\DLN-1:X", "AEF3-1-1:4", "AEF6-1-1:1100", "AEF7-1-1:2",
                        "AEF8-1-1-1:2", "AEF9-1-1-1:3", "AEF10-1-1-1:6", "AEF8-1-1-2:8",
                        "AEF9-1-1-2:0", "AEF10-1-1-2:8", "AEF\\DLN-2:Y", "AEF3-2-1:5"}));
    ASSERT_EQ(f.format.asyncCount(), 2);
    ASSERT_EQ(f.format.wordType(4), WordType::Subframe);
    for (int fn = 1; fn <= 8; ++fn) {
        EXPECT_EQ(isAsyncAt(f.format, 4, fn, 1), fn == 2 || fn == 5 || fn == 8) << fn;
        EXPECT_TRUE(isAsyncAt(f.format, 5, fn, 2)) << fn;
    }
    EXPECT_EQ(places(f, 1), (SlotPlaces{{4, "1100"}}));
}

TEST(AsyncReading, AnOrdinarySubframesWordIsNoPlaceForIt) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
                       Commands{"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:4", "SF6-1-1:8", "AEF\\N:1",
                                "AEF\\DLN-1:X", "AEF3-1-1:4"}));
    EXPECT_EQ(f.format.asyncCount(), 0);
    EXPECT_EQ(f.ui.countLogs(196), 1);
}

TEST(AsyncReading, ADataMergeHasTextsNumbersAndRangesOfItsOwnAndTheFullWordAsMask) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read({"ADM\\N:1",       "ADM\\DMN-1:MERGE", "ADM\\MP-1:OD",  "ADM\\OHM-1:111",
                        "ADM\\FDP-1:LSB", "ADM\\DOP-1:F",     "ADM\\SDP-1:N",  "ADM\\UDP-1:NO",
                        "ADM1-1:2",       "ADM2-1:FI",        "ADM3-1-1:4",    "ADM4-1:3",
                        "ADM5-1:8",       "ADM6-1:2",         "ADM7-1:YES",    "ADM8-1-1:1",
                        "ADM9-1-1-1:2",   "ADM10-1-1-1:2",    "ADM11-1-1-1:4", "ADM8-1-2:NO"}));
    ASSERT_EQ(f.format.asyncCount(), 1);
    const auto& merge = record(f, 1);
    EXPECT_TRUE(merge.isDataMerge);
    EXPECT_EQ(merge.dataLinkName, "MERGE");
    EXPECT_EQ(merge.mergeParity, "OD");
    EXPECT_EQ(merge.overheadMask, "111");
    EXPECT_EQ(merge.firstDataPosition, "LSB");
    EXPECT_EQ(merge.dataOrder, "F");
    EXPECT_EQ(merge.secondDataPosition, "N");
    EXPECT_EQ(merge.userDataPosition, "NO");
    EXPECT_EQ(merge.interval, 3);
    EXPECT_EQ(merge.adm5, 8);
    EXPECT_EQ(merge.adm6, 2);
    EXPECT_EQ(merge.adm7, "YES");
    EXPECT_EQ(places(f, 1), (SlotPlaces{{4, "FW"}, {7, "FW"}}));
    EXPECT_EQ(merge.locations[0].frames, (Frames{{2, 2, 4}}));
    EXPECT_EQ(merge.locations[1].frames, (Frames{{1, 1, 8}}));
    EXPECT_EQ(f.format.maskBits(4, "FW", false), 16);
}

TEST(AsyncReading, WhatADataMergeDoesNotSayHasItsDefault) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"ADM\\N:1", "ADM\\DMN-1:M", "ADM3-1-1:4"}));
    EXPECT_EQ(record(f, 1).adm5, 0);
    EXPECT_EQ(record(f, 1).adm6, 1);
    EXPECT_EQ(record(f, 1).adm7, "NO");
    EXPECT_EQ(record(f, 1).mergeParity, "");
}

TEST(AsyncReading, MessagesOfADataMergeNameIt) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"ADM\\N:2", "ADM\\DMN-1:M", "ADM1-1:2", "ADM3-1-1:4", "ADM\\DMN-2:N"}));
    EXPECT_EQ(f.format.asyncCount(), 0);
    EXPECT_TRUE(f.logText(192).starts_with(
        "Illegal location definition found for async data merge format definition #1 (M)."));
    EXPECT_EQ(f.logText(194),
              "Unable to locate 'P-1\\ADM3-2-1' definition in TMATS file. Async Data Merge "
              "definition #2 ('N') will not be processed.");
}

TEST(AsyncReading, IntervalsOfZeroAndCountsBeyondTheFrameAreBounded) {
    for (const auto* const interval : {"0", "-5", "1", "2000000000"}) {
        StreamFixture f(2011);
        Commands commands{"ISF\\N:1"};
        commands = commands + plainCounter(1, 31, 8, "A") + Commands{"AEF\\N:18"};
        for (int n = 1; n <= 18; ++n) {
            const auto number = std::to_string(n);
            commands =
                commands + Commands{"AEF1-" + number + ":999", "AEF2-" + number + ":FI",
                                    "AEF3-" + number + "-1:4", "AEF4-" + number + ":" + interval};
        }
        ASSERT_TRUE(f.read(commands));
        EXPECT_EQ(f.format.asyncCount(), 18);
        EXPECT_EQ(places(f, 18).size(), std::string(interval) == "1" ? 27U : 1U) << interval;
    }
}

TEST(AsyncReading, ACancelEndsTheRead) {
    StreamFixture f(2009);
    f.ui.cancelAtPoll = 2;
    EXPECT_FALSE(f.read({"AEF\\N:2", "AEF3-1-1:4", "AEF3-2-1:5"}));
    StreamFixture g(2009);
    g.ui.cancelAtPoll = 2;
    EXPECT_FALSE(g.read({"AEF\\N:1", "AEF1-1:9", "AEF2-1:FI", "AEF3-1-1:4", "AEF4-1:1"}));
}

}  // namespace
}  // namespace kavu
