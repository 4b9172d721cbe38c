#include "groups/GroupRewrite.h"
#include "support/TestContext.h"

#include <array>
#include <chrono>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr auto kRules = std::to_array<ValueRule>({
    {'M', "SIF2-", Indices::One, "OTH", "OT"},
    {'M', "X", Indices::None, "A", "B"},
    {'M', "X", Indices::None, "B", "C"},
    {'M', "GONE"},
    {'P', "PAIR-", Indices::Two},
});

struct RewriteCase {
    const char* name;
    char letter;
    const char* before;
    const char* after;  ///< null: untouched
};

class ApplyRules : public testing::TestWithParam<RewriteCase> {};

TEST_P(ApplyRules, ChangesWhatMatches) {
    const auto& c = GetParam();
    test::TestContext t;
    t.write("file", c.before);
    IoStatus status;
    EXPECT_EQ(applyRules(t.reader, t.files, "file", c.letter, 1, kRules, status),
              c.after != nullptr);
    EXPECT_TRUE(status.ok());
    EXPECT_EQ(t.read("file"), c.after == nullptr ? c.before : c.after);
    EXPECT_FALSE(t.has("file.new"));
}

INSTANTIATE_TEST_SUITE_P(
    Files, ApplyRules,
    testing::Values(
        RewriteCase{"ALongerValueThatBeginsWithTheOldOne", 'M', "M-1\\SIF2-1:OTHER;\r\n",
                    "M-1\\SIF2-1:OT;\r\n"},
        RewriteCase{"ThePatternInsideAnotherValue", 'M', "M-1\\COM:see M-1\\X:A;\r\n",
                    "M-1\\COM:B;\r\n"},
        RewriteCase{"NotWhatIsBehindAGap", 'M', "M-1\\SIF2-1:LP;\r\nM-1\\SIF2-3:OTH;\r\n", nullptr},
        RewriteCase{"AnIndexWithoutAValueIsAGap", 'M', "M-1\\SIF2-1:;\r\nM-1\\SIF2-2:OTH;\r\n",
                    nullptr},
        RewriteCase{"NotAnIndexWithALeadingZero", 'M', "M-1\\SIF2-01:OTH;\r\n", nullptr},
        RewriteCase{"NotAnIndexBeyondAllNumbers", 'M', "M-1\\SIF2-99999999999999999999:OTH;\r\n",
                    nullptr},
        RewriteCase{"NotAnotherGroup", 'M', "M-2\\X:A;\r\n", nullptr},
        RewriteCase{"NotAnotherCase", 'M', "m-1\\x:A;\r\n", nullptr},
        RewriteCase{"RulesOneAfterTheOther", 'M', "M-1\\X:A;\r\nM-1\\X:B;\r\n",
                    "M-1\\X:C;\r\nM-1\\X:C;\r\n"},
        RewriteCase{"DeletesAnyValue", 'M', "M-1\\GONE:1;\r\nM-1\\KEPT:2;\r\n", "M-1\\KEPT:2;\r\n"},
        RewriteCase{
            "PairsUpToTheirGaps", 'P',
            "P-1\\PAIR-1-1:a;\r\nP-1\\PAIR-1-2:b;\r\nP-1\\PAIR-1-4:c;\r\nP-1\\PAIR-3-1:d;\r\n",
            "P-1\\PAIR-1-4:c;\r\nP-1\\PAIR-3-1:d;\r\n"}),
    [](const auto& row) { return row.param.name; });

TEST(ApplyRulesTest, AMissingFileIsNoFailure) {
    test::TestContext t;
    IoStatus status;
    EXPECT_FALSE(applyRules(t.reader, t.files, "none", 'M', 1, kRules, status));
    EXPECT_TRUE(status.ok());
}

TEST(ApplyRulesTest, AHundredThousandIndicesAreOnePass) {
    test::TestContext t;
    std::string before;
    std::string after;
    for (int k = 1; k <= 100000; ++k) {
        before += formatPrintf("M-1\\SIF2-%d:OTH;\r\n", k);
        after += formatPrintf("M-1\\SIF2-%d:OT;\r\n", k);
    }
    t.write("file", before);
    IoStatus status;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(applyRules(t.reader, t.files, "file", 'M', 1, kRules, status));
    // A pass for each index would take minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(t.read("file"), after);
}

TEST(RewriteFileTest, AFailureLeavesTheOldFileWhole) {
    test::TestContext t;
    t.write("file", "M-1\\X:A;\r\n");
    ASSERT_TRUE(makeFolder(t.store.pathOf("file.new")).ok());
    IoStatus status;
    EXPECT_FALSE(applyRules(t.reader, t.files, "file", 'M', 1, kRules, status));
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(status.path(), t.store.pathOf("file.new"));
    EXPECT_EQ(t.read("file"), "M-1\\X:A;\r\n");
}

}  // namespace
}  // namespace kavu
