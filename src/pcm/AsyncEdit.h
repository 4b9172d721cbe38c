// The operations on async formats. Records count from 1.
#pragma once

namespace kavu {

class PcmFormat;
class UserInterface;

/// Empties a record.
void clearAsyncFormat(PcmFormat& format, int record);
/// Frees the slots of a record at a word and frame, or all of them with -1 for either, and
/// removes the record if it has none left; later records move up.
bool removeAsyncFormat(PcmFormat& format, UserInterface* parent, int record, int fwp, int fn);
/// True if a list of those places has a slot of that record, or of any with 0. -1 is any
/// word, or any frame.
[[nodiscard]] bool isAsyncAt(const PcmFormat& format, int fwp, int fn, int record);

}  // namespace kavu
