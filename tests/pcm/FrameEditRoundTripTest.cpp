#include "pcm/LoadFixture.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/MeasurementEditDefinition.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// A stream of an edition that knows both methods, and a measurement of each: the one told by
/// words and frames has given word 7 a subframe that no file tells of.
class MixedStream : public LoadFixture {
  public:
    MixedStream() {
        EXPECT_TRUE(load(plainFormat(16, 8) + counterAt(1, 8),
                         listOf({Commands{"MN@:A", "LT@:MF", "MF@:3"},
                                 Commands{"MN@:B", "LT@:WDFR", "MML\\N@:1", "MNF\\N@-1:1",
                                          "WP@-1-1:7", "WI@-1-1:0", "EWP@-1-1:7", "FP@-1-1:1",
                                          "FI@-1-1:2", "EFP@-1-1:8", "WFM@-1-1:FW"}})));
        EXPECT_FALSE(format.implicitSubframes);
        EXPECT_TRUE(format.subframeOfWord(7) != nullptr && format.subframeOfWord(7)->hidden);
    }
    bool saveAndReload() { return savePcmFormat(format, parent) && reload(); }

    EditSteps edit;
    SaveSteps saving;
};

TEST(FrameEditRoundTrip, ANewMeasurementInAHiddenSubframeComesBack) {
    MixedStream stream;
    auto word = wordToEdit(stream.format, stream.parent, 7, 2, "");
    ASSERT_TRUE(word);
    word->definition.attributes.name = "C";
    ASSERT_TRUE(saveMeasurement(stream.format, stream.parent, stream.edit, stream.saving,
                                word->place, word->definition));
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("C"), (test::Places{{7, 2}}));
    EXPECT_EQ(stream.places("B"), (test::Places{{7, 1}, {7, 3}, {7, 5}, {7, 7}}));
}

TEST(FrameEditRoundTrip, AHiddenSubframeOffersWordsAndFramesOnly) {
    MixedStream stream;
    EXPECT_EQ(defaultLocationType(stream.format, stream.parent, 7), "WDFR");
    EXPECT_EQ(locationTypes(stream.format, 7), std::vector<std::string>{"WDFR  - Word/Frame"});
    for (const auto& target : moveTargets(stream.format)) {
        EXPECT_NE(target.fwp, 7) << target.text;
    }
    const auto name = stream.format.subframeOfWord(7)->name.str();
    for (const auto* const type : {"SFSC", "SFFR"}) {
        MeasurementDefinition definition;
        definition.attributes.name = "C";
        definition.attributes.locationType = type;
        definition.attributes.locationMode = "E";
        definition.attributes.reconstructedLength = 16;
        definition.spots.resize(1);
        definition.spots[0].subframe = name;
        definition.spots[0].position = 2;
        definition.spots[0].fragmentNumber = 1;
        stream.ui.boxes.clear();
        EXPECT_FALSE(saveMeasurement(stream.format, stream.parent, stream.edit, stream.saving,
                                     {7, 2, {}}, definition));
        EXPECT_FALSE(stream.boxText(331).empty()) << type;
    }
    const auto values = stream.first("A");
    EXPECT_FALSE(moveMeasurement(stream.format, values, {7, 2, {}}));
    EXPECT_EQ(stream.places("A"), (test::Places{{3, 1}}));
}

TEST(FrameEditRoundTrip, WhatIsGeneratedInAHiddenSubframeComesBack) {
    MixedStream stream;
    ASSERT_EQ(
        createDataWords(stream.format, stream.parent, {}, readDataWordDefaults(stream.format)),
        16);  // words 2, 4 to 6 and 8 to 15, and four frames of word 7
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("FWP0007_FN002"), (test::Places{{7, 2}}));
    EXPECT_EQ(stream.places("FWP0007_FN008"), (test::Places{{7, 8}}));
    EXPECT_EQ(stream.first("FWP0007_FN008").locationType, "WDFR");
    EXPECT_EQ(stream.first("FWP0002_FN001").locationType, "MF");
    EXPECT_TRUE(stream.ui.logs.empty());
}

