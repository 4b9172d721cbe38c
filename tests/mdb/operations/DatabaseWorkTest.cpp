#include "mdb/DatabaseStage.h"
#include "mdb/operations/DatabaseWork.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

struct WorkStage : DatabaseStage {
    explicit WorkStage(MdbVersion version = MdbVersion::WithBus) : DatabaseStage(version) {
        settings.set(setting::kDatabaseEnabled, true);
    }
    int validate(OnFailure failure = OnFailure::SwitchOff) {
        return validateDatabase(context, &ui, database, 2011, failure);
    }
    [[nodiscard]] bool isEnabled() const { return settings.get(setting::kDatabaseEnabled); }
};

TEST(DatabaseWork, AMissingDatabaseIsMadeAfterAQuestion) {
    WorkStage stage;
    stage.ui.byId[429] = Button::Yes;
    EXPECT_EQ(stage.validate(), 1);
    EXPECT_EQ(stage.bytes(), "");
    EXPECT_EQ(stage.ui.boxes.at(0).titleId, 78);
    EXPECT_TRUE(stage.isEnabled());
}

TEST(DatabaseWork, AFolderThatIsMissingIsMadeWithItsDatabaseAndNotBefore) {
    WorkStage stage;
    const auto folder = stage.folder / "not/there";
    MeasurementDatabase database(stage.messages, folder + "/kavu.mdb", MdbVersion::Xml,
                                 SampleRateOptions{});
    const auto validate = [&] {
        return validateDatabase(stage.context, &stage.ui, database, 2011, OnFailure::Report);
    };
    EXPECT_EQ(validate(), -1);
    EXPECT_FALSE(folderExists(folder));
    stage.ui.byId[429] = Button::Yes;
    EXPECT_EQ(validate(), 1);
    EXPECT_TRUE(fileExists(database.path()));
    // What cannot be made is reported, and is no usable database.
    writeFile(stage.folder / "file", "");
    MeasurementDatabase below(stage.messages, stage.folder / "file/kavu.mdb", MdbVersion::Xml,
                              SampleRateOptions{});
    EXPECT_EQ(validateDatabase(stage.context, &stage.ui, below, 2011, OnFailure::Report), -1);
}

TEST(DatabaseWork, DeclinedItIsNoUsableDatabaseAndIsSwitchedOff) {
    WorkStage stage;
    EXPECT_EQ(stage.validate(), -1);
    EXPECT_TRUE(stage.ui.hasBox(429) && stage.ui.hasBox(428));
    EXPECT_FALSE(fileExists(stage.path));
    EXPECT_FALSE(stage.isEnabled());
}

TEST(DatabaseWork, AReportAloneLeavesTheSetting) {
    WorkStage stage(MdbVersion::Xml);
    stage.openWith("<Tmats/>");
    EXPECT_EQ(stage.validate(OnFailure::Report), -1);
    EXPECT_TRUE(stage.ui.hasBox(428));
    EXPECT_FALSE(stage.ui.hasBox(429));
    EXPECT_TRUE(stage.isEnabled());
    EXPECT_EQ(stage.bytes(), "<Tmats/>");
}

TEST(DatabaseWork, WithoutAPathIsMessage430Alone) {
    WorkStage stage;
    MeasurementDatabase none(stage.messages, "", MdbVersion::Xml, SampleRateOptions{});
    EXPECT_EQ(validateDatabase(stage.context, &stage.ui, none, 2011, OnFailure::SwitchOff), -1);
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].id, 430);
}

TEST(DatabaseWork, FaultsLeaveTheDatabaseOnAndAreShown) {
    WorkStage stage;
    stage.openWith("A;B\r\n");
    EXPECT_EQ(stage.validate(), 0);
    ASSERT_EQ(stage.ui.shown.size(), 1U);
    EXPECT_TRUE(stage.isEnabled());
    EXPECT_NE(std::find(stage.ui.statusTexts.begin(), stage.ui.statusTexts.end(),
                        "Validating Measurement Database"),
              stage.ui.statusTexts.end());
    stage.openWith("");
    EXPECT_EQ(stage.validate(), 1);
}

TEST(DatabaseWork, TheSettingsSayWhichDatabase) {
    WorkStage stage;
    EXPECT_EQ(databaseVersion(stage.settings), MdbVersion::Xml);
    stage.settings.set(setting::kDatabasePath, stage.path);
    stage.settings.set(setting::kDatabaseVersion, 1);
    stage.openWith(mdbLine({"A"}));
    const auto database = settingsDatabase(stage.context);
    EXPECT_TRUE(
        openDatabase(stage.context, &stage.ui, *database, IfMissing::Refuse, OnFailure::SwitchOff));
    EXPECT_EQ(database->recordCount(), 1U);
}

TEST(DatabaseWork, OneThatIsSwitchedOnIsCheckedAndOffAgainIfItCannotBeUsed) {
    WorkStage stage;
    stage.settings.set(setting::kDatabaseEnabled, false);
    stage.settings.set(setting::kDatabasePath, stage.path);
    EXPECT_FALSE(switchDatabaseOn(stage.context, &stage.ui, 2011));
    EXPECT_FALSE(stage.isEnabled());
    stage.ui.byId[429] = Button::Yes;
    EXPECT_TRUE(switchDatabaseOn(stage.context, &stage.ui, 2011));
    EXPECT_TRUE(stage.isEnabled());
}

TEST(DatabaseWork, AnotherFileIsCheckedOnlyWhileTheDatabaseIsOn) {
    WorkStage stage;
    const auto other = stage.folder / "other.otb";
    stage.settings.set(setting::kDatabaseEnabled, false);
    changeDatabase(stage.context, &stage.ui, other, MdbVersion::Basic, 2011);
    EXPECT_EQ(stage.settings.get(setting::kDatabasePath), other);
    EXPECT_EQ(databaseVersion(stage.settings), MdbVersion::Basic);
    EXPECT_TRUE(stage.ui.boxes.empty());
    stage.settings.set(setting::kDatabaseEnabled, true);
    changeDatabase(stage.context, &stage.ui, other, MdbVersion::Xml, 2011);
    EXPECT_TRUE(stage.ui.hasBox(429));
    EXPECT_FALSE(stage.isEnabled());
}

}  // namespace
}  // namespace kavu::test
