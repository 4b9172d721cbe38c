// What the methods of measurements share: the measurement that a name means, and the subsystems
// that an edit needs besides the stream.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/edit/MeasurementEdit.h"

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

/// A measurement of the loaded format, at its first occurrence.
struct FoundMeasurement {
    std::string name;  ///< in the bytes of the stream
    CellRef cell;
    int fwp = 0;
    int fn = 0;
};

/// Throws `NotFound`.
[[nodiscard]] FoundMeasurement requireMeasurement(const PcmFormat& format, const std::string& name);
/// Throws `OutOfRange` for what is no place of a measurement.
void requirePlace(const PcmFormat& format, std::int32_t fwp, std::int32_t fn);

/// Deletions of conversion records go through here; false in `isDeleted` if one has failed.
[[nodiscard]] EditSteps editStepsOf(AutomationSession& session, bool& isDeleted);

namespace automation_title {
inline constexpr char kCreateMeasurement[] = "Creation of Measurement";
inline constexpr char kDeleteMeasurement[] = "Deletion of Measurement";
inline constexpr char kRenameMeasurement[] = "Rename of Measurement";
inline constexpr char kEditMeasurement[] = "Edit of Measurement";
}  // namespace automation_title

}  // namespace kavu
