#include "conversion/EuVocabulary.h"

#include "conversion/ConversionFields.h"
#include "core/FieldRules.h"
#include "core/Printf.h"
#include "core/ProfileFile.h"
#include "core/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr auto kMeasurement = std::to_array<EuField>({
    {"Description:", "MN1"},
    {"Excitation Voltage:", "MN2"},
    {"Engineering Units:", "MN3"},
    {"Link Type:", "MN4", 3},
});
constexpr auto kInformation = std::to_array<EuField>({
    {"Binary Format:", "BFM", 3},
    {"Floating Point Format:", "FPF"},
    {"Date/Time Released:", "CRT", 19},
    {"Type:", "DCT", 3},
});
constexpr auto kLimits = std::to_array<EuField>({
    {"Value Low:", "MOT2", 32},
    {"Value High:", "MOT1", 32},
    {"Limit Low:", "MOT4", 32},
    {"Limit High:", "MOT3", 32},
    {"Warning Low:", "MOT6", 32},
    {"Warning High:", "MOT5", 32},
    {"Sample Rate:", "SR"},
});
constexpr auto kAmbient = std::to_array<EuField>({
    {"Stimulus", "MA1", 32},
    {"Telemetry Value", "MA2", 16},
    {"Data Value", "MA3", 32},
});
constexpr auto kInFlight = std::to_array<EuField>({
    {"Stimulus", "MC1", 32},
    {"Telemetry Value", "MC2", 16},
    {"Data Value", "MC3", 32},
});
constexpr auto kTransducer = std::to_array<EuField>({
    {"Type:", "TRD1"},
    {"Model Number:", "TRD2"},
    {"Serial Number:", "TRD3"},
    {"Origination Date:", "TRD5"},
    {"Revision Number:", "TRD6"},
    {"Orientation:", "TRD7"},
    {"Classification:", "TRD4", 4},
});
constexpr auto kContact = std::to_array<EuField>({
    {"Name:", "POC1"},
    {"Agency:", "POC2"},
    {"Address:", "POC3"},
    {"Telephone:", "POC4"},
});
constexpr auto kComments = std::to_array<EuField>({{"Comment:", "COM"}});

constexpr int kFirstEditionOfAmbientList = 1999;

constexpr auto kPages = std::to_array<EuPage>({
    {"DataConversion1", "Measurement Information", kMeasurement, {}, {}, 0},
    {"DataConversion2", "EU Information", kInformation, {}, {}, 0},
    {"DataConversion3", "Limits And Sample Rate", kLimits, {}, {}, 0},
    {"DataConversion4", "Ambient Value", {}, kAmbient, "MA\\N", kFirstEditionOfAmbientList},
    {"DataConversion5", "In Flight Calibration", {}, kInFlight, "MC\\N", 0},
    {"DataConversion6", "Transducer Information", kTransducer, {}, {}, 0},
    {"DataConversion7", "Point Of Contact", kContact, {}, {}, 0},
    {"DataConversion8", "Comments", kComments, {}, {}, 0},
});

/// The groups (TM), (EU) and (TM & EU) have the plain classes with a letter more. "Other" is
/// another one in 106-96.
struct Classification {
    std::string_view text;
    int from = 0;
    int until = kLatestEdition;
};
constexpr int kOnly1996 = 1996;
constexpr int kAfter1996 = 1997;
constexpr auto kClassifications = std::to_array<Classification>({
    {"T    - Top Secret"},
    {"S    - Secret"},
    {"C    - Confidential"},
    {"U    - Unclassified"},
    {"OTH  - Other", 0, kOnly1996},
    {"O    - Other", kAfter1996},
    {"TR   - Top Secret (TM)"},
    {"SR   - Secret (TM)"},
    {"CR   - Confidential (TM)"},
    {"UR   - Unclassified (TM)"},
    {"OTHR - Other (TM)", 0, kOnly1996},
    {"OR   - Other (TM)", kAfter1996},
    {"TE   - Top Secret (EU)"},
    {"SE   - Secret (EU)"},
    {"CE   - Confidential (EU)"},
    {"UE   - Unclassified (EU)"},
    {"OTHE - Other (EU)", 0, kOnly1996},
    {"OE   - Other (EU)", kAfter1996},
    {"TB   - Top Secret (TM & EU)"},
    {"SB   - Secret (TM & EU)"},
    {"CB   - Confidential (TM & EU)"},
    {"UB   - Unclassified (TM & EU)"},
    {"OTHB - Other (TM & EU)", 0, kOnly1996},
    {"OB   - Other (TM & EU)", kAfter1996},
});

