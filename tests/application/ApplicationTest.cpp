#include "application/Application.h"
#include "core/WorkingStore.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"
#include "support/TestApplication.h"

namespace kavu::test {
namespace {

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
    const auto& settings = t.application.context().settings;
    EXPECT_EQ(settings.get(setting::kFloatPrecision), 8);
    EXPECT_EQ(settings.get(setting::kSampleRatePrecision), 2);
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

TEST(ApplicationTest, AHomeThatCannotBeWrittenIsARemarkAndSettingsAreHeldInMemory) {
    TempFolder folder;
    RecordingInterface ui;
    const SystemClock clock;
    CountingRandom random;
    writeFile(folder / "file", "in the way");
    Application application(testEnvironment({{"TEMP", folder.path()}, {"HOME", folder / "file"}}),
                            clock, random);
    ASSERT_TRUE(application.startUp(&ui));
    EXPECT_TRUE(ui.boxes.empty());
    ASSERT_EQ(ui.notes.size(), 1U);
    EXPECT_EQ(ui.notes[0], "Settings cannot be stored: '" + (folder / "file") +
                               "': Not a directory. They are held in memory for this run.");
    auto& settings = application.context().settings;
    settings.set(setting::kFloatPrecision, 3);
    EXPECT_EQ(settings.get(setting::kFloatPrecision), 3);
    EXPECT_TRUE(application.shutDown(&ui));
}

TEST(ApplicationTest, WithNeitherTempNorAHomeTheStoreIsWhereEveryoneMayWrite) {
    TempFolder folder;
    writeFile(folder / "file", "in the way");
    const SystemClock clock;
    SystemRandomSource random;
    Application application(testEnvironment({{"HOME", folder / "file"}}), clock, random);
    ASSERT_TRUE(application.startUp(nullptr));
    EXPECT_EQ(folderOf(application.context().store.folder()), "/tmp");
    EXPECT_TRUE(application.shutDown(nullptr));
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

TEST(Application, TheStartOfAnEditorSwitchesAnUnusableDatabaseOff) {
    TestApplication stage;
    auto& settings = stage.application.context().settings;
    const auto path = stage.folder / "my.mdb";
    settings.set(setting::kDatabasePath, path);
    stage.application.checkDatabase(&stage.ui);
    EXPECT_FALSE(stage.ui.hasBox(429));  // it is off
    settings.set(setting::kDatabaseEnabled, true);
    stage.application.checkDatabase(&stage.ui);
    EXPECT_TRUE(stage.ui.hasBox(429) && stage.ui.hasBox(428));
    EXPECT_FALSE(settings.get(setting::kDatabaseEnabled));

    // Faults leave it on.
    settings.set(setting::kDatabaseEnabled, true);
    writeFile(path, "<MeasurementDatabase><Measurement/></MeasurementDatabase>");
    stage.application.checkDatabase(&stage.ui);
    EXPECT_TRUE(settings.get(setting::kDatabaseEnabled));
    EXPECT_EQ(stage.ui.shown.size(), 1U);
}

TEST(Application, WhatIsAddedAutomaticallyIsKeptWhenTheRunEnds) {
    TestApplication stage;
    auto& settings = stage.application.context().settings;
    settings.overrideForThisRun(setting::kDatabaseAddsRoot, 1);
    settings.overrideForThisRun(setting::kDatabaseAddsChildren, 1);
    const auto kept = [&stage](const std::string& line) {
        return readFile(stage.folder / "kavu.ini").find(line) != std::string::npos;
    };
    EXPECT_FALSE(kept("MDBAddRoot=1"));
    EXPECT_TRUE(stage.application.shutDown(nullptr));
    EXPECT_TRUE(kept("MDBAddRoot=1"));
    EXPECT_TRUE(kept("MDBAddChildren=1"));
}

TEST(Application, ADatabaseAtItsDefaultPathThatWasNeverMadeIsNoFault) {
    TestApplication stage;
    auto& settings = stage.application.context().settings;
    EXPECT_EQ(settings.get(setting::kDatabasePath), stage.application.supportFolder() + "kavu.mdb");
    settings.set(setting::kDatabaseEnabled, true);
    stage.application.checkDatabase(&stage.ui);
    EXPECT_TRUE(stage.ui.boxes.empty());
    EXPECT_FALSE(fileExists(stage.application.supportFolder() + "kavu.mdb"));
    EXPECT_TRUE(settings.get(setting::kDatabaseEnabled));
}

}  // namespace
}  // namespace kavu::test
