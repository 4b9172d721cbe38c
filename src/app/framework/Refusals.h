// Why a value that was typed is refused: the checks and the texts that all dialogs share.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace kavu {

class UserInterface;

/// Checks a value; gives the text of the error, or nothing.
using ValueCheck = std::function<std::optional<std::string>(const std::string&)>;

/// Title of the boxes about a refused number.
inline constexpr char kIllegalNumber[] = "ERROR: Illegal Value Entered";
/// Title of the boxes about a refused text.
inline constexpr char kIllegalText[] = "Illegal Value Entered";

/// At most `limit` bytes; 0 is no limit.
[[nodiscard]] ValueCheck textCheck(std::size_t limit);
[[nodiscard]] ValueCheck integerCheck(long least, long most);
[[nodiscard]] ValueCheck doubleCheck(double least, double most);

/// What these checks take, for a person who is about to type: "1 to 64". Empty for what has no
/// bounds worth telling.
[[nodiscard]] std::string limitText(std::size_t limit);
[[nodiscard]] std::string rangeText(long least, long most);
[[nodiscard]] std::string rangeText(double least, double most);

/// The shortest text that reads as the number.
[[nodiscard]] std::string numberText(double number);

/// Shows numbered message 402: a semi-colon would end the command in the file.
void showSemicolonRefused(UserInterface& ui);

}  // namespace kavu
