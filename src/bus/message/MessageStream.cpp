#include "bus/message/MessageStream.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

using message_field::kMeasurementName;

constexpr auto kStreamColumns = std::to_array<MessageColumn>({
    {"name", "Stream", &message_field::kStreamName},
    {"dataType", "Type", &message_field::kDataType},
    {"layout", "Layout", &message_field::kLayout},
    {"elementSize", "Element Size", &message_field::kElementSize},
    {"idLocation", "ID Location", &message_field::kIdLocation},
    {"length", "Length", &message_field::kLength},
    {"delimiter", "Delimiter", &message_field::kDelimiter},
    {"delimiterLength", "Delimiter Length", &message_field::kDelimiterLength},
    {"fieldDelimiter", "Field Delimiter", &message_field::kFieldDelimiter},
    {"orientation", "Orientation", &message_field::kStreamOrientation},
});
constexpr auto kMessageColumns = std::to_array<MessageColumn>({
    {"id", "Message", &message_field::kId},
    {"name", "Description", &message_field::kName},
});
constexpr auto kFieldColumns = std::to_array<MessageColumn>({
    {"number", "Number", &message_field::kFieldNumber},
    {"position", "Position", &message_field::kFieldPosition},
    {"length", "Length", &message_field::kFieldLength},
});
constexpr auto kMeasurementColumns = std::to_array<MessageColumn>({
    {"name", "Name", &kMeasurementName},
    {"parity", "Parity", &message_field::kParity},
    {"parityTransferOrder", "Parity Transfer Order", &message_field::kParityOrder},
    {"dataType", "Data Type", &message_field::kMeasurementType},
    {"floatingPointFormat", "Floating Point Format", &message_field::kFloatingPoint},
    {"orientation", "Orientation", &message_field::kOrientation},
});
constexpr auto kLocationColumns = std::to_array<MessageColumn>({
    {"number", "Message Field Number", &message_field::kLocationField},
    {"bitmask", "Bitmask", &message_field::kMask},
    {"transferOrder", "Transfer Order", &message_field::kTransferOrder},
    {"fragment", "Fragment", &message_field::kFragment},
});

constexpr auto kKinds = std::to_array<MessageKindFacts>({
    {.kind = MessageKind::Root,
     .count = &message_field::kStreamCount,
     .child = MessageKind::Stream},
    {.kind = MessageKind::Stream,
     .word = "Stream",
     .formTitle = "Edit Message Stream",
     .columns = kStreamColumns,
     .count = &message_field::kMessageCount,
     .child = MessageKind::Message},
    {.kind = MessageKind::Message,
     .word = "Message",
     .formTitle = "Edit Message",
     .columns = kMessageColumns},
    {.kind = MessageKind::Fields,
     .count = &message_field::kFieldCount,
     .child = MessageKind::Field},
    {.kind = MessageKind::Field,
     .word = "Message Field",
     .formTitle = "Edit Field",
     .columns = kFieldColumns},
    {.kind = MessageKind::Measurements,
     .count = &message_field::kMeasurementCount,
     .child = MessageKind::Measurement},
    {.kind = MessageKind::Measurement,
     .word = "Measurement",
     .formTitle = "Edit Measurement",
     .columns = kMeasurementColumns,
     .count = &message_field::kLocationCount,
     .child = MessageKind::Location},
    {.kind = MessageKind::Location,
     .word = "Measurement Location",
     .formTitle = "Edit Measurement Location",
     .columns = kLocationColumns},
});

constexpr std::string_view kFolderOfFields = "Fields";
constexpr std::string_view kFolderOfMeasurements = "Measurements";
constexpr std::string_view kNoParity = message_choice::kParity[2].text;

bool isChoice(const MessageStream& stream, std::size_t column, const Choice& choice) {
    return equalsIgnoreCase(stream.row[column], choice.text);
}

bool appliesToStream(std::size_t column, const MessageStream& stream) {
    switch (column) {
        case stream_row::Length:
            return isFixed(stream);
        case stream_row::Delimiter:
        case stream_row::DelimiterLength:
        case stream_row::FieldDelimiter:
            return isDelimited(stream);
        case stream_row::Orientation:
            return isBinary(stream);
        default:
            return true;
    }
}

bool appliesToMeasurement(std::size_t column, std::span<const std::string> row,
                          const MessageStream& stream) {
    switch (column) {
        case measurement_row::FloatingPoint: {
            constexpr auto& kFloat = message_choice::kDataType[1];
            return equalsIgnoreCase(row[measurement_row::DataType], kFloat.text);
        }
        case measurement_row::Orientation:
            return isBinary(stream);
        default:
            return true;
    }
}

}  // namespace

const MessageKindFacts& factsOf(MessageKind kind) {
    return kKinds[static_cast<std::size_t>(kind) - static_cast<std::size_t>(MessageKind::Root)];
}

MessageStream newMessageNode(MessageKind kind) {
    MessageStream node{.kind = kind};
    node.row.resize(factsOf(kind).columns.size());
    if (kind == MessageKind::Message) {
        node.children.push_back({.kind = MessageKind::Fields});
        node.children.push_back({.kind = MessageKind::Measurements});
    }
    return node;
}

bool isFixed(const MessageStream& stream) {
    return isChoice(stream, stream_row::Layout, message_choice::kLayout[0]);
}

bool isDelimited(const MessageStream& stream) {
    return isChoice(stream, stream_row::Layout, message_choice::kLayout[1]);
}

bool isBinary(const MessageStream& stream) {
    return isChoice(stream, stream_row::DataType, message_choice::kType[0]);
}

bool applies(MessageKind kind, std::size_t column, std::span<const std::string> row,
             const MessageStream& stream) {
    switch (kind) {
        case MessageKind::Stream:
            return appliesToStream(column, stream);
        case MessageKind::Field:
            // All but the number is of a layout with places.
            return column == 0 || isFixed(stream);
        case MessageKind::Measurement:
            return appliesToMeasurement(column, row, stream);
        default:
            return true;
    }
}

std::string_view shownText(const MessageStream& node, std::size_t column,
                           const MessageStream& stream) {
    return applies(node.kind, column, node.row, stream) ? std::string_view(node.row[column])
                                                        : std::string_view();
}

std::string messageLabel(const MessageStream& node, const MessageStream& stream) {
    switch (node.kind) {
        case MessageKind::Root:
            return "Streams";
        case MessageKind::Fields:
            return std::string(kFolderOfFields);
        case MessageKind::Measurements:
            return std::string(kFolderOfMeasurements);
        default:
            break;
    }
    std::string label;
    const auto columns = factsOf(node.kind).columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        label += label.empty() ? "" : ", ";
        label += columns[i].keyword;
        label += ':';
        const auto text = shownText(node, i, stream);
        const bool isParity = node.kind == MessageKind::Measurement && i == measurement_row::Parity;
        label += text.empty() && isParity ? kNoParity : text;
    }
    return label;
}

std::vector<std::string> offeredTexts(const Field& field) {
    std::vector<std::string> texts;
    for (const auto& choice : field.choices) {
        if (!choice.text.empty()) {
            texts.emplace_back(choice.text);
        }
    }
    return texts;
}

}  // namespace kavu
