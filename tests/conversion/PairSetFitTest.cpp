#include "conversion/ExpectPicture.h"
#include "conversion/PairSetFit.h"
#include "core/talk/ProfileSettings.h"
#include "support/RecordingSurface.h"
#include "support/TestContext.h"

#include <cmath>
#include <limits>
#include <map>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::RecordingSurface;
using test::TestContext;
using Values = std::vector<double>;

FitInput input(Values x, Values y, int order = 1) {
    FitInput made;
    made.x = std::move(x);
    made.y = std::move(y);
    made.order = order;
    return made;
}

// --- Options -------------------------------------------------------------------------------

TEST(FitOptions, HaveTheirDefaults) {
    TestContext t;
    const auto options = FitOptions::read(t.settings);
    EXPECT_EQ(options.maxOrder, 5);
    EXPECT_FALSE(options.useBestFit);
    EXPECT_FALSE(options.curveAllPairs);
    EXPECT_EQ(options.defaultBits, 16);
    EXPECT_FALSE(options.sorted);
    EXPECT_EQ(options.precision, 8);
    EXPECT_FALSE(options.seriesEnabled);
}

TEST(FitOptions, StayWithinTheirBounds) {
    TestContext t;
    t.settings.write("LSBFMaxOrder", "77");
    EXPECT_EQ(FitOptions::read(t.settings).maxOrder, 10);
    t.settings.write("LSBFMaxOrder", "-1");
    EXPECT_EQ(FitOptions::read(t.settings).maxOrder, 1);
}

TEST(CurveDefaultBits, UnderOneAreRefusedWithMessage405) {
    TestContext t;
    EXPECT_FALSE(writeCurveDefaultBits(t.messages, t.settings, &t.ui, 0));
    EXPECT_TRUE(t.ui.hasBox(405));
    EXPECT_FALSE(writeCurveDefaultBits(t.messages, t.settings, nullptr, -1));
    EXPECT_EQ(t.settings.text("CurveDefBits"), "");
    EXPECT_TRUE(writeCurveDefaultBits(t.messages, t.settings, &t.ui, 1));
    EXPECT_EQ(t.settings.integer("CurveDefBits", 16), 1);
}

// --- The refit -----------------------------------------------------------------------------

TEST(RefitPairs, GivesAllThatThePageShows) {
    auto in = input({0, 1, 2, 3}, {1, 3.5, 4.5, 7}, 1);
    const auto result = refitPairs(in, {});
    ASSERT_TRUE(result.fitted);
    EXPECT_EQ(result.pairs, 4);
    EXPECT_EQ(result.order, 1);
    EXPECT_EQ(result.fittedCoefficients().size(), 2U);
    EXPECT_NEAR(result.computed[1], 3.05, 1e-9);
    EXPECT_NEAR(result.errors[1], -0.45, 1e-9);
    EXPECT_EQ(coefficientLines(result, 3),
              (std::vector<std::string>{"c(0) = 1.150E+00", "c(1) = 1.900E+00"}));
    EXPECT_EQ(fitRows(result)[1].number, "2");
    EXPECT_EQ(fitRows(result)[1].computed, "3.050000");
    EXPECT_EQ(fitRows(result)[1].error, "-0.450000*");
    EXPECT_TRUE(result.printingEnabled);
    EXPECT_TRUE(result.seriesEnabled);
    EXPECT_TRUE(result.orderListEnabled);
    EXPECT_EQ(fitFailureText(result), "");
}

TEST(RefitPairs, AnExactLineShowsBestFit1) {
    EXPECT_EQ(bestFitText(refitPairs(input({1, 2, 3}, {2, 4, 6}), {}).bestFit), "Best Fit: 1");
    EXPECT_EQ(bestFitText(refitPairs(input({1}, {2}), {}).bestFit), "Best Fit: Unknown");
}

TEST(RefitPairs, AnXOf0IsReplacedInTheArraysOnly) {
    const auto in = input({0, 1}, {1, 2});
    EXPECT_EQ(refitPairs(in, {}).x[0], 2.2250738585072014e-308);
    EXPECT_EQ(in.x[0], 0);
}

