#include "pcm/FrameAdjustStage.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::fragment;
using test::listOf;
using test::Places;
using test::plainFormat;
using test::ranges;
using test::subframeAt;
using test::supercom;
using test::wordFrame;
using test::operator+;

using FrameAdjust = test::FrameAdjustTest;

// --- words that move --------------------------------------------------------------------------

TEST_F(FrameAdjust, ARangeMovesWithItsWordAndTheQuestionSaysSo) {
    load(2009, plainFormat(16, 4), {wordFrame("A", 5, 1, 1, 4), {"MN@:B", "LT@:MF", "MF@:7"}});
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 2));
    ASSERT_EQ(f->ui.boxes.size(), 1U);
    EXPECT_EQ(question().title, "Adjust Measurements?");
    EXPECT_EQ(question().name, "adjust");
    EXPECT_EQ(question().yesText, "&Adjust");
    EXPECT_EQ(question().noText, "&Leave");
    EXPECT_EQ(question().defaultButton, Button::Yes);
    EXPECT_EQ(question().buttons, Buttons::YesNoCancel);
    EXPECT_NE(question().text.find("1 measurement is"), std::string::npos) << question().text;
    EXPECT_NE(question().text.find("A: elsewhere. Adjusted: 1 location\n"), std::string::npos)
        << question().text;
    EXPECT_EQ(question().text.find("B:"), std::string::npos) << "a word of its own is found";
    expectStored({"WP-1-1-1-1:7", "EWP-1-1-1-1:7"});
    expectLoaded("A", {{7, 1}});
}

TEST_F(FrameAdjust, ARangeThatIsTornBecomesSeveralLocations) {
    load(2009, plainFormat(32, 4),
         {ranges("A", {Commands{"MNF\\N@-1:1"} + fragment(1, 1, 5, 5, 20, 1, 1, 4, "1010")})});
    ASSERT_TRUE(insertFwps(format(), f->parent, 12, 1));
    EXPECT_NE(question().text.find("Adjusted: 2 locations"), std::string::npos);
    expectStored({"MML\\N-1-1:2", "WP-1-1-1-1:5", "WI-1-1-1-1:5", "EWP-1-1-1-1:10", "WP-1-1-2-1:16",
                  "WI-1-1-2-1:5", "EWP-1-1-2-1:21", "WFM-1-1-2-1:1010"});
    expectLoaded("A", {{5, 1}, {10, 1}, {16, 1}, {21, 1}});
}

TEST_F(FrameAdjust, FragmentsStayTogetherWhenOneOfThemMoves) {
    load(2009, plainFormat(32, 4),
         {ranges("A", {Commands{"MNF\\N@-1:2", "MWL@-1:12"} +
                       fragment(1, 1, 5, 10, 15, 1, 1, 4, "11110000") +
                       fragment(1, 2, 6, 10, 16, 1, 1, 4, "11111111")})});
    // Word 5 goes behind 20: its value is still completed by what was word 6.
    ASSERT_TRUE(moveFwps(format(), f->parent, 5, 5, 20));
    const auto* const definition = format().wordFrameDefinition(f->first("A").wordFrameIndex);
    ASSERT_EQ(definition->locationCount(), 2);
    const auto word = [&](int k, int i) {
        return definition->locations[static_cast<std::size_t>(k)]
            .fragments[static_cast<std::size_t>(i)]
            .startWord;
    };
    EXPECT_EQ(word(0, 0), 14);
    EXPECT_EQ(word(0, 1), 15);
    EXPECT_EQ(word(1, 0), 20);
    EXPECT_EQ(word(1, 1), 5);
    EXPECT_EQ(definition->locations[1].wordLength, 12);
    expectLoaded("A", {{5, 1}, {14, 1}, {15, 1}, {20, 1}});
}

