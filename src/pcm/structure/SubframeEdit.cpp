#include "pcm/structure/SubframeEdit.h"

#include "pcm/structure/WordContentsQuestion.h"
#include "vocabulary/SubframeCodes.h"

namespace kavu {

namespace {

template <typename... Args>
Button show(const PcmFormat& format, UserInterface* parent, MessageFor<Args...> id,
            MessageTitle titleId, const BoxStyle& style, const Args&... args) {
    return format.context().messages.show(parent, id, titleId, style, args...);
}

std::optional<int> firstIdCounter(const PcmFormat& format) {
    for (std::size_t i = 0; i < format.idCounters.size(); ++i) {
        if (!format.idCounters[i].name.empty()) {
            return static_cast<int>(i);
        }
    }
    return std::nullopt;
}

bool arePlainWords(const PcmFormat& format, const SubframeRequest& request) {
    for (int i = 0; i < request.locations; ++i) {
        const int fwp = request.fwp + i * request.interval;
        if (!format.isDataWord(fwp) || format.wordType(fwp) != WordType::Minor) {
            return false;
        }
    }
    return true;
}

/// Lets the user pick a word for a new counter, and makes it there.
bool createAskedCounter(PcmFormat& format, UserInterface* parent, int fwp) {
    std::vector<int> words;
    std::vector<std::string> choices;
    for (int word = 1; word < format.wordsPerMinorFrame; ++word) {
        if (word != fwp && canCreateAt(format, nullptr, word)) {
            words.push_back(word);
            choices.push_back(std::to_string(word));
        }
    }
    const int choice =
        choices.empty() ? -1 : parent->chooseFromList("Enter ID Counter FWP", choices);
    return choice >= 0 && static_cast<std::size_t>(choice) < words.size() &&
           clearForCounter(format, parent, words[static_cast<std::size_t>(choice)]) &&
           createIdCounter(format, parent, words[static_cast<std::size_t>(choice)]).has_value();
}

/// The counter that the new subframe follows. Without one the user gets a message, and
/// for hidden subframes a question.
std::optional<int> counterForSubframe(PcmFormat& format, UserInterface* parent,
                                      const SubframeRequest& request, CounterQuestion* question) {
    if (const auto counter = firstIdCounter(format)) {
        return counter;
    }
    if (request.hidden == HiddenMode::Shown) {
        show(format, parent, 355, title::kError, kErrorBox);
        return std::nullopt;
    }
    if (question != nullptr && question->refused) {
        return std::nullopt;
    }
    const auto answer = request.hidden == HiddenMode::Hidden
                            ? show(format, parent, 357, title::kError, kYesNoBox)
                            : show(format, parent, 358, title::kError, kYesNoBox,
                                   request.name.value_or("<no name defined>"));
    if (answer == Button::Yes && createAskedCounter(format, parent, request.fwp)) {
        return firstIdCounter(format);
    }
    if (question != nullptr) {
        question->refused = true;
    }
    return std::nullopt;
}

std::string nameForWord(const PcmFormat& format, int fwp) {
    auto name = formatPrintf("SF-%d", fwp);
    for (int n = 2; subframeNameExists(format, name); ++n) {
        name = formatPrintf("SF-%d-%d", fwp, n);
    }
    return name;
}

/// True if one of the fragments of a measurement puts it in every frame of a word; the others
/// may be in some frames of other words.
bool isInEveryFrameOf(const PcmFormat& format, const Measurement& measurement, int fwp) {
    const auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    if (!isWordFrame(measurement) || definition == nullptr) {
        return false;
    }
    const auto covers = [&](const WordFrameFragment& fragment) {
        const int step = fwp - fragment.startWord;
        const bool isWord = fragment.wordInterval < 1 ? step == 0
                                                      : step >= 0 && fwp <= fragment.endWord &&
                                                            step % fragment.wordInterval == 0;
        return isWord && fragment.startFrame == 1 && fragment.frameInterval == 1 &&
               fragment.endFrame == format.numberOfFrames;
    };
    return std::any_of(
        definition->locations.begin(), definition->locations.end(), [&](const auto& location) {
            return std::any_of(location.fragments.begin(), location.fragments.end(), covers);
        });
}

/// Copies what the first frame holds for every minor frame to the other frames of a word
/// that was a plain one until now.
void spreadOverFrames(PcmFormat& format, UserInterface* parent, int fwp) {
    std::vector<Measurement> measurements;
    for (auto at = format.cellAt(fwp, 1); at; at = format.next(at)) {
        const auto& measurement = format.cells().measurement(at);
        if (format.cells().isMeasurement(at) && isInEveryFrameOf(format, measurement, fwp)) {
            measurements.push_back(measurement);
        }
    }
    const int last = std::min(format.wordDepth(fwp), format.numberOfFrames);
    for (int fn = 2; fn <= last && !measurements.empty(); ++fn) {
        for (const auto& measurement : measurements) {
            const auto cell = format.getFreeCell(parent, fwp, fn);
            if (!cell) {
                return;
            }
            format.cells().store(cell, measurement);
        }
    }
}

}  // namespace

bool subframeNameExists(const PcmFormat& format, std::string_view name) {
    const auto ref = format.findSubframe(name);
    return ref && format.subframe(*ref)->name == name;
}

std::optional<int> getSubframeSlot(PcmFormat& format, UserInterface* parent, int counter) {
    if (counter < 0 || static_cast<std::size_t>(counter) >= format.idCounters.size()) {
        return std::nullopt;
    }
    auto& subframes = format.idCounters[static_cast<std::size_t>(counter)].subframes;
    const auto hole = std::find_if(subframes.begin(), subframes.end(),
                                   [](const Subframe& record) { return record.name.empty(); });
    const auto index = static_cast<int>(hole - subframes.begin());
    if (hole != subframes.end()) {
        return index;
    }
    if (index >= kMostSubframes) {
        show(format, parent, 352, title::kError, kErrorBox, kMostSubframes);
        return std::nullopt;
    }
    subframes.emplace_back();
    return index;
}

bool createSubframe(PcmFormat& format, UserInterface* parent, const SubframeRequest& request,
                    CounterQuestion* question) {
    const bool sane = request.locations >= 1 && request.locations <= kMostSupercomLocations &&
                      request.interval >= 0 && request.interval <= kMostSubframeInterval;
    if (!sane || !arePlainWords(format, request)) {
        return false;
    }
    const auto counter = counterForSubframe(format, parent, request, question);
    // The word picked for a new counter may be one of the subframe's.
    if (!counter || !arePlainWords(format, request)) {
        return false;
    }
    // Always the first array, whichever counter was found: hidden subframes of streams whose
    // first counter was deleted are expected there.
    const auto slot = getSubframeSlot(format, parent, 0);
    if (!slot) {
        return false;
    }
    const bool given = request.name && request.hidden != HiddenMode::ForMeasurement;
    if (given && subframeNameExists(format, *request.name)) {
        show(format, parent, 354, 87, kErrorBox);
        return false;
    }
    Subframe record;
    record.name = given ? std::string(*request.name) : nameForWord(format, request.fwp);
    record.hidden = request.hidden != HiddenMode::Shown;
    const bool single = request.locations == 1;
    record.supercommutated =
        single ? std::string(kNotSupercommutated) : std::to_string(request.locations);
    record.locationMode = single ? kNoLocationMode : kFirstAndInterval;
    record.interval = single ? "0" : std::to_string(request.interval);
    const auto& step = format.idCounters[static_cast<std::size_t>(*counter)];
    record.depth = request.depth > 0 ? std::to_string(request.depth) : step.endFrame.str();
    format.idCounters.front().subframes[static_cast<std::size_t>(*slot)] = record;
    format.subframeNamed({0, *slot});
    for (int i = 0; i < request.locations; ++i) {
        const int fwp = request.fwp + i * request.interval;
        format.setWord(fwp, WordType::Subframe, 0, *slot);
        format.allocateCells(parent, fwp);
        if (record.hidden) {
            spreadOverFrames(format, parent, fwp);
        }
    }
    format.changed = format.changed || !record.hidden;
    return true;
}

void makeHiddenSubframes(PcmFormat& format, UserInterface* parent, CounterQuestion* question) {
    CounterQuestion own;
    auto* const asked = question != nullptr ? question : &own;
    for (int fwp = 1; fwp < format.wordsPerMinorFrame && !asked->refused; ++fwp) {
        if (format.wordType(fwp) == WordType::Minor) {
            SubframeRequest request;
            request.fwp = fwp;
            request.hidden = HiddenMode::Hidden;
            createSubframe(format, parent, request, asked);
        }
    }
}

bool deleteSubframe(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo) {
    const auto& word = format.word(fwp);
    const SubframeRef ref{word.idCounterIndex, word.subframeIndex};
    const auto* const record = format.subframe(ref);
    if (word.type != WordType::Subframe || record == nullptr) {
        return false;
    }
    if (parent != nullptr && show(format, parent, 123, title::kDeleteSubframe, kYesNoBox,
                                  record->name.view()) != Button::Yes) {
        return false;
    }
    const auto words = format.wordsOf(ref);
    for (const int each : words) {
        resetWord(format, parent, each, cellsToo);
    }
    format.idCounters[static_cast<std::size_t>(ref.counter)]
        .subframes[static_cast<std::size_t>(ref.index)] = {};
    format.subframesChanged();
    format.changed = true;
    return true;
}

bool moveSubframeToCounter(PcmFormat& format, int fwp, const Subframe& record, int counter) {
    const SubframeRef from{format.word(fwp).idCounterIndex, format.word(fwp).subframeIndex};
    if (format.subframeOfWord(fwp) == nullptr) {
        return false;
    }
    auto to = from;
    if (counter != from.counter) {
        const auto slot = getSubframeSlot(format, nullptr, counter);
        if (!slot) {
            return false;
        }
        to = {counter, *slot};
    }
    const Subframe moved = record;  // a copy: `record` may be the entry that is emptied
    const auto words = format.wordsOf(from);
    format.idCounters[static_cast<std::size_t>(from.counter)]
        .subframes[static_cast<std::size_t>(from.index)] = {};
    format.idCounters[static_cast<std::size_t>(to.counter)]
        .subframes[static_cast<std::size_t>(to.index)] = moved;
    format.subframesChanged();
    for (const int word : words) {
        format.setWord(word, WordType::Subframe, to.counter, to.index);
        format.allocateCells(nullptr, word);
    }
    format.changed = true;
    return true;
}

void resetWord(PcmFormat& format, UserInterface* parent, int fwp, bool cellsToo) {
    if (!format.isDataWord(fwp)) {
        return;
    }
    if (cellsToo) {
        format.freeCells(parent, fwp);
    }
    format.setWord(fwp, WordType::Minor, -1, -1);
    format.allocateCells(parent, fwp);
}

bool holdsAnything(const PcmFormat& format, int fwp) {
    const auto& cells = format.cells();
    for (int index = 1; index <= cells.cellCount(fwp); ++index) {
        for (auto at = format.cellAt(fwp, index); at; at = format.next(at)) {
            if (cells.isMeasurement(at) || cells.asyncNumber(at) > 0) {
                return true;
            }
        }
    }
    return false;
}

bool canCreateAt(const PcmFormat& format, UserInterface* parent, int fwp) {
    const auto type = format.wordType(fwp);
    if (!format.isDataWord(fwp)) {
        return false;
    }
    if (format.edition() >= 2011) {
        return type == WordType::Minor || type == WordType::Subframe;
    }
    if (type != WordType::Minor) {
        return false;
    }
    // An async slot counts, too: its stream could not be read from another kind of word.
    if (holdsAnything(format, fwp)) {
        show(format, parent, 231, title::kError, kErrorBox);
        return false;
    }
    return true;
}

Created createAt(PcmFormat& format, UserInterface* parent, int fwp) {
    if (!canCreateAt(format, parent, fwp)) {
        return Created::Nothing;
    }
    if (format.edition() < 2011) {
        std::vector<std::string> choices{"Create Subframe", "Create ID Counter"};
        if (format.implicitSubframes) {
            show(format, parent, 233, title::kNote, kNoteBox);
            choices.erase(choices.begin());
        }
        const int choice =
            parent == nullptr
                ? -1
                : parent->chooseFromList("Which type of subframe do you wish to create?", choices);
        if (choice < 0 || static_cast<std::size_t>(choice) >= choices.size()) {
            return Created::Nothing;
        }
        if (choice == 0 && choices.size() == 2) {
            SubframeRequest request;
            request.fwp = fwp;
            return createSubframe(format, parent, request) ? Created::Subframe : Created::Nothing;
        }
    }
    return clearForCounter(format, parent, fwp) && createIdCounter(format, parent, fwp)
               ? Created::IdCounter
               : Created::Nothing;
}

}  // namespace kavu
