// The C group: the rows of a conversion record. What the sheet, the writer and the check of
// limits do with a row is defined in `conversion`.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/FloatingPointFormats.h"

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
constexpr Choice byFront(std::string_view text, std::string_view xml, int firstEdition = 0,
                         int lastEdition = 0) {
    return {.value = storedFront(text),
            .text = text,
            .xml = xml,
            .firstEdition = firstEdition,
            .lastEdition = lastEdition};
}

/// The schema writes what bits a positive value has as the page does.
inline constexpr std::string_view kSignedPlus0 = "Sign and Magnitude Binary (+ 0)";
constexpr Choice withSchema(Choice choice, std::string_view schema) {
    choice.schema = schema;
    return choice;
}
inline constexpr auto kBinaryFormats = std::to_array<Choice>({
    byFront("INTeger", "Integer"),
    byFront("UNSigned Binary", "Unsigned Binary"),
    withSchema(byFront("SIG - Sign And Magnitude (+=0)", kSignedPlus0, 2000),
               "Sign and Magnitude Binary (+=0)"),
    withSchema(byFront("SIM - Sign And Magnitude (+=1)", "Sign and Magnitude Binary (+ 1)", 2000),
               "Sign and Magnitude Binary (+=1)"),
    withSchema(byFront("SIGn And Magnitude", kSignedPlus0, 0, 1999), kNotInSchema),
    byFront("ONE's Complement", "One's Complement"),
    byFront("TWO's Complement", "Two's Complement"),
    byFront("OFFset Binary", "Offset Binary"),
    byFront("FPT - Float", "Floating Point", kAfter1996),
    byFront("BCD - Binary Coded Decimal", "Binary Coded Decimal", 2000),
    byFront("BWT - Bit Weight", "Bit Weight", kFirstBitWeights),
    byFront("OTHer", "Other"),
});
inline constexpr auto kTypes = std::to_array<Choice>({
    byFront("NON - None", "None"),
    byFront("PRS - Pair Set", "Pair Sets"),
    byFront("COE - Coefficients", "Coefficients"),
    byFront("NPC - Coefficients (Negative Powers of X)", "Coefficients (Negative Powers Of X)",
            kFirstNegativePowers),
    byFront("DER - Derived", "Derived"),
    byFront("DIS - Discrete", "Discrete"),
    byFront("PTM - PCM Time", "PCM Time", kAfter1996),
    byFront("BTM - 1553 Time", "1553 Time", kAfter1996),
    byFront("OTH - Other", "Other"),
    byFront("SP  - Special Processing", "Special Processing"),
    byFront("VID - Video", "Video"),
    byFront("VOI - Voice", "Voice"),
});
inline constexpr auto kLinkTypes = std::to_array<Choice>({
    {"ANA", "ANAlog", "Analog"},
    {"PCM", "PCM", "PCM"},
    {"PAM", "PAM", "PAM"},
    {"OTH", "OTHer", "Other"},
});
// The groups (TM), (EU) and (TM & EU) have the plain classes with one more letter. 106-96
// stores "Other" differently.
inline constexpr auto kClassifications = std::to_array<Choice>({
    {.value = "T", .text = "T    - Top Secret", .xml = "Top Secret"},
    {.value = "S", .text = "S    - Secret", .xml = "Secret"},
    {.value = "C", .text = "C    - Confidential", .xml = "Confidential"},
    {.value = "U", .text = "U    - Unclassified", .xml = "Unclassified"},
    {.value = "OTH", .text = "OTH  - Other", .lastEdition = kOnly1996},
    {.value = "O", .text = "O    - Other", .xml = "Other", .firstEdition = kAfter1996},
    {.value = "TR", .text = "TR   - Top Secret (TM)", .xml = "Counts Top Secret"},
    {.value = "SR", .text = "SR   - Secret (TM)", .xml = "Counts Secret"},
    {.value = "CR", .text = "CR   - Confidential (TM)", .xml = "Counts Confidential"},
    {.value = "UR", .text = "UR   - Unclassified (TM)", .xml = "Counts Unclassified"},
    {.value = "OTHR", .text = "OTHR - Other (TM)", .lastEdition = kOnly1996},
    {.value = "OR", .text = "OR   - Other (TM)", .xml = "Counts Other", .firstEdition = kAfter1996},
    {.value = "TE", .text = "TE   - Top Secret (EU)", .xml = "EU Top Secret"},
    {.value = "SE", .text = "SE   - Secret (EU)", .xml = "EU Secret"},
    {.value = "CE", .text = "CE   - Confidential (EU)", .xml = "EU Confidential"},
    {.value = "UE", .text = "UE   - Unclassified (EU)", .xml = "EU Unclassified"},
    {.value = "OTHE", .text = "OTHE - Other (EU)", .lastEdition = kOnly1996},
    {.value = "OE", .text = "OE   - Other (EU)", .xml = "EU Other", .firstEdition = kAfter1996},
    {.value = "TB", .text = "TB   - Top Secret (TM & EU)", .xml = "Counts And EU Top Secret"},
    {.value = "SB", .text = "SB   - Secret (TM & EU)", .xml = "Counts And EU Secret"},
    {.value = "CB", .text = "CB   - Confidential (TM & EU)", .xml = "Counts And EU Confidential"},
    {.value = "UB", .text = "UB   - Unclassified (TM & EU)", .xml = "Counts And EU Unclassified"},
    {.value = "OTHB", .text = "OTHB - Other (TM & EU)", .lastEdition = kOnly1996},
    {.value = "OB",
     .text = "OB   - Other (TM & EU)",
     .xml = "Counts And EU Other",
     .firstEdition = kAfter1996},
});
inline constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});
inline constexpr auto kPairSetUses = std::to_array<Choice>({
    {"Y", {}, "Polynomial Curve Fit"},
    {"N", {}, "Table Lookup"},
});
inline constexpr auto kBusTimes = std::to_array<Choice>({
    {"R", "Response Time", "Response Time"},
    {"M", "Microsecond Time", "Microsecond Time"},
    {"L", "Low Order Time", "Low Order Time"},
    {"H", "High Order Time", "High Order Time"},
});
inline constexpr auto kPcmTimes = std::to_array<Choice>({
    {"M", "Microsecond Time", "Microsecond Time"},
    {"L", "Low Order Time", "Low Order Time"},
    {"H", "High Order Time", "High Order Time"},
});
inline constexpr auto kAlgorithms = std::to_array<Choice>({
    {"A", "Algorithm", "Algorithm"},
    {"N", "Name Of Algorithm", "Name Of Algorithm"},
});
inline constexpr auto kVoiceEncodings = std::to_array<Choice>({
    {"OTHR", "OTHR", "Other"},
    {"CVSD", "CVSD", "CVSD"},
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

constexpr Field plainInXml(Field field) {
    field.isPlainInXml = true;
    return field;
}
/// XML is read into the one value that older editions have.
constexpr Field readAsOne(Field field) {
    field.codeFromXml = stemOf(field.code);
    return field;
}

/// The name of the measurement, and of the record.
inline constexpr Field kDcn{.code = "DCN", .limit = 32, .element = "@Name"};

inline constexpr auto kTrd1 =
    inXml(text("TRD1", "Type:", eu_page::kTransducer), "TransducerInformation/Type");
inline constexpr auto kTrd2 =
    inXml(text("TRD2", "Model Number:", eu_page::kTransducer), "TransducerInformation/ModelNumber");
inline constexpr auto kTrd3 = inXml(text("TRD3", "Serial Number:", eu_page::kTransducer),
                                    "TransducerInformation/SerialNumber");
inline constexpr Field kTrd4{.code = "TRD4",
                             .label = "Classification:",
                             .page = eu_page::kTransducer,
                             .limit = 2,
                             .kind = FieldKind::Choice,
                             .element = "TransducerInformation/SecurityClassification",
                             .choices = choice::kClassifications,
                             .limit1996 = 4};
inline constexpr Field kTrd5{.code = "TRD5",
                             .label = "Origination Date:",
                             .page = eu_page::kTransducer,
                             .kind = FieldKind::Date,
                             .element = "TransducerInformation/OriginationDate"};
inline constexpr auto kTrd6 = inXml(text("TRD6", "Revision Number:", eu_page::kTransducer),
                                    "TransducerInformation/RevisionNumber");
inline constexpr auto kTrd7 =
    inXml(text("TRD7", "Orientation:", eu_page::kTransducer), "TransducerInformation/Orientation");
inline constexpr auto kPoc1 =
    inXml(text("POC1", "Name:", eu_page::kContact), "TransducerInformation/PointOfContact/Name");
inline constexpr auto kPoc2 = inXml(text("POC2", "Agency:", eu_page::kContact),
                                    "TransducerInformation/PointOfContact/Agency");
inline constexpr auto kPoc3 = inXml(comment("POC3", "Address:", eu_page::kContact),
                                    "TransducerInformation/PointOfContact/Address");
inline constexpr auto kPoc4 = inXml(text("POC4", "Telephone:", eu_page::kContact),
                                    "TransducerInformation/PointOfContact/Telephone");
inline constexpr auto kMn1 =
    inXml(text("MN1", "Description:", eu_page::kMeasurement), "Measurand/Description");
inline constexpr auto kMn2 =
    inXml(text("MN2", "Excitation Voltage:", eu_page::kMeasurement), "Measurand/ExcitationVoltage");
inline constexpr auto kMn3 =
    inXml(text("MN3", "Engineering Units:", eu_page::kMeasurement), "Measurand/EngineeringUnits");
inline constexpr auto kMn4 =
    inXml(choiceOf("MN4", "Link Type:", eu_page::kMeasurement, 3, choice::kLinkTypes),
          "Measurand/LinkType");

inline constexpr std::string_view kFormatBox = "Telemetry Value Definition";
inline constexpr std::string_view kTypeBox = "Data Conversion";
inline constexpr Field kBfm{.code = "BFM",
                            .label = "Binary Format:",
                            .box = kFormatBox,
                            .page = eu_page::kInformation,
                            .limit = choice::kStored,
                            .kind = FieldKind::Choice,
                            .element = "TelemetryValueDefinition/BinaryFormat",
                            .choices = choice::kBinaryFormats};
inline constexpr Field kFpf{.code = "FPF",
                            .label = "Floating Point Format:",
                            .box = kFormatBox,
                            .page = eu_page::kInformation,
                            .firstEdition = 2000};
inline constexpr auto kBwtN = inXml(
    orElse(countOf("BWT\\N", "Edit Bit Weight Values", eu_page::kInformation, 3, kFirstBitWeights),
           "0"),
    "TelemetryValueDefinition/BitWeight");
inline constexpr Field kBwtb{.code = "BWTB-n",
                             .label = "Bit Number",
                             .page = eu_page::kInformation,
                             .limit = 3,
                             .kind = FieldKind::Count,
                             .firstEdition = kFirstBitWeights,
                             .element = "TelemetryValueDefinition/BitWeight/BitNumber",
                             .list = kBwtN.code};
inline constexpr auto kBwtv =
    inXml(ofList(kBwtN, "BWTV-n", "Bit Value (Enter 'S' for sign bit)", 32),
          "TelemetryValueDefinition/BitWeight/BitWeightValue");
inline constexpr auto kMcN =
    inXml(orElse(countOf("MC\\N", "In Flight Calibration", eu_page::kInFlight, 1), "N"),
          "InflightCalibration");
inline constexpr auto kMc1 =
    readAsOne(inXml(ofList(kMcN, "MC1-n", "Stimulus", 32), "InflightCalibration/Stimulus"));
inline constexpr auto kMc2 = readAsOne(
    inXml(ofList(kMcN, "MC2-n", "Telemetry Value", 16), "InflightCalibration/TelemetryValue"));
inline constexpr auto kMc3 =
    readAsOne(inXml(ofList(kMcN, "MC3-n", "Data Value", 32), "InflightCalibration/DataValue"));
inline constexpr auto kMaN =
    inXml(orElse(countOf("MA\\N", "Ambient Value", eu_page::kAmbient, 1, kFirstAmbientList), "N"),
          "AmbientValue");
inline constexpr auto kMa1 =
    readAsOne(inXml(ofList(kMaN, "MA1-n", "Stimulus", 32), "AmbientValue/Stimulus"));
inline constexpr auto kMa2 =
    readAsOne(inXml(ofList(kMaN, "MA2-n", "Telemetry Value", 16), "AmbientValue/TelemetryValue"));
inline constexpr auto kMa3 =
    readAsOne(inXml(ofList(kMaN, "MA3-n", "Data Value", 32), "AmbientValue/DataValue"));
/// The one value of a column in editions where it is not a list.
constexpr Field singleOf(Field column) {
    column.code = stemOf(column.code);
    column.codeFromXml = {};
    column.element = {};
    column.list = {};
    column.firstEdition = 0;
    column.lastEdition = kFirstAmbientList - 1;
    return column;
}
inline constexpr auto kSingleMa1 = singleOf(kMa1);
inline constexpr auto kSingleMa2 = singleOf(kMa2);
inline constexpr auto kSingleMa3 = singleOf(kMa3);
inline constexpr auto kMot1 = inXml(text("MOT1", "Value High:", eu_page::kLimits, 32),
                                    "OtherInformation/MeasurementValue/High");
inline constexpr auto kMot2 = inXml(text("MOT2", "Value Low:", eu_page::kLimits, 32),
                                    "OtherInformation/MeasurementValue/Low");
inline constexpr auto kMot3 =
    inXml(text("MOT3", "Limit High:", eu_page::kLimits, 32), "OtherInformation/AlertValue/High");
inline constexpr auto kMot4 =
    inXml(text("MOT4", "Limit Low:", eu_page::kLimits, 32), "OtherInformation/AlertValue/Low");
inline constexpr auto kMot5 =
    inXml(from(kAfter1996, text("MOT5", "Warning High:", eu_page::kLimits, 32)),
          "OtherInformation/WarningValue/High");
inline constexpr auto kMot6 =
    inXml(from(kAfter1996, text("MOT6", "Warning Low:", eu_page::kLimits, 32)),
          "OtherInformation/WarningValue/Low");
inline constexpr auto kSr =
    inXml(text("SR", "Sample Rate:", eu_page::kLimits), "OtherInformation/SampleRate");
inline constexpr Field kCrt{.code = "CRT",
                            .label = "Date/Time Released:",
                            .box = kTypeBox,
                            .page = eu_page::kInformation,
                            .limit = 19,
                            .kind = FieldKind::DateTime,
                            .firstEdition = 2004,
                            .element = "DataConversion/@DateAndTimeReleased"};
inline constexpr Field kDct{.code = "DCT",
                            .label = "Type:",
                            .box = kTypeBox,
                            .page = eu_page::kInformation,
                            .limit = choice::kStored,
                            .kind = FieldKind::Choice,
                            .element = "DataConversion/@Type",
                            .choices = choice::kTypes,
                            .missing = "NON"};

// The conversion types.
inline constexpr auto kPsN =
    inXml(countOf("PS\\N", {}, eu_page::kPairSets, 2), "DataConversion/PairSets/Pair");
inline constexpr auto kPs1 = orElse(text("PS1", {}, eu_page::kPairSets, 1), "N");
inline constexpr auto kPs2 = inXml(orElse(text("PS2", {}, eu_page::kPairSets, 2), "1"),
                                   "DataConversion/PairSets/OrderOfFit");
inline constexpr auto kPs3 =
    inXml(ofList(kPsN, "PS3-n", {}, 16), "DataConversion/PairSets/Pair/TmValue");
inline constexpr auto kPs4 =
    inXml(ofList(kPsN, "PS4-n", {}, 32), "DataConversion/PairSets/Pair/EuValue");
inline constexpr auto kCoN = countOf("CO\\N", "Terms", eu_page::kCoefficients, 2);
inline constexpr auto kCo1 = inXml(
    orElse(choiceOf("CO1", "Derived From Pair Set?", eu_page::kCoefficients, 1, choice::kYesNo),
           "N"),
    "DataConversion/Coefficients/DerivedFromPairSet");
/// The offset; the terms are numbered.
inline constexpr auto kCo = inXml(text("CO", "C(0) - (Offset):", eu_page::kCoefficients, 32),
                                  "DataConversion/Coefficients/Coefficient");
inline constexpr auto kCoTerm =
    inXml(ofList(kCoN, "CO-n", {}, 32), "DataConversion/Coefficients/Coefficient");
inline constexpr auto kNpcN =
    countOf("NPC\\N", "Terms", eu_page::kCoefficients, 2, kFirstNegativePowers);
inline constexpr auto kNpc1 =
    inXml(from(kFirstNegativePowers, orElse(choiceOf("NPC1", "Derived From Pair Set?",
                                                     eu_page::kCoefficients, 1, choice::kYesNo),
                                            "N")),
          "DataConversion/NegativePowersOfX/DerivedFromPairSet");
inline constexpr auto kNpc =
    inXml(from(kFirstNegativePowers, text("NPC", "C(0) - (Offset):", eu_page::kCoefficients, 32)),
          "DataConversion/NegativePowersOfX/Coefficient");
inline constexpr auto kNpcTerm =
    inXml(ofList(kNpcN, "NPC-n", {}, 32), "DataConversion/NegativePowersOfX/Coefficient");
inline constexpr auto kOth =
    inXml(comment("OTH", "Other:", eu_page::kOther), "DataConversion/Other");
inline constexpr auto kDpat = plainInXml(inXml(
    from(2009, choiceOf("DPAT", "Algorithm Type:", eu_page::kDerived, 1, choice::kAlgorithms)),
    "DataConversion/Derived/Algorithm/@Type"));
inline constexpr auto kDpa =
    inXml(from(kAfter1996, comment("DPA", "Algorithm:", eu_page::kDerived)),
          "DataConversion/Derived/Algorithm");
inline constexpr auto kDptm =
    inXml(from(2009, text("DPTM", "Trigger Measurand:", eu_page::kDerived, 32)),
          "DataConversion/Derived/TriggerMeasurand");
inline constexpr Field kDpno{
    .code = "DPNO",
    .label = "Number Of Occurrences:",
    .page = eu_page::kDerived,
    .limit = 2,
    .kind = FieldKind::Digits,
    .firstEdition = 2009,
    .element = "DataConversion/Derived/TriggerMeasurand/@NumberOfOccurrences"};
inline constexpr auto kDpN = inXml(
    [] {
        auto field = countOf("DP\\N", "Measurands", eu_page::kDerived, 2);
        field.limit1996 = 1;
        return field;
    }(),
    "DataConversion/Derived/Measurand");
inline constexpr auto kDp =
    inXml(ofList(kDpN, "DP-n", "Measurand", 32), "DataConversion/Derived/Measurand");
inline constexpr auto kDpcN =
    inXml(countOf("DPC\\N", "Constants", eu_page::kDerived, 2, kAfter1996),
          "DataConversion/Derived/Constant");
inline constexpr auto kDpc =
    inXml(ofList(kDpcN, "DPC-n", "Constant", 32), "DataConversion/Derived/Constant");
inline constexpr auto kDicN =
    inXml(countOf("DIC\\N", "Events", eu_page::kDiscrete, 2), "DataConversion/Discrete/Event");
inline constexpr Field kDiciN{.code = "DICI\\N",
                              .label = "Number Of Indicators:",
                              .page = eu_page::kDiscrete,
                              .limit = 2,
                              .kind = FieldKind::Digits,
                              .element = "DataConversion/Discrete/NumberOfIndicators",
                              .prompt = "Enter Number Of Indicators",
                              .missing = "0"};
inline constexpr auto kDicc = inXml(ofList(kDicN, "DICC-n", "Conversion Data", 16),
                                    "DataConversion/Discrete/Event/ConversionData");
inline constexpr auto kDicp = inXml(ofList(kDicN, "DICP-n", "Event Definition", 240),
                                    "DataConversion/Discrete/Event/EventDefinition");
inline constexpr auto kBtm =
    plainInXml(inXml(choiceOf("BTM", "1553 Time:", eu_page::kBusTime, 1, choice::kBusTimes),
                     "DataConversion/Time1553"));
inline constexpr auto kPtm =
    plainInXml(inXml(choiceOf("PTM", "PCM Time:", eu_page::kPcmTime, 1, choice::kPcmTimes),
                     "DataConversion/PCMTime"));
inline constexpr auto kVoiE = inXml(
    [] {
        auto field =
            choiceOf("VOI\\E", "Encoding Method:", eu_page::kVoice, 4, choice::kVoiceEncodings);
        field.limit1996 = 64;
        return field;
    }(),
    "DataConversion/DigitalVoice/EncodingMethod");
inline constexpr auto kVoiD = inXml(comment("VOI\\D", "Description:", eu_page::kVoice, 640),
                                    "DataConversion/DigitalVoice/Description");
inline constexpr auto kVidE = inXml(text("VID\\E", "Encoding Method:", eu_page::kVideo, 64),
                                    "DataConversion/DigitalVideo/EncodingMethod");
inline constexpr auto kVidD = inXml(comment("VID\\D", "Description:", eu_page::kVideo, 640),
                                    "DataConversion/DigitalVideo/Description");

inline constexpr auto kCom = inXml(comment("COM", "Comment:", eu_page::kComments), "Comments");

// What only XML has, and the names that XML has for values of a page without a list of them.
inline constexpr Field kMna{.code = "MNA", .element = "Measurand/Alias", .bridgeOnly = true};
inline constexpr Field kFpfInXml{.code = kFpf.code,
                                 .kind = FieldKind::Choice,
                                 .element = "TelemetryValueDefinition/FloatingPointFormat",
                                 .choices = kFloatingPointFormats,
                                 .bridgeOnly = true};
inline constexpr Field kPs1InXml{.code = kPs1.code,
                                 .kind = FieldKind::Choice,
                                 .element = "DataConversion/PairSets/Application",
                                 .choices = choice::kPairSetUses,
                                 .bridgeOnly = true};

}  // namespace c

/// All commands of the group in the order in which they are written, the conversion types one
/// after the other: a record has only those of its own type.
[[nodiscard]] std::span<const Field> conversionVocabulary();

}  // namespace kavu
