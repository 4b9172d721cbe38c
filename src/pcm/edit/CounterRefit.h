// ID counters after one of them is gone. A file numbers them, and a reader takes as many as the
// file counts: those after the gap of a deleted one are not found.
#pragma once

#include "pcm/PcmFormat.h"

#include <string>
#include <vector>

namespace kavu {

/// The names of the counters that a load would not find.
[[nodiscard]] std::vector<std::string> countersLeftBehind(const PcmFormat& format);
/// Closes the gaps, so that a load finds all counters. What hangs on them, and hidden subframes of
/// a gap, go along.
void closeCounterGaps(PcmFormat& format);

}  // namespace kavu
