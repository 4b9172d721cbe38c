#include "application/DocumentService.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "groups/Migration.h"
#include "support/TestApplication.h"

#include <filesystem>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using DiskState = DocumentService::DiskState;

struct DocumentServiceTest : testing::Test {
    DocumentServiceTest() { test::writeFile(path, "G\\PN:ONE;\r\nG\\106:09;\r\n"); }
    TmatsDocument& document() { return t.application.context().document; }
    void changeOnDisk(const std::string& text) {
        // A stamp that differs for sure, whatever the file system's clock can tell.
        std::filesystem::remove(path);
        test::writeFile(path, text);
    }
    std::string programName() {
        return test::readFile(t.application.context().store.pathOf(working::kGeneral));
    }

    test::TestApplication t;
    DocumentService& service = t.application.documents();
    std::string path = t.folder / "flight.tma";
};

TEST_F(DocumentServiceTest, OpensByNameAndSavesUnderTheSameName) {
    ASSERT_TRUE(service.openNamed(&t.ui, "\"" + path + "\""));
    EXPECT_EQ(document().path, path);
    document().changed = true;
    ASSERT_TRUE(service.save(&t.ui));
    EXPECT_FALSE(document().changed);
    EXPECT_THAT(test::readFile(path), HasSubstr("G\\FN:flight.tma;"));
    EXPECT_EQ(service.diskState(), DiskState::Same);
}

TEST_F(DocumentServiceTest, AFileThatIsNotThereOpensNothing) {
    EXPECT_FALSE(service.openNamed(&t.ui, t.folder / "missing.tma"));
    EXPECT_FALSE(document().open);
}

TEST_F(DocumentServiceTest, AChangeByAnotherProgramIsSeenAndKeepingMarksTheDocumentChanged) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    EXPECT_EQ(service.diskState(), DiskState::Same);
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    EXPECT_EQ(service.diskState(), DiskState::Changed);
    t.ui.choices.push_back(0);
    service.checkDisk(&t.ui);
    ASSERT_EQ(t.ui.choicePrompts.size(), 1U);
    EXPECT_EQ(t.ui.choicePrompts[0].text, "Another program has changed the file '" + path +
                                              "' since it was opened or saved here.");
    EXPECT_EQ(t.ui.choicePrompts[0].defaultChoice, 0);
    EXPECT_THAT(programName(), HasSubstr("PN:ONE"));
    EXPECT_TRUE(document().changed);
    service.checkDisk(&t.ui);
    EXPECT_EQ(t.ui.choicePrompts.size(), 1U) << "the same change is asked about once";
    EXPECT_EQ(service.diskState(), DiskState::Changed);
    EXPECT_FALSE(service.save(&t.ui));
    EXPECT_EQ(t.ui.choicePrompts.size(), 2U) << "to keep a document is not to overwrite a file";
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
}

TEST_F(DocumentServiceTest, ReopeningTakesTheFileAndAsksNothingMore) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    document().changed = true;
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(1);
    service.checkDisk(&t.ui);
    EXPECT_THAT(programName(), HasSubstr("PN:TWO"));
    EXPECT_EQ(t.ui.countBoxes(76), 0);
    EXPECT_EQ(service.diskState(), DiskState::Same);
}

TEST_F(DocumentServiceTest, AChangedFileCanBeLeftAloneBySavingUnderAnotherName) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(2);
    t.ui.files.push_back(FileChoice{t.folder / "other.tma", 1});
    service.checkDisk(&t.ui);
    EXPECT_EQ(document().path, t.folder / "other.tma");
    EXPECT_THAT(test::readFile(t.folder / "other.tma"), HasSubstr("PN:ONE"));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
}