constexpr auto kLinkTypes = std::to_array<std::string_view>({"ANAlog", "PCM", "PAM", "OTHer"});

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

constexpr auto kBusTimes = std::to_array<EuChoice>({
    {"R", "Response Time"},
    {"M", "Microsecond Time"},
    {"L", "Low Order Time"},
    {"H", "High Order Time"},
});
constexpr auto kPcmTimes = std::to_array<EuChoice>({
    {"M", "Microsecond Time"},
    {"L", "Low Order Time"},
    {"H", "High Order Time"},
});
constexpr auto kAlgorithms = std::to_array<EuChoice>({
    {"A", "Algorithm"},
    {"N", "Name Of Algorithm"},
});
constexpr auto kVoiceEncodings = std::to_array<EuChoice>({
    {"OTHR", "OTHR"},
    {"CVSD", "CVSD"},
});

constexpr auto kWindows = std::to_array<DetailWindow>({
    {"PRS", "PairSets", {}, 0},
    {"COE", "coefficients", {}, 0},
    {"NPC", "coefficients", "Coefficients (Negative Powers Of X)", 2007},
    {"OTH", "other", {}, 0},
    {"DER", "derived", {}, 0},
    {"DIS", "discrete", {}, 0},
    {"VOI", "DigitalVoice", {}, 0},
    {"VID", "DigitalVideo", {}, 0},
    {"BTM", "Time1553", {}, 0},
    {"PTM", "TimePCM", {}, 0},
});

}  // namespace

std::span<const EuPage> euPages() {
    return kPages;
}

std::string euSheetTitle(std::string_view measurement) {
    return formatPrintf("Data Conversion Attributes: %s", measurement);
}

std::vector<std::string_view> classificationList(int edition) {
    std::vector<std::string_view> texts;
    for (const auto& row : kClassifications) {
        if (edition >= row.from && edition <= row.until) {
            texts.push_back(row.text);
        }
    }
    return texts;
}

std::string_view storedClassification(std::string_view text) {
    return text.substr(0, text.find(' '));
}

int classificationIndex(std::span<const std::string_view> list, std::string_view stored) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (equalsIgnoreCase(storedClassification(list[i]), stored)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

std::span<const std::string_view> linkTypeList() {
    return kLinkTypes;
}

std::span<const FloatingPointFormat> floatingPointFormats() {
    return kFloatingPoint;
}

std::span<const EuChoice> busTimeChoices() {
    return kBusTimes;
}

std::span<const EuChoice> pcmTimeChoices() {
    return kPcmTimes;
}

std::span<const EuChoice> algorithmChoices() {
    return kAlgorithms;
}

std::span<const EuChoice> voiceEncodings() {
    return kVoiceEncodings;
}

std::optional<DetailWindow> detailWindow(std::string_view type, int edition, bool plot) {
    for (auto window : kWindows) {
        if (edition >= window.from && startsWithIgnoreCase(type, window.type)) {
            if (plot && window.type == "PRS") {
                window.resource = "PairSetsPlot";
            }
            return window;
        }
    }
    return std::nullopt;
}

std::string_view detailButtonText(bool shown) {
    return shown ? "Hide Conversion Details" : "Show Conversion Details";
}

std::string typeText(std::string_view stored, int edition) {
    const auto type = trimTrailingBlanks(stored);
    for (const auto& choice : conversionTypes()) {
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

std::string coefficientTerm(int term) {
    return formatPrintf("C(%d)", term);
}

std::string coefficientPrompt(int term) {
    return formatPrintf("Enter Coefficient 'C(%d)'", term);
}

bool isBitWeight(std::string_view text) {
    return equalsIgnoreCase(text, "S") || parseDouble(text).has_value();
}

}  // namespace kavu
