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

class Judge {
  public:
    Judge(std::span<const double> x, std::span<const double> y, double fullScale,
          std::optional<CountRange> range)
        : x_(x.begin(), x.end()), y_(y), fullScale_(fullScale), range_(range) {}

    /// Nothing if there is no fit of the order to compare with.
    [[nodiscard]] std::optional<Difference> difference(int order, int precision) {
        const auto reference = OrthogonalFit::make(x_, y_, order);
        FitCoefficients c{};
        if (!reference || !leastSquaresFit(x_, y_, order, c)) {
            return std::nullopt;
        }
        const auto written = asWritten(c, order, precision);
        const auto percent = [&](double x) {
            const double value = evaluatePolynomial(x, written, order);
            const double share = std::abs((value - reference->value(x)) * 100 / fullScale_);
            // NaN must not count as a small difference.
            return std::isnan(share) ? std::numeric_limits<double>::infinity() : share;
        };
        Difference found;
        for (const double x : x_) {
            found.overPairs = std::max(found.overPairs, percent(x));
        }
        for (int step = 0; range_ && step <= kSteps; ++step) {
            const double share = static_cast<double>(step) / kSteps;
            const double x = range_->lowest + share * (range_->highest - range_->lowest);
            found.overRange = std::max(found.overRange, percent(std::round(x)));
        }
        return found;
    }

  private:
    std::vector<double> x_;
    std::span<const double> y_;
    double fullScale_;
    std::optional<CountRange> range_;
};

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
    Judge judge(x, y, fullScale, range);
    const auto found = judge.difference(order, precision);
    if (!found) {
        return trust;
    }
    trust.known = true;
    trust.overPairs = found->overPairs;
    trust.overRange = found->overRange;
    trust.holds = found->holds();
    for (int digits = precision + 1;
         !trust.holds && trust.holdingPrecision < 0 && digits <= kExactPrecision; ++digits) {
        const auto better = judge.difference(order, digits);
        trust.holdingPrecision = better && better->holds() ? digits : -1;
    }
    for (int lower = order - 1; !trust.holds && trust.holdingOrder == 0 && lower >= 1; --lower) {
        const auto better = judge.difference(lower, precision);
        trust.holdingOrder = better && better->holds() ? lower : 0;
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
