#include "pcm/edit/MeasurementEditDatabase.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/read/MeasurementPlacing.h"
#include "vocabulary/LocationTypes.h"

namespace kavu {

namespace {

class RootsAndChildren {
  public:
    RootsAndChildren(PcmFormat& format, UserInterface* parent, const DatabaseSteps& database,
                     std::string_view name, int fwp, int fn)
        : format_(format), parent_(parent), database_(database), name_(name), fwp_(fwp), fn_(fn) {}

    bool addRoot() {
        const auto own = database_.find(parent_, name_);
        if (!own || own->root.empty() || format_.hasMeasurement(own->root)) {
            return false;
        }
        const auto root = database_.find(parent_, own->root);
        if (!root || !add(*root)) {
            return false;
        }
        putRootFirst(root->name);
        return true;
    }

    bool addChildren() {
        bool added = false;
        const bool read = database_.forEachChild(parent_, name_, [&](const DatabaseRecord& record) {
            if (!record.name.empty() && !format_.hasMeasurement(record.name)) {
                added = add(record) || added;
            }
            return !cancelRequested(parent_);
        });
        return read && added;
    }

  private:
    bool add(const DatabaseRecord& record) {
        const auto source = format_.findInCell(fwp_, fn_, name_);
        if (!source) {
            return false;
        }
        auto measurement = format_.cells().measurement(source);
        const int definition = measurement.wordFrameIndex;
        measurement.name = record.name;
        measurement.kept = 0;  // what the file holds of the other one is not of this one
        measurement.parity = record.parity;
        measurement.parityTransferOrder = record.parityTransferOrder;
        measurement.transferOrder = record.transferOrder;
        measurement.mask = record.mask;
        const bool placed =
            definition > 0 ? placeByRanges(measurement, definition) : placeHere(measurement);
        if (placed && database_.addConversion) {
            database_.addConversion(parent_, record.name);
        }
        format_.changed = format_.changed || placed;
        return placed;
    }

    bool placeHere(const Measurement& measurement) {
        const auto cell = format_.getFreeCell(parent_, fwp_, fn_);
        if (cell) {
            format_.cells().store(cell, measurement);
        }
        return static_cast<bool>(cell);
    }

    /// The same words and frames as the measurement that it is added for, with its own
    /// mask.
    bool placeByRanges(Measurement measurement, int definition) {
        const auto* const same = format_.wordFrameDefinition(definition);
        if (same == nullptr) {
            return false;
        }
        auto copy = *same;
        for (auto& location : copy.locations) {
            for (auto& fragment : location.fragments) {
                fragment.mask = measurement.mask;
            }
        }
        const int entry = format_.addWordFrameDefinition(-1, 0);
        *format_.wordFrameDefinition(entry) = copy;
        measurement.wordFrameIndex = entry;
        PcmLoad load(format_, parent_);
        load.report = [](int, MessageTitle, const std::string&) {
        };  // skips places that are taken already
        for (const auto& location : copy.locations) {
            for (const auto& fragment : location.fragments) {
                placeWordFrameFragment(load, measurement, fragment);
            }
        }
        return format_.hasMeasurement(measurement.name);
    }

    void putRootFirst(const std::string& root) {
        auto& cells = format_.cells();
        const auto child = format_.findInCell(fwp_, fn_, name_);
        const auto added = format_.findInCell(fwp_, fn_, root);
        bool isBehind = false;  // a free cell before the part may have taken it
        for (auto at = child; at && !isBehind; at = format_.next(at)) {
            isBehind = at == added;
        }
        if (!child || !added || !isBehind) {
            return;
        }
        const auto first = cells.measurement(child);
        const auto second = cells.measurement(added);
        cells.store(child, second);
        cells.store(added, first);
    }

    PcmFormat& format_;
    UserInterface* parent_;
    const DatabaseSteps& database_;
    std::string name_;
    int fwp_;
    int fn_;
};

/// Others can be put next to a measurement of one place, or of ranges without fragments.
bool canBeJoined(const PcmFormat& format, std::string_view name, std::string_view locationType,
                 int fwp, int fn) {
    const auto type = trimTrailingBlanks(locationType);
    if (type != location_type::kWordFrame) {
        return type == location_type::kSubframe || type == location_type::kMinorFrame;
    }
    const auto cell = format.findInCell(fwp, fn, name);
    const auto* const definition =
        cell ? format.wordFrameDefinition(format.cells().measurement(cell).wordFrameIndex)
             : nullptr;
    return definition == nullptr || definition->mostFragments() <= 1;
}

}  // namespace

bool addRootAndChildren(PcmFormat& format, UserInterface* parent, const DatabaseSteps& database,
                        const AutoAdd& wanted, std::string_view name, std::string_view locationType,
                        int fwp, int fn) {
    if ((!wanted.root && !wanted.children) || fwp < 0 || fn < 0) {
        return false;
    }
    if (!canBeJoined(format, name, locationType, fwp, fn)) {
        const auto& messages = format.context().messages;
        if (wanted.isLogged) {
            messages.log(parent, 412, title::kError, name);
        } else {
            messages.show(parent, 412, title::kError, kErrorBox, name);
        }
        return false;
    }
    if (!database.available()) {
        return false;
    }
    RootsAndChildren additions(format, parent, database, name, fwp, fn);
    const bool root = wanted.root && additions.addRoot();
    const bool children = wanted.children && additions.addChildren();
    return root || children;
}

}  // namespace kavu
