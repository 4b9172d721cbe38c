#include "conversion/ConversionFixture.h"
#include "core/document/Transaction.h"
#include "mdb/operations/EuDataString.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

struct EuStage : ConversionFixture {
    explicit EuStage(const std::string& commands = "C-1\\DCN:A;") { EXPECT_TRUE(load(commands)); }

    bool apply(const std::string& type, const std::string& text) {
        return inTransaction(context, &ui, "Test",
                             [&] { return applyEuDataString(conversions, &ui, "A", type, text); });
    }
    [[nodiscard]] std::string text(const std::string& type) {
        return euDataString(conversions, "A", type);
    }
};

TEST(EuDataString, CoefficientsSetTheOffsetTheTermsAndTheOrder) {
    EuStage stage;
    EXPECT_TRUE(stage.apply("COE", "0.0 1.0"));
    EXPECT_EQ(stage.value("A", "CO"), "0.0");
    EXPECT_EQ(stage.value("A", "CO-1"), "1.0");
    EXPECT_EQ(stage.value("A", "CO\\N"), "1");
    EXPECT_EQ(stage.value("A", "DCT"), "COE");
    EXPECT_EQ(stage.text("COE"), "0.0 1.0");
}

TEST(EuDataString, AnEmptyCoefficientUpToTheOrderIsZero) {
    EuStage stage("C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:3;C-1\\CO:1;C-1\\CO-2:5;");
    EXPECT_EQ(stage.text("COE"), "1 0 5 0");
    EuStage none("C-1\\DCN:A;C-1\\DCT:COE;");
    EXPECT_EQ(none.text("COE"), "");
}

TEST(EuDataString, PairsEndAtTheFirstWithAnEmptyHalf) {
    EuStage stage(
        "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:3;C-1\\PS3-1:0;C-1\\PS4-1:10;C-1\\PS3-2:1;C-1\\PS3-3:2;"
        "C-1\\PS4-3:30;");
    EXPECT_EQ(stage.text("PRS"), "0 10");
}

TEST(EuDataString, PairsGoBothWays) {
    EuStage stage;
    EXPECT_TRUE(stage.apply("PRS", "0 10 1 20 2"));
    EXPECT_EQ(stage.value("A", "PS\\N"), "2");
    EXPECT_EQ(stage.value("A", "PS4-2"), "20");
    EXPECT_EQ(stage.text("PRS"), "0 10 1 20");
}

TEST(EuDataString, EventsHaveTheirBlanksAsUnderscores) {
    EuStage stage;
    EXPECT_TRUE(stage.apply("DIS", R"(0="Off line" 1="On")"));
    EXPECT_EQ(stage.value("A", "DICP-1"), "Off line");
    EXPECT_EQ(stage.value("A", "DIC\\N"), "2");
    EXPECT_EQ(stage.text("DIS"), "0 Off_line 1 On");
}

TEST(EuDataString, WhatGivesNoTermStoresNothingAndLeavesTheType) {
    for (const auto& [type, text] : std::vector<std::pair<std::string, std::string>>{
             {"PRS", "1"}, {"COE", " "}, {"DIS", ""}, {"OTH", ""}, {"VOI", "x"}, {"", "x"}}) {
        EuStage stage("C-1\\DCN:A;C-1\\DCT:NON;");
        EXPECT_FALSE(stage.apply(type, text)) << type;
        EXPECT_EQ(stage.value("A", "DCT"), "NON") << type;
    }
}

TEST(EuDataString, TextsStandAsTheyAreAndAnUnknownTypeHasNone) {
    EuStage stage;
    EXPECT_TRUE(stage.apply("OTH", "see\r\nnote"));
    EXPECT_EQ(stage.value("A", "OTH"), "see\x14\x15note");
    EXPECT_EQ(stage.text("OTH"), "see\x14\x15note");
    EXPECT_TRUE(stage.apply("DER", "B+C"));
    EXPECT_EQ(stage.value("A", "DPA"), "B+C");
    EXPECT_EQ(stage.text("XYZ"), "");
    EXPECT_EQ(euDataString(stage.conversions, "nobody", "COE"), "");
}

TEST(EuDataString, SpecialProcessingIsTheComment) {
    EuStage stage;
    EXPECT_TRUE(stage.apply("SP", "one\x14\x15two"));
    EXPECT_EQ(stage.conversions.readEuComment("A", false), "one\r\ntwo");
    EXPECT_EQ(stage.text("SP"), "one\x14\x15two");
    EXPECT_EQ(stage.value("A", "DCT"), "SP");
}

TEST(EuDataString, OldTermsBeyondTheNewCountStayUnwritten) {
    EuStage stage("C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:2;C-1\\CO:1;C-1\\CO-1:2;C-1\\CO-2:3;");
    EXPECT_TRUE(stage.apply("COE", "7 8"));
    EXPECT_EQ(stage.text("COE"), "7 8");
    EXPECT_EQ(stage.save().find("CO-2"), std::string::npos);
}

TEST(EuDataString, OldPairsAndEventsBeyondTheNewCountStayUnwritten) {
    EuStage pairs(
        "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS3-1:0;C-1\\PS4-1:1;C-1\\PS3-2:2;C-1\\PS4-2:"
        "3;");
    EXPECT_TRUE(pairs.apply("PRS", "5 6"));
    EXPECT_EQ(pairs.text("PRS"), "5 6");
    EXPECT_EQ(pairs.save().find("PS3-2"), std::string::npos);
    EuStage events(
        "C-1\\DCN:A;C-1\\DCT:DIS;C-1\\DIC\\N:2;C-1\\DICC-1:0;C-1\\DICP-1:Off;C-1\\DICC-2:1;"
        "C-1\\DICP-2:On;");
    EXPECT_TRUE(events.apply("DIS", "3 Idle"));
    EXPECT_EQ(events.save().find("DICC-2"), std::string::npos);
}

}  // namespace
}  // namespace kavu::test
