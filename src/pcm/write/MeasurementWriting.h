// Writing the D group.
#pragma once

namespace kavu {

class PcmFormat;
class UserInterface;

/// Writes the D group of the stream anew: the measurement lists, and in each list all
/// measurements of the frame, as the frame does not tell of which list they came. A stream
/// without a D group gets the first index that is free; for a bus or packet stream, whose
/// measurements are in a group of their own, nothing is done. False if the file could not be
/// written, which is reported; it is then what it was. Messages 295 to 297 in boxes.
bool writeMeasurements(PcmFormat& format, UserInterface* parent);

}  // namespace kavu
