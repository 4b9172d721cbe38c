#include "app/bus/BusFormStage.h"
#include "app/bus/BusMeasurementDialog.h"
#include "core/talk/ProfileSettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>

namespace kavu {
namespace {

using test::BusFormStage;
using test::choose;
using test::find;
using test::press;
using test::smallBus;
using test::type;

const BusPlace kMeasurement = {1, 1, 1};
const BusPlace kLocation = {1, 1, 1, 1};

/// Fills all that a location must have.
void fillLocation(QDialog& dialog) {
    press(dialog, "MWN");
    choose(dialog, "MTO", QStringLiteral("LSB First"));
    type(dialog, "MFP", QStringLiteral("1"));
    press(dialog, "ok");
}

TEST(BusMeasurementForm, EveryFieldIsFilledWithRealInput) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"4"};
    EXPECT_TRUE(stage.open(kMeasurement, [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bus Measurement"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        type(dialog, "MN", QStringLiteral("AIRSPEED"));
        choose(dialog, "MN1", QStringLiteral("Even"));
        choose(dialog, "MN2", QStringLiteral("Trails Word"));
        choose(dialog, "MT", QStringLiteral("Status Word"));
        choose(dialog, "BME\\FOT", QStringLiteral("True"));
        stage.door.next([](QDialog& location) {
            EXPECT_EQ(location.windowTitle(), QStringLiteral("Edit Bus Measurement Location"));
            EXPECT_EQ(test::checkWindow(location), std::vector<std::string>{});
            fillLocation(location);
        });
        find<EditableList>(dialog, "locations")->addRow();
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value(kMeasurement, "MN"), "AIRSPEED");
    EXPECT_EQ(stage.value(kMeasurement, "MN1"), "EV");
    EXPECT_EQ(stage.value(kMeasurement, "MN2"), "T");
    EXPECT_EQ(stage.value(kMeasurement, "MT"), "S");
    EXPECT_EQ(stage.value(kMeasurement, "BME\\FOT"), "T");
    EXPECT_EQ(stage.value({1, 1, 1, 2}, "MWN"), "4");
    EXPECT_EQ(stage.value({1, 1, 1, 2}, "MBM"), "FW");
    EXPECT_EQ(stage.value({1, 1, 1, 2}, "MTO"), "LSB");
    EXPECT_EQ(stage.ui().textPrompts[0].title, "Enter New Word Number");
}

TEST(BusMeasurementForm, TheListOfLocationsHasItsFourColumns) {
    BusFormStage stage(smallBus());
    stage.open(kMeasurement, [](QDialog& dialog) {
        const auto& list = *find<EditableList>(dialog, "locations");
        EXPECT_EQ(list.rows(), (std::vector<ListRow>{{"1", "FW", "MSB First", "1"}}));
        std::vector<QString> titles;
        for (int i = 0; i < list.view()->model()->columnCount(); ++i) {
            titles.push_back(list.view()->model()->headerData(i, Qt::Horizontal).toString());
        }
        EXPECT_EQ(titles,
                  (std::vector<QString>{QStringLiteral("Word Number"), QStringLiteral("Bit Mask"),
                                        QStringLiteral("Transfer Order"),
                                        QStringLiteral("Fragment Position")}));
        press(dialog, "cancel");
    });
}

TEST(BusMeasurementForm, TypeAndOverwriteComeWithTheirEditions) {
    for (const int edition : {2004, 2007, 2009}) {
        BusFormStage stage(smallBus(), edition);
        stage.open(kMeasurement, [&](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("MT")) != nullptr, edition >= 2007);
            EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("overwriteNote")) != nullptr,
                      edition >= 2009);
            press(dialog, "cancel");
        });
    }
}

TEST(BusMeasurementForm, TheNoteFollowsTheOverwriteTag) {
    BusFormStage stage(smallBus());
    stage.ui().otherwise = Button::Yes;
    stage.open(kMeasurement, [](QDialog& dialog) {
        const auto* const note = find<QLabel>(dialog, "overwriteNote");
        EXPECT_EQ(note->text(), QStringLiteral("Measurement Filter/Overwrite Disabled"));
        choose(dialog, "BME\\FOT", QStringLiteral("True"));
        EXPECT_EQ(note->text(), QStringLiteral("Measurement Filter/Overwrite Enabled"));
        press(dialog, "cancel");
    });
}

