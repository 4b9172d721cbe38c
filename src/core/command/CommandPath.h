// How a command and its code are put together: the one place that looks for the `\`, `:` and
// `-` in them, and the one that composes a code. `D-1\WP-1-2-1-3:5;` has the code
// `D-1\WP-1-2-1-3`, the head `D-1`, the field `WP-1-2-1-3` and the value `5`; the field has the
// stem `WP` and four indices.
//
// The reader keeps two functions of its own beside these (see TmatsReader.h):
// `parseCommandIndices`, which takes what `%d` takes, and `splitCommand`, which drops every `;`.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// The parts of a command, as views into it. What is missing is empty.
struct CommandView {
    std::string_view text;   ///< all of it
    std::string_view code;   ///< in front of the first `:`; nothing without one
    std::string_view head;   ///< the code in front of its first `\`; nothing without one
    std::string_view field;  ///< the code after that `\`
    std::string_view value;  ///< after the first `:`, without ONE `;` at its end
    bool hasColon = false;   ///< sets the empty code of ":1;" apart from a command without one
};
/// Takes a command apart. Its text must outlive the view.
[[nodiscard]] CommandView viewCommand(std::string_view command);
/// What is after the first `\` of a command, whether that is in its code or not.
[[nodiscard]] std::string_view afterHead(std::string_view command);
/// What a command is compared by where the place of its `:` makes no difference: its code, or
/// all of its text if it has no `:`, without white space at the end.
[[nodiscard]] std::string_view keyOf(const CommandView& command);

/// Gives a command another value: what is after its first `:`, or after all of it without one.
void setValue(std::string& command, std::string_view value);

/// The field of a code in its stem and its indices: "ADL-2-5" is "ADL" with 2 and 5.
struct FieldPath {
    static constexpr int kMostIndices = 6;
    std::string_view stem;
    std::array<int, kMostIndices> at{};
    int count = 0;
};
/// Takes the indices from the end of a field. An index is written as a format writes it: no
/// sign, no leading 0, at least 1, at most nine digits; what is not stays in the stem. Nothing
/// for a field with more indices than any has.
[[nodiscard]] std::optional<FieldPath> parseField(std::string_view field);

/// A code in its parts.
struct CommandPath : FieldPath {
    char letter = 0;  ///< an upper-case letter
    int group = 0;    ///< 0 for a code without one, such as "G\PN"
};
/// Nothing for a text that is no code: no letter at its front, a group number that is not
/// written as a format writes it, no `\`, no field.
[[nodiscard]] std::optional<CommandPath> parsePath(std::string_view code);

/// Takes an index, as `parseField` knows it, from the front of a text; nothing is taken if there
/// is none.
std::optional<int> takeIndex(std::string_view& text);

/// The text in front of the first `-`: "SF4" of "SF4-n-m-k" and of "SF4-1-2-3".
[[nodiscard]] constexpr std::string_view codeHead(std::string_view field) {
    return field.substr(0, field.find('-'));
}

/// A code cut at the number of its row: "R-1\TK1-" and "3" of "R-1\TK1-3".
struct RowCut {
    std::string_view front;
    std::string_view rest;  ///< with the number at its front, if there is one
};
/// Cuts a code at the first `-` from `from` on; nothing without one.
[[nodiscard]] std::optional<RowCut> cutAtRow(std::string_view code, std::size_t from);
/// The code with another number in place of the digits.
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

/// Appends a field: the pattern "SF4-n-m-k" with {1, 2, 3} is "SF4-1-2-3". Numbers beyond the
/// indices of the pattern are left out. REQUIRES: as many numbers as the pattern has indices.
void appendField(std::string& out, std::string_view pattern, std::span<const int> numbers);
[[nodiscard]] std::string fieldCode(std::string_view pattern, std::span<const int> numbers);
[[nodiscard]] std::string fieldCode(std::string_view pattern, std::initializer_list<int> numbers);
/// Appends a whole code: 'D', 1 and "WP-n-m-k-f" with {1, 2, 1, 1} is "D-1\WP-1-2-1-1".
void appendCode(std::string& out, char letter, int group, std::string_view pattern,
                std::span<const int> numbers);

}  // namespace kavu
