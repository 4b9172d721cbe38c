// The lists of a word, copied from the frame to be put back there or at another position.
#pragma once

#include "pcm/PcmFormat.h"

#include <vector>

namespace kavu {

struct CellContents {
    Measurement measurement;
    int asyncNumber = 0;
    [[nodiscard]] bool operator==(const CellContents&) const = default;
};
/// The cells of one list; free ones at its end are left out.
using CellList = std::vector<CellContents>;

/// A word with all that it holds.
struct WordContents {
    FrameWord word;
    std::vector<CellList> lists;  ///< one for each cell of the array
    [[nodiscard]] bool operator==(const WordContents&) const = default;
};

[[nodiscard]] WordContents takeWord(const PcmFormat& format, int fwp);
/// Makes a word hold these contents and nothing else. False if there can be no more cells.
bool putWord(PcmFormat& format, int fwp, const WordContents& contents);
/// Makes it a plain word of the common length that holds nothing.
void emptyWord(PcmFormat& format, int fwp);
/// True if two words hold the same; free cells at the end of a list do not count.
[[nodiscard]] bool isSameWord(const PcmFormat& format, int a, int b);

}  // namespace kavu
