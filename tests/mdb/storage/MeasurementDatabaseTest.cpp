#include "core/files/UserFile.h"
#include "core/talk/QuestionNames.h"
#include "mdb/DatabaseStage.h"

#include <filesystem>
#include <optional>
#include <sys/stat.h>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

using Opening = MeasurementDatabase::Opening;

struct FileStage : DatabaseStage {
    explicit FileStage(MdbVersion version = MdbVersion::WithBus) : DatabaseStage(version) {}
};

std::vector<int> loggedIds(const RecordingInterface& ui) {
    std::vector<int> ids;
    for (const auto& log : ui.logs) {
        ids.push_back(log.id);
    }
    return ids;
}

// --- reading ---------------------------------------------------------------------------------

TEST(MeasurementDatabase, FindGoesOnFromThePositionAndOnceAround) {
    FileStage stage;
    stage.openWith(mdbLine({"A", "1"}) + mdbLine({"B", "2"}) + mdbLine({"A", "3"}) +
                   mdbLine({"C", "4"}));
    auto& database = stage.database;
    EXPECT_EQ((*database.find("A"))[1], "1");
    EXPECT_EQ((*database.find("A"))[1], "3");
    EXPECT_EQ(database.next()->name(), "C");
    EXPECT_EQ((*database.find("A"))[1], "1");
    EXPECT_FALSE(database.find("none"));
    EXPECT_EQ(database.next()->name(), "B");
    database.rewind();
    EXPECT_EQ((*database.find("A"))[1], "1");
}

TEST(MeasurementDatabase, LinesWithoutANameAreNoRecords) {
    FileStage stage;
    stage.openWith(";x\r\n" + mdbLine({"A"}) + "\r\n" + mdbLine({"B"}));
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(stage.database.recordCount(), 2U);
}

TEST(MeasurementDatabase, ASampleRateIsCutAsTheSettingsSay) {
    DatabaseStage stage(MdbVersion::WithBus);
    MeasurementDatabase database(stage.messages, stage.path, MdbVersion::WithBus,
                                 {.check = true, .precision = 2});
    std::vector<std::string> fields(36);
    fields[0] = "A";
    fields[33] = "12.500000";
    writeFile(stage.path, mdbLine(fields));
    EXPECT_EQ(database.open(), Opening::Ready);
    EXPECT_EQ((*database.first())[mdbfield::kSampleRate], "12.5");
    EXPECT_EQ((*database.find("A"))[mdbfield::kSampleRate], "12.5");
}

TEST(MeasurementDatabase, ACancelledIndexOfNamesIsFreed) {
    FileStage stage;
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += mdbLine({"M" + std::to_string(i)});
    }
    stage.openWith(text);
    stage.ui.cancelAtPoll = 2;
    EXPECT_FALSE(stage.database.loadNameIndex(&stage.ui));
    EXPECT_EQ(stage.ui.statusTexts.front(), "Reading measusurement database contents");
    EXPECT_EQ(stage.ui.progressTexts.front(),
              "Reading measusurement database contents. Measurement #1");
    stage.ui.cancelAtPoll = 0;
    EXPECT_TRUE(stage.database.contains("M299"));
    EXPECT_FALSE(stage.database.contains("m299"));
}

TEST(MeasurementDatabase, ChildrenAreThoseOfExactlyThatRoot) {
    FileStage stage;
    stage.openWith(mdbLine({"A", "W"}) + mdbLine({"B", "w"}) + mdbLine({"C", "W"}));
    const auto children = stage.database.childrenOf("W");
    ASSERT_EQ(children.size(), 2U);
    EXPECT_EQ(children[1].name(), "C");
}

// --- validation ------------------------------------------------------------------------------

TEST(MeasurementDatabase, ALineOf28ColumnsInAFileOf36IsMessage416) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}, 28));
    EXPECT_TRUE(stage.database.validate(&stage.ui, 2011).hasFaults);
    ASSERT_EQ(loggedIds(stage.ui), (std::vector<int>{416}));
    EXPECT_EQ(stage.ui.logs[0].text,
              "WARNING: Line #1 of measurement database (measurement 'A') contains 28 fields. This "
              "version of KAVU-9 expects 36 fields in each database entry.");
    EXPECT_EQ(stage.ui.logs[0].titleId, 78);
}

