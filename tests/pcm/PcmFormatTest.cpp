#include "pcm/LoadFixture.h"
#include "pcm/PcmFormat.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// 32 words, so many frames, a counter in word 31, a subframe of depth 16 in word 5.
Commands withSubframe(int frames, int depth = 16) {
    return plainFormat(32, frames) +
           counterAt(31, frames, Commands{"SF\\N-1:1"} + subframeAt(1, "SUB", 5, depth));
}

TEST(PcmFormat, WithoutAFormatEveryAccessorGivesNothing) {
    LoadFixture f;
    const auto& format = f.format;
    EXPECT_FALSE(format.loaded());
    EXPECT_EQ(format.wordType(1), WordType::Minor);
    EXPECT_EQ(format.wordLength(1), 0);
    EXPECT_EQ(format.wordDepth(1), 0);
    EXPECT_FALSE(format.cellAt(1, 1));
    EXPECT_FALSE(format.cellAtFrame(1, 1));
    EXPECT_FALSE(format.findInCell(1, 1, "A"));
    EXPECT_EQ(format.countMeasurementsAt(1, 1, false), 0);
    EXPECT_FALSE(format.measurementAt(1, 1, 1, false));
    EXPECT_EQ(format.subframeOfWord(1), nullptr);
    EXPECT_EQ(format.idCounterOfWord(1), nullptr);
    EXPECT_EQ(format.subframeWord("SUB", 1), -1);
    EXPECT_EQ(format.subframePositions("SUB"), 0);
    EXPECT_EQ(format.countMeasurementOccurences("A"), 0);
    EXPECT_FALSE(format.containsMeasurements(1));
    EXPECT_EQ(format.wordFrameDefinition(1), nullptr);
    EXPECT_FALSE(Occurrences(format, "A").next());
}

TEST(PcmFormat, FramesFoldBackOntoTheCellsOfASubframe) {
    LoadFixture f;
    ASSERT_TRUE(f.load(withSubframe(128)));
    EXPECT_EQ(f.format.cellAtFrame(5, 65).index, 1);
    EXPECT_EQ(f.format.cellAtFrame(5, 64).index, 16);
    EXPECT_EQ(f.format.cellAtFrame(5, 65), f.format.cellAtFrame(5, 1));
    EXPECT_FALSE(f.format.cellAtFrame(5, 129));
    EXPECT_FALSE(f.format.cellAtFrame(5, 0));
    EXPECT_FALSE(f.format.cellAtFrame(0, 1)) << "the sync word has no cells of frames";
    EXPECT_FALSE(f.format.cellAtFrame(32, 1));
}

TEST(PcmFormat, AnIdCounterWordHasOneCellThoughItsDepthIsThatOfTheCounter) {
    LoadFixture f;
    ASSERT_TRUE(f.load(withSubframe(64)));
    EXPECT_EQ(f.format.wordDepth(31), 64);
    EXPECT_EQ(f.format.cells().cellCount(31), 1);
    EXPECT_TRUE(f.format.cellAt(31, 1));
    EXPECT_FALSE(f.format.cellAt(31, 2));
    EXPECT_EQ(f.format.cellAtFrame(31, 64).index, 1);
}

TEST(PcmFormat, AMinorWordOf256FramesIsHitInEveryFrame) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 256), listOf({{"MN@:A", "LT@:MF", "MF@:4"}})));
    Occurrences hits(f.format, "A");
    int count = 0;
    while (const auto hit = hits.next()) {
        EXPECT_EQ(hit->fwp, 4);
        EXPECT_EQ(hit->fn, ++count);
        EXPECT_EQ(hit->cell, f.format.cellAt(4, 1));
    }
    EXPECT_EQ(count, 256);
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 256);
}

TEST(PcmFormat, ANameOfAnotherCaseFindsTheSameMeasurement) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2), listOf({{"MN@:Alpha", "LT@:MF", "MF@:4"}})));
    EXPECT_TRUE(f.format.hasMeasurement("ALPHA"));
    EXPECT_TRUE(f.format.findInCell(4, 2, "aLpHa"));
    EXPECT_EQ(f.format.countMeasurementOccurences("alpha"), 2);
    EXPECT_EQ(Occurrences(f.format, "ALPHA").next()->fwp, 4);
}

