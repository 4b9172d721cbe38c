// How far a fit can be trusted. The normal equations lose digits with every order, and the
// coefficients lose more when they are written with few digits: over counts 30000 to 34000 an
// order 7 fit with 8 decimals is wrong by half of full scale, and its residuals in memory do
// not show it. So the coefficients as they are written are compared with a fit of the same
// order on orthogonal polynomials. No number of a record is changed.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

[[nodiscard]] inline bool allFinite(std::span<const double> values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

/// A polynomial on discrete orthogonal polynomials over its own x values.
class OrthogonalFit {
  public:
    /// Nothing if there are not more different x values than the order, or a value or the
    /// spread of x is not finite.
    [[nodiscard]] static std::optional<OrthogonalFit> make(std::span<const double> x,
                                                           std::span<const double> y, int order);
    [[nodiscard]] double value(double x) const;

  private:
    double middle_ = 0;
    double half_ = 1;  ///< of the width of the x values
    std::vector<double> alpha_;
    std::vector<double> beta_;
    std::vector<double> weights_;
};

/// The counts of a measurement's word, from the lowest to the highest.
struct CountRange {
    double lowest = 0;
    double highest = 0;
};
/// The counts of a word, two's complement if the binary format begins with "TWO" in any case.
/// Nothing for less than 1 bit; more than 64 count as 64.
[[nodiscard]] std::optional<CountRange> countRange(int bits, std::string_view binaryFormat);

struct CurveTrust {
    bool known = false;    ///< false without a full scale or an orthogonal fit
    double overPairs = 0;  ///< largest difference at the pairs, in percent of full scale
    double overRange = 0;  ///< largest difference over the range
    bool holds = true;     ///< neither is over 0.1 percent
    /// The range goes beyond the pairs by more than they span themselves: there is nothing to
    /// compare the curve with.
    bool extrapolates = false;
    int holdingPrecision = -1;  ///< digits with which this order would hold; -1 for none
    int holdingOrder = 0;       ///< the highest lower order that holds as it is; 0 for none
};

inline constexpr double kTrustLimit = 0.1;  ///< percent of full scale

/// Judges the fit of an order whose coefficients are written with `precision` digits after
/// the point. Besides the pairs, the range is checked in 1024 steps.
[[nodiscard]] CurveTrust judgeFit(std::span<const double> x, std::span<const double> y, int order,
                                  int precision, double fullScale, std::optional<CountRange> range);

/// The note for the user, of a few sentences; empty if the fit holds or nothing is known. It speaks
/// of extrapolation only if the range goes that far beyond the pairs.
[[nodiscard]] std::string trustNote(const CurveTrust& trust, int order, int precision);

}  // namespace kavu
