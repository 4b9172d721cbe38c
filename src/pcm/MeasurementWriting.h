// Writing the D group.
#pragma once

namespace kavu {

class PcmFormat;
class UserInterface;

/// False if the file could not be written, which is reported. Messages 295 to 297.
bool writeMeasurements(PcmFormat& format, UserInterface* parent);

}  // namespace kavu
