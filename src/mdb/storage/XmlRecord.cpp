#include "mdb/storage/XmlRecord.h"

#include "core/text/Markup.h"
#include "core/text/Text.h"
#include "mdb/record/DiscreteText.h"
#include "mdb/record/MdbFields.h"
#include "xml/XmlText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include <pugixml.hpp>

namespace kavu {

namespace {

constexpr const char* kConversionElement = "DataConversion";
constexpr std::string_view kConversionPath = "DataConversionAttributes/DataConversion";
constexpr const char* kTypeAttribute = "Type";
constexpr std::string_view kNone = "NON";

/// The fields with an element of their own, as they follow one another in the file.
constexpr auto kOrder = [] {
    std::array<std::size_t, mdbfield::kType> order{};
    std::size_t place = 0;
    for (std::size_t i = 0; i < mdbfield::kType; ++i) {
        if (i == mdbfield::kDescription + 2) {
            order[place++] = mdbfield::kInputFormat;
        }
        if (i != mdbfield::kInputFormat) {
            order[place++] = i;
        }
    }
    return order;
}();

// --- reading --------------------------------------------------------------------------------

/// The text of an element as a record has it.
std::string fieldText(const pugi::xml_node& element) {
    std::string text;
    for (const auto& child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    toStoredForm(text);
    return std::string(trimBlanks(text));
}

pugi::xml_node elementAt(pugi::xml_node node, std::string_view path) {
    char step[64];
    while (node && !path.empty()) {
        const auto end = std::min(path.find('/'), path.size());
        step[path.copy(step, std::min(end, sizeof step - 1))] = '\0';
        node = node.child(step);
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return node;
}

std::string wordsText(const pugi::xml_node& list, const char* element,
                      std::initializer_list<const char*> parts) {
    std::string text;
    const auto add = [&text](const std::string& word) {
        text += text.empty() || word.empty() ? "" : " ";
        text += word;
    };
    for (const auto& item : list.children(element)) {
        if (parts.size() == 0) {
            add(fieldText(item));
        }
        for (const auto* const part : parts) {
            add(fieldText(item.child(part)));
        }
    }
    return text;
}

std::string discreteText(const pugi::xml_node& list) {
    std::vector<DiscretePair> pairs;
    for (const auto& event : list.children("Event")) {
        pairs.emplace_back(fieldText(event.child("ConversionData")),
                           fieldText(event.child("EventDefinition")));
    }
    return writeDiscrete(pairs);
}

void readConversion(const pugi::xml_node& element, MdbRecord& record) {
    if (!element) {
        return;
    }
    const auto& row = mdbFields()[mdbfield::kType];
    const auto type = trimBlanks(element.attribute(kTypeAttribute).value());
    record[mdbfield::kType] = type.empty() ? kNone : fromXmlWord(row, type);
    toStoredForm(record[mdbfield::kType]);
    auto& data = record[mdbfield::kData];
    if (const auto pairs = element.child("PairSets")) {
        data = wordsText(pairs, "Pair", {"TmValue", "EuValue"});
    } else if (const auto terms = element.child("Coefficients")) {
        data = wordsText(terms, "Coefficient", {});
    } else if (const auto events = element.child("Discrete")) {
        data = discreteText(events);
    } else {
        data = fieldText(element);
    }
}

/// The name of an element that begins as this program writes it, without a parser; nothing for any
/// other element, and for a name that a parser would change. A large database is opened in half the
/// time.
std::optional<std::string_view> writtenName(std::string_view element) {
    const auto take = [&element](std::string_view text) {
        const bool isThere = element.substr(0, text.size()) == text;
        element.remove_prefix(isThere ? text.size() : 0);
        return isThere;
    };
    if (!take("<Measurement>")) {
        return std::nullopt;
    }
    while (!element.empty() && (element.front() == '\n' || element.front() == '\r' ||
                                element.front() == '\t' || element.front() == ' ')) {
        element.remove_prefix(1);
    }
    if (!take("<Name>")) {
        return std::nullopt;
    }
    const auto text = element.substr(0, element.find('<'));
    element.remove_prefix(text.size());
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return c != '&' && static_cast<unsigned char>(c) >= ' ';
    });
    return isPlain && take("</Name>") ? std::optional(trimBlanks(text)) : std::nullopt;
}

/// The element parsed; what is left of it after a fault is an empty node.
pugi::xml_node parseElement(pugi::xml_document& document, std::string_view element) {
    const auto result = document.load_buffer(element.data(), element.size(), pugi::parse_default,
                                             pugi::encoding_utf8);
    return result ? document.document_element() : pugi::xml_node();
}

// --- writing --------------------------------------------------------------------------------

void appendEscaped(std::string& out, std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    for (const char c : xmlCharacters(text)) {
        if (const auto entity = markupEntity(c); !entity.empty()) {
            out += entity;
        } else if (c == '\r') {
            out += "&#13;";  // a real one would come back as a line feed
        } else {
            out += c;
        }
    }
}

/// Writes elements line by line, each indented by its depth.
class ElementWriter {
  public:
    void open(std::string_view name, std::string_view attributes = {}) {
        startLine();
        out_.append("<").append(name).append(attributes).append(">");
        open_.push_back(name);
    }
    void close() {
        const auto name = open_.back();
        open_.pop_back();
        startLine();
        out_.append("</").append(name).append(">");
    }
    void leaf(std::string_view name, std::string_view text, std::string_view attributes = {}) {
        startLine();
        out_.append("<").append(name).append(attributes).append(">");
        appendEscaped(out_, text);
        out_.append("</").append(name).append(">");
    }
    /// Closes and opens elements so that the next ones are in those of this path.
    void enter(std::string_view path, std::size_t base) {
        std::size_t depth = base;
        while (!path.empty()) {
            const auto end = std::min(path.find('/'), path.size());
            const auto name = path.substr(0, end);
            if (depth >= open_.size() || open_[depth] != name) {
                leave(depth);
                open(name);
            }
            ++depth;
            path.remove_prefix(std::min(end + 1, path.size()));
        }
        leave(depth);
    }
    void leave(std::size_t depth) {
        while (open_.size() > depth) {
            close();
        }
    }
    [[nodiscard]] std::string take() { return std::move(out_); }

