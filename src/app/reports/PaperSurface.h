// Draws a recorded page with the toolkit as the library of pages does: the same fonts, pens of half
// a point, dashes of their own. The unit of the painter is a point.
#pragma once

#include "app/conversion/QtSurface.h"

namespace kavu {

class PaperSurface : public QtSurface {
  public:
    /// The painter is active and outlives the surface.
    PaperSurface(QPainter& painter, const DrawingSize& paper);

    bool setPen(const DrawingPen& pen) override;
    [[nodiscard]] DrawingSize textSize(std::string_view text,
                                       const DrawingFont& font) const override;
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override;

    /// The font of the toolkit that a text of a page is drawn in, in points.
    [[nodiscard]] static QFont fontOf(const DrawingFont& font);

  private:
    QPainter& onPaper_;
};

}  // namespace kavu
