#include "core/document/Banner.h"
#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/document/Transaction.h"
#include "core/files/UserFile.h"
#include "core/talk/QuestionNames.h"
#include "support/TestContext.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/xattr.h>

namespace kavu::test {
namespace {

constexpr const char* kRule =
    "COMMENT: **************************************************************;\r\n";

std::string manyCommands() {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += formatPrintf("D-1\\MN-1-%d:MEASUREMENT %d;\r\n", i, i);
    }
    return text;
}

class BuildDocumentTest : public ::testing::Test {
  protected:
    std::string save(const std::string& name = "out.tma") {
        out_ = t.folder / name;
        EXPECT_TRUE(saveDocumentTo(t.context, &t.ui, out_));
        return readFile(out_);
    }

    TestContext t{1996};
    /// A save that is cancelled when a good part of the file is written.
    void cancelInTheMiddle() {
        t.write("[kavu]PCMMEAS.D01", manyCommands());
        out_ = t.folder / "out.tma";
        writeFile(out_, "old");
        t.document.changed = true;
        t.ui.polls = 0;
        t.ui.cancelAtPoll = 100;
        EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, out_));
        t.ui.cancelAtPoll = 0;
        EXPECT_TRUE(t.document.changed);
    }
    void saveInPlace() { t.settings.writeInteger("SaveInPlace", 1); }
    /// Of the files at the target, its backups and what a run has there meanwhile.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(t.folder.path())) {
            const auto name = entry.path().filename().string();
            if (name.find("out.") != std::string::npos) {
                names.push_back(name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string out_;
};

TEST_F(BuildDocumentTest, GroupsComeInTheirFixedOrder) {
    t.document.version = 2007;
    const std::pair<const char*, const char*> files[] = {
        {"[kavu]V.V01", "V-1\\ID:v;"},        {"[kavu]H.HHH", "H\\X:h;"},
        {"[kavu]PCMPAM.A01", "A-1\\DLN:a;"},  {"[kavu]PCMS.S01", "S-1\\DLN:s;"},
        {"[kavu]PCM1553.B01", "B-1\\DLN:b;"}, {"[kavu]PCMMEAS.D01", "D-1\\DLN:d;"},
        {"[kavu]PCMFMT.P02", "P-2\\DLN:q;"},  {"[kavu]PCMFMT.P01", "P-1\\DLN:p;"},
        {"[kavu]MULT.M01", "M-1\\ID:m;"},     {"[kavu]DSRCE.R01", "R-1\\ID:r;"},
        {"[kavu]DSRCE.T99", "T-99\\ID:t;"},   {"[kavu]GTMP.G", "G\\PN:g;"},
    };
    for (const auto& [name, command] : files) {
        t.write(name, std::string(command) + "\r\n");
    }
    t.steps.saveConversions = [](UserInterface*, FileWriter& writer) {
        writer.write("C-1\\DCN:c;\r\n");
        return true;
    };
    const auto text = save();
    EXPECT_TRUE(
        text.ends_with("G\\PN:g;\r\nT-99\\ID:t;\r\nR-1\\ID:r;\r\nM-1\\ID:m;\r\n"
                       "P-1\\DLN:p;\r\nP-2\\DLN:q;\r\nD-1\\DLN:d;\r\nB-1\\DLN:b;\r\n"
                       "S-1\\DLN:s;\r\nA-1\\DLN:a;\r\nC-1\\DCN:c;\r\nH\\X:h;\r\n"
                       "V-1\\ID:v;\r\n"))
        << text;
}

TEST_F(BuildDocumentTest, OldEditionsDropSAndVGroups) {
    t.write("[kavu]PCMS.S01", "S-1\\DLN:s;\r\n");
    t.write("[kavu]V.V01", "V-1\\ID:v;\r\n");
    t.document.version = 2001;
    EXPECT_EQ(save().find("-1\\"), std::string::npos);
    t.document.version = 2004;
    const auto text = save();
    EXPECT_NE(text.find("V-1\\ID:v;"), std::string::npos);
    EXPECT_EQ(text.find("S-1\\"), std::string::npos);
    t.document.version = 2005;
    EXPECT_NE(save().find("S-1\\DLN:s;"), std::string::npos);
}

TEST_F(BuildDocumentTest, GroupsThatTheEditionDoesNotKnowAreRemarked) {
    t.write("[kavu]PCMS.S01", "S-1\\DLN:s;\r\n");
    t.write("[kavu]PCMS.S07", "S-7\\DLN:t;\r\n");
    t.write("[kavu]V.V01", "V-1\\ID:v;\r\n");
    t.document.version = 2004;
    save();
    EXPECT_EQ(t.ui.notes,
              std::vector<std::string>{"An IRIG 106-04 (2004) file has no S groups: 2 left out."});
    EXPECT_TRUE(t.ui.boxes.empty());
    t.ui.notes.clear();
    t.document.version = 2009;
    save();
    EXPECT_TRUE(t.ui.notes.empty());
}

TEST_F(BuildDocumentTest, Edition1996HasNoBanner) {
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    EXPECT_EQ(save(), "G\\PN:A;\r\n");
}

TEST_F(BuildDocumentTest, SavingTwiceGivesOneBannerWithDateAndTimeOfTheSave) {
    t.document.version = 1999;
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    const std::string line =
        "COMMENT: This file saved on 01-02-2026 at 03:04:05 by the KAVU Software;\r\n";
    const std::string expected = kRule + line + "COMMENT: " + kBannerMaker +
                                 ";\r\nCOMMENT: " + kBannerHelp + ";\r\n" + kRule + "G\\PN:A;\r\n";
    EXPECT_EQ(save(), expected);
    EXPECT_EQ(save(), expected);
}

TEST_F(BuildDocumentTest, BannerOfANewDocumentSaysCreated) {
    t.document.version = 1999;
    t.document.created = true;
    EXPECT_NE(save().find("This file created on 01-02-2026"), std::string::npos);
    EXPECT_FALSE(t.document.created);
    EXPECT_NE(save().find("This file saved on"), std::string::npos);
}

TEST_F(BuildDocumentTest, AGeneralCommandThatHoldsCommentColonIsRemovedByTheBanner) {
    t.document.version = 1999;
    t.write("[kavu]GTMP.G", "G\\COM:see COMMENT: below;\r\nG\\PN:A;\r\n");
    const auto text = save();
    EXPECT_EQ(text.find("see COMMENT:"), std::string::npos);
    EXPECT_TRUE(text.ends_with(";\r\nG\\PN:A;\r\n"));
}

TEST_F(BuildDocumentTest, FileNameFieldBecomesTheFirstCommandBehindTheBanner) {
    t.document.version = 2009;
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    EXPECT_TRUE(save("a.b.tma").ends_with(std::string(kRule) + "G\\FN:a.b.tma;\r\nG\\PN:A;\r\n"));
    EXPECT_TRUE(save("c.tma").ends_with(std::string(kRule) + "G\\FN:c.tma;\r\nG\\PN:A;\r\n"));
}

TEST_F(BuildDocumentTest, EveryFileNameFieldIsReplacedWhereItStands) {
    t.document.version = 2011;
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\nG\\FN:x;\r\nG\\TA:B;\r\nG\\FN:y;\r\n");
    EXPECT_TRUE(
        save("n.tma").ends_with("G\\PN:A;\r\nG\\FN:n.tma;\r\nG\\TA:B;\r\nG\\FN:n.tma;\r\n"));
}

TEST_F(BuildDocumentTest, ASemicolonInTheFileNameDoesNotEndTheField) {
    t.document.version = 2009;
    EXPECT_NE(save("a;b.tma").find("G\\FN:a_b.tma;\r\n"), std::string::npos);
}

TEST_F(BuildDocumentTest, FileNameFieldIsAddedFromEdition2009OnOnly) {
    t.document.version = 2007;
    EXPECT_EQ(save().find("G\\FN"), std::string::npos);
}

TEST_F(BuildDocumentTest, StoredLineBreaksBecomeRealOnes) {
    t.write("[kavu]GTMP.G", "G\\COM:one\x14\x15two;\r\n");
    EXPECT_EQ(save(), "G\\COM:one\r\ntwo;\r\n");
}

TEST_F(BuildDocumentTest, ADocumentWithoutAGeneralGroupCanBeSaved) {
    t.write("[kavu]H.HHH", "H\\X:h;\r\n");
    EXPECT_EQ(save(), "H\\X:h;\r\n");
}

TEST_F(BuildDocumentTest, AnEmptyFileOfHardwareInformationAddsNothing) {
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    const auto without = save();
    t.write("[kavu]H.HHH", "");
    EXPECT_EQ(save(), without);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(BuildDocumentTest, CommentsInOtherGroupFilesAreNotCopied) {
    t.write("[kavu]DSRCE.T01", "COMMENT: x;\r\nT-1\\ID:A;\r\n");
    EXPECT_EQ(save(), "T-1\\ID:A;\r\n");
}

TEST_F(BuildDocumentTest, SaveClearsTheFlagsAndTakesThePath) {
    t.document.changed = true;
    t.document.created = true;
    t.document.readOnly = true;
    save();
    EXPECT_FALSE(t.document.changed);
    EXPECT_FALSE(t.document.created);
    EXPECT_FALSE(t.document.readOnly);
    EXPECT_EQ(t.document.path, out_);
}

TEST_F(BuildDocumentTest, OverwrittenFileIsBackedUp) {
    writeFile(t.folder / "out.tma", "old");
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    save();
    EXPECT_EQ(readFile(t.folder / "out.bak"), "old");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(BuildDocumentTest, NoBackupWhenTheSettingSaysSo) {
    t.settings.writeInteger("CreateBackup", 0);
    writeFile(t.folder / "out.tma", "old");
    save();
    EXPECT_FALSE(fileExists(t.folder / "out.bak"));
    EXPECT_FALSE(t.has("FORMER0.TMP"));
}

TEST_F(BuildDocumentTest, CancelInTheMiddleLeavesTheFileAndItsBackupAsTheyWere) {
    writeFile(t.folder / "out.bak", "older");
    cancelInTheMiddle();
    EXPECT_EQ(readFile(out_), "old");
    EXPECT_EQ(readFile(t.folder / "out.bak"), "older");
    EXPECT_TRUE(t.ui.boxes.empty()) << "there is nothing to put back";
    EXPECT_EQ(names(), (std::vector<std::string>{"out.bak", "out.tma"}));
    EXPECT_EQ(save(), manyCommands());
    EXPECT_EQ(readFile(t.folder / "out.bak"), "old");
}

TEST_F(BuildDocumentTest, AFailedSaveOfANewFileMakesNone) {
    t.steps.saveConversions = [](UserInterface*, FileWriter&) { return false; };
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, t.folder / "out.tma"));
    EXPECT_TRUE(names().empty());
}

TEST_F(BuildDocumentTest, TheNewFileTakesThePlaceOfTheOldOneWhenItIsComplete) {
    out_ = t.folder / "out.tma";
    writeFile(out_, "old");
    std::filesystem::permissions(out_, std::filesystem::perms(0604));
    const bool hasAttributes =
        ::setxattr(out_.c_str(), "user.origin", "range 7", 7, 0) == 0 || errno != ENOTSUP;
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    t.steps.saveConversions = [this](UserInterface*, FileWriter&) {
        EXPECT_EQ(readFile(out_), "old");
        EXPECT_FALSE(fileExists(t.folder / "out.bak"));
        return true;
    };
    ByteSource reader;
    ASSERT_TRUE(reader.open(out_).ok());
    save();
    EXPECT_EQ(readFile(out_), "G\\PN:A;\r\n");
    EXPECT_EQ(reader.window(), "old") << "who has the old file open reads it whole";
    EXPECT_EQ(std::filesystem::status(out_).permissions(), std::filesystem::perms(0604));
    if (hasAttributes) {
        char value[16]{};
        EXPECT_EQ(::getxattr(out_.c_str(), "user.origin", value, sizeof value), 7);
        EXPECT_STREQ(value, "range 7");
    }
    EXPECT_TRUE(t.ui.notes.empty());
    EXPECT_EQ(names(), (std::vector<std::string>{"out.bak", "out.tma"}));
}

TEST_F(BuildDocumentTest, InPlaceCancelInTheMiddleLeavesAShortTargetAndTheNextSaveBacksItUp) {
    saveInPlace();
    cancelInTheMiddle();
    const auto partial = readFile(out_);
    EXPECT_LT(partial.size(), manyCommands().size());
    EXPECT_EQ(readFile(t.folder / "out.bak"), "old");
    EXPECT_EQ(save(), manyCommands());
    EXPECT_EQ(readFile(t.folder / "out.bak"), partial);
}

TEST_F(BuildDocumentTest, InPlaceTheFormerContentsCanBePutBackAfterAFailure) {
    saveInPlace();
    for (const int backups : {0, 1}) {
        t.settings.writeInteger("CreateBackup", backups);
        t.ui.queued = {Button::Yes};
        cancelInTheMiddle();
        EXPECT_EQ(readFile(out_), "old");
        EXPECT_EQ(t.ui.boxes.back().defaultButton, Button::Yes);
        EXPECT_EQ(t.ui.boxes.back().name, question::kRestore);
    }
}

TEST_F(BuildDocumentTest, InPlaceAKilledRunIsToldOfAndTheBackupFromBeforeItIsKept) {
    saveInPlace();
    out_ = t.folder / "out.tma";
    writeFile(out_, "G\\PN:half");
    writeFile(t.folder / "out.bak", "whole");
    const auto store = t.folder / "dead";
    ASSERT_TRUE(makeFolder(store).ok());
    writeFile(t.folder / ".out.tma.kavu-lock", store);  // what it leaves behind
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    save();
    EXPECT_EQ(readFile(out_), "G\\PN:A;\r\n");
    EXPECT_EQ(readFile(t.folder / "out.bak~"), "whole");
    EXPECT_EQ(readFile(t.folder / "out.bak"), "G\\PN:half");
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    for (const auto& said : {out_, t.folder / "out.bak~", store}) {
        EXPECT_NE(t.ui.boxes[0].text.find("'" + said + "'"), std::string::npos) << said;
    }
    EXPECT_EQ(names(), (std::vector<std::string>{"out.bak", "out.bak~", "out.tma"}));
    save();
    EXPECT_EQ(t.ui.boxes.size(), 1u) << "it is told of once";
}

TEST_F(BuildDocumentTest, AfterAKilledRunABackupThatIsKeptAlreadyStays) {
    out_ = t.folder / "out.tma";
    writeFile(out_, "half");
    writeFile(t.folder / "out.bak", "second");
    writeFile(t.folder / "out.bak~", "first");
    writeFile(t.folder / ".out.tma.kavu-lock", "/nowhere/store");
    save();
    EXPECT_EQ(readFile(t.folder / "out.bak~"), "first");
    EXPECT_EQ(readFile(t.folder / "out.bak~2"), "second");
    EXPECT_EQ(readFile(t.folder / "out.bak"), "half");
    EXPECT_EQ(t.ui.boxes.at(0).text.find("/nowhere"), std::string::npos) << "it is gone";
}

TEST_F(BuildDocumentTest, AFailedSaveKeepsInMindThatAKilledRunHasLeftThePartialFile) {
    writeFile(t.folder / ".out.tma.kavu-lock", "/nowhere/store");
    cancelInTheMiddle();
    EXPECT_EQ(readFile(t.folder / ".out.tma.kavu-lock"), "/nowhere/store");
    save();
    EXPECT_FALSE(fileExists(t.folder / ".out.tma.kavu-lock"));
}

TEST_F(BuildDocumentTest, AFileThatIsBeingSavedByAnotherRunIsLeftAlone) {
    out_ = t.folder / "out.tma";
    writeFile(out_, "old");
    UserFile other;
    ASSERT_TRUE(other.claim(out_).ok());
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, out_));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].text, "Another program is saving '" + out_ + "'.");
    EXPECT_EQ(readFile(out_), "old");
}

