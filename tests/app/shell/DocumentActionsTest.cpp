#include "app/shell/DocumentActions.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "groups/Migration.h"
#include "support/TestApplication.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using DiskState = DocumentActions::DiskState;

struct DocumentActionsTest : testing::Test {
    DocumentActionsTest() : actions(t.application, t.ui) {
        test::writeFile(path, "G\\PN:ONE;\r\nG\\106:09;\r\n");
    }
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
    DocumentActions actions;
    std::string path = t.folder / "flight.tma";
};

TEST_F(DocumentActionsTest, OpensByNameAndSavesUnderTheSameName) {
    ASSERT_TRUE(actions.openNamed("\"" + path + "\""));
    EXPECT_EQ(document().path, path);
    document().changed = true;
    ASSERT_TRUE(actions.save());
    EXPECT_FALSE(document().changed);
    EXPECT_THAT(test::readFile(path), HasSubstr("G\\FN:flight.tma;"));
    EXPECT_EQ(actions.diskState(), DiskState::Same);
}

TEST_F(DocumentActionsTest, AFileThatIsNotThereOpensNothing) {
    EXPECT_FALSE(actions.openNamed(t.folder / "missing.tma"));
    EXPECT_FALSE(document().open);
}

TEST_F(DocumentActionsTest, AChangeByAnotherProgramIsSeenAndKeepingMarksTheDocumentChanged) {
    ASSERT_TRUE(actions.openNamed(path));
    EXPECT_EQ(actions.diskState(), DiskState::Same);
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    EXPECT_EQ(actions.diskState(), DiskState::Changed);
    t.ui.choices.push_back(0);
    actions.checkDisk();
    ASSERT_EQ(t.ui.listPrompts.size(), 1U);
    EXPECT_EQ(t.ui.listPrompts[0].first, "Another program has changed 'flight.tma'");
    EXPECT_THAT(programName(), HasSubstr("PN:ONE"));
    EXPECT_TRUE(document().changed);
    actions.checkDisk();
    EXPECT_EQ(t.ui.listPrompts.size(), 1U) << "the same change is asked about once";
}

TEST_F(DocumentActionsTest, ReopeningTakesTheFileAndAsksNothingMore) {
    ASSERT_TRUE(actions.openNamed(path));
    document().changed = true;
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(1);
    actions.checkDisk();
    EXPECT_THAT(programName(), HasSubstr("PN:TWO"));
    EXPECT_EQ(t.ui.countBoxes(76), 0);
    EXPECT_EQ(actions.diskState(), DiskState::Same);
}

TEST_F(DocumentActionsTest, AChangedFileCanBeLeftAloneBySavingUnderAnotherName) {
    ASSERT_TRUE(actions.openNamed(path));
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(2);
    t.ui.files.push_back(FileChoice{t.folder / "other.tma", 1});
    actions.checkDisk();
    EXPECT_EQ(document().path, t.folder / "other.tma");
    EXPECT_THAT(test::readFile(t.folder / "other.tma"), HasSubstr("PN:ONE"));
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
}

TEST_F(DocumentActionsTest, ASaveAsksBeforeItOverwritesWhatAnotherProgramHasWritten) {
    ASSERT_TRUE(actions.openNamed(path));
    changeOnDisk("G\\PN:TWO;\r\nG\\106:09;\r\n");
    t.ui.choices.push_back(-1);
    EXPECT_FALSE(actions.save());
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:TWO"));
    t.ui.choices.push_back(0);
    EXPECT_TRUE(actions.save());
    EXPECT_THAT(test::readFile(path), HasSubstr("PN:ONE"));
}

TEST_F(DocumentActionsTest, AFileThatWentAwayOffersToKeepOrToSaveElsewhere) {
    ASSERT_TRUE(actions.openNamed(path));
    std::filesystem::remove(path);
    EXPECT_EQ(actions.diskState(), DiskState::Missing);
    t.ui.choices.push_back(1);
    t.ui.files.push_back(FileChoice{t.folder / "other.tma", 1});
    actions.checkDisk();
    ASSERT_EQ(t.ui.listPrompts.size(), 1U);
    EXPECT_THAT(t.ui.listPrompts[0].second, ElementsAre("Keep the document as it is here",
                                                        "Save the document under another name"));
    EXPECT_TRUE(fileExists(t.folder / "other.tma"));
}

TEST_F(DocumentActionsTest, ClosingAsksAboutChangesAndCancelKeepsTheDocument) {
    ASSERT_TRUE(actions.openNamed(path));
    document().changed = true;
    t.ui.byId[76] = Button::Cancel;
    EXPECT_FALSE(actions.close());
    EXPECT_TRUE(document().open);
    t.ui.byId[76] = Button::No;
    EXPECT_TRUE(actions.close());
    EXPECT_FALSE(document().open);
    EXPECT_EQ(actions.diskState(), DiskState::Same);
}

TEST_F(DocumentActionsTest, OtherEditionsConvertTheOpenDocument) {
    ASSERT_TRUE(actions.openNamed(path));
    VersionOptions options;
    options.method = 2;
    options.outputVersion = 2011;
    EXPECT_TRUE(actions.setVersions(options));
    EXPECT_EQ(document().version, 2011);
    EXPECT_TRUE(document().changed);
    EXPECT_EQ(t.application.context().settings.integer("IRIGOutputVersion", 0), 2011);
}

TEST_F(DocumentActionsTest, WhatACrashedRunLeftBehindIsSavedAndOpened) {
    const auto store = t.folder / "left-behind";
    ASSERT_TRUE(makeFolder(store).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\nG\\106:09;\r\n");
    t.ui.files.push_back(FileChoice{t.folder / "found.tma", 1});
    ASSERT_TRUE(actions.recover(store));
    EXPECT_EQ(document().path, t.folder / "found.tma");
    EXPECT_THAT(test::readFile(t.folder / "found.tma"), HasSubstr("PN:LOST"));
    EXPECT_TRUE(fileExists(store + "/[kavu]GTMP.G"));
}

TEST_F(DocumentActionsTest, ARecoveryWithoutANameDoesNothing) {
    EXPECT_FALSE(actions.recover(t.folder / "left-behind"));
    EXPECT_FALSE(document().open);
}

}  // namespace
}  // namespace kavu
