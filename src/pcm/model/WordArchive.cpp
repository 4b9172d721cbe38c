#include "pcm/model/WordArchive.h"

#include <algorithm>

namespace kavu {

std::uint32_t WordArchive::numberOf(const FrameCells& cells, CellRef at) {
    const auto record = cells.recordNumber(at);
    const auto& measurement = cells.measurement(at);
    if (record >= numbers_.size()) {
        numbers_.resize(record + 1 + record / 2);
    }
    if (numbers_[record] == 0 || !(measurements_[numbers_[record] - 1] == measurement)) {
        measurements_.push_back(measurement);
        numbers_[record] = static_cast<std::uint32_t>(measurements_.size());
    }
    return numbers_[record] - 1;
}

void WordArchive::keep(const PcmFormat& format, int fwp, int position) {
    const auto [it, isNew] = words_.try_emplace(position);
    if (!isNew) {
        return;
    }
    auto& kept = it->second;
    kept.word = format.word(fwp);
    const auto& cells = format.cells();
    const int count = cells.cellCount(fwp);
    std::vector<Cell> list;
    for (int index = 1; index <= count; ++index) {
        list.clear();
        std::size_t used = 0;
        for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
            list.push_back({numberOf(cells, at), cells.asyncNumber(at)});
            used = cells.isFree(at) ? used : list.size();
        }
        list.resize(used);  // free cells at the end are not part of the list
        if (!kept.runs.empty() && kept.runs.back().cells == used &&
            std::equal(list.begin(), list.end(),
                       kept.cells.end() - static_cast<std::ptrdiff_t>(used))) {
            ++kept.runs.back().lists;
        } else {
            kept.runs.push_back({1, static_cast<std::uint32_t>(used)});
            kept.cells.insert(kept.cells.end(), list.begin(), list.end());
        }
    }
    kept.runs.shrink_to_fit();
    kept.cells.shrink_to_fit();
}

std::vector<int> WordArchive::words() const {
    std::vector<int> positions;
    positions.reserve(words_.size());
    for (const auto& entry : words_) {
        positions.push_back(entry.first);
    }
    return positions;
}

bool WordArchive::isSame(const PcmFormat& format, int fwp, int position) const {
    const auto& kept = words_.at(position);
    const auto& cells = format.cells();
    if (!(kept.word == format.word(fwp))) {
        return false;
    }
    int index = 0;
    auto first = kept.cells.begin();
    for (const auto& run : kept.runs) {
        for (std::uint32_t i = 0; i < run.lists; ++i) {
            auto at = cells.cell(fwp, ++index);
            if (!at) {
                return false;
            }
            for (std::uint32_t n = 0; n < run.cells; ++n, at = cells.next(at)) {
                const auto& cell = first[static_cast<std::ptrdiff_t>(n)];
                if (!at || cells.asyncNumber(at) != cell.asyncNumber ||
                    !(cells.measurement(at) == measurements_[cell.measurement])) {
                    return false;
                }
            }
            for (; at; at = cells.next(at)) {
                if (!cells.isFree(at)) {
                    return false;
                }
            }
        }
        first += static_cast<std::ptrdiff_t>(run.cells);
    }
    return index == cells.cellCount(fwp);
}

bool WordArchive::put(PcmFormat& format, int position) const {
    const auto& kept = words_.at(position);
    WordContents contents{kept.word, {}};
    auto first = kept.cells.begin();
    for (const auto& run : kept.runs) {
        CellList list;
        for (std::uint32_t n = 0; n < run.cells; ++n, ++first) {
            list.push_back({measurements_[first->measurement], first->asyncNumber});
        }
        contents.lists.insert(contents.lists.end(), run.lists, list);
    }
    return putWord(format, position, contents);
}

void WordArchive::close() {
    numbers_ = {};
    measurements_.shrink_to_fit();
}

std::size_t WordArchive::bytes() const {
    constexpr std::size_t kNode = 48;  // of the map
    std::size_t bytes = measurements_.capacity() * sizeof(Measurement) +
                        numbers_.capacity() * sizeof(std::uint32_t);
    for (const auto& [fwp, word] : words_) {
        bytes += kNode + sizeof(Word) + word.runs.capacity() * sizeof(Run) +
                 word.cells.capacity() * sizeof(Cell);
    }
    return bytes;
}

}  // namespace kavu
