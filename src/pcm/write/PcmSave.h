// Writing the stream in memory back to its group files.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

class FileWriter;
class PcmFormat;
class UserInterface;

/// Writes the P and the D group if the format has changed, clears `changed` and marks the
/// document as changed. What the groups hold beyond the model is kept if the user wants it (see
/// KeptWriting.h), without a parent it is dropped. False if a file could not be written, which is
/// reported; the format then stays changed.
bool savePcmFormat(PcmFormat& format, UserInterface* parent);

/// Copies a working file, if it exists, to a group file that is being written.
void appendWorkingFile(const PcmFormat& format, FileWriter& writer, std::string_view name);

}  // namespace kavu
