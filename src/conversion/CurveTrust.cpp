#include "conversion/CurveTrust.h"

#include "conversion/CurveFit.h"
#include "conversion/EuNumbers.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kavu {

namespace {

constexpr int kSteps = 1024;
constexpr int kMostBits = 64;
/// With this many digits after the point a text reads back as exactly the same number.
constexpr int kExactPrecision = 16;

std::size_t countDifferent(std::span<const double> x) {
    std::vector<double> sorted(x.begin(), x.end());
    std::sort(sorted.begin(), sorted.end());
    return static_cast<std::size_t>(std::unique(sorted.begin(), sorted.end()) - sorted.begin());
}

/// The coefficients as a reader of the record gets them.
FitCoefficients asWritten(const FitCoefficients& c, int order, int precision) {
    FitCoefficients read{};
    for (std::size_t i = 0; i <= static_cast<std::size_t>(order); ++i) {
        read[i] = leadingDouble(exponentText(c[i], precision));
    }
    return read;
}

struct Difference {
    double overPairs = 0;
    double overRange = 0;

    [[nodiscard]] bool holds() const {
        return overPairs <= kTrustLimit && overRange <= kTrustLimit;
    }
};

/// The fit of one order, and the fit that it is compared with at every point.
struct JudgedFit {
    int order = 0;
    FitCoefficients c{};
    std::vector<double> reference;
};

/// Compares fits at the pairs and over the range of the counts. A judgement looks at many
/// precisions and orders: what does not depend on them is computed once, first of all the
/// powers of the points, which are the same numbers wherever they are used.
class Judge {
  public:
    /// No fit that is judged has a higher order.
    Judge(std::span<const double> x, std::span<const double> y, double fullScale,
          std::optional<CountRange> range, int order)
        : x_(x.begin(), x.end()), y_(y), fullScale_(fullScale), points_(x_) {
        // As every fit reads them.
        std::replace(points_.begin(), points_.end(), 0.0, std::numeric_limits<double>::min());
        for (int step = 0; range && step <= kSteps; ++step) {
            const double share = static_cast<double>(step) / kSteps;
            points_.push_back(std::round(range->lowest + share * (range->highest - range->lowest)));
        }
        powers_.reserve(points_.size() * kWidth);
        for (const double point : points_) {
            powers_.push_back(1.0);
            powers_.push_back(point);
            for (std::size_t i = 2; i < kWidth; ++i) {
                powers_.push_back(i <= static_cast<std::size_t>(order)
                                      ? std::pow(point, static_cast<double>(i))
                                      : 0.0);
            }
        }
    }

    /// Nothing if there is no fit of the order to compare with.
    [[nodiscard]] std::optional<JudgedFit> fit(int order) {
        const auto reference = OrthogonalFit::make(x_, y_, order);
        JudgedFit fit{order, {}, {}};
        if (!reference || !leastSquaresFit(x_, y_, order, fit.c)) {
            return std::nullopt;
        }
        fit.reference.reserve(points_.size());
        for (const double point : points_) {
            fit.reference.push_back(reference->value(point));
        }
        return fit;
    }

    /// How far the fit is off when it is written with a precision.
    [[nodiscard]] Difference difference(const JudgedFit& fit, int precision) const {
        const auto written = asWritten(fit.c, fit.order, precision);
        Difference found;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            auto& most = i < x_.size() ? found.overPairs : found.overRange;
            most = std::max(most, percent(fit, written, i));
        }
        return found;
    }
    /// Only whether it holds: the first point that is too far off answers.
    [[nodiscard]] bool holds(const JudgedFit& fit, int precision) const {
        const auto written = asWritten(fit.c, fit.order, precision);
        for (std::size_t i = 0; i < points_.size(); ++i) {
            if (percent(fit, written, i) > kTrustLimit) {
                return false;
            }
        }
        return true;
    }

  private:
    static constexpr std::size_t kWidth = kHighestOrder + 1;

    [[nodiscard]] double percent(const JudgedFit& fit, const FitCoefficients& written,
                                 std::size_t point) const {
        // Term by term in ascending order, as `evaluatePolynomial`.
        double value = 0;
        for (std::size_t i = 0; i <= static_cast<std::size_t>(fit.order); ++i) {
            value += written[i] * powers_[point * kWidth + i];
        }
        const double share = std::abs((value - fit.reference[point]) * 100 / fullScale_);
        // NaN must not count as a small difference.
        return std::isnan(share) ? std::numeric_limits<double>::infinity() : share;
    }

    std::vector<double> x_;
    std::span<const double> y_;
    double fullScale_;
    std::vector<double> points_;  ///< the pairs, then the range
    std::vector<double> powers_;  ///< `kWidth` of each point
};

bool goesFarBeyond(std::span<const double> x, const CountRange& range) {
    const auto [least, most] = std::minmax_element(x.begin(), x.end());
    const double span = *most - *least;
    return range.lowest < *least - span || range.highest > *most + span;
}

std::string percentText(double percent) {
    return percent > 1000 ? ">1000" : formatPrintf("%.2g", percent);
}

}  // namespace

// --- The orthogonal fit --------------------------------------------------------------------

