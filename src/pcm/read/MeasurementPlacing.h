// Placing a measurement in the frame: the step that reading and conversion share.
#pragma once

#include "pcm/PcmLoad.h"
#include "pcm/model/Measurement.h"
#include "pcm/model/WordFrame.h"

namespace kavu {

/// Which words a measurement expects.
enum class Expected { Any = -1, MinorWord = 0, Subframe = 2 };

/// Adds a copy of the measurement at a place. A minor word has a cell only in frame 1:
/// for it a frame above 1 returns true immediately. Messages 275, 276, 277; sets
/// `result`, and `abort` if there can be no more cells.
bool addMeasurementLocation(PcmLoad& load, int fwp, int fn, const Measurement& measurement,
                            Expected expected);

/// The words that a range of frames expects at a word.
[[nodiscard]] Expected wordFrameCellType(const PcmFormat& format, int fwp, int startFrame,
                                         int frameInterval, int endFrame);

/// True if a range of frames is not every frame.
[[nodiscard]] bool isSubcommutated(const PcmFormat& format, int start, int interval, int end);
/// The same for a major frame of so many frames, in an edition.
[[nodiscard]] bool isSubcommutated(int edition, int frames, int start, int interval, int end);

/// Checks the ranges of a fragment: messages 276, 285 to 287, 292, 293. With implicit
/// subframes a plain word of a subcommutated fragment gets its hidden subframe here.
bool checkWordFrameFragment(PcmLoad& load, std::string_view name,
                            const WordFrameFragment& fragment);

/// Gives every word of a subcommutated fragment that has no subframe a hidden one. False if one
/// cannot be made.
bool giveHiddenSubframes(PcmLoad& load, std::string_view name, const WordFrameFragment& fragment);

/// Places a measurement in all words and frames of a fragment, the last two steps of reading
/// it: each word's end frame is lowered to its depth, and a place that fails ends its word. Each
/// copy has the mask of the fragment, so that a place states which bits the measurement takes
/// there.
void placeWordFrameFragment(PcmLoad& load, const Measurement& measurement,
                            const WordFrameFragment& fragment);

}  // namespace kavu