TEST_F(DocumentServiceTest, ASaveAsksBeforeItOverwritesWhatAnotherProgramHasWritten) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(-1);
    EXPECT_FALSE(service.save(&t.ui));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
    t.ui.choices.push_back(0);
    EXPECT_TRUE(service.save(&t.ui));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:ONE"));
    EXPECT_THAT(test::readFile(t.folder / "flight.bak"), HasSubstr("PN:TWO"));
    EXPECT_TRUE(service.save(&t.ui));
    EXPECT_EQ(t.ui.choicePrompts.size(), 2U) << "what was saved is our own";
}

TEST_F(DocumentServiceTest, EveryWayToASaveAsksBeforeItOverwritesAnotherProgramsChange) {
    const auto other = t.folder / "other.tma";
    test::writeFile(other, "G\\PN:THREE;\r\nG\\106:09;\r\n");
    std::filesystem::create_symlink(path, t.folder / "link.tma");
    const std::vector<std::pair<const char*, std::function<bool()>>> ways = {
        {"save", [&] { return service.save(&t.ui); }},
        {"save as", [&] { return service.saveAs(&t.ui); }},
        {"save to", [&] { return service.saveTo(&t.ui, path); }},
        {"save to a link", [&] { return service.saveTo(&t.ui, t.folder / "link.tma"); }},
        {"close", [&] { return service.close(&t.ui); }},
        {"open", [&] { return service.openNamed(&t.ui, other) && document().path == other; }},
        {"new", [&] { return service.create(&t.ui) && document().created; }},
        {"exit", [&] { return t.application.shutDown(&t.ui); }},
    };
    t.ui.byId[76] = Button::Yes;
    for (const auto& [name, way] : ways) {
        changeOnDisk("G\\PN:ONE;\r\nG\\106:09;\r\n");
        ASSERT_TRUE(service.openNamed(&t.ui, path)) << name;
        document().changed = true;
        changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
        t.ui.choicePrompts.clear();
        t.ui.files.assign(1, FileChoice{path, 1});
        EXPECT_FALSE(way()) << name;
        ASSERT_EQ(t.ui.choicePrompts.size(), 1U) << name;
        EXPECT_EQ(t.ui.choicePrompts[0].name, "changed-file");
        EXPECT_EQ(t.ui.choicePrompts[0].defaultChoice, -1) << "Enter costs nothing";
        EXPECT_THAT(t.ui.choicePrompts[0].text, HasSubstr(".bak'")) << name;
        EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO")) << name;
        EXPECT_TRUE(document().open) << name;
        EXPECT_TRUE(document().changed) << name;
        EXPECT_THAT(programName(), HasSubstr("PN:ONE")) << name;
        service.discard(&t.ui);
    }
}

TEST_F(DocumentServiceTest, AClosingDocumentCanBeSavedElsewhereOrReopened) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    document().changed = true;
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.byId[76] = Button::Yes;
    t.ui.choices = {1};
    t.ui.files.push_back(FileChoice{t.folder / "mine.tma", 1});
    EXPECT_TRUE(service.close(&t.ui));
    EXPECT_THAT(test::readFile(t.folder / "mine.tma"), HasSubstr("PN:ONE"));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));

    ASSERT_TRUE(service.openNamed(&t.ui, path));
    document().changed = true;
    changeOnDisk("G\\PN:THREE;\r\nG\\106:09;\r\n");
    t.ui.choices = {2};
    EXPECT_FALSE(service.close(&t.ui)) << "there is a document that was not looked at yet";
    EXPECT_THAT(programName(), HasSubstr("PN:THREE"));
    EXPECT_FALSE(document().changed);
    EXPECT_EQ(service.diskState(), DiskState::Same);
}

TEST_F(DocumentServiceTest, AFileThatChangesWhileItIsOpenedIsKnownAsChanged) {
    t.ui.cancelAtPoll = 0;
    bool isChanged = false;
    t.application.context().steps.validateDataLinks = [&](UserInterface*) {
        changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
        return isChanged = true;
    };
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    ASSERT_TRUE(isChanged);
    EXPECT_EQ(service.diskState(), DiskState::Changed);
}

