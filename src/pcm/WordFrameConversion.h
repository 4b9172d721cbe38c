// From the older location types to word/frame locations.
#pragma once

#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// Sets `implicitSubframes` by the option of new measurements, on 106-04 to 106-09.
void wordFrameMode(PcmFormat& format, UserInterface* parent);
/// Messages 460, 461. False for an edition that has no word/frame locations, which is told.
bool convertToWordFrame(PcmFormat& format, UserInterface* parent);

struct Sequence {
    int start = 0;
    int end = 0;
    int interval = 0;
};
/// True if a list is one value or has a constant step.
[[nodiscard]] bool findSequence(const std::vector<int>& list, Sequence& sequence);

}  // namespace kavu
