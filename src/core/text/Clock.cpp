#include "core/text/Clock.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <chrono>
#include <ctime>
#include <sys/random.h>

namespace kavu {

std::string dateText(const CivilTime& time) {
    return formatPrintf("%2.2d-%2.2d-%4.4d", time.month, time.day, time.year);
}

std::string timeText(const CivilTime& time) {
    return formatPrintf("%2.2d:%2.2d:%2.2d", time.hour, time.minute, time.second);
}

std::string tmatsDate(const CivilTime& time, int edition) {
    return edition > 1996
               ? dateText(time)
               : formatPrintf("%2.2d-%2.2d-%2.2d", time.month, time.day, time.year % 100);
}

std::string tmatsDateTime(const CivilTime& time, int edition) {
    return tmatsDate(time, edition) +
           formatPrintf("-%2.2d-%2.2d-%2.2d", time.hour, time.minute, time.second);
}

std::optional<CivilTime> parseIsoTime(const std::string& text) {
    constexpr std::string_view kShape = "0000-00-00T00:00:00";
    if (text.size() != kShape.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < kShape.size(); ++i) {
        if (kShape[i] == '0' ? !isDigit(text[i]) : text[i] != kShape[i]) {
            return std::nullopt;
        }
    }
    const auto number = [&text](std::size_t at, std::size_t length) {
        return leadingInt(std::string_view(text).substr(at, length));
    };
    const CivilTime time{number(0, 4),  number(5, 2),  number(8, 2),
                         number(11, 2), number(14, 2), number(17, 2)};
    const std::chrono::year_month_day date{std::chrono::year(time.year),
                                           std::chrono::month(static_cast<unsigned>(time.month)),
                                           std::chrono::day(static_cast<unsigned>(time.day))};
    const bool valid = date.ok() && time.hour <= 23 && time.minute <= 59 && time.second <= 59;
    return valid ? std::optional(time) : std::nullopt;
}

CivilTime localTime(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm parts{};
    localtime_r(&time, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

CivilTime SystemClock::now() const {
    return localTime(std::time(nullptr));
}

std::int64_t SystemClock::steadySeconds() const {
    return std::chrono::duration_cast<std::chrono::seconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

bool SecondTicker::secondElapsed() {
    const auto now = clock_.steadySeconds();
    if (now == last_) {
        return false;
    }
    last_ = now;
    return true;
}

std::optional<std::array<std::uint8_t, 16>> SystemRandomSource::bytes16() {
    std::array<std::uint8_t, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        return std::nullopt;
    }
    return bytes;
}

std::optional<std::string> makeGuid(RandomSource& random) {
    auto bytes = random.bytes16();
    if (!bytes) {
        return std::nullopt;
    }
    auto& b = *bytes;
    b[6] = static_cast<std::uint8_t>((b[6] & 0x0F) | 0x40);  // version 4, random
    b[8] = static_cast<std::uint8_t>((b[8] & 0x3F) | 0x80);  // the RFC 4122 variant
    std::string text;
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text.push_back('-');
        }
        text += formatPrintf("%2.2X", b[i]);
    }
    return text;
}

}  // namespace kavu
