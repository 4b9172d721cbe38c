#include "pcm/edit/MeasurementEdit.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"
#include "groups/GroupScan.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/DuplicateNames.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/References.h"

#include <algorithm>

namespace kavu {

namespace {

/// All streams share the conversion records, so the name may still be needed elsewhere.
void forgetConversion(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                      std::string_view name) {
    if (steps.names != nullptr) {
        const bool mayGo =
            !steps.names->checking() ||
            askEuChange(format, parent, *steps.names, name, streamNumber(format, parent), true);
        steps.names->forget(name);
        if (!mayGo) {
            return;
        }
    }
    if (steps.deleteConversion) {
        steps.deleteConversion(parent, name);
    }
}

bool isTaggedName(const PcmFormat& format, std::string_view name) {
    bool found = false;
    const auto path = format.context().store.path(kTagFormat, format.dGroup);
    // A missing file has none.
    (void)forEachCommand(format.context().reader, path, [&](const std::string& command) {
        const auto view = viewCommand(command);
        found = refersTo('D', view.field) == Refers::MeasurementName &&
                equalsIgnoreCase(view.value, name);
        return !found;
    });
    return found;
}

}  // namespace

std::optional<std::string> defaultLocationType(const PcmFormat& format, UserInterface* parent,
                                               int fwp) {
    if (!format.isDataWord(fwp) || format.wordType(fwp) == WordType::Sync) {
        return std::nullopt;
    }
    if (format.wordType(fwp) != WordType::Subframe) {
        return std::string(location_type::kMinorFrame);
    }
    const auto* const subframe = format.subframeOfWord(fwp);
    if (subframe == nullptr) {
        format.context().messages.show(parent, 323, title::kInternalError, kErrorBox);
        return std::nullopt;
    }
    if (isHiddenSubframe(subframe)) {
        // No file has the subframe, so no other type would find it again.
        return std::string(location_type::kWordFrame);
    }
    return std::string(subframe->isSupercommutated() ? location_type::kSubframeSupercommutated
                                                     : location_type::kSubframe);
}

bool checkMeasurementName(const PcmFormat& format, UserInterface* parent, std::string_view name) {
    const auto& messages = format.context().messages;
    if (const auto first = Occurrences(format, name).next()) {
        messages.show(parent, 334, title::kError, kErrorBox, first->fwp, first->fn);
        return true;
    }
    if (format.edition() >= 2011 && isTaggedName(format, name)) {
        messages.show(parent, 339, title::kError, kErrorBox);
        return true;
    }
    return false;
}

void clearMeasurement(PcmFormat& format, std::string_view name) {
    const std::string wanted(name);  // it may be a view into the cells that are emptied
    auto& cells = format.cells();
    for (const auto& place : cells.places(wanted)) {
        if (const auto at = cells.firstAt(place.word, place.index, wanted)) {
            cells.store(at, Measurement{});
        }
    }
}

void dropMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                     std::string_view name) {
    const int entry = wordFrameEntry(format, name);
    clearMeasurement(format, name);
    format.freeWordFrameDefinition(entry);
    forgetConversion(format, parent, steps, name);
    format.changed = true;
}

bool deleteMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                       std::string_view name) {
    const std::string wanted(name);
    if (!format.hasMeasurement(wanted)) {
        return false;
    }
    if (parent != nullptr && format.context().messages.show(parent, 117, title::kDeleteEntry,
                                                            kYesNoBox, wanted) != Button::Yes) {
        return false;
    }
    dropMeasurement(format, parent, steps, wanted);
    removeEmptyHiddenSubframes(format);
    return true;
}

void clearWord(PcmFormat& format, UserInterface* parent, const EditSteps& steps, int fwp) {
    const auto& cells = format.cells();
    for (int fn = 1; fn <= format.numberOfFrames; ++fn) {
        while (const auto at = format.measurementAt(fwp, fn, 1, false)) {
            if (const int record = cells.asyncNumber(at); record > 0) {
                if (!removeAsyncFormat(format, parent, record, -1, -1)) {
                    format.cells().clear(at);  // a slot without a record holds nothing
                }
                format.changed = true;
            } else {
                dropMeasurement(format, parent, steps, cells.measurement(at).name.str());
            }
        }
    }
    removeEmptyHiddenSubframes(format);
}

void removeEmptyHiddenSubframes(PcmFormat& format) {
    if (!format.implicitSubframes) {
        return;
    }
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto* const subframe = format.subframeOfWord(fwp);
        if (format.wordType(fwp) != WordType::Subframe || subframe == nullptr ||
            !subframe->hidden) {
            continue;
        }
        const auto& word = format.word(fwp);
        const auto& words = format.wordsOf({word.idCounterIndex, word.subframeIndex});
        if (std::none_of(words.begin(), words.end(),
                         [&](int each) { return holdsAnything(format, each); })) {
            deleteSubframe(format, nullptr, fwp, true);
        }
    }
}

}  // namespace kavu
