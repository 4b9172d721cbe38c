#include "pcm/FrameEditGenerate.h"
#include "pcm/LoadFixture.h"
#include "pcm/MeasurementEditDefinition.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
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

}  // namespace
}  // namespace kavu
