#include "core/talk/ProfileSettings.h"
#include "pcm/LoadFixture.h"
#include "pcm/write/WordFrameConversion.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;
using ::testing::Contains;
using ::testing::HasSubstr;

Commands placed(const std::string& name, const std::string& type, const Commands& rest) {
    return Commands{"MN@:" + name, "LT@:" + type} + rest;
}

class Converting : public LoadFixture {
  public:
    explicit Converting(int edition = 2009) : LoadFixture(edition) {}

    bool convert() {
        ui.logs.clear();
        ui.boxes.clear();
        return convertToWordFrame(format, parent);
    }
    /// The definition of a converted measurement.
    const WordFrameDefinition& definition(const std::string& name) {
        static const WordFrameDefinition kNone;
        EXPECT_EQ(first(name).locationType, "WDFR") << name;
        const auto* const found = format.wordFrameDefinition(first(name).wordFrameIndex);
        EXPECT_NE(found, nullptr) << name;
        return found == nullptr ? kNone : *found;
    }
    /// The fragments as texts: "2+4..10 1+1..4 FW D #1".
    Commands fragments(const std::string& name) {
        Commands texts;
        for (const auto& location : definition(name).locations) {
            std::string text;
            for (const auto& f : location.fragments) {
                text += formatPrintf("%s%d+%d..%d %d+%d..%d %s %c #%d", text.empty() ? "" : ", ",
                                     f.startWord, f.wordInterval, f.endWord, f.startFrame,
                                     f.frameInterval, f.endFrame, f.mask.view(), f.transferOrder,
                                     f.fragmentPosition);
            }
            texts.push_back(text);
        }
        return texts;
    }
    /// What a save and a load make of it.
    bool saveAndReload() { return savePcmFormat(format, parent) && reload(); }
};

/// An ordinary subframe over all frames at word 3, one of half their number at word 4, and a
/// supercommutated one at words 5, 9 and 13.
Commands threeSubframes() {
    return plainFormat(16, 12) + counterAt(1, 12,
                                           Commands{"SF\\N-1:3"} + subframeAt(1, "PLAIN", 3, 12) +
                                               subframeAt(2, "HALF", 4, 6) +
                                               Commands{"SF1-1-3:SUPER", "SF2-1-3:3", "SF3-1-3:FI",
                                                        "SF4-1-3-1:5", "SF5-1-3:4", "SF6-1-3:12"});
}

// --- one location type after the other ------------------------------------------------------

TEST(WordFrameConversion, AMinorWordIsInEveryFrame) {
    Converting stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({placed("A", "MF", {"MF@:7", "MFM@:11"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"7+0..7 1+1..4 11 D #1"});
    EXPECT_EQ(stream.definition("A").locations[0].wordLength, 16);
    EXPECT_EQ(stream.places("A"), (test::Places{{7, 1}}));
    EXPECT_TRUE(stream.format.changed);
    EXPECT_TRUE(stream.ui.logs.empty());
    EXPECT_THAT(stream.ui.statusTexts,
                Contains("Converting measurements in stream 'PCM 1' to Word/Frame"));
}

TEST(WordFrameConversion, WhatIsNotALocationStays) {
    Converting stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4),
                            listOf({placed("A", "MFSC",
                                           {"MN1@:EV", "MN2@:L", "MN3@:M", "MFOT@:F", "MFS\\N@:2",
                                            "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:8"})})));
    ASSERT_TRUE(stream.convert());
    Measurement expected;
    expected.name = "A";
    expected.parity = "EV";
    expected.parityTransferOrder = "L";
    expected.transferOrder = "M";
    expected.filterOverwrite = "F";
    expected.locationType = "WDFR";
    expected.locationCount = 1;
    expected.wordFrameIndex = 1;
    expected.mask = "FW";  // each place has the mask of its fragment
    EXPECT_EQ(stream.first("A"), expected);
}

TEST(WordFrameConversion, AMinorSupercomInIntervalFormIsOneRange) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4),
        listOf({placed("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"}),
                placed("B", "MFSC", {"MFS\\N@:1", "MFS1@:I", "MFS2@:3", "MFS3@:FW", "MFS4@:5"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"2+5..12 1+1..4 FW D #1"});
    EXPECT_EQ(stream.fragments("B"), Commands{"3+0..3 1+1..4 FW D #1"});
    EXPECT_EQ(stream.places("A"), (test::Places{{2, 1}, {7, 1}, {12, 1}}));
}

