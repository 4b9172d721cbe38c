#include "pcm/edit/MeasurementEditWordFrame.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/read/MeasurementPlacing.h"
#include "pcm/undo/StreamUndo.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

/// Makes the checks of a load report in boxes.
void reportInBoxes(PcmLoad& load) {
    load.report = [parent = load.parent](int id, MessageTitle titleId, const std::string& text) {
        if (parent != nullptr) {
            MessageBox box;
            box.id = id;
            box.titleId = titleId.id();
            box.title = loadText(titleId.id()).value_or("");
            box.text = text;
            box.icon = Icon::Error;
            parent->message(box);
        }
    };
}

template <typename Visit>
void forEachWord(const WordFrameFragment& fragment, int last, const Visit& visit) {
    const std::int64_t step = std::max(1, fragment.wordInterval);
    const auto end = fragment.wordInterval < 1 ? fragment.startWord : fragment.endWord;
    for (std::int64_t fwp = fragment.startWord; fwp <= std::min(end, last); fwp += step) {
        visit(static_cast<int>(fwp));
    }
}

bool isSubcommutatedFragment(const PcmFormat& format, const WordFrameFragment& fragment) {
    return isSubcommutated(format, fragment.startFrame, fragment.frameInterval, fragment.endFrame);
}

void takeEveryFrame(const PcmFormat& format, WordFrameFragment& fragment) {
    if (format.edition() < 2009 || fragment.startFrame != 1 || fragment.frameInterval != 0 ||
        fragment.endFrame != 1) {
        return;
    }
    bool plain = true;
    forEachWord(fragment, format.wordsPerMinorFrame - 1,
                [&](int fwp) { plain = plain && format.wordType(fwp) == WordType::Minor; });
    if (plain) {
        fragment.frameInterval = 1;
        fragment.endFrame = format.numberOfFrames;
    }
}

/// A counter is in every frame, and cannot be part of a subframe.
bool checkCounterWords(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment) {
    const auto& format = load.format;
    int counter = 0;
    if (isSubcommutatedFragment(format, fragment)) {
        forEachWord(fragment, format.wordsPerMinorFrame - 1, [&](int fwp) {
            counter = counter == 0 && format.wordType(fwp) == WordType::IdCounter ? fwp : counter;
        });
    }
    if (counter > 0) {
        load.log(287, title::kError, name.empty() ? "<no name defined>" : name, counter);
    }
    return counter == 0;
}

bool checkFragment(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment) {
    return checkWordFrameFragment(load, name, fragment) && checkCounterWords(load, name, fragment);
}

/// A plain word that gets a hidden subframe would lose its measurements of older types: no
/// reader would find them again. The measurements of `oldNames` are removed anyway.
bool checkPlainWords(const PcmFormat& format, UserInterface* parent,
                     const WordFrameFragment& fragment, const std::vector<std::string>& oldNames) {
    bool free = true;
    const auto isKept = [&](const Measurement& cell) {
        return !isWordFrame(cell) &&
               std::none_of(oldNames.begin(), oldNames.end(), [&](const std::string& name) {
                   return equalsIgnoreCase(name, cell.name);
               });
    };
    forEachWord(fragment, format.wordsPerMinorFrame - 1, [&](int fwp) {
        const bool isPlain = format.wordType(fwp) == WordType::Minor;
        for (int n = 1; free && isPlain; ++n) {
            const auto at = format.measurementAt(fwp, 1, n, true);
            if (!at) {
                break;
            }
            free = !isKept(format.cells().measurement(at));
        }
    });
    if (!free) {
        format.context().messages.show(parent, 231, title::kError, kErrorBox);
    }
    return free;
}

/// Checks everything again and makes the hidden subframes; the frame may have changed since
/// the entries were made.
bool prepare(PcmLoad& load, std::string_view name, const WordFrameDefinition& definition) {
    for (const auto& location : definition.locations) {
        for (const auto& fragment : location.fragments) {
            if (!checkFragment(load, name, fragment) ||
                !giveHiddenSubframes(load, name, fragment)) {
                return false;
            }
        }
    }
    return true;
}

void place(PcmLoad& load, const Measurement& measurement, const WordFrameDefinition& definition) {
    for (const auto& location : definition.locations) {
        for (const auto& fragment : location.fragments) {
            placeWordFrameFragment(load, measurement, fragment);
        }
    }
}

}  // namespace

WordFrameFragment newWordFrameFragment(const PcmFormat& format, int fwp, int fn) {
    WordFrameFragment fragment;
    fragment.startWord = fwp;
    fragment.endWord = fwp;
    const bool isSubframe = format.wordType(fwp) == WordType::Subframe;
    const int frame = isSubframe ? std::max(1, format.foldedFrame(fwp, fn)) : 1;
    fragment.startFrame = frame;
    fragment.frameInterval = isSubframe ? 0 : 1;
    fragment.endFrame = isSubframe ? frame : format.numberOfFrames;
    fragment.mask = kFullWord;
    fragment.fragmentPosition = 1;
    return fragment;
}

