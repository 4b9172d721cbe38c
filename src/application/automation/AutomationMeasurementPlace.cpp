#include "application/automation/AutomationMeasurementPlace.h"

#include "application/Application.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "conversion/ConversionStore.h"

#include <optional>

namespace kavu {

namespace {

/// Of a measurement in a subframe that is deeper than there are frames a part is never sent.
std::optional<Occurrence> firstPlaceOf(const PcmFormat& format, const std::string& name) {
    if (const auto first = Occurrences(format, name).next()) {
        return first;
    }
    const auto places = format.cells().places(name);
    if (places.empty()) {
        return std::nullopt;
    }
    const auto& place = places.front();
    return Occurrence{format.cells().firstAt(place.word, place.index, name), place.word,
                      place.index};
}

}  // namespace

FoundMeasurement requireMeasurement(const PcmFormat& format, const std::string& name) {
    for (const auto& form : storedForms(name)) {
        if (form.empty()) {
            break;
        }
        if (const auto first = firstPlaceOf(format, form)) {
            return {format.cells().measurement(first->cell).name.str(), first->cell, first->fwp,
                    first->fn};
        }
    }
    throwNotFound("measurement", name);
}

void requirePlace(const PcmFormat& format, std::int32_t fwp, std::int32_t fn) {
    requireRange(fwp, 1, format.wordsPerMinorFrame - 1, "frame word position");
    requireRange(fn, 1, format.numberOfFrames, "frame number");
}

EditSteps editStepsOf(AutomationSession& session, bool& isDeleted) {
    auto& application = session.application();
    auto& conversions = application.conversions();
    EditSteps steps;
    steps.names = &application.measurementNames();
    steps.conversions = &conversions;
    steps.deleteConversion = [&conversions, &isDeleted](UserInterface* parent,
                                                        std::string_view name) {
        if (conversions.locateDefinition(name).found) {
            isDeleted = conversions.deleteDefinition(parent, std::string(name)) && isDeleted;
        }
    };
    return steps;
}

}  // namespace kavu
