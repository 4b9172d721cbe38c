#include "app/conversion/PlotAttributesDialog.h"
#include "app/framework/EditableList.h"
#include "app/framework/Refusals.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

constexpr char kNames[] = "Pairs\nCurve";

PlotAttributes sample() {
    PlotAttributes attributes;
    attributes.setRange(0, 1, 10, -2, 5.25);
    attributes.borderColour = 0x123456;
    attributes.xDivisions = 50;
    attributes.series[1].symbol = PlotSymbol::Asterisk;
    return attributes;
}

/// Chooses an entry by its text, as a click in the list does.
void choose(QWidget& dialog, const char* name, const QString& text) {
    auto* box = find<QComboBox>(dialog, name);
    ASSERT_NE(box, nullptr);
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << toBytes(text);
    box->setCurrentIndex(index);
    emit box->activated(index);
}

TEST(PlotAttributesForm, KeepsWhatNobodyEdited) {
    test::FormStage stage;
    auto attributes = sample();
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "ok");
    });
    EXPECT_FALSE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    EXPECT_EQ(attributes, sample());
    EXPECT_EQ(stage.door.titles, std::vector<std::string>{"Edit Plot Attributes"});
}

TEST(PlotAttributesForm, EditsAllItsFields) {
    test::FormStage stage;
    auto attributes = sample();
    stage.door.next([](QDialog& dialog) {
        type(dialog, "minX", QStringLiteral("-1e3"));
        type(dialog, "maxY", QStringLiteral("7.5"));
        choose(dialog, "xPrecision", QStringLiteral("0"));
        choose(dialog, "yPrecision", QStringLiteral("4"));
        choose(dialog, "xDivisions", QStringLiteral("10"));
        choose(dialog, "yDivisions", QStringLiteral("0"));
        choose(dialog, "borderColour", QStringLiteral("Turquoise"));
        choose(dialog, "borderWidth", QStringLiteral("8"));
        find<QRadioButton>(dialog, "useColours")->click();
        press(dialog, "ok");
    });
    EXPECT_TRUE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    auto expected = sample();
    expected.x.least = -1000;
    expected.y.most = 7.5;
    expected.xPrecision = 0;
    expected.yPrecision = 4;
    expected.xDivisions = 10;
    expected.yDivisions = 0;
    expected.borderColour = 0x00FFFF;
    expected.borderWidth = 8;
    expected.blackAndWhite = false;
    EXPECT_EQ(attributes, expected);
}

TEST(PlotAttributesForm, LimitsAreEnabledOnlyWhereTheMethodNeedsThem) {
    test::FormStage stage;
    PlotAttributesDialog dialog(stage.form, sample(), 0, "");
    struct Case {
        const char* method;
        bool x, y;
    };
    for (const auto& c : {Case{"autoX", false, true}, Case{"autoY", true, false},
                          Case{"autoXY", false, false}, Case{"useMinMax", true, true}}) {
        find<QRadioButton>(dialog, c.method)->click();
        EXPECT_EQ(find<QLineEdit>(dialog, "minX")->isEnabled(), c.x) << c.method;
        EXPECT_EQ(find<QLineEdit>(dialog, "maxX")->isEnabled(), c.x) << c.method;
        EXPECT_EQ(find<QLineEdit>(dialog, "minY")->isEnabled(), c.y) << c.method;
        EXPECT_EQ(find<QLineEdit>(dialog, "maxY")->isEnabled(), c.y) << c.method;
    }
}

TEST(PlotAttributesForm, RefusesLimitsThatAreNoneOnOk) {
    test::FormStage stage;
    auto attributes = sample();
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "maxX", QStringLiteral("1"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        ASSERT_EQ(stage.ui.boxes.size(), 1U);
        EXPECT_EQ(stage.ui.boxes[0].title, plottext::kLimitsTitle);
        EXPECT_EQ(stage.ui.boxes[0].text, plottext::kLimits);
        for (const char* const bad : {"", "abc", "nan", "1e999"}) {
            type(dialog, "maxX", QLatin1String(bad));
            if (*bad == '\0') {
                find<QLineEdit>(dialog, "maxX")->clear();
            }
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible()) << bad;
            EXPECT_EQ(stage.ui.boxes.back().title, kIllegalNumber) << bad;
        }
        // Where the axis scales itself, its limits do not count.
        find<QRadioButton>(dialog, "autoX")->click();
        press(dialog, "ok");
    });
    EXPECT_TRUE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    EXPECT_EQ(attributes.scale, PlotScale::AutoX);
    EXPECT_EQ(attributes.x, sample().x);
}

