// All commands of the P group and of the D group in the order in which they are written.
#pragma once

#include "vocabulary/Field.h"

#include <span>

namespace kavu {

/// The tables by which the parts of the group are read, written and edited, one behind the
/// other. Codes have "-n", "-n-m" and so on where the command has numbers.
[[nodiscard]] std::span<const Field> pcmVocabulary();
/// The same of the measurements: first what all of them have, then the location types.
[[nodiscard]] std::span<const Field> measurementVocabulary();

}  // namespace kavu
