// Whether there is a display on which windows can be shown.
#pragma once

#include "core/files/Environment.h"

namespace kavu {

/// Asks the display that the environment names whether it takes this process: the toolkit would
/// end the process if it does not. A platform that shows nothing is no display.
[[nodiscard]] bool hasDisplay(const Environment& environment);

}  // namespace kavu
