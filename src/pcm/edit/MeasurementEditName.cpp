// The name of a measurement: whether it can be a new one, and its change.
#include "groups/MeasurementNames.h"
#include "pcm/edit/MeasurementEditSave.h"
#include "pcm/model/DuplicateNames.h"

#include <algorithm>

namespace kavu {

bool isFreeAcrossStreams(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                         std::string_view name) {
    return steps.names == nullptr || !steps.names->checking() ||
           checkNameInOtherStreams(format, parent, *steps.names, name,
                                   streamNumber(format, parent));
}

void carryNameToConversion(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                           const SaveSteps& saving, std::string_view from, std::string_view to) {
    if (from != to && saving.renameConversion &&
        (steps.names == nullptr || !steps.names->checking() ||
         askEuChange(format, parent, *steps.names, from, streamNumber(format, parent), false))) {
        saving.renameConversion(parent, from, to);
    }
}

bool renameMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                       const SaveSteps& saving, std::string_view from, std::string_view to) {
    // The names may be views into the cells that change.
    const std::string before(from);
    const std::string name(to);
    if (!format.hasMeasurement(before)) {
        return false;
    }
    if (!equalsIgnoreCase(before, name) && (checkMeasurementName(format, parent, name) ||
                                            !isFreeAcrossStreams(format, parent, steps, name))) {
        return false;
    }
    if (before == name) {
        return true;
    }
    auto& cells = format.cells();
    const int number = cells.nameNumber(before);
    auto places = cells.places(before);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::vector<CellRef> found;
    for (const auto& place : places) {
        found.clear();
        cells.cellsAt(place.word, place.index, number, found);
        for (const auto& at : found) {
            auto measurement = cells.measurement(at);
            measurement.name = name;
            cells.store(at, measurement);
        }
    }
    carryNameToConversion(format, parent, steps, saving, before, name);
    format.changed = true;
    return true;
}

}  // namespace kavu
