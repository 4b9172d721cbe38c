#include "core/document/DocumentHistory.h"
#include "core/document/Transaction.h"
#include "support/TestContext.h"

#include <map>

namespace kavu::test {

namespace {

constexpr const char* kGeneral = "[kavu]GTMP.G";
constexpr const char* kOne = "[kavu]DSRCE.T01";
constexpr const char* kSide = "[kavu]TmpPCMFMT.MFF";

struct Listener : DocumentListener {
    void documentChanged(const DocumentChange& change) override {
        kinds.push_back(change.kind);
        names.push_back(change.name);
    }
    std::vector<int> kinds;
    std::vector<std::string> names;
};

class DocumentHistoryTest : public testing::Test {
  protected:
    DocumentHistoryTest() { EXPECT_TRUE(c.files.put(kGeneral, "0").ok()); }
    void edit(const std::string& name, const std::string& file, std::string_view bytes) {
        ASSERT_TRUE(
            inTransaction(c.context, &c.ui, name, [&] { return c.files.put(file, bytes).ok(); }));
    }
    std::size_t foldersIn(const std::string& folder) {
        std::vector<FolderEntry> entries;
        (void)listFolder(c.store.pathOf(folder), entries);
        return entries.size();
    }

    TestContext c;
};

}  // namespace

TEST_F(DocumentHistoryTest, GoesBackAndForthThroughAllLevels) {
    edit("First", kGeneral, "1");
    edit("Second", kOne, "2");
    edit("Third", kGeneral, "3");
    EXPECT_EQ(c.history.undoName(), "Third");
    EXPECT_EQ(c.history.redoName(), "");
    for (const std::string name : {"Third", "Second", "First"}) {
        EXPECT_EQ(c.history.undoName(), name);
        ASSERT_TRUE(c.history.undo(&c.ui));
        EXPECT_EQ(c.history.redoName(), name);
    }
    EXPECT_FALSE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_FALSE(c.has(kOne));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(c.history.redo(&c.ui));
    }
    EXPECT_FALSE(c.history.redo(&c.ui));
    EXPECT_EQ(c.read(kGeneral), "3");
    EXPECT_EQ(c.read(kOne), "2");
}

TEST_F(DocumentHistoryTest, LosesWhatWasUndoneWithTheNextOperation) {
    edit("First", kGeneral, "1");
    ASSERT_TRUE(c.history.undo(&c.ui));
    edit("Second", kGeneral, "2");
    EXPECT_FALSE(c.history.canRedo());
    EXPECT_EQ(foldersIn("redo"), 0U);
}

TEST_F(DocumentHistoryTest, TakesTheMarkAwayWhereTheDocumentIsOnTheDisk) {
    edit("First", kGeneral, "1");
    c.history.markSaved();
    EXPECT_FALSE(c.document.changed);
    edit("Second", kGeneral, "2");
    EXPECT_TRUE(c.document.changed);
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_FALSE(c.document.changed);
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_TRUE(c.document.changed) << "what is on the disk is later";
    ASSERT_TRUE(c.history.redo(&c.ui));
    EXPECT_FALSE(c.document.changed);
    ASSERT_TRUE(c.history.undo(&c.ui));
    edit("Other", kGeneral, "3");
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_TRUE(c.document.changed) << "the saved state is gone";
}

TEST_F(DocumentHistoryTest, LeavesTheMarkOfACorrectedLoadUntilASave) {
    c.history.markCorrected();
    EXPECT_TRUE(c.document.changed);
    edit("First", kGeneral, "1");
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_TRUE(c.document.changed);
    c.history.markSaved();
    ASSERT_TRUE(c.history.redo(&c.ui));
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_FALSE(c.document.changed);
}

TEST_F(DocumentHistoryTest, TellsOfUndoAndRedo) {
    Listener listener;
    c.history.addListener(listener);
    edit("First", kGeneral, "1");
    ASSERT_TRUE(c.history.undo(&c.ui));
    ASSERT_TRUE(c.history.redo(&c.ui));
    EXPECT_EQ(listener.kinds, (std::vector<int>{DocumentChange::Edited, DocumentChange::Undone,
                                                DocumentChange::Redone}));
    EXPECT_EQ(listener.names, (std::vector<std::string>{"First", "First", "First"}));
    c.history.removeListener(listener);
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(listener.kinds.size(), 3U);
}

TEST_F(DocumentHistoryTest, MakesNoLevelOfWhatAnEditorKeepsNextToTheGroups) {
    edit("Look at Stream", kSide, "filter");
    EXPECT_FALSE(c.history.canUndo());
    EXPECT_EQ(foldersIn("undo"), 0U);
    EXPECT_EQ(c.read(kSide), "filter");
}

