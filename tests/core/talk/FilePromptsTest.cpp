#include "core/talk/FilePrompts.h"
#include "core/text/Clock.h"
#include "support/TestContext.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(FilePromptsTest, GivesAFileAnotherExtension) {
    for (const auto& [path, expected] :
         {std::pair{"/a.b/flight.tma", "/a.b/flight.xml"},
          std::pair{"/a.b/flight", "/a.b/flight.xml"},
          std::pair{"/a/flight.v1.tma", "/a/flight.v1.xml"},
          std::pair{"/a/.hidden", "/a/.hidden.xml"}, std::pair{"flight.", "flight.xml"}}) {
        EXPECT_EQ(withOtherExtension(path, ".xml"), expected) << path;
    }
}

TEST(WithExtension, IsAddedToANameThatHasNone) {
    TempFolder folder;
    for (const auto& [name, expected] :
         {std::pair("flight", "flight.tma"), std::pair("flight.", "flight.tma"),
          std::pair(".flight", ".flight.tma"), std::pair("flight.txt", "flight.txt"),
          std::pair("flight.v2", "flight.v2")}) {
        EXPECT_EQ(withExtension(folder / name, ".tma"), folder / expected) << name;
        EXPECT_EQ(withExtension(folder / name, ""), folder / name);
    }
    EXPECT_EQ(withExtension("/a.b/flight", ".tma"), "/a.b/flight.tma")
        << "a dot of a folder is none";
    EXPECT_EQ(withExtension("", ".tma"), "");
}

TEST(WithExtension, TheNameOfAFileThatIsThereStays) {
    TempFolder folder;
    writeFile(folder / "recording", "x");
    EXPECT_EQ(withExtension(folder / "recording", ".tma"), folder / "recording");
}

TEST(OverwriteQuestion, NamesTheFileWithItsSizeAndItsDate) {
    TempFolder folder;
    const auto path = folder / "there.tma";
    writeFile(path, "12345");
    struct timespec times[2] = {{1600000000, 0}, {1600000000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    const auto changed = localTime(1600000000);
    EXPECT_EQ(overwriteQuestion(path, ""),
              "The file: '" + path + "' already exists\n\n5 bytes, last changed on " +
                  dateText(changed) + " at " + timeText(changed) + "\n\nOverwrite?");
}

TEST(OverwriteQuestion, IsNotAskedAboutAFileOfOnesOwnOrOneThatIsNotThere) {
    TempFolder folder;
    const auto own = folder / "own.tma";
    writeFile(own, "x");
    ASSERT_EQ(::symlink(own.c_str(), (folder / "link.tma").c_str()), 0);
    EXPECT_FALSE(overwriteQuestion(own, own));
    EXPECT_FALSE(overwriteQuestion(folder / "./own.tma", own));
    EXPECT_FALSE(overwriteQuestion(folder / "link.tma", own));
    EXPECT_FALSE(overwriteQuestion(folder / "none.tma", own));
    EXPECT_TRUE(overwriteQuestion(own, ""));
    EXPECT_TRUE(overwriteQuestion(own, folder / "none.tma"));
    ASSERT_EQ(::symlink("nowhere", (folder / "dangling.tma").c_str()), 0);
    EXPECT_TRUE(overwriteQuestion(folder / "dangling.tma", own)) << "the link would go";
}

}  // namespace
}  // namespace kavu::test
