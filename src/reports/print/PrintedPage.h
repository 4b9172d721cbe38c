// What all printed pages have: headers at the top, the number of the page where the layout wants
// it.
#pragma once

#include "drawing/DrawingSurface.h"

#include <string>
#include <string_view>

namespace kavu {

class ReportLayout;

/// Places of the page number by their index in a layout: 0 is none, 1 to 3 are at the bottom, 4 to
/// 6 at the top, from left to right.
inline constexpr int kNoPageNumber = 0;
inline constexpr int kFirstTopPlace = 4;

struct PageFrame {
    std::string left{};
    std::string right{};
    std::string numberText{};  ///< each "^" is the number of the page
    int numberPlace = kNoPageNumber;
};

/// The frame of a page with these headers, and the number as a layout has it.
[[nodiscard]] PageFrame pageFrame(const ReportLayout& layout, std::string left, std::string right);
/// The text of a page's number; a text without "^" is the same on all pages.
[[nodiscard]] std::string pageNumberText(std::string_view text, int page);
/// Draws headers and number, and returns the room between them.
DrawingRect drawPageFrame(DrawingSurface& page, const PageFrame& frame, int number);
/// The size of the letters in points for the index of a layout's list of sizes: n is n + 1 points,
/// but the first, the default, is one that is legible.
[[nodiscard]] int printedPoints(int index);

}  // namespace kavu
