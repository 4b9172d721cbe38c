// A page that remembers what was drawn on it, so that it can be shown, searched and printed again
// as it is, on any surface.
#pragma once

#include "drawing/DrawingSurface.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kavu {

/// A text of a page, where it stands.
struct PageText {
    DrawingPoint at{};
    DrawingSize size{};
    std::string text{};
    DrawingFont font{};
};

class RecordedPage {
  public:
    void addPen(const DrawingPen& pen) { steps_.emplace_back(pen); }
    void addBrush(std::optional<DrawingColour> colour) { steps_.emplace_back(Brush{colour}); }
    void addLine(DrawingPoint from, DrawingPoint to) { steps_.emplace_back(Line{from, to}); }
    void addBox(const DrawingRect& rect, bool isRound) { steps_.emplace_back(Box{rect, isRound}); }
    void addPolygon(std::span<const DrawingPoint> points) {
        steps_.emplace_back(std::vector<DrawingPoint>(points.begin(), points.end()));
    }
    void addText(PageText text);
    /// Nothing releases the clip.
    void addClip(const std::optional<DrawingRect>& rect) { steps_.emplace_back(Clip{rect}); }

    /// Draws all of it again, in the same coordinates.
    void drawOn(DrawingSurface& surface) const;
    /// In the order in which they were drawn.
    [[nodiscard]] const std::vector<PageText>& texts() const { return texts_; }

  private:
    struct Brush {
        std::optional<DrawingColour> colour{};
    };
    struct Line {
        DrawingPoint from{};
        DrawingPoint to{};
    };
    struct Box {
        DrawingRect rect{};
        bool isRound = false;
    };
    struct Clip {
        std::optional<DrawingRect> rect{};
    };
    struct Text {
        std::size_t index = 0;  ///< of `texts_`
    };
    using Step = std::variant<DrawingPen, Brush, Line, Box, std::vector<DrawingPoint>, Text, Clip>;

    std::vector<Step> steps_{};
    std::vector<PageText> texts_{};
};

/// What was printed: its pages, and the same as a PDF.
struct PrintedDocument {
    std::string title{};
    DrawingSize paper{};  ///< in points of 1/72 inch, as are all places on the pages
    std::vector<RecordedPage> pages{};
    std::string pdf{};
};

}  // namespace kavu