std::optional<OrthogonalFit> OrthogonalFit::make(std::span<const double> x,
                                                 std::span<const double> y, int order) {
    if (order < 0 || !allFinite(x) || !allFinite(y) ||
        countDifferent(x) <= static_cast<std::size_t>(order)) {
        return std::nullopt;
    }
    const auto [least, most] = std::minmax_element(x.begin(), x.end());
    OrthogonalFit fit;
    fit.middle_ = *least / 2 + *most / 2;
    fit.half_ = std::max(*most / 2 - *least / 2, std::numeric_limits<double>::min());
    std::vector<double> u;
    for (const double value : x) {
        u.push_back((value - fit.middle_) / fit.half_);
    }
    std::vector<double> rest(y.begin(), y.end());
    std::vector<double> before(x.size(), 0.0);
    std::vector<double> current(x.size(), 1.0);
    double normBefore = 1;
    for (int k = 0; k <= order; ++k) {
        double norm = 0;
        double moment = 0;
        double projection = 0;
        for (std::size_t i = 0; i < u.size(); ++i) {
            norm += current[i] * current[i];
            moment += u[i] * current[i] * current[i];
            projection += rest[i] * current[i];
        }
        if (!(norm > 0)) {
            return std::nullopt;
        }
        fit.weights_.push_back(projection / norm);
        fit.alpha_.push_back(moment / norm);
        fit.beta_.push_back(k == 0 ? 0.0 : norm / normBefore);
        for (std::size_t i = 0; i < u.size(); ++i) {
            rest[i] -= fit.weights_.back() * current[i];
            const double next =
                (u[i] - fit.alpha_.back()) * current[i] - fit.beta_.back() * before[i];
            before[i] = current[i];
            current[i] = next;
        }
        normBefore = norm;
    }
    return fit;
}

double OrthogonalFit::value(double x) const {
    const double u = (x - middle_) / half_;
    double before = 0;
    double current = 1;
    double sum = 0;
    for (std::size_t k = 0; k < weights_.size(); ++k) {
        sum += weights_[k] * current;
        const double next = (u - alpha_[k]) * current - beta_[k] * before;
        before = current;
        current = next;
    }
    return sum;
}

// --- The judgement -------------------------------------------------------------------------

std::optional<CountRange> countRange(int bits, std::string_view binaryFormat) {
    if (bits < 1) {
        return std::nullopt;
    }
    bits = std::min(bits, kMostBits);
    const double span = std::ldexp(1.0, bits) - 1;
    const double lowest =
        startsWithIgnoreCase(binaryFormat, "TWO") ? -std::ldexp(1.0, bits - 1) : 0.0;
    return CountRange{lowest, lowest + span};
}

CurveTrust judgeFit(std::span<const double> x, std::span<const double> y, int order, int precision,
                    double fullScale, std::optional<CountRange> range) {
    CurveTrust trust;
    if (fullScale == 0.0 || !std::isfinite(fullScale)) {
        return trust;
    }
    Judge judge(x, y, fullScale, range, order);
    const auto fit = judge.fit(order);
    if (!fit) {
        return trust;
    }
    const auto found = judge.difference(*fit, precision);
    trust.known = true;
    trust.extrapolates = range && goesFarBeyond(x, *range);
    trust.overPairs = found.overPairs;
    trust.overRange = found.overRange;
    trust.holds = found.holds();
    for (int digits = precision + 1;
         !trust.holds && trust.holdingPrecision < 0 && digits <= kExactPrecision; ++digits) {
        trust.holdingPrecision = judge.holds(*fit, digits) ? digits : -1;
    }
    for (int lower = order - 1; !trust.holds && trust.holdingOrder == 0 && lower >= 1; --lower) {
        const auto better = judge.fit(lower);
        trust.holdingOrder = better && judge.holds(*better, precision) ? lower : 0;
    }
    return trust;
}

std::string trustNote(const CurveTrust& trust, int order, int precision) {
    if (!trust.known || trust.holds) {
        return {};
    }
    std::string note;
    if (trust.overPairs > kTrustLimit) {
        note = formatPrintf(
            "Written with %d digits, the coefficients of order %d differ from the fit by %s%% of "
            "full scale at the pair sets.",
            precision, order, percentText(trust.overPairs));
    } else {
        note = formatPrintf(
            "Written with %d digits, the coefficients of order %d hold at the pair sets, but "
            "differ from the fit by %s%% of full scale over the range of the counts.",
            precision, order, percentText(trust.overRange));
        if (trust.extrapolates) {
            note +=
                " The counts go beyond the pair sets by more than these span: the curve is "
                "extrapolated there.";
        }
    }
    if (trust.holdingPrecision >= 0) {
        note += formatPrintf(" A precision of %d would hold.", trust.holdingPrecision);
    }
    if (trust.holdingOrder > 0) {
        note += trust.holdingPrecision >= 0
                    ? formatPrintf(" So would order %d.", trust.holdingOrder)
                    : formatPrintf(" Order %d would hold.", trust.holdingOrder);
    }
    if (trust.holdingPrecision < 0 && trust.holdingOrder == 0) {
        note += " No other order or precision would hold.";
    }
    return note;
}

}  // namespace kavu
