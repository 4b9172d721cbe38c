#include "conversion/ConversionStore.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/FrameEditWords.h"

#include <algorithm>

namespace kavu {
namespace {

using test::StreamFixture;

const Measurement& measurementAt(const StreamFixture& f, int fwp, int index = 1) {
    return f.format.cells().measurement(f.format.cellAt(fwp, index));
}

TEST(FrameEditGenerate, EveryFreeWordOfOneFrameGetsItsNameAndASecondRunCreatesNothing) {
    StreamFixture f(2009, 6, 1);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 4));
    f.place(3, 1, "Mine");
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(generateDataWords(f.format, f.parent, {}), 3);
    EXPECT_EQ(nameAt(f, 1), "FWP0001_FN001");
    EXPECT_EQ(nameAt(f, 2), "FWP0002_FN001");
    EXPECT_EQ(nameAt(f, 3), "Mine");
    EXPECT_EQ(nameAt(f, 4), "") << "the counter's word";
    EXPECT_EQ(nameAt(f, 5), "FWP0005_FN001");
    EXPECT_EQ(measurementAt(f, 2).locationType, "MF");
    EXPECT_EQ(measurementAt(f, 2).mask, "FW");
    EXPECT_EQ(measurementAt(f, 2).parity, "DE");
    ASSERT_EQ(f.ui.boxes.size(), 2U);
    EXPECT_EQ(f.ui.boxes[0].id, -226);
    EXPECT_EQ(f.ui.boxes[0].title, "Generate Data Word Definitions");
    EXPECT_EQ(f.ui.boxes[1].id, -227);
    EXPECT_EQ(f.ui.boxes[1].text,
              "Operation complete\n3 new measurement definitions were created.");
    EXPECT_EQ(generateDataWords(f.format, f.parent, {}), 0);
    EXPECT_EQ(f.ui.boxes.back().text,
              "Operation complete\n0 new measurement definitions were created.");
    EXPECT_EQ(f.ui.statusTexts.at(1),
              "Creating measurements at Frame Word Position #2 (33% complete)");
}

TEST(FrameEditGenerate, ANoOrNoParentOrACancelOfTheDefaultsCreatesNothing) {
    StreamFixture f(2009, 6, 1);
    GenerateSteps steps;
    steps.changeDefaults = [](UserInterface*, DataWordDefaults& defaults) {
        defaults.parity = "Even";
        return false;
    };
    EXPECT_EQ(generateDataWords(f.format, f.parent, {}), std::nullopt);
    EXPECT_EQ(generateDataWords(f.format, nullptr, {}), std::nullopt);
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(generateDataWords(f.format, f.parent, steps), std::nullopt);
    EXPECT_FALSE(f.format.hasAnyMeasurement());
    EXPECT_FALSE(f.format.changed);
    EXPECT_EQ(f.settings.text("DMN1"), "");
}

TEST(FrameEditGenerate, TheDefaultsAreCutToTheirCodesAndKept) {
    StreamFixture f(2009, 3, 1);
    GenerateSteps steps;
    steps.changeDefaults = [](UserInterface*, DataWordDefaults& defaults) {
        EXPECT_EQ(defaults, (DataWordDefaults{"DE", "D", "D", "FW", "UNS", "NON"}));
        defaults = {"Even", "Leads Word", "MSB", "12", "twos", "Coefficients"};
        return true;
    };
    std::vector<std::string> conversions;
    steps.createConversion = [&](UserInterface*, std::string_view name,
                                 const DataWordDefaults& defaults) {
        conversions.push_back(std::string(name) + " " + defaults.binaryFormat + " " +
                              defaults.conversionType);
    };
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(generateDataWords(f.format, f.parent, steps), 2);
    EXPECT_EQ(f.ui.countBoxes(232), 1);
    EXPECT_EQ(f.ui.boxes.at(1).id, -232);
    EXPECT_EQ(measurementAt(f, 1).parity, "EV");
    EXPECT_EQ(measurementAt(f, 1).parityTransferOrder, "L");
    EXPECT_EQ(measurementAt(f, 1).transferOrder, "M");
    EXPECT_EQ(measurementAt(f, 1).mask, "FW");
    EXPECT_EQ(conversions,
              (std::vector<std::string>{"FWP0001_FN001 TWO COE", "FWP0002_FN001 TWO COE"}));
    EXPECT_EQ(readDataWordDefaults(f.format),
              (DataWordDefaults{"EV", "L", "M", "FW", "TWO", "COE"}));
    EXPECT_EQ(f.settings.text("DMask"), "FW");
    EXPECT_EQ(f.settings.text("DFragWDFR"), "");
}

TEST(FrameEditGenerate, SubframeWordsGetOneForEachFrameOfTheirDepth) {
    StreamFixture f(2009, 8, 8);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 7));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 2, .name = "S", .depth = 4}));
    EXPECT_EQ(createDataWords(f.format, nullptr, {}, readDataWordDefaults(f.format)), 5 + 4);
    EXPECT_EQ(nameAt(f, 2, 4), "FWP0002_FN004");
    EXPECT_EQ(measurementAt(f, 2, 4).locationType, "SF");
}

