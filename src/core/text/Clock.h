// Time and chance are passed in, so that a test can fix every date and every GUID.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace kavu {

/// A calendar date and time, local. Month and day count from 1.
struct CivilTime {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// "MM-DD-YYYY"
[[nodiscard]] std::string dateText(const CivilTime& time);
/// "HH:MM:SS"
[[nodiscard]] std::string timeText(const CivilTime& time);
/// The date in the format of TMATS values: "MM-DD-YYYY", up to 106-96 "MM-DD-YY".
[[nodiscard]] std::string tmatsDate(const CivilTime& time, int edition);
/// "MM-DD-YYYY-HH-MM-SS", up to 106-96 with a year of two digits.
[[nodiscard]] std::string tmatsDateTime(const CivilTime& time, int edition);
/// The calendar date and time, here, of seconds since the epoch, as of a file's date.
[[nodiscard]] CivilTime localTime(std::int64_t seconds);
/// Reads "YYYY-MM-DDTHH:MM:SS".
[[nodiscard]] std::optional<CivilTime> parseIsoTime(const std::string& text);

class Clock {
  public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual CivilTime now() const = 0;
    /// Whole seconds of a clock that never goes back, for pacing status texts.
    [[nodiscard]] virtual std::int64_t steadySeconds() const = 0;
};

class SystemClock : public Clock {
  public:
    [[nodiscard]] CivilTime now() const override;
    [[nodiscard]] std::int64_t steadySeconds() const override;
};

/// A clock with a fixed date; pacing goes on.
class FixedClock : public SystemClock {
  public:
    explicit FixedClock(const CivilTime& time) : time_(time) {}
    [[nodiscard]] CivilTime now() const override { return time_; }

  private:
    CivilTime time_;
};

/// True at most once a second: it paces the status texts of all loaders.
class SecondTicker {
  public:
    explicit SecondTicker(const Clock& clock) : clock_(clock) {}
    [[nodiscard]] bool secondElapsed();

  private:
    const Clock& clock_;
    std::int64_t last_ = 0;
};

class RandomSource {
  public:
    virtual ~RandomSource() = default;
    /// 16 random bytes, or nothing if the system has none to give.
    [[nodiscard]] virtual std::optional<std::array<std::uint8_t, 16>> bytes16() = 0;
};

class SystemRandomSource : public RandomSource {
  public:
    [[nodiscard]] std::optional<std::array<std::uint8_t, 16>> bytes16() override;
};

/// A new GUID as text without braces, or nothing.
[[nodiscard]] std::optional<std::string> makeGuid(RandomSource& random);

}  // namespace kavu
