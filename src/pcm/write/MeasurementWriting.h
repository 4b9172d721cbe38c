// Writing the D group.
#pragma once

#include "core/document/CarriedCommands.h"

#include <map>
#include <string>
#include <utility>

namespace kavu {

class PcmFormat;
class UserInterface;

/// What the former D file carries (see CarriedCommands.h), which follows its measurements by their
/// names.
struct CarriedMeasurements {
    CarriedCommands commands{CarriedCommands::Follow::Codes};
    std::map<std::pair<int, int>, std::string> former;  ///< the names, by list and number
};

/// Rewrites the D group of the stream: the measurement lists, and in each list all
/// measurements of the frame, as the frame does not know which list they came from. A stream
/// without a D group gets the first free index; does nothing for a bus or packet stream,
/// whose measurements are in a group of their own. False if the file could not be written,
/// which is reported; it is then as it was. Messages 295 to 297 in boxes.
bool writeMeasurements(PcmFormat& format, UserInterface* parent);
/// The same in two steps: between them more can be appended to the file.
[[nodiscard]] bool writeMeasurements(PcmFormat& format, UserInterface* parent,
                                     CarriedMeasurements& carried);
[[nodiscard]] bool carryMeasurements(PcmFormat& format, UserInterface* parent,
                                     CarriedMeasurements& carried);

}  // namespace kavu
