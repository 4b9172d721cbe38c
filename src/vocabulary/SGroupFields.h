// The rows of the S group. Up to 106-07 it describes packet telemetry: transfer frames that carry
// source packets. From 106-09 on it describes message data: n is the stream, m the message, k the
// field or measurement, j its location. IRIG 106, Chapter 9, Packet Format Attributes and Message
// Data Attributes Group.
#pragma once

#include "vocabulary/DGroupFields.h"
#include "vocabulary/Field.h"
#include "vocabulary/FloatingPointFormats.h"
#include "vocabulary/StreamType.h"

#include <array>
#include <span>
#include <string_view>

namespace kavu {

/// S groups are packet telemetry from the first of these editions to the last.
inline constexpr int kPacketEdition = 2005;
inline constexpr int kLastPacketEdition = 2007;

/// The rows that any list of an S group can have.
inline constexpr std::size_t kMostMessageRows = kMostMeasurements;

// --- Message data -------------------------------------------------------------------------------

namespace message_choice {

inline constexpr auto kType = std::to_array<Choice>({
    {"BINARY", "Binary", "Binary"},
    {"ASCII", "ASCII", "ASCII"},
});
inline constexpr auto kLayout = std::to_array<Choice>({
    {"FIXED", "Fixed", "Fixed"},
    {"DELIMITED", "Delimited", "Delimited"},
});
/// XML has letters for what the group spells out.
inline constexpr auto kStreamOrientation = std::to_array<Choice>({
    {"LITTLE ENDIAN", "Little Endian"},
    {"BIG ENDIAN", "Big Endian"},
    {"B", "", "Big Endian"},
    {"L", "", "Little Endian"},
});
inline constexpr auto kParity = std::to_array<Choice>({
    {"EV", "Even", "Even"},
    {"OD", "Odd", "Odd"},
    {"NO", "None", "None"},
});
inline constexpr auto kParityOrder = std::to_array<Choice>({
    {"L", "Leads Word", "Leads Word"},
    {"T", "Trails Word", "Trails Word"},
});
inline constexpr auto kDataType = std::to_array<Choice>({
    {"ASCII", "ASCII", "ASCII"},
    {"FLOAT", "Float", "Float"},
    {"SIGNED", "Signed", "Signed"},
    {"UNSIGNED", "Unsigned", "Unsigned"},
    {"HEX", "Hex", "Hex"},
    {"OCTAL", "Octal", "Octal"},
    {"BINARY", "Binary", "Binary"},
});
inline constexpr auto kOrientation = std::to_array<Choice>({
    {"B", "Big Endian", "Big Endian"},
    {"L", "Little Endian", "Little Endian"},
});
inline constexpr auto kTransferOrder = std::to_array<Choice>({
    {"MSB", "MSB", "MSB First"},
    {"LSB", "LSB", "LSB First"},
});

}  // namespace message_choice

namespace message_field {

constexpr Field from2009(Field field) {
    field.firstEdition = kMessageDataEdition;
    return field;
}
constexpr Field in(std::string_view list, Field field) {
    field.list = list;
    return from2009(field);
}
constexpr Field choice(std::span<const Choice> choices, Field field) {
    field.kind = FieldKind::Choice;
    field.choices = choices;
    return field;
}
constexpr Field count(std::string_view list, std::string_view code, std::string_view element) {
    return in(list, {.code = code,
                     .kind = FieldKind::Count,
                     .element = element,
                     .rows = kMostMessageRows,
                     .writesZero = true});
}

inline constexpr std::string_view kPage = "Misc";
inline constexpr std::string_view kStreams = "NS\\N";
inline constexpr std::string_view kMessages = "NMS\\N-n";
inline constexpr std::string_view kFields = "NFLDS\\N-n-m";
inline constexpr std::string_view kMeasurements = "MN\\N-n-m";
inline constexpr std::string_view kLocations = "NML\\N-n-m-k";

inline constexpr auto kDataLink =
    from2009({.code = "DLN", .limit = 32, .element = "@Name", .refersTo = Refers::LinkName});
inline constexpr auto kTestArticle = from2009(
    {.code = "TA", .label = "Test Article:", .page = kPage, .limit = 16, .element = "TestItem"});
inline constexpr auto kStreamCount = count({}, kStreams, "Stream");
inline constexpr auto kStreamName =
    in(kStreams, {.code = "SNA-n", .label = "Stream Name:", .element = "Stream/Name"});
inline constexpr auto kDataType = choice(
    message_choice::kType,
    in(kStreams, {.code = "MDT-n", .label = "Message Data Type:", .element = "Stream/Type"}));
inline constexpr auto kLayout =
    choice(message_choice::kLayout,
           in(kStreams, {.code = "MDL-n", .label = "Data Layout:", .element = "Stream/Layout"}));
inline constexpr auto kElementSize = in(
    kStreams, {.code = "MES-n", .label = "Message Element Size:", .element = "Stream/ElementSize"});
inline constexpr auto kIdLocation = in(
    kStreams, {.code = "MIDL-n", .label = "Message ID Location:", .element = "Stream/IDLocation"});
inline constexpr auto kLength =
    in(kStreams, {.code = "MLEN-n", .label = "Message Length:", .element = "Stream/Fixed/Length"});
inline constexpr auto kDelimiter = in(kStreams, {.code = "MDEL-n",
                                                 .label = "Message Delimiter:",
                                                 .element = "Stream/Delimited/MessageDelimiter"});
inline constexpr auto kDelimiterLength =
    in(kStreams, {.code = "MDLEN-n",
                  .label = "Delimiter Length:",
                  .element = "Stream/Delimited/MessageDelimiterLength"});
inline constexpr auto kFieldDelimiter = in(
    kStreams,
    {.code = "FDEL-n", .label = "Field Delimiter:", .element = "Stream/Delimited/FieldDelimiter"});
inline constexpr auto kStreamOrientation = choice(
    message_choice::kStreamOrientation,
    in(kStreams, {.code = "DO-n", .label = "Orientation:", .element = "Stream/DataOrientation"}));
inline constexpr auto kMessageCount = count(kStreams, kMessages, "Stream/Message");
inline constexpr auto kId =
    in(kMessages, {.code = "MID-n-m", .label = "Message:", .element = "Stream/Message/ID"});
inline constexpr auto kName =
    in(kMessages,
       {.code = "MNA-n-m", .label = "Description:", .element = "Stream/Message/Description"});
inline constexpr auto kFieldCount = [] {
    auto field = count(kMessages, kFields, "Stream/Message/Field");
    // XML reads and writes the count under another code.
    field.codeToXml = "FLDS\\N-n-m";
    field.codeFromXml = field.codeToXml;
    return field;
}();
inline constexpr auto kFieldNumber = in(
    kFields, {.code = "FNUM-n-m-k", .label = "Number:", .element = "Stream/Message/Field/Number"});
inline constexpr auto kFieldPosition = in(
    kFields, {.code = "FPOS-n-m-k", .label = "Position:", .element = "Stream/Message/Field/Start"});
inline constexpr auto kFieldLength = in(
    kFields, {.code = "FLEN-n-m-k", .label = "Length:", .element = "Stream/Message/Field/Length"});
inline constexpr auto kMeasurementCount =
    count(kMessages, kMeasurements, "Stream/Message/Measurement");
inline constexpr auto kMeasurementName =
    in(kMeasurements, {.code = "MN-n-m-k",
                       .label = "Name:",
                       .limit = 32,
                       .element = "Stream/Message/Measurement/Name",
                       .refersTo = Refers::MeasurementName});
inline constexpr auto kParity = choice(
    message_choice::kParity,
    in(kMeasurements,
       {.code = "MN1-n-m-k", .label = "Parity:", .element = "Stream/Message/Measurement/Parity"}));
inline constexpr auto kParityOrder =
    choice(message_choice::kParityOrder,
           in(kMeasurements, {.code = "MN2-n-m-k",
                              .label = "Parity Transfer Order:",
                              .element = "Stream/Message/Measurement/ParityTransferOrder"}));
inline constexpr auto kMeasurementType =
    choice(message_choice::kDataType,
           in(kMeasurements, {.code = "MBFM-n-m-k",
                              .label = "Data Type:",
                              .element = "Stream/Message/Measurement/DataType"}));
inline constexpr auto kFloatingPoint =
    choice(kFloatingPointFormats,
           in(kMeasurements, {.code = "MFPF-n-m-k",
                              .label = "Floating Point Format:",
                              .element = "Stream/Message/Measurement/FloatingPointFormat"}));
inline constexpr auto kOrientation =
    choice(message_choice::kOrientation,
           in(kMeasurements, {.code = "MDO-n-m-k",
                              .label = "Orientation:",
                              .element = "Stream/Message/Measurement/Orientation"}));
inline constexpr auto kLocationCount =
    count(kMeasurements, kLocations, "Stream/Message/Measurement/Location");
inline constexpr auto kLocationField =
    in(kLocations, {.code = "MFN-n-m-k-j",
                    .label = "Message Field Number:",
                    .element = "Stream/Message/Measurement/Location/FieldNumber"});
inline constexpr auto kMask =
    in(kLocations, {.code = "MBM-n-m-k-j",
                    .label = "Bitmask:",
                    .element = "Stream/Message/Measurement/Location/BitMask"});
inline constexpr auto kTransferOrder =
    choice(message_choice::kTransferOrder,
           in(kLocations, {.code = "MTO-n-m-k-j",
                           .label = "Transfer Order:",
                           .element = "Stream/Message/Measurement/Location/TransferOrder"}));
inline constexpr auto kFragment =
    in(kLocations, {.code = "MFP-n-m-k-j",
                    .label = "Fragment:",
                    .element = "Stream/Message/Measurement/Location/FragmentPosition"});
inline constexpr auto kComment = from2009({.code = "COM",
                                           .label = "Comments:",
                                           .page = kPage,
                                           .limit = 3200,
                                           .kind = FieldKind::Comment,
                                           .element = "Comments"});

}  // namespace message_field

/// The rows of message data.
[[nodiscard]] std::span<const Field> messageFields();

// --- Packet telemetry ---------------------------------------------------------------------------

/// The rows of one of the three lists of measurements. The codes of a family begin with its letter:
/// 'T' is the secondary header of the transfer frame, 'H' that of a packet, 'S' the source data of
/// a packet. The lists of a packet have its number as first index.
struct PacketFamily {
    char letter = 0;
    Field count{};
    Field name{};
    Field parity{};
    Field parityOrder{};
    Field locationCount{};
    Field wordPosition{};
    Field wordLength{};
    Field mask{};
    Field transferOrder{};
    Field fragment{};
};
/// REQUIRES: 'T', 'H' or 'S'.
[[nodiscard]] const PacketFamily& packetFamily(char letter);

namespace packet_field {

inline constexpr std::string_view kPackets = "SP\\N";

inline constexpr std::string_view kPacketHeaderFlag = "PSHF-n";
inline constexpr std::string_view kProcessId = "APID-n";
inline constexpr std::string_view kDataLength = "PDL-n";
inline constexpr std::string_view kPacketHeaderLength = "PSHL-n";
inline constexpr std::string_view kPacketComment = "COM-n";

}  // namespace packet_field

/// The rows of packet telemetry.
[[nodiscard]] std::span<const Field> packetFields();

/// The rows of both: those of packet telemetry first, as the editions are.
[[nodiscard]] std::span<const Field> streamDataVocabulary();

}  // namespace kavu
