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

bool isSideways(FrameMove move) {
    switch (move) {
        case FrameMove::Left:
        case FrameMove::Right:
        case FrameMove::RowBegin:
        case FrameMove::RowEnd:
        case FrameMove::PageLeft:
        case FrameMove::PageRight:
        case FrameMove::JumpLeft:
        case FrameMove::JumpRight:
            return true;
        default:
            return false;
    }
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

bool FrameView::holdsWord(int word) const {
    const auto [first, last] = std::minmax(block().first.word, block().last.word);
    return selected_ && word >= first && word <= last;
}

bool FrameView::select(FramePlace at, bool extend) {
    if (!display_.isWithin(at)) {
        return false;
    }
    anchor_ = extend && anchor_ ? anchor_ : at;
    selected_ = at;
    rowOfMoves_ = at.frame;
    return true;
}

bool FrameView::selectBlock(FramePlace first, FramePlace last) {
    if (!display_.isWithin(first) || !display_.isWithin(last)) {
        return false;
    }
    (void)select(first);
    return select(last, true);
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
    const int word = selected_.word;
    const int frame = isSideways(move) ? rowOfMoves_ : selected_.frame;
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
        case FrameMove::JumpLeft:
        case FrameMove::JumpRight:
        case FrameMove::JumpUp:
        case FrameMove::JumpDown:
            return jumped(move);
    }
    return selected_;
}

/// As in a table: within a run of used cells to its last one, from there and from an empty cell to
/// the next used one, and where there is none to the edge.
FramePlace FrameView::jumped(FrameMove move) const {
    const bool sideways = isSideways(move);
    const int step = move == FrameMove::JumpLeft || move == FrameMove::JumpUp ? -1 : 1;
    const int row = sideways ? rowOfMoves_ : selected_.frame;
    const int end = sideways ? display_.words() - 1 : display_.depth(selected_.word);
    const int begin = sideways ? 0 : 1;
    const int from = sideways ? selected_.word : selected_.frame;
    const auto at = [&](int position) {
        return sideways ? clamped(position, row) : clamped(selected_.word, position);
    };
    const auto isUsed = [&](int position) { return display_.isUsed(at(position)); };
    const auto isInside = [&](int position) { return position >= begin && position <= end; };
    int next = from + step;
    if (!isInside(next)) {
        return selected_;
    }
    if (isUsed(from) && isUsed(next)) {
        while (isInside(next + step) && isUsed(next + step)) {
            next += step;
        }
        return at(next);
    }
    while (isInside(next) && !isUsed(next)) {
        next += step;
    }
    return at(std::clamp(next, begin, end));
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
