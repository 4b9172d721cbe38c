#include "xml/bridge/read/GroupReader.h"

#include "core/command/CommandPath.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <initializer_list>
#include <span>

namespace kavu {

namespace {

/// So many ranges of frames times locations are written for a record; a file of a few bytes could
/// ask for any number.
constexpr std::size_t kMostRepeatedRanges = 100'000;

XmlNode findFirst(XmlNode from, std::span<const std::string_view> steps) {
    if (steps.empty()) {
        return from;
    }
    for (const auto child : from.children()) {
        if (child.type() == pugi::node_element && localName(child.name()) == steps.front()) {
            if (const auto found = findFirst(child, steps.subspan(1))) {
                return found;
            }
        }
    }
    return {};
}

void find(XmlNode from, std::span<const std::string_view> steps, std::vector<XmlNode>& found) {
    if (steps.empty()) {
        found.push_back(from);
        return;
    }
    for (const auto child : from.children()) {
        if (child.type() == pugi::node_element && localName(child.name()) == steps.front()) {
            find(child, steps.subspan(1), found);
        }
    }
}

/// Characters of a text in UTF-8.
std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

bool readsAllElements(ReadAs how) {
    switch (how) {
        case ReadAs::Subcommutation:
        case ReadAs::Coefficients:
        case ReadAs::Calibrations:
        case ReadAs::SingleSubcarrier:
        case ReadAs::Contacts:
        case ReadAs::Sources:
            return true;
        default:
            return false;
    }
}

/// The row of a code. REQUIRES: the group has it.
const Field* findRow(char letter, std::string_view code) {
    const auto fields = findVocabulary(letter)->fields;
    return &*std::find_if(fields.begin(), fields.end(),
                          [code](const Field& field) { return field.code == code; });
}

/// The number of a term; nothing for what is none.
std::optional<int> termNumber(XmlNode term) {
    const auto text = trim(std::string_view(attributeOf(term, "N").value()));
    constexpr std::size_t kMostDigits = 6;
    if (text.empty() || text.size() > kMostDigits ||
        !std::all_of(text.begin(), text.end(), isDigit)) {
        return std::nullopt;
    }
    return leadingInt(text);
}

}  // namespace

std::vector<XmlNode> findElements(XmlNode from, const ReadPath& path) {
    std::vector<XmlNode> found;
    find(from, path.steps, found);
    return found;
}

XmlNode findElement(XmlNode from, const ReadPath& path) {
    return findFirst(from, path.steps);
}

std::vector<XmlNode> childrenOf(XmlNode element, std::string_view name) {
    return findElements(element, {{name}});
}

std::string sourceTypeOf(XmlNode source, XmlDialect dialect) {
    const std::string text(attributeOf(source, "Type").value());
    return valueFromXml(*findRow('G', kSourceType), text.empty() ? "Other" : text, dialect);
}

void GroupReader::read(XmlNode element) {
    Rows rows;
    rows.at[0].element = element;
    readLevel(readPlan(letter_, output_.dialect()), rows);
}

// --- Rows -----------------------------------------------------------------------------------

void GroupReader::readLevel(const ReadLevel& level, const Rows& rows) {
    for (const auto& item : level.items) {
        if (item.level != nullptr) {
            readRows(item, rows);
        } else {
            readItem(item, rows);
        }
    }
}

void GroupReader::readRows(const ReadItem& item, const Rows& rows) {
    std::vector<XmlNode> elements;
    for (const auto& path : item.paths) {
        elements = findElements(rows.at[rows.count].element, path);
        if (!elements.empty()) {
            break;
        }
    }
    if (elements.empty() || rows.count + 1 >= kMostLevels) {
        return;
    }
    writeRows(item.code, rows, std::to_string(elements.size()));
    auto inner = rows;
    auto& row = inner.at[++inner.count];
    for (const auto element : elements) {
        row.element = element;
        ++row.number;
        readLevel(*item.level, inner);
    }
}

void GroupReader::readItem(const ReadItem& item, const Rows& rows) {
    const auto element = rows.at[rows.count].element;
    if (item.how == ReadAs::LocationLength) {
        // The measurement is the row around that of the location.
        if (const auto length = findElement(rows.at[rows.count - 1].element, {{"Length"}})) {
            output_.writeText(prefix_, *item.field, codeOf(item.code, rows), length);
        }
        return;
    }
    if (item.how == ReadAs::FragmentNumber) {
        writeRows(item.code, rows, std::to_string(rows.at[rows.count].number));
        return;
    }
    const bool readsAll = readsAllElements(item.how);
    for (const auto& path : item.paths) {
        const auto first = findElement(element, path);
        if (!first || (!path.attribute.empty() && !attributeOf(first, path.attribute))) {
            continue;
        }
        if (readsAll) {
            readList(item, findElements(element, path), rows);
        } else {
            readOne(item, first, path.attribute, rows);
        }
        return;
    }
}

void GroupReader::readOne(const ReadItem& item, XmlNode element, std::string_view attribute,
                          const Rows& rows) {
    if (item.how == ReadAs::Presence) {
        writeRows(item.code, rows, "Y");
        return;
    }
    if (item.how == ReadAs::SyncPattern) {
        const auto length = characterCount(textOfXml(element));
        output_.write(prefix_, p::kMf4.code, length == 0 ? std::string() : std::to_string(length));
    }
    output_.writeText(prefix_, *item.field, codeOf(item.code, rows), element, attribute);
}

void GroupReader::readList(const ReadItem& item, const std::vector<XmlNode>& elements,
                           const Rows& rows) {
    switch (item.how) {
        case ReadAs::Subcommutation:
            return readSubcommutation(item, elements, rows);
        case ReadAs::Coefficients:
            return readCoefficients(item, elements);
        case ReadAs::Calibrations:
            return readCalibrations(item, elements);
        case ReadAs::SingleSubcarrier:
            return readSubcarriers(item, elements);
        case ReadAs::Contacts:
            return readContacts(item, elements);
        default:
            return readSources(item, elements);
    }
}

// --- Rows of their own kind -----------------------------------------------------------------

void GroupReader::readSubcommutation(const ReadItem& item, const std::vector<XmlNode>& ranges,
                                     const Rows& rows) {
    struct Column {
        const Field* field;
        std::string_view element;
    };
    const bool isMerge = item.field->code == p::kAdm8.code;
    const auto columns = isMerge ? std::to_array<Column>({{&p::kAdm9, "StartFrame"},
                                                          {&p::kAdm10, "FrameInterval"},
                                                          {&p::kAdm11, "EndFrame"}})
                                 : std::to_array<Column>({{&p::kAef8, "StartFrame"},
                                                          {&p::kAef9, "FrameInterval"},
                                                          {&p::kAef10, "EndFrame"}});
    auto locations =
        std::max<std::size_t>(1, childrenOf(rows.at[rows.count].element, "Location").size());
    if (locations * ranges.size() > kMostRepeatedRanges) {
        locations = 1;
    }
    for (int location = 1; location <= static_cast<int>(locations); ++location) {
        writeRows(item.code, rows, std::to_string(ranges.size()), {location});
        int number = 0;
        for (const auto range : ranges) {
            ++number;
            for (const auto& column : columns) {
                if (const auto found = findElement(range, {{column.element}})) {
                    output_.writeText(prefix_, *column.field,
                                      codeOf(column.field->code, rows, {location, number}), found);
                }
            }
        }
    }
}

/// The terms of a polynomial; the one with the number 0 has a code without a number. One without a
/// number that can be read gets the next one.
void GroupReader::readCoefficients(const ReadItem& item, const std::vector<XmlNode>& terms) {
    const auto stem = stemOf(item.code);
    const auto& offset = stem == c::kCo.code ? c::kCo : c::kNpc;
    const auto& count = stem == c::kCo.code ? c::kCoN : c::kNpcN;
    int highest = 0;
    for (const auto term : terms) {
        highest = std::max(highest, termNumber(term).value_or(0));
    }
    int next = highest;
    for (const auto term : terms) {
        next += termNumber(term) ? 0 : 1;
    }
    output_.write(prefix_, count.code, std::to_string(next));
    next = highest;
    for (const auto term : terms) {
        const auto number = termNumber(term);
        const int place = number ? *number : ++next;
        output_.markRead(term, number ? "N" : "");
        const auto code = place == 0 ? std::string(offset.code) : fieldCode(item.code, {place});
        output_.writeText(prefix_, *item.field, code, term);
    }
}

/// One element holds all rows side by side; a row begins where a column comes again, or an earlier
/// one.
void GroupReader::readCalibrations(const ReadItem& item, const std::vector<XmlNode>& lists) {
    const bool isInFlight = item.code == c::kMcN.code;
    const auto columns = isInFlight ? std::to_array<const Field*>({&c::kMc1, &c::kMc2, &c::kMc3})
                                    : std::to_array<const Field*>({&c::kMa1, &c::kMa2, &c::kMa3});
    struct Value {
        const Field* field;
        int row;
        XmlNode element;
    };
    std::vector<Value> values;
    int row = 0;
    for (const auto list : lists) {
        auto last = columns.size();
        for (const auto child : list.children()) {
            const auto name = localName(child.name());
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const auto& path = columns[i]->element;
                if (child.type() == pugi::node_element &&
                    path.substr(path.rfind('/') + 1) == name) {
                    row += i <= last ? 1 : 0;
                    values.push_back({columns[i], row, child});
                    last = i;
                }
            }
        }
    }
    if (row == 0) {
        return;
    }
    output_.write(prefix_, item.code, std::to_string(row));
    for (const auto& value : values) {
        output_.writeText(prefix_, *value.field, fieldCode(value.field->code, {value.row}),
                          value.element);
    }
}

