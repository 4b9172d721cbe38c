#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEditDefinition.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Words 1 to 31 in 8 frames; a counter in 30, a subframe S of depth 4 in 5, and T in 6 and 16.
struct DefinitionFixture : StreamFixture {
    explicit DefinitionFixture(int edition = 2009) : StreamFixture(edition) {
        EXPECT_TRUE(createIdCounter(format, nullptr, 30));
        EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
        EXPECT_TRUE(createSubframe(
            format, nullptr, {.fwp = 6, .name = "T", .depth = 4, .locations = 2, .interval = 10}));
    }
    /// "fwp/subframe/position/mask/number ..."
    [[nodiscard]] static std::string told(const std::vector<MeasurementSpot>& spots) {
        std::string text;
        for (const auto& spot : spots) {
            text += std::to_string(spot.fwp) + "/" + spot.subframe + "/" +
                    std::to_string(spot.position) + "/" + spot.mask + "/" +
                    std::to_string(spot.fragmentNumber) + " ";
        }
        return text;
    }
    bool save(const EditedPlace& place, const MeasurementDefinition& definition) {
        return saveMeasurement(format, parent, {}, {}, place, definition);
    }
    /// What is saved and opened again can be saved again and is the same.
    void comesBack(const WordToEdit& word) {
        const auto before = places(word.definition.attributes.name.str());
        ASSERT_TRUE(save(word.place, word.definition));
        EXPECT_EQ(places(word.definition.attributes.name.str()), before);
    }
    [[nodiscard]] std::string places(const std::string& name) const {
        std::string text;
        for (const auto& at : format.cells().places(name)) {
            text += std::to_string(at.word) + "/" + std::to_string(at.index) + " ";
        }
        return text;
    }
};

TEST(MeasurementEditDefinition, ANewMeasurementTakesTheSettings) {
    DefinitionFixture f;
    const auto plain = wordToEdit(f.format, f.parent, 3, 1, "");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->definition.attributes.parity, "DE");
    EXPECT_EQ(plain->definition.attributes.filterOverwrite, "N");
    EXPECT_EQ(plain->definition.attributes.mask, "FW");
    EXPECT_EQ(plain->definition.attributes.locationType, "MF");
    EXPECT_EQ(plain->place.oldName, "");
    f.settings.write("DMN1", "EV");
    f.settings.write("DMN2", "L");
    f.settings.write("DMN3", "M");
    f.settings.write("DMFOT", "F");
    f.settings.write("DMask", "1010");
    const auto set = wordToEdit(f.format, f.parent, 5, 2, "");
    ASSERT_TRUE(set);
    EXPECT_EQ(set->definition.attributes.parity, "EV");
    EXPECT_EQ(set->definition.attributes.parityTransferOrder, "L");
    EXPECT_EQ(set->definition.attributes.transferOrder, "M");
    EXPECT_EQ(set->definition.attributes.filterOverwrite, "F");
    EXPECT_EQ(set->definition.attributes.mask, "1010");
    EXPECT_EQ(set->definition.attributes.locationType, "SF");
    EXPECT_EQ(wordToEdit(f.format, f.parent, 6, 1, "")->definition.attributes.locationType, "SFSC");
    f.format.implicitSubframes = true;
    f.settings.write("DFragWDFR", "11");
    const auto ranges = wordToEdit(f.format, f.parent, 3, 1, "");
    EXPECT_EQ(ranges->definition.attributes.locationType, "WDFR");
    ASSERT_EQ(ranges->definition.wordFrame.locationCount(), 1);
    EXPECT_EQ(ranges->definition.wordFrame.locations[0].fragments[0].mask, "11");
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(MeasurementEditDefinition, WhatIsNotThereIsTold) {
    DefinitionFixture f;
    EXPECT_FALSE(wordToEdit(f.format, f.parent, 3, 1, "Gone"));
    EXPECT_TRUE(f.ui.hasBox(329));
    EXPECT_FALSE(wordToEdit(f.format, nullptr, 3, 1, "Gone"));
    EXPECT_FALSE(wordToEdit(f.format, f.parent, 0, 1, ""));
    f.format.setWord(9, WordType::Subframe, 0, 7);
    EXPECT_FALSE(wordToEdit(f.format, f.parent, 9, 1, ""));
    EXPECT_TRUE(f.ui.hasBox(323));
}

TEST(MeasurementEditDefinition, TheListIsFilledFromTheMeasurementElseFromThePlace) {
    DefinitionFixture f;
    for (const int fwp : {17, 7, 27}) {
        f.place(fwp, 1, "A", "MFSC");
    }
    f.place(6, 2, "B", "SFSC");
    f.place(16, 3, "B", "SFSC");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {17, 1, "A"}, "MFSC")),
              "7//0/FW/0 17//0/FW/0 27//0/FW/0 ");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {6, 2, "B"}, "SFSC")),
              "6/T/3/FW/0 16/T/6/FW/0 ");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {3, 1, {}}, "MFSC")), "3//0//0 ");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {5, 7, {}}, "SFSC")), "5/S/3//0 ");
    f.settings.write("DFragM", "1100");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {3, 1, {}}, "MFFR")), "3//0/1100/1 ");
    EXPECT_EQ(DefinitionFixture::told(spotsOf(f.format, {3, 1, {}}, "MF")), "");
}

