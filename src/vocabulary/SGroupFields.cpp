#include "vocabulary/SGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr auto kMessageFields = std::to_array<Field>({
    message_field::kDataLink,
    message_field::kTestArticle,
    message_field::kStreamCount,
    message_field::kStreamName,
    message_field::kDataType,
    message_field::kLayout,
    message_field::kElementSize,
    message_field::kIdLocation,
    message_field::kLength,
    message_field::kDelimiter,
    message_field::kDelimiterLength,
    message_field::kFieldDelimiter,
    message_field::kStreamOrientation,
    message_field::kMessageCount,
    message_field::kId,
    message_field::kName,
    message_field::kFieldCount,
    message_field::kFieldNumber,
    message_field::kFieldPosition,
    message_field::kFieldLength,
    message_field::kMeasurementCount,
    message_field::kMeasurementName,
    message_field::kParity,
    message_field::kParityOrder,
    message_field::kMeasurementType,
    message_field::kFloatingPoint,
    message_field::kOrientation,
    message_field::kLocationCount,
    message_field::kLocationField,
    message_field::kMask,
    message_field::kTransferOrder,
    message_field::kFragment,
    message_field::kComment,
});

// --- Packet telemetry ---------------------------------------------------------------------------

constexpr std::string_view kInputData = "Packet1";
constexpr std::string_view kPrimaryHeader = "Packet2";
constexpr std::string_view kSecondaryHeader = "Packet3";
constexpr std::string_view kSourcePacket = "Packet4";
constexpr std::string_view kComments = "Packet5";

constexpr auto kErrorControl = std::to_array<Choice>({
    {"1", "1 - Frame Error Control Field is present"},
    {"0", "0 - Frame Error Control Field is not present"},
});
constexpr auto kErrorCorrection = std::to_array<Choice>({
    {"1", "1 - Convolutional Error Correction/Detection used"},
    {"0", "0 - Convolutional Error Correction/Detection is not used"},
});
constexpr auto kChannels = std::to_array<Choice>({
    {"000", "000 (0)"},
    {"001", "001 (1)"},
    {"010", "010 (2)"},
    {"011", "011 (3)"},
    {"100", "100 (4)"},
    {"101", "101 (5)"},
    {"110", "110 (6)"},
    {"111", "111 (7)"},
});
constexpr auto kPresent = std::to_array<Choice>({
    {"1", "1 - Field Present"},
    {"0", "0 - Field is not Present"},
});
constexpr auto kSync = std::to_array<Choice>({
    {"1", "1 - Privately defined data are inserted"},
    {"0", "0 - Octet-synced, forward-ordered source packets, or idle data are inserted"},
});
constexpr auto kParity = std::to_array<Choice>({
    {"EV", "Even"},
    {"OD", "Odd"},
    {"NO", "None"},
});
constexpr auto kParityOrder = std::to_array<Choice>({
    {"L", "Leads Word"},
    {"T", "Trails Word"},
});
constexpr auto kTransferOrder = std::to_array<Choice>({
    {"MSB", "MSB"},
    {"LSB", "LSB"},
});
constexpr auto kFragments = std::to_array<Choice>({
    {"1", "1"},
    {"2", "2"},
    {"3", "3"},
    {"4", "4"},
    {"5", "5"},
    {"6", "6"},
    {"7", "7"},
    {"8", "8"},
    {"9", "9"},
});

constexpr Field packet(Field field) {
    field.firstEdition = kPacketEdition;
    field.lastEdition = kLastPacketEdition;
    return field;
}
constexpr Field onPage(std::string_view page, std::string_view code, std::string_view label) {
    return packet({.code = code, .label = label, .page = page});
}
constexpr Field choice(std::span<const Choice> choices, Field field) {
    field.kind = FieldKind::Choice;
    field.choices = choices;
    return field;
}
constexpr Field inList(std::string_view list, Field field) {
    field.list = list;
    return packet(field);
}
constexpr Field count(std::string_view list, std::string_view code) {
    return inList(
        list,
        {.code = code, .kind = FieldKind::Count, .rows = kMostMessageRows, .writesZero = true});
}

/// The codes of a family, in the order of `PacketFamily`.
using FamilyCodes = std::array<std::string_view, 10>;

constexpr PacketFamily family(char letter, std::string_view list, const FamilyCodes& code) {
    return {
        .letter = letter,
        .count = count(list, code[0]),
        .name = inList(code[0], {.code = code[1],
                                 .label = "Measurement Name",
                                 .limit = 32,
                                 .refersTo = Refers::Measurement}),
        .parity =
            choice(kParity, inList(code[0], {.code = code[2], .label = "Parity", .limit = 2})),
        .parityOrder = choice(
            kParityOrder,
            inList(code[0], {.code = code[3], .label = "Parity Transfer Order", .limit = 1})),
        .locationCount = count(code[0], code[4]),
        .wordPosition = inList(code[4], {.code = code[5], .label = "Word Position"}),
        .wordLength = inList(code[4], {.code = code[6], .label = "Word Length"}),
        .mask = inList(code[4], {.code = code[7], .label = "BitMask"}),
        .transferOrder =
            choice(kTransferOrder, inList(code[4], {.code = code[8], .label = "Transfer Order"})),
        .fragment =
            choice(kFragments, inList(code[4], {.code = code[9], .label = "Fragment Position"})),
    };
}

