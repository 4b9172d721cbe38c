#include "conversion/PlotAttributes.h"
#include "core/files/ProfileFile.h"
#include "core/talk/ProfileSettings.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(PlotAttributes, HaveTheirInitialValues) {
    const PlotAttributes a;
    EXPECT_EQ(a.scale, PlotScale::AutoXY);
    EXPECT_EQ(a.borderColour, 0xC0C0C0U);
    EXPECT_EQ(a.borderWidth, 2);
    EXPECT_TRUE(a.blackAndWhite);
    EXPECT_EQ(a.xDivisions, 2);
    EXPECT_EQ(a.yDivisions, 2);
    EXPECT_EQ(a.xPrecision, 2);
    EXPECT_EQ(a.yPrecision, 2);
    const DrawingColour colours[] = {0, 0xFF0000, 0x00FF00, 0x0000FF, 0, 0, 0, 0, 0, 0};
    for (std::size_t i = 0; i < kPlotSeries; ++i) {
        EXPECT_EQ(a.series[i],
                  (SeriesAttributes{colours[i], LineStyle::Solid, 1, PlotSymbol::None}));
    }
}

TEST(SetRange, TakesWhatTheMethodDoesNotScale) {
    for (int method = 0; method <= 3; ++method) {
        PlotAttributes a;
        a.setRange(method, 1, 2, 3, 4);
        EXPECT_EQ(static_cast<int>(a.scale), method);
        EXPECT_EQ(a.x, method == 0 || method == 2 ? (PlotRange{1, 2}) : PlotRange{}) << method;
        EXPECT_EQ(a.y, method == 0 || method == 1 ? (PlotRange{3, 4}) : PlotRange{}) << method;
    }
}

TEST(SetRange, AcceptsReversedBoundsAndRefusesEqualOnes) {
    PlotAttributes a;
    a.setRange(0, 9, -9, 5, 5);
    EXPECT_EQ(a.x, (PlotRange{-9, 9}));
    EXPECT_EQ(a.y, PlotRange{});
}

TEST(SetRange, AnUnknownMethodLeavesTheOneInForce) {
    PlotAttributes a;
    a.setRange(0, 1, 2, 3, 4);
    for (const int method : {-1, 4, 99}) {
        a.setRange(method, 5, 6, 7, 8);
        EXPECT_EQ(a.scale, PlotScale::MinMax);
        EXPECT_EQ(a.x, (PlotRange{5, 6}));
    }
}

TEST(PlotAttributes, AreReadAsTheyWereWritten) {
    PlotAttributes a;
    a.setRange(0, -1.25, 1e300, 0.1, 7);
    a.borderColour = 0x0000AB;
    a.borderWidth = 5;
    a.blackAndWhite = false;
    a.xDivisions = 0;
    a.yPrecision = 7;
    a.series[9] = {0xFFFF00, LineStyle::DashDotDot, 8, PlotSymbol::Asterisk};
    ProfileFile file("");
    a.save(file, "Reports");
    EXPECT_EQ(file.value("Reports", "PLBCol", ""), "0x0000AB");
    EXPECT_EQ(file.value("Reports", "PLScale", ""), "0");
    EXPECT_EQ(file.value("Reports", "PL10Sym", ""), "10");
    EXPECT_EQ(file.value("Reports", "PL10Sty", ""), "4");
    PlotAttributes b;
    b.load(file, "Reports");
    EXPECT_EQ(a, b);
    ProfileSettings settings{std::string()};
    a.save(settings, "MultiPlot");
    PlotAttributes c;
    c.load(settings, "MultiPlot");
    EXPECT_EQ(a, c);
}

TEST(PlotAttributes, AbsentKeysKeepTheValuesInForce) {
    PlotAttributes a;
    a.borderWidth = 7;
    a.load(ProfileFile(""), "Reports");
    EXPECT_EQ(a.borderWidth, 7);
}

