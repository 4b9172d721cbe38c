#include "conversion/ConversionCopies.h"
#include "conversion/ConversionFixture.h"
#include "core/document/Transaction.h"

#include <algorithm>
#include <map>
#include <optional>

namespace kavu {
namespace {

using test::ConversionFixture;

/// The sheet of a stream that is open, with the files of the records kept.
struct Sheet : ConversionFixture {
    bool copy(UserInterface* parent) {
        if (sheet) {
            EXPECT_TRUE(sheet->commit().ok());
        }
        sheet.emplace(context, "Edit of Stream", OnCrash::Keep);
        return copyConversionFiles(*sheet, conversions, parent);
    }
    bool restore(UserInterface* parent) { return restoreConversionFiles(*sheet, parent); }

    std::optional<Transaction> sheet;
};

struct Copies : Sheet {
    Copies() { EXPECT_TRUE(load("C-1\\DCN:A;\nC-1\\DCT:NON;\nC-30\\DCN:B;\nC-30\\DCT:NON;\n")); }
    /// The files of the records in the working store, or in the folder of the copies.
    std::map<std::string, std::string> files(const std::string& inside = "") {
        std::map<std::string, std::string> found;
        std::vector<FolderEntry> entries;
        (void)listFolder(store.folder() + inside, entries);
        for (const auto& entry : entries) {
            if (!entry.isFolder && matchesWildcard(entry.name, "[kavu]*.C_*")) {
                found[entry.name] = test::readFile(store.folder() + inside + "/" + entry.name);
            }
        }
        return found;
    }
    [[nodiscard]] bool hasCopies() const { return folderExists(store.pathOf("EuDefinitions")); }
};

TEST(ConversionCopies, HoldEveryFileOfTheRecordsAlsoOnesThatWereInMemoryOnly) {
    Copies c;
    ASSERT_TRUE(c.conversions.writeEuComment(nullptr, "A", std::string(40000, 'x'), false));
    EXPECT_TRUE(c.copy(&c.ui));
    EXPECT_EQ(c.files().size(), 3U) << "two chunks and a comment";
    EXPECT_TRUE(c.files("/EuDefinitions") == c.files());
    EXPECT_TRUE(c.ui.boxes.empty());
}

TEST(ConversionCopies, RestorePutsBackWhatWasChangedDeletedAndMade) {
    Copies c;
    ASSERT_TRUE(c.conversions.writeEuComment(nullptr, "A", std::string(40000, 'x'), false));
    const auto saved = c.save();
    ASSERT_TRUE(c.copy(&c.ui));
    const auto before = c.files();
    ASSERT_TRUE(c.conversions.renameDefinition(nullptr, "A2", "A"));
    ASSERT_TRUE(c.conversions.deleteDefinition(nullptr, "B"));
    ASSERT_TRUE(c.conversions.writeEuComment(nullptr, "A2", "short", false));
    for (int i = 0; i < 400; ++i) {  // into chunks that were not there
        ASSERT_TRUE(c.conversions.createDefaultDefinition(nullptr, "N" + std::to_string(i), false));
        ASSERT_TRUE(c.conversions.writeEuComment(nullptr, "N" + std::to_string(i),
                                                 std::string(300, 'n'), false));
    }
    EXPECT_FALSE(c.files() == before);
    EXPECT_GT(c.files().size(), before.size());
    EXPECT_TRUE(c.restore(&c.ui));
    EXPECT_TRUE(c.files() == before);
    EXPECT_FALSE(c.hasCopies());
    EXPECT_NE(std::find(c.ui.statusTexts.begin(), c.ui.statusTexts.end(), "Restoring EU files"),
              c.ui.statusTexts.end());
    EXPECT_TRUE(c.save() == saved);
    EXPECT_FALSE(c.conversions.locateDefinition("A2").found);
    EXPECT_EQ(c.conversions.readEuComment("A", false), std::string(40000, 'x'));
}

TEST(ConversionCopies, RestoreWithoutCopiesChangesNothing) {
    Copies c;
    ASSERT_TRUE(c.conversions.renameDefinition(nullptr, "Z", "A"));
    const auto before = c.files();
    c.sheet.emplace(c.context, "Edit of Stream", OnCrash::Keep);
    EXPECT_TRUE(c.restore(&c.ui));
    EXPECT_TRUE(c.files() == before);
    EXPECT_TRUE(c.ui.boxes.empty());
}

TEST(ConversionCopies, ASecondCopyTakesThePlaceOfTheFirst) {
    Copies c;
    ASSERT_TRUE(c.copy(nullptr));
    ASSERT_TRUE(c.conversions.renameDefinition(nullptr, "Z", "A"));
    ASSERT_TRUE(c.copy(nullptr));
    ASSERT_TRUE(c.conversions.deleteDefinition(nullptr, "Z"));
    EXPECT_TRUE(c.restore(nullptr));
    EXPECT_TRUE(c.conversions.locateDefinition("Z").found);
    EXPECT_FALSE(c.conversions.locateDefinition("A").found);
}

TEST(ConversionCopies, ADocumentWithoutRecordsGetsBackToNone) {
    Sheet c;
    ASSERT_TRUE(c.copy(&c.ui));
    ASSERT_TRUE(c.conversions.createDefaultDefinition(nullptr, "New", true));
    EXPECT_TRUE(c.restore(&c.ui));
    EXPECT_TRUE(c.chunks().empty());
}

TEST(ConversionCopies, DeletedCopiesLeaveTheRecordsAlone) {
    Copies c;
    ASSERT_TRUE(c.copy(&c.ui));
    ASSERT_TRUE(c.conversions.renameDefinition(nullptr, "Z", "A"));
    const auto before = c.files();
    ASSERT_TRUE(c.sheet->commit().ok());
    EXPECT_FALSE(c.hasCopies());
    EXPECT_TRUE(c.files() == before);
    c.sheet.reset();
    EXPECT_TRUE(c.files() == before);
    EXPECT_TRUE(c.ui.boxes.empty());
}

TEST(ConversionCopies, ACopyThatFailsIsReportedAndLeavesNoPartOfTheFiles) {
    Copies c;
    ASSERT_TRUE(c.conversions.writeOut().ok());
    test::writeFile(c.store.pathOf("EuDefinitions"), "in the way");
    EXPECT_FALSE(c.copy(&c.ui));
    ASSERT_EQ(c.ui.boxes.size(), 1U);
    EXPECT_NE(c.ui.boxes[0].text.find("EuDefinitions"), std::string::npos);
    EXPECT_FALSE(c.copy(nullptr)) << "silent";
    const auto before = c.files();
    EXPECT_TRUE(c.restore(&c.ui));
    EXPECT_TRUE(c.files() == before) << "nothing is restored from what was never copied";
}

TEST(ConversionCopies, ACopyThatCanNotBePutBackIsReportedAndStays) {
    Copies c;
    ASSERT_TRUE(c.copy(&c.ui));
    const auto path = chunkPath(c.store, 0);
    ASSERT_TRUE(c.conversions.renameDefinition(nullptr, "B2", "B"));
    ASSERT_TRUE(deleteFile(path).ok());
    ASSERT_TRUE(makeFolders(path + "/in the way").ok());
    EXPECT_FALSE(c.restore(&c.ui));
    EXPECT_EQ(c.ui.boxes.size(), 2U);
    EXPECT_TRUE(c.history.isFrozen());
    // Recovery does not look into "EuDefinitions", whose accepted edits are to stay.
    EXPECT_TRUE(fileExists(c.store.pathOf("TEMP0/[kavu]00000000.C_O")));
    EXPECT_TRUE(c.conversions.locateDefinition("B").found) << "the other chunk is back";
    ASSERT_TRUE(deleteFolder(path).ok());
}

}  // namespace
}  // namespace kavu
