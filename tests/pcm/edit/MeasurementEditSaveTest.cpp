#include "groups/MeasurementNames.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEditSave.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Words 1 to 31 in 8 frames; a counter in 30, a subframe S of depth 4 in 5, and T in 6 and 16.
struct SaveFixture : StreamFixture {
    SaveFixture() {
        EXPECT_TRUE(createIdCounter(format, nullptr, 30));
        EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
        EXPECT_TRUE(createSubframe(
            format, nullptr, {.fwp = 6, .name = "T", .depth = 4, .locations = 2, .interval = 10}));
        format.changed = false;
    }
    static MeasurementDefinition define(const std::string& name, const std::string& type) {
        MeasurementDefinition definition;
        definition.attributes.name = name;
        definition.attributes.locationType = type;
        definition.attributes.mask = "FW";
        return definition;
    }
    static MeasurementDefinition interval(const std::string& type, int count, int step) {
        auto definition = define("A", type);
        definition.attributes.locationMode = "I";
        definition.attributes.locationCount = count;
        definition.attributes.interval = step;
        return definition;
    }
    bool save(const EditedPlace& place, const MeasurementDefinition& definition) {
        return saveMeasurement(format, parent, edit, saving, place, definition);
    }
    /// "fwp/index fwp/index" of a name.
    [[nodiscard]] std::string places(const std::string& name) const {
        std::string text;
        for (const auto& at : format.cells().places(name)) {
            text += std::to_string(at.word) + "/" + std::to_string(at.index) + " ";
        }
        return text;
    }
    const Measurement& at(int fwp, int fn, const std::string& name) const {
        return format.cells().measurement(format.findInCell(fwp, fn, name));
    }
    void refuses(const EditedPlace& place, const MeasurementDefinition& definition, int message) {
        ui.boxes.clear();
        const auto before = places("Old") + places("A");
        EXPECT_FALSE(save(place, definition)) << message;
        ASSERT_EQ(ui.boxes.size(), 1U) << message;
        EXPECT_EQ(ui.boxes[0].id, message);
        EXPECT_EQ(places("Old") + places("A"), before);
        EXPECT_FALSE(format.changed);
        EXPECT_FALSE(saveMeasurement(format, nullptr, edit, saving, place, definition));
    }

    EditSteps edit;
    SaveSteps saving;
};

TEST(MeasurementEditSave, WhatIsMissingIsAskedForInOrder) {
    SaveFixture f;
    f.refuses({1, 1, {}}, SaveFixture::define("", ""), 326);
    f.refuses({1, 1, {}}, SaveFixture::define("A", ""), 327);
    f.refuses({1, 1, {}}, SaveFixture::define("A", "MFSC"), 328);
    f.refuses({5, 1, {}}, SaveFixture::define("A", "SFFR"), 328);
    f.refuses({5, 1, {}}, SaveFixture::define("A", "MF"), 327);
    f.refuses({1, 1, {}}, SaveFixture::define("A", "SF"), 327);
    auto fragments = SaveFixture::interval("MFFR", 0, 0);
    f.refuses({1, 1, {}}, fragments, 336);
    fragments.attributes.reconstructedLength = 32;
    f.refuses({1, 1, {}}, fragments, 337);
    f.refuses({1, 1, {}}, SaveFixture::interval("MFSC", 0, 1), 337);
    f.refuses({1, 1, {}}, SaveFixture::interval("MFSC", 2, 0), 337);
}

