#include "mdb/operations/DatabaseFamily.h"
#include "mdb/operations/StreamSave.h"
#include "mdb/operations/StreamStage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;
using Names = std::vector<std::string>;

struct SaveStage : StreamStage {
    SaveStage() {
        Measurement alpha;
        alpha.name = "Alpha";
        alpha.locationType = "MF";
        alpha.mask = "0011";
        alpha.parity = "EV";
        alpha.parityTransferOrder = "L";
        alpha.transferOrder = "M";
        place(5, 1, alpha);
        place(7, 1, alpha);
        place(3, 1, "Beta");
        EXPECT_TRUE(
            load("C-1\\DCN:Alpha;C-1\\TRD1:Strain;C-1\\MN1:text;C-1\\MOT1:9;C-1\\BFM:TWO;"
                 "C-1\\SR:5;C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO:0.0;C-1\\CO-1:2;"));
    }
};

TEST(StreamSave, EveryMeasurementIsSavedOnceWithItsConversion) {
    SaveStage stage;
    stage.format.setWordLength(5, 12);
    const auto result = saveStream(stage.work, &stage.ui, StreamSaveMode::Append);
    EXPECT_TRUE(result.done);
    EXPECT_EQ(result.added, (Names{"Beta", "Alpha"}));
    const auto record = stage.database.lookUp("Alpha");
    ASSERT_TRUE(record);
    EXPECT_EQ((*record)[f::kWordLength], "12");
    EXPECT_EQ((*record)[f::kMask], "0011");
    EXPECT_EQ((*record)[f::kTransferOrder], "M");
    EXPECT_EQ((*record)[f::kParityTransferOrder], "L");
    EXPECT_EQ((*record)[f::kParity], "EV");
    EXPECT_EQ((*record)[15], "Strain");
    EXPECT_EQ((*record)[29], "9");
    EXPECT_EQ((*record)[f::kType], "COE");
    EXPECT_EQ((*record)[f::kData], "0.0 2");
    EXPECT_EQ((*stage.database.lookUp("Beta"))[f::kType], "");
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].title, "Done");
    EXPECT_EQ(stage.ui.boxes[0].text, "2 measurements were added to the database.");
    EXPECT_THAT(stage.ui.statusTexts, testing::Contains("Saving Measurements"));
    EXPECT_THAT(stage.ui.progressTexts, testing::Contains("Saving Measurements at FWP:5"));
}

TEST(StreamSave, AppendingTwiceAddsNothingTheSecondTime) {
    SaveStage stage;
    EXPECT_EQ(saveStream(stage.work, &stage.ui, StreamSaveMode::Append).added.size(), 2U);
    const auto bytes = readFile(stage.path);
    const auto again = saveStream(stage.work, &stage.ui, StreamSaveMode::Append);
    EXPECT_TRUE(again.done);
    EXPECT_TRUE(again.added.empty());
    EXPECT_EQ(readFile(stage.path), bytes);
}

TEST(StreamSave, OverwritingAnsweredNoSavesNothing) {
    SaveStage stage;
    stage.fill({StreamStage::record("Old")});
    const auto bytes = readFile(stage.path);
    stage.ui.choices = {0};
    EXPECT_FALSE(saveStreamToDatabase(stage.work, &stage.ui).done);
    ASSERT_EQ(stage.ui.choicePrompts.size(), 1U);
    EXPECT_EQ(stage.ui.choicePrompts[0].title, "Save Measurements To DataBase");
    EXPECT_EQ(stage.ui.choicePrompts[0].choices, (Names{"&Overwrite", "&Append"}));
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].title, "Delete Measurement Database");
    EXPECT_EQ(readFile(stage.path), bytes);
}

