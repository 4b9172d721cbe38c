// The places of the measurements of a stream as the rows of a report: collected, sorted, and
// neighbours merged.
#pragma once

#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// One row; where it ends is where it starts until neighbours are merged. Its texts are those of
/// the stream, which must stay as it is.
struct MeasurementPlace {
    std::string_view name{};
    std::string_view type{};  ///< "SFID" for a counter, empty for a subframe
    int fragment = 0;         ///< 0 for unfragmented
    int length = 0;           ///< bits
    std::string_view mask{};
    std::string_view parity{};
    std::string_view parityOrder{};
    std::string_view transferOrder{};
    int startWord = 0;
    int startFrame = 0;
    int endWord = 0;
    int endFrame = 0;
};

/// The type of the word of an ID counter.
inline constexpr const char* kCounterType = "SFID";

enum class MeasurementSort { Place = 0, Name };

/// A row for each measurement of each cell, word by word, then index by index. With
/// `firstOnly` later places of a supercommutated measurement are left out. Stops when `parent`, who
/// may be null, has cancelled.
[[nodiscard]] std::vector<MeasurementPlace> collectPlaces(const PcmFormat& format, bool firstOnly,
                                                          UserInterface* parent);
/// Sorts by word, frame and name, or by name, word and frame; bytes are compared, and equal rows
/// keep their order. False when `parent`, who may be null, has cancelled.
[[nodiscard]] bool sortPlaces(std::vector<MeasurementPlace>& places, MeasurementSort sort,
                              UserInterface* parent);
/// Makes one row of neighbours that differ in nothing but that the frame of each follows that
/// before; never of a supercommutated measurement, which has a row for each place. False when
/// `parent`, who may be null, has cancelled.
[[nodiscard]] bool mergePlaces(std::vector<MeasurementPlace>& places, UserInterface* parent);

}  // namespace kavu
