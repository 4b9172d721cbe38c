#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "pcm/undo/StreamUndo.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::StreamFixture;
using testing::ElementsAre;
using testing::Pair;

WordFrameFragment fragment(int word, int step, int lastWord, int frame, int frameStep,
                           int lastFrame) {
    WordFrameFragment result{word, step, lastWord, frame, frameStep, lastFrame, "FW", 'D', 1};
    return result;
}

/// Words 1 to 31 in 8 frames of edition 106-11, a counter in 30.
struct RangesFixture : StreamFixture {
    explicit RangesFixture(int edition = 2011, bool counter = true) : StreamFixture(edition) {
        format.implicitSubframes = edition >= 2011;
        if (counter) {
            EXPECT_TRUE(createIdCounter(format, nullptr, 30));
        }
        format.changed = false;
    }
    static MeasurementDefinition define(const std::string& name,
                                        std::vector<WordFrameFragment> fragments,
                                        int wordLength = 0) {
        MeasurementDefinition definition;
        definition.attributes.name = name;
        definition.attributes.locationType = "WDFR";
        definition.attributes.mask = "FW";
        definition.wordFrame.locations.push_back({wordLength, std::move(fragments)});
        return definition;
    }
    bool save(const EditedPlace& place, const MeasurementDefinition& definition) {
        return saveMeasurement(format, parent, {}, {}, place, definition);
    }
    [[nodiscard]] std::string places(const std::string& name) const {
        std::string text;
        for (const auto& at : format.cells().places(name)) {
            text += std::to_string(at.word) + "/" + std::to_string(at.index) + " ";
        }
        return text;
    }
    [[nodiscard]] const WordFrameDefinition& ranges(const std::string& name) const {
        const auto first = Occurrences(format, name).next();
        EXPECT_TRUE(first);
        const auto* const found =
            format.wordFrameDefinition(format.cells().measurement(first->cell).wordFrameIndex);
        EXPECT_NE(found, nullptr);
        return *found;
    }
    void refuses(const EditedPlace& place, const MeasurementDefinition& definition, int message) {
        ui.boxes.clear();
        StreamUndo before(format);
        EXPECT_FALSE(save(place, definition)) << message;
        ASSERT_FALSE(ui.boxes.empty()) << message;
        EXPECT_EQ(ui.boxes.back().id, message);
        EXPECT_FALSE(before.commit()) << "changed by " << message;
        EXPECT_FALSE(format.changed);
        EXPECT_FALSE(saveMeasurement(format, nullptr, {}, {}, place, definition));
        EXPECT_FALSE(before.commit());
    }
};

TEST(MeasurementEditWordFrame, AWordInEveryFrameIsPlacedOnceAndReplacesItsOldRanges) {
    RangesFixture f;
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 1, 1, 8)})));
    EXPECT_EQ(f.places("A"), "3/1 ");
    EXPECT_EQ(f.ranges("A").locations[0].wordLength, 16);
    EXPECT_TRUE(f.format.changed);
    const auto entries = f.format.wordFrameDefinitions.size();
    ASSERT_TRUE(f.save({3, 1, "A"}, RangesFixture::define("B", {fragment(5, 10, 25, 1, 1, 8)})));
    EXPECT_EQ(f.places("A"), "");
    EXPECT_EQ(f.places("B"), "5/1 15/1 25/1 ");
    EXPECT_EQ(f.format.wordFrameDefinitions.size(), entries);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(MeasurementEditWordFrame, AFragmentOfSomeFramesMakesItsHiddenSubframesAndTheyGoWithIt) {
    RangesFixture f;
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 2, 3, 8)})));
    EXPECT_EQ(f.places("A"), "3/2 3/5 3/8 ");
    EXPECT_EQ(f.format.wordType(3), WordType::Subframe);
    EXPECT_TRUE(f.format.subframeOfWord(3)->hidden);
    ASSERT_TRUE(f.save({3, 2, "A"}, RangesFixture::define("A", {fragment(4, 0, 4, 1, 1, 8)})));
    EXPECT_EQ(f.format.wordType(3), WordType::Minor);
    EXPECT_EQ(f.places("A"), "4/1 ");
}

