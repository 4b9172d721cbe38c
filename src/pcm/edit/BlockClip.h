// A block of cells as it is copied: its measurements with all of their values, without the stream.
#pragma once

#include "pcm/PcmFormat.h"

#include <string>
#include <vector>

namespace kavu {

/// Cells of the frame from one corner to the other, both included; frames count from 1.
struct BlockArea {
    int firstWord = 0;
    int firstFrame = 1;
    int lastWord = 0;
    int lastFrame = 1;

    [[nodiscard]] int columns() const { return lastWord - firstWord + 1; }
    [[nodiscard]] int rows() const { return lastFrame - firstFrame + 1; }
    [[nodiscard]] bool operator==(const BlockArea&) const = default;
};

/// A measurement at one cell of a block.
struct ClipPiece {
    int column = 0;           ///< from 0, from the first word of the block
    int row = 0;              ///< from 0, from its first frame
    bool everyFrame = false;  ///< it was in a plain word, and is in every row of the block
    /// Its name, and its values at that cell. With an empty location type it is a name alone, which
    /// gets the values of a new measurement.
    Measurement values;
};

struct FrameClip {
    int columns = 0;
    int rows = 0;
    std::vector<ClipPiece> pieces;
    /// Names in the block that cannot be taken cell by cell: they are put together from fragments.
    std::vector<std::string> fragmented;
};

/// The measurements of a block.
[[nodiscard]] FrameClip copyBlock(const PcmFormat& format, const BlockArea& area);

using ClipRows = std::vector<std::vector<std::string>>;
/// A clip as rows of texts, the first one for the block itself.
[[nodiscard]] ClipRows clipRows(const FrameClip& clip);
/// The clip of such rows; rows that are none are left out, and numbers bounded by the largest
/// frame.
[[nodiscard]] FrameClip clipFromRows(const ClipRows& rows);
/// The clip of a table of names from elsewhere. Empty cells have none, and texts that cannot be a
/// name are left out and returned in `refused`.
[[nodiscard]] FrameClip clipFromNames(const ClipRows& rows, std::vector<std::string>& refused);

}  // namespace kavu
