#include "application/DocumentService.h"
#include "application/Recovery.h"
#include "application/StoreFacts.h"
#include "core/WorkingStore.h"
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
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].name, working::kRecovered) << "the mark alone";
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
    ASSERT_EQ(t.ui.notes.size(), 3U) << testing::PrintToString(t.ui.notes);
    EXPECT_TRUE(t.ui.notes[0].ends_with("does not say whether its file was read to the end."));
    EXPECT_EQ(t.ui.notes[1], "'Rename of Data Source' had not ended: it is taken back.");
    EXPECT_EQ(t.ui.notes[2], "'A part of it' had not ended: it is taken back.");
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

// --- what a store says of itself ------------------------------------------------------------

TEST_F(RecoveryTest, AnIncompleteStoreIsRefusedUnlessAPartIsWanted) {
    const auto source = t.folder / "in.tma";
    writeFile(source, "G\\106:05;G\\PN:A;P-1\\DLN:L;");
    crashed("[kavu]GTMP.G", "G\\106:05;\r\nG\\PN:A;\r\n");
    StoreRecord record;
    record.source = describeSource(source);
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    const auto out = t.folder / "out.tma";
    EXPECT_FALSE(recoverStore(t.application, &t.ui, store_, out));
    EXPECT_FALSE(fileExists(out));
    EXPECT_TRUE(t.ui.hasText("'" + store_ + "' is incomplete"));
    EXPECT_TRUE(t.ui.hasText("The file '" + source + "' is as it was: open it instead."));
    EXPECT_FALSE(describeStore(store_).isRecovered);

    writeFile(source, "another");
    t.ui.boxes.clear();
    EXPECT_TRUE(recoverStore(t.application, &t.ui, store_, out, true));
    EXPECT_TRUE(t.ui.hasText("is incomplete")) << "also if it is wanted";
    EXPECT_TRUE(t.ui.hasText("The file was '" + source + "', which has changed since."));
    EXPECT_NE(readFile(out).find("G\\PN:A;"), std::string::npos);
}

TEST_F(RecoveryTest, NamesWhatIsMissingCutOffOrNoFile) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    crashed("[kavu]PCMFMT.P01", "P-1\\DLN:A;\r\n");
    crashed("[kavu]PCMFMT.P02", "P-2\\DLN:B;\r\nP-2\\TF:O");
    crashed("[kavu]PCMFMT.P05", "P-5\\DLN:E;\r\n");
    ASSERT_TRUE(makeFolder(store_ + "/[kavu]PCMFMT.P03").ok());
    std::filesystem::create_symlink("/etc/passwd", store_ + "/[kavu]00000000.C_O");
    StoreRecord record;
    record.isSplit = record.isLoaded = true;
    record.edition = 2005;
    for (const auto* const name : {"[kavu]PCMFMT.P01", "[kavu]PCMFMT.P02", "[kavu]PCMFMT.P03",
                                   "[kavu]PCMFMT.P04", "[kavu]PCMFMT.P04", "/etc/passwd", ""}) {
        record.files.push_back({name, 5, 0});
    }
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    const auto text = recover();
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    const auto& told = t.ui.boxes[0].text;
    EXPECT_NE(told.find("\n'[kavu]PCMFMT.P02' is cut off.\n'[kavu]PCMFMT.P03' is no file.\n"
                        "'[kavu]PCMFMT.P04' is missing.\n'[kavu]00000000.C_O' is no file."),
              std::string::npos)
        << told;
    EXPECT_EQ(told.find("P01"), std::string::npos);
    EXPECT_EQ(told.find("P05"), std::string::npos);
    EXPECT_EQ(told.find("passwd"), std::string::npos);
    EXPECT_NE(text.find("P-1\\DLN:A;\r\nP-2\\DLN:B;\r\nP-5\\DLN:E;\r\n"), std::string::npos);
}

TEST_F(RecoveryTest, NamesConversionRecordsThatAreGone) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    crashed("[kavu]00000000.C_O", "[M1]\r\nMN1=one\r\n");
    crashed("[kavu]00000003.C_O", "[M4]\r\nMN1=fo");
    StoreRecord record;
    record.isSplit = record.isLoaded = true;
    record.chunks = {{0, 1}, {3, 3}, {5, 9223372036854775807}};
    record.files = {{"[kavu]00000000.C_RAW", 50, 0}, {"DATA1.TMP", 50, 0}};
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    recover();
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    const auto& told = t.ui.boxes[0].text;
    EXPECT_NE(told.find("\n'[kavu]00000001.C_O' is missing.\n'[kavu]00000005.C_O' is missing."),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("and 99981 more"), std::string::npos) << "a record may lie";
    EXPECT_EQ(told.find("C_RAW"), std::string::npos) << "they have become records";
    EXPECT_EQ(told.find("DATA1"), std::string::npos);
}

TEST_F(RecoveryTest, NamesRawConversionsThatAreGone) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    StoreRecord record;
    record.isSplit = true;
    record.files = {{"[kavu]00000000.C_RAW", 50, 0}};
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    recover();
    EXPECT_TRUE(t.ui.hasText("'[kavu]00000000.C_RAW' is missing."));
    t.ui.boxes.clear();
    crashed("[kavu]00000000.C_RAW", "C-1\\DCN:M1;\r\nC-1\\DCT:N");
    recover();
    EXPECT_TRUE(t.ui.hasText("'[kavu]00000000.C_RAW' is cut off."));
}

TEST_F(RecoveryTest, ManyFaultsAreCounted) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    StoreRecord record;
    record.isSplit = true;
    for (int index = 1; index <= 99; ++index) {
        record.files.push_back({formatPrintf("[kavu]PCMFMT.P%2.2d", index), 5, 0});
    }
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    recover();
    EXPECT_TRUE(t.ui.hasText("'[kavu]PCMFMT.P20' is missing.\nand 79 more"));
}