TEST_F(FrameAdjust, FragmentsThatChangePlacesAreNoticedThoughTheirWordsAreTheSame) {
    load(2009, plainFormat(16, 4),
         {ranges("A", {Commands{"MNF\\N@-1:2", "MWL@-1:32"} + fragment(1, 1, 5, 0, 5, 1, 1, 4) +
                       fragment(1, 2, 6, 0, 6, 1, 1, 4)})});
    ASSERT_TRUE(moveFwps(format(), f->parent, 5, 5, 6));
    ASSERT_EQ(f->ui.boxes.size(), 1U);
    expectStored({"MML\\N-1-1:1", "WP-1-1-1-1:6", "WP-1-1-1-2:5"});
}

TEST_F(FrameAdjust, AnIntervalBecomesAnotherOneOrAList) {
    for (const auto& [after, mode, interval] :
         {std::tuple(7, "MFS1-1-1:E", 0), std::tuple(3, "MFS1-1-1:I", 10)}) {
        load(2004, plainFormat(40, 4), {supercom("A", 5, 10, 3)});
        ASSERT_TRUE(insertFwps(format(), f->parent, after, 2));
        if (after == 3) {
            EXPECT_TRUE(f->ui.boxes.empty()) << "first word and interval move together";
            expectStored({mode, "MFS2-1-1:7", "MFS4-1-1:10"});
            expectLoaded("A", {{7, 1}, {17, 1}, {27, 1}});
            continue;
        }
        EXPECT_NE(question().text.find("A: elsewhere. Adjusted: a list of 3 locations"),
                  std::string::npos)
            << question().text;
        expectStored({mode, "MFSW-1-1-1:5", "MFSW-1-1-2:17", "MFSW-1-1-3:27"});
        expectLoaded("A", {{5, 1}, {17, 1}, {27, 1}});
    }
    load(2004, plainFormat(40, 4), {supercom("A", 5, 10, 2)});
    ASSERT_TRUE(insertFwps(format(), f->parent, 7, 2));
    EXPECT_NE(question().text.find("2 locations by an interval of 12"), std::string::npos);
    expectStored({"MFS1-1-1:I", "MFS4-1-1:12"});
    expectLoaded("A", {{5, 1}, {17, 1}});
}

// A list takes the mask of the first measurement of each word, so it cannot say these.
TEST_F(FrameAdjust, ASupercomThatSharesItsWordsBecomesRangesSoThatItKeepsItsMask) {
    auto high = supercom("HIGH", 5, 10, 3);
    auto low = supercom("LOW", 5, 10, 3);
    for (auto* const measurement : {&high, &low}) {
        std::replace(measurement->begin(), measurement->end(), std::string("MFS3@:FW"),
                     std::string(measurement == &high ? "MFS3@:1111111100000000"
                                                      : "MFS3@:0000000011111111"));
    }
    load(2007, plainFormat(40, 4), {high, low});
    ASSERT_TRUE(insertFwps(format(), f->parent, 7, 2));
    expectLoaded("HIGH", {{5, 1}, {17, 1}, {27, 1}});
    EXPECT_EQ(f->places("LOW"), (Places{{5, 1}, {17, 1}, {27, 1}}));
    for (const int fwp : {5, 17, 27}) {
        const auto& cells = format().cells();
        EXPECT_EQ(cells.measurement(format().findInCell(fwp, 1, "HIGH")).mask, "1111111100000000");
        EXPECT_EQ(cells.measurement(format().findInCell(fwp, 1, "LOW")).mask, "0000000011111111");
    }
}

TEST_F(FrameAdjust, FragmentsByAnIntervalKeepTheirNumbers) {
    load(2004, plainFormat(40, 4),
         {{"MN@:A", "LT@:MFFR", "FMF\\N@:3", "FMF1@:48", "FMF2@:I", "FMF3@:5", "FMF4@:FW",
           "FMF5@:1"}});
    ASSERT_TRUE(moveFwps(format(), f->parent, 5, 5, 20));
    expectStored({"FMF2-1-1:E", "FMF6-1-1-1:5", "FMF9-1-1-1:2", "FMF6-1-1-2:6", "FMF9-1-1-2:3",
                  "FMF6-1-1-3:20", "FMF9-1-1-3:1"});
    expectLoaded("A", {{5, 1}, {6, 1}, {20, 1}});
    EXPECT_EQ(format().cells().measurement(format().findInCell(20, 1, "A")).fragmentNumber, 1);
}