TEST_F(BuildDocumentTest, InPlaceWithoutAReplyTheFormerContentsArePutBack) {
    saveInPlace();
    t.write("[kavu]PCMMEAS.D01", manyCommands());
    t.steps.saveConversions = [](UserInterface*, FileWriter&) { return false; };
    out_ = t.folder / "out.tma";
    for (const int backups : {0, 1}) {
        t.settings.writeInteger("CreateBackup", backups);
        writeFile(out_, "old");
        EXPECT_FALSE(saveDocumentTo(t.context, nullptr, out_));
        EXPECT_EQ(readFile(out_), "old");
        t.ui.queued = {Button::None};
        EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, out_));
        EXPECT_EQ(readFile(out_), "old");
        EXPECT_EQ(t.ui.boxes.back().name, question::kRestore);
        t.ui.queued = {Button::No};
        EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, out_));
        EXPECT_EQ(readFile(out_), manyCommands()) << "unless the answer is no";
        EXPECT_FALSE(t.has("FORMER0.TMP"));
        EXPECT_FALSE(t.store.isKeptForRecovery());
    }
}

TEST_F(BuildDocumentTest, InPlaceWhatCannotBePutBackStaysInTheStoreHoweverTheRunEnds) {
    saveInPlace();
    t.settings.writeInteger("CreateBackup", 0);
    t.write(working::kGeneral, "G\\PN:A;\r\n");
    out_ = t.folder / "out.tma";
    t.steps.saveConversions = [this](UserInterface*, FileWriter&) {
        // Nothing can be written there any more.
        EXPECT_TRUE(deleteFile(out_).ok() && makeFolder(out_).ok());
        return false;
    };
    for (const std::string kept : {"FORMER0.TMP", "FORMER1.TMP"}) {
        writeFile(out_, "old " + kept);
        EXPECT_FALSE(saveDocumentTo(t.context, nullptr, out_));
        EXPECT_EQ(t.read(kept), "old " + kept) << "and no later one takes its place";
        EXPECT_EQ(t.read(kept + ".PATH"), out_);
        ASSERT_TRUE(deleteFolder(out_).ok());
    }
    writeFile(out_, "old");
    t.document.open = true;
    t.ui.queued = {Button::Yes};
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, out_));
    EXPECT_TRUE(t.ui.hasText("They are in '" + t.store.pathOf("FORMER2.TMP") + "'"));
    const auto store = t.store.folder();
    closeDocument(t.context, nullptr);
    EXPECT_EQ(readFile(store + "/FORMER2.TMP"), "old");
    EXPECT_NE(readFile(store + "/[kavu]GTMP.G").find("G\\PN:A;"), std::string::npos)
        << "and so does the document";
    t.store.deactivate(&t.ui);
    EXPECT_EQ(readFile(store + "/FORMER0.TMP"), "old FORMER0.TMP");
    EXPECT_EQ(t.ui.notes.back(),
              "The folder '" + store + "' is left behind: recover the document from it.");
    EXPECT_TRUE(deleteFolder(store).ok());
}

