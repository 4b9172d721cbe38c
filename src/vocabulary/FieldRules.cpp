#include "vocabulary/FieldRules.h"

#include "core/text/Clock.h"
#include "core/text/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kavu {

namespace {

/// The number of `count` digits at a place of the text, or -1.
int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (!isDigit(text[i])) {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

bool isBetween(int number, int least, int most) {
    return number >= least && number <= most;
}

/// REQUIRES: the text has the length of the format.
bool holdsDate(std::string_view text, std::size_t yearDigits) {
    return text[2] == '-' && text[5] == '-' && isBetween(digitsAt(text, 0, 2), 1, 12) &&
           isBetween(digitsAt(text, 3, 2), 1, 31) && digitsAt(text, 6, yearDigits) >= 0;
}

std::size_t yearDigitsOf(int edition) {
    return edition >= 1997 ? 4 : 2;
}

/// The text for `from_chars`, which accepts neither white space nor a plus sign.
std::string_view numberOf(std::string_view text) {
    text = trim(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

template <typename Number>
std::optional<Number> parseWhole(std::string_view text) {
    text = numberOf(text);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

/// The first entry of a field that an edition knows and that is wanted, or null.
template <typename Wanted>
const Choice* findEntry(const Field& field, int edition, const Wanted& wanted) {
    const auto it = std::find_if(
        field.choices.begin(), field.choices.end(),
        [&](const Choice& choice) { return isKnownIn(edition, choice) && wanted(choice); });
    return it == field.choices.end() ? nullptr : &*it;
}

/// The entry under which XML has what only the page shows: "LINEAR" is stored as "LINE" by the
/// page, which cuts it, and as "LIN" by XML. Null if XML does not have it, or has the same entry.
const Choice* entryInXml(const Field& field, const Choice& shown, int edition) {
    return !shown.xml.empty() || shown.text.empty()
               ? nullptr
               : findEntry(field, edition, [&](const Choice& choice) {
                     return choice.text.empty() && equalsIgnoreCase(choice.xml, shown.text);
                 });
}

/// The entry that a typed text means: its value, since "1" may also begin the text of another
/// entry; else the front of its text; else its text in XML. Null if it means none.
const Choice* entryOf(const Field& field, std::string_view typed, int edition) {
    if (typed.empty()) {
        return nullptr;
    }
    const auto limit = limitIn(edition, field);
    const auto* entry = findEntry(field, edition, [&](const Choice& choice) {
        return equalsIgnoreCase(storedChoice(choice, limit), typed);
    });
    if (entry == nullptr) {
        entry = findEntry(field, edition, [&](const Choice& choice) {
            return startsWithIgnoreCase(choice.text, typed);
        });
    }
    if (entry == nullptr) {
        entry = findEntry(field, edition, [&](const Choice& choice) {
            return equalsIgnoreCase(choice.xml, typed);
        });
    }
    const auto* const known = entry == nullptr ? nullptr : entryInXml(field, *entry, edition);
    return known == nullptr ? entry : known;
}

}  // namespace

std::vector<Field> knownFields(std::span<const Field> table, int edition) {
    std::vector<Field> known;
    for (const auto& field : table) {
        if (!field.bridgeOnly && isKnownIn(edition, field)) {
            known.push_back(field);
            known.back().limit = limitIn(edition, field);
            known.back().limit1996 = known.back().limit1999 = 0;
        }
    }
    return known;
}

std::vector<Choice> choicesOf(const Field& field, int edition) {
    std::vector<Choice> known;
    std::copy_if(
        field.choices.begin(), field.choices.end(), std::back_inserter(known),
        [&](const Choice& choice) { return !choice.text.empty() && isKnownIn(edition, choice); });
    return known;
}

int choiceIndex(std::span<const Choice> choices, std::string_view stored) {
    if (stored.empty()) {
        return -1;
    }
    const auto indexOf = [&](const auto& answers) {
        const auto it = std::find_if(choices.begin(), choices.end(), answers);
        return it == choices.end() ? -1 : static_cast<int>(it - choices.begin());
    };
    const int byText =
        indexOf([&](const Choice& choice) { return startsWithIgnoreCase(choice.text, stored); });
    return byText >= 0 ? byText : indexOf([&](const Choice& choice) {
        return equalsIgnoreCase(choice.value, stored);
    });
}

std::string storedChoice(const Choice& choice, std::size_t limit) {
    if (!choice.value.empty()) {
        return std::string(choice.value);
    }
    return std::string(
        trimTrailingBlanks(limit == 0 ? choice.text : cutToBytes(choice.text, limit)));
}

std::string choiceList(const Field& field, int edition) {
    std::string values;
    for (const auto& choice : field.choices) {
        if (isKnownIn(edition, choice) && entryInXml(field, choice, edition) == nullptr) {
            values += values.empty() ? "" : ", ";
            values += storedChoice(choice, limitIn(edition, field));
        }
    }
    return values;
}

std::string_view dateForm(int edition) {
    return yearDigitsOf(edition) == 4 ? "MM-DD-YYYY" : "MM-DD-YY";
}

std::string_view dateTimeForm(int edition) {
    return yearDigitsOf(edition) == 4 ? "MM-DD-YYYY-HH-MM-SS" : "MM-DD-YY-HH-MM-SS";
}

bool isValidDate(std::string_view text, int edition) {
    return text.empty() ||
           (text.size() == dateForm(edition).size() && holdsDate(text, yearDigitsOf(edition)));
}

bool isValidDateTime(std::string_view text, int edition) {
    if (text.empty()) {
        return true;
    }
    if (text.size() != dateTimeForm(edition).size() || !holdsDate(text, yearDigitsOf(edition))) {
        return false;
    }
    const auto at = dateForm(edition).size();
    return text[at] == '-' && text[at + 3] == '-' && text[at + 6] == '-' &&
           isBetween(digitsAt(text, at + 1, 2), 0, 23) &&
           isBetween(digitsAt(text, at + 4, 2), 0, 59) &&
           isBetween(digitsAt(text, at + 7, 2), 0, 59);
}

namespace {

bool isBadDate(const Field& field, std::string_view value, int edition) {
    return (field.kind == FieldKind::Date && !isValidDate(value, edition)) ||
           (field.kind == FieldKind::DateTime && !isValidDateTime(value, edition));
}

bool wantsDigits(const Field& field) {
    return field.kind == FieldKind::Count || field.kind == FieldKind::Digits;
}

bool exceedsRows(const Field& field, std::string_view digits) {
    if (!governsRows(field)) {
        return false;
    }
    // Digits that do not fit a number are more than any list can have.
    const auto count = parseInteger(digits);
    return !count || static_cast<std::size_t>(*count) > field.rows;
}

}  // namespace

ValueFault checkValue(const Field& field, std::string_view value, int edition) {
    const auto limit = limitIn(edition, field);
    if (value.empty()) {
        return ValueFault::None;
    }
    if (holdsSemicolon(value)) {
        return ValueFault::Semicolon;
    }
    if (field.kind == FieldKind::Choice) {
        return entryOf(field, value, edition) == nullptr ? ValueFault::NoChoice : ValueFault::None;
    }
    if (isBadDate(field, value, edition)) {
        return ValueFault::BadDate;
    }
    if (wantsDigits(field) && !std::all_of(value.begin(), value.end(), isDigit)) {
        return ValueFault::NotDigits;
    }
    if (exceedsRows(field, value)) {
        return ValueFault::TooMany;
    }
    return limit != 0 && value.size() > limit ? ValueFault::TooLong : ValueFault::None;
}

std::string storedValue(const Field& field, std::string_view value, int edition) {
    if (field.kind == FieldKind::Choice) {
        if (const auto* const entry = entryOf(field, value, edition)) {
            return storedChoice(*entry, limitIn(edition, field));
        }
    }
    return std::string(trimTrailingBlanks(value));
}

std::size_t clampedCount(std::string_view value, std::size_t most) {
    const auto count = leadingInteger(value);
    return count <= 0 ? 0 : std::min(static_cast<std::size_t>(count), most);
}

std::string presentDate(const Clock& clock, FieldKind kind, int edition) {
    const auto now = clock.now();
    return kind == FieldKind::DateTime ? tmatsDateTime(now, edition) : tmatsDate(now, edition);
}

std::vector<std::string_view> fillDates(std::span<const AutomaticDate> rules,
                                        std::string_view changed, FieldValues& values,
                                        const Clock& clock, int edition) {
    std::vector<std::string_view> filled;
    for (const auto& rule : rules) {
        if (!rule.field.empty() && rule.field != changed) {
            continue;
        }
        auto& value = values[std::string(rule.date)];
        if (value.empty()) {
            value = presentDate(clock, rule.kind, edition);
            filled.push_back(rule.date);
        }
    }
    return filled;
}

std::optional<long> parseInteger(std::string_view text) {
    return parseWhole<long>(text);
}

std::optional<double> parseDouble(std::string_view text) {
    const auto number = parseWhole<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace kavu
