#include "pcm/edit/FrameEditWords.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/model/FrameEditLists.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/structure/WordContentsQuestion.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <vector>

namespace kavu {

namespace {

template <typename... Args>
bool refuse(const PcmFormat& format, UserInterface* parent, MessageFor<Args...> id,
            const Args&... args) {
    format.context().messages.show(parent, id, title::kIllegalValueEntered, kErrorBox, args...);
    return false;
}

/// Asks for a number. The prompt takes any; a message reports one out of range.
std::optional<int> askNumber(UserInterface* parent, std::string prompt, long initial) {
    if (parent == nullptr) {
        return std::nullopt;
    }
    const auto value = parent->enterInteger({.title = "Enter Value",
                                             .prompt = std::move(prompt),
                                             .initial = initial,
                                             .least = INT32_MIN,
                                             .most = INT32_MAX});
    return value ? std::optional(static_cast<int>(std::clamp<long>(*value, INT32_MIN, INT32_MAX)))
                 : std::nullopt;
}

/// The end of a block that begins where the user has said: that of the selection, if it begins
/// there, too.
int lastOf(const SelectedWords& selected, int start, int first) {
    return first == start ? std::max(first, selected.last) : first;
}

/// Async formats state at which words they are.
void moveAsyncLocations(PcmFormat& format, const WordMoves& moves) {
    for (auto& record : format.asyncFormats) {
        for (auto& location : record.locations) {
            const auto at = static_cast<std::size_t>(location.fwp);
            location.fwp = at < moves.size() && moves[at] > 0 ? moves[at] : location.fwp;
        }
        std::stable_sort(record.locations.begin(), record.locations.end(),
                         [](const auto& a, const auto& b) { return a.fwp < b.fwp; });
    }
}

/// Puts the words of `sources` at the positions from `first` on; -1 is an empty plain word.
/// The contents of a position that is not among the sources are lost. `moves` gets the new
/// positions.
void arrange(PcmFormat& format, int first, const std::vector<int>& sources, WordMoves& moves) {
    const auto end = std::min(moves.size(), static_cast<std::size_t>(first) + sources.size());
    for (auto fwp = static_cast<std::size_t>(first); fwp < end; ++fwp) {
        moves[fwp] = -1;
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (const auto source = static_cast<std::size_t>(sources[i]); source < moves.size()) {
            moves[source] = first + static_cast<int>(i);
        }
    }
    std::vector<bool> isSource(static_cast<std::size_t>(format.wordsPerMinorFrame));
    for (const int source : sources) {
        if (source >= 0) {
            isSource[static_cast<std::size_t>(source)] = true;
        }
    }
    std::vector<int> permuted(isSource.size());
    std::iota(permuted.begin(), permuted.end(), 0);
    int spare = first;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        auto source = sources[i];
        if (source < 0) {  // one of the words that go is emptied for it
            while (isSource[static_cast<std::size_t>(spare)]) {
                ++spare;
            }
            source = spare++;
        }
        permuted[static_cast<std::size_t>(first) + i] = source;
    }
    format.permuteWords(permuted);
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (sources[i] < 0) {
            emptyWord(format, first + static_cast<int>(i));
        }
    }
    moveAsyncLocations(format, moves);
}

/// The question for the first entry of a plain word; true for an empty one.
bool mayClear(const PcmFormat& format, UserInterface* parent, int fwp) {
    const auto at = format.measurementAt(fwp, 1, 1, false);
    if (!at || parent == nullptr) {
        return true;
    }
    const int record = format.cells().asyncNumber(at);
    const auto entry = static_cast<std::size_t>(std::max(0, record - 1));
    std::string text;
    if (record == 0) {
        text = formatPrintf("Measurement '%s'?", format.cells().measurement(at).name.view());
    } else {
        text = formatPrintf("Async format definition '%s'?",
                            entry < format.asyncFormats.size()
                                ? format.asyncFormats[entry].dataLinkName.view()
                                : std::string_view());
    }
    return showBox(parent, text, std::string(loadText(title::kDeleteEntry).value_or("")),
                   Icon::Question, Buttons::YesNo) == Button::Yes;
}

