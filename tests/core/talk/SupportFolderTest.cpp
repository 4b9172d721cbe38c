#include "support/TestContext.h"

#include <cstdlib>
#include <functional>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

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
}

// --- making it -----------------------------------------------------------------------------

/// Mends what is wrong before it answers Retry.
class Mender : public RecordingInterface {
  public:
    explicit Mender(std::function<void()> mend) : mend_(std::move(mend)) {}
    Button message(const MessageBox& box) override {
        boxes.push_back(box);
        mend_();
        return Button::Retry;
    }

  private:
    std::function<void()> mend_;
};

class SupportFolderTest : public ::testing::Test {
  protected:
    TempFolder folder;
    RecordingInterface ui;
};

TEST_F(SupportFolderTest, IsMadeWithAllItsParents) {
    EXPECT_TRUE(activateSupportFolder(&ui, folder / "a/b/KavuSupportFiles/"));
    EXPECT_TRUE(folderExists(folder / "a/b/KavuSupportFiles"));
    EXPECT_FALSE(fileExists(folder / "a/b/KavuSupportFiles/kavu.tmp")) << "the proof goes";
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_TRUE(activateSupportFolder(nullptr, folder / "a/b/KavuSupportFiles/"));
}

TEST_F(SupportFolderTest, APathThatCanNotBeMadeAsksUntilCancel) {
    writeFile(folder / "file", "x");
    const auto path = folder / "file/KavuSupportFiles";
    ui.queued = {Button::Retry, Button::Retry, Button::Cancel};
    EXPECT_FALSE(activateSupportFolder(&ui, path + "/"));
    ASSERT_EQ(ui.boxes.size(), 3u);
    EXPECT_EQ(ui.boxes[0].title, "ERROR Activating Application");
    EXPECT_EQ(ui.boxes[0].buttons, Buttons::RetryCancel);
    // It names the part of the path that is in the way.
    EXPECT_EQ(ui.boxes[0].text, "Could not create the path '" + (folder / "file") +
                                    "'.\n\nThis application creates and uses this folder to store "
                                    "temporary files.\n\nRetry: Try again\nCancel: Terminate "
                                    "application.\n\nReason: Not a directory");
    EXPECT_FALSE(activateSupportFolder(nullptr, path + "/"));
}

TEST_F(SupportFolderTest, RetryGoesOnOnceThePathCanBeMade) {
    writeFile(folder / "file", "x");
    Mender mender([this] { EXPECT_TRUE(deleteFile(folder / "file").ok()); });
    EXPECT_TRUE(activateSupportFolder(&mender, folder / "file/KavuSupportFiles/"));
    EXPECT_EQ(mender.boxes.size(), 1u);
    EXPECT_TRUE(folderExists(folder / "file/KavuSupportFiles"));
}

TEST_F(SupportFolderTest, AnExistingFolderHasToProveThatItTakesFiles) {
    const auto path = folder / "KavuSupportFiles";
    ASSERT_TRUE(makeFolders(path + "/kavu.tmp").ok());
    EXPECT_FALSE(activateSupportFolder(nullptr, path + "/"));
    ui.queued = {Button::Cancel};
    EXPECT_FALSE(activateSupportFolder(&ui, path + "/"));
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].buttons, Buttons::RetryCancel);
    EXPECT_THAT(ui.boxes[0].text, EndsWith("\n\nReason: Is a directory"));
    Mender mender([&path] { EXPECT_TRUE(deleteFolder(path + "/kavu.tmp").ok()); });
    EXPECT_TRUE(activateSupportFolder(&mender, path + "/"));
}

TEST_F(SupportFolderTest, WritePermissonsIsSpeltLikeThis) {
    const auto path = folder / "KavuSupportFiles";
    ASSERT_TRUE(makeFolders(path + "/kavu.tmp").ok());
    EXPECT_FALSE(activateSupportFolder(&ui, path + "/"));
    EXPECT_THAT(ui.boxes.at(0).text,
                StartsWith("This application could not write to the folder '" + path +
                           "'.\n\nThis application uses this folder to store temporary files. "
                           "Make sure you have 'Write' permissons on this folder.\n\nRetry: Try "
                           "again\nCancel: Terminate application."));
}

TEST_F(SupportFolderTest, TheTwoTitlesDifferInCase) {
    writeFile(folder / "file", "x");
    EXPECT_FALSE(activateSupportFolder(&ui, folder / "file/below/"));
    ASSERT_TRUE(makeFolders(folder / "there/kavu.tmp").ok());
    EXPECT_FALSE(activateSupportFolder(&ui, folder / "there/"));
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].title, "ERROR Activating Application");
    EXPECT_EQ(ui.boxes[1].title, "Error Activating Application");
}

}  // namespace
}  // namespace kavu::test
