// Writing ID counters and subframes to the P group.
#pragma once

#include <string>
#include <vector>

namespace kavu {

class FileWriter;
class PcmFormat;

/// The entries of a counter's subframes that are written, in the order of their numbers from 1.
[[nodiscard]] std::vector<int> writtenSubframes(const PcmFormat& format, int counter);
void writeIdCounters(const PcmFormat& format, FileWriter& writer, const std::string& prefix);

}  // namespace kavu
