// What the display shows after edits that were cancelled or undone.
#include "app/pcm/DisplayStage.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/WordStage.h"
#include "conversion/ConversionStore.h"
#include "pcm/edit/FrameEditWords.h"

namespace kavu {
namespace {

using test::DisplayStage;
using test::press;

TEST(MajorFrameUndo, ARecordThatWasDeletedWithItsMeasurementComesBackAndGoesAgain) {
    DisplayStage s;
    ConversionStore conversions(s.context);
    ASSERT_TRUE(conversions.createDefaultDefinition(nullptr, "SPEED", false));
    ASSERT_TRUE(conversions.writeEuComment(nullptr, "SPEED", "Calibrated", false));
    const auto path = conversions.locateDefinition("SPEED").path;
    const auto before = test::readFile(path);
    s.steps.conversions = &conversions;
    s.steps.edit.deleteConversion = [&](UserInterface* parent, std::string_view name) {
        conversions.deleteDefinition(parent, std::string(name));
    };
    s.ui.otherwise = Button::Yes;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        window.deleteCell();
        EXPECT_FALSE(s.format.hasMeasurement("SPEED"));
        EXPECT_FALSE(test::readFile(path) == before);
        DisplayStage::choose(window, "undo");
        EXPECT_TRUE(s.format.hasMeasurement("SPEED"));
        EXPECT_TRUE(test::readFile(path) == before);
        EXPECT_EQ(conversions.readEuComment("SPEED", false), "Calibrated");
        DisplayStage::choose(window, "redo");
        EXPECT_FALSE(s.format.hasMeasurement("SPEED"));
        EXPECT_FALSE(conversions.locateDefinition("SPEED").found);
    }));
}

TEST(MajorFrameUndo, AnEditOfAConversionAloneIsALevel) {
    DisplayStage s;
    ConversionStore conversions(s.context);
    ASSERT_TRUE(conversions.createDefaultDefinition(nullptr, "SPEED", false));
    s.steps.conversions = &conversions;
    s.steps.editConversions = [&](QWidget&) {
        return conversions.writeEuComment(nullptr, "SPEED", "New", false);
    };
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::choose(window, "conversions");
        EXPECT_EQ(conversions.readEuComment("SPEED", false), "New");
        DisplayStage::choose(window, "undo");
        EXPECT_EQ(conversions.readEuComment("SPEED", false), "");
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
    });
}

TEST(MajorFrameUndo, AConversionThatWasStoredIsAnEditThoughItsMeasurementWasCancelled) {
    test::WordStage stage;
    stage.place(3, 1, "A");
    stage.steps.editConversion = [](QWidget&, const std::string&, int) { return true; };
    stage.door.next([](QDialog& dialog) {
        press(dialog, "editConversion");
        press(dialog, "cancel");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_FALSE(stage.format.changed);
}

// The display showed the moved measurement, and the file had it at the old words.
TEST(MajorFrameUndo, InsertedWordsTakeRangesAlongOrNothingIsChanged) {
    DisplayStage s;
    s.steps.insertFwps = [&](QWidget&, const SelectedWords& selected) {
        return insertFwps(s.format, &s.ui, selected);
    };
    s.placeFragments("RANGED", {{6, 2, 10, 1, 1, 16, "FW", 'D', 1}});
    s.format.changed = false;
    const auto startOf = [&](std::size_t location) {
        const auto& cell = s.format.cells().measurement(s.format.findInCell(6, 1, "RANGED"));
        const auto* const definition = s.format.wordFrameDefinition(cell.wordFrameIndex);
        return definition == nullptr || location >= definition->locations.size()
                   ? 0
                   : definition->locations[location].fragments.front().startWord;
    };
    s.show([&](MajorFrameWindow& window) {
        s.ui.integers = {8, 1};
        s.ui.queued = {Button::Cancel};
        DisplayStage::choose(window, "insertFwps");
        ASSERT_EQ(s.ui.boxes.size(), 1U);
        EXPECT_NE(s.ui.boxes[0].text.find("RANGED: elsewhere. Adjusted: 2 locations"),
                  std::string::npos)
            << s.ui.boxes[0].text;
        EXPECT_EQ(s.format.wordsPerMinorFrame, 32);
        EXPECT_FALSE(window.displayChanged());
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());

        s.ui.integers = {8, 1};
        s.ui.queued = {Button::Yes};
        DisplayStage::choose(window, "insertFwps");
        EXPECT_EQ(s.format.wordsPerMinorFrame, 33);
        EXPECT_TRUE(s.format.findInCell(11, 1, "RANGED"));
        EXPECT_EQ(startOf(1), 11);
        DisplayStage::choose(window, "undo");
        EXPECT_EQ(s.format.wordsPerMinorFrame, 32);
        EXPECT_EQ(startOf(0), 6);
        EXPECT_EQ(startOf(1), 0);
        DisplayStage::choose(window, "redo");
        EXPECT_EQ(startOf(1), 11);
    });
}

TEST(MajorFrameUndo, CancelOfANewSubframeOrCounterIsNoChange) {
    for (const int choice : {0, 1}) {
        DisplayStage s;
        installSheetSteps(s.steps, s.form, s.format);
        s.ui.otherwise = Button::Yes;
        s.ui.choices = {choice};
        EXPECT_FALSE(s.show([&](MajorFrameWindow& window) {
            s.door.next([](QDialog& form) { press(form, "cancel"); });
            window.editLabel(12);
            EXPECT_EQ(s.format.wordType(12), WordType::Minor);
            EXPECT_FALSE(window.displayChanged());
            EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
        })) << choice;
        EXPECT_FALSE(s.format.changed) << choice;
        EXPECT_EQ(s.ui.listPrompts.size(), 1U);
    }
}

TEST(MajorFrameUndo, OkOfANewCounterIsOneLevel) {
    DisplayStage s;
    installSheetSteps(s.steps, s.form, s.format);
    s.ui.otherwise = Button::Yes;
    s.ui.choices = {1};
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        s.door.next([](QDialog& form) { press(form, "ok"); });
        window.editLabel(12);
        EXPECT_EQ(s.format.wordType(12), WordType::IdCounter);
        DisplayStage::choose(window, "undo");
        EXPECT_EQ(s.format.wordType(12), WordType::Minor);
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
        DisplayStage::choose(window, "redo");
        EXPECT_EQ(s.format.wordType(12), WordType::IdCounter);
    }));
}

}  // namespace
}  // namespace kavu