/// Deletes a subframe with the measurements and async formats that had a place in it,
/// wherever else they are.
bool clearSubframe(PcmFormat& format, UserInterface* parent, const EditSteps& steps, int fwp) {
    const auto word = format.word(fwp);
    const auto held =
        contentsOfWords(format, format.wordsOf({word.idCounterIndex, word.subframeIndex}));
    std::map<std::string, int> names;
    for (const auto& name : held.measurements) {
        names.emplace(name, wordFrameEntry(format, name));
    }
    // A hidden subframe has no name for a user: the question is about what it holds.
    const bool hidden = isHiddenSubframe(format.subframeOfWord(fwp));
    const auto why = formatPrintf(
        "Frame Word Position %d is in use. What it holds would be deleted, there and wherever else "
        "it is:",
        fwp);
    if ((hidden && !mayLose(format, parent, held, why)) ||
        !deleteSubframe(format, hidden ? nullptr : parent, fwp, true)) {
        return false;
    }
    for (const auto& [name, entry] : names) {
        dropMeasurement(format, parent, steps, name);
        format.freeWordFrameDefinition(entry);
    }
    for (auto record = held.asyncRecords.rbegin(); record != held.asyncRecords.rend(); ++record) {
        removeAsyncFormat(format, parent, *record, -1, -1);  // later ones move up
    }
    removeEmptyHiddenSubframes(format);
    return true;
}

bool clearForDeletion(PcmFormat& format, UserInterface* parent, const EditSteps& steps, int fwp) {
    switch (format.wordType(fwp)) {
        case WordType::IdCounter:
            return deleteIdCounter(format, parent, fwp);
        case WordType::Subframe:
            return clearSubframe(format, parent, steps, fwp);
        case WordType::Minor:
            if (mayClear(format, parent, fwp)) {
                clearWord(format, parent, steps, fwp);
                return true;
            }
            return false;
        default:
            return false;
    }
}

}  // namespace

namespace {

bool insertWords(PcmFormat& format, UserInterface* parent, int after, int count, WordMoves& moves) {
    const int words = format.wordsPerMinorFrame;
    if (after < 0 || after > words - 1) {
        return refuse(format, parent, 160, 0, words - 1);
    }
    if (count < 1) {
        return refuse(format, parent, 161, 0);
    }
    if (count > kMostWords - words) {
        format.context().messages.show(parent, 189, title::kError, kErrorBox, kMostWords,
                                       kMostWords);
        return false;
    }
    if (!format.setWordsPerMinorFrame(parent, words + count)) {
        return false;
    }
    std::vector<int> sources(static_cast<std::size_t>(count), -1);
    for (int source = after + 1; source < words; ++source) {
        sources.push_back(source);
    }
    arrange(format, after + 1, sources, moves);
    format.recalculateBitsPerMinorFrame();
    return true;
}

}  // namespace

bool insertFwps(PcmFormat& format, UserInterface* parent, int after, int count) {
    return changeFrame(format, parent, {}, FrameEdit::MovesWords, [&](WordMoves& moves) {
        return insertWords(format, parent, after, count, moves);
    });
}

bool insertFwps(PcmFormat& format, UserInterface* parent, const SelectedWords& selected) {
    const int last = format.wordsPerMinorFrame - 1;
    const auto after = askNumber(parent, "Add New FWPs After FWP:", selected.last);
    if (!after) {
        return false;
    }
    if (*after < 0 || *after > last) {
        return refuse(format, parent, 160, 0, last);
    }
    const auto count = askNumber(parent, "How many FWP's to be added?", 1);
    return count && insertFwps(format, parent, *after, *count);
}