constexpr auto kFrameHeader = family('T', {},
                                     {"TNMS\\N", "TMN-n", "TPAR-n", "TPTO-n", "TNML\\N-n",
                                      "TWP-n-m", "TWL-n-m", "TBM-n-m", "TTO-n-m", "TFP-n-m"});
constexpr auto kPacketHeader =
    family('H', packet_field::kPackets,
           {"HNMS\\N-n", "HMN-n-m", "HPAR-n-m", "HPTO-n-m", "HNML\\N-n-m", "HWP-n-m-k", "HWL-n-m-k",
            "HBM-n-m-k", "HTO-n-m-k", "HFP-n-m-k"});
constexpr auto kSourceData =
    family('S', packet_field::kPackets,
           {"SNMS\\N-n", "SMN-n-m", "SPAR-n-m", "SPTO-n-m", "SNML\\N-n-m", "SWP-n-m-k", "SWL-n-m-k",
            "SBM-n-m-k", "STO-n-m-k", "SFP-n-m-k"});

constexpr auto rowsOf(const PacketFamily& family) {
    return std::to_array<Field>({family.count, family.name, family.parity, family.parityOrder,
                                 family.locationCount, family.wordPosition, family.wordLength,
                                 family.mask, family.transferOrder, family.fragment});
}

template <std::size_t... sizes>
constexpr auto joined(const std::array<Field, sizes>&... parts) {
    std::array<Field, (sizes + ...)> all{};
    auto end = all.begin();
    ((end = std::copy(parts.begin(), parts.end(), end)), ...);
    return all;
}

constexpr auto kFrameFields = std::to_array<Field>({
    packet({.code = "DLN", .limit = 32, .refersTo = Refers::LinkName}),
    onPage(kInputData, "ASM", "Attached Synchronization Marker"),
    choice(kErrorControl, onPage(kInputData, "FEF", "Frame Error Control Field Flag")),
    choice(kErrorCorrection,
           onPage(kInputData, "CEF", "Convolutional Error Detection And Correction Flag")),
    onPage(kPrimaryHeader, "TFL", "Transfer Frame Length"),
    packet({.code = "TA",
            .label = "Test Article",
            .page = kPrimaryHeader,
            .prompt = "Enter Test Article ID"}),
    choice(kChannels, onPage(kPrimaryHeader, "VID", "Virtual Channel ID")),
    choice(kPresent, onPage(kPrimaryHeader, "OCF", "Operational Control Flag")),
    choice(kPresent, onPage(kPrimaryHeader, "SHF", "Transfer Frame Secondary Header")),
    choice(kSync, onPage(kPrimaryHeader, "OSF", "Sync Flag")),
    onPage(kSecondaryHeader, "SHL", "Secondary Header Length"),
});
constexpr auto kSourceFields = std::to_array<Field>({
    onPage(kSecondaryHeader, "DFL", "Data Field Length"),
    count({}, packet_field::kPackets),
});

constexpr Field ofPacket(std::string_view code, std::string_view label) {
    return inList(packet_field::kPackets, {.code = code, .label = label, .page = kSourcePacket});
}
constexpr auto kPacketRow = std::to_array<Field>({
    ofPacket(packet_field::kPacketHeaderFlag, "Secondary Header Flag"),
    ofPacket(packet_field::kProcessId, "Application Process ID"),
    ofPacket(packet_field::kDataLength, "Packet Data Length"),
    ofPacket(packet_field::kPacketHeaderLength, "Secondary Header Length"),
});
constexpr auto kLastFields = std::to_array<Field>({
    inList(packet_field::kPackets, {.code = packet_field::kPacketComment,
                                    .label = "Comment",
                                    .page = kSourcePacket,
                                    .kind = FieldKind::Comment}),
    packet({.code = "COM", .label = "Comments:", .page = kComments, .kind = FieldKind::Comment}),
});
constexpr auto kPacketFields = joined(kFrameFields, rowsOf(kFrameHeader), kSourceFields, kPacketRow,
                                      rowsOf(kPacketHeader), rowsOf(kSourceData), kLastFields);
constexpr auto kFields = joined(kPacketFields, kMessageFields);

}  // namespace

std::span<const Field> messageFields() {
    return kMessageFields;
}

std::span<const Field> packetFields() {
    return kPacketFields;
}

std::span<const Field> streamDataVocabulary() {
    return kFields;
}

const PacketFamily& packetFamily(char letter) {
    return letter == 'T' ? kFrameHeader : letter == 'H' ? kPacketHeader : kSourceData;
}

}  // namespace kavu
