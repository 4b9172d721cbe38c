#include "groups/MeasurementNames.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEdit.h"

namespace kavu {
namespace {

using test::StreamFixture;

AsyncFormat asyncFormat(const std::string& name) {
    AsyncFormat format;
    format.dataLinkName = name;
    format.supercom = "NO";
    format.locationMode = "NA";
    return format;
}

/// A stream with an async format in word 7.
void addAsync(StreamFixture& f, const std::string& name, int fwp) {
    f.format.asyncFormats.push_back(asyncFormat(name));
    AsyncLocation location;
    location.fwp = fwp;
    location.frames = {{1, 1, f.format.numberOfFrames}};
    f.format.asyncFormats.back().locations = {location};
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, f.format.asyncCount(), location, "FW"));
}

TEST(MeasurementEdit, TheDefaultLocationTypeFollowsTheWord) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .name = "S"}));
    ASSERT_TRUE(
        createSubframe(f.format, nullptr, {.fwp = 6, .name = "T", .locations = 2, .interval = 10}));
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 1), "MF");
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 30), "MF");
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 5), "SF");
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 16), "SFSC");
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 0), std::nullopt);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(MeasurementEdit, ASubframeWordWithoutARecordHasNoLocationType) {
    StreamFixture f;
    f.format.setWord(5, WordType::Subframe, 0, 0);
    EXPECT_EQ(defaultLocationType(f.format, f.parent, 5), std::nullopt);
    EXPECT_EQ(f.ui.countBoxes(323), 1);
    EXPECT_EQ(defaultLocationType(f.format, nullptr, 5), std::nullopt);
}

TEST(MeasurementEdit, TheNameCheckIsFalseForAFreeName) {
    StreamFixture f;
    f.place(4, 1, "Used");
    EXPECT_FALSE(checkMeasurementName(f.format, f.parent, "Free"));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(checkMeasurementName(f.format, f.parent, "uSED"));
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_EQ(f.ui.boxes[0].id, 334);
    EXPECT_EQ(f.ui.boxes[0].text,
              "This measurement name already in use at Frame Word Position: 4 Frame Number: 1\n\n"
              "Please select another name.");
    EXPECT_TRUE(checkMeasurementName(f.format, nullptr, "Used"));
}

TEST(MeasurementEdit, TaggedNamesCountFrom106_11On) {
    for (const int edition : {2009, 2011}) {
        StreamFixture f(edition);
        f.format.dGroup = 3;
        f.write("[kavu]DTAG0000.D03", "D-3\\MN-1-1:Tagged;\r\nD-3\\TD1-1-1:Other;\r\n");
        EXPECT_EQ(checkMeasurementName(f.format, f.parent, "TAGGED"), edition == 2011);
        EXPECT_EQ(f.ui.countBoxes(339), edition == 2011 ? 1 : 0);
        EXPECT_FALSE(checkMeasurementName(f.format, f.parent, "Other"));
    }
}

TEST(MeasurementEdit, ClearingEmptiesTheCellsAndLeavesThemInTheirLists) {
    StreamFixture f;
    f.place(4, 1, "A");
    const auto chained = f.place(4, 1, "B");
    f.place(9, 1, "b");
    clearMeasurement(f.format, "B");
    EXPECT_FALSE(f.format.hasMeasurement("B"));
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.cells().isFree(chained));
    EXPECT_EQ(f.format.next(f.format.cellAt(4, 1)), chained);
}

