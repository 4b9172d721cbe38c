#include "conversion/SampleRate.h"

#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

SampleRateOptions sampleRateOptions(const ProfileSettings& settings) {
    SampleRateOptions options;
    options.check = settings.get(setting::kCheckSampleRates);
    options.precision = settings.get(setting::kSampleRatePrecision);
    return options;
}

void trimSampleRate(std::string& rate, const SampleRateOptions& options) {
    const auto point = rate.find('.');
    if (!options.check || point == std::string::npos) {
        return;
    }
    const auto precision = static_cast<std::size_t>(std::max(0, options.precision));
    const auto first = rate.begin() + static_cast<std::ptrdiff_t>(point) + 1;
    const auto behind = std::find_if_not(first, rate.end(), isDigit);
    if (behind != rate.end() && toLowerAscii(*behind) == 'e') {
        return;  // the zeros of an exponent must stay
    }
    const auto digits = static_cast<std::size_t>(behind - first);
    if (digits > precision) {
        rate.resize(point + 1 + precision);
    }
    rate.erase(rate.find_last_not_of('0') + 1);
    if (rate.ends_with('.')) {
        rate.pop_back();
    }
}

}  // namespace kavu
