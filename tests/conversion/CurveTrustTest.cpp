#include "conversion/CurveFit.h"
#include "conversion/CurveTrust.h"
#include "conversion/EuNumbers.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Values = std::vector<double>;

/// Counts of a sensor that sits high in its word.
struct HighCounts {
    HighCounts() {
        for (int i = 0; i < 41; ++i) {
            const double u = i / 40.0;
            x.push_back(30000 + 4000 * u);
            y.push_back(100 * u + 3 * std::sin(9 * u));
        }
    }
    Values x;
    Values y;
};

TEST(OrthogonalFit, HoldsAtOrdersWhereNormalEquationsFail) {
    const HighCounts data;
    const auto fit = OrthogonalFit::make(data.x, data.y, 10);
    ASSERT_TRUE(fit);
    double worst = 0;
    for (std::size_t i = 0; i < data.x.size(); ++i) {
        worst = std::max(worst, std::abs(fit->value(data.x[i]) - data.y[i]));
    }
    EXPECT_LT(worst, 0.01);
}

TEST(OrthogonalFit, GivesBackAPolynomial) {
    Values x;
    Values y;
    for (int i = -5; i <= 5; ++i) {
        x.push_back(i);
        y.push_back(1 - 2 * i + 0.5 * i * i * i);
    }
    const auto fit = OrthogonalFit::make(x, y, 3);
    ASSERT_TRUE(fit);
    EXPECT_NEAR(fit->value(2.5), 1 - 5 + 0.5 * 15.625, 1e-12);
    EXPECT_NEAR(fit->value(9), 1 - 18 + 0.5 * 729, 1e-9);
}

TEST(OrthogonalFit, NeedsMoreDifferentXThanItsOrder) {
    EXPECT_FALSE(OrthogonalFit::make(Values{5, 5, 5}, Values{1, 2, 3}, 1));
    EXPECT_TRUE(OrthogonalFit::make(Values{5, 5, 6}, Values{1, 2, 3}, 1));
    EXPECT_TRUE(OrthogonalFit::make(Values{5, 5}, Values{1, 2}, 0));
    EXPECT_FALSE(OrthogonalFit::make({}, {}, 0));
    const double bad = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(OrthogonalFit::make(Values{1, bad}, Values{1, 2}, 0));
    EXPECT_FALSE(OrthogonalFit::make(Values{1, 2}, Values{bad, 2}, 0));
}

TEST(CountRange, IsThatOfTheWord) {
    const auto plain = countRange(8, "UNS");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->lowest, 0);
    EXPECT_EQ(plain->highest, 255);
    for (const char* const format : {"TWO", "two's Complement", "TwO"}) {
        const auto signedRange = countRange(8, format);
        ASSERT_TRUE(signedRange);
        EXPECT_EQ(signedRange->lowest, -128) << format;
        EXPECT_EQ(signedRange->highest, 127) << format;
    }
    EXPECT_FALSE(countRange(0, "UNS"));
    EXPECT_FALSE(countRange(-3, "UNS"));
    EXPECT_EQ(countRange(100000, "UNS")->highest, countRange(64, "UNS")->highest);
}

TEST(JudgeFit, ALineHoldsOverTheWholeRange) {
    const auto trust =
        judgeFit(Values{0, 32768, 65535}, Values{-5, 0, 4.99985}, 1, 8, 10, countRange(16, "UNS"));
    EXPECT_TRUE(trust.known);
    EXPECT_TRUE(trust.holds);
    EXPECT_EQ(trustNote(trust, 1, 8), "");
}

// The fit of order 7 over counts 30000 to 34000 that has lost flights.
TEST(JudgeFit, HighCountsAtAHighOrderDoNotHoldAndALowerOrderIsNamed) {
    const HighCounts data;
    const auto trust = judgeFit(data.x, data.y, 7, 8, 100, std::nullopt);
    ASSERT_TRUE(trust.known);
    EXPECT_FALSE(trust.holds);
    EXPECT_GT(trust.overPairs, kTrustLimit);
    ASSERT_GT(trust.holdingOrder, 0);
    EXPECT_LT(trust.holdingOrder, 7);
    const auto lower = judgeFit(data.x, data.y, trust.holdingOrder, 8, 100, std::nullopt);
    EXPECT_TRUE(lower.holds) << "what is named does hold";
    EXPECT_NE(trustNote(trust, 7, 8).find("Order " + std::to_string(trust.holdingOrder)),
              std::string::npos);
}

TEST(JudgeFit, AHigherPrecisionIsNamedWhereItHolds) {
    const HighCounts data;
    const auto trust = judgeFit(data.x, data.y, 3, 4, 100, std::nullopt);
    ASSERT_FALSE(trust.holds);
    ASSERT_GT(trust.holdingPrecision, 4);
    EXPECT_TRUE(judgeFit(data.x, data.y, 3, trust.holdingPrecision, 100, std::nullopt).holds);
    EXPECT_FALSE(judgeFit(data.x, data.y, 3, trust.holdingPrecision - 1, 100, std::nullopt).holds);
    EXPECT_NE(trustNote(trust, 3, 4).find("A precision of"), std::string::npos);
}

/// Twenty pairs, at 0 to 19.
std::pair<Values, Values> sinePairs() {
    std::pair<Values, Values> pairs;
    for (int i = 0; i < 20; ++i) {
        pairs.first.push_back(i);
        pairs.second.push_back(std::sin(i));
    }
    return pairs;
}

