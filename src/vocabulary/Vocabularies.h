// The vocabulary tables of all groups that have one: the one place that maps a group's
// letter to its table. A new group needs one line.
#pragma once

#include "core/command/CommandPath.h"
#include "vocabulary/Field.h"

#include <span>
#include <string_view>
#include <vector>

namespace kavu {

struct GroupVocabulary {
    char letter = 0;
    std::string_view name{};  ///< the name of the group for the user: "Transmission"
    /// In the order in which the commands are written, followed by those that only the XML
    /// bridge has.
    std::span<const Field> fields{};
};

/// In the order in which the groups are saved.
[[nodiscard]] std::span<const GroupVocabulary> vocabularies();
/// Null for a group without one, and for a lower-case letter.
[[nodiscard]] const GroupVocabulary* findVocabulary(char letter);

/// A row of a table that a field belongs to, and the numbers in place of its indices.
struct VocabularyMatch {
    const Field* field = nullptr;
    FieldPath path{};  ///< a view into the field that was asked for
};
/// The rows of a table for a field in any case ("ADL-2-5" is of "ADL-n-m"), in the order of the
/// table. Numbers count from 1 and have at most six digits.
[[nodiscard]] std::vector<VocabularyMatch> matchVocabulary(std::span<const Field> table,
                                                           std::string_view field);
/// The same in the table of a group; empty for a group without one.
[[nodiscard]] std::vector<VocabularyMatch> matchVocabulary(char letter, std::string_view field);

/// True if the writer of a group puts the first command before the second one: in the order
/// of the table, but the rows of a list one after the other, each with all of its fields. Both
/// are matches in this table; REQUIRES: the fields of a list are adjacent in it.
[[nodiscard]] bool isWrittenBefore(std::span<const Field> table, const VocabularyMatch& first,
                                   const VocabularyMatch& second);

}  // namespace kavu