TEST_F(FrameAdjust, ASubframeByAnIntervalAndWhatIsInItKeepTheirWords) {
    const auto subframes = Commands{"SF\\N-1:2",   "SF1-1-1:T",  "SF2-1-1:3", "SF3-1-1:FI",
                                    "SF4-1-1-1:6", "SF5-1-1:10", "SF6-1-1:4"} +
                           subframeAt(2, "S", 8, 4);
    load(
        2004, plainFormat(40, 4) + counterAt(1, 4, subframes),
        {{"MN@:A", "LT@:SF", "SF1@:T", "SF2@:5"},
         {"MN@:B", "LT@:SFSC", "SFS1@:T", "SFS\\N@:4", "SFS2@:I", "SFS3@:1", "SFS4@:FW", "SFS5@:3"},
         {"MN@:C", "LT@:SF", "SF1@:S", "SF2@:2"}});
    const auto a = f->places("A");
    ASSERT_TRUE(insertFwps(format(), f->parent, 10, 1));
    EXPECT_NE(question().text.find("A: elsewhere"), std::string::npos) << question().text;
    EXPECT_NE(question().text.find("B: elsewhere"), std::string::npos) << question().text;
    EXPECT_EQ(question().text.find("C:"), std::string::npos) << question().text;
    ASSERT_TRUE(savePcmFormat(format(), nullptr));
    const auto lines = f->saved("[kavu]PCMFMT.P01");
    for (const auto* const line :
         {"P-1\\SF3-1-1:EL;", "P-1\\SF4-1-1-2:17;", "P-1\\SF4-1-1-3:27;"}) {
        EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
    }
    expectLoaded("A", {{17, 2}});
    EXPECT_EQ(a, (Places{{16, 2}}));
    EXPECT_EQ(f->places("B"), (Places{{6, 1}, {6, 2}, {6, 3}, {6, 4}}));
    EXPECT_EQ(f->places("C"), (Places{{8, 2}}));
}

TEST_F(FrameAdjust, AnAsyncFormatByAnIntervalKeepsItsWordsMasksAndFrames) {
    load(2011,
         plainFormat(40, 4) + Commands{"AEF\\N:1", "AEF\\DLN-1:INNER", "AEF1-1:3", "AEF2-1:FI",
                                       "AEF3-1-1:6", "AEF4-1:10", "AEF5-1-1:16",
                                       "AEF6-1-1:1111111111111111", "AEF7-1-1:NO", "AEF5-1-2:4",
                                       "AEF6-1-2:1111", "AEF7-1-2:NO", "AEF5-1-3:8",
                                       "AEF6-1-3:11110000", "AEF7-1-3:NO"},
         {});
    ASSERT_TRUE(insertFwps(format(), f->parent, 10, 1));
    EXPECT_NE(question().text.find("Async format INNER: elsewhere. Adjusted: a list of 3"),
              std::string::npos)
        << question().text;
    ASSERT_TRUE(savePcmFormat(format(), nullptr));
    const auto lines = f->saved("[kavu]PCMFMT.P01");
    for (const auto* const line : {"P-1\\AEF2-1:EL;", "P-1\\AEF3-1-2:17;", "P-1\\AEF6-1-2:1111;",
                                   "P-1\\AEF3-1-3:27;", "P-1\\AEF6-1-3:11110000;"}) {
        EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
    }
}

