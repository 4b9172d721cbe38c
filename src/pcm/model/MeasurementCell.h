// What the edits of a measurement share about its cells and their places.
#pragma once

#include "pcm/PcmFormat.h"

#include <string_view>

namespace kavu {

[[nodiscard]] inline bool isHiddenSubframe(const Subframe* subframe) {
    return subframe != nullptr && subframe->hidden;
}

/// Takes the values that tell of more places than one from a measurement.
void makeSingle(Measurement& cell);

/// The entry of the ranges that a measurement is told by, or 0.
[[nodiscard]] int wordFrameEntry(const PcmFormat& format, std::string_view name);

}  // namespace kavu