TEST(MeasurementEditDefinition, FragmentsKeepTheirNumbersMasksAndOrder) {
    DefinitionFixture f;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "MFFR";
    definition.attributes.reconstructedLength = 24;
    definition.attributes.locationMode = "E";
    definition.spots = {{9, "", 0, "1111111100000000", "L", 2}, {8, "", 0, "FW", "M", 1}};
    ASSERT_TRUE(f.save({8, 1, {}}, definition));
    const auto word = wordToEdit(f.format, f.parent, 8, 1, "a");
    ASSERT_TRUE(word);
    EXPECT_EQ(word->place.oldName, "A");
    EXPECT_EQ(DefinitionFixture::told(word->definition.spots),
              "8//0/FW/1 9//0/1111111100000000/2 ");
    EXPECT_EQ(word->definition.spots[1].transferOrder, "L");
    EXPECT_EQ(word->definition.attributes.reconstructedLength, 24);
    f.comesBack(*word);
}

TEST(MeasurementEditDefinition, AnIntervalBeginsAtItsFirstPlaceWhereverItIsOpened) {
    DefinitionFixture f;
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.mask = "FW";
    definition.attributes.locationType = "MFSC";
    definition.attributes.locationMode = "I";
    definition.attributes.locationCount = 3;
    definition.attributes.interval = 10;
    ASSERT_TRUE(f.save({7, 1, {}}, definition));
    const auto word = wordToEdit(f.format, f.parent, 27, 4, "A");
    ASSERT_TRUE(word);
    const auto start = startOf(f.format, word->place, "MFSC");
    EXPECT_EQ(start.fwp, 7);
    EXPECT_EQ(start.oldName, "A");
    f.comesBack({start, word->definition});
    // Another type begins where the user is.
    EXPECT_EQ(startOf(f.format, word->place, "MFFR").fwp, 27);
    EXPECT_EQ(startOf(f.format, {3, 1, {}}, "MFSC").fwp, 3);
}

TEST(MeasurementEditDefinition, AnotherMeasurementsNameIsTakenOverOnlyAtItsOwnLocations) {
    DefinitionFixture f;
    f.place(7, 1, "B", "MF");
    MeasurementDefinition definition;
    definition.attributes.name = "B";
    definition.attributes.mask = "FW";
    definition.attributes.locationType = "MFSC";
    definition.attributes.locationMode = "I";
    definition.attributes.locationCount = 3;
    definition.attributes.interval = 2;
    EXPECT_TRUE(isOwnLocation(f.format, {3, 1, {}}, definition, 7, 1));
    EXPECT_FALSE(isOwnLocation(f.format, {3, 1, {}}, definition, 5, 1));  // not found there
    EXPECT_FALSE(isOwnLocation(f.format, {2, 1, {}}, definition, 7, 1));
    EXPECT_FALSE(isOwnLocation(f.format, {1, 1, {}}, definition, 7, 1));  // one too far
    definition.attributes.locationMode = "E";
    definition.spots = {{3, "", 0, "", "", 0}, {7, "", 0, "", "", 0}};
    EXPECT_TRUE(isOwnLocation(f.format, {3, 1, {}}, definition, 7, 1));
    definition.spots.pop_back();
    EXPECT_FALSE(isOwnLocation(f.format, {3, 1, {}}, definition, 7, 1));
    EXPECT_FALSE(f.save({3, 1, {}}, definition));
    EXPECT_TRUE(f.ui.hasBox(334));
    definition.spots = {{3, "", 0, "", "", 0}, {7, "", 0, "", "", 0}};
    EXPECT_TRUE(f.save({3, 1, {}}, definition));
    EXPECT_EQ(f.places("B"), "3/1 7/1 ");
    // The same in a subframe, by positions.
    f.place(6, 2, "P", "SF");
    definition.attributes.name = "P";
    definition.attributes.locationType = "SFSC";
    definition.spots = {{0, "", 3, "", "", 0}, {0, "", 5, "", "", 0}};
    EXPECT_TRUE(isOwnLocation(f.format, {6, 1, {}}, definition, 6, 2));
    EXPECT_TRUE(f.save({6, 1, {}}, definition));
    EXPECT_EQ(f.places("P"), "6/2 6/3 ");
}

TEST(MeasurementEditDefinition, RangesTakeAllPlacesOfAnOlderTypeAlong) {
    test::StreamFixture f;
    for (const int fwp : {3, 7, 12}) {
        Measurement cell;
        cell.name = "SPEED";
        cell.locationType = "MFSC";
        cell.locationMode = "E";
        cell.locationCount = 3;
        cell.mask = "FW";
        f.place(fwp, 1, cell);
    }
    const EditedPlace place{7, 1, "SPEED"};
    EXPECT_TRUE(checkRangesPossible(f.format, f.parent, place));
    const auto ranges = rangesOf(f.format, place);
    std::vector<int> words;
    for (const auto& location : ranges.locations) {
        for (const auto& fragment : location.fragments) {
            for (const auto& [fwp, fn] : coveredPlaces(f.format, fragment)) {
                if (fn == 1) {
                    words.push_back(fwp);
                }
            }
        }
    }
    EXPECT_EQ(words, (std::vector<int>{3, 7, 12}));
    EXPECT_TRUE(f.ui.boxes.empty());
}

// Its fragments would be lost one after the other.
TEST(MeasurementEditDefinition, ATypeThatRangesCannotStateIsRefused) {
    test::StreamFixture f;
    for (const int number : {1, 3}) {
        Measurement cell;
        cell.name = "WIDE";
        cell.locationType = "SFFR";
        cell.fragmentNumber = number;
        cell.mask = "FW";
        f.place(3 + number, 1, cell);
    }
    EXPECT_FALSE(checkRangesPossible(f.format, f.parent, {4, 1, "WIDE"}));
    EXPECT_EQ(f.ui.countBoxes(460), 1);
    EXPECT_TRUE(checkRangesPossible(f.format, f.parent, {4, 1, ""}));
}

}  // namespace
}  // namespace kavu
