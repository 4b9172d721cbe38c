// The vocabulary of a group as a page of the manual.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// A page in Markdown with all fields of a group in the order of the file: codes, labels,
/// limits, editions, choices and XML elements. REQUIRES: a group with a vocabulary.
[[nodiscard]] std::string vocabularyPage(char letter);
/// The same of a group whose table another folder holds.
[[nodiscard]] std::string vocabularyPage(char letter, std::string_view name,
                                         std::span<const Field> fields);
/// The name of its file, "group-t.md".
[[nodiscard]] std::string vocabularyPageName(char letter);

}  // namespace kavu
