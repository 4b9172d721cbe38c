#include "groups/MeasurementNames.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/BlockEdit.h"
#include "pcm/edit/BlockPlaces.h"
#include "pcm/undo/StreamUndo.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::nameAt;
using test::plainCounter;
using test::StreamFixture;
using testing::HasSubstr;
using testing::Not;

/// 32 words, 16 frames, a counter in word 30, the subframe ENGINE of depth 4 in words 5 and 6.
struct BlockFixture : StreamFixture {
    explicit BlockFixture(int edition = 2009) : StreamFixture(edition, 32, 16) {
        auto commands = plainCounter(1, 30, 16, "FRAMES");
        for (const auto* command :
             {"ISF\\N:1", "SF\\N-1:2", "SF1-1-1:ENGINE", "SF2-1-1:NO", "SF4-1-1-1:5", "SF6-1-1:4",
              "SF1-1-2:PUMP", "SF2-1-2:NO", "SF4-1-2-1:6", "SF6-1-2:4"}) {
            commands.emplace_back(command);
        }
        EXPECT_TRUE(read(commands));
    }
    bool has(int fwp, int fn, const std::string& name) const {
        return static_cast<bool>(format.findInCell(fwp, fn, name));
    }
    std::string typeOf(int fwp, int fn, const std::string& name) const {
        return format.cells().measurement(format.findInCell(fwp, fn, name)).locationType.str();
    }
    /// Places of one measurement, word and frame, as text.
    std::string placesText(const std::string& name) const {
        std::string text;
        for (const auto& spot : placesOf(format, name).spots) {
            text += std::to_string(spot.fwp) + "/" + std::to_string(spot.fn) + " ";
        }
        return text;
    }
};

TEST(BlockEdit, DeleteAsksOnceForAllAndTakesPlacesElsewhereAlong) {
    BlockFixture f;
    f.place(3, 1, "SPEED", "MFSC");
    f.place(9, 1, "SPEED", "MFSC");
    f.place(4, 1, "ALT");
    f.place(5, 2, "OIL", "SF");
    f.ui.otherwise = Button::No;
    EXPECT_FALSE(deleteBlock(f.format, f.parent, {}, {3, 1, 5, 4}));
    EXPECT_TRUE(f.has(3, 1, "SPEED"));
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_THAT(f.ui.boxes[0].text, HasSubstr("SPEED: is deleted, also at 1 place elsewhere"));
    EXPECT_THAT(f.ui.boxes[0].text, HasSubstr("ALT: is deleted, with its conversion"));
    EXPECT_THAT(f.ui.boxes[0].text, HasSubstr("OIL"));
    EXPECT_EQ(f.ui.boxes[0].defaultButton, Button::No);
    f.ui.otherwise = Button::Yes;
    EXPECT_TRUE(deleteBlock(f.format, f.parent, {}, {3, 1, 5, 4}));
    EXPECT_EQ(f.ui.boxes.size(), 2U) << "one question for the block";
    EXPECT_FALSE(f.format.hasAnyMeasurement());
}

TEST(BlockEdit, DeleteTakesAsyncStreamsAndNamesThem) {
    BlockFixture f;
    f.format.asyncFormats.resize(1);
    f.format.asyncFormats[0].dataLinkName = "VIDEO";
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 1, {9, {{1, 1, 16}}}, "FW"));
    f.ui.otherwise = Button::Yes;
    EXPECT_TRUE(deleteBlock(f.format, f.parent, {}, {8, 1, 10, 1}));
    EXPECT_THAT(f.ui.boxes.at(0).text, HasSubstr("VIDEO"));
    EXPECT_EQ(f.format.asyncCount(), 0);
    EXPECT_FALSE(deleteBlock(f.format, f.parent, {}, {8, 1, 10, 1})) << "nothing is left";
    EXPECT_EQ(f.ui.boxes.size(), 1U);
}

TEST(BlockEdit, PasteIntoEmptyCellsAsksNothingAndKeepsTheValues) {
    BlockFixture f;
    Measurement speed;
    speed.name = "SPEED";
    speed.locationType = "MF";
    speed.parity = "EV";
    speed.mask = "0000000000001111";
    f.place(3, 1, speed);
    auto clip = clipFromRows(clipRows(copyBlock(f.format, {3, 1, 4, 1})));
    clearMeasurement(f.format, "SPEED");
    EXPECT_TRUE(pasteBlock(f.format, f.parent, {}, clip, 10, 1));
    EXPECT_TRUE(f.ui.choicePrompts.empty());
    const auto& cell = f.format.cells().measurement(f.format.findInCell(10, 1, "SPEED"));
    EXPECT_EQ(cell.parity, "EV");
    EXPECT_EQ(cell.mask, "0000000000001111");
    EXPECT_EQ(cell.locationType, "MF");
}

