#include "core/text/Text.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/SubframeCodes.h"

namespace kavu {

namespace {

template <typename... Args>
bool refuse(const PcmFormat& format, UserInterface* parent, MessageFor<Args...> id,
            MessageTitle titleId, const Args&... args) {
    format.context().messages.show(parent, id, titleId, kErrorBox, args...);
    return false;
}

bool isEntry(const PcmFormat& format, int counter) {
    return counter >= 0 && static_cast<std::size_t>(counter) < format.idCounters.size();
}

/// Index of an entry for a new counter, preferably a hole; nothing with message 177 ("too
/// large").
std::optional<int> entryForCounter(PcmFormat& format, UserInterface* parent) {
    auto& counters = format.idCounters;
    const auto hole = std::find_if(counters.begin(), counters.end(),
                                   [](const IdCounter& counter) { return counter.name.empty(); });
    if (hole != counters.end()) {
        return static_cast<int>(hole - counters.begin());
    }
    if (counters.size() >= static_cast<std::size_t>(kMostIdCounters)) {
        refuse(format, parent, 177, title::kError, kMostIdCounters);
        return std::nullopt;
    }
    counters.emplace_back();
    return static_cast<int>(counters.size()) - 1;
}

/// A word that becomes something else may have been the last one of its subframe, and a
/// subframe without a word could never be reached again.
void forgetSubframeWithoutWords(PcmFormat& format, SubframeRef ref) {
    if (format.subframe(ref) == nullptr || !format.wordsOf(ref).empty()) {
        return;
    }
    format.idCounters[static_cast<std::size_t>(ref.counter)]
        .subframes[static_cast<std::size_t>(ref.index)] = {};
    format.subframesChanged();
}

/// A subframe that keeps its counter from being deleted, or null. A hidden one does so while
/// it is in use and there is no other counter that it could follow.
const Subframe* referenceTo(const PcmFormat& format, int counter) {
    const bool lastOne = countIdCounters(format) == 1;
    const auto& subframes = format.idCounters[static_cast<std::size_t>(counter)].subframes;
    for (std::size_t j = 0; j < subframes.size(); ++j) {
        const auto& record = subframes[j];
        const auto& words = format.wordsOf({counter, static_cast<int>(j)});
        const bool held = std::any_of(words.begin(), words.end(), [&](int fwp) {
            return !record.hidden || (lastOne && holdsAnything(format, fwp));
        });
        if (!record.name.empty() && held) {
            return &record;
        }
    }
    return nullptr;
}

/// Empties an entry. Its subframes are removed, too, except hidden ones in use: they belong
/// to the array and not to the counter.
void emptyCounter(PcmFormat& format, int counter) {
    const auto at = static_cast<std::size_t>(counter);
    auto subframes = std::move(format.idCounters[at].subframes);
    format.idCounters[at] = {};
    format.idCounters[at].subframes = std::move(subframes);
    auto& kept = format.idCounters[at].subframes;
    for (std::size_t j = 0; j < kept.size(); ++j) {
        const auto words = format.wordsOf({counter, static_cast<int>(j)});
        const bool inUse = std::any_of(words.begin(), words.end(),
                                       [&](int fwp) { return holdsAnything(format, fwp); });
        if (kept[j].hidden && inUse) {
            continue;
        }
        for (const int fwp : words) {
            resetWord(format, nullptr, fwp, true);
        }
        kept[j] = {};
    }
    format.subframesChanged();
}

bool checkFrame(PcmFormat& format, UserInterface* parent, std::string_view which, int frame) {
    return (frame >= 1 && frame <= format.numberOfFrames) ||
           refuse(format, parent, 363, title::kIllegalValueEntered, which, format.numberOfFrames);
}

}  // namespace

int countIdCounters(const PcmFormat& format) {
    return static_cast<int>(
        std::count_if(format.idCounters.begin(), format.idCounters.end(),
                      [](const IdCounter& counter) { return !counter.name.empty(); }));
}

std::optional<int> findIdCounter(const PcmFormat& format, std::string_view name) {
    for (std::size_t i = 0; i < format.idCounters.size() && !name.empty(); ++i) {
        if (format.idCounters[i].name == name) {
            return static_cast<int>(i);
        }
    }
    return std::nullopt;
}

bool idCounterNameExists(const PcmFormat& format, std::string_view name) {
    return findIdCounter(format, name).has_value();
}

int wordOfIdCounter(const PcmFormat& format, int counter) {
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        if (word.type == WordType::IdCounter && word.idCounterIndex == counter) {
            return fwp;
        }
    }
    return -1;
}

std::string generateIdCounterName(const PcmFormat& format) {
    std::string name = "SFID";
    for (int n = 2; idCounterNameExists(format, name); ++n) {
        name = "SFID" + std::to_string(n);
    }
    return name;
}

