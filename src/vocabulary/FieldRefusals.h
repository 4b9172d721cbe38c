// Why a value is refused for a field, in words for the user: the same for all who set values.
#pragma once

#include "vocabulary/Field.h"

#include <string>
#include <string_view>

namespace kavu {

/// Why documents of an edition do not have the field; empty if they do.
[[nodiscard]] std::string editionRefusal(const Field& field, int edition);
/// Why the field cannot have the value; empty if it can.
[[nodiscard]] std::string valueRefusal(const Field& field, std::string_view value, int edition);

}  // namespace kavu