TEST(BlockEdit, APastedNameThatIsInUseGetsANumberAndTheQuestionSaysSo) {
    BlockFixture f;
    f.place(3, 1, "SPEED");
    const auto clip = copyBlock(f.format, {3, 1, 3, 1});
    f.ui.choices = {0};
    EXPECT_TRUE(pasteBlock(f.format, f.parent, {}, clip, 10, 1));
    ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
    EXPECT_THAT(f.ui.choicePrompts[0].text, HasSubstr("SPEED becomes SPEED_2"));
    EXPECT_EQ(nameAt(f, 3), "SPEED");
    EXPECT_EQ(nameAt(f, 10), "SPEED_2");
    EXPECT_EQ(unusedName(f.format, "SPEED_2", {}), "SPEED_3");
    EXPECT_EQ(unusedName(f.format, "OTHER", {}), "OTHER");
    EXPECT_EQ(unusedName(f.format, "OTHER", {"other"}), "OTHER_2");
    f.place(12, 1, std::string(32, 'A'));
    EXPECT_EQ(unusedName(f.format, std::string(32, 'A'), {}), std::string(30, 'A') + "_2");
}

TEST(BlockEdit, WhatStandsInTheTargetIsNamedAndReplacedSharedOrLeft) {
    struct Row {
        int choice;
        bool done;
        std::string alt;  ///< places of ALT, which has two
        bool hasOil;
    };
    for (const auto& row : {Row{-1, false, "10/1 12/1 ", true}, Row{0, true, "12/1 ", false},
                            Row{1, true, "10/1 12/1 ", true}}) {
        BlockFixture f;
        f.place(3, 1, "SPEED");
        f.place(4, 1, "TEMP");
        auto clip = copyBlock(f.format, {3, 1, 4, 1});
        clearMeasurement(f.format, "SPEED");
        clearMeasurement(f.format, "TEMP");
        f.place(10, 1, "ALT", "MFSC");
        f.place(12, 1, "ALT", "MFSC");
        f.place(11, 1, "OIL");
        f.ui.choices = {row.choice};
        EXPECT_EQ(pasteBlock(f.format, f.parent, {}, clip, 10, 1), row.done);
        ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
        const auto& text = f.ui.choicePrompts[0].text;
        EXPECT_THAT(text, HasSubstr("ALT: loses 1 of its 2 places"));
        EXPECT_THAT(text, HasSubstr("OIL: is deleted, with its conversion"));
        EXPECT_EQ(f.placesText("ALT"), row.alt) << row.choice;
        EXPECT_EQ(f.format.hasMeasurement("OIL"), row.hasOil) << row.choice;
        EXPECT_EQ(f.has(10, 1, "SPEED"), row.done);
        EXPECT_EQ(f.has(11, 1, "TEMP"), row.done);
        if (row.choice == 0) {
            EXPECT_EQ(f.typeOf(12, 1, "ALT"), "MF") << "one place is left";
        }
    }
}

TEST(BlockEdit, PasteIntoACounterOrBeyondTheFrameIsRefusedWhole) {
    BlockFixture f;
    f.place(3, 1, "SPEED");
    f.place(4, 1, "ALT");
    const auto clip = copyBlock(f.format, {3, 1, 4, 1});
    for (const int word : {29, 31}) {
        EXPECT_FALSE(pasteBlock(f.format, f.parent, {}, clip, word, 1)) << word;
    }
    ASSERT_EQ(f.ui.boxes.size(), 2U);
    EXPECT_THAT(f.ui.boxes[0].text, HasSubstr("FWP 30 is the word of an ID counter"));
    EXPECT_THAT(f.ui.boxes[1].text, HasSubstr("the frame ends at FWP 31"));
    EXPECT_EQ(f.format.cells().nameCount(), 2);
    EXPECT_FALSE(pasteBlock(f.format, f.parent, {}, clip, 0, 1)) << "the sync word";
}

