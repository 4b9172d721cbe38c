#include "conversion/EuNumbers.h"
#include "core/talk/ProfileSettings.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

TEST(LeadingDouble, TakesTheNumberAtTheFront) {
    const std::pair<const char*, double> cases[] = {
        {"1", 1},
        {" \t-2.5e1x", -25},
        {"+3", 3},
        {".5", 0.5},
        {"-.5", -0.5},
        {"5.", 5},
        {"1,5", 1},
        {"12abc", 12},
        {"1e", 1},
        {"1e400", kInfinite},
        {"-1e400", -kInfinite},
        {"1e-400", 0},
        {"0x10", 0},
        {"2.2250738585072014e-308", 2.2250738585072014e-308},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(leadingDouble(text), value) << text;
    }
}

TEST(LeadingDouble, BadTextCountsAs0) {
    for (const char* const text :
         {"", " ", "abc", "nan", "inf", "-inf", "infinity", "--1", "+-1", ".", "-", "e5", ".e5"}) {
        EXPECT_EQ(leadingDouble(text), 0) << text;
    }
}

TEST(LeadingDouble, KnowsLargeAndSmallWithoutAnExponent) {
    EXPECT_EQ(leadingDouble(std::string(400, '9')), kInfinite);
    EXPECT_EQ(leadingDouble("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leadingDouble("00" + std::string(400, '9')), kInfinite);
}

TEST(EuNumbers, AStatisticShowsItsLeadingDigits) {
    EXPECT_EQ(statisticText(0, 8), "0.00000000");
    EXPECT_EQ(statisticText(0.25, 3), "0.250");
    EXPECT_EQ(statisticText(0.0123456, 8), "0.01234560");
    EXPECT_EQ(statisticText(1234567.891, 2), "1234567.89");
    EXPECT_EQ(statisticText(0.99999999999, 8), "1.00000000");
    // Where nothing or one rounded digit would be left.
    EXPECT_EQ(statisticText(1.2345e-12, 8), "1.23450000E-12");
    EXPECT_EQ(statisticText(0.004567, 3), "4.567E-03");
    EXPECT_EQ(statisticText(-0.4, 0), "-4.00E-01");
    EXPECT_EQ(statisticText(12.6, 0), "13");
}

TEST(EuNumbers, HaveTheTextFormsOfRecords) {
    EXPECT_EQ(exponentText(-1234.5, 3), "-1.234E+03");
    EXPECT_EQ(exponentText(0, 8), "0.00000000E+00");
    EXPECT_EQ(exponentText(1, 0), "1E+00");
    EXPECT_EQ(fixedText(2.0 / 3, 4), "0.6667");
    EXPECT_EQ(fixedText(2.0 / 3), "0.666667");
    EXPECT_EQ(exactText(0.1), "0.1");
}

TEST(EuNumbers, AreReadBackFromTheTextOfAField) {
    EXPECT_EQ(readableExponentText(1.5, 3, 32), "1.500E+00");
    EXPECT_EQ(readableExponentText(1.23456, 3, 32), "1.23456E+00");
    EXPECT_EQ(readableExponentText(0, 0, 32), "0E+00");
    for (const double value : {0.1, 1.0 / 3, -1.7976931348623157e308, 5e-324, -0.0}) {
        for (const int precision : {0, 8, 24, 40}) {
            const auto text = readableExponentText(value, precision, 32);
            EXPECT_EQ(leadingDouble(text), value) << text;
            EXPECT_LE(text.size(), 32U) << text;
        }
    }
}

TEST(FloatPrecision, Is8AndStaysWithinItsBounds) {
    ProfileSettings settings{std::string()};
    EXPECT_EQ(floatPrecision(settings), 8);
    settings.write("FloatPrecision", "-3");
    EXPECT_EQ(floatPrecision(settings), 0);
    settings.write("FloatPrecision", "99999");
    EXPECT_EQ(floatPrecision(settings), 40);
}

}  // namespace
}  // namespace kavu