TEST_F(FrameAdjust, DeletedWordsCloseTheRangesOfOthers) {
    load(2009, plainFormat(32, 4),
         {wordFrame("A", 5, 1, 1, 4), wordFrame("B", 20, 1, 1, 4),
          ranges("C", {Commands{"MNF\\N@-1:1"} + fragment(1, 1, 10, 5, 25, 1, 1, 4)})});
    f->ui.byId = {};
    ASSERT_EQ(deleteFwps(format(), f->parent, {}, 5, 6), 2);
    EXPECT_FALSE(format().hasMeasurement("A"));
    EXPECT_EQ(question().text.find("A:"), std::string::npos) << "it was asked for by itself";
    expectLoaded("B", {{18, 1}});
    EXPECT_EQ(f->places("C"), (Places{{8, 1}, {13, 1}, {18, 1}, {23, 1}}));
}

// --- Leave, Cancel, no parent -----------------------------------------------------------------

TEST_F(FrameAdjust, LeaveKeepsTheDefinitionAndCancelTheFrame) {
    load(2009, plainFormat(16, 4), {wordFrame("A", 5, 1, 1, 4)});
    StreamUndo before(format());
    f->ui.otherwise = Button::Cancel;
    EXPECT_FALSE(insertFwps(format(), f->parent, 3, 2));
    EXPECT_FALSE(moveFwps(format(), f->parent, 5, 5, 9));
    EXPECT_EQ(deleteFwps(format(), f->parent, {}, 2, 3), 0);
    EXPECT_FALSE(editFrameAttribute(format(), f->parent, "MF\\N", "8"));
    EXPECT_EQ(f->ui.boxes.size(), 4U);
    EXPECT_FALSE(before.commit());
    EXPECT_FALSE(format().changed);

    f->ui.otherwise = Button::No;
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 2));
    EXPECT_EQ(f->places("A"), (Places{{7, 1}})) << "the word has moved";
    expectStored({"WP-1-1-1-1:5", "EWP-1-1-1-1:5"});
}

TEST_F(FrameAdjust, WithoutAParentWordsMoveAlone) {
    load(2009, plainFormat(16, 4), {wordFrame("A", 5, 1, 1, 4)});
    ASSERT_TRUE(insertFwps(format(), nullptr, 3, 2));
    EXPECT_EQ(f->places("A"), (Places{{7, 1}}));
    expectStored({"WP-1-1-1-1:5"});
}

TEST_F(FrameAdjust, AnEditThatLeavesNothingBehindAsksNothing) {
    load(2009, plainFormat(16, 4), {wordFrame("A", 5, 1, 1, 4)});
    ASSERT_TRUE(insertFwps(format(), f->parent, 5, 2));
    ASSERT_TRUE(moveFwps(format(), f->parent, 8, 9, 11));
    EXPECT_TRUE(f->ui.boxes.empty());
}

TEST_F(FrameAdjust, OfManyTenAreNamedAndTheRestIsCounted) {
    std::vector<Commands> measurements;
    for (int m = 1; m <= 12; ++m) {
        measurements.push_back(wordFrame("M" + std::to_string(m), m, 1, 1, 4));
    }
    load(2009, plainFormat(16, 4), measurements);
    ASSERT_TRUE(insertFwps(format(), f->parent, 0, 1));
    EXPECT_NE(question().text.find("12 measurements are"), std::string::npos);
    EXPECT_NE(question().text.find("... and 2 more"), std::string::npos);
    EXPECT_NE(question().details.find("M9: elsewhere"), std::string::npos);
    for (int m = 1; m <= 12; ++m) {
        EXPECT_EQ(f->places("M" + std::to_string(m)), (Places{{m + 1, 1}}));
    }
}

// --- another size -----------------------------------------------------------------------------

TEST_F(FrameAdjust, MoreFramesExtendWhatWasInEveryFrame) {
    load(2009, plainFormat(16, 8) + counterAt(1, 8),
         {wordFrame("A", 5, 1, 1, 8), wordFrame("B", 6, 3, 0, 3)});
    ASSERT_TRUE(editFrameAttribute(format(), f->parent, "MF\\N", "16"));
    EXPECT_NE(question().text.find("A: "), std::string::npos);
    expectStored({"EFP-1-1-1-1:16"});
    expectLoaded("A", {{5, 1}});
    // The word was 8 frames deep and came again after them, as the display showed.
    EXPECT_EQ(f->places("B"), (Places{{6, 3}, {6, 11}}));
}

