// Paints what logic draws with the toolkit: on a window or a picture, and on the pages of a
// printer or a PDF file.
#pragma once

#include "drawing/DrawingSurface.h"

#include <vector>

#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRectF>

namespace kavu {

class QtSurface : public DrawingSurface {
  public:
    /// Draws in `area`, in the coordinates of the painter, which is active and outlives the
    /// surface. `font` is that of texts without a family.
    QtSurface(QPainter& painter, const QRectF& area, const QFont& font);
    ~QtSurface() override;

    [[nodiscard]] DrawingRect area() const override;
    [[nodiscard]] double pixelsPerInch() const override { return kPixelsPerInch; }
    bool setPen(const DrawingPen& pen) override;
    void setHollowBrush() override;
    void setSolidBrush(DrawingColour colour) override;
    void line(DrawingPoint from, DrawingPoint to) override;
    void rectangle(const DrawingRect& rect) override;
    void ellipse(const DrawingRect& rect) override;
    void polygon(std::span<const DrawingPoint> points) override;
    [[nodiscard]] DrawingSize textSize(std::string_view text,
                                       const DrawingFont& font) const override;
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override;
    void clip(const DrawingRect& rect) override;
    void releaseClip() override;

    /// The toolkit scales windows and pages itself, so that a pixel is the same everywhere.
    static constexpr double kPixelsPerInch = 96;

  protected:
    /// Paints the segments that wait for their successors.
    void endPath();

  private:
    [[nodiscard]] QFont fontOf(const DrawingFont& font) const;

    QPainter& painter_;
    QRectF area_;
    QFont font_;
    std::vector<QPointF> path_;
};

}  // namespace kavu
