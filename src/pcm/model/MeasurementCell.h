// What the edits of a measurement share for its cells and their places.
#pragma once

#include "pcm/PcmFormat.h"

#include <string_view>

namespace kavu {

[[nodiscard]] inline bool isHiddenSubframe(const Subframe* subframe) {
    return subframe != nullptr && subframe->hidden;
}

/// Clears the values of a measurement that describe more than one place.
void makeSingle(Measurement& cell);

/// The entry of a measurement's word/frame definition, or 0.
[[nodiscard]] int wordFrameEntry(const PcmFormat& format, std::string_view name);

}  // namespace kavu
