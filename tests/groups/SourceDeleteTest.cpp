#include "core/document/GroupFiles.h"
#include "core/talk/QuestionNames.h"
#include "groups/DataSources.h"
#include "support/SourceStage.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class SourceDeleteTest : public ::testing::Test {
  protected:
    SourceDeleteTest() {
        t.open(test::threeSources());
        t.ui.byId[140] = Button::Yes;
    }
    bool remove(const std::string& name) { return deleteDataSource(t.parts, &t.ui, name); }
    test::SourceStage t;
};

TEST_F(SourceDeleteTest, AsksWithTheNameAndDoesNothingAfterNo) {
    t.ui.byId[140] = Button::No;
    const auto before = t.files();
    EXPECT_FALSE(remove("Second"));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].titleId, 83);
    EXPECT_EQ(t.ui.boxes[0].buttons, Buttons::YesNo);
    EXPECT_THAT(t.ui.boxes[0].text, HasSubstr("delete Data Source 'Second', and all stream"));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
    EXPECT_THAT(t.told, IsEmpty());
}

TEST_F(SourceDeleteTest, RemovesTheSourceAndItsStreamAndNumbersTheRestAnew) {
    EXPECT_TRUE(remove("First"));
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:Second;\r\nT-1\\RF1:1450.5;\r\n");
    EXPECT_FALSE(t.has(groupFile('T', 2)));
    EXPECT_THAT(t.read(groupFile('M', 1)), HasSubstr("M-1\\ID:Second;"));
    EXPECT_THAT(t.read(groupFile('M', 2)), HasSubstr("M-2\\ID:Recorder;"));
    EXPECT_FALSE(t.has(groupFile('V', 1)));
    EXPECT_TRUE(t.document.changed);
    EXPECT_THAT(t.told, ElementsAre("Deletion of Data Source"));
}

TEST_F(SourceDeleteTest, TheListIsWrittenAnewAtTheEndOfTheFile) {
    EXPECT_TRUE(remove("Second"));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\106:09;\r\nG\\COM:kept;\r\nG\\DSI\\N:2;\r\nG\\DSI-1:First;\r\nG\\DST-1:RF;\r\n"
              "G\\DSI-2:Recorder;\r\nG\\DST-2:STO;\r\n");
}

TEST_F(SourceDeleteTest, ARowThatTheFileStatesTwiceKeepsBothUnderItsNewNumber) {
    t.open(
        "G\\106:09;\r\nG\\DSI\\N:2;\r\nG\\DSI-1:A;\r\nG\\DST-1:STO;\r\nG\\DSI-2:B;\r\n"
        "G\\DSI-2:Other;\r\nG\\DST-2:RF;\r\nG\\DSI-1:goes;\r\nG\\DST-2:TAP;\r\n");
    EXPECT_TRUE(remove("A"));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\106:09;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:B;\r\nG\\DST-1:RF;\r\nG\\DSI-1:Other;\r\n"
              "G\\DST-1:TAP;\r\n");
}

TEST_F(SourceDeleteTest, AStreamThatAnotherSourceNamesStays) {
    // The recorder records Link A, and the second stream embeds it.
    EXPECT_TRUE(remove("First"));
    EXPECT_THAT(t.read(groupFile('P', 1)), HasSubstr("P-1\\DLN:Link A;"));
    EXPECT_TRUE(remove("Second"));
    EXPECT_THAT(t.read(groupFile('P', 1)), HasSubstr("P-1\\DLN:Link A;"));
    EXPECT_FALSE(t.has(groupFile('P', 2)));
    EXPECT_FALSE(t.has(groupFile('D', 2)));
}

TEST_F(SourceDeleteTest, DeletingTheLastDataSourceLeavesACountOfZero) {
    EXPECT_TRUE(remove("First"));
    EXPECT_TRUE(remove("Second"));
    EXPECT_TRUE(remove("Recorder"));
    EXPECT_EQ(t.read(groupFile('G')), "G\\106:09;\r\nG\\COM:kept;\r\nG\\DSI\\N:0;\r\n");
    for (const char letter : std::string("TRMPDBV")) {
        EXPECT_FALSE(t.has(groupFile(letter, 1))) << letter;
    }
}

