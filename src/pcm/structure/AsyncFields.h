// What the dialogs of an async format edit: its record with its places, by the fields of
// its vocabulary.
#pragma once

#include "pcm/structure/AsyncEdit.h"
#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct AsyncEditing {
    int record = 0;  ///< 0 for a new one
    AsyncFormat contents;
    std::vector<AsyncPlace> places;
};
/// Of a record, or a new one with its first location at a word.
[[nodiscard]] AsyncEditing asyncEditing(const PcmFormat& format, int record, int fwp);
/// The records that have a slot at a place, ascending.
[[nodiscard]] std::vector<int> asyncRecordsAt(const PcmFormat& format, int fwp, int fn);
/// Changes the first place of a record. The other places of an "FI" that had the same mask, or the
/// same frames, follow it; those with their own keep them.
void editFirstPlace(AsyncEditing& editing, const AsyncPlace& first);
/// Stores it under the rules of `saveAsyncFormat`; the name of another stream is refused. Only what
/// differs from the record is stored: one whose places were not edited stays where it is.
bool saveAsyncEditing(PcmFormat& format, UserInterface* parent, const AsyncEditing& editing);

/// The fields that only a data merge has, without indices.
[[nodiscard]] std::span<const Field> dataMergeFields();
[[nodiscard]] FieldValues dataMergeValues(const AsyncFormat& contents);
/// A missing number gets its default.
void setDataMergeValues(AsyncFormat& contents, const FieldValues& values);

/// True if the edition states the frames of a location: 106-11 and later.
[[nodiscard]] bool hasAsyncFrames(const PcmFormat& format);
/// The start must be 1 to the number of frames, and the end not before it: message 160
/// ("a number between").
[[nodiscard]] bool checkFrameRange(const PcmFormat& format, UserInterface* parent,
                                   const FrameRange& range);
/// "1 - 8", "1 - 8 by 2"; all frames is "All".
[[nodiscard]] std::string framesText(const PcmFormat& format,
                                     const std::vector<FrameRange>& frames);

}  // namespace kavu