TEST(PlotAttributesForm, CancelAsksOnlyIfSomethingHasChanged) {
    test::FormStage stage;
    auto attributes = sample();
    stage.door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_FALSE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    EXPECT_TRUE(stage.ui.boxes.empty());
    stage.ui.queued = {Button::No, Button::Yes};
    stage.door.next([&](QDialog& dialog) {
        choose(dialog, "borderWidth", QStringLiteral("5"));
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible()) << "No keeps it open";
        press(dialog, "cancel");
    });
    EXPECT_FALSE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    EXPECT_EQ(attributes, sample());
    ASSERT_EQ(stage.ui.boxes.size(), 2U);
    EXPECT_EQ(stage.ui.boxes[0].title, plottext::kCancelTitle);
    EXPECT_EQ(stage.ui.boxes[0].text, plottext::kCancel);
}

TEST(PlotAttributesForm, ListsTheSeriesByTheirNamesAtMostTen) {
    test::FormStage stage;
    const PlotAttributesDialog two(stage.form, sample(), 2, kNames);
    const auto& rows = find<EditableList>(two, "series")->rows();
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0], (ListRow{"Pairs", "Black", "Solid", "1", "None"}));
    EXPECT_EQ(rows[1], (ListRow{"Curve", "Red", "Solid", "1", "* (Asterisk)"}));
    const PlotAttributesDialog many(stage.form, sample(), 99, "");
    EXPECT_EQ(find<EditableList>(many, "series")->rows().size(), 10U);
    EXPECT_EQ(find<EditableList>(many, "series")->rows()[9][0], "10");
    const PlotAttributesDialog none(stage.form, sample(), -1, "");
    EXPECT_TRUE(find<EditableList>(none, "series")->rows().empty());
}

TEST(PlotAttributesForm, ADoubleClickEditsASeries) {
    test::FormStage stage;
    auto attributes = sample();
    stage.door
        .next([](QDialog& dialog) {
            auto* list = find<EditableList>(dialog, "series");
            list->selectRow(1);
            emit list->view()->doubleClicked(list->view()->currentIndex());
            EXPECT_EQ(list->rows()[1], (ListRow{"Curve", "Blue", "Dot", "1", "Filled Circle"}));
            EXPECT_EQ(list->currentRow(), 1);
            press(dialog, "ok");
        })
        .next([](QDialog& dialog) {
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            choose(dialog, "colour", QStringLiteral("Blue"));
            choose(dialog, "lineStyle", QStringLiteral("Dot"));
            choose(dialog, "symbol", QStringLiteral("Filled Circle"));
            press(dialog, "ok");
        });
    EXPECT_TRUE(editPlotAttributes(stage.form, attributes, 2, kNames, nullptr));
    EXPECT_EQ(attributes.series[1],
              (SeriesAttributes{0x0000FF, LineStyle::Dot, 1, PlotSymbol::FilledCircle}));
    EXPECT_EQ(attributes.series[0], sample().series[0]);
}

TEST(PlotSeriesForm, ABrokenLineNeedsAWidthOf1) {
    test::FormStage stage;
    stage.ui.queued = {Button::Yes, Button::Yes};
    PlotSeriesDialog dialog(stage.form, "1", {0, LineStyle::Solid, 3, PlotSymbol::None});
    choose(dialog, "lineStyle", QStringLiteral("Dash"));
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].title, plottext::kSelectionTitle);
    EXPECT_EQ(stage.ui.boxes[0].text,
              std::string(plottext::kSelection) + std::string(plottext::kChangeWidth));
    EXPECT_EQ(dialog.series(), (SeriesAttributes{0, LineStyle::Dash, 1, PlotSymbol::None}));
    // The width was what changed: the style gives way.
    choose(dialog, "lineWidth", QStringLiteral("4"));
    EXPECT_EQ(stage.ui.boxes[1].text,
              std::string(plottext::kSelection) + std::string(plottext::kChangeStyle));
    EXPECT_EQ(dialog.series(), (SeriesAttributes{0, LineStyle::Solid, 4, PlotSymbol::None}));
    choose(dialog, "lineStyle", QStringLiteral("None"));
    EXPECT_EQ(stage.ui.boxes.size(), 2U) << "no line has any width";
}

TEST(PlotSeriesForm, NoAsksForAnotherCombinationAndOkAsksAgain) {
    test::FormStage stage;
    stage.ui.queued = {Button::No, Button::No, Button::Yes};
    PlotSeriesDialog dialog(stage.form, "1", {0, LineStyle::Solid, 3, PlotSymbol::None});
    choose(dialog, "lineStyle", QStringLiteral("Dot"));
    ASSERT_EQ(stage.ui.boxes.size(), 2U);
    EXPECT_EQ(stage.ui.boxes[1].text, plottext::kSelectAnother);
    EXPECT_EQ(dialog.series().style, LineStyle::Dot);
    EXPECT_EQ(dialog.series().width, 3);
    dialog.show();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible()) << "such a series is not stored";
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.series().width, 1);
}

}  // namespace
}  // namespace kavu
