#include "mdb/DatabaseStage.h"
#include "mdb/operations/DatabaseEdit.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

struct EditStage : DatabaseStage {
    explicit EditStage(std::string_view bytes = {}, MdbVersion version = MdbVersion::WithBus)
        : DatabaseStage(version) {
        writeFile(path, bytes);
        EXPECT_TRUE(edit.begin(&ui));
    }
    [[nodiscard]] std::vector<std::string> rowNames() const {
        std::vector<std::string> found;
        for (std::size_t i = 0; i < edit.size(); ++i) {
            found.emplace_back(edit.row(i).name());
        }
        return found;
    }

    DatabaseEdit edit{context, database};
};

using Names = std::vector<std::string>;

TEST(DatabaseEdit, WhatIsNotEditedKeepsItsBytes) {
    const std::string odd = " A ;x\n;no name;\r\nB;y;;\r\nC";
    EditStage stage(odd);
    EXPECT_EQ(stage.rowNames(), (Names{"A", "B", "C"}));
    EXPECT_EQ(stage.ui.statusTexts.front(), "Reading Database");
    EXPECT_EQ(stage.ui.progressTexts.front(), "Reading Entry #1");
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), odd);
    stage.edit.set(1, mdbfield::kRoot, " W ");
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), " A ;x\n;no name;\r\n" + mdbLine({"B", "W"}) + "C");
}

TEST(DatabaseEdit, RowsAreAddedDuplicatedAndRemoved) {
    EditStage stage(mdbLine({"A"}) + mdbLine({"B"}));
    stage.ui.otherwise = Button::Yes;
    EXPECT_EQ(stage.edit.add(MdbRecord("C")), 2U);
    const auto copy = stage.edit.duplicate({0});
    stage.edit.set(copy, mdbfield::kName, "A2");
    EXPECT_TRUE(stage.edit.remove(&stage.ui, {1}));
    EXPECT_EQ(stage.ui.boxes.back().title, "Delete Measurement Database Entry");
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"C"}) + mdbLine({"A2"}));
}

TEST(DatabaseEdit, CopiesOfSeveralRowsAreOneStep) {
    EditStage stage(mdbLine({"A", "R"}) + mdbLine({"B"}));
    EXPECT_EQ(stage.edit.duplicate({0, 1}), 2U);
    ASSERT_EQ(stage.edit.size(), 4U);
    EXPECT_EQ(stage.edit.row(2), stage.edit.row(0));
    EXPECT_EQ(stage.edit.row(3).name(), "B");
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_EQ(stage.edit.size(), 2U);
    EXPECT_FALSE(stage.edit.canUndo());
}

TEST(DatabaseEdit, AllGoAfterQuestion410) {
    EditStage stage(mdbLine({"A"}) + mdbLine({"B"}));
    EXPECT_FALSE(stage.edit.remove(&stage.ui, {0, 1}));
    EXPECT_TRUE(stage.ui.hasBox(410));
    EXPECT_EQ(stage.ui.boxes.back().title, "Delete Measurement Database");
    stage.ui.byId[410] = Button::Yes;
    EXPECT_TRUE(stage.edit.remove(&stage.ui, {0, 1}));
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), "");
}

TEST(DatabaseEdit, EveryStepIsUndone) {
    EditStage stage(mdbLine({"A"}) + mdbLine({"B"}) + mdbLine({"C"}));
    stage.ui.otherwise = Button::Yes;
    stage.edit.set(0, mdbfield::kName, "X");
    EXPECT_TRUE(stage.edit.remove(&stage.ui, {0, 2}));
    stage.edit.add(MdbRecord("D"));
    EXPECT_EQ(stage.rowNames(), (Names{"B", "D"}));
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_EQ(stage.rowNames(), (Names{"X", "B", "C"}));
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_FALSE(stage.edit.undo());
    EXPECT_EQ(stage.rowNames(), (Names{"A", "B", "C"}));
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"B"}) + mdbLine({"C"}));
}

TEST(DatabaseEdit, ManyCellsAreOneStepAndMayMakeRows) {
    EditStage stage(mdbLine({"A", "R"}) + mdbLine({"B"}));
    EXPECT_EQ(stage.edit.setCells({{0, mdbfield::kName, "A"}}), 0U);
    EXPECT_FALSE(stage.edit.canUndo());
    EXPECT_EQ(stage.edit.setCells({{0, mdbfield::kName, "X"},
                                   {0, mdbfield::kRoot, " S "},
                                   {2, mdbfield::kName, "C"},
                                   {3, mdbfield::kName, "D"}}),
              4U);
    EXPECT_EQ(stage.rowNames(), (Names{"X", "B", "C", "D"}));
    EXPECT_EQ(stage.edit.row(0)[mdbfield::kRoot], "S");
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_EQ(stage.rowNames(), (Names{"A", "B"}));
    EXPECT_EQ(stage.edit.row(0)[mdbfield::kRoot], "R");
    EXPECT_FALSE(stage.edit.canUndo());
}

