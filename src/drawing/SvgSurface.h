// A drawing surface that writes an SVG picture.
#pragma once

#include "drawing/DrawingSurface.h"

#include <string>

namespace kavu {

class SvgSurface : public DrawingSurface {
  public:
    /// A picture of this size in pixels.
    SvgSurface(int width, int height) : width_(width), height_(height) {}

    [[nodiscard]] DrawingRect area() const override;
    [[nodiscard]] double pixelsPerInch() const override { return 96; }
    bool setPen(const DrawingPen& pen) override;
    void setHollowBrush() override;
    void setSolidBrush(DrawingColour colour) override;
    void line(DrawingPoint from, DrawingPoint to) override;
    void rectangle(const DrawingRect& rect) override;
    void ellipse(const DrawingRect& rect) override;
    void polygon(std::span<const DrawingPoint> points) override;
    /// Estimated by the mean width of a character, as the fonts of the viewer are unknown.
    [[nodiscard]] DrawingSize textSize(std::string_view text,
                                       const DrawingFont& font) const override;
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override;
    void clip(const DrawingRect& rect) override;
    void releaseClip() override;

    /// The whole file.
    [[nodiscard]] std::string document();

  private:
    void endPath();
    [[nodiscard]] std::string look() const;

    int width_;
    int height_;
    int clips_ = 0;
    bool clipped_ = false;
    DrawingPen pen_;
    std::string fill_ = "none";
    std::string body_;
    std::string path_;  ///< connected segments are one element
    DrawingPoint pathEnd_;
};

}  // namespace kavu
