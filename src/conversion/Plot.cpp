#include "conversion/Plot.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

namespace kavu {

namespace {

const DrawingFont kLabelFont{};

DrawingFont titleFont(int angle) {
    return {"Arial", kTitleHeight, true, angle};
}

std::string labelText(double value, int precision) {
    return formatPrintf("%.*f", precision, value);
}

/// The value at one of the grid lines.
double gridValue(const PlotRange& range, int line, int divisions) {
    return range.least + line * (range.most - range.least) / divisions;
}

/// Pixels of a whole number of equal steps.
double gridPixel(double from, double length, int line, int divisions) {
    return from + std::trunc(length / divisions) * line;
}

/// number * numerator / denominator, rounded to the nearest integer.
double mulDiv(double number, double numerator, double denominator) {
    return std::floor(number * numerator / denominator + 0.5);
}

/// The places of the points in ascending order of x.
std::vector<std::size_t> drawingOrder(std::span<const double> x, bool sorted) {
    std::vector<std::size_t> order(x.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    // With a NaN there is no order, and the series ends at that point anyway.
    if (sorted && std::none_of(x.begin(), x.end(), [](double v) { return std::isnan(v); })) {
        std::stable_sort(order.begin(), order.end(),
                         [&x](std::size_t a, std::size_t b) { return x[a] < x[b]; });
    }
    return order;
}

}  // namespace

// --- Arithmetic --------------------------------------------------------------------------

PlotAxis PlotAxis::of(const PlotRange& range) {
    PlotAxis axis;
    if (range.least >= 0) {
        axis.offset = -range.least;
        axis.span = range.most - range.least;
    } else {
        axis.offset = std::abs(range.least);
        axis.span = axis.offset + range.most;
    }
    return axis;
}

std::optional<double> PlotAxis::fraction(double value) const {
    if (span == 0.0) {
        return std::nullopt;
    }
    const double found = (value + offset) / span;
    return std::isfinite(found) ? std::optional(found) : std::nullopt;
}

std::optional<PlotSegment> clipSegment(PlotSegment segment, const DrawingRect& rect) {
    auto& [p, q] = segment;
    if ((p.x < rect.left && q.x < rect.left) || (p.x > rect.right && q.x > rect.right) ||
        (p.y < rect.top && q.y < rect.top) || (p.y > rect.bottom && q.y > rect.bottom)) {
        return std::nullopt;
    }
    if (p.x == q.x) {
        p.y = std::clamp(p.y, rect.top, rect.bottom);
        q.y = std::clamp(q.y, rect.top, rect.bottom);
        return segment;
    }
    if (p.y == q.y) {
        p.x = std::clamp(p.x, rect.left, rect.right);
        q.x = std::clamp(q.x, rect.left, rect.right);
        return segment;
    }
    const double a = (q.y - p.y) / (q.x - p.x);
    const double b = p.y - a * p.x;
    for (DrawingPoint* const end : {&p, &q}) {
        if (end->y < rect.top || end->y > rect.bottom) {
            end->y = end->y < rect.top ? rect.top : rect.bottom;
            end->x = (end->y - b) / a;
        }
        if (end->x < rect.left || end->x > rect.right) {
            end->x = end->x < rect.left ? rect.left : rect.right;
            end->y = a * end->x + b;
        }
        if (!rect.contains(*end)) {
            return std::nullopt;
        }
    }
    return segment;
}

std::optional<DrawingPoint> Plot::map(double x, double y) const {
    const auto across = xAxis_.fraction(x);
    const auto up = yAxis_.fraction(y);
    if (!across || !up) {
        return std::nullopt;
    }
    return DrawingPoint{rect_.left + *across * rect_.width(), rect_.bottom - *up * rect_.height()};
}

std::optional<DrawingPoint> Plot::valuesAt(DrawingPoint pixel) const {
    if (!framed_ || !rect_.contains(pixel) || rect_.width() <= 0 || rect_.height() <= 0) {
        return std::nullopt;
    }
    return DrawingPoint{(pixel.x - rect_.left) / rect_.width() * xAxis_.span - xAxis_.offset,
                        (rect_.bottom - pixel.y) / rect_.height() * yAxis_.span - yAxis_.offset};
}

// --- The frame ---------------------------------------------------------------------------

DrawingColour Plot::colourOf(DrawingColour colour) const {
    return surface_->isPage() && attributes.blackAndWhite ? 0 : colour;
}

double Plot::labelHeight() const {
    return surface_->textSize("0", kLabelFont).height;
}

void drawMessage(DrawingSurface& surface, std::string_view text) {
    const auto area = surface.area();
    const double height = surface.textSize("0", kLabelFont).height;
    double top = area.top;
    for (const auto& line : splitLines(text)) {
        const auto shown = replaceAll(line, "\t", "    ");
        const double width = surface.textSize(shown, kLabelFont).width;
        surface.text({area.left + (area.width() - width) / 2, top}, shown, kLabelFont);
        top += height;
    }
}

void Plot::fail(std::string_view text) {
    drawMessage(*surface_, text);
    surface_ = nullptr;
}

bool Plot::rangesHold() const {
    return attributes.x.least < attributes.x.most && attributes.y.least < attributes.y.most;
}

void Plot::scaleTo(const PlotFrame& frame) {
    attributes.scaleTo(frame.x, frame.y);
    xAxis_ = PlotAxis::of(attributes.x);
    yAxis_ = PlotAxis::of(attributes.y);
}

DrawingRect Plot::place(const PlotFrame& frame) const {
    const auto area = surface_->area();
    const double width = std::floor(area.width() * frame.widthFraction);
    const double height = std::floor(area.height() * frame.heightFraction);
    double left = area.left;
    if (frame.alignment == PlotAlignment::Centre) {
        left += std::floor((area.width() - width) / 2);
    } else if (frame.alignment == PlotAlignment::Right) {
        left = area.right - width;
    }
    const double top = surface_->isPage() ? surface_->textLine()
                                          : area.top + std::floor((area.height() - height) / 2);
    return {left, top, left + width, top + height};
}

bool Plot::drawFrame(DrawingSurface* surface, const PlotFrame& frame) {
    surface_ = surface;
    framed_ = false;
    if (surface_ == nullptr || (surface_->isPage() && !surface_->startPage())) {
        surface_ = nullptr;
        return false;
    }
    scaleTo(frame);
    if (!surface_->isPage()) {
        (void)surface_->setPen({attributes.borderColour, 1, LineStyle::Solid});
        surface_->setSolidBrush(0xFFFFFF);
        surface_->rectangle(surface_->area());
    }
    const auto& [x, y] = std::pair(attributes.x, attributes.y);
    if (!(x.least < x.most)) {
        fail(
            formatPrintf("\n\n\n\nInvalid Min/Max graph values found\nMin X: %f Max X: %f\nMin "
                         "value can not be greater than Max value",
                         x.least, x.most));
        return false;
    }
    if (!(y.least < y.most)) {
        fail(
            formatPrintf("\n\n\n\nInvalid Min/Max graph values found\nMin Y: %f Max Y: %f\nMin "
                         "value can not be greater than Max value",
                         y.least, y.most));
        return false;
    }
    const auto isFraction = [](double value) { return value >= 0.0 && value <= 1.0; };
    if (!isFraction(frame.widthFraction) || !isFraction(frame.heightFraction)) {
        fail(
            formatPrintf("\n\n\n\nInvalid page width values found\nPage Width: %f\tPage Height: "
                         "%f\nValues must be between 0.0 and 1.0",
                         frame.widthFraction, frame.heightFraction));
        return false;
    }
    rect_ = place(frame);
    if (!drawFrameAndGrid()) {
        fail("Unable to create pen.");
        return false;
    }
    framed_ = true;
    drawXLabels();
    drawTitles(frame, drawYLabels());
    if (surface_->isPage() && frame.advance) {
        surface_->setTextLine(rect_.bottom + attributes.borderWidth + labelHeight() + kTitleHeight +
                              surface_->lineHeight());
    }
    return true;
}

bool Plot::drawFrameAndGrid() {
    if (!surface_->setPen(
            {colourOf(attributes.borderColour), attributes.borderWidth, LineStyle::Solid})) {
        return false;
    }
    surface_->setHollowBrush();
    surface_->rectangle(rect_);
    for (int i = 1; i < attributes.xDivisions; ++i) {
        const double x = gridPixel(rect_.left, rect_.width(), i, attributes.xDivisions);
        surface_->line({x, rect_.top}, {x, rect_.bottom});
    }
    for (int i = 1; i < attributes.yDivisions; ++i) {
        const double y = gridPixel(rect_.bottom, -rect_.height(), i, attributes.yDivisions);
        surface_->line({rect_.left, y}, {rect_.right, y});
    }
    return true;
}

void Plot::drawXLabels() {
    const double top = rect_.bottom + attributes.borderWidth;
    // Without a grid there are the two ends.
    const int divisions = std::max(attributes.xDivisions, 1);
    for (int i = 0; i <= divisions; ++i) {
        const auto label = labelText(gridValue(attributes.x, i, divisions), attributes.xPrecision);
        const double width = surface_->textSize(label, kLabelFont).width;
        double left = gridPixel(rect_.left, rect_.width(), i, divisions) - width / 2;
        if (i == 0) {
            left = rect_.left;
        } else if (i == divisions) {
            left = rect_.right - width;
        }
        surface_->text({left, top}, label, kLabelFont);
    }
}

double Plot::drawYLabels() {
    const int divisions = std::max(attributes.yDivisions, 1);
    double widest = 0;
    for (int i = 0; i <= divisions; ++i) {
        const auto label = labelText(gridValue(attributes.y, i, divisions), attributes.yPrecision);
        const auto size = surface_->textSize(label, kLabelFont);
        double top = gridPixel(rect_.bottom, -rect_.height(), i, divisions) - size.height / 2;
        if (i == 0) {
            top = rect_.bottom - size.height;
        } else if (i == divisions) {
            top = rect_.top;
        }
        surface_->text({rect_.left - attributes.borderWidth - size.width, top}, label, kLabelFont);
        widest = std::max(widest, size.width);
    }
    return widest;
}

void Plot::drawTitles(const PlotFrame& frame, double yLabelWidth) {
    if (!frame.xTitle.empty()) {
        const auto font = titleFont(0);
        const double width = surface_->textSize(frame.xTitle, font).width;
        surface_->text({rect_.left + (rect_.width() - width) / 2,
                        rect_.bottom + attributes.borderWidth + labelHeight()},
                       frame.xTitle, font);
    }
    if (!frame.yTitle.empty()) {
        const double width = surface_->textSize(frame.yTitle, titleFont(0)).width;
        // Turned to the left, the text begins at its lower end and its top is on the left.
        surface_->text({rect_.left - 2 * attributes.borderWidth - yLabelWidth - kTitleHeight,
                        rect_.top + (rect_.height() + width) / 2},
                       frame.yTitle, titleFont(90));
    }
}

// --- Series ------------------------------------------------------------------------------

bool Plot::drawSeries(int number, std::span<const double> x, std::span<const double> y,
                      bool sorted) {
    if (surface_ == nullptr || x.empty() || y.size() < x.size() || number < 1 ||
        number > static_cast<int>(kPlotSeries) || !rangesHold()) {
        return false;
    }
    const auto& series = attributes.series[static_cast<std::size_t>(number - 1)];
    const auto colour = colourOf(series.colour);
    const bool hasLine =
        series.style != LineStyle::None && surface_->setPen({colour, series.width, series.style});
    surface_->setHollowBrush();
    std::vector<DrawingPoint> points;
    points.reserve(x.size());
    for (const auto i : drawingOrder(x, sorted)) {
        const auto point = map(x[i], y[i]);
        if (!point) {
            return false;
        }
        points.push_back(*point);
        if (hasLine && points.size() > 1) {
            if (const auto seen = clipSegment({points[points.size() - 2], *point}, rect_)) {
                surface_->line(seen->from, seen->to);
            }
        }
    }
    if (series.symbol != PlotSymbol::None) {
        drawSymbols(series, colour, points);
    }
    return true;
}

namespace {

/// Filled symbols use the present brush.
void drawSymbol(DrawingSurface& surface, PlotSymbol symbol, const DrawingRect& box) {
    const double middle = (box.left + box.right) / 2;
    const double centre = (box.top + box.bottom) / 2;
    const std::array<DrawingPoint, 3> triangle{
        {{box.left, box.bottom}, {middle, box.top}, {box.right, box.bottom}}};
    switch (symbol) {
        case PlotSymbol::None:
            break;
        case PlotSymbol::HollowSquare:
        case PlotSymbol::FilledSquare:
            surface.rectangle(box);
            break;
        case PlotSymbol::HollowTriangle:
            surface.line(triangle[0], triangle[1]);
            surface.line(triangle[1], triangle[2]);
            surface.line(triangle[2], triangle[0]);
            break;
        case PlotSymbol::FilledTriangle:
            surface.polygon(triangle);
            break;
        case PlotSymbol::HollowCircle:
        case PlotSymbol::FilledCircle:
            surface.ellipse(box);
            break;
        case PlotSymbol::Plus:
        case PlotSymbol::Cross:
        case PlotSymbol::Asterisk:
            if (symbol != PlotSymbol::Cross) {
                surface.line({middle, box.top}, {middle, box.bottom});
                surface.line({box.left, centre}, {box.right, centre});
            }
            if (symbol != PlotSymbol::Plus) {
                surface.line({box.left, box.top}, {box.right, box.bottom});
                surface.line({box.left, box.bottom}, {box.right, box.top});
            }
            break;
    }
}

}  // namespace

namespace {

/// Sets the pen and the brush of the marks of a series.
void beginSymbols(DrawingSurface& surface, const SeriesAttributes& series, DrawingColour colour) {
    // An outline is whole even where the line between the points is broken or missing.
    (void)surface.setPen({colour, series.width, LineStyle::Solid});
    const bool filled = series.symbol == PlotSymbol::FilledSquare ||
                        series.symbol == PlotSymbol::FilledTriangle ||
                        series.symbol == PlotSymbol::FilledCircle;
    if (filled) {
        surface.setSolidBrush(colour);
    }
}

void drawSymbolAt(DrawingSurface& surface, const SeriesAttributes& series, DrawingPoint place) {
    const double half = mulDiv(series.width + 2, surface.pixelsPerInch(), 72);
    drawSymbol(surface, series.symbol,
               {place.x - half, place.y - half, place.x + half, place.y + half});
}

}  // namespace

void drawPlotSymbol(DrawingSurface& surface, const SeriesAttributes& series, DrawingColour colour,
                    DrawingPoint place) {
    beginSymbols(surface, series, colour);
    drawSymbolAt(surface, series, place);
    surface.setHollowBrush();
}

void Plot::drawSymbols(const SeriesAttributes& series, DrawingColour colour,
                       std::span<const DrawingPoint> points) {
    beginSymbols(*surface_, series, colour);
    for (const auto& point : points) {
        if (rect_.contains(point)) {
            drawSymbolAt(*surface_, series, point);
        }
    }
    surface_->setHollowBrush();
}

}  // namespace kavu
