#include "core/talk/OpenFileChecked.h"
#include "support/TestContext.h"

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

constexpr const char* kTitle = "Unable To Open File";
constexpr const char* kBackupTitle = "ERROR: Unable To Create Backup File";

mode_t modeBehindLinks(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_mode & 07777;
}

class OpenFileCheckedTest : public ::testing::Test {
  protected:
    bool openForReading(const std::string& path, UserInterface* parent) {
        ByteSource source;
        const bool opened = openFileChecked(parent, path, source);
        EXPECT_EQ(source.isOpen(), opened);
        return opened;
    }
    bool overwrite(const std::string& path, OverwritePolicy policy, UserInterface* parent,
                   std::string_view bytes = "new") {
        FileWriter writer;
        if (!openFileChecked(parent, path, WriteMode::Truncate, policy, writer)) {
            EXPECT_FALSE(writer.isOpen());
            return false;
        }
        writer.write(bytes);
        return writer.close().ok();
    }
    void expectOneBox(const std::string& title, const std::string& text) {
        ASSERT_EQ(ui.boxes.size(), 1u);
        EXPECT_EQ(ui.boxes[0].title, title);
        EXPECT_EQ(ui.boxes[0].text, text);
        ui.boxes.clear();
    }

    TempFolder folder;
    RecordingInterface ui;
};

// --- reading -------------------------------------------------------------------------------

TEST_F(OpenFileCheckedTest, ADeviceOrAPipeIsNoFileToRead) {
    const auto pipe = folder.path() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/zero")}) {
        EXPECT_FALSE(openForReading(path, &ui));
        expectOneBox(kTitle,
                     "Unable to open '" + path + "'\n\nReason: Is a pipe or a device, not a file");
        EXPECT_FALSE(openForReading(path, nullptr));
    }
}

TEST_F(OpenFileCheckedTest, AFileIsOpenedForReading) {
    writeFile(folder / "a", "text");
    ByteSource source;
    ASSERT_TRUE(openFileChecked(&ui, folder / "a", source));
    EXPECT_EQ(source.window(), "text");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(OpenFileCheckedTest, AnEmptyPathIsTold) {
    EXPECT_FALSE(openForReading("", &ui));
    expectOneBox(kTitle, "No pathname was entered");
    for (const auto policy : {OverwritePolicy::Ask, OverwritePolicy::AskAndBackUp}) {
        EXPECT_FALSE(overwrite("", policy, &ui));
        expectOneBox(kTitle, "No pathname was entered");
    }
    EXPECT_FALSE(overwrite("", OverwritePolicy::BackUpOnly, &ui));
    EXPECT_TRUE(ui.boxes.empty()) << "a negative policy is silent about it";
    EXPECT_FALSE(openForReading("", nullptr));
}

TEST_F(OpenFileCheckedTest, WhatCanNotBeReadIsToldWithTheReason) {
    using namespace std::string_literals;
    writeFile(folder / "file", "x");
    const std::pair<std::string, const char*> rows[] = {
        {folder / "missing", "No such file or directory"},
        {folder / "missing/below", "No such file or directory"},
        {folder / "file/below", "Not a directory"},
        {folder.path(), "Is a directory"},
        {folder / std::string(256, 'n'), "File name too long"},
        {folder / "file\0x"s, "Invalid argument"},
    };
    for (const auto& [path, reason] : rows) {
        EXPECT_FALSE(openForReading(path, &ui));
        expectOneBox(kTitle, "Unable to open '" + path + "'\n\nReason: " + reason);
        EXPECT_FALSE(openForReading(path, nullptr));
    }
}

// --- writing -------------------------------------------------------------------------------

TEST_F(OpenFileCheckedTest, ANewFileIsMadeWithoutAQuestion) {
    for (const auto policy :
         {OverwritePolicy::Ask, OverwritePolicy::AskAndBackUp, OverwritePolicy::BackUpOnly}) {
        const auto path = folder / ("new" + std::to_string(static_cast<int>(policy)));
        EXPECT_TRUE(overwrite(path, policy, &ui));
        EXPECT_EQ(readFile(path), "new");
        EXPECT_FALSE(fileExists(path + ".bak"));
    }
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(OpenFileCheckedTest, AnExistingFileIsOverwrittenOnlyOnYes) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(overwrite(path, OverwritePolicy::Ask, &ui));
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(ui.boxes.at(0).title, "File Already Exists");
    EXPECT_EQ(ui.boxes.at(0).text, "The file: '" + path + "' already exists\n\nOverwrite?");
    EXPECT_EQ(ui.boxes.at(0).buttons, Buttons::YesNo);
    EXPECT_TRUE(overwrite(path, OverwritePolicy::Ask, &ui));
    EXPECT_EQ(readFile(path), "new");
    EXPECT_FALSE(fileExists(folder / "a.bak")) << "this policy makes no backup";
}

TEST_F(OpenFileCheckedTest, WithoutAParentNothingIsOverwrittenThatWouldBeAskedFor) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    EXPECT_FALSE(overwrite(path, OverwritePolicy::Ask, nullptr));
    EXPECT_FALSE(overwrite(path, OverwritePolicy::AskAndBackUp, nullptr));
    EXPECT_EQ(readFile(path), "old");
    EXPECT_TRUE(overwrite(path, OverwritePolicy::BackUpOnly, nullptr));
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(readFile(folder / "a.bak"), "old");
}

