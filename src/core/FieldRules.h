// The rules that all forms share for the values of fields: choices, dates, numbers, the
// semi-colon.
#pragma once

#include "core/Vocabulary.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The entries of a choice that an edition knows, in list order.
[[nodiscard]] std::vector<Choice> choicesOf(const Field& field, int edition);
/// The entry that a stored value selects: the first whose text begins with the value,
/// whatever the case; else the one that is stored as just this value. -1 for an empty value
/// and for one that no entry answers to.
[[nodiscard]] int choiceIndex(std::span<const Choice> choices, std::string_view stored);
/// What is stored for an entry: its value, or for an entry without one the leftmost
/// characters of its text up to the limit, without blanks at the end. 0 is no limit.
[[nodiscard]] std::string storedChoice(const Choice& choice, std::size_t limit);

/// "MM-DD-YYYY", or "MM-DD-YY" up to 106-96.
[[nodiscard]] std::string_view dateForm(int edition);
/// The same for a date with a time, "MM-DD-YYYY-HH-MM-SS".
[[nodiscard]] std::string_view dateTimeForm(int edition);
/// True for an empty text and for one in the form of the edition with its numbers in range.
/// The length of a month is not looked at: the thirty-first of February passes.
[[nodiscard]] bool isValidDate(std::string_view text, int edition);
[[nodiscard]] bool isValidDateTime(std::string_view text, int edition);

/// The number, if the text is one decimal number and nothing else. White space around it
/// and a plus sign are taken.
[[nodiscard]] std::optional<long> parseInteger(std::string_view text);
[[nodiscard]] std::optional<double> parseDouble(std::string_view text);

}  // namespace kavu
