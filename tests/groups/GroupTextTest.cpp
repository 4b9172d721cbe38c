#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "groups/GroupText.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

class GroupTextTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string path(char letter, int index = 0) const {
        return t.store.pathOf(groupFile(letter, index));
    }
    void put(char letter, int index, const std::string& bytes) {
        ASSERT_TRUE(writeWholeFile(path(letter, index), bytes).ok());
    }
    GroupText read(char letter, const std::string& source = {}) {
        GroupText group;
        EXPECT_TRUE(readGroupText(t.context, &t.ui, letter, source, group));
        return group;
    }

    TestContext t;
};

TEST_F(GroupTextTest, CommandsAreShownWithTheirLineBreaks) {
    put('H', 0, "H\\A:1;\r\nH\\COM:one\x14\x15two;\r\nCOMMENT: mine;\r\n");
    const auto group = read('H');
    EXPECT_TRUE(group.exists);
    EXPECT_EQ(group.text, "H\\A:1;\r\nH\\COM:one\r\ntwo;\r\nCOMMENT: mine;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GroupTextTest, ATextThatIsStoredAsItWasReadIsTheSameFile) {
    const std::string bytes = "H\\A:1;\r\nH\\COM:one\x14\x15two;\r\nCOMMENT: mine;\r\n";
    put('H', 0, bytes);
    const auto group = read('H');
    EXPECT_TRUE(storeGroupText(t.context, &t.ui, group, group.text));
    EXPECT_EQ(test::readFile(path('H')), bytes);
    EXPECT_TRUE(t.document.changed);
}

TEST_F(GroupTextTest, AMissingFileIsToldAndStartsEmpty) {
    const auto hardware = read('H');
    EXPECT_FALSE(hardware.exists);
    EXPECT_EQ(hardware.text, "");
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 85);
    EXPECT_EQ(t.ui.boxes[0].text, "Unable To Edit TMATS H-Section (File not found).");
    const auto vendor = read('V', "Src");
    EXPECT_EQ(vendor.index, 1);
    EXPECT_EQ(t.ui.boxes.back().text, "Unable To Edit TMATS V-Section (File not found).");
}

TEST_F(GroupTextTest, AnEmptyTextRemovesTheFile) {
    put('H', 0, "H\\A:1;\r\n");
    const auto group = read('H');
    EXPECT_TRUE(storeGroupText(t.context, &t.ui, group, " \r\n"));
    EXPECT_FALSE(fileExists(path('H')));
    EXPECT_TRUE(storeGroupText(t.context, &t.ui, group, ""));
    EXPECT_FALSE(fileExists(path('H')));
}

TEST_F(GroupTextTest, AVendorGroupIsFoundByItsDataSource) {
    put('V', 1, "V-1\\ID:Other;\r\n");
    put('V', 3, "V-3\\ID:Src;\r\nV-3\\VN:ACM;\r\n");
    EXPECT_EQ(read('V', "Src").index, 3);
    EXPECT_EQ(read('V', "New").index, 2);
}

TEST_F(GroupTextTest, ANewVendorGroupGetsTheNameOfItsDataSource) {
    const auto group = read('V', "Src");
    EXPECT_TRUE(storeGroupText(t.context, &t.ui, group, "V-1\\VN:ACM;"));
    EXPECT_EQ(test::readFile(path('V', 1)), "V-1\\ID:Src;\r\nV-1\\VN:ACM;\r\n");
    EXPECT_TRUE(storeGroupText(t.context, &t.ui, group, "v-1\\id:Src;V-1\\VN:B;"));
    EXPECT_EQ(test::readFile(path('V', 1)), "v-1\\id:Src;\r\nV-1\\VN:B;\r\n");
}

TEST_F(GroupTextTest, NoNumberLeftForAVendorGroupIsToldAndNothingIsRead) {
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        put('V', index, formatPrintf("V-%d\\ID:Source %d;\r\n", index, index));
    }
    GroupText group;
    EXPECT_FALSE(readGroupText(t.context, &t.ui, 'V', "New", group));
    EXPECT_EQ(t.ui.boxes.back().text, "Unable To Edit TMATS V-Section");
    EXPECT_TRUE(readGroupText(t.context, &t.ui, 'V', "Source 99", group));
}

TEST_F(GroupTextTest, WhatIsBehindTheLastSemicolonIsUnfinished) {
    EXPECT_EQ(unfinishedCommand("H\\A:1;\r\n"), "");
    EXPECT_EQ(unfinishedCommand("H\\A:1;\n H\\B:2 \n"), "H\\B:2");
    EXPECT_EQ(unfinishedCommand("x"), "x");
    EXPECT_EQ(unfinishedCommand(""), "");
}

TEST_F(GroupTextTest, ATornEndOfTheFileIsShown) {
    put('H', 0, "H\\A:1;\r\nH\\B:2");
    EXPECT_EQ(read('H').text, "H\\A:1;\r\nH\\B:2");
}

TEST_F(GroupTextTest, CommandsOfOtherGroupsAreFound) {
    const GroupText vendor{.letter = 'V', .index = 2};
    EXPECT_EQ(foreignCommands(vendor, "V-2\\ID:a;v-2\\VN:b;V-1\\X:1;H\\Y:2;comment: c;G\\PN:p;"),
              (std::vector<std::string>{"V-1\\X:1;", "H\\Y:2;", "G\\PN:p;"}));
    EXPECT_TRUE(foreignCommands(GroupText{}, "H\\A:1;h\\B:2;").empty());
}

TEST_F(GroupTextTest, TheVendorGroupNeedsItsEdition) {
    t.document.version = 2002;
    EXPECT_FALSE(mayEditGroupText(t.context, &t.ui, 'V'));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 73);
    EXPECT_NE(t.ui.boxes[0].text.find("This is a 106-02 TMATS file."), std::string::npos);
    EXPECT_NE(t.ui.boxes[0].text.find("version 106-04"), std::string::npos);
    EXPECT_TRUE(mayEditGroupText(t.context, &t.ui, 'H'));
    t.document.version = 2004;
    EXPECT_TRUE(mayEditGroupText(t.context, &t.ui, 'V'));
    EXPECT_EQ(t.ui.boxes.size(), 1U);
}

TEST_F(GroupTextTest, AFileThatCanNotBeWrittenIsReportedAndNothingChanges) {
    ASSERT_TRUE(makeFolder(path('H')).ok());
    EXPECT_FALSE(storeGroupText(t.context, &t.ui, GroupText{}, "H\\A:1;"));
    EXPECT_FALSE(storeGroupText(t.context, nullptr, GroupText{}, "H\\A:1;"));
    EXPECT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_FALSE(t.document.changed);
}

}  // namespace
}  // namespace kavu
