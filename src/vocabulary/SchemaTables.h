// The tables of the schema's elements. Only for `SchemaElements.cpp`.
#pragma once

#include "vocabulary/SchemaElement.h"

#include <span>

namespace kavu::schema {

/// Of the groups of a data source: G, T, R and M.
[[nodiscard]] std::span<const SchemaElement> sourceElements(char letter);
/// Of the groups of a data link, and of a conversion record.
[[nodiscard]] std::span<const SchemaElement> linkElements(char letter);

}  // namespace kavu::schema
