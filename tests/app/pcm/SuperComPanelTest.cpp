#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"

namespace kavu {
namespace {

using test::choose;
using test::find;
using test::listText;
using test::press;
using test::textOf;
using test::type;
using test::WordStage;

MeasurementDefinition supercom(const std::string& type, int count, int interval) {
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.mask = "FW";
    definition.attributes.locationType = type;
    definition.attributes.locationMode = "I";
    definition.attributes.locationCount = count;
    definition.attributes.interval = interval;
    return definition;
}

TEST(SuperComPanelTest, FirstWordAndIntervalPlacesTheMeasurement) {
    WordStage stage;
    stage.door.next([](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        auto* panel = find<QWidget>(dialog, "SuperComWindow");
        EXPECT_TRUE(panel->isVisible());
        EXPECT_FALSE(find<QWidget>(*panel, "locations")->isVisible());
        choose(dialog, "locationDefinition", QStringLiteral("I - First Word & Interval"));
        EXPECT_EQ(textOf(dialog, "numberOfLocations"), "1");
        EXPECT_EQ(textOf(dialog, "interval"), "1");
        EXPECT_EQ(textOf(dialog, "firstLocation"), "7");
        type(dialog, "numberOfLocations", QStringLiteral("3"));
        type(dialog, "interval", QStringLiteral("10"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(7, 1));
    EXPECT_EQ(stage.places("A"), "7/1 17/1 27/1 ");
    EXPECT_EQ(stage.at(17, 1, "A").interval, 10);
    EXPECT_EQ(stage.at(17, 1, "A").locationCount, 3);
}

TEST(SuperComPanelTest, EveryLocationIsAListThatStaysSorted) {
    WordStage stage;
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        choose(dialog, "locationDefinition", QStringLiteral("E - Every Location"));
        EXPECT_FALSE(find<QWidget>(dialog, "numberOfLocations")->isEnabled());
        EXPECT_EQ(listText(dialog, "locations"), "7");
        stage.ui.integers = {20, 3, 0, 20, std::nullopt};
        press(dialog, "add");
        press(dialog, "add");
        EXPECT_EQ(listText(dialog, "locations"), "3\n7\n20");
        press(dialog, "add");  // 0
        EXPECT_EQ(stage.lastBox(), 161);
        const int beeps = stage.ui.beeps;
        press(dialog, "add");  // there already
        EXPECT_EQ(stage.ui.beeps, beeps + 1);
        press(dialog, "add");  // cancelled
        EXPECT_EQ(listText(dialog, "locations"), "3\n7\n20");
        stage.ui.integers = {25};
        test::selectRow(dialog, "locations", 0);
        press(dialog, "edit");
        EXPECT_EQ(listText(dialog, "locations"), "7\n20\n25");
        stage.ui.queued = {Button::No, Button::Yes};
        press(dialog, "delete");
        EXPECT_EQ(listText(dialog, "locations"), "7\n20\n25");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "ok");
    });
    stage.ui.queued = {Button::No};
    EXPECT_TRUE(stage.edit(7, 1));
    EXPECT_EQ(stage.places("A"), "7/1 20/1 25/1 ");
    EXPECT_EQ(stage.at(20, 1, "A").locationMode, "E");
}

TEST(SuperComPanelTest, ALocationThatIsNoMinorWordIsRefused) {
    WordStage stage;
    EXPECT_TRUE(stage.leavesAlone(7, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("A"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        choose(dialog, "locationDefinition", QStringLiteral("E - "));
        stage.ui.integers = {5};
        press(dialog, "add");
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 330);
        EXPECT_TRUE(dialog.isVisible());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(SuperComPanelTest, PositionsOfASubframeAreListedAndChanged) {
    WordStage stage;
    ASSERT_TRUE(saveMeasurement(stage.format, nullptr, {}, {}, {6, 1, {}}, supercom("SFSC", 3, 2)));
    EXPECT_EQ(stage.places("A"), "6/1 6/2 6/3 ");
    stage.format.changed = false;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "firstLocation"), "1");
        EXPECT_EQ(textOf(dialog, "numberOfLocations"), "3");
        EXPECT_EQ(textOf(dialog, "interval"), "2");
        choose(dialog, "locationDefinition", QStringLiteral("E - "));
        EXPECT_EQ(listText(dialog, "locations"), "1\n3\n5");
        stage.ui.integers = {2};
        press(dialog, "add");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(6, 2));
    EXPECT_EQ(stage.places("A"), "6/1 6/2 6/3 16/1 ");
    stage.ui.boxes.clear();
    stage.format.changed = false;
    EXPECT_TRUE(stage.leavesAlone(6, 1, [&](QDialog& dialog) {
        stage.ui.integers = {9};
        press(dialog, "add");
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 331);
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(SuperComPanelTest, AnIntervalKeepsItsFirstWordWhereverItIsOpened) {
    WordStage stage;
    ASSERT_TRUE(
        saveMeasurement(stage.format, nullptr, {}, {}, {7, 1, {}}, supercom("MFSC", 3, 10)));
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "firstLocation"), "7");
        choose(dialog, "parity", QStringLiteral("EVEN"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(27, 1));
    EXPECT_EQ(stage.places("A"), "7/1 17/1 27/1 ");
    EXPECT_EQ(stage.at(7, 1, "A").parity, "EV");
}

TEST(SuperComPanelTest, AMaskOfOnePlaceStaysAndTheSameMasksFollowTheNewOne) {
    WordStage stage;
    auto definition = supercom("MFSC", 0, 0);
    definition.attributes.locationMode = "E";
    definition.spots = {{7, "", 0, "FW", "", 0}, {8, "", 0, "FW", "", 0}, {9, "", 0, "11", "", 0}};
    ASSERT_TRUE(saveMeasurement(stage.format, nullptr, {}, {}, {7, 1, {}}, definition));
    stage.ui.texts = {"1111"};
    stage.door.next([](QDialog& dialog) {
        press(dialog, "editMask");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(7, 1));
    EXPECT_EQ(stage.at(7, 1, "A").mask, "1111000000000000");
    EXPECT_EQ(stage.at(8, 1, "A").mask, "1111000000000000");
    EXPECT_EQ(stage.at(9, 1, "A").mask, "11");
}

TEST(SuperComPanelTest, ThePanelFollowsTheLocationType) {
    WordStage stage;
    EXPECT_TRUE(stage.leavesAlone(7, 1, [&](QDialog& dialog) {
        const auto shown = [&dialog](const char* name) {
            return dialog.findChild<QWidget*>(QLatin1String(name)) != nullptr;
        };
        EXPECT_FALSE(shown("SuperComWindow"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        EXPECT_TRUE(shown("SuperComWindow"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFFR"));
        EXPECT_FALSE(shown("SuperComWindow"));
        EXPECT_TRUE(shown("MinorFrameFragments"));
        EXPECT_FALSE(find<QWidget>(dialog, "bitmask")->isEnabled());
        choose(dialog, "measurementLocationType", QStringLiteral("WDFR"));
        EXPECT_TRUE(shown("WORD_FRAME_LOCATIONS"));
        choose(dialog, "measurementLocationType", QStringLiteral("MF "));
        EXPECT_FALSE(shown("WORD_FRAME_LOCATIONS"));
        EXPECT_TRUE(find<QWidget>(dialog, "bitmask")->isEnabled());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(SuperComPanelTest, RangesAreRefusedAtASupercommutatedSubframeAndTheOldTypeComesBack) {
    WordStage stage;
    EXPECT_TRUE(stage.leavesAlone(6, 1, [&](QDialog& dialog) {
        choose(dialog, "measurementLocationType", QStringLiteral("WDFR"));
        EXPECT_EQ(stage.lastBox(), 338);
        EXPECT_TRUE(find<QComboBox>(dialog, "measurementLocationType")
                        ->currentText()
                        .startsWith(QStringLiteral("SFSC")));
        EXPECT_NE(dialog.findChild<QWidget*>(QStringLiteral("SuperComWindow")), nullptr);
        press(dialog, "cancel");
    }));
}

}  // namespace
}  // namespace kavu