TEST(BusMeasurementForm, ANewOneBeginsWithTheValuesOfTheLastOne) {
    BusFormStage stage(smallBus());
    EXPECT_TRUE(stage.add({1, 1}, [](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "MN1")->currentIndex(), -1) << "there was none";
        type(dialog, "MN", QStringLiteral("A"));
        choose(dialog, "MN1", QStringLiteral("Odd"));
        choose(dialog, "MN2", QStringLiteral("Leads Word"));
        choose(dialog, "BME\\FOT", QStringLiteral("True"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.form.settings.get(setting::kBusParity), "OD");
    EXPECT_EQ(stage.form.settings.get(setting::kBusParityOrder), "L");
    EXPECT_EQ(stage.form.settings.get(setting::kBusOverwrite), "T");
    EXPECT_TRUE(stage.add({1, 1}, [](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "MN1")->currentText(), QStringLiteral("Odd"));
        type(dialog, "MN", QStringLiteral("B"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value({1, 1, 3}, "MN1"), "OD");
    EXPECT_EQ(stage.value({1, 1, 3}, "MN2"), "L");
    EXPECT_EQ(stage.value({1, 1, 3}, "BME\\FOT"), "T");
    stage.open(kMeasurement, [](QDialog& dialog) {
        choose(dialog, "MN1", QStringLiteral("Even"));
        press(dialog, "ok");
    });
    EXPECT_EQ(stage.form.settings.get(setting::kBusParity), "OD") << "only new ones are kept";
}

TEST(BusMeasurementForm, ACancelledNewOneIsGoneAndKeepsNothing) {
    BusFormStage stage(smallBus());
    const auto before = stage.definition.group;
    stage.ui().otherwise = Button::Yes;
    EXPECT_FALSE(stage.add({1, 1}, [](QDialog& dialog) {
        choose(dialog, "MN1", QStringLiteral("Odd"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(stage.definition.group, before);
    EXPECT_EQ(stage.form.settings.get(setting::kBusParity), "");
}

TEST(BusMeasurementForm, TheConversionOfTheNameThatIsEnteredIsOpened) {
    BusFormStage stage(smallBus());
    stage.ui().otherwise = Button::Yes;
    stage.open(kMeasurement, [](QDialog& dialog) {
        press(dialog, "editConversion");
        type(dialog, "MN", QStringLiteral("OTHER"));
        press(dialog, "editConversion");
        press(dialog, "cancel");
    });
    EXPECT_EQ(stage.conversions, (std::vector<std::string>{"SPEED", "OTHER"}));
}

TEST(BusMeasurementForm, DeletingALocationAsksUnderItsTitle) {
    BusFormStage stage(smallBus());
    stage.ui().queued = {Button::No, Button::Yes};
    EXPECT_TRUE(stage.open(kMeasurement, [](QDialog& dialog) {
        auto& list = *find<EditableList>(dialog, "locations");
        list.deleteRow();
        EXPECT_EQ(list.rowCount(), 1);
        list.deleteRow();
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.ui().boxes[0].title, "Delete This Measurement Location");
    EXPECT_EQ(stage.value(kLocation, "MWN"), "no row");
}

// --- Locations ----------------------------------------------------------------------------------

TEST(BusLocationForm, IsNotLeftWithoutAnyOfItsFour) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"3"};
    EXPECT_TRUE(stage.add(kMeasurement, [](QDialog& dialog) {
        find<QRadioButton>(dialog, "fullWordNo")->click();
        press(dialog, "ok");
        press(dialog, "MWN");
        press(dialog, "ok");
        find<QRadioButton>(dialog, "fullWordYes")->click();
        press(dialog, "ok");
        choose(dialog, "MTO", QStringLiteral("Default"));
        press(dialog, "ok");
        type(dialog, "MFP", QStringLiteral("2"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.shown(), (std::vector{388, 389, 390, 391}));
    EXPECT_EQ(stage.value({1, 1, 1, 2}, "MTO"), "DEF");
}

TEST(BusLocationForm, ABadMaskIsRefused) {
    BusFormStage stage(smallBus());
    EXPECT_TRUE(stage.open(kLocation, [](QDialog& dialog) {
        EXPECT_TRUE(find<QRadioButton>(dialog, "fullWordYes")->isChecked());
        EXPECT_FALSE(find<QWidget>(dialog, "MBM")->isEnabled());
        find<QRadioButton>(dialog, "fullWordNo")->click();
        EXPECT_EQ(find<QLineEdit>(dialog, "MBM")->text(), QString());
        type(dialog, "MBM", QStringLiteral("0102"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        type(dialog, "MBM", QStringLiteral("0101"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.shown(), std::vector{142});
    EXPECT_EQ(stage.ui().boxes[0].title, "Invalid BitMask Entered");
    EXPECT_EQ(stage.value(kLocation, "MBM"), "0101");
}

TEST(BusLocationForm, TheMaskOfAPartComesBackAfterTheFullWord) {
    BusFormStage stage(smallBus({"MBM-1-1-1-1:0011"}));
    stage.ui().otherwise = Button::Yes;
    stage.open(kLocation, [](QDialog& dialog) {
        EXPECT_TRUE(find<QRadioButton>(dialog, "fullWordNo")->isChecked());
        find<QRadioButton>(dialog, "fullWordYes")->click();
        EXPECT_EQ(find<QLineEdit>(dialog, "MBM")->text(), QStringLiteral("FW"));
        find<QRadioButton>(dialog, "fullWordNo")->click();
        EXPECT_EQ(find<QLineEdit>(dialog, "MBM")->text(), QStringLiteral("0011"));
        press(dialog, "cancel");
    });
}

TEST(BusLocationForm, ANewOneBeginsWithTheValuesOfTheLastOne) {
    BusFormStage stage(smallBus());
    stage.ui().texts = {"17"};
    EXPECT_TRUE(stage.add(kMeasurement, [](QDialog& dialog) {
        EXPECT_TRUE(find<QRadioButton>(dialog, "fullWordYes")->isChecked());
        find<QRadioButton>(dialog, "fullWordNo")->click();
        type(dialog, "MBM", QStringLiteral("1"));
        press(dialog, "MWN");
        choose(dialog, "MTO", QStringLiteral("LSB First"));
        type(dialog, "MFP", QStringLiteral("1"));
        press(dialog, "ok");
    }));
    const auto& settings = stage.form.settings;
    EXPECT_EQ(settings.get(setting::kBusWordNumber), "17");
    EXPECT_EQ(settings.get(setting::kBusTransferOrder), "LSB");
    EXPECT_FALSE(settings.get(setting::kBusFullWord));
    EXPECT_TRUE(stage.add(kMeasurement, [](QDialog& dialog) {
        EXPECT_TRUE(find<QRadioButton>(dialog, "fullWordNo")->isChecked());
        find<QRadioButton>(dialog, "fullWordYes")->click();
        type(dialog, "MFP", QStringLiteral("1"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(stage.value({1, 1, 1, 3}, "MWN"), "17");
    EXPECT_EQ(stage.value({1, 1, 1, 3}, "MTO"), "LSB");
}

}  // namespace
}  // namespace kavu
