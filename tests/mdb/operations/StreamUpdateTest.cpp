#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "mdb/operations/StreamStage.h"
#include "mdb/operations/StreamUpdate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

StreamUpdateChoice allFields() {
    StreamUpdateChoice choice;
    choice.fields.set();
    return choice;
}

struct UpdateStage : StreamStage {
    UpdateStage() {
        place(3, 1, "Alpha");
        EXPECT_TRUE(load("C-1\\DCN:Other;C-1\\DCT:NON;"));
    }
    StreamUpdateResult update(const StreamUpdateChoice& choice = allFields()) {
        return updateStreamFromDatabase(work, &ui, choice);
    }
};

TEST(StreamUpdate, FieldsOfTheWordAndTheConversionAreTakenOver) {
    UpdateStage stage;
    stage.fill({StreamStage::record("ALPHA", {{f::kMask, "1111000011110000"},
                                              {f::kTransferOrder, "M"},
                                              {f::kParityTransferOrder, "T"},
                                              {f::kParity, "EV"},
                                              {15, "Strain"},
                                              {25, "555"},
                                              {f::kDescription, "the first"},
                                              {28, "-1"},
                                              {29, "1"},
                                              {30, "-2"},
                                              {31, "2"},
                                              {f::kInputFormat, "TWO"},
                                              {f::kSampleRate, "10"},
                                              {f::kType, "COE"},
                                              {f::kData, "0.0 1.5"}})});
    const auto result = stage.update();
    EXPECT_TRUE(result.done);
    EXPECT_EQ(result.updated, 1);
    EXPECT_EQ(result.newDefinitions, 1);
    const auto& word = stage.measurement(3, "Alpha");
    EXPECT_EQ(word.mask, "1111000011110000");
    EXPECT_EQ(word.transferOrder, "M");
    EXPECT_EQ(word.parityTransferOrder, "T");
    EXPECT_EQ(word.parity, "EV");
    EXPECT_EQ(word.name, "Alpha");
    for (const auto& [key, value] :
         std::vector<std::pair<std::string, std::string>>{{"TRD1", "Strain"},
                                                          {"POC4", "555"},
                                                          {"MN1", "the first"},
                                                          {"MOT2", "-1"},
                                                          {"MOT1", "1"},
                                                          {"MOT4", "-2"},
                                                          {"MOT3", "2"},
                                                          {"BFM", "TWO"},
                                                          {"SR", "10"},
                                                          {"DCT", "COE"},
                                                          {"CO", "0.0"},
                                                          {"CO-1", "1.5"},
                                                          {"CO\\N", "1"},
                                                          {"Chg", "1"},
                                                          {"EuTemplate", ""}}) {
        EXPECT_EQ(stage.value("Alpha", key), value) << key;
    }
    EXPECT_EQ(stage.conversions.locateDefinition("alpha").section, "Alpha");
    EXPECT_TRUE(stage.format.changed);
    EXPECT_TRUE(stage.document.changed);
    ASSERT_TRUE(stage.ui.hasBox(415));
    EXPECT_TRUE(stage.ui.hasText("1 measurements were updated.\n1 new EU definitions"));
    EXPECT_THAT(stage.ui.progressTexts, testing::Contains("Updating Measurements #1"));
}

TEST(StreamUpdate, WithoutAnyFieldOnlyTheMatchesAreCounted) {
    UpdateStage stage;
    stage.fill({StreamStage::record("Alpha", {{f::kParity, "OD"}}), StreamStage::record("Alpha"),
                StreamStage::record("Nobody", {{f::kParity, "OD"}})});
    const auto result = stage.update(StreamUpdateChoice{});
    EXPECT_EQ(result.updated, 2);
    EXPECT_EQ(result.newDefinitions, 0);
    EXPECT_EQ(stage.value("Alpha", "Chg"), "<no record>");
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "");
    EXPECT_FALSE(stage.document.changed);
    EXPECT_FALSE(stage.format.changed);
}

