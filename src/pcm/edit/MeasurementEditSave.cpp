#include "pcm/edit/MeasurementEditSave.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/edit/MeasurementEditAsync.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "pcm/model/MeasurementCell.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <map>
#include <set>

namespace kavu {

namespace {

/// One cell of a measurement that is to be placed.
struct Planned {
    int fwp = 0;
    int fn = 0;
    Measurement measurement;
};

class MeasurementSave {
  public:
    MeasurementSave(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                    const EditedPlace& place, const MeasurementDefinition& definition)
        : format_(format),
          parent_(parent),
          steps_(steps),
          place_(place),
          definition_(definition),
          cell_(definition.attributes) {
        cell_.locationType = trimTrailingBlanks(cell_.locationType.view());
        cell_.wordFrameIndex = 0;
    }

    /// False if the definition cannot be saved; nothing has changed then.
    bool plan() {
        if (!checkEntered() || !checkName()) {
            return false;
        }
        if (is(location_type::kWordFrame)) {
            return checkRanges();
        }
        if (!checkNumbers() || !planPlaces() || !checkFragments()) {
            return false;
        }
        if (isFragments()) {
            numberFragments();
        } else if (is(location_type::kSubframeSupercommutated) && usesInterval()) {
            tellAmbiguousInterval();
        }
        return true;
    }
    /// False if the user keeps the places of async formats free of whole words.
    [[nodiscard]] bool mayCover() const;
    /// False, with the old measurement back in place, if there can be no more cells.
    bool place();
    /// True if the new name was another measurement's, whose places are all among these.
    [[nodiscard]] bool tookOver() const { return tookOver_; }

  private:
    template <typename... Args>
    bool refuse(MessageFor<Args...> id, const Args&... args) const {
        format_.context().messages.show(parent_, id, title::kError, kErrorBox, args...);
        return false;
    }
    [[nodiscard]] bool is(std::string_view type) const { return cell_.locationType == type; }
    [[nodiscard]] bool isFragments() const {
        return is(location_type::kMinorFrameFragments) || is(location_type::kSubframeFragments);
    }
    [[nodiscard]] bool isMinorType() const {
        return is(location_type::kMinorFrameSupercommutated) ||
               is(location_type::kMinorFrameFragments);
    }
    [[nodiscard]] bool usesInterval() const {
        return cell_.locationMode == "I" && !is(location_type::kSubframeFragments) &&
               !is(location_type::kMinorFrame) && !is(location_type::kSubframe);
    }
    bool checkEntered() const;
    bool checkName();
    bool checkNumbers();
    bool checkRanges() const;
    bool placeWordFrame();
    [[nodiscard]] std::vector<std::pair<CellRef, Measurement>> takeOut(
        const std::vector<std::string>& names);
    [[nodiscard]] bool areOwnLocations() const;
    [[nodiscard]] std::vector<std::string> oldNames() const;
    bool planPlaces();
    bool planInterval();
    bool planMinor(int fwp, const MeasurementSpot& spot);
    bool planPosition(std::string_view subframe, int position, const MeasurementSpot& spot);
    bool add(int fwp, int fn, const MeasurementSpot& spot);
    void numberFragments();
    void tellAmbiguousInterval();
    [[nodiscard]] bool checkFragments() const;
    [[nodiscard]] std::string subframeHere() const {
        const auto* const subframe = format_.subframeOfWord(place_.fwp);
        return subframe == nullptr ? std::string() : subframe->name.str();
    }

