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

/// Finds the cells of a word in the present frame, the last one first.
void Occurrences::collect(const WordPlaces& word) {
    const auto head = format_.cellAtFrame(word.fwp, fn_);
    const auto first = places_.begin() + static_cast<std::ptrdiff_t>(word.first);
    const auto end = places_.begin() + static_cast<std::ptrdiff_t>(word.end);
    const auto& cells = format_.cells();
    found_.clear();
    if (head && std::binary_search(first, end, FrameCells::Place{head.word, head.index})) {
        cells.cellsAt(head.word, head.index, name_, found_);
    }
    if (fragment_ >= 1) {
        std::erase_if(
            found_, [&](CellRef at) { return cells.measurement(at).fragmentNumber != fragment_; });
    }
    std::reverse(found_.begin(), found_.end());
}

bool Occurrences::stillHolds(CellRef at) const {
    const auto& cells = format_.cells();
    return cells.cell(at.word, at.index) && cells.isMeasurement(at) &&
           cells.nameNumber(at) == name_;
}

std::optional<Occurrence> Occurrences::next() {
    for (; fn_ <= format_.numberOfFrames; ++fn_, word_ = 0, collected_ = false) {
        for (; word_ < words_.size(); ++word_, collected_ = false) {
            const auto& word = words_[word_];
            if (!collected_) {
                collect(word);
                collected_ = true;
            }
            while (!found_.empty()) {
                const auto cell = found_.back();
                found_.pop_back();
                if (stillHolds(cell)) {
                    return Occurrence{cell, word.fwp, fn_};
                }
            }
        }
    }
    return std::nullopt;
}

}  // namespace kavu
