#include "xml/bridge/write/XmlValues.h"

#include "core/command/CommandPath.h"
#include "core/text/Text.h"
#include "vocabulary/DGroupFields.h"
#include "xml/bridge/write/SchemaTree.h"

#include <algorithm>
#include <utility>

namespace kavu {

namespace {

/// A criterion of the sync is a number, but for the one text of its table.
bool isNumberOfCriteria(const Field& field, std::string_view value) {
    return (field.code == "SYNC1" || field.code == "SYNC3") &&
           std::all_of(value.begin(), value.end(), isDigit);
}

}  // namespace

std::string_view XmlValues::xmlOf(const Choice& choice) const {
    return isSchema() ? schemaText(choice) : choice.xml;
}

std::string XmlValues::original(std::string_view value) const {
    std::string text;
    text.reserve(value.size());
    while (!value.empty()) {
        if (!isSchema() && value.starts_with("&amp;")) {
            text += '&';
            value.remove_prefix(5);
        } else if (!isSchema() && value.starts_with("&lt;")) {
            text += '<';
            value.remove_prefix(4);
        } else {
            text += value.front();
            value.remove_prefix(1);
        }
    }
    fromStoredForm(text);
    return text;
}

std::string XmlValues::plain(std::string_view value) const {
    std::string text(value);
    fromStoredForm(text);
    return xmlValueText(text, dialect_);
}

void XmlValues::addBadValue(std::string description, std::string value) {
    badValues_.push_back({std::move(description), std::move(value)});
}

std::string XmlValues::choiceText(std::span<const Choice> choices, std::string_view value,
                                  const std::string& description) {
    const auto stored = original(value);
    const auto key = trim(stored);
    for (const auto& choice : choices) {
        const auto xml = xmlOf(choice);
        if (!xml.empty() && equalsIgnoreCase(choice.value, key)) {
            return xmlValueText(xml, dialect_);
        }
    }
    if (isSchema()) {
        return kNoChoice + plain(value);
    }
    addBadValue(description, stored);
    return plain(value);
}

std::string XmlValues::text(const Field& field, std::string_view element, std::string_view value,
                            std::string_view code) {
    const auto key = trim(value);
    if (key.empty()) {
        return {};
    }
    if (field.kind == FieldKind::Date || field.kind == FieldKind::DateTime) {
        auto date = plain(field.kind == FieldKind::Date ? xmlDate(key) : xmlDateTime(key));
        if (date.empty()) {
            dropped_.emplace_back(code);
        }
        return date;
    }
    if (isMaskElement(element) && equalsIgnoreCase(key, kFullWord)) {
        return std::string(kXmlFullWord);
    }
    const bool hasTable = (isSchema() || !field.isPlainInXml) &&
                          std::any_of(field.choices.begin(), field.choices.end(),
                                      [&](const Choice& choice) { return !xmlOf(choice).empty(); });
    if (!hasTable || isNumberOfCriteria(field, key)) {
        return plain(value);
    }
    return choiceText(field.choices, value, "TMATS command '" + std::string(code) + "'");
}

}  // namespace kavu
