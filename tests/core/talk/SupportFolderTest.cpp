#include "support/TestContext.h"

#include <cstdlib>
#include <unistd.h>

namespace kavu::test {
namespace {

// --- where it lies -------------------------------------------------------------------------

struct PathRow {
    const char* what;
    std::map<std::string, std::string> variables;
    const char* programFolder;
    const char* name;
    const char* base;
    bool mayUseNetwork;
    const char* path;
};

TEST(SupportFolderPathTest, FollowsTheVariablesOfTheSystem) {
    const PathRow rows[] = {
        {"the data of this user",
         {{"AppData", "/data"}, {"XDG_CONFIG_HOME", "/xdg"}, {"HOME", "/home/u"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "u",
         true,
         "/data/KavuSupportFiles/"},
        {"the configuration of this user",
         {{"XDG_CONFIG_HOME", "/xdg"}, {"HOME", "/home/u"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "u",
         true,
         "/xdg/KavuSupportFiles/"},
        {"the home of this user",
         {{"HOME", "/home/u"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "u",
         true,
         "/home/u/.config/KavuSupportFiles/"},
        {"nothing known of this user",
         {},
         "/opt/kavu",
         "KavuSupportFiles",
         "u",
         true,
         "/opt/kavu/KavuSupportFiles/"},
        {"all users",
         {{"ALLUSERSPROFILE", "/all"}, {"AppData", "/data"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "",
         true,
         "/all/Application Data/KavuSupportFiles/"},
        {"all users by the first folder of a list",
         {{"XDG_CONFIG_DIRS", "/one:/two"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "",
         true,
         "/one/KavuSupportFiles/"},
        {"an empty place in the list",
         {{"XDG_CONFIG_DIRS", ":/two"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "",
         true,
         "/two/KavuSupportFiles/"},
        {"a list of nothing",
         {{"XDG_CONFIG_DIRS", ":"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "",
         true,
         "/etc/xdg/KavuSupportFiles/"},
        {"all users by default",
         {{"AppData", "/data"}},
         "/opt/kavu",
         "KavuSupportFiles",
         "",
         true,
         "/etc/xdg/KavuSupportFiles/"},
        {"a program on the network",
         {{"AppData", "/data"}},
         "//server/kavu",
         "KavuSupportFiles",
         "u",
         true,
         "//server/kavu/KavuSupportFiles/u/"},
        {"a program on the network, all users",
         {},
         "//server/kavu",
         "KavuSupportFiles",
         "",
         true,
         "//server/kavu/KavuSupportFiles/"},
        {"the network may not be used",
         {{"AppData", "/data"}},
         "//server/kavu",
         "KavuSupportFiles",
         "u",
         false,
         "/data/KavuSupportFiles/"},
        {"a name with a parent",
         {{"AppData", "/data"}},
         "//server/kavu",
         "/local/Files",
         "u",
         true,
         "/data/Files/"},
        {"a name with a parent on the network",
         {{"AppData", "/data"}},
         "/opt/kavu",
         "//server/share/Files",
         "u",
         true,
         "//server/share/Files/u/"},
        {"a name with a parent, nothing known",
         {},
         "/opt/kavu",
         "/local/Files",
         "u",
         true,
         "/local/Files/"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(supportFolderPath(testEnvironment(row.variables, row.programFolder), row.name,
                                    row.base, row.mayUseNetwork),
                  row.path)
            << row.what;
    }
}

TEST(EnvironmentTest, OfProcessTellsVariablesProgramAndUser) {
    const auto environment = Environment::ofProcess();
    ASSERT_EQ(::setenv("KAVU_TEST_VARIABLE", "value", 1), 0);
    EXPECT_EQ(environment.variable("KAVU_TEST_VARIABLE"), "value");
    ASSERT_EQ(::setenv("KAVU_TEST_VARIABLE", "", 1), 0);
    EXPECT_EQ(environment.variable("KAVU_TEST_VARIABLE"), std::nullopt) << "empty counts as unset";
    ASSERT_EQ(::unsetenv("KAVU_TEST_VARIABLE"), 0);
    EXPECT_EQ(environment.variable("KAVU_TEST_VARIABLE"), std::nullopt);
    EXPECT_TRUE(folderExists(environment.programFolder));
    EXPECT_FALSE(environment.programFolder.ends_with('/'));
    EXPECT_FALSE(environment.userName.empty());
    EXPECT_TRUE(folderExists(environment.accountHome));
}

TEST(SupportFolderPathTest, WithoutTheVariablesItIsInTheHomeOfTheAccount) {
    auto environment = testEnvironment({});
    environment.accountHome = "/home/account";
    EXPECT_EQ(supportFolderPath(environment, "KavuSupportFiles", "u", true),
              "/home/account/.config/KavuSupportFiles/");
    EXPECT_EQ(supportFolderPath(environment, "KavuSupportFiles", "", true),
              "/etc/xdg/KavuSupportFiles/");
}

// --- making it -----------------------------------------------------------------------------

class SupportFolderTest : public ::testing::Test {
  protected:
    TempFolder folder;
};

TEST_F(SupportFolderTest, IsMadeWithAllItsParents) {
    EXPECT_TRUE(prepareSupportFolder(folder / "a/b/KavuSupportFiles/").ok());
    std::vector<FolderEntry> entries;
    ASSERT_TRUE(listFolder(folder / "a/b/KavuSupportFiles", entries).ok());
    EXPECT_TRUE(entries.empty()) << "the proof goes";
    EXPECT_TRUE(prepareSupportFolder(folder / "a/b/KavuSupportFiles/").ok());
}

TEST_F(SupportFolderTest, NamesThePartOfThePathThatIsInTheWay) {
    writeFile(folder / "file", "x");
    const auto status = prepareSupportFolder(folder / "file/KavuSupportFiles/");
    EXPECT_EQ(status.code(), ENOTDIR);
    EXPECT_EQ(status.path(), folder / "file");
}

TEST_F(SupportFolderTest, AnExistingFolderHasToProveThatItTakesFiles) {
    // Nobody, not even root, makes files there.
    EXPECT_FALSE(prepareSupportFolder("/proc/self/fdinfo/").ok());
}

TEST_F(SupportFolderTest, TheProofDisturbsNoOtherFile) {
    const auto path = folder / "KavuSupportFiles";
    ASSERT_TRUE(makeFolders(path + "/kavu.tmp").ok());
    const auto leftover = path + "/kavu-" + std::to_string(::getpid()) + "-0.tmp";
    writeFile(leftover, "of a run that died");
    EXPECT_TRUE(prepareSupportFolder(path + "/").ok());
    EXPECT_EQ(readFile(leftover), "of a run that died");
    EXPECT_TRUE(folderExists(path + "/kavu.tmp"));
}

}  // namespace
}  // namespace kavu::test
