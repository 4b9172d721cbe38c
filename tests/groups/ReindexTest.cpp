#include "core/document/GroupFiles.h"
#include "groups/Reindex.h"
#include "support/TestContext.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::Contains;

struct Reindex : testing::Test {
    bool reindex() { return reindexAllSections(t.context, &t.ui); }
    bool renumber(char letter) {
        const auto& kind = groupKind(letter);
        return renumberGroup(t.context, &t.ui, letter, kind.wildcard, kind.fileFormat);
    }

    test::TestContext t;
};

TEST_F(Reindex, AfterDeletingTheSecondOfThreeTheFilesAreOneAndTwo) {
    t.write(working::kGeneral, "G\\DSI\\N:2;\r\nG\\DSI-1:One;\r\nG\\DSI-2:Three;\r\n");
    t.write("[kavu]DSRCE.T01", "T-1\\ID:One;\r\nT-1\\CF:1;\r\n");
    t.write("[kavu]DSRCE.T03",
            "T-3\\ID:Three;\r\nT-3\\CF:3;\r\nT-3\\COM:keeps T-3\\ID:inside;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:One;\r\nM-1\\BB\\DLN:A;\r\n");
    t.write("[kavu]MULT.M02", "M-2\\ID:Two;\r\nM-2\\BB\\DLN:B;\r\n");
    t.write("[kavu]MULT.M03", "M-3\\ID:Three;\r\nM-3\\BB\\DLN:C;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:A;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:B;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:C;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\ID:One;\r\nT-1\\CF:1;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T02"),
              "T-2\\ID:Three;\r\nT-2\\CF:3;\r\nT-2\\COM:keeps T-3\\ID:inside;\r\n");
    EXPECT_FALSE(t.has("[kavu]DSRCE.T03"));
    EXPECT_EQ(t.read("[kavu]MULT.M02"), "M-2\\ID:Three;\r\nM-2\\BB\\DLN:C;\r\n");
    EXPECT_FALSE(t.has("[kavu]MULT.M03"));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P02"), "P-2\\DLN:C;\r\n");
    EXPECT_FALSE(t.has("[kavu]PCMFMT.P03"));
    EXPECT_FALSE(folderExists(t.store.pathOf("tmp")));
    EXPECT_THAT(t.ui.statusTexts, Contains("Re-Indexing all TMATS sections"));
    EXPECT_THAT(t.ui.statusTexts, Contains("Renumbering TMATS T group indexes"));
}

TEST_F(Reindex, AMeasurementFileThatNobodyRefersToIsDeleted) {
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:One;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:One;\r\nM-1\\BB\\DLN:A;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Nobody;\r\n");
    t.write("[kavu]PCMMEAS.D02", "D-2\\DLN:A;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_EQ(t.read("[kavu]PCMMEAS.D01"), "D-1\\DLN:A;\r\n");
    EXPECT_FALSE(t.has("[kavu]PCMMEAS.D02"));
}

TEST_F(Reindex, SourcesMultiplexesAndVendorsWithoutADataSourceGo) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    for (const auto* name :
         {"[kavu]DSRCE.T01", "[kavu]DSRCE.R01", "[kavu]MULT.M01", "[kavu]V.V01"}) {
        t.write(name, std::string(1, name[std::string(name).size() - 3]) + "-1\\ID:Gone;\r\n");
    }
    EXPECT_TRUE(reindex());
    for (const auto* name :
         {"[kavu]DSRCE.T01", "[kavu]DSRCE.R01", "[kavu]MULT.M01", "[kavu]V.V01"}) {
        EXPECT_FALSE(t.has(name)) << name;
    }
}

TEST_F(Reindex, ALinkStaysThatAnotherFormatEmbedsOrARecorderNames) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]DSRCE.R01", "R-1\\ID:One;\r\nR-1\\CDLN-1:Recorded;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Recorded;\r\nP-1\\AEF\\DLN-1:Inner;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:Inner;\r\n");
    t.write("[kavu]PCM1553.B01", "B-1\\DLN:Other;\r\n");
    t.write("[kavu]PCMPAM.A01", "A-1\\DLN:Other;\r\n");
    t.write("[kavu]PCMS.S01", "S-1\\DLN:Other;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P01"));
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P02"));
    EXPECT_FALSE(t.has("[kavu]PCM1553.B01"));
    EXPECT_FALSE(t.has("[kavu]PCMPAM.A01"));
    EXPECT_FALSE(t.has("[kavu]PCMS.S01"));
}

TEST_F(Reindex, ALinkStaysThatIsMergedIntoAnotherFormat) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:One;\r\nM-1\\BB\\DLN:Outer;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Outer;\r\nP-1\\ADM\\DMN-1:Merged;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:Merged;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P02"));
}

TEST_F(Reindex, AFileWithoutANameIsKept) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]DSRCE.T01", "T-1\\CF:1;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\COM:see P-9\\DLN:elsewhere;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_TRUE(t.has("[kavu]DSRCE.T01"));
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P01"));
}

