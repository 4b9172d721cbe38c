// Writing the D group.
#pragma once

namespace kavu {

class PcmFormat;
class UserInterface;

/// Rewrites the D group of the stream: the measurement lists, and in each list all
/// measurements of the frame, as the frame does not know which list they came from. A stream
/// without a D group gets the first free index; does nothing for a bus or packet stream,
/// whose measurements are in a group of their own. False if the file could not be written,
/// which is reported; it is then as it was. Messages 295 to 297 in boxes.
bool writeMeasurements(PcmFormat& format, UserInterface* parent);

}  // namespace kavu