TEST(RefitPairs, WithoutPairsThereIsNothing) {
    auto in = input({}, {});
    in.series = true;
    const auto result = refitPairs(in, {});
    EXPECT_FALSE(result.fitted);
    EXPECT_FALSE(result.series);
    EXPECT_FALSE(result.seriesEnabled);
    EXPECT_EQ(fitFailureText(result), "Unable to draw graph. No data points defined");
    EXPECT_TRUE(fitRows(result).empty());
}

TEST(RefitPairs, OnePairIsTooFew) {
    EXPECT_EQ(fitFailureText(refitPairs(input({1}, {2}), {})),
              "ERROR: Unable to calculate coefficients\nThere must be at least 2 pair sets "
              "defined");
}

TEST(RefitPairs, AnOrderEqualToTheNumberOfPairsIsRefused) {
    const auto result = refitPairs(input({1, 2, 3}, {1, 2, 3}, 3), {});
    EXPECT_FALSE(result.fitted);
    EXPECT_EQ(fitFailureText(result),
              "ERROR: Unable to calculate coefficients\nThere are only 3 pair set points defined. "
              "'Order Of Fit' cannot be any larger than 2");
    EXPECT_FALSE(result.seriesEnabled);
    EXPECT_FALSE(result.printingEnabled);
    EXPECT_EQ(fitRows(result)[0].computed, "");
    EXPECT_EQ(fitRows(result)[0].error, "");
}

TEST(RefitPairs, ASingularMatrixShowsTheFirstLineAlone) {
    EXPECT_EQ(fitFailureText(refitPairs(input({5, 5, 5}, {1, 2, 3}), {})),
              "ERROR: Unable to calculate coefficients");
}

TEST(RefitPairs, NumbersThatNoRecordCanHoldAreAFailure) {
    for (const double bad : {std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN(), 1e308}) {
        EXPECT_FALSE(refitPairs(input({1, 2, bad}, {1, 2, 3}), {}).fitted) << bad;
    }
}

TEST(RefitPairs, TheOrderFollowsTheBestFitIfTheSettingsWantIt) {
    FitOptions options;
    options.useBestFit = true;
    const auto line = refitPairs(input({1, 2, 3, 4}, {2, 4, 6, 8}, 3), options);
    EXPECT_EQ(line.order, 1);
    EXPECT_FALSE(line.orderListEnabled);
    const auto unknown = refitPairs(input({1}, {2}, 3), options);
    EXPECT_EQ(unknown.order, 3);
    EXPECT_TRUE(unknown.orderListEnabled) << "with a result under 1 the list is there again";
}

TEST(RefitPairs, ABestFitOf10IsUsedThoughTheListEndsAt9) {
    FitOptions options;
    options.useBestFit = true;
    options.maxOrder = 10;
    Values x;
    Values y;
    for (int i = 0; i < 30; ++i) {
        x.push_back(-1 + i / 14.5);
        y.push_back(std::exp(-40 * x.back() * x.back()));
    }
    const auto result = refitPairs(input(x, y), options);
    EXPECT_GT(result.bestFit, 0);
    EXPECT_EQ(result.order, result.bestFit);
    // A search whose every fit fails names the top order.
    const auto top = refitPairs(input(Values(12, 5.0), Values(12, 1.0)), options);
    EXPECT_EQ(top.order, 10);
    EXPECT_GT(top.order, kHighestListedOrder);
}

TEST(RefitPairs, MoreOrdersThanPairsAreNotSearched) {
    EXPECT_LE(refitPairs(input({1, 2, 3}, {1, 5, -4}), {}).bestFit, 2);
}

TEST(RefitPairs, AFullScaleOf0GivesNoAsterisksAndNoCorrelation) {
    const auto result = refitPairs(input({1, 2, 3}, {0, 0, 0}), {});
    ASSERT_TRUE(result.fitted);
    EXPECT_EQ(result.correlation, 0);
    EXPECT_EQ(result.marked, std::vector<bool>(3, false));
}

TEST(RefitPairs, TheStatisticsShowTheirLeadingDigits) {
    auto result = refitPairs(input({0, 1, 2, 3}, {0, 1e-9, 0, 1e-9}), {});
    ASSERT_TRUE(result.fitted);
    EXPECT_TRUE(rmsText(result, 8).ends_with("E-10")) << rmsText(result, 8);
    EXPECT_EQ(correlationText(result, 3).substr(0, 3), "0.4");
    // What is left of an exact line is no error.
    result.rms = 1e-22;
    EXPECT_EQ(rmsText(result, 8), "0.00000000");
    EXPECT_EQ(rmsText(FitResult(), 8) + correlationText(FitResult(), 8), "");
}

