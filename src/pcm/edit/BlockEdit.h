// What is done to a block of the frame at once: delete, paste, move, fill. Each asks one question
// that names everything it would take away, and is either done completely or not at all.
#pragma once

#include "pcm/edit/BlockClip.h"
#include "pcm/edit/MeasurementEdit.h"

#include <set>
#include <string>

namespace kavu {

/// Deletes every measurement and every async format that has a place in the block, there and
/// elsewhere, with the conversion records that no other stream needs. A null parent agrees. False
/// without effect if the block has none, or after a No.
bool deleteBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                 const BlockArea& area);

/// Puts the measurements of a clip at a place and the ones right of and below it. A name that is in
/// use gets a number. What is in the way is named, and the user chooses whether it is replaced or
/// shares the places; async formats always stay. Asks nothing where nothing is in the way and no
/// name changes. A null parent replaces nothing. False without effect if the frame ends before the
/// block does, a counter or the sync word is in the way, the user has cancelled, or a measurement
/// cannot be placed, all of which is reported.
bool pasteBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                const FrameClip& clip, int fwp, int fn);

/// Moves what is in a block to another place: the measurements keep their names, conversions, and
/// the places that they have elsewhere. Otherwise as `pasteBlock`.
bool moveBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
               const BlockArea& from, int fwp, int fn);

enum class FillDirection { Right, Down };

/// Fills the block from its first word, or with `Down` from its first frame. The user chooses
/// whether the cells get copies under new names or become further places of the same measurements,
/// and learns what that replaces. A null parent gives further places. False without effect as for
/// `pasteBlock`, and for a block with nothing to fill.
bool fillBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
               const BlockArea& area, FillDirection direction);

/// A name like this one that no measurement of the stream has, nor one of `taken` (in small
/// letters): "ALT", "ALT_2", "ALT_3". At most 32 bytes.
[[nodiscard]] std::string unusedName(const PcmFormat& format, std::string_view name,
                                     const std::set<std::string>& taken);

}  // namespace kavu
