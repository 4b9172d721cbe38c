// A command of a record in the P group: what the vocabulary says of it, and where the record
// holds its value. The reader, the writer and the dialog of a record share one table of
// these.
#pragma once

#include "core/command/CommandPath.h"
#include "vocabulary/Field.h"

#include <string_view>
#include <type_traits>
#include <utility>

namespace kavu {

template <typename Record>
struct RecordField {
    Field field;  ///< its code with "-n", "-n-m", "-n-m-k" where the command has numbers
    // Null for what the record does not hold, such as a word position.
    std::string_view (*text)(const Record&) = nullptr;
    void (*setText)(Record&, std::string_view) = nullptr;
};

/// The limit in the vocabulary must be the width of the text in the model: a row that does
/// not fit does not compile.
template <typename Record, auto Member>
consteval void requireWidth(const Field& field) {
    using Text = std::remove_cvref_t<decltype(std::declval<Record&>().*Member)>;
    if (field.limit != Text::kWidth) {
        throw "the limit of the row is not the width of the text that it is bound to";
    }
}
/// A text of the record.
template <typename Record, auto Member>
consteval RecordField<Record> textField(const Field& field) {
    requireWidth<Record, Member>(field);
    return {field, [](const Record& record) { return (record.*Member).view(); },
            [](Record& record, std::string_view text) { record.*Member = text; }};
}

}  // namespace kavu