TEST(BlockEdit, AMoveKeepsNameAndOtherPlaces) {
    BlockFixture f;
    f.place(3, 1, "SPEED", "MFSC");
    f.place(9, 1, "SPEED", "MFSC");
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {3, 1, 3, 1}, 4, 1));
    EXPECT_EQ(f.placesText("SPEED"), "4/1 9/1 ");
    EXPECT_TRUE(f.ui.choicePrompts.empty()) << "nothing is in the way";
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {4, 1, 4, 1}, 9, 1)) << "onto itself";
    EXPECT_EQ(f.placesText("SPEED"), "9/1 ");
    EXPECT_EQ(f.typeOf(9, 1, "SPEED"), "MF");
}

TEST(BlockEdit, TwoMeasurementsChangePlacesByAMoveOfBoth) {
    BlockFixture f;
    f.place(3, 1, "A");
    f.place(4, 1, "B");
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {3, 1, 4, 1}, 4, 1));
    EXPECT_TRUE(f.ui.choicePrompts.empty()) << "B goes away from where A comes";
    EXPECT_TRUE(f.has(4, 1, "A"));
    EXPECT_FALSE(f.has(4, 1, "B"));
    EXPECT_TRUE(f.has(5, 1, "B")) << "word 5 is a subframe";
    EXPECT_EQ(f.typeOf(5, 1, "B"), "SF");
}

TEST(BlockEdit, PlacesOfTwoSubframesBecomeRangesWhereTheEditionHasThem) {
    for (const int edition : {2002, 2009}) {
        BlockFixture f(edition);
        f.place(5, 2, "OIL", "SF");
        f.place(5, 3, "OIL2", "SF");
        auto clip = copyBlock(f.format, {5, 2, 5, 2});
        clip.pieces.push_back(clip.pieces[0]);
        clip.pieces[1].column = 1;
        clip.columns = 2;
        clearMeasurement(f.format, "OIL");
        const bool done = pasteBlock(f.format, f.parent, {}, clip, 5, 1);
        EXPECT_EQ(done, edition == 2009);
        if (done) {
            EXPECT_EQ(f.typeOf(5, 1, "OIL"), "WDFR");
            EXPECT_EQ(f.placesText("OIL"), "5/1 6/1 ");
        } else {
            EXPECT_TRUE(f.ui.hasText("words of different kinds"));
            EXPECT_FALSE(f.format.hasMeasurement("OIL"));
        }
    }
}

TEST(BlockEdit, AFailureLeavesEverythingAsItWas) {
    BlockFixture f(2002);
    f.place(5, 2, "OIL", "SF");
    f.place(10, 1, "ALT");
    auto clip = copyBlock(f.format, {5, 2, 5, 2});
    clip.pieces.push_back(clip.pieces[0]);
    clip.pieces[1].column = 5;
    clip.columns = 6;
    f.ui.choices = {0};
    EXPECT_FALSE(pasteBlock(f.format, f.parent, {}, clip, 5, 3));
    EXPECT_TRUE(f.has(10, 1, "ALT")) << "it was to be replaced";
    EXPECT_EQ(f.placesText("OIL"), "5/2 ");
    EXPECT_EQ(f.format.cells().nameCount(), 2);
}

TEST(BlockEdit, FragmentsAreLeftAloneAndNamed) {
    BlockFixture f;
    f.placeFragments("WIDE",
                     {{10, 0, 10, 1, 1, 16, "FW", 'D', 1}, {11, 0, 11, 1, 1, 16, "FW", 'D', 2}});
    f.place(12, 1, "ALT");
    f.ui.choices = {0};
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {10, 1, 12, 1}, 20, 1));
    ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
    EXPECT_THAT(f.ui.choicePrompts[0].text, HasSubstr("fragments and stay as they are:\n  WIDE"));
    EXPECT_TRUE(f.has(10, 1, "WIDE"));
    EXPECT_TRUE(f.has(22, 1, "ALT"));
    // One that is in the way is deleted as a whole, which the question says.
    f.ui.choices = {0};
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {22, 1, 22, 1}, 10, 1));
    EXPECT_THAT(f.ui.choicePrompts[1].text,
                HasSubstr("WIDE: is deleted, also at 1 place elsewhere"));
    EXPECT_FALSE(f.format.hasMeasurement("WIDE"));
}

