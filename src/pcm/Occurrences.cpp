#include "pcm/PcmFormat.h"

#include <algorithm>

namespace kavu {

Occurrences::Occurrences(const PcmFormat& format, std::string_view name, std::string_view subframe,
                         int fragment)
    : format_(format), name_(format.cells().nameNumber(name)), fragment_(fragment) {
    std::optional<SubframeRef> wanted;
    if (!subframe.empty()) {
        wanted = format.findSubframe(subframe).value_or(SubframeRef{});
    }
    auto places = format.cells().places(name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    places_ = std::move(places);
    for (std::size_t first = 0; first < places_.size();) {
        std::size_t end = first;
        while (end < places_.size() && places_[end].word == places_[first].word) {
            ++end;
        }
        const auto& word = format.word(places_[first].word);
        if (!wanted || (word.type == WordType::Subframe &&
                        SubframeRef{word.idCounterIndex, word.subframeIndex} == *wanted)) {
            words_.push_back({places_[first].word, first, end});
        }
        first = end;
    }
}

CellRef Occurrences::matching(CellRef from) const {
    const auto& cells = format_.cells();
    for (auto at = cells.findFrom(from, name_); at; at = cells.findFrom(cells.next(at), name_)) {
        if (fragment_ < 1 || cells.measurement(at).fragmentNumber == fragment_) {
            return at;
        }
    }
    return {};
}

CellRef Occurrences::firstIn(const WordPlaces& word) const {
    const auto head = format_.cellAtFrame(word.fwp, fn_);
    const auto begin = places_.begin();
    const auto first = begin + static_cast<std::ptrdiff_t>(word.first);
    const auto end = begin + static_cast<std::ptrdiff_t>(word.end);
    const bool holds =
        head && std::binary_search(first, end, FrameCells::Place{head.word, head.index});
    return holds ? matching(head) : CellRef{};
}

std::optional<Occurrence> Occurrences::next() {
    for (; fn_ <= format_.numberOfFrames; ++fn_, word_ = 0) {
        for (; word_ < words_.size(); ++word_) {
            const auto& word = words_[word_];
            cell_ = cell_ ? matching(format_.next(cell_)) : firstIn(word);
            if (cell_) {
                return Occurrence{cell_, word.fwp, fn_};
            }
        }
    }
    return std::nullopt;
}

}  // namespace kavu