TEST_F(DocumentServiceTest, AFailedSaveOfOurOwnIsNoOtherProgramAndMarksTheDocumentChanged) {
    t.application.context().settings.set(setting::kSaveInPlace, true);
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    for (const bool isClosing : {false, true}) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = 1;
        t.ui.byId[76] = Button::Yes;
        t.ui.queued.clear();
        t.ui.otherwise = Button::No;  // the former contents are not put back
        EXPECT_FALSE(isClosing ? service.close(&t.ui) : service.save(&t.ui));
        t.ui.cancelAtPoll = 0;
        EXPECT_THAT(test::readFile(path), testing::Not(HasSubstr("G\\106"))) << "it is partial";
        EXPECT_TRUE(document().changed);
        EXPECT_EQ(service.diskState(), DiskState::Same);
        service.checkDisk(&t.ui);
        EXPECT_TRUE(t.ui.choicePrompts.empty());
    }
}

TEST_F(DocumentServiceTest, ACancelledCloseDoesNotForgetWhatAnotherProgramHasWritten) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    document().changed = true;
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.byId[76] = Button::Cancel;
    EXPECT_FALSE(service.close(&t.ui));
    EXPECT_EQ(service.diskState(), DiskState::Changed);
}

TEST_F(DocumentServiceTest, AnEmptyOrPartialFileIsReopenedOnlyOnYes) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    const std::pair<const char*, const char*> rows[] = {{"", "is empty"},
                                                        {"G\\PN:TWO;\r\nG\\10", "ends within"}};
    for (const auto& [text, said] : rows) {
        changeOnDisk(text);
        t.ui.choices.push_back(1);
        t.ui.queued = {Button::No};
        service.checkDisk(&t.ui);
        EXPECT_THAT(t.ui.boxes.back().text, HasSubstr(said));
        EXPECT_THAT(t.ui.boxes.back().text, HasSubstr(path));
        EXPECT_EQ(t.ui.boxes.back().defaultButton, Button::No);
        EXPECT_TRUE(document().open);
        EXPECT_THAT(programName(), HasSubstr("PN:ONE"));
    }
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n\x1A");
    const auto boxes = t.ui.boxes.size();
    t.ui.choices.push_back(1);
    service.checkDisk(&t.ui);
    EXPECT_EQ(t.ui.boxes.size(), boxes) << "a whole file is reopened without a question";
    EXPECT_THAT(programName(), HasSubstr("PN:TWO"));
}

TEST_F(DocumentServiceTest, AnEmptyFileIsOpenedWithAWordAboutIt) {
    changeOnDisk("");
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    EXPECT_THAT(t.ui.notes, testing::Contains("'" + path + "' is empty."));
}

TEST_F(DocumentServiceTest, AFileThatAKilledRunHasLeftCutShortIsOpenedWithAWordAboutIt) {
    test::writeFile(t.folder / ".flight.tma.kavu-lock", "/tmp/store");
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    EXPECT_THAT(t.ui.notes, testing::Contains(HasSubstr("was left cut short")));
}

TEST_F(DocumentServiceTest, AFileThatWentAwayOffersToKeepOrToSaveElsewhere) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    std::filesystem::remove(path);
    EXPECT_EQ(service.diskState(), DiskState::Missing);
    t.ui.choices.push_back(1);
    t.ui.files.push_back(FileChoice{t.folder / "other.tma", 1});
    service.checkDisk(&t.ui);
    ASSERT_EQ(t.ui.choicePrompts.size(), 1U);
    EXPECT_THAT(
        t.ui.choicePrompts[0].choices,
        ElementsAre("&Keep the document as it is here", "&Save the document under another name"));
    EXPECT_TRUE(fileExists(t.folder / "other.tma"));
}

