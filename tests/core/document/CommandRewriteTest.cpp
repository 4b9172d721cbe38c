#include "core/document/GroupRewrite.h"
#include "support/TestContext.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::TestContext;

class CommandRewriteTest : public testing::Test {
  protected:
    std::string after(std::string_view before, std::string_view code,
                      std::optional<std::string_view> oldValue,
                      std::optional<std::string_view> newValue) {
        t.write(kName, before);
        matched = rewriteCommands(t.files, kName, code, oldValue, newValue, &status);
        EXPECT_TRUE(status.ok()) << status.reason();
        return t.read(kName);
    }
    /// The names in the folder: nothing but the file itself may be left.
    std::vector<std::string> names() {
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(t.store.folder(), entries).ok());
        std::vector<std::string> result;
        for (const auto& entry : entries) {
            result.push_back(entry.name);
        }
        return result;
    }

    static constexpr std::string_view kName = "group";
    TestContext t;
    IoStatus status;
    bool matched = false;
};

TEST_F(CommandRewriteTest, ReplacesTheValueOfAllMatchingCommands) {
    EXPECT_EQ(after("G\\FN:a;\r\nG\\PN:p;\r\nG\\FN:b;\r\n", "G\\FN", std::nullopt, "new"),
              "G\\FN:new;\r\nG\\PN:p;\r\nG\\FN:new;\r\n");
    EXPECT_TRUE(matched);
}

TEST_F(CommandRewriteTest, DeletesAllMatchingCommandsWithoutANewValue) {
    EXPECT_EQ(after("G\\FN:a;\r\nG\\PN:p;\r\nG\\FN:b;\r\n", "G\\FN", std::nullopt, std::nullopt),
              "G\\PN:p;\r\n");
    EXPECT_TRUE(matched);
}

TEST_F(CommandRewriteTest, EmptyNewValueIsAValue) {
    EXPECT_EQ(after("G\\FN:a;", "G\\FN", std::nullopt, ""), "G\\FN:;\r\n");
}

TEST_F(CommandRewriteTest, WithAnOldValueOnlyCommandsThatHoldItMatch) {
    EXPECT_EQ(after("G\\FN:a;\r\nG\\FN:bc;\r\n", "G\\FN", "b", "new"),
              "G\\FN:a;\r\nG\\FN:new;\r\n");
}

TEST_F(CommandRewriteTest, TestIsOnAnyPartOfTheTextSoACommentInAValueGoesToo) {
    EXPECT_EQ(after("COMMENT: x;\r\nG\\COM:see COMMENT: 3;\r\nG\\PN:p;\r\n", "COMMENT",
                    std::nullopt, std::nullopt),
              "G\\PN:p;\r\n");
}

TEST_F(CommandRewriteTest, TestIsCaseSensitive) {
    EXPECT_EQ(after("g\\fn:a;\r\n", "G\\FN", std::nullopt, "x"), "g\\fn:a;\r\n");
    EXPECT_FALSE(matched);
}

TEST_F(CommandRewriteTest, NewValueStandsBehindTheFirstColonAlsoWhenTheMatchIsFurtherBehind) {
    EXPECT_EQ(after("G\\COM:a G\\FN:b;\r\n", "G\\FN", std::nullopt, "x"), "G\\COM:x;\r\n");
}

TEST_F(CommandRewriteTest, EveryCommandEndsOnItsOwnLineWithoutOuterWhiteSpace) {
    EXPECT_EQ(after("  A:1; B:2 ;\n\n\tC:3\nx;\n", "Z", std::nullopt, std::nullopt),
              "A:1;\r\nB:2 ;\r\nC:3\nx;\r\n");
    EXPECT_FALSE(matched);
}

TEST_F(CommandRewriteTest, PartialCommandAtTheEndIsKept) {
    EXPECT_EQ(after("A:1;\r\nB:2  \r\n", "A", std::nullopt, "x"), "A:x;\r\nB:2\r\n");
}

TEST_F(CommandRewriteTest, PartialCommandThatMatchesGetsItsSemicolon) {
    EXPECT_EQ(after("A:1", "A", std::nullopt, "x"), "A:x;\r\n");
}

