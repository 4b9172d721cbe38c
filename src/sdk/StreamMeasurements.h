// The measurements of a stream in the order of its file, read from what the loaders of the editor
// make of it.
#pragma once

#include "sdk/MeasurementRows.h"
#include "sdk/SdkMeasurement.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class PcmFormat;
class UserInterface;

/// The measurements of the rows of a D group in a loaded stream whose places are ranges of words
/// and frames, as far as they could be made so. One that has no place in the frame has no
/// locations; nor has one for whose places there is no memory. What could not be placed as a whole
/// is reported.
[[nodiscard]] std::vector<SdkMeasurement> measurementsOfFormat(const PcmFormat& format,
                                                               const SdkGroup& group,
                                                               const std::vector<SdkRow>& rows,
                                                               const SessionReport& report);

/// The measurements of the messages of a bus. False if the group could not be read, which is
/// reported to the parent, or after a cancel. Status texts go to `watcher`, which may be null.
[[nodiscard]] bool readBusMeasurements(DocumentContext& context, UserInterface* parent,
                                       UserInterface* watcher, std::string_view link,
                                       std::vector<SdkMeasurement>& measurements);

/// The same for message data; of packets the names only.
[[nodiscard]] bool readMessageMeasurements(DocumentContext& context, UserInterface* parent,
                                           std::string_view link,
                                           std::vector<SdkMeasurement>& measurements);

}  // namespace kavu
