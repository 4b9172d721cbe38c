// Fits the pair sets from standard input and prints every number of the result as the bits
// of its double, for check_fit.py.
//
// A line in: order, highest order of the search, count, then x and y of each pair as bits.
// A line out: best fit with its diagnostics at each order, whether the order could be fitted,
// the coefficients, the x values afterwards, computed values, correlation, RMS.
#include "conversion/CurveFit.h"

#include <bit>
#include <cstdint>
#include <iostream>
#include <vector>

namespace {

using namespace kavu;

double readNumber() {
    std::uint64_t bits = 0;
    std::cin >> bits;
    return std::bit_cast<double>(bits);
}

void print(double value) {
    std::cout << ' ' << std::bit_cast<std::uint64_t>(value);
}

void fitOne(int order, int maxOrder, std::vector<double> x, const std::vector<double>& y) {
    FitCoefficients c{};
    std::cout << bestFitOrder(x, y, true, maxOrder);
    const bool fitted = leastSquaresFit(x, y, order, c);
    std::cout << (fitted ? " 1" : " 0");
    for (const double value : x) {
        print(value);
    }
    if (fitted) {
        std::vector<double> computed;
        std::vector<double> errors;
        for (int i = 0; i <= order; ++i) {
            print(c[static_cast<std::size_t>(i)]);
        }
        for (std::size_t i = 0; i < x.size(); ++i) {
            computed.push_back(evaluatePolynomial(x[i], c, order));
            errors.push_back(computed.back() - y[i]);
            print(computed.back());
        }
        print(correlationCoefficient(y, errors));
        print(rootMeanSquare(y, computed));
        if (order >= 1) {
            const auto fit = fitDiagnostics(x, y, order, c);
            print(fit.errorSum);
            print(fit.scaledLeast);
            print(fit.scaledGreatest);
        }
    }
    std::cout << '\n';
}

}  // namespace

int main() {
    std::ios::sync_with_stdio(false);
    int order = 0;
    int maxOrder = 0;
    std::size_t count = 0;
    while (std::cin >> order >> maxOrder >> count && count <= 1000000) {
        std::vector<double> x;
        std::vector<double> y;
        for (std::size_t i = 0; i < count; ++i) {
            x.push_back(readNumber());
            y.push_back(readNumber());
        }
        fitOne(order, maxOrder, std::move(x), y);
    }
    return 0;
}
