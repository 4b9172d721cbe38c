#include "reports/print/PrintedPage.h"

#include "core/text/Text.h"
#include "reports/layout/ReportLayout.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr int kLegiblePoints = 9;
constexpr double kFrameHeight = 9;  ///< of the letters of headers and numbers
constexpr double kGap = 6;

enum class Side { Left = 0, Centre, Right };

void drawAt(DrawingSurface& page, Side side, double top, std::string_view text,
            const DrawingFont& font) {
    const auto area = page.area();
    const double room = area.width() - page.textSize(text, font).width;
    const double share = side == Side::Left ? 0 : side == Side::Centre ? 0.5 : 1;
    page.text({area.left + std::max(0.0, room * share), top}, text, font);
}

}  // namespace

PageFrame pageFrame(const ReportLayout& layout, std::string left, std::string right) {
    return {.left = std::move(left),
            .right = std::move(right),
            .numberText = layout.text(layout_key::kPageNumber),
            .numberPlace = layout.number(layout_key::kPageNumberPlace)};
}

std::string pageNumberText(std::string_view text, int page) {
    return replaceAll(text, "^", std::to_string(page));
}

DrawingRect drawPageFrame(DrawingSurface& page, const PageFrame& frame, int number) {
    const DrawingFont font{.family = "Arial", .height = kFrameHeight};
    auto room = page.area();
    const double line = page.textSize("0", font).height;
    const bool isNumbered = frame.numberPlace != kNoPageNumber;
    const bool isOnTop = frame.numberPlace >= kFirstTopPlace;
    if (!frame.left.empty() || !frame.right.empty()) {
        drawAt(page, Side::Left, room.top, frame.left, font);
        drawAt(page, Side::Right, room.top, frame.right, font);
        room.top += line + kGap;
    }
    if (isNumbered) {
        const auto side = static_cast<Side>((frame.numberPlace - 1) % 3);
        const auto text = pageNumberText(frame.numberText, number);
        drawAt(page, side, isOnTop ? room.top : room.bottom - line, text, font);
        room.top += isOnTop ? line + kGap : 0;
        room.bottom -= isOnTop ? 0 : line + kGap;
    }
    return room;
}

int printedPoints(int index) {
    return index <= 0 ? kLegiblePoints : index + 1;
}

}  // namespace kavu
