#include "application/Application.h"
#include "application/Recovery.h"
#include "core/OpenDocument.h"
#include "support/TestContext.h"

namespace kavu::test {
namespace {

/// An application in a folder of its own.
struct TestApplication {
    TestApplication()
        : application(testEnvironment({{"TEMP", temp()}, {"HOME", folder.path()}}), clock, random,
                      folder / "kavu.ini") {
        EXPECT_TRUE(application.startUp(&ui));
    }
    ~TestApplication() { application.shutDown(nullptr); }
    std::string temp() {
        EXPECT_TRUE(makeFolder(folder / "temp").ok());
        return folder / "temp";
    }

    TempFolder folder;
    RecordingInterface ui;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random;
    Application application;
};

class RecoveryTest : public ::testing::Test {
  protected:
    RecoveryTest() { EXPECT_TRUE(makeFolder(store_).ok()); }
    void crashed(const std::string& name, std::string_view bytes) {
        writeFile(store_ + "/" + name, bytes);
    }
    std::string recover() {
        const auto out = t.folder / "out.tma";
        EXPECT_TRUE(recoverStore(t.application, &t.ui, store_, out));
        return readFile(out);
    }

    TestApplication t;
    std::string store_ = t.folder / "crashed";
};

TEST_F(RecoveryTest, JoinsTheGroupFilesThatWereSplit) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\nG\\PN:A;\r\n");
    crashed("[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\n");
    crashed("[kavu]00000000.C_O", "[M1]\r\nMN1=text\r\nDCT=NON\r\n");
    const auto text = recover();
    EXPECT_NE(text.find("G\\106:05;\r\nG\\PN:A;\r\nP-1\\DLN:L;\r\nC-1\\DCN:M1;\r\n"),
              std::string::npos);
    EXPECT_NE(text.find("C-1\\MN1:text;\r\n"), std::string::npos);
    EXPECT_EQ(t.application.context().document.version, 2005);
}

TEST_F(RecoveryTest, ConvertsConversionsThatWereStillRaw) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\n");
    crashed("DATA1.TMP", "C-1\\DCN:M1;\r\nC-1\\MN1:one;\r\nC-2\\DCN:M2;\r\nC-2\\MN1:two;\r\n");
    // The crash came while they were moved into a chunk.
    crashed("[kavu]00000000.C_O", "C-1\\DCN:M1;\r\nC-1\\MN1:one;\r\n");
    const auto text = recover();
    EXPECT_NE(text.find("C-1\\DCN:M1;\r\n"), std::string::npos);
    EXPECT_NE(text.find("C-1\\MN1:one;\r\n"), std::string::npos);
    EXPECT_NE(text.find("C-2\\DCN:M2;\r\n"), std::string::npos);
    EXPECT_EQ(text.find("C-3\\"), std::string::npos);
    EXPECT_TRUE(t.ui.logs.empty());
}

TEST_F(RecoveryTest, TakesTheCommandsAndNotTheRecordsOfALoadThatDidNotEnd) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\n");
    crashed("[kavu]00000000.C_O", "[Kept]\r\nMN1=kept\r\n");
    // The crash came while these were made into the chunks from number 1 on.
    crashed("[kavu]00000001.C_RAW", "C-1\\DCN:M1;\r\nC-1\\MN1:one;\r\nC-30\\DCN:M2;\r\n");
    crashed("[kavu]00000001.C_O", "[M1]\r\nMN1=one\r\n");
    crashed("DATA1.TMP", "[1]\r\nMN1=one\r\n");
    const auto text = recover();
    EXPECT_NE(text.find("C-1\\DCN:Kept;\r\n"), std::string::npos);
    EXPECT_NE(text.find("C-2\\DCN:M1;\r\n"), std::string::npos);
    EXPECT_NE(text.find("C-3\\DCN:M2;\r\n"), std::string::npos);
    EXPECT_EQ(text.find("C-4\\"), std::string::npos);
}

TEST_F(RecoveryTest, ChangesNothingInTheStore) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\n");
    crashed("DATA1.TMP", "C-1\\DCN:M1;\r\n");
    recover();
    EXPECT_EQ(readFile(store_ + "/[kavu]GTMP.G"), "G\\106:09;\r\n");
    EXPECT_EQ(readFile(store_ + "/DATA1.TMP"), "C-1\\DCN:M1;\r\n");
    std::vector<FolderEntry> entries;
    ASSERT_TRUE(listFolder(store_, entries).ok());
    EXPECT_EQ(entries.size(), 2u);
}

TEST_F(RecoveryTest, LeavesHalfWrittenScratchFilesAndLinksOut) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:A;\r\n");
    crashed("[kavu]GTMP.Gtmp", "G\\106:05;\r\n");
    crashed("secret", "G\\PN:SECRET;\r\n");
    std::filesystem::create_symlink(store_ + "/secret", store_ + "/[kavu]PCMFMT.P01");
    const auto text = recover();
    EXPECT_EQ(text.find("SECRET"), std::string::npos);
    EXPECT_NE(text.find("G\\PN:A;"), std::string::npos);
}

TEST_F(RecoveryTest, ACommandThatTheCrashCutOffIsRemarked) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:A;\r\nG\\TA:hal");
    const auto text = recover();
    EXPECT_EQ(text.find("G\\TA"), std::string::npos);
    ASSERT_FALSE(t.ui.notes.empty());
    EXPECT_NE(t.ui.notes.back().find("cut off"), std::string::npos);
}

