// Streams that are carried in some of the words of this one: asynchronous embedded
// formats and asynchronous data merges.
#pragma once

#include "pcm/model/FixedText.h"
#include "vocabulary/StreamLimits.h"

#include <vector>

namespace kavu {

/// Frames from a start to an end by an interval, all from 1 (the interval from 0).
struct FrameRange {
    int start = 1;
    int interval = 1;
    int end = 1;
    [[nodiscard]] bool operator==(const FrameRange&) const = default;
};

/// One location of a record.
struct AsyncLocation {
    int fwp = 0;
    std::vector<FrameRange> frames;
    [[nodiscard]] bool operator==(const AsyncLocation&) const = default;
};

/// The slots are cells of the frame with this record's number, counted from 1; a slot's
/// mask is the part of the word that the async stream takes.
struct AsyncFormat {
    bool isDataMerge = false;
    FixedText<32> dataLinkName;
    FixedText<3> supercom;      ///< "NO" or the number of locations
    FixedText<2> locationMode;  ///< "FI", "EL", "NA"
    int interval = 1;           ///< 1 unless "FI"
    std::vector<AsyncLocation> locations;
    int adm5 = 0;
    int adm6 = 1;
    std::string adm7 = "NO";
    std::string mergeParity;
    std::string overheadMask;
    std::string firstDataPosition;
    std::string dataOrder;
    std::string secondDataPosition;
    std::string userDataPosition;
    int fileRow = 0;  ///< its number in the file; 0 for a new one
    [[nodiscard]] bool operator==(const AsyncFormat&) const = default;
};

}  // namespace kavu
