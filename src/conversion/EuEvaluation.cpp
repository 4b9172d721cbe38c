#include "conversion/EuEvaluation.h"

#include "conversion/ConversionFields.h"
#include "conversion/CurveFit.h"
#include "conversion/EuNumbers.h"
#include "conversion/PairSet.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <cmath>

namespace kavu {

namespace {

std::vector<double> fitOfPairs(const ProfileFile& file, std::string_view name, std::string& why) {
    if (!startsWithIgnoreCase(file.value(name, c::kPs1.code, c::kPs1.missing), "Y")) {
        why = "Its pair sets do not define a polynomial curve fit.";
        return {};
    }
    const auto pairs = PairSet::read(file, name);
    auto x = pairs.telemetryValues();
    const auto y = pairs.engineeringValues();
    const int order = file.integer(name, c::kPs2.code, leadingInt(c::kPs2.missing));
    FitCoefficients c{};
    if (!leastSquaresFit(x, y, order, c)) {
        why = formatPrintf(
            "ERROR: Unable to generate coefficients from pair sets definition for '%s'.\n\tNumber "
            "of pair sets: %d Order of fit: %d",
            name, pairs.size(), order);
        return {};
    }
    return {c.begin(), c.begin() + order + 1};
}

/// The coefficients under "CO" or "NPC".
std::vector<double> listed(const ProfileFile& file, std::string_view name, const std::string& code,
                           std::string& why) {
    const int terms = file.integer(name, code + "\\N", 0);
    if (terms < 1) {
        why = "It has no coefficients.";
        return {};
    }
    std::vector<double> c{leadingDouble(file.value(name, code, ""))};
    for (int i = 1; i <= std::min(terms, kMostTerms); ++i) {
        c.push_back(leadingDouble(file.value(name, code + "-" + std::to_string(i), "")));
    }
    return c;
}

}  // namespace

std::optional<EuEvaluation> EuEvaluation::make(const ProfileFile& file, std::string_view name,
                                               int edition, std::string& why) {
    EuEvaluation found;
    found.type_ = file.value(name, kTypeCode, kNoType);
    why.clear();
    if (startsWithIgnoreCase(found.type_, "PRS")) {
        found.c_ = fitOfPairs(file, name, why);
    } else if (startsWithIgnoreCase(found.type_, "COE")) {
        found.c_ = listed(file, name, "CO", why);
    } else if (startsWithIgnoreCase(found.type_, "NPC") && edition >= c::kFirstNegativePowers) {
        found.c_ = listed(file, name, "NPC", why);
        found.negative_ = true;
    } else if (startsWithIgnoreCase(found.type_, kNoType)) {
        why = "It has no conversion (type \"NON\").";
    } else {
        why = formatPrintf("A conversion of type \"%s\" is no polynomial.", found.type_);
    }
    return why.empty() ? std::optional(std::move(found)) : std::nullopt;
}

std::optional<double> EuEvaluation::value(double telemetry) const {
    double result = 0;
    if (negative_) {
        for (std::size_t i = 0; i < c_.size(); ++i) {
            result += i == 0 ? c_[i] : c_[i] * std::pow(telemetry, -static_cast<double>(i));
        }
    } else {
        result = evaluatePolynomial(telemetry, c_, static_cast<int>(c_.size()) - 1);
    }
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

}  // namespace kavu