TEST_F(BuildDocumentTest, AFullDiskIsReportedWithPathAndReason) {
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, "/dev/full"));
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.boxes[0].text, "Unable to write '/dev/full'\n\nReason: No space left on device");
}

TEST_F(BuildDocumentTest, AFolderInPlaceOfTheTargetIsReported) {
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, t.folder.path()));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_NE(t.ui.boxes[0].text.find("Is a directory"), std::string::npos);
}

TEST_F(BuildDocumentTest, AGroupFileThatCanNotBeReadStopsTheBuild) {
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]PCMFMT.P01")).ok());
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, t.folder / "out.tma"));
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.boxes[0].id, 407);
    EXPECT_NE(t.ui.boxes[0].text.find("Unable to read 'PCM Format Information' temporary file"),
              std::string::npos);
}

TEST_F(BuildDocumentTest, AGroupFileThatHasVanishedStopsTheSaveBeforeAnythingIsWritten) {
    for (const std::string vanished : {"[kavu]DSRCE.R02", "[kavu]GTMP.G"}) {
        writeFile(t.folder / "in.tma", "G\\PN:A;R-1\\ID:one;R-2\\ID:two;");
        ASSERT_TRUE(loadDocument(t.context, &t.ui, t.folder / "in.tma"));
        t.document.changed = true;
        ASSERT_TRUE(deleteFile(t.store.pathOf(vanished)).ok());
        bool stored = false;
        t.steps.storeOpenEditor = [&stored](UserInterface*) { return stored = true; };
        t.ui.boxes.clear();
        EXPECT_FALSE(saveDocument(t.context, &t.ui)) << vanished;
        ASSERT_EQ(t.ui.boxes.size(), 1u) << vanished;
        EXPECT_EQ(t.ui.boxes[0].id, 407);
        EXPECT_NE(t.ui.boxes[0].text.find(t.store.pathOf(vanished)), std::string::npos);
        EXPECT_NE(t.ui.boxes[0].text.find("No such file or directory"), std::string::npos);
        EXPECT_FALSE(stored);
        EXPECT_TRUE(t.document.changed);
        EXPECT_EQ(readFile(t.folder / "in.tma"), "G\\PN:A;R-1\\ID:one;R-2\\ID:two;");
        EXPECT_FALSE(fileExists(t.folder / "in.tma.bak"));
        EXPECT_FALSE(t.has(vanished));
        EXPECT_EQ(t.has(working::kGeneral) ? t.read(working::kGeneral) : "G\\PN:A;\r\n",
                  "G\\PN:A;\r\n")
            << "no banner";
        t.document.changed = false;
    }
}