/// Words 1 to 31 in 8 frames, a counter in 1, and the subframes S and U of one word and T of two.
class LoadedSubframes : public LoadFixture {
  public:
    LoadedSubframes() {
        EXPECT_TRUE(load(
            plainFormat(32, 8) + counterAt(1, 8,
                                           Commands{"SF\\N-1:3"} + subframeAt(1, "S", 5, 4) +
                                               Commands{"SF1-1-2:T", "SF2-1-2:2", "SF3-1-2:FI",
                                                        "SF4-1-2-1:6", "SF5-1-2:10", "SF6-1-2:4"} +
                                               subframeAt(3, "U", 8, 4)),
            listOf({Commands{"MN@:Old", "LT@:MF", "MF@:3"}})));
    }
    bool save(const EditedPlace& place, const MeasurementDefinition& definition) {
        return saveMeasurement(format, parent, {}, {}, place, definition);
    }
    bool saveAndReload() { return savePcmFormat(format, parent) && reload(); }
};

TEST(FrameEditRoundTrip, AnIntervalThatNoFileTellsKeepsItsPlaces) {
    LoadedSubframes stream;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "SFSC";
    definition.attributes.locationMode = "I";
    definition.attributes.locationCount = 3;
    definition.attributes.interval = 1;
    definition.attributes.mask = "FW";
    // Positions 2 to 4: the second word of frame 1 comes before the first word of frame 2.
    ASSERT_TRUE(stream.save({16, 1, {}}, definition));
    const test::Places places{{6, 2}, {16, 1}, {16, 2}};
    EXPECT_EQ(stream.places("A"), places);
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("A"), places);
    EXPECT_EQ(stream.first("A").locationMode, "E");
    // From a place in the first word on a file tells of it.
    definition.attributes.locationCount = 2;
    definition.attributes.interval = 2;
    ASSERT_TRUE(stream.save({6, 1, "A"}, definition));
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("A"), (test::Places{{6, 1}, {6, 2}}));
    EXPECT_EQ(stream.first("A").locationMode, "I");
}

TEST(FrameEditRoundTrip, FragmentsAreNumberedWithoutGapsAndCountOnceEach) {
    LoadedSubframes stream;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "SFFR";
    definition.attributes.reconstructedLength = 32;
    definition.spots = {{0, "S", 1, "FW", "M", 1},
                        {0, "U", 1, "FW", "L", 3},
                        {0, "S", 3, "FW", "M", 1},
                        {0, "U", 3, "FW", "L", 3}};
    ASSERT_TRUE(stream.save({5, 1, {}}, definition));
    const auto check = [&stream] {
        EXPECT_EQ(stream.places("A"), (test::Places{{5, 1}, {5, 3}, {8, 1}, {8, 3}}));
        const auto cell = stream.format.findInCell(8, 3, "A");
        ASSERT_TRUE(cell);
        EXPECT_EQ(stream.format.cells().measurement(cell).fragmentNumber, 2);
        EXPECT_EQ(stream.format.cells().measurement(cell).fragmentTransferOrder, "L");
        EXPECT_EQ(stream.format.cells().measurement(cell).locationCount, 2);
        EXPECT_EQ(stream.format.countMeasurementOccurences("A"), 4);
    };
    check();
    ASSERT_TRUE(stream.saveAndReload());
    check();
    EXPECT_TRUE(stream.ui.logs.empty());
}

TEST(FrameEditRoundTrip, FragmentsOfWordsAreNumberedWithoutGaps) {
    LoadedSubframes stream;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "MFFR";
    definition.attributes.locationMode = "E";
    definition.attributes.reconstructedLength = 32;
    definition.spots = {{9, "", 0, "FW", "M", 3}, {10, "", 0, "FW", "L", 1}};
    ASSERT_TRUE(stream.save({9, 1, {}}, definition));
    ASSERT_TRUE(stream.saveAndReload());
    const auto& cells = stream.format.cells();
    EXPECT_EQ(cells.measurement(stream.format.findInCell(9, 1, "A")).fragmentNumber, 2);
    EXPECT_EQ(cells.measurement(stream.format.findInCell(10, 1, "A")).fragmentNumber, 1);
    EXPECT_TRUE(stream.ui.logs.empty()) << "no fragment is missing";
}

