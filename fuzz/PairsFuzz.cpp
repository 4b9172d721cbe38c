// Files of pairs, pasted columns and imports: what is accepted is finite and within the
// limits, what is refused changes nothing, and every fit ends.
#include "Check.h"
#include "conversion/PairFile.h"
#include "conversion/PairSetFit.h"
#include "conversion/PairText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace {

using namespace kavu;

void checkFile(std::string_view text) {
    const auto file = parsePairFile(text);
    KAVU_CHECK(file.x.size() == file.y.size());
    KAVU_CHECK(file.error.empty() || file.x.empty());
    const auto columns = splitPairFile(text);
    KAVU_CHECK(columns.error == file.error);
    KAVU_CHECK(columns.count == file.x.size());
    for (const auto* const box : {&columns.telemetry, &columns.engineering}) {
        KAVU_CHECK(static_cast<std::size_t>(std::count(box->begin(), box->end(), '\n')) ==
                   columns.count);
    }
    for (std::size_t i = 0; i < file.x.size(); ++i) {
        KAVU_CHECK(std::isfinite(file.x[i]) && std::isfinite(file.y[i]));
    }
    if (file.x.size() > PairSet::kMostPairs) {
        return;
    }
    FitInput input;
    input.x = file.x;
    input.y = file.y;
    for (const int order : {-1, 1, 4, 10, 11}) {
        input.order = order;
        const auto result = refitPairs(input, {});
        KAVU_CHECK(result.fitted == fitFailureText(result).empty());
        KAVU_CHECK(!result.fitted || result.computed.size() == file.x.size());
        for (const double c : result.fittedCoefficients()) {
            KAVU_CHECK(std::isfinite(c));
        }
    }
}

void checkImport(std::string_view text) {
    const auto half = text.substr(0, text.size() / 2);
    const auto columns = tabColumns(text).value_or(
        std::pair(std::string(half), std::string(text.substr(half.size()))));
    const auto& [first, second] = columns;
    PairSet set(true);
    (void)set.add({"1", "2"});
    const auto error = set.import(first, second);
    KAVU_CHECK(set.size() <= PairSet::kMostPairs);
    KAVU_CHECK(!error || (set.size() == 1 && set.pairs()[0].telemetry == "1"));
    const auto x = set.telemetryValues();
    for (std::size_t i = 1; i < x.size(); ++i) {
        KAVU_CHECK(x[i - 1] <= x[i]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkFile(text);
    checkImport(text);
    return 0;
}
