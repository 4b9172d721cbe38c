// The multiplex/modulation group: its page, and the list of its subcarriers.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

inline constexpr std::size_t kMostSubcarriers = 99;

inline constexpr std::string_view kSignalType = "BSG1";
inline constexpr std::string_view kBasebandMeasurement = "BB\\MN";
inline constexpr std::string_view kBasebandLink = "BB\\DLN";
inline constexpr std::string_view kSubcarrierCount = "SI\\N";
inline constexpr std::string_view kSubcarrierType = "SI2-n";
inline constexpr std::string_view kSubcarrierFilter = "SIF2-n";
inline constexpr std::string_view kSubcarrierMeasurement = "SI\\MN-n";
inline constexpr std::string_view kSubcarrierLink = "SI\\DLN-n";

/// The commands in the order in which they are written; those of a subcarrier ("-n")
/// follow their count.
[[nodiscard]] std::span<const Field> multiplexFields();
/// The columns of a subcarrier, the part of the above with an index.
[[nodiscard]] std::span<const Field> subcarrierFields();

/// What carries a baseband signal or a subcarrier.
enum class SignalName { None, DataLink, Measurement };
/// PCM and PAM signals carry a data link, analog ones a measurement; others have no name.
[[nodiscard]] SignalName signalNameOf(std::string_view type);

}  // namespace kavu
