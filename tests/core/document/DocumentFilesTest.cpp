#include "core/document/DocumentFiles.h"
#include "support/TestContext.h"

#include <cerrno>
#include <csignal>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kTapeFile = "[kavu]DSRCE.R01";
constexpr std::string_view kOtherTapeFile = "[kavu]DSRCE.R02";
constexpr std::string_view kGeneralFile = "[kavu]GTMP.G";
constexpr std::string_view kChunkFile = "[kavu]00000000.C_O";
/// What a file is called while it is being written.
constexpr std::string_view kBeside = "[kavu]DSRCE.R01.new";

const std::vector<std::string> kBadNames = {
    "", ".", "..", "a/b", "../a", "/tmp/a", std::string("a\0b", 3), "[kavu]DSRCE.R01.new"};

/// Writes down what it is asked, and links the former file as a journal would.
class LinkKeeper : public FormerFileKeeper {
  public:
    explicit LinkKeeper(DocumentFiles& files, std::string folder)
        : files_(files), folder_(std::move(folder)) {}
    IoStatus beforeChange(std::string_view name) override {
        asked.emplace_back(name);
        if (refuses) {
            return {"full", ENOSPC};
        }
        (void)::link(files_.path(name).c_str(), (folder_ + "/" + std::string(name)).c_str());
        return {};
    }
    std::vector<std::string> asked;
    bool refuses = false;

  private:
    DocumentFiles& files_;
    std::string folder_;
};

/// No file may grow over `bytes` as long as this lives.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit now{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &now);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

  private:
    rlimit before_{};
    void (*handler_)(int);
};

ino_t inodeOf(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_ino;
}

class DocumentFilesTest : public testing::Test {
  protected:
    DocumentFilesTest() { EXPECT_TRUE(makeFolder(kept).ok()); }

    std::vector<std::string> namesIn(const std::string& folder) {
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(folder, entries).ok());
        std::vector<std::string> names;
        for (const auto& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }

    TestContext t;
    DocumentFiles& files = t.files;
    std::string kept = t.folder / "kept";
    LinkKeeper keeper{files, kept};
};

// --- what a name says -----------------------------------------------------------------------

TEST_F(DocumentFilesTest, DescribesFilesByTheirNames) {
    struct Case {
        std::string name;
        DocumentFile::Kind kind;
        char letter;
        std::int64_t number;
    };
    const std::vector<Case> cases = {
        {"[kavu]GTMP.G", DocumentFile::Group, 'G', 0},
        {"[kavu]H.HHH", DocumentFile::Group, 'H', 0},
        {"[kavu]DSRCE.T01", DocumentFile::Group, 'T', 1},
        {"[kavu]DSRCE.R00", DocumentFile::Group, 'R', 0},
        {"[kavu]DSRCE.R123", DocumentFile::Group, 'R', 123},
        {"[kavu]PCMMEAS.D99", DocumentFile::Group, 'D', 99},
        {"[kavu]PCM1553.B07", DocumentFile::Group, 'B', 7},
        {"[kavu]PCMS.S02", DocumentFile::Group, 'S', 2},
        {"[kavu]00000012.C_O", DocumentFile::Chunk, 'C', 12},
        {"[kavu]123456789.C_O", DocumentFile::Chunk, 'C', 123456789},
        {"[kavu]00000003.C_RAW", DocumentFile::Chunk, 'C', 3},
        {"[kavu]A B.C_COM", DocumentFile::Comment, 'C', 0},
        {"[kavu]GTMP.Gtmp", DocumentFile::Side, 0, 0},
        {"[kavu]DSRCE.T1", DocumentFile::Side, 0, 0},
        {"[kavu]DSRCE.Txx", DocumentFile::Side, 0, 0},
        {"[kavu]DSRCE.T", DocumentFile::Side, 0, 0},
        {"[kavu]xx.C_O", DocumentFile::Side, 0, 0},
        {"[kavu].C_COM", DocumentFile::Side, 0, 0},
        {"[kavu]DSMF0000.D03", DocumentFile::Side, 0, 0},
        {"00000012.C_O", DocumentFile::Side, 0, 0},
        {"", DocumentFile::Side, 0, 0},
    };
    for (const auto& expected : cases) {
        const auto file = describeDocumentFile(expected.name);
        EXPECT_EQ(file.kind, expected.kind) << expected.name;
        EXPECT_EQ(file.letter, expected.letter) << expected.name;
        EXPECT_EQ(file.number, expected.number) << expected.name;
        EXPECT_EQ(file.name, expected.name);
    }
}

