// Sample rates that follow from the format of the stream.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

class ConversionStore;
class PcmFormat;
class UserInterface;

/// The rate in samples a second, empty if it can not be known.
[[nodiscard]] std::string calculateSampleRate(const PcmFormat& format,
                                              std::string_view measurement);
/// Brings the rates of the stream's conversion records up to date if the settings ask for
/// it; true if one has changed.
bool checkSampleRates(PcmFormat& format, UserInterface* parent, ConversionStore& conversions);

}  // namespace kavu