TEST_F(RecoveryTest, AFolderWithoutADocumentIsRefused) {
    EXPECT_FALSE(recoverStore(t.application, &t.ui, store_, t.folder / "out.tma"));
    EXPECT_TRUE(t.ui.hasText("holds no files of a TMATS document"));
    EXPECT_FALSE(recoverStore(t.application, &t.ui, store_ + "/none", t.folder / "out.tma"));
    EXPECT_TRUE(t.ui.hasText("No such file or directory"));
    EXPECT_FALSE(fileExists(t.folder / "out.tma"));
}

TEST_F(RecoveryTest, AStoreInUseIsNotAbandoned) {
    const auto temp = t.folder / "temp";
    EXPECT_TRUE(findAbandonedStores(temp).empty());
    ASSERT_TRUE(makeFolder(temp + "/KAVU-9-OLD").ok());
    ASSERT_TRUE(makeFolder(temp + "/OTHER").ok());
    const auto stores = findAbandonedStores(temp);
    ASSERT_EQ(stores.size(), 1u);
    EXPECT_EQ(stores[0].folder, temp + "/KAVU-9-OLD");
    EXPECT_TRUE(findAbandonedStores(t.folder / "none").empty());
}

TEST(ApplicationTest, SecondStartGetsItsOwnWorkingStore) {
    TestApplication first;
    CountingRandom random;
    (void)random.bytes16();
    Application second(
        testEnvironment({{"TEMP", first.folder / "temp"}, {"HOME", first.folder.path()}}),
        first.clock, random, first.folder / "kavu.ini");
    ASSERT_TRUE(second.startUp(&first.ui));
    EXPECT_NE(second.context().store.folder(), first.application.context().store.folder());
    EXPECT_TRUE(second.shutDown(nullptr));
    EXPECT_TRUE(first.ui.boxes.empty());
}

TEST(ApplicationTest, ExitWithAnOpenDocumentAndCancelLeavesItRunning) {
    TestApplication t;
    writeFile(t.folder / "a.tma", "G\\PN:A;");
    ASSERT_TRUE(loadDocument(t.application.context(), &t.ui, t.folder / "a.tma"));
    t.application.context().document.changed = true;
    t.ui.byId[76] = Button::Cancel;
    EXPECT_FALSE(t.application.shutDown(&t.ui));
    EXPECT_TRUE(t.application.context().document.open);
    EXPECT_TRUE(folderExists(t.application.context().store.folder()));
    t.ui.byId[76] = Button::No;
    EXPECT_TRUE(t.application.shutDown(&t.ui));
    EXPECT_TRUE(t.application.shutDown(&t.ui));
}

TEST(ApplicationTest, StartReadsTheSettingsAndRepairsTheVersionKeys) {
    TestApplication t;
    EXPECT_EQ(t.application.held().floatPrecision, 8);
    EXPECT_EQ(t.application.held().sampleRatePrecision, 2);
    const auto ini = readFile(t.folder / "kavu.ini");
    EXPECT_NE(ini.find("IRIGInputVersion=2011"), std::string::npos);
    EXPECT_NE(ini.find("kavu.mdb"), std::string::npos);
}

TEST(ApplicationTest, WithNoSettingsFileGivenTheSupportFolderHoldsIt) {
    TempFolder folder;
    RecordingInterface ui;
    const SystemClock clock;
    CountingRandom random;
    Application application(
        testEnvironment({{"TEMP", folder.path()}, {"AppData", folder / "data"}}), clock, random);
    ASSERT_TRUE(application.startUp(&ui));
    EXPECT_EQ(application.supportFolder(), folder / "data/KavuSupportFiles/");
    EXPECT_TRUE(fileExists(folder / "data/KavuSupportFiles/kavu.ini"));
    EXPECT_TRUE(application.shutDown(&ui));
}

TEST(ApplicationTest, WelcomeTextIsLookedForInTheFolderOfAllUsersThenBesideTheProgram) {
    TempFolder folder;
    const SystemClock clock;
    CountingRandom random;
    const auto environment = testEnvironment(
        {{"TEMP", folder.path()}, {"AppData", folder.path()}, {"ALLUSERSPROFILE", folder / "all"}},
        folder.path());
    Application application(environment, clock, random, folder / "kavu.ini");
    EXPECT_EQ(application.welcomeText(), "");
    writeFile(folder / "welcome.txt", "hello");
    EXPECT_EQ(application.welcomeText(), "hello");
    ASSERT_TRUE(makeFolders(folder / "all/Application Data/KavuSupportFiles").ok());
    writeFile(folder / "all/Application Data/KavuSupportFiles/welcome.txt", "all users");
    EXPECT_EQ(application.welcomeText(), "all users");
    writeFile(folder / "all/Application Data/KavuSupportFiles/welcome.txt", " \n ");
    EXPECT_EQ(application.welcomeText(), "");
}

TEST(ApplicationTest, RecentFilesAreOnlyKeptWhereAskedFor) {
    TestApplication t;
    writeFile(t.folder / "a.tma", "G\\PN:A;");
    ASSERT_TRUE(loadDocument(t.application.context(), &t.ui, t.folder / "a.tma"));
    EXPECT_EQ(readFile(t.folder / "kavu.ini").find("KAVU_Opened_Files"), std::string::npos);
    t.application.keepRecentFiles();
    ASSERT_TRUE(loadDocument(t.application.context(), &t.ui, t.folder / "a.tma"));
    EXPECT_NE(readFile(t.folder / "kavu.ini").find("[KAVU_Opened_Files]"), std::string::npos);
}

}  // namespace
}  // namespace kavu::test