TEST(BlockEdit, AsyncStreamsStayAndAreNamed) {
    BlockFixture f;
    f.format.asyncFormats.resize(1);
    f.format.asyncFormats[0].dataLinkName = "VIDEO";
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 1, {9, {{1, 1, 16}}}, "FW"));
    f.place(3, 1, "SPEED");
    f.ui.choices = {0};
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {3, 1, 3, 1}, 9, 1));
    ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
    EXPECT_THAT(f.ui.choicePrompts[0].text, HasSubstr("VIDEO"));
    EXPECT_TRUE(f.ui.boxes.empty()) << "one question, not one for each word";
    EXPECT_TRUE(isAsyncAt(f.format, 9, 1, 1));
    EXPECT_TRUE(f.has(9, 1, "SPEED"));
}

TEST(BlockEdit, FillMakesFurtherPlacesOrCopies) {
    for (const int choice : {0, 1}) {
        BlockFixture f;
        f.place(8, 1, "SPEED");
        f.place(10, 1, "OLD");
        f.ui.choices = {choice};
        EXPECT_TRUE(fillBlock(f.format, f.parent, {}, {8, 1, 11, 1}, FillDirection::Right));
        ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
        EXPECT_THAT(f.ui.choicePrompts[0].text, HasSubstr("This is replaced:\n  OLD"));
        EXPECT_FALSE(f.format.hasMeasurement("OLD"));
        if (choice == 0) {
            EXPECT_EQ(nameAt(f, 9), "SPEED_2");
            EXPECT_EQ(nameAt(f, 10), "SPEED_3");
            EXPECT_EQ(nameAt(f, 11), "SPEED_4");
        } else {
            EXPECT_EQ(f.placesText("SPEED"), "8/1 9/1 10/1 11/1 ");
            EXPECT_EQ(f.typeOf(11, 1, "SPEED"), "MFSC");
        }
    }
}

TEST(BlockEdit, FillDownGoesThroughASubframe) {
    BlockFixture f;
    f.place(5, 1, "OIL", "SF");
    f.ui.choices = {1};
    EXPECT_TRUE(fillBlock(f.format, f.parent, {}, {5, 1, 5, 4}, FillDirection::Down));
    EXPECT_EQ(f.placesText("OIL"), "5/1 5/2 5/3 5/4 ");
    EXPECT_EQ(f.typeOf(5, 3, "OIL"), "SFSC");
    EXPECT_FALSE(fillBlock(f.format, f.parent, {}, {5, 1, 5, 4}, FillDirection::Down))
        << "it is everywhere";
    EXPECT_EQ(f.ui.choicePrompts.size(), 1U);
}

TEST(BlockEdit, ACopyOfAPlainWordIntoASubframeTakesTheRowsOfTheBlock) {
    BlockFixture f;
    f.place(3, 1, "SPEED");
    const auto clip = copyBlock(f.format, {3, 1, 3, 2});
    EXPECT_EQ(clip.pieces.size(), 1U) << "a plain word has one cell";
    f.ui.choices = {0};
    EXPECT_TRUE(pasteBlock(f.format, f.parent, {}, clip, 5, 3));
    EXPECT_EQ(f.placesText("SPEED_2"), "5/3 5/4 ");
}

TEST(BlockEdit, MasksFitTheWordAndACutOneIsNamed) {
    BlockFixture f;
    f.format.setWordLength(10, 8);
    f.format.setWordLength(11, 20);
    Measurement low;
    low.name = "LOW";
    low.locationType = "MF";
    low.mask = "0000000000001111";
    f.place(3, 1, low);
    low.name = "HIGH";
    low.mask = "1111000000000000";
    f.place(4, 1, low);
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {3, 1, 3, 1}, 10, 1));
    EXPECT_TRUE(f.ui.choicePrompts.empty()) << "only zeros were cut off";
    EXPECT_EQ(f.format.cells().measurement(f.format.findInCell(10, 1, "LOW")).mask, "00001111");
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {10, 1, 10, 1}, 11, 1));
    EXPECT_EQ(f.format.cells().measurement(f.format.findInCell(11, 1, "LOW")).mask,
              "00000000000000001111");
    EXPECT_FALSE(moveBlock(f.format, f.parent, {}, {4, 1, 4, 1}, 10, 1)) << "cancelled";
    ASSERT_EQ(f.ui.choicePrompts.size(), 1U);
    EXPECT_THAT(f.ui.choicePrompts[0].text, HasSubstr("cut to the shorter word:\n  HIGH"));
    EXPECT_TRUE(f.has(4, 1, "HIGH"));
}

