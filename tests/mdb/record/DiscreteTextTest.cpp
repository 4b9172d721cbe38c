#include "mdb/record/DiscreteText.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Pairs = std::vector<DiscretePair>;

TEST(DiscreteText, ReadsTheThreeForms) {
    const Pairs pairs = {{"0", "Off line"}, {"1", "On"}};
    EXPECT_EQ(readDiscrete(R"(0="Off line" 1="On")"), pairs);
    EXPECT_EQ(readDiscrete("0=Off line;1=On"), pairs);
    EXPECT_EQ(readDiscrete("0=Off line; 1=On;"), pairs);
    EXPECT_EQ(readDiscrete("0 Off_line 1 On"), pairs);
}

TEST(DiscreteText, ABlankLeftOfTheSignIsTheThirdForm) {
    EXPECT_EQ(readDiscrete("0 A=B 1 C"), (Pairs{{"0", "A=B"}, {"1", "C"}}));
    EXPECT_EQ(readDiscrete("0=A=B"), (Pairs{{"0=A=B", ""}}));
}

TEST(DiscreteText, AValueWithoutItsEventHasAnEmptyOne) {
    EXPECT_EQ(readDiscrete("0 Off 1"), (Pairs{{"0", "Off"}, {"1", ""}}));
    EXPECT_TRUE(readDiscrete("").empty());
    EXPECT_TRUE(readDiscrete("   ").empty());
}

TEST(DiscreteText, WritesTheThirdFormSoThatItReadsBack) {
    const Pairs pairs = {{"0", "Off line"}, {"1", ""}, {"2", "On"}};
    EXPECT_EQ(writeDiscrete(pairs), "0 Off_line 1 _ 2 On");
    EXPECT_EQ(readDiscrete(writeDiscrete(pairs)), pairs);
}

TEST(DiscreteText, OnlyTheFirstFormIsThatOfTheEditPage) {
    EXPECT_TRUE(isQuotedDiscrete(""));
    EXPECT_TRUE(isQuotedDiscrete(R"(0="Value0" 1="Value1")"));
    for (const auto* const bad : {R"(0="Value0" 1=Value1)", R"(0="Value0"1="Value1")", R"(0="V)",
                                  "0 Off", "0=Off;1=On", R"(="V")", R"(0 ="V")"}) {
        EXPECT_FALSE(isQuotedDiscrete(bad)) << bad;
    }
    EXPECT_EQ(quotedDiscrete({{"0", "Off \"line\""}, {"1", "On"}}), R"(0="Off 'line'" 1="On")");
}

}  // namespace
}  // namespace kavu
