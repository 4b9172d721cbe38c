#include "pcm/model/FrameEditLists.h"

namespace kavu {

WordContents takeWord(const PcmFormat& format, int fwp) {
    const auto& cells = format.cells();
    WordContents result{format.word(fwp), {}};
    const int count = cells.cellCount(fwp);
    result.lists.resize(static_cast<std::size_t>(count));
    for (int index = 1; index <= count; ++index) {
        auto& list = result.lists[static_cast<std::size_t>(index) - 1];
        std::size_t used = 0;
        for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
            list.push_back({cells.measurement(at), cells.asyncNumber(at)});
            used = cells.isFree(at) ? used : list.size();
        }
        list.resize(used);
    }
    return result;
}

bool putWord(PcmFormat& format, int fwp, const WordContents& contents) {
    auto& cells = format.cells();
    cells.resizeWord(fwp, 0);
    format.setWord(fwp, contents.word.type, contents.word.idCounterIndex,
                   contents.word.subframeIndex);
    format.setWordLength(fwp, contents.word.length);
    cells.resizeWord(fwp, static_cast<int>(contents.lists.size()));
    // The next contents would take a free cell before others, so it is marked as in use until
    // the list is complete.
    Measurement mark;
    mark.name = "\x01";
    for (std::size_t i = 0; i < contents.lists.size(); ++i) {
        const auto head = cells.cell(fwp, static_cast<int>(i) + 1);
        std::vector<CellRef> marked;
        for (const auto& entry : contents.lists[i]) {
            const auto at = cells.freeCell(head);
            if (!at) {
                return false;
            }
            const bool isFree = entry.asyncNumber == 0 && entry.measurement.name.empty();
            cells.store(at, isFree ? mark : entry.measurement, entry.asyncNumber);
            if (isFree) {
                marked.push_back(at);
            }
        }
        for (const auto& at : marked) {
            cells.store(at, Measurement{});
        }
    }
    return true;
}

void emptyWord(PcmFormat& format, int fwp) {
    format.cells().resizeWord(fwp, 0);
    format.setWord(fwp, WordType::Minor, -1, -1);
    format.setWordLength(fwp, format.commonWordLength);
    format.cells().resizeWord(fwp, 1);
}

bool isSameWord(const PcmFormat& format, int a, int b) {
    const auto& cells = format.cells();
    const int count = cells.cellCount(a);
    if (!(format.word(a) == format.word(b)) || count != cells.cellCount(b)) {
        return false;
    }
    const auto usedOrNone = [&](CellRef at) {
        while (at && cells.isFree(at)) {
            at = cells.next(at);
        }
        return at;
    };
    for (int index = 1; index <= count; ++index) {
        auto one = cells.cell(a, index);
        auto other = cells.cell(b, index);
        for (; one && other; one = cells.next(one), other = cells.next(other)) {
            if (cells.asyncNumber(one) != cells.asyncNumber(other) ||
                !(cells.measurement(one) == cells.measurement(other))) {
                return false;
            }
        }
        if (usedOrNone(one) || usedOrNone(other)) {
            return false;
        }
    }
    return true;
}

}  // namespace kavu
