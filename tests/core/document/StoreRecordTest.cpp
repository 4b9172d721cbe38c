#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/document/StoreRecord.h"
#include "core/document/Transaction.h"
#include "support/TestContext.h"

#include <filesystem>
#include <sys/stat.h>

namespace kavu::test {
namespace {

namespace fs = std::filesystem;

StoreRecord sampleRecord() {
    StoreRecord record;
    record.source = {"/a folder/100%\nof it.tma ", 123, -5};
    record.isSplit = true;
    record.edition = 2009;
    record.files = {{"[kavu]GTMP.G", 10, 7}, {"[kavu]odd name.P01", 0, 18446744073709551615U}};
    record.chunks = {{0, 24}, {26, 26}};
    return record;
}

TEST(StoreRecordText, ComesBackAsItWas) {
    const auto record = sampleRecord();
    const auto read = parseStoreRecord(storeRecordText(record));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->source, record.source);
    EXPECT_TRUE(read->isSplit);
    EXPECT_FALSE(read->isLoaded);
    EXPECT_EQ(read->edition, 2009);
    ASSERT_EQ(read->files.size(), 2U);
    EXPECT_EQ(read->files[1].name, "[kavu]odd name.P01");
    EXPECT_EQ(read->files[1].inode, 18446744073709551615U);
    EXPECT_EQ(read->files[0].size, 10U);
    EXPECT_EQ(read->chunks, record.chunks);
}

TEST(StoreRecordText, IsNoneIfItIsCutOffOrAnotherText) {
    const auto text = storeRecordText(sampleRecord());
    for (std::size_t length = 0; length < text.size(); ++length) {
        const auto read = parseStoreRecord(text.substr(0, length));
        // A part may end with a line; it never holds what is not in the whole.
        EXPECT_TRUE(!read || read->files.size() <= 2) << length;
        EXPECT_TRUE(!read || text[length - 1] == '\n') << length;
    }
    EXPECT_FALSE(parseStoreRecord("KAVU store 2\nsplit=1\n"));
    EXPECT_FALSE(parseStoreRecord(std::string(100, '\0')));
}

TEST(StoreRecordText, TakesNumbersThatAreNoneForZero) {
    const auto read = parseStoreRecord(
        "KAVU store 1\nsize=1e9\nedition=99999999999999999999\nsplit=yes\nodd\nfile=%\n=\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->source.size, 0U);
    EXPECT_EQ(read->edition, 0);
    EXPECT_FALSE(read->isSplit);
    ASSERT_EQ(read->files.size(), 1U);
    EXPECT_EQ(read->files[0].name, "%");
}

TEST(StoreRecordText, TakesASourceWithAZeroByteForNone) {
    using namespace std::string_view_literals;
    const auto read = parseStoreRecord("KAVU store 1\nsource=/home\0/in.tma\nsize=10\n"sv);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->source.path, "");
    EXPECT_EQ(read->source.size, 10U);
}

TEST(StoreRecordText, BoundsTheNumberOfFiles) {
    std::string text = "KAVU store 1\n";
    for (int i = 0; i < 100000; ++i) {
        text += "file=x 1 1\n";
    }
    EXPECT_LE(parseStoreRecord(text)->files.size(), 2000U);
}

class StoreRecordTest : public testing::Test {
  protected:
    StoreRecordTest() { writeFile(path, "G\\106:09;R-1\\ID:one;R-2\\ID:two;"); }
    std::optional<StoreRecord> record() {
        std::optional<StoreRecord> found;
        EXPECT_TRUE(readStoreRecord(t.store.pathOf(working::kStoreRecord), found).ok());
        return found;
    }
    std::vector<std::string> recordedNames() {
        std::vector<std::string> names;
        for (const auto& file : record().value_or(StoreRecord()).files) {
            names.push_back(file.name);
        }
        return names;
    }