    PcmFormat& format_;
    UserInterface* parent_;
    const EditSteps& steps_;
    const EditedPlace& place_;
    const MeasurementDefinition& definition_;
    Measurement cell_;
    std::vector<Planned> planned_;
    bool tookOver_ = false;
    std::set<std::pair<int, int>> taken_;  ///< word and index of those
};

bool MeasurementSave::checkEntered() const {
    if (cell_.name.empty()) {
        return refuse(326);
    }
    if (cell_.locationType.empty()) {
        return refuse(327);
    }
    if (is(location_type::kMinorFrame) || is(location_type::kSubframe)) {
        return true;
    }
    if (is(location_type::kWordFrame) && format_.edition() >= 2004) {
        return !definition_.wordFrame.locations.empty() || refuse(328);
    }
    if (!is(location_type::kMinorFrameSupercommutated) &&
        !is(location_type::kSubframeSupercommutated) && !isFragments()) {
        return refuse(327);
    }
    const bool isSelected = is(location_type::kSubframeFragments) || cell_.locationMode == "I" ||
                            cell_.locationMode == "E";
    if (!isSelected || (!usesInterval() && definition_.spots.empty())) {
        return refuse(328);
    }
    return true;
}

bool MeasurementSave::areOwnLocations() const {
    const auto places = format_.cells().places(cell_.name);
    return !places.empty() && std::all_of(places.begin(), places.end(), [&](const auto& at) {
        return isOwnLocation(format_, place_, definition_, at.word, at.index);
    });
}

bool MeasurementSave::checkName() {
    // A name that differs only in case is found at this measurement's own places.
    if (equalsIgnoreCase(cell_.name, place_.oldName)) {
        return true;
    }
    tookOver_ = areOwnLocations();
    if (!tookOver_ && checkMeasurementName(format_, parent_, cell_.name)) {
        return false;
    }
    return isFreeAcrossStreams(format_, parent_, steps_, cell_.name);
}

bool MeasurementSave::checkRanges() const {
    if (!checkWordFrameAllowed(format_, parent_, place_.fwp)) {
        return false;
    }
    auto locations = definition_.wordFrame.locations;
    return std::all_of(locations.begin(), locations.end(), [&](auto& location) {
        return completeWordFrameLocation(format_, parent_, cell_.name, location);
    });
}

bool MeasurementSave::checkNumbers() {
    if (isFragments() && cell_.reconstructedLength < 1) {
        return refuse(336);
    }
    if (usesInterval() && (cell_.locationCount < 1 || cell_.interval < 1)) {
        return refuse(337);
    }
    if (is(location_type::kMinorFrame) || is(location_type::kSubframe)) {
        makeSingle(cell_);
    } else if (!usesInterval()) {
        cell_.locationMode = "E";
        cell_.interval = 0;
        cell_.locationCount = static_cast<int>(
            std::min<std::size_t>(definition_.spots.size(), kMostWords * kMostFrames));
    }
    return true;
}

bool MeasurementSave::add(int fwp, int fn, const MeasurementSpot& spot) {
    const auto head = format_.cellAtFrame(fwp, fn);
    if (!head) {
        return refuse(331, fwp, fn);
    }
    // A place that is listed twice counts once; fragments may share one.
    if (!isFragments() && !taken_.emplace(fwp, head.index).second) {
        return true;
    }
    Planned planned{fwp, head.index, cell_};
    if (!spot.mask.empty()) {
        planned.measurement.mask = spot.mask;
    }
    if (isFragments()) {
        planned.measurement.fragmentTransferOrder = spot.transferOrder;
        planned.measurement.fragmentNumber = spot.fragmentNumber;
    }
    planned_.push_back(planned);
    return true;
}

bool MeasurementSave::planMinor(int fwp, const MeasurementSpot& spot) {
    if (!format_.isDataWord(fwp) || format_.wordType(fwp) != WordType::Minor) {
        return refuse(330, fwp);
    }
    return add(fwp, 1, spot);
}

bool MeasurementSave::planPosition(std::string_view subframe, int position,
                                   const MeasurementSpot& spot) {
    int fwp = place_.fwp;
    int fn = position;
    const auto ref = format_.findSubframe(subframe);
    // A file has no hidden subframes: what refers to one would be lost.
    if (!ref || isHiddenSubframe(format_.subframe(*ref)) ||
        format_.subframeLocation(subframe, position, fwp, fn) != 1) {
        return refuse(331, place_.fwp, position);
    }
    return add(fwp, fn, spot);
}

/// From the place that is edited on, for the number of locations.
bool MeasurementSave::planInterval() {
    const auto subframe = isMinorType() ? std::string() : subframeHere();
    const int start = isMinorType()
                          ? place_.fwp
                          : format_.subframePosition(subframe, place_.fwp,
                                                     format_.foldedFrame(place_.fwp, place_.fn));
    const std::int64_t last =
        start + static_cast<std::int64_t>(cell_.locationCount - 1) * cell_.interval;
    for (std::int64_t at = start; at <= last; at += cell_.interval) {
        MeasurementSpot spot;
        spot.mask = cell_.mask.str();
        spot.transferOrder = cell_.fragmentTransferOrder.str();
        spot.fragmentNumber = static_cast<int>(planned_.size()) + 1;
        const int number = static_cast<int>(at);
        // An impossible place is refused, so this ends with the frame.
        if (!(isMinorType() ? planMinor(number, spot) : planPosition(subframe, number, spot))) {
            return false;
        }
    }
    return true;
}

bool MeasurementSave::planPlaces() {
    if (is(location_type::kMinorFrame) || is(location_type::kSubframe)) {
        const auto type = defaultLocationType(format_, parent_, place_.fwp);
        if (!type) {
            return false;
        }
        if (type->substr(0, 2) != cell_.locationType.view()) {
            return refuse(327);  // the list of this word does not offer it
        }
        return add(place_.fwp, place_.fn, {});
    }
    if (usesInterval()) {
        return planInterval();
    }
    auto spots = definition_.spots;
    if (!isFragments()) {
        std::stable_sort(spots.begin(), spots.end(), [](const auto& a, const auto& b) {
            return std::pair(a.fwp, a.position) < std::pair(b.fwp, b.position);
        });
    }
    return std::all_of(spots.begin(), spots.end(), [&](const MeasurementSpot& spot) {
        if (isMinorType()) {
            return planMinor(spot.fwp, spot);
        }
        return planPosition(spot.subframe.empty() ? subframeHere() : spot.subframe, spot.position,
                            spot);
    });
}

/// A reader refuses a fragment number above the number of fragments, so there are no gaps. In
/// subframes a fragment may have several positions; in words each position is a fragment.
void MeasurementSave::numberFragments() {
    std::map<std::pair<int, int>, int> numbers;
    int each = 0;
    const auto key = [&](const Planned& planned) {
        return std::pair(planned.measurement.fragmentNumber,
                         is(location_type::kSubframeFragments) ? 0 : ++each);
    };
    for (const auto& planned : planned_) {
        numbers.emplace(key(planned), 0);
    }
    int last = 0;
    for (auto& [entered, number] : numbers) {
        number = ++last;
    }
    each = 0;
    std::map<int, FixedText<64>> masks;
    for (auto& planned : planned_) {
        auto& cell = planned.measurement;
        cell.fragmentNumber = numbers[key(planned)];
        cell.locationCount = last;
        // A reader uses the first mask for all positions of a fragment.
        const auto& mask = masks.emplace(cell.fragmentNumber, cell.mask).first->second;
        if (!equalsIgnoreCase(mask, cell.mask)) {
            format_.context().messages.show(parent_, 291, title::kErrorReadingMeasurement,
                                            kWarningBox, cell.fragmentNumber, cell_.name.view());
            cell.mask = mask;
        }
    }
}

/// Positions run through the words of a frame before the next one, but a file states an
/// interval by its place in the lowest word. Where that is not the first place the measurement
/// would be read back elsewhere, so each of its places is listed.
void MeasurementSave::tellAmbiguousInterval() {
    const auto lowest =
        std::min_element(planned_.begin(), planned_.end(), [](const auto& a, const auto& b) {
            return std::pair(a.fwp, a.fn) < std::pair(b.fwp, b.fn);
        });
    if (lowest == planned_.begin()) {
        return;
    }
    cell_.locationMode = "E";
    for (auto& planned : planned_) {
        planned.measurement.locationMode = "E";
        planned.measurement.interval = 0;
    }
}

/// All fragments of a sample are sent in one minor frame.
bool MeasurementSave::checkFragments() const {
    std::map<int, std::pair<int, int>> words;
    for (const auto& planned : planned_) {
        if (!is(location_type::kSubframeFragments)) {
            break;
        }
        const std::pair here{planned.fn, planned.measurement.fragmentNumber};
        const auto& [fn, number] = words.emplace(planned.fwp, here).first->second;
        if (fn != here.first && number != here.second) {
            return refuse(335);
        }
    }
    return true;
}

bool MeasurementSave::mayCover() const {
    std::vector<CoveredCell> covered;
    if (is(location_type::kWordFrame)) {
        for (const auto& location : definition_.wordFrame.locations) {
            for (const auto& fragment : location.fragments) {
                for (const auto& [fwp, fn] : coveredPlaces(format_, fragment)) {
                    covered.push_back({fwp, fn, fragment.mask});
                }
            }
        }
    }
    for (const auto& planned : planned_) {
        covered.push_back({planned.fwp, planned.fn, planned.measurement.mask});
    }
    return mayCoverAsync(format_, parent_, cell_.name.view(), place_.oldName, covered);
}

std::vector<std::string> MeasurementSave::oldNames() const {
    std::vector<std::string> names;
    if (!place_.oldName.empty()) {
        names.push_back(place_.oldName);
    }
    if (tookOver_) {
        names.push_back(cell_.name.str());
    }
    return names;
}

/// Empties every cell of these names, and returns what they held.
std::vector<std::pair<CellRef, Measurement>> MeasurementSave::takeOut(
    const std::vector<std::string>& names) {
    auto& cells = format_.cells();
    std::vector<std::pair<CellRef, Measurement>> held;
    std::vector<CellRef> found;
    for (const auto& name : names) {
        const int number = cells.nameNumber(name);
        auto places = cells.places(name);
        places.erase(std::unique(places.begin(), places.end()), places.end());
        for (const auto& place : places) {
            found.clear();
            cells.cellsAt(place.word, place.index, number, found);
            for (const auto& at : found) {
                held.emplace_back(at, cells.measurement(at));
            }
        }
        for (const auto& entry : held) {
            cells.store(entry.first, Measurement{});
        }
    }
    return held;
}

bool MeasurementSave::placeWordFrame() {
    auto definition = definition_.wordFrame;
    for (auto& location : definition.locations) {
        // A length that does not add up was reported already.
        (void)completeWordFrameLocation(format_, nullptr, cell_.name, location);
    }
    cell_.locationMode.clear();
    cell_.locationCount = definition.locationCount();
    cell_.interval = 0;
    cell_.reconstructedLength = 0;
    cell_.fragmentNumber = 0;
    if (const auto* const counter = format_.idCounterOfWord(place_.fwp);
        definition.idCounterName.empty() && counter != nullptr) {
        definition.idCounterName = counter->name.str();
    }
    const int entry = place_.oldName.empty() ? 0 : wordFrameEntry(format_, place_.oldName);
    return placeWordFrameMeasurement(format_, parent_, cell_, definition, oldNames(), entry);
}

bool MeasurementSave::place() {
    if (is(location_type::kWordFrame)) {
        return placeWordFrame();
    }
    const auto old = oldNames();
    std::vector<int> entries;
    for (const auto& name : old) {
        entries.push_back(wordFrameEntry(format_, name));
    }
    // The old cells are free for the new ones, so that a list keeps its order.
    const auto held = takeOut(old);
    std::vector<CellRef> placed;
    for (auto& planned : planned_) {
        const auto cell = format_.getFreeCell(parent_, planned.fwp, planned.fn);
        if (!cell) {
            for (const auto& at : placed) {
                format_.cells().clear(at);
            }
            for (const auto& [at, measurement] : held) {
                format_.cells().store(at, measurement);
            }
            return false;
        }
        format_.cells().store(cell, planned.measurement);
        placed.push_back(cell);
    }
    for (const int entry : entries) {
        format_.freeWordFrameDefinition(entry);
    }
    if (is(location_type::kMinorFrameSupercommutated) ||
        is(location_type::kSubframeSupercommutated)) {
        const int count = static_cast<int>(placed.size());
        format_.cells().updateAll(cell_.name,
                                  [count](Measurement& copy) { copy.locationCount = count; });
    }
    removeEmptyHiddenSubframes(format_);
    format_.changed = true;
    return true;
}

}  // namespace

bool saveMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                     const SaveSteps& saving, const EditedPlace& place,
                     const MeasurementDefinition& definition) {
    MeasurementSave save(format, parent, steps, place, definition);
    if (!save.plan() || !(saving.asyncIsAgreed || save.mayCover()) || !save.place()) {
        return false;
    }
    const auto name = definition.attributes.name.str();
    // A name that was taken over has its record already.
    if (!place.oldName.empty() && !save.tookOver()) {
        carryNameToConversion(format, parent, steps, saving, place.oldName, name);
    }
    if (saving.storeInDatabase && format.context().settings.get(setting::kStoreInDatabase)) {
        saving.storeInDatabase(parent, name);
    }
    if (definition.isPicked) {
        addRootAndChildren(format, parent, saving.database, saving.autoAdd, name,
                           definition.attributes.locationType.view(), place.fwp, place.fn);
    }
    return true;
}

