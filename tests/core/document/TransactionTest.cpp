#include "core/document/BuildDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/OpenDocument.h"
#include "core/document/Transaction.h"
#include "support/TestContext.h"

#include <map>
#include <sys/stat.h>

namespace kavu::test {

namespace {

constexpr const char* kGeneral = "[kavu]GTMP.G";
constexpr const char* kOne = "[kavu]DSRCE.T01";
constexpr const char* kChunk = "[kavu]00000001.C_O";
constexpr const char* kSide = "[kavu]TmpPCMFMT.ALTTAG";

struct Listener : DocumentListener {
    void documentChanged(const DocumentChange& change) override { changes.push_back(change); }
    IoStatus writePending() override {
        ++asked;
        return pending;
    }
    [[nodiscard]] std::vector<std::string> names(std::size_t change) const {
        std::vector<std::string> names;
        for (const auto& file : changes.at(change).files) {
            names.push_back(file.name);
        }
        return names;
    }
    std::vector<DocumentChange> changes;
    int asked = 0;
    IoStatus pending;
};

class TransactionTest : public testing::Test {
  protected:
    TransactionTest() { c.history.addListener(heard); }
    void put(const std::string& name, std::string_view bytes) {
        ASSERT_TRUE(c.files.put(name, bytes).ok());
    }
    /// All files and folders of the store, files with what they hold.
    std::map<std::string, std::string> all() {
        std::map<std::string, std::string> found;
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(c.store.folder(), entries).ok());
        for (const auto& entry : entries) {
            found[entry.name] = entry.isFolder ? "a folder" : c.read(entry.name);
        }
        return found;
    }

    TestContext c;
    Listener heard;
};

}  // namespace

TEST_F(TransactionTest, PutsEverythingBackWithoutACommit) {
    put(kGeneral, "G");
    put(kOne, "T");
    const auto before = all();
    {
        Transaction transaction(c.context, "Edit");
        put(kGeneral, "changed");
        ASSERT_TRUE(c.files.remove(kOne).ok());
        put(kChunk, "new");
        ASSERT_TRUE(c.files.move(kGeneral, "[kavu]GTMP.G2").ok());
        c.document.changed = true;
        EXPECT_TRUE(transaction.hasChanges());
    }
    EXPECT_EQ(all(), before);
    EXPECT_FALSE(c.document.changed);
    EXPECT_FALSE(c.history.canUndo());
    ASSERT_EQ(heard.changes.size(), 1U);
    EXPECT_EQ(heard.changes[0].kind, DocumentChange::TakenBack);
    EXPECT_EQ(heard.names(0), (std::vector<std::string>{kChunk, kOne, kGeneral, "[kavu]GTMP.G2"}));
}

TEST_F(TransactionTest, LeavesTheMarkOfAChangedDocumentAsItWas) {
    c.document.changed = true;
    {
        const Transaction transaction(c.context, "Edit");
        put(kGeneral, "changed");
    }
    EXPECT_TRUE(c.document.changed);
}

TEST_F(TransactionTest, MakesALevelAndOneEventOnCommit) {
    put(kGeneral, "before");
    Transaction transaction(c.context, "Edit of General Information");
    put(kGeneral, "after");
    put(kGeneral, "after all");
    EXPECT_TRUE(heard.changes.empty());
    ASSERT_TRUE(transaction.commit().ok());
    EXPECT_TRUE(c.document.changed);
    EXPECT_TRUE(c.history.canUndo());
    EXPECT_EQ(c.history.undoName(), "Edit of General Information");
    ASSERT_EQ(heard.changes.size(), 1U);
    EXPECT_EQ(heard.changes[0].kind, DocumentChange::Edited);
    EXPECT_EQ(heard.changes[0].name, "Edit of General Information");
    EXPECT_TRUE(heard.changes[0].touches('G'));
    EXPECT_FALSE(heard.changes[0].touchesConversions());
    EXPECT_FALSE(folderExists(c.store.pathOf("TEMP0")));
    EXPECT_EQ(c.read("undo/000001/" + std::string(kGeneral)), "before");
}

TEST_F(TransactionTest, DoesNothingIfNothingWasWritten) {
    put(kGeneral, "G");
    const auto before = all();
    ASSERT_TRUE(inTransaction(c.context, &c.ui, "Edit", [] { return true; }));
    EXPECT_FALSE(c.document.changed);
    EXPECT_FALSE(c.history.canUndo());
    EXPECT_TRUE(heard.changes.empty());
    EXPECT_EQ(all(), before);
}

TEST_F(TransactionTest, CountsAsChangedButMakesNoLevelOfEqualBytes) {
    put(kGeneral, "G");
    ASSERT_TRUE(inTransaction(c.context, &c.ui, "Edit", [&] {
        put(kGeneral, "G");
        return true;
    }));
    EXPECT_TRUE(c.document.changed) << "a dialog that wrote its file";
    EXPECT_FALSE(c.history.canUndo());
    EXPECT_EQ(heard.changes.size(), 1U);
    EXPECT_FALSE(folderExists(c.store.pathOf("TEMP0")));
}