TEST(MeasurementDatabase, EachLineIsCheckedInOrder416Then426Then413ThenColumns) {
    FileStage stage;
    std::vector<std::string> bad(36);
    bad[0] = "A";
    bad[4] = "MM";
    stage.openWith(mdbLine({"A"}) + ";x\r\n" + mdbLine(bad));
    EXPECT_TRUE(stage.database.validate(&stage.ui, 2011).hasFaults);
    EXPECT_EQ(loggedIds(stage.ui), (std::vector<int>{416, 426, 413, 408, 409}));
}

TEST(MeasurementDatabase, ALimitIsReportedWithTheColumnAndNotTheIndex) {
    FileStage stage(MdbVersion::Basic);
    std::vector<std::string> fields(28);
    fields[0] = "A";
    fields[20] = std::string(33, '9');  // Low Value, index 28
    fields[24] = "XXX";                 // Input Format, index 32
    stage.openWith(mdbLine(fields, 28));
    EXPECT_TRUE(stage.database.validate(&stage.ui, 2011).hasFaults);
    ASSERT_EQ(loggedIds(stage.ui), (std::vector<int>{408, 409}));
    EXPECT_NE(stage.ui.logs[0].text.find("The 'Low Value' field (field #21) value is too long"),
              std::string::npos);
    EXPECT_NE(stage.ui.logs[0].text.find("longer than 32 characters"), std::string::npos);
    EXPECT_NE(stage.ui.logs[1].text.find("The 'Input Format' field (field #25)"),
              std::string::npos);
    EXPECT_NE(stage.ui.logs[1].text.find("values: INT UNS SIG SIM ONE TWO OFF OTH FPT BCD BWT."),
              std::string::npos);
}

TEST(MeasurementDatabase, NamesThatDifferInCaseAreNotFoundTwice) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}) + mdbLine({"a"}));
    EXPECT_FALSE(stage.database.validate(&stage.ui, 2011).hasFaults);
}

TEST(MeasurementDatabase, XmlIsCheckedByTheNumberOfTheRecord) {
    FileStage stage(MdbVersion::Xml);
    stage.openWith(
        "<MeasurementDatabase><Measurement><Name>A</Name></Measurement>"
        "<Measurement/><Measurement><Name>A</Name><Parity>Q</Parity></Measurement>"
        "</MeasurementDatabase>");
    EXPECT_TRUE(stage.database.validate(&stage.ui, 2011).hasFaults);
    ASSERT_EQ(loggedIds(stage.ui), (std::vector<int>{426, 413, 409}));
    EXPECT_NE(stage.ui.logs[0].text.find("Line #2"), std::string::npos);
    EXPECT_NE(stage.ui.logs[2].text.find("in line 3"), std::string::npos);
}

TEST(MeasurementDatabase, ACancelEndsTheCheck) {
    FileStage stage;
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += mdbLine({"M" + std::to_string(i)});
    }
    stage.openWith(text + "last\r\n");
    stage.ui.cancelAtPoll = 2;
    const auto found = stage.database.validate(&stage.ui, 2011);
    EXPECT_TRUE(found.isCancelled);
    EXPECT_FALSE(found.hasFaults);
    EXPECT_EQ(stage.ui.statusTexts.front(), "Validating Measurement Database (Line #1)");
    EXPECT_EQ(stage.ui.progressTexts.front(), "Validating Measurement Database (0%)");
}

// --- the file ----------------------------------------------------------------------------------

TEST(MeasurementDatabase, TheFirstChangeMakesTheFile) {
    FileStage stage(MdbVersion::Basic);
    EXPECT_EQ(stage.database.open(), Opening::Missing);
    EXPECT_FALSE(fileExists(stage.path));
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("A")));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}, 28));
}

TEST(MeasurementDatabase, ALinkItsTargetAndTheModeStay) {
    FileStage stage;
    const auto target = stage.folder / "real.otb";
    writeFile(target, mdbLine({"A"}));
    ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
    std::filesystem::create_symlink(target, stage.path);
    EXPECT_EQ(stage.database.open(), Opening::Ready);
    EXPECT_TRUE(stage.database.remove(&stage.ui, "A"));
    EXPECT_TRUE(std::filesystem::is_symlink(stage.path));
    EXPECT_EQ(readFile(target), "");
    EXPECT_EQ(static_cast<int>(std::filesystem::status(target).permissions()), 0640);
    EXPECT_FALSE(fileExists(target + ".tmp"));
}