bool isOwnLocation(const PcmFormat& format, const EditedPlace& place,
                   const MeasurementDefinition& definition, int fwp, int fn) {
    const auto& cell = definition.attributes;
    const auto type = trimTrailingBlanks(cell.locationType.view());
    const bool isMinor = type == location_type::kMinorFrameSupercommutated ||
                         type == location_type::kMinorFrameFragments;
    if ((!isMinor && type != location_type::kSubframeSupercommutated &&
         type != location_type::kSubframeFragments) ||
        !format.findInCell(fwp, fn, cell.name)) {
        return false;
    }
    const auto* const subframe = format.subframeOfWord(place.fwp);
    const auto here = subframe == nullptr ? std::string() : subframe->name.str();
    const auto positionIn = [&](const std::string& name) {
        return format.subframePosition(name, fwp, format.foldedFrame(fwp, fn));
    };
    if (cell.locationMode == "I" && type != location_type::kSubframeFragments) {
        if (cell.interval < 1) {
            return false;
        }
        const int at = isMinor ? fwp : positionIn(here);
        const int start = isMinor ? place.fwp
                                  : format.subframePosition(
                                        here, place.fwp, format.foldedFrame(place.fwp, place.fn));
        const int step = at - start;
        return at > 0 && step >= 0 && step % cell.interval == 0 &&
               step / cell.interval < cell.locationCount && (!isMinor || fn == 1);
    }
    return std::any_of(definition.spots.begin(), definition.spots.end(), [&](const auto& spot) {
        if (isMinor) {
            return spot.fwp == fwp && fn == 1;
        }
        return spot.position > 0 &&
               spot.position == positionIn(spot.subframe.empty() ? here : spot.subframe);
    });
}

}  // namespace kavu
