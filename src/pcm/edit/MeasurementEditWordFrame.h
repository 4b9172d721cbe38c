// The edit of a measurement that is located by ranges of words and frames.
#pragma once

#include "pcm/edit/MeasurementEdit.h"
#include "pcm/model/WordFrame.h"
#include "pcm/write/WrittenRange.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// The most fragments that can be entered for a location.
inline constexpr int kMostFragments = 9;

/// A fragment in every frame of a word, for a location that is added at a place; in a
/// word of a subframe and with hidden subframes, only in the frame of the place.
[[nodiscard]] WordFrameFragment newWordFrameFragment(const PcmFormat& format, int fwp, int fn);

/// Why the ranges of a fragment are invalid, in the words of the messages 276, 285 to 287,
/// 292 and 293; nothing if they are valid. Nothing is changed or shown.
[[nodiscard]] std::optional<std::string> wordFrameProblem(PcmFormat& format, std::string_view name,
                                                          const WordFrameFragment& fragment);
/// The same, shown as a message. Hidden subframes are made when the measurement is saved.
bool checkWordFrameEntry(PcmFormat& format, UserInterface* parent, std::string_view name,
                         const WordFrameFragment& fragment);

/// Checks a location that was entered: its fragments, and message 336 for a missing word
/// length of several fragments. A length that the masks do not add up to becomes their sum,
/// with message 294. The ends are set to what the edition can state. Fragments are numbered by
/// their order; one of the first frame only, in plain words, is in every frame.
bool completeWordFrameLocation(PcmFormat& format, UserInterface* parent, std::string_view name,
                               WordFrameLocation& location);

/// The words and frames that a fragment covers, within the frame; at most one entry for each
/// word and frame.
[[nodiscard]] std::vector<std::pair<int, int>> coveredPlaces(const PcmFormat& format,
                                                             const WordFrameFragment& fragment);

/// The first fragment that covers a place, whose frame may be a repetition; null if none does.
[[nodiscard]] const WordFrameFragment* fragmentAt(const PcmFormat& format,
                                                  const WordFrameDefinition& definition, int fwp,
                                                  int fn);

/// Replaces all places of `oldNames` by a measurement with these ranges; `entry` is the
/// definition that it had, or 0. Hidden subframes are made where they are needed, possibly
/// after question 357. False leaves the frame as it was, which has been reported.
bool placeWordFrameMeasurement(PcmFormat& format, UserInterface* parent, Measurement measurement,
                               const WordFrameDefinition& definition,
                               const std::vector<std::string>& oldNames, int entry);

}  // namespace kavu
