// The values by which subframes and async formats state their locations.
#pragma once

#include <string_view>

namespace kavu {

inline constexpr std::string_view kIdCounterType = "ID";
inline constexpr std::string_view kCountsUp = "INC";
inline constexpr std::string_view kCountsDown = "DEC";
inline constexpr std::string_view kNotSupercommutated = "NO";
inline constexpr std::string_view kFirstAndInterval = "FI";
inline constexpr std::string_view kEveryLocation = "EL";
inline constexpr std::string_view kNoLocationMode = "NA";

}  // namespace kavu
