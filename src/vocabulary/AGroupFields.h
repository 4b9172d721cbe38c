// The attributes of a PAM stream: its page, and the list of its subframes.
#pragma once

#include "vocabulary/Field.h"

#include <span>

namespace kavu {

inline constexpr std::size_t kMostPamSubframes = 99;

/// The commands in the order in which they are written; those of a subframe ("-n") follow
/// their count.
[[nodiscard]] std::span<const Field> pamFields();
/// The same, followed by what only the XML bridge has.
[[nodiscard]] std::span<const Field> pamVocabulary();
/// The columns of a subframe, the part of the above with an index.
[[nodiscard]] std::span<const Field> pamSubframeFields();

}  // namespace kavu
