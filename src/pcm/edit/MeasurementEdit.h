// The operations on measurements of the stream in memory: checks of names, and deletion.
// They mark the format as changed; a null parent is silent.
#pragma once

#include "pcm/PcmFormat.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class ConversionStore;
class MeasurementNames;

/// What the edits of a stream need of other subsystems. A step that is not installed is left
/// out, and so is what depends only on it.
struct EditSteps {
    /// The names of all streams; null if they are not known.
    MeasurementNames* names = nullptr;
    /// Deletes the conversion record of a measurement.
    std::function<void(UserInterface*, std::string_view name)> deleteConversion;
    /// Where it deletes them: an edit that is taken back brings them back. May be null.
    ConversionStore* conversions = nullptr;
};

/// "MF", "SF" or "SFSC", depending on the word, and "WDFR" for the word of a hidden subframe.
/// Nothing, with message 323 ("Unable to locate subframe"), for a word of a subframe that has
/// no record; nothing without a message for a position that cannot hold measurements.
[[nodiscard]] std::optional<std::string> defaultLocationType(const PcmFormat& format,
                                                             UserInterface* parent, int fwp);

/// False if the name is free. True with message 334 ("already in use") if a measurement of
/// the stream has it, and from 106-11 on with 339 if a tagged measurement has it; case is
/// ignored.
bool checkMeasurementName(const PcmFormat& format, UserInterface* parent, std::string_view name);

/// Empties every cell of a measurement; the cells stay in their lists.
void clearMeasurement(PcmFormat& format, std::string_view name);

/// Deletes a measurement from the whole frame, after question 117 ("permanently delete"),
/// which is not asked without a parent. Its conversion record is deleted, too, unless
/// question 457 ("EU conversions") is answered with No, and so are hidden subframes that
/// become empty. False if there is no such measurement or the user declined.
bool deleteMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                       std::string_view name);

/// The same without question 117, and without removing hidden subframes.
void dropMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                     std::string_view name);

/// Deletes every measurement and every async format that has a place at the word, there and
/// elsewhere, without a question for each. Question 457 may be asked for a measurement.
void clearWord(PcmFormat& format, UserInterface* parent, const EditSteps& steps, int fwp);

/// Makes words whose hidden subframe is empty plain words.
void removeEmptyHiddenSubframes(PcmFormat& format);

}  // namespace kavu
