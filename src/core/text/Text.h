// Byte-wise helpers for text. Nothing here depends on an encoding or the C locale: inside
// the logic text is bytes, and letters are the ASCII letters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The bytes that stand for a carriage return and a line feed inside a value of a group
/// file, so that each command stays on one line there.
inline constexpr char kStoredCarriageReturn = 0x14;
inline constexpr char kStoredLineFeed = 0x15;

[[nodiscard]] constexpr char toLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
[[nodiscard]] constexpr char toUpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
[[nodiscard]] constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

[[nodiscard]] std::string lowerAscii(std::string_view text);
[[nodiscard]] bool equalsIgnoreCase(std::string_view a, std::string_view b);
[[nodiscard]] bool startsWithIgnoreCase(std::string_view text, std::string_view prefix);

/// Without the white space (blank, tab, line ends, vertical tab, form feed) at both ends.
[[nodiscard]] std::string_view trim(std::string_view text);
[[nodiscard]] std::string_view trimRight(std::string_view text);
/// Without the blanks and tabs at both ends.
[[nodiscard]] std::string_view trimBlanks(std::string_view text);
/// Without the blanks (only blanks) at the end.
[[nodiscard]] std::string_view trimTrailingBlanks(std::string_view text);

/// The decimal number at the front of a text: after leading white space, an optional sign
/// and digits; what follows is ignored. Without digits it is 0; beyond the range of 64
/// bits it is the nearest end of the range.
[[nodiscard]] std::int64_t leadingInteger(std::string_view text);
/// The same, clamped to the range of an int.
[[nodiscard]] int leadingInt(std::string_view text);

/// True if no byte of the text is below a blank: neither a line break nor a NUL nor a tabulator.
/// Cheaper than a search for one of them.
[[nodiscard]] bool isPrintable(std::string_view text);
/// True if the text holds a carriage return or a line feed.
[[nodiscard]] bool holdsLineBreak(std::string_view text);
/// True if the text holds one of the two bytes that stand for them in a group file.
[[nodiscard]] bool holdsStoredBreak(std::string_view text);
/// Replaces line breaks by the bytes that stand for them in a group file, in place.
void toStoredForm(std::string& text);
/// Turns the two stored bytes back into real line breaks, in place, from a position on.
void fromStoredForm(std::string& text, std::size_t from = 0);

/// `text` with every `from` replaced by `to`.
[[nodiscard]] std::string replaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);
[[nodiscard]] std::vector<std::string> splitLines(std::string_view text);

/// At most `bytes` bytes of a text, never ending within a character if the text is valid
/// UTF-8.
[[nodiscard]] std::string_view cutToBytes(std::string_view text, std::size_t bytes);

/// Appends a decimal number; a fast path for codes such as "C-12\".
void appendNumber(std::string& text, std::int64_t number);

}  // namespace kavu