TEST_F(DocumentServiceTest, ClosingAsksAboutChangesAndCancelKeepsTheDocument) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    document().changed = true;
    t.ui.byId[76] = Button::Cancel;
    EXPECT_FALSE(service.close(&t.ui));
    EXPECT_TRUE(document().open);
    t.ui.byId[76] = Button::No;
    EXPECT_TRUE(service.close(&t.ui));
    EXPECT_FALSE(document().open);
    EXPECT_EQ(service.diskState(), DiskState::Same);
}

TEST_F(DocumentServiceTest, OtherEditionsConvertTheOpenDocument) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    VersionOptions options;
    options.method = 2;
    options.outputVersion = 2011;
    EXPECT_TRUE(service.setVersions(&t.ui, options));
    EXPECT_EQ(document().version, 2011);
    EXPECT_TRUE(document().changed);
    EXPECT_EQ(t.application.context().settings.integer("IRIGOutputVersion", 0), 2011);
}

TEST_F(DocumentServiceTest, WhatACrashedRunLeftBehindIsSavedAndOpened) {
    const auto store = t.folder / "left-behind";
    ASSERT_TRUE(makeFolder(store).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\nG\\106:09;\r\n");
    t.ui.files.push_back(FileChoice{t.folder / "found.tma", 1});
    ASSERT_TRUE(service.recover(&t.ui, store));
    EXPECT_EQ(document().path, t.folder / "found.tma");
    EXPECT_THAT(test::readFile(t.folder / "found.tma"), HasSubstr("PN:LOST"));
    EXPECT_TRUE(fileExists(store + "/[kavu]GTMP.G"));
}

TEST_F(DocumentServiceTest, ARecoveryWithoutANameDoesNothing) {
    EXPECT_FALSE(service.recover(&t.ui, t.folder / "left-behind"));
    EXPECT_FALSE(document().open);
}

TEST_F(DocumentServiceTest, WithoutAUserInterfaceAFileOfAnotherProgramIsNotOverwritten) {
    ASSERT_TRUE(service.openNamed(nullptr, path));
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    EXPECT_FALSE(service.save(nullptr));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
    EXPECT_FALSE(service.recover(nullptr, t.folder / "left-behind"));
}

TEST_F(DocumentServiceTest, DiscardingAsksNothingAndLeavesTheFileAsItIs) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    const auto before = test::readFile(path);
    document().changed = true;
    service.discard(&t.ui);
    EXPECT_FALSE(document().open);
    EXPECT_EQ(t.ui.countBoxes(76), 0);
    EXPECT_EQ(test::readFile(path), before);
}

TEST_F(DocumentServiceTest, ClosingWithoutADocumentSucceeds) {
    EXPECT_TRUE(service.close(&t.ui));
}

TEST_F(DocumentServiceTest, SavesUnderAnotherNameWithoutAQuestion) {
    ASSERT_TRUE(service.openNamed(&t.ui, path));
    ASSERT_TRUE(service.saveTo(&t.ui, t.folder / "other.tma"));
    EXPECT_EQ(document().path, t.folder / "other.tma");
    EXPECT_THAT(test::readFile(t.folder / "other.tma"), HasSubstr("PN:ONE"));
    EXPECT_EQ(service.diskState(), DiskState::Same);
}

TEST_F(DocumentServiceTest, FactsSayWhatTheDocumentHas) {
    EXPECT_FALSE(service.facts().open);
    ASSERT_TRUE(service.openNamed(&t.ui, KAVU_SOURCE_DIR "/samples/flight-test.tma"));
    const auto facts = service.facts();
    EXPECT_TRUE(facts.open);
    EXPECT_EQ(facts.version, document().version);
    EXPECT_TRUE(facts.hasRadioSource);
    EXPECT_TRUE(facts.hasTapeSource);
    EXPECT_TRUE(facts.hasDataLink);
    EXPECT_FALSE(facts.hasMessageStream);
}

}  // namespace
}  // namespace kavu
