// All that a stream in memory holds, as lines of text: two streams are the same if their lines
// are. Numbers that a write assigns again (of word/frame definitions and hidden subframes) are
// replaced by what they refer to.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/structure/StreamSummary.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kavu::test {

using Lines = std::vector<std::string>;

inline std::string describe(const WordFrameDefinition& definition) {
    std::string text = definition.idCounterName;
    for (const auto& location : definition.locations) {
        text += formatPrintf(" [%d", location.wordLength);
        for (const auto& f : location.fragments) {
            text += formatPrintf(" (%d+%d..%d %d+%d..%d %s %c %d)", f.startWord, f.wordInterval,
                                 f.endWord, f.startFrame, f.frameInterval, f.endFrame,
                                 f.mask.view(), f.transferOrder, f.fragmentPosition);
        }
        text += "]";
    }
    return text;
}

/// With `asWritten` what a write makes of a measurement is told: the mask of a supercommutated
/// one of every location becomes that of the first measurement of its place, and none if that is of
/// ranges.
inline std::string describeCell(const PcmFormat& format, CellRef cell, bool asWritten) {
    const auto& m = format.cells().measurement(cell);
    auto mask = m.mask;
    if (asWritten && m.locationType == "MFSC" && !m.locationMode.view().starts_with('I')) {
        const auto& first = format.cells().measurement(format.cellAt(cell.word, 1));
        mask = isWordFrame(first) ? FixedText<64>() : first.mask;
    }
    const auto* const definition = format.wordFrameDefinition(m.wordFrameIndex);
    return formatPrintf(
        "%s %s %s %s %s %s async %d mask %s mode %s count %d interval %d length %d "
        "order %s number %d %s",
        m.name.view(), m.parity.view(), m.parityTransferOrder.view(), m.transferOrder.view(),
        m.filterOverwrite.view(), m.locationType.view(), format.cells().asyncNumber(cell),
        mask.view(), m.locationMode.view(), m.locationCount, m.interval, m.reconstructedLength,
        m.fragmentTransferOrder.view(), m.fragmentNumber,
        definition == nullptr ? std::string() : describe(*definition));
}

inline void describeWords(const PcmFormat& format, Lines& lines) {
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        const auto* const counter = format.idCounterOfWord(fwp);
        const auto* const subframe = format.subframeOfWord(fwp);
        lines.push_back(formatPrintf(
            "word %d type %d bits %d depth %d counter %s", fwp, static_cast<int>(word.type),
            word.length, format.wordDepth(fwp), counter == nullptr ? "" : counter->name.view()));
        if (subframe != nullptr) {
            lines.back() += formatPrintf(
                " subframe %s hidden %d %s %s %s %s", subframe->name.view(), subframe->hidden,
                subframe->supercommutated.view(), subframe->locationMode.view(),
                subframe->interval.view(), subframe->depth.view());
        }
    }
    for (const auto& c : format.idCounters) {
        lines.push_back(formatPrintf("counter %s %s %s %s %s %s %s %s %s %s %s", c.name.view(),
                                     c.type.view(), c.wordLength.view(), c.msbStartBit.view(),
                                     c.counterLength.view(), c.transferOrder.view(),
                                     c.initialValue.view(), c.startFrame.view(), c.endValue.view(),
                                     c.endFrame.view(), c.countDirection.view()));
    }
}

inline void describeAsync(const PcmFormat& format, Lines& lines) {
    for (const auto& a : format.asyncFormats) {
        lines.push_back(formatPrintf("async %d %s %s %s %d adm %d %d %s %s %s %s %s %s %s",
                                     a.isDataMerge, a.dataLinkName.view(), a.supercom.view(),
                                     a.locationMode.view(), a.interval, a.adm5, a.adm6, a.adm7,
                                     a.mergeParity, a.overheadMask, a.firstDataPosition,
                                     a.dataOrder, a.secondDataPosition, a.userDataPosition));
        for (const auto& location : a.locations) {
            lines.push_back(formatPrintf("  at %d", location.fwp));
            for (const auto& range : location.frames) {
                lines.back() += formatPrintf(" %d+%d..%d", range.start, range.interval, range.end);
            }
        }
    }
}

inline Lines describe(const PcmFormat& format, bool asWritten = false) {
    const auto& f = format;
    Lines lines;
    lines.push_back(formatPrintf("%d %d %d %d %d", f.commonWordLength, f.numberOfFrames,
                                 f.wordsPerMinorFrame, f.bitsPerMinorFrame, f.syncLength));
    for (const std::string_view text : {f.syncPattern.view(),
                                        f.typeFormat.view(),
                                        f.inSyncCriteria.view(),
                                        f.inSyncPatternCriteria.view(),
                                        f.outOfSyncDisagrees.view(),
                                        f.outOfSyncPatternCriteria.view(),
                                        f.pcmCode.view(),
                                        f.encryption.view(),
                                        f.dataDirection.view(),
                                        f.polarity.view(),
                                        f.autoPolarityCorrection.view(),
                                        f.dataRandomized.view(),
                                        f.randomizerLength.view(),
                                        f.wordTransferOrder.view(),
                                        f.parity.view(),
                                        f.parityTransferOrder.view(),
                                        f.syncType.view(),
                                        f.streamName.view(),
                                        f.bitRate.view(),
                                        std::string_view(f.comment),
                                        std::string_view(f.nonStandardCode)}) {
        lines.push_back("text " + std::string(text));
    }
    lines.push_back(
        formatPrintf("implicit %d lists %d", f.implicitSubframes, f.measurementListCount));
    for (int l = 0; l < std::min(f.measurementListCount, kMostMeasurementLists); ++l) {
        lines.push_back(f.measurementListNames[static_cast<std::size_t>(l)].str());
    }
    describeWords(format, lines);
    describeAsync(format, lines);
    for (int fwp = 0; fwp < f.wordsPerMinorFrame; ++fwp) {
        for (int index = 1; index <= f.cells().cellCount(fwp); ++index) {
            Lines held;
            for (auto at = f.cells().cell(fwp, index); at; at = f.cells().next(at)) {
                if (!f.cells().isFree(at)) {
                    held.push_back(formatPrintf("cell %d %d: ", fwp, index) +
                                   describeCell(format, at, asWritten));
                }
            }
            // Fragments of one name stand in the order in which they were read.
            std::sort(held.begin(), held.end());
            lines.insert(lines.end(), held.begin(), held.end());
        }
    }
    return lines;
}

/// How often each measurement is in the major frame.
inline std::map<std::string, int> occurrences(const PcmFormat& format) {
    std::map<std::string, int> counts;
    format.forEachMeasurement([&](CellRef cell, int, int) {
        const auto name = format.cells().measurement(cell).name.str();
        counts[name] = format.countMeasurementOccurences(name);
        return true;
    });
    return counts;
}

}  // namespace kavu::test