TEST_F(Reindex, ANameOverItsLimitStillMatches) {
    const std::string longName(40, 'n');
    t.write(working::kGeneral, "G\\DSI-1:" + longName + ";\r\n");
    t.write("[kavu]DSRCE.T01", "T-1\\ID:" + longName + ";\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_TRUE(t.has("[kavu]DSRCE.T01"));
}

/// A file that is there and cannot be opened, whoever asks.
void makeUnreadable(test::TestContext& t, const char* name) {
    std::filesystem::create_symlink(name, t.store.pathOf(name));
}

TEST_F(Reindex, AHomeThatCannotBeReadStopsItBeforeAStreamGoes) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:A;\r\n");
    makeUnreadable(t, "[kavu]MULT.M01");
    EXPECT_FALSE(reindex());
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P01")) << "its home may be in what cannot be read";
    EXPECT_TRUE(t.ui.hasText("[kavu]MULT.M01"));
}

TEST_F(Reindex, AStreamThatCannotBeReadStopsItBeforeTheRenumbering) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:One;\r\nM-1\\BB\\DLN:A;\r\n");
    makeUnreadable(t, "[kavu]PCMFMT.P01");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:A;\r\n");
    EXPECT_FALSE(reindex());
    EXPECT_EQ(t.read("[kavu]PCMFMT.P03"), "P-3\\DLN:A;\r\n");
    EXPECT_TRUE(t.ui.hasText("[kavu]PCMFMT.P01"));
}

TEST_F(Reindex, WorksWithoutAParentAndWithoutFiles) {
    EXPECT_TRUE(reindexAllSections(t.context, nullptr));
}

TEST_F(Reindex, RenumberingAnEmptyWildcardDoesNothing) {
    t.write("[kavu]PCMFMT.P05", "P-5\\DLN:A;\r\n");
    EXPECT_TRUE(renumber('T'));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P05"), "P-5\\DLN:A;\r\n");
    EXPECT_FALSE(folderExists(t.store.pathOf("tmp")));
}

TEST_F(Reindex, RenumberingChangesTheGroupsOwnIndexOnly) {
    t.write("[kavu]PCMMEAS.D04",
            "D-4\\MN-1-2:a\x15z;\r\nD-004\\LT-4-4:MF;\r\nG\\PN:not of it;\r\n");
    t.write("[kavu]PCMMEAS.D07", "D-7\\MN-7-7:b;\r\n");
    EXPECT_TRUE(renumber('D'));
    EXPECT_EQ(t.read("[kavu]PCMMEAS.D01"), "D-1\\MN-1-2:a\x15z;\r\nD-1\\LT-4-4:MF;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMMEAS.D02"), "D-2\\MN-7-7:b;\r\n");
    EXPECT_FALSE(t.has("[kavu]PCMMEAS.D04"));
    EXPECT_FALSE(t.has("[kavu]PCMMEAS.D07"));
}

TEST_F(Reindex, GroupsThatAreNotSavedKeepTheirNumbers) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\n");
    t.write("[kavu]DSRCE.T00", "T-0\\ID:Zero;\r\n");
    t.write("[kavu]DSRCE.T02", "T-2\\ID:One;\r\n");
    t.write("[kavu]DSRCE.T100", "T-100\\ID:One;\r\n");
    t.write("[kavu]DSRCE.T-5", "T--5\\ID:One;\r\n");
    t.write("[kavu]MULT.M100", "M-100\\ID:One;\r\nM-100\\BB\\DLN:A;\r\n");
    t.write("[kavu]PCMFMT.P00", "P-0\\DLN:Nobody;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:A;\r\n");
    EXPECT_TRUE(reindex());
    EXPECT_EQ(t.read("[kavu]DSRCE.T00"), "T-0\\ID:Zero;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\ID:One;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T100"), "T-100\\ID:One;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T-5"), "T--5\\ID:One;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMFMT.P00"), "P-0\\DLN:Nobody;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"), "P-1\\DLN:A;\r\n")
        << "a stream whose home is not saved does not go";
    EXPECT_FALSE(t.has("[kavu]DSRCE.T02"));
    EXPECT_FALSE(t.has("[kavu]DSRCE.T03"));
}

TEST_F(Reindex, RenumberingKeepsWhatCannotBeTakenApart) {
    t.write("[kavu]PCMFMT.P02",
            "P-2\\DLN:A;\r\nP-2\\X 1;\r\nP-2;\r\nP-2:a\\b:c;\r\nP-2\\TF:ONE;\r\n");
    EXPECT_TRUE(renumber('P'));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"),
              "P-1\\DLN:A;\r\nP-2\\X 1;\r\nP-2;\r\nP-2:a\\b:c;\r\nP-1\\TF:ONE;\r\n");
}

TEST_F(Reindex, AGroupIsGivenUpIfTheFolderCanNotBeMade) {
    t.write("tmp", "a file in its place");
    t.write("[kavu]PCMFMT.P05", "P-5\\DLN:A;\r\n");
    EXPECT_TRUE(renumber('P'));
    EXPECT_TRUE(t.has("[kavu]PCMFMT.P05"));
}

TEST_F(Reindex, AFailureWhileCopyingLeavesTheOldFilesAndTheCopies) {
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:A;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:B;\r\n");
    ASSERT_TRUE(makeFolders(t.store.pathOf("tmp/[kavu]PCMFMT.P02")).ok());
    EXPECT_FALSE(renumber('P'));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P02"), "P-2\\DLN:A;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMFMT.P03"), "P-3\\DLN:B;\r\n");
    EXPECT_TRUE(t.has("tmp/[kavu]PCMFMT.P01"));
    EXPECT_TRUE(t.ui.hasText("[kavu]PCMFMT.P02"));
}

}  // namespace
}  // namespace kavu