void GroupReader::readSubcarriers(const ReadItem& item, const std::vector<XmlNode>& others) {
    int number = 0;
    for (const auto other : others) {
        ++number;
        auto code = std::string(item.code);
        code += others.size() == 1 ? std::string() : "-" + std::to_string(number);
        output_.writeText(prefix_, *item.field, code, other);
    }
}

/// A row is the contact of this number, whatever it lacks, so that no column shifts; the count is
/// that of the names, in the schema's dialect that of the contacts.
void GroupReader::readContacts(const ReadItem& item, const std::vector<XmlNode>& contacts) {
    std::size_t names = 0;
    for (const auto contact : contacts) {
        names += childrenOf(contact, "Name").size();
    }
    const auto count = output_.dialect() == XmlDialect::Schema ? contacts.size() : names;
    output_.write(prefix_, item.code, count == 0 ? std::string() : std::to_string(count));
    int number = 0;
    for (const auto contact : contacts) {
        ++number;
        for (const auto& field : contactFields()) {
            const auto name = field.element.substr(field.element.rfind('/') + 1);
            if (const auto found = findElement(contact, {{name}})) {
                output_.writeText(prefix_, field, fieldCode(field.code, {number}), found);
            }
        }
    }
}

void GroupReader::readSources(const ReadItem& item, const std::vector<XmlNode>& sources) {
    output_.write(prefix_, item.code, std::to_string(sources.size()));
    int number = 0;
    for (const auto source : sources) {
        ++number;
        output_.writeText(prefix_, *findRow('G', kSourceName), fieldCode(kSourceName, {number}),
                          source, "Name");
        output_.write(prefix_, fieldCode(kSourceType, {number}),
                      sourceTypeOf(source, output_.dialect()));
        output_.markRead(source, "Type");
    }
}

// --- Codes ----------------------------------------------------------------------------------

std::string GroupReader::codeOf(std::string_view pattern, const Rows& rows,
                                std::initializer_list<int> more) const {
    // What the schema has but once has the number 1.
    std::array<int, kMostLevels + 2> numbers{};
    const auto wanted = static_cast<std::size_t>(indexCountOf(pattern));
    const auto given = rows.count + more.size();
    std::size_t place = given < wanted ? wanted - given : 0;
    std::fill_n(numbers.begin(), place, 1);
    for (std::size_t i = 1; i <= rows.count; ++i) {
        numbers.at(place++) = rows.at[i].number;
    }
    for (const int number : more) {
        numbers.at(place++) = number;
    }
    return fieldCode(pattern, std::span<const int>(numbers).first(wanted));
}

void GroupReader::writeRows(std::string_view pattern, const Rows& rows, std::string_view value,
                            std::initializer_list<int> more) {
    if (!pattern.empty()) {
        output_.write(prefix_, codeOf(pattern, rows, more), value);
    }
}

}  // namespace kavu
