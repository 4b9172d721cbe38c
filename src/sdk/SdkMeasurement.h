// A measurement of a stream as a translator sees it: where its parts are, as ranges of words and
// frames, and which bits of them it takes.
#pragma once

#include "sdk/BitMask.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// From start by the interval to end; an interval of 0 is one place.
struct SdkRange {
    int start = 0;
    int interval = 0;
    int end = 0;
    [[nodiscard]] bool operator==(const SdkRange&) const = default;
};

struct SdkFragment {
    int number = 1;            ///< its place in the value, from 1
    SdkRange word;             ///< of the minor frame, or of the message of a bus
    SdkRange frame;            ///< of the major frame; all 0 on a bus
    std::string mask;          ///< as the file has it
    int wordLength = 0;        ///< bits of the word it is in
    char transferOrder = 'D';  ///< 'M', 'L', or 'D' for default

    [[nodiscard]] BitMask bitMask() const { return {mask, wordLength}; }
};

/// One sample of the value: its fragments together.
struct SdkLocation {
    int wordLength = 0;  ///< bits of the value
    std::vector<SdkFragment> fragments;
};

struct SdkMeasurement {
    std::string name;
    std::string locationType;     ///< the `LT` of the file; empty on a bus
    int wordLength = 0;           ///< of the first location; 0 without any
    std::string idCounterName{};  ///< whose frames the ranges count; empty for the only one
    int bus = 0;                  ///< the number of its bus, from 1; 0 in a PCM stream
    int message = 0;              ///< the number of its message on the bus
    std::vector<SdkLocation> locations;

    [[nodiscard]] bool isFragmented() const {
        return !locations.empty() && locations.front().fragments.size() > 1;
    }
};

}  // namespace kavu
