#include "core/text/Clock.h"

#include <set>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr CivilTime kTime{2026, 1, 2, 3, 4, 5};

TEST(ClockTest, DatesAndTimesArePadded) {
    EXPECT_EQ(dateText(kTime), "01-02-2026");
    EXPECT_EQ(timeText(kTime), "03:04:05");
    EXPECT_EQ(dateText({999, 12, 31, 0, 0, 0}), "12-31-0999");
}

TEST(ClockTest, YearHasTwoDigitsUpToTheEditionOf1996) {
    EXPECT_EQ(tmatsDate(kTime, 1996), "01-02-26");
    EXPECT_EQ(tmatsDate(kTime, 1999), "01-02-2026");
    EXPECT_EQ(tmatsDate({2005, 1, 2, 0, 0, 0}, 1996), "01-02-05");
    EXPECT_EQ(tmatsDateTime(kTime, 1996), "01-02-26-03-04-05");
    EXPECT_EQ(tmatsDateTime(kTime, 2011), "01-02-2026-03-04-05");
}

TEST(ClockTest, IsoTimesAreRead) {
    const auto time = parseIsoTime("2024-02-29T23:59:58");
    ASSERT_TRUE(time.has_value());
    EXPECT_EQ(dateText(*time), "02-29-2024");
    EXPECT_EQ(timeText(*time), "23:59:58");
}

TEST(ClockTest, WhatIsNoIsoTimeIsRefused) {
    for (const char* text : {"", "2024-02-29", "2024-02-29 23:59:58", "2024-02-29T23:59:58Z",
                             "2024-2-29T23:59:581", "2023-02-29T00:00:00", "2024-00-10T00:00:00",
                             "2024-13-10T00:00:00", "2024-01-00T00:00:00", "2024-01-32T00:00:00",
                             "2024-01-01T24:00:00", "2024-01-01T00:60:00", "2024-01-01T00:00:60",
                             "+024-01-01T00:00:00", "2024-01-01T-1:00:00"}) {
        EXPECT_FALSE(parseIsoTime(text).has_value()) << text;
    }
}

TEST(ClockTest, FixedClockStandsStill) {
    const FixedClock clock(kTime);
    EXPECT_EQ(dateText(clock.now()), "01-02-2026");
    EXPECT_EQ(timeText(clock.now()), "03:04:05");
}

TEST(ClockTest, SystemClockGivesADateOfTheCalendar) {
    const auto now = SystemClock().now();
    EXPECT_GE(now.year, 2024);
    EXPECT_TRUE(now.month >= 1 && now.month <= 12);
    EXPECT_TRUE(now.day >= 1 && now.day <= 31);
    EXPECT_TRUE(now.hour >= 0 && now.hour <= 23);
}

class SteppedClock : public FixedClock {
  public:
    SteppedClock() : FixedClock(kTime) {}
    [[nodiscard]] std::int64_t steadySeconds() const override { return seconds; }
    std::int64_t seconds = 100;
};

TEST(ClockTest, TickerIsTrueOnceASecond) {
    SteppedClock clock;
    SecondTicker ticker(clock);
    EXPECT_TRUE(ticker.secondElapsed());
    EXPECT_FALSE(ticker.secondElapsed());
    EXPECT_FALSE(ticker.secondElapsed());
    clock.seconds = 105;
    EXPECT_TRUE(ticker.secondElapsed());
    EXPECT_FALSE(ticker.secondElapsed());
}

class FixedRandom : public RandomSource {
  public:
    explicit FixedRandom(std::optional<std::uint8_t> byte) : byte_(byte) {}
    [[nodiscard]] std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        if (!byte_) {
            return std::nullopt;
        }
        std::array<std::uint8_t, 16> bytes{};
        bytes.fill(*byte_);
        return bytes;
    }

  private:
    std::optional<std::uint8_t> byte_;
};

TEST(ClockTest, GuidHasItsVersionAndVariantAndNoBraces) {
    FixedRandom ones(0xFF);
    EXPECT_EQ(makeGuid(ones), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    FixedRandom zeros(0);
    EXPECT_EQ(makeGuid(zeros), "00000000-0000-4000-8000-000000000000");
}

TEST(ClockTest, WithoutRandomBytesThereIsNoGuid) {
    FixedRandom none(std::nullopt);
    EXPECT_EQ(makeGuid(none), std::nullopt);
}

TEST(ClockTest, SystemGuidsDiffer) {
    SystemRandomSource random;
    std::set<std::string> guids;
    for (int i = 0; i < 100; ++i) {
        guids.insert(makeGuid(random).value_or(""));
    }
    EXPECT_EQ(guids.size(), 100u);
    EXPECT_EQ(guids.count(""), 0u);
}

}  // namespace
}  // namespace kavu
