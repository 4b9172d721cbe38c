#include "app/framework/EditableList.h"
#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"

#include <QApplication>
#include <QRadioButton>

namespace kavu {
namespace {

using test::choose;
using test::entries;
using test::find;
using test::listText;
using test::press;
using test::textOf;
using test::type;
using test::WordStage;

TEST(FragmentPanelTest, MinorFrameFragmentsAreListedEditedAndStored) {
    WordStage stage;
    stage.settings.write("DFragM", "11");
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("LONG"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFFR"));
        type(dialog, "reconstructedWordLength", QStringLiteral("18"));
        choose(dialog, "locationDefinition", QStringLiteral("E - "));
        EXPECT_EQ(listText(dialog, "fragments"), "1 | 8 | Default | 0000000000000011");
        stage.door.next([&](QDialog& fragment) {
            EXPECT_EQ(fragment.objectName(), QStringLiteral("EditFragmentDefinition"));
            EXPECT_EQ(toBytes(fragment.windowTitle()), "Edit Fragment Definition");
            EXPECT_EQ(test::checkWindow(fragment), std::vector<std::string>{});
            // One number is taken, nine there are.
            EXPECT_EQ(toBytes(entries(fragment, "fragmentNumber").join(u' ')), "2 3 4 5 6 7 8 9");
            type(fragment, "frameWordPosition", QStringLiteral("5"));
            press(fragment, "ok");
            EXPECT_EQ(stage.lastBox(), 330);
            EXPECT_TRUE(fragment.isVisible());
            type(fragment, "frameWordPosition", QStringLiteral("9"));
            choose(fragment, "fragmentTransferOrder", QStringLiteral("LSB"));
            stage.ui.texts = {"FW"};
            press(fragment, "editMask");
            press(fragment, "ok");
        });
        press(dialog, "add");
        EXPECT_EQ(listText(dialog, "fragments"),
                  "1 | 8 | Default | 0000000000000011\n2 | 9 | LSB | FW");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(8, 1));
    EXPECT_EQ(stage.places("LONG"), "8/1 9/1 ");
    EXPECT_EQ(stage.at(8, 1, "LONG").mask, "11");
    EXPECT_EQ(stage.at(9, 1, "LONG").mask, "FW");
    EXPECT_EQ(stage.at(9, 1, "LONG").fragmentTransferOrder, "L");
    EXPECT_EQ(stage.at(9, 1, "LONG").fragmentNumber, 2);
    EXPECT_EQ(stage.at(9, 1, "LONG").reconstructedLength, 18);
    EXPECT_EQ(stage.at(9, 1, "LONG").locationCount, 2);
}

TEST(FragmentPanelTest, AFragmentCanBeCancelledEditedAndDeleted) {
    WordStage stage;
    MeasurementDefinition definition;
    definition.attributes.name = "LONG";
    definition.attributes.locationType = "MFFR";
    definition.attributes.locationMode = "E";
    definition.attributes.reconstructedLength = 32;
    definition.spots = {
        {8, "", 0, "FW", "M", 1}, {9, "", 0, "FW", "", 2}, {10, "", 0, "FW", "", 3}};
    ASSERT_TRUE(saveMeasurement(stage.format, nullptr, {}, {}, {8, 1, {}}, definition));
    stage.door.next([&](QDialog& dialog) {
        const auto before = listText(dialog, "fragments");
        stage.door.next([](QDialog& fragment) { press(fragment, "cancel"); });
        press(dialog, "add");
        stage.door.next([&](QDialog& fragment) {
            type(fragment, "frameWordPosition", QStringLiteral("11"));
            stage.ui.queued = {Button::Yes};
            press(fragment, "cancel");
            EXPECT_TRUE(stage.ui.hasText("Do you really want to cancel?"));
        });
        test::selectRow(dialog, "fragments", 0);
        press(dialog, "edit");
        EXPECT_EQ(listText(dialog, "fragments"), before);
        stage.door.next([](QDialog& fragment) {
            type(fragment, "frameWordPosition", QStringLiteral("11"));
            press(fragment, "ok");
        });
        press(dialog, "edit");
        EXPECT_EQ(listText(dialog, "fragments"),
                  "1 | 11 | MSB | FW\n2 | 9 | Default | FW\n3 | 10 | Default | FW");
        stage.ui.queued = {Button::Yes};
        press(dialog, "delete");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(8, 1));
    EXPECT_EQ(stage.places("LONG"), "9/1 10/1 ");
}

TEST(FragmentPanelTest, FragmentsByIntervalShareTheMaskOfThePanel) {
    WordStage stage;
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("LONG"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFFR"));
        choose(dialog, "locationDefinition", QStringLiteral("I - "));
        type(dialog, "reconstructedWordLength", QStringLiteral("16"));
        type(dialog, "numberOfLocations", QStringLiteral("2"));
        type(dialog, "interval", QStringLiteral("3"));
        stage.ui.texts = {"11111111"};
        press(*test::find<QWidget>(dialog, "fragmentMaskControl"), "editMask");
        EXPECT_EQ(textOf(dialog, "fragmentMask"), "1111111100000000");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(8, 1));
    EXPECT_EQ(stage.places("LONG"), "8/1 11/1 ");
    EXPECT_EQ(stage.at(11, 1, "LONG").mask, "1111111100000000");
    EXPECT_EQ(stage.at(11, 1, "LONG").fragmentNumber, 2);
}

TEST(FragmentPanelTest, SubframeFragmentsOfOneSampleMustBeInOneFrame) {
    WordStage stage;
    stage.ui.byId[0] = Button::Yes;
    EXPECT_TRUE(stage.leavesAlone(5, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("LONG"));
        choose(dialog, "measurementLocationType", QStringLiteral("SFFR"));
        EXPECT_EQ(listText(dialog, "fragments"), "1 | S | 1 | Default | FW");
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 336);
        type(dialog, "reconstructedWordLength", QStringLiteral("32"));
        stage.door.next([&](QDialog& fragment) {
            EXPECT_EQ(test::checkWindow(fragment), std::vector<std::string>{});
            EXPECT_EQ(toBytes(entries(fragment, "subframeName").join(u' ')), "S T");
            type(fragment, "locationInSubframe", QStringLiteral("5"));
            press(fragment, "ok");
            EXPECT_EQ(stage.lastBox(), 331);
            type(fragment, "locationInSubframe", QStringLiteral("2"));
            press(fragment, "ok");
        });
        press(dialog, "add");
        EXPECT_EQ(listText(dialog, "fragments"),
                  "1 | S | 1 | Default | FW\n2 | S | 2 | Default | FW");
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 335);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(FragmentPanelTest, SubframeFragmentsAreStoredAndComeBack) {
    WordStage stage;
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("LONG"));
        choose(dialog, "measurementLocationType", QStringLiteral("SFFR"));
        type(dialog, "reconstructedWordLength", QStringLiteral("32"));
        stage.door.next([](QDialog& fragment) {
            choose(fragment, "subframeName", QStringLiteral("T"));
            type(fragment, "locationInSubframe", QStringLiteral("1"));
            press(fragment, "ok");
        });
        press(dialog, "add");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(5, 3));
    EXPECT_EQ(stage.places("LONG"), "5/3 6/1 ");
    stage.format.changed = false;
    EXPECT_TRUE(stage.leavesAlone(6, 1, [](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "reconstructedWordLength"), "32");
        EXPECT_EQ(listText(dialog, "fragments"),
                  "1 | S | 3 | Default | FW\n2 | T | 1 | Default | FW");
        press(dialog, "cancel");
    }));
}