TEST_F(OpenFileCheckedTest, APolicyAbove0AsksAndBacksUp) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(overwrite(path, OverwritePolicy::AskAndBackUp, &ui));
    EXPECT_FALSE(fileExists(folder / "a.bak"));
    EXPECT_TRUE(overwrite(path, OverwritePolicy::AskAndBackUp, &ui));
    EXPECT_EQ(readFile(folder / "a.bak"), "old");
    EXPECT_EQ(readFile(path), "new");
}

TEST_F(OpenFileCheckedTest, APolicyBelow0BacksUpAndDoesNotAsk) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    writeFile(folder / "a.bak", "a longer and older backup");
    EXPECT_TRUE(overwrite(path, OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(folder / "a.bak"), "old");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(OpenFileCheckedTest, AppendingAsksAndBacksUpTheSame) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    FileWriter writer;
    ui.queued = {Button::Yes};
    ASSERT_TRUE(
        openFileChecked(&ui, path, WriteMode::Append, OverwritePolicy::AskAndBackUp, writer));
    writer.write("new");
    EXPECT_TRUE(writer.close().ok());
    EXPECT_EQ(readFile(path), "oldnew");
    EXPECT_EQ(readFile(folder / "a.bak"), "old");
}

TEST_F(OpenFileCheckedTest, LinksOwnerAndModeOfTheTargetStay) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    ASSERT_EQ(::link(path.c_str(), (folder / "hard").c_str()), 0);
    ASSERT_EQ(::symlink("a.txt", (folder / "soft.txt").c_str()), 0);
    EXPECT_TRUE(overwrite(folder / "soft.txt", OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(folder / "hard"), "new");
    EXPECT_EQ(modeBehindLinks(path), 0640u);
    char target[16] = {};
    EXPECT_EQ(::readlink((folder / "soft.txt").c_str(), target, sizeof target), 5);
    EXPECT_EQ(readFile(folder / "soft.bak"), "old");
}

TEST_F(OpenFileCheckedTest, WhatCanNotBeWrittenIsToldWithTheReason) {
    using namespace std::string_literals;
    writeFile(folder / "file", "x");
    const std::pair<std::string, const char*> rows[] = {
        {folder / "missing/below", "No such file or directory"},
        {folder / "file/below", "Not a directory"},
        {folder / std::string(256, 'n'), "File name too long"},
        {folder / "file\0x"s, "Invalid argument"},
    };
    for (const auto& [path, reason] : rows) {
        for (const auto policy : {OverwritePolicy::Ask, OverwritePolicy::BackUpOnly}) {
            EXPECT_FALSE(overwrite(path, policy, &ui));
            expectOneBox(kTitle, "Unable to open '" + path + "'\n\nReason: " + reason);
        }
        EXPECT_FALSE(overwrite(path, OverwritePolicy::Ask, nullptr));
    }
    EXPECT_EQ(readFile(folder / "file"), "x") << "the name in front of a NUL is another file's";
}

TEST_F(OpenFileCheckedTest, AFolderInPlaceOfAFileIsTold) {
    ui.otherwise = Button::Yes;
    EXPECT_FALSE(overwrite(folder.path(), OverwritePolicy::Ask, &ui));
    EXPECT_EQ(ui.boxes.back().text,
              "Unable to open '" + folder.path() + "'\n\nReason: Is a directory");
    ui.boxes.clear();
    EXPECT_FALSE(overwrite(folder.path(), OverwritePolicy::BackUpOnly, &ui));
    expectOneBox(kBackupTitle, "Unable to read '" + folder.path() + "'.\n\nReason: Is a directory");
}

