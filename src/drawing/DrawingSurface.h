// What plots and printed pages are drawn on. The logic lays them out; a window, a printer,
// a file or a test implements the calls. Coordinates are pixels of the surface from its
// top left, x to the right and y downward.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

struct DrawingPoint {
    double x = 0;
    double y = 0;
};

struct DrawingSize {
    double width = 0;
    double height = 0;
};

struct DrawingRect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    [[nodiscard]] double width() const { return right - left; }
    [[nodiscard]] double height() const { return bottom - top; }
    [[nodiscard]] bool contains(DrawingPoint p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
};

/// 0xRRGGBB
using DrawingColour = std::uint32_t;

/// The numbers are those of the settings.
enum class LineStyle { Solid = 0, Dash, Dot, DashDot, DashDotDot, None };

struct DrawingPen {
    DrawingColour colour = 0;
    int width = 1;  ///< pixels
    LineStyle style = LineStyle::Solid;
};

struct DrawingFont {
    std::string family;  ///< empty: the font of the surface itself
    double height = 0;   ///< pixels; 0: that of the surface's font
    bool bold = false;
    int angle = 0;  ///< degrees, counter-clockwise about the position of the text
};

class DrawingSurface {
  public:
    DrawingSurface() = default;
    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;
    virtual ~DrawingSurface() = default;

    /// The client area of a window, or a page within its margins.
    [[nodiscard]] virtual DrawingRect area() const = 0;
    [[nodiscard]] virtual double pixelsPerInch() const = 0;
    /// True for the page of a print job, not a window.
    [[nodiscard]] virtual bool isPage() const { return false; }

    /// Sets the pen of lines and outlines; false if the surface cannot make it.
    virtual bool setPen(const DrawingPen& pen) = 0;
    virtual void setHollowBrush() = 0;
    virtual void setSolidBrush(DrawingColour colour) = 0;

    virtual void line(DrawingPoint from, DrawingPoint to) = 0;
    // Outlined with the pen and filled with the brush.
    virtual void rectangle(const DrawingRect& rect) = 0;
    virtual void ellipse(const DrawingRect& rect) = 0;
    virtual void polygon(std::span<const DrawingPoint> points) = 0;

    [[nodiscard]] virtual DrawingSize textSize(std::string_view text,
                                               const DrawingFont& font) const = 0;
    /// One line of text, black; `at` is the top left of the text before it is rotated.
    virtual void text(DrawingPoint at, std::string_view text, const DrawingFont& font) = 0;

    /// Clips all drawing to `rect` until `releaseClip`.
    virtual void clip(const DrawingRect& rect) = 0;
    virtual void releaseClip() = 0;

    // --- For a page ---------------------------------------------------------------------

    /// Starts a page if there is none; false if that fails.
    virtual bool startPage() { return true; }
    /// Ends the page and starts another one; false for a surface that has one only.
    virtual bool nextPage() { return false; }
    /// The position of the next line of text of the page, from its top.
    [[nodiscard]] virtual double textLine() const { return 0; }
    virtual void setTextLine(double /*line*/) {}
    /// The height of a line of the report.
    [[nodiscard]] virtual double lineHeight() const { return 0; }
};

}  // namespace kavu
