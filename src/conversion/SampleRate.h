// The text form of a sample rate.
#pragma once

#include <string>

namespace kavu {

class ProfileSettings;

struct SampleRateOptions {
    bool check = false;  ///< rates are kept calculated and are cut to the precision
    int precision = 2;   ///< digits kept behind the decimal point, 0 to 5
};

/// The options of the settings: `ChkSR` and `SRPrec`.
[[nodiscard]] SampleRateOptions sampleRateOptions(const ProfileSettings& settings);

/// Cuts a rate to the precision and removes trailing zeros, in place; nothing if rates are
/// not checked or the text has no decimal point. All zeros at the end go, also those of an
/// exponent: rates are plain decimal numbers.
void trimSampleRate(std::string& rate, const SampleRateOptions& options);

}  // namespace kavu
