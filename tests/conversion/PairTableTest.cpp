#include "conversion/EuNumbers.h"
#include "conversion/PairSetFit.h"
#include "conversion/PairTable.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

PairSet pairsOf(std::initializer_list<ValuePair> pairs) {
    PairSet set;
    for (const auto& pair : pairs) {
        (void)set.add(pair);
    }
    return set;
}

FitResult fitOf(const PairSet& pairs) {
    FitInput input;
    input.x = pairs.telemetryValues();
    input.y = pairs.engineeringValues();
    return refitPairs(input, {});
}

TEST(PairTable, HasThePairsTheCorrectedValuesAndTheErrors) {
    const auto pairs = pairsOf({{"0", "0"}, {"1", "3"}, {"2", "0"}, {"3", "3"}});
    EXPECT_EQ(
        pairTable(pairs, fitOf(pairs), ','),
        "Pair #,Telemetry Value,EU Value,Corrected EU Value,Error,Out Of Tolerance\n" + [&] {
            const auto fit = fitOf(pairs);
            std::string rows;
            for (std::size_t i = 0; i < 4; ++i) {
                const auto& pair = pairs.pairs()[i];
                rows += std::to_string(i + 1) + "," + pair.telemetry + "," + pair.engineering +
                        "," + exactText(fit.computed[i]) + "," + exactText(fit.errors[i]) + ",*\n";
            }
            return rows;
        }());
}

TEST(PairTable, WithoutAFitHasThePairsAlone) {
    const auto pairs = pairsOf({{"1", "2.50"}});
    EXPECT_EQ(pairTable(pairs, fitOf(pairs), '\t'),
              "Pair #\tTelemetry Value\tEU Value\n1\t1\t2.50\n");
    EXPECT_EQ(pairTable(PairSet(), {}, ','), "Pair #,Telemetry Value,EU Value\n");
}

TEST(PairTable, AValueWithTheSeparatorOrAQuoteIsInQuotes) {
    const auto pairs = pairsOf({{"1,5", "2\""}});
    EXPECT_EQ(pairTable(pairs, {}, ','), "Pair #,Telemetry Value,EU Value\n1,\"1,5\",\"2\"\"\"\n");
    EXPECT_EQ(pairTable(pairs, {}, '\t'), "Pair #\tTelemetry Value\tEU Value\n1\t1,5\t\"2\"\"\"\n");
}

}  // namespace
}  // namespace kavu
