#include "conversion/PairSetFit.h"

#include "conversion/CurveTrust.h"
#include "conversion/EuNumbers.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cmath>

namespace kavu {

namespace {

constexpr std::string_view kNoPoints = "Unable to draw graph. No data points defined";
static_assert(setting::kFitOrderLimit.most == kHighestOrder);

/// What the page offers.
void setOffers(FitResult& result, const FitInput& input) {
    const bool possible = result.pairs >= 2 && input.order < result.pairs;
    result.series = possible && input.series;
    result.seriesEnabled = possible;
    result.printingEnabled = possible;
    result.boxesEnabled = result.series;
}

void computeStatistics(FitResult& result) {
    const auto c = result.fittedCoefficients();
    for (std::size_t i = 0; i < result.x.size(); ++i) {
        result.computed.push_back(evaluatePolynomial(result.x[i], c, result.order));
        result.errors.push_back(result.computed.back() - result.y[i]);
    }
    result.correlation = correlationCoefficient(result.y, result.errors);
    result.rms = rootMeanSquare(result.y, result.computed);
}

void computeSeries(FitResult& result, const FitInput& input) {
    if (!result.series) {
        return;
    }
    const auto c = result.fittedCoefficients();
    result.zeroX = leadingDouble(input.zero);
    result.calX = leadingDouble(input.cal);
    result.zeroY = evaluatePolynomial(*result.zeroX, c, result.order);
    result.calY = evaluatePolynomial(*result.calX, c, result.order);
}

}  // namespace

FitOptions FitOptions::read(const ProfileSettings& settings) {
    FitOptions options;
    options.maxOrder = settings.get(setting::kFitOrderLimit);
    options.useBestFit = settings.get(setting::kUseBestFit);
    options.curveAllPairs = settings.get(setting::kCurveAllCounts);
    options.defaultBits = settings.get(setting::kCountBits);
    options.sorted = settings.get(setting::kSortPairs);
    options.precision = floatPrecision(settings);
    options.seriesEnabled = settings.get(setting::kShowSeries);
    return options;
}

bool writeCurveDefaultBits(const Messages& messages, ProfileSettings& settings,
                           UserInterface* parent, int bits) {
    if (bits < 1) {
        messages.show(parent, 405, title::kError, kErrorBox);
        return false;
    }
    settings.set(setting::kCountBits, bits);
    return true;
}

std::span<const double> FitResult::fittedCoefficients() const {
    return std::span(coefficients).first(fitted ? static_cast<std::size_t>(order) + 1 : 0);
}

PlotRange fullScaleOf(const RecordLimits& limits, std::optional<std::pair<double, double>> series,
                      std::span<const double> y) {
    PlotRange range{leadingDouble(limits.valueLow), leadingDouble(limits.valueHigh)};
    range.most = std::max(range.most, leadingDouble(limits.limitHigh));
    range.least = std::min(range.least, leadingDouble(limits.limitLow));
    if (series) {
        range.least = std::min(range.least, series->first);
        range.most = std::max(range.most, series->second);
    }
    for (const double value : y) {
        range.most = std::max(range.most, value);
        range.least = std::min(range.least, value);
    }
    return range;
}

FitResult refitPairs(const FitInput& input, const FitOptions& options) {
    FitResult result;
    result.x = input.x;
    result.y = input.y;
    result.pairs = static_cast<int>(std::min(input.x.size(), input.y.size()));
    result.order = input.order;
    setOffers(result, input);
    if (result.pairs == 0) {
        return result;
    }
    result.bestFit = bestFitOrder(result.x, result.y, true, options.maxOrder);
    if (options.useBestFit && result.bestFit >= 1) {
        result.order = result.bestFit;
        result.orderListEnabled = false;
    }
    result.fitted =
        leastSquaresFit(result.x, result.y, result.order, result.coefficients) &&
        allFinite(std::span(result.coefficients).first(static_cast<std::size_t>(result.order) + 1));
    if (result.fitted) {
        computeStatistics(result);
        computeSeries(result, input);
    }
    std::optional<std::pair<double, double>> series;
    if (result.zeroY && result.calY) {
        series = {*result.zeroY, *result.calY};
    }
    result.fullScale = fullScaleOf(input.limits, series, result.y);
    const double width = result.fullScale.most - result.fullScale.least;
    for (std::size_t i = 0; i < result.computed.size(); ++i) {
        result.marked.push_back(isOutOfTolerance(result.y[i], result.computed[i], width));
    }
    return result;
}

std::optional<CountRange> fitCountRange(const FitInput& input, const FitOptions& options) {
    // What the page has selected, or integers if it has nothing.
    const std::string_view format = input.binaryFormat;
    return countRange(input.bits != 0 ? input.bits : options.defaultBits,
                      format.empty() ? "INT" : format);
}

CurveTrust judgeResult(const FitResult& result, const FitInput& input, const FitOptions& options) {
    if (!result.fitted) {
        return {};
    }
    const bool seen = input.bits > 0 || options.curveAllPairs;
    return judgeFit(result.x, result.y, result.order, options.precision,
                    result.fullScale.most - result.fullScale.least,
                    seen ? fitCountRange(input, options) : std::nullopt);
}

// --- Texts -------------------------------------------------------------------------------

std::string bestFitText(int bestFit) {
    return bestFit > 0 ? formatPrintf("Best Fit: %d", bestFit) : "Best Fit: Unknown";
}

std::vector<std::string> coefficientLines(const FitResult& result, int precision) {
    std::vector<std::string> lines;
    for (const double c : result.fittedCoefficients()) {
        lines.push_back(formatPrintf("c(%d) = %s", lines.size(), exponentText(c, precision)));
    }
    return lines;
}

std::string rmsText(const FitResult& result, int precision) {
    constexpr double kRounding = 1e-12;
    double most = 0;
    for (const double value : result.y) {
        most = std::max(most, std::abs(value));
    }
    return !result.fitted                   ? std::string()
           : result.rms <= kRounding * most ? fixedText(result.rms, precision)
                                            : statisticText(result.rms, precision);
}

std::string correlationText(const FitResult& result, int precision) {
    return result.fitted ? statisticText(result.correlation, precision) : std::string();
}

std::string fitFailureText(const FitResult& result) {
    if (result.pairs == 0) {
        return std::string(kNoPoints);
    }
    if (result.fitted) {
        return {};
    }
    std::string text = "ERROR: Unable to calculate coefficients";
    if (result.pairs < 2) {
        text += "\nThere must be at least 2 pair sets defined";
    } else if (result.order >= result.pairs) {
        text += formatPrintf(
            "\nThere are only %d pair set points defined. 'Order Of Fit' cannot be any larger "
            "than %d",
            result.pairs, result.pairs - 1);
    }
    return text;
}

std::vector<FitRow> fitRows(const FitResult& result) {
    std::vector<FitRow> rows;
    for (std::size_t i = 0; i < result.x.size(); ++i) {
        FitRow row{std::to_string(i + 1), {}, {}};
        if (result.fitted) {
            row.computed = fixedText(result.computed[i]);
            row.error = fixedText(result.errors[i]) + (result.marked[i] ? "*" : "");
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace kavu