TEST_F(OpenFileCheckedTest, ANameOf255BytesIsGood) {
    const auto path = folder / std::string(255, 'n');
    EXPECT_TRUE(overwrite(path, OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(path), "new");
}

TEST_F(OpenFileCheckedTest, AReadOnlyFileSaysThatInItsError) {
    const auto path = folder / "a.txt";
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    // Whoever is root can open it all the same, so the report is asked for by itself.
    reportUnableToOpen(&ui, {path, EACCES});
    expectOneBox(kTitle,
                 "Unable to open '" + path + "'\n\nReason: Permission denied (File is Read-Only)");
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    reportUnableToOpen(&ui, {path, EACCES});
    expectOneBox(kTitle, "Unable to open '" + path + "'\n\nReason: Permission denied");
}

// --- backups -------------------------------------------------------------------------------

TEST(BackupNameTest, IsCutAtTheLastDotOfTheWholePath) {
    const std::pair<const char*, const char*> rows[] = {
        {"a.tma", "a.bak"},    {"/x/a.b.tma", "/x/a.b.bak"}, {"/x/a", "/x/a.bak"},
        {"/x/a.", "/x/a.bak"}, {"/x/.tma", "/x/.bak"},       {"a.bak", "a.bak"},
        {"", ".bak"},
    };
    for (const auto& [path, backup] : rows) {
        EXPECT_EQ(backupName(path), backup) << path;
    }
}

TEST(BackupNameTest, ADotInAFoldersNameGivesAWrongBackupName) {
    EXPECT_EQ(backupName("/x/v1.2/file"), "/x/v1.bak");
    EXPECT_EQ(backupName("./file"), ".bak");
}

TEST_F(OpenFileCheckedTest, TheWrongBackupNameHoldsTheFile) {
    ASSERT_TRUE(makeFolder(folder / "v1.2").ok());
    writeFile(folder / "v1.2/file", "old");
    EXPECT_TRUE(overwrite(folder / "v1.2/file", OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(folder / "v1.bak"), "old");
}

TEST_F(OpenFileCheckedTest, ABackupOfABackupIsRefused) {
    const auto path = folder / "a.bak";
    writeFile(path, "old");
    EXPECT_FALSE(overwrite(path, OverwritePolicy::BackUpOnly, &ui));
    expectOneBox(kBackupTitle, "Unable to create backup file. File names are the same.");
    EXPECT_EQ(readFile(path), "old");
    EXPECT_FALSE(makeBackup(nullptr, path));
}

TEST_F(OpenFileCheckedTest, ABackupThatIsALinkToTheFileBecomesAFileOfItsOwn) {
    const auto path = folder / "a.tma";
    const auto backup = folder / "a.bak";
    for (const bool isSymbolic : {false, true}) {
        writeFile(path, "old");
        (void)deleteFile(backup);
        ASSERT_EQ(
            isSymbolic ? ::symlink("a.tma", backup.c_str()) : ::link(path.c_str(), backup.c_str()),
            0);
        EXPECT_TRUE(overwrite(path, OverwritePolicy::BackUpOnly, &ui));
        EXPECT_TRUE(ui.boxes.empty());
        EXPECT_EQ(readFile(path), "new");
        EXPECT_EQ(readFile(backup), "old");
        EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(backup)));
    }
}

TEST_F(OpenFileCheckedTest, AFileThatCanNotBeReadStopsTheSave) {
    bool made = true;
    EXPECT_FALSE(makeBackup(&ui, folder / "missing.tma", &made));
    EXPECT_FALSE(made);
    expectOneBox(kBackupTitle, "Unable to read '" + (folder / "missing.tma") +
                                   "'.\n\nReason: No such file or directory");
    EXPECT_FALSE(fileExists(folder / "missing.bak"));
    EXPECT_FALSE(makeBackup(nullptr, folder / "missing.tma"));
}

class BackupFailureTest : public OpenFileCheckedTest {
  protected:
    void SetUp() override {
        writeFile(path_, "old");
        ASSERT_TRUE(makeFolder(folder / "a.bak").ok());
    }
    std::string path_ = folder / "a.tma";
};

