#include "pcm/display/FrameDisplayView.h"

#include "core/text/Printf.h"

#include <algorithm>

namespace kavu {

std::string zoomPercent(int cellWidth) {
    return formatPrintf("%.0f", static_cast<double>(cellWidth) / kMostCellWidth * 100);
}

int widthOfPercent(int percent) {
    return kMostCellWidth * percent / 100;
}

bool FrameBlock::holds(FramePlace at) const {
    const auto between = [](int value, int a, int b) {
        return value >= std::min(a, b) && value <= std::max(a, b);
    };
    return first && last && at && between(at.word, first.word, last.word) &&
           between(at.frame, first.frame, last.frame);
}

bool FrameView::setCellWidth(long width) {
    const int before = cellWidth_;
    cellWidth_ = static_cast<int>(std::clamp(width, long{kLeastCellWidth}, long{kMostCellWidth}));
    return cellWidth_ != before;
}

FrameBlock FrameView::block() const {
    return {anchor_ ? anchor_ : selected_, selected_};
}

bool FrameView::select(FramePlace at, bool extend) {
    if (!display_.isWithin(at)) {
        return false;
    }
    anchor_ = extend && anchor_ ? anchor_ : at;
    selected_ = at;
    return true;
}

void FrameView::clearSelection() {
    selected_ = {};
    anchor_ = {};
}

FramePlace FrameView::cellAtPoint(int x, int y) const {
    if (x < 0 || y < 0) {
        return {};
    }
    const FramePlace at{firstWord + x / cellWidth_, scrolledRows + 1 + y / cellHeight()};
    return at.word < display_.words() && at.frame <= display_.frames() ? at : FramePlace{};
}

int FrameView::fullColumns(int width) const {
    return std::max(1, width / cellWidth_);
}

int FrameView::fullRows(int height) const {
    return std::max(1, height / cellHeight());
}

bool FrameView::scrollTo(FramePlace at, int columns, int rows) {
    const int word = firstWord;
    const int row = scrolledRows;
    firstWord = std::clamp(firstWord, std::max(0, at.word - columns + 1), std::max(0, at.word));
    scrolledRows =
        std::clamp(scrolledRows, std::max(0, at.frame - rows), std::max(0, at.frame - 1));
    return word != firstWord || row != scrolledRows;
}

FramePlace FrameView::clamped(int word, int frame) const {
    word = std::clamp(word, 0, std::max(0, display_.words() - 1));
    return {word, std::clamp(frame, 1, std::max(1, display_.depth(word)))};
}

FramePlace FrameView::moved(FrameMove move, int columns, int rows) const {
    const auto [word, frame] = selected_;
    const int last = display_.words() - 1;
    if (!selected_ && move != FrameMove::FirstCell && move != FrameMove::LastCell) {
        return clamped(firstWord, scrolledRows + 1);
    }
    switch (move) {
        case FrameMove::Left:
            return clamped(word - 1, frame);
        case FrameMove::Right:
            return clamped(word + 1, frame);
        case FrameMove::Up:
            return clamped(word, frame - 1);
        case FrameMove::Down:
            return clamped(word, frame + 1);
        case FrameMove::RowBegin:
            return clamped(0, frame);
        case FrameMove::RowEnd:
            return clamped(last, frame);
        case FrameMove::FirstCell:
            return clamped(0, 1);
        case FrameMove::LastCell:
            return clamped(last, display_.frames());
        case FrameMove::PageUp:
            return clamped(word, frame - rows);
        case FrameMove::PageDown:
            return clamped(word, frame + rows);
        case FrameMove::PageLeft:
            return clamped(word - columns, frame);
        case FrameMove::PageRight:
            return clamped(word + columns, frame);
    }
    return selected_;
}

FramePlace FrameView::selectable(FramePlace at) const {
    const int depth = display_.depth(at.word);
    if (!at || depth < 1 || at.frame > display_.frames()) {
        return {};
    }
    return {at.word, (at.frame - 1) % depth + 1};
}

std::string FrameView::blockText(const FrameBlock& block) const {
    if (!block.first || !block.last) {
        return {};
    }
    const auto [firstColumn, lastColumn] = std::minmax(block.first.word, block.last.word);
    const auto [firstRow, lastRow] = std::minmax(block.first.frame, block.last.frame);
    std::string text;
    for (int frame = firstRow; frame <= lastRow; ++frame) {
        for (int word = firstColumn; word <= lastColumn; ++word) {
            if (word > firstColumn) {
                text += '\t';
            }
            if (display_.isShown({word, frame})) {
                text += display_.cellText(FrameArea::Grid, word, frame).text;
            }
        }
        text += '\n';
    }
    return text;
}

}  // namespace kavu
