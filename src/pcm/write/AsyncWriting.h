// Writing async embedded formats and data merges to the P group.
#pragma once

#include <string>

namespace kavu {

class FileWriter;
class PcmFormat;
class UserInterface;

/// Messages 234 to 236 in boxes.
void writeAsyncEmbedded(const PcmFormat& format, UserInterface* parent, FileWriter& writer,
                        const std::string& prefix);
void writeDataMerge(const PcmFormat& format, UserInterface* parent, FileWriter& writer,
                    const std::string& prefix);

}  // namespace kavu
