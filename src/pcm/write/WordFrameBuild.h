// The word/frame definition of the same places as an older location type.
#pragma once

#include "pcm/PcmFormat.h"

#include <optional>
#include <vector>

namespace kavu {

/// A cell that holds a measurement, in one frame.
struct HeldPlace {
    CellRef cell;
    int fwp = 0;
    int fn = 0;
};

/// The definition of the measurement in these cells, which are all that it has: by
/// ascending frame, and within a frame by ascending word, without the repetitions of a
/// subframe that is less deep than the major frame. The first of them gives the
/// attributes. Nothing if its locations cannot be expressed by words and frames.
[[nodiscard]] std::optional<WordFrameDefinition> buildWordFrame(const PcmFormat& format,
                                                                const std::vector<HeldPlace>& held);

}  // namespace kavu
