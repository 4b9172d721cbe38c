// The commands of a stream's groups, without their prefix.
#pragma once

#include <string>
#include <vector>

namespace kavu::test {

using Commands = std::vector<std::string>;

inline Commands operator+(Commands a, const Commands& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

}  // namespace kavu::test