TEST(MeasurementEditSave, ALocationMustBeAPlainWordAndMustExist) {
    SaveFixture f;
    f.place(3, 1, "Old");
    f.refuses({3, 1, "Old"}, SaveFixture::interval("MFSC", 2, 2), 330);
    EXPECT_NE(f.ui.boxes[0].text.find("position 5 is NOT"), std::string::npos);
    f.refuses({25, 1, {}}, SaveFixture::interval("MFSC", 2000000000, 2000000000), 330);
    f.refuses({5, 1, {}}, SaveFixture::interval("SFSC", 5, 1), 331);
    auto list = SaveFixture::define("A", "SFSC");
    list.attributes.locationMode = "E";
    list.spots.resize(1);
    list.spots[0].position = 5;
    f.refuses({5, 1, {}}, list, 331);
    f.format.setWord(9, WordType::Subframe, 0, 7);
    f.refuses({9, 1, {}}, SaveFixture::define("A", "SF"), 323);
}

TEST(MeasurementEditSave, ANameInUseIsRefusedButNotTheOwnOne) {
    SaveFixture f;
    f.place(3, 1, "Old");
    f.refuses({1, 1, {}}, SaveFixture::define("oLD", "MF"), 334);
    EXPECT_TRUE(f.save({3, 1, "Old"}, SaveFixture::define("OLD", "MF")));
    EXPECT_EQ(f.at(3, 1, "Old").name, "OLD");
    EXPECT_EQ(f.places("old"), "3/1 ");
}

TEST(MeasurementEditSave, ANameOfAnotherStreamIsRefusedWhileThatIsChecked) {
    SaveFixture f;
    f.write("[kavu]MULT.M01", "M-1\\BB\\DLN:One;\r\n");
    f.write("[kavu]MULT.M02", "M-2\\BB\\DLN:Two;\r\n");
    f.write("[kavu]PCMMEAS.D02", "D-2\\DLN:Two;\r\nD-2\\MN-1-1:A;\r\n");
    f.format.streamName = "One";
    MeasurementNames names(f.context);
    ASSERT_TRUE(names.checkForDuplicates(nullptr));
    f.edit.names = &names;
    f.refuses({1, 1, {}}, SaveFixture::define("A", "MF"), 455);
}

TEST(MeasurementEditSave, SupercommutatedWordsReplaceTheOldPlaces) {
    SaveFixture f;
    f.place(3, 1, "A");
    ASSERT_TRUE(f.save({7, 1, "A"}, SaveFixture::interval("MFSC", 3, 10)));
    EXPECT_EQ(f.places("A"), "7/1 17/1 27/1 ");
    EXPECT_EQ(f.at(17, 1, "A").interval, 10);
    EXPECT_EQ(f.at(17, 1, "A").locationCount, 3);
    EXPECT_TRUE(f.format.changed);
    auto list = SaveFixture::define("A", "MFSC");
    list.attributes.locationMode = "E";
    list.spots.resize(3);
    list.spots[0].fwp = 9;
    list.spots[1].fwp = 2;
    list.spots[1].mask = "1100";
    list.spots[2].fwp = 9;
    ASSERT_TRUE(f.save({7, 1, "A"}, list));
    EXPECT_EQ(f.places("A"), "2/1 9/1 ") << "a place that is listed twice counts once";
    EXPECT_EQ(f.at(9, 1, "A").locationCount, 2);
    EXPECT_EQ(f.at(2, 1, "A").mask, "1100");
}

TEST(MeasurementEditSave, ASupercommutatedSubframeRunsOverItsPositions) {
    SaveFixture f;
    ASSERT_TRUE(f.save({5, 2, {}}, SaveFixture::interval("SFSC", 2, 2)));
    EXPECT_EQ(f.places("A"), "5/2 5/4 ");
    ASSERT_TRUE(f.save({6, 1, "A"}, SaveFixture::interval("SFSC", 3, 1)));
    EXPECT_EQ(f.places("A"), "6/1 6/2 16/1 ");
}

