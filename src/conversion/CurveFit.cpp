// Compiled with settings of its own (see CMakeLists.txt): no fused operations, and calls of
// `pow` stay calls.
#include "conversion/CurveFit.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kavu {

namespace {

constexpr std::size_t kRows = kHighestOrder + 1;

/// Rows 1 to 11 and columns 1 to 12, as the equations count them.
class Matrix {
  public:
    double& operator()(std::size_t row, std::size_t column) {
        return cells_[(row - 1) * (kRows + 1) + column - 1];
    }
    void swapRows(std::size_t a, std::size_t b, std::size_t columns) {
        for (std::size_t s = 1; s <= columns; ++s) {
            std::swap((*this)(a, s), (*this)(b, s));
        }
    }

  private:
    std::array<double, kRows*(kRows + 1)> cells_{};
};

/// So that the power function never sees 0 to the power 0.
void replaceZeros(std::span<double> x) {
    for (double& value : x) {
        if (value == 0.0) {
            value = std::numeric_limits<double>::min();
        }
    }
}

/// The augmented normal equations. Every element is a sum over the pairs in their order; a
/// power is the same number wherever it is used, so it is computed once for each pair.
void fillNormalEquations(std::span<const double> x, std::span<const double> y, std::size_t m,
                         Matrix& matrix) {
    std::array<double, kRows> powers{};
    for (std::size_t k = 0; k < x.size(); ++k) {
        for (std::size_t r = 0; r < m; ++r) {
            powers[r] = std::pow(x[k], static_cast<double>(r));
        }
        for (std::size_t r = 1; r <= m; ++r) {
            for (std::size_t s = 1; s <= m; ++s) {
                matrix(r, s) += powers[r - 1] * powers[s - 1];
            }
            matrix(r, m + 1) += powers[r - 1] * y[k];
        }
    }
}

/// The only pivoting, before the factorisation. Of equal rows the later one wins.
void orderRows(std::size_t m, Matrix& matrix) {
    for (std::size_t i = 1; i <= m; ++i) {
        std::size_t pivot = i;
        double value = matrix(i, i);
        for (std::size_t j = i + 1; j <= m; ++j) {
            if (std::abs(value) <= std::abs(matrix(j, i))) {
                value = matrix(j, i);
                pivot = j;
            }
        }
        if (pivot != i) {
            matrix.swapRows(i, pivot, m + 1);
        }
    }
}

bool factorise(std::size_t m, Matrix& matrix) {
    for (std::size_t s = 2; s <= m + 1; ++s) {
        if (matrix(1, 1) == 0.0) {
            return false;
        }
        matrix(1, s) = matrix(1, s) / matrix(1, 1);
    }
    for (std::size_t k = 2; k <= m; ++k) {
        for (std::size_t i = k; i <= m; ++i) {
            double sum = 0;
            for (std::size_t t = 1; t < k; ++t) {
                sum += matrix(i, t) * matrix(t, k);
            }
            matrix(i, k) = matrix(i, k) - sum;
        }
        for (std::size_t s = k + 1; s <= m + 1; ++s) {
            double sum = 0;
            for (std::size_t t = 1; t < k; ++t) {
                sum += matrix(k, t) * matrix(t, s);
            }
            if (matrix(k, k) == 0.0) {
                return false;
            }
            matrix(k, s) = (matrix(k, s) - sum) / matrix(k, k);
        }
    }
    return true;
}

void substituteBack(std::size_t m, Matrix& matrix, FitCoefficients& c) {
    c[m - 1] = matrix(m, m + 1);
    for (std::size_t i = 1; i < m; ++i) {
        const std::size_t r = m - i;
        double sum = 0;
        for (std::size_t s = r + 1; s <= m; ++s) {
            sum += matrix(r, s) * c[s - 1];
        }
        c[r - 1] = matrix(r, m + 1) - sum;
    }
}

double horner(double x, int order, const FitCoefficients& c) {
    double value = 0;
    for (int j = order; j >= 0; --j) {
        value = value * x + c[static_cast<std::size_t>(j)];
    }
    return value;
}

/// The powers 0 to k of every x in one flat block, where the element of pair i and power j
/// is at i + (k + 1) j. With more than k + 1 pairs the rows overlay one another and later
/// ones win; the search has always read it like this, and the order that it chooses depends
/// on it.
std::vector<double> overlaidPowers(std::span<const double> x, std::size_t k) {
    std::vector<double> table(x.size() * (k + 1));
    for (std::size_t i = 0; i < x.size(); ++i) {
        table[i] = 1.0;
        for (std::size_t j = 1; j <= k; ++j) {
            table[i + (k + 1) * j] = table[i + (k + 1) * (j - 1)] * x[i];
        }
    }
    return table;
}

}  // namespace