TEST_F(FrameAdjust, FromTheLatestEditionOnTheCounterOfAllFramesCountsTheNewOnes) {
    load(2011, plainFormat(16, 8) + counterAt(1, 8),
         {wordFrame("A", 5, 1, 1, 8), wordFrame("B", 6, 3, 0, 3), wordFrame("C", 7, 2, 2, 8)});
    ASSERT_TRUE(editFrameAttribute(format(), f->parent, "MF\\N", "16"));
    EXPECT_EQ(format().idCounters[0].endFrame, "16");
    EXPECT_EQ(format().idCounters[0].endValue, "16");
    expectStored({"EFP-1-1-1-1:16", "FP-1-2-1-1:3", "FI-1-2-1-1:8", "EFP-1-2-1-1:11",
                  "FP-1-3-1-1:2", "FI-1-3-1-1:2", "EFP-1-3-1-1:16"});
    Places every;
    for (int fn = 1; fn <= 16; ++fn) {
        every.emplace_back(5, fn);
    }
    expectLoaded("A", every);
    EXPECT_EQ(f->places("B"), (Places{{6, 3}, {6, 11}}));
}

TEST_F(FrameAdjust, FewerFramesNameWhatHasNoPlaceLeftAndNoEndIsBeyond) {
    for (const bool asks : {true, false}) {
        load(2009, plainFormat(16, 16) + counterAt(1, 16),
             {wordFrame("A", 5, 1, 1, 16), wordFrame("B", 6, 12, 0, 12),
              wordFrame("C", 7, 3, 4, 15)});
        ASSERT_TRUE(editFrameAttribute(format(), asks ? f->parent : nullptr, "MF\\N", "8"));
        if (asks) {
            EXPECT_NE(question().text.find("B: none of its places is left"), std::string::npos)
                << question().text;
            EXPECT_EQ(question().text.find("A:"), std::string::npos) << question().text;
        }
        EXPECT_FALSE(format().hasMeasurement("B"));
        ASSERT_TRUE(savePcmFormat(format(), nullptr));
        const auto frame = f->saved("[kavu]PCMFMT.P01");
        for (const auto* const line : {"P-1\\IDC8-1:8;", "P-1\\IDC9-1:8;"}) {
            EXPECT_NE(std::find(frame.begin(), frame.end(), line), frame.end()) << line;
        }
        expectStored({"EFP-1-1-1-1:8", "FP-1-2-1-1:3", "FI-1-2-1-1:4", "EFP-1-2-1-1:8"});
        expectLoaded("A", {{5, 1}});
        EXPECT_EQ(f->places("C"), (Places{{7, 3}, {7, 7}}));
    }
}

TEST_F(FrameAdjust, FewerWordsShortenRangesAndIntervals) {
    for (const bool asks : {true, false}) {
        load(2009, plainFormat(32, 4),
             {ranges("A", {Commands{"MNF\\N@-1:1"} + fragment(1, 1, 5, 5, 30, 1, 1, 4)}),
              supercom("B", 6, 10, 3), wordFrame("C", 28, 1, 1, 4)});
        ASSERT_TRUE(editFrameAttribute(format(), asks ? f->parent : nullptr, "MF1", "20"));
        EXPECT_FALSE(format().hasMeasurement("C"));
        if (asks) {
            EXPECT_NE(question().text.find("A: 3 of 6 words"), std::string::npos)
                << question().text;
            EXPECT_NE(question().text.find("C: none of its places is left"), std::string::npos);
            expectStored({"EWP-1-1-1-1:15", "MFS\\N-1-2:2"});
            expectLoaded("B", {{6, 1}, {16, 1}});
        } else {
            expectStored({"EWP-1-1-1-1:19", "MFS\\N-1-2:3"});
        }
        EXPECT_EQ(f->places("A"), (Places{{5, 1}, {10, 1}, {15, 1}}));
    }
}

