// The arithmetic of curve fits: a least-squares polynomial, the search for its order, and
// the statistics of a fit. Coefficients are in ascending powers, y = c[0] + c[1] x + ...
//
// Users compare these numbers with those of earlier calibrations, so they are exact to the
// last bit: the order of the operations is part of what the functions promise, and the
// source is compiled without fused or reassociated operations. None of them throws; values
// that are not finite go through the arithmetic as they are.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace kavu {

/// The highest order of a fit.
inline constexpr int kHighestOrder = 10;
/// The most coefficients after the constant one that a record may hold.
inline constexpr int kMostTerms = 99;

/// c[0] to c[kHighestOrder]; those above the order of the fit are not used.
using FitCoefficients = std::array<double, kHighestOrder + 1>;

/// Least squares by normal equations and a Crout factorisation. False for an order below 0,
/// over 10 or not below the number of pairs, and for a singular system, which is one with a
/// pivot of exactly 0. `x` and `y` have the same length; an x of 0.0 is replaced by the
/// smallest normal number for good. If the order is refused `c` stays as it was.
[[nodiscard]] bool leastSquaresFit(std::span<double> x, std::span<const double> y, int order,
                                   FitCoefficients& c);

/// The order that fits best, or 0 for none: the first from which the next order does not
/// lower the error sum by more than 30 percent, or one whose scaled residuals are within 1.
/// A search that ends without an answer gives the highest order. Without `search` it is
/// `maxOrder` if that can be fitted. `c`, if given, gets the coefficients of the last fit.
[[nodiscard]] int bestFitOrder(std::span<double> x, std::span<const double> y, bool search,
                               int maxOrder, FitCoefficients* c = nullptr);

/// The value at x, term by term in ascending order.
[[nodiscard]] double evaluatePolynomial(double x, std::span<const double> c, int order);

/// Of the fit; `errors` are computed minus measured values. 0 without a spread of y.
[[nodiscard]] double correlationCoefficient(std::span<const double> y,
                                            std::span<const double> errors);
[[nodiscard]] double rootMeanSquare(std::span<const double> y, std::span<const double> computed);
[[nodiscard]] double populationDeviation(std::span<const double> values);
/// True for an error of 0.5 percent of full scale or more.
[[nodiscard]] bool isOutOfTolerance(double y, double computed, double fullScale);

/// The residuals of a fit as the search for the order judges them.
struct FitDiagnostics {
    double errorSum = 0;     ///< of the squares of the residuals
    double scaledLeast = 0;  ///< of the scaled residuals
    double scaledGreatest = 0;
};
/// REQUIRES: 1 <= order < x.size().
[[nodiscard]] FitDiagnostics fitDiagnostics(std::span<const double> x, std::span<const double> y,
                                            int order, const FitCoefficients& c);

}  // namespace kavu
