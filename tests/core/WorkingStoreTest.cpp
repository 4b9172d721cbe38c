#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "support/TestContext.h"

#include <fcntl.h>
#include <random>
#include <set>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

constexpr const char* kQuestion =
    "The temporary directory used by this application already exists. Only one copy of this "
    "application can be running at any one time. Is there another copy of this application "
    "already running?";

class NoRandom : public RandomSource {
  public:
    [[nodiscard]] std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        return std::nullopt;
    }
};

/// The process's file mask, set for a test.
class Mask {
  public:
    explicit Mask(mode_t mask) : former_(::umask(mask)) {}
    Mask(const Mask&) = delete;
    Mask& operator=(const Mask&) = delete;
    ~Mask() { ::umask(former_); }

  private:
    mode_t former_;
};

/// No file or folder can be opened while this lives.
class NoMoreFiles {
  public:
    NoMoreFiles() {
        const int free = ::dup(0);
        ::close(free);
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &former_), 0);
        rlimit none = former_;
        none.rlim_cur = static_cast<rlim_t>(free);
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;
    ~NoMoreFiles() { EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &former_), 0); }

  private:
    rlimit former_{};
};

std::set<std::string> namesIn(const std::string& folder) {
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(listFolder(folder, entries).ok());
    std::set<std::string> names;
    for (const auto& entry : entries) {
        names.insert(entry.name);
    }
    return names;
}

/// Sees which file went between two moments at which the interface could paint.
class DeletionWatcher : public RecordingInterface {
  public:
    explicit DeletionWatcher(std::string folder) : folder_(std::move(folder)) { look(); }

    void yieldToInterface() override { look(); }
    void look() {
        const auto now = namesIn(folder_);
        for (const auto& name : seen_) {
            if (!now.contains(name)) {
                deleted.push_back(name);
            }
        }
        seen_ = now;
    }

    std::vector<std::string> deleted;

  private:
    std::string folder_;
    std::set<std::string> seen_;
};

/// Another program that deletes a file in the moment in which the store is about to.
class Rival : public RecordingInterface {
  public:
    explicit Rival(std::string path) : path_(std::move(path)) {}
    void yieldToInterface() override { (void)deleteFile(path_); }

  private:
    std::string path_;
};

class WorkingStoreTest : public ::testing::Test {
  protected:
    bool activate(WorkingStore& toMake, UserInterface* parent) {
        return toMake.activate(parent, kApplicationName, random);
    }

    TempFolder folder;
    CountingRandom random;
    NoRandom noRandom;
    RecordingInterface ui;
    WorkingStore store{testEnvironment({{"TEMP", folder.path()}})};
};

// --- the folder ----------------------------------------------------------------------------