TEST(StreamSave, OverwritingReplacesAllRecords) {
    SaveStage stage;
    stage.fill({StreamStage::record("Old")});
    stage.ui.choices = {0};
    stage.ui.queued = {Button::Yes};
    EXPECT_TRUE(saveStreamToDatabase(stage.work, &stage.ui).done);
    EXPECT_FALSE(stage.database.contains("Old"));
    EXPECT_EQ(stage.database.recordCount(), 2U);
}

TEST(StreamSave, ACancelledOverwriteLeavesTheDatabaseAsItWas) {
    SaveStage stage;
    stage.fill({StreamStage::record("Old")});
    const auto bytes = readFile(stage.path);
    stage.ui.queued = {Button::Yes};
    stage.ui.cancelAtPoll = 1;
    EXPECT_FALSE(saveStream(stage.work, &stage.ui, StreamSaveMode::Overwrite).done);
    EXPECT_EQ(readFile(stage.path), bytes);
    EXPECT_TRUE(stage.database.contains("Old"));
}

TEST(StreamSave, ACancelWhileNamesAreReadIsMessage411) {
    SaveStage stage;
    stage.fill({StreamStage::record("Old")});
    stage.ui.cancelAtPoll = 1;
    EXPECT_FALSE(saveStream(stage.work, &stage.ui, StreamSaveMode::Append).done);
    EXPECT_TRUE(stage.ui.hasBox(411));
}

TEST(StreamSave, StoringOneMeasurementKeepsItsRootAndItsBusFields) {
    SaveStage stage;
    stage.fill({StreamStage::record("Alpha", {{f::kRoot, "Word"}, {f::kBusNumber, "0001"}})});
    EXPECT_TRUE(storeMeasurementInDatabase(stage.work, &stage.ui, "Alpha"));
    const auto record = stage.database.lookUp("Alpha");
    EXPECT_EQ((*record)[f::kRoot], "Word");
    EXPECT_EQ((*record)[f::kBusNumber], "0001");
    EXPECT_EQ((*record)[f::kDescription], "text");
    EXPECT_EQ(stage.database.recordCount(), 1U);
    EXPECT_FALSE(storeMeasurementInDatabase(stage.work, &stage.ui, "nobody"));
}

TEST(StreamSave, ARecordIsChosenFromATableOfNamesAndDescriptions) {
    SaveStage stage;
    stage.fill({StreamStage::record("A", {{f::kDescription, "one"}}), StreamStage::record("B")});
    stage.ui.rows = {1};
    const auto steps = databaseSteps(stage.work);
    const auto chosen = steps.select(&stage.ui);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->name, "B");
    EXPECT_EQ(chosen->parity, "DE");
    EXPECT_EQ(stage.ui.tablePrompts.at(0).title, "Select Measurement From Database");
    EXPECT_FALSE(steps.select(&stage.ui));
    EXPECT_FALSE(steps.select(nullptr));
}

TEST(StreamSave, OfSeveralRecordsOfOneNameTheChosenOneIsTaken) {
    SaveStage stage;
    stage.fill({StreamStage::record("A", {{f::kRoot, "first"}}),
                StreamStage::record("A", {{f::kRoot, "second"}})});
    stage.ui.rows = {1};
    const auto chosen = selectDatabaseRecord(stage.work, &stage.ui);
    ASSERT_TRUE(chosen);
    EXPECT_EQ((*chosen)[f::kRoot], "second");
}

TEST(StreamSave, AListThatCannotBeFilledIsMessage414AndOffersNothing) {
    SaveStage stage;
    std::vector<MdbRecord> records;
    for (unsigned i = 0; i < kPollEvery; ++i) {
        records.push_back(StreamStage::record("M" + std::to_string(i)));
    }
    stage.fill(records);
    stage.ui.polls = 0;
    stage.ui.cancelAtPoll = 1;
    EXPECT_FALSE(selectDatabaseRecord(stage.work, &stage.ui));
    EXPECT_TRUE(stage.ui.hasBox(414));
    EXPECT_TRUE(stage.ui.tablePrompts.empty());
}

}  // namespace
}  // namespace kavu::test
