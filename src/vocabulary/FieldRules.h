// The rules that all sheets share for the values of fields: choices, dates, numbers, the
// semi-colon.
#pragma once

#include "vocabulary/Field.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class Clock;

/// Values by code, in the bytes of the group file. Line breaks may be real ones or the bytes
/// that stand for them. A code that is missing has no value.
using FieldValues = std::map<std::string, std::string, std::less<>>;

/// The fields of a table that the pages of an edition know, in the order of the table, each
/// with the limit of that edition. Fields of the XML bridge alone are left out.
[[nodiscard]] std::vector<Field> knownFields(std::span<const Field> table, int edition);

/// The entries of a choice that a page of an edition offers, in list order.
[[nodiscard]] std::vector<Choice> choicesOf(const Field& field, int edition);
/// The entry that a stored value selects: the first whose text begins with the value,
/// whatever the case; else the one that is stored as exactly this value. -1 for an empty
/// value and for one without an entry.
[[nodiscard]] int choiceIndex(std::span<const Choice> choices, std::string_view stored);
/// What is stored for an entry: its value, or for an entry without one the leftmost
/// characters of its text up to the limit, without trailing blanks. 0 is no limit.
[[nodiscard]] std::string storedChoice(const Choice& choice, std::size_t limit);

/// The values that a choice can have in documents of an edition, in list order with ", " between
/// them: those of its page, and those that only XML has. A value that the page cuts and XML has in
/// full is there once, as XML has it.
[[nodiscard]] std::string choiceList(const Field& field, int edition);

/// "MM-DD-YYYY", or "MM-DD-YY" up to 106-96.
[[nodiscard]] std::string_view dateForm(int edition);
/// The same for a date with a time, "MM-DD-YYYY-HH-MM-SS".
[[nodiscard]] std::string_view dateTimeForm(int edition);
/// True for an empty text and for one in the format of the edition with its numbers in
/// range. The length of a month is not checked: the thirty-first of February passes.
[[nodiscard]] bool isValidDate(std::string_view text, int edition);
[[nodiscard]] bool isValidDateTime(std::string_view text, int edition);

// --- Checks of one value ------------------------------------------------------------------

enum class ValueFault {
    None,
    TooLong,
    Semicolon,
    NoChoice,   ///< is neither value, front of the text nor XML text of an entry of the edition
    BadDate,    ///< see `isValidDate`
    NotDigits,  ///< digits are required
    TooMany,    ///< a count of more rows than the list can have
};
/// What is wrong with a value for a field; the first fault in the order semi-colon, choice,
/// date, digits, count, length. An empty value is always good: it removes the command.
[[nodiscard]] ValueFault checkValue(const Field& field, std::string_view value, int edition);
/// The value as it is stored: a choice as one of `choiceList`, all else without trailing
/// blanks. REQUIRES: no fault.
[[nodiscard]] std::string storedValue(const Field& field, std::string_view value, int edition);
[[nodiscard]] inline bool holdsSemicolon(std::string_view value) {
    return value.find(';') != std::string_view::npos;
}

/// A count from a file: at least 0, at most `most`. A text that is not a number counts as 0.
[[nodiscard]] std::size_t clampedCount(std::string_view value, std::size_t most);

// --- Dates that fill themselves -------------------------------------------------------------

/// The present date, or date and time, in the format of a field. REQUIRES: a date of either
/// kind.
[[nodiscard]] std::string presentDate(const Clock& clock, FieldKind kind, int edition);

/// A change of `field` sets `date` to today if it is empty; an empty `field` stands for any.
struct AutomaticDate {
    std::string_view field{};
    std::string_view date{};
    FieldKind kind = FieldKind::Date;
};
/// Fills the dates that a change of the field of this code fills. Returns their codes.
std::vector<std::string_view> fillDates(std::span<const AutomaticDate> rules,
                                        std::string_view changed, FieldValues& values,
                                        const Clock& clock, int edition);

/// The number, if the text is one decimal number and nothing else. White space around it
/// and a plus sign are accepted.
[[nodiscard]] std::optional<long> parseInteger(std::string_view text);
[[nodiscard]] std::optional<double> parseDouble(std::string_view text);

}  // namespace kavu