TEST(WordFrameConversion, AMinorSupercomOfEveryLocationHasALocationForEachWord) {
    Converting stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4),
                            listOf({placed("A", "MFSC",
                                           {"MFS\\N@:2", "MFS1@:E", "MFSW@-1:9", "MFSM@-1:11",
                                            "MFSW@-2:5", "MFSM@-2:1"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), (Commands{"5+0..5 1+1..4 1 D #1", "9+0..9 1+1..4 11 D #1"}));
    EXPECT_EQ(stream.first("A").locationCount, 2);
}

TEST(WordFrameConversion, MinorFragmentsInIntervalFormStepByTheInterval) {
    Converting stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4),
                            listOf({placed("A", "MFFR",
                                           {"FMF\\N@:3", "FMF1@:24", "FMF2@:I", "FMF3@:2",
                                            "FMF4@:11111111", "FMF5@:4"})})));
    const int before = stream.format.countMeasurementOccurences("A");
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"),
              Commands{"2+0..2 1+1..4 11111111 D #1, 6+0..6 1+1..4 11111111 D #2, "
                       "10+0..10 1+1..4 11111111 D #3"});
    EXPECT_EQ(stream.definition("A").locations[0].wordLength, 24) << "the sum of the masks";
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), before);
}

TEST(WordFrameConversion, MinorFragmentsOfEveryLocationGoByTheirNumbers) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4),
        listOf({placed("A", "MFFR",
                       {"FMF\\N@:2", "FMF1@:20", "FMF2@:E", "FMF6@-1:5", "FMF7@-1:FW", "FMF8@-1:M",
                        "FMF9@-1:2", "FMF6@-2:9", "FMF7@-2:1111", "FMF8@-2:L", "FMF9@-2:1"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"9+0..9 1+1..4 1111 L #1, 5+0..5 1+1..4 FW M #2"});
    EXPECT_EQ(stream.definition("A").locations[0].wordLength, 20);
}

TEST(WordFrameConversion, ASubframeMeasurementIsInItsOneFrame) {
    Converting stream;
    ASSERT_TRUE(stream.load(threeSubframes(),
                            listOf({placed("A", "SF", {"SF1@:PLAIN", "SF2@:7", "SFM@:1"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"3+0..3 7+0..7 1 D #1"});
    EXPECT_EQ(stream.definition("A").idCounterName, "SFID");
}

TEST(WordFrameConversion, ASubframeMeasurementInFrames1And5And9IsOneFragment) {
    Converting stream;
    ASSERT_TRUE(stream.load(threeSubframes(),
                            listOf({placed("A", "SF", {"SF1@:PLAIN", "SF2@:1", "SFM@:FW"})})));
    for (const int fn : {5, 9}) {
        const auto cell = stream.format.getFreeCell(nullptr, 3, fn);
        stream.format.storeCell(cell, stream.format.cellAtFrame(3, 1));
    }
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"3+0..3 1+4..9 FW D #1"});
    EXPECT_EQ(stream.places("A"), (test::Places{{3, 1}, {3, 5}, {3, 9}}));
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("A"), (test::Places{{3, 1}, {3, 5}, {3, 9}}));
    EXPECT_TRUE(stream.ui.logs.empty());
}

TEST(WordFrameConversion, FramesWithoutAConstantStepAreLocationsOfTheirOwn) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        threeSubframes(),
        listOf({placed("A", "SFSC",
                       {"SFS1@:PLAIN", "SFS\\N@:3", "SFS2@:E", "SFS6@-1:1", "SFS7@-1:FW",
                        "SFS6@-2:2", "SFS7@-2:FW", "SFS6@-3:4", "SFS7@-3:FW"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), (Commands{"3+0..3 1+0..1 FW D #1", "3+0..3 2+0..2 FW D #1",
                                               "3+0..3 4+0..4 FW D #1"}));
}

TEST(WordFrameConversion, PlacesOfDifferentMasksAreLocationsOfTheirOwn) {
    Converting stream;
    ASSERT_TRUE(stream.load(threeSubframes(),
                            listOf({placed("A", "SFSC",
                                           {"SFS1@:PLAIN", "SFS\\N@:2", "SFS2@:E", "SFS6@-1:1",
                                            "SFS7@-1:1", "SFS6@-2:2", "SFS7@-2:11"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), (Commands{"3+0..3 1+0..1 1 D #1", "3+0..3 2+0..2 11 D #1"}));
}

TEST(WordFrameConversion, FoldedRepetitionsAreNotConvertedAgain) {
    Converting stream;
    ASSERT_TRUE(stream.load(threeSubframes(),
                            listOf({placed("A", "SF", {"SF1@:HALF", "SF2@:2", "SFM@:FW"})})));
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 2);
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"4+0..4 2+0..2 FW D #1"});
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 2);
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 2);
}

TEST(WordFrameConversion, ASupercommutatedSubframeGivesALocationForEachOccurrence) {
    // Positions 2, 4 and 6: word 9 of frame 1, words 5 and 13 of frame 2.
    Converting stream;
    ASSERT_TRUE(
        stream.load(threeSubframes(), listOf({placed("A", "SFSC",
                                                     {"SFS1@:SUPER", "SFS\\N@:3", "SFS2@:I",
                                                      "SFS3@:2", "SFS4@:FW", "SFS5@:2"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), (Commands{"9+0..9 1+0..1 FW D #1", "5+0..5 2+0..2 FW D #1",
                                               "13+0..13 2+0..2 FW D #1"}));
}

TEST(WordFrameConversion, FramesOfOneWordOfASupercommutatedSubframeAreNoRange) {
    // Positions 1, 4 and 7 are all in word 5.
    Converting stream;
    ASSERT_TRUE(
        stream.load(threeSubframes(), listOf({placed("A", "SFSC",
                                                     {"SFS1@:SUPER", "SFS\\N@:3", "SFS2@:I",
                                                      "SFS3@:1", "SFS4@:FW", "SFS5@:3"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.definition("A").locationCount(), 3);
}

TEST(WordFrameConversion, WordsOfASupercommutatedSubframeInOneFrameAreARange) {
    Converting stream;
    ASSERT_TRUE(
        stream.load(threeSubframes(), listOf({placed("A", "SFSC",
                                                     {"SFS1@:SUPER", "SFS\\N@:3", "SFS2@:I",
                                                      "SFS3@:4", "SFS4@:FW", "SFS5@:1"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), Commands{"5+4..13 2+0..2 FW D #1"});
}

TEST(WordFrameConversion, ASupercommutatedSubframeBecomesOrdinaryOnesThatCanBeRead) {
    Converting stream;
    ASSERT_TRUE(
        stream.load(threeSubframes(), listOf({placed("A", "SF", {"SF1@:SUPER", "SF2@:5"}),
                                              placed("B", "SF", {"SF1@:SUPER", "SF2@:6"})})));
    ASSERT_TRUE(stream.convert());
    for (const int fwp : {5, 9, 13}) {
        ASSERT_NE(stream.format.subframeOfWord(fwp), nullptr);
        EXPECT_FALSE(stream.format.subframeOfWord(fwp)->isSupercommutated());
    }
    EXPECT_EQ(stream.format.subframeOfWord(5)->name, "SUPER");
    EXPECT_EQ(stream.format.subframeOfWord(9)->name, "SF-9");
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_TRUE(stream.ui.logs.empty());
    EXPECT_EQ(stream.places("A"), (test::Places{{9, 2}}));
    EXPECT_EQ(stream.places("B"), (test::Places{{13, 2}}));
}

Commands fragmentAt(int j, int position, int number) {
    const auto at = "@-1-" + std::to_string(j);
    return {"FSF8" + at + ":" + std::to_string(position), "FSF9" + at + ":FW", "FSF10" + at + ":L",
            "FSF11" + at + ":" + std::to_string(number)};
}
Commands fragmented(const std::string& name, const std::string& subframe, const Commands& rest,
                    int count = 2) {
    return placed(name, "SFFR",
                  Commands{"FSF\\N@:" + std::to_string(count), "FSF1@:32", "FSF2\\N@:1",
                           "FSF3@-1:" + subframe, "FSF4@-1:E"} +
                      rest);
}

TEST(WordFrameConversion, SubframeFragmentsPairUpByTheirNumbers) {
    Converting stream;
    ASSERT_TRUE(stream.load(threeSubframes(),
                            listOf({fragmented("A", "SUPER",
                                               fragmentAt(1, 2, 2) + fragmentAt(2, 1, 1) +
                                                   fragmentAt(3, 5, 2) + fragmentAt(4, 4, 1))})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.fragments("A"), (Commands{"5+0..5 1+0..1 FW L #1, 9+0..9 1+0..1 FW L #2",
                                               "5+0..5 2+0..2 FW L #1, 9+0..9 2+0..2 FW L #2"}));
    EXPECT_EQ(stream.definition("A").idCounterName, "SFID");
    EXPECT_EQ(stream.definition("A").locations[1].wordLength, 32);
}

TEST(WordFrameConversion, SubframeFragmentsOfDifferentNumbersOfOccurrencesStay) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        threeSubframes(),
        listOf({fragmented("A", "SUPER",
                           fragmentAt(1, 1, 1) + fragmentAt(2, 2, 2) + fragmentAt(3, 5, 2))})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.first("A").locationType, "SFFR");
    ASSERT_EQ(stream.logged(), (test::Logged{{460, 89}}));
    EXPECT_EQ(stream.ui.logs[0].text,
              "Unable to convert the following measurement to Word/Frame:\n\nMeasurement: 'A'\n"
              "Frame word position: 5\nFrame number: 1\n"
              "Original measurement location type: 'SFFR'");
    EXPECT_EQ(stream.ui.shown.size(), 1U);
    EXPECT_FALSE(stream.has("KAVU9TMP.TMP"));
    EXPECT_FALSE(stream.format.changed);
}

TEST(WordFrameConversion, FragmentsNumberedAbove9StayRatherThanLoseOne) {
    Converting stream;
    Commands rest;
    for (int number = 1; number <= 10; ++number) {
        rest = rest + fragmentAt(number, number, number);
    }
    ASSERT_TRUE(stream.load(threeSubframes(), listOf({fragmented("A", "SUPER", rest, 10)})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.first("A").locationType, "SFFR");
    EXPECT_EQ(stream.ui.countLogs(460), 1);
}

TEST(WordFrameConversion, ASubframeThatMustStaySupercommutatedKeepsItsMeasurements) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        threeSubframes(),
        listOf({fragmented("A", "SUPER",
                           fragmentAt(1, 1, 1) + fragmentAt(2, 2, 2) + fragmentAt(3, 5, 2)),
                placed("B", "SF", {"SF1@:SUPER", "SF2@:3"}), placed("C", "MF", {"MF@:2"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.first("B").locationType, "SF");
    EXPECT_EQ(stream.first("C").locationType, "WDFR");
    EXPECT_EQ(stream.ui.countLogs(460), 2);
    EXPECT_TRUE(stream.format.subframeOfWord(5)->isSupercommutated());
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_TRUE(stream.ui.logs.empty());
}

// --- editions -------------------------------------------------------------------------------

TEST(WordFrameConversion, EditionsBefore106_04AreRefusedWithATextThatSaysWhy) {
    for (const int edition : {1996, 1999, 2000, 2001}) {
        Converting stream(edition);
        ASSERT_TRUE(stream.load(plainFormat(16, 4), listOf({placed("A", "MF", {"MF@:2"})})));
        EXPECT_FALSE(stream.convert()) << edition;
        EXPECT_EQ(stream.first("A").locationType, "MF");
        ASSERT_EQ(stream.ui.boxes.size(), 1U);
        EXPECT_THAT(stream.ui.boxes[0].text,
                    HasSubstr("only available on TMATS files written to 106-04 and later"));
    }
}

TEST(WordFrameConversion, WhereEndsAreNotWrittenARangeMustEndWithTheFrame) {
    // Words 2, 7 and 12 of 16: the next one would be beyond the frame. Words 3 and 7: not so.
    for (const int edition : {2004, 2005, 2007, 2009}) {
        Converting stream(edition);
        ASSERT_TRUE(stream.load(
            plainFormat(16, 4),
            listOf({placed("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"}),
                    placed("B", "MFSC",
                           {"MFS\\N@:2", "MFS1@:I", "MFS2@:3", "MFS3@:FW", "MFS4@:4"})})));
        ASSERT_TRUE(stream.convert());
        EXPECT_EQ(stream.definition("A").locationCount(), 1) << edition;
        EXPECT_EQ(stream.definition("B").locationCount(), edition < 2009 ? 2 : 1) << edition;
        ASSERT_TRUE(stream.saveAndReload());
        EXPECT_EQ(stream.places("A"), (test::Places{{2, 1}, {7, 1}, {12, 1}})) << edition;
        EXPECT_EQ(stream.places("B"), (test::Places{{3, 1}, {7, 1}})) << edition;
    }
}

TEST(WordFrameConversion, OnTheWayTo106_11RepetitionsAreToldAsSubframesAreNot) {
    Converting stream;
    stream.load(threeSubframes(), listOf({placed("A", "SF", {"SF1@:HALF", "SF2@:2"}),
                                          placed("B", "SF", {"SF1@:SUPER", "SF2@:5"}),
                                          placed("C", "MF", {"MF@:2"})}));
    stream.format.closeFormat();
    stream.document.version = 2011;
    EXPECT_TRUE(migrateStream(stream.format, stream.parent, stream.steps_, 1, 2009).changed);
    EXPECT_FALSE(stream.format.loaded());
    EXPECT_EQ(stream.document.version, 2011);
    ASSERT_TRUE(stream.reload());
    EXPECT_TRUE(stream.ui.logs.empty());
    EXPECT_EQ(stream.fragments("A"), Commands{"4+0..4 2+6..8  D #1"});
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 2);
    EXPECT_EQ(stream.format.countMeasurementOccurences("B"), 1);
    EXPECT_EQ(stream.format.countMeasurementOccurences("C"), 12);
}

TEST(WordFrameConversion, OnTheWayTo106_11WordFrameLocationsRepeatAsTheirSubframesDid) {
    Converting stream;
    stream.load(threeSubframes(),
                listOf({placed("A", "WDFR",
                               {"MML\\N@:1", "WP@-1-1:4", "FP@-1-1:2", "FI@-1-1:1", "EFP@-1-1:3"}),
                        placed("B", "MF", {"MF@:2"})}));
    ASSERT_EQ(stream.format.countMeasurementOccurences("A"), 4);
    stream.format.closeFormat();
    stream.document.version = 2011;
    EXPECT_TRUE(migrateStream(stream.format, stream.parent, stream.steps_, 1, 2009).changed);
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.fragments("A"), (Commands{"4+0..4 2+1..3  D #1", "4+0..4 8+1..9  D #1"}));
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 4);
}

TEST(WordFrameConversion, AMigrationKeepsTheLogOfTheLoadAroundIt) {
    Converting stream;
    stream.writeGroup('P', plainFormat(8, 1));
    stream.writeGroup('D', listOf({placed("A", "MF", {"MF@:2"})}));
    stream.messages.log(&stream.ui, 442, 75, "98", 9);
    const auto before = stream.read("KAVU9TMP.TMP");
    stream.document.version = 2011;
    EXPECT_TRUE(migrateStream(stream.format, stream.parent, stream.steps_, 1, 2009).changed);
    EXPECT_EQ(stream.read("KAVU9TMP.TMP"), before);
}

TEST(WordFrameConversion, AMigrationLeavesAStreamWhoseNameBelongsToAnotherAlone) {
    Converting stream;
    stream.writeGroup('P', plainFormat(8, 1));
    stream.writeGroup('P', plainFormat(8, 1), "PCM 1", 2);
    stream.writeGroup('D', listOf({placed("A", "MF", {"MF@:2"})}));
    stream.document.version = 2011;
    EXPECT_FALSE(migrateStream(stream.format, stream.parent, stream.steps_, 2, 2009).changed);
    EXPECT_THAT(stream.saved("[kavu]PCMMEAS.D01"), Contains("D-1\\LT-1-1:MF;"));
    EXPECT_FALSE(migrateStream(stream.format, stream.parent, stream.steps_, 3, 2009).changed);
}

// --- as a whole -----------------------------------------------------------------------------

TEST(WordFrameConversion, PlacesThatGotLostAreTold) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4),
        listOf({placed("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"})})));
    stream.format.cells().updateAll("A", [](Measurement& m) { m.locationCount = 2; });
    ASSERT_TRUE(stream.convert());
    ASSERT_EQ(stream.logged(), (test::Logged{{461, 89}}));
    EXPECT_THAT(stream.ui.logs[0].text, HasSubstr("12 unique measurement locations"));
    EXPECT_THAT(stream.ui.logs[0].text, HasSubstr("8 were found"));
}

TEST(WordFrameConversion, AsyncSlotsAndConvertedMeasurementsStay) {
    Converting stream;
    const auto format =
        plainFormat(16, 4) + Commands{"AEF\\N:1", "AEF\\DLN-1:OTHER", "AEF1-1:NO", "AEF3-1-1:5"};
    ASSERT_TRUE(stream.load(
        format,
        listOf({placed("A", "MF", {"MF@:5"}), placed("C", "MF", {"MF@:5"}),
                placed("B", "WDFR", {"MML\\N@:1", "WP@-1-1:5", "FP@-1-1:1", "FI@-1-1:1"})})));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.format.countMeasurementsAt(5, 1, false), 4);
    EXPECT_EQ(stream.format.countMeasurementsAt(5, 1, true), 3);
    EXPECT_EQ(stream.first("B").wordFrameIndex, 1);
    EXPECT_EQ(stream.first("A").wordFrameIndex, 2);
}

TEST(WordFrameConversion, ACancelLeavesEverythingAsItWas) {
    Converting stream;
    ASSERT_TRUE(stream.load(plainFormat(16, 4),
                            listOf({placed("A", "MF", {"MF@:2"}), placed("B", "MF", {"MF@:3"})})));
    stream.ui.cancelAtPoll = stream.ui.polls + 2;
    EXPECT_FALSE(stream.convert());
    EXPECT_EQ(stream.first("A").locationType, "MF");
    EXPECT_TRUE(stream.format.wordFrameDefinitions.empty());
    EXPECT_FALSE(stream.format.changed);
}

TEST(WordFrameConversion, ANullParentIsSilent) {
    Converting stream;
    ASSERT_TRUE(
        stream.load(threeSubframes(), listOf({placed("B", "SF", {"SF1@:SUPER", "SF2@:5"})})));
    EXPECT_TRUE(convertToWordFrame(stream.format, nullptr));
    EXPECT_EQ(stream.first("B").locationType, "WDFR");
    stream.format.closeFormat();
    EXPECT_FALSE(convertToWordFrame(stream.format, nullptr)) << "there is no format";
}

TEST(WordFrameConversion, TheWordOfACounterIsInNoRange) {
    Converting stream;
    ASSERT_TRUE(stream.load(
        plainFormat(16, 4) + counterAt(7, 4),
        listOf({placed("A", "MFSC", {"MFS\\N@:3", "MFS1@:I", "MFS2@:2", "MFS3@:FW", "MFS4@:5"})})));
    EXPECT_EQ(stream.places("A"), (test::Places{{2, 1}, {7, 1}, {12, 1}}));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.definition("A").locationCount(), 3);
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_TRUE(stream.ui.logs.empty());
    EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 12);
}

TEST(WordFrameConversion, ManyMeasurementsInOneWordAreOnePass) {
    Converting stream;
    std::vector<Commands> measurements;
    for (int m = 0; m < 3000; ++m) {
        measurements.push_back(placed("M" + std::to_string(m), "MF", {"MF@:2"}));
    }
    ASSERT_TRUE(stream.load(plainFormat(8, 2), listOf(measurements)));
    ASSERT_TRUE(stream.convert());
    EXPECT_EQ(stream.format.countMeasurementsAt(2, 1, true), 3000);
    EXPECT_EQ(stream.format.wordFrameDefinitions.size(), 3000U);
}

TEST(FindSequence, IsOneValueOrAConstantStep) {
    struct Row {
        std::vector<int> list;
        bool found;
        Sequence expected;
    };
    const Row rows[] = {
        {{}, false, {}},
        {{7}, true, {7, 7, 0}},
        {{7, 7, 7}, true, {7, 7, 0}},
        {{1, 5, 9}, true, {1, 9, 4}},
        {{9, 5, 1}, true, {9, 1, -4}},
        {{1, 5, 8}, false, {}},
        {{1, 1, 2}, false, {}},
    };
    for (const auto& row : rows) {
        Sequence found;
        EXPECT_EQ(findSequence(row.list, found), row.found) << ::testing::PrintToString(row.list);
        EXPECT_EQ(found, row.expected) << ::testing::PrintToString(row.list);
    }
}

}  // namespace
}  // namespace kavu