TEST_F(BuildDocumentTest, AGroupThatVanishedIsSavedAgainOnceItIsWrittenOrRemoved) {
    writeFile(t.folder / "in.tma", "G\\PN:A;R-1\\ID:one;R-2\\ID:two;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, t.folder / "in.tma"));
    ASSERT_TRUE(deleteFile(t.store.pathOf("[kavu]DSRCE.R01")).ok());
    ASSERT_TRUE(deleteFile(t.store.pathOf("[kavu]DSRCE.R02")).ok());
    EXPECT_FALSE(saveDocument(t.context, &t.ui));
    ASSERT_TRUE(t.files.put("[kavu]DSRCE.R01", "R-1\\ID:again;\r\n").ok());
    ASSERT_TRUE(t.files.removeIfThere("[kavu]DSRCE.R02").ok());
    EXPECT_TRUE(saveDocument(t.context, &t.ui));
    const auto text = readFile(t.folder / "in.tma");
    EXPECT_NE(text.find("R-1\\ID:again;"), std::string::npos);
    EXPECT_EQ(text.find("R-2"), std::string::npos);
}

TEST_F(BuildDocumentTest, AnUndoAfterASaveLeadsBackToTheBytesOfTheSaveBefore) {
    const auto path = t.folder / "in.tma";
    writeFile(path, "G\\PN:A;R-1\\ID:one;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    ASSERT_TRUE(saveDocument(t.context, &t.ui));
    const auto before = readFile(path);
    // The general group with its banner is one of the files that the level gives back.
    ASSERT_TRUE(inTransaction(t.context, &t.ui, "Edit", [&] {
        return t.files.put(working::kGeneral, t.read(working::kGeneral) + "G\\PN:B;\r\n").ok() &&
               t.files.put("[kavu]DSRCE.R01", "R-1\\ID:two;\r\n").ok() &&
               t.files.put("[kavu]DSRCE.T01", "T-1\\ID:new;\r\n").ok();
    }));
    ASSERT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_NE(readFile(path), before);
    ASSERT_TRUE(t.history.undo(&t.ui));
    ASSERT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_EQ(readFile(path), before);
    ASSERT_TRUE(t.history.redo(&t.ui));
    ASSERT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_NE(readFile(path).find("T-1\\ID:new;"), std::string::npos);
}

TEST_F(BuildDocumentTest, AnOpenMakesNoLinksAndNoFolders) {
    writeFile(t.folder / "in.tma", "G\\PN:A;R-1\\ID:one;R-2\\ID:two;C-1\\DCN:a;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, t.folder / "in.tma"));
    for (const auto& entry : std::filesystem::directory_iterator(t.store.folder())) {
        EXPECT_TRUE(entry.is_regular_file()) << entry.path();
        EXPECT_EQ(entry.hard_link_count(), 1u) << entry.path();
    }
    EXPECT_EQ(t.history.levels(), 0u);
}

TEST_F(BuildDocumentTest, LinksAndModeOfAnOverwrittenFileStay) {
    writeFile(t.folder / "real.tma", "old");
    std::filesystem::permissions(t.folder / "real.tma", std::filesystem::perms(0640));
    std::filesystem::create_hard_link(t.folder / "real.tma", t.folder / "hard.tma");
    std::filesystem::create_symlink(t.folder / "real.tma", t.folder / "link.tma");
    t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    save("link.tma");
    EXPECT_TRUE(std::filesystem::is_symlink(t.folder / "link.tma"));
    EXPECT_EQ(readFile(t.folder / "hard.tma"), "G\\PN:A;\r\n");
    EXPECT_EQ(std::filesystem::status(t.folder / "real.tma").permissions(),
              std::filesystem::perms(0640));
    ASSERT_EQ(t.ui.notes.size(), 1u);
    EXPECT_NE(t.ui.notes[0].find("is written in place: the file has other names"),
              std::string::npos);
}

TEST_F(BuildDocumentTest, ReadOnlyDocumentIsSavedUnderAnotherName) {
    t.document.path = t.folder / "locked.tma";
    t.document.readOnly = true;
    t.ui.files = {FileChoice{t.folder / "other.tma", 1}};
    EXPECT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_EQ(t.ui.boxes.at(0).id, -144);
    EXPECT_EQ(t.document.path, t.folder / "other.tma");
    EXPECT_TRUE(fileExists(t.folder / "other.tma"));
}

TEST_F(BuildDocumentTest, SaveOfAKnownPathAsksNothing) {
    t.document.path = t.folder / "a.tma";
    EXPECT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(t.ui.filePrompts.empty());
}

// --- Closing ----------------------------------------------------------------------------

class CloseDocumentTest : public BuildDocumentTest {
  protected:
    CloseDocumentTest() {
        t.document.open = true;
        t.document.kind = DocumentKind::TmatsFile;
        t.document.changed = true;
        t.document.path = t.folder / "a.tma";
        t.write("[kavu]GTMP.G", "G\\PN:A;\r\n");
    }
};

TEST_F(CloseDocumentTest, AsksWithAnEmptyPrefixAndFileTwice) {
    t.ui.byId[76] = Button::Cancel;
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Cancelled);
    EXPECT_EQ(t.ui.boxes.at(0).text,
              "WARNING: The TMATS file you have been editing, has been modified.\n\nSave file "
              "first?");
    EXPECT_TRUE(t.document.open);
    EXPECT_TRUE(t.has("[kavu]GTMP.G"));
}

TEST_F(CloseDocumentTest, YesSavesFirst) {
    t.ui.byId[76] = Button::Yes;
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Closed);
    EXPECT_EQ(readFile(t.folder / "a.tma"), "G\\PN:A;\r\n");
    EXPECT_FALSE(t.document.open);
    EXPECT_EQ(t.document.kind, DocumentKind::None);
    EXPECT_TRUE(t.document.path.empty());
    EXPECT_FALSE(t.has("[kavu]GTMP.G"));
}

TEST_F(CloseDocumentTest, YesThatCanNotSaveStopsTheClose) {
    t.document.path = t.folder / "missing/a.tma";
    t.ui.byId[76] = Button::Yes;
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Cancelled);
    EXPECT_TRUE(t.document.open);
    EXPECT_TRUE(t.document.changed);
}

TEST_F(CloseDocumentTest, NoClosesWithoutSaving) {
    t.ui.byId[76] = Button::No;
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Closed);
    EXPECT_FALSE(fileExists(t.folder / "a.tma"));
}

TEST_F(CloseDocumentTest, AnUnchangedDocumentAsksNothing) {
    t.document.changed = false;
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Closed);
    EXPECT_TRUE(t.ui.boxes.empty());
}

}  // namespace
}  // namespace kavu::test
