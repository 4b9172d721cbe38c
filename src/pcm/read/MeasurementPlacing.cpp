#include "pcm/read/MeasurementPlacing.h"

#include "pcm/structure/SubframeEdit.h"

#include <algorithm>

namespace kavu {

namespace {

/// Calls `visit(position)` from start to end by the interval, once with an interval of 0,
/// until it returns false.
template <typename Visit>
bool forEachStep(int start, int interval, int end, const Visit& visit) {
    for (std::int64_t at = start; at <= end; at += interval) {
        if (!visit(static_cast<int>(at))) {
            return false;
        }
        if (interval < 1) {
            break;
        }
    }
    return true;
}

/// Reports why a word cannot hold a fragment, whatever its frames.
bool checkWord(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment, int fwp) {
    auto& format = load.format;
    if (!format.isDataWord(fwp)) {
        load.log(276, title::kError, name, fwp, fragment.startFrame, format.wordsPerMinorFrame);
        return false;
    }
    const auto* const subframe = format.subframeOfWord(fwp);
    if (subframe != nullptr && subframe->isSupercommutated()) {
        load.log(285, title::kError, name, fwp, subframe->name.view());
        return false;
    }
    if (format.wordType(fwp) == WordType::IdCounter &&
        (fragment.startFrame != 1 || fragment.frameInterval != 1 || fragment.wordInterval != 0)) {
        load.log(287, title::kError, name, fwp);
        return false;
    }
    return true;
}

bool checkFrames(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment, int fwp) {
    const auto& format = load.format;
    const int depth =
        format.wordType(fwp) == WordType::Subframe ? format.wordDepth(fwp) : format.numberOfFrames;
    if (fragment.startFrame < 1 || fragment.endFrame < 1 ||
        fragment.startFrame > fragment.endFrame || fragment.endFrame > depth) {
        load.log(286, title::kErrorReadingMeasurement, name, fwp, fragment.startFrame, depth);
        return false;
    }
    return true;
}

/// Gives a plain word the hidden subframe of a measurement.
bool giveSubframe(PcmLoad& load, std::string_view name, int fwp) {
    auto& format = load.format;
    SubframeRequest request{fwp, name, HiddenMode::ForMeasurement, format.numberOfFrames, 1, 0};
    if (load.report) {  // not a load: the question is the one of an edit
        request.name = std::nullopt;
        request.hidden = HiddenMode::Hidden;
    }
    return createSubframe(format, load.parent, request, &load.counterQuestion);
}

}  // namespace

bool addMeasurementLocation(PcmLoad& load, int fwp, int fn, const Measurement& measurement,
                            Expected expected) {
    auto& format = load.format;
    if (expected == Expected::MinorWord && fn > 1) {
        return true;
    }
    const auto name = measurement.name.view();
    if (!format.isDataWord(fwp)) {
        load.log(276, title::kError, name, fwp, fn, format.wordsPerMinorFrame);
        load.corrected();
        return false;
    }
    if (format.wordType(fwp) == WordType::Subframe && expected == Expected::MinorWord) {
        const auto* const subframe = format.subframeOfWord(fwp);
        load.log(277, title::kError, name, "Minor Word", fwp,
                 formatPrintf("Subframe ('%s')",
                              subframe == nullptr ? std::string_view() : subframe->name.view()));
        load.corrected();
        return false;
    }
    if (format.wordType(fwp) == WordType::Minor && expected == Expected::Subframe) {
        load.log(277, title::kError, name, "Subframe", fwp, "Minor Word");
        load.corrected();
        return false;
    }
    const auto head = format.cellAtFrame(fwp, fn);
    if (!head) {
        // A subframe may be deeper than there are frames; nothing is sent there.
        load.log(276, title::kError, name, fwp, fn, format.wordsPerMinorFrame);
        load.corrected();
        return false;
    }
    const auto& cells = format.cells();
    const auto same =
        isFragmented(measurement.locationType) ? CellRef{} : cells.firstAt(fwp, head.index, name);
    if (same && !isFragmented(cells.measurement(same).locationType)) {
        load.log(275, title::kErrorReadingMeasurement, name, name, fwp, fn, name);
        load.corrected();
        return false;
    }
    const auto cell = format.getFreeCell(load.parent, fwp, fn);
    if (!cell) {
        load.abort = true;
        return false;
    }
    format.cells().store(cell, measurement);
    return true;
}

Expected wordFrameCellType(const PcmFormat& format, int fwp, int startFrame, int frameInterval,
                           int endFrame) {
    const auto type = format.wordType(fwp);
    if (type == WordType::Subframe) {
        return Expected::Subframe;
    }
    const bool everyFrame =
        startFrame == 1 && frameInterval == 1 && endFrame == format.numberOfFrames;
    return everyFrame && (type == WordType::Minor || type == WordType::IdCounter)
               ? Expected::MinorWord
               : Expected::Any;
}

bool isSubcommutated(int edition, int frames, int start, int interval, int end) {
    if (start > 1 || interval > 1) {
        return true;
    }
    return edition >= 2009 && (end < frames || (interval == 0 && frames > 1));
}

bool isSubcommutated(const PcmFormat& format, int start, int interval, int end) {
    return isSubcommutated(format.edition(), format.numberOfFrames, start, interval, end);
}

bool checkWordFrameFragment(PcmLoad& load, std::string_view name,
                            const WordFrameFragment& fragment) {
    auto& format = load.format;
    const std::string_view shown = name.empty() ? "<no name defined>" : name;
    if (fragment.endWord < fragment.startWord) {
        load.log(292, title::kError, shown, fragment.endWord, fragment.startWord);
        return false;
    }
    if (fragment.endWord > fragment.startWord && fragment.wordInterval < 1) {
        load.log(293, title::kError, shown, "Word", "Word", "Word");
        return false;
    }
    if (fragment.endFrame > fragment.startFrame && fragment.frameInterval < 1) {
        load.log(293, title::kError, shown, "Frame", "Frame", "Frame");
        return false;
    }
    const bool makesSubframes =
        load.mayMakeSubframes && format.implicitSubframes &&
        isSubcommutated(format, fragment.startFrame, fragment.frameInterval, fragment.endFrame);
    return forEachStep(fragment.startWord, fragment.wordInterval, fragment.endWord, [&](int fwp) {
        return checkWord(load, shown, fragment, fwp) &&
               (!makesSubframes || format.wordType(fwp) != WordType::Minor ||
                giveSubframe(load, name, fwp)) &&
               checkFrames(load, shown, fragment, fwp);
    });
}

bool giveHiddenSubframes(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment) {
    auto& format = load.format;
    return !isSubcommutated(format, fragment.startFrame, fragment.frameInterval,
                            fragment.endFrame) ||
           forEachStep(fragment.startWord, fragment.wordInterval, fragment.endWord, [&](int fwp) {
               return format.wordType(fwp) == WordType::Subframe || giveSubframe(load, name, fwp);
           });
}

void placeWordFrameFragment(PcmLoad& load, const Measurement& measurement,
                            const WordFrameFragment& fragment) {
    auto& format = load.format;
    auto part = measurement;
    part.mask = fragment.mask;
    forEachStep(fragment.startWord, fragment.wordInterval, fragment.endWord, [&](int fwp) {
        const auto expected = wordFrameCellType(format, fwp, fragment.startFrame,
                                                fragment.frameInterval, fragment.endFrame);
        const int end = std::min(fragment.endFrame, format.wordDepth(fwp));
        forEachStep(fragment.startFrame, fragment.frameInterval, end,
                    [&](int fn) { return addMeasurementLocation(load, fwp, fn, part, expected); });
        return !load.abort;
    });
}

}  // namespace kavu
