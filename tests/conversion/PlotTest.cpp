#include "conversion/ExpectPicture.h"
#include "conversion/Plot.h"
#include "support/RecordingSurface.h"
#include "support/TestContext.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::RecordingSurface;
using Values = std::vector<double>;
using Calls = std::vector<std::string>;

/// A frame of half the width and height of the surface: 100,75 to 300,225.
PlotFrame frame(const Values& x, const Values& y) {
    PlotFrame made;
    made.widthFraction = 0.5;
    made.heightFraction = 0.5;
    made.x = x;
    made.y = y;
    made.xTitle = "TM Value";
    made.yTitle = "EU Value";
    return made;
}

/// A frame from 0 to 10 on both axes with the calls so far forgotten.
struct Framed {
    explicit Framed(bool page = false) {
        surface.page = page;
        plot.attributes.setRange(0, 0, 10, 0, 10);
        EXPECT_TRUE(plot.drawFrame(&surface, frame(none, none)));
        surface.calls.clear();
    }
    SeriesAttributes& series() { return plot.attributes.series[0]; }
    bool draw(const Values& x, const Values& y, bool sorted = false) {
        return plot.drawSeries(1, x, y, sorted);
    }

    Values none;
    RecordingSurface surface;
    Plot plot;
};

// --- Scaling -------------------------------------------------------------------------------

TEST(AutomaticScaling, AlwaysContains0) {
    RecordingSurface surface;
    Plot plot;
    const Values x{100, 200};
    const Values y{-7, -3};
    ASSERT_TRUE(plot.drawFrame(&surface, frame(x, y)));
    EXPECT_EQ(plot.attributes.x, (PlotRange{0, 200}));
    EXPECT_EQ(plot.attributes.y, (PlotRange{-7, 0}));
}

TEST(AutomaticScaling, LeavesTheAxisThatIsNotScaled) {
    const Values x{100, 200};
    const Values y{30, 40};
    RecordingSurface surface;
    Plot plot;
    plot.attributes.setRange(1, 1, 2, 30, 50);
    ASSERT_TRUE(plot.drawFrame(&surface, frame(x, y)));
    EXPECT_EQ(plot.attributes.x, (PlotRange{0, 200}));
    EXPECT_EQ(plot.attributes.y, (PlotRange{30, 50}));
}

TEST(AutomaticScaling, OnePointAt0HasAnEmptyRangeAndShowsIt) {
    RecordingSurface surface;
    Plot plot;
    const Values zero{0};
    EXPECT_FALSE(plot.drawFrame(&surface, frame(zero, zero)));
    EXPECT_TRUE(surface.has("\"Invalid Min/Max graph values found\""));
    EXPECT_TRUE(surface.has("\"Min X: 0.000000 Max X: 0.000000\""));
    EXPECT_TRUE(surface.has("\"Min value can not be greater than Max value\""));
    EXPECT_FALSE(plot.drawSeries(1, zero, zero, false)) << "series say nothing more";
}

TEST(AutomaticScaling, AnEmptyRangeOfYIsToldAsWell) {
    RecordingSurface surface;
    Plot plot;
    EXPECT_FALSE(plot.drawFrame(&surface, frame(Values{1}, Values{0})));
    EXPECT_TRUE(surface.has("\"Min Y: 0.000000 Max Y: 0.000000\""));
}