TEST(FrameEditGenerate, WithImplicitSubframesTheMeasurementsAreToldByWordAndFrame) {
    StreamFixture f(2011, 4, 4);
    f.format.implicitSubframes = true;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 3));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 2, .hidden = HiddenMode::Hidden}));
    f.settings.write("DFragWDFR", "1100");
    EXPECT_EQ(createDataWords(f.format, nullptr, {}, readDataWordDefaults(f.format)), 1 + 4);
    const auto& plain = *f.format.wordFrameDefinition(measurementAt(f, 1).wordFrameIndex);
    ASSERT_EQ(plain.locationCount(), 1);
    EXPECT_EQ(plain.locations[0].wordLength, 16);
    EXPECT_EQ(plain.locations[0].fragments,
              std::vector<WordFrameFragment>({{1, 0, 1, 1, 1, 4, "1100", 'D', 1}}));
    const auto& sub = *f.format.wordFrameDefinition(measurementAt(f, 2, 3).wordFrameIndex);
    EXPECT_EQ(sub.locations[0].fragments,
              std::vector<WordFrameFragment>({{2, 0, 2, 3, 0, 3, "1100", 'D', 1}}));
    EXPECT_EQ(measurementAt(f, 2, 3).locationType, "WDFR");
    EXPECT_TRUE(f.format.containsMeasurements(1));
}

TEST(FrameEditGenerate, PlacesOfAsyncFormatsArePassedOver) {
    StreamFixture f(2009, 4, 2);
    f.format.asyncFormats.resize(1);
    f.format.asyncFormats[0].locations = {{2, {{1, 1, 2}}}};
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 1, f.format.asyncFormats[0].locations[0], "FW"));
    EXPECT_EQ(createDataWords(f.format, nullptr, {}, readDataWordDefaults(f.format)), 2);
    EXPECT_EQ(nameAt(f, 2), "");
}

TEST(FrameEditGenerate, ACancelLeavesTheFrameAsItWas) {
    StreamFixture f(2011, 6, 1);
    f.format.implicitSubframes = true;
    f.ui.cancelAtPoll = 3;
    int conversions = 0;
    GenerateSteps steps;
    steps.createConversion = [&](UserInterface*, std::string_view, const DataWordDefaults&) {
        ++conversions;
    };
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(generateDataWords(f.format, f.parent, steps), std::nullopt);
    EXPECT_FALSE(f.format.hasAnyMeasurement());
    EXPECT_TRUE(f.format.wordFrameDefinitions.empty());
    EXPECT_EQ(conversions, 0);
    EXPECT_EQ(f.ui.countBoxes(227), 0);
    EXPECT_EQ(f.ui.progressOpened, 1);
    EXPECT_EQ(f.ui.progressClosed, 1);
    EXPECT_FALSE(f.format.changed);
}

// Whoever cancelled while the conversions were made got all of them, and all measurements.
TEST(FrameEditGenerate, ACancelAmongTheConversionsLeavesFrameAndConversionsAsTheyWere) {
    for (const int poll : {1, 6, 7, 9}) {  // 5 words, then 5 conversions
        StreamFixture f(2011, 6, 1);
        f.format.implicitSubframes = true;
        ConversionStore conversions(f.context);
        // One that was there before is not a new one.
        ASSERT_TRUE(conversions.createDefaultDefinition(nullptr, "FWP0002_FN001", false));
        f.format.changed = false;
        GenerateSteps steps;
        steps.conversions = &conversions;
        steps.createConversion = [&](UserInterface* parent, std::string_view name,
                                     const DataWordDefaults&) {
            EXPECT_TRUE(conversions.createDefaultDefinition(parent, std::string(name), false));
        };
        f.ui.cancelAtPoll = poll;
        f.ui.otherwise = Button::Yes;
        EXPECT_EQ(generateDataWords(f.format, f.parent, steps), std::nullopt) << poll;
        EXPECT_FALSE(f.format.hasAnyMeasurement()) << poll;
        EXPECT_TRUE(f.format.wordFrameDefinitions.empty()) << poll;
        EXPECT_FALSE(f.format.changed) << poll;
        EXPECT_EQ(f.ui.countBoxes(227), 0) << poll;
        EXPECT_TRUE(conversions.locateDefinition("FWP0002_FN001").found) << poll;
        for (const auto* const name : {"FWP0001_FN001", "FWP0003_FN001", "FWP0005_FN001"}) {
            EXPECT_FALSE(conversions.locateDefinition(name).found) << poll << name;
        }
    }
}

TEST(FrameEditGenerate, ANameOfAWordThatHasMovedIsNotGivenTwice) {
    StreamFixture f(2009, 4, 1);
    const auto defaults = readDataWordDefaults(f.format);
    ASSERT_EQ(createDataWords(f.format, nullptr, {}, defaults), 3);
    ASSERT_TRUE(insertFwps(f.format, nullptr, 0, 1));
    EXPECT_EQ(createDataWords(f.format, nullptr, {}, defaults), 1);
    EXPECT_EQ(nameAt(f, 1), "FWP0001_FN001_2");
    EXPECT_EQ(nameAt(f, 2), "FWP0001_FN001");
}

TEST(FrameEditGenerate, TheConversionsOfManyMeasurementsLetTheWindowsPaint) {
    StreamFixture f(2009, 5, 1);
    std::vector<std::string> made;
    GenerateSteps steps;
    steps.createConversion = [&](UserInterface*, std::string_view name, const DataWordDefaults&) {
        made.emplace_back(name);
    };
    EXPECT_EQ(createDataWords(f.format, f.parent, steps, readDataWordDefaults(f.format)), 4);
    ASSERT_EQ(made.size(), 4U);
    EXPECT_EQ(made.back(), "FWP0004_FN001");
    // Once a second, and at once when none was shown yet.
    EXPECT_EQ(std::count(f.ui.statusTexts.begin(), f.ui.statusTexts.end(),
                         "Creating data conversions (25% complete)"),
              1);
    EXPECT_EQ(f.ui.statusTexts.back(), "");
}

}  // namespace
}  // namespace kavu
