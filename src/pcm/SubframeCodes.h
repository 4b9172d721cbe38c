// The codes of ID counters and subframes in the P group: n is the counter, m its subframe,
// k the location, all from 1.
#pragma once

#include <string_view>

namespace kavu::subframe_code {

// How the codes of a counter begin.
inline constexpr std::string_view kCounterHead = "ISF";
inline constexpr std::string_view kCounterFields = "IDC";

inline constexpr std::string_view kCounterCount = "ISF\\N";
inline constexpr std::string_view kCounterName = "ISF1-%d";
inline constexpr std::string_view kCounterType = "ISF2-%d";
inline constexpr std::string_view kCounterWord = "IDC1-%d";
inline constexpr std::string_view kWordLength = "IDC2-%d";
inline constexpr std::string_view kMsbStartBit = "IDC3-%d";
inline constexpr std::string_view kCounterLength = "IDC4-%d";
inline constexpr std::string_view kTransferOrder = "IDC5-%d";
inline constexpr std::string_view kInitialValue = "IDC6-%d";
inline constexpr std::string_view kStartFrame = "IDC7-%d";
inline constexpr std::string_view kEndValue = "IDC8-%d";
inline constexpr std::string_view kEndFrame = "IDC9-%d";
inline constexpr std::string_view kCountDirection = "IDC10-%d";

inline constexpr std::string_view kSubframes = "SF";  ///< how all codes below begin
inline constexpr std::string_view kSubframeCount = "SF\\N-%d";
inline constexpr std::string_view kSubframeName = "SF1-%d-%d";
inline constexpr std::string_view kSupercommutated = "SF2-%d-%d";
inline constexpr std::string_view kLocationMode = "SF3-%d-%d";
inline constexpr std::string_view kLocation = "SF4-%d-%d-%d";
inline constexpr int kLocationField = 4;
inline constexpr std::string_view kInterval = "SF5-%d-%d";
inline constexpr std::string_view kDepth = "SF6-%d-%d";

}  // namespace kavu::subframe_code

namespace kavu {

/// The texts by which a subframe says where it stands.
inline constexpr std::string_view kNotSupercommutated = "NO";
inline constexpr std::string_view kFirstAndInterval = "FI";
inline constexpr std::string_view kEveryLocation = "EL";
inline constexpr std::string_view kNoLocationMode = "NA";

}  // namespace kavu
