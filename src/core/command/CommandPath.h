// The syntax of a command and its code: the one place that looks for the `\`, `:` and `-` in
// them, and that composes a code. `D-1\WP-1-2-1-3:5;` has the code `D-1\WP-1-2-1-3`, the head
// `D-1`, the field `WP-1-2-1-3` and the value `5`; the field has the stem `WP` and four
// indices.
//
// The reader has two functions of its own besides (see TmatsReader.h): `parseCommandIndices`,
// which accepts what `%d` accepts, and `splitCommand`, which drops every `;`.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// The parts of a command, as views into it. A missing part is empty.
struct CommandView {
    std::string_view text;   ///< all of it
    std::string_view code;   ///< before the first `:`; null without one
    std::string_view head;   ///< the code before its first `\`; null without one
    std::string_view field;  ///< the code after that `\`
    std::string_view value;  ///< after the first `:`, without ONE `;` at its end
    bool hasColon = false;   ///< tells the empty code of ":1;" from a command without one
};
/// Splits a command. Its text must outlive the view.
[[nodiscard]] CommandView viewCommand(std::string_view command);
/// `viewCommand(command).hasColon` without a look at the rest.
[[nodiscard]] inline bool hasColon(std::string_view command) {
    return command.find(':') != std::string_view::npos;
}
/// What is after the first `\` of a command, whether that is in its code or not.
[[nodiscard]] std::string_view afterHead(std::string_view command);
/// The text that identifies a command whether or not it has a `:`: its code, or all of its
/// text, without white space at the end.
[[nodiscard]] std::string_view keyOf(const CommandView& command);

/// Replaces the value of a command: what follows its first `:`. Without one the value is
/// appended.
void setValue(std::string& command, std::string_view value);

/// The numbers in place of the indices of a field. They count from 1.
struct RowNumbers {
    static constexpr int kMostIndices = 6;
    std::array<int, kMostIndices> at{};  ///< 0 after the last one
    int count = 0;

    constexpr RowNumbers() = default;
    constexpr RowNumbers(std::initializer_list<std::size_t> numbers) {
        for (const auto number : numbers) {
            *this = row(number);
        }
    }
    /// The numbers of a row of a list in this row. REQUIRES: count < kMostIndices.
    [[nodiscard]] constexpr RowNumbers row(std::size_t number) const {
        auto inner = *this;
        inner.at[static_cast<std::size_t>(inner.count++)] = static_cast<int>(number);
        return inner;
    }
    /// The number of the innermost row; 0 outside of all lists.
    [[nodiscard]] constexpr int last() const {
        return count == 0 ? 0 : at[static_cast<std::size_t>(count) - 1];
    }
};

/// The field of a code, split into stem and indices: "ADL-2-5" is "ADL" with 2 and 5.
struct FieldPath : RowNumbers {
    std::string_view stem;
};
/// Splits the indices from the end of a field. An index is a number as a printf format writes
/// it: no sign, no leading 0, at least 1, at most nine digits; anything else stays in the
/// stem. Nothing for a field with more than `kMostIndices` indices.
[[nodiscard]] std::optional<FieldPath> parseField(std::string_view field);

/// A code, split into its parts.
struct CommandPath : FieldPath {
    char letter = 0;  ///< an upper-case letter
    int group = 0;    ///< 0 for a code without one, such as "G\PN"
};
/// Nothing for a text that is not a code: no upper-case letter first, a group number that
/// is not an index as in `parseField`, no `\`, or no field.
[[nodiscard]] std::optional<CommandPath> parsePath(std::string_view code);

/// Removes an index as in `parseField` from the front of a text; the text stays as it is if
/// there is none.
std::optional<int> takeIndex(std::string_view& text);

/// What a pass asks of the code of each command, found in one look at its bytes.
struct CodeShape {
    bool isSplit = false;             ///< there is a `:`, and a `\` in front of it
    bool mayHoldLeadingZero = false;  ///< an index may have a 0 at its front
};
[[nodiscard]] constexpr CodeShape shapeOfCode(std::string_view command) {
    CodeShape shape;
    char previous = 0;
    bool holdsBackslash = false;
    for (const char c : command) {
        if (c == ':') {
            shape.isSplit = holdsBackslash;
            break;
        }
        holdsBackslash = holdsBackslash || c == '\\';
        shape.mayHoldLeadingZero = shape.mayHoldLeadingZero || (c == '0' && previous == '-');
        previous = c;
    }
    return shape;
}
/// Writes the indices of the command, or of the code alone, that begins at `from` as a format
/// writes them, without a 0 at their front: "T-01\RF1-002:07;" becomes "T-1\RF1-2:07;". What is
/// after a `-` and is not a number is no index. The fields of H and V groups belong to their makers
/// and stay. True if the text has changed.
bool dropLeadingZeros(std::string& text, std::size_t from = 0);

/// The text before the first `-`: "SF4" of "SF4-n-m-k" and of "SF4-1-2-3".
[[nodiscard]] constexpr std::string_view codeHead(std::string_view field) {
    return field.substr(0, field.find('-'));
}

/// A code split at the number of its row: "R-1\TK1-" and "3" of "R-1\TK1-3".
struct RowCut {
    std::string_view front;
    std::string_view rest;  ///< with the number at its front, if there is one
};
/// Splits a code after the first `-` at or after `from`; nothing without one.
[[nodiscard]] std::optional<RowCut> cutAtRow(std::string_view code, std::size_t from);
/// The code with `row` in place of the digits.
[[nodiscard]] std::string withRow(const RowCut& cut, std::size_t row);

/// Appends the head of a group's codes: "D-1\"; "G\" and "H\" for the groups without number.
void appendHead(std::string& out, char letter, int group);
[[nodiscard]] std::string groupHead(char letter, int group);
/// The number of indices of a pattern: 0 for "PN", 1 for "POC1-n", 2 for "ADL-n-m", 4 for
/// "WP-n-m-k-f". An index is a dash and one small letter.
[[nodiscard]] constexpr int indexCountOf(std::string_view pattern) {
    int count = 0;
    while (pattern.size() > 2 && pattern[pattern.size() - 2] == '-' && pattern.back() >= 'a' &&
           pattern.back() <= 'z') {
        pattern.remove_suffix(2);
        ++count;
    }
    return count;
}
/// The pattern without its indices: "WP" of "WP-n-m-k-f".
[[nodiscard]] constexpr std::string_view stemOf(std::string_view pattern) {
    return pattern.substr(0, pattern.size() - 2 * static_cast<std::size_t>(indexCountOf(pattern)));
}

/// True for a field of a pattern with indices, whatever their values: "MN-1-2" and "mn-x"
/// are of "MN-n-m", "MN" and "MN1-1-2" are not. A pattern without indices is its only field.
[[nodiscard]] bool isOfPattern(std::string_view field, std::string_view pattern);

/// Appends a field: the pattern "SF4-n-m-k" with {1, 2, 3} is "SF4-1-2-3". Numbers beyond the
/// indices of the pattern are left out. REQUIRES: as many numbers as the pattern has indices.
void appendField(std::string& out, std::string_view pattern, std::span<const int> numbers);
[[nodiscard]] std::string fieldCode(std::string_view pattern, std::span<const int> numbers);
[[nodiscard]] std::string fieldCode(std::string_view pattern, std::initializer_list<int> numbers);
/// Appends a whole code: 'D', 1 and "WP-n-m-k-f" with {1, 2, 1, 1} is "D-1\WP-1-2-1-1".
void appendCode(std::string& out, char letter, int group, std::string_view pattern,
                std::span<const int> numbers);

}  // namespace kavu