TEST_F(DocumentFilesTest, RefusesANameThatIsNotPlain) {
    t.write("there", "old");
    files.setKeeper(&keeper);
    for (const auto& name : kBadNames) {
        EXPECT_EQ(files.put(name, "x").code(), EINVAL) << name;
        EXPECT_EQ(files.append(name, "x").code(), EINVAL) << name;
        EXPECT_EQ(files.remove(name).code(), EINVAL) << name;
        EXPECT_EQ(files.removeIfThere(name).code(), EINVAL) << name;
        EXPECT_EQ(files.move(name, "b").code(), EINVAL) << name;
        EXPECT_EQ(files.copyIn(t.store.pathOf("there"), name).code(), EINVAL) << name;
        auto writer = files.writer(name);
        writer.write("x");
        EXPECT_EQ(writer.status().code(), EINVAL) << name;
        EXPECT_EQ(writer.close().code(), EINVAL) << name;
    }
    EXPECT_EQ(files.move("there", "a/b").code(), EINVAL);
    EXPECT_EQ(files.adopt(t.store.pathOf("there"), "../b").code(), EINVAL);
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre("there"));
    EXPECT_THAT(keeper.asked, ElementsAre("there")) << "a bad name is none to be kept";
}

// --- whole files ----------------------------------------------------------------------------

TEST_F(DocumentFilesTest, PutMakesAndReplacesAFile) {
    EXPECT_TRUE(files.put(kTapeFile, "one").ok());
    EXPECT_EQ(t.read(kTapeFile), "one");
    EXPECT_TRUE(files.put(kTapeFile, "").ok());
    EXPECT_EQ(t.read(kTapeFile), "");
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre(kTapeFile));
    EXPECT_EQ(files.path(kTapeFile), t.store.pathOf(kTapeFile));
}

TEST_F(DocumentFilesTest, NoChangeIsWrittenIntoAnInodeThatHasAnotherLink) {
    const auto link = kept + "/link";
    const std::vector<std::function<void()>> changes = {
        [&] { EXPECT_TRUE(files.put(kTapeFile, "new").ok()); },
        [&] {
            auto writer = files.writer(kTapeFile);
            writer.out().write("new");
            EXPECT_TRUE(writer.close().ok());
        },
        [&] { EXPECT_TRUE(files.append(kTapeFile, "new").ok()); },
        [&] { EXPECT_TRUE(files.copyIn(t.store.pathOf("other"), kTapeFile).ok()); },
        [&] { EXPECT_TRUE(files.move("other", kTapeFile).ok()); },
        [&] { EXPECT_TRUE(files.adopt(t.store.pathOf("other"), kTapeFile).ok()); },
        [&] { EXPECT_TRUE(files.remove(kTapeFile).ok()); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        t.write("other", "new");
        t.write(kTapeFile, "old");
        ASSERT_EQ(::link(t.store.pathOf(kTapeFile).c_str(), link.c_str()), 0);
        const auto inode = inodeOf(link);
        changes[i]();
        EXPECT_EQ(readFile(link), "old") << i;
        EXPECT_EQ(inodeOf(link), inode) << i;
        if (t.has(kTapeFile)) {
            EXPECT_NE(inodeOf(t.store.pathOf(kTapeFile)), inode) << i;
            EXPECT_TRUE(t.read(kTapeFile).ends_with("new")) << i;
        }
        EXPECT_FALSE(t.has(kBeside)) << i;
        ASSERT_TRUE(deleteFile(link).ok());
    }
}

TEST_F(DocumentFilesTest, AFailedWriteLeavesTheFormerFileAlone) {
    t.write(kTapeFile, "old");
    const std::string large(200'000, 'x');
    {
        const SmallDisk disk(1000);
        EXPECT_EQ(files.put(kTapeFile, large).code(), EFBIG);
        EXPECT_EQ(files.append(kTapeFile, large).code(), EFBIG);
        EXPECT_EQ(files.append(kOtherTapeFile, large).code(), EFBIG);
        auto writer = files.writer(kTapeFile);
        writer.write(large);
        EXPECT_EQ(writer.status().code(), EFBIG);
        EXPECT_EQ(writer.close().code(), EFBIG);
        EXPECT_EQ(writer.close().code(), EFBIG) << "the status stays";
    }
    EXPECT_EQ(t.read(kTapeFile), "old");
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre(kTapeFile));
    EXPECT_THAT(files.missing(), IsEmpty());
}

TEST_F(DocumentFilesTest, AFailedRenameLeavesNothingNextToTheFile) {
    ASSERT_TRUE(makeFolder(t.store.pathOf(kTapeFile)).ok());
    const auto status = files.put(kTapeFile, "x");
    EXPECT_EQ(status.code(), EISDIR);
    EXPECT_EQ(status.path(), t.store.pathOf(kTapeFile));
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre(kTapeFile));
}

