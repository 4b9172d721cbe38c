// The titles of the boxes of buses.
#pragma once

#include "core/talk/Titles.h"

namespace kavu::title {

inline constexpr int kUnableToReadBus = number(108);
inline constexpr int kUnableToSaveBus = number(111);
inline constexpr int kInvalidSubTerminal = number(112);
inline constexpr int kInvalidRemoteTerminal = number(113);
inline constexpr int kInvalidMode = number(114);
inline constexpr int kInformationMissing = number(115);
inline constexpr int kMeasurementError = number(116);

}  // namespace kavu::title
