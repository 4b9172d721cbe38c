// Locations that are given by an interval, or counted: of measurements of the older types, of
// subframes and of async formats. Words that have moved, or are gone, make others of them.
#pragma once

#include "pcm/PcmFormat.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// Which words a load gives to the subframes, by what is written of them.
class LoadedSubframes {
  public:
    explicit LoadedSubframes(const PcmFormat& format);
    /// True if the load gives the subframe of the word other words than it has.
    [[nodiscard]] bool differs(int fwp) const;

  private:
    std::vector<bool> differs_;  ///< by word; empty if none does
};

/// True if a load finds a measurement of an older type, given by its first cell, in the words and
/// positions in which it is shown. An interval in subframes (SFFR) is never written.
[[nodiscard]] bool isFoundByLoad(const PcmFormat& format, const LoadedSubframes& subframes,
                                 CellRef first, int fwp, int index);

/// Gives a measurement of an older type the interval or the list that its cells make. What a
/// list cannot say, because it takes its masks from other measurements, becomes word/frame
/// locations where the edition has them. Says what it has become; empty if nothing does.
[[nodiscard]] std::string refitOlderType(PcmFormat& format, std::string_view name);

/// Gives each subframe that a load would give other words the interval or the list of its words.
void refitSubframes(PcmFormat& format);

/// The async formats that a load would not find where they are, from 1.
[[nodiscard]] std::vector<int> asyncLeftBehind(const PcmFormat& format);
/// Gives an async format the interval or the list of its words, and says which.
[[nodiscard]] std::string refitAsync(PcmFormat& format, int record);

}  // namespace kavu