TEST(PlotAttributes, WhatIsNoValueIsNotTaken) {
    ProfileFile file("");
    const std::pair<const char*, const char*> bad[] = {
        {"PLScale", "9"},    {"PLMinX", "nan"},       {"PLMaxX", "1e999"},
        {"PLBCol", "red"},   {"PLBWid", "1000"},      {"PLXDiv", "2000000000"},
        {"PLYDiv", "-5"},    {"PLXPrec", "999"},      {"PL1Sty", "77"},
        {"PL1Wid", "-1"},    {"PL1Sym", "0"},         {"PL2Col", "0xFFFFFFFFF"},
        {"PL3Col", "0x12G"}, {"PL4Col", "0x1000000"},
    };
    for (const auto& [key, value] : bad) {
        file.setValue("S", key, value);
    }
    PlotAttributes a;
    a.load(file, "S");
    EXPECT_EQ(a.scale, PlotScale::AutoXY);
    EXPECT_EQ(a.x, PlotRange{});
    EXPECT_EQ(a.borderColour, 0xC0C0C0U);
    EXPECT_EQ(a.borderWidth, 8);
    EXPECT_EQ(a.xDivisions, 100);
    EXPECT_EQ(a.yDivisions, 0);
    EXPECT_EQ(a.xPrecision, 20);
    EXPECT_EQ(a.series[0], (SeriesAttributes{0, LineStyle::None, 1, PlotSymbol::None}));
    EXPECT_EQ(a.series[1].colour, 0xFF0000U);
    EXPECT_EQ(a.series[2].colour, 0x00FF00U);
    EXPECT_EQ(a.series[3].colour, 0x0000FFU);
}

// --- The form ------------------------------------------------------------------------------

TEST(PlotForm, HasItsLists) {
    EXPECT_EQ(plotColours().size(), 14U);
    EXPECT_EQ(plotColourName(0x00FFFF), "Turquoise");
    EXPECT_EQ(plotColourName(0x123456), "0x123456");
    EXPECT_EQ(plotScaleNames()[1], "Auto Scale X Axis");
    EXPECT_EQ(lineStyleNames()[4], "Dash-Dot-Dot");
    EXPECT_EQ(plotSymbolNames()[9], "* (Asterisk)");
}

TEST(PlotForm, LimitsCountOnlyWhereTheyAreInUse) {
    PlotAttributes a;
    EXPECT_TRUE(plotLimitsHold(a));
    a.scale = PlotScale::AutoX;
    EXPECT_FALSE(plotLimitsHold(a));
    a.y = {1, 2};
    EXPECT_TRUE(plotLimitsHold(a));
    a.scale = PlotScale::MinMax;
    EXPECT_FALSE(plotLimitsHold(a));
    a.x = {2, 1};
    EXPECT_FALSE(plotLimitsHold(a));
    a.x = {1, 2};
    EXPECT_TRUE(plotLimitsHold(a));
}

TEST(PlotForm, ABrokenLineIsOneWide) {
    for (int style = 0; style <= 5; ++style) {
        SeriesAttributes series;
        series.style = static_cast<LineStyle>(style);
        EXPECT_TRUE(styleFitsWidth(series));
        series.width = 2;
        EXPECT_EQ(styleFitsWidth(series), style == 0 || style == 5) << style;
    }
}

TEST(PlotForm, TheQuestionFitsWhatWasChanged) {
    EXPECT_EQ(styleConflictText(false),
              "You have selected an incompatible combination.\n\nIf you select a Line Style other "
              "than \"Solid\" or \"None\", the Line Width value must be 1.\n\nWould you like to "
              "change Line Width to 1?");
    EXPECT_TRUE(styleConflictText(true).ends_with("change Line Style to \"Solid\"?"));
    SeriesAttributes series{0, LineStyle::Dot, 3, PlotSymbol::None};
    auto other = series;
    settleStyleConflict(series, false);
    EXPECT_EQ(series.width, 1);
    EXPECT_EQ(series.style, LineStyle::Dot);
    settleStyleConflict(other, true);
    EXPECT_EQ(other.width, 3);
    EXPECT_EQ(other.style, LineStyle::Solid);
}

TEST(PlotForm, RowsHaveTheirNamesOrTheirNumbers) {
    EXPECT_EQ(seriesTitles(3, "Pairs\nCurve"), (std::vector<std::string>{"Pairs", "Curve", "3"}));
    EXPECT_EQ(seriesTitles(99, "").size(), 10U);
    EXPECT_TRUE(seriesTitles(-1, "A").empty());
}

}  // namespace
}  // namespace kavu
