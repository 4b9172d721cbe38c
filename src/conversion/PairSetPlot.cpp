#include "conversion/EuNumbers.h"
#include "conversion/PairSetFit.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cmath>

namespace kavu {

namespace {

constexpr std::string_view kXTitle = "TM Value";
constexpr std::string_view kYTitle = "EU Value";
constexpr DrawingColour kHighlight = 0xFF0000;
constexpr DrawingColour kMarked = 0xFF8000;
/// Of the page that the plot takes, with its labels.
constexpr double kPageWidth = 0.82;
constexpr double kPageHeight = 0.45;

struct Curve {
    std::vector<double> x;
    std::vector<double> y;
};

/// As many points as the range spans, from the lowest count on.
Curve curveOf(const FitResult& result, const CountRange& range) {
    const double span = range.highest - range.lowest;
    const bool everyCount = span <= static_cast<double>(kMostCurvePoints);
    const auto points = everyCount ? static_cast<std::size_t>(span) : kMostCurvePoints;
    const double step = everyCount ? 1.0 : span / static_cast<double>(kMostCurvePoints);
    Curve curve;
    curve.x.reserve(points);
    curve.y.reserve(points);
    const auto c = result.fittedCoefficients();
    for (std::size_t i = 0; i < points; ++i) {
        curve.x.push_back(range.lowest + static_cast<double>(i) * step);
        curve.y.push_back(evaluatePolynomial(curve.x.back(), c, result.order));
    }
    return curve;
}

constexpr double kRounding = 1e-9;  // of a value

/// A flat curve has no range of its own: half of its value on either side, 1 for a curve at 0.
PlotRange spread(double value) {
    const double half = value == 0 ? 1 : std::abs(value) / 2;
    return {value - half, value + half};
}

/// The least and the greatest value of the curve and of the pairs.
PlotRange rangeOfCurve(const FitResult& result, const CountRange& counts) {
    constexpr int kParts = 256;
    PlotRange range{result.y.front(), result.y.front()};
    const auto widen = [&range](double value) {
        range.least = std::min(range.least, value);
        range.most = std::max(range.most, value);
    };
    for (const double value : result.y) {
        widen(value);
    }
    const auto c = result.fittedCoefficients();
    for (int i = 0; i <= kParts; ++i) {
        const double share = static_cast<double>(i) / kParts;
        widen(evaluatePolynomial(counts.lowest + share * (counts.highest - counts.lowest), c,
                                 result.order));
    }
    return range;
}

/// Gives the axis of a flat calibration a range around it. An axis that follows the values would
/// begin at 0 and have the curve on its end.
void spreadFlat(PlotAttributes& attributes, const FitResult& result) {
    auto range = attributes.y;
    if (scalesY(attributes.scale)) {
        const auto [least, most] = std::minmax_element(result.y.begin(), result.y.end());
        range = {*least, *most};
    }
    const double size = std::max(std::abs(range.least), std::abs(range.most));
    const double span = range.most - range.least;
    if (span < 0 || span > kRounding * size) {
        return;
    }
    attributes.y = spread(range.least);
    attributes.scale = scalesX(attributes.scale) ? PlotScale::AutoX : PlotScale::MinMax;
}

/// The range of the plot: the full scale if it is wanted, all counts if they are drawn.
void setPlotRange(PlotAttributes& attributes, const FitResult& result,
                  const std::optional<CountRange>& counts, const FitDrawing& drawing) {
    if (drawing.rescale && !scalesY(attributes.scale)) {
        attributes.y = result.fullScale;
    }
    if (counts && result.fitted && result.pairs >= 2 && result.order < result.pairs) {
        const auto c = result.fittedCoefficients();
        PlotRange ends{evaluatePolynomial(counts->lowest, c, result.order),
                       evaluatePolynomial(counts->highest, c, result.order)};
        const auto curve = rangeOfCurve(result, *counts);
        if (std::abs(ends.most - ends.least) <= kRounding * (curve.most - curve.least)) {
            ends = curve;
            attributes.y = ends;
        }
        attributes.setRange(static_cast<int>(PlotScale::MinMax), counts->lowest, counts->highest,
                            ends.least, ends.most);
        spreadFlat(attributes, result);
    } else if (result.fitted && (drawing.rescale || scalesY(attributes.scale))) {
        spreadFlat(attributes, result);
    }
}

std::optional<CountRange> drawnCounts(const FitInput& input, const FitOptions& options) {
    return options.curveAllPairs ? fitCountRange(input, options) : std::nullopt;
}

/// A ring around the point of a row.
void drawRing(const Plot& plot, DrawingSurface& surface, const FitResult& result, std::size_t row,
              const DrawingPen& pen) {
    const auto place = plot.map(result.x[row], result.y[row]);
    if (!place || !plot.rectangle().contains(*place)) {
        return;
    }
    const double half = std::floor(surface.pixelsPerInch() / 12);
    (void)surface.setPen(pen);
    surface.setHollowBrush();
    surface.ellipse({place->x - half, place->y - half, place->x + half, place->y + half});
}

void drawRings(const Plot& plot, DrawingSurface& surface, const FitResult& result,
               const FitDrawing& drawing) {
    for (std::size_t i = 0; drawing.showMarked && i < result.marked.size(); ++i) {
        if (result.marked[i]) {
            drawRing(plot, surface, result, i, {kMarked, 1, LineStyle::Solid});
        }
    }
    if (drawing.selected && *drawing.selected < result.x.size()) {
        drawRing(plot, surface, result, *drawing.selected, {kHighlight, 2, LineStyle::Solid});
    }
}

/// As many digits as it takes to distinguish the errors.
int errorPrecision(const FitResult& result) {
    double most = 0;
    for (const double error : result.errors) {
        most = std::max(most, std::abs(error));
    }
    constexpr int kDigits = 2;
    constexpr int kMostDigits = 12;
    if (!(most > 0) || !std::isfinite(most)) {
        return kDigits;
    }
    const int magnitude = static_cast<int>(std::floor(std::log10(most)));
    return std::clamp(kDigits - magnitude, 0, kMostDigits);
}

}  // namespace

PlotAttributes fitScale(PlotAttributes attributes, const FitResult& result, const FitInput& input,
                        const FitOptions& options, const FitDrawing& drawing) {
    setPlotRange(attributes, result, drawnCounts(input, options), drawing);
    attributes.scaleTo(result.x, result.y);
    return attributes;
}

bool drawFit(Plot& plot, DrawingSurface& surface, const FitResult& result, const FitInput& input,
             const FitOptions& options, const FitDrawing& drawing) {
    if (!drawing.printing) {
        (void)surface.setPen({0xFFFFFF, 1, LineStyle::Solid});
        surface.setSolidBrush(0xFFFFFF);
        surface.rectangle(surface.area());
    }
    if (result.pairs == 0) {
        drawMessage(surface, fitFailureText(result));
        return false;
    }
    const auto counts = drawnCounts(input, options);
    setPlotRange(plot.attributes, result, counts, drawing);
    PlotFrame frame;
    frame.widthFraction = drawing.widthFraction;
    frame.heightFraction = drawing.heightFraction;
    frame.alignment = drawing.alignment;
    frame.advance = drawing.printing;
    frame.x = result.x;
    frame.y = result.y;
    frame.xTitle = kXTitle;
    frame.yTitle = drawing.units.empty() ? kYTitle : std::string_view(drawing.units);
    const bool framed = plot.drawFrame(&surface, frame);
    if (result.order < result.pairs) {
        (void)plot.drawSeries(1, result.x, result.y, options.sorted);
    }
    if (result.fitted && counts) {
        const auto curve = curveOf(result, *counts);
        (void)plot.drawSeries(2, curve.x, curve.y, false);
    } else if (result.fitted) {
        (void)plot.drawSeries(2, result.x, result.computed, options.sorted);
    }
    if (result.zeroY && result.calY) {
        const double x[] = {*result.zeroX, *result.calX};
        const double y[] = {*result.zeroY, *result.calY};
        (void)plot.drawSeries(3, x, y, false);
    }
    if (framed) {
        drawRings(plot, surface, result, drawing);
    }
    if (!result.fitted) {
        drawMessage(surface, fitFailureText(result));
    }
    return framed;
}

void leaveRoomForLabels(FitDrawing& drawing, const DrawingSurface& surface,
                        const PlotAttributes& scaled, bool xTitle) {
    const auto area = surface.area();
    double widest = 0;
    for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        const double value = scaled.y.least + share * (scaled.y.most - scaled.y.least);
        const auto label = fixedText(value, scaled.yPrecision);
        widest = std::max(widest, surface.textSize(label, {}).width);
    }
    const double gap = 2.0 * scaled.borderWidth + kTitleHeight / 2;
    const double beside = widest + kTitleHeight + gap;
    // The frame is centred, so the room above equals that below.
    const double below = surface.textSize("0", {}).height + gap + (xTitle ? kTitleHeight : 0);
    const auto fraction = [](double length, double margin) {
        return length > 0 ? std::clamp(1 - 2 * margin / length, 0.1, 1.0) : 1.0;
    };
    drawing.widthFraction = fraction(area.width(), beside);
    drawing.heightFraction = fraction(area.height(), below);
    drawing.alignment = PlotAlignment::Centre;
}

