#include "conversion/CurveFit.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Values = std::vector<double>;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kSmallest = 2.2250738585072014e-308;

Values counting(std::size_t n, double from = 1) {
    Values values;
    for (std::size_t i = 0; i < n; ++i) {
        values.push_back(from + static_cast<double>(i));
    }
    return values;
}

// --- Least squares -------------------------------------------------------------------------

TEST(LeastSquaresFit, FindsALine) {
    Values x{1, 2, 3, 4};
    FitCoefficients c{};
    ASSERT_TRUE(leastSquaresFit(x, Values{3, 5, 7, 9}, 1, c));
    EXPECT_NEAR(c[0], 1, 1e-12);
    EXPECT_NEAR(c[1], 2, 1e-12);
}

TEST(LeastSquaresFit, OrderZeroIsTheMean) {
    Values x{1, 2, 3};
    FitCoefficients c{};
    ASSERT_TRUE(leastSquaresFit(x, Values{1, 2, 6}, 0, c));
    EXPECT_EQ(c[0], 3);
}

TEST(LeastSquaresFit, AZeroFitsNormallyAndBecomesTheSmallestNormalNumber) {
    Values x{0, 1, 2, -0.0};
    FitCoefficients c{};
    ASSERT_TRUE(leastSquaresFit(x, Values{1, 3, 5, 1}, 1, c));
    EXPECT_NEAR(c[0], 1, 1e-12);
    EXPECT_NEAR(c[1], 2, 1e-12);
    EXPECT_EQ(x, (Values{kSmallest, 1, 2, kSmallest}));
}

TEST(LeastSquaresFit, AcceptsOrder10WithElevenPairsAndRefusesOrder11) {
    auto x = counting(11);
    const auto y = counting(11, 5);
    FitCoefficients c{};
    EXPECT_TRUE(leastSquaresFit(x, y, 10, c));
    auto more = counting(12);
    EXPECT_FALSE(leastSquaresFit(more, counting(12, 5), 11, c));
}

TEST(LeastSquaresFit, ARefusedOrderLeavesTheCoefficients) {
    Values x{1, 2};
    FitCoefficients c{};
    c.fill(7);
    const auto before = c;
    for (const int order : {-1, 2, 3, 11}) {
        EXPECT_FALSE(leastSquaresFit(x, Values{1, 2}, order, c)) << order;
        EXPECT_EQ(c, before);
    }
    Values none;
    EXPECT_FALSE(leastSquaresFit(none, {}, 0, c));
}

TEST(LeastSquaresFit, EqualXAreSingularOnlyIfAPivotIsExactlyZero) {
    Values x{5, 5, 5};
    FitCoefficients c{};
    c.fill(7);
    EXPECT_FALSE(leastSquaresFit(x, Values{1, 2, 3}, 1, c));
    EXPECT_EQ(c[0], 0) << "all but the last one are set to 0 first";
    EXPECT_EQ(c[1], 7);
}

TEST(LeastSquaresFit, ThereIsNoToleranceForWhatIsAlmostSingular) {
    // The powers of 1e-200 vanish from the second on, but the sums do not.
    Values x{1, 1 + 1e-15, 1 + 2e-15};
    FitCoefficients c{};
    EXPECT_TRUE(leastSquaresFit(x, Values{1, 2, 3}, 1, c));
}

TEST(LeastSquaresFit, GoesThroughNumbersThatAreNotFinite) {
    FitCoefficients c{};
    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e308, -1e308}) {
        Values x{1, bad, 3};
        (void)leastSquaresFit(x, Values{1, 2, 3}, 2, c);
        Values good{1, 2, 3};
        if (leastSquaresFit(good, Values{1, bad, 3}, 1, c) && !std::isfinite(bad)) {
            EXPECT_FALSE(std::isfinite(c[0])) << bad;
        }
    }
}

TEST(LeastSquaresFit, TakesAMillionPairs) {
    auto x = counting(1000000, 0);
    const auto y = counting(1000000, 3);
    FitCoefficients c{};
    ASSERT_TRUE(leastSquaresFit(x, y, 1, c));
    EXPECT_NEAR(c[1], 1, 1e-6);
    EXPECT_GE(bestFitOrder(x, y, true, 2), 1);
}

// --- The search ----------------------------------------------------------------------------

TEST(BestFitOrder, TwoPairsAreOfOrderOneWhetherOrNotAResidueRemains) {
    for (const auto& y : {Values{1, 2}, Values{0.1, 0.7}, Values{1e-30, 3.3e20}}) {
        Values x{3, 7};
        EXPECT_EQ(bestFitOrder(x, y, true, 5), 1);
    }
}

TEST(BestFitOrder, AnExactLineIsOfOrderOne) {
    Values x{1, 2, 3};
    EXPECT_EQ(bestFitOrder(x, Values{2, 4, 6}, true, 5), 1);
}

TEST(BestFitOrder, NeverTriesMoreOrdersThanThePairsAllow) {
    // Orders 1 and 2 only: the top order is named when nothing else has answered.
    Values x{1, 2, 3};
    const int found = bestFitOrder(x, Values{1, 40, -3}, true, 5);
    EXPECT_GE(found, 1);
    EXPECT_LE(found, 2);
}

TEST(BestFitOrder, RefusesWhatCanNotBeSearched) {
    Values none;
    EXPECT_EQ(bestFitOrder(none, {}, true, 5), 0);
    Values x = counting(20);
    const auto y = counting(20);
    EXPECT_EQ(bestFitOrder(x, y, true, -1), 0);
    EXPECT_EQ(bestFitOrder(x, y, true, 11), 0);
    EXPECT_EQ(bestFitOrder(x, y, true, 0), 0);
    Values one{1};
    EXPECT_EQ(bestFitOrder(one, Values{1}, true, 5), 0);
}