TEST_F(DocumentHistoryTest, AnUndoLeavesWhatAnEditorKeepsNextToTheGroups) {
    edit("Look at Stream", kSide, "filter");
    ASSERT_TRUE(inTransaction(c.context, &c.ui, "Edit of Stream", [&] {
        return c.files.put(kGeneral, "1").ok() && c.files.put(kSide, "another filter").ok();
    }));
    EXPECT_TRUE(c.has("undo/000001/" + std::string(kGeneral)));
    EXPECT_FALSE(c.has("undo/000001/" + std::string(kSide)));
    // Its editor has gone, and has taken its files along.
    ASSERT_TRUE(c.files.remove(kSide).ok());
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_FALSE(c.has(kSide));
    ASSERT_TRUE(c.history.redo(&c.ui));
    EXPECT_EQ(c.read(kGeneral), "1");
    EXPECT_FALSE(c.has(kSide));
}

TEST_F(DocumentHistoryTest, RefusesWhileAnOperationIsOpen) {
    edit("First", kGeneral, "1");
    {
        const Transaction open(c.context, "Sheet", OnCrash::Keep);
        EXPECT_FALSE(c.history.canUndo());
        EXPECT_FALSE(c.history.undo(&c.ui));
        EXPECT_EQ(c.read(kGeneral), "1");
    }
    EXPECT_TRUE(c.history.canUndo());
}

TEST_F(DocumentHistoryTest, KeepsAHundredLevels) {
    for (int i = 1; i <= 103; ++i) {
        edit("Edit " + std::to_string(i), kGeneral, std::to_string(i));
    }
    EXPECT_EQ(c.history.levels(), 100U);
    EXPECT_EQ(foldersIn("undo"), 100U);
    while (c.history.undo(&c.ui)) {
    }
    EXPECT_EQ(c.read(kGeneral), "3");
}

TEST_F(DocumentHistoryTest, KeepsToItsBytesButAlwaysTheNewestLevel) {
    c.history.setLimits(100, 10);
    edit("First", kGeneral, "12345");
    edit("Second", kGeneral, "1234567890");
    EXPECT_EQ(c.history.levels(), 2U) << "of the former contents, not the new ones";
    edit("Third", kGeneral, "1");
    EXPECT_EQ(c.history.levels(), 1U);
    edit("Fourth", kOne, std::string(1000, 'x'));
    edit("Fifth", kOne, "y");
    EXPECT_EQ(c.history.levels(), 1U);
    EXPECT_EQ(c.history.undoName(), "Fifth");
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kOne), std::string(1000, 'x'));
}

TEST_F(DocumentHistoryTest, PutsEverythingBackIfAnUndoFails) {
    edit("First", kGeneral, "1");
    ASSERT_TRUE(inTransaction(c.context, &c.ui, "Second", [&] {
        return c.files.put(kGeneral, "2").ok() && c.files.put(kOne, "2").ok();
    }));
    // The second of the two files cannot go.
    ASSERT_TRUE(deleteFile(c.store.pathOf(kOne)).ok());
    ASSERT_TRUE(makeFolder(c.store.pathOf(kOne)).ok());
    EXPECT_FALSE(c.history.undo(&c.ui));
    EXPECT_EQ(c.ui.boxes.size(), 1U);
    EXPECT_EQ(c.read(kGeneral), "2");
    EXPECT_EQ(c.history.undoName(), "Second");
}

TEST_F(DocumentHistoryTest, ForgetsEverythingWithTheDocument) {
    edit("First", kGeneral, "1");
    edit("Second", kGeneral, "2");
    ASSERT_TRUE(c.history.undo(&c.ui));
    c.history.clear();
    EXPECT_EQ(c.history.levels(), 0U);
    EXPECT_EQ(foldersIn("undo") + foldersIn("redo"), 0U);
}

TEST_F(DocumentHistoryTest, TheCloseDeletesAllFoldersOfTheHistory) {
    for (const auto* const name :
         {"undo", "undo/000001", "redo", "TEMP0", "TEMP12", "EuDefinitions", "TEMPLATES"}) {
        ASSERT_TRUE(makeFolder(c.store.pathOf(name)).ok());
        c.write(std::string(name) + "/file", "x");
    }
    c.store.clearDocumentFiles(&c.ui);
    std::vector<FolderEntry> entries;
    ASSERT_TRUE(listFolder(c.store.folder(), entries).ok());
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, "TEMPLATES");
}

}  // namespace kavu::test