TEST(FragmentPanelTest, TheFormOfMasksIsSwitchedEverywhereAtOnce) {
    WordStage stage;
    stage.settings.write("DFragM", "11");
    const auto isHexIn = [](const QWidget& owner, const char* control) {
        return find<QRadioButton>(*find<QWidget>(owner, control), "hex")->isChecked();
    };
    EXPECT_TRUE(stage.leavesAlone(8, 1, [&](QDialog& dialog) {
        choose(dialog, "measurementLocationType", QStringLiteral("MFFR"));
        choose(dialog, "locationDefinition", QStringLiteral("E - "));
        stage.door.next([&](QDialog& fragment) {
            type(fragment, "frameWordPosition", QStringLiteral("9"));
            press(fragment, "ok");
        });
        press(dialog, "add");
        stage.door.next([&](QDialog& fragment) {
            find<QRadioButton>(fragment, "hex")->click();
            press(fragment, "cancel");
        });
        press(dialog, "edit");
        QApplication::processEvents();
        EXPECT_EQ(listText(dialog, "fragments"), "1 | 8 | Default | 0003\n2 | 9 | Default | 0003");
        EXPECT_TRUE(isHexIn(dialog, "bitmaskControl"));
        EXPECT_EQ(find<EditableList>(dialog, "fragments")->currentRow(), 1);
        choose(dialog, "locationDefinition", QStringLiteral("I - "));
        find<QRadioButton>(*find<QWidget>(dialog, "fragmentMaskControl"), "binary")->click();
        QApplication::processEvents();
        EXPECT_FALSE(isHexIn(dialog, "bitmaskControl"));
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

}  // namespace
}  // namespace kavu
