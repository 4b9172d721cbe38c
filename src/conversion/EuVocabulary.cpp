#include "conversion/EuVocabulary.h"

#include "conversion/ConversionFields.h"
#include "core/files/ProfileFile.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <array>

namespace kavu {

namespace {

constexpr int kOnly1996 = 1996;
constexpr int kAfter1996 = 1997;

/// The choices of a field from those of the record: the stored value is the front of the text.
template <std::size_t N>
constexpr std::array<Choice, N> choicesFrom(const std::array<ConversionChoice, N>& rows) {
    std::array<Choice, N> choices{};
    for (std::size_t i = 0; i < N; ++i) {
        const auto stored = rows[i].stored();
        choices[i].value = stored.ends_with(' ') ? stored.substr(0, 2) : stored;
        choices[i].text = rows[i].text;
        choices[i].firstEdition = rows[i].from;
        choices[i].lastEdition = rows[i].until == kLatestEdition ? 0 : rows[i].until;
    }
    return choices;
}
constexpr auto kBinaryFormatChoices = choicesFrom(kBinaryFormats);
constexpr auto kTypeChoices = choicesFrom(kConversionTypes);

constexpr auto kLinkTypes = std::to_array<Choice>({
    {.value = "ANA", .text = "ANAlog"},
    {.value = "PCM", .text = "PCM"},
    {.value = "PAM", .text = "PAM"},
    {.value = "OTH", .text = "OTHer"},
});

// The groups (TM), (EU) and (TM & EU) have the plain classes with a letter more. "Other" is
// another one in 106-96.
constexpr auto kClassifications = std::to_array<Choice>({
    {.value = "T", .text = "T    - Top Secret"},
    {.value = "S", .text = "S    - Secret"},
    {.value = "C", .text = "C    - Confidential"},
    {.value = "U", .text = "U    - Unclassified"},
    {.value = "OTH", .text = "OTH  - Other", .lastEdition = kOnly1996},
    {.value = "O", .text = "O    - Other", .firstEdition = kAfter1996},
    {.value = "TR", .text = "TR   - Top Secret (TM)"},
    {.value = "SR", .text = "SR   - Secret (TM)"},
    {.value = "CR", .text = "CR   - Confidential (TM)"},
    {.value = "UR", .text = "UR   - Unclassified (TM)"},
    {.value = "OTHR", .text = "OTHR - Other (TM)", .lastEdition = kOnly1996},
    {.value = "OR", .text = "OR   - Other (TM)", .firstEdition = kAfter1996},
    {.value = "TE", .text = "TE   - Top Secret (EU)"},
    {.value = "SE", .text = "SE   - Secret (EU)"},
    {.value = "CE", .text = "CE   - Confidential (EU)"},
    {.value = "UE", .text = "UE   - Unclassified (EU)"},
    {.value = "OTHE", .text = "OTHE - Other (EU)", .lastEdition = kOnly1996},
    {.value = "OE", .text = "OE   - Other (EU)", .firstEdition = kAfter1996},
    {.value = "TB", .text = "TB   - Top Secret (TM & EU)"},
    {.value = "SB", .text = "SB   - Secret (TM & EU)"},
    {.value = "CB", .text = "CB   - Confidential (TM & EU)"},
    {.value = "UB", .text = "UB   - Unclassified (TM & EU)"},
    {.value = "OTHB", .text = "OTHB - Other (TM & EU)", .lastEdition = kOnly1996},
    {.value = "OB", .text = "OB   - Other (TM & EU)", .firstEdition = kAfter1996},
});

constexpr std::string_view kFormatBox = "Telemetry Value Definition";
constexpr std::string_view kTypeBox = "Data Conversion";

constexpr auto kMeasurement = std::to_array<Field>({
    {.code = "MN1", .label = "Description:"},
    {.code = "MN2", .label = "Excitation Voltage:"},
    {.code = "MN3", .label = "Engineering Units:"},
    {.code = "MN4",
     .label = "Link Type:",
     .limit = 3,
     .kind = FieldKind::Choice,
     .choices = kLinkTypes},
});
constexpr auto kInformation = std::to_array<Field>({
    {.code = "BFM",
     .label = "Binary Format:",
     .box = kFormatBox,
     .limit = 3,
     .kind = FieldKind::Choice,
     .choices = kBinaryFormatChoices},
    {.code = "FPF", .label = "Floating Point Format:", .box = kFormatBox, .firstEdition = 2000},
    {.code = "CRT",
     .label = "Date/Time Released:",
     .box = kTypeBox,
     .limit = 19,
     .kind = FieldKind::DateTime,
     .firstEdition = 2004},
    {.code = "DCT",
     .label = "Type:",
     .box = kTypeBox,
     .limit = 3,
     .kind = FieldKind::Choice,
     .choices = kTypeChoices},
});
constexpr auto kLimits = std::to_array<Field>({
    {.code = "MOT2", .label = "Value Low:", .limit = 32},
    {.code = "MOT1", .label = "Value High:", .limit = 32},
    {.code = "MOT4", .label = "Limit Low:", .limit = 32},
    {.code = "MOT3", .label = "Limit High:", .limit = 32},
    {.code = "MOT6", .label = "Warning Low:", .limit = 32, .firstEdition = kAfter1996},
    {.code = "MOT5", .label = "Warning High:", .limit = 32, .firstEdition = kAfter1996},
    {.code = "SR", .label = "Sample Rate:"},
});
constexpr auto kAmbientColumns = std::to_array<Field>({
    {.code = "MA1", .label = "Stimulus", .limit = 32},
    {.code = "MA2", .label = "Telemetry Value", .limit = 16},
    {.code = "MA3", .label = "Data Value", .limit = 32},
});
constexpr auto kInFlightColumns = std::to_array<Field>({
    {.code = "MC1", .label = "Stimulus", .limit = 32},
    {.code = "MC2", .label = "Telemetry Value", .limit = 16},
    {.code = "MC3", .label = "Data Value", .limit = 32},
});
constexpr EuList kAmbient{.countCode = "MA\\N",
                          .title = "Ambient Value",
                          .columns = kAmbientColumns,
                          .mostRows = 9,
                          .firstEdition = kFirstEditionOfAmbientList};
constexpr EuList kInFlight{.countCode = "MC\\N",
                           .title = "In Flight Calibration",
                           .columns = kInFlightColumns,
                           .mostRows = 9};
constexpr auto kTransducer = std::to_array<Field>({
    {.code = "TRD1", .label = "Type:"},
    {.code = "TRD2", .label = "Model Number:"},
    {.code = "TRD3", .label = "Serial Number:"},
    {.code = "TRD5", .label = "Origination Date:", .kind = FieldKind::Date},
    {.code = "TRD6", .label = "Revision Number:"},
    {.code = "TRD7", .label = "Orientation:"},
    {.code = "TRD4",
     .label = "Classification:",
     .limit = 4,
     .kind = FieldKind::Choice,
     .choices = kClassifications},
});
constexpr auto kContact = std::to_array<Field>({
    {.code = "POC1", .label = "Name:"},
    {.code = "POC2", .label = "Agency:"},
    {.code = "POC3", .label = "Address:", .kind = FieldKind::Comment},
    {.code = "POC4", .label = "Telephone:"},
});
constexpr auto kComments =
    std::to_array<Field>({{.code = "COM", .label = "Comment:", .kind = FieldKind::Comment}});

constexpr auto kPages = std::to_array<EuPage>({
    {"DataConversion1", "Measurement Information", kMeasurement},
    {"DataConversion2", "EU Information", kInformation},
    {"DataConversion3", "Limits And Sample Rate", kLimits},
    {"DataConversion4", "Ambient Value", {}, &kAmbient},
    {"DataConversion5", "In Flight Calibration", {}, &kInFlight},
    {"DataConversion6", "Transducer Information", kTransducer},
    {"DataConversion7", "Point Of Contact", kContact},
    {"DataConversion8", "Comments", kComments},
});

constexpr auto kBitWeightColumns = std::to_array<Field>({
    {.code = "BWTB", .label = "Bit Number", .limit = 3, .kind = FieldKind::Count},
    {.code = "BWTV", .label = "Bit Value (Enter 'S' for sign bit)", .limit = 32},
});
constexpr EuList kBitWeights{.countCode = "BWT\\N",
                             .title = "Edit Bit Weight Values",
                             .columns = kBitWeightColumns,
                             .mostRows = 999,
                             .firstEdition = 2007};

constexpr auto kFloatingPoint = std::to_array<FloatingPointFormat>({
    {"IEEE 754 Single Precision", "IEEE_32"},
    {"IEEE 754 Double Precision", "IEEE_64"},
    {"MIL STD 1750A Single Precision", "1750A_32"},
    {"MIL STD 1750A Double Precision", "1750A_48"},
    {"DEC Single Precision", "DEC_32"},
    {"DEC Double Precision", "DEC_64"},
    {"DEC \"G\" Double Precision", "DEC_64G"},
    {"IBM Single Precision", "IBM_32"},
    {"IBM Double Precision", "IBM_64"},
    {"TI Single Precision", "TI_32"},
    {"TI Extended Precision", "TI_40"},
});

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
    for (const auto& choice : kConversionTypes) {
        if (!type.empty() && edition >= choice.from && edition <= choice.until &&
            equalsIgnoreCase(storedType(choice.text), type)) {
            return std::string(choice.text);
        }
    }
    return std::string(type);
}

std::string storedType(std::string_view text) {
    return std::string(trimTrailingBlanks(text.substr(0, 3)));
}

std::string storedType(std::string_view text, int edition) {
    auto type = storedType(text);
    const bool laterType = type == "VOI" || type == "VID";
    return edition <= kOnly1996 && laterType ? "NON" : type;
}

std::string shownType(const ProfileFile& file, std::string_view section, int edition) {
    auto type = file.value(section, kTypeCode, "NON");
    const auto has = [&](std::string_view code) { return !file.value(section, code, "").empty(); };
    if (edition <= kOnly1996 && equalsIgnoreCase(type, "NON")) {
        if (has("VOI\\E") || has("VOI\\D")) {
            return "VOI";
        }
        if (has("VID\\E") || has("VID\\D")) {
            return "VID";
        }
    }
    return type;
}

bool isBitWeight(std::string_view text) {
    return equalsIgnoreCase(text, "S") || parseDouble(text).has_value();
}

}  // namespace kavu