PlotAttributes residualScale(const PlotAttributes& curve, const FitResult& result) {
    auto scaled = curve;
    scaled.scale = PlotScale::AutoY;
    scaled.scaleTo({}, result.errors);
    scaled.yPrecision = errorPrecision(result);
    if (scaled.y.least == scaled.y.most) {
        scaled.y = {-1, 1};
    }
    scaled.scale = PlotScale::MinMax;
    return scaled;
}

bool drawResiduals(Plot& plot, DrawingSurface& surface, const FitResult& result,
                   const FitDrawing& drawing) {
    (void)surface.setPen({0xFFFFFF, 1, LineStyle::Solid});
    surface.setSolidBrush(0xFFFFFF);
    surface.rectangle(surface.area());
    if (!result.fitted) {
        return false;
    }
    PlotFrame frame;
    frame.widthFraction = drawing.widthFraction;
    frame.heightFraction = drawing.heightFraction;
    frame.alignment = drawing.alignment;
    frame.x = result.x;
    frame.y = result.errors;
    frame.yTitle = "Error";
    if (!plot.drawFrame(&surface, frame)) {
        return false;
    }
    const auto& rect = plot.rectangle();
    const auto drawBar = [&](const DrawingPen& pen, DrawingPoint from, DrawingPoint to) {
        if (const auto seen = clipSegment({from, to}, rect)) {
            (void)surface.setPen(pen);
            surface.line(seen->from, seen->to);
        }
    };
    const auto colour = plot.attributes.series[1].colour;
    for (std::size_t i = 0; i < result.x.size(); ++i) {
        const auto foot = plot.map(result.x[i], 0);
        const auto head = plot.map(result.x[i], result.errors[i]);
        if (foot && head) {
            const bool marked = result.marked[i];
            drawBar({marked ? kMarked : colour, marked ? 3 : 2, LineStyle::Solid}, *foot, *head);
        }
    }
    if (const auto zero = plot.map(plot.attributes.x.least, 0)) {
        drawBar({0, 1, LineStyle::Solid}, {rect.left, zero->y}, {rect.right, zero->y});
    }
    return true;
}

