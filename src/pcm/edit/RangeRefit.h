// New ranges for a word/frame measurement whose words have moved, or whose frames are others now.
#pragma once

#include "pcm/edit/RangePlaces.h"

#include <optional>

namespace kavu {

/// The definition that gives these places, which are cells of a frame of that shape: each location
/// by one range for each fragment where they make one, else by several locations. Nothing if no
/// definition does that a load would understand.
[[nodiscard]] std::optional<WordFrameDefinition> refitRanges(
    PcmFormat& format, const std::vector<LocationPlaces>& places, const FrameShape& shape,
    const FrameShape& loaded);

}  // namespace kavu
