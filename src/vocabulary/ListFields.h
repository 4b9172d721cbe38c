// The part of a vocabulary table that describes the rows of one list.
#pragma once

#include "vocabulary/Field.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace kavu {

/// The fields that the count of this code governs. They are adjacent.
[[nodiscard]] constexpr std::span<const Field> listFields(std::span<const Field> table,
                                                          std::string_view list) {
    const auto isOfList = [list](const Field& field) { return field.list == list; };
    const auto first = std::find_if(table.begin(), table.end(), isOfList);
    return {first, std::find_if_not(first, table.end(), isOfList)};
}

}  // namespace kavu
