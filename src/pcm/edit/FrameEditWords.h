// Inserting, deleting and moving word positions. Words move with all that they hold. What is
// located by ranges or by an interval is not renumbered by that: `changeFrame` asks for it.
#pragma once

#include "pcm/edit/MeasurementEdit.h"

namespace kavu {

/// The words that are selected: what prompts offer first.
struct SelectedWords {
    int first = 1;
    int last = 1;
};

// Each of these asks about what the edit leaves behind, as `changeFrame` does; a Cancel there is
// without effect.

/// Inserts this many plain words after a position: messages 160 (position), 161 (count),
/// 189 and those of `setWordsPerMinorFrame`. False without effect.
bool insertFwps(PcmFormat& format, UserInterface* parent, int after, int count);
/// Asks for both numbers first. Does nothing without a parent.
bool insertFwps(PcmFormat& format, UserInterface* parent, const SelectedWords& selected = {});

/// Deletes the words from first to last, one after the other: message 160; questions 123, 129
/// and one for the first entry of a plain word. A No keeps a word and goes on with the next;
/// without a parent there are no questions. Message 222 ends it if a bus stream would get too
/// short. Returns the number of deleted words; nothing if the positions were refused.
std::optional<int> deleteFwps(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                              int first, int last);
std::optional<int> deleteFwps(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                              const SelectedWords& selected = {});

/// Moves the words from first to last after another position: messages 160, 228. False
/// without effect.
bool moveFwps(PcmFormat& format, UserInterface* parent, int first, int last, int after);
bool moveFwps(PcmFormat& format, UserInterface* parent, const SelectedWords& selected = {});

}  // namespace kavu