// --- a file written piece by piece ----------------------------------------------------------

TEST_F(DocumentFilesTest, AWriterTakesItsPlaceOnClose) {
    t.write(kTapeFile, "old");
    auto writer = files.writer(kTapeFile);
    writer.write("R-1\\ID:");
    writer.out().write("x;");
    EXPECT_EQ(t.read(kTapeFile), "old");
    EXPECT_TRUE(writer.close().ok());
    EXPECT_EQ(t.read(kTapeFile), "R-1\\ID:x;");
    EXPECT_TRUE(writer.close().ok());
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre(kTapeFile));
}

TEST_F(DocumentFilesTest, AWriterThatIsNotClosedIsDropped) {
    t.write(kTapeFile, "old");
    {
        auto first = files.writer(kTapeFile);
        auto writer = std::move(first);
        writer.write("new");
        (void)writer.out().flush();
        EXPECT_TRUE(t.has(kBeside));
    }
    EXPECT_EQ(t.read(kTapeFile), "old");
    EXPECT_FALSE(t.has(kBeside));
    auto dropped = files.writer(kTapeFile);
    dropped.write("new");
    dropped.drop();
    EXPECT_TRUE(dropped.close().ok());
    EXPECT_EQ(t.read(kTapeFile), "old");
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre(kTapeFile));
}

TEST_F(DocumentFilesTest, AWriterReportsAStoreThatIsGone) {
    ASSERT_TRUE(deleteFolder(t.store.folder()).ok());
    auto writer = files.writer(kTapeFile);
    EXPECT_EQ(writer.status().code(), ENOENT);
    writer.write("x");
    EXPECT_EQ(writer.close().code(), ENOENT);
    ASSERT_TRUE(makeFolder(t.store.folder()).ok());
}

// --- other changes --------------------------------------------------------------------------

TEST_F(DocumentFilesTest, AppendMakesAndExtendsAFile) {
    EXPECT_TRUE(files.append(kTapeFile, "one").ok());
    const auto inode = inodeOf(t.store.pathOf(kTapeFile));
    EXPECT_TRUE(files.append(kTapeFile, "two").ok());
    EXPECT_EQ(t.read(kTapeFile), "onetwo");
    EXPECT_EQ(inodeOf(t.store.pathOf(kTapeFile)), inode) << "nobody else holds the file";
}

