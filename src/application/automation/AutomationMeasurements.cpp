#include "application/automation/AutomationMeasurements.h"

#include "application/Application.h"
#include "application/automation/AutomationMeasurementPlace.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "conversion/ConversionStore.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/edit/FrameEditMask.h"
#include "pcm/edit/MeasurementEditSave.h"
#include "vocabulary/DGroupFields.h"

namespace kavu {

namespace {

using namespace automation_title;

/// The longest word that a stream can be given.
constexpr std::int32_t kMostWordBits = 99;

const Measurement& measurementAt(const PcmFormat& format, const FoundMeasurement& found) {
    return format.cells().measurement(found.cell);
}

/// A code of the measurement, at all its places.
template <typename Text>
void setCode(AutomationSession& session, const std::string& name, Text Measurement::*field,
             std::span<const Choice> choices, const std::string& value, std::string_view what) {
    auto& format = session.requireFormat();
    const auto found = requireMeasurement(format, name);
    const auto code = requireCode(choices, format.edition(), value, what);
    session.edit(0, kEditMeasurement, [&](AutomationTalk&) {
        format.cells().updateAll(found.name, [&](Measurement& copy) { copy.*field = code; });
        return true;
    });
}

/// True if each fragment has a mask of its own.
bool hasSeveralMasks(const PcmFormat& format, const Measurement& measurement) {
    if (!isWordFrame(measurement)) {
        return isFragmented(measurement.locationType);
    }
    const auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    return definition != nullptr && definition->mostFragments() > 1;
}

void setMask(PcmFormat& format, const FoundMeasurement& found, const std::string& mask) {
    const int entry = measurementAt(format, found).wordFrameIndex;
    format.cells().updateAll(found.name, [&](Measurement& copy) { copy.mask = mask; });
    if (auto* const definition = format.wordFrameDefinition(entry)) {
        for (auto& location : definition->locations) {
            for (auto& fragment : location.fragments) {
                fragment.mask = mask;
            }
        }
    }
}

/// Every word that has the measurement gets the length.
void setLengths(PcmFormat& format, const std::string& name, int length) {
    bool changes = false;
    for (const auto& place : format.cells().places(name)) {
        if (format.wordLength(place.word) != length) {
            format.setWordLength(place.word, length);
            changes = true;
        }
    }
    if (changes) {
        (void)format.recalculateBitsPerMinorFrame();
        format.formatEdited = true;
    }
}

/// Renames the record, unless the new name has one of its own. False if a file failed.
bool renameRecord(ConversionStore& conversions, UserInterface* parent, std::string_view from,
                  std::string_view to) {
    const auto record = conversions.locateDefinition(from);
    const auto other = conversions.locateDefinition(to);
    if (!record.found || (other.found && other.section != record.section)) {
        return true;
    }
    return conversions.renameDefinition(parent, std::string(to), std::string(from));
}

}  // namespace

void AutomationMeasurements::DeleteMeasurement(const std::string& name) {
    auto& format = session_.requireFormat();
    const auto found = requireMeasurement(format, name);
    session_.editWithRecords(0, kDeleteMeasurement, [&](AutomationTalk& talk) {
        bool isDeleted = true;
        auto steps = editStepsOf(session_, isDeleted);
        // Nobody is asked, but a record that cannot be deleted is the failure of the call.
        steps.deleteConversion = [&talk, remove = steps.deleteConversion](UserInterface*,
                                                                          std::string_view record) {
            remove(&talk, record);
        };
        return deleteMeasurement(format, nullptr, steps, found.name) && isDeleted;
    });
}

void AutomationMeasurements::EditMeasurementByName(std::int64_t hWnd, const std::string& name) {
    const auto found = requireMeasurement(session_.requireFormat(), name);
    session_.editInWindow(kEditMeasurement, [&](AutomationWindows& windows) {
        return windows.editDataWord(hWnd, found.fwp, found.fn, found.name);
    });
}

void AutomationMeasurements::EditMeasurementsAt(std::int64_t hWnd, std::int32_t fwp,
                                                std::int32_t fn) {
    requirePlace(session_.requireFormat(), fwp, fn);
    session_.editInWindow(kEditMeasurement, [&](AutomationWindows& windows) {
        return windows.editDataWord(hWnd, fwp, fn, {});
    });
}

std::int32_t AutomationMeasurements::CountMeasurementsAt(std::int32_t fwp, std::int32_t fn) {
    const auto& format = session_.requireFormat();
    requirePlace(format, fwp, fn);
    return format.countMeasurementsAt(fwp, fn, true);
}

std::int32_t AutomationMeasurements::CountMeasurementOccurences(const std::string& name) {
    const auto& format = session_.requireFormat();
    return format.countMeasurementOccurences(requireMeasurement(format, name).name);
}

std::string AutomationMeasurements::GetMeasurementBitMask(const std::string& name) {
    const auto& format = session_.requireFormat();
    const auto& measurement = measurementAt(format, requireMeasurement(format, name));
    const auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    if (isWordFrame(measurement) && definition != nullptr && definition->mostFragments() > 0) {
        for (const auto& location : definition->locations) {
            if (!location.fragments.empty()) {
                return location.fragments.front().mask.str();
            }
        }
    }
    return measurement.mask.str();
}

void AutomationMeasurements::SetMeasurementBitMask(const std::string& name,
                                                   const std::string& bitMask) {
    auto& format = session_.requireFormat();
    const auto found = requireMeasurement(format, name);
    session_.edit(0, kEditMeasurement, [&](AutomationTalk& talk) {
        if (hasSeveralMasks(format, measurementAt(format, found))) {
            throw AutomationError::refused(
                0, "The measurement is in fragments, each of which has a mask of its own.");
        }
        const auto mask =
            enteredBinaryMask(format.context(), &talk, bitMask, format.wordLength(found.fwp));
        if (!mask) {
            return false;
        }
        setMask(format, found, *mask);
        return true;
    });
}

std::string AutomationMeasurements::GetMeasurementName(std::int32_t fwp, std::int32_t fn,
                                                       std::int32_t mesIndex) {
    const auto& format = session_.requireFormat();
    requirePlace(format, fwp, fn);
    const auto cell = mesIndex < 1 ? CellRef{} : format.measurementAt(fwp, fn, mesIndex, true);
    if (!cell) {
        requireRange(mesIndex, 1, format.countMeasurementsAt(fwp, fn, true), "measurement");
    }
    return shownText(format.cells().measurement(cell).name.view());
}

void AutomationMeasurements::SetMeasurementName(const std::string& oldName,
                                                const std::string& newName) {
    constexpr int kEnterNameFirst = 326;
    auto& format = session_.requireFormat();
    const auto found = requireMeasurement(format, oldName);
    const auto name = storedText(newName, found.name);
    requireNewName(name, kEnterNameFirst);
    session_.editWithRecords(0, kRenameMeasurement, [&](AutomationTalk& talk) {
        // The same characters in the other encoding are the same name.
        for (const auto& form : storedForms(newName)) {
            if (form != name && !equalsIgnoreCase(form, found.name) &&
                checkMeasurementName(format, &talk, form)) {
                return false;
            }
        }
        bool isStored = true;
        SaveSteps saving;
        saving.renameConversion = [&](UserInterface* parent, std::string_view from,
                                      std::string_view to) {
            isStored = renameRecord(session_.application().conversions(), parent, from, to);
        };
        return renameMeasurement(format, &talk, editStepsOf(session_, isStored), saving, found.name,
                                 name) &&
               isStored;
    });
}

OccurrencePlace AutomationMeasurements::GetMeasurementOccurence(const std::string& name,
                                                                std::int32_t occurence) {
    const auto& format = session_.requireFormat();
    const auto found = requireMeasurement(format, name);
    Occurrences occurrences(format, found.name);
    std::int32_t count = 0;
    while (const auto hit = occurrences.next()) {
        if (++count == occurence) {
            return {hit->fwp, hit->fn};
        }
        if (occurence < 1) {
            break;
        }
    }
    throw AutomationError(
        AutomationFault::OutOfRange,
        formatPrintf("'%s' has no occurrence %s.", name, std::to_string(occurence)));
}

std::string AutomationMeasurements::GetMeasurementParity(const std::string& name) {
    const auto& format = session_.requireFormat();
    return shownText(measurementAt(format, requireMeasurement(format, name)).parity.view());
}

void AutomationMeasurements::SetMeasurementParity(const std::string& name,
                                                  const std::string& parity) {
    setCode(session_, name, &Measurement::parity, measurement_choice::kParity, parity, "parity");
}

std::string AutomationMeasurements::GetMeasurementParityXfer(const std::string& name) {
    const auto& format = session_.requireFormat();
    return shownText(
        measurementAt(format, requireMeasurement(format, name)).parityTransferOrder.view());
}

void AutomationMeasurements::SetMeasurementParityXfer(const std::string& name,
                                                      const std::string& parityXfer) {
    setCode(session_, name, &Measurement::parityTransferOrder, measurement_choice::kParityOrder,
            parityXfer, "parity transfer order");
}

std::int32_t AutomationMeasurements::GetMeasurementWordLength(const std::string& name) {
    const auto& format = session_.requireFormat();
    return format.wordLength(requireMeasurement(format, name).fwp);
}

void AutomationMeasurements::SetMeasurementWordLength(std::int64_t hWnd, const std::string& name,
                                                      std::int32_t length) {
    auto& format = session_.requireFormat();
    const auto found = requireMeasurement(format, name);
    session_.edit(hWnd, kEditMeasurement, [&](AutomationTalk& talk) {
        // Classes with lengths of their own refuse others with their own messages.
        if (!format.checkWordLength(&talk, length)) {
            return false;
        }
        requireRange(length, 1, kMostWordBits, "word length");
        setLengths(format, found.name, length);
        return true;
    });
}

std::string AutomationMeasurements::GetMeasurementXferOrder(const std::string& name) {
    const auto& format = session_.requireFormat();
    return shownText(measurementAt(format, requireMeasurement(format, name)).transferOrder.view());
}

void AutomationMeasurements::SetMeasurementXferOrder(const std::string& name,
                                                     const std::string& xfer) {
    setCode(session_, name, &Measurement::transferOrder, measurement_choice::kTransferOrder, xfer,
            "transfer order");
}

}  // namespace kavu