TEST(MeasurementEditSave, FragmentsOfAWordStandInOneFrame) {
    SaveFixture f;
    auto fragments = SaveFixture::define("A", "SFFR");
    fragments.attributes.reconstructedLength = 32;
    fragments.spots.resize(2);
    for (int i = 0; i < 2; ++i) {
        auto& spot = fragments.spots[static_cast<std::size_t>(i)];
        spot.subframe = "S";
        spot.position = i + 1;
        spot.fragmentNumber = i + 1;
        spot.transferOrder = "M";
    }
    f.refuses({5, 1, {}}, fragments, 335);
    fragments.spots[1].position = 1;
    ASSERT_TRUE(f.save({5, 1, {}}, fragments));
    EXPECT_EQ(f.places("A"), "5/1 5/1 ");
    EXPECT_EQ(f.at(5, 1, "A").fragmentTransferOrder, "M");
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 2);
}

TEST(MeasurementEditSave, MinorFrameFragmentsAreNumberedAlongTheInterval) {
    SaveFixture f;
    auto fragments = SaveFixture::interval("MFFR", 2, 1);
    fragments.attributes.reconstructedLength = 32;
    ASSERT_TRUE(f.save({1, 1, {}}, fragments));
    EXPECT_EQ(f.places("A"), "1/1 2/1 ");
    EXPECT_EQ(f.at(2, 1, "A").fragmentNumber, 2);
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 8);
}

TEST(MeasurementEditSave, ANewNameGoesToTheConversionAndAChangeToTheDatabase) {
    SaveFixture f;
    std::vector<std::string> told;
    f.saving.renameConversion = [&](UserInterface*, std::string_view from, std::string_view to) {
        told.push_back(std::string(from) + ">" + std::string(to));
    };
    f.saving.storeInDatabase = [&](UserInterface*, std::string_view name) {
        told.push_back("db " + std::string(name));
    };
    f.place(3, 1, "Old");
    ASSERT_TRUE(f.save({3, 1, "Old"}, SaveFixture::define("New", "MF")));
    f.settings.writeInteger("SaveMDB", 1);
    ASSERT_TRUE(f.save({3, 1, "New"}, SaveFixture::define("New", "MF")));
    EXPECT_EQ(told, (std::vector<std::string>{"Old>New", "db New"}));
    EXPECT_EQ(f.places("Old"), "");
}

TEST(MeasurementEditSave, TheListOfLocationTypesFollowsWordAndEdition) {
    SaveFixture f;
    EXPECT_EQ(locationTypes(f.format, 5).at(1), "SFSC  - Sub Frame Supercommutated");
    EXPECT_EQ(locationTypes(f.format, 1).back(), "WDFR  - Word/Frame");
    EXPECT_EQ(locationTypes(f.format, 30).size(), 2U);
    f.document.version = 2001;
    EXPECT_EQ(locationTypes(f.format, 30), std::vector<std::string>{"MF    - Minor Frame"});
    f.document.version = 2007;
    f.format.implicitSubframes = true;
    EXPECT_EQ(locationTypes(f.format, 1), std::vector<std::string>{"WDFR  - Word/Frame"});
    f.document.version = 2011;
    EXPECT_TRUE(locationTypes(f.format, 1).empty());
}

TEST(MeasurementEditSave, WordFrameIsRefusedAtASupercommutatedSubframe) {
    SaveFixture f;
    EXPECT_TRUE(checkWordFrameAllowed(f.format, f.parent, 1));
    EXPECT_TRUE(checkWordFrameAllowed(f.format, f.parent, 5));
    EXPECT_FALSE(checkWordFrameAllowed(f.format, f.parent, 16));
    EXPECT_EQ(f.ui.countBoxes(338), 1);
}

