// How many random cases a property is tried on.
#pragma once

#include <algorithm>

namespace kavu::test {

/// All of them in an ordinary build. Under the sanitizers, which look at the memory and not at
/// the answers and take many times as long, a quarter.
constexpr unsigned seeds(unsigned all) {
#ifdef __SANITIZE_ADDRESS__
    return std::max(1U, all / 4);
#else
    return all;
#endif
}

}  // namespace kavu::test
