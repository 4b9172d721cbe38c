#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "pcm/edit/MeasurementEditAsync.h"
#include "pcm/edit/MeasurementEditSave.h"
#include "pcm/model/MeasurementCell.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>

namespace kavu {

void makeSingle(Measurement& cell) {
    cell.locationMode.clear();
    cell.locationCount = 0;
    cell.interval = 0;
    cell.reconstructedLength = 0;
    cell.fragmentTransferOrder.clear();
    cell.fragmentNumber = 0;
    cell.wordFrameIndex = 0;
}

int wordFrameEntry(const PcmFormat& format, std::string_view name) {
    const auto first = Occurrences(format, name).next();
    return first ? format.cells().measurement(first->cell).wordFrameIndex : 0;
}

std::vector<std::string> locationTypes(const PcmFormat& format, int fwp) {
    if (format.edition() >= 2011) {
        return {};
    }
    const std::string wordFrame = "WDFR  - Word/Frame";
    if (format.implicitSubframes || isHiddenSubframe(format.subframeOfWord(fwp))) {
        return {wordFrame};
    }
    std::vector<std::string> types;
    switch (format.wordType(fwp)) {
        case WordType::Subframe:
            types = {"SF    - Sub Frame", "SFSC  - Sub Frame Supercommutated",
                     "SFFR  - Sub Frame Fragmented"};
            break;
        case WordType::IdCounter:
            types = {"MF    - Minor Frame"};
            break;
        default:
            types = {"MF    - Minor Frame", "MFSC  - Minor Frame Supercommutated",
                     "MFFR  - Minor Frame Fragmented"};
            break;
    }
    if (format.edition() >= 2004) {
        types.push_back(wordFrame);
    }
    return types;
}

bool checkWordFrameAllowed(const PcmFormat& format, UserInterface* parent, int fwp) {
    const auto* const subframe = format.subframeOfWord(fwp);
    if (subframe == nullptr || !subframe->isSupercommutated()) {
        return true;
    }
    format.context().messages.show(parent, 338, title::kError, kErrorBox);
    return false;
}

std::vector<MoveTarget> moveTargets(const PcmFormat& format) {
    std::vector<MoveTarget> targets;
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto* const subframe = format.subframeOfWord(fwp);
        if (format.wordType(fwp) == WordType::Minor) {
            targets.push_back({fwp, 0, formatPrintf("Word #%d (every frame)\n", fwp)});
        } else if (format.wordType(fwp) == WordType::Subframe && subframe != nullptr &&
                   !subframe->isSupercommutated() && !subframe->hidden) {
            const int depth = std::min(subframe->depth.number(), format.numberOfFrames);
            for (int fn = 1; fn <= depth; ++fn) {
                targets.push_back({fwp, fn, formatPrintf("Word #%d Frame #%d\n", fwp, fn)});
            }
        }
    }
    return targets;
}

bool moveMeasurement(PcmFormat& format, const Measurement& values, const MoveTarget& target) {
    const bool movable = values.locationType == location_type::kMinorFrame ||
                         values.locationType == location_type::kSubframe;
    const int fn = target.fn == 0 ? 1 : target.fn;
    const auto type = target.fn == 0 ? WordType::Minor : WordType::Subframe;
    if (!movable || !format.hasMeasurement(values.name) || format.wordType(target.fwp) != type ||
        isHiddenSubframe(format.subframeOfWord(target.fwp)) ||
        !format.cellAtFrame(target.fwp, fn)) {
        return false;
    }
    auto moved = values;
    makeSingle(moved);
    moved.locationType = target.fn == 0 ? location_type::kMinorFrame : location_type::kSubframe;
    const auto cell = format.getFreeCell(nullptr, target.fwp, fn);
    if (!cell) {
        return false;
    }
    const int entry = wordFrameEntry(format, moved.name);
    clearMeasurement(format, moved.name);
    format.cells().store(cell, moved);
    format.freeWordFrameDefinition(entry);
    format.changed = true;
    return true;
}

bool moveMeasurement(PcmFormat& format, UserInterface* parent, const Measurement& values) {
    if (parent == nullptr) {
        return false;
    }
    const auto targets = moveTargets(format);
    std::vector<std::string> texts;
    texts.reserve(targets.size());
    for (const auto& target : targets) {
        texts.push_back(target.text);
    }
    const int choice = parent->chooseFromList(kMoveTitle, texts);
    if (choice < 0 || static_cast<std::size_t>(choice) >= targets.size()) {
        return false;
    }
    const auto& target = targets[static_cast<std::size_t>(choice)];
    return mayCoverAsync(format, parent, values.name.view(), {},
                         {{target.fwp, std::max(1, target.fn), values.mask}}) &&
           moveMeasurement(format, values, target);
}

}  // namespace kavu
