// Leaving the form of a subframe, which may have moved it to another ID counter.
#pragma once

#include "pcm/model/Subframe.h"

#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// What the form of a subframe edits.
struct SubframeEditing {
    Subframe record;
    int counter = -1;                ///< index of the ID counter
    std::vector<int> everyLocation;  ///< the words of an "EL", rising
    [[nodiscard]] bool operator==(const SubframeEditing&) const = default;
};
/// Of the subframe at a word. REQUIRES: a word of a subframe.
[[nodiscard]] SubframeEditing subframeEditing(const PcmFormat& format, int fwp);
/// Stores it, under the rules of `saveSubframe` and those of its counter: message 352 too. A
/// refused one leaves the stream as it was.
bool saveSubframeEditing(PcmFormat& format, UserInterface* parent, int fwp,
                         const SubframeEditing& editing);

/// Adds a word to a list of locations, which stays sorted. False with message 161.
bool addLocation(const PcmFormat& format, UserInterface* parent, std::vector<int>& locations,
                 int fwp);

}  // namespace kavu