TEST(MeasurementEdit, DeletingAsksAndTakesTheConversionAlong) {
    StreamFixture f;
    std::vector<std::string> deleted;
    EditSteps steps;
    steps.deleteConversion = [&](UserInterface*, std::string_view name) {
        deleted.emplace_back(name);
    };
    f.place(4, 1, "A");
    f.place(9, 1, "A");
    EXPECT_FALSE(deleteMeasurement(f.format, f.parent, steps, "A"));
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(deleted.empty());
    EXPECT_EQ(f.ui.boxes.at(0).titleId, title::kDeleteEntry);
    EXPECT_FALSE(f.format.changed);
    f.ui.byId[117] = Button::Yes;
    EXPECT_TRUE(deleteMeasurement(f.format, f.parent, steps, "A"));
    EXPECT_FALSE(f.format.hasAnyMeasurement());
    EXPECT_EQ(deleted, std::vector<std::string>{"A"});
    EXPECT_TRUE(f.format.changed);
    EXPECT_FALSE(deleteMeasurement(f.format, f.parent, steps, "A"));
    EXPECT_EQ(f.ui.countBoxes(117), 2);
}

TEST(MeasurementEdit, WithoutAWindowNothingIsAsked) {
    StreamFixture f;
    f.place(4, 1, "A");
    EXPECT_TRUE(deleteMeasurement(f.format, nullptr, {}, "a"));
    EXPECT_FALSE(f.format.hasAnyMeasurement());
}

TEST(MeasurementEdit, TheConversionStaysIfAnotherStreamNeedsIt) {
    for (const auto reply : {Button::No, Button::Yes}) {
        StreamFixture f;
        f.write("[kavu]MULT.M01", "M-1\\BB\\DLN:One;\r\n");
        f.write("[kavu]MULT.M02", "M-2\\BB\\DLN:Two;\r\n");
        f.write("[kavu]PCMMEAS.D02", "D-2\\DLN:Two;\r\nD-2\\MN-1-1:A;\r\n");
        f.format.streamName = "One";
        MeasurementNames names(f.context);
        ASSERT_TRUE(names.checkForDuplicates(nullptr));
        ASSERT_TRUE(names.checking());
        int deleted = 0;
        EditSteps steps;
        steps.names = &names;
        steps.deleteConversion = [&](UserInterface*, std::string_view) { ++deleted; };
        f.place(4, 1, "A");
        f.ui.byId = {{117, Button::Yes}, {457, reply}};
        EXPECT_TRUE(deleteMeasurement(f.format, f.parent, steps, "A"));
        EXPECT_EQ(f.ui.countBoxes(457), 1);
        EXPECT_EQ(deleted, reply == Button::Yes ? 1 : 0);
        EXPECT_FALSE(f.format.hasMeasurement("A"));
        EXPECT_FALSE(names.otherStream("A", 1)) << "the name is forgotten";
    }
}

TEST(MeasurementEdit, HiddenSubframesThatHoldNothingGoWithTheMeasurement) {
    StreamFixture f(2011);
    f.format.implicitSubframes = true;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    for (const int fwp : {5, 6}) {
        ASSERT_TRUE(createSubframe(f.format, nullptr,
                                   {.fwp = fwp, .hidden = HiddenMode::Hidden, .depth = 8}));
        f.place(fwp, 3, "A", "WDFR");
    }
    f.place(6, 2, "B", "WDFR");
    EXPECT_TRUE(deleteMeasurement(f.format, nullptr, {}, "A"));
    EXPECT_EQ(f.format.wordType(5), WordType::Minor);
    EXPECT_EQ(f.format.wordType(6), WordType::Subframe);
    EXPECT_TRUE(f.format.hasMeasurement("B"));
}

TEST(MeasurementEdit, ClearingAWordTakesItsMeasurementsAndAsyncFormatsFromTheWholeFrame) {
    StreamFixture f;
    addAsync(f, "First", 3);
    addAsync(f, "Second", 7);
    f.place(7, 1, "A");
    f.place(9, 1, "A");
    f.place(9, 1, "B");
    clearWord(f.format, f.parent, {}, 7);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.hasMeasurement("B"));
    ASSERT_EQ(f.format.asyncCount(), 1);
    EXPECT_EQ(f.format.asyncFormats[0].dataLinkName, "First");
    EXPECT_FALSE(holdsAnything(f.format, 7));
    EXPECT_TRUE(isAsyncAt(f.format, 3, 1, 1));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(f.format.changed);
}

}  // namespace
}  // namespace kavu
