// Numbers of conversions as texts.
#pragma once

#include "core/talk/SettingKeys.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kavu {

class ProfileSettings;

/// The decimal number at the front of a text, after white space; 0 if there is none. A
/// number beyond the range of a double is infinite; words and hexadecimal numbers do not
/// count.
[[nodiscard]] double leadingDouble(std::string_view text);

/// Digits after the point in texts of coefficients and statistics: `FloatPrecision`, 0 to 40.
[[nodiscard]] int floatPrecision(const ProfileSettings& settings);
inline constexpr int kMostFloatPrecision = setting::kFloatPrecision.most;

/// "%.*e" with `E` in place of `e`.
[[nodiscard]] std::string exponentText(double value, int precision);
/// The same with more digits where reading it back would give another number, and with fewer where
/// the text would be longer than its field. REQUIRES: room for an exact text, 24 characters.
[[nodiscard]] std::string readableExponentText(double value, int precision, std::size_t limit);
/// "%.*f"
[[nodiscard]] std::string fixedText(double value, int precision);
/// "%f"
[[nodiscard]] std::string fixedText(double value);
/// A statistic: "%.*f", or, where that would show too little of the number's leading digits, its
/// text with an exponent and at least two digits after the point.
[[nodiscard]] std::string statisticText(double value, int precision);
/// The shortest text that reads back to the same number.
[[nodiscard]] std::string exactText(double value);

}  // namespace kavu