TEST_F(SourceDeleteTest, TheMeasurementNamesOfItsOneLinkAreForgotten) {
    EXPECT_EQ(t.measurements.names(),
              (std::vector<std::string>{"ALPHA", "BETA", "GAMMA", "HEADING"}));
    EXPECT_TRUE(remove("Second"));
    EXPECT_EQ(t.measurements.names(), (std::vector<std::string>{"ALPHA", "BETA", "HEADING"}));
}

TEST_F(SourceDeleteTest, NoUndoFileIsLeft) {
    EXPECT_TRUE(remove("Second"));
    for (const auto& [name, bytes] : t.files()) {
        EXPECT_THAT(name, Not(HasSubstr("TEMP")));
    }
    EXPECT_FALSE(folderExists(t.store.pathOf("TEMP0")));
}

TEST_F(SourceDeleteTest, AnUnknownNameIsTold) {
    EXPECT_FALSE(remove("Third"));
    EXPECT_TRUE(t.ui.hasText("There is no data source 'Third' in this document."));
    EXPECT_FALSE(remove(""));
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceDeleteTest, WithoutAParentItIsDeletedInSilence) {
    EXPECT_TRUE(deleteDataSource(t.parts, nullptr, "Second"));
    EXPECT_EQ(listDataSources(t.context, nullptr), 2);
}

TEST_F(SourceDeleteTest, SourcesThatTheCountLeavesOutKeepTheirRowsAndGroups) {
    t.write(groupFile('G'),
            "G\\DSI\\N:1;\r\nG\\DSI-1:First;\r\nG\\DST-1:RF;\r\n"
            "G\\DSI-2:Second;\r\nG\\DST-2:RF;\r\nG\\DSI-3:Recorder;\r\n");
    EXPECT_TRUE(remove("First"));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\DSI\\N:0;\r\nG\\DSI-1:Second;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Recorder;\r\n");
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:Second;\r\nT-1\\RF1:1450.5;\r\n");
    EXPECT_TRUE(t.has(groupFile('R', 1)));
    EXPECT_TRUE(t.has(groupFile('M', 2)));
    EXPECT_TRUE(t.has(groupFile('P', 2)));
    EXPECT_TRUE(t.has(groupFile('B', 1)));
}

TEST_F(SourceDeleteTest, AListWithoutACountLosesOnlyTheRowThatIsDeleted) {
    t.write(groupFile('G'),
            "G\\DSI-1:First;\r\nG\\DST-1:RF;\r\n"
            "G\\DSI-2:Second;\r\nG\\DST-2:RF;\r\nG\\DSI-3:Recorder;\r\n");
    EXPECT_TRUE(remove("Second"));
    EXPECT_EQ(t.read(groupFile('G')),
              "G\\DSI\\N:0;\r\nG\\DSI-1:First;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Recorder;\r\n");
    EXPECT_TRUE(t.has(groupFile('T', 1)));
    EXPECT_FALSE(t.has(groupFile('T', 2)));
    EXPECT_TRUE(t.has(groupFile('R', 1)));
}

void addStrays(test::SourceStage& t) {
    t.write(groupFile('T', 7), "T-7\\ID:Stray;\r\n");
    t.write(groupFile('M', 7), "M-7\\ID:Stray;\r\nM-7\\BB\\DLN:Loose;\r\n");
    t.write(groupFile('D', 7), "D-7\\DLN:Loose;\r\n");
    t.write(groupFile('D', 8), "D-8\\DLN:Lost;\r\n");
}

// It was a remark after the deletion once, when it was too late.
TEST_F(SourceDeleteTest, WhatNobodyHasNamedIsNamedBeforeItGoes) {
    EXPECT_TRUE(remove("Second"));
    EXPECT_EQ(t.ui.boxes.size(), 1u) << "nothing to ask about";
    addStrays(t);
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(remove("Recorder"));
    EXPECT_EQ(t.ui.boxes.back().name, question::kUnreferenced);
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("\n\nT-7 'Stray'\nM-7 'Stray'\nD-7 'Loose'\n"
                                                  "D-8 'Lost'\n\n"));
    EXPECT_THAT(t.ui.notes, IsEmpty());
    for (const auto& [name, bytes] : t.files()) {
        EXPECT_THAT(bytes, Not(HasSubstr("Stray"))) << name;
        EXPECT_THAT(bytes, Not(HasSubstr("Lost"))) << name;
    }
}

