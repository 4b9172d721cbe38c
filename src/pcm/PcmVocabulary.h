// All commands of the P group in the order in which it is written.
#pragma once

#include "core/Vocabulary.h"

#include <span>

namespace kavu {

/// The tables by which the parts of the group are read, written and edited, one behind the
/// other. Codes have "-n", "-n-m" and so on where the command has numbers.
[[nodiscard]] std::span<const Field> pcmVocabulary();

}  // namespace kavu