TEST(FrameEditRoundTrip, RangesOfAnEditionWithoutEndsGoOnToTheLastWordAndFrame) {
    for (const int edition : {2004, 2007, 2009}) {
        LoadFixture stream(edition);
        ASSERT_TRUE(stream.load(plainFormat(16, 8) + counterAt(1, 8)));
        MeasurementDefinition definition;
        definition.attributes.name = "A";
        definition.attributes.locationType = "WDFR";
        definition.wordFrame.locations = {{16, {{4, 5, 9, 2, 2, 4, "FW", 'M', 1}}}};
        ASSERT_TRUE(saveMeasurement(stream.format, stream.parent, {}, {}, {4, 2, {}}, definition));
        const auto places = stream.places("A");
        EXPECT_EQ(places, edition >= 2009 ? (test::Places{{4, 2}, {4, 4}, {9, 2}, {9, 4}})
                                          : (test::Places{{4, 2},
                                                          {4, 4},
                                                          {4, 6},
                                                          {4, 8},
                                                          {9, 2},
                                                          {9, 4},
                                                          {9, 6},
                                                          {9, 8},
                                                          {14, 2},
                                                          {14, 4},
                                                          {14, 6},
                                                          {14, 8}}));
        ASSERT_TRUE(savePcmFormat(stream.format, stream.parent) && stream.reload());
        EXPECT_EQ(stream.places("A"), places) << edition;
    }
}

TEST(FrameEditRoundTrip, AFragmentHasOneMaskAtAllItsPositions) {
    LoadedSubframes stream;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "SFFR";
    definition.attributes.reconstructedLength = 16;
    definition.spots = {{0, "S", 1, "1111", "M", 1}, {0, "S", 3, "FW", "M", 1}};
    ASSERT_TRUE(stream.save({5, 1, {}}, definition));
    ASSERT_EQ(stream.ui.boxes.size(), 1U);
    EXPECT_EQ(stream.ui.boxes[0].id, 291);
    EXPECT_EQ(stream.ui.boxes[0].titleId, 89);
    const auto cell = stream.format.findInCell(5, 3, "A");
    EXPECT_EQ(stream.format.cells().measurement(cell).mask, "1111");
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_TRUE(stream.ui.logs.empty());
}

TEST(FrameEditRoundTrip, AWordOfAnOlderTypeTakesNoRangeOfSomeFrames) {
    LoadedSubframes stream;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "WDFR";
    definition.wordFrame.locations = {{16, {{3, 0, 3, 2, 2, 8, "FW", 'D', 1}}}};
    EXPECT_FALSE(stream.save({3, 2, {}}, definition));
    ASSERT_EQ(stream.ui.boxes.size(), 1U);
    EXPECT_EQ(stream.ui.boxes[0].id, 231);
    EXPECT_EQ(stream.format.wordType(3), WordType::Minor);
    EXPECT_FALSE(stream.format.changed);
    // The measurement itself goes from there.
    definition.attributes.name = "Old";
    ASSERT_TRUE(stream.save({3, 1, "Old"}, definition));
    ASSERT_TRUE(stream.saveAndReload());
    EXPECT_EQ(stream.places("Old"), (test::Places{{3, 2}, {3, 4}, {3, 6}, {3, 8}}));
}

TEST(FrameEditRoundTrip, AWordThatBecomesAHiddenSubframeKeepsWhatIsInEveryFrameOfIt) {
    LoadFixture stream(2011);
    ASSERT_TRUE(stream.load(plainFormat(16, 4) + counterAt(1, 4)));
    stream.format.setWord(7, WordType::Minor, -1, -1);
    ASSERT_TRUE(stream.format.allocateCells(stream.parent, 7));
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "WDFR";
    definition.wordFrame.locations = {{16, {{7, 0, 7, 1, 1, 4, "FW", 'D', 1}}},
                                      {16, {{9, 0, 9, 2, 0, 2, "FW", 'D', 1}}}};
    ASSERT_TRUE(saveMeasurement(stream.format, stream.parent, {}, {}, {7, 1, {}}, definition));
    EXPECT_EQ(stream.places("A"), (test::Places{{7, 1}, {9, 2}}));
    definition.attributes.name = "B";
    definition.wordFrame.locations = {{16, {{7, 0, 7, 3, 0, 3, "FW", 'D', 1}}}};
    ASSERT_TRUE(saveMeasurement(stream.format, stream.parent, {}, {}, {7, 3, {}}, definition));
    EXPECT_EQ(stream.places("A"), (test::Places{{7, 1}, {7, 2}, {7, 3}, {7, 4}, {9, 2}}));
    EXPECT_EQ(stream.places("B"), (test::Places{{7, 3}}));
}

}  // namespace
}  // namespace kavu
