#include "pcm/edit/MeasurementEditDefinition.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "pcm/write/WordFrameBuild.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <tuple>

namespace kavu {

namespace {

/// One cell of the measurement.
struct HeldCell {
    int fwp = 0;
    int index = 0;
    Measurement measurement;
};

/// All cells of a name, by ascending word and index; fragments may share a place.
std::vector<HeldCell> heldCells(const PcmFormat& format, std::string_view name) {
    std::vector<HeldCell> held;
    const auto& cells = format.cells();
    auto places = cells.places(name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    const int number = cells.nameNumber(name);
    std::vector<CellRef> found;
    for (const auto& place : places) {
        found.clear();
        cells.cellsAt(place.word, place.index, number, found);
        for (const auto& at : found) {
            if (cells.isMeasurement(at)) {
                held.push_back({place.word, place.index, cells.measurement(at)});
            }
        }
    }
    return held;
}

bool isFragmentType(std::string_view type) {
    return type == location_type::kMinorFrameFragments || type == location_type::kSubframeFragments;
}

bool isSubframeType(std::string_view type) {
    return type == location_type::kSubframeSupercommutated ||
           type == location_type::kSubframeFragments;
}

std::string subframeAt(const PcmFormat& format, int fwp) {
    const auto* const subframe = format.subframeOfWord(fwp);
    return subframe == nullptr ? std::string() : subframe->name.str();
}

MeasurementSpot spotAt(const PcmFormat& format, std::string_view type, int fwp, int index) {
    MeasurementSpot spot;
    spot.fwp = fwp;
    if (isSubframeType(type)) {
        spot.subframe = subframeAt(format, fwp);
        spot.position = format.subframePosition(spot.subframe, fwp, index);
    }
    return spot;
}

std::string measurementMask(const PcmFormat& format) {
    return format.context().settings.get(setting::kMask);
}

/// A new measurement with the values of the settings.
Measurement newMeasurement(const PcmFormat& format, const std::string& type) {
    const auto& settings = format.context().settings;
    Measurement cell;
    cell.parity = settings.get(setting::kParity);
    cell.parityTransferOrder = settings.get(setting::kParityTransferOrder);
    cell.transferOrder = settings.get(setting::kTransferOrder);
    cell.filterOverwrite = settings.get(setting::kFilterOverwrite);
    cell.mask = measurementMask(format);
    cell.locationType = format.implicitSubframes ? location_type::kWordFrame : type;
    return cell;
}

/// All places of a measurement of an older type as ranges; nothing if they cannot be stated so.
std::optional<WordFrameDefinition> builtRanges(const PcmFormat& format, const EditedPlace& place) {
    std::vector<HeldPlace> places;
    const auto& cells = format.cells();
    auto words =
        place.oldName.empty() ? std::vector<FrameCells::Place>() : cells.places(place.oldName);
    words.erase(std::unique(words.begin(), words.end()), words.end());
    const int number = cells.nameNumber(place.oldName);
    std::vector<CellRef> found;
    for (const auto& word : words) {
        found.clear();
        cells.cellsAt(word.word, word.index, number, found);
        for (const auto& at : found) {
            places.push_back({at, word.word, word.index});
        }
    }
    std::stable_sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
        return std::tie(a.fn, a.fwp) < std::tie(b.fn, b.fwp);
    });
    return buildWordFrame(format, places);
}

}  // namespace

bool checkRangesPossible(const PcmFormat& format, UserInterface* parent, const EditedPlace& place) {
    const auto cell =
        place.oldName.empty() ? CellRef{} : format.findInCell(place.fwp, place.fn, place.oldName);
    if (!cell || isWordFrame(format.cells().measurement(cell)) || builtRanges(format, place)) {
        return true;
    }
    const auto type = format.cells().measurement(cell).locationType.str();
    format.context().messages.show(parent, 460, title::kError, kErrorBox, place.oldName, place.fwp,
                                   place.fn, type);
    return false;
}

