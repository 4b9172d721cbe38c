// The elements that the schema of IRIG 106-11 knows for each group, in its order. The schema itself
// is no part of the program; this is what of it a TMATS file has commands for, and it says what a
// value must look like. The texts of choices are in the vocabulary.
#pragma once

#include "vocabulary/SchemaElement.h"

#include <span>
#include <string_view>

namespace kavu {

/// The elements of a group by its letter; empty for a group without. Those of the B group are of
/// both places that the schema has for it.
[[nodiscard]] std::span<const SchemaElement> schemaElements(char letter);
/// The element of a path, or null.
[[nodiscard]] const SchemaElement* findSchemaElement(char letter, std::string_view path);

/// True if the schema takes this text for an element. A choice is not looked up here.
[[nodiscard]] bool isSchemaText(const SchemaElement& element, std::string_view text);

}  // namespace kavu
