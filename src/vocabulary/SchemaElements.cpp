#include "vocabulary/SchemaElements.h"

#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/SchemaTables.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <string>

namespace kavu {

namespace {

bool consistsOf(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kWordOfMasks = "Full Word";

bool isIntegerText(std::string_view text) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    return !text.empty() && consistsOf(text, kDigits);
}

bool isDoubleText(std::string_view text) {
    // Of the forms that a program takes for a number, XML has no hexadecimal one and no blanks.
    return !text.empty() && consistsOf(text, "0123456789+-.eE") && text != "." &&
           parseDouble(text.front() == '+' ? text.substr(1) : text).has_value();
}

bool isIn(const SchemaElement& element, std::string_view integer) {
    if (element.least == 0 && element.most == 0) {
        return true;
    }
    const auto number = parseDouble(integer.front() == '+' ? integer.substr(1) : integer);
    return number && *number >= element.least && (element.most == 0 || *number <= element.most);
}

bool isNonNegative(std::string_view text) {
    return isIntegerText(text) && (text.front() != '-' || consistsOf(text.substr(1), "0"));
}

bool isPositive(std::string_view text) {
    return isIntegerText(text) && text.front() != '-' &&
           text.find_first_of("123456789") != std::string_view::npos;
}

bool isIntegerOrDouble(std::string_view text) {
    if (!isDoubleText(text)) {
        return false;
    }
    const auto number = *parseDouble(text.front() == '+' ? text.substr(1) : text);
    constexpr double kMost = 100;
    return (number >= -kMost && number <= kMost) ||
           (isIntegerText(text) && number >= std::numeric_limits<int>::min() &&
            number <= std::numeric_limits<int>::max());
}

bool holdsPattern(std::string_view text, std::string_view pattern) {
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(),
                      [](char c, char wanted) { return wanted == '9' ? isDigit(c) : c == wanted; });
}

int twoDigits(std::string_view text, std::size_t at) {
    return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

bool isSchemaDate(std::string_view text) {
    if (!holdsPattern(text, "9999-99-99") || text.starts_with("0000")) {
        return false;
    }
    const auto number = [text](std::size_t at) {
        return static_cast<unsigned>(twoDigits(text, at));
    };
    return std::chrono::year_month_day(
               std::chrono::year(static_cast<int>(number(0) * 100 + number(2))),
               std::chrono::month(number(5)), std::chrono::day(number(8)))
        .ok();
}

bool isSchemaDateTime(std::string_view text) {
    constexpr std::size_t kDateWidth = 10;
    return text.size() > kDateWidth && isSchemaDate(text.substr(0, kDateWidth)) &&
           holdsPattern(text.substr(kDateWidth), "T99:99:99") && twoDigits(text, 11) <= 23 &&
           twoDigits(text, 14) <= 59 && twoDigits(text, 17) <= 59;
}

bool isOneOf(std::string_view words, std::string_view text) {
    while (!words.empty()) {
        const auto word = words.substr(0, words.find(' '));
        if (word == text) {
            return true;
        }
        words.remove_prefix(std::min(words.size(), word.size() + 1));
    }
    return false;
}

}  // namespace

std::span<const SchemaElement> schemaElements(char letter) {
    const auto elements = schema::sourceElements(letter);
    return elements.empty() ? schema::linkElements(letter) : elements;
}

const SchemaElement* findSchemaElement(char letter, std::string_view path) {
    using Table = std::map<std::string_view, const SchemaElement*>;
    static const auto kTables = [] {
        std::map<char, Table> tables;
        for (const char each : std::string_view("GTRMPDBASC")) {
            for (const auto& element : schemaElements(each)) {
                tables[each].emplace(element.path, &element);
            }
        }
        return tables;
    }();
    const auto table = kTables.find(letter);
    if (table == kTables.end()) {
        return nullptr;
    }
    const auto found = table->second.find(path);
    return found == table->second.end() ? nullptr : found->second;
}

bool isSchemaText(const SchemaElement& element, std::string_view text) {
    switch (element.type) {
        case SchemaType::Group:
            return text.empty();
        case SchemaType::Text:
            return true;
        case SchemaType::Choice:
            return element.words.empty() || isOneOf(element.words, text);
        case SchemaType::Date:
            return isSchemaDate(text);
        case SchemaType::DateTime:
            return isSchemaDateTime(text);
        case SchemaType::Double:
            return isDoubleText(text) && isIn(element, text);
        case SchemaType::IntegerOrDouble:
            return isIntegerOrDouble(text);
        case SchemaType::DoubleOrSign:
            return text == "S" || isDoubleText(text);
        case SchemaType::Integer:
            return isIntegerText(text) && isIn(element, text);
        case SchemaType::NonNegative:
            return isNonNegative(text) && isIn(element, text);
        case SchemaType::Positive:
            return isPositive(text) && isIn(element, text);
        case SchemaType::Binary:
            return consistsOf(text, "01");
        case SchemaType::BinaryOrAny:
            return consistsOf(text, "01X|");
        case SchemaType::Mask:
            return text == kWordOfMasks || consistsOf(text, "01");
        case SchemaType::HexBinary:
            return text.size() % 2 == 0 && consistsOf(text, "0123456789ABCDEFabcdef");
        case SchemaType::HexDigits:
            return consistsOf(text, "01ABCDEF");
        case SchemaType::NumberOrWord:
            return text == element.words || consistsOf(text, kDigits);
    }
    return false;
}

}  // namespace kavu