std::optional<WordToEdit> wordToEdit(const PcmFormat& format, UserInterface* parent, int fwp,
                                     int fn, std::string_view name) {
    const auto type = defaultLocationType(format, parent, fwp);
    if (!type) {
        return std::nullopt;
    }
    WordToEdit word;
    word.place = {fwp, fn, {}};
    auto& definition = word.definition;
    const auto head = format.cellAtFrame(fwp, fn);
    const auto cell = name.empty() ? head : format.findInCell(fwp, fn, name);
    if (!cell) {
        format.context().messages.show(parent, 329, title::kError, kErrorBox);
        return std::nullopt;
    }
    if (name.empty()) {
        definition.attributes = newMeasurement(format, *type);
    } else {
        definition.attributes = format.cells().measurement(cell);
        word.place.oldName = definition.attributes.name.str();
    }
    const auto shown = std::string(trimTrailingBlanks(definition.attributes.locationType.view()));
    if (shown == location_type::kWordFrame) {
        definition.wordFrame = rangesOf(format, word.place);
    } else {
        definition.spots = spotsOf(format, word.place, shown);
    }
    return word;
}

std::vector<MeasurementSpot> spotsOf(const PcmFormat& format, const EditedPlace& place,
                                     std::string_view type) {
    std::vector<MeasurementSpot> spots;
    const auto held =
        place.oldName.empty() ? std::vector<HeldCell>() : heldCells(format, place.oldName);
    const auto here = subframeAt(format, place.fwp);
    for (const auto& cell : held) {
        auto spot = spotAt(format, type, cell.fwp, cell.index);
        const bool fits = isSubframeType(type)
                              ? spot.position > 0 && (type == location_type::kSubframeFragments ||
                                                      spot.subframe == here)
                              : format.wordType(cell.fwp) == WordType::Minor;
        if (!fits) {
            continue;
        }
        spot.mask = cell.measurement.mask.str();
        spot.transferOrder = cell.measurement.fragmentTransferOrder.str();
        spot.fragmentNumber = cell.measurement.fragmentNumber;
        spots.push_back(spot);
    }
    if (spots.empty() && type.size() == 4 && type != location_type::kWordFrame) {
        auto spot = spotAt(format, type, place.fwp, format.foldedFrame(place.fwp, place.fn));
        spot.mask = isFragmentType(type) ? newFragmentMask(format) : std::string();
        spots.push_back(spot);
    }
    std::stable_sort(spots.begin(), spots.end(), [](const auto& a, const auto& b) {
        return std::tuple(a.fragmentNumber, a.position, a.fwp) <
               std::tuple(b.fragmentNumber, b.position, b.fwp);
    });
    if (isFragmentType(type)) {
        int number = 0;
        for (auto& spot : spots) {
            ++number;
            spot.fragmentNumber = spot.fragmentNumber < 1 ? number : spot.fragmentNumber;
        }
    }
    return spots;
}

WordFrameDefinition rangesOf(const PcmFormat& format, const EditedPlace& place) {
    const auto cell =
        place.oldName.empty() ? CellRef{} : format.findInCell(place.fwp, place.fn, place.oldName);
    const auto* const held =
        cell ? format.wordFrameDefinition(format.cells().measurement(cell).wordFrameIndex)
             : nullptr;
    if (held != nullptr && !held->locations.empty()) {
        return *held;
    }
    if (auto all = builtRanges(format, place)) {
        return std::move(*all);
    }
    WordFrameDefinition ranges;
    WordFrameLocation location;
    location.wordLength = format.wordLength(place.fwp);
    location.fragments.push_back(newWordFrameFragment(format, place.fwp, place.fn));
    location.fragments.front().mask = format.context().settings.get(setting::kWordFrameMask);
    if (cell) {
        location.fragments.front().mask = format.cells().measurement(cell).mask;
    }
    ranges.locations.push_back(location);
    return ranges;
}

EditedPlace startOf(const PcmFormat& format, const EditedPlace& place, std::string_view type) {
    const auto held =
        place.oldName.empty() ? std::vector<HeldCell>() : heldCells(format, place.oldName);
    if (held.empty() || held.front().measurement.locationType != type ||
        held.front().measurement.locationMode != "I") {
        return place;
    }
    const auto first =
        std::min_element(held.begin(), held.end(), [&](const auto& a, const auto& b) {
            const auto key = [&](const HeldCell& cell) {
                return isSubframeType(type) ? spotAt(format, type, cell.fwp, cell.index).position
                                            : cell.fwp;
            };
            return key(a) < key(b);
        });
    return {first->fwp, first->index, place.oldName};
}

std::string newFragmentMask(const PcmFormat& format) {
    const auto mask = format.context().settings.get(setting::kFragmentMask);
    return mask.empty() ? measurementMask(format) : mask;
}

}  // namespace kavu
