// Sample rates that follow from the format of the stream.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

class ConversionStore;
class PcmFormat;
class UserInterface;

/// The rate of a measurement in samples per second, with the precision of the settings;
/// empty without a bit rate, a common word length, words or frames. A measurement that is
/// not in the stream has a rate of 0.
[[nodiscard]] std::string calculateSampleRate(const PcmFormat& format,
                                              std::string_view measurement);
/// Updates the rates of the stream's conversion records if the settings ask for it; true if
/// one has changed. Records of other streams' measurements, and all records if the rates
/// cannot be known, stay as they are. A chunk that cannot be written is reported with
/// message 313 ("Unable to"). A cancel ends it.
bool checkSampleRates(PcmFormat& format, UserInterface* parent, ConversionStore& conversions);

}  // namespace kavu
