// The counts of P and D groups, and what they count.
#pragma once

#include "groups/CountCheck.h"

#include <vector>

namespace kavu {

class PcmLoad;

[[nodiscard]] const std::vector<CountRule>& pcmCountRules();
/// The first two are those of the lists and of the measurements of a list.
[[nodiscard]] const std::vector<CountRule>& measurementCountRules();

/// Logs each count of the P group that is read which is too small.
void checkPcmCounts(PcmLoad& load);

}  // namespace kavu
