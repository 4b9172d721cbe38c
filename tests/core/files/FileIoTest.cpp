#include "core/files/FileIo.h"
#include "support/TestContext.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::readFile;
using test::TempFolder;
using test::writeFile;
using testing::ElementsAre;
using testing::IsEmpty;

using namespace std::string_literals;

class FileIoTest : public testing::Test {
  protected:
    std::vector<std::string> names(const std::string& where) {
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(where, entries).ok());
        std::vector<std::string> result;
        for (const auto& entry : entries) {
            result.push_back(entry.name + (entry.isFolder ? "/" : ""));
        }
        return result;
    }
    TempFolder folder;
    std::string path = folder / "file";
};

// --- reading -----------------------------------------------------------------------------

TEST_F(FileIoTest, MemoryIsReadFromItsFront) {
    auto source = ByteSource::fromMemory("abc\xFF");
    EXPECT_TRUE(source.isOpen());
    EXPECT_EQ(source.size(), 4u);
    EXPECT_EQ(source.get(), 'a');
    EXPECT_EQ(source.window(), "bc\xFF");
    source.take(2);
    EXPECT_EQ(source.position(), 3u);
    EXPECT_EQ(source.get(), 255) << "a byte is never the end";
    EXPECT_EQ(source.get(), -1);
    EXPECT_TRUE(source.atEnd());
    EXPECT_TRUE(source.status().ok());
}

TEST_F(FileIoTest, EmptyMemoryIsOpenAndAtItsEnd) {
    auto source = ByteSource::fromMemory({});
    EXPECT_TRUE(source.isOpen());
    EXPECT_TRUE(source.atEnd());
    EXPECT_EQ(source.get(), -1);
}

TEST_F(FileIoTest, SourceThatIsNotOpenIsAtItsEnd) {
    ByteSource source;
    EXPECT_FALSE(source.isOpen());
    EXPECT_TRUE(source.atEnd());
    EXPECT_EQ(source.get(), -1);
    EXPECT_FALSE(source.changedSinceOpened());
}

TEST_F(FileIoTest, FileLargerThanTheBufferIsReadWhole) {
    std::string bytes;
    for (int i = 0; bytes.size() < 1'000'000; ++i) {
        bytes += std::to_string(i) + ",";
    }
    writeFile(path, bytes);
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    EXPECT_EQ(source.size(), bytes.size());
    std::string read;
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        const auto count = std::min<std::size_t>(window.size(), 7001);
        EXPECT_EQ(source.position(), read.size());
        read.append(window.substr(0, count));
        source.take(count);
    }
    EXPECT_TRUE(read == bytes);
    EXPECT_TRUE(source.status().ok());
}

TEST_F(FileIoTest, PositionCanBeSetAnywhere) {
    std::string bytes(600'000, 'x');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>('a' + i % 26);
    }
    writeFile(path, bytes);
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    for (const std::size_t position : {599'999u, 0u, 300'000u, 262'144u, 262'143u, 1u}) {
        source.seek(position);
        EXPECT_EQ(source.position(), position);
        EXPECT_EQ(source.get(), bytes[position]) << position;
    }
    source.seek(bytes.size());
    EXPECT_TRUE(source.atEnd());
    source.seek(0);
    EXPECT_FALSE(source.atEnd()) << "the end is left by a seek";
    source.seek(bytes.size() + 100);
    EXPECT_TRUE(source.atEnd());
}

TEST_F(FileIoTest, MovedSourceReadsOn) {
    writeFile(path, "abcdef");
    ByteSource first;
    ASSERT_TRUE(first.open(path).ok());
    EXPECT_EQ(first.get(), 'a');
    ByteSource second = std::move(first);
    EXPECT_EQ(second.get(), 'b');
    EXPECT_EQ(second.position(), 2u);
}

TEST_F(FileIoTest, OpenTellsPathAndReason) {
    ByteSource source;
    const auto missing = source.open(folder / "none");
    EXPECT_EQ(missing.code(), ENOENT);
    EXPECT_EQ(missing.path(), folder / "none");
    EXPECT_EQ(missing.reason(), "No such file or directory");
    EXPECT_FALSE(source.isOpen());
    EXPECT_EQ(source.open(folder.path()).code(), EISDIR);
    EXPECT_EQ(source.status().code(), EISDIR);
    EXPECT_FALSE(source.isOpen());
    writeFile(path, "x");
    EXPECT_EQ(source.open(path + "\0y"s).code(), EINVAL) << "a NUL would name another file";
    EXPECT_TRUE(source.open(path).ok()) << "a failure does not stick to the next file";
    EXPECT_EQ(source.get(), 'x');
}

