// A part of another surface: what is laid out over a whole area is drawn there alone.
#pragma once

#include "drawing/DrawingSurface.h"

namespace kavu {

class PartSurface : public DrawingSurface {
  public:
    /// The whole surface must outlive it.
    PartSurface(DrawingSurface& whole, const DrawingRect& area) : whole_(whole), area_(area) {}

    [[nodiscard]] DrawingRect area() const override { return area_; }
    [[nodiscard]] double pixelsPerInch() const override { return whole_.pixelsPerInch(); }
    [[nodiscard]] bool isPage() const override { return whole_.isPage(); }
    bool setPen(const DrawingPen& pen) override { return whole_.setPen(pen); }
    void setHollowBrush() override { whole_.setHollowBrush(); }
    void setSolidBrush(DrawingColour colour) override { whole_.setSolidBrush(colour); }
    void line(DrawingPoint from, DrawingPoint to) override { whole_.line(from, to); }
    void rectangle(const DrawingRect& rect) override { whole_.rectangle(rect); }
    void ellipse(const DrawingRect& rect) override { whole_.ellipse(rect); }
    void polygon(std::span<const DrawingPoint> points) override { whole_.polygon(points); }
    [[nodiscard]] DrawingSize textSize(std::string_view text,
                                       const DrawingFont& font) const override {
        return whole_.textSize(text, font);
    }
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override {
        whole_.text(at, text, font);
    }
    void clip(const DrawingRect& rect) override { whole_.clip(rect); }
    void releaseClip() override { whole_.releaseClip(); }
    bool startPage() override { return whole_.startPage(); }
    [[nodiscard]] double textLine() const override { return textLine_; }
    void setTextLine(double line) override { textLine_ = line; }
    [[nodiscard]] double lineHeight() const override { return whole_.lineHeight(); }

  private:
    DrawingSurface& whole_;
    DrawingRect area_;
    double textLine_ = area_.top;
};

}  // namespace kavu
