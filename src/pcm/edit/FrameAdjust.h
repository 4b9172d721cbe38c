// Edits of the frame that move words, or change how many words or frames there are, and what then
// becomes of measurements that are located by ranges or by an interval.
#pragma once

#include "pcm/edit/MeasurementEdit.h"
#include "pcm/edit/RangePlaces.h"
#include "pcm/model/Subframe.h"
#include "pcm/structure/SubframeRecordEdit.h"

#include <functional>
#include <string_view>

namespace kavu {

/// Whether an edit moves words only, or may also cut words or frames.
enum class FrameEdit { MovesWords, ChangesSize };

/// Makes an edit of the frame, which states where each word has moved; it begins as a list of all
/// words where they are. Measurements whose definitions the next load would not find where the
/// display shows them, and those that lose places, are named in one question:
///  - "Adjust" rebuilds the definitions from the cells: by ranges and intervals where these give
///  the
///    places, else by several locations or a list. Frames that are added extend what was in every
///    frame, from 106-11 on by the ID counters that counted all frames. ID counters close the gap
///    of one that is gone, and the word of the format identifier and the first tag move along.
///  - "Leave" keeps the definitions as they are.
///  - "Cancel" takes the edit back, and the result is false.
/// False also if the edit is refused, which has no effect. Without a parent nothing is asked and
/// nothing is adjusted.
bool changeFrame(PcmFormat& format, UserInterface* parent, const EditSteps& steps, FrameEdit kind,
                 const std::function<bool(WordMoves& moves)>& edit);

/// `editAttribute` with that question, where the attribute is the size of the frame: messages of
/// `editAttribute`.
bool editFrameAttribute(PcmFormat& format, UserInterface* parent, std::string_view code,
                        std::string_view value);
/// `saveIdCounter` with that question: from 106-11 on hidden subframes are as deep as a counter.
bool saveIdCounterAndFrame(PcmFormat& format, UserInterface* parent, int fwp,
                           const IdCounter& record);

/// `deleteIdCounter` with that question: the counters after it would not be found.
bool deleteIdCounterAndAdjust(PcmFormat& format, UserInterface* parent, int fwp);
/// `saveSubframeEditing` with that question: a subframe of another depth, or of other words.
bool saveSubframeAndFrame(PcmFormat& format, UserInterface* parent, int fwp,
                          const SubframeEditing& editing);

}  // namespace kavu
