// Sample rates that follow from the format of the stream.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

class ConversionStore;
class PcmFormat;
class UserInterface;

/// The rate of a measurement in samples a second, as the settings want it; empty without a
/// bit rate, a common word length, words or frames. A measurement that is not in the stream
/// has a rate of 0.
[[nodiscard]] std::string calculateSampleRate(const PcmFormat& format,
                                              std::string_view measurement);
/// Brings the rates of the stream's conversion records up to date if the settings ask for
/// it; true if one has changed. Records of other streams' measurements, and all of them if
/// the rates can not be known, stay as they are. A chunk that can not be written is reported
/// with message 313. A cancel ends it.
bool checkSampleRates(PcmFormat& format, UserInterface* parent, ConversionStore& conversions);

}  // namespace kavu