TEST(PcmFormat, FragmentsAreNotCountedAsOccurrences) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 4), listOf({{"MN@:A", "LT@:MFFR", "FMF\\N@:3", "FMF1@:48",
                                                    "FMF2@:I", "FMF3@:4", "FMF5@:2"}})));
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4);
    int hits = 0;
    for (Occurrences all(f.format, "A"); all.next();) {
        ++hits;
    }
    EXPECT_EQ(hits, 12);
    Occurrences second(f.format, "A", {}, 2);
    for (int fn = 1; fn <= 4; ++fn) {
        const auto hit = second.next();
        ASSERT_TRUE(hit);
        EXPECT_EQ(hit->fwp, 6);
        EXPECT_EQ(hit->fn, fn);
    }
    EXPECT_FALSE(second.next());
}

TEST(PcmFormat, OccurrencesRunFrameByFrameAndWordByWordWithinAFrame) {
    LoadFixture f;
    ASSERT_TRUE(f.load(withSubframe(32), listOf({{"MN@:A", "LT@:SF", "SF1@:SUB", "SF2@:3"},
                                                 {"MN@:B", "LT@:MFSC", "MFS\\N@:2", "MFS1@:E",
                                                  "MFSW@-1:9", "MFSW@-2:2"}})));
    Occurrences a(f.format, "A");
    EXPECT_EQ(a.next()->fn, 3);
    EXPECT_EQ(a.next()->fn, 19);
    EXPECT_FALSE(a.next());
    Occurrences b(f.format, "B");
    for (const auto& [fwp, fn] : test::Places{{2, 1}, {9, 1}, {2, 2}, {9, 2}}) {
        const auto hit = b.next();
        EXPECT_EQ(hit->fwp, fwp);
        EXPECT_EQ(hit->fn, fn);
    }
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 2);
    EXPECT_EQ(f.format.countMeasurementOccurences("B"), 64);
}

TEST(PcmFormat, OccurrencesOfASubframePassOverAllOtherWords) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(32, 4) + counterAt(31, 4,
                                              Commands{"SF\\N-1:2"} + subframeAt(1, "S1", 5, 4) +
                                                  subframeAt(2, "S2", 6, 4)),
               listOf({{"MN@:A", "LT@:SFFR", "FSF\\N@:2", "FSF2\\N@:2", "FSF3@-1:S1", "FSF4@-1:E",
                        "FSF8@-1-1:1", "FSF11@-1-1:1", "FSF3@-2:S2", "FSF4@-2:E", "FSF8@-2-1:2",
                        "FSF11@-2-1:2"}})));
    Occurrences hits(f.format, "A", "S2");
    const auto hit = hits.next();
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->fwp, 6);
    EXPECT_EQ(hit->fn, 2);
    EXPECT_FALSE(hits.next());
    EXPECT_FALSE(Occurrences(f.format, "A", "S3").next());
}

TEST(PcmFormat, ACellThatIsFreedWhileOccurrencesRunIsPassedOver) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2), listOf({{"MN@:A", "LT@:MFSC", "MFS\\N@:2", "MFS1@:I",
                                                    "MFS2@:3", "MFS4@:4"}})));
    Occurrences hits(f.format, "A");
    EXPECT_EQ(hits.next()->fwp, 3);
    f.format.cells().clear(f.format.cellAt(7, 1));
    EXPECT_EQ(hits.next()->fn, 2);
    EXPECT_FALSE(hits.next());
}

TEST(PcmFormat, StoringIntoAnAsyncSlotLeavesItsNumberInPlace) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2), listOf({{"MN@:A", "LT@:MF", "MF@:3"}})));
    auto& cells = f.format.cells();
    const auto slot = f.format.getFreeCell(nullptr, 4, 1);
    cells.setAsyncNumber(slot, 2);
    f.format.storeCell(slot, f.format.cellAt(3, 1));
    EXPECT_EQ(cells.asyncNumber(slot), 2);
    EXPECT_EQ(cells.measurement(slot).name, "A");
    EXPECT_EQ(f.format.countMeasurementsAt(4, 1, true), 0);
    EXPECT_EQ(f.format.countMeasurementsAt(4, 1, false), 1);
    EXPECT_EQ(f.format.measurementAt(4, 1, 1, false), slot);
    EXPECT_FALSE(f.format.measurementAt(4, 1, 1, true));
    EXPECT_FALSE(f.format.findInCell(4, 1, "A"));
}

