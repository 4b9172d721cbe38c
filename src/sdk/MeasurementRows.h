// The rows of a D group that name measurements, and what a session says about commands that cannot
// be used.
#pragma once

#include "sdk/SdkGroup.h"

#include <functional>
#include <string>
#include <vector>

namespace kavu {

/// A row of the lists of measurements.
struct SdkRow {
    int list = 0;
    int number = 0;
    std::string name;
    std::string locationType;
    int fragments = 0;  ///< that one of an older type says it has; 0 for any other
};

using SessionReport = std::function<void(std::string text)>;

/// The measurements of the counted rows, list by list and row by row, each name once: a further row
/// of a name is reported and ignored, as is a row whose name is empty.
[[nodiscard]] std::vector<SdkRow> readSdkRows(const SdkGroup& group, const SessionReport& report);

/// The extent of a major frame.
struct FrameExtent {
    int words = 0;  ///< the sync word included
    int frames = 0;
};
/// Reports every number of a measurement's places that is outside the frame, and every number of a
/// fragment that is none of its fragments. True if there was one.
bool checkMeasurementPlaces(const SdkGroup& group, const SdkRow& row, const FrameExtent& frame,
                            const SessionReport& report);

}  // namespace kavu
