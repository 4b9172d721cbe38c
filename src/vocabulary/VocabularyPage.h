// The vocabulary of a group as a page of the manual.
#pragma once

#include "vocabulary/Vocabularies.h"

#include <string>

namespace kavu {

/// A page in Markdown with all fields of a group in the order of the file: codes, labels,
/// limits, editions, choices and XML elements.
[[nodiscard]] std::string vocabularyPage(const GroupVocabulary& vocabulary);
/// The name of its file, "group-t.md".
[[nodiscard]] std::string vocabularyPageName(char letter);

}  // namespace kavu
