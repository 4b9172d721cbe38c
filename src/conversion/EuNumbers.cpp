#include "conversion/EuNumbers.h"

#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kavu {

namespace {

std::string formatted(PrintfFormat<int, double> format, double value, int precision) {
    return formatPrintf(format, std::clamp(precision, 0, kMostFloatPrecision), value);
}

/// The value of an unsigned number that is out of range: 0 or infinity.
double beyondRange(std::string_view text) {
    const auto exponent = text.find_first_of("eE");
    if (exponent != std::string_view::npos) {
        return text.substr(exponent + 1).starts_with('-') ? 0.0
                                                          : std::numeric_limits<double>::infinity();
    }
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return text.empty() || text[0] == '.' ? 0.0 : std::numeric_limits<double>::infinity();
}

}  // namespace

double leadingDouble(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool fraction = text.size() > 1 && text[0] == '.' && isDigit(text[1]);
    if (text.empty() || (!isDigit(text[0]) && !fraction)) {
        return 0;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        value = beyondRange(text.substr(0, static_cast<std::size_t>(end - text.data())));
    }
    return negative ? -value : value;
}

int floatPrecision(const ProfileSettings& settings) {
    return settings.get(setting::kFloatPrecision);
}

std::string exponentText(double value, int precision) {
    return replaceAll(formatted("%.*e", value, precision), "e", "E");
}

std::string readableExponentText(double value, int precision, std::size_t limit) {
    // Sign, first digit, point and the longest exponent.
    constexpr int kOtherCharacters = 8;
    constexpr int kExactDigits = std::numeric_limits<double>::max_digits10 - 1;
    int digits = std::min(precision, static_cast<int>(limit) - kOtherCharacters);
    auto text = exponentText(value, digits);
    while (leadingDouble(text) != value && digits < kExactDigits) {
        text = exponentText(value, ++digits);
    }
    return text;
}

std::string fixedText(double value, int precision) {
    return formatted("%.*f", value, precision);
}

std::string fixedText(double value) {
    return formatted("%.*f", value, 6);
}

std::string statisticText(double value, int precision) {
    constexpr int kFewDigits = 2;
    auto text = fixedText(value, precision);
    if (value == 0 || !std::isfinite(value) || leadingDouble(text) == value) {
        return text;
    }
    const int shown = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1 + precision;
    return shown < std::clamp(precision, 1, kFewDigits)
               ? exponentText(value, std::max(precision, kFewDigits))
               : text;
}

std::string exactText(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

}  // namespace kavu
