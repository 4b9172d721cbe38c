// Writing ID counters and subframes to the P group.
#pragma once

#include <string>

namespace kavu {

class FileWriter;
class PcmFormat;

void writeIdCounters(const PcmFormat& format, FileWriter& writer, const std::string& prefix);

}  // namespace kavu
