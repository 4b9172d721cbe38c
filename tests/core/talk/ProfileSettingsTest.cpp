#include "core/talk/ProfileSettings.h"
#include "support/TestContext.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace kavu::test {
namespace {

class ProfileSettingsTest : public ::testing::Test {
  protected:
    /// Another process writes the file.
    void writeElsewhere(std::string_view bytes) {
        const auto beside = folder_ / "other";
        writeFile(beside, bytes);
        ASSERT_TRUE(renameFile(beside, path_).ok());
    }

    TempFolder folder_;
    std::string path_ = folder_ / "kavu.ini";
};

TEST_F(ProfileSettingsTest, WithoutAFileEveryKeyHasItsDefaultAndBackupsAreOn) {
    const ProfileSettings settings(path_);
    EXPECT_EQ(settings.integer("CreateBackup", 1), 1);
    EXPECT_EQ(settings.integer("FloatPrecision", 8), 8);
    EXPECT_EQ(settings.text("MDB"), "");
    EXPECT_EQ(settings.text("PTF", "ONE"), "ONE");
    EXPECT_EQ(settings.profileInteger("PropSheet", "LastEuPage", 1), 1);
    EXPECT_TRUE(settings.profileKeys("EUComment").empty());
    EXPECT_FALSE(fileExists(path_)) << "reading must not make the file";
}

TEST_F(ProfileSettingsTest, TextInAnIntegerKeyReadsAsZero) {
    writeFile(path_, "[KAVU-9]\r\nCreateBackup=abc\r\nFloatPrecision=\r\n");
    const ProfileSettings settings(path_);
    EXPECT_EQ(settings.integer("CreateBackup", 1), 0);
    EXPECT_EQ(settings.integer("FloatPrecision", 8), 0);
    EXPECT_EQ(settings.text("CreateBackup"), "abc");
}

TEST_F(ProfileSettingsTest, IntegerIsTheNumberAtTheFrontOfTheText) {
    writeFile(path_, "[KAVU-9]\r\nA=-12\r\nB=7 digits\r\nC=99999999999999999999\r\n");
    const ProfileSettings settings(path_);
    EXPECT_EQ(settings.integer("A", 1), -12);
    EXPECT_EQ(settings.integer("B", 1), 7);
    EXPECT_EQ(settings.integer("C", 1), 2147483647);
}

TEST_F(ProfileSettingsTest, NamesCompareWithoutRegardToCase) {
    writeFile(path_, "[kavu-9]\r\nCREATEBACKUP=0\r\n");
    EXPECT_EQ(ProfileSettings(path_).integer("CreateBackup", 1), 0);
}

TEST_F(ProfileSettingsTest, SettingIsWrittenAtOnce) {
    ProfileSettings settings(path_);
    settings.write("MDB", "/data/kavu.mdb");
    EXPECT_EQ(readFile(path_), "[KAVU-9]\r\nMDB=/data/kavu.mdb\r\n");
    settings.writeInteger("OpenFilterIndex", -2);
    EXPECT_EQ(readFile(path_), "[KAVU-9]\r\nMDB=/data/kavu.mdb\r\nOpenFilterIndex=-2\r\n");
    settings.writeProfile("PropSheet", "LastEuPage", "3");
    EXPECT_EQ(ProfileSettings(path_).profileInteger("PropSheet", "LastEuPage", 1), 3);
}

TEST_F(ProfileSettingsTest, WriteWithoutAValueRemovesTheKeyAndWithoutAKeyTheSection) {
    writeFile(path_, "[A]\r\nx=1\r\ny=2\r\n[B]\r\nz=3\r\n");
    ProfileSettings settings(path_);
    settings.writeProfile("A", "X", std::nullopt);
    EXPECT_EQ(readFile(path_), "[A]\r\ny=2\r\n[B]\r\nz=3\r\n");
    settings.writeProfile("A", std::nullopt, std::nullopt);
    EXPECT_EQ(readFile(path_), "[B]\r\nz=3\r\n");
}

TEST_F(ProfileSettingsTest, CommentsAndOtherKeysOfTheUserStay) {
    writeFile(path_, "; mine\r\n[KAVU-9]\r\nUnknown = 1\r\n\r\n[Other]\r\n");
    ProfileSettings settings(path_);
    settings.write("X", "5");
    const auto text = readFile(path_);
    EXPECT_NE(text.find("; mine\r\n[KAVU-9]\r\nUnknown= 1\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("[Other]\r\n"), std::string::npos) << text;
    EXPECT_EQ(settings.text("unknown"), "1");
}

TEST_F(ProfileSettingsTest, LongValueIsReadWhole) {
    const std::string value(200000, 'v');
    ProfileSettings(path_).write("MDB", value);
    EXPECT_EQ(ProfileSettings(path_).text("MDB"), value);
}

TEST_F(ProfileSettingsTest, WhatAnotherProcessWritesIsSeen) {
    ProfileSettings settings(path_);
    EXPECT_EQ(settings.integer("X", 7), 7);
    writeElsewhere("[KAVU-9]\r\nX=1\r\n");
    EXPECT_EQ(settings.integer("X", 7), 1);
    writeElsewhere("[KAVU-9]\r\nX=2\r\nY=3\r\n");
    settings.write("Z", "4");
    EXPECT_EQ(readFile(path_), "[KAVU-9]\r\nX=2\r\nY=3\r\nZ=4\r\n");
    ASSERT_TRUE(deleteFile(path_).ok());
    EXPECT_EQ(settings.integer("X", 7), 7);
}

TEST_F(ProfileSettingsTest, TwoObjectsOnOneFileKeepEachOthersKeys) {
    ProfileSettings one(path_);
    ProfileSettings two(path_);
    for (int i = 0; i < 20; ++i) {
        one.writeInteger("One", i);
        two.writeInteger("Two", i);
        EXPECT_EQ(one.integer("Two", -1), i);
        EXPECT_EQ(two.integer("One", -1), i);
    }
}

TEST_F(ProfileSettingsTest, TwoThatWriteAtOnceLoseNoKey) {
    constexpr int kKeys = 60;
    const auto writeAll = [this](const std::string& head) {
        ProfileSettings settings(path_);
        for (int i = 0; i < kKeys; ++i) {
            settings.writeInteger(head + std::to_string(i), i);
        }
    };
    std::thread other(writeAll, "B");
    writeAll("A");
    other.join();
    const ProfileSettings settings(path_);
    for (int i = 0; i < kKeys; ++i) {
        EXPECT_EQ(settings.integer("A" + std::to_string(i), -1), i);
        EXPECT_EQ(settings.integer("B" + std::to_string(i), -1), i);
    }
}

TEST_F(ProfileSettingsTest, ALockThatIsNotGivenBackDoesNotStopAWrite) {
    const int held = ::open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    ProfileSettings(path_).write("PTF", "TWO");
    EXPECT_EQ(ProfileSettings(path_).text("PTF"), "TWO");
    ::close(held);
}

TEST_F(ProfileSettingsTest, ValueForThisRunHidesTheFileAndIsNeverWritten) {
    writeFile(path_, "[KAVU-9]\r\nIRIGOutputMethod=1\r\n");
    ProfileSettings settings(path_);
    settings.overrideForThisRun("IRIGOutputMethod", "2");
    EXPECT_EQ(settings.integer("irigoutputmethod", 1), 2);
    EXPECT_EQ(settings.text("IRIGOutputMethod"), "2");
    EXPECT_EQ(settings.profileText("KAVU-9", "IRIGOutputMethod"), "2");
    EXPECT_EQ(settings.profileInteger("Reports", "IRIGOutputMethod", 9), 9);
    settings.write("X", "1");
    settings.write("IRIGOutputMethod", "3");
    EXPECT_EQ(settings.integer("IRIGOutputMethod", 1), 2);
    EXPECT_EQ(readFile(path_), "[KAVU-9]\r\nIRIGOutputMethod=3\r\nX=1\r\n");
}

TEST_F(ProfileSettingsTest, WithoutAPathEverythingIsInMemory) {
    ProfileSettings settings("");
    EXPECT_EQ(settings.integer("CreateBackup", 1), 1);
    settings.write("CreateBackup", "0");
    EXPECT_EQ(settings.integer("CreateBackup", 1), 0);
    settings.writeProfile("KAVU-9", "CreateBackup", std::nullopt);
    EXPECT_EQ(settings.integer("CreateBackup", 1), 1);
}

TEST_F(ProfileSettingsTest, FileThatCanNotBeWrittenIsSilentAndKeptForTheRun) {
    ProfileSettings settings(folder_ / "none/kavu.ini");
    settings.write("CreateBackup", "0");
    EXPECT_EQ(settings.integer("CreateBackup", 1), 0);
    EXPECT_EQ(ProfileSettings(settings.path()).integer("CreateBackup", 1), 1)
        << "the next run has the defaults";
}

TEST_F(ProfileSettingsTest, FileThatCanNotBeReadGivesDefaultsAndIsLeftAsItIs) {
    ASSERT_TRUE(makeFolder(path_).ok());
    ProfileSettings settings(path_);
    EXPECT_EQ(settings.integer("CreateBackup", 1), 1);
    settings.write("CreateBackup", "0");
    EXPECT_EQ(settings.integer("CreateBackup", 1), 0);
    EXPECT_TRUE(folderExists(path_));
}

TEST_F(ProfileSettingsTest, LinkAndModeOfTheFileStay) {
    writeFile(folder_ / "real.ini", "[KAVU-9]\r\nX=1\r\n");
    ASSERT_EQ(::chmod((folder_ / "real.ini").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("real.ini", path_.c_str()), 0);
    ProfileSettings(path_).write("X", "2");
    struct stat info {};
    ASSERT_EQ(::lstat(path_.c_str(), &info), 0);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    ASSERT_EQ(::stat(path_.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, 0600U);
    EXPECT_EQ(readFile(folder_ / "real.ini"), "[KAVU-9]\r\nX=2\r\n");
}

TEST_F(ProfileSettingsTest, ValueWithALineBreakIsNotTaken) {
    ProfileSettings settings(path_);
    settings.write("X", "1\n[Other]");
    EXPECT_EQ(settings.text("X", "none"), "none");
    EXPECT_FALSE(fileExists(path_));
}

}  // namespace
}  // namespace kavu::test
