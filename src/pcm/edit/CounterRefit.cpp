#include "pcm/edit/CounterRefit.h"

#include "pcm/edit/RangePlaces.h"

#include <map>
#include <utility>

namespace kavu {

std::vector<std::string> countersLeftBehind(const PcmFormat& format) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < format.idCounters.size(); ++i) {
        const auto& name = format.idCounters[i].name;
        if (!name.empty() && !isCounterLoaded(format, static_cast<int>(i))) {
            names.push_back(name.str());
        }
    }
    return names;
}

void closeCounterGaps(PcmFormat& format) {
    std::vector<IdCounter> kept;
    std::vector<int> numbers(format.idCounters.size(), -1);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!format.idCounters[i].name.empty()) {
            numbers[i] = static_cast<int>(kept.size());
            kept.push_back(std::move(format.idCounters[i]));
        }
    }
    if (kept.empty()) {
        return;
    }
    // Hidden subframes are those of the first array, whichever counter it is of.
    auto& first = kept.front().subframes;
    std::map<std::pair<int, int>, int> moved;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto& subframes = format.idCounters[i].subframes;
        for (std::size_t j = 0; numbers[i] < 0 && j < subframes.size(); ++j) {
            if (!subframes[j].name.empty()) {
                moved[{static_cast<int>(i), static_cast<int>(j)}] = static_cast<int>(first.size());
                first.push_back(subframes[j]);
            }
        }
    }
    format.idCounters = std::move(kept);
    format.subframesChanged();
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto word = format.word(fwp);
        const auto counter = static_cast<std::size_t>(word.idCounterIndex);
        if (word.idCounterIndex < 0 || counter >= numbers.size()) {
            continue;
        }
        const auto found = moved.find({word.idCounterIndex, word.subframeIndex});
        if (found != moved.end()) {
            format.setWord(fwp, word.type, 0, found->second);
        } else if (numbers[counter] >= 0 && numbers[counter] != word.idCounterIndex) {
            format.setWord(fwp, word.type, numbers[counter], word.subframeIndex);
        }
    }
}

}  // namespace kavu
