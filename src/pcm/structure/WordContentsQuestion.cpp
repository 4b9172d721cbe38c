#include "pcm/structure/WordContentsQuestion.h"

#include "core/talk/BoxLines.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/AsyncEdit.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

bool covers(const WordFrameFragment& fragment, int fwp) {
    const int step = fwp - fragment.startWord;
    return fragment.wordInterval < 1
               ? step == 0
               : step >= 0 && fwp <= fragment.endWord && step % fragment.wordInterval == 0;
}

/// The frames of a fragment are all that a word has of its own.
bool isInEveryFrameOf(const PcmFormat& format, const WordFrameFragment& fragment, int fwp) {
    const bool isSubframe = format.wordType(fwp) == WordType::Subframe;
    const int depth =
        isSubframe ? std::min(format.wordDepth(fwp), format.numberOfFrames) : format.numberOfFrames;
    return fragment.startFrame == 1 && fragment.endFrame >= depth &&
           (fragment.frameInterval == 1 || depth == 1);
}

/// The measurement can be read from the word of a counter: there it is in every frame, and the
/// location that covers the word is of no other word, or can be divided.
bool canBeAtCounter(const PcmFormat& format, const Measurement& measurement, int fwp) {
    const auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    if (!isWordFrame(measurement) || definition == nullptr) {
        return !isWordFrame(measurement);
    }
    for (const auto& location : definition->locations) {
        for (const auto& fragment : location.fragments) {
            const bool isAlone = fragment.wordInterval < 1 || location.fragmentCount() == 1;
            if (covers(fragment, fwp) && !(isAlone && isInEveryFrameOf(format, fragment, fwp))) {
                return false;
            }
        }
    }
    return true;
}

/// Divides a location of one fragment so that the word has one of its own, in every frame.
void divideLocation(const PcmFormat& format, const WordFrameLocation& location, int fwp,
                    std::vector<WordFrameLocation>& divided) {
    const auto& range = location.fragments.front();
    const int interval = std::max(1, range.wordInterval);
    const auto add = [&](int start, int end) {
        if (start > end) {
            return;
        }
        auto part = location;
        auto& fragment = part.fragments.front();
        fragment.startWord = start;
        fragment.endWord = end;
        fragment.wordInterval = start == end ? 0 : interval;
        if (start == fwp) {
            fragment.frameInterval = 1;
            fragment.endFrame = format.numberOfFrames;
        }
        part.wordLength = format.wordLength(start);
        divided.push_back(std::move(part));
    };
    add(range.startWord, fwp - interval);
    add(fwp, fwp);
    const int last = range.startWord + (range.endWord - range.startWord) / interval * interval;
    add(fwp + interval, range.wordInterval < 1 ? fwp : last);
}

void giveOwnLocation(PcmFormat& format, const Measurement& measurement, int fwp) {
    auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    if (definition == nullptr) {
        return;
    }
    std::vector<WordFrameLocation> locations;
    for (auto& location : definition->locations) {
        if (location.fragmentCount() == 1 && covers(location.fragments.front(), fwp)) {
            divideLocation(format, location, fwp, locations);
            continue;
        }
        for (auto& fragment : location.fragments) {
            fragment.endFrame = covers(fragment, fwp) ? format.numberOfFrames : fragment.endFrame;
        }
        locations.push_back(std::move(location));
    }
    definition->locations = std::move(locations);
    const int count = definition->locationCount();
    format.cells().updateAll(measurement.name,
                             [count](Measurement& copy) { copy.locationCount = count; });
}

}  // namespace

WordHolds contentsOfWords(const PcmFormat& format, const std::vector<int>& words) {
    const auto& cells = format.cells();
    WordHolds held;
    std::set<int> names;
    std::set<int> records;
    for (const int fwp : words) {
        for (int index = 1; index <= cells.cellCount(fwp); ++index) {
            for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
                if (cells.isMeasurement(at) && names.insert(cells.nameNumber(at)).second) {
                    held.measurements.push_back(cells.measurement(at).name.str());
                } else if (const int record = cells.asyncNumber(at); record > 0) {
                    records.insert(record);
                }
            }
        }
    }
    held.asyncRecords.assign(records.begin(), records.end());
    return held;
}

bool mayLose(const PcmFormat& format, UserInterface* parent, const WordHolds& lost,
             const std::string& why) {
    if (parent == nullptr || lost.empty()) {
        return true;
    }
    std::vector<std::string> lines;
    for (const auto& name : lost.measurements) {
        lines.push_back(formatPrintf("Measurement '%s'", name));
    }
    for (const int record : lost.asyncRecords) {
        if (record <= format.asyncCount()) {
            const auto& contents = format.asyncFormats[static_cast<std::size_t>(record - 1)];
            lines.push_back(formatPrintf("Async format '%s'", contents.dataLinkName.view()));
        }
    }
    MessageBox box;
    box.title = loadText(title::kDeleteEntry).value_or("");
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.text = why + "\n\n";
    addLines(box, lines);
    box.text += "\nAre you sure?";
    return parent->message(box) == Button::Yes;
}

WordHolds lostToCounter(const PcmFormat& format, int fwp) {
    auto held = contentsOfWords(format, {fwp});
    std::erase_if(held.measurements, [&](const std::string& name) {
        const auto first = Occurrences(format, name).next();
        return first && canBeAtCounter(format, format.cells().measurement(first->cell), fwp);
    });
    return held;
}

bool clearForCounter(PcmFormat& format, UserInterface* parent, int fwp) {
    const auto lost = lostToCounter(format, fwp);
    const auto why = formatPrintf(
        "Frame Word Position %d is in use. An ID counter has one value in every minor frame: "
        "what is in single frames of this word, or is an async format, would be deleted, there "
        "and wherever else it is:",
        fwp);
    if (!mayLose(format, parent, lost, why)) {
        return false;
    }
    for (const auto& name : lost.measurements) {
        const auto first = Occurrences(format, name).next();
        const int entry = first ? format.cells().measurement(first->cell).wordFrameIndex : 0;
        format.removeMeasurement(name);
        format.freeWordFrameDefinition(entry);
    }
    for (auto record = lost.asyncRecords.rbegin(); record != lost.asyncRecords.rend(); ++record) {
        removeAsyncFormat(format, parent, *record, -1, -1);  // later ones move up
    }
    for (const auto& name : contentsOfWords(format, {fwp}).measurements) {
        if (const auto first = Occurrences(format, name).next()) {
            giveOwnLocation(format, Measurement(format.cells().measurement(first->cell)), fwp);
        }
    }
    return true;
}

}  // namespace kavu