  private:
    void startLine() {
        if (!out_.empty()) {
            out_ += '\n';
            out_.append(open_.size() + 1, '\t');
        }
    }

    std::string out_;
    std::vector<std::string_view> open_;
};

std::string attributeOf(std::string_view name, std::string_view value) {
    std::string text = " ";
    text.append(name).append("=\"");
    appendEscaped(text, value);
    return text + "\"";
}

void writePairs(ElementWriter& writer, std::string_view data) {
    writer.open("PairSets");
    const auto words = blankSeparated(data);
    for (std::size_t i = 0; i < words.size(); i += 2) {
        writer.open("Pair");
        writer.leaf("TmValue", words[i]);
        writer.leaf("EuValue", i + 1 < words.size() ? words[i + 1] : std::string_view());
        writer.close();
    }
    writer.close();
}

void writeCoefficients(ElementWriter& writer, std::string_view data) {
    writer.open("Coefficients");
    std::size_t number = 0;
    for (const auto word : blankSeparated(data)) {
        writer.leaf("Coefficient", word, attributeOf("N", std::to_string(number++)));
    }
    writer.close();
}

void writeEvents(ElementWriter& writer, std::string_view data) {
    writer.open("Discrete");
    for (const auto& [value, event] : readDiscrete(data)) {
        writer.open("Event");
        writer.leaf("ConversionData", value);
        writer.leaf("EventDefinition", event);
        writer.close();
    }
    writer.close();
}

void writeConversion(ElementWriter& writer, const MdbRecord& record) {
    const auto& type = record[mdbfield::kType];
    const auto& data = record[mdbfield::kData];
    if (type.empty() && data.empty()) {
        return;
    }
    writer.enter(kConversionPath.substr(0, kConversionPath.find('/')), 1);
    const std::string_view code = type.empty() ? kNone : std::string_view(type);
    const auto attribute =
        attributeOf(kTypeAttribute, toXmlWord(mdbFields()[mdbfield::kType], code));
    const bool hasForm = code == "PRS" || code == "COE" || code == "DIS";
    if (!hasForm || data.empty()) {
        writer.leaf(kConversionElement, data, attribute);
        return;
    }
    writer.open(kConversionElement, attribute);
    if (code == "PRS") {
        writePairs(writer, data);
    } else if (code == "COE") {
        writeCoefficients(writer, data);
    } else {
        writeEvents(writer, data);
    }
}

}  // namespace

MdbRecord readXmlRecord(std::string_view element) {
    pugi::xml_document document;
    const auto node = parseElement(document, element);
    MdbRecord record;
    // Fields with one parent follow one another, so its path is walked once.
    std::string_view path;
    auto parent = node;
    for (std::size_t i = 0; i < mdbfield::kType; ++i) {
        const auto& row = mdbFields()[i];
        const auto slash = row.element.rfind('/');
        const bool isDeep = slash != std::string_view::npos;
        const auto parentPath = isDeep ? row.element.substr(0, slash) : std::string_view();
        if (parentPath != path) {
            path = parentPath;
            parent = elementAt(node, path);
        }
        if (const auto found = elementAt(parent, row.element.substr(isDeep ? slash + 1 : 0))) {
            record[i] = fromXmlWord(row, fieldText(found));
        }
    }
    readConversion(elementAt(node, kConversionPath), record);
    return record;
}

std::string readXmlRecordName(std::string_view element) {
    if (const auto name = writtenName(element)) {
        return std::string(*name);
    }
    pugi::xml_document document;
    return fieldText(parseElement(document, element).child("Name"));
}

std::string writeXmlRecord(const MdbRecord& record) {
    ElementWriter writer;
    writer.open(kXmlRecordElement);
    for (const auto index : kOrder) {
        const auto& row = mdbFields()[index];
        if (record[index].empty() && index != mdbfield::kName) {
            continue;
        }
        const auto slash = row.element.rfind('/');
        const bool isDeep = slash != std::string_view::npos;
        writer.enter(isDeep ? row.element.substr(0, slash) : std::string_view(), 1);
        writer.leaf(isDeep ? row.element.substr(slash + 1) : row.element,
                    toXmlWord(row, record[index]));
    }
    writeConversion(writer, record);
    writer.leave(0);
    return writer.take();
}

}  // namespace kavu