std::optional<std::string> wordFrameProblem(PcmFormat& format, std::string_view name,
                                            const WordFrameFragment& fragment) {
    std::optional<std::string> problem;
    PcmLoad load(format, nullptr);
    load.mayMakeSubframes = false;
    load.report = [&](int, MessageTitle, const std::string& text) {
        problem = problem.value_or(text);
    };
    if (!checkFragment(load, name, fragment) && !problem) {
        problem.emplace();
    }
    return problem;
}

bool checkWordFrameEntry(PcmFormat& format, UserInterface* parent, std::string_view name,
                         const WordFrameFragment& fragment) {
    PcmLoad load(format, parent);
    load.mayMakeSubframes = false;
    reportInBoxes(load);
    return checkFragment(load, name, fragment);
}

bool completeWordFrameLocation(PcmFormat& format, UserInterface* parent, std::string_view name,
                               WordFrameLocation& location) {
    const auto& messages = format.context().messages;
    if (location.fragments.empty()) {
        messages.show(parent, 328, title::kError, kErrorBox);
        return false;
    }
    if (location.fragmentCount() > 1 && location.wordLength < 1) {
        messages.show(parent, 336, title::kError, kErrorBox);
        return false;
    }
    int bits = 0;
    int position = 0;
    for (auto& fragment : location.fragments) {
        takeUnwrittenEnds(format, fragment);
        if (!checkWordFrameEntry(format, parent, name, fragment)) {
            return false;
        }
        takeEveryFrame(format, fragment);
        fragment.fragmentPosition = ++position;
        bits += format.maskBits(fragment.startWord, fragment.mask.view(), false);
    }
    if (location.fragmentCount() == 1) {
        location.wordLength = format.wordLength(location.fragments.front().startWord);
    } else if (location.wordLength != bits) {
        messages.show(parent, 294, title::kErrorReadingMeasurement, kWarningBox,
                      name.empty() ? "<no name defined>" : name, bits);
        location.wordLength = bits;
    }
    return true;
}

std::vector<std::pair<int, int>> coveredPlaces(const PcmFormat& format,
                                               const WordFrameFragment& fragment) {
    std::vector<std::pair<int, int>> places;
    if (fragment.startWord < 1 || fragment.startFrame < 1 || !format.loaded()) {
        return places;
    }
    const std::int64_t step = std::max(1, fragment.frameInterval);
    const int end = fragment.frameInterval < 1 ? fragment.startFrame : fragment.endFrame;
    forEachWord(fragment, format.wordsPerMinorFrame - 1, [&](int fwp) {
        const int depth =
            std::max(1, format.wordType(fwp) == WordType::Subframe ? format.wordDepth(fwp)
                                                                   : format.numberOfFrames);
        // A subframe that is less deep than the major frame repeats.
        for (std::int64_t fn = fragment.startFrame; fn <= std::min(end, depth); fn += step) {
            for (std::int64_t frame = fn; frame <= format.numberOfFrames; frame += depth) {
                places.emplace_back(fwp, static_cast<int>(frame));
            }
        }
    });
    return places;
}

const WordFrameFragment* fragmentAt(const PcmFormat& format, const WordFrameDefinition& definition,
                                    int fwp, int fn) {
    const bool folds = format.wordType(fwp) == WordType::Subframe;
    const int frame = folds ? std::max(1, format.foldedFrame(fwp, fn)) : fn;
    const auto isIn = [](int at, int start, int interval, int end) {
        return interval < 1 ? at == start
                            : at >= start && at <= end && (at - start) % interval == 0;
    };
    for (const auto& location : definition.locations) {
        for (const auto& fragment : location.fragments) {
            if (isIn(fwp, fragment.startWord, fragment.wordInterval, fragment.endWord) &&
                isIn(frame, fragment.startFrame, fragment.frameInterval, fragment.endFrame)) {
                return &fragment;
            }
        }
    }
    return nullptr;
}

bool placeWordFrameMeasurement(PcmFormat& format, UserInterface* parent, Measurement measurement,
                               const WordFrameDefinition& definition,
                               const std::vector<std::string>& oldNames, int entry) {
    for (const auto& location : definition.locations) {
        for (const auto& fragment : location.fragments) {
            if (isSubcommutatedFragment(format, fragment) &&
                !checkPlainWords(format, parent, fragment, oldNames)) {
                return false;
            }
        }
    }
    StreamUndo before(format);
    PcmLoad load(format, parent);
    reportInBoxes(load);
    if (!prepare(load, measurement.name.str(), definition)) {
        if (before.commit()) {
            before.undo();
        }
        return false;
    }
    for (const auto& oldName : oldNames) {
        clearMeasurement(format, oldName);
    }
    const bool reuses = format.wordFrameDefinition(entry) != nullptr;
    const int number = format.addWordFrameDefinition(reuses ? entry : -1, 0);
    *format.wordFrameDefinition(number) = definition;
    measurement.wordFrameIndex = number;
    place(load, measurement, definition);
    removeEmptyHiddenSubframes(format);
    if (load.abort) {
        if (before.commit()) {
            before.undo();
        }
        return false;
    }
    format.changed = true;
    return true;
}

}  // namespace kavu