TEST_F(BackupFailureTest, ABackupThatCanNotBeMadeAsksAndNoStops) {
    ui.queued = {Button::No};
    bool made = true;
    EXPECT_FALSE(makeBackup(&ui, path_, &made));
    EXPECT_FALSE(made);
    EXPECT_EQ(ui.boxes.at(0).buttons, Buttons::YesNo);
    expectOneBox(kBackupTitle, "Unable to create backup file '" + (folder / "a.bak") +
                                   "'\n\nUnable to save contents of original file (" + path_ +
                                   ") to backup file.\n\nContinue anyway?\n\nReason: Is a "
                                   "directory");
    EXPECT_FALSE(overwrite(path_, OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(path_), "old");
}

TEST_F(BackupFailureTest, YesGoesOnWithoutABackup) {
    ui.otherwise = Button::Yes;
    bool made = true;
    EXPECT_TRUE(makeBackup(&ui, path_, &made));
    EXPECT_FALSE(made);
    EXPECT_TRUE(overwrite(path_, OverwritePolicy::BackUpOnly, &ui));
    EXPECT_EQ(readFile(path_), "new");
}

TEST_F(BackupFailureTest, WithoutAParentTheSaveStops) {
    EXPECT_FALSE(makeBackup(nullptr, path_));
    EXPECT_FALSE(overwrite(path_, OverwritePolicy::BackUpOnly, nullptr));
    EXPECT_EQ(readFile(path_), "old");
}

TEST_F(OpenFileCheckedTest, ABackupThatCanNotBeWrittenWholeAsksAndLeavesTheOlderOne) {
    const auto path = folder / "a.tma";
    writeFile(path, std::string(100000, 'x'));
    writeFile(folder / "a.bak", "older");
    rlimit former{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit little{1000, former.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &little), 0);
    bool made = true;
    EXPECT_FALSE(makeBackup(&ui, path, &made));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &former), 0);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(made);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_THAT(ui.boxes[0].text, HasSubstr("Continue anyway?"));
    EXPECT_THAT(ui.boxes[0].text, EndsWith("Reason: File too large"));
    EXPECT_EQ(fileSize(path), 100000u);
    EXPECT_EQ(readFile(folder / "a.bak"), "older");
    std::vector<FolderEntry> entries;
    ASSERT_TRUE(listFolder(folder.path(), entries).ok());
    EXPECT_EQ(entries.size(), 2u) << "no half backup stays";
}

TEST_F(OpenFileCheckedTest, ABackupIsNoMorePublicThanItsFile) {
    const auto path = folder / "a.tma";
    writeFile(path, "secret");
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    bool made = false;
    EXPECT_TRUE(makeBackup(&ui, path, &made));
    EXPECT_TRUE(made);
    EXPECT_EQ(modeBehindLinks(folder / "a.bak"), 0600u);
    EXPECT_EQ(readFile(folder / "a.bak"), "secret");
    ASSERT_EQ(::chmod(path.c_str(), 0400), 0);
    ASSERT_TRUE(deleteFile(folder / "a.bak").ok());
    EXPECT_TRUE(makeBackup(&ui, path));
    EXPECT_EQ(modeBehindLinks(folder / "a.bak"), 0400u);
    EXPECT_TRUE(makeBackup(&ui, path)) << "the next backup replaces it";
}

TEST_F(OpenFileCheckedTest, ALinkOfTheNameOfTheBackupIsReplacedAndNotWrittenThrough) {
    const auto path = folder / "a.tma";
    writeFile(path, "former");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    writeFile(folder / "other", "a file of somebody else");
    for (const char* const target : {"other", "/dev/null", "missing"}) {
        (void)deleteFile(folder / "a.bak");
        ASSERT_EQ(::symlink(target, (folder / "a.bak").c_str()), 0);
        EXPECT_TRUE(makeBackup(&ui, path)) << target;
        EXPECT_TRUE(ui.boxes.empty());
        EXPECT_TRUE(
            std::filesystem::is_regular_file(std::filesystem::symlink_status(folder / "a.bak")));
        EXPECT_EQ(readFile(folder / "a.bak"), "former");
        EXPECT_EQ(modeBehindLinks(folder / "a.bak"), 0640u);
    }
    EXPECT_EQ(readFile(folder / "other"), "a file of somebody else");
    EXPECT_FALSE(fileExists(folder / "missing"));
}

TEST_F(OpenFileCheckedTest, AnEmptyFileHasAnEmptyBackup) {
    writeFile(folder / "a.tma", "");
    EXPECT_TRUE(makeBackup(&ui, folder / "a.tma"));
    EXPECT_EQ(readFile(folder / "a.bak"), "");
}

}  // namespace
}  // namespace kavu::test
