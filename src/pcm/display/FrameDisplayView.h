// The view state of the display of a stream, and its arithmetic: sizes of cells, zoom,
// scrolling, the cell under a point, movement by keys.
#pragma once

#include "core/talk/SettingKeys.h"
#include "pcm/display/FrameDisplay.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

inline constexpr int kLeastCellWidth = setting::kCellWidth.least;
inline constexpr int kMostCellWidth = setting::kCellWidth.most;
inline constexpr int kUsualCellWidth = setting::kCellWidth.otherwise;
/// "Zoom In By 10%" adds this many pixels.
inline constexpr int kZoomStep = 10;

/// Percent of the largest width, as it is shown: "20".
[[nodiscard]] std::string zoomPercent(int cellWidth);
/// The width for one of the entries 25, 50, 75 and 100.
[[nodiscard]] int widthOfPercent(int percent);

/// Cells from one corner to the other, both included.
struct FrameBlock {
    FramePlace first;
    FramePlace last;
    [[nodiscard]] bool holds(FramePlace at) const;
    [[nodiscard]] bool operator==(const FrameBlock&) const = default;
};

enum class FrameMove {
    Left,
    Right,
    Up,
    Down,
    RowBegin,   ///< the sync word
    RowEnd,     ///< the last word
    FirstCell,  ///< the first word in frame 1
    LastCell,
    PageUp,
    PageDown,
    PageLeft,
    PageRight,
    // To the end of a run of used cells, or across empty ones to the next used one.
    JumpLeft,
    JumpRight,
    JumpUp,
    JumpDown,
};

/// True for a move along the frame that is selected.
[[nodiscard]] bool isSideways(FrameMove move);

class FrameView {
  public:
    explicit FrameView(const FrameDisplay& display) : display_(display) {}

    int firstWord = 0;     ///< scroll position: the word in the leftmost column
    int scrolledRows = 0;  ///< scroll position: the frame in the top row less one
    FrameBlock cut;        ///< the cells that the next paste moves; none if there is no such block

    [[nodiscard]] int cellWidth() const { return cellWidth_; }
    /// Half the width.
    [[nodiscard]] int cellHeight() const { return cellWidth_ / 2; }
    /// Keeps the width within its limits; true if that changes it.
    bool setCellWidth(long width);

    /// The cell that is selected; none before the first selection.
    [[nodiscard]] FramePlace selected() const { return selected_; }
    /// From the start of the block to the selected cell; one cell if there is no block.
    [[nodiscard]] FrameBlock block() const;
    /// True if the block has a cell in the word.
    [[nodiscard]] bool holdsWord(int word) const;
    /// False, without effect, for a place below the depth of its word. With `extend` the block
    /// grows to the place, else it is this cell alone.
    bool select(FramePlace at, bool extend = false);
    void clearSelection();
    /// Selects the block between two corners; false, without effect, if either cannot be selected.
    bool selectBlock(FramePlace first, FramePlace last);

    /// The frame that moves to the sides lead along: the one of the selected cell, until they cross
    /// a word that is less deep. They come out of it in the frame in which they went in.
    [[nodiscard]] int rowOfMoves() const { return rowOfMoves_; }
    void keepRowOfMoves(int frame) { rowOfMoves_ = frame; }

    /// The place under a point of the grid, in pixels from its corner; none outside the
    /// frame. It may be below the depth of its word.
    [[nodiscard]] FramePlace cellAtPoint(int x, int y) const;

    /// The whole columns and rows in a grid of that size; at least one.
    [[nodiscard]] int fullColumns(int width) const;
    [[nodiscard]] int fullRows(int height) const;
    /// Scrolls as little as necessary; true if it had to.
    bool scrollTo(FramePlace at, int columns, int rows);

    /// Where a key leads from the selected cell, or, before the first selection, the cell at
    /// the top left. Always a place that can be selected.
    [[nodiscard]] FramePlace moved(FrameMove move, int columns, int rows) const;
    /// The place itself, or the one that repeats there if it is below the depth of its word;
    /// none outside the frame.
    [[nodiscard]] FramePlace selectable(FramePlace at) const;

    /// The texts of a block: a line for each frame, words separated by tabs.
    [[nodiscard]] std::string blockText(const FrameBlock& block) const;

  private:
    [[nodiscard]] FramePlace clamped(int word, int frame) const;
    [[nodiscard]] FramePlace jumped(FrameMove move) const;

    const FrameDisplay& display_;
    int cellWidth_ = kUsualCellWidth;
    FramePlace selected_;
    FramePlace anchor_;
    int rowOfMoves_ = 1;
};

}  // namespace kavu