bool drawFitPage(Plot& plot, DrawingSurface& page, std::string_view name, const FitResult& result,
                 const FitInput& input, const FitOptions& options, FitDrawing drawing) {
    if (page.isPage() && !page.startPage()) {
        return false;
    }
    const auto area = page.area();
    const double lineHeight = page.textSize("0", {}).height;
    page.text({area.left, area.top}, name, {"Arial", kTitleHeight, true, 0});
    drawing.printing = true;
    drawing.alignment = PlotAlignment::Centre;
    drawing.widthFraction = kPageWidth;
    drawing.heightFraction = kPageHeight;
    page.setTextLine(area.top + 2 * kTitleHeight);
    if (!drawFit(plot, page, result, input, options, drawing)) {
        return false;
    }
    // A picture has no text line; there the plot is centred.
    double line = page.isPage() ? page.textLine()
                                : plot.rectangle().bottom + 2 * lineHeight + 2 * kTitleHeight;
    auto lines = coefficientLines(result, options.precision);
    if (result.fitted) {
        lines.insert(lines.begin(), formatPrintf("Order Of Fit: %d", result.order));
        lines.push_back("Correlation Coefficient: " + correlationText(result, options.precision));
        lines.push_back("RMS: " + rmsText(result, options.precision));
    }
    for (const auto& text : lines) {
        page.text({area.left, line}, text, {});
        line += lineHeight;
    }
    return true;
}

}  // namespace kavu