TEST(PcmFormat, PositionsRunAcrossTheWordsOfAMinorFrameFirst) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(32, 8) + counterAt(31, 8,
                                              {"SF\\N-1:1", "SF1-1-1:S", "SF2-1-1:3", "SF3-1-1:FI",
                                               "SF4-1-1-1:5", "SF5-1-1:10", "SF6-1-1:4"})));
    EXPECT_EQ(f.format.subframePositions("S"), 12);
    int fwp = 0;
    int fn = 0;
    EXPECT_EQ(f.format.subframeLocation("S", 0, fwp, fn), 0);
    EXPECT_EQ(f.format.subframeLocation("S", -3, fwp, fn), 0);
    EXPECT_EQ(f.format.subframeLocation("S", 13, fwp, fn), -12);
    for (int position = 1; position <= 12; ++position) {
        ASSERT_EQ(f.format.subframeLocation("S", position, fwp, fn), 1);
        EXPECT_EQ(fwp, 5 + 10 * ((position - 1) % 3));
        EXPECT_EQ(fn, (position - 1) / 3 + 1);
        EXPECT_EQ(f.format.subframePosition("S", fwp, fn), position);
    }
    EXPECT_EQ(f.format.subframePosition("S", 6, 1), 0);
    EXPECT_EQ(f.format.subframePosition("S", 5, 5), 0);
    EXPECT_EQ(f.format.subframeWord("S", 6), 15);
    EXPECT_EQ(f.format.subframeWord("S", 26), -1);
}

TEST(PcmFormat, ASubframeSpelledExactlyComesBeforeOneOfAnotherCase) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(32, 8) + counterAt(31, 8,
                                              Commands{"SF\\N-1:2"} + subframeAt(1, "Sub", 5, 8) +
                                                  subframeAt(2, "SUB", 6, 8))));
    EXPECT_EQ(f.format.subframeWord("SUB", 0), 6);
    EXPECT_EQ(f.format.subframeWord("Sub", 0), 5);
    EXPECT_EQ(f.format.subframeWord("sub", 0), 5);
}

TEST(PcmFormat, ThePositionOfTheNumberOfWordsReadsAndWritesWithoutHarm) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2)));
    f.format.setWordLength(32, 99);
    EXPECT_EQ(f.format.wordLength(32), 99);
    f.format.setWordLength(33, 7);
    EXPECT_EQ(f.format.wordLength(33), 0);
    f.format.setWordLength(-1, 7);
    EXPECT_EQ(f.format.wordLength(-1), 0);
    EXPECT_FALSE(f.format.recalculateBitsPerMinorFrame());
    ASSERT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 33));
    EXPECT_EQ(f.format.wordLength(32), 16) << "a new word has the common length";
}

TEST(PcmFormat, CountsTheBitsOfAMask) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2)));
    EXPECT_EQ(f.format.maskBits(3, "FW", true), 16);
    EXPECT_EQ(f.format.maskBits(-12, "FW", false), 12);
    EXPECT_EQ(f.format.maskBits(3, "0110", false), 2);
    EXPECT_EQ(f.format.maskBits(3, "", false), 0);
    EXPECT_EQ(f.format.maskBits(3, "11", true), 2) << "hexadecimal only by the setting";
    f.settings.writeInteger("HexBM", 1);
    EXPECT_EQ(f.format.maskBits(3, "F1", true), 5);
    EXPECT_EQ(f.format.maskBits(3, "F1", false), 1);
}

TEST(PcmFormat, UpTo10609AWordContainsMeasurementsIfItIsAMinorWordThatHoldsOne) {
    LoadFixture f;
    ASSERT_TRUE(f.load(withSubframe(16), listOf({{"MN@:A", "LT@:MF", "MF@:4"},
                                                 {"MN@:B", "LT@:SF", "SF1@:SUB", "SF2@:1"}})));
    EXPECT_TRUE(f.format.containsMeasurements(4));
    EXPECT_FALSE(f.format.containsMeasurements(5));
    EXPECT_FALSE(f.format.containsMeasurements(6));
}

TEST(PcmFormat, From10611AWordContainsMeasurementsIfOneIsInEveryFrame) {
    LoadFixture f(2011);
    ASSERT_TRUE(f.load(plainFormat(16, 4) + counterAt(15, 4),
                       listOf({{"MN@:A", "LT@:WDFR", "MML\\N@:1", "WP@-1-1:4", "FP@-1-1:1",
                                "FI@-1-1:1", "WFM@-1-1:FW"},
                               {"MN@:B", "LT@:WDFR", "MML\\N@:1", "WP@-1-1:5", "FP@-1-1:1",
                                "FI@-1-1:2", "WFM@-1-1:FW"}})));
    EXPECT_TRUE(f.format.containsMeasurements(4));
    EXPECT_FALSE(f.format.containsMeasurements(5));
}