TEST(DatabaseEdit, SampleEntriesAreMadeAfterTwoQuestionsAndACount) {
    EditStage stage(mdbLine({"A"}));
    stage.ui.queued = {Button::Yes, Button::Yes};
    stage.ui.choices = {1, 0};
    stage.ui.integers = {2, 1};
    EXPECT_TRUE(stage.edit.createSamples(&stage.ui));
    EXPECT_EQ(stage.rowNames(), (Names{"A", "Measurement_1", "Measurement_2"}));
    const auto& sample = stage.edit.row(1);
    EXPECT_EQ(sample[mdbfield::kDescription], "Sample");
    EXPECT_EQ(sample[mdbfield::kHighValue], "65535.0");
    EXPECT_EQ(sample[mdbfield::kHighWarning], "65535.0");
    EXPECT_EQ(sample[mdbfield::kType], "");
    EXPECT_EQ(sample[mdbfield::kData], "1.0 0.01 0.02");
    EXPECT_EQ(stage.ui.boxes.at(0).title, "Create Sample Database?");
    EXPECT_TRUE(stage.edit.createSamples(&stage.ui));
    EXPECT_EQ(stage.rowNames(), (Names{"Measurement_1"}));
    EXPECT_TRUE(stage.edit.undo());
    EXPECT_EQ(stage.rowNames(), (Names{"A", "Measurement_1", "Measurement_2"}));
    EXPECT_FALSE(stage.edit.createSamples(nullptr));
}

TEST(DatabaseEdit, AFaultIsMessage427AndNothingIsWritten) {
    EditStage stage(mdbLine({"A"}));
    stage.edit.set(0, mdbfield::kParity, "Q");
    std::vector<DatabaseEdit::Fault> faults;
    EXPECT_FALSE(stage.edit.store(&stage.ui, &faults));
    EXPECT_TRUE(stage.ui.hasBox(427));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].index, mdbfield::kParity);
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}));
    EXPECT_EQ(stage.ui.progressTexts.back(), "Validating Database (Entry #1: 0% complete)");
    stage.edit.set(0, mdbfield::kParity, "OD");
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.ui.progressTexts.back(), "Saving Database (Entry #1: 0% complete)");
}

TEST(DatabaseEdit, DiscreteValuesAreShownQuotedAndStoredWithBlanks) {
    std::vector<std::string> fields(36);
    fields[0] = "A";
    fields[34] = "DIS";
    fields[35] = "0 Off_line 1 On";
    EditStage stage(mdbLine(fields));
    EXPECT_EQ(stage.edit.row(0)[mdbfield::kData], R"(0="Off line" 1="On")");
    stage.edit.set(0, mdbfield::kData, "0 Off");
    EXPECT_FALSE(stage.edit.store(&stage.ui));
    EXPECT_TRUE(
        stage.ui.hasText("There appears to be an error in the EU conversion data string for "
                         "measurement 'A'. Strings must be in the form 0=\"Value0\""));
    stage.edit.set(0, mdbfield::kData, R"(0="Not ready")");
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    fields[35] = "0 Not_ready";
    EXPECT_EQ(stage.bytes(), mdbLine(fields));
}

TEST(DatabaseEdit, TheBackupIsThereUntilTheEndAndCancelBringsItBack) {
    const auto bytes = mdbLine({"A"});
    TestContext stage;
    const auto path = stage.folder / "x.mdb";
    writeFile(path, bytes);
    MeasurementDatabase database(stage.messages, path, MdbVersion::WithBus, {});
    {
        DatabaseEdit edit(stage.context, database);
        EXPECT_TRUE(edit.begin(&stage.ui));
        EXPECT_EQ(stage.read(kDatabaseBackup), bytes);
        edit.set(0, mdbfield::kRoot, "W");
        EXPECT_TRUE(edit.store(&stage.ui));
        EXPECT_EQ(readFile(path), mdbLine({"A", "W"}));
        EXPECT_TRUE(edit.cancel(&stage.ui));
        EXPECT_EQ(readFile(path), bytes);
    }
    EXPECT_FALSE(stage.has(kDatabaseBackup));
}

// --- a file that another program has changed
// ------------------------------------------------------

TEST(DatabaseEdit, AChangeByAnotherIsNotOverwritten) {
    EditStage stage(mdbLine({"A"}));
    writeFile(stage.path, mdbLine({"Other"}));
    stage.edit.set(0, mdbfield::kRoot, "W");
    EXPECT_FALSE(stage.edit.store(&stage.ui)) << "the question is answered with no";
    EXPECT_EQ(stage.bytes(), mdbLine({"Other"}));
    EXPECT_TRUE(stage.ui.hasText("was changed by another program"));
    EXPECT_EQ(stage.rowNames(), Names{"A"});
    EXPECT_FALSE(stage.edit.store(nullptr)) << "without a parent nothing is taken over";
    EXPECT_EQ(stage.bytes(), mdbLine({"Other"}));
}