TEST(MeasurementEditWordFrame, FrameOneAloneOfAPlainWordIsEveryFrame) {
    RangesFixture f;
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 1, 0, 1)})));
    const auto& stored = f.ranges("A").locations[0].fragments[0];
    EXPECT_EQ(stored.frameInterval, 1);
    EXPECT_EQ(stored.endFrame, 8);
    EXPECT_EQ(f.format.wordType(3), WordType::Minor);
}

TEST(MeasurementEditWordFrame, FragmentsAreNumberedByTheirOrderAndTheirLengthIsTheSumOfTheMasks) {
    RangesFixture f;
    auto first = fragment(3, 0, 3, 1, 1, 8);
    first.mask = "1111111100000000";
    auto second = fragment(4, 0, 4, 1, 1, 8);
    second.fragmentPosition = 7;
    f.refuses({3, 1, {}}, RangesFixture::define("A", {first, second}), 336);
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {first, second}, 32)));
    EXPECT_EQ(f.ui.boxes.back().id, 294);
    const auto& location = f.ranges("A").locations[0];
    EXPECT_EQ(location.wordLength, 24);
    EXPECT_EQ(location.fragments[0].fragmentPosition, 1);
    EXPECT_EQ(location.fragments[1].fragmentPosition, 2);
    EXPECT_EQ(f.places("A"), "3/1 4/1 ");
}

TEST(MeasurementEditWordFrame, WhatIsWrongIsToldAndLeavesTheFrameAsItWas) {
    RangesFixture f;
    f.placeInEveryFrame(20, "Old");
    f.format.changed = false;
    const auto define = [](const WordFrameFragment& entry) {
        return RangesFixture::define("A", {entry});
    };
    f.refuses({20, 1, "Old"}, RangesFixture::define("", {}), 326);
    auto none = RangesFixture::define("A", {});
    none.wordFrame.locations.clear();
    f.refuses({20, 1, "Old"}, none, 328);
    f.refuses({20, 1, "Old"}, RangesFixture::define("A", {}), 328);
    f.refuses({1, 1, {}}, RangesFixture::define("old", {fragment(1, 0, 1, 1, 1, 8)}), 334);
    f.refuses({20, 1, "Old"}, define(fragment(40, 0, 40, 1, 1, 8)), 276);
    f.refuses({20, 1, "Old"}, define(fragment(9, 0, 8, 1, 1, 8)), 292);
    f.refuses({20, 1, "Old"}, define(fragment(8, 0, 9, 1, 1, 8)), 293);
    f.refuses({20, 1, "Old"}, define(fragment(8, 0, 8, 1, 0, 8)), 293);
    f.refuses({20, 1, "Old"}, define(fragment(8, 0, 8, 1, 1, 9)), 286);
    f.refuses({20, 1, "Old"}, define(fragment(8, 0, 8, 0, 1, 8)), 286);
    f.refuses({20, 1, "Old"}, define(fragment(30, 0, 30, 2, 0, 2)), 287);
    f.refuses({20, 1, "Old"}, define(fragment(30, 0, 30, 1, 1, 7)), 287);
    // The first fragment needs a hidden subframe, the second one is wrong.
    f.refuses(
        {20, 1, "Old"},
        RangesFixture::define("A", {fragment(3, 0, 3, 2, 0, 2), fragment(3, 0, 2, 1, 1, 8)}, 32),
        292);
    EXPECT_EQ(f.places("Old"), "20/1 ");
}

