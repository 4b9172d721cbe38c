#include "pcm/PcmFormat.h"

#include <algorithm>
#include <utility>

namespace kavu {

const Subframe* PcmFormat::subframe(SubframeRef ref) const {
    if (ref.counter < 0 || ref.counter >= static_cast<int>(idCounters.size())) {
        return nullptr;
    }
    const auto& subframes = idCounters[static_cast<std::size_t>(ref.counter)].subframes;
    return ref.index >= 0 && ref.index < static_cast<int>(subframes.size())
               ? &subframes[static_cast<std::size_t>(ref.index)]
               : nullptr;
}

const Subframe* PcmFormat::subframeOfWord(int fwp) const {
    const auto& at = word(fwp);
    return at.type == WordType::Subframe ? subframe({at.idCounterIndex, at.subframeIndex})
                                         : nullptr;
}
Subframe* PcmFormat::subframeOfWord(int fwp) {
    return const_cast<Subframe*>(std::as_const(*this).subframeOfWord(fwp));
}

const IdCounter* PcmFormat::idCounterOfWord(int fwp) const {
    const auto& at = word(fwp);
    const bool has = (at.type == WordType::IdCounter || at.type == WordType::Subframe) &&
                     at.idCounterIndex >= 0 &&
                     at.idCounterIndex < static_cast<int>(idCounters.size());
    return has ? &idCounters[static_cast<std::size_t>(at.idCounterIndex)] : nullptr;
}
IdCounter* PcmFormat::idCounterOfWord(int fwp) {
    return const_cast<IdCounter*>(std::as_const(*this).idCounterOfWord(fwp));
}

void PcmFormat::subframesChanged() {
    subframeIndex_.namesValid = false;
    subframeIndex_.wordsValid = false;
}

void PcmFormat::indexSubframeNames() const {
    auto& index = subframeIndex_;
    if (index.namesValid) {
        return;
    }
    index.exact.clear();
    index.folded.clear();
    for (int c = 0; c < static_cast<int>(idCounters.size()); ++c) {
        const auto& subframes = idCounters[static_cast<std::size_t>(c)].subframes;
        for (int i = 0; i < static_cast<int>(subframes.size()); ++i) {
            const auto& name = subframes[static_cast<std::size_t>(i)].name;
            if (!name.empty()) {
                index.exact.try_emplace(name.str(), SubframeRef{c, i});
                index.folded.try_emplace(lowerAscii(name), SubframeRef{c, i});
            }
        }
    }
    index.namesValid = true;
}

void PcmFormat::indexSubframeWords() const {
    auto& index = subframeIndex_;
    if (index.wordsValid) {
        return;
    }
    index.words.clear();
    for (int fwp = 0; fwp < wordsPerMinorFrame; ++fwp) {
        const auto& at = word(fwp);
        if (at.type == WordType::Subframe) {
            index.words[{at.idCounterIndex, at.subframeIndex}].push_back(fwp);
        }
    }
    index.wordsValid = true;
}

std::optional<SubframeRef> PcmFormat::findSubframe(std::string_view name) const {
    indexSubframeNames();
    if (const auto it = subframeIndex_.exact.find(std::string(name));
        it != subframeIndex_.exact.end()) {
        return it->second;
    }
    if (const auto it = subframeIndex_.folded.find(lowerAscii(name));
        it != subframeIndex_.folded.end()) {
        return it->second;
    }
    return std::nullopt;
}

const std::vector<int>& PcmFormat::wordsOf(SubframeRef ref) const {
    static const std::vector<int> kNone;
    indexSubframeWords();
    const auto it = subframeIndex_.words.find({ref.counter, ref.index});
    return it == subframeIndex_.words.end() ? kNone : it->second;
}

int PcmFormat::subframeWord(std::string_view name, int start) const {
    const auto ref = findSubframe(name);
    if (!ref) {
        return -1;
    }
    const auto& words = wordsOf(*ref);
    const auto it = std::lower_bound(words.begin(), words.end(), start);
    return it == words.end() ? -1 : *it;
}

int PcmFormat::subframePositions(std::string_view name) const {
    const auto ref = findSubframe(name);
    if (!ref) {
        return 0;
    }
    const auto& words = wordsOf(*ref);
    return words.empty() ? 0 : static_cast<int>(words.size()) * wordDepth(words.front());
}

int PcmFormat::subframeLocation(std::string_view name, int position, int& fwp, int& fn) const {
    if (position <= 0) {
        return 0;
    }
    const int positions = subframePositions(name);
    if (position > positions) {
        return -positions;
    }
    // Across the words of one minor frame first, then down the frames.
    const auto& words = wordsOf(*findSubframe(name));
    const auto at = static_cast<std::size_t>(position - 1);
    fwp = words[at % words.size()];
    fn = static_cast<int>(at / words.size()) + 1;
    return 1;
}

int PcmFormat::subframePosition(std::string_view name, int fwp, int fn) const {
    const auto ref = findSubframe(name);
    if (!ref) {
        return 0;
    }
    const auto& words = wordsOf(*ref);
    const auto it = std::lower_bound(words.begin(), words.end(), fwp);
    if (it == words.end() || *it != fwp || fn < 1 || fn > wordDepth(fwp)) {
        return 0;
    }
    return (fn - 1) * static_cast<int>(words.size()) + static_cast<int>(it - words.begin()) + 1;
}

}  // namespace kavu