// Where no end is written, a range goes on to the last word, which is another one now.
TEST_F(FrameAdjust, MoreWordsDoNotLengthenARangeWithoutAnEnd) {
    load(2007, plainFormat(16, 4),
         {{"MN@:A", "LT@:WDFR", "MML\\N@:1", "MNF\\N@-1:1", "WP@-1-1:5", "WI@-1-1:5", "FP@-1-1:1",
           "FI@-1-1:1", "WFM@-1-1:FW", "WFP@-1-1:1"}});
    ASSERT_EQ(f->places("A"), (Places{{5, 1}, {10, 1}, {15, 1}}));
    ASSERT_TRUE(editFrameAttribute(format(), f->parent, "MF1", "32"));
    EXPECT_NE(question().text.find("Adjusted: 3 locations"), std::string::npos) << question().text;
    expectLoaded("A", {{5, 1}, {10, 1}, {15, 1}});
}

// --- another end frame of a counter -----------------------------------------------------------

TEST_F(FrameAdjust, ACounterOfMoreFramesRepeatsWhatCameAgainAfterTheOldOnes) {
    load(2011, plainFormat(16, 16) + counterAt(1, 16), {});
    auto counter = format().idCounters[0];
    ASSERT_TRUE(setEndFrame(format(), f->parent, counter, 8));
    ASSERT_TRUE(saveIdCounterAndFrame(format(), f->parent, 1, counter));
    ASSERT_TRUE(savePcmFormat(format(), nullptr));
    f->writeGroup('D', listOf({wordFrame("A", 5, 1, 1, 8), wordFrame("B", 6, 3, 0, 3)}));
    ASSERT_TRUE(f->reload());
    f->ui.boxes.clear();
    counter = format().idCounters[0];
    ASSERT_TRUE(setEndFrame(format(), f->parent, counter, 16));
    ASSERT_TRUE(saveIdCounterAndFrame(format(), f->parent, 1, counter));
    ASSERT_EQ(f->ui.boxes.size(), 1U);
    expectStored({"EFP-1-1-1-1:16", "FP-1-2-1-1:3", "FI-1-2-1-1:8", "EFP-1-2-1-1:11"});
    expectLoaded("B", {{6, 3}, {6, 11}});
}

TEST_F(FrameAdjust, ACounterOfFewerFramesCutsAndNamesWhatItNoLongerCounts) {
    load(2011, plainFormat(16, 16) + counterAt(1, 16),
         {wordFrame("A", 5, 1, 1, 16), wordFrame("B", 6, 12, 0, 12), wordFrame("C", 7, 3, 8, 11)});
    auto counter = format().idCounters[0];
    ASSERT_TRUE(setEndFrame(format(), f->parent, counter, 8));
    f->ui.otherwise = Button::Cancel;
    EXPECT_FALSE(saveIdCounterAndFrame(format(), f->parent, 1, counter));
    EXPECT_EQ(format().idCounters[0].endFrame, "16");
    f->ui.otherwise = Button::Yes;
    ASSERT_TRUE(saveIdCounterAndFrame(format(), f->parent, 1, counter));
    EXPECT_NE(question().text.find("B: none of its places is left"), std::string::npos)
        << question().text;
    expectStored({"EFP-1-1-1-1:8", "FP-1-2-1-1:3", "EFP-1-2-1-1:3"});
    expectLoaded("C", {{7, 3}});
}

// A location in frame 1 and one in frame 2 of the same word, which the display shows as every
// frame.
TEST_F(FrameAdjust, TwoLocationsOfOneWordAreNamedAndMoveThoughTheyAreShownAsOne) {
    const auto at = [](int k, int frame) {
        const auto place = "@-" + std::to_string(k);
        return Commands{"MNF\\N" + place + ":1", "WP" + place + "-1:5",
                        "WI" + place + "-1:0",   "FP" + place + "-1:" + std::to_string(frame),
                        "FI" + place + "-1:0",   "WFM" + place + "-1:FW",
                        "WFP" + place + "-1:1"};
    };
    load(2004, plainFormat(16, 2) + counterAt(8, 2), {ranges("A", {at(1, 2), at(2, 1)})});
    ASSERT_EQ(f->places("A"), (Places{{5, 1}, {5, 2}}));
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 2));
    ASSERT_EQ(f->ui.boxes.size(), 1U);
    EXPECT_NE(question().text.find("A: elsewhere. Adjusted: 2 locations"), std::string::npos)
        << question().text;
    expectLoaded("A", {{7, 1}, {7, 2}});
}

