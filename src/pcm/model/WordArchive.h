// Words of a stream put aside with all that they hold, in little space: lists of cells that
// follow each other and are equal are kept once, and equal measurements are, too.
#pragma once

#include "pcm/model/FrameEditLists.h"

#include <cstdint>
#include <map>
#include <vector>

namespace kavu {

class WordArchive {
  public:
    /// Puts a word aside as it is now, unless it is here already.
    void keep(const PcmFormat& format, int fwp);
    void drop(int fwp) { words_.erase(fwp); }
    [[nodiscard]] bool holds(int fwp) const { return words_.contains(fwp); }
    [[nodiscard]] bool empty() const { return words_.empty(); }
    /// The positions of the words, rising.
    [[nodiscard]] std::vector<int> words() const;
    /// True if the stream has the word as it is here. REQUIRES: it is here.
    [[nodiscard]] bool isSame(const PcmFormat& format, int fwp) const;
    /// Makes the stream's word what it is here. False if there can be no more cells.
    bool put(PcmFormat& format, int fwp) const;
    /// What only `keep` needs is freed.
    void close();
    /// Bytes of memory, about.
    [[nodiscard]] std::size_t bytes() const;

  private:
    struct Cell {
        std::uint32_t measurement = 0;
        int asyncNumber = 0;
        [[nodiscard]] bool operator==(const Cell&) const = default;
    };
    /// So many lists, one behind the other, with the same cells.
    struct Run {
        std::uint32_t lists = 0;
        std::uint32_t cells = 0;
    };
    struct Word {
        FrameWord word;
        std::vector<Run> runs;
        std::vector<Cell> cells;
    };

    [[nodiscard]] std::uint32_t numberOf(const FrameCells& cells, CellRef at);

    std::map<int, Word> words_;
    std::vector<Measurement> measurements_;
    /// By the number of a record of the frame, one more than that of the measurement; it has
    /// to be compared, since records change.
    std::vector<std::uint32_t> numbers_;
};

}  // namespace kavu
