// Measurement names that another stream of the document uses as well: both share the
// conversion record.
#pragma once

#include <string_view>

namespace kavu {

class MeasurementNames;
class PcmFormat;
class UserInterface;

/// The number of the stream in memory among the data links of the document, from 1; 0 if no
/// link has its name.
[[nodiscard]] int streamNumber(PcmFormat& format, UserInterface* parent);

/// False with message 455 ("already being used in stream") if checking is on and another
/// stream uses the name.
bool checkNameInOtherStreams(PcmFormat& format, UserInterface* parent,
                             const MeasurementNames& names, std::string_view name, int stream);

/// Asks whether the conversions of a measurement may be deleted or renamed (message 457,
/// "defined in another stream") if another stream uses the name, too; true without a
/// question if none does or checking is off. Without a parent the answer is No.
[[nodiscard]] bool askEuChange(PcmFormat& format, UserInterface* parent,
                               const MeasurementNames& names, std::string_view name, int stream,
                               bool deleting);

}  // namespace kavu
