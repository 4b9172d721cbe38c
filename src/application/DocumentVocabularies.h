// The vocabularies of all groups that have one, whatever folder holds them.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

struct GroupVocabulary {
    char letter = 0;
    std::string_view name{};  ///< what a person calls the group
    std::span<const Field> fields{};
};

/// In the order in which the groups are saved.
[[nodiscard]] std::span<const GroupVocabulary> documentVocabularies();
/// Null for a group without one.
[[nodiscard]] const GroupVocabulary* findDocumentVocabulary(char letter);

}  // namespace kavu
