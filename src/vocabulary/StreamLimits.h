// How many parts of each kind a PCM stream can have: the rows of its lists, and the limits of
// the model.
#pragma once

namespace kavu {

inline constexpr int kMostFrames = 256;
inline constexpr int kMostSyncBits = 33;
inline constexpr int kMostMeasurementLists = 99;
/// Of one list.
inline constexpr int kMostMeasurements = 999'999;
inline constexpr int kMostIdCounters = 99;
inline constexpr int kMostSubframes = 9999;  ///< of one counter
inline constexpr int kMostAsyncFormats = 18;

}  // namespace kavu
