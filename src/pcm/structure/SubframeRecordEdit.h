// Accepting the dialog of a subframe, which may have moved it to another ID counter.
#pragma once

#include "pcm/model/Subframe.h"

#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// What the dialog of a subframe edits.
struct SubframeEditing {
    Subframe record;
    int counter = -1;                ///< index of the ID counter
    std::vector<int> everyLocation;  ///< the words of an "EL", ascending
    [[nodiscard]] bool operator==(const SubframeEditing&) const = default;
};
/// Of the subframe at a word. REQUIRES: a word of a subframe.
[[nodiscard]] SubframeEditing subframeEditing(const PcmFormat& format, int fwp);
/// Stores it, under the rules of `saveSubframe` and those of its counter, message 352
/// included. If refused the stream is as it was.
bool saveSubframeEditing(PcmFormat& format, UserInterface* parent, int fwp,
                         const SubframeEditing& editing);

/// Adds a word to a list of locations, which stays sorted. False with message 161 ("a
/// number greater than").
bool addLocation(const PcmFormat& format, UserInterface* parent, std::vector<int>& locations,
                 int fwp);

}  // namespace kavu
