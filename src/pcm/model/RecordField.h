// A command of a record in the P group: what the vocabulary says of it, and where the record
// holds its value. The reader, the writer and the form of a record share one table of these.
#pragma once

#include "core/text/Text.h"
#include "vocabulary/Field.h"

#include <initializer_list>
#include <string>
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

/// A text of the record, whose limit is that of its place there.
template <typename Record, auto Member>
constexpr RecordField<Record> textField(Field field) {
    using Text = std::remove_cvref_t<decltype(std::declval<Record&>().*Member)>;
    field.limit = Text::kWidth;
    return {field, [](const Record& record) { return (record.*Member).view(); },
            [](Record& record, std::string_view text) { record.*Member = text; }};
}

/// The code without its numbers: "SF4" of "SF4-n-m-k".
constexpr std::string_view codeHead(std::string_view code) {
    return code.substr(0, code.find('-'));
}
/// The code of one command: "SF4-1-2-3" of "SF4-n-m-k". REQUIRES: as many numbers as it takes.
inline std::string numberedCode(std::string_view code, std::initializer_list<int> numbers) {
    std::string text(codeHead(code));
    for (const int number : numbers) {
        text += '-';
        appendNumber(text, number);
    }
    return text;
}

}  // namespace kavu
