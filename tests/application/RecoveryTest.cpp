#include "application/Recovery.h"
#include "support/TestApplication.h"

namespace kavu::test {
namespace {

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

TEST_F(RecoveryTest, TakesBackTheOperationsThatHadNotEnded) {
    crashed("[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:half;\r\n");
    crashed("[kavu]DSRCE.T01", "T-1\\ID:half;\r\n");
    crashed("[kavu]PCMFMT.P01", "P-1\\DLN:half;\r\n");
    for (const auto* const folder : {"TEMP0", "TEMP1", "undo", "undo/000001", "EuDefinitions"}) {
        ASSERT_TRUE(makeFolder(store_ + "/" + folder).ok());
    }
    crashed("TEMP0/.operation", "Rename of Data Source");
    crashed("TEMP0/[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:before;\r\n");
    crashed("TEMP0/[kavu]DSRCE.T01.none", "");
    crashed("TEMP0/[kavu]DSRCE.T02", "T-2\\ID:deleted;\r\n");
    crashed("TEMP1/.operation", "A part of it");
    crashed("TEMP1/[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:inner;\r\n");
    crashed("TEMP1/[kavu]PCMFMT.P01", "P-1\\DLN:before;\r\n");
    crashed("undo/000001/[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:long ago;\r\n");
    crashed("EuDefinitions/[kavu]GTMP.G", "G\\106:09;\r\nG\\PN:the sheet;\r\n");
    const auto text = recover();
    EXPECT_NE(text.find("G\\PN:before;\r\nT-2\\ID:deleted;\r\nP-1\\DLN:before;\r\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("T-1"), std::string::npos);
    ASSERT_EQ(t.ui.notes.size(), 2U);
    EXPECT_EQ(t.ui.notes[0], "'Rename of Data Source' had not ended: it is taken back.");
    EXPECT_EQ(t.ui.notes[1], "'A part of it' had not ended: it is taken back.");
    EXPECT_EQ(readFile(store_ + "/[kavu]DSRCE.T01"), "T-1\\ID:half;\r\n")
        << "nothing in the store changes";
    EXPECT_EQ(readFile(store_ + "/TEMP0/[kavu]DSRCE.T02"), "T-2\\ID:deleted;\r\n");
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

}  // namespace
}  // namespace kavu::test
