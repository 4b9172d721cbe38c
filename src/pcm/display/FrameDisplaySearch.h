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

/// Why a place cannot be gone to, in words for the user; nothing if it can.
[[nodiscard]] std::optional<std::string> goToProblem(const FrameDisplay& display,
                                                     const std::optional<FramePlace>& to);

/// A place of a name that was searched for.
struct FoundPlace {
    FramePlace at;
    std::string name;  ///< of a measurement or an async format
    [[nodiscard]] bool operator==(const FoundPlace&) const = default;
};
/// Every place of every measurement and async format whose name holds the text, case ignored: by
/// ascending word, then frame, each cell once for a name. None for an empty text.
[[nodiscard]] std::vector<FoundPlace> findPlaces(const PcmFormat& format, std::string_view text);
/// The position of the first one at or after a place, or with `forward` off of the last one before
/// it; the search wraps around. With `includeFrom` off the place itself is passed over.
[[nodiscard]] std::optional<std::size_t> nextPlace(const std::vector<FoundPlace>& places,
                                                   FramePlace from, bool includeFrom, bool forward);

/// A measurement in the list next to the grid.
struct MeasurementRow {
    std::string name;
    std::string locationType;
    FramePlace first;
};
/// Every measurement once, by its first word.
[[nodiscard]] std::vector<MeasurementRow> measurementRows(const PcmFormat& format);

}  // namespace kavu
