// Finding places in the display of a stream: by numbers, by names, and the list of all
// measurements.
#pragma once

#include "pcm/display/FrameDisplay.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The place that the user has entered to go to: two numbers are word and frame, one
/// number is completed by the present value of the other field. Nothing if there is no
/// number.
[[nodiscard]] std::optional<FramePlace> parseGoTo(std::string_view text, bool isWordField,
                                                  FramePlace present);

/// The first place of a measurement, frame by frame and in a frame word by word; case is
/// ignored. None if the stream does not have it.
[[nodiscard]] FramePlace findMeasurement(const PcmFormat& format, std::string_view name);
/// The first word of an ID counter or a subframe of exactly that name, in frame 1; or none.
[[nodiscard]] FramePlace findSubframeWord(const PcmFormat& format, std::string_view name);

/// A measurement in the list next to the grid.
struct MeasurementRow {
    std::string name;
    std::string locationType;
    FramePlace first;
};
/// Every measurement once, by its first word.
[[nodiscard]] std::vector<MeasurementRow> measurementRows(const PcmFormat& format);

/// The rows whose name holds the text, case ignored; none for an empty text.
[[nodiscard]] std::vector<std::size_t> findRows(const std::vector<MeasurementRow>& rows,
                                                std::string_view text);
/// The hit at or after a place, or with `forward` off the one before it; the search wraps
/// around. `hits` are indices of rows, ascending; the result is a position in `hits`.
[[nodiscard]] std::optional<std::size_t> nextHit(const std::vector<MeasurementRow>& rows,
                                                 const std::vector<std::size_t>& hits,
                                                 FramePlace from, bool includeFrom, bool forward);

}  // namespace kavu
