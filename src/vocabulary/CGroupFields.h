// The C group: the rows of a conversion record. What the sheet, the writer and the check of
// limits do with a row is defined in `conversion`.
#pragma once

#include "vocabulary/Field.h"

#include <array>
#include <span>
#include <string_view>

namespace kavu {

// Of `Field::page`: the pages of the sheet, and the windows of the conversion types.
namespace eu_page {
inline constexpr char kMeasurement[] = "DataConversion1";
inline constexpr char kInformation[] = "DataConversion2";
inline constexpr char kLimits[] = "DataConversion3";
inline constexpr char kAmbient[] = "DataConversion4";
inline constexpr char kInFlight[] = "DataConversion5";
inline constexpr char kTransducer[] = "DataConversion6";
inline constexpr char kContact[] = "DataConversion7";
inline constexpr char kComments[] = "DataConversion8";
inline constexpr char kPairSets[] = "PairSets";
inline constexpr char kCoefficients[] = "coefficients";
inline constexpr char kOther[] = "other";
inline constexpr char kDerived[] = "derived";
inline constexpr char kDiscrete[] = "discrete";
inline constexpr char kVoice[] = "DigitalVoice";
inline constexpr char kVideo[] = "DigitalVideo";
inline constexpr char kBusTime[] = "Time1553";
inline constexpr char kPcmTime[] = "TimePCM";
}  // namespace eu_page

namespace c {

inline constexpr int kOnly1996 = 1996;
inline constexpr int kAfter1996 = 1997;
/// Rows that become a numbered list in this edition: before it, one value of each column.
inline constexpr int kFirstAmbientList = 1999;
inline constexpr int kFirstBitWeights = 2007;
inline constexpr int kFirstNegativePowers = 2007;

namespace choice {

inline constexpr std::size_t kStored = 3;
/// What is stored for a text: its first three characters, without a trailing blank.
constexpr std::string_view storedFront(std::string_view text) {
    const auto front = text.substr(0, kStored);
    return front.ends_with(' ') ? front.substr(0, kStored - 1) : front;
}
constexpr Choice byFront(std::string_view text, int firstEdition = 0, int lastEdition = 0) {
    return {.value = storedFront(text),
            .text = text,
            .firstEdition = firstEdition,
            .lastEdition = lastEdition};
}

inline constexpr auto kBinaryFormats = std::to_array<Choice>({
    byFront("INTeger"),
    byFront("UNSigned Binary"),
    byFront("SIG - Sign And Magnitude (+=0)", 2000),
    byFront("SIM - Sign And Magnitude (+=1)", 2000),
    byFront("SIGn And Magnitude", 0, 1999),
    byFront("ONE's Complement"),
    byFront("TWO's Complement"),
    byFront("OFFset Binary"),
    byFront("FPT - Float", kAfter1996),
    byFront("BCD - Binary Coded Decimal", 2000),
    byFront("BWT - Bit Weight", kFirstBitWeights),
    byFront("OTHer"),
});
inline constexpr auto kTypes = std::to_array<Choice>({
    byFront("NON - None"),
    byFront("PRS - Pair Set"),
    byFront("COE - Coefficients"),
    byFront("NPC - Coefficients (Negative Powers of X)", kFirstNegativePowers),
    byFront("DER - Derived"),
    byFront("DIS - Discrete"),
    byFront("PTM - PCM Time", kAfter1996),
    byFront("BTM - 1553 Time", kAfter1996),
    byFront("OTH - Other"),
    byFront("SP  - Special Processing"),
    byFront("VID - Video"),
    byFront("VOI - Voice"),
});
inline constexpr auto kLinkTypes = std::to_array<Choice>({
    {.value = "ANA", .text = "ANAlog"},
    {.value = "PCM", .text = "PCM"},
    {.value = "PAM", .text = "PAM"},
    {.value = "OTH", .text = "OTHer"},
});
// The groups (TM), (EU) and (TM & EU) have the plain classes with one more letter. 106-96
// stores "Other" differently.
inline constexpr auto kClassifications = std::to_array<Choice>({
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
inline constexpr auto kYesNo = std::to_array<Choice>({
    {.value = "Y", .text = "Yes"},
    {.value = "N", .text = "No"},
});
inline constexpr auto kBusTimes = std::to_array<Choice>({
    {.value = "R", .text = "Response Time"},
    {.value = "M", .text = "Microsecond Time"},
    {.value = "L", .text = "Low Order Time"},
    {.value = "H", .text = "High Order Time"},
});
inline constexpr auto kPcmTimes = std::to_array<Choice>({
    {.value = "M", .text = "Microsecond Time"},
    {.value = "L", .text = "Low Order Time"},
    {.value = "H", .text = "High Order Time"},
});
inline constexpr auto kAlgorithms = std::to_array<Choice>({
    {.value = "A", .text = "Algorithm"},
    {.value = "N", .text = "Name Of Algorithm"},
});
inline constexpr auto kVoiceEncodings = std::to_array<Choice>({
    {.value = "OTHR", .text = "OTHR"},
    {.value = "CVSD", .text = "CVSD"},
});

}  // namespace choice

constexpr Field text(std::string_view code, std::string_view label, const char* page,
                     std::size_t limit = 0) {
    return {.code = code, .label = label, .page = page, .limit = limit};
}
constexpr Field comment(std::string_view code, std::string_view label, const char* page,
                        std::size_t limit = 0) {
    return {.code = code, .label = label, .page = page, .limit = limit, .kind = FieldKind::Comment};
}
constexpr Field choiceOf(std::string_view code, std::string_view label, const char* page,
                         std::size_t limit, std::span<const Choice> choices) {
    return {.code = code,
            .label = label,
            .page = page,
            .limit = limit,
            .kind = FieldKind::Choice,
            .choices = choices};
}
/// The most rows that a count of this many digits can have.
constexpr std::size_t rowsOf(std::size_t digits) {
    std::size_t rows = 1;
    for (std::size_t i = 0; i < digits; ++i) {
        rows *= 10;
    }
    return rows - 1;
}
constexpr Field countOf(std::string_view code, std::string_view title, const char* page,
                        std::size_t digits, int firstEdition = 0) {
    return {.code = code,
            .label = title,
            .page = page,
            .limit = digits,
            .kind = FieldKind::Count,
            .firstEdition = firstEdition,
            .rows = rowsOf(digits)};
}
constexpr Field ofList(const Field& count, std::string_view code, std::string_view label,
                       std::size_t limit) {
    return {.code = code,
            .label = label,
            .page = count.page,
            .limit = limit,
            .firstEdition = count.firstEdition,
            .list = count.code};
}
/// The same row with a value for a missing command.
constexpr Field orElse(Field field, std::string_view missing) {
    field.missing = missing;
    return field;
}
constexpr Field from(int firstEdition, Field field) {
    field.firstEdition = firstEdition;
    return field;
}

/// The name of the measurement, and of the record.
inline constexpr Field kDcn{.code = "DCN", .limit = 32};

inline constexpr auto kTrd1 = text("TRD1", "Type:", eu_page::kTransducer);
inline constexpr auto kTrd2 = text("TRD2", "Model Number:", eu_page::kTransducer);
inline constexpr auto kTrd3 = text("TRD3", "Serial Number:", eu_page::kTransducer);
inline constexpr Field kTrd4{.code = "TRD4",
                             .label = "Classification:",
                             .page = eu_page::kTransducer,
                             .limit = 2,
                             .kind = FieldKind::Choice,
                             .choices = choice::kClassifications,
                             .limit1996 = 4};
inline constexpr Field kTrd5{.code = "TRD5",
                             .label = "Origination Date:",
                             .page = eu_page::kTransducer,
                             .kind = FieldKind::Date};
inline constexpr auto kTrd6 = text("TRD6", "Revision Number:", eu_page::kTransducer);
inline constexpr auto kTrd7 = text("TRD7", "Orientation:", eu_page::kTransducer);
inline constexpr auto kPoc1 = text("POC1", "Name:", eu_page::kContact);
inline constexpr auto kPoc2 = text("POC2", "Agency:", eu_page::kContact);
inline constexpr auto kPoc3 = comment("POC3", "Address:", eu_page::kContact);
inline constexpr auto kPoc4 = text("POC4", "Telephone:", eu_page::kContact);
inline constexpr auto kMn1 = text("MN1", "Description:", eu_page::kMeasurement);
inline constexpr auto kMn2 = text("MN2", "Excitation Voltage:", eu_page::kMeasurement);
inline constexpr auto kMn3 = text("MN3", "Engineering Units:", eu_page::kMeasurement);
inline constexpr auto kMn4 =
    choiceOf("MN4", "Link Type:", eu_page::kMeasurement, 3, choice::kLinkTypes);

inline constexpr std::string_view kFormatBox = "Telemetry Value Definition";
inline constexpr std::string_view kTypeBox = "Data Conversion";
inline constexpr Field kBfm{.code = "BFM",
                            .label = "Binary Format:",
                            .box = kFormatBox,
                            .page = eu_page::kInformation,
                            .limit = choice::kStored,
                            .kind = FieldKind::Choice,
                            .choices = choice::kBinaryFormats};
inline constexpr Field kFpf{.code = "FPF",
                            .label = "Floating Point Format:",
                            .box = kFormatBox,
                            .page = eu_page::kInformation,
                            .firstEdition = 2000};
inline constexpr auto kBwtN = orElse(
    countOf("BWT\\N", "Edit Bit Weight Values", eu_page::kInformation, 3, kFirstBitWeights), "0");
inline constexpr Field kBwtb{.code = "BWTB-n",
                             .label = "Bit Number",
                             .page = eu_page::kInformation,
                             .limit = 3,
                             .kind = FieldKind::Count,
                             .firstEdition = kFirstBitWeights,
                             .list = kBwtN.code};
inline constexpr auto kBwtv = ofList(kBwtN, "BWTV-n", "Bit Value (Enter 'S' for sign bit)", 32);
inline constexpr auto kMcN =
    orElse(countOf("MC\\N", "In Flight Calibration", eu_page::kInFlight, 1), "N");
inline constexpr auto kMc1 = ofList(kMcN, "MC1-n", "Stimulus", 32);
inline constexpr auto kMc2 = ofList(kMcN, "MC2-n", "Telemetry Value", 16);
inline constexpr auto kMc3 = ofList(kMcN, "MC3-n", "Data Value", 32);
inline constexpr auto kMaN =
    orElse(countOf("MA\\N", "Ambient Value", eu_page::kAmbient, 1, kFirstAmbientList), "N");
inline constexpr auto kMa1 = ofList(kMaN, "MA1-n", "Stimulus", 32);
inline constexpr auto kMa2 = ofList(kMaN, "MA2-n", "Telemetry Value", 16);
inline constexpr auto kMa3 = ofList(kMaN, "MA3-n", "Data Value", 32);
/// The one value of a column in editions where it is not a list.
constexpr Field singleOf(Field column) {
    column.code = stemOf(column.code);
    column.list = {};
    column.firstEdition = 0;
    column.lastEdition = kFirstAmbientList - 1;
    return column;
}
inline constexpr auto kSingleMa1 = singleOf(kMa1);
inline constexpr auto kSingleMa2 = singleOf(kMa2);
inline constexpr auto kSingleMa3 = singleOf(kMa3);
inline constexpr auto kMot1 = text("MOT1", "Value High:", eu_page::kLimits, 32);
inline constexpr auto kMot2 = text("MOT2", "Value Low:", eu_page::kLimits, 32);
inline constexpr auto kMot3 = text("MOT3", "Limit High:", eu_page::kLimits, 32);
inline constexpr auto kMot4 = text("MOT4", "Limit Low:", eu_page::kLimits, 32);
inline constexpr auto kMot5 = from(kAfter1996, text("MOT5", "Warning High:", eu_page::kLimits, 32));
inline constexpr auto kMot6 = from(kAfter1996, text("MOT6", "Warning Low:", eu_page::kLimits, 32));
inline constexpr auto kSr = text("SR", "Sample Rate:", eu_page::kLimits);
inline constexpr Field kCrt{.code = "CRT",
                            .label = "Date/Time Released:",
                            .box = kTypeBox,
                            .page = eu_page::kInformation,
                            .limit = 19,
                            .kind = FieldKind::DateTime,
                            .firstEdition = 2004};
inline constexpr Field kDct{.code = "DCT",
                            .label = "Type:",
                            .box = kTypeBox,
                            .page = eu_page::kInformation,
                            .limit = choice::kStored,
                            .kind = FieldKind::Choice,
                            .choices = choice::kTypes,
                            .missing = "NON"};

// The conversion types.
inline constexpr auto kPsN = countOf("PS\\N", {}, eu_page::kPairSets, 2);
inline constexpr auto kPs1 = orElse(text("PS1", {}, eu_page::kPairSets, 1), "N");
inline constexpr auto kPs2 = orElse(text("PS2", {}, eu_page::kPairSets, 2), "1");
inline constexpr auto kPs3 = ofList(kPsN, "PS3-n", {}, 16);
inline constexpr auto kPs4 = ofList(kPsN, "PS4-n", {}, 32);
inline constexpr auto kCoN = countOf("CO\\N", "Terms", eu_page::kCoefficients, 2);
inline constexpr auto kCo1 = orElse(
    choiceOf("CO1", "Derived From Pair Set?", eu_page::kCoefficients, 1, choice::kYesNo), "N");
/// The offset; the terms are numbered.
inline constexpr auto kCo = text("CO", "C(0) - (Offset):", eu_page::kCoefficients, 32);
inline constexpr auto kCoTerm = ofList(kCoN, "CO-n", {}, 32);
inline constexpr auto kNpcN =
    countOf("NPC\\N", "Terms", eu_page::kCoefficients, 2, kFirstNegativePowers);
inline constexpr auto kNpc1 = from(
    kFirstNegativePowers,
    orElse(choiceOf("NPC1", "Derived From Pair Set?", eu_page::kCoefficients, 1, choice::kYesNo),
           "N"));
inline constexpr auto kNpc =
    from(kFirstNegativePowers, text("NPC", "C(0) - (Offset):", eu_page::kCoefficients, 32));
inline constexpr auto kNpcTerm = ofList(kNpcN, "NPC-n", {}, 32);
inline constexpr auto kOth = comment("OTH", "Other:", eu_page::kOther);
inline constexpr auto kDpat =
    from(2009, choiceOf("DPAT", "Algorithm Type:", eu_page::kDerived, 1, choice::kAlgorithms));
inline constexpr auto kDpa = from(kAfter1996, comment("DPA", "Algorithm:", eu_page::kDerived));
inline constexpr auto kDptm = from(2009, text("DPTM", "Trigger Measurand:", eu_page::kDerived, 32));
inline constexpr Field kDpno{.code = "DPNO",
                             .label = "Number Of Occurrences:",
                             .page = eu_page::kDerived,
                             .limit = 2,
                             .kind = FieldKind::Digits,
                             .firstEdition = 2009};
inline constexpr auto kDpN = [] {
    auto field = countOf("DP\\N", "Measurands", eu_page::kDerived, 2);
    field.limit1996 = 1;
    return field;
}();
inline constexpr auto kDp = ofList(kDpN, "DP-n", "Measurand", 32);
inline constexpr auto kDpcN = countOf("DPC\\N", "Constants", eu_page::kDerived, 2, kAfter1996);
inline constexpr auto kDpc = ofList(kDpcN, "DPC-n", "Constant", 32);
inline constexpr auto kDicN = countOf("DIC\\N", "Events", eu_page::kDiscrete, 2);
inline constexpr Field kDiciN{.code = "DICI\\N",
                              .label = "Number Of Indicators:",
                              .page = eu_page::kDiscrete,
                              .limit = 2,
                              .kind = FieldKind::Digits,
                              .prompt = "Enter Number Of Indicators",
                              .missing = "0"};
inline constexpr auto kDicc = ofList(kDicN, "DICC-n", "Conversion Data", 16);
inline constexpr auto kDicp = ofList(kDicN, "DICP-n", "Event Definition", 240);
inline constexpr auto kBtm = choiceOf("BTM", "1553 Time:", eu_page::kBusTime, 1, choice::kBusTimes);
inline constexpr auto kPtm = choiceOf("PTM", "PCM Time:", eu_page::kPcmTime, 1, choice::kPcmTimes);
inline constexpr auto kVoiE = [] {
    auto field =
        choiceOf("VOI\\E", "Encoding Method:", eu_page::kVoice, 4, choice::kVoiceEncodings);
    field.limit1996 = 64;
    return field;
}();
inline constexpr auto kVoiD = comment("VOI\\D", "Description:", eu_page::kVoice, 640);
inline constexpr auto kVidE = text("VID\\E", "Encoding Method:", eu_page::kVideo, 64);
inline constexpr auto kVidD = comment("VID\\D", "Description:", eu_page::kVideo, 640);

inline constexpr auto kCom = comment("COM", "Comment:", eu_page::kComments);

}  // namespace c

/// All commands of the group in the order in which they are written, the conversion types one
/// after the other: a record has only those of its own type.
[[nodiscard]] std::span<const Field> conversionVocabulary();

}  // namespace kavu
