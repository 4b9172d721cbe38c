#include "pcm/StreamFixture.h"
#include "pcm/display/FrameDisplaySearch.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;

TEST(FrameSearch, TwoNumbersInTheFieldOfTheFrameAreWordAndFrame) {
    EXPECT_EQ(parseGoTo("12 3", false, {5, 7}), (FramePlace{12, 3}));
}

TEST(FrameSearch, EntriesOfTheGoToFields) {
    constexpr FramePlace kPresent{5, 7};
    struct Row {
        const char* text;
        bool isWordField;
        std::optional<FramePlace> place;
    };
    for (const auto& row : {
             Row{"12", true, FramePlace{12, 7}},
             Row{"12", false, FramePlace{5, 12}},
             Row{"  12\t3  ", true, FramePlace{12, 3}},
             Row{"+12 +3", true, FramePlace{12, 3}},
             Row{"12x3", true, FramePlace{12, 7}},
             Row{"12 x", false, FramePlace{5, 12}},
             Row{"12-3", true, FramePlace{12, -3}},
             Row{"1 2 3", true, FramePlace{1, 2}},
             Row{"", true, std::nullopt},
             Row{"x", true, std::nullopt},
             Row{"+", true, std::nullopt},
             Row{"99999999999", true, std::nullopt},
             Row{"1 99999999999", true, FramePlace{1, 7}},
         }) {
        EXPECT_EQ(parseGoTo(row.text, row.isWordField, kPresent), row.place) << row.text;
    }
}

TEST(FrameSearch, AMeasurementIsFoundFrameByFrameAndIgnoringCase) {
    StreamFixture f;
    auto commands = plainCounter(1, 30, 8, "FRAMES");
    for (const auto* command :
         {"ISF\\N:1", "SF\\N-1:1", "SF1-1-1:ENGINE", "SF2-1-1:NO", "SF4-1-1-1:5", "SF6-1-1:4"}) {
        commands.emplace_back(command);
    }
    ASSERT_TRUE(f.read(commands));
    f.place(5, 3, "Oil", "SF");
    f.place(9, 1, "OIL");
    EXPECT_EQ(findMeasurement(f.format, "oil"), (FramePlace{9, 1})) << "word 5 is in frame 3";
    EXPECT_EQ(findMeasurement(f.format, "OI"), FramePlace{});
    EXPECT_EQ(findMeasurement(f.format, ""), FramePlace{});
    EXPECT_EQ(findSubframeWord(f.format, "ENGINE"), (FramePlace{5, 1}));
    EXPECT_EQ(findSubframeWord(f.format, "FRAMES"), (FramePlace{30, 1}));
    EXPECT_EQ(findSubframeWord(f.format, "engine"), FramePlace{}) << "exactly";
}

TEST(FrameSearch, TheListHasEveryMeasurementOnce) {
    StreamFixture f;
    f.place(9, 1, "B");
    f.place(4, 1, "A", "MFSC");
    f.place(9, 1, "C");
    f.place(12, 1, "a", "MFSC");
    const auto rows = measurementRows(f.format);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].name, "A");
    EXPECT_EQ(rows[0].locationType, "MFSC");
    EXPECT_EQ(rows[0].first, (FramePlace{4, 1}));
    EXPECT_EQ(rows[1].name, "B");
    EXPECT_EQ(rows[2].name, "C");
}

TEST(FrameSearch, FindingGoesOnAndAround) {
    const std::vector<MeasurementRow> rows = {{"OIL_T", "MF", {2, 1}},
                                              {"SPEED", "MF", {3, 1}},
                                              {"OIL_P", "MF", {3, 1}},
                                              {"oil_q", "MF", {3, 2}},
                                              {"X", "MF", {9, 1}}};
    const auto hits = findRows(rows, "oil");
    EXPECT_THAT(hits, testing::ElementsAre(0, 2, 3));
    EXPECT_TRUE(findRows(rows, "").empty());
    EXPECT_TRUE(findRows(rows, "zz").empty());
    EXPECT_EQ(nextHit(rows, hits, {}, true, true), 0U);
    EXPECT_EQ(nextHit(rows, hits, {2, 1}, true, true), 0U) << "while typing it stays";
    EXPECT_EQ(nextHit(rows, hits, {2, 1}, false, true), 1U);
    EXPECT_EQ(nextHit(rows, hits, {3, 1}, false, true), 2U);
    EXPECT_EQ(nextHit(rows, hits, {5, 1}, false, true), 0U) << "around";
    EXPECT_EQ(nextHit(rows, hits, {3, 1}, false, false), 0U);
    EXPECT_EQ(nextHit(rows, hits, {2, 1}, false, false), 2U) << "around";
    EXPECT_EQ(nextHit(rows, {}, {2, 1}, true, true), std::nullopt);
}

}  // namespace
}  // namespace kavu