TEST_F(DocumentFilesTest, RemoveReportsAFileThatIsNotThere) {
    t.write(kTapeFile, "x");
    EXPECT_TRUE(files.remove(kTapeFile).ok());
    EXPECT_FALSE(t.has(kTapeFile));
    EXPECT_EQ(files.remove(kTapeFile).code(), ENOENT);
    EXPECT_TRUE(files.removeIfThere(kTapeFile).ok());
    t.write(kTapeFile, "x");
    EXPECT_TRUE(files.removeIfThere(kTapeFile).ok());
    EXPECT_FALSE(t.has(kTapeFile));
}

TEST_F(DocumentFilesTest, RemoveAllTakesBracketsAsTheyAre) {
    for (const char* const name : {"[kavu]D1.D1", "kD1.D1", "[kavu]D2.D1"}) {
        t.write(name, "x");
    }
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]D3.D1")).ok());
    files.setKeeper(&keeper);
    EXPECT_TRUE(files.removeAll("[kavu]D*.D*").ok());
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre("[kavu]D3.D1", "kD1.D1"));
    EXPECT_THAT(keeper.asked, ElementsAre("[kavu]D1.D1", "[kavu]D2.D1"));
}

TEST_F(DocumentFilesTest, MoveReplacesTheTarget) {
    t.write("a", "one");
    t.write("b", "two");
    EXPECT_TRUE(files.move("a", "b").ok());
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre("b"));
    EXPECT_EQ(t.read("b"), "one");
    EXPECT_TRUE(files.move("b", "b").ok());
    EXPECT_EQ(t.read("b"), "one");
    EXPECT_EQ(files.move("missing", "b").code(), ENOENT);
    EXPECT_EQ(t.read("b"), "one");
}

TEST_F(DocumentFilesTest, AdoptTakesAFileFromAnotherFolder) {
    writeFile(kept + "/x", "kept");
    EXPECT_TRUE(files.adopt(kept + "/x", kTapeFile).ok());
    EXPECT_EQ(t.read(kTapeFile), "kept");
    EXPECT_FALSE(fileExists(kept + "/x"));
    EXPECT_EQ(files.adopt(kept + "/x", kTapeFile).code(), ENOENT);
    EXPECT_EQ(files.adopt(files.path(kTapeFile), kTapeFile).code(), EEXIST);
    EXPECT_EQ(t.read(kTapeFile), "kept");
}

TEST_F(DocumentFilesTest, AdoptOfALinkToTheSameFileLeavesOneOfThem) {
    t.write(kTapeFile, "same");
    ASSERT_EQ(::link(files.path(kTapeFile).c_str(), (kept + "/x").c_str()), 0);
    EXPECT_TRUE(files.adopt(kept + "/x", kTapeFile).ok());
    EXPECT_EQ(t.read(kTapeFile), "same");
    EXPECT_FALSE(fileExists(kept + "/x"));
}