    TestContext t;
    std::string path = t.folder / "in.tma";
};

TEST_F(StoreRecordTest, SaysWhichFileWasReadToItsEndAndWhatIsInTheStore) {
    t.document.version = 2009;
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    const auto read = record();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->source, describeSource(path));
    EXPECT_EQ(read->source.path, path);
    EXPECT_EQ(read->source.size, 31U);
    EXPECT_NE(read->source.modified, 0);
    EXPECT_TRUE(read->isSplit);
    EXPECT_TRUE(read->isLoaded);
    EXPECT_EQ(read->edition, t.document.version);
    EXPECT_EQ(recordedNames(),
              (std::vector<std::string>{"[kavu]DSRCE.R01", "[kavu]DSRCE.R02", "[kavu]GTMP.G"}));
}

TEST_F(StoreRecordTest, SaysThatALoadHasNotReadTheFileToItsEnd) {
    std::optional<StoreRecord> during;
    t.steps.gatherMeasurementNames = [&](UserInterface*) {
        during = record();
        return true;
    };
    writeFile(path, "G\\106:09;G\\PN:cut off");
    EXPECT_FALSE(splitIntoGroupFiles(t.context, &t.ui, path));
    ASSERT_TRUE(record());
    EXPECT_FALSE(record()->isSplit);
    EXPECT_EQ(record()->source.path, path);
    writeFile(path, "G\\106:09;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    ASSERT_TRUE(during);
    EXPECT_TRUE(during->isSplit);
    EXPECT_FALSE(during->isLoaded) << "its records are not converted yet";
}

TEST_F(StoreRecordTest, FollowsOperationsAndTheirUndo) {
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    const auto before = t.read(working::kStoreRecord);
    ASSERT_TRUE(inTransaction(t.context, &t.ui, "Edit", [&] {
        return t.files.remove("[kavu]DSRCE.R02").ok() &&
               t.files.put("[kavu]DSRCE.T01", "T-1\\ID:x;\r\n").ok();
    }));
    EXPECT_EQ(recordedNames(),
              (std::vector<std::string>{"[kavu]DSRCE.R01", "[kavu]DSRCE.T01", "[kavu]GTMP.G"}));
    ASSERT_TRUE(t.history.undo(&t.ui));
    EXPECT_EQ(t.read(working::kStoreRecord), before);
    ASSERT_TRUE(t.history.redo(&t.ui));
    EXPECT_EQ(recordedNames()[1], "[kavu]DSRCE.T01");
    EXPECT_FALSE(inTransaction(t.context, &t.ui, "Edit",
                               [&] { return t.files.remove("[kavu]DSRCE.R01").ok() && false; }));
    EXPECT_EQ(recordedNames()[0], "[kavu]DSRCE.R01");
}

TEST_F(StoreRecordTest, KnowsTheFilesOfConversionRecordsByTheirNumbers) {
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    ASSERT_TRUE(inTransaction(t.context, &t.ui, "Edit", [&] {
        for (const int number : {0, 1, 2, 5}) {
            EXPECT_TRUE(t.files.put(formatPrintf(working::kChunkFormat, number), "[M]\r\n").ok());
        }
        return t.files.remove(formatPrintf(working::kChunkFormat, 1)).ok();
    }));
    using Runs = std::vector<std::pair<std::int64_t, std::int64_t>>;
    EXPECT_EQ(record()->chunks, (Runs{{0, 0}, {2, 2}, {5, 5}}));
    ASSERT_TRUE(inTransaction(t.context, &t.ui, "Edit", [&] {
        return t.files.put(formatPrintf(working::kChunkFormat, 1), "[M]\r\n").ok();
    }));
    EXPECT_EQ(record()->chunks, (Runs{{0, 2}, {5, 5}}));
    ASSERT_TRUE(t.history.undo(&t.ui));
    EXPECT_EQ(record()->chunks, (Runs{{0, 0}, {2, 2}, {5, 5}}));
}

TEST_F(StoreRecordTest, AloneIsNeitherAChangeNorALevel) {
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    const auto before = t.read(working::kStoreRecord);
    Transaction edit(t.context, "Change of Edition");
    t.document.version = 2007;
    ASSERT_TRUE(edit.commit().ok());
    EXPECT_NE(t.read(working::kStoreRecord), before);
    EXPECT_FALSE(t.document.changed);
    EXPECT_FALSE(t.history.canUndo());
}

TEST_F(StoreRecordTest, NamesTheFileThatTheDocumentWasSavedAs) {
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    const auto other = t.folder / "other.tma";
    ASSERT_TRUE(saveDocumentTo(t.context, &t.ui, other));
    EXPECT_EQ(record()->source, describeSource(other));
    EXPECT_TRUE(isSourceUnchanged(record()->source));
    writeFile(other, "changed");
    EXPECT_FALSE(isSourceUnchanged(record()->source));
    ASSERT_TRUE(deleteFile(other).ok());
    EXPECT_FALSE(isSourceUnchanged(record()->source));
}

TEST_F(StoreRecordTest, ANewDocumentHasNoSource) {
    LoadOptions options;
    options.create = true;
    ASSERT_TRUE(loadDocument(t.context, &t.ui, {}, options));
    ASSERT_TRUE(record());
    EXPECT_EQ(record()->source, DocumentSource());
    EXPECT_TRUE(record()->isSplit);
}

TEST_F(StoreRecordTest, GoesWithTheDocument) {
    ASSERT_TRUE(loadDocument(t.context, &t.ui, path));
    closeDocument(t.context, &t.ui);
    EXPECT_FALSE(record());
    EXPECT_FALSE(t.has(working::kStoreRecord));
}

TEST_F(StoreRecordTest, WhatCannotBeRecordedIsNotOpened) {
    ASSERT_TRUE(makeFolder(t.store.pathOf(std::string(working::kStoreRecord) + ".new")).ok());
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    EXPECT_TRUE(t.ui.hasBox(158));
    EXPECT_FALSE(t.document.open);
}

TEST_F(StoreRecordTest, IsReadFromAPlainFileAlone) {
    const auto place = t.store.pathOf(working::kStoreRecord);
    fs::create_symlink(path, place);
    EXPECT_FALSE(record());
    fs::remove(place);
    ASSERT_EQ(::mkfifo(place.c_str(), 0600), 0);
    EXPECT_FALSE(record()) << "and nobody waits for a pipe";
    fs::remove(place);
    writeFile(place, "KAVU store 1\n" + std::string(2 << 20, '\n'));
    EXPECT_FALSE(record()) << "so long a record is none";
}

TEST(StoreFileTest, IsMissingNoFileOrCut) {
    const TempFolder folder;
    const auto path = folder / "file";
    const auto state = [&](const RecordedFile* recorded) {
        FileState found = FileState::Whole;
        EXPECT_TRUE(probeStoreFile(path, recorded, found).ok());
        return found;
    };
    EXPECT_EQ(state(nullptr), FileState::Missing);
    fs::create_symlink("/etc/passwd", path);
    EXPECT_EQ(state(nullptr), FileState::NoFile);
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_EQ(state(nullptr), FileState::NoFile);
    fs::remove(path);

    const std::string text = "P-1\\DLN:A;\r\nP-1\\TF:ONE;\r\n";
    writeFile(path, text);
    struct stat info {};
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    const RecordedFile same{"file", text.size(), info.st_ino};
    const RecordedFile replaced{"file", text.size() + 100, info.st_ino + 1};
    EXPECT_EQ(state(&same), FileState::Whole);
    EXPECT_EQ(state(&replaced), FileState::Whole) << "a shorter one has taken its place since";
    fs::resize_file(path, 12);
    EXPECT_EQ(state(&same), FileState::Cut) << "between two commands";
    EXPECT_EQ(state(nullptr), FileState::Whole) << "which nobody could tell";
    fs::resize_file(path, 5);
    EXPECT_EQ(state(&replaced), FileState::Cut);
    EXPECT_EQ(state(nullptr), FileState::Cut);
    fs::resize_file(path, 0);
    EXPECT_EQ(state(&replaced), FileState::Cut);
    EXPECT_EQ(state(nullptr), FileState::Whole) << "a group may be empty";
    writeFile(path, "P-1\\DLN:A;");
    EXPECT_EQ(state(nullptr), FileState::Whole) << "the line end alone is no loss";
}

}  // namespace
}  // namespace kavu::test
