// The creation of a measurement: all of its places or none.
#include "MeasurementStage.h"

namespace kavu::test {
namespace {

class MeasurementCreationTest : public MeasurementStage {};

TEST_F(MeasurementCreationTest, OneLocationIsAMinorFrameMeasurementInItsOneCell) {
    load();
    expectOneLevel([&] { create(3, 5, "N"); });
    EXPECT_EQ(placesOf("N"), "3:1") << "any frame of a plain word means its one cell";
    EXPECT_EQ(at(3, 1, "N").locationType, "MF");
    EXPECT_EQ(at(3, 1, "N").locationCount, 0);
    create(15, 1, "C");
    EXPECT_EQ(at(15, 1, "C").locationType, "MF") << "in the word of a counter";
}

TEST_F(MeasurementCreationTest, MoreLocationsAreSupercommutatedByAnInterval) {
    load();
    expectOneLevel([&] { create(3, 1, "N", 3, 4); });
    EXPECT_EQ(placesOf("N"), "3:1 7:1 11:1");
    EXPECT_EQ(at(7, 1, "N").locationType, "MFSC");
    EXPECT_EQ(at(7, 1, "N").locationMode, "I");
    EXPECT_EQ(at(7, 1, "N").locationCount, 3);
    EXPECT_EQ(at(7, 1, "N").interval, 4);
}

TEST_F(MeasurementCreationTest, AFrameFoldsInASubframe) {
    auto file = documentWith({});
    file.replace(file.find("SF6-1-1:8"), 9, "SF6-1-1:4");
    load(file);
    create(10, 7, "N");
    EXPECT_EQ(placesOf("N"), "10:3");
    EXPECT_EQ(at(10, 3, "N").locationType, "SF");
    create(10, 5, "O", 2, 2);
    EXPECT_EQ(placesOf("O"), "10:1 10:3");
    EXPECT_EQ(at(10, 1, "O").locationType, "SFSC");
    EXPECT_EQ(at(10, 1, "O").locationMode, "I");
}

TEST_F(MeasurementCreationTest, OneLocationInASupercommutatedSubframeIsSF) {
    auto file = documentWith({});
    file.replace(file.find("SF2-1-1:NO;"), 11, "SF2-1-1:2;P-1\\SF3-1-1:FI;P-1\\SF5-1-1:2;");
    load(file);
    ASSERT_EQ(format().wordType(12), WordType::Subframe);
    create(10, 1, "N");
    EXPECT_EQ(at(10, 1, "N").locationType, "SF");
    create(10, 1, "O", 2, 1);
    EXPECT_EQ(at(10, 1, "O").locationType, "SFSC");
    EXPECT_EQ(placesOf("O"), "10:1 12:1") << "positions run through the words of a frame first";
}

TEST_F(MeasurementCreationTest, TheArgumentsAreMaskTransferOrderParityAndItsOrder) {
    load();
    measurements().CreateMeasurement(0, 3, 1, "N", "11110000", "l", "od", "t", 1, 0);
    const auto made = at(3, 1, "N");
    EXPECT_EQ(made.mask, "1111000000000000");
    EXPECT_EQ(made.transferOrder, "L");
    EXPECT_EQ(made.parity, "OD");
    EXPECT_EQ(made.parityTransferOrder, "T");
}

TEST_F(MeasurementCreationTest, EmptyValuesAreTheDefaultsOfTheSettings) {
    load();
    auto& settings = test.application.context().settings;
    settings.write("DMN1", "EV");
    settings.write("DMN2", "L");
    settings.write("DMN3", "M");
    settings.write("DMask", "0000000011111111");
    create(3, 1, "N");
    const auto made = at(3, 1, "N");
    EXPECT_EQ(made.parity, "EV");
    EXPECT_EQ(made.parityTransferOrder, "L");
    EXPECT_EQ(made.transferOrder, "M");
    EXPECT_EQ(made.mask, "0000000011111111");
}

TEST_F(MeasurementCreationTest, NumbersThatAreNoPlacesAreRefused) {
    load();
    const int most = std::numeric_limits<std::int32_t>::max();
    const int least = std::numeric_limits<std::int32_t>::min();
    for (const auto& [locations, interval] : std::vector<std::pair<int, int>>{
             {0, 1}, {-1, 1}, {least, 1}, {2, 0}, {2, -1}, {2, least}, {1, -1}}) {
        EXPECT_EQ(creation(3, 1, "N", locations, interval), "Refused 337") << locations;
    }
    EXPECT_EQ(creation(3, 1, "N", 2, most), "Refused 276");
    EXPECT_EQ(creation(3, 1, "N", most, 1), "Refused 276");
    EXPECT_EQ(creation(3, 1, "N", most, most), "Refused 276");
    EXPECT_EQ(creation(10, 1, "N", most, most), "Refused 270");
    EXPECT_EQ(creation(3, 1, "N", 1, 0), "none") << "no interval is needed for one location";
    EXPECT_EQ(creation(3, 1, "O", 1, most), "none");
}

TEST_F(MeasurementCreationTest, AWordBeyondTheFrameIsNamedBeforeAnythingIsPlaced) {
    load();
    EXPECT_EQ(creation(3, 1, "N", 4, 5), "Refused 276");
    EXPECT_THAT(text, ::testing::HasSubstr("Frame Word Position:18"));
    EXPECT_EQ(creation(3, 1, "N", 3, 5), "none") << "3, 8 and 13";
}

TEST_F(MeasurementCreationTest, APositionBeyondTheSubframeIsNamedBeforeAnythingIsPlaced) {
    load();
    EXPECT_EQ(creation(10, 3, "N", 3, 3), "Refused 270");
    EXPECT_THAT(text, ::testing::HasSubstr("only 8 word positions"));
    EXPECT_THAT(text, ::testing::HasSubstr("location #3"));
    EXPECT_EQ(creation(10, 2, "N", 3, 3), "none");
}

TEST_F(MeasurementCreationTest, ALocationThatIsNoMinorWordRefusesAllOfThem) {
    load();
    EXPECT_EQ(creation(4, 1, "N", 3, 3), "Refused 330") << "word 10 is of a subframe";
    EXPECT_EQ(creation(15, 1, "N", 2, 1), "Refused 276") << "beyond the frame";
    EXPECT_EQ(creation(13, 1, "N", 2, 2), "Refused 330") << "word 15 has the counter";
}

TEST_F(MeasurementCreationTest, ANameKeepsToTheRulesOfNames) {
    load();
    EXPECT_EQ(creation(3, 1, ""), "Refused 326");
    EXPECT_EQ(creation(3, 1, "a;b"), "Refused 402");
    EXPECT_EQ(creation(3, 1, "a"), "Refused 334") << "in any case";
    EXPECT_EQ(creation(3, 1, " b"), "BadValue");
    EXPECT_EQ(creation(3, 1, std::string(33, 'b')), "BadValue");
    EXPECT_EQ(creation(3, 1, "b\tc"), "BadValue");
}

TEST_F(MeasurementCreationTest, WrongValuesComeBeforeWhatTheModelRefuses) {
    load();
    const auto created = [&](int fwp, const std::string& name, const std::string& mask,
                             const std::string& order, const std::string& parity,
                             const std::string& parityOrder) {
        return errorOf([&] {
            measurements().CreateMeasurement(0, fwp, 1, name, mask, order, parity, parityOrder, 0,
                                             0);
        });
    };
    EXPECT_EQ(created(99, " ", "x", "x", "x", "x"), "OutOfRange");
    EXPECT_EQ(created(3, "", "x", "x", "x", "x"), "BadValue");
    EXPECT_EQ(created(3, "", "x", "M", "EV", "x"), "BadValue");
    EXPECT_EQ(created(3, "", "x", "M", "EV", "T"), "Refused 326");
    EXPECT_EQ(created(3, "A", "x", "M", "EV", "T"), "Refused 334");
    EXPECT_EQ(created(3, "N", "x", "M", "EV", "T"), "Refused 142");
    EXPECT_EQ(created(3, "N", "1", "M", "EV", "T"), "Refused 337");
}

TEST_F(MeasurementCreationTest, ARefusalIsShownAtAWindow) {
    load();
    reach(&windows);
    const auto created = [&](std::int64_t window, const std::string& name) {
        return errorOf(
            [&] { measurements().CreateMeasurement(window, 3, 1, name, "", "", "", "", 1, 0); });
    };
    EXPECT_EQ(created(kWindow, "A"), "Refused 334");
    EXPECT_EQ(created(kWindow, ""), "Refused 326");
    EXPECT_EQ(created(kWindow, "a;"), "Refused 402");
    EXPECT_EQ(created(0, "A"), "Refused 334");
    EXPECT_EQ(windows.ui.boxes.size(), 3U);
}

TEST_F(MeasurementCreationTest, NoConversionRecordIsMade) {
    load();
    create(3, 1, "N");
    EXPECT_FALSE(store().locateDefinition("N").found);
    EXPECT_FALSE(document().changed) << "the stream is not saved";
    EXPECT_TRUE(format().changed);
}

// --- ranges ----------------------------------------------------------------------------------

TEST_F(MeasurementCreationTest, From106_11OnAMinorWordIsInEveryFrame) {
    auto file = documentWith({}, "", "11");
    // Without a counter no word can have a hidden subframe.
    file.erase(file.find("P-1\\ISF\\N"), file.find("P-2\\DLN") - file.find("P-1\\ISF\\N"));
    load(file);
    ASSERT_EQ(format().wordType(2), WordType::Minor);
    expectOneLevel([&] { create(2, 1, "N"); });
    EXPECT_EQ(at(2, 1, "N").locationType, "WDFR");
    EXPECT_EQ(measurements().CountMeasurementOccurences("N"), 8);
    const auto* const definition = format().wordFrameDefinition(at(2, 1, "N").wordFrameIndex);
    ASSERT_NE(definition, nullptr);
    ASSERT_EQ(definition->locationCount(), 1);
    EXPECT_EQ(definition->mostFragments(), 1);
}

TEST_F(MeasurementCreationTest, RangesOfPlainWordsRunByWords) {
    auto file = documentWith({});
    // Without a subframe the stream of 106-09 uses ranges.
    file.erase(file.find("P-1\\SF\\N-1"), file.find("P-2\\DLN") - file.find("P-1\\SF\\N-1"));
    test.application.context().settings.write("WdFrCreation", "1");
    load(file);
    ASSERT_TRUE(format().implicitSubframes);
    expectOneLevel([&] { create(2, 4, "N", 3, 4); });
    EXPECT_EQ(placesOf("N"), "2:1 6:1 10:1");
    const auto* const definition = format().wordFrameDefinition(at(2, 1, "N").wordFrameIndex);
    ASSERT_NE(definition, nullptr);
    const auto& fragment = definition->locations.front().fragments.front();
    EXPECT_EQ(fragment.startWord, 2);
    EXPECT_EQ(fragment.wordInterval, 4);
    EXPECT_EQ(fragment.endWord, 10);
    EXPECT_EQ(fragment.startFrame, 1);
    EXPECT_EQ(fragment.frameInterval, 1);
    EXPECT_EQ(fragment.endFrame, 8);
    EXPECT_EQ(creation(2, 1, "O", 5, 4), "Refused 276");
    EXPECT_EQ(creation(2, 1, "O", 2, std::numeric_limits<std::int32_t>::max()), "Refused 276");
    test.application.context().settings.write("DFragWDFR", "1111");
    create(3, 1, "P");
    EXPECT_EQ(at(3, 1, "P").mask, "0000000000001111") << "the default of ranges";
}

TEST_F(MeasurementCreationTest, RangesOfAHiddenSubframeRunByFrames) {
    load(documentWith({}, "", "11"));
    ASSERT_EQ(format().wordType(2), WordType::Subframe);
    expectOneLevel([&] { create(2, 2, "N", 3, 3); });
    EXPECT_EQ(placesOf("N"), "2:2 2:5 2:8");
    const auto* const definition = format().wordFrameDefinition(at(2, 2, "N").wordFrameIndex);
    ASSERT_NE(definition, nullptr);
    const auto& fragment = definition->locations.front().fragments.front();
    EXPECT_EQ(fragment.startFrame, 2);
    EXPECT_EQ(fragment.frameInterval, 3);
    EXPECT_EQ(fragment.endFrame, 8);
    EXPECT_EQ(creation(2, 1, "O", 4, 3), "Refused 286");
    EXPECT_EQ(creation(2, 1, "O", 2, std::numeric_limits<std::int32_t>::max()), "Refused 286");
}

}  // namespace
}  // namespace kavu::test
