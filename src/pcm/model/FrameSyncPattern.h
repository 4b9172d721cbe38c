// Frame sync patterns in their two forms, and the recommended ones.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

/// The recommended pattern of a length, grouped as it is shown. A length below 7 has none:
/// the binary form is that many ones, the hexadecimal form is the length itself.
[[nodiscard]] std::string recommendedPattern(int length, bool hexadecimal);

[[nodiscard]] std::string withoutBlanks(std::string_view text);
/// Digits in groups from the right, with a blank between them.
[[nodiscard]] std::string groupFromRight(std::string_view digits, std::size_t size);
[[nodiscard]] bool isBinaryText(std::string_view text);       ///< not empty
[[nodiscard]] bool isHexadecimalText(std::string_view text);  ///< not empty

/// Four bits at a time from the right; what is less than four at the front makes the top
/// digit, and a blank ends a group early.
[[nodiscard]] std::string binaryToHex(std::string_view binary);
/// Four bits for each digit.
[[nodiscard]] std::string hexToBinary(std::string_view hexadecimal);
/// Bits of a pattern, blanks aside: of a hexadecimal one four for each digit, without the
/// zeros in front of the first 1 of its first digit that is not 0.
[[nodiscard]] int countPatternBits(std::string_view pattern, bool hexadecimal);
/// The other form of a pattern, grouped as it is shown; a binary form has no `0` in front.
[[nodiscard]] std::string switchPattern(std::string_view pattern, bool toHexadecimal);

}  // namespace kavu