TEST_F(RecoveryTest, ComparesWithTheRecordFromBeforeAnOperationThatHadNotEnded) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    ASSERT_TRUE(makeFolder(store_ + "/TEMP0").ok());
    StoreRecord record;
    record.isSplit = record.isLoaded = true;
    record.edition = 2004;
    crashed("TEMP0/" + std::string(working::kStoreRecord), storeRecordText(record));
    record.edition = 2007;
    record.files = {{"[kavu]PCMFMT.P01", 5, 0}};
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    recover();
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.application.context().document.version, 2004);
}

TEST_F(RecoveryTest, TakesTheEditionOfTheRecordIfTheFilesDoNotTell) {
    crashed("[kavu]GTMP.G", "G\\PN:A;\r\n");
    StoreRecord record;
    record.isSplit = record.isLoaded = true;
    record.edition = 1996;
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    EXPECT_EQ(recover(), "G\\PN:A;\r\n") << "no banner and no file name";
    EXPECT_EQ(t.application.context().document.version, 1996);
    record.edition = 1234;
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    recover();
    EXPECT_EQ(t.application.context().document.version, 2011) << "there is no such edition";
}

TEST_F(RecoveryTest, RefusesTheStoreOfALivingRun) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    const auto out = t.folder / "out.tma";
    const auto own = t.application.context().store.folder();
    EXPECT_FALSE(recoverStore(t.application, &t.ui, own, out));
    EXPECT_TRUE(t.ui.hasText("The folder '" + own + "' belongs to a run that has not ended."));
    EXPECT_FALSE(fileExists(out));
}

TEST_F(RecoveryTest, MarksTheStoreWithTheFileThatWasMadeOfIt) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    EXPECT_FALSE(describeStore(store_).isRecovered);
    recover();
    const auto facts = describeStore(store_);
    EXPECT_TRUE(facts.isRecovered);
    EXPECT_EQ(facts.recoveredAs, t.folder / "out.tma");
    EXPECT_EQ(readFile(store_ + "/" + std::string(working::kRecovered)).substr(0, 20),
              "01-02-2026 03:04:05\n");
    recover();
    EXPECT_TRUE(describeStore(store_).isRecovered) << "as often as one wants";
}

TEST_F(RecoveryTest, AMarkThatCannotBeMadeIsARemark) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    ASSERT_TRUE(makeFolder(store_ + "/" + std::string(working::kRecovered)).ok());
    recover();
    ASSERT_FALSE(t.ui.notes.empty());
    EXPECT_NE(t.ui.notes.back().find("could not be marked as recovered"), std::string::npos);
    EXPECT_FALSE(describeStore(store_).isRecovered);
}

TEST_F(RecoveryTest, NamesTheFormerContentsOfAFileThatTheStoreHolds) {
    crashed("[kavu]GTMP.G", "G\\106:05;\r\n");
    crashed("FORMER0.TMP", "old");
    crashed("FORMER0.TMP.PATH", "/home/me/file.tma");
    crashed("FORMER1.TMP", "of nobody knows what");
    recover();
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].text,
              "The file '/home/me/file.tma' may not have been written "
              "completely. What it held before is in '" +
                  store_ + "/FORMER0.TMP'.");
}

TEST(ProposedNameTest, IsNeverThatOfTheDocument) {
    const TempFolder folder;
    StoreFacts facts;
    EXPECT_EQ(proposedName(facts), "");
    facts.record.emplace();
    EXPECT_EQ(proposedName(facts), "");
    facts.record->source.path = folder / "flight.tma";
    EXPECT_EQ(proposedName(facts), folder / "flight recovered.tma");
    writeFile(folder / "flight recovered.tma", "x");
    EXPECT_EQ(proposedName(facts), folder / "flight recovered 2.tma");
    facts.record->source.path = folder / ".hidden";
    EXPECT_EQ(proposedName(facts), folder / ".hidden recovered.tma");
    facts.record->source.path = folder / "a.b/plain";
    EXPECT_EQ(proposedName(facts), folder / "a.b/plain recovered.tma");
}

TEST(ProposedNameTest, AZeroByteInADamagedRecordIsNoEndlessSearch) {
    StoreFacts facts;
    facts.record.emplace();
    using namespace std::string_literals;
    facts.record->source.path = "/tmp\0/in.tma"s;
    EXPECT_EQ(proposedName(facts), "/tmp\0/in recovered.tma"s);
}

TEST_F(RecoveryTest, TheWindowAsksAboutAnIncompleteStoreAndProposesAnotherName) {
    const auto source = t.folder / "in.tma";
    writeFile(source, "G\\106:05;");
    crashed("[kavu]GTMP.G", "G\\106:05;\r\nG\\PN:A;\r\n");
    StoreRecord record;
    record.source = describeSource(source);
    crashed(std::string(working::kStoreRecord), storeRecordText(record));
    EXPECT_FALSE(t.application.documents().recover(&t.ui, store_));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].defaultButton, Button::No);
    EXPECT_TRUE(t.ui.filePrompts.empty()) << "no name is asked for";

    t.ui.queued = {Button::Yes};
    t.ui.files = {FileChoice{t.folder / "in recovered.tma", 1}};
    EXPECT_TRUE(t.application.documents().recover(&t.ui, store_));
    ASSERT_EQ(t.ui.filePrompts.size(), 1U);
    EXPECT_EQ(t.ui.filePrompts[0].path, t.folder / "in recovered.tma");
    EXPECT_EQ(readFile(source), "G\\106:05;");
    EXPECT_EQ(t.application.context().document.path, t.folder / "in recovered.tma");
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
