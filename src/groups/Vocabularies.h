// The vocabulary tables of all groups that have one: the one place where a group's letter
// leads to its table. A new group joins by one line.
#pragma once

#include "vocabulary/Field.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The table of a group, in the order in which its commands are written; behind it fields
/// that only the XML bridge knows. Empty for a group without a table.
[[nodiscard]] std::span<const Field> groupVocabulary(char letter);
/// The letters of the groups with a table, in the order in which the groups are saved.
[[nodiscard]] std::string_view vocabularyLetters();
/// What a person calls the group: "Transmission".
[[nodiscard]] std::string_view vocabularyName(char letter);

/// A command's code in its parts: `R-1\ADL-2-5` is R, 1 and "ADL-2-5".
struct CommandCode {
    char letter = 0;
    int index = 0;        ///< 1 to 99; 0 for a group without one
    std::string field{};  ///< as it was typed

    /// "R-1\ADL-2-5"
    [[nodiscard]] std::string text() const;
};
/// The parts of a code in any case; nothing if it is none: an unknown letter, an index that
/// is missing, out of range or too much, no field, or a colon or semi-colon in it.
[[nodiscard]] std::optional<CommandCode> parseCommandCode(std::string_view code);

/// A row of a table that a field code belongs to, and its numbers.
struct VocabularyMatch {
    const Field* field = nullptr;
    std::size_t n = 0;
    std::size_t m = 0;
};
/// The rows of a table for a field code in any case ("ADL-2-5" is of "ADL-n-m"), in the order
/// of the table. Numbers count from 1.
[[nodiscard]] std::vector<VocabularyMatch> matchVocabulary(std::span<const Field> table,
                                                           std::string_view fieldCode);

}  // namespace kavu