TEST_F(SourceDeleteTest, WhatNobodyHasNamedCanBeLeft) {
    addStrays(t);
    t.ui.queued = {Button::No};
    EXPECT_TRUE(remove("Second"));
    EXPECT_EQ(listDataSources(t.context, nullptr), 2);
    EXPECT_EQ(t.read(groupFile('T', 2)), "T-2\\ID:Stray;\r\n");
    std::string all;
    for (const auto& [name, bytes] : t.files()) {
        all += bytes;
    }
    EXPECT_THAT(all, HasSubstr("\\BB\\DLN:Loose;"));
    EXPECT_THAT(all, HasSubstr("\\DLN:Loose;\r\n"));
    EXPECT_THAT(all, HasSubstr("\\DLN:Lost;"));
    EXPECT_THAT(all, Not(HasSubstr("Second")));
}

TEST_F(SourceDeleteTest, CancelAtWhatNobodyHasNamedDeletesNothing) {
    addStrays(t);
    const auto before = t.files();
    t.ui.queued = {Button::Cancel};
    EXPECT_FALSE(remove("Second"));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

// The group is deleted because the user wants it, though it is in no row of the list.
TEST_F(SourceDeleteTest, TheOwnGroupsOfASourceInNoRowAreNotAskedAbout) {
    t.write(groupFile('T', 7), "T-7\\ID:Stray;\r\n");
    t.write(groupFile('M', 7), "M-7\\ID:Stray;\r\nM-7\\BB\\DLN:Loose;\r\n");
    t.write(groupFile('D', 7), "D-7\\DLN:Loose;\r\n");
    EXPECT_TRUE(remove("Stray"));
    EXPECT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_FALSE(t.has(groupFile('D', 7)));
}

// --- the way back ---------------------------------------------------------------------------

TEST_F(SourceDeleteTest, IfTheUndoCopyCanNotBeMadeNothingHappens) {
    const auto before = t.files();
    t.write("TEMP0", "a file in the way of the folder");
    EXPECT_FALSE(remove("Second"));
    EXPECT_TRUE(t.ui.hasText("TEMP0"));
    ASSERT_TRUE(deleteFile(t.store.pathOf("TEMP0")).ok());
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
    const auto obstacle = t.store.pathOf("[kavu]GTMP.G.new");
    ASSERT_TRUE(makeFolder(obstacle).ok());
    EXPECT_FALSE(remove("Second")) << "the file of the source is gone by then";
    ASSERT_TRUE(deleteFolder(obstacle).ok());
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
}

TEST_F(SourceDeleteTest, AFailedDeleteBringsBackEveryFile) {
    // A folder stands where a P file is to go: R, T and M files have their new numbers by
    // then, and the M file of the data source is gone.
    ASSERT_TRUE(deleteFile(t.store.pathOf(groupFile('P', 1))).ok());
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('P', 1))).ok());
    const auto before = t.files();
    EXPECT_FALSE(remove("First"));
    EXPECT_TRUE(t.ui.hasText(groupFile('P', 1)));
    EXPECT_EQ(t.files(), before);
    EXPECT_FALSE(t.document.changed);
    EXPECT_THAT(t.told, IsEmpty());
    EXPECT_EQ(t.measurements.names().size(), 4U);
}

TEST_F(SourceDeleteTest, AGeneralFileThatCanNotBeReadStopsTheDelete) {
    ASSERT_TRUE(deleteFile(t.store.pathOf(groupFile('G'))).ok());
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('G'))).ok());
    const auto before = t.files();
    EXPECT_FALSE(remove("First"));
    EXPECT_EQ(t.files(), before);
}

TEST_F(SourceDeleteTest, ADataSourceOfNeitherTypeGoesWithItsRow) {
    t.write(groupFile('G'), "G\\DSI\\N:1;\r\nG\\DSI-1:Odd;\r\nG\\DST-1:OTH;\r\n");
    EXPECT_TRUE(remove("Odd"));
    EXPECT_EQ(t.read(groupFile('G')), "G\\DSI\\N:0;\r\n");
}

}  // namespace
}  // namespace kavu
