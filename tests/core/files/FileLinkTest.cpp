#include "core/files/FileIo.h"
#include "core/files/FileLink.h"
#include "support/TestContext.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(FileLink, ASecondNameHasTheBytesOfTheFirst) {
    const test::TempFolder folder;
    test::writeFile(folder / "one", "bytes");
    ASSERT_TRUE(linkOrCopyFile(folder / "one", folder / "two").ok());
    EXPECT_TRUE(std::filesystem::equivalent(folder / "one", folder / "two"));
}

TEST(FileLink, AFileInThePlaceOfTheNameIsReplacedWhole) {
    const test::TempFolder folder;
    test::writeFile(folder / "one", "bytes");
    test::writeFile(folder / "two", "other bytes");
    ASSERT_TRUE(linkOrCopyFile(folder / "one", folder / "two").ok());
    EXPECT_EQ(test::readFile(folder / "two"), "bytes");
    EXPECT_FALSE(fileExists(folder / "two.part"));
}

TEST(FileLink, AMissingFileLeavesTheOtherAlone) {
    const test::TempFolder folder;
    test::writeFile(folder / "two", "kept");
    EXPECT_FALSE(linkOrCopyFile(folder / "one", folder / "two").ok());
    EXPECT_EQ(test::readFile(folder / "two"), "kept");
    EXPECT_FALSE(fileExists(folder / "two.part"));
}

}  // namespace
}  // namespace kavu
