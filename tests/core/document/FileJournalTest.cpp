#include "core/document/DocumentHistory.h"
#include "core/document/FileJournal.h"
#include "support/TestContext.h"

#include <sys/stat.h>
#include <unistd.h>

namespace kavu::test {

namespace {

constexpr const char* kOne = "[kavu]DSRCE.T01";
constexpr const char* kTwo = "[kavu]DSRCE.T02";
constexpr const char* kChunk = "[kavu]00000001.C_O";

ino_t inodeOf(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_ino;
}

class FileJournalTest : public testing::Test {
  protected:
    std::string pathOf(const std::string& name) { return c.store.pathOf(name); }
    void put(const std::string& name, std::string_view bytes) {
        ASSERT_TRUE(c.files.put(name, bytes).ok());
    }
    /// Changes a file as an operation does, while the journal is told.
    void change(FileJournal& journal, const std::string& name, std::string_view bytes) {
        ASSERT_TRUE(journal.beforeChange(name).ok());
        put(name, bytes);
    }

    TestContext c;
};

}  // namespace

TEST_F(FileJournalTest, KeepsTheFormerInodeAndCopiesNoBytes) {
    put(kOne, "before");
    const auto inode = inodeOf(pathOf(kOne));
    KeptFiles kept(c.files, "kept");
    ASSERT_TRUE(kept.keep(kOne).ok());
    put(kOne, "after");
    ASSERT_TRUE(kept.keep(kOne).ok()) << "kept already";
    EXPECT_EQ(inodeOf(pathOf("kept/" + std::string(kOne))), inode);
    EXPECT_EQ(kept.bytes(), 6U);
    ASSERT_TRUE(kept.putBackAll().ok());
    EXPECT_EQ(c.read(kOne), "before");
    EXPECT_EQ(inodeOf(pathOf(kOne)), inode);
    EXPECT_TRUE(kept.empty());
}

TEST_F(FileJournalTest, RemembersThatAFileWasNotThere) {
    KeptFiles kept(c.files, "kept");
    ASSERT_TRUE(kept.keep(kOne).ok());
    EXPECT_TRUE(c.has("kept/" + std::string(kOne) + ".none"));
    put(kOne, "new");
    ASSERT_TRUE(kept.putBackAll().ok());
    EXPECT_FALSE(c.has(kOne));
    EXPECT_FALSE(c.has("kept/" + std::string(kOne) + ".none"));
}

TEST_F(FileJournalTest, PutsBackAFileThatNobodyHasReplaced) {
    put(kOne, "same");
    KeptFiles kept(c.files, "kept");
    ASSERT_TRUE(kept.keep(kOne).ok());
    // rename() of one of two links to one file does nothing and leaves both.
    ASSERT_TRUE(kept.putBack(kOne).ok());
    EXPECT_EQ(c.read(kOne), "same");
    EXPECT_FALSE(c.has("kept/" + std::string(kOne)));
}

TEST_F(FileJournalTest, CountsAsUnchangedWhatHasTheSameBytes) {
    put(kOne, "one");
    put(kTwo, "two");
    put(kChunk, "three");
    KeptFiles kept(c.files, "kept");
    for (const auto* const name : {kOne, kTwo, kChunk, "[kavu]PTMP.P01"}) {
        ASSERT_TRUE(kept.keep(name).ok());
    }
    put(kOne, "one");
    put(kTwo, "TWO");
    kept.dropUnchanged();
    EXPECT_EQ(kept.names(), std::vector<std::string>{kTwo});
    EXPECT_FALSE(c.has("kept/" + std::string(kChunk)));
}

TEST_F(FileJournalTest, GoesWithItsFolderUnlessItIsLeft) {
    put(kOne, "one");
    {
        KeptFiles kept(c.files, "kept");
        ASSERT_TRUE(kept.keep(kOne).ok());
        EXPECT_TRUE(folderExists(pathOf("kept")));
        struct stat info {};
        ASSERT_EQ(::stat(pathOf("kept").c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 0777U, 0700U) << "private, as the store is";
    }
    EXPECT_FALSE(folderExists(pathOf("kept")));
    {
        KeptFiles kept(c.files, "kept");
        ASSERT_TRUE(kept.keep(kOne).ok());
        kept.leave();
    }
    EXPECT_TRUE(folderExists(pathOf("kept")));
}

TEST_F(FileJournalTest, BeginsWithoutWhatWasLeftInTheFolder) {
    put(kOne, "one");
    ASSERT_TRUE(makeFolder(pathOf("kept")).ok());
    c.write("kept/" + std::string(kTwo), "left");
    KeptFiles kept(c.files, "kept");
    ASSERT_TRUE(kept.keep(kOne).ok());
    EXPECT_FALSE(c.has("kept/" + std::string(kTwo)));
}

TEST_F(FileJournalTest, StopsTheChangeIfNothingCanBeKept) {
    put(kOne, "one");
    c.write("kept", "a file in the way of the folder");
    KeptFiles kept(c.files, "kept");
    EXPECT_EQ(kept.keep(kOne).code(), ENOTDIR);
    EXPECT_TRUE(kept.empty());
}

TEST_F(FileJournalTest, JoinsOnlyWhatIsNotKeptYet) {
    put(kOne, "one");
    KeptFiles first(c.files, "first");
    ASSERT_TRUE(first.keep(kOne).ok());
    put(kOne, "second one");
    KeptFiles second(c.files, "second");
    ASSERT_TRUE(second.keep(kOne).ok());
    ASSERT_TRUE(second.keep(kTwo).ok());
    put(kTwo, "new");
    ASSERT_TRUE(first.join(second).ok());
    second.drop();
    ASSERT_TRUE(first.putBackAll().ok());
    EXPECT_EQ(c.read(kOne), "one");
    EXPECT_FALSE(c.has(kTwo));
}

TEST_F(FileJournalTest, TakesWhatDiffersSinceTheLastTake) {
    put(kOne, "a");
    FileJournal journal(c.files, "edits");
    change(journal, kOne, "b");
    change(journal, kTwo, "new");
    change(journal, kChunk, "x");
    ASSERT_TRUE(c.files.remove(kChunk).ok());
    IoStatus status;
    auto level = journal.take(status);
    ASSERT_TRUE(status.ok());
    EXPECT_EQ(level.names(), (std::vector<std::string>{kOne, kTwo}));
    EXPECT_TRUE(journal.take(status).empty());

    change(journal, kOne, "c");
    auto next = journal.take(status);
    EXPECT_EQ(next.names(), std::vector<std::string>{kOne});
    journal.exchange(next, status);
    EXPECT_EQ(c.read(kOne), "b");
    journal.exchange(level, status);
    ASSERT_TRUE(status.ok());
    EXPECT_EQ(c.read(kOne), "a");
    EXPECT_FALSE(c.has(kTwo));
    journal.exchange(level, status);
    EXPECT_EQ(c.read(kOne), "b");
    EXPECT_EQ(c.read(kTwo), "new");
    journal.exchange(next, status);
    ASSERT_TRUE(status.ok());
    EXPECT_EQ(c.read(kOne), "c");
}

TEST_F(FileJournalTest, KeepsOnlyWhatItsFilterLetsThrough) {
    put(kOne, "a");
    put(kChunk, "x");
    FileJournal journal(c.files, "edits",
                        [](std::string_view name) { return name.ends_with(".C_O"); });
    change(journal, kOne, "b");
    change(journal, kChunk, "y");
    EXPECT_EQ(journal.kept().names(), std::vector<std::string>{kChunk});
}

TEST_F(FileJournalTest, KeepsAWholeFamily) {
    put(kOne, "a");
    put(kChunk, "x");
    put("[kavu]00000002.C_COM", "long");
    FileJournal journal(c.files, "edits");
    ASSERT_TRUE(journal.keepAll({"[kavu]*.C_*"}).ok());
    EXPECT_EQ(journal.kept().names(), (std::vector<std::string>{kChunk, "[kavu]00000002.C_COM"}));
    EXPECT_TRUE(journal.written().empty());
}

TEST_F(FileJournalTest, ReadsWhatAnOpenOperationHasKept) {
    put(kOne, "outer");
    KeptFiles outer(c.files, "TEMP0");
    outer.setNote("Edit of Something");
    ASSERT_TRUE(outer.keep(kOne).ok());
    ASSERT_TRUE(outer.keep(kTwo).ok());
    put(kOne, "inner");
    put(kTwo, "inner");
    KeptFiles inner(c.files, "TEMP1");
    inner.setNote("A part of it");
    ASSERT_TRUE(inner.keep(kOne).ok());
    ASSERT_TRUE(inner.keep(kChunk).ok());
    KeptFiles deep(c.files, "TEMP10");
    ASSERT_TRUE(deep.keep(kTwo).ok());
    KeptFiles other(c.files, "TEMPLATE");
    ASSERT_TRUE(other.keep("[kavu]PTMP.P01").ok());

    OpenChanges changes;
    ASSERT_TRUE(filesBeforeOpenChanges(c.store.folder(), changes).ok());
    EXPECT_EQ(changes.operations, (std::vector<std::string>{"Edit of Something", "A part of it"}));
    ASSERT_EQ(changes.former.size(), 3U);
    EXPECT_EQ(readFile(changes.former.at(kOne)), "outer");
    EXPECT_EQ(changes.former.at(kTwo), "") << "it was not there";
    EXPECT_EQ(changes.former.at(kChunk), "");
}

}  // namespace kavu::test