TEST(MeasurementEditSave, AMeasurementMovesToAWordOrAFrameOfAnOrdinarySubframe) {
    SaveFixture f;
    f.place(3, 1, "A");
    const auto targets = moveTargets(f.format);
    ASSERT_EQ(targets.size(), 31U - 4 + 4);
    EXPECT_EQ(targets[0].text, "Word #1 (every frame)\n");
    EXPECT_EQ(targets[5].text, "Word #5 Frame #2\n");
    f.ui.choices = {5};
    const auto values = f.at(3, 1, "A");
    ASSERT_TRUE(moveMeasurement(f.format, f.parent, values));
    EXPECT_EQ(f.ui.listPrompts.at(0).first, "Move This Measurement To:");
    EXPECT_EQ(f.places("A"), "5/2 ");
    EXPECT_EQ(f.at(5, 2, "A").locationType, "SF");
    EXPECT_TRUE(moveMeasurement(f.format, f.at(5, 2, "A"), {9, 0, {}}));
    EXPECT_EQ(f.at(9, 1, "A").locationType, "MF");
    EXPECT_FALSE(moveMeasurement(f.format, f.at(9, 1, "A"), {30, 0, {}}));
    EXPECT_FALSE(moveMeasurement(f.format, f.at(9, 1, "A"), {16, 9, {}}));
    EXPECT_FALSE(moveMeasurement(f.format, f.parent, f.at(9, 1, "A"))) << "a Cancel";
    EXPECT_FALSE(moveMeasurement(f.format, nullptr, f.at(9, 1, "A")));
    EXPECT_EQ(f.places("A"), "9/1 ");
}

TEST(MeasurementEditSave, AMoveLeavesNothingOfTheOldTypeBehind) {
    SaveFixture f;
    ASSERT_TRUE(f.save({7, 1, {}}, SaveFixture::interval("MFSC", 3, 10)));
    auto values = f.at(7, 1, "A");
    values.locationType = "MF";  // as chosen in the dialog, and not stored
    ASSERT_TRUE(moveMeasurement(f.format, values, {9, 0, {}}));
    EXPECT_EQ(f.places("A"), "9/1 ");
    EXPECT_EQ(f.at(9, 1, "A").locationMode, "");
    EXPECT_EQ(f.at(9, 1, "A").locationCount, 0);
    EXPECT_EQ(f.at(9, 1, "A").interval, 0);
    f.placeInEveryFrame(12, "B");
    values = f.at(12, 1, "B");
    const int entry = values.wordFrameIndex;
    values.locationType = "MF";
    values.fragmentNumber = 2;
    ASSERT_TRUE(moveMeasurement(f.format, values, {5, 2, {}}));
    EXPECT_EQ(f.at(5, 2, "B").locationType, "SF");
    EXPECT_EQ(f.at(5, 2, "B").wordFrameIndex, 0);
    EXPECT_EQ(f.at(5, 2, "B").fragmentNumber, 0);
    EXPECT_EQ(f.format.wordFrameDefinition(entry)->locationCount(), 0);
}

TEST(MeasurementRename, ChangesEveryPlaceAndThenTheRecord) {
    SaveFixture f;
    ASSERT_TRUE(f.save({5, 1, ""}, SaveFixture::interval("SFSC", 2, 2)));
    std::string told;
    f.saving.renameConversion = [&](UserInterface*, std::string_view from, std::string_view to) {
        told = std::string(from) + " " + std::string(to);
    };
    const auto before = f.places("A");
    const auto rename = [&](std::string_view from, std::string_view to) {
        return renameMeasurement(f.format, f.parent, f.edit, f.saving, from, to);
    };
    f.format.changed = false;
    EXPECT_TRUE(rename("A", "A"));
    EXPECT_FALSE(f.format.changed) << "its own name is no change";
    EXPECT_FALSE(rename("X", "Y"));
    EXPECT_TRUE(rename("a", "B"));
    EXPECT_EQ(f.places("B"), before);
    EXPECT_EQ(f.places("A"), "");
    EXPECT_EQ(told, "a B");
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(rename("B", "b")) << "the same name in another case";
    ASSERT_TRUE(f.save({7, 1, ""}, SaveFixture::define("C", "MF")));
    EXPECT_FALSE(rename("b", "c"));
    EXPECT_EQ(f.ui.boxes.back().id, 334);
}

}  // namespace
}  // namespace kavu