// --- another depth of a subframe --------------------------------------------------------------

TEST_F(FrameAdjust, ASubframeOfLessDepthNamesWhatIsCutAndShortensIntervals) {
    const auto subframes = Commands{"SF\\N-1:1"} + subframeAt(1, "T", 9, 8);
    load(
        2009, plainFormat(16, 8) + counterAt(4, 8, subframes),
        {{"MN@:A", "LT@:SF", "SF1@:T", "SF2@:6"},
         {"MN@:B", "LT@:SFSC", "SFS1@:T", "SFS\\N@:4", "SFS2@:I", "SFS3@:1", "SFS4@:FW", "SFS5@:2"},
         wordFrame("C", 9, 2, 2, 8)});
    auto editing = subframeEditing(format(), 9);
    editing.record.depth = "4";
    f->ui.otherwise = Button::Cancel;
    EXPECT_FALSE(saveSubframeAndFrame(format(), f->parent, 9, editing));
    EXPECT_EQ(format().wordDepth(9), 8);
    EXPECT_EQ(f->places("A"), (Places{{9, 6}}));
    f->ui.otherwise = Button::Yes;
    ASSERT_TRUE(saveSubframeAndFrame(format(), f->parent, 9, editing));
    EXPECT_NE(question().text.find("A: none of its places is left"), std::string::npos)
        << question().text;
    EXPECT_NE(question().text.find("B: elsewhere. Adjusted: 2 locations by an interval of 2"),
              std::string::npos)
        << question().text;
    EXPECT_NE(question().text.find("C: "), std::string::npos) << question().text;
    expectStored({"SFS\\N-1-1:2", "EFP-1-2-1-1:4"});
    expectLoaded("B", {{9, 1}, {9, 3}});
    EXPECT_EQ(f->places("C"), (Places{{9, 2}, {9, 4}}));
}

// --- async formats in some frames -------------------------------------------------------------

TEST_F(FrameAdjust, AnAsyncFormatInSomeFramesIsNamedWhenTheCounterCountsFewer) {
    load(2011,
         plainFormat(16, 8) + counterAt(4, 8) +
             Commands{"AEF\\N:1", "AEF\\DLN-1:INNER", "AEF1-1:NO", "AEF3-1-1:6", "AEF5-1-1:16",
                      "AEF6-1-1:1111111111111111", "AEF7-1-1:1", "AEF8-1-1-1:1", "AEF9-1-1-1:3",
                      "AEF10-1-1-1:8"},
         {});
    auto counter = format().idCounters[0];
    ASSERT_TRUE(setEndFrame(format(), f->parent, counter, 4));
    ASSERT_TRUE(saveIdCounterAndFrame(format(), f->parent, 4, counter));
    EXPECT_NE(question().text.find("Async format INNER: elsewhere. Adjusted: the frames up to 4"),
              std::string::npos)
        << question().text;
    const auto shown = [&] {
        std::vector<int> frames;
        for (int fn = 1; fn <= 8; ++fn) {
            if (isAsyncAt(format(), 6, fn, 1)) {
                frames.push_back(fn);
            }
        }
        return frames;
    };
    const auto before = shown();
    EXPECT_EQ(before, (std::vector<int>{1, 4, 5, 8}));
    ASSERT_TRUE(savePcmFormat(format(), nullptr));
    ASSERT_TRUE(f->reload());
    EXPECT_EQ(shown(), before);
}

}  // namespace
}  // namespace kavu
