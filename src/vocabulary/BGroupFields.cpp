#include "vocabulary/BGroupFields.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kavu {

namespace {

constexpr std::string_view kGroupPage = "1553_select_bus";
constexpr std::string_view kBusPage = "1553_EDIT_BUS1";
constexpr std::string_view kMessagesPage = "1553_EDIT_BUS2";
constexpr std::string_view kTrackPage = "1553_EDIT_BUS4";
constexpr std::string_view kMessagePage = "1553_EDIT_MESSAGE1";
constexpr std::string_view kMeasurementsPage = "1553_EDIT_MESSAGE2";
constexpr std::string_view kReceivePage = "1553_EDIT_MESSAGE3";
constexpr std::string_view kReceivePageBefore = "1553_EDIT_MESSAGE3_PRE_2011";
constexpr std::string_view kSpecialPage = "1553_EDIT_MESSAGE4";
constexpr std::string_view kModeCodePage = "1553_EDIT_MESSAGE5";
constexpr std::string_view kArincPage = "1553_EDIT_MESSAGE6";
constexpr std::string_view kMeasurementPage = "1553_edit_measurement_info";
constexpr std::string_view kLocationPage = "1553_edit_measurement_location";
constexpr std::string_view kUserDefined = "User Defined Words";

constexpr auto kBusParities = std::to_array<Choice>({
    {"NO", "NONE", "None"},
    {"OD", "ODD", "Odd"},
    {"EV", "EVEN"},
});
constexpr auto kBusNumbers = std::to_array<Choice>({
    {"000", "000"},
    {"001", "001"},
    {"010", "010"},
    {"011", "011"},
    {"100", "100"},
    {"101", "101"},
    {"110", "110"},
    {"111", "111"},
});
constexpr auto kBusTypes = std::to_array<Choice>({
    {"1553", "1553", "1553"},
    {kBusTypeArinc, kBusTypeArinc, "ARINC 429"},
});
constexpr auto kParities = std::to_array<Choice>({
    {"EV", "Even", "Even"},
    {"OD", "Odd", "Odd"},
    {"NO", "None", "None"},
});
constexpr auto kParityOrders = std::to_array<Choice>({
    {"L", "Leads Word", "Leads Word"},
    {"T", "Trails Word", "Trails Word"},
});
constexpr auto kTransferOrders = std::to_array<Choice>({
    {"MSB", "MSB First", "MSB First"},
    {"LSB", "LSB First", "LSB First"},
    {"DEF", "Default", "Default"},
});
constexpr auto kCommandWordEntries = std::to_array<Choice>({
    {kCommandWordValue, "Use Command Word value", "Command Word"},
    {kCommandWordDerived, "Derive from other fields", "Address Fields"},
});
constexpr auto kTransmitModes = std::to_array<Choice>({
    {"1", "Transmit", "Transmit"},
    {"0", "Receive", "Receive"},
});
constexpr auto kTrueFalse = std::to_array<Choice>({
    {"T", "True", "True"},
    {"F", "False", "False"},
});
constexpr auto kSdiCodes = std::to_array<Choice>({
    {"ALL", "ALL", "ALL SDI"},
    {"0", "0", "SDI Code 0"},
    {"1", "1", "SDI Code 1"},
    {"2", "2", "SDI Code 2"},
    {"3", "3", "SDI Code 3"},
});
constexpr auto kMeasurementTypes = std::to_array<Choice>({
    {"D", "Data Word", "Data Word"},
    {"C", "Command Word", "Command Word"},
    {"S", "Status Word", "Status Word"},
    {"T", "Time Word", "Time Word"},
});

/// Where the fields of a level are: in the rows of which count, and on which page.
struct Level {
    std::string_view list{};
    std::string_view page{};
};
constexpr Field textOf(Level level, std::string_view code, std::string_view label,
                       std::size_t limit, std::string_view element, int firstEdition = 0,
                       int lastEdition = 0) {
    return {.code = code,
            .label = label,
            .page = level.page,
            .limit = limit,
            .firstEdition = firstEdition,
            .lastEdition = lastEdition,
            .element = element,
            .list = level.list};
}
constexpr Field commentOf(Level level, std::string_view code, std::string_view label,
                          std::size_t limit, std::string_view element) {
    auto field = textOf(level, code, label, limit, element);
    field.kind = FieldKind::Comment;
    return field;
}
constexpr Field choiceOf(Level level, std::string_view code, std::string_view label,
                         std::size_t limit, std::string_view element,
                         std::span<const Choice> choices, int firstEdition = 0) {
    auto field = textOf(level, code, label, limit, element, firstEdition);
    field.kind = FieldKind::Choice;
    field.choices = choices;
    return field;
}
constexpr Field countOf(Level level, std::string_view code, std::string_view label,
                        std::string_view element, std::size_t limit = 0, int lastEdition = 0) {
    auto field = textOf(level, code, label, limit, element, 0, lastEdition);
    field.kind = FieldKind::Count;
    field.rows = kMostBusRows;
    field.writesZero = true;
    return field;
}
constexpr Field prompted(Field field, std::string_view prompt) {
    field.prompt = prompt;
    return field;
}
constexpr Field referring(Field field, Refers refers) {
    field.refersTo = refers;
    return field;
}

constexpr Field inSchema(std::string_view elementSchema, Field field) {
    field.elementSchema = elementSchema;
    return field;
}
/// A row of the numbered receive commands. XML has one receive command, without a number.
constexpr Field onlyWritten(Field field) {
    field.isRead = false;
    field.elementSchema = kNotInSchema;
    return field;
}
constexpr Field plain(Field field) {
    field.isPlainInXml = true;
    return field;
}
constexpr Field commandWord(Field field) {
    field.elementRead = "Bus/Message/Name/CommandWordValue";
    return field;
}

/// The codes and the elements of one user defined word.
struct WordTexts {
    std::array<std::string_view, 5> codes;
    std::array<std::string_view, 5> elements;
};
constexpr std::array<Field, 5> userWord(const WordTexts& texts) {
    constexpr Level kLevel{kBusCount, kBusPage};
    constexpr int kAttributes = 2009;
    const auto& [codes, elements] = texts;
    std::array<Field, 5> fields = {
        textOf(kLevel, codes[0], "Measurement Name", 32, elements[0], 2007),
        choiceOf(kLevel, codes[1], "Parity", 2, elements[1], kParities, kAttributes),
        choiceOf(kLevel, codes[2], "Parity Transfer Order", 1, elements[2], kParityOrders,
                 kAttributes),
        textOf(kLevel, codes[3], "Bit Mask", 16, elements[3], kAttributes),
        choiceOf(kLevel, codes[4], "Transfer Order", 3, elements[4], kTransferOrders, kAttributes),
    };
    for (auto& field : fields) {
        field.box = kUserDefined;
    }
    return fields;
}
constexpr auto kWord1 =
    userWord({{"UMN1-n", "U1P-n", "U1PT-n", "U1M-n", "U1T-n"},
              {"Bus/UserDefined/Word1/MeasurementName", "Bus/UserDefined/Word1/Parity",
               "Bus/UserDefined/Word1/ParityTransferOrder", "Bus/UserDefined/Word1/BitMask",
               "Bus/UserDefined/Word1/TransferOrder"}});
constexpr auto kWord2 =
    userWord({{"UMN2-n", "U2P-n", "U2PT-n", "U2M-n", "U2T-n"},
              {"Bus/UserDefined/Word2/MeasurementName", "Bus/UserDefined/Word2/Parity",
               "Bus/UserDefined/Word2/ParityTransferOrder", "Bus/UserDefined/Word2/BitMask",
               "Bus/UserDefined/Word2/TransferOrder"}});
constexpr auto kWord3 =
    userWord({{"UMN3-n", "U3P-n", "U3PT-n", "U3M-n", "U3T-n"},
              {"Bus/UserDefined/Word3/MeasurementName", "Bus/UserDefined/Word3/Parity",
               "Bus/UserDefined/Word3/ParityTransferOrder", "Bus/UserDefined/Word3/BitMask",
               "Bus/UserDefined/Word3/TransferOrder"}});

constexpr auto kFields = std::to_array<Field>({
    referring(textOf({{}, kGroupPage}, "DLN", "Data Link Name:", 32, "@Name"), Refers::LinkName),
    textOf({{}, kGroupPage}, "TA", "Test Article:", 16, "TestItem"),
    choiceOf({{}, kGroupPage}, "BP", "Bus Parity:", 2, "BusParity", kBusParities, 2007),
    countOf({{}, kGroupPage}, "NBS\\N", "Defined Buses", "Bus"),
    choiceOf({kBusCount, kBusPage}, "BID-n", "Number:", 4, "Bus/Number", kBusNumbers),
    textOf({kBusCount, kBusPage}, "BNA-n", "Name:", 32, "Bus/Name"),
    choiceOf({kBusCount, kBusPage}, "BT-n", "Bus Type:", 8, "Bus/Type", kBusTypes, 2004),
    kWord1[0],
    kWord1[1],
    kWord1[2],
    kWord1[3],
    kWord1[4],
    kWord2[0],
    kWord2[1],
    kWord2[2],
    kWord2[3],
    kWord2[4],
    kWord3[0],
    kWord3[1],
    kWord3[2],
    kWord3[3],
    kWord3[4],
    countOf({kBusCount, kTrackPage}, "TK\\N-n", "Track Sequences",
            "Bus/RecordingDescription/TrackSequence"),
    prompted(textOf({kBusTrackCount, kTrackPage}, "TS-n-t", "Track Sequence", 3,
                    "Bus/RecordingDescription/TrackSequence"),
             "Enter New Track Sequence"),
    countOf({kBusCount, kMessagesPage}, "NMS\\N-n", "Messages", "Bus/Message", 3, 0),
    prompted(textOf({kBusMessageCount, kMessagePage}, "MID-n-m", "Message Number:", 8,
                    "Bus/Message/Number"),
             "Enter New Message Number"),
    textOf({kBusMessageCount, kMessagePage}, "MNA-n-m", "Message Name:", 32, "Bus/Message/Name"),
    plain(choiceOf({kBusMessageCount, kMessagePage}, "CWE-n-m", "Command Word Entry:", 1,
                   "Bus/Message/CommandWordType", kCommandWordEntries, 2011)),
    commandWord(textOf({kBusMessageCount, kMessagePage}, "CMD-n-m", "Command Word:", 4,
                       "Bus/Message/CommandWordValue", 2011)),
    inSchema("Bus/Message/Address/RemoteTerminal/Name",
             textOf({kBusMessageCount, kMessagePage}, "TRN-n-m", "Remote Terminal Name:", 32,
                    "Bus/Message/RemoteTerminal/Name")),
    inSchema("Bus/Message/Address/RemoteTerminal/Address",
             textOf({kBusMessageCount, kMessagePage}, "TRA-n-m", "Remote Terminal Address:", 5,
                    "Bus/Message/RemoteTerminal/Address")),
    inSchema("Bus/Message/Address/SubTerminal/Name",
             textOf({kBusMessageCount, kMessagePage}, "STN-n-m", "Sub Terminal Name:", 32,
                    "Bus/Message/SubTerminal/Name")),
    inSchema("Bus/Message/Address/SubTerminal/Address",
             textOf({kBusMessageCount, kMessagePage}, "STA-n-m", "Sub Terminal Address:", 5,
                    "Bus/Message/SubTerminal/Address")),
    inSchema("Bus/Message/Address/TransmitReceiveMode",
             choiceOf({kBusMessageCount, kMessagePage}, "TRM-n-m", "Mode:", 1,
                      "Bus/Message/TransmitReceiveMode", kTransmitModes)),
    inSchema("Bus/Message/Address/DataWordCountOrModeCode",
             textOf({kBusMessageCount, kMessagePage}, "DWC-n-m", "Data Word Count:", 5,
                    "Bus/Message/DataWordCountOrModeCode")),
    commentOf({kBusMessageCount, kSpecialPage}, "SPR-n-m", "Special Processing", 200,
              "Bus/Message/SpecialProcessing"),
    choiceOf({kBusMessageCount, kMessagePage}, "BMG\\FOT-n-m", "Message Filter/Overwrite:", 1,
             "Bus/Message/FilterOverwriteTag", kTrueFalse, 2009),
    textOf({kBusMessageCount, kArincPage}, "LBL-n-m", "Label:", 8,
           "Bus/Message/ArincMessageDefinition/Label", 2004),
    choiceOf({kBusMessageCount, kArincPage}, "SDI-n-m", "SDI Code:", 3,
             "Bus/Message/ArincMessageDefinition/Code", kSdiCodes, 2004),
    choiceOf({kBusMessageCount, kReceivePage}, "RCWE-n-m", "Command Word Entry:", 1,
             "Bus/Message/RTRTReceiveCommandList/CommandWordType", kCommandWordEntries, 2011),
    textOf({kBusMessageCount, kReceivePage}, "RCMD-n-m", "Receive Command Word:", 4,
           "Bus/Message/RTRTReceiveCommandList/CommandWordValue", 2011),
    inSchema("Bus/Message/RTRTReceiveCommandList/Address/RemoteTerminal/Name",
             textOf({kBusMessageCount, kReceivePage}, "RTRN-n-m", "Remote Terminal Name:", 32,
                    "Bus/Message/RTRTReceiveCommandList/RemoteTerminal/Name", 2011)),
    inSchema("Bus/Message/RTRTReceiveCommandList/Address/RemoteTerminal/Address",
             textOf({kBusMessageCount, kReceivePage}, "RTRA-n-m", "Remote Terminal Address:", 5,
                    "Bus/Message/RTRTReceiveCommandList/RemoteTerminal/Address", 2011)),
    inSchema("Bus/Message/RTRTReceiveCommandList/Address/SubTerminal/Name",
             textOf({kBusMessageCount, kReceivePage}, "RSTN-n-m", "Sub Terminal Name:", 32,
                    "Bus/Message/RTRTReceiveCommandList/SubTerminal/Name", 2011)),
    inSchema("Bus/Message/RTRTReceiveCommandList/Address/SubTerminal/Address",
             textOf({kBusMessageCount, kReceivePage}, "RSTA-n-m", "Sub Terminal Address:", 5,
                    "Bus/Message/RTRTReceiveCommandList/SubTerminal/Address", 2011)),
    inSchema("Bus/Message/RTRTReceiveCommandList/Address/DataWordCount",
             textOf({kBusMessageCount, kReceivePage}, "RDWC-n-m", "Data Word Count:", 5,
                    "Bus/Message/RTRTReceiveCommandList/DataWordCount", 2011)),
    onlyWritten(countOf({kBusMessageCount, kReceivePageBefore}, "RNRT\\N-n-m",
                        "RT/RT Receive Commands", "Bus/Message/RTRTReceiveCommandList", 0, 1996)),
    onlyWritten(textOf({kReceiveCount, kReceivePageBefore}, "RTRN-n-m-r", "Remote Terminal Name:",
                       32, "Bus/Message/RTRTReceiveCommandList/RemoteTerminal/Name", 0, 2009)),
    onlyWritten(textOf({kReceiveCount, kReceivePageBefore}, "RTRA-n-m-r",
                       "Remote Terminal Address:", 5,
                       "Bus/Message/RTRTReceiveCommandList/RemoteTerminal/Address", 0, 2009)),
    onlyWritten(textOf({kReceiveCount, kReceivePageBefore}, "RSTN-n-m-r", "Sub Terminal Name:", 32,
                       "Bus/Message/RTRTReceiveCommandList/SubTerminal/Name", 0, 2009)),
    onlyWritten(textOf({kReceiveCount, kReceivePageBefore}, "RSTA-n-m-r", "Sub Terminal Address:",
                       5, "Bus/Message/RTRTReceiveCommandList/SubTerminal/Address", 0, 2009)),
    onlyWritten(textOf({kReceiveCount, kReceivePageBefore}, "RDWC-n-m-r", "Data Word Count:", 5,
                       "Bus/Message/RTRTReceiveCommandList/DataWordCount", 0, 2009)),
    commentOf({kBusMessageCount, kModeCodePage}, "MCD-n-m", "Description:", 200,
              "Bus/Message/ModeCode/Description"),
    commentOf({kBusMessageCount, kModeCodePage}, "MCW-n-m", "Data Word Description:", 200,
              "Bus/Message/ModeCode/DataWordDescription"),
    countOf({kBusMessageCount, kMeasurementsPage}, "MN\\N-n-m", "Measurements",
            "Bus/Message/Measurement"),
    referring(textOf({kBusMeasurementCount, kMeasurementPage}, "MN-n-m-k", "Measurement Name:", 32,
                     "Bus/Message/Measurement/Name"),
              Refers::MeasurementName),
    choiceOf({kBusMeasurementCount, kMeasurementPage}, "MT-n-m-k", "Type:", 1,
             "Bus/Message/Measurement/Type", kMeasurementTypes, 2007),
    choiceOf({kBusMeasurementCount, kMeasurementPage}, "MN1-n-m-k", "Parity:", 2,
             "Bus/Message/Measurement/Parity", kParities),
    choiceOf({kBusMeasurementCount, kMeasurementPage}, "MN2-n-m-k", "Parity Transfer Order:", 1,
             "Bus/Message/Measurement/ParityTransferOrder", kParityOrders),
    choiceOf({kBusMeasurementCount, kMeasurementPage}, "BME\\FOT-n-m-k",
             "Measurement Filter/Overwrite:", 1, "Bus/Message/Measurement/FilterOverwriteTag",
             kTrueFalse, 2009),
    countOf({kBusMeasurementCount, kMeasurementPage}, "NML\\N-n-m-k", "Measurement Location",
            "Bus/Message/Measurement/Location"),
    prompted(textOf({kBusLocationCount, kLocationPage}, "MWN-n-m-k-j", "Word Number", 3,
                    "Bus/Message/Measurement/Location/WordNumber"),
             "Enter New Word Number"),
    textOf({kBusLocationCount, kLocationPage}, "MBM-n-m-k-j", "Bit Mask", 64,
           "Bus/Message/Measurement/Location/BitMask"),
    choiceOf({kBusLocationCount, kLocationPage}, "MTO-n-m-k-j", "Transfer Order", 3,
             "Bus/Message/Measurement/Location/TransferOrder", kTransferOrders),
    textOf({kBusLocationCount, kLocationPage}, "MFP-n-m-k-j", "Fragment Position", 1,
           "Bus/Message/Measurement/Location/FragmentNumber"),
    commentOf({{}, kGroupPage}, "COM", "Comments", 0, "Comments"),
});

/// The fields of one list, without the counts of the lists in it.
std::vector<Field> fieldsIn(std::string_view list) {
    std::vector<Field> fields;
    for (const auto& field : kFields) {
        if (field.list == list && !governsRows(field)) {
            fields.push_back(field);
        }
    }
    return fields;
}

/// A message's fields without those of its receive command, which have a list of their own in
/// every edition: see `BusLevel::Receive`.
std::vector<Field> messageFields() {
    auto fields = fieldsIn(kBusMessageCount);
    const auto receive = fieldsIn(kReceiveCount);
    std::erase_if(fields, [&](const Field& field) {
        return std::any_of(receive.begin(), receive.end(), [&](const Field& other) {
            return stemOf(other.code) == stemOf(field.code);
        });
    });
    return fields;
}

/// The fields of the receive command in every edition.
std::vector<Field> receiveFields() {
    auto fields = fieldsIn(kReceiveCount);
    for (auto& field : fields) {
        field.lastEdition = 0;
    }
    return fields;
}

}  // namespace

std::span<const Field> busFields(BusLevel level) {
    static const auto kLevels = std::to_array<std::vector<Field>>({
        fieldsIn({}),
        fieldsIn(kBusCount),
        messageFields(),
        fieldsIn(kBusMeasurementCount),
        fieldsIn(kBusLocationCount),
        fieldsIn(kBusTrackCount),
        receiveFields(),
    });
    return kLevels[static_cast<std::size_t>(level)];
}

const Field* findBusField(BusLevel level, std::string_view stem) {
    const auto fields = busFields(level);
    const auto found = std::find_if(fields.begin(), fields.end(), [stem](const Field& field) {
        return equalsIgnoreCase(stemOf(field.code), stem);
    });
    return found == fields.end() ? nullptr : &*found;
}

std::string_view countOfLevel(BusLevel level) {
    constexpr auto kCounts = std::to_array<std::string_view>({{},
                                                              kBusCount,
                                                              kBusMessageCount,
                                                              kBusMeasurementCount,
                                                              kBusLocationCount,
                                                              kBusTrackCount,
                                                              kReceiveCount});
    return kCounts[static_cast<std::size_t>(level)];
}

std::span<const Field> busVocabulary() {
    return kFields;
}

}  // namespace kavu