TEST_F(FileIoTest, PipeWithoutAWriterIsEmptyAndDoesNotHang) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    EXPECT_TRUE(source.atEnd());
}

TEST_F(FileIoTest, SourceSeesThatItsFileIsAnother) {
    writeFile(path, "old");
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    EXPECT_FALSE(source.changedSinceOpened());
    writeFile(path, "longer");
    EXPECT_TRUE(source.changedSinceOpened()) << "written";
    ASSERT_TRUE(source.open(path).ok());
    ASSERT_TRUE(replaceWorkingFile(path, "longer").ok());
    EXPECT_TRUE(source.changedSinceOpened()) << "replaced";
    ASSERT_TRUE(source.open(path).ok());
    ASSERT_TRUE(deleteFile(path).ok());
    EXPECT_TRUE(source.changedSinceOpened()) << "gone";
}

// --- writing -----------------------------------------------------------------------------

TEST_F(FileIoTest, WriterWritesAndTellsItsPosition) {
    FileWriter writer;
    ASSERT_TRUE(writer.open(path, WriteMode::Truncate).ok());
    writer.write("ab");
    writer.put('c');
    const std::string large(200'000, 'x');
    writer.write(large);
    writer.write("end");
    EXPECT_EQ(writer.position(), 200'006u);
    ASSERT_TRUE(writer.close(true).ok());
    EXPECT_TRUE(readFile(path) == "abc" + large + "end");
    EXPECT_FALSE(writer.isOpen());
}

TEST_F(FileIoTest, AppendStandsBehindWhatIsThere) {
    writeFile(path, "one");
    FileWriter writer;
    ASSERT_TRUE(writer.open(path, WriteMode::Append).ok());
    EXPECT_EQ(writer.position(), 3u);
    writer.write("two");
    ASSERT_TRUE(writer.flush().ok());
    EXPECT_EQ(readFile(path), "onetwo");
    ASSERT_TRUE(writer.close().ok());
    ASSERT_TRUE(writer.open(path, WriteMode::Truncate).ok());
    ASSERT_TRUE(writer.close().ok());
    EXPECT_EQ(readFile(path), "");
}

TEST_F(FileIoTest, FullDeviceIsReportedAndSticks) {
    FileWriter writer;
    ASSERT_TRUE(writer.open("/dev/full", WriteMode::Truncate).ok());
    writer.write("lost");
    const auto status = writer.flush();
    EXPECT_EQ(status.code(), ENOSPC);
    EXPECT_EQ(status.path(), "/dev/full");
    EXPECT_EQ(status.reason(), "No space left on device");
    writer.write("more");
    EXPECT_EQ(writer.close().code(), ENOSPC);
    EXPECT_EQ(writer.close().code(), ENOSPC) << "also asked twice";
    ASSERT_TRUE(writer.open(path, WriteMode::Truncate).ok());
    EXPECT_TRUE(writer.close().ok()) << "the next file starts anew";
}

TEST_F(FileIoTest, WhatIsWrittenAfterAFailedOpenIsNotInTheNextFile) {
    FileWriter writer;
    EXPECT_EQ(writer.open(folder / "none/file", WriteMode::Truncate).code(), ENOENT);
    writer.write("stray");
    EXPECT_EQ(writer.close().code(), ENOENT);
    ASSERT_TRUE(writer.open(path, WriteMode::Truncate).ok());
    writer.write("own");
    ASSERT_TRUE(writer.close().ok());
    EXPECT_EQ(readFile(path), "own");
}

TEST_F(FileIoTest, WriterThatGoesAwayOrIsMovedOverWritesWhatItHolds) {
    {
        FileWriter writer;
        ASSERT_TRUE(writer.open(path, WriteMode::Truncate).ok());
        writer.write("kept");
    }
    EXPECT_EQ(readFile(path), "kept");
    FileWriter one;
    ASSERT_TRUE(one.open(path, WriteMode::Truncate).ok());
    one.write("a");
    FileWriter other = std::move(one);
    other.write("b");
    other = FileWriter();
    EXPECT_EQ(readFile(path), "ab");
}

TEST_F(FileIoTest, PipeWithoutAReaderIsAFailureAndNoHang) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    FileWriter writer;
    EXPECT_EQ(writer.open(path, WriteMode::Truncate).code(), ENXIO);
    EXPECT_FALSE(canWrite(path));
}

// --- whole files -------------------------------------------------------------------------

TEST_F(FileIoTest, ReplaceKeepsTheOldFileWhenTheNewOneCanNotBeWritten) {
    writeFile(path, "old");
    ASSERT_EQ(::mkdir((path + ".new").c_str(), 0700), 0);
    EXPECT_FALSE(replaceWorkingFile(path, "new").ok());
    EXPECT_EQ(readFile(path), "old");
    ASSERT_EQ(::rmdir((path + ".new").c_str()), 0);
    EXPECT_TRUE(replaceWorkingFile(path, "new").ok());
    EXPECT_EQ(readFile(path), "new");
    EXPECT_THAT(names(folder.path()), ElementsAre("file"));
}

TEST_F(FileIoTest, ReplaceOfAFolderFailsAndLeavesNothing) {
    ASSERT_EQ(::mkdir(path.c_str(), 0700), 0);
    EXPECT_FALSE(replaceWorkingFile(path, "new").ok());
    EXPECT_THAT(names(folder.path()), ElementsAre("file/"));
}

TEST_F(FileIoTest, ReadOfAMissingFileEmptiesTheResult) {
    std::string bytes = "before";
    EXPECT_EQ(readWholeFile(folder / "none", bytes).code(), ENOENT);
    EXPECT_EQ(bytes, "");
}

TEST_F(FileIoTest, FileOfWhichTheSystemSaysThatItIsEmptyIsReadAllTheSame) {
    ASSERT_EQ(fileSize("/proc/self/status"), 0u);
    std::string bytes;
    ASSERT_TRUE(readWholeFile("/proc/self/status", bytes).ok());
    EXPECT_THAT(bytes, testing::HasSubstr("Pid:"));
}

TEST_F(FileIoTest, CopyOverwritesItsTargetAndNamesWhatFailed) {
    writeFile(path, "contents");
    writeFile(folder / "copy", "a longer text than the contents");
    ASSERT_TRUE(copyFile(path, folder / "copy", true).ok());
    EXPECT_EQ(readFile(folder / "copy"), "contents");
    EXPECT_EQ(copyFile(folder / "none", folder / "copy").path(), folder / "none");
    EXPECT_EQ(readFile(folder / "copy"), "contents") << "the target is not emptied for nothing";
    EXPECT_EQ(copyFile(path, folder / "none/copy").path(), folder / "none/copy");
}

TEST_F(FileIoTest, CopyOverItselfIsRefusedAlsoByALink) {
    writeFile(path, "contents");
    ASSERT_EQ(::symlink(path.c_str(), (folder / "link").c_str()), 0);
    ASSERT_EQ(::link(path.c_str(), (folder / "hard").c_str()), 0);
    for (const auto& other : {path, folder / "link", folder / "hard"}) {
        EXPECT_EQ(copyFile(path, other).code(), EEXIST) << other;
    }
    EXPECT_EQ(readFile(path), "contents");
}

// --- folders -----------------------------------------------------------------------------

TEST_F(FileIoTest, FoldersAreMadeWithTheirParentsAndMode) {
    const auto deep = folder / "a/b/c";
    ASSERT_TRUE(makeFolders(deep, 0700).ok());
    EXPECT_TRUE(folderExists(deep));
    struct stat info {};
    ASSERT_EQ(::stat(deep.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777u, 0700u);
    EXPECT_TRUE(makeFolders(deep).ok()) << "what is there is no failure";
    EXPECT_TRUE(makeFolders(deep + "/").ok());
    writeFile(path, "x");
    EXPECT_EQ(makeFolder(path).code(), ENOTDIR);
    const auto below = makeFolders(path + "/sub");
    EXPECT_EQ(below.code(), ENOTDIR);
    EXPECT_EQ(below.path(), path) << "the file that is in the way";
    EXPECT_EQ(makeFolder(folder / "e/f").code(), ENOENT);
}

TEST_F(FileIoTest, FolderIsDeletedWithAllItHoldsButNotWhatItsLinksLeadTo) {
    const auto outside = folder / "outside";
    ASSERT_TRUE(makeFolders(folder / "tree/sub/deep").ok());
    ASSERT_TRUE(makeFolder(outside).ok());
    writeFile(outside + "/kept", "x");
    writeFile(folder / "tree/sub/file", "x");
    ASSERT_EQ(::symlink(outside.c_str(), (folder / "tree/link").c_str()), 0);
    ASSERT_TRUE(deleteFolder(folder / "tree").ok());
    EXPECT_THAT(names(folder.path()), ElementsAre("outside/"));
    EXPECT_EQ(readFile(outside + "/kept"), "x");
    EXPECT_EQ(deleteFolder(folder / "tree").code(), ENOENT);
}

TEST_F(FileIoTest, ListingIsSortedAndFollowsNoLinks) {
    writeFile(folder / "b", "");
    writeFile(folder / "A", "");
    writeFile(folder / ".hidden", "");
    ASSERT_TRUE(makeFolder(folder / "c").ok());
    ASSERT_EQ(::symlink((folder / "c").c_str(), (folder / "d").c_str()), 0);
    EXPECT_THAT(names(folder.path()), ElementsAre(".hidden", "A", "b", "c/", "d"));
    std::vector<FolderEntry> entries(1);
    EXPECT_EQ(listFolder(folder / "none", entries).code(), ENOENT);
    EXPECT_TRUE(entries.empty());
}

TEST_F(FileIoTest, NamesWithANulAreRefusedAndTouchNothing) {
    writeFile(path, "x");
    const auto cut = path + "\0behind"s;
    EXPECT_EQ(deleteFile(cut).code(), EINVAL);
    EXPECT_EQ(renameFile(cut, folder / "other").code(), EINVAL);
    EXPECT_EQ(renameFile(path, folder / "other\0"s).code(), EINVAL);
    EXPECT_EQ(makeFolder(folder / "new\0x"s).code(), EINVAL);
    EXPECT_EQ(writeWholeFile(cut, "y").code(), EINVAL);
    EXPECT_THAT(names(folder.path()), ElementsAre("file"));
    EXPECT_EQ(readFile(path), "x");
}

TEST_F(FileIoTest, FoldersAreSynchronised) {
    EXPECT_TRUE(syncFolder(folder.path()).ok());
    EXPECT_EQ(syncFolder(folder / "none").code(), ENOENT);
    writeFile(path, "x");
    EXPECT_EQ(syncFolder(path).code(), ENOTDIR);
}

// --- questions ---------------------------------------------------------------------------

TEST_F(FileIoTest, ProbeTellsWhatAPathLeadsTo) {
    writeFile(path, "abc");
    ASSERT_EQ(::symlink("nowhere", (folder / "dangling").c_str()), 0);
    const std::pair<std::string, PathKind> cases[] = {
        {path, PathKind::PlainFile},
        {folder.path(), PathKind::Folder},
        {"/dev/null", PathKind::Other},
        {folder / "none", PathKind::Missing},
        {path + "/x", PathKind::Missing},
        {folder / "dangling", PathKind::Missing},
        {folder / std::string(300, 'n'), PathKind::Missing},
    };
    for (const auto& [where, expected] : cases) {
        PathKind kind = PathKind::Other;
        EXPECT_TRUE(probePath(where, kind).ok()) << where;
        EXPECT_EQ(kind, expected) << where;
    }
}

TEST_F(FileIoTest, ProbeOfALinkThatLeadsToItselfIsAFailureAndNotMissing) {
    ASSERT_EQ(::symlink("loop", (folder / "loop").c_str()), 0);
    PathKind kind = PathKind::PlainFile;
    EXPECT_EQ(probePath(folder / "loop", kind).code(), ELOOP);
}

TEST_F(FileIoTest, SameFileIsSeenThroughLinks) {
    writeFile(path, "x");
    writeFile(folder / "other", "x");
    ASSERT_EQ(::symlink(path.c_str(), (folder / "link").c_str()), 0);
    bool same = false;
    EXPECT_TRUE(probeSameFile(path, folder / "link", same).ok());
    EXPECT_TRUE(same);
    EXPECT_TRUE(probeSameFile(path, folder / "other", same).ok());
    EXPECT_FALSE(same);
    same = true;
    EXPECT_TRUE(probeSameFile(path, folder / "none", same).ok());
    EXPECT_FALSE(same);
}

TEST_F(FileIoTest, QuestionsAboutFiles) {
    writeFile(path, "abc");
    EXPECT_TRUE(fileExists(path));
    EXPECT_TRUE(isPlainFile(path));
    EXPECT_FALSE(isPlainFile(folder.path()));
    EXPECT_FALSE(isPlainFile("/dev/null"));
    EXPECT_FALSE(folderExists(path));
    EXPECT_TRUE(canRead(path));
    EXPECT_TRUE(canWrite(path));
    EXPECT_FALSE(canRead(folder / "none"));
    EXPECT_FALSE(canWrite(folder / "none"));
    EXPECT_FALSE(fileExists(folder / "none")) << "asking makes no file";
    EXPECT_EQ(fileSize(path), 3u);
    EXPECT_EQ(fileSize(folder / "none"), 0u);
    EXPECT_FALSE(hasReadOnlyAttribute(path));
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    EXPECT_TRUE(hasReadOnlyAttribute(path));
    EXPECT_FALSE(hasReadOnlyAttribute(folder / "none"));
}

TEST_F(FileIoTest, StampDiffersOnceAFileIsWrittenReplacedMadeOrDeleted) {
    EXPECT_EQ(fileStamp(path), "");
    writeFile(path, "abc");
    const auto made = fileStamp(path);
    EXPECT_NE(made, "");
    EXPECT_EQ(fileStamp(path), made);
    writeFile(path, "abcd");
    const auto written = fileStamp(path);
    EXPECT_NE(written, made);
    ASSERT_TRUE(replaceWorkingFile(path, "abcd").ok());
    EXPECT_NE(fileStamp(path), written);
}

TEST_F(FileIoTest, StarIsAnyRunAndEverythingElseItself) {
    struct Case {
        const char* name;
        const char* pattern;
        bool matches;
    };
    const Case cases[] = {
        {"[kavu]1.C_O", "[kavu]*.C_O", true},
        {"[kavu].C_O", "[kavu]*.C_O", true},
        {"x[kavu]1.C_O", "[kavu]*.C_O", false},
        {"[kavu]1.C_OM", "[kavu]*.C_O", false},
        {"", "", true},
        {"", "*", true},
        {"a", "", false},
        {"abc", "*", true},
        {"abc", "a*c", true},
        {"abcbc", "a*bc", true},
        {"abd", "a*c", false},
        {"abc", "***abc***", true},
        {"a?c", "a?c", true},
        {"abc", "a?c", false},
        {"ABC", "abc", false},
        {"aXbXc", "*X*X*", true},
        {"aXbc", "*X*X*", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(matchesWildcard(c.name, c.pattern), c.matches) << c.name << " " << c.pattern;
    }
}

TEST_F(FileIoTest, PathsAreTakenApart) {
    EXPECT_EQ(fileNameOf("/a/b.tma"), "b.tma");
    EXPECT_EQ(fileNameOf("b.tma"), "b.tma");
    EXPECT_EQ(fileNameOf("/a/"), "");
    EXPECT_EQ(folderOf("/a/b.tma"), "/a");
    EXPECT_EQ(folderOf("/b.tma"), "/");
    EXPECT_EQ(folderOf("b.tma"), ".");
    const auto here = std::filesystem::current_path().string();
    EXPECT_EQ(absolutePath("b.tma"), here + "/b.tma");
    EXPECT_EQ(absolutePath("././/b.tma"), here + "/b.tma");
    EXPECT_EQ(absolutePath("../b.tma"), here + "/../b.tma");
    EXPECT_EQ(absolutePath("/a/b.tma"), "/a/b.tma");
    EXPECT_EQ(absolutePath(""), "");
}

}  // namespace
}  // namespace kavu