TEST_F(TransactionTest, IsNoChangeIfOnlyAnEditorsOwnFilesWereWritten) {
    Transaction look(c.context, "Edit of Stream");
    put(kSide, "filter");
    EXPECT_FALSE(look.hasChanges());
    ASSERT_TRUE(look.commit().ok());
    EXPECT_FALSE(c.document.changed) << "nobody is asked to save a document for a look at it";
    EXPECT_TRUE(heard.changes.empty());
    Transaction edit(c.context, "Edit of Stream");
    put(kSide, "another filter");
    put(kOne, "T");
    EXPECT_TRUE(edit.hasChanges());
    ASSERT_TRUE(edit.commit().ok());
    EXPECT_TRUE(c.document.changed);
}

TEST_F(TransactionTest, TakesAnEditorsOwnFilesBackAsWell) {
    put(kSide, "filter");
    {
        const Transaction look(c.context, "Edit of Stream");
        put(kSide, "another filter");
    }
    EXPECT_EQ(c.read(kSide), "filter");
}

TEST_F(TransactionTest, TakesTheWorkBackThatSaysFalse) {
    put(kGeneral, "G");
    EXPECT_FALSE(inTransaction(c.context, &c.ui, "Edit", [&] {
        put(kGeneral, "half");
        return false;
    }));
    EXPECT_EQ(c.read(kGeneral), "G");
    EXPECT_TRUE(c.ui.boxes.empty());
}

TEST_F(TransactionTest, IsAPartOfTheOneItIsMadeIn) {
    put(kGeneral, "0");
    put(kOne, "0");
    {
        Transaction outer(c.context, "Outer");
        put(kGeneral, "1");
        {
            Transaction inner(c.context, "Inner");
            put(kGeneral, "2");
            put(kOne, "2");
            ASSERT_TRUE(inner.commit().ok());
        }
        EXPECT_TRUE(c.document.changed);
        EXPECT_FALSE(c.history.canUndo());
        EXPECT_TRUE(heard.changes.empty());
        {
            const Transaction inner(c.context, "Inner");
            put(kGeneral, "3");
            put(kChunk, "3");
        }
        EXPECT_EQ(c.read(kGeneral), "2");
        EXPECT_FALSE(c.has(kChunk));
        ASSERT_EQ(heard.changes.size(), 1U) << "what is known of the files follows";
        EXPECT_EQ(heard.changes[0].kind, DocumentChange::TakenBack);
        ASSERT_TRUE(outer.commit().ok());
    }
    EXPECT_EQ(c.history.undoName(), "Outer");
    EXPECT_EQ(c.history.levels(), 1U);
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_EQ(c.read(kOne), "0");
}

TEST_F(TransactionTest, TakesBackTheCommittedPartsOfAnOuterOne) {
    put(kGeneral, "0");
    {
        const Transaction outer(c.context, "Outer");
        Transaction inner(c.context, "Inner");
        put(kGeneral, "1");
        ASSERT_TRUE(inner.commit().ok());
    }
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_FALSE(c.document.changed);
}

TEST_F(TransactionTest, AsksForWhatIsOnlyInMemoryBeforeItEnds) {
    put(kGeneral, "0");
    heard.pending = IoStatus("chunk", ENOSPC);
    EXPECT_FALSE(inTransaction(c.context, &c.ui, "Edit", [&] {
        put(kGeneral, "1");
        return true;
    }));
    EXPECT_EQ(heard.asked, 1);
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_TRUE(c.ui.hasText("No space left on device"));
}

TEST_F(TransactionTest, KeepsNothingOfALoad) {
    put(kGeneral, "0");
    {
        const Transaction transaction(c.context, "Edit");
        const LoadScope load(c.files);
        put(kChunk, "loaded");
    }
    EXPECT_EQ(c.read(kChunk), "loaded");
}

TEST_F(TransactionTest, HasAnotherFolderIfItsPartsSurviveACrash) {
    put(kGeneral, "0");
    put(kChunk, "0");
    {
        Transaction sheet(c.context, "Edit of Stream", OnCrash::Keep);
        put(kGeneral, "1");
        EXPECT_TRUE(c.has("EuDefinitions/" + std::string(kGeneral)));
        Transaction record(c.context, "Edit of Conversion");
        put(kChunk, "1");
        EXPECT_TRUE(c.has("TEMP1/" + std::string(kChunk)));
        OpenChanges changes;
        ASSERT_TRUE(filesBeforeOpenChanges(c.store.folder(), changes).ok());
        EXPECT_EQ(changes.operations, std::vector<std::string>{"Edit of Conversion"});
        EXPECT_EQ(changes.former.size(), 1U);
        ASSERT_TRUE(record.commit().ok());
        EXPECT_FALSE(folderExists(c.store.pathOf("TEMP1")));
    }
    EXPECT_EQ(c.read(kGeneral), "0");
    EXPECT_EQ(c.read(kChunk), "0");
    EXPECT_FALSE(folderExists(c.store.pathOf("EuDefinitions")));
}

