// The transmission group: its pages, its fields and its list of subcarriers.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

/// A page of the sheet. Fields refer to it by its name.
struct TransmissionPage {
    const char* name = "";
    const char* title = "";
};
[[nodiscard]] std::span<const TransmissionPage> transmissionPages();

inline constexpr std::size_t kMostTransmissionSubcarriers = 99;
inline constexpr std::string_view kTransmissionSubcarriers = "SCO\\N";

/// The commands in the order in which they are written.
[[nodiscard]] std::span<const Field> transmissionFields();
/// The columns of the subcarriers.
[[nodiscard]] std::span<const Field> transmissionSubcarrierFields();

}  // namespace kavu
