// Words of a stream set aside with all that they hold, in little space: consecutive equal
// lists of cells are kept once, and so are equal measurements.
#pragma once

#include "pcm/model/FrameEditLists.h"

#include <cstdint>
#include <map>
#include <vector>

namespace kavu {

class WordArchive {
  public:
    /// Sets a word aside as it is now, under the position to which it belongs, unless there is one
    /// already.
    void keep(const PcmFormat& format, int fwp, int position);
    void drop(int position) { words_.erase(position); }
    [[nodiscard]] bool holds(int position) const { return words_.contains(position); }
    [[nodiscard]] bool empty() const { return words_.empty(); }
    /// The positions of the words, ascending.
    [[nodiscard]] std::vector<int> words() const;
    /// True if the stream's word is as that of a position is here. REQUIRES: it is here.
    [[nodiscard]] bool isSame(const PcmFormat& format, int fwp, int position) const;
    /// Makes the stream's word of a position what it is here. False if there can be no more cells.
    bool put(PcmFormat& format, int position) const;
    /// Frees what only `keep` needs.
    void close();
    /// The approximate size in bytes.
    [[nodiscard]] std::size_t bytes() const;

  private:
    struct Cell {
        std::uint32_t measurement = 0;
        int asyncNumber = 0;
        [[nodiscard]] bool operator==(const Cell&) const = default;
    };
    /// A number of consecutive lists with the same cells.
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
