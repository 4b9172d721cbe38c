// The values of `LT`: how the places of a measurement are stated.
#pragma once

#include <string_view>

namespace kavu::location_type {

inline constexpr std::string_view kMinorFrame = "MF";
inline constexpr std::string_view kMinorFrameSupercommutated = "MFSC";
inline constexpr std::string_view kMinorFrameFragments = "MFFR";
inline constexpr std::string_view kSubframe = "SF";
inline constexpr std::string_view kSubframeSupercommutated = "SFSC";
inline constexpr std::string_view kSubframeFragments = "SFFR";
inline constexpr std::string_view kWordFrame = "WDFR";

}  // namespace kavu::location_type
