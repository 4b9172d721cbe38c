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

TEST(FrameSearch, EveryPlaceOfAMeasurementIsFoundAndAsyncNamesToo) {
    StreamFixture f;
    f.place(9, 1, "OIL_T", "MFSC");
    f.place(4, 1, "OIL_T", "MFSC");
    f.place(4, 1, "SPEED");
    f.place(6, 1, "oil_p");
    f.format.asyncFormats.resize(2);
    f.format.asyncFormats[0].dataLinkName = "Boiler";
    f.format.asyncFormats[1].dataLinkName = "VIDEO";
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 1, {7, {{1, 1, 8}}}, "FW"));
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 2, {8, {{1, 1, 8}}}, "FW"));
    EXPECT_THAT(findPlaces(f.format, "oil"),
                testing::ElementsAre(FoundPlace{{4, 1}, "OIL_T"}, FoundPlace{{6, 1}, "oil_p"},
                                     FoundPlace{{7, 1}, "Boiler"}, FoundPlace{{9, 1}, "OIL_T"}));
    EXPECT_TRUE(findPlaces(f.format, "").empty());
    EXPECT_TRUE(findPlaces(f.format, "zz").empty());
}

TEST(FrameSearch, FindingGoesOnAndAround) {
    const std::vector<FoundPlace> places = {
        {{2, 1}, "OIL_T"}, {{3, 1}, "OIL_P"}, {{3, 1}, "OIL_Q"}, {{3, 2}, "OIL_Q"}};
    EXPECT_EQ(nextPlace(places, {}, true, true), 0U);
    EXPECT_EQ(nextPlace(places, {2, 1}, true, true), 0U) << "while typing it stays";
    EXPECT_EQ(nextPlace(places, {2, 1}, false, true), 1U);
    EXPECT_EQ(nextPlace(places, {3, 1}, false, true), 3U);
    EXPECT_EQ(nextPlace(places, {5, 1}, false, true), 0U) << "around";
    EXPECT_EQ(nextPlace(places, {3, 1}, false, false), 0U);
    EXPECT_EQ(nextPlace(places, {2, 1}, false, false), 3U) << "around";
    EXPECT_EQ(nextPlace({}, {2, 1}, true, true), std::nullopt);
}

TEST(FrameSearch, ARefusedPlaceIsExplained) {
    StreamFixture f;
    const FrameDisplay display(f.format);
    EXPECT_EQ(goToProblem(display, FramePlace{3, 8}), std::nullopt);
    EXPECT_EQ(goToProblem(display, FramePlace{32, 1}),
              "There is no FWP 32: this frame has the words 0 to 31.");
    EXPECT_EQ(goToProblem(display, FramePlace{-1, 1}),
              "There is no FWP -1: this frame has the words 0 to 31.");
    EXPECT_EQ(goToProblem(display, FramePlace{3, 9}),
              "There is no FN 9: this stream has the frames 1 to 8.");
    EXPECT_EQ(goToProblem(display, FramePlace{3, 0}),
              "There is no FN 0: this stream has the frames 1 to 8.");
    EXPECT_EQ(goToProblem(display, std::nullopt), "Enter a number, or two: word and frame.");
}

TEST(FrameSearch, AllPlacesOfTheMarkedMeasurementAreMarked) {
    StreamFixture f;
    f.place(9, 1, "OIL", "MFSC");
    f.place(4, 1, "oil", "MFSC");
    f.place(5, 1, "SPEED");
    FrameDisplay display(f.format);
    EXPECT_FALSE(display.isMarked({9, 1}));
    display.marked = "OIL";
    EXPECT_TRUE(display.isMarked({9, 1}));
    EXPECT_TRUE(display.isMarked({9, 5})) << "in every frame";
    EXPECT_TRUE(display.isMarked({4, 1}));
    EXPECT_FALSE(display.isMarked({5, 1}));
    EXPECT_FALSE(display.isMarked({}));
}

}  // namespace
}  // namespace kavu
