#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "groups/AGroup.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

constexpr char kWholePam[] =
    "A-2\\DLN:PAM 1;\r\nA-2\\A1:NR;\r\nA-2\\A2:I;\r\nA-2\\A3:OTH;\r\nA-2\\A4:0FFFH;\r\n"
    "A-2\\A5:900;\r\nA-2\\A\\N:45;\r\nA-2\\RC1:1;\r\nA-2\\RC2:23;\r\nA-2\\RC3:45;\r\n"
    "A-2\\SF\\N:1;\r\nA-2\\SF1-1:7;\r\nA-2\\SF2-1:STD;\r\nA-2\\SF3-1:X;\r\n"
    "A-2\\COM:a\x14\x15"
    "b;\r\n";

class AGroupTest : public ::testing::Test {
  protected:
    TestContext t{2009};
    PamGroup group;
};

TEST_F(AGroupTest, AWholeGroupIsWrittenAsItWasRead) {
    t.write(groupFile('A', 2), kWholePam);
    ASSERT_TRUE(loadPam(t.context, &t.ui, {"PAM 1", 2}, group));
    EXPECT_EQ(group.record.value("A4"), "0FFFH");
    EXPECT_TRUE(storePam(t.context, &t.ui, group));
    EXPECT_EQ(t.read(groupFile('A', 2)), kWholePam);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(AGroupTest, TheTableIsInTheOrderOfTheFile) {
    const std::string whole(kWholePam);
    std::size_t at = 0;
    for (const auto& field : pamFields()) {
        const auto found = whole.find("\\" + fieldCode(field.code, {1, 0}) + ":");
        ASSERT_NE(found, std::string::npos) << field.code;
        EXPECT_GE(found, at) << field.code;
        at = found;
    }
}

TEST_F(AGroupTest, StreamsAreThoseWithAGroupAndThenPamLinksWithout) {
    t.write(groupFile('A', 2), "A-2\\DLN:PAM 1;\r\n");
    t.write(groupFile('M', 1),
            "M-1\\ID:S;\r\nM-1\\BSG1:PAM;\r\nM-1\\BB\\DLN:PAM 1;\r\nM-1\\SI\\N:3;\r\n"
            "M-1\\SI2-1:PAM;\r\nM-1\\SI\\DLN-1:PAM 2;\r\nM-1\\SI2-2:PCM;\r\n"
            "M-1\\SI\\DLN-2:PCM 1;\r\nM-1\\SI2-3:PAM;\r\n");
    const auto streams = pamStreams(t.context, &t.ui);
    ASSERT_EQ(streams.size(), 2U);
    EXPECT_EQ(streams[0].link, "PAM 1");
    EXPECT_EQ(streams[0].index, 2);
    EXPECT_EQ(streams[1].link, "PAM 2");
    EXPECT_EQ(streams[1].index, 0);
}

TEST_F(AGroupTest, ALinkInAnotherCaseIsAnotherStream) {
    t.write(groupFile('A', 2), "A-2\\DLN:PAM 1;\r\n");
    t.write(groupFile('M', 1), "M-1\\ID:S;\r\nM-1\\BSG1:PAM;\r\nM-1\\BB\\DLN:pam 1;\r\n");
    const auto streams = pamStreams(t.context, &t.ui);
    ASSERT_EQ(streams.size(), 2U);
    EXPECT_EQ(streams[0].link, "PAM 1");
    EXPECT_EQ(streams[1].link, "pam 1");
    EXPECT_EQ(streams[1].index, 0);
}

TEST_F(AGroupTest, AStreamWithoutAGroupGetsTheFirstFreeIndex) {
    t.write(groupFile('A', 1), "A-1\\DLN:Other;\r\n");
    ASSERT_TRUE(loadPam(t.context, &t.ui, {"New", 0}, group));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, -145);
    group.record.set("A1", "RZ");
    EXPECT_TRUE(storePam(t.context, &t.ui, group));
    EXPECT_EQ(t.read(groupFile('A', 2)), "A-2\\DLN:New;\r\nA-2\\A1:RZ;\r\n");
}

TEST_F(AGroupTest, NoFreeIndexIsTold) {
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        t.write(groupFile('A', index), formatPrintf("A-%d\\DLN:L%d;\r\n", index, index));
    }
    EXPECT_FALSE(loadPam(t.context, &t.ui, {"New", 0}, group));
    EXPECT_EQ(t.ui.boxes.back().id, 303);
}

TEST_F(AGroupTest, WhatTheTableDoesNotKnowIsKept) {
    t.write(groupFile('A', 1), "A-1\\DLN:L;\r\nA-1\\MN1-1:X;\r\nA-1\\A1:RZ;\r\nA-1\\MN1-1:Y;\r\n");
    t.ui.otherwise = Button::Yes;
    ASSERT_TRUE(loadPam(t.context, &t.ui, {"L", 1}, group));
    EXPECT_TRUE(storePam(t.context, &t.ui, group));
    EXPECT_EQ(t.read(groupFile('A', 1)),
              "A-1\\DLN:L;\r\nA-1\\A1:RZ;\r\nA-1\\MN1-1:X;\r\nA-1\\MN1-1:Y;\r\n");
}

TEST_F(AGroupTest, AFileThatCanNotBeReadOrWrittenIsReported) {
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('A', 1))).ok());
    EXPECT_FALSE(loadPam(t.context, &t.ui, {"L", 1}, group));
    EXPECT_EQ(t.ui.boxes.size(), 1U);
    group.index = 1;
    EXPECT_FALSE(storePam(t.context, &t.ui, group));
    EXPECT_EQ(t.ui.boxes.size(), 2U);
}

}  // namespace
}  // namespace kavu