bool leastSquaresFit(std::span<double> x, std::span<const double> y, int order,
                     FitCoefficients& c) {
    if (order < 0 || order > kHighestOrder || static_cast<std::size_t>(order) >= x.size()) {
        return false;
    }
    const auto m = static_cast<std::size_t>(order) + 1;
    std::fill_n(c.begin(), m - 1, 0.0);
    Matrix matrix;
    replaceZeros(x);
    fillNormalEquations(x, y, m, matrix);
    orderRows(m, matrix);
    if (!factorise(m, matrix)) {
        return false;
    }
    substituteBack(m, matrix, c);
    return true;
}

FitDiagnostics fitDiagnostics(std::span<const double> x, std::span<const double> y, int order,
                              const FitCoefficients& c) {
    const auto k = static_cast<std::size_t>(order);
    const auto table = overlaidPowers(x, k);
    FitDiagnostics result;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double residual = y[i] - horner(x[i], order, c);
        double slope = 0;
        for (std::size_t j = 0; j < k; ++j) {
            // The factor is j, not the j + 1 of a derivative: chosen orders depend on it.
            slope += table[i + (k + 1) * j] * (static_cast<double>(j) * c[j + 1]);
        }
        const double scaled = residual / (slope == 0.0 ? 1e-10 : slope);
        result.errorSum += residual * residual;
        result.scaledLeast = i == 0 || scaled < result.scaledLeast ? scaled : result.scaledLeast;
        result.scaledGreatest =
            i == 0 || scaled > result.scaledGreatest ? scaled : result.scaledGreatest;
    }
    return result;
}

int bestFitOrder(std::span<double> x, std::span<const double> y, bool search, int maxOrder,
                 FitCoefficients* c) {
    const auto pairs = x.size();
    if (pairs < 1 || maxOrder < 0) {
        return 0;
    }
    if (static_cast<std::size_t>(maxOrder) >= pairs) {
        maxOrder = static_cast<int>(pairs) - 1;
    }
    if (maxOrder > kHighestOrder) {
        return 0;
    }
    FitCoefficients current{};
    FitCoefficients previous{};
    double previousSum = 0;
    int result = -1;
    if (!search) {
        result = leastSquaresFit(x, y, maxOrder, current) ? maxOrder : 0;
    }
    for (int k = 1; result < 0 && k <= maxOrder; ++k) {
        if (!leastSquaresFit(x, y, k, current)) {
            break;
        }
        const auto fit = fitDiagnostics(x, y, k, current);
        if (fit.errorSum == 0.0) {
            result = k;
        } else if (k > 1) {
            const double gain = std::abs(1 - fit.errorSum / previousSum);
            if (gain <= 0.3) {
                result = k - 1;
                current = previous;
            } else if (std::max(std::abs(fit.scaledLeast), std::abs(fit.scaledGreatest)) <= 1.0) {
                result = k;
            }
        }
        if (result < 0) {
            // Ten only: the eleventh stays that of the fit in hand.
            std::copy_n(current.begin(), kHighestOrder, previous.begin());
            previousSum = fit.errorSum;
        }
    }
    if (c != nullptr) {
        std::copy_n(current.begin(), maxOrder + 1, c->begin());
    }
    return result < 0 ? maxOrder : result;
}

double evaluatePolynomial(double x, std::span<const double> c, int order) {
    double sum = 0;
    for (int i = 0; i <= order; ++i) {
        const double power = i == 0 ? 1.0 : i == 1 ? x : std::pow(x, static_cast<double>(i));
        sum += c[static_cast<std::size_t>(i)] * power;
    }
    return sum;
}

double populationDeviation(std::span<const double> values) {
    const auto n = static_cast<double>(values.size());
    if (values.size() <= 1) {
        return 0;
    }
    double sum = 0;
    double squares = 0;
    for (const double value : values) {
        sum += value;
        squares += value * value;
    }
    const double variance = (squares - sum * sum / n) / n;
    return variance >= 0 ? std::sqrt(variance) : 0;
}

double correlationCoefficient(std::span<const double> y, std::span<const double> errors) {
    double sum = 0;
    for (const double error : errors) {
        sum += std::pow(error, 2.0);
    }
    const double deviation = populationDeviation(y);
    const double spread = static_cast<double>(y.size()) * deviation * deviation;
    if (spread == 0.0) {
        return 0;
    }
    const double share = 1 - sum / spread;
    return share < 0 ? 0 : std::sqrt(share);
}

double rootMeanSquare(std::span<const double> y, std::span<const double> computed) {
    if (y.empty()) {
        return 0;
    }
    double sum = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double difference = computed[i] - y[i];
        if (difference != 0.0) {
            sum += std::pow(difference, 2.0);
        }
    }
    return std::sqrt(sum / static_cast<double>(y.size()));
}

bool isOutOfTolerance(double y, double computed, double fullScale) {
    return fullScale != 0.0 && std::abs((computed - y) * 100 / fullScale) >= 0.5;
}

}  // namespace kavu