TEST(RefitPairs, TheSeriesShowsItsValues) {
    auto in = input({0, 10}, {1, 21});
    in.series = true;
    in.zero = "5";
    in.cal = "100";
    const auto result = refitPairs(in, {});
    ASSERT_TRUE(result.zeroY && result.calY);
    EXPECT_NEAR(*result.zeroY, 11, 1e-9);
    EXPECT_NEAR(*result.calY, 201, 1e-9);
    EXPECT_TRUE(result.boxesEnabled);
    EXPECT_NEAR(result.fullScale.most, 201, 1e-9) << "the series widens the range";
    in.series = false;
    EXPECT_FALSE(refitPairs(in, {}).zeroY);
    in.series = true;
    in.order = 2;
    EXPECT_FALSE(refitPairs(in, {}).series) << "forced off if there can be no fit";
}

TEST(FullScale, ComesFromTheLimitsAndAllValues) {
    EXPECT_EQ(fullScaleOf({"100", "-5", "90", "0"}, std::nullopt, Values{}), (PlotRange{-5, 100}));
    EXPECT_EQ(fullScaleOf({"100", "-5", "120", "-9"}, std::nullopt, Values{}),
              (PlotRange{-9, 120}));
    EXPECT_EQ(fullScaleOf({"100", "0", "", ""}, std::nullopt, Values{-20, 200}),
              (PlotRange{-20, 200}));
    EXPECT_EQ(fullScaleOf({"10", "0", "", ""}, std::pair(-1.0, 11.0), Values{}),
              (PlotRange{-1, 11}));
    // Only the first value of the series can lower the range, and only the second raise it.
    EXPECT_EQ(fullScaleOf({"10", "0", "", ""}, std::pair(99.0, -99.0), Values{}),
              (PlotRange{0, 10}));
    EXPECT_EQ(fullScaleOf({}, std::nullopt, Values{5, 5}), (PlotRange{0, 5}));
}

// --- The plot ------------------------------------------------------------------------------

std::size_t segments(const RecordingSurface& surface, const std::string& pen) {
    bool on = false;
    std::size_t count = 0;
    for (const auto& call : surface.calls) {
        if (call.starts_with("pen ")) {
            on = call == pen;
        }
        count += on && call.starts_with("line ") ? 1U : 0U;
    }
    return count;
}
constexpr const char* kCurvePen = "pen FF0000 1 0";

/// Counts lines and keeps none: to write a million of them down takes longer than to draw them.
class LineCounter : public RecordingSurface {
  public:
    void line(DrawingPoint, DrawingPoint) override { ++count_[pen_]; }
    bool setPen(const DrawingPen& pen) override {
        const bool made = RecordingSurface::setPen(pen);
        pen_ = calls.back();
        return made;
    }
    [[nodiscard]] std::size_t lines(const std::string& pen) { return count_[pen]; }

  private:
    std::string pen_;
    std::map<std::string, std::size_t> count_;
};

TEST(DrawFit, WithoutPairsSaysSo) {
    RecordingSurface surface;
    Plot plot;
    const auto in = input({}, {});
    EXPECT_FALSE(drawFit(plot, surface, refitPairs(in, {}), in, {}, {}));
    EXPECT_TRUE(surface.has("\"Unable to draw graph. No data points defined\""));
    EXPECT_EQ(surface.calls[2], "rectangle 0,0 400,300") << "the area is cleared first";
}

TEST(DrawFit, DrawsPairsCurveAndSeries) {
    RecordingSurface surface;
    Plot plot;
    auto in = input({1, 2, 3}, {1, 2, 3});
    in.series = true;
    in.cal = "3";
    FitDrawing drawing;
    drawing.units = "PSI";
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, {}), in, {}, drawing));
    EXPECT_TRUE(surface.has("\"TM Value\""));
    EXPECT_TRUE(surface.has("\"PSI\""));
    EXPECT_EQ(segments(surface, "pen 000000 1 0"), 2U);
    EXPECT_EQ(segments(surface, kCurvePen), 2U);
    EXPECT_EQ(segments(surface, "pen 00FF00 1 0"), 1U);
}