TEST_F(WorkingStoreTest, NameIsTheApplicationAndAGuidWithoutBraces) {
    ASSERT_TRUE(activate(store, &ui));
    EXPECT_THAT(
        store.folder(),
        MatchesRegex(folder.path() + "/KAVU-9-[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-"
                                     "[0-9A-F]{12}"));
    EXPECT_TRUE(store.active());
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(WorkingStoreTest, WithoutAGuidTheNameIsTheApplicationAlone) {
    ASSERT_TRUE(store.activate(&ui, kApplicationName, noRandom));
    EXPECT_EQ(store.folder(), folder / "KAVU-9");
}

TEST_F(WorkingStoreTest, FolderIsPrivateWhateverTheMaskOfTheUser) {
    const Mask mask(0777);
    ASSERT_TRUE(activate(store, &ui));
    struct stat info {};
    ASSERT_EQ(::stat(store.folder().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0700u);
}

TEST_F(WorkingStoreTest, ASecondStartHasItsOwnFolder) {
    WorkingStore second(testEnvironment({{"TEMP", folder.path()}}));
    ASSERT_TRUE(activate(store, &ui));
    ASSERT_TRUE(activate(second, &ui));
    EXPECT_NE(store.folder(), second.folder());
    EXPECT_TRUE(folderExists(store.folder()));
    EXPECT_TRUE(folderExists(second.folder()));
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(WorkingStoreTest, ActivatingTwiceKeepsTheFolder) {
    ASSERT_TRUE(activate(store, &ui));
    const auto first = store.folder();
    ASSERT_TRUE(activate(store, &ui));
    EXPECT_EQ(store.folder(), first);
    EXPECT_EQ(namesIn(folder.path()).size(), 1u);
}

TEST_F(WorkingStoreTest, AFolderThatIsThereAsksAndYesEndsTheStart) {
    ASSERT_TRUE(makeFolder(folder / "KAVU-9").ok());
    ui.queued = {Button::Yes};
    EXPECT_FALSE(store.activate(&ui, kApplicationName, noRandom));
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[0].text, kQuestion);
    EXPECT_EQ(ui.boxes[0].title, "WARNING: Temporary Directory Already Exists");
    EXPECT_EQ(ui.boxes[0].buttons, Buttons::YesNo);
    EXPECT_EQ(ui.boxes[1].text,
              "This application cannot run until all other copies have terminated.");
    EXPECT_FALSE(store.active());
    EXPECT_TRUE(folderExists(folder / "KAVU-9"));
}

TEST_F(WorkingStoreTest, AFolderThatIsThereIsUsedOnNo) {
    ASSERT_TRUE(makeFolder(folder / "KAVU-9").ok());
    ui.queued = {Button::No};
    EXPECT_TRUE(store.activate(&ui, kApplicationName, noRandom));
    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(store.folder(), folder / "KAVU-9");
}

TEST_F(WorkingStoreTest, AFolderThatIsThereIsNotSharedWithoutAParent) {
    ASSERT_TRUE(makeFolder(folder / "KAVU-9").ok());
    EXPECT_FALSE(store.activate(nullptr, kApplicationName, noRandom));
    EXPECT_FALSE(store.active());
}

TEST_F(WorkingStoreTest, AFolderThatCanNotBeMadeIsToldWithTheReason) {
    writeFile(folder / "file", "x");
    const std::pair<std::string, std::string> roots[] = {
        {folder / "missing", "No such file or directory"},
        {folder / "missing/below", "No such file or directory"},
        {folder / "file", "Not a directory"},
        {folder / std::string(300, 'a'), "File name too long"},
    };
    for (const auto& [root, reason] : roots) {
        RecordingInterface told;
        WorkingStore bad(testEnvironment({{"TEMP", root}}));
        EXPECT_FALSE(bad.activate(&told, kApplicationName, noRandom)) << root;
        ASSERT_EQ(told.boxes.size(), 1u) << root;
        EXPECT_EQ(told.boxes[0].title, "Unable To Start Application");
        EXPECT_EQ(told.boxes[0].text,
                  "Error: Unable to create temporary directory '" + root +
                      "/KAVU-9'. This software can not continue.\n\nThis software creates several "
                      "folders and files within the location where the software was installed. "
                      "Please make sure you have permissions to create files and folders in the "
                      "location where this software was installed.\n\nReason: " +
                      reason);
        EXPECT_FALSE(bad.active());
        EXPECT_FALSE(folderExists(root));
        EXPECT_FALSE(bad.activate(nullptr, kApplicationName, noRandom));
    }
}

TEST_F(WorkingStoreTest, TemporaryRootIsTempThenTmpdir) {
    const auto rootOf = [](const std::map<std::string, std::string>& variables) {
        return WorkingStore(testEnvironment(variables)).temporaryRoot();
    };
    EXPECT_EQ(rootOf({{"TEMP", "/a"}, {"TMPDIR", "/b"}}), "/a");
    EXPECT_EQ(rootOf({{"TMPDIR", "/b"}, {"HOME", "/h"}}), "/b");
    EXPECT_EQ(rootOf({{"TEMP", "/a/"}}), "/a");
    EXPECT_EQ(rootOf({{"TEMP", "/"}}), "/");
}

TEST_F(WorkingStoreTest, WithTempUnsetTheStoreLiesBesideTheSettings) {
    const auto environment = testEnvironment({{"AppData", folder / "new/data"}});
    WorkingStore beside(environment);
    ASSERT_TRUE(activate(beside, &ui));
    EXPECT_THAT(beside.folder(), StartsWith(folder / "new/data/KAVU-9-"));
    EXPECT_THAT(beside.folder(), EndsWith("-000000000000"));
    EXPECT_EQ(folderOf(beside.folder()) + "/KavuSupportFiles/",
              supportFolderPath(environment, kSupportFolderName, environment.userName, true));
    EXPECT_TRUE(folderExists(beside.folder()));
}

TEST_F(WorkingStoreTest, UserNameIsNoPartOfThePathOfALocalRun) {
    const auto environment = testEnvironment({{"HOME", "/h"}});
    EXPECT_EQ(WorkingStore(environment).temporaryRoot().find("tester"), std::string::npos);
    EXPECT_EQ(supportFolderPath(environment, kSupportFolderName, "tester", true).find("tester"),
              std::string::npos);
}

TEST_F(WorkingStoreTest, ALivingStoreIsLockedAndAnAbandonedOneIsNot) {
    const auto isLocked = [](const std::string& path) {
        const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
        EXPECT_GE(descriptor, 0);
        const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
        ::close(descriptor);
        return locked;
    };
    std::string path;
    {
        WorkingStore other(testEnvironment({{"TEMP", folder.path()}}));
        ASSERT_TRUE(activate(other, &ui));
        path = other.folder();
        EXPECT_TRUE(isLocked(path));
    }
    ASSERT_TRUE(folderExists(path)) << "only the exit of the program deletes the folder";
    EXPECT_FALSE(isLocked(path));
}

TEST_F(WorkingStoreTest, DeactivatingDeletesTheFolderWithAllItHolds) {
    ASSERT_TRUE(activate(store, &ui));
    const auto path = store.folder();
    writeFile(folder / "outside", "kept");
    ASSERT_TRUE(makeFolders(path + "/EuDefinitions/deeper").ok());
    writeFile(path + "/EuDefinitions/deeper/file", "x");
    writeFile(path + "/[kavu]GTMP.G", "x");
    ASSERT_EQ(::symlink(folder.path().c_str(), (path + "/link").c_str()), 0);
    store.deactivate(&ui);
    EXPECT_FALSE(fileExists(path));
    EXPECT_EQ(store.folder(), "");
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(readFile(folder / "outside"), "kept") << "a link is deleted, not followed";
    store.deactivate(&ui);
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(WorkingStoreTest, AFolderThatCanNotBeRemovedIsTold) {
    ASSERT_TRUE(activate(store, &ui));
    const auto path = store.folder();
    ASSERT_TRUE(deleteFolder(path).ok());
    store.deactivate(&ui);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].title, "ERROR: Unable To Delete Folder");
    EXPECT_EQ(ui.boxes[0].text, "Unable to delete: " + path + "\n\nNo such file or directory");
    EXPECT_FALSE(store.active());
}

// --- names ---------------------------------------------------------------------------------

TEST_F(WorkingStoreTest, PathsAreTheFolderAndTheFormattedName) {
    EXPECT_EQ(store.path("[kavu]DSRCE.T%2.2d", 7), "./[kavu]DSRCE.T07")
        << "an inactive store counts as the current folder";
    ASSERT_TRUE(activate(store, &ui));
    EXPECT_EQ(store.path("[kavu]DSRCE.T%2.2d", 7), store.folder() + "/[kavu]DSRCE.T07");
    EXPECT_EQ(store.path(working::kChunkFormat, 12), store.folder() + "/[kavu]00000012.C_O");
    EXPECT_EQ(store.path("[kavu]%s.C_COM", "A%d"), store.folder() + "/[kavu]A%d.C_COM");
    EXPECT_EQ(store.pathOf("100%d"), store.folder() + "/100%d");
    EXPECT_FALSE(store.exists("[kavu]DSRCE.T%2.2d", 7));
    writeFile(store.path("[kavu]DSRCE.T%2.2d", 7), "");
    EXPECT_TRUE(store.exists("[kavu]DSRCE.T%2.2d", 7));
}

// --- deleting ------------------------------------------------------------------------------

class StoreFilesTest : public WorkingStoreTest {
  protected:
    void SetUp() override { ASSERT_TRUE(activate(store, &ui)); }
    void make(const std::vector<std::string>& names) {
        for (const auto& name : names) {
            writeFile(store.pathOf(name), "x");
        }
    }
    [[nodiscard]] std::set<std::string> left() const { return namesIn(store.folder()); }
};

TEST_F(StoreFilesTest, BracketsInWildcardsArePlainCharacters) {
    make({"[kavu]D1.D1", "[kavu]DSMF0000.D01", "kD1.D1", "aD1.D1", "[kavu]d1.d1", "D1.D1"});
    EXPECT_TRUE(store.deleteFiles(&ui, "[kavu]D*.D*"));
    EXPECT_THAT(left(), ElementsAre("D1.D1", "[kavu]d1.d1", "aD1.D1", "kD1.D1"));
}

TEST_F(StoreFilesTest, OnlyTheStarIsAWildcard) {
    make({"a?c", "abc", "a[b]c"});
    EXPECT_TRUE(store.deleteFiles(&ui, "a?c"));
    EXPECT_TRUE(store.deleteFiles(&ui, "a[b]*"));
    EXPECT_TRUE(store.deleteFiles(&ui, "missing"));
    EXPECT_TRUE(store.deleteFiles(&ui, "missing*"));
    EXPECT_THAT(left(), ElementsAre("abc"));
}

TEST_F(StoreFilesTest, FoldersThatMatchAreNotDeleted) {
    make({"x1"});
    ASSERT_TRUE(makeFolder(store.pathOf("x2")).ok());
    EXPECT_TRUE(store.deleteFiles(&ui, "x*"));
    EXPECT_TRUE(store.deleteFiles(&ui, "x2"));
    EXPECT_THAT(left(), ElementsAre("x2"));
}

TEST_F(StoreFilesTest, AFailedDeleteIsToldAndTheScanGoesOn) {
    make({"x1", "x2", "x3"});
    Rival rival(store.pathOf("x2"));
    EXPECT_FALSE(store.deleteFiles(&rival, "x*"));
    ASSERT_EQ(rival.boxes.size(), 1u);
    EXPECT_EQ(rival.boxes[0].title, "ERROR: Unable To Delete File");
    EXPECT_EQ(rival.boxes[0].text,
              "Unable to delete: " + store.pathOf("x2") + "\n\nNo such file or directory");
    EXPECT_TRUE(left().empty());
}

TEST_F(StoreFilesTest, AFolderThatCanNotBeListedIsAFailure) {
    ASSERT_TRUE(deleteFolder(store.folder()).ok());
    EXPECT_FALSE(store.deleteFiles(nullptr, "x*"));
    EXPECT_FALSE(store.deleteFiles(&ui, "x*"));
    EXPECT_THAT(ui.boxes.at(0).text, HasSubstr("No such file or directory"));
}

TEST_F(StoreFilesTest, CloseDeletesInItsOldOrder) {
    make({"[kavu]GTMP.G",
          "KAVU9TMP.TMP",
          "Kavu9Report.txt",
          "Kavu9Report.xml",
          "[kavu]MULTIPLX.TMP",
          "DATA1.TMP",
          "DATA2.TMP",
          "1553.TMP",
          "1553.INI",
          "1553Term.ini",
          "[kavu]TmpPCMMEASCOM",
          "[kavu]H.HHH",
          "SGROUP.TMP",
          "[kavu]TmpPCMFMT.MFF",
          "[kavu]TmpPCMFMT.FFI",
          "[kavu]TmpPCMFMT.ALTTAG",
          "[kavu]DSRCE.T01",
          "[kavu]DSRCE.R01",
          "[kavu]MULT.M01",
          "[kavu]V.V01",
          "[kavu]DSRCE.T99",
          "[kavu]PCMFMT.P01",
          "[kavu]PCMMEAS.D01",
          "[kavu]PCMS.S01",
          "[kavu]D00000000.D01",
          "[kavu]D00000001.D01",
          "[kavu]PCM1553.B01",
          "[kavu]PCMPAM.A01",
          "[kavu]PCMFMT.P99"});
    DeletionWatcher watcher(store.folder());
    store.clearDocumentFiles(&watcher);
    watcher.look();
    EXPECT_THAT(watcher.deleted,
                ElementsAre("[kavu]GTMP.G", "KAVU9TMP.TMP", "Kavu9Report.txt", "Kavu9Report.xml",
                            "[kavu]MULTIPLX.TMP", "DATA1.TMP", "DATA2.TMP", "1553.TMP", "1553.INI",
                            "1553Term.ini", "[kavu]TmpPCMMEASCOM", "[kavu]H.HHH", "SGROUP.TMP",
                            "[kavu]TmpPCMFMT.MFF", "[kavu]TmpPCMFMT.FFI", "[kavu]TmpPCMFMT.ALTTAG",
                            "[kavu]DSRCE.T01", "[kavu]DSRCE.R01", "[kavu]MULT.M01", "[kavu]V.V01",
                            "[kavu]DSRCE.T99", "[kavu]PCMFMT.P01", "[kavu]PCMMEAS.D01",
                            "[kavu]PCMS.S01", "[kavu]D00000000.D01", "[kavu]D00000001.D01",
                            "[kavu]PCM1553.B01", "[kavu]PCMPAM.A01", "[kavu]PCMFMT.P99"));
    EXPECT_TRUE(left().empty());
}

TEST_F(StoreFilesTest, CloseDeletesTheFilesOfTheWildcardsAndTheCopies) {
    make({"[kavu]00000000.C_O", "[kavu]00023999.C_O", "[kavu]A B.C_COM", "[kavu]A B.C_COMtmp",
          "[kavu]DSMF0000.D03", "[kavu]DTAG0000.D03", "[kavu]D00000005.D03", "[kavu]D00000000.D120",
          "somebody's notes.txt"});
    ASSERT_TRUE(makeFolder(store.pathOf("EuDefinitions")).ok());
    make({"EuDefinitions/[kavu]00000000.C_O"});
    store.clearDocumentFiles(&ui);
    EXPECT_THAT(left(), ElementsAre("somebody's notes.txt"));
}

TEST_F(StoreFilesTest, CopiesBehindALinkAreNotOurs) {
    ASSERT_TRUE(makeFolder(folder / "elsewhere").ok());
    writeFile(folder / "elsewhere/file", "kept");
    ASSERT_EQ(
        ::symlink((folder / "elsewhere").c_str(), store.pathOf(working::kEuDefinitions).c_str()),
        0);
    store.clearDocumentFiles(&ui);
    EXPECT_EQ(readFile(folder / "elsewhere/file"), "kept");
}

TEST_F(StoreFilesTest, CloseTellsItsStepsAndClearsThem) {
    store.clearDocumentFiles(&ui);
    EXPECT_THAT(ui.statusTexts, ElementsAre("Deleting all data source temporary files",
                                            "Deleting all data link temporary files", ""));
    ASSERT_EQ(ui.bars.size(), 199u);
    EXPECT_NEAR(ui.bars[0], 0.5050505, 1e-7);
    EXPECT_NEAR(ui.bars[98], 50, 1e-9);
    EXPECT_NEAR(ui.bars[197], 100, 1e-9);
    EXPECT_EQ(ui.bars[198], -1);
}

TEST_F(StoreFilesTest, FilesOfAnyIndexGoAtClose) {
    make({"[kavu]DSRCE.T100", "[kavu]DSRCE.T00", "[kavu]PCMFMT.P100", "[kavu]PCMMEAS.D12345",
          "[kavu]DSRCE.T01.new", "DSRCE.T100"});
    store.clearDocumentFiles(&ui);
    EXPECT_THAT(left(), ElementsAre("DSRCE.T100"));
    const auto path = store.folder();
    store.deactivate(&ui);
    EXPECT_FALSE(fileExists(path));
}

TEST_F(StoreFilesTest, SFilesOfADocumentOf2004AreLeftToTheExit) {
    make({"[kavu]PCMS.S01", "[kavu]PCMFMT.P01"});
    store.clearDocumentFiles(&ui, 2004);
    EXPECT_THAT(left(), ElementsAre("[kavu]PCMS.S01"));
    store.clearDocumentFiles(&ui, 2005);
    EXPECT_TRUE(left().empty());
}

TEST(WorkingStoreDocumentTest, SFilesThatAnOldDocumentLeftDoNotJoinTheNext) {
    TestContext t;
    t.write("[kavu]PCMS.S01", "S-1\\DLN:left;\r\n");
    const auto path = t.folder / "in.tma";
    writeFile(path, "S-1\\DLN:own;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_EQ(t.read("[kavu]PCMS.S01"), "S-1\\DLN:own;\r\n");
}

TEST(WorkingStoreDocumentTest, GroupsOfAnIndexThatIsNotSavedDoNotJoinTheNextDocument) {
    TestContext t;
    const auto path = t.folder / "in.tma";
    writeFile(path, "T-0\\ID:one;T-100\\ID:one;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_EQ(t.read("[kavu]DSRCE.T00"), "T-0\\ID:one;\r\n");
    writeFile(path, "T-0\\ID:two;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_EQ(t.read("[kavu]DSRCE.T00"), "T-0\\ID:two;\r\n");
    EXPECT_FALSE(t.has("[kavu]DSRCE.T100"));
}

TEST_F(StoreFilesTest, AFailedDeleteAtCloseIsToldAndStopsNothing) {
    make({"DATA1.TMP", "DATA2.TMP"});
    Rival rival(store.pathOf("DATA1.TMP"));
    store.clearDocumentFiles(&rival);
    ASSERT_EQ(rival.boxes.size(), 1u);
    EXPECT_THAT(rival.boxes[0].text, StartsWith("Unable to delete: " + store.pathOf("DATA1.TMP")));
    EXPECT_TRUE(left().empty());
}

TEST_F(StoreFilesTest, AStoreThatCanNotBeListedIsToldAndItsGroupsGoByName) {
    make({"[kavu]GTMP.G", "[kavu]DSRCE.T99", "[kavu]D00000000.D01", "other"});
    // The sanitizer of virtual calls opens a pipe at its first look at a class; after that it
    // remembers the answer.
    showBox(&ui, "", "", Icon::None);
    ui.boxes.clear();
    {
        const NoMoreFiles none;
        store.clearDocumentFiles(&ui);
    }
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text, "Unable to delete: " + store.folder() + "\n\nToo many open files");
    EXPECT_THAT(left(), ElementsAre("other"));
}

TEST_F(StoreFilesTest, AStoreThatHasVanishedIsToldAtClose) {
    const auto path = store.folder();
    ASSERT_TRUE(deleteFolder(path).ok());
    store.clearDocumentFiles(&ui);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text, "Unable to delete: " + path + "\n\nNo such file or directory");
    EXPECT_EQ(ui.statusTexts.back(), "") << "the steps are done all the same";
}

TEST_F(StoreFilesTest, CloseIsSilentWithoutAParent) {
    make({"[kavu]GTMP.G", "[kavu]00000000.C_O"});
    store.clearDocumentFiles(nullptr);
    EXPECT_TRUE(left().empty());
    store.deactivate(nullptr);
    store.clearDocumentFiles(nullptr);
    EXPECT_FALSE(store.active());
}

TEST_F(StoreFilesTest, StartCleansAStoreThatWasFoundToExist) {
    make({"[kavu]GTMP.G", "[kavu]PCMS.S01", "[kavu]00000000.C_O", "1553.INI"});
    store.verifyNoDocumentFiles(&ui);
    EXPECT_TRUE(left().empty());
    EXPECT_TRUE(ui.statusTexts.empty());
    EXPECT_TRUE(ui.bars.empty());
}

TEST_F(StoreFilesTest, StartLeavesTheBusScratchFile) {
    make({"1553.TMP"});
    store.verifyNoDocumentFiles(&ui);
    EXPECT_THAT(left(), ElementsAre("1553.TMP"));
}

// --- safe file names -----------------------------------------------------------------------

TEST(SafeFileNameTest, OrdinaryNamesStayReadable) {
    for (const char* const name : {"ALT", "alt", "N2_SPEED", "A-1+B.2", "#1@$&=,(x)", "Temp (C)",
                                   "a b", "1", "Höhe", "[x]{y}", "Œil"}) {
        EXPECT_EQ(safeFileName(name), name);
    }
}

TEST(SafeFileNameTest, OtherBytesBecomeTheirNumbers) {
    using namespace std::string_literals;
    const std::pair<std::string, const char*> rows[] = {
        {"."s, "%2E"},
        {".."s, "%2E%2E"},
        {"..."s, "%2E.%2E"},
        {".x"s, "%2Ex"},
        {"x."s, "x%2E"},
        {" x "s, "%20x%20"},
        {"a/b"s, "a%2Fb"},
        {"../../etc/passwd"s, "%2E.%2F..%2Fetc%2Fpasswd"},
        {"a\0b"s, "a%00b"},
        {"a\x14\x15"s, "a%14%15"},
        {"\x7F"s, "%7F"},
        {"*?%"s, "%2A%3F%25"},
        {"\\:\"<>|"s, "%5C%3A%22%3C%3E%7C"},
        {"a;b`"s, "a%3Bb%60"},
        {"%2E"s, "%252E"},
        {"H\xF6he"s, "H%F6he"},
        {"\xC3"s, "%C3"},
        {""s, ""},
    };
    for (const auto& [name, safe] : rows) {
        EXPECT_EQ(safeFileName(name), safe) << ::testing::PrintToString(name);
    }
}

TEST(SafeFileNameTest, NamesThatDifferOnlyInCaseStayTwo) {
    EXPECT_NE(safeFileName("ALT"), safeFileName("Alt"));
    EXPECT_NE(safeFileName("%2e"), safeFileName("%2E"));
}

/// The name that a safe name was made from.
std::string nameOf(const std::string& safe) {
    std::string name;
    for (std::size_t i = 0; i < safe.size(); ++i) {
        if (safe[i] != '%') {
            name.push_back(safe[i]);
            continue;
        }
        name.push_back(static_cast<char>(std::stoi(safe.substr(i + 1, 2), nullptr, 16)));
        i += 2;
    }
    return name;
}

TEST(SafeFileNameTest, NoNameLeavesTheFolderOrEqualsAnothers) {
    std::mt19937 random(7);  // the same names in every run
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(0, 32);
    for (int i = 0; i < 20000; ++i) {
        std::string name(length(random), ' ');
        for (char& c : name) {
            c = static_cast<char>(byte(random));
        }
        const auto safe = safeFileName(name);
        ASSERT_EQ(nameOf(safe), name) << "a name that can be had back is nobody else's";
        ASSERT_EQ(safe.find('/'), std::string::npos);
        ASSERT_EQ(safe.find('\0'), std::string::npos);
        ASSERT_FALSE(safe.starts_with('.'));
        ASSERT_LE(formatPrintf("[kavu]%s.C_COMtmp", safe).size(), 255u);
    }
}

TEST(SafeFileNameTest, ThirtyTwoBytesOfAnythingMakeAFile) {
    TestContext t;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string name(32, static_cast<char>(byte));
        const auto path = t.store.path("[kavu]%s.C_COMtmp", safeFileName(name));
        writeFile(path, name);
        EXPECT_EQ(readFile(path), name);
        EXPECT_EQ(folderOf(path), t.store.folder());
    }
    EXPECT_EQ(namesIn(t.store.folder()).size(), 256u);
}

}  // namespace
}  // namespace kavu::test
