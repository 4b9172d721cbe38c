#include "pcm/edit/BlockPlaces.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "pcm/edit/MeasurementEditSave.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/write/WordFrameConversion.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace kavu {

namespace {

std::vector<BlockSpot> inOrder(std::vector<BlockSpot> spots) {
    const auto key = [](const BlockSpot& spot) { return std::tuple(spot.fwp, spot.fn); };
    std::stable_sort(spots.begin(), spots.end(),
                     [&](const auto& a, const auto& b) { return key(a) < key(b); });
    spots.erase(std::unique(spots.begin(), spots.end(), isSamePlace), spots.end());
    return spots;
}

/// A stream states word/frame locations only, or these are the only ones that can hold the
/// places: they are in words of different kinds.
bool needsWordFrame(const PcmFormat& format, const MeasurementPlaces& places) {
    if (format.edition() >= 2011 || format.implicitSubframes || isWordFrame(places.attributes)) {
        return true;
    }
    const auto& first = places.spots.front();
    const auto* const subframe = format.subframeOfWord(first.fwp);
    return std::any_of(places.spots.begin(), places.spots.end(), [&](const BlockSpot& spot) {
        const auto* const here = format.subframeOfWord(spot.fwp);
        return format.wordType(spot.fwp) != format.wordType(first.fwp) || here != subframe ||
               isHiddenSubframe(here);
    });
}

WordFrameFragment fragmentFor(const PcmFormat& format, int fwp, const Sequence& frames,
                              const std::string& mask) {
    auto fragment = newWordFrameFragment(format, fwp, frames.start);
    fragment.startFrame = frames.start;
    fragment.frameInterval = frames.interval;
    fragment.endFrame = frames.end;
    fragment.mask = mask;
    return fragment;
}

/// A location for each word whose frames have a constant step, else one for each place.
WordFrameDefinition locationsOf(const PcmFormat& format, const MeasurementPlaces& places) {
    WordFrameDefinition ranges;
    ranges.idCounterName = places.counterName;
    const auto add = [&](int fwp, const Sequence& frames, const std::string& mask) {
        ranges.locations.push_back(
            {format.wordLength(fwp), {fragmentFor(format, fwp, frames, mask)}});
    };
    std::map<std::pair<int, std::string>, std::vector<int>> words;
    for (const auto& spot : places.spots) {
        if (spot.everyFrame) {
            add(spot.fwp, {1, format.numberOfFrames, 1}, spot.mask);
        } else {
            words[{spot.fwp, spot.mask}].push_back(spot.fn);
        }
    }
    for (const auto& [word, frames] : words) {
        if (Sequence sequence; findSequence(frames, sequence)) {
            add(word.first, sequence, word.second);
            continue;
        }
        for (const int fn : frames) {
            add(word.first, {fn, fn, 0}, word.second);
        }
    }
    return ranges;
}

/// Words, or positions of the one subframe that all of them belong to.
void listSpots(const PcmFormat& format, const std::string& subframe,
               const std::vector<BlockSpot>& spots, MeasurementDefinition& definition) {
    for (const auto& spot : spots) {
        MeasurementSpot listed;
        listed.fwp = spot.fwp;
        listed.subframe = subframe;
        listed.position =
            subframe.empty() ? 0 : format.subframePosition(subframe, spot.fwp, spot.fn);
        listed.mask = spot.mask;
        definition.spots.push_back(std::move(listed));
    }
}

void setOlderType(const PcmFormat& format, const std::vector<BlockSpot>& spots,
                  MeasurementDefinition& definition) {
    auto& cell = definition.attributes;
    const auto* const subframe = format.subframeOfWord(spots.front().fwp);
    const bool isAlone =
        spots.size() == 1 && (subframe == nullptr || !subframe->isSupercommutated());
    if (isAlone) {
        cell.locationType =
            subframe == nullptr ? location_type::kMinorFrame : location_type::kSubframe;
        return;
    }
    cell.locationType = subframe == nullptr ? location_type::kMinorFrameSupercommutated
                                            : location_type::kSubframeSupercommutated;
    cell.locationMode = "E";
    listSpots(format, subframe == nullptr ? std::string() : subframe->name.str(), spots,
              definition);
}

}  // namespace

bool isSamePlace(const BlockSpot& a, const BlockSpot& b) {
    return a.fwp == b.fwp && a.fn == b.fn;
}

bool isInFragments(const PcmFormat& format, const Measurement& cell) {
    if (isWordFrame(cell)) {
        const auto* const definition = format.wordFrameDefinition(cell.wordFrameIndex);
        return definition != nullptr && definition->mostFragments() > 1;
    }
    return isFragmented(cell.locationType);
}

BlockSpot blockSpotAt(const PcmFormat& format, int fwp, int fn) {
    return {fwp, format.foldedFrame(fwp, fn), format.wordType(fwp) != WordType::Subframe, {}};
}

MeasurementPlaces placesOf(const PcmFormat& format, std::string_view name) {
    MeasurementPlaces found;
    const auto& cells = format.cells();
    for (const auto& place : cells.places(name)) {
        const auto at = cells.firstAt(place.word, place.index, name);
        if (!at || !cells.isMeasurement(at)) {
            continue;
        }
        const auto& cell = cells.measurement(at);
        if (found.spots.empty()) {
            found.attributes = cell;
            found.isFragmented = isInFragments(format, cell);
            if (const auto* const ranges = format.wordFrameDefinition(cell.wordFrameIndex)) {
                found.counterName = ranges->idCounterName;
            }
        }
        auto spot = blockSpotAt(format, place.word, place.index);
        spot.mask = cell.mask.str();
        found.spots.push_back(std::move(spot));
    }
    found.spots = inOrder(std::move(found.spots));
    return found;
}

bool placeMeasurement(PcmFormat& format, UserInterface* parent, const std::string& oldName,
                      const MeasurementPlaces& places) {
    auto wanted = places;
    wanted.spots = inOrder(std::move(wanted.spots));
    if (wanted.spots.empty()) {
        return false;
    }
    MeasurementDefinition definition;
    definition.attributes = wanted.attributes;
    makeSingle(definition.attributes);
    definition.attributes.mask = wanted.spots.front().mask;
    if (needsWordFrame(format, wanted)) {
        if (format.edition() < kFirstWordFrameEdition) {
            showBox(parent,
                    formatPrintf("The places of '%s' are in words of different kinds, which this "
                                 "edition cannot state for one measurement.",
                                 wanted.attributes.name.view()),
                    "Word/Frame");
            return false;
        }
        definition.attributes.locationType = location_type::kWordFrame;
        definition.wordFrame = locationsOf(format, wanted);
    } else {
        setOlderType(format, wanted.spots, definition);
    }
    const auto& first = wanted.spots.front();
    // Names, async streams and conversions were the caller's question.
    SaveSteps saving;
    saving.asyncIsAgreed = true;
    return saveMeasurement(format, parent, {}, saving, {first.fwp, first.fn, oldName}, definition);
}

}  // namespace kavu
