#include "groups/MeasurementNames.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

struct MeasurementNamesTest : testing::Test {
    MeasurementNamesTest() {
        t.write("[kavu]MULT.M01", "M-1\\BB\\DLN:One;\r\n");
        t.write("[kavu]MULT.M02", "M-2\\BB\\DLN:Two;\r\n");
        t.write("[kavu]PCMMEAS.D01",
                "D-1\\DLN:One;\r\nD-1\\MN\\N-1:2;\r\nD-1\\MN-1-1:A;\r\nD-1\\MN-1-2:B;\r\n");
    }
    void second(const std::string& names) {
        t.write("[kavu]PCMMEAS.D02", "D-2\\DLN:Two;\r\n" + names);
    }

    test::TestContext t;
};

TEST_F(MeasurementNamesTest, GathersTheNamesOfAllLinks) {
    second("D-2\\MN-1-1:C;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_THAT(names.names(), ElementsAre("A", "B", "C"));
    EXPECT_THAT(t.ui.boxes, IsEmpty());
    EXPECT_TRUE(names.checking());
    EXPECT_THAT(t.ui.statusTexts, Contains("Gathering measurement names"));
    EXPECT_THAT(t.ui.statusTexts, Contains("Reading measurement names (Datalink 'Two')"));
}

TEST_F(MeasurementNamesTest, ANameInTwoStreamsIsReportedOnceAndEndsTheChecking) {
    second("D-2\\MN-1-1:A;\r\nD-2\\MN-1-2:B;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 456);
    EXPECT_EQ(t.ui.boxes[0].titleId, title::kError);
    EXPECT_FALSE(names.checking());
    EXPECT_EQ(t.settings.text("CheckForDupMeasurements"), "") << "the setting stays";
    EXPECT_TRUE(names.measurementInOtherStream("A", 1));
    EXPECT_TRUE(names.measurementInOtherStream("A", 2));
    EXPECT_EQ(names.otherStream("A", 1), 2);
    EXPECT_EQ(names.otherStream("A", 3), 1);
    EXPECT_EQ(names.spelled("A"), "A");
    EXPECT_EQ(names.spelled("a"), "A") << "as a stream spells it";
    EXPECT_EQ(names.spelled("unknown"), std::nullopt);
}

TEST_F(MeasurementNamesTest, ANameTwiceInOneStreamIsNoDuplicate) {
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:One;\r\nD-1\\MN-1-1:A;\r\nD-1\\MN-2-1:A;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_THAT(t.ui.boxes, IsEmpty());
    EXPECT_FALSE(names.measurementInOtherStream("A", 1));
    EXPECT_TRUE(names.measurementInOtherStream("A", 2));
    EXPECT_FALSE(names.measurementInOtherStream("unknown", 2));
}

TEST_F(MeasurementNamesTest, ALinkThatIsNamedTwiceIsReadOnce) {
    t.write("[kavu]MULT.M02", "M-2\\BB\\DLN:One;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_THAT(t.ui.boxes, IsEmpty());
}

TEST_F(MeasurementNamesTest, WhatWasForgottenOneByOneCanBeRecalled) {
    second("D-2\\MN-1-1:A;\r\nD-2\\MN-1-2:C;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    names.forget("C");
    names.forget("unknown");
    names.forget("A");
    names.forget("B");
    EXPECT_EQ(names.forgottenCount(), 3U);
    EXPECT_THAT(names.forgotten(1), ElementsAre("A", "B"));
    names.recall(1);
    EXPECT_THAT(names.names(), ElementsAre("A", "B"));
    EXPECT_TRUE(names.measurementInOtherStream("A", 1)) << "with all its streams";
    EXPECT_EQ(names.forgottenCount(), 1U);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_EQ(names.forgottenCount(), 0U) << "gathered anew, nothing is left to recall";
    names.forget("A");
    names.forget(std::nullopt);
    names.recall(0);
    EXPECT_THAT(names.names(), IsEmpty());
}

TEST_F(MeasurementNamesTest, NamesThatDifferInCaseAreTwoNames) {
    second("D-2\\MN-1-1:a;\r\n");
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_THAT(t.ui.boxes, IsEmpty());
    EXPECT_THAT(names.names(), ElementsAre("A", "B", "a"));
}

TEST_F(MeasurementNamesTest, WithCheckingOffNothingIsReported) {
    t.settings.write("CheckForDupMeasurements", "0");
    second("D-2\\MN-1-1:A;\r\n");
    MeasurementNames names(t.context);
    EXPECT_FALSE(names.checking());
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    EXPECT_THAT(t.ui.boxes, IsEmpty());
    EXPECT_THAT(names.names(), ElementsAre("A", "B"));
}

TEST_F(MeasurementNamesTest, ACancelledGatheringKnowsNoName) {
    MeasurementNames names(t.context);
    EXPECT_TRUE(names.checkForDuplicates(&t.ui));
    const int polls = t.ui.polls;
    ASSERT_GT(polls, 1);
    for (int poll = 1; poll <= polls; ++poll) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = poll;
        EXPECT_FALSE(names.checkForDuplicates(&t.ui)) << poll;
        EXPECT_THAT(names.names(), IsEmpty());
    }
}

TEST_F(MeasurementNamesTest, ACancelInTheMiddleOfAFileStopsThere) {
    std::string many;
    for (int i = 1; i <= 1000; ++i) {
        many += formatPrintf("D-2\\MN-1-%d:N%d;\r\n", i, i);
    }
    second(many);
    t.ui.cancelAtPoll = 3;
    std::vector<std::string> names;
    EXPECT_FALSE(MeasurementNames(t.context).streamMeasurementNames(&t.ui, "Two", names));
    EXPECT_LT(names.size(), 1000U);
}

TEST_F(MeasurementNamesTest, CheckingIsSavedOnlyIfAsked) {
    MeasurementNames names(t.context);
    names.setChecking(false, false);
    EXPECT_FALSE(names.checking());
    EXPECT_EQ(t.settings.text("CheckForDupMeasurements"), "");
    names.setChecking(false, true);
    EXPECT_EQ(t.settings.text("CheckForDupMeasurements"), "0");
    names.setChecking(true, true);
    EXPECT_EQ(t.settings.text("CheckForDupMeasurements"), "1");
}

TEST_F(MeasurementNamesTest, ForgetsOneNameOrAll) {
    MeasurementNames names(t.context);
    names.checkForDuplicates(&t.ui);
    names.forget("A");
    names.forget("unknown");
    EXPECT_THAT(names.names(), ElementsAre("B"));
    names.forget(std::nullopt);
    EXPECT_THAT(names.names(), IsEmpty());
}

TEST_F(MeasurementNamesTest, AStreamHasTheNamesOfItsMeasurementElseBusElseMessageGroup) {
    t.write("[kavu]PCM1553.B01", "B-1\\DLN:One;\r\nB-1\\MN-1-1:not taken;\r\n");
    t.write("[kavu]PCM1553.B02", "B-2\\DLN:Bus;\r\nB-2\\MN-1-1:OnBus;\r\nB-2\\MN-1-2:;\r\n");
    t.write("[kavu]PCMS.S01", "S-1\\DLN:Message;\r\nS-1\\MN-1-1:InMessage;\r\n");
    const MeasurementNames names(t.context);
    struct Case {
        const char* link;
        std::vector<std::string> expected;
    };
    for (const auto& c : {Case{"One", {"A", "B"}}, Case{"Bus", {"OnBus"}},
                          Case{"Message", {"InMessage"}}, Case{"Nobody", {}}}) {
        std::vector<std::string> found;
        EXPECT_TRUE(names.streamMeasurementNames(&t.ui, c.link, found));
        EXPECT_EQ(found, c.expected) << c.link;
    }
    t.document.version = 2004;
    std::vector<std::string> found;
    EXPECT_TRUE(names.streamMeasurementNames(nullptr, "Message", found));
    EXPECT_THAT(found, IsEmpty());
}

TEST_F(MeasurementNamesTest, AFileThatCanNotBeReadIsReportedAndEndsTheGathering) {
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]PCMMEAS.D09")).ok());
    MeasurementNames names(t.context);
    EXPECT_FALSE(names.checkForDuplicates(&t.ui));
    EXPECT_TRUE(t.ui.hasText("[kavu]PCMMEAS.D09"));
    EXPECT_THAT(names.names(), IsEmpty());
}

}  // namespace
}  // namespace kavu
