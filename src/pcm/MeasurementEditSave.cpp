#include "pcm/MeasurementEditSave.h"

#include "core/Messages.h"
#include "core/ProfileSettings.h"
#include "core/TmatsDocument.h"
#include "groups/MeasurementNames.h"
#include "pcm/DuplicateNames.h"

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

    /// False if the definition can not be saved; nothing has changed then.
    bool plan() {
        return checkEntered() && checkName() && checkNumbers() && planPlaces() && checkFragments();
    }
    /// False, with the old measurement back in place, if there can be no more cells.
    bool place();

  private:
    template <typename... Args>
    bool refuse(int id, const Args&... args) const {
        format_.context().messages.show(parent_, id, title::kError, kErrorBox, args...);
        return false;
    }
    [[nodiscard]] bool is(std::string_view type) const { return cell_.locationType == type; }
    [[nodiscard]] bool isFragments() const { return is("MFFR") || is("SFFR"); }
    [[nodiscard]] bool isMinorType() const { return is("MFSC") || is("MFFR"); }
    [[nodiscard]] bool usesInterval() const {
        return cell_.locationMode == "I" && !is("SFFR") && !is("MF") && !is("SF");
    }
    bool checkEntered() const;
    bool checkName() const;
    bool checkNumbers();
    bool planPlaces();
    bool planInterval();
    bool planMinor(int fwp, const MeasurementSpot& spot);
    bool planPosition(std::string_view subframe, int position, const MeasurementSpot& spot);
    bool add(int fwp, int fn, const MeasurementSpot& spot);
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
    std::set<std::pair<int, int>> taken_;  ///< word and index of those
};

bool MeasurementSave::checkEntered() const {
    if (cell_.name.empty()) {
        return refuse(326);
    }
    if (cell_.locationType.empty()) {
        return refuse(327);
    }
    if (is("MF") || is("SF")) {
        return true;
    }
    if (!is("MFSC") && !is("SFSC") && !isFragments()) {
        return false;
    }
    const bool isSelected = is("SFFR") || cell_.locationMode == "I" || cell_.locationMode == "E";
    if (!isSelected || (!usesInterval() && definition_.spots.empty())) {
        return refuse(328);
    }
    return true;
}

bool MeasurementSave::checkName() const {
    // A name that only its case sets apart is found at this measurement's own places.
    if (equalsIgnoreCase(cell_.name, place_.oldName)) {
        return true;
    }
    if (checkMeasurementName(format_, parent_, cell_.name)) {
        return false;
    }
    return steps_.names == nullptr || !steps_.names->checking() ||
           checkNameInOtherStreams(format_, parent_, *steps_.names, cell_.name,
                                   streamNumber(format_, parent_));
}

bool MeasurementSave::checkNumbers() {
    if (isFragments() && cell_.reconstructedLength < 1) {
        return refuse(336);
    }
    if (usesInterval() && (cell_.locationCount < 1 || cell_.interval < 1)) {
        return refuse(337);
    }
    if (is("MF") || is("SF")) {
        cell_.locationMode.clear();
        cell_.locationCount = 0;
        cell_.interval = 0;
        cell_.reconstructedLength = 0;
        cell_.fragmentNumber = 0;
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
    if (format_.subframeLocation(subframe, position, fwp, fn) != 1) {
        return refuse(331, place_.fwp, position);
    }
    return add(fwp, fn, spot);
}

/// From the place that is edited on, as many times as told.
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
        // A place that is none is refused, so it goes no further than the frame.
        if (!(isMinorType() ? planMinor(number, spot) : planPosition(subframe, number, spot))) {
            return false;
        }
    }
    return true;
}

bool MeasurementSave::planPlaces() {
    if (is("MF") || is("SF")) {
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

/// All fragments of a sample are sent in one minor frame.
bool MeasurementSave::checkFragments() const {
    std::map<int, std::pair<int, int>> words;
    for (const auto& planned : planned_) {
        if (!is("SFFR")) {
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

bool MeasurementSave::place() {
    int entry = 0;
    if (!place_.oldName.empty()) {
        if (const auto first = Occurrences(format_, place_.oldName).next()) {
            entry = format_.cells().measurement(first->cell).wordFrameIndex;
        }
    }
    std::vector<CellRef> placed;
    const auto old = place_.oldName;
    for (auto& planned : planned_) {
        const auto cell = format_.getFreeCell(parent_, planned.fwp, planned.fn);
        if (!cell) {
            for (const auto& at : placed) {
                format_.cells().clear(at);
            }
            return false;
        }
        // Stored under a name that nobody has, until the old one has gone.
        auto waiting = planned.measurement;
        waiting.name = "\x01";
        format_.cells().store(cell, waiting);
        placed.push_back(cell);
    }
    if (!old.empty()) {
        clearMeasurement(format_, old);
        format_.freeWordFrameDefinition(entry);
    }
    for (std::size_t i = 0; i < placed.size(); ++i) {
        auto measurement = planned_[i].measurement;
        if (!usesInterval() && !is("MF") && !is("SF")) {
            measurement.locationCount = static_cast<int>(placed.size());
        }
        format_.cells().store(placed[i], measurement);
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
    if (!save.plan() || !save.place()) {
        return false;
    }
    const auto name = definition.attributes.name.str();
    if (!place.oldName.empty() && name != place.oldName && saving.renameConversion &&
        (steps.names == nullptr || !steps.names->checking() ||
         askEuChange(format, parent, *steps.names, place.oldName, streamNumber(format, parent),
                     false))) {
        saving.renameConversion(parent, place.oldName, name);
    }
    if (saving.storeInDatabase && format.context().settings.integer("SaveMDB", 0) != 0) {
        saving.storeInDatabase(parent, name);
    }
    return true;
}

std::vector<std::string> locationTypes(const PcmFormat& format, int fwp) {
    if (format.edition() >= 2011) {
        return {};
    }
    const std::string wordFrame = "WDFR  - Word/Frame";
    if (format.implicitSubframes) {
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
                   !subframe->isSupercommutated()) {
            const int depth = std::min(subframe->depth.number(), format.numberOfFrames);
            for (int fn = 1; fn <= depth; ++fn) {
                targets.push_back({fwp, fn, formatPrintf("Word #%d Frame #%d\n", fwp, fn)});
            }
        }
    }
    return targets;
}

bool moveMeasurement(PcmFormat& format, const Measurement& values, const MoveTarget& target) {
    const bool movable = values.locationType == "MF" || values.locationType == "SF";
    const int fn = target.fn == 0 ? 1 : target.fn;
    const auto type = target.fn == 0 ? WordType::Minor : WordType::Subframe;
    if (!movable || !format.hasMeasurement(values.name) || format.wordType(target.fwp) != type ||
        !format.cellAtFrame(target.fwp, fn)) {
        return false;
    }
    auto moved = values;
    moved.locationType = target.fn == 0 ? "MF" : "SF";
    const auto cell = format.getFreeCell(nullptr, target.fwp, fn);
    if (!cell) {
        return false;
    }
    clearMeasurement(format, moved.name);
    format.cells().store(cell, moved);
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
    return choice >= 0 && static_cast<std::size_t>(choice) < targets.size() &&
           moveMeasurement(format, values, targets[static_cast<std::size_t>(choice)]);
}

}  // namespace kavu
