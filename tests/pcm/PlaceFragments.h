// A word/frame measurement as an edit places it.
#pragma once

#include "pcm/edit/MeasurementEditWordFrame.h"
#include "vocabulary/LocationTypes.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::test {

/// Places a measurement of one location of these fragments.
inline void placeFragments(PcmFormat& format, UserInterface* parent, const std::string& name,
                           const std::vector<WordFrameFragment>& fragments) {
    Measurement measurement;
    measurement.name = name;
    measurement.locationType = location_type::kWordFrame;
    measurement.locationCount = 1;
    EXPECT_TRUE(placeWordFrameMeasurement(format, parent, measurement,
                                          {"", {{format.commonWordLength, fragments}}}, {}, 0));
}

}  // namespace kavu::test