TEST(StreamUpdate, ARecordThatIsNotInTheStreamChangesNothing) {
    UpdateStage stage;
    stage.fill({StreamStage::record("Nobody", {{f::kDescription, "x"}})});
    const auto result = stage.update();
    EXPECT_EQ(result.updated, 0);
    EXPECT_EQ(stage.value("Nobody", "MN1"), "<no record>");
    EXPECT_FALSE(stage.document.changed);
}

TEST(StreamUpdate, AnEmptyValueLeavesWhatIsThere) {
    UpdateStage stage;
    EXPECT_TRUE(stage.load("C-1\\DCN:Alpha;C-1\\MN1:kept;C-1\\DCT:OTH;C-1\\OTH:kept;"));
    stage.fill({StreamStage::record("Alpha", {{f::kSampleRate, "7"}})});
    EXPECT_EQ(stage.update().newDefinitions, 0);
    EXPECT_EQ(stage.value("Alpha", "MN1"), "kept");
    EXPECT_EQ(stage.value("Alpha", "DCT"), "OTH");
    EXPECT_EQ(stage.value("Alpha", "SR"), "7");
    EXPECT_EQ(stage.measurement(3, "Alpha").mask, "FW");
}

TEST(StreamUpdate, BoxesOfTheWordAloneStillMakeAndMarkTheRecord) {
    UpdateStage stage;
    stage.fill({StreamStage::record("Alpha", {{f::kParity, "OD"}, {f::kDescription, "x"}})});
    StreamUpdateChoice choice;
    choice.fields.set(f::kParity);
    EXPECT_EQ(stage.update(choice).newDefinitions, 1);
    EXPECT_EQ(stage.value("Alpha", "Chg"), "1");
    EXPECT_EQ(stage.value("Alpha", "MN1"), "");
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "OD");
}

TEST(StreamUpdate, AMaskDoesNotGoToAFragmentedMeasurement) {
    UpdateStage stage;
    stage.place(4, 1, "Frag", "MFFR");
    stage.placeFragments("Parts",
                         {{5, 0, 5, 1, 1, 8, "FW", 'D', 1}, {6, 0, 6, 1, 1, 8, "FW", 'D', 2}});
    stage.fill({StreamStage::record("Frag", {{f::kMask, "0011"}}),
                StreamStage::record("Parts", {{f::kMask, "0011"}, {f::kParity, "OD"}})});
    EXPECT_EQ(stage.update().updated, 2);
    EXPECT_EQ(stage.measurement(4, "Frag").mask, "FW");
    EXPECT_EQ(stage.measurement(5, "Parts").mask, "FW");
    EXPECT_EQ(stage.measurement(5, "Parts").parity, "OD");
}

TEST(StreamUpdate, AMaskOfAWordFrameMeasurementGoesIntoItsFragments) {
    UpdateStage stage;
    stage.placeInEveryFrame(7, "Whole");
    stage.fill({StreamStage::record("Whole", {{f::kMask, "0011"}})});
    EXPECT_EQ(stage.update().updated, 1);
    const auto& word = stage.measurement(7, "Whole");
    EXPECT_EQ(stage.format.wordFrameDefinition(word.wordFrameIndex)->locations[0].fragments[0].mask,
              "0011");
}

TEST(StreamUpdate, ATemplateBecomesARecord) {
    UpdateStage stage;
    EXPECT_TRUE(inTransaction(stage.context, &stage.ui, "Test", [&] {
        return stage.conversions.createDefaultDefinition(&stage.ui, "Alpha", true);
    }));
    stage.fill({StreamStage::record("Alpha", {{f::kDescription, "x"}})});
    EXPECT_EQ(stage.update().newDefinitions, 0);
    EXPECT_EQ(stage.value("Alpha", "EuTemplate"), "");
    EXPECT_EQ(stage.value("Alpha", "Chg"), "1");
}

