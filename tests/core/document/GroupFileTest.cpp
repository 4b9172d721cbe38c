#include "core/document/GroupFile.h"
#include "support/TestContext.h"

#include <cerrno>

#include <gtest/gtest.h>

namespace kavu {
namespace {

class GroupFileTest : public testing::Test {
  protected:
    static constexpr std::string_view kName = "[kavu]DSRCE.T03";

    IoStatus open() { return GroupFile::open(t.files, t.reader, 'T', 3, group); }
    void openWith(std::string_view text) {
        t.write(kName, text);
        ASSERT_TRUE(open().ok());
    }
    std::string stored() {
        EXPECT_TRUE(group.store(t.files).ok());
        return t.read(kName);
    }
    /// For a code that is there: nobody asks for its place.
    static std::size_t nowhere() {
        ADD_FAILURE() << "the place was asked for";
        return 0;
    }
    test::TestContext t;
    GroupFile group;
};

TEST_F(GroupFileTest, OpensAGroupInAWorkingFileOfAnotherName) {
    t.write("1553.TMP", "B-7\\DLN:Bus;\r\n");
    ASSERT_TRUE(GroupFile::openNamed(t.files, t.reader, "1553.TMP", group).ok());
    EXPECT_EQ(group.value("B-7\\DLN"), "Bus");
    group.erase("B-7\\DLN");
    ASSERT_TRUE(group.store(t.files).ok());
    EXPECT_EQ(t.read("1553.TMP"), "");
    EXPECT_FALSE(GroupFile::openNamed(t.files, t.reader, "NONE.TMP", group).ok());
    EXPECT_FALSE(group.exists());
}

TEST_F(GroupFileTest, StoresWhatNobodyChangedAsItWas) {
    const std::string_view text =
        "COMMENT: x;\r\nT-3\\ID:a;\r\nno colon;\r\nT-3\\ID:b;\r\nT-3\\E:;\r\n";
    openWith(text);
    EXPECT_TRUE(group.exists());
    EXPECT_FALSE(group.changed());
    EXPECT_EQ(stored(), text);
}

TEST_F(GroupFileTest, AGroupThatIsNotThereIsMade) {
    EXPECT_EQ(open().code(), ENOENT);
    EXPECT_FALSE(group.exists());
    group.set("T-3\\ID", "new", [] { return std::size_t{0}; });
    EXPECT_EQ(stored(), "T-3\\ID:new;\r\n");
}

TEST_F(GroupFileTest, ACodeGetsOneValueWhereItsFirstCommandIs) {
    openWith("T-3\\A:1;\r\nt-3\\id :;\r\nT-3\\B:2;\r\nT-3\\ID:b;\r\n");
    EXPECT_EQ(group.value("T-3\\Id"), "b") << "the first that is not empty";
    group.set("T-3\\ID", "new", nowhere);
    EXPECT_TRUE(group.changed());
    EXPECT_EQ(group.value("T-3\\ID"), "new");
    EXPECT_EQ(stored(), "T-3\\A:1;\r\nT-3\\ID:new;\r\nT-3\\B:2;\r\n");
}

TEST_F(GroupFileTest, ANewCodeComesAtItsPlace) {
    for (const std::size_t place : {0U, 1U, 2U}) {
        openWith("T-3\\A:1;\r\nT-3\\B:2;\r\n");
        group.set("T-3\\N", "n", [place] { return place; });
        std::vector<std::string> lines = {"T-3\\A:1;\r\n", "T-3\\B:2;\r\n"};
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), "T-3\\N:n;\r\n");
        EXPECT_EQ(stored(), lines[0] + lines[1] + lines[2]);
    }
}

TEST_F(GroupFileTest, ErasesAllCommandsOfACodeAndKeepsTheMarksOfTheOthers) {
    openWith("T-3\\A:1;\r\nT-3\\B:2;\r\nt-3\\a:3;\r\nT-3\\C:4;\r\n");
    group.commands().markRead(3);
    group.erase("T-3\\A");
    EXPECT_FALSE(group.commands().isRead(0));
    EXPECT_TRUE(group.commands().isRead(1));
    EXPECT_EQ(group.value("T-3\\A"), "");
    EXPECT_EQ(stored(), "T-3\\B:2;\r\nT-3\\C:4;\r\n");
}

}  // namespace
}  // namespace kavu