TEST(BlockEdit, NamesFromElsewhereBecomeNewMeasurements) {
    BlockFixture f;
    std::vector<std::string> refused;
    const auto clip =
        clipFromNames({{"A", "", " B "}, {"c;d", std::string(33, 'x'), "A"}}, refused);
    EXPECT_THAT(refused, testing::ElementsAre("c;d", std::string(33, 'x')));
    ASSERT_EQ(clip.pieces.size(), 3U);
    EXPECT_TRUE(pasteBlock(f.format, f.parent, {}, clip, 7, 1));
    EXPECT_TRUE(f.ui.choicePrompts.empty());
    EXPECT_EQ(f.placesText("A"), "7/1 9/1 ") << "a name twice is one measurement";
    EXPECT_EQ(f.placesText("B"), "9/1 ");
    EXPECT_EQ(f.format.cells().measurement(f.format.findInCell(7, 1, "A")).parity, "DE");
}

TEST(BlockEdit, RowsThatAreNoClipAreLeftOut) {
    EXPECT_TRUE(clipFromRows({}).pieces.empty());
    EXPECT_TRUE(clipFromRows({{"x"}}).pieces.empty());
    const auto clip = clipFromRows(
        {{"99999999", "-3"}, {"7"}, {"9999", "5", "1", "A", "", "", "", "", "MF", "FW"}});
    EXPECT_EQ(clip.columns, kMostWords);
    EXPECT_EQ(clip.rows, 1);
    ASSERT_EQ(clip.pieces.size(), 1U);
    EXPECT_EQ(clip.pieces[0].column, kMostWords - 1 < 9999 ? kMostWords - 1 : 9999);
    EXPECT_EQ(clip.pieces[0].row, 0);
}

TEST(BlockEdit, AWholeBlockIsOneLevelOfTheUndo) {
    BlockFixture f;
    f.place(3, 1, "A");
    f.place(4, 1, "B");
    f.place(10, 1, "OLD");
    StreamUndo undo(f.format);
    f.ui.choices = {0};
    ASSERT_TRUE(moveBlock(f.format, f.parent, {}, {3, 1, 4, 1}, 9, 1));
    EXPECT_TRUE(undo.commit(true, "Move Cells"));
    EXPECT_EQ(undo.undoName(), "Move Cells");
    EXPECT_EQ(undo.redoName(), "");
    undo.undo();
    EXPECT_FALSE(undo.canUndo());
    EXPECT_EQ(nameAt(f, 3) + nameAt(f, 4) + nameAt(f, 10), "ABOLD");
    EXPECT_EQ(undo.redoName(), "Move Cells");
    undo.redo();
    EXPECT_EQ(nameAt(f, 9) + nameAt(f, 10), "AB");
}

TEST(BlockEdit, WordFrameMeasurementsAreMovedByTheirRanges) {
    BlockFixture f(2011);
    f.format.implicitSubframes = true;
    f.placeInEveryFrame(8, "EVERY");
    f.placeFragments("SOME", {{9, 0, 9, 2, 4, 14, "FW", 'D', 1}});
    EXPECT_TRUE(moveBlock(f.format, f.parent, {}, {8, 1, 9, 16}, 12, 1));
    EXPECT_EQ(f.placesText("EVERY"), "12/1 ");
    EXPECT_TRUE(f.has(12, 9, "EVERY"));
    EXPECT_TRUE(f.has(13, 2, "SOME"));
    EXPECT_TRUE(f.has(13, 14, "SOME"));
    EXPECT_FALSE(f.has(13, 3, "SOME"));
    EXPECT_EQ(f.format.wordType(9), WordType::Minor) << "its hidden subframe is not needed";
    const auto& cell = f.format.cells().measurement(f.format.findInCell(13, 2, "SOME"));
    const auto* const ranges = f.format.wordFrameDefinition(cell.wordFrameIndex);
    ASSERT_NE(ranges, nullptr);
    ASSERT_EQ(ranges->locations.size(), 1U);
    EXPECT_EQ(ranges->locations[0].fragments[0].frameInterval, 4);
}

}  // namespace
}  // namespace kavu
