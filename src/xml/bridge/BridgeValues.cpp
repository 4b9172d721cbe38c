#include "xml/bridge/BridgeValues.h"

#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kDateWidth = 10;  // 2009-01-02

/// The text of a choice in one direction; empty if it has none.
std::string_view textOf(const Choice& choice, XmlDialect dialect) {
    return dialect == XmlDialect::Schema ? schemaText(choice) : choice.xml;
}

bool isMapped(const Field& field, XmlDialect dialect) {
    return dialect == XmlDialect::Schema || !field.isPlainInXml;
}

bool hasAt(std::string_view text, std::size_t at, char c) {
    return text.size() > at && text[at] == c;
}

bool isXmlDate(std::string_view text) {
    return hasAt(text, 4, '-') && hasAt(text, 7, '-');
}

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const auto part : parts) {
        text += part;
    }
    return text;
}

}  // namespace

std::optional<std::string_view> xmlTextFor(const Field& field, std::string_view value,
                                           XmlDialect dialect) {
    const auto wanted = trim(value);
    if (wanted.empty() || !isMapped(field, dialect)) {
        return std::nullopt;
    }
    for (const auto& choice : field.choices) {
        if (equalsIgnoreCase(choice.value, wanted) && !textOf(choice, dialect).empty()) {
            return textOf(choice, dialect);
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> valueForXmlText(const Field& field, std::string_view text,
                                                XmlDialect dialect) {
    const auto wanted = trim(text);
    if (wanted.empty() || !isMapped(field, dialect)) {
        return std::nullopt;
    }
    const Choice* found = nullptr;
    for (const auto& choice : field.choices) {
        const bool isRead = dialect == XmlDialect::Schema || choice.isRead;
        if (isRead && equalsIgnoreCase(textOf(choice, dialect), wanted) &&
            (found == nullptr || (found->lastEdition != 0 && choice.lastEdition == 0))) {
            found = &choice;
        }
    }
    return found == nullptr ? std::nullopt : std::optional(found->value);
}

std::string xmlDate(std::string_view tmatsDate) {
    const auto text = trim(tmatsDate);
    if (text.size() != kDateWidth || text[2] != '-' || text[5] != '-') {
        return {};
    }
    return joined({text.substr(6), "-", text.substr(0, 2), "-", text.substr(3, 2)});
}

std::string tmatsDate(std::string_view xmlDate) {
    const auto text = trim(xmlDate);
    if (text.size() != kDateWidth || !isXmlDate(text)) {
        return {};
    }
    return joined({text.substr(5), "-", text.substr(0, 4)});
}

std::string xmlDateTime(std::string_view tmatsDateTime) {
    const auto text = trim(tmatsDateTime);
    if (text.size() != kDateTimeWidth || text[2] != '-' || text[5] != '-' || text[10] != '-' ||
        text[13] != '-' || text[16] != '-') {
        return {};
    }
    return joined({xmlDate(text.substr(0, kDateWidth)), "T", text.substr(11, 2), ":",
                   text.substr(14, 2), ":", text.substr(17)});
}

std::string tmatsDateTime(std::string_view xmlDateTime) {
    const auto text = trim(xmlDateTime);
    if (text.size() < kDateTimeWidth || !isXmlDate(text) || text[10] != 'T' || text[13] != ':' ||
        text[16] != ':') {
        return {};
    }
    return joined({tmatsDate(text.substr(0, kDateWidth)), "-", text.substr(11, 2), "-",
                   text.substr(14, 2), "-", text.substr(17, 2)});
}

bool isMaskElement(std::string_view path) {
    constexpr std::string_view kMask = "BitMask";
    return path.substr(path.rfind('/') + 1) == kMask;
}

}  // namespace kavu
