// A TMATS document for one row of the vocabulary: the row with a value, and what has to be around
// it so that XML has a place for it.
#pragma once

#include "core/command/CommandPath.h"
#include "core/text/Text.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/SchemaElements.h"
#include "vocabulary/Vocabularies.h"
#include "xml/bridge/BridgeValues.h"
#include "xml/bridge/write/XmlPlan.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu::test {

/// The code of a field in the group of number 1, in the first of all rows.
inline std::string firstCode(char letter, std::string_view pattern) {
    std::string code(1, letter);
    code += letter == 'G' ? "\\" : "-1\\";
    code += stemOf(pattern);
    for (int i = 0; i < indexCountOf(pattern); ++i) {
        code += "-1";
    }
    return code;
}

/// A text that the schema takes for an element.
inline std::string sampleText(const SchemaElement& element) {
    const auto number = std::to_string(std::max<int>(element.least, 1));
    switch (element.type) {
        case SchemaType::Date:
            return "01-02-2011";
        case SchemaType::DateTime:
            return "01-02-2011-03-04-05";
        case SchemaType::Double:
        case SchemaType::DoubleOrSign:
        case SchemaType::IntegerOrDouble:
        case SchemaType::Integer:
        case SchemaType::NonNegative:
        case SchemaType::Positive:
        case SchemaType::NumberOrWord:
            return number;
        case SchemaType::Binary:
        case SchemaType::BinaryOrAny:
        case SchemaType::Mask:
            return "101";
        case SchemaType::HexBinary:
        case SchemaType::HexDigits:
            return "1A";
        default:
            return "some text";
    }
}

/// The values of a field to walk: all that its choices have a text for, or one.
inline std::vector<std::string> valuesOf(char letter, const Field& field, XmlDialect dialect) {
    std::vector<std::string> values;
    for (const auto& choice : field.choices) {
        const auto text = dialect == XmlDialect::Schema ? schemaText(choice) : choice.xml;
        if (!text.empty() && !choice.value.empty()) {
            values.emplace_back(choice.value);
        }
    }
    if (!values.empty()) {
        return values;
    }
    if (field.refersTo == Refers::SourceName) {
        return {"S"};
    }
    const auto* const element = findSchemaElement(letter, schemaElement(field));
    if (field.kind == FieldKind::Date || field.kind == FieldKind::DateTime) {
        return {field.kind == FieldKind::Date ? "01-02-2011" : "01-02-2011-03-04-05"};
    }
    if (field.kind == FieldKind::Count || stemOf(field.code).ends_with("\\N")) {
        return {"1"};
    }
    if (element != nullptr && element->type == SchemaType::Mask) {
        return {"FW", "101"};
    }
    if (element != nullptr && !element->words.empty()) {
        const auto word = element->words.substr(0, element->words.find(' '));
        return {element->type == SchemaType::NumberOrWord ? "1" : std::string(word)};
    }
    if (element != nullptr && element->type == SchemaType::Group) {
        return {field.code == p::kAdmMp.code ? "Y" : "1"};
    }
    return {element == nullptr ? "some text" : sampleText(*element)};
}

/// Of these elements the schema takes one kind in the same place.
inline bool isAlternative(char letter, std::string_view name) {
    if (name == "Address") {
        return letter == 'B' || letter == 'R';
    }
    constexpr std::string_view kNames =
        " TimeValue CountValue CommandWord CommandWordValue DataLinkName MeasurementName "
        "FloatingPointFormat BitWeight PairSets Coefficients NegativePowersOfX Other Derived "
        "Discrete PCMTime Time1553 DigitalVoice DigitalVideo MeasurementListChange "
        "FormatStructureChange WordAndFrame TaggedData Fixed Delimited UserDefined BusParity "
        "Message ";
    return name.ends_with("DataTypeAttributes") ||
           kNames.find(" " + std::string(name) + " ") != std::string_view::npos;
}

/// Rows that may be in one document: those with the same alternatives in their path.
inline std::string alternativesOf(char letter, std::string_view path) {
    std::string all;
    for (const auto name : splitXmlPath(path)) {
        all += isAlternative(letter, name) ? "/" + std::string(name) : std::string();
    }
    return all;
}

class WalkedDocument {
  public:
    WalkedDocument(char letter, XmlDialect dialect) : letter_(letter), dialect_(dialect) {}

    /// Puts the first row of a field into the document.
    void add(const Field& field, const std::string& value) {
        put(codeOf(field), value);
        fields_.push_back(&field);
    }

