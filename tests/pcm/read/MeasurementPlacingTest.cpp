#include "pcm/LoadFixture.h"
#include "pcm/read/MeasurementPlacing.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::Logged;
using test::Places;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// 16 words and 4 frames, the counter in word 15 and a subframe of depth 4 in word 10.
struct Frame : LoadFixture {
    Frame() : LoadFixture(2009) {
        EXPECT_TRUE(load(plainFormat(16, 4) +
                             counterAt(15, 4, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 10, 4)),
                         listOf({})));
        state = std::make_unique<PcmLoad>(format, parent);
    }
    bool add(int fwp, int fn, const std::string& name, const std::string& type, Expected expected) {
        Measurement measurement;
        measurement.name = name;
        measurement.locationType = type;
        return addMeasurementLocation(*state, fwp, fn, measurement, expected);
    }
    std::unique_ptr<PcmLoad> state;
};

TEST(MeasurementPlacing, AMinorWordHasItsCellInFrame1Only) {
    Frame f;
    EXPECT_TRUE(f.add(3, 1, "A", "MF", Expected::MinorWord));
    EXPECT_TRUE(f.add(3, 2, "A", "MF", Expected::MinorWord)) << "true at once, nothing is stored";
    EXPECT_TRUE(f.add(99, 2, "A", "MF", Expected::MinorWord)) << "before any other test";
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.state->result, 0);
}

TEST(MeasurementPlacing, TheTypeOfTheWordMustBeTheExpectedOne) {
    Frame f;
    EXPECT_FALSE(f.add(10, 1, "A", "MF", Expected::MinorWord));
    EXPECT_FALSE(f.add(3, 2, "A", "SF", Expected::Subframe));
    EXPECT_EQ(f.logged(), (Logged{{277, 78}, {277, 78}}));
    EXPECT_EQ(f.ui.logs[1].text,
              "Illegal measurement definition. Measurement 'A' is defined as a Subframe "
              "measurement, but Frame Word Position 3 is defined as a Minor Word. This definition "
              "will be ignored.");
    EXPECT_TRUE(f.add(15, 3, "A", "SF", Expected::Subframe)) << "other words are accepted";
    EXPECT_TRUE(f.add(10, 3, "B", "SF", Expected::Subframe));
    EXPECT_TRUE(f.add(3, 3, "B", "WDFR", Expected::Any)) << "any frame of a plain word is its cell";
    EXPECT_EQ(f.places("B"), (Places{{3, 1}, {10, 3}}));
    EXPECT_EQ(f.state->result, 1);
}

TEST(MeasurementPlacing, ANameTwiceInOnePlaceIsRefusedUnlessItIsFragmented) {
    for (const auto* const type : {"MFFR", "sffr", "WDFR"}) {
        Frame f;
        EXPECT_TRUE(f.add(3, 1, "A", "MF", Expected::Any));
        EXPECT_FALSE(f.add(3, 1, "a", "MF", Expected::Any));
        EXPECT_EQ(f.logged(), (Logged{{275, 89}}));
        EXPECT_TRUE(f.add(3, 1, "A", type, Expected::Any));
        EXPECT_TRUE(f.add(4, 1, "B", type, Expected::Any));
        EXPECT_TRUE(f.add(4, 1, "B", "MF", Expected::Any)) << "the one that is there is fragmented";
    }
}

TEST(MeasurementPlacing, AFrameThatIsNoneHasNoPlace) {
    Frame f;
    EXPECT_FALSE(f.add(10, 5, "A", "SF", Expected::Subframe));
    EXPECT_FALSE(f.add(10, 0, "A", "SF", Expected::Subframe));
    EXPECT_EQ(f.logged(), (Logged{{276, 78}, {276, 78}}));
    EXPECT_FALSE(f.state->abort);
}

TEST(MeasurementPlacing, TheCellTypeFollowsFromTheWordAndTheFrames) {
    Frame f;
    EXPECT_EQ(wordFrameCellType(f.format, 10, 2, 1, 4), Expected::Subframe);
    EXPECT_EQ(wordFrameCellType(f.format, 3, 1, 1, 4), Expected::MinorWord);
    EXPECT_EQ(wordFrameCellType(f.format, 15, 1, 1, 4), Expected::MinorWord);
    EXPECT_EQ(wordFrameCellType(f.format, 3, 2, 1, 4), Expected::Any);
    EXPECT_EQ(wordFrameCellType(f.format, 3, 1, 0, 4), Expected::Any);
    EXPECT_EQ(wordFrameCellType(f.format, 3, 1, 1, 3), Expected::Any);
    EXPECT_EQ(wordFrameCellType(f.format, 0, 1, 1, 4), Expected::Any);
}

TEST(MeasurementPlacing, AFragmentIsPlacedInAllItsWordsAndFrames) {
    Frame f;
    Measurement measurement;
    measurement.name = "A";
    measurement.locationType = "WDFR";
    placeWordFrameFragment(*f.state, measurement, {8, 2, 12, 1, 1, 4, "FW", 'D', 1});
    EXPECT_EQ(f.places("A"), (Places{{8, 1}, {10, 1}, {10, 2}, {10, 3}, {10, 4}, {12, 1}}));
    placeWordFrameFragment(*f.state, measurement, {10, 0, 12, 2, 0, 2, "FW", 'D', 1});
    EXPECT_EQ(f.places("A").size(), 7U) << "an interval of 0 is one step";
}

}  // namespace
}  // namespace kavu