TEST(DrawFit, AFlatCalibrationHasARangeAroundIt) {
    for (const double level : {0.0, 5.0}) {
        for (const bool allCounts : {false, true}) {
            RecordingSurface surface;
            Plot plot;
            auto in = input({1, 2, 3}, {level, level, level}, 0);
            in.bits = 4;
            FitOptions options;
            options.curveAllPairs = allCounts;
            const auto result = refitPairs(in, options);
            ASSERT_TRUE(result.fitted);
            EXPECT_TRUE(drawFit(plot, surface, result, in, options, {})) << level << allCounts;
            EXPECT_LT(plot.attributes.y.least, level);
            EXPECT_GT(plot.attributes.y.most, level);
            EXPECT_GT(segments(surface, kCurvePen), 0U);
        }
    }
    // Both ends of a parabola may be at one height.
    RecordingSurface surface;
    Plot plot;
    auto in = input({0, 5, 10, 15}, {0, 50, 50, 0}, 2);
    in.bits = 4;
    FitOptions options;
    options.curveAllPairs = true;
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, options), in, options, {}));
    EXPECT_GE(plot.attributes.y.most, 50);
}

TEST(DrawFit, EqualLimitsOfTheUserAreStillNone) {
    RecordingSurface surface;
    Plot plot;
    plot.attributes.scale = PlotScale::MinMax;
    const auto in = input({1, 2, 3}, {1, 2, 3});
    EXPECT_FALSE(drawFit(plot, surface, refitPairs(in, {}), in, {}, {}));
}

TEST(DrawFit, NamesEuValueWithoutUnits) {
    RecordingSurface surface;
    Plot plot;
    const auto in = input({1, 2}, {1, 2});
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, {}), in, {}, {}));
    EXPECT_TRUE(surface.has("\"EU Value\""));
}

TEST(DrawFit, DrawsEveryCountOfTheWord) {
    RecordingSurface surface;
    Plot plot;
    auto in = input({0, 255}, {0, 255});
    in.bits = 8;
    in.binaryFormat = "TWO";
    FitOptions options;
    options.curveAllPairs = true;
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, options), in, options, {}));
    EXPECT_EQ(plot.attributes.scale, PlotScale::MinMax);
    EXPECT_EQ(plot.attributes.x, (PlotRange{-128, 127}));
    // As many points as the range spans: the highest count has none.
    EXPECT_EQ(segments(surface, kCurvePen), 254U);
}

TEST(DrawFit, TakesTheDefaultWordAndDrawsALongerOneInSteps) {
    FitOptions options;
    options.curveAllPairs = true;
    options.defaultBits = 4;
    auto in = input({0, 15}, {0, 15});
    {
        RecordingSurface surface;
        Plot plot;
        EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, options), in, options, {}));
        EXPECT_EQ(plot.attributes.x, (PlotRange{0, 15}));
    }
    in.bits = 64;
    LineCounter surface;
    Plot plot;
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, options), in, options, {}));
    EXPECT_EQ(surface.lines(kCurvePen), kMostCurvePoints - 1);
}

TEST(DrawFit, AWordOfLessThanOneBitHasNoRange) {
    FitOptions options;
    options.curveAllPairs = true;
    options.defaultBits = -2;
    const auto in = input({0, 15}, {0, 15});
    RecordingSurface surface;
    Plot plot;
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, options), in, options, {}));
    EXPECT_EQ(segments(surface, kCurvePen), 1U);
}

TEST(DrawFit, AFailureStandsInThePlotArea) {
    RecordingSurface surface;
    Plot plot;
    const auto in = input({5, 5, 5}, {1, 2, 3});
    (void)drawFit(plot, surface, refitPairs(in, {}), in, {}, {});
    EXPECT_TRUE(surface.has("\"ERROR: Unable to calculate coefficients\""));
    EXPECT_EQ(segments(surface, kCurvePen), 0U);
    EXPECT_EQ(segments(surface, "pen 000000 1 0"), 2U) << "the pairs are still drawn";
}