TEST(MeasurementEditWordFrame, ASupercommutatedSubframeHoldsNoRanges) {
    RangesFixture f(2009);
    ASSERT_TRUE(createSubframe(
        f.format, nullptr, {.fwp = 6, .name = "T", .depth = 4, .locations = 2, .interval = 10}));
    f.format.changed = false;
    f.refuses({6, 1, {}}, RangesFixture::define("A", {fragment(7, 0, 7, 1, 1, 8)}), 338);
    f.refuses({7, 1, {}}, RangesFixture::define("A", {fragment(6, 0, 6, 1, 0, 1)}), 285);
}

TEST(MeasurementEditWordFrame, WithoutACounterTheQuestionOfAnEditComesAndNoLeavesItAsItWas) {
    RangesFixture f(2011, false);
    f.refuses({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 2, 0, 2)}), 357);
    f.ui.byId[357] = Button::Yes;
    f.ui.choices = {0};
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 2, 0, 2)})));
    EXPECT_EQ(f.format.wordType(1), WordType::IdCounter);
    EXPECT_EQ(f.places("A"), "3/2 ");
}

TEST(MeasurementEditWordFrame, ALookAtAFragmentChangesNothing) {
    RangesFixture f;
    StreamUndo before(f.format);
    EXPECT_EQ(wordFrameProblem(f.format, "A", fragment(3, 0, 3, 2, 0, 2)), std::nullopt);
    const auto problem = wordFrameProblem(f.format, "", fragment(9, 0, 8, 1, 1, 8));
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("<no name defined>"), std::string::npos);
    EXPECT_FALSE(before.commit());
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(MeasurementEditWordFrame, CoveredPlacesAreThoseOfTheWholeMajorFrame) {
    RangesFixture f(2009);
    EXPECT_THAT(coveredPlaces(f.format, fragment(3, 2, 5, 2, 4, 8)),
                ElementsAre(Pair(3, 2), Pair(3, 6), Pair(5, 2), Pair(5, 6)));
    EXPECT_THAT(coveredPlaces(f.format, fragment(3, 0, 31, 2, 0, 8)), ElementsAre(Pair(3, 2)));
    EXPECT_THAT(coveredPlaces(f.format, fragment(0, 0, 3, 1, 1, 8)), ElementsAre());
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
    EXPECT_THAT(coveredPlaces(f.format, fragment(5, 0, 5, 2, 0, 2)),
                ElementsAre(Pair(5, 2), Pair(5, 6)));
    // Far out of the frame: no loop follows the numbers.
    EXPECT_THAT(coveredPlaces(f.format, fragment(31, 1, 2000000000, 8, 1, 2000000000)),
                ElementsAre(Pair(31, 8)));
}

TEST(MeasurementEditWordFrame, ANewLocationCoversThePlaceThatIsEdited) {
    RangesFixture f;
    ASSERT_TRUE(f.save({3, 1, {}}, RangesFixture::define("A", {fragment(3, 0, 3, 2, 3, 8)})));
    EXPECT_EQ(newWordFrameFragment(f.format, 3, 4), fragment(3, 0, 3, 4, 0, 4));
    EXPECT_EQ(newWordFrameFragment(f.format, 4, 4), fragment(4, 0, 4, 1, 1, 8));
}

TEST(MeasurementEditWordFrame, OlderTypesBecomeRangesAndComeBack) {
    RangesFixture f(2009);
    f.place(3, 1, "A");
    auto definition = RangesFixture::define("A", {fragment(3, 0, 3, 1, 1, 8)});
    ASSERT_TRUE(f.save({3, 1, "A"}, definition));
    EXPECT_EQ(f.places("A"), "3/1 ");
    definition.attributes.locationType = "MF  ";
    ASSERT_TRUE(f.save({3, 1, "A"}, definition));
    const auto& cell = f.format.cells().measurement(f.format.findInCell(3, 1, "A"));
    EXPECT_EQ(cell.locationType, "MF");
    EXPECT_EQ(cell.wordFrameIndex, 0);
    EXPECT_TRUE(f.format.wordFrameDefinitions.back().locations.empty());
}

}  // namespace
}  // namespace kavu
