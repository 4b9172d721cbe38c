#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;

TEST(AsyncWriting, WritesARecordOfOneWord) {
    StreamFixture f(2009);
    const Commands commands{"ISF\\N:0",   "AEF\\N:1",   "AEF\\DLN-1:X",      "AEF1-1:NO",
                            "AEF3-1-1:7", "AEF5-1-1:8", "AEF6-1-1:00001111", "ADM\\N:0"};
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(f.written(), commands);
}

TEST(AsyncWriting, WritesAllLocationsWithTheirMasksAndRanges) {
    StreamFixture f(2011);
    const Commands commands =
        Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "A") +
        Commands{"AEF\\N:2",     "AEF\\DLN-1:X",  "AEF1-1:2",      "AEF2-1:EL",    "AEF3-1-1:7",
                 "AEF5-1-1:4",   "AEF6-1-1:0011", "AEF7-1-1:NO",   "AEF3-1-2:9",   "AEF5-1-2:3",
                 "AEF6-1-2:110", "AEF7-1-2:2",    "AEF8-1-2-1:1",  "AEF9-1-2-1:2", "AEF10-1-2-1:7",
                 "AEF8-1-2-2:8", "AEF9-1-2-2:0",  "AEF10-1-2-2:8", "AEF\\DLN-2:Y", "AEF1-2:2",
                 "AEF2-2:FI",    "AEF3-2-1:10",   "AEF4-2:5",      "AEF5-2-1:2",   "AEF6-2-1:11",
                 "AEF7-2-1:NO",  "AEF5-2-2:2",    "AEF6-2-2:01",   "AEF7-2-2:1",   "AEF8-2-2-1:4",
                 "AEF9-2-2-1:1", "AEF10-2-2-1:8", "ADM\\N:0"};
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(f.written(), commands);
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(AsyncWriting, WritesMergesBehindAndNumbersEachKindFromOne) {
    StreamFixture f(2011);
    const Commands commands{"ISF\\N:0",
                            "AEF\\N:1",
                            "AEF\\DLN-1:X",
                            "AEF1-1:NO",
                            "AEF3-1-1:7",
                            "AEF5-1-1:16",
                            "AEF6-1-1:1111111111111111",
                            "AEF7-1-1:NO",
                            "ADM\\N:2",
                            "ADM\\DMN-1:M",
                            "ADM\\MP-1:OD",
                            "ADM\\OHM-1:1",
                            "ADM\\FDP-1:L",
                            "ADM\\DOP-1:F",
                            "ADM\\SDP-1:N",
                            "ADM\\UDP-1:U",
                            "ADM1-1:2",
                            "ADM2-1:EL",
                            "ADM3-1-1:4",
                            "ADM3-1-2:6",
                            "ADM5-1:8",
                            "ADM6-1:2",
                            "ADM7-1:YES",
                            "ADM8-1-1:1",
                            "ADM9-1-1-1:2",
                            "ADM10-1-1-1:2",
                            "ADM11-1-1-1:4",
                            "ADM8-1-2:NO",
                            "ADM\\DMN-2:N",
                            "ADM1-2:2",
                            "ADM2-2:FI",
                            "ADM3-2-1:12",
                            "ADM4-2:3",
                            "ADM5-2:0",
                            "ADM6-2:1",
                            "ADM7-2:NO",
                            "ADM8-2-1:NO",
                            "ADM8-2-2:NO"};
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(f.written(), commands);
}

TEST(AsyncWriting, TheWordLengthIsThatOfTheMask) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:7", "AEF5-1-1:12", "AEF6-1-1:101"}));
    EXPECT_TRUE(StreamFixture::holds(f.written(), "AEF5-1-1:3"));
}

TEST(AsyncWriting, BeforeTheLatestEditionThereAreNoRanges) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:7", "ADM\\N:1", "ADM3-1-1:9"}));
    const auto lines = f.written();
    EXPECT_EQ(StreamFixture::countStarting(lines, "AEF7"), 0);
    EXPECT_EQ(StreamFixture::countStarting(lines, "ADM8"), 0);
    EXPECT_EQ(StreamFixture::countStarting(lines, "ADM6-1:1"), 1);
}

TEST(AsyncWriting, ARecordWithoutASlotIsReportedAndTheOthersAreWritten) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:2", "AEF\\DLN-1:X", "AEF3-1-1:7", "AEF\\DLN-2:Y", "AEF3-2-1:8"}));
    freeAsyncSlots(f.format, 1);
    const auto lines = f.written();
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_EQ(f.ui.boxes[0].id, 234);
    EXPECT_EQ(f.ui.boxes[0].titleId, 136);
    EXPECT_TRUE(StreamFixture::holds(lines, "AEF\\DLN-1:X"));
    EXPECT_EQ(StreamFixture::countStarting(lines, "AEF3-1"), 0);
    EXPECT_TRUE(StreamFixture::holds(lines, "AEF3-2-1:8"));
}

TEST(AsyncWriting, AMissingEveryLocationIsReportedOnce) {
    StreamFixture f(2009);
    ASSERT_TRUE(
        f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:9", "AEF2-1:EL", "AEF3-1-1:7", "AEF3-1-2:9"}));
    const auto lines = f.written();
    ASSERT_EQ(f.ui.countBoxes(235), 1);
    EXPECT_EQ(
        f.ui.boxes.back().text,
        "Unable to locate 'Every Location' Async Format Frame Word Position. Could not locate "
        "the Frame Word Position for position #3 (9 total number of locations) of Async "
        "Format 'X'.  KAVU internal error.");
    EXPECT_TRUE(StreamFixture::holds(lines, "AEF3-1-2:9"));
}

TEST(AsyncWriting, AStepThatIsNotOfTheFormatIsReportedAndTheOthersKeepTheirNumbers) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read(
        Commands{"ISF\\N:1"} + plainCounter(1, 10, 8, "A") +
        Commands{"AEF\\N:1", "AEF\\DLN-1:X", "AEF1-1:3", "AEF2-1:FI", "AEF3-1-1:7", "AEF4-1:3"}));
    const auto lines = f.written();
    ASSERT_EQ(f.ui.countBoxes(236), 1);
    EXPECT_EQ(
        f.ui.boxes.back().text,
        "Invalid Frame Word Position found. (Frame Word Position: 10 Interval: 3 number of "
        "locations: 3) This Frame Word Position was not found to be part of this Async Format "
        "'X'. KAVU internal error.");
    EXPECT_TRUE(StreamFixture::holds(lines, "AEF5-1-3:16"));
    EXPECT_EQ(StreamFixture::countStarting(lines, "AEF5-1-2"), 0);
}

TEST(AsyncWriting, ANullParentIsSilent) {
    StreamFixture f(2009);
    ASSERT_TRUE(f.read({"AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:7"}));
    freeAsyncSlots(f.format, 1);
    f.parent = nullptr;
    EXPECT_TRUE(StreamFixture::holds(f.written(), "AEF\\N:1"));
    EXPECT_TRUE(f.ui.boxes.empty());
}

}  // namespace
}  // namespace kavu
