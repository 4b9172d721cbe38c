// The queries of a translator session on the stream that is loaded.
#include "core/files/ProfileFile.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "sdk/TranslatorSdk.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

unsigned TranslatorSdk::measurementCount() const {
    return static_cast<unsigned>(measurements_.size());
}

std::optional<unsigned> TranslatorSdk::findMeasurement(std::string_view name) const {
    if (const auto found = measurementNames_.find(std::string(name));
        found != measurementNames_.end()) {
        return found->second;
    }
    const auto folded = foldedMeasurementNames_.find(lowerAscii(name));
    return folded == foldedMeasurementNames_.end() ? std::nullopt : std::optional(folded->second);
}

const SdkFragment* TranslatorSdk::findFragment(unsigned index, int location, int fragment,
                                               std::string_view function) {
    if (index >= measurements_.size()) {
        writeError(formatPrintf("ERROR: Invalid measurement index (%u) passed to %s()\n\n", index,
                                function));
        return nullptr;
    }
    const auto& measurement = measurements_[index];
    if (location < 1 || location > static_cast<int>(measurement.locations.size())) {
        writeError(
            formatPrintf("ERROR: Invalid location (%d) passed to %s()\n\n", location, function));
        return nullptr;
    }
    const auto& fragments = measurement.locations[static_cast<std::size_t>(location) - 1].fragments;
    if (fragment >= 1 && fragment <= static_cast<int>(fragments.size())) {
        return &fragments[static_cast<std::size_t>(fragment) - 1];
    }
    if (fragments.size() > 1) {
        writeError(formatPrintf("ERROR: Invalid Fragment Number (%d) passed to %s()\n\n", fragment,
                                function));
    } else {
        writeError(
            formatPrintf("ERROR in %s():\n\tMeasurement %s %s a fragment.\n\tInvalid "
                         "'Fragment Number' argument (%d) passed to this function.\n\n",
                         function, measurement.name, "is not", fragment));
    }
    return nullptr;
}

int TranslatorSdk::GetPcmMeasurementIntervals(unsigned index, int location, int fragment,
                                              SdkRange& word, SdkRange& frame) {
    const auto* const found = findFragment(index, location, fragment, "GetPcmMeasurementIntervals");
    if (found == nullptr) {
        return -1;
    }
    const auto check = [&](const SdkRange& range, std::string_view which) {
        if (range.end > range.start && range.interval < 1) {
            writeError(
                formatPrintf("WARNING: Could not determine %s Increment for measurement\n"
                             "'%s'.\n\n",
                             which, measurements_[index].name));
        }
    };
    word = found->word;
    frame = found->frame;
    check(word, "Word");
    check(frame, "Frame");
    return 0;
}

int TranslatorSdk::Get1553MeasurementInfo(unsigned index, int location, int fragment,
                                          SdkBusInfo& info) {
    const auto* const found = findFragment(index, location, fragment, "Get1553MeasurementInfo");
    if (found == nullptr) {
        return -1;
    }
    const auto& measurement = measurements_[index];
    info = {measurement.bus, measurement.message, found->word.start, found->number, {}};
    info.sortKey =
        formatPrintf("%5.5d%5.5d%5.5d%5.5d", info.bus, info.message, info.word, info.fragment);
    return 0;
}

int TranslatorSdk::GetMeasurementBitMask(unsigned index, int location, int fragment, char* buffer,
                                         std::size_t size) {
    const auto* const found = findFragment(index, location, fragment, "GetMeasurementBitMask");
    if (found == nullptr) {
        return -1;
    }
    const std::string mask(found->mask.empty() ? kFullWord : std::string_view(found->mask));
    if (buffer == nullptr || size <= mask.size()) {
        writeError(
            formatPrintf("ERROR: Buffer size too small to hold bitmask for measurement "
                         "'%s'\n\n",
                         measurements_[index].name));
        return -1;
    }
    std::copy(mask.begin(), mask.end(), buffer);
    buffer[mask.size()] = 0;
    return 0;
}

int TranslatorSdk::IsMeasurementBitMaskAFullWord(unsigned index, int location, int fragment) {
    const auto* const found =
        findFragment(index, location, fragment, "IsMeasurementBitMaskAFullWord");
    return found == nullptr ? -1 : found->bitMask().isFullWord() ? 1 : 0;
}

int TranslatorSdk::GetMeasurementBitMaskBitLocations(unsigned index, int location, int fragment,
                                                     std::vector<int>& bits) {
    const auto* const found =
        findFragment(index, location, fragment, "GetMeasurementBitMaskBitLocations");
    bits = found == nullptr ? std::vector<int>() : found->bitMask().bits();
    return found == nullptr ? -1 : 0;
}

int TranslatorSdk::GetMeasurementFragmentMask(unsigned index, int location, int fragment,
                                              std::string& words) {
    constexpr std::string_view kFunction = "GetMeasurementFragmentMask";
    const auto* const found = findFragment(index, location, fragment, kFunction);
    if (found == nullptr) {
        return -1;
    }
    words = found->bitMask().words();
    return 0;
}

int TranslatorSdk::GetMeasurementEUInfoByIndex(std::int64_t conversion, SdkGroup& record) {
    const auto place = findConversion(conversion);
    auto found = place ? openConversion(*place) : std::nullopt;
    if (!found) {
        writeError("ERROR: Invalid C-Index value passed to GetMeasurementEUInfoByIndex.\n\n");
        return -1;
    }
    record = std::move(*found);
    return 0;
}

int TranslatorSdk::GetMeasurementEUCoefficients(const SdkGroup& record, EuEvaluation& evaluation) {
    // A record is a section of keys where it is edited.
    std::string name(record.value(c::kDcn.code).value_or(std::string_view()));
    if (!ProfileFile::canBeSection(name)) {
        name = groupHead('C', static_cast<int>(record.number()));
    }
    ProfileFile section({});
    for (std::size_t i = 0; i < record.size(); ++i) {
        const auto command = record.at(i);
        if (ProfileFile::canBeKey(command.field) && !section.value(name, command.field)) {
            section.setValue(name, command.field, command.value);
        }
    }
    std::string why;
    auto found = EuEvaluation::make(section, name, version(), why);
    if (!found) {
        writeError((why.starts_with("ERROR") ? why : "ERROR: '" + name + "': " + why) + "\n\n");
        return -1;
    }
    evaluation = std::move(*found);
    return 0;
}

}  // namespace kavu
