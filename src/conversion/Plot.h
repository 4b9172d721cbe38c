// Draws X/Y series on a surface: first a frame with its grid, labels and titles, then the
// series in order, in the frame's scale.
#pragma once

#include "conversion/PlotAttributes.h"
#include "drawing/DrawingSurface.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// Of the titles of a plot and its axes, in units of the surface.
inline constexpr double kTitleHeight = 16;

enum class PlotAlignment { Left = 0, Centre, Right };

/// What a frame is drawn for. Data and titles must live until the call returns.
struct PlotFrame {
    double widthFraction = 1;  ///< of the area of the surface, 0.0 to 1.0
    double heightFraction = 1;
    PlotAlignment alignment = PlotAlignment::Centre;
    bool advance = false;  ///< moves the text line of a page below the plot
    std::span<const double> x;
    std::span<const double> y;
    std::string_view xTitle;
    std::string_view yTitle;
};

/// One axis of a drawing: a value maps to a fraction of its length.
struct PlotAxis {
    double offset = 0;
    double span = 0;

    /// The arithmetic of a range.
    [[nodiscard]] static PlotAxis of(const PlotRange& range);
    /// Nothing for a span of 0 and for a place that is not finite.
    [[nodiscard]] std::optional<double> fraction(double value) const;
};

/// The part of a segment within a rectangle; nothing if there is none.
struct PlotSegment {
    DrawingPoint from;
    DrawingPoint to;
};
[[nodiscard]] std::optional<PlotSegment> clipSegment(PlotSegment segment, const DrawingRect& rect);

class Plot {
  public:
    PlotAttributes attributes;

    /// Draws the frame; automatic scaling takes its range from the frame's data and always
    /// includes 0. `surface` must live as long as series are drawn. False without a
    /// surface, or if a page cannot be started, or if the ranges or fractions are wrong:
    /// then the reason is shown in the drawing area.
    bool drawFrame(DrawingSurface* surface, const PlotFrame& frame);
    /// Draws a series by its number from 1. With `sorted` its points are taken by ascending
    /// x. False if there is no frame or no point, or a point has no place.
    bool drawSeries(int number, std::span<const double> x, std::span<const double> y, bool sorted);
    /// Forgets the surface; the scale of the frame stays for `map` and `valuesAt`.
    void releaseSurface() { surface_ = nullptr; }
    /// Forgets the surface and the frame.
    void endFrame() {
        surface_ = nullptr;
        framed_ = false;
    }

    /// The rectangle of the present frame, in pixels; and where a value is in it.
    [[nodiscard]] const DrawingRect& rectangle() const { return rect_; }
    [[nodiscard]] std::optional<DrawingPoint> map(double x, double y) const;
    /// The values under a pixel; nothing outside the frame or without one.
    [[nodiscard]] std::optional<DrawingPoint> valuesAt(DrawingPoint pixel) const;

  private:
    [[nodiscard]] bool rangesHold() const;
    void scaleTo(const PlotFrame& frame);
    [[nodiscard]] DrawingRect place(const PlotFrame& frame) const;
    bool drawFrameAndGrid();
    void drawXLabels();
    double drawYLabels();
    void drawTitles(const PlotFrame& frame, double yLabelWidth);
    void drawSymbols(const SeriesAttributes& series, DrawingColour colour,
                     std::span<const DrawingPoint> points);
    void fail(std::string_view text);
    [[nodiscard]] DrawingColour colourOf(DrawingColour colour) const;
    [[nodiscard]] double labelHeight() const;

    DrawingSurface* surface_ = nullptr;
    bool framed_ = false;  ///< the rectangle and the axes are those of a frame
    DrawingRect rect_;
    PlotAxis xAxis_;
    PlotAxis yAxis_;
};

/// Draws the mark of a series at a place, as on its points.
void drawPlotSymbol(DrawingSurface& surface, const SeriesAttributes& series, DrawingColour colour,
                    DrawingPoint place);

/// Writes a text of several lines in the middle of a surface's area.
void drawMessage(DrawingSurface& surface, std::string_view text);

}  // namespace kavu
