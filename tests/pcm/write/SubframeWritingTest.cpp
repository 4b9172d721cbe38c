#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;

TEST(SubframeWriting, WritesCountersAndSubframesInTheOrderOfTheFile) {
    StreamFixture f;
    const Commands commands = Commands{"ISF\\N:2"} + plainCounter(1, 30, 8, "A") +
                              Commands{"SF\\N-1:2",   "SF1-1-1:S",   "SF2-1-1:NO",   "SF4-1-1-1:5",
                                       "SF6-1-1:4",   "SF1-1-2:T",   "SF2-1-2:3",    "SF3-1-2:EL",
                                       "SF4-1-2-1:6", "SF4-1-2-2:8", "SF4-1-2-3:12", "SF6-1-2:8"} +
                              plainCounter(2, 31, 8, "B") +
                              Commands{"SF\\N-2:1",    "SF1-2-1:U", "SF2-2-1:2", "SF3-2-1:FI",
                                       "SF4-2-1-1:20", "SF5-2-1:2", "SF6-2-1:2"} +
                              Commands{"AEF\\N:0", "ADM\\N:0"};
    ASSERT_TRUE(f.read(commands));
    EXPECT_EQ(f.written(), commands);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(SubframeWriting, NoCountersWriteTheirCount) {
    StreamFixture f;
    EXPECT_EQ(f.written(), (Commands{"ISF\\N:0", "AEF\\N:0", "ADM\\N:0"}));
}

TEST(SubframeWriting, EmptyTextsAndAnIntervalOfZeroWriteNothing) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, f.parent, 30));
    ASSERT_TRUE(createSubframe(f.format, f.parent, {.fwp = 5, .name = "S"}));
    const auto lines = f.written();
    EXPECT_EQ(StreamFixture::countStarting(lines, "IDC5"), 0);
    EXPECT_EQ(StreamFixture::countStarting(lines, "SF3"), 0);
    EXPECT_EQ(StreamFixture::countStarting(lines, "SF5"), 0);
    EXPECT_TRUE(StreamFixture::holds(lines, "SF6-1-1:8"));
}

TEST(SubframeWriting, SubframesAreNumberedWithoutTheirHoles) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    for (int fwp = 5; fwp < 8; ++fwp) {
        ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = fwp}));
    }
    ASSERT_TRUE(deleteSubframe(f.format, nullptr, 6, true));
    const auto lines = f.written();
    EXPECT_TRUE(StreamFixture::holds(lines, "SF\\N-1:2"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF1-1-1:SF-5"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF1-1-2:SF-7"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF4-1-2-1:7"));
}

TEST(SubframeWriting, HiddenSubframesAreNeverWritten) {
    StreamFixture f(2004);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .hidden = HiddenMode::Hidden}));
    EXPECT_TRUE(StreamFixture::holds(f.written(), "SF\\N-1:0"));
}

// Oddity: the search for a subframe's word starts at the index of its counter, taken as a
// word position: a subframe that lies in front of it is left out.
TEST(SubframeWriting, ASubframeInFrontOfTheIndexOfItsCounterIsLeftOut) {
    StreamFixture f;
    Commands commands{"ISF\\N:4"};
    for (int n = 1; n <= 4; ++n) {
        commands = commands + plainCounter(n, 27 + n, 8, "C" + std::to_string(n));
    }
    ASSERT_TRUE(
        f.read(commands + Commands{"SF\\N-4:4", "SF1-4-1:TWO", "SF4-4-1-1:2", "SF6-4-1:8",
                                   "SF1-4-2:THREE", "SF4-4-2-1:3", "SF6-4-2:8", "SF1-4-3:BOTH",
                                   "SF2-4-3:2", "SF3-4-3:EL", "SF4-4-3-1:1", "SF4-4-3-2:9",
                                   "SF6-4-3:8", "SF1-4-4:NOWHERE", "SF6-4-4:8"}));
    const auto lines = f.written();
    EXPECT_TRUE(StreamFixture::holds(lines, "SF\\N-4:2"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF1-4-1:THREE"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF1-4-2:BOTH"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF4-4-2-1:1"));
    EXPECT_TRUE(StreamFixture::holds(lines, "SF4-4-2-2:9"));
    EXPECT_EQ(StreamFixture::countStarting(lines, "SF1-4"), 2);
}

TEST(SubframeWriting, FromTheLatestEditionOnThereAreOnlyCounters) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 3, 8, "A")));
    EXPECT_EQ(f.written(), (Commands{"ISF\\N:1"} + plainCounter(1, 3, 8, "A") +
                            Commands{"AEF\\N:0", "ADM\\N:0"}));
}

}  // namespace
}  // namespace kavu