TEST(PcmFormat, WordFrameEntriesKeepTheirNumbers) {
    LoadFixture f;
    auto& format = f.format;
    EXPECT_EQ(format.addWordFrameDefinition(-1, 2), 1);
    EXPECT_EQ(format.addWordFrameDefinition(-1, 1), 2);
    format.setWordFrameFragments(1, 2, 3);
    EXPECT_EQ(format.wordFrameDefinition(1)->locations[1].fragmentCount(), 3);
    EXPECT_EQ(format.wordFrameDefinition(1)->mostFragments(), 3);
    format.setWordFrameFragments(1, 2, 0);
    EXPECT_EQ(format.wordFrameDefinition(1)->mostFragments(), 0);
    format.setWordFrameFragments(1, 3, 4);
    format.setWordFrameFragments(9, 1, 4);
    EXPECT_EQ(format.addWordFrameDefinition(1, 5), 1);
    EXPECT_EQ(format.wordFrameDefinition(1)->locationCount(), 5);
    format.freeWordFrameDefinition(2);
    EXPECT_EQ(format.wordFrameDefinition(2)->locationCount(), 0);
    EXPECT_EQ(format.addWordFrameDefinition(-1, 0), 3);
    EXPECT_EQ(format.wordFrameDefinition(0), nullptr);
    EXPECT_EQ(format.wordFrameDefinition(4), nullptr);
}

TEST(PcmFormat, WordsWithoutCellsAreReportedWhenTheyAreFreed) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 2)));
    f.format.freeCells(f.parent, 3);
    EXPECT_EQ(f.format.cells().cellCount(3), 0);
    EXPECT_TRUE(f.ui.boxes.empty());
    f.format.freeCells(f.parent, 3);
    EXPECT_EQ(f.boxText(268),
              "Unable to delete measurement data structure for Frame Word "
              "Position 3");
    EXPECT_FALSE(f.format.getFreeCell(f.parent, 3, 1));
    EXPECT_TRUE(f.ui.hasBox(267));
    EXPECT_FALSE(f.format.getFreeCell(nullptr, 3, 1));
    EXPECT_TRUE(f.format.allocateCells(f.parent, 3));
    EXPECT_EQ(f.format.cells().cellCount(3), 1);
}

TEST(PcmFormat, AMeasurementIsRemovedFromAllItsPlaces) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(32, 2),
                       listOf({{"MN@:A", "LT@:MFSC", "MFS\\N@:3", "MFS1@:I", "MFS2@:3", "MFS4@:4"},
                               {"MN@:B", "LT@:MF", "MF@:7"}})));
    f.format.removeMeasurement("a");
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_EQ(f.format.countMeasurementsAt(3, 1, false), 0);
    EXPECT_EQ(f.format.countMeasurementsAt(7, 1, false), 1);
    EXPECT_TRUE(f.format.findInCell(7, 1, "B"));
}

TEST(PcmFormat, MeasurementsAreVisitedByWordThenIndexThenPlaceInTheList) {
    LoadFixture f;
    ASSERT_TRUE(f.load(withSubframe(16), listOf({{"MN@:Z", "LT@:MF", "MF@:4"},
                                                 {"MN@:B", "LT@:SF", "SF1@:SUB", "SF2@:2"},
                                                 {"MN@:C", "LT@:SF", "SF1@:SUB", "SF2@:1"},
                                                 {"MN@:y", "LT@:MF", "MF@:4"},
                                                 {"MN@:A", "LT@:MFSC", "MFS\\N@:2", "MFS1@:I",
                                                  "MFS2@:3", "MFS4@:6"}})));
    std::string order;
    f.format.forEachMeasurement([&](CellRef cell, int fwp, int index) {
        order += f.format.cells().measurement(cell).name.str() + std::to_string(fwp) + "." +
                 std::to_string(index) + " ";
        return true;
    });
    EXPECT_EQ(order, "A3.1 y4.1 Z4.1 C5.1 B5.2 ");
}

}  // namespace
}  // namespace kavu
