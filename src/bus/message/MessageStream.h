// The message data of a link as a tree: streams have messages, a message has a folder of fields and
// one of measurements, a measurement has locations. Each node holds its values as a row of texts,
// as they are shown, and its line in the tree is built from them.
#pragma once

#include "vocabulary/SGroupFields.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

enum class MessageKind {
    Root = 5000,
    Stream,
    Message,
    Fields,
    Field,
    Measurements,
    Measurement,
    Location,
};

/// The places of texts in the rows.
namespace stream_row {
enum Place : std::size_t {
    Name,
    DataType,
    Layout,
    ElementSize,
    IdLocation,
    Length,
    Delimiter,
    DelimiterLength,
    FieldDelimiter,
    Orientation,
};
}  // namespace stream_row
namespace measurement_row {
enum Place : std::size_t {
    Name,
    Parity,
    ParityOrder,
    DataType,
    FloatingPoint,
    Orientation,
};
}  // namespace measurement_row

struct MessageStream {
    MessageKind kind = MessageKind::Root;
    /// As long as the columns of its kind. A text that does not apply to the stream stays in it:
    /// the user may change the stream back.
    std::vector<std::string> row{};
    std::vector<MessageStream> children{};
    std::size_t fileRow = 0;   ///< its number in the file; 0 for a new one
    std::size_t fileRows = 0;  ///< how many of its children were read from the file

    /// Ignores where rows came from.
    bool operator==(const MessageStream& other) const {
        return kind == other.kind && row == other.row && children == other.children;
    }
};

/// A text of a row.
struct MessageColumn {
    std::string_view name{};     ///< by which scripts know it
    std::string_view keyword{};  ///< in front of its value in the tree
    const Field* field = nullptr;
};
/// What a kind of node is.
struct MessageKindFacts {
    MessageKind kind = MessageKind::Root;
    std::string_view word{};       ///< "Message Field"; empty for what cannot be edited
    std::string_view formTitle{};  ///< "Edit Field"
    std::span<const MessageColumn> columns{};
    const Field* count = nullptr;           ///< of its children; null if it has none of its own
    MessageKind child = MessageKind::Root;  ///< what can be added to it; Root for nothing
};
[[nodiscard]] const MessageKindFacts& factsOf(MessageKind kind);

/// A new node with empty texts; a message has its two folders.
[[nodiscard]] MessageStream newMessageNode(MessageKind kind);
/// The fields, or the measurements, of a message.
[[nodiscard]] inline const MessageStream& fieldsOf(const MessageStream& message) {
    return message.children[0];
}
[[nodiscard]] inline const MessageStream& measurementsOf(const MessageStream& message) {
    return message.children[1];
}

/// What decides which texts of the rows apply.
[[nodiscard]] bool isFixed(const MessageStream& stream);
[[nodiscard]] bool isDelimited(const MessageStream& stream);
[[nodiscard]] bool isBinary(const MessageStream& stream);
/// Whether a text of a row applies: `row` is that of the node, and `stream` its stream (the node
/// itself, of a stream).
[[nodiscard]] bool applies(MessageKind kind, std::size_t column, std::span<const std::string> row,
                           const MessageStream& stream);

/// A text as it is shown: empty if it does not apply. `stream` is as above.
[[nodiscard]] std::string_view shownText(const MessageStream& node, std::size_t column,
                                         const MessageStream& stream);
/// The line of the tree. All keywords of its kind are in it, whether they have a value or not.
[[nodiscard]] std::string messageLabel(const MessageStream& node, const MessageStream& stream);

/// The texts that a list offers for a field; empty for a field without a list.
[[nodiscard]] std::vector<std::string> offeredTexts(const Field& field);

}  // namespace kavu