TEST_F(DocumentFilesTest, CopyInCopiesAFileOfAnySize) {
    const std::string large(700'000, 'x');
    writeFile(kept + "/x", large);
    EXPECT_TRUE(files.copyIn(kept + "/x", kTapeFile).ok());
    EXPECT_EQ(t.read(kTapeFile), large);
    EXPECT_EQ(readFile(kept + "/x"), large);
    EXPECT_TRUE(files.copyIn(files.path(kTapeFile), kTapeFile).ok());
    EXPECT_EQ(t.read(kTapeFile), large);
    EXPECT_EQ(files.copyIn(kept + "/y", kTapeFile).code(), ENOENT);
    EXPECT_EQ(t.read(kTapeFile), large);
}

// --- the keeper -----------------------------------------------------------------------------

TEST_F(DocumentFilesTest, TheKeeperIsAskedBeforeEachChange) {
    writeFile(kept + "/stage", "staged");
    files.setKeeper(nullptr);
    EXPECT_EQ(files.setKeeper(&keeper), nullptr);
    EXPECT_TRUE(files.put("a", "1").ok());
    EXPECT_TRUE(files.append("b", "2").ok());
    {
        auto writer = files.writer("c");
        EXPECT_EQ(keeper.asked.size(), 2u) << "nothing changes before the close";
        EXPECT_TRUE(writer.close().ok());
    }
    EXPECT_TRUE(files.move("a", "d").ok());
    EXPECT_TRUE(files.adopt(kept + "/stage", "e").ok());
    EXPECT_TRUE(files.copyIn(files.path("e"), "f").ok());
    EXPECT_TRUE(files.remove("f").ok());
    EXPECT_TRUE(files.removeIfThere("f").ok());
    EXPECT_THAT(keeper.asked, ElementsAre("a", "b", "c", "a", "d", "e", "f", "f"));
    EXPECT_EQ(files.setKeeper(nullptr), &keeper);
    EXPECT_TRUE(files.put("g", "1").ok());
    EXPECT_EQ(keeper.asked.size(), 8u);
}

TEST_F(DocumentFilesTest, WhatTheKeeperLinksStaysAsItWas) {
    t.write(kTapeFile, "old");
    files.setKeeper(&keeper);
    EXPECT_TRUE(files.append(kTapeFile, "er").ok());
    EXPECT_TRUE(files.append(kTapeFile, "er").ok());
    EXPECT_TRUE(files.put(kTapeFile, "new").ok());
    EXPECT_EQ(readFile(kept + "/" + std::string(kTapeFile)), "old");
    EXPECT_EQ(t.read(kTapeFile), "new");
}

TEST_F(DocumentFilesTest, AKeeperThatFailsStopsTheChange) {
    t.write("a", "old");
    t.write("b", "old");
    files.setKeeper(&keeper);
    keeper.refuses = true;
    EXPECT_EQ(files.put("a", "new").code(), ENOSPC);
    EXPECT_EQ(files.append("a", "new").code(), ENOSPC);
    EXPECT_EQ(files.remove("a").code(), ENOSPC);
    EXPECT_EQ(files.move("a", "b").code(), ENOSPC);
    EXPECT_EQ(files.copyIn(files.path("b"), "a").code(), ENOSPC);
    EXPECT_EQ(files.adopt(files.path("b"), "a").code(), ENOSPC);
    EXPECT_EQ(files.removeAll("*").code(), ENOSPC);
    EXPECT_THAT(namesIn(t.store.folder()), ElementsAre("a", "b"));
    EXPECT_EQ(t.read("a") + t.read("b"), "oldold");
}

// --- files that vanish ----------------------------------------------------------------------

TEST_F(DocumentFilesTest, AGroupFileThatVanishesIsMissing) {
    EXPECT_TRUE(files.put(kTapeFile, "1").ok());
    EXPECT_TRUE(files.append(kGeneralFile, "2").ok());
    EXPECT_TRUE(files.put(kOtherTapeFile, "3").ok());
    EXPECT_THAT(files.missing(), IsEmpty());
    ASSERT_TRUE(deleteFile(t.store.pathOf(kTapeFile)).ok());
    ASSERT_TRUE(deleteFile(t.store.pathOf(kGeneralFile)).ok());
    EXPECT_THAT(files.missing(), ElementsAre(kTapeFile, kGeneralFile));
    EXPECT_TRUE(files.put(kGeneralFile, "2").ok());
    EXPECT_THAT(files.missing(), ElementsAre(kTapeFile));
    EXPECT_EQ(files.remove(kTapeFile).code(), ENOENT);
    EXPECT_THAT(files.missing(), IsEmpty()) << "whoever removes it knows that it is gone";
}

TEST_F(DocumentFilesTest, WhatWasRemovedOrRenamedIsNotMissing) {
    for (const auto name : {kTapeFile, kOtherTapeFile, kGeneralFile}) {
        EXPECT_TRUE(files.put(name, "1").ok());
    }
    EXPECT_TRUE(files.remove(kTapeFile).ok());
    EXPECT_TRUE(files.move(kOtherTapeFile, kTapeFile).ok());
    EXPECT_TRUE(files.removeAll("[kavu]GTMP.*").ok());
    EXPECT_THAT(files.missing(), IsEmpty());
    ASSERT_TRUE(deleteFile(t.store.pathOf(kTapeFile)).ok());
    EXPECT_THAT(files.missing(), ElementsAre(kTapeFile)) << "a file is known by its new name";
}

TEST_F(DocumentFilesTest, OnlyGroupsThatAreSavedAreRemembered) {
    EXPECT_TRUE(files.put(kChunkFile, "1").ok());
    for (const char* const name : {"[kavu]DSRCE.T00", "[kavu]DSRCE.T100"}) {
        EXPECT_TRUE(files.put(name, "1").ok());
        ASSERT_TRUE(deleteFile(t.store.pathOf(name)).ok());
    }
    EXPECT_TRUE(files.put("[kavu]TmpPCMMEASCOM", "1").ok());
    ASSERT_TRUE(deleteFile(t.store.pathOf(kChunkFile)).ok());
    EXPECT_THAT(files.missing(), IsEmpty());
}

TEST_F(DocumentFilesTest, AFileThatCanNotBeReachedIsNotMissing) {
    EXPECT_TRUE(files.put(kTapeFile, "1").ok());
    ASSERT_TRUE(deleteFile(t.store.pathOf(kTapeFile)).ok());
    // A link to itself: what is there can not be known.
    ASSERT_EQ(::symlink(t.store.pathOf(kTapeFile).c_str(), t.store.pathOf(kTapeFile).c_str()), 0);
    EXPECT_THAT(files.missing(), IsEmpty());
}

TEST_F(DocumentFilesTest, ClearForgetsWhatThereWas) {
    files.setKeeper(&keeper);
    EXPECT_TRUE(files.put(kTapeFile, "1").ok());
    EXPECT_TRUE(files.put(kChunkFile, "1").ok());
    keeper.asked.clear();
    files.clear(&t.ui, kLatestEdition);
    EXPECT_THAT(namesIn(t.store.folder()), IsEmpty());
    EXPECT_THAT(files.missing(), IsEmpty());
    EXPECT_THAT(keeper.asked, IsEmpty());
}

// --- scopes and full disks ------------------------------------------------------------------

TEST_F(DocumentFilesTest, OnlyALoadIsLoading) {
    EXPECT_FALSE(files.isLoading());
    {
        const LoadScope load(files);
        const SaveScope save(files);
        EXPECT_TRUE(files.isLoading());
    }
    const SaveScope save(files);
    EXPECT_FALSE(files.isLoading());
}

TEST_F(DocumentFilesTest, AChangeOutsideEveryScopeIsAFault) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    files.demandScopes(true);
    {
        const ChangeScope scope(files);
        EXPECT_TRUE(files.put(kTapeFile, "1").ok());
    }
    EXPECT_DEATH((void)files.put(kTapeFile, "1"), "in no scope");
    EXPECT_DEATH((void)files.remove(kTapeFile), "in no scope");
    files.clear(nullptr, kLatestEdition);
}

/// Makes room once, by lifting the limit.
class Lifter : public RoomMaker {
  public:
    explicit Lifter(std::string ballast) : ballast_(std::move(ballast)) {}
    bool makeRoom() override {
        ++asked;
        return deleteFile(ballast_).ok();
    }
    int asked = 0;

  private:
    std::string ballast_;
};

TEST_F(DocumentFilesTest, AFullDiskIsAskedForRoomUntilThereIsNone) {
    // "/dev/full" is the one file that always answers that the disk is full.
    ASSERT_EQ(::symlink("/dev/full", t.store.pathOf(kBeside).c_str()), 0);
    writeFile(kept + "/ballast", "x");
    Lifter lifter(kept + "/ballast");
    files.setRoomMaker(&lifter);
    EXPECT_EQ(files.put(kTapeFile, "x").code(), ENOSPC);
    EXPECT_EQ(lifter.asked, 2) << "once with success, once without";
    EXPECT_THAT(namesIn(t.store.folder()), IsEmpty());
}

}  // namespace
}  // namespace kavu::test
