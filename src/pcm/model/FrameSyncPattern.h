// Frame sync patterns in binary and hexadecimal notation, and the recommended ones.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

/// The recommended pattern of a length, grouped as it is shown. A length below 7 has none:
/// in binary it is that many ones, in hexadecimal the length itself.
[[nodiscard]] std::string recommendedPattern(int length, bool hexadecimal);

[[nodiscard]] std::string withoutBlanks(std::string_view text);
/// Digits in groups from the right, with a blank between them.
[[nodiscard]] std::string groupFromRight(std::string_view digits, std::size_t size);
[[nodiscard]] bool isBinaryText(std::string_view text);       ///< not empty
[[nodiscard]] bool isHexadecimalText(std::string_view text);  ///< not empty

/// Four bits at a time from the right; fewer than four at the front make the top digit,
/// and a blank ends a group early.
[[nodiscard]] std::string binaryToHex(std::string_view binary);
/// Four bits for each digit.
[[nodiscard]] std::string hexToBinary(std::string_view hexadecimal);
/// The bits of a pattern without its blanks: for a hexadecimal one four for each digit,
/// without the zeros before the first 1 of its first digit that is not 0.
[[nodiscard]] int countPatternBits(std::string_view pattern, bool hexadecimal);
/// The pattern in the other notation, grouped as it is shown; in binary it has no leading
/// `0`.
[[nodiscard]] std::string switchPattern(std::string_view pattern, bool toHexadecimal);

}  // namespace kavu