TEST(DrawFit, ARescaleTakesTheFullScaleUnlessYScalesItself) {
    auto in = input({1, 2}, {1, 2});
    in.limits.valueHigh = "50";
    FitDrawing drawing;
    drawing.rescale = true;
    for (const int method : {0, 1, 2, 3}) {
        RecordingSurface surface;
        Plot plot;
        plot.attributes.setRange(method, 0, 3, 0, 3);
        EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, {}), in, {}, drawing));
        EXPECT_EQ(plot.attributes.y.most, method <= 1 ? 50 : 2) << method;
    }
}

TEST(DrawFit, TheSelectedRowStandsOut) {
    RecordingSurface surface;
    Plot plot;
    const auto in = input({1, 2, 4}, {1, 2, 4});
    FitDrawing drawing;
    drawing.selected = 1;
    EXPECT_TRUE(drawFit(plot, surface, refitPairs(in, {}), in, {}, drawing));
    EXPECT_EQ(surface.of("ellipse"), std::vector<std::string>{"ellipse 192,142 208,158"});
    drawing.selected = 99;
    RecordingSurface other;
    EXPECT_TRUE(drawFit(plot, other, refitPairs(in, {}), in, {}, drawing));
    EXPECT_TRUE(other.of("ellipse").empty());
}

TEST(DrawFit, MarkedRowsHaveRingsIfTheyAreWanted) {
    Plot plot;
    const auto in = input({1, 2, 3}, {1, 2.5, 3});
    const auto result = refitPairs(in, {});
    ASSERT_EQ(result.marked, (std::vector<bool>{true, true, true}));
    for (const bool wanted : {false, true}) {
        RecordingSurface surface;
        FitDrawing drawing;
        drawing.showMarked = wanted;
        EXPECT_TRUE(drawFit(plot, surface, result, in, {}, drawing));
        EXPECT_EQ(surface.of("ellipse").size(), wanted ? 3U : 0U);
    }
}

TEST(LeaveRoomForLabels, KeepsThemOnTheWindow) {
    RecordingSurface surface(800, 500);
    Plot plot;
    const auto in = input({1, 20000}, {1, -1000000});
    const auto result = refitPairs(in, {});
    FitDrawing drawing;
    const auto scaled = fitScale(plot.attributes, result, in, {}, drawing);
    leaveRoomForLabels(drawing, surface, scaled, true);
    ASSERT_TRUE(drawFit(plot, surface, result, in, {}, drawing));
    EXPECT_TRUE(surface.has("\"-1000000.00\""));
    for (const auto& call : surface.of("text ")) {
        EXPECT_EQ(call.find("text -"), std::string::npos) << call;
    }
    EXPECT_LE(plot.rectangle().bottom + 2 + 12 + 16, 500);
    // A window without room gets a small plot and no fraction that is none.
    RecordingSurface tiny(10, 10);
    leaveRoomForLabels(drawing, tiny, scaled, true);
    EXPECT_EQ(drawing.widthFraction, 0.1);
    RecordingSurface nothing(0, 0);
    leaveRoomForLabels(drawing, nothing, scaled, true);
    EXPECT_EQ(drawing.heightFraction, 1.0);
}

TEST(FitScale, IsThatOfTheDrawing) {
    auto in = input({100, 200, 300}, {1, 2.5, -3});
    in.bits = 8;
    for (const int method : {0, 1, 2, 3}) {
        for (const bool all : {false, true}) {
            RecordingSurface surface;
            Plot plot;
            plot.attributes.setRange(method, 50, 400, -9, 9);
            FitOptions options;
            options.curveAllPairs = all;
            FitDrawing drawing;
            drawing.rescale = method == 1;
            const auto result = refitPairs(in, options);
            const auto scaled = fitScale(plot.attributes, result, in, options, drawing);
            EXPECT_TRUE(drawFit(plot, surface, result, in, options, drawing));
            EXPECT_EQ(plot.attributes, scaled) << method << all;
        }
    }
}

TEST(DrawResiduals, ABarForEachPairOverTheRangeOfTheCurve) {
    RecordingSurface surface;
    Plot plot;
    PlotAttributes curve;
    curve.setRange(0, -5, 5, 0, 1);
    const auto in = input({1, 2, 3, 4}, {1, 2.5, 3, 100});
    auto result = refitPairs(in, {});
    result.marked[1] = false;
    plot.attributes = residualScale(curve, result);
    ASSERT_TRUE(drawResiduals(plot, surface, result, {}));
    EXPECT_EQ(segments(surface, "pen FF8000 3 0"), 3U) << "those out of tolerance";
    EXPECT_EQ(segments(surface, "pen FF0000 2 0"), 1U);
    EXPECT_EQ(segments(surface, "pen 000000 1 0"), 1U) << "the zero line";
    EXPECT_EQ(plot.attributes.x, (PlotRange{-5, 5}));
    EXPECT_EQ(plot.attributes.yPrecision, 1) << "errors of some tens";
    EXPECT_FALSE(drawResiduals(plot, surface, refitPairs(input({1}, {1}), {}), {}));
}

