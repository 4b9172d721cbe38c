#include "core/files/FilePatch.h"
#include "support/TestContext.h"

#include <cerrno>
#include <csignal>
#include <sys/resource.h>

namespace kavu::test {
namespace {

TEST(FilePatchTest, WritesBytesWhereTheyAre) {
    const TempFolder folder;
    const auto file = folder / "f";
    writeFile(file, "abcdef");
    EXPECT_TRUE(overwriteBytes(file, 2, "XY").ok());
    EXPECT_EQ(readFile(file), "abXYef");
    EXPECT_TRUE(overwriteBytes(file, 5, "12").ok());
    EXPECT_EQ(readFile(file), "abXYe12");
    EXPECT_TRUE(overwriteBytes(file, 0, "").ok());
    EXPECT_EQ(readFile(file), "abXYe12");
}

TEST(FilePatchTest, MakesNoFile) {
    const TempFolder folder;
    EXPECT_EQ(overwriteBytes(folder / "none", 0, "x").code(), ENOENT);
    EXPECT_FALSE(fileExists(folder / "none"));
}

TEST(FilePatchTest, AFailurePutsBackWhatWasThere) {
    const TempFolder folder;
    const auto file = folder / "f";
    writeFile(file, "abcdef");
    rlimit former{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    auto limit = former;
    limit.rlim_cur = 8;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto status = overwriteBytes(file, 4, "123456");
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &former), 0);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_EQ(status.code(), EFBIG);
    EXPECT_EQ(readFile(file), "abcdef");
}

}  // namespace
}  // namespace kavu::test
