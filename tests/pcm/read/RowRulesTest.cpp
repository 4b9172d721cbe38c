#include "pcm/read/RowRules.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;

std::vector<int> depthsOf(const RowRules& rules, std::string_view stem) {
    std::vector<int> depths;
    for (const auto& use : rules.usesOf(stem)) {
        depths.push_back(use.depth);
    }
    return depths;
}

TEST(RowRulesTest, AFieldIsInItsListsFromTheOutermostOne) {
    EXPECT_THAT(depthsOf(pcmRowRules(), "IDC1"), ElementsAre(0));
    EXPECT_THAT(depthsOf(pcmRowRules(), "SF1"), ElementsAre(0, 1));
    EXPECT_THAT(depthsOf(pcmRowRules(), "sf4"), ElementsAre(0, 1, 2)) << "in any case";
    EXPECT_THAT(depthsOf(pcmRowRules(), "AEF\\DLN"), ElementsAre(0));
    EXPECT_THAT(depthsOf(pcmRowRules(), "AEF8"), ElementsAre(0, 1, 2));
    EXPECT_THAT(depthsOf(pcmRowRules(), "ADM3"), ElementsAre(0, 1));
    EXPECT_THAT(depthsOf(pcmRowRules(), "MFW1"), ElementsAre(0));
    EXPECT_THAT(depthsOf(pcmRowRules(), "MLC2"), ElementsAre(0));
    EXPECT_THAT(depthsOf(pcmRowRules(), "MFF\\MFN"), ElementsAre(0));
    EXPECT_THAT(depthsOf(measurementRowRules(), "WP"), ElementsAre(2, 3));
    EXPECT_THAT(depthsOf(measurementRowRules(), "MFSW"), ElementsAre(2));
    EXPECT_THAT(depthsOf(measurementRowRules(), "TD2"), ElementsAre(2));
}

TEST(RowRulesTest, AFieldOfNoListHasNone) {
    for (const auto* const stem : {"D1", "COM", "VND", "", "ISF\\N"}) {
        EXPECT_THAT(depthsOf(pcmRowRules(), stem), ElementsAre()) << stem;
    }
    for (const auto* const stem : {"MN", "LT", "MLN", "VND"}) {
        EXPECT_THAT(depthsOf(measurementRowRules(), stem), ElementsAre()) << stem;
    }
}

TEST(RowRulesTest, TheNumberedListsAreThoseOfTheModel) {
    EXPECT_EQ(pcmRowRules().usesOf("IDC1").front(), (RowUse{kCounterRows, 0}));
    EXPECT_EQ(pcmRowRules().usesOf("SF1").back(), (RowUse{kSubframeRows, 1}));
    EXPECT_EQ(pcmRowRules().usesOf("AEF1").front(), (RowUse{kEmbeddedRows, 0}));
    EXPECT_EQ(pcmRowRules().usesOf("ADM1").front(), (RowUse{kMergeRows, 0}));
}

TEST(RowRulesTest, KeysTellListsAndRowsApart) {
    const RowUse use{kSubframeRows, 1};
    EXPECT_EQ(RowRules::listKey(use, {1, 2}), RowRules::listKey(use, {1, 3}));
    EXPECT_NE(RowRules::rowKey(use, {1, 2}), RowRules::rowKey(use, {1, 3}));
    EXPECT_NE(RowRules::listKey(use, {1, 2}), RowRules::listKey(use, {2, 2}));
    EXPECT_NE(RowRules::rowKey({0, 1}, {1, 2}), RowRules::rowKey({1, 1}, {1, 2}));
}

}  // namespace
}  // namespace kavu
