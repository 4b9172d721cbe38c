// The creation of a measurement: all of its places or none.
#include "application/automation/AutomationMeasurementPlace.h"
#include "application/automation/AutomationMeasurements.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/edit/FrameEditMask.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <limits>

namespace kavu {

namespace {

constexpr int kEnterNameFirst = 326;

/// The arguments of a creation that describe its places.
struct WantedPlaces {
    int fwp = 0;
    int fn = 0;
    std::int64_t count = 1;
    std::int64_t interval = 0;

    [[nodiscard]] bool isSingle() const { return count == 1; }
    /// The last place, from one of this number on; within the range of a number.
    [[nodiscard]] int lastFrom(int first) const {
        return static_cast<int>(std::min<std::int64_t>(first + (count - 1) * interval,
                                                       std::numeric_limits<int>::max()));
    }
    /// The first place above the limit, and which location it is.
    [[nodiscard]] std::pair<int, int> firstBeyond(int first, int limit) const {
        const auto steps = (limit - first) / std::max<std::int64_t>(1, interval) + 1;
        const auto place =
            std::min<std::int64_t>(first + steps * interval, std::numeric_limits<int>::max());
        return {static_cast<int>(place), static_cast<int>(steps + 1)};
    }
};

class MeasurementCreation {
  public:
    MeasurementCreation(PcmFormat& format, AutomationTalk& talk, const EditSteps& steps,
                        const WantedPlaces& places)
        : format_(format),
          talk_(talk),
          steps_(steps),
          places_(places),
          isInSubframe_(format.wordType(places.fwp) == WordType::Subframe) {}

    /// `values` has the attributes that were given; empty ones are those of the settings.
    bool create(const std::string& givenName, const Measurement& values,
                const std::string& givenMask);

  private:
    template <typename... Args>
    bool refuse(MessageFor<Args...> id, const Args&... args) {
        format_.context().messages.show(&talk_, id, title::kError, kErrorBox, args...);
        return false;
    }
    bool checkName(const std::string& givenName);
    bool checkNumbers();
    bool checkReach(std::string_view name);
    void takeValues(const Measurement& values);
    bool takeMask(const std::string& given);
    void placeAsRange();
    void placeAsOlderType();

