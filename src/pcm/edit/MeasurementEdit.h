// The operations on measurements of the stream in memory: their names, and how they go. They
// mark the format changed; a null parent is silent.
#pragma once

#include "pcm/PcmFormat.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class MeasurementNames;

/// What the edits of a stream need of other subsystems. A step that is not installed is left
/// out, and what depends on it alone is not done.
struct EditSteps {
    /// The names of all streams; null if they are not known.
    MeasurementNames* names = nullptr;
    /// Deletes the conversion record of a measurement.
    std::function<void(UserInterface*, std::string_view name)> deleteConversion;
};

/// "MF", "SF" or "SFSC", as fits the word, and "WDFR" for the word of a hidden subframe.
/// Nothing, with message 323, for a word of a subframe that has no record; nothing at all for a
/// position that holds no measurements.
[[nodiscard]] std::optional<std::string> defaultLocationType(const PcmFormat& format,
                                                             UserInterface* parent, int fwp);

/// False when the name is free. True with message 334 if a measurement of the stream has it,
/// and from 106-11 on with 339 if a tagged measurement has it; case is ignored.
bool checkMeasurementName(const PcmFormat& format, UserInterface* parent, std::string_view name);

/// Empties every cell of a measurement; the cells stay in their lists.
void clearMeasurement(PcmFormat& format, std::string_view name);

/// Deletes a measurement from the whole frame, after question 117, which is not asked without
/// a parent. Its conversion record goes with it, unless question 457 is answered with No.
/// Hidden subframes that hold nothing any more go, too. False if there is no such measurement
/// or the user declined.
bool deleteMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                       std::string_view name);

/// The same without question 117, and without a look at the subframes.
void dropMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                     std::string_view name);

/// Deletes every measurement and every async format that has a place at the word, there and
/// elsewhere, without asking for each. Question 457 may come for a measurement.
void clearWord(PcmFormat& format, UserInterface* parent, const EditSteps& steps, int fwp);

/// Makes plain words of those whose hidden subframe holds nothing.
void removeEmptyHiddenSubframes(PcmFormat& format);

}  // namespace kavu