namespace {

std::optional<int> deleteWords(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                               int first, int last, WordMoves& moves) {
    const int most = format.wordsPerMinorFrame - 1;
    if (first < 1 || first > most) {
        refuse(format, parent, 160, 1, most);
        return std::nullopt;
    }
    if (last < first || last > most) {
        refuse(format, parent, 160, first, most);
        return std::nullopt;
    }
    // The remaining words close the gap once at the end: it makes no difference to the
    // questions, and a long block would be moved once for each deleted word.
    std::vector<int> sources;
    int deleted = 0;
    for (int fwp = first; fwp <= most; ++fwp) {
        bool goes = fwp <= last;
        if (goes && format.isBusStream && most - deleted < kLeastWordsBus) {
            refuse(format, parent, 222);
            last = fwp;
            goes = false;
        }
        goes = goes && clearForDeletion(format, parent, steps, fwp);
        deleted += goes ? 1 : 0;
        if (!goes) {
            sources.push_back(fwp);
        }
    }
    if (deleted > 0) {
        sources.resize(static_cast<std::size_t>(most - first + 1), -1);
        arrange(format, first, sources, moves);
        (void)format.allocateWords({}, format.wordsPerMinorFrame - deleted);
        format.recalculateBitsPerMinorFrame();
        format.changed = true;
        format.formatEdited = true;
    }
    return deleted;
}

}  // namespace

std::optional<int> deleteFwps(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                              int first, int last) {
    std::optional<int> deleted;
    const bool stays =
        changeFrame(format, parent, steps, FrameEdit::MovesWords, [&](WordMoves& moves) {
            deleted = deleteWords(format, parent, steps, first, last, moves);
            return deleted.has_value();
        });
    return stays || !deleted ? deleted : 0;
}

std::optional<int> deleteFwps(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                              const SelectedWords& selected) {
    const int most = format.wordsPerMinorFrame - 1;
    const int start = std::max(1, selected.first);
    const auto first = askNumber(parent, "Delete FWPs Starting at:", start);
    if (!first) {
        return std::nullopt;
    }
    if (*first < 1 || *first > most) {
        refuse(format, parent, 160, 1, most);
        return std::nullopt;
    }
    const auto last = askNumber(parent, "Last FWP to delete:", lastOf(selected, start, *first));
    return last ? deleteFwps(format, parent, steps, *first, *last) : std::nullopt;
}

namespace {

bool moveWords(PcmFormat& format, UserInterface* parent, int first, int last, int after,
               WordMoves& moves) {
    const int most = format.wordsPerMinorFrame - 1;
    if (first < 1 || first > most) {
        return refuse(format, parent, 160, 1, most);
    }
    if (last < first || last > most) {
        return refuse(format, parent, 160, first, most);
    }
    if (after < 1 || after > most || (after >= first && after <= last)) {
        return refuse(format, parent, 228, most);
    }
    std::vector<int> sources;
    const auto append = [&sources](int from, int to) {
        for (int fwp = from; fwp <= to; ++fwp) {
            sources.push_back(fwp);
        }
    };
    if (after > last) {
        append(last + 1, after);
        append(first, last);
    } else {
        append(first, last);
        append(after + 1, first - 1);
    }
    format.changed = true;
    format.formatEdited = true;
    arrange(format, after > last ? first : after + 1, sources, moves);
    return true;
}

}  // namespace

bool moveFwps(PcmFormat& format, UserInterface* parent, int first, int last, int after) {
    return changeFrame(format, parent, {}, FrameEdit::MovesWords, [&](WordMoves& moves) {
        return moveWords(format, parent, first, last, after, moves);
    });
}

bool moveFwps(PcmFormat& format, UserInterface* parent, const SelectedWords& selected) {
    const int most = format.wordsPerMinorFrame - 1;
    const int start = std::max(1, selected.first);
    const auto first = askNumber(parent, "Starting FWP To Move:", start);
    if (!first) {
        return false;
    }
    if (*first < 1 || *first > most) {
        return refuse(format, parent, 160, 1, most);
    }
    const auto last = askNumber(parent, "Ending FWP To Move:", lastOf(selected, start, *first));
    if (!last) {
        return false;
    }
    if (*last < *first || *last > most) {
        return refuse(format, parent, 160, *first, most);
    }
    const auto after = askNumber(parent, "Insert After FWP:", 1);
    return after && moveFwps(format, parent, *first, *last, *after);
}

}  // namespace kavu
