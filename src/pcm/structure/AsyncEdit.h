// The operations on async formats. Records count from 1. Those that edit mark the format
// as changed; a null parent is silent.
#pragma once

#include "pcm/model/AsyncFormat.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// Empties a record; its slots stay.
void clearAsyncFormat(PcmFormat& format, int record);
/// Frees the slots of a record at a word and frame, or all of them with -1 for either, and
/// removes the record if it has none left; later records move up. Message 370 ("Unable to
/// locate Async") if there is no such record.
bool removeAsyncFormat(PcmFormat& format, UserInterface* parent, int record, int fwp, int fn);
/// Frees all slots of a record, which stays.
void freeAsyncSlots(PcmFormat& format, int record);
/// Removes a whole record, after question 137 ("about to delete the link"), which a null
/// parent answers with Yes.
bool deleteAsyncFormat(PcmFormat& format, UserInterface* parent, int record);
/// True if a list at the place has a slot of that record, or of any with 0. -1 is any
/// word, or any frame.
[[nodiscard]] bool isAsyncAt(const PcmFormat& format, int fwp, int fn, int record);

/// Marks the places of one location: a plain word in frame 1, a word with a hidden subframe
/// in each frame that the ranges name. False if there can be no more cells.
bool placeAsyncSlots(PcmFormat& format, UserInterface* parent, int record,
                     const AsyncLocation& location, std::string_view mask);

/// Follows a change of the number of frames from `before`: what was in all frames still is,
/// other ranges end with the last frame, and those that begin after it are removed.
void asyncFramesChanged(PcmFormat& format, int before);

/// A word of a record, as it is written: its mask is that of the first slot there.
struct AsyncPlace {
    int fwp = 0;
    std::string mask;
    std::vector<FrameRange> frames;  ///< empty is every frame
    [[nodiscard]] bool operator==(const AsyncPlace&) const = default;
};
/// The words of every record, ascending, from one pass over the frame; record n is at n -
/// 1.
[[nodiscard]] std::vector<std::vector<AsyncPlace>> asyncPlaces(const PcmFormat& format);

/// Checks a record when its dialog is accepted, then places its slots again: messages 367 (no
/// name), 374 (a stream of that name exists already, by `linkExists`), 375 (another record
/// has the name), 368 (no location type), 369 (no interval), 370 (no such record), 195 and
/// 196 (words), 373 (a word twice), 371 and 372 (masks), 215 (too many records), 197.
/// `record` 0 adds one. For an "FI" the words follow from the first place, and a place that is
/// not given has the mask and frames of the first; an "EL" has as many locations as there are
/// places. An empty mask is the whole word.
bool saveAsyncFormat(PcmFormat& format, UserInterface* parent, int record,
                     const AsyncFormat& contents, const std::vector<AsyncPlace>& places,
                     const std::function<bool(std::string_view)>& linkExists = {});
/// The same for a record that stays where it is, with all of its places as they are: messages 367,
/// 370, 374, 375.
bool saveAsyncAttributes(PcmFormat& format, UserInterface* parent, int record,
                         const AsyncFormat& contents,
                         const std::function<bool(std::string_view)>& linkExists = {});

}  // namespace kavu