TEST(PlotAxis, MapsARangeToFractions) {
    const auto above = PlotAxis::of({100, 300});
    EXPECT_EQ(above.offset, -100);
    EXPECT_EQ(above.span, 200);
    EXPECT_EQ(above.fraction(150), 0.25);
    const auto below = PlotAxis::of({-100, 300});
    EXPECT_EQ(below.offset, 100);
    EXPECT_EQ(below.span, 400);
    EXPECT_EQ(below.fraction(0), 0.25);
    EXPECT_FALSE(PlotAxis::of({5, 5}).fraction(5)) << "a span of 0 gives no mapping";
    EXPECT_FALSE(above.fraction(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(above.fraction(std::numeric_limits<double>::infinity()));
}

// --- The frame -----------------------------------------------------------------------------

TEST(DrawFrame, NeedsASurfaceAndAPage) {
    Plot plot;
    EXPECT_FALSE(plot.drawFrame(nullptr, frame({1, 2}, {1, 2})));
    RecordingSurface surface;
    surface.page = true;
    surface.startsPage = false;
    EXPECT_FALSE(plot.drawFrame(&surface, frame({1, 2}, {1, 2})));
    EXPECT_EQ(surface.calls, Calls{"page"});
}

TEST(DrawFrame, FractionsMustLieBetween0And1) {
    for (const double bad : {-0.1, 1.1, std::numeric_limits<double>::quiet_NaN()}) {
        RecordingSurface surface;
        Plot plot;
        const Values x{1, 2};
        auto wrong = frame(x, x);
        wrong.widthFraction = bad;
        EXPECT_FALSE(plot.drawFrame(&surface, wrong)) << bad;
        EXPECT_TRUE(surface.has("\"Invalid page width values found\""));
        EXPECT_TRUE(surface.has("\"Values must be between 0.0 and 1.0\""));
    }
    for (const double good : {0.0, 1.0}) {
        RecordingSurface surface;
        Plot plot;
        const Values x{1, 2};
        auto right = frame(x, x);
        right.widthFraction = good;
        EXPECT_TRUE(plot.drawFrame(&surface, right)) << good;
    }
}

TEST(DrawFrame, APenThatCanNotBeMadeIsTold) {
    RecordingSurface surface;
    surface.makesPens = false;
    Plot plot;
    const Values x{1, 2};
    EXPECT_FALSE(plot.drawFrame(&surface, frame(x, x)));
    EXPECT_TRUE(surface.has("\"Unable to create pen.\""));
}

TEST(DrawFrame, StandsWhereItsAlignmentSays) {
    const std::pair<PlotAlignment, const char*> cases[] = {
        {PlotAlignment::Left, "rectangle 0,75 200,225"},
        {PlotAlignment::Centre, "rectangle 100,75 300,225"},
        {PlotAlignment::Right, "rectangle 200,75 400,225"},
    };
    for (const auto& [alignment, rectangle] : cases) {
        RecordingSurface surface;
        Plot plot;
        const Values x{1, 2};
        auto placed = frame(x, x);
        placed.alignment = alignment;
        ASSERT_TRUE(plot.drawFrame(&surface, placed));
        EXPECT_EQ(surface.of("rectangle").at(1), rectangle);
    }
}

TEST(DrawFrame, OnAPageStandsAtTheTextLineAndMovesIt) {
    RecordingSurface surface;
    surface.page = true;
    surface.line_ = 40;
    Plot plot;
    const Values x{1, 2};
    auto printed = frame(x, x);
    ASSERT_TRUE(plot.drawFrame(&surface, printed));
    EXPECT_EQ(surface.of("rectangle"), Calls{"rectangle 100,40 300,190"}) << "no background";
    EXPECT_EQ(surface.line_, 40);
    printed.advance = true;
    ASSERT_TRUE(plot.drawFrame(&surface, printed));
    EXPECT_EQ(surface.line_, 190 + 2 + 12 + 16 + 15);
}

TEST(DrawFrame, BlackAndWhiteIsForPages) {
    for (const bool page : {false, true}) {
        for (const bool blackAndWhite : {false, true}) {
            RecordingSurface surface;
            surface.page = page;
            Plot plot;
            plot.attributes.blackAndWhite = blackAndWhite;
            const Values x{1, 2};
            ASSERT_TRUE(plot.drawFrame(&surface, frame(x, x)));
            EXPECT_EQ(surface.of("pen").back(),
                      page && blackAndWhite ? "pen 000000 2 0" : "pen C0C0C0 2 0");
        }
    }
}

TEST(DrawFrame, WithoutDivisionsThereIsNoGridAndTwoLabels) {
    RecordingSurface surface;
    Plot plot;
    plot.attributes.setRange(0, 5, 25, 0, 1);
    plot.attributes.xDivisions = 0;
    plot.attributes.yDivisions = 0;
    ASSERT_TRUE(plot.drawFrame(&surface, frame({}, {})));
    EXPECT_TRUE(surface.of("line").empty());
    EXPECT_EQ(surface.of("text").size(), 2U + 2U + 2U);
    EXPECT_TRUE(surface.has("text 100,227 \"5.00\""));
    EXPECT_TRUE(surface.has("text 260,227 \"25.00\""));
}

TEST(DrawFrame, GridLinesAreAtEqualIntegerSteps) {
    RecordingSurface surface;
    Plot plot;
    plot.attributes.setRange(0, 0, 9, 0, 1);
    plot.attributes.xDivisions = 3;
    plot.attributes.yDivisions = 4;
    ASSERT_TRUE(plot.drawFrame(&surface, frame({}, {})));
    EXPECT_EQ(surface.of("line"),
              (Calls{"line 166,75 166,225", "line 232,75 232,225", "line 100,188 300,188",
                     "line 100,151 300,151", "line 100,114 300,114"}));
    EXPECT_TRUE(surface.has("text 150,227 \"3.00\"")) << "centred on its line";
}

// --- Series --------------------------------------------------------------------------------

TEST(DrawSeries, IsRefusedWithoutAFrameOrAPoint) {
    Plot plot;
    EXPECT_FALSE(plot.drawSeries(1, Values{1}, Values{1}, false));
    Framed f;
    EXPECT_FALSE(f.draw({}, {}));
    EXPECT_FALSE(f.plot.drawSeries(0, Values{1}, Values{1}, false));
    EXPECT_FALSE(f.plot.drawSeries(11, Values{1}, Values{1}, false));
    EXPECT_TRUE(f.surface.calls.empty());
    f.plot.endFrame();
    EXPECT_FALSE(f.draw({1}, {1}));
}

TEST(DrawSeries, DrawsSegmentBySegment) {
    Framed f;
    EXPECT_TRUE(f.draw({0, 5, 10}, {0, 10, 0}));
    EXPECT_EQ(f.surface.calls,
              (Calls{"pen 000000 1 0", "hollow", "line 100,225 200,75", "line 200,75 300,225"}));
}

TEST(DrawSeries, SortsACopyByX) {
    Framed f;
    const Values x{10, 0, 5};
    EXPECT_TRUE(f.draw(x, {1, 2, 3}, true));
    EXPECT_EQ(f.surface.of("line"), (Calls{"line 100,195 200,180", "line 200,180 300,210"}));
    EXPECT_EQ(x, (Values{10, 0, 5}));
}

TEST(DrawSeries, APointWithoutAPlaceEndsTheSeries) {
    Framed f;
    f.series().symbol = PlotSymbol::Plus;
    const double bad = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(f.draw({0, 5, bad, 10}, {0, 5, 5, 10}, true));
    EXPECT_EQ(f.surface.of("line").size(), 1U) << "no symbols either";
}

TEST(DrawSeries, HugeNumbersDoNotStopIt) {
    Framed f;
    EXPECT_TRUE(f.draw({-1e300, 1e300}, {5, 5}));
    EXPECT_EQ(f.surface.of("line"), Calls{"line 100,150 300,150"});
}

TEST(DrawSeries, WithoutALineThereAreSymbolsOnly) {
    Framed f;
    f.series() = {0x112233, LineStyle::None, 1, PlotSymbol::HollowSquare};
    EXPECT_TRUE(f.draw({5, 10}, {5, 10}));
    EXPECT_TRUE(f.surface.of("line").empty());
    EXPECT_EQ(f.surface.of("rectangle"),
              (Calls{"rectangle 196,146 204,154", "rectangle 296,71 304,79"}));
    EXPECT_EQ(f.surface.of("pen"), Calls{"pen 112233 1 0"});
}

TEST(DrawSeries, IsBlackOnABlackAndWhitePage) {
    Framed f(true);
    f.series().colour = 0xFF0000;
    f.series().symbol = PlotSymbol::FilledCircle;
    EXPECT_TRUE(f.draw({5, 6}, {5, 6}));
    EXPECT_EQ(f.surface.of("pen FF0000"), Calls{});
    EXPECT_EQ(f.surface.of("brush"), Calls{"brush 000000"});
}

TEST(DrawSymbols, GrowWithTheResolutionAndTheLine) {
    for (const auto& [inch, width, half] :
         {std::tuple(72.0, 1, 3), std::tuple(600.0, 1, 25), std::tuple(96.0, 8, 13)}) {
        Framed f;
        f.surface.inch = inch;
        f.series() = {0, LineStyle::None, width, PlotSymbol::HollowCircle};
        EXPECT_TRUE(f.draw({5}, {5}));
        EXPECT_EQ(f.surface.of("ellipse").at(0), formatPrintf("ellipse %d,%d %d,%d", 200 - half,
                                                              150 - half, 200 + half, 150 + half));
    }
}

TEST(DrawSymbols, HaveTheirShapes) {
    const std::pair<PlotSymbol, Calls> cases[] = {
        {PlotSymbol::None, {}},
        {PlotSymbol::HollowSquare, {"rectangle 196,146 204,154"}},
        {PlotSymbol::FilledSquare, {"brush FF0000", "rectangle 196,146 204,154"}},
        {PlotSymbol::HollowTriangle,
         {"line 196,154 200,146", "line 200,146 204,154", "line 204,154 196,154"}},
        {PlotSymbol::FilledTriangle, {"brush FF0000", "polygon 196,154 200,146 204,154"}},
        {PlotSymbol::HollowCircle, {"ellipse 196,146 204,154"}},
        {PlotSymbol::FilledCircle, {"brush FF0000", "ellipse 196,146 204,154"}},
        {PlotSymbol::Plus, {"line 200,146 200,154", "line 196,150 204,150"}},
        {PlotSymbol::Cross, {"line 196,146 204,154", "line 196,154 204,146"}},
        {PlotSymbol::Asterisk,
         {"line 200,146 200,154", "line 196,150 204,150", "line 196,146 204,154",
          "line 196,154 204,146"}},
    };
    for (const auto& [symbol, shape] : cases) {
        Framed f;
        f.series() = {0xFF0000, LineStyle::None, 1, symbol};
        EXPECT_TRUE(f.draw({5}, {5}));
        Calls drawn;
        for (const auto& call : f.surface.calls) {
            if (call != "hollow" && !call.starts_with("pen")) {
                drawn.push_back(call);
            }
        }
        EXPECT_EQ(drawn, shape) << static_cast<int>(symbol);
    }
}

TEST(DrawSymbols, PointsOutsideTheFrameHaveNone) {
    Framed f;
    f.series() = {0, LineStyle::None, 1, PlotSymbol::HollowSquare};
    EXPECT_TRUE(f.draw({-1, 5, 11, 5}, {5, -1, 5, 11}));
    EXPECT_TRUE(f.surface.of("rectangle").empty());
    EXPECT_TRUE(f.draw({0, 10}, {0, 10})) << "the edge is inside";
    EXPECT_EQ(f.surface.of("rectangle").size(), 2U);
}

TEST(ValuesAt, GoesBackFromAPixel) {
    Framed f;
    const auto values = f.plot.valuesAt({150, 150});
    ASSERT_TRUE(values);
    EXPECT_EQ(values->x, 2.5);
    EXPECT_EQ(values->y, 5);
    EXPECT_FALSE(f.plot.valuesAt({99, 150}));
    f.plot.releaseSurface();
    EXPECT_TRUE(f.plot.valuesAt({150, 150})) << "a pointer moves long after the drawing";
    EXPECT_FALSE(f.plot.drawSeries(1, Values{1}, Values{1}, false));
    f.plot.endFrame();
    EXPECT_FALSE(f.plot.valuesAt({150, 150}));
}

// --- Clipping ------------------------------------------------------------------------------

TEST(ClipSegment, KeepsTheInnerPart) {
    const DrawingRect rect{0, 0, 100, 50};
    struct Case {
        PlotSegment segment;
        std::optional<PlotSegment> inner;
    };
    const Case cases[] = {
        {{{10, 10}, {20, 20}}, PlotSegment{{10, 10}, {20, 20}}},
        {{{-50, 25}, {150, 25}}, PlotSegment{{0, 25}, {100, 25}}},     // level, crosses both sides
        {{{50, -10}, {50, 90}}, PlotSegment{{50, 0}, {50, 50}}},       // upright
        {{{-50, 0}, {150, 50}}, PlotSegment{{0, 12.5}, {100, 37.5}}},  // slanting, both sides
        {{{0, -50}, {100, 150}}, PlotSegment{{25, 0}, {50, 50}}},
        {{{-20, 10}, {-10, 20}}, std::nullopt},  // entirely left
        {{{110, 10}, {120, 20}}, std::nullopt},
        {{{10, -20}, {20, -10}}, std::nullopt},
        {{{10, 60}, {20, 70}}, std::nullopt},
        {{{-10, 5}, {5, -10}}, std::nullopt},  // passes a corner
        {{{-10, -5}, {-10, 70}}, std::nullopt},
        {{{5, 5}, {5, 5}}, PlotSegment{{5, 5}, {5, 5}}},
        {{{-5, 5}, {-5, 5}}, std::nullopt},
    };
    for (const auto& one : cases) {
        const auto seen = clipSegment(one.segment, rect);
        ASSERT_EQ(seen.has_value(), one.inner.has_value())
            << one.segment.from.x << "," << one.segment.from.y;
        if (seen) {
            EXPECT_NEAR(seen->from.x, one.inner->from.x, 1e-9);
            EXPECT_NEAR(seen->from.y, one.inner->from.y, 1e-9);
            EXPECT_NEAR(seen->to.x, one.inner->to.x, 1e-9);
            EXPECT_NEAR(seen->to.y, one.inner->to.y, 1e-9);
        }
    }
}

TEST(ClipSegment, WhatIsSeenIsAlwaysInside) {
    const DrawingRect rect{0, 0, 100, 50};
    unsigned state = 1;
    const auto next = [&state] {
        state = state * 1664525U + 1013904223U;
        return static_cast<double>(state >> 8U) / 65536.0 - 128;
    };
    int seen = 0;
    for (int i = 0; i < 20000; ++i) {
        const PlotSegment segment{{next() * 3, next() * 3}, {next() * 3, next() * 3}};
        if (const auto inner = clipSegment(segment, rect)) {
            ++seen;
            EXPECT_TRUE(rect.contains(inner->from) && rect.contains(inner->to));
        }
    }
    EXPECT_GT(seen, 1000);
}

// --- Pictures ------------------------------------------------------------------------------

/// Compares with tests/golden/plots/<name>.txt; KAVU_WRITE_GOLDEN writes it anew.
TEST(PlotPictures, AreWhatTheyWere) {
    const Values x{-10, 0, 10, 20, 30};
    const Values y{5, -2, 7, 9, 40};
    for (const bool page : {false, true}) {
        RecordingSurface surface(500, 400);
        surface.page = page;
        surface.line_ = page ? 60 : 0;
        Plot plot;
        plot.attributes.xDivisions = 4;
        plot.attributes.yDivisions = 3;
        plot.attributes.yPrecision = 0;
        plot.attributes.series[0].symbol = PlotSymbol::FilledTriangle;
        plot.attributes.series[1].style = LineStyle::DashDot;
        auto drawn = frame(x, y);
        drawn.advance = true;
        ASSERT_TRUE(plot.drawFrame(&surface, drawn));
        EXPECT_TRUE(plot.drawSeries(1, x, y, false));
        EXPECT_TRUE(plot.drawSeries(2, Values{-100, 100}, Values{-100, 100}, false));
        test::expectPicture(surface, page ? "page" : "window");
    }
}

TEST(PlotPictures, AClippedRangeIsWhatItWas) {
    RecordingSurface surface;
    Plot plot;
    plot.attributes.setRange(0, 12, 3, 8, -2);
    plot.attributes.series[0].symbol = PlotSymbol::Asterisk;
    const Values x{0, 4, 6, 20, 8};
    const Values y{0, 7, 30, 5, -9};
    ASSERT_TRUE(plot.drawFrame(&surface, frame(x, y)));
    EXPECT_TRUE(plot.drawSeries(1, x, y, true));
    test::expectPicture(surface, "clipped");
}

}  // namespace
}  // namespace kavu