TEST(DatabaseEdit, TheChangesArePutOnTopOfThoseOfAnotherBeforeTheyAreWritten) {
    EditStage stage(mdbLine({"A"}) + mdbLine({"B"}) + mdbLine({"C"}) + mdbLine({"D"}));
    stage.ui.otherwise = Button::Yes;
    stage.edit.set(0, mdbfield::kRoot, "W");
    EXPECT_TRUE(stage.edit.remove(&stage.ui, {1}));
    stage.edit.add(MdbRecord("New"));
    const auto theirs =
        mdbLine({"A", "", "16"}) + mdbLine({"B"}) + mdbLine({"D", "R"}) + mdbLine({"Theirs"});
    writeFile(stage.path, theirs);
    EXPECT_FALSE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), theirs) << "the result is shown first";
    EXPECT_EQ(stage.rowNames(), (Names{"A", "D", "Theirs", "New"}));
    EXPECT_TRUE(stage.ui.shown.empty()) << "no record was changed by both";
    EXPECT_FALSE(stage.edit.canUndo());
    EXPECT_TRUE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.bytes(), mdbLine({"A", "W", "16"}) + mdbLine({"D", "R"}) + mdbLine({"Theirs"}) +
                                 mdbLine({"New"}));
}

TEST(DatabaseEdit, WhatBothHaveChangedIsNamed) {
    EditStage stage(mdbLine({"A"}) + mdbLine({"B"}) + mdbLine({"C"}));
    stage.ui.otherwise = Button::Yes;
    stage.edit.set(0, mdbfield::kRoot, "mine");
    stage.edit.set(1, mdbfield::kRoot, "mine");
    EXPECT_TRUE(stage.edit.remove(&stage.ui, {2}));
    stage.edit.add(MdbRecord("New"));
    writeFile(stage.path, mdbLine({"A", "theirs"}) + mdbLine({"C", "theirs"}) + mdbLine({"New"}));
    EXPECT_FALSE(stage.edit.store(&stage.ui));
    ASSERT_EQ(stage.ui.shown.size(), 1U);
    EXPECT_EQ(stage.ui.shown[0].lines,
              (Names{"Measurement 'A': 'Root Word Name' was changed here to 'mine' and there to "
                     "'theirs': it is 'mine'.",
                     "Measurement 'C' was deleted here and changed there: it stays.",
                     "Measurement 'B' was changed here and deleted there: it is added.",
                     "Measurement 'New' was added here and there: both are in the list."}));
    EXPECT_EQ(stage.rowNames(), (Names{"A", "C", "New", "B", "New"}));
    EXPECT_EQ(stage.edit.row(0)[mdbfield::kRoot], "mine");
    EXPECT_EQ(stage.edit.row(1)[mdbfield::kRoot], "theirs");
}

TEST(DatabaseEdit, AFileThatIsGoneOrNoDatabaseAnyMoreLeavesTheRowsAsTheyAre) {
    EditStage stage(
        "<MeasurementDatabase><Measurement><Name>A</Name></Measurement>"
        "</MeasurementDatabase>",
        MdbVersion::Xml);
    ASSERT_EQ(stage.rowNames(), Names{"A"});
    stage.ui.otherwise = Button::Yes;
    stage.edit.set(0, mdbfield::kRoot, "W");
    writeFile(stage.path, "<Measure");
    EXPECT_FALSE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.rowNames(), Names{"A"});
    EXPECT_EQ(stage.bytes(), "<Measure");
    ASSERT_TRUE(deleteFile(stage.path).ok());
    EXPECT_FALSE(stage.edit.store(&stage.ui));
    EXPECT_EQ(stage.rowNames(), Names{"A"});
    EXPECT_FALSE(fileExists(stage.path));
    EXPECT_TRUE(stage.edit.canUndo());
}

TEST(DatabaseEdit, WithoutAUsableDatabaseItsFunctionsGoOff) {
    TestContext stage;
    stage.settings.set(setting::kDatabaseEnabled, true);
    MeasurementDatabase database(stage.messages, stage.folder / "none", MdbVersion::Xml, {});
    DatabaseEdit edit(stage.context, database);
    EXPECT_FALSE(edit.begin(&stage.ui));
    EXPECT_TRUE(stage.ui.hasBox(428));
    EXPECT_FALSE(stage.settings.get(setting::kDatabaseEnabled));
}

}  // namespace
}  // namespace kavu::test