TEST(BestFitOrder, AFailedFitStillNamesTheTopOrder) {
    Values x{5, 5, 5, 5};
    EXPECT_EQ(bestFitOrder(x, Values{1, 2, 3, 4}, true, 5), 3);
}

TEST(BestFitOrder, WithoutASearchIsTheHighestOrderIfItFits) {
    Values x = counting(6);
    const Values y{1, 4, 9, 16, 25, 36};
    FitCoefficients c{};
    EXPECT_EQ(bestFitOrder(x, y, false, 2, &c), 2);
    EXPECT_NEAR(c[2], 1, 1e-9);
    Values same{5, 5, 5};
    EXPECT_EQ(bestFitOrder(same, Values{1, 2, 3}, false, 1), 0);
}

TEST(BestFitOrder, GivesTheFitInFrontWhenTheNextGainsTooLittle) {
    Values x = counting(20);
    Values y;
    for (const double v : x) {
        y.push_back(2 * v + (static_cast<int>(v) % 2 == 0 ? 0.4 : -0.4));
    }
    FitCoefficients c{};
    ASSERT_EQ(bestFitOrder(x, y, true, 5, &c), 1);
    FitCoefficients line{};
    ASSERT_TRUE(leastSquaresFit(x, y, 1, line));
    EXPECT_EQ(c[0], line[0]);
    EXPECT_EQ(c[1], line[1]);
}

// The rows of the table of powers overlay one another; with rows of their own the scaled
// residuals, and with them the chosen orders, would be others.
TEST(FitDiagnostics, ReadsThePowersFromOneFlatOverlaidBlock) {
    const Values x{2, 3, 5, 7};
    const Values y{1, 1, 1, 2};
    FitCoefficients c{};
    c[1] = 0;
    c[2] = 1;
    c[3] = 0;
    const auto fit = fitDiagnostics(x, y, 2, c);
    // slope(i) = T(i,1) * 1 * c[2]; T(i,1) is at i + 3: 3 is overwritten by T(3,0) = 1.
    const double scaled0 = (1 - 4.0) / 1.0;
    const double scaled1 = (1 - 9.0) / 3.0;
    const double scaled2 = (1 - 25.0) / 5.0;
    const double scaled3 = (2 - 49.0) / 7.0;
    EXPECT_EQ(fit.scaledLeast, std::min({scaled0, scaled1, scaled2, scaled3}));
    EXPECT_EQ(fit.scaledGreatest, std::max({scaled0, scaled1, scaled2, scaled3}));
}

TEST(FitDiagnostics, TheSlopeHasTheFactorJSoThatALineHasNone) {
    const Values x{1, 2};
    FitCoefficients c{};
    c[0] = 1;
    c[1] = 5;
    const auto fit = fitDiagnostics(x, Values{7, 11}, 1, c);
    EXPECT_EQ(fit.errorSum, 1);
    // A slope of 0 is replaced by 1e-10.
    EXPECT_EQ(fit.scaledGreatest, 1 / 1e-10);
    EXPECT_EQ(fit.scaledLeast, 0);
}

// --- Statistics ----------------------------------------------------------------------------

TEST(EvaluatePolynomial, SumsTermByTerm) {
    const Values c{1, 2, 3};
    EXPECT_EQ(evaluatePolynomial(2, c, 2), 17);
    EXPECT_EQ(evaluatePolynomial(2, c, 0), 1);
    EXPECT_EQ(evaluatePolynomial(0, c, 2), 1);
    EXPECT_EQ(evaluatePolynomial(kInfinity, Values{1}, 0), 1);
}

TEST(PopulationDeviation, IsThatOfAllValues) {
    EXPECT_EQ(populationDeviation(Values{2, 4, 4, 4, 5, 5, 7, 9}), 2);
    EXPECT_EQ(populationDeviation(Values{5}), 0);
    EXPECT_EQ(populationDeviation({}), 0);
    EXPECT_EQ(populationDeviation(Values{0.1, 0.1, 0.1}), 0) << "a negative variance is 0";
}

TEST(CorrelationCoefficient, Is0WithoutASpreadAndForAFitWorseThanTheMean) {
    EXPECT_EQ(correlationCoefficient(Values{3, 3}, Values{0, 0}), 0);
    EXPECT_EQ(correlationCoefficient(Values{1, 2}, Values{9, 9}), 0);
    EXPECT_EQ(correlationCoefficient(Values{1, 2}, Values{0, 0}), 1);
    EXPECT_EQ(correlationCoefficient({}, {}), 0);
}

TEST(RootMeanSquare, DividesByAllPairs) {
    EXPECT_EQ(rootMeanSquare(Values{1, 2, 3, 4}, Values{1, 2, 3, 8}), 2);
    EXPECT_EQ(rootMeanSquare({}, {}), 0);
}

TEST(IsOutOfTolerance, AnErrorOfExactlyHalfAPercentIsMarked) {
    EXPECT_TRUE(isOutOfTolerance(0, 0.5, 100));
    EXPECT_TRUE(isOutOfTolerance(0, -0.5, 100));
    EXPECT_FALSE(isOutOfTolerance(0, std::nextafter(0.5, 0), 100));
    EXPECT_FALSE(isOutOfTolerance(0, 1000, 0)) << "without a full scale nothing is marked";
}

}  // namespace
}  // namespace kavu
