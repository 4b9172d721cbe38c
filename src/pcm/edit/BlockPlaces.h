// The places of one measurement as single places of the frame, which can be taken from it and
// given to it.
#pragma once

#include "pcm/edit/MeasurementEdit.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// One place of a measurement.
struct BlockSpot {
    int fwp = 0;
    int fn = 0;               ///< within the depth of the word
    bool everyFrame = false;  ///< of a plain word; `fn` is 1 then
    std::string mask;
};

struct MeasurementPlaces {
    Measurement attributes;   ///< those of the first place
    std::string counterName;  ///< of word/frame locations
    std::vector<BlockSpot> spots;
    /// Its samples are put together from several fragments: no place can be taken from it alone.
    bool isFragmented = false;
};

/// The place of a cell of the display: frames that repeat a cell are the place of that cell.
[[nodiscard]] BlockSpot blockSpotAt(const PcmFormat& format, int fwp, int fn);
[[nodiscard]] bool isSamePlace(const BlockSpot& a, const BlockSpot& b);

/// True for a measurement whose samples are put together from several fragments.
[[nodiscard]] bool isInFragments(const PcmFormat& format, const Measurement& cell);
/// All places of a measurement; none for a name that is not in use.
[[nodiscard]] MeasurementPlaces placesOf(const PcmFormat& format, std::string_view name);

/// Gives a measurement exactly these places: one, a list of words or of positions of a subframe,
/// or word/frame locations where the others cannot state them. `oldName` is empty for a new
/// measurement. False, with what prevents it reported as by `saveMeasurement`, if the stream
/// cannot hold them; the frame is then as it was.
bool placeMeasurement(PcmFormat& format, UserInterface* parent, const std::string& oldName,
                      const MeasurementPlaces& places);

}  // namespace kavu
