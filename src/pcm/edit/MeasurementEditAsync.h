// Measurements at the places of async formats: both take the bits of the word.
#pragma once

#include "pcm/PcmFormat.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// A place that a measurement is about to take, with its mask there.
struct CoveredCell {
    int fwp = 0;
    int fn = 0;
    FixedText<64> mask;
};

/// Asks before a measurement takes a whole word that an async format has a place in; `oldName`
/// had its own places already, which are not asked for again. True if there is none, after a Yes,
/// and without a parent.
[[nodiscard]] bool mayCoverAsync(const PcmFormat& format, UserInterface* parent,
                                 std::string_view name, std::string_view oldName,
                                 const std::vector<CoveredCell>& covered);

/// True for a mask without a bit that is left out.
[[nodiscard]] bool isWholeWord(std::string_view mask);
/// The name of the first async format at a place; empty if there is none.
[[nodiscard]] std::string asyncNameAt(const PcmFormat& format, int fwp, int fn);

}  // namespace kavu