TEST(MeasurementDatabase, AChangeByAnotherIsNeverOverwrittenInSilence) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}));
    writeFile(stage.path, mdbLine({"A"}) + mdbLine({"Other"}));
    EXPECT_FALSE(stage.database.add(&stage.ui, MdbRecord("B")));
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].name, question::kChangedDatabase);
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"Other"}));
    EXPECT_FALSE(stage.database.add(nullptr, MdbRecord("B")));
    stage.ui.queued = {Button::Yes};
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("B")));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"Other"}) + mdbLine({"B"}));
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("C")));
}

TEST(MeasurementDatabase, AnotherProgramThatWritesIsWaitedForWithItsReasonUntilACancel) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}));
    UserFile other;
    ASSERT_TRUE(other.claim(stage.path).ok());
    stage.ui.cancelAtPoll = 3;
    EXPECT_FALSE(stage.database.add(&stage.ui, MdbRecord("B")));
    EXPECT_EQ(stage.ui.polls, 3);
    ASSERT_FALSE(stage.ui.progressTexts.empty());
    EXPECT_EQ(stage.ui.progressTexts.front(),
              "Waiting for another program that is writing the measurement database '" +
                  stage.path + "'");
    EXPECT_EQ(stage.ui.statusTexts.front(), stage.ui.progressTexts.front());
    EXPECT_EQ(stage.ui.statusTexts.back(), "");
    EXPECT_EQ(stage.ui.progressOpened, stage.ui.progressClosed);
    EXPECT_TRUE(stage.ui.boxes.empty());
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}));
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"A"}));
}

TEST(MeasurementDatabase, AChangeGoesOnWhenTheOtherProgramHasWritten) {
    /// Lets the file go at its second poll.
    class Releasing : public test::RecordingInterface {
      public:
        bool cancelRequested() override {
            if (++polls == 2) {
                other.reset();
            }
            return false;
        }
        std::optional<UserFile> other;
    };
    FileStage stage;
    stage.openWith(mdbLine({"A"}));
    Releasing ui;
    ASSERT_TRUE(ui.other.emplace().claim(stage.path).ok());
    EXPECT_TRUE(stage.database.add(&ui, MdbRecord("B")));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"B"}));
    EXPECT_TRUE(ui.boxes.empty());
}

TEST(MeasurementDatabase, ABatchIsWrittenOnceOrNotAtAll) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}));
    {
        MeasurementDatabase::Batch batch(stage.database, &stage.ui);
        ASSERT_TRUE(batch.isOpen());
        EXPECT_TRUE(stage.database.remove(&stage.ui, {}));
        EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("B")));
        EXPECT_TRUE(stage.database.contains("B"));
    }
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}));
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"A"}));
    MeasurementDatabase::Batch batch(stage.database, &stage.ui);
    EXPECT_TRUE(stage.database.add(&stage.ui, MdbRecord("B")));
    EXPECT_TRUE(batch.commit(&stage.ui));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"B"}));
}

TEST(MeasurementDatabase, AFailedWriteLeavesTheFileAndTheRecordsAsTheyWere) {
    FileStage stage;
    stage.openWith(mdbLine({"A"}));
    ASSERT_EQ(::chmod(stage.path.c_str(), 0440), 0);
    if (::access(stage.path.c_str(), W_OK) == 0) {
        // The superuser may write everything: a folder at the name of the new file stops him, too.
        std::filesystem::create_directories(stage.path + ".tmp/in");
    }
    EXPECT_FALSE(stage.database.remove(&stage.ui, "A"));
    EXPECT_TRUE(stage.ui.hasText("Unable to"));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}));
    EXPECT_EQ(stage.names(), (std::vector<std::string>{"A"}));
}

TEST(MeasurementDatabase, AFolderIsNoDatabase) {
    FileStage stage;
    std::filesystem::create_directory(stage.path);
    EXPECT_EQ(stage.database.open(), Opening::Failed);
    EXPECT_FALSE(stage.database.status().ok());
}

}  // namespace
}  // namespace kavu::test
