// A group file in which every field of a table has a value, and the order of its codes.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu::test {

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// A value that the field takes in this edition.
inline std::string sampleValue(const Field& field, int edition) {
    const auto limit = limitIn(edition, field);
    switch (field.kind) {
        case FieldKind::Choice:
            return storedChoice(choicesOf(field, edition).back(), limit);
        case FieldKind::Date:
            return edition >= 1997 ? "12-31-2005" : "12-31-95";
        case FieldKind::DateTime:
            return edition >= 1997 ? "12-31-2005-23-59-59" : "12-31-95-23-59-59";
        case FieldKind::Count:
        case FieldKind::Digits:
            return "7";
        case FieldKind::Text:
        case FieldKind::Comment:
            break;
    }
    return std::string("ValueOf").append(field.code).substr(0, limit == 0 ? 40 : limit);
}

/// A record with a value for each field and two rows in each list.
inline GroupRow fullRow(std::span<const Field> table, int edition, std::string_view list = {}) {
    GroupRow row;
    for (const auto& field : knownFields(table, edition)) {
        if (field.list != list) {
            continue;
        }
        if (governsRows(field)) {
            row.lists[std::string(field.code)] = {fullRow(table, edition, field.code),
                                                  fullRow(table, edition, field.code)};
        } else {
            row.set(field.code, sampleValue(field, edition));
        }
    }
    return row;
}

/// The codes of a table as a text with two rows in each list has them.
inline void appendCodes(std::vector<std::string>& codes, std::span<const Field> table, int edition,
                        std::string_view list = {}, RowNumbers at = {}) {
    for (const auto& field : knownFields(table, edition)) {
        if (field.list != list) {
            continue;
        }
        codes.push_back(fieldCode(field.code, at.at));
        for (std::size_t i = 1; governsRows(field) && i <= 2; ++i) {
            appendCodes(codes, table, edition, field.code, at.row(i));
        }
    }
}

/// The codes of a group's text behind the head of the group, in its order.
inline std::vector<std::string> codesOf(std::string_view text) {
    std::vector<std::string> codes;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find("\r\n"));
        text.remove_prefix(std::min(text.size(), line.size() + 2));
        const auto head = line.find('\\') + 1;
        codes.emplace_back(line.substr(head, line.find(':') - head));
    }
    return codes;
}

}  // namespace kavu::test