TEST_F(TransactionTest, StopsAChangeThatCannotBeTakenBack) {
    put(kGeneral, "0");
    c.write("TEMP0", "a file in the way");
    Transaction transaction(c.context, "Edit");
    EXPECT_EQ(c.files.put(kGeneral, "1").code(), ENOTDIR);
    EXPECT_EQ(c.read(kGeneral), "0");
}

TEST_F(TransactionTest, ReportsWhatCannotBePutBackAndKeepsIt) {
    put(kGeneral, "0");
    Transaction transaction(c.context, "Edit");
    put(kGeneral, "1");
    put(kOne, "1");
    ASSERT_TRUE(deleteFile(c.store.pathOf(kGeneral)).ok());
    ASSERT_TRUE(makeFolder(c.store.pathOf(kGeneral)).ok());
    EXPECT_FALSE(transaction.takeBack(&c.ui));
    EXPECT_EQ(c.ui.boxes.size(), 2U);
    EXPECT_TRUE(c.ui.hasText("recover it as it was before the operation from the folder '" +
                             c.store.folder() + "'"));
    EXPECT_FALSE(c.has(kOne)) << "all others are put back";
    // Recovery takes it back from there.
    OpenChanges changes;
    ASSERT_TRUE(filesBeforeOpenChanges(c.store.folder(), changes).ok());
    ASSERT_EQ(changes.former.size(), 1U);
    EXPECT_EQ(readFile(changes.former.at(kGeneral)), "0");
    EXPECT_EQ(changes.operations, std::vector<std::string>{"Edit"});
}

TEST_F(TransactionTest, WhatCannotBePutBackFreezesTheDocumentAndKeepsTheStore) {
    put(kGeneral, "0");
    put(kOne, "0");
    {
        Transaction sheet(c.context, "Edit of Stream", OnCrash::Keep);
        put(kOne, "accepted");
        Transaction transaction(c.context, "Edit");
        put(kGeneral, "1");
        ASSERT_TRUE(deleteFile(c.store.pathOf(kGeneral)).ok());
        ASSERT_TRUE(makeFolder(c.store.pathOf(kGeneral)).ok());
        EXPECT_FALSE(transaction.takeBack(nullptr));
        EXPECT_TRUE(c.history.isFrozen());
        EXPECT_EQ(c.files.put(kOne, "later").code(), ENOTRECOVERABLE);
        EXPECT_EQ(sheet.commit().code(), ENOTRECOVERABLE);
    }
    EXPECT_EQ(c.read(kOne), "accepted") << "as if the program had died there";
    EXPECT_EQ(c.read("TEMP1/" + std::string(kGeneral)), "0");
    EXPECT_FALSE(inTransaction(c.context, &c.ui, "Another",
                               [&] { return c.files.put(kOne, "another").ok(); }));
    c.ui.boxes.clear();
    EXPECT_FALSE(saveDocumentTo(c.context, &c.ui, c.folder / "out.tma"));
    EXPECT_TRUE(c.ui.hasText("can be neither changed nor saved any more"));
    EXPECT_FALSE(fileExists(c.folder / "out.tma"));

    // The next document gets a folder of its own, and this one is left to the recovery.
    const auto left = c.store.folder();
    closeDocument(c.context, nullptr);
    EXPECT_FALSE(c.history.isFrozen());
    writeFile(c.folder / "next.tma", "G\\PN:next;");
    ASSERT_TRUE(loadDocument(c.context, &c.ui, c.folder / "next.tma"));
    EXPECT_NE(c.store.folder(), left);
    EXPECT_EQ(readFile(left + "/TEMP1/" + std::string(kGeneral)), "0");
    EXPECT_EQ(readFile(left + "/" + std::string(kOne)), "accepted");
    EXPECT_TRUE(deleteFolder(left).ok());
}

TEST_F(TransactionTest, MakesAnOperationThatNobodyAskedForAPartOfItsNeighbours) {
    put(kGeneral, "0");
    const auto step = [&](const char* name, const char* file, const char* bytes, bool asked) {
        Transaction transaction(c.context, name);
        put(file, bytes);
        ASSERT_TRUE((asked ? transaction.commit() : transaction.commitUnasked()).ok());
    };
    step("Nobody", kChunk, "0", false);
    EXPECT_FALSE(c.document.changed);
    EXPECT_FALSE(c.history.canUndo());
    step("First", kGeneral, "1", true);
    step("Second", kGeneral, "2", true);
    ASSERT_TRUE(c.history.undo(&c.ui));
    step("Nobody", kChunk, "looked at", false);
    EXPECT_TRUE(c.history.canRedo());
    EXPECT_EQ(c.history.levels(), 2U);
    ASSERT_TRUE(c.history.redo(&c.ui));
    EXPECT_EQ(c.read(kChunk), "0") << "as it was when the level was made";
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kChunk), "looked at");
    ASSERT_TRUE(c.history.undo(&c.ui));
    EXPECT_EQ(c.read(kChunk), "0");
    EXPECT_EQ(c.read(kGeneral), "0");
}

}  // namespace kavu::test
