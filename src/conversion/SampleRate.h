// The text of a sample rate.
#pragma once

#include <string>

namespace kavu {

class ProfileSettings;

struct SampleRateOptions {
    bool check = false;  ///< rates are kept up to date and cut to the precision
    int precision = 2;   ///< digits kept after the decimal point, at least 0
};

/// The options of the settings: `ChkSR` and `SRPrec`.
[[nodiscard]] SampleRateOptions sampleRateOptions(const ProfileSettings& settings);

/// Cuts a rate to the precision and removes trailing zeros, in place. Does nothing if
/// rates are not checked, or if the text has no decimal point or an exponent.
void trimSampleRate(std::string& rate, const SampleRateOptions& options);

}  // namespace kavu