    /// Puts in what has to be around the rows. The commands in the order in which they came.
    const std::vector<std::pair<std::string, std::string>>& commands() {
        for (const auto* const field : fields_) {
            addCounts(*field);
            addRequired(schemaElement(*field));
        }
        fields_.clear();
        addGroups();
        return commands_;
    }

  private:
    void put(const std::string& code, const std::string& value) {
        if (codes_.insert(code).second) {
            commands_.emplace_back(code, value);
        }
    }
    [[nodiscard]] std::string codeOf(const Field& field) const {
        const bool isOfPage =
            dialect_ == XmlDialect::Schema && xmlField(letter_, field.code, dialect_) == &field;
        return firstCode(letter_, isOfPage ? field.code : codeForXml(field));
    }

    /// The counts of all lists that a field is in.
    void addCounts(const Field& field) {
        for (const auto& other : findVocabulary(letter_)->fields) {
            const auto isAround = [](std::string_view count, std::string_view element) {
                return !count.empty() && element.size() > count.size() &&
                       element.starts_with(count) && element[count.size()] == '/';
            };
            const bool isCount = stemOf(other.code).ends_with("\\N");
            if (isCount && (other.code == field.list || isAround(other.element, field.element) ||
                            isAround(schemaElement(other), schemaElement(field)))) {
                const bool isNew = !codes_.contains(codeOf(other));
                put(codeOf(other), "1");
                if (isNew) {
                    addCounts(other);
                }
            }
        }
    }

    /// What the schema wants in the elements around one, each with a value.
    void addRequired(std::string_view path) {
        for (auto slash = path.rfind('/'); slash != std::string_view::npos;
             slash = path.substr(0, slash).rfind('/')) {
            addRequiredIn(path.substr(0, slash), path);
        }
        if (letter_ == 'B') {
            addRequiredIn("Bus", path);
        }
    }
    void addRequiredIn(std::string_view around, std::string_view without) {
        for (const auto& element : schemaElements(letter_)) {
            const auto slash = element.path.rfind('/');
            if (slash == std::string_view::npos || element.path.substr(0, slash) != around ||
                !element.isRequired || without == element.path ||
                without.starts_with(std::string(element.path) + "/")) {
                continue;
            }
            if (element.type == SchemaType::Group) {
                addRequiredIn(element.path, without);
            }
            for (const auto& field : findVocabulary(letter_)->fields) {
                if (schemaElement(field) == element.path && field.code != "CO" &&
                    field.code != "NPC") {
                    put(codeOf(field), valuesOf(letter_, field, XmlDialect::Schema).front());
                    addCounts(field);
                    break;
                }
            }
        }
    }

    void addGroups() {
        put("G\\PN", "P");
        put("G\\DSI\\N", "1");
        put("G\\DSI-1", "S");
        put("G\\DST-1", letter_ == 'R' ? "STO" : "RF");
        put("M-1\\ID", "S");
        put("M-1\\BSG1", "PCM");
        const auto group = std::string(1, letter_) + "-1\\";
        if (letter_ == 'T' || letter_ == 'R') {
            put(group + "ID", "S");
        } else if (letter_ == 'C') {
            put("C-1\\DCN", "A");
        } else if (letter_ != 'G' && letter_ != 'M') {
            put(group + "DLN", "L");
        }
        if (letter_ == 'R') {
            put("R-1\\N", "1");
        } else if (letter_ != 'G' && letter_ != 'M' && letter_ != 'T') {
            put("M-1\\BB\\DLN", "L");
        }
        if (letter_ == 'D' || letter_ == 'C') {
            put("P-1\\DLN", "L");
            put("P-1\\MF\\N", "1");
            put("P-1\\MF1", "8");
            put("D-1\\DLN", "L");
            put("D-1\\ML\\N", "1");
            put("D-1\\MLN-1", "ML");
            put("D-1\\MN\\N-1", "1");
            put("D-1\\MN-1-1", "A");
            put("D-1\\MN1-1-1", "NO");
        }
        if (letter_ == 'B' && !codes_.contains("B-1\\NMS\\N-1")) {
            put("P-1\\DLN", "L");
            put("P-1\\TF", "BUS");
        }
    }

    char letter_;
    XmlDialect dialect_;
    std::set<std::string> codes_;
    std::vector<const Field*> fields_;
    std::vector<std::pair<std::string, std::string>> commands_;
};

}  // namespace kavu::test
