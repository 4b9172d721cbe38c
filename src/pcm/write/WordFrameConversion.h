// Conversion of older location types to word/frame locations, and the option for which of
// them new measurements get.
#pragma once

#include "groups/StreamMigration.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;
struct PcmSteps;

/// From this edition on measurements can have word/frame locations.
inline constexpr int kFirstWordFrameEdition = 2004;

/// Lets the user choose the option: true for word/frame locations, false for the older types,
/// nothing after a Cancel. The present choice is passed.
using ChooseDefinitionMode = std::function<std::optional<bool>(UserInterface&, bool wordFrame)>;

/// Sets `implicitSubframes` by the option of new measurements; it is off before 106-04 and on
/// from 106-11 on. If the option was never set it becomes word/frame, and for a stream without
/// measurements the user is asked: by `choose`, or, without it, by a choice of two.
void wordFrameMode(PcmFormat& format, UserInterface* parent,
                   const ChooseDefinitionMode& choose = {});
/// Asks for the option; true if it has changed.
bool chooseWordFrameMode(PcmFormat& format, UserInterface* parent,
                         const ChooseDefinitionMode& choose = {});

/// Gives every measurement word/frame locations in place of its older ones. What cannot be
/// converted stays and is reported by message 460 ("Unable to convert"); 461 ("may not have
/// been completely converted") if places were lost. They are logged, and shown at the end.
/// False for an edition without word/frame locations, which is reported, without a format,
/// and after a cancel; then nothing has changed. `unconverted` gets the names that stay.
bool convertToWordFrame(PcmFormat& format, UserInterface* parent,
                        std::vector<std::string>* unconverted = nullptr);

/// Converts and saves the stream in this P file while the document is migrated: the document
/// has its new edition already, but the stream is read as one of `inputEdition`. No format
/// is in memory afterwards.
StreamConversion migrateStream(PcmFormat& format, UserInterface* parent, const PcmSteps& steps,
                               int pIndex, int inputEdition);

struct Sequence {
    int start = 0;
    int end = 0;
    int interval = 0;
    [[nodiscard]] bool operator==(const Sequence&) const = default;
};
/// True if a list is one value or has a constant step; `sequence` is then set.
[[nodiscard]] bool findSequence(const std::vector<int>& list, Sequence& sequence);

}  // namespace kavu