TEST(JudgeFit, TheRangeOfTheCountsIsToldApart) {
    const auto [x, y] = sinePairs();
    const auto trust = judgeFit(x, y, 5, 8, 2, countRange(16, "UNS"));
    ASSERT_FALSE(trust.holds);
    EXPECT_LE(trust.overPairs, kTrustLimit);
    EXPECT_GT(trust.overRange, kTrustLimit);
    EXPECT_NE(trustNote(trust, 5, 8).find("over the range of the counts"), std::string::npos);
}

TEST(JudgeFit, ExtrapolationIsToldOnlyFarBeyondThePairs) {
    const auto [x, y] = sinePairs();
    // The pairs span 19: up to 38 is not far.
    for (const double highest : {38.0, 39.0}) {
        const auto trust = judgeFit(x, y, 9, 1, 2, CountRange{0, highest});
        ASSERT_TRUE(trust.known);
        EXPECT_EQ(trust.extrapolates, highest > 38) << highest;
    }
    EXPECT_TRUE(judgeFit(x, y, 5, 8, 2, CountRange{-20, 19}).extrapolates);
    EXPECT_FALSE(judgeFit(x, y, 5, 8, 2, std::nullopt).extrapolates);
    constexpr std::string_view kExtrapolated = "extrapolated";
    CurveTrust trust{.known = true, .overPairs = 0.01, .overRange = 5, .holds = false};
    EXPECT_EQ(trustNote(trust, 5, 8).find(kExtrapolated), std::string::npos);
    trust.extrapolates = true;
    EXPECT_NE(trustNote(trust, 5, 8).find(kExtrapolated), std::string::npos);
    // What does not hold at the pairs themselves has nothing to do with it.
    trust.overPairs = 5;
    EXPECT_EQ(trustNote(trust, 5, 8).find(kExtrapolated), std::string::npos);
    trust.holds = true;
    EXPECT_EQ(trustNote(trust, 5, 8), "");
}

TEST(JudgeFit, KnowsNothingWithoutAFullScaleOrAFit) {
    EXPECT_FALSE(judgeFit(Values{1, 2}, Values{1, 2}, 1, 8, 0, std::nullopt).known);
    EXPECT_FALSE(judgeFit(Values{1, 1}, Values{1, 2}, 1, 8, 1, std::nullopt).known);
    EXPECT_FALSE(judgeFit(Values{1, 2}, Values{1, 2}, 5, 8, 1, std::nullopt).known);
    EXPECT_FALSE(judgeFit({}, {}, 1, 8, 1, std::nullopt).known);
    EXPECT_EQ(trustNote({}, 1, 8), "");
}

/// The largest differences of one fit, computed on their own.
std::optional<std::pair<double, double>> plainDifference(Values x, const Values& y, int order,
                                                         int precision, double fullScale,
                                                         std::optional<CountRange> range) {
    const auto reference = OrthogonalFit::make(x, y, order);
    FitCoefficients c{};
    if (!reference || !leastSquaresFit(x, y, order, c)) {
        return std::nullopt;
    }
    for (double& value : c) {
        value = leadingDouble(exponentText(value, precision));
    }
    const auto percent = [&](double at) {
        const double share =
            std::abs((evaluatePolynomial(at, c, order) - reference->value(at)) * 100 / fullScale);
        return std::isnan(share) ? std::numeric_limits<double>::infinity() : share;
    };
    std::pair<double, double> found{0, 0};
    for (const double at : x) {
        found.first = std::max(found.first, percent(at));
    }
    for (int step = 0; range && step <= 1024; ++step) {
        const double at =
            std::round(range->lowest + step / 1024.0 * (range->highest - range->lowest));
        found.second = std::max(found.second, percent(at));
    }
    return found;
}

TEST(JudgeFit, AnswersToTheLastBitWhatEachFitByItselfWould) {
    std::mt19937 random(3);
    const auto number = [&](double most) {
        return static_cast<double>(random()) / 4294967296.0 * most;
    };
    int unsafe = 0;
    for (int round = 0; round < 60; ++round) {
        Values x;
        Values y;
        const double start = round % 3 == 0 ? 0 : number(40000);
        const auto count = 12 + random() % 88;
        for (unsigned i = 0; i < count; ++i) {
            x.push_back(start + 40.0 * i);
            y.push_back(number(100));
        }
        const int order = 1 + static_cast<int>(random() % 10);
        const int precision = static_cast<int>(random() % 10);
        const auto range = round % 2 == 0 ? countRange(16, "INT") : std::nullopt;
        const auto trust = judgeFit(x, y, order, precision, 100, range);
        const auto plain = plainDifference(x, y, order, precision, 100, range);
        ASSERT_TRUE(plain && trust.known);
        EXPECT_EQ(trust.overPairs, plain->first) << round;
        EXPECT_EQ(trust.overRange, plain->second) << round;
        const auto holds = [&](int otherOrder, int digits) {
            const auto other = plainDifference(x, y, otherOrder, digits, 100, range);
            return other && other->first <= kTrustLimit && other->second <= kTrustLimit;
        };
        ASSERT_EQ(trust.holds, holds(order, precision)) << round;
        unsafe += trust.holds ? 0 : 1;
        int digits = trust.holds ? 17 : precision + 1;
        while (digits <= 16 && !holds(order, digits)) {
            ++digits;
        }
        EXPECT_EQ(trust.holdingPrecision, digits <= 16 ? digits : -1) << round;
        int lower = trust.holds ? 0 : order - 1;
        while (lower > 0 && !holds(lower, precision)) {
            --lower;
        }
        EXPECT_EQ(trust.holdingOrder, lower) << round;
    }
    EXPECT_GT(unsafe, 20);
}

}  // namespace
}  // namespace kavu
