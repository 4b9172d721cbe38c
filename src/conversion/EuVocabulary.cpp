#include "conversion/EuVocabulary.h"

#include "conversion/ConversionFields.h"
#include "core/files/ProfileFile.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/FloatingPointFormats.h"

#include <array>

namespace kavu {

namespace {

constexpr auto kMeasurement = std::to_array<Field>({c::kMn1, c::kMn2, c::kMn3, c::kMn4});
constexpr auto kInformation = std::to_array<Field>({c::kBfm, c::kFpf, c::kCrt, c::kDct});
constexpr auto kLimits =
    std::to_array<Field>({c::kMot2, c::kMot1, c::kMot4, c::kMot3, c::kMot6, c::kMot5, c::kSr});
constexpr auto kTransducer =
    std::to_array<Field>({c::kTrd1, c::kTrd2, c::kTrd3, c::kTrd5, c::kTrd6, c::kTrd7, c::kTrd4});
constexpr auto kContact = std::to_array<Field>({c::kPoc1, c::kPoc2, c::kPoc3, c::kPoc4});
constexpr auto kComments = std::to_array<Field>({c::kCom});

constexpr auto kAmbientColumns = euColumns(c::kMa1, c::kMa2, c::kMa3);
constexpr auto kInFlightColumns = euColumns(c::kMc1, c::kMc2, c::kMc3);
constexpr auto kAmbient = euListOf(c::kMaN, kAmbientColumns);
constexpr auto kInFlight = euListOf(c::kMcN, kInFlightColumns);

constexpr auto kPages = std::to_array<EuPage>({
    {eu_page::kMeasurement, "Measurement Information", kMeasurement},
    {eu_page::kInformation, "EU Information", kInformation},
    {eu_page::kLimits, "Limits And Sample Rate", kLimits},
    {eu_page::kAmbient, "Ambient Value", {}, &kAmbient},
    {eu_page::kInFlight, "In Flight Calibration", {}, &kInFlight},
    {eu_page::kTransducer, "Transducer Information", kTransducer},
    {eu_page::kContact, "Point Of Contact", kContact},
    {eu_page::kComments, "Comments", kComments},
});

constexpr auto kBitWeightColumns = euColumns(c::kBwtb, c::kBwtv);
constexpr auto kBitWeights = euListOf(c::kBwtN, kBitWeightColumns);

constexpr auto kFloatingPoint = [] {
    std::array<FloatingPointFormat, kFloatingPointFormats.size()> formats;
    for (std::size_t i = 0; i < formats.size(); ++i) {
        formats[i] = {kFloatingPointFormats[i].text, kFloatingPointFormats[i].value};
    }
    return formats;
}();

}  // namespace

std::span<const EuPage> euPages() {
    return kPages;
}

const EuList& bitWeightList() {
    return kBitWeights;
}

std::string euSheetTitle(std::string_view measurement) {
    return formatPrintf("Data Conversion Attributes: %s", measurement);
}

std::string_view storedClassification(std::string_view text) {
    return text.substr(0, text.find(' '));
}

std::span<const FloatingPointFormat> floatingPointFormats() {
    return kFloatingPoint;
}

std::string typeText(std::string_view stored, int edition) {
    const auto type = trimTrailingBlanks(stored);
    for (const auto& choice : c::choice::kTypes) {
        if (!type.empty() && isKnownIn(edition, choice) && equalsIgnoreCase(choice.value, type)) {
            return std::string(choice.text);
        }
    }
    return std::string(type);
}

std::string storedType(std::string_view text) {
    return std::string(trimTrailingBlanks(text.substr(0, c::choice::kStored)));
}

std::string storedType(std::string_view text, int edition) {
    auto type = storedType(text);
    const bool laterType = type == "VOI" || type == "VID";
    return edition <= c::kOnly1996 && laterType ? std::string(kNoType) : type;
}

std::string shownType(const ProfileFile& file, std::string_view section, int edition) {
    auto type = file.value(section, kTypeCode, kNoType);
    const auto has = [&](std::string_view code) { return !file.value(section, code, "").empty(); };
    if (edition <= c::kOnly1996 && equalsIgnoreCase(type, kNoType)) {
        if (has(c::kVoiE.code) || has(c::kVoiD.code)) {
            return "VOI";
        }
        if (has(c::kVidE.code) || has(c::kVidD.code)) {
            return "VID";
        }
    }
    return type;
}

bool isBitWeight(std::string_view text) {
    return equalsIgnoreCase(text, "S") || parseDouble(text).has_value();
}

}  // namespace kavu