TEST(StreamUpdate, SpecialProcessingBecomesTheComment) {
    UpdateStage stage;
    stage.fill({StreamStage::record("Alpha", {{f::kType, "SP"}, {f::kData, "one\x14\x15two"}})});
    EXPECT_TRUE(stage.update().done);
    EXPECT_EQ(stage.conversions.readEuComment("Alpha", false), "one\r\ntwo");
    EXPECT_EQ(stage.value("Alpha", "DCT"), "SP");
}

TEST(StreamUpdate, TheWholeUpdateIsOneLevelToUndo) {
    UpdateStage stage;
    stage.place(4, 1, "Beta");
    stage.fill({StreamStage::record("Alpha", {{f::kDescription, "x"}}),
                StreamStage::record("Beta", {{f::kDescription, "y"}})});
    EXPECT_TRUE(stage.update().done);
    EXPECT_EQ(stage.history.undoName(), "Update From Database");
    EXPECT_TRUE(stage.history.undo(&stage.ui));
    EXPECT_EQ(stage.value("Alpha", "MN1"), "<no record>");
    EXPECT_FALSE(stage.history.canUndo());
}

TEST(StreamUpdate, ThePreviewTellsWhatChangesAndAnExcludedFieldStays) {
    UpdateStage stage;
    EXPECT_TRUE(stage.load("C-1\\DCN:Alpha;C-1\\MN1:old;C-1\\SR:7;"));
    stage.fill(
        {StreamStage::record("nobody", {{f::kDescription, "z"}}),
         StreamStage::record(
             "ALPHA", {{f::kParity, "OD"}, {f::kDescription, "new"}, {f::kSampleRate, "7"}})});
    auto choice = allFields();
    const auto rows = previewStreamUpdate(stage.work, &stage.ui, choice);
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 2U);
    EXPECT_EQ((*rows)[0].place, (MdbRecordField{1, f::kParity}));
    EXPECT_EQ((*rows)[1].name, "Alpha");
    EXPECT_EQ((*rows)[1].before, "old");
    EXPECT_EQ((*rows)[1].after, "new");
    EXPECT_FALSE(stage.document.changed);
    choice.without.insert((*rows)[1].place);
    EXPECT_TRUE(stage.update(choice).done);
    EXPECT_EQ(stage.value("Alpha", "MN1"), "old");
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "OD");
}

TEST(StreamUpdate, ARecordThatIsLeftOutIsCountedAndItsConversionIsNotMarked) {
    UpdateStage stage;
    EXPECT_TRUE(stage.load("C-1\\DCN:Alpha;C-1\\MN1:old;"));
    stage.fill({StreamStage::record("Alpha", {{f::kParity, "OD"}, {f::kDescription, "new"}})});
    auto choice = allFields();
    choice.withoutRecords.insert(0);
    const auto result = stage.update(choice);
    EXPECT_TRUE(result.done);
    EXPECT_EQ(result.updated, 1);
    EXPECT_EQ(stage.value("Alpha", "Chg"), "");
    EXPECT_EQ(stage.value("Alpha", "MN1"), "old");
    EXPECT_NE(stage.measurement(3, "Alpha").parity, "OD");
}

TEST(StreamUpdate, ACancelKeepsWhatIsDoneAndReportsItsCount) {
    UpdateStage stage;
    std::vector<MdbRecord> records = {StreamStage::record("Alpha", {{f::kDescription, "x"}})};
    for (int i = 0; i < 100; ++i) {
        records.push_back(StreamStage::record("none" + std::to_string(i)));
    }
    records.push_back(StreamStage::record("Alpha", {{f::kDescription, "late"}}));
    stage.fill(records);
    stage.ui.polls = 0;
    stage.ui.cancelAtPoll = 2;
    const auto result = stage.update();
    EXPECT_TRUE(result.done);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.updated, 1);
    EXPECT_EQ(stage.value("Alpha", "MN1"), "x");
    EXPECT_TRUE(stage.ui.hasText("1 measurements were updated."));
}