    PcmFormat& format_;
    AutomationTalk& talk_;
    const EditSteps& steps_;
    WantedPlaces places_;
    bool isInSubframe_;
    WordToEdit word_;
};

bool MeasurementCreation::checkName(const std::string& givenName) {
    for (const auto& form : storedForms(givenName)) {
        if (checkMeasurementName(format_, &talk_, form) ||
            !isFreeAcrossStreams(format_, &talk_, steps_, form)) {
            return false;
        }
    }
    return true;
}

bool MeasurementCreation::checkNumbers() {
    const std::int64_t leastInterval = places_.isSingle() ? 0 : 1;
    return (places_.count >= 1 && places_.interval >= leastInterval) || refuse(337);
}

/// The last place must be in the frame, or in the subframe.
bool MeasurementCreation::checkReach(std::string_view name) {
    const int lastWord = format_.wordsPerMinorFrame - 1;
    if (!isInSubframe_) {
        return places_.lastFrom(places_.fwp) <= lastWord ||
               refuse(276, name, places_.firstBeyond(places_.fwp, lastWord).first, places_.fn,
                      format_.wordsPerMinorFrame);
    }
    const auto* const subframe = format_.subframeOfWord(places_.fwp);
    const auto& type = word_.definition.attributes.locationType;
    if (subframe == nullptr || places_.isSingle() || type == location_type::kWordFrame) {
        return true;  // frames beyond the depth are refused with the ranges
    }
    const int positions = format_.subframePositions(subframe->name);
    const int first = format_.subframePosition(subframe->name, places_.fwp,
                                               format_.foldedFrame(places_.fwp, places_.fn));
    if (places_.lastFrom(first) <= positions) {
        return true;
    }
    format_.context().messages.show(&talk_, 270, title::kUnableToInitializeSupercomInterval,
                                    kErrorBox, subframe->name.view(), positions, name,
                                    places_.firstBeyond(first, positions).second);
    return false;
}

void MeasurementCreation::takeValues(const Measurement& values) {
    auto& cell = word_.definition.attributes;
    cell.name = values.name;
    const auto take = [](auto& to, const auto& from) {
        if (!from.empty()) {
            to = from;
        }
    };
    take(cell.transferOrder, values.transferOrder);
    take(cell.parity, values.parity);
    take(cell.parityTransferOrder, values.parityTransferOrder);
}

bool MeasurementCreation::takeMask(const std::string& given) {
    const int bits = format_.wordLength(places_.fwp);
    auto& definition = word_.definition;
    auto& first = definition.wordFrame.locations;
    const auto standard = first.empty() ? definition.attributes.mask.str()
                                        : first.front().fragments.front().mask.str();
    const auto mask = given.empty() ? fullMask(format_.context(), standard, bits)
                                    : enteredBinaryMask(format_.context(), &talk_, given, bits);
    if (!mask) {
        return false;
    }
    definition.attributes.mask = *mask;
    if (!first.empty()) {
        first.front().fragments.front().mask = *mask;
    }
    return true;
}

/// One range: words of a plain word, which is in every frame, or frames of a word of a subframe.
void MeasurementCreation::placeAsRange() {
    auto& fragment = word_.definition.wordFrame.locations.front().fragments.front();
    const int interval = places_.isSingle() ? 0 : static_cast<int>(places_.interval);
    if (isInSubframe_) {
        fragment.frameInterval = interval;
        fragment.endFrame = places_.lastFrom(fragment.startFrame);
    } else {
        fragment.wordInterval = interval;
        fragment.endWord = places_.lastFrom(fragment.startWord);
    }
}

void MeasurementCreation::placeAsOlderType() {
    auto& cell = word_.definition.attributes;
    if (places_.isSingle()) {
        // A single place of a supercommutated subframe is as in any other.
        cell.locationType = isInSubframe_ ? location_type::kSubframe : location_type::kMinorFrame;
        return;
    }
    cell.locationType = isInSubframe_ ? location_type::kSubframeSupercommutated
                                      : location_type::kMinorFrameSupercommutated;
    cell.locationMode = "I";
    cell.locationCount = static_cast<int>(places_.count);
    cell.interval = static_cast<int>(places_.interval);
}

bool MeasurementCreation::create(const std::string& givenName, const Measurement& values,
                                 const std::string& givenMask) {
    auto word = wordToEdit(format_, &talk_, places_.fwp, places_.fn, {});
    if (!word) {
        return false;
    }
    word_ = std::move(*word);
    takeValues(values);
    if (!checkName(givenName) || !takeMask(givenMask) || !checkNumbers() ||
        !checkReach(values.name.view())) {
        return false;
    }
    if (word_.definition.attributes.locationType == location_type::kWordFrame) {
        placeAsRange();
    } else {
        placeAsOlderType();
    }
    SaveSteps saving;
    // Without a window nobody is asked whether a whole word may take the bits of an async stream.
    saving.asyncIsAgreed = talk_.isSilent();
    return saveMeasurement(format_, &talk_, steps_, saving, word_.place, word_.definition);
}

/// What no name can be is a wrong value, and is found before what the model does not allow. False
/// for a name that the model refuses.
bool isPossibleName(const std::string& name) {
    try {
        requireNewName(name, kEnterNameFirst);
    } catch (const AutomationError& error) {
        if (error.fault() != AutomationFault::Refused) {
            throw;
        }
        return false;
    }
    return true;
}

/// The stored code; empty for an empty text, which stands for the default.
std::string codeOrDefault(std::span<const Choice> choices, int edition, const std::string& text,
                          std::string_view what) {
    return text.empty() ? text : requireCode(choices, edition, text, what);
}

}  // namespace

void AutomationMeasurements::CreateMeasurement(std::int64_t hWnd, std::int32_t fwp, std::int32_t fn,
                                               const std::string& name, const std::string& bitMask,
                                               const std::string& mesXferOrder,
                                               const std::string& mesParity,
                                               const std::string& mesParityXferOrder,
                                               std::int32_t numberOfLocs, std::int32_t interval) {
    auto& format = session_.requireFormat();
    const int edition = format.edition();
    requirePlace(format, fwp, fn);
    const bool isPossible = isPossibleName(name);
    Measurement values;
    values.transferOrder =
        codeOrDefault(measurement_choice::kTransferOrder, edition, mesXferOrder, "transfer order");
    values.parity = codeOrDefault(measurement_choice::kParity, edition, mesParity, "parity");
    values.parityTransferOrder = codeOrDefault(measurement_choice::kParityOrder, edition,
                                               mesParityXferOrder, "parity transfer order");
    session_.edit(hWnd, automation_title::kCreateMeasurement, [&](AutomationTalk& talk) {
        if (!isPossible) {
            format.context().messages.show(
                &talk, name.empty() ? MessageFor<>(kEnterNameFirst) : message::kNoSemicolon,
                title::kError, kErrorBox);
            return false;
        }
        values.name = name;
        bool isDeleted = true;
        const auto steps = editStepsOf(session_, isDeleted);
        const WantedPlaces places{fwp, fn, numberOfLocs, interval};
        return MeasurementCreation(format, talk, steps, places).create(name, values, bitMask);
    });
}

}  // namespace kavu