std::optional<int> expectedEndValue(const IdCounter& counter) {
    const int steps = counter.endFrame.number() - counter.startFrame.number();
    if (equalsIgnoreCase(counter.countDirection, kCountsUp)) {
        return counter.initialValue.number() + steps;
    }
    if (equalsIgnoreCase(counter.countDirection, kCountsDown)) {
        return counter.initialValue.number() - steps;
    }
    return std::nullopt;
}

void updateEndValue(IdCounter& counter) {
    if (const auto value = expectedEndValue(counter)) {
        counter.endValue = std::to_string(std::max(1, *value));
    }
}

std::optional<int> createIdCounter(PcmFormat& format, UserInterface* parent, int fwp) {
    if (!format.isDataWord(fwp)) {
        return std::nullopt;
    }
    const auto index = entryForCounter(format, parent);
    if (!index) {
        return std::nullopt;
    }
    auto name = generateIdCounterName(format);
    auto& counter = format.idCounters[static_cast<std::size_t>(*index)];
    counter.name = name;
    counter.type = kIdCounterType;
    counter.wordLength = std::to_string(format.wordLength(fwp));
    counter.counterLength = counter.wordLength;
    counter.msbStartBit = "1";
    counter.initialValue = "1";
    counter.startFrame = "1";
    counter.endValue = std::to_string(format.numberOfFrames);
    counter.endFrame = counter.endValue;
    counter.countDirection = kCountsUp;
    const auto before = format.word(fwp);
    format.setWord(fwp, WordType::IdCounter, *index, -1);
    if (before.type == WordType::Subframe) {
        forgetSubframeWithoutWords(format, {before.idCounterIndex, before.subframeIndex});
    }
    format.allocateCells(parent, fwp);
    format.changed = true;
    return index;
}

bool deleteIdCounter(PcmFormat& format, UserInterface* parent, int fwp) {
    const int index = format.word(fwp).idCounterIndex;
    if (format.wordType(fwp) != WordType::IdCounter || !isEntry(format, index)) {
        return refuse(format, parent, 359, title::kInternalError);
    }
    if (const auto* const reference = referenceTo(format, index)) {
        // The name of a hidden subframe is of no file and of no window.
        const auto word = format.wordsOf(*format.findSubframe(reference->name)).front();
        return refuse(format, parent, 360, title::kUnableToDeleteIdCounter,
                      reference->hidden ? formatPrintf("Frame Word Position %d", word)
                                        : reference->name.str());
    }
    if (parent != nullptr && format.context().messages.show(parent, 129, title::kDeleteIdCounter,
                                                            kYesNoBox) != Button::Yes) {
        return false;
    }
    resetWord(format, parent, fwp, true);
    emptyCounter(format, index);
    format.changed = true;
    return true;
}

bool setMsbStartBit(PcmFormat& format, UserInterface* parent, IdCounter& counter, int bit) {
    if (bit < 1) {
        return refuse(format, parent, 366, title::kIllegalValueEntered);
    }
    counter.msbStartBit = std::to_string(bit);
    return true;
}

bool setStartFrame(PcmFormat& format, UserInterface* parent, IdCounter& counter, int frame) {
    if (!checkFrame(format, parent, "starting", frame)) {
        return false;
    }
    if (frame >= counter.endFrame.number()) {
        return refuse(format, parent, 364, title::kIllegalValueEntered);
    }
    counter.startFrame = std::to_string(frame);
    updateEndValue(counter);
    return true;
}

bool setEndFrame(PcmFormat& format, UserInterface* parent, IdCounter& counter, int frame) {
    if (!checkFrame(format, parent, "ending", frame)) {
        return false;
    }
    if (frame <= counter.startFrame.number()) {
        return refuse(format, parent, 364, title::kIllegalValueEntered);
    }
    counter.endFrame = std::to_string(frame);
    updateEndValue(counter);
    return true;
}

bool checkIdCounterName(const PcmFormat& format, UserInterface* parent, int counter,
                        std::string_view name) {
    if (name.empty()) {
        return refuse(format, parent, 361, title::kIllegalValueEntered);
    }
    for (int other = 0; isEntry(format, other); ++other) {
        if (other != counter && format.idCounters[static_cast<std::size_t>(other)].name == name) {
            return refuse(format, parent, 365, title::kIllegalValueEntered,
                          wordOfIdCounter(format, other));
        }
    }
    return true;
}

bool saveIdCounter(PcmFormat& format, UserInterface* parent, int fwp, const IdCounter& record) {
    const int index = format.word(fwp).idCounterIndex;
    if (format.wordType(fwp) != WordType::IdCounter || !isEntry(format, index)) {
        return refuse(format, parent, 359, title::kInternalError);
    }
    if (!checkIdCounterName(format, parent, index, record.name)) {
        return false;
    }
    const int most = format.wordLength(fwp);
    if (record.counterLength.number() > most) {
        return refuse(format, parent, 362, title::kIllegalValueEntered, most);
    }
    auto& counter = format.idCounters[static_cast<std::size_t>(index)];
    auto subframes = std::move(counter.subframes);
    counter = record;
    counter.subframes = std::move(subframes);
    format.changed = true;
    return true;
}

}  // namespace kavu
