#include "conversion/SampleRate.h"
#include "support/TestContext.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::string trimmed(std::string rate, int precision, bool check = true) {
    trimSampleRate(rate, {check, precision});
    return rate;
}

TEST(TrimSampleRate, CutsToThePrecisionAndDropsZeros) {
    const struct {
        const char* what;
        const char* rate;
        int precision;
        const char* expected;
    } cases[] = {
        {"cut and zero", "12.500000", 2, "12.5"},
        {"all zeros and the point", "100.000000", 2, "100"},
        {"no point", "7", 2, "7"},
        {"no point, zero at the end", "70", 2, "70"},
        {"cut without rounding", "1.999", 2, "1.99"},
        {"fewer digits than the precision", "1.5", 5, "1.5"},
        {"precision 0", "12.5", 0, "12"},
        {"precision 0 leaves the zeros in front of the point", "100.5", 0, "100"},
        {"only a point", ".", 2, ""},
        {"a point at the end", "5.", 2, "5"},
        {"empty", "", 2, ""},
        {"only digits are counted", "1.25 Hz", 2, "1.25 Hz"},
        {"a cut takes what stands behind the digits", "1.2500 Hz", 2, "1.25"},
        {"a number with an exponent stays", "1.5000E+10", 2, "1.5000E+10"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(trimmed(c.rate, c.precision), c.expected) << c.what;
    }
}

TEST(TrimSampleRate, WithoutTheCheckNoTextChanges) {
    EXPECT_EQ(trimmed("12.500000", 2, false), "12.500000");
}

TEST(SampleRateOptions, ComeFromTheSettings) {
    test::TestContext context;
    EXPECT_FALSE(sampleRateOptions(context.settings).check);
    EXPECT_EQ(sampleRateOptions(context.settings).precision, 2);
    context.settings.writeInteger("ChkSR", 1);
    context.settings.writeInteger("SRPrec", 4);
    EXPECT_TRUE(sampleRateOptions(context.settings).check);
    EXPECT_EQ(sampleRateOptions(context.settings).precision, 4);
    context.settings.writeInteger("SRPrec", -3);
    EXPECT_EQ(sampleRateOptions(context.settings).precision, 0);
}

}  // namespace
}  // namespace kavu
