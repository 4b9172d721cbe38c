#include "drawing/RecordedPage.h"

#include <utility>

namespace kavu {

namespace {

template <typename... Functions>
struct Visitor : Functions... {
    using Functions::operator()...;
};
template <typename... Functions>
Visitor(Functions...) -> Visitor<Functions...>;

}  // namespace

void RecordedPage::addText(PageText text) {
    steps_.emplace_back(Text{texts_.size()});
    texts_.push_back(std::move(text));
}

void RecordedPage::drawOn(DrawingSurface& surface) const {
    const Visitor draw{
        [&](const DrawingPen& pen) { (void)surface.setPen(pen); },
        [&](const Brush& brush) {
            if (brush.colour) {
                surface.setSolidBrush(*brush.colour);
            } else {
                surface.setHollowBrush();
            }
        },
        [&](const Line& line) { surface.line(line.from, line.to); },
        [&](const Box& box) {
            if (box.isRound) {
                surface.ellipse(box.rect);
            } else {
                surface.rectangle(box.rect);
            }
        },
        [&](const std::vector<DrawingPoint>& points) { surface.polygon(points); },
        [&](const Text& text) {
            const auto& shown = texts_[text.index];
            surface.text(shown.at, shown.text, shown.font);
        },
        [&](const Clip& clip) {
            if (clip.rect) {
                surface.clip(*clip.rect);
            } else {
                surface.releaseClip();
            }
        },
    };
    surface.setHollowBrush();
    for (const auto& step : steps_) {
        std::visit(draw, step);
    }
    surface.releaseClip();
}

}  // namespace kavu