TEST(DrawResiduals, WithoutAnErrorThereIsStillAZeroLine) {
    RecordingSurface surface;
    Plot plot;
    PlotAttributes curve;
    curve.setRange(0, 0, 3, 0, 3);
    const auto in = input({1, 2, 3}, {1, 2, 3});
    const auto result = refitPairs(in, {});
    plot.attributes = residualScale(curve, result);
    ASSERT_TRUE(drawResiduals(plot, surface, result, {}));
    EXPECT_EQ(plot.attributes.y, (PlotRange{-1, 1}));
    EXPECT_EQ(segments(surface, "pen 000000 1 0"), 1U);
}

TEST(DrawFitPage, HasTheNameThePlotAndTheNumbers) {
    RecordingSurface surface(700, 1000);
    surface.page = true;
    Plot plot;
    const auto in = input({1, 2, 3}, {1, 2, 3});
    FitOptions options;
    options.precision = 2;
    ASSERT_TRUE(drawFitPage(plot, surface, "ENG1", refitPairs(in, options), in, options, {}));
    EXPECT_EQ(surface.calls.front(), "page");
    for (const char* const text :
         {"\"ENG1\"", "\"TM Value\"", "\"Order Of Fit: 1\"", "\"c(1) = 1.00E+00\"",
          "\"Correlation Coefficient: 1.00\"", "\"RMS: 0.00\""}) {
        EXPECT_TRUE(surface.has(text)) << text;
    }
    RecordingSurface refused;
    refused.page = true;
    refused.startsPage = false;
    EXPECT_FALSE(drawFitPage(plot, refused, "ENG1", refitPairs(in, options), in, options, {}));
}

TEST(FitPictures, AreWhatTheyWere) {
    auto in = input({0, 1000, 2000, 3000, 4000}, {0, 9.5, 21, 29, 41});
    in.series = true;
    in.zero = "500";
    in.cal = "3500";
    const auto result = refitPairs(in, {});
    FitDrawing drawing;
    drawing.units = "PSI";
    drawing.selected = 2;
    drawing.showMarked = true;
    RecordingSurface window(600, 400);
    Plot plot;
    leaveRoomForLabels(drawing, window, fitScale(plot.attributes, result, in, {}, drawing), true);
    ASSERT_TRUE(drawFit(plot, window, result, in, {}, drawing));
    test::expectPicture(window, "fit");
    RecordingSurface below(600, 120);
    Plot residuals;
    residuals.attributes = residualScale(plot.attributes, result);
    leaveRoomForLabels(drawing, below, residuals.attributes, false);
    ASSERT_TRUE(drawResiduals(residuals, below, result, drawing));
    test::expectPicture(below, "residuals");
    RecordingSurface page(700, 1000);
    page.page = true;
    Plot printed;
    ASSERT_TRUE(drawFitPage(printed, page, "ENG1-P", result, in, {}, drawing));
    test::expectPicture(page, "fit-page");
}

TEST(JudgeResult, LooksAtTheRangeOnlyIfTheWordIsKnownOrDrawn) {
    Values x;
    Values y;
    for (int i = 0; i < 20; ++i) {
        x.push_back(i);
        y.push_back(std::sin(i));
    }
    auto in = input(x, y, 5);
    FitOptions options;
    const auto result = refitPairs(in, options);
    EXPECT_EQ(judgeResult(result, in, options).overRange, 0);
    options.curveAllPairs = true;
    EXPECT_GT(judgeResult(result, in, options).overRange, 0);
    options.curveAllPairs = false;
    in.bits = 12;
    EXPECT_GT(judgeResult(result, in, options).overRange, 0);
    EXPECT_FALSE(judgeResult(refitPairs(input({1}, {1}), {}), in, options).known);
}

}  // namespace
}  // namespace kavu
