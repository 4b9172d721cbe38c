#include "pcm/edit/SentValues.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Parts = std::vector<SentPart>;

/// Words 1 to 3 of four frames: a plain word, a subframe as deep as the frame, and one of depth 2.
FrameShape shapeOfFour() {
    FrameShape shape;
    shape.words = 4;
    shape.frames = 4;
    shape.at = {{WordType::Sync, false, 1},
                {WordType::Minor, false, 1},
                {WordType::Subframe, false, 4},
                {WordType::Subframe, false, 2}};
    return shape;
}

WordFrameFragment fragment(const std::string& mask, char order = 'D') {
    WordFrameFragment made;
    made.mask = mask;
    made.transferOrder = order;
    return made;
}

/// One step of a location: a word and its frames for each fragment.
LocationPlaces oneStep(const std::vector<WordFrames>& words,
                       const std::vector<WordFrameFragment>& fragments) {
    LocationPlaces places;
    places.steps = {words};
    places.fragments = fragments;
    return places;
}

class SentValuesTest : public ::testing::Test {
  protected:
    [[nodiscard]] SentValues sent(const LocationPlaces& places) {
        return SentValues({places}, shape_, masks_);
    }
    [[nodiscard]] SentPart part(int fwp, const std::string& mask, int fn, char order = 'D') {
        return sentPart(fwp, masks_.of(mask), order, fn);
    }

    FrameShape shape_ = shapeOfFour();
    MaskNumbers masks_;
};

TEST_F(SentValuesTest, CellsOfAShortSubframeAreSentAgain) {
    const auto values = sent(oneStep({{3, {2}}}, {fragment("FW")}));
    EXPECT_EQ(values.size(), 2U);
    EXPECT_EQ(values.parts(4, true), (Parts{part(3, "FW", 2), part(3, "FW", 4)}));
}

TEST_F(SentValuesTest, AllFramesOneByOneAreEveryFrame) {
    const auto every = sent(oneStep({{2, {0}}}, {fragment("FW")}));
    EXPECT_EQ(sent(oneStep({{2, {1, 2, 3, 4}}}, {fragment("FW")})), every);
    LocationPlaces apart;
    apart.fragments = {fragment("FW")};
    apart.steps = {{{2, {1, 3}}}, {{2, {2, 4}}}};
    EXPECT_FALSE(sent(apart) == every);
    EXPECT_EQ(sent(apart).parts(4, true), every.parts(4, true));
}

TEST_F(SentValuesTest, PartsOfOneValueStayTogether) {
    const auto together = sent(oneStep({{1, {0}}, {2, {0}}}, {fragment("FW"), fragment("1100")}));
    EXPECT_EQ(together.size(), 1U);
    LocationPlaces apart = oneStep({{1, {0}}}, {fragment("FW")});
    LocationPlaces other = oneStep({{2, {0}}}, {fragment("1100")});
    const SentValues two({apart, other}, shape_, masks_);
    EXPECT_EQ(two.size(), 2U);
    EXPECT_FALSE(together == two);
    EXPECT_EQ(together.parts(4, true), two.parts(4, true));
    EXPECT_EQ(together.countCommon(two), 0U);
}

TEST_F(SentValuesTest, FragmentsOfOtherLengthsAreOneValueOfAllParts) {
    const auto uneven = sent(oneStep({{2, {1, 2}}, {3, {1}}}, {fragment("FW"), fragment("FW")}));
    EXPECT_EQ(uneven.size(), 2U) << "word 3 comes again, so that both have two frames";
    shape_.at[3].depth = 4;
    EXPECT_EQ(sent(oneStep({{2, {1, 2}}, {3, {1}}}, {fragment("FW"), fragment("FW")})).size(), 1U);
}

TEST_F(SentValuesTest, MasksAndOrdersMakeADifference) {
    const auto one = sent(oneStep({{1, {0}}}, {fragment("1100")}));
    EXPECT_FALSE(one == sent(oneStep({{1, {0}}}, {fragment("0011")})));
    const auto least = sent(oneStep({{1, {0}}}, {fragment("1100", 'L')}));
    EXPECT_FALSE(one == least);
    EXPECT_NE(one.parts(4, true), least.parts(4, true));
    EXPECT_EQ(one.parts(4, false), least.parts(4, false));
}

TEST_F(SentValuesTest, CommonValuesAreCounted) {
    const auto first = sent(oneStep({{2, {1, 2, 3}}}, {fragment("FW")}));
    const auto second = sent(oneStep({{2, {2, 3}}}, {fragment("FW")}));
    EXPECT_EQ(first.countCommon(second), 2U);
    EXPECT_EQ(second.countCommon(first), 2U);
    EXPECT_EQ(first.countCommon(first), 3U);
}

TEST_F(SentValuesTest, AStepOfWhichNothingIsLeftIsNoValue) {
    EXPECT_TRUE(sent(oneStep({WordFrames{}}, {fragment("FW")})).empty());
    EXPECT_TRUE(SentValues({}, shape_, masks_).empty());
}

}  // namespace
}  // namespace kavu
