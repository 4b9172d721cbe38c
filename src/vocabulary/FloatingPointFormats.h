// The floating point formats of IRIG 106, with the texts by which an editor lists them.
#pragma once

#include "vocabulary/Field.h"

#include <array>

namespace kavu {

inline constexpr auto kFloatingPointFormats = std::to_array<Choice>({
    {"IEEE_32", "IEEE 754 Single Precision", "IEEE 754 Single Precision"},
    {"IEEE_64", "IEEE 754 Double Precision", "IEEE 754 Double Precision"},
    {"1750A_32", "MIL STD 1750A Single Precision", "MIL STD 1750A Single Precision"},
    {"1750A_48", "MIL STD 1750A Double Precision", "MIL STD 1750A Double Precision"},
    {"DEC_32", "DEC Single Precision", "DEC Single Precision"},
    {"DEC_64", "DEC Double Precision", "DEC Double Precision"},
    {"DEC_64G", "DEC \"G\" Double Precision", "DEC G Double Precision"},
    {"IBM_32", "IBM Single Precision", "IBM Single Precision"},
    {"IBM_64", "IBM Double Precision", "IBM Double Precision"},
    {"TI_32", "TI Single Precision", "TI Single Precision"},
    {"TI_40", "TI Extended Precision", "TI Extended Precision"},
});

}  // namespace kavu
