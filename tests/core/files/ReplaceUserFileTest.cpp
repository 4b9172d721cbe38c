#include "support/TestContext.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu::test {
namespace {

struct stat infoOf(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(::lstat(path.c_str(), &info), 0) << path;
    return info;
}

unsigned modeOf(const std::string& path) {
    return infoOf(path).st_mode & 07777;
}

std::vector<std::string> namesIn(const TempFolder& folder) {
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(listFolder(folder.path(), entries).ok());
    std::vector<std::string> names;
    for (const auto& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

/// Takes the rights of the superuser away for its life, so that permissions count.
class WithoutPrivileges {
  public:
    WithoutPrivileges() : was_(::geteuid()) { EXPECT_TRUE(was_ != 0 || ::seteuid(65534) == 0); }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
    ~WithoutPrivileges() { EXPECT_EQ(::seteuid(was_), 0); }

  private:
    uid_t was_;
};

TEST(ReplaceUserFileTest, NewFileIsMadeWithTheModeOfTheUser) {
    const TempFolder folder;
    const auto mask = ::umask(027);
    EXPECT_TRUE(replaceUserFile(folder / "f", "new").ok());
    ::umask(mask);
    EXPECT_EQ(readFile(folder / "f"), "new");
    EXPECT_EQ(modeOf(folder / "f"), 0640U);
}

TEST(ReplaceUserFileTest, ModeStaysAndTheFileIsAnother) {
    const TempFolder folder;
    writeFile(folder / "f", "former");
    ASSERT_EQ(::chmod((folder / "f").c_str(), 0604), 0);
    // Whoever has the former file open reads it whole.
    ByteSource reader;
    ASSERT_TRUE(reader.open(folder / "f").ok());
    EXPECT_TRUE(replaceUserFile(folder / "f", "new").ok());
    EXPECT_EQ(readFile(folder / "f"), "new");
    EXPECT_EQ(reader.window(), "former");
    EXPECT_EQ(modeOf(folder / "f"), 0604U);
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"f"});
}

TEST(ReplaceUserFileTest, LinkStaysAndWhatItLeadsToIsWritten) {
    const TempFolder folder;
    ASSERT_TRUE(makeFolder(folder / "d").ok());
    writeFile(folder / "d/f", "former");
    ASSERT_EQ(::symlink("d/f", (folder / "inner").c_str()), 0);
    ASSERT_EQ(::symlink("inner", (folder / "outer").c_str()), 0);
    EXPECT_TRUE(replaceUserFile(folder / "outer", "new").ok());
    EXPECT_TRUE(S_ISLNK(infoOf(folder / "outer").st_mode));
    EXPECT_TRUE(S_ISLNK(infoOf(folder / "inner").st_mode));
    EXPECT_EQ(readFile(folder / "d/f"), "new");
}

TEST(ReplaceUserFileTest, LinkToNothingGetsItsFile) {
    const TempFolder folder;
    ASSERT_EQ(::symlink("f", (folder / "link").c_str()), 0);
    EXPECT_TRUE(replaceUserFile(folder / "link", "new").ok());
    EXPECT_TRUE(S_ISLNK(infoOf(folder / "link").st_mode));
    EXPECT_EQ(readFile(folder / "f"), "new");
}

TEST(ReplaceUserFileTest, OtherNamesOfTheFileStayItsNames) {
    const TempFolder folder;
    writeFile(folder / "f", "former");
    ASSERT_EQ(::link((folder / "f").c_str(), (folder / "g").c_str()), 0);
    EXPECT_TRUE(replaceUserFile(folder / "f", "new").ok());
    EXPECT_EQ(readFile(folder / "g"), "new");
    EXPECT_EQ(infoOf(folder / "f").st_ino, infoOf(folder / "g").st_ino);
}

TEST(ReplaceUserFileTest, FileInAFolderThatTakesNoNewOnesIsWrittenInPlace) {
    const TempFolder folder;
    writeFile(folder / "f", "former and longer");
    ASSERT_EQ(::chmod((folder / "f").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    {
        const WithoutPrivileges less;
        EXPECT_TRUE(replaceUserFile(folder / "f", "new").ok());
        EXPECT_EQ(replaceUserFile(folder / "g", "new").code(), EACCES);
    }
    EXPECT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    EXPECT_EQ(readFile(folder / "f"), "new");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"f"});
}

TEST(ReplaceUserFileTest, FileWithoutWritePermissionIsLeftThoughItsFolderIsOpen) {
    const TempFolder folder;
    writeFile(folder / "f", "former");
    ASSERT_EQ(::chmod((folder / "f").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    {
        const WithoutPrivileges less;
        EXPECT_EQ(replaceUserFile(folder / "f", "new").code(), EACCES);
    }
    EXPECT_EQ(readFile(folder / "f"), "former");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"f"});
}

TEST(ReplaceUserFileTest, LeftoversOfAKilledRunAreNoHindrance) {
    const TempFolder folder;
    writeFile(folder / "f", "former");
    writeFile(folder / ".f.kavu-new", "half");
    writeFile(folder / ".f.kavu-lock", "");
    EXPECT_TRUE(replaceUserFile(folder / "f", "new").ok());
    EXPECT_EQ(readFile(folder / "f"), "new");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"f"});
}

TEST(ReplaceUserFileTest, NameAsLongAsNamesCanBeIsReplaced) {
    const TempFolder folder;
    const std::string name(255, 'n');
    writeFile(folder / name, "former");
    EXPECT_TRUE(replaceUserFile(folder / name, "new").ok());
    EXPECT_EQ(readFile(folder / name), "new");
}

TEST(ReplaceUserFileTest, FailureNamesThePathAndTheReason) {
    const TempFolder folder;
    ASSERT_TRUE(makeFolder(folder / "d").ok());
    const auto onFolder = replaceUserFile(folder / "d", "new");
    EXPECT_EQ(onFolder.code(), EISDIR);
    EXPECT_EQ(onFolder.path(), folder / "d");
    EXPECT_EQ(replaceUserFile(folder / "none/f", "new").code(), ENOENT);
    EXPECT_EQ(replaceUserFile(std::string("a\0b", 3), "new").code(), EINVAL);
}

TEST(ReplaceUnchangedFileTest, RefusesAFileThatIsNoLongerTheOneThatWasRead) {
    const TempFolder folder;
    const auto file = folder / "f";
    EXPECT_TRUE(replaceUnchangedFile(file, "made", {}).ok());
    EXPECT_EQ(replaceUnchangedFile(file, "again", {}).code(), ESTALE);
    const auto stamp = fileStamp(file);
    EXPECT_TRUE(replaceUnchangedFile(file, "ours", stamp).ok());
    EXPECT_EQ(replaceUnchangedFile(file, "late", stamp).code(), ESTALE);
    EXPECT_EQ(readFile(file), "ours");
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"f"});
}

}  // namespace
}  // namespace kavu::test