TEST(StreamUpdate, RootAndChildrenComeWithAMeasurementOfOnePlace) {
    UpdateStage stage;
    stage.fill({StreamStage::record("Alpha", {{f::kRoot, "Word"}}),
                StreamStage::record("Word", {{f::kDescription, "whole"}}),
                StreamStage::record("Child", {{f::kRoot, "Alpha"}, {f::kMask, "0001"}})});
    StreamUpdateChoice choice;
    choice.autoAdd = {.root = true, .children = true};
    const auto result = stage.update(choice);
    EXPECT_EQ(result.added, (std::vector<std::string>{"Word", "Child"}));
    EXPECT_EQ(stage.measurement(3, "Word").parity, "DE");
    EXPECT_EQ(stage.measurement(3, "Word").mask, "FW");
    EXPECT_EQ(stage.measurement(3, "Child").mask, "0001");
    EXPECT_EQ(stage.value("Word", "MN1"), "whole");
    EXPECT_EQ(stage.format.cells().measurement(stage.format.cellAtFrame(3, 1)).name, "Word");
}

TEST(StreamUpdate, NothingIsAddedToAFragmentedMeasurementWhichIsLogged) {
    UpdateStage stage;
    stage.place(4, 1, "Frag", "MFFR");
    stage.placeFragments("Parts",
                         {{5, 0, 5, 1, 1, 8, "FW", 'D', 1}, {6, 0, 6, 1, 1, 8, "FW", 'D', 2}});
    stage.fill(
        {StreamStage::record("Frag"), StreamStage::record("Parts"), StreamStage::record("Frag")});
    StreamUpdateChoice choice;
    choice.autoAdd.root = true;
    EXPECT_TRUE(stage.update(choice).added.empty());
    EXPECT_EQ(stage.ui.countLogs(412), 2);
    EXPECT_FALSE(stage.ui.hasBox(412));
}

TEST(StreamUpdate, TheNextSaveWritesAnUpdatedRecordToTheUpdateFileIfItsTypeQualifies) {
    UpdateStage stage;
    stage.place(4, 1, "Beta");
    stage.fill({StreamStage::record("Alpha", {{f::kType, "COE"}, {f::kData, "0.0 1.5"}}),
                StreamStage::record("Beta", {{f::kType, "OTH"}, {f::kData, "text"}}),
                StreamStage::record("Other", {{f::kType, "COE"}, {f::kData, "1 2"}})});
    const auto path = stage.folder / "update.txt";
    stage.settings.writeInteger("EnableUpd", 1);
    stage.settings.write("UpdPath", path);
    ASSERT_TRUE(stage.update().done);
    EXPECT_EQ(stage.value("Alpha", "Chg"), "1");
    EXPECT_EQ(stage.value("Beta", "Chg"), "1");
    FileWriter output;
    ASSERT_TRUE(output.open(stage.folder / "saved.tma", WriteMode::Truncate).ok());
    ASSERT_TRUE(saveConversionGroup(stage.context, stage.conversions, &stage.ui, output));
    ASSERT_TRUE(output.close().ok());
    const auto text = readFile(path);
    EXPECT_NE(text.find("Alpha, 1.5, 0.0\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Beta"), std::string::npos) << text;
    EXPECT_EQ(text.find("Other"), std::string::npos) << "it is not in the stream";
    EXPECT_EQ(stage.value("Alpha", "Chg"), "");
}

TEST(StreamUpdate, TheSettingsKeepOneKeyForEachField) {
    UpdateStage stage;
    StreamUpdateChoice choice;
    choice.fields.set(f::kMask);
    choice.fields.set(f::kData);
    choice.fields.set(f::kRoot);
    storeUpdateFields(stage.settings, choice);
    EXPECT_EQ(stage.settings.text("MDBU3"), "1");
    EXPECT_EQ(stage.settings.text("MDBU35"), "1");
    EXPECT_EQ(stage.settings.text("MDBU4"), "0");
    const auto stored = storedUpdateChoice(stage.settings);
    EXPECT_TRUE(stored.fields.test(f::kMask) && stored.fields.test(f::kData));
    EXPECT_EQ(stored.fields.count(), 2U);
}

}  // namespace
}  // namespace kavu::test