TEST_F(CommandRewriteTest, EmptyFileStaysEmpty) {
    EXPECT_EQ(after("", "A", std::nullopt, "x"), "");
    EXPECT_FALSE(matched);
}

TEST_F(CommandRewriteTest, CommandsAcrossTheWindowsOfTheReaderStayWhole) {
    std::string before;
    std::string expected;
    for (int i = 0; i < 60000; ++i) {
        const auto number = std::to_string(i);
        before += "D-1\\MN-" + number + ":name" + number + ";\r\n";
        expected += "D-1\\MN-" + number + (i % 1000 == 7 ? ":hit" : ":name" + number) + ";\r\n";
        if (i % 1000 == 7) {
            before.insert(before.size() - 3, " MARK:");
        }
    }
    EXPECT_EQ(after(before, "MARK", std::nullopt, "hit"), expected);
}

TEST_F(CommandRewriteTest, SeveralChangesAreEachAPassOfTheirOwn) {
    t.write(kName, "A:1;\r\nB:2;\r\nC:3;\r\n");
    EXPECT_TRUE(rewriteCommands(
        t.files, kName, {{"A:1", "9"}, {"A:9", "10"}, {"B:", std::nullopt}, {"B:2", "gone"}}));
    EXPECT_EQ(t.read(kName), "A:10;\r\nC:3;\r\n");
}

TEST_F(CommandRewriteTest, MissingPathOrCodeGivesFalse) {
    t.write(kName, "A:1;");
    EXPECT_FALSE(rewriteCommands(t.files, "", "A", std::nullopt, "x"));
    EXPECT_FALSE(rewriteCommands(t.files, kName, "", std::nullopt, "x"));
    EXPECT_EQ(t.read(kName), "A:1;");
}

TEST_F(CommandRewriteTest, MissingFileGivesFalseAndMakesNone) {
    EXPECT_FALSE(rewriteCommands(t.files, "none", "A", std::nullopt, "x", &status));
    EXPECT_FALSE(status.ok());
    EXPECT_THAT(names(), testing::IsEmpty());
}

TEST_F(CommandRewriteTest, FailureLeavesTheOldFileWholeAndNothingBesideIt) {
    t.write(kName, "A:1;\r\nB:2;\r\n");
    // A folder stands where the new file is to be written.
    ASSERT_EQ(::mkdir((t.store.pathOf(kName) + ".new").c_str(), 0700), 0);
    EXPECT_FALSE(rewriteCommands(t.files, kName, "A", std::nullopt, "x", &status));
    EXPECT_FALSE(status.ok());
    EXPECT_FALSE(copyWithGroupIndex(t.store.pathOf(kName), t.store.pathOf("group.new"), 3).ok());
    EXPECT_EQ(t.read(kName), "A:1;\r\nB:2;\r\n");
}

TEST_F(CommandRewriteTest, NothingIsLeftBesideTheFile) {
    after("A:1;", "A", std::nullopt, "x");
    after("A:1;", "B", std::nullopt, "x");
    EXPECT_THAT(names(), testing::ElementsAre("group"));
}

TEST_F(CommandRewriteTest, GroupIndexIsChangedAndCommandsOfOtherGroupsGo) {
    t.write(kName,
            "P-1\\MF1:8;\r\nP-12\\ISF\\N:a:b;\r\nCOMMENT:c;\r\nG\\PN:x;\r\nno code;\r\n"
            "P-2\\X:;\r\nP-\\Y:1;\r\nP-3\\COM:a\x14\x15z;\r\nP-4\\LOST:1");
    ASSERT_TRUE(copyWithGroupIndex(t.store.pathOf(kName), t.store.pathOf("copy"), 7).ok());
    EXPECT_EQ(t.read("copy"),
              "P-7\\MF1:8;\r\nP-7\\ISF\\N:a:b;\r\nCOMMENT:c;\r\nno code;\r\nP-7\\X:;\r\n"
              "P-7\\COM:a\x14\x15z;\r\n");
}

TEST_F(CommandRewriteTest, GroupIndexOfAFileThatIsNotThereFails) {
    EXPECT_FALSE(copyWithGroupIndex(t.store.pathOf("none"), t.store.pathOf("copy"), 7).ok());
    EXPECT_THAT(names(), testing::IsEmpty());
}

}  // namespace
}  // namespace kavu
