#include "core/document/KeyValueStore.h"
#include "support/KeyValueModel.h"
#include "support/TestContext.h"

#include <random>
#include <sys/stat.h>

namespace kavu::test {
namespace {

using Pairs = std::vector<KeyValueStore::Pair>;

constexpr const char* kBadName =
    "Invalid Key passed to KAVU-Database function. Names cannot contain a semi-colon";
constexpr const char* kTooManyFiles = "ERROR: Too many Database files";
constexpr const char* kTooLarge =
    "Warning: One or more Database files were too large. Data may have been lost.";

class KeyValueStoreTest : public ::testing::Test {
  protected:
    bool writeSection(std::string_view name, const Pairs& pairs = {{"N", "1"}}) {
        return values.writeSection(&t.ui, name, pairs);
    }
    /// The texts of all boxes, and forgets them.
    std::vector<std::string> boxes() {
        std::vector<std::string> texts;
        for (const auto& box : t.ui.boxes) {
            EXPECT_EQ(box.title, "KAVU Database Error");
            EXPECT_EQ(box.id, 0);
            texts.push_back(box.text);
        }
        t.ui.boxes.clear();
        return texts;
    }

    TestContext t;
    KeyValueStore values{t.store};
};

using Texts = std::vector<std::string>;

TEST_F(KeyValueStoreTest, EmptyStoreAnswersAndMakesNoFile) {
    EXPECT_FALSE(values.sectionExists("A"));
    EXPECT_EQ(values.sectionCount(), 0);
    EXPECT_EQ(values.sectionName(0), std::nullopt);
    EXPECT_EQ(values.getString("A", "x", "otherwise"), "otherwise");
    EXPECT_EQ(values.getInt("A", "x", 5), 5);
    EXPECT_EQ(values.directoryLength(), 0u);
    values.closeStore(&t.ui);
    EXPECT_FALSE(t.has("KVU00000.sdk"));
    EXPECT_EQ(boxes(), Texts());
}

TEST_F(KeyValueStoreTest, BulkAddIsWrittenAsASectionOfPairs) {
    ASSERT_TRUE(writeSection("Volts", {{"N", "12"}, {"", "x"}, {"Empty", ""}, {"Unit", "V"}}));
    EXPECT_EQ(values.getString("Volts", "Unit"), "V");
    EXPECT_EQ(t.read("KVU00000.sdk"), "\r\n[Volts]\r\nN=12\r\nUnit=V\r\n");
    EXPECT_EQ(values.getInt("Volts", "n", 0), 12);
    EXPECT_EQ(values.getString("Volts", "Empty", "none"), "none");
    EXPECT_EQ(values.getText("Volts", "N", "", 1), "1");
    EXPECT_EQ(values.getText("Volts", "None", "otherwise", 5), "other");
}

TEST_F(KeyValueStoreTest, NameWithASemicolonIsRefusedInEveryOperation) {
    EXPECT_FALSE(writeSection("a;b"));
    EXPECT_EQ(boxes(), Texts{kBadName});
    EXPECT_FALSE(values.setValue(&t.ui, "a;b", "x", "1"));
    EXPECT_EQ(boxes(), Texts{kBadName});
    EXPECT_FALSE(values.setValue(&t.ui, ";", std::nullopt, std::nullopt));
    EXPECT_EQ(boxes(), Texts{kBadName});
    EXPECT_FALSE(values.setValue(nullptr, "a;b", "x", "1"));
    EXPECT_FALSE(values.sectionExists("a;b"));
    EXPECT_EQ(values.getString("a;b", "x", "otherwise"), "otherwise");
    EXPECT_EQ(values.getText("a;b", "x", "otherwise", 100), "otherwise");
    EXPECT_EQ(values.getInt("a;b", "x", 3), 3);
    EXPECT_EQ(values.sectionCount(), 0);
    EXPECT_EQ(boxes(), Texts());
}

TEST_F(KeyValueStoreTest, WhatAProfileFileCanNotHoldIsRefused) {
    EXPECT_FALSE(writeSection(""));
    EXPECT_FALSE(writeSection("a\n[b"));
    EXPECT_FALSE(writeSection("a", {{"x", "1\n[b]"}}));
    EXPECT_FALSE(writeSection("a", {{"x=y", "1"}}));
    EXPECT_FALSE(values.setValue(&t.ui, "a", "x", "1\r2"));
    EXPECT_FALSE(values.setValue(&t.ui, "a", "", "1"));
    EXPECT_EQ(values.sectionCount(), 0);
    EXPECT_EQ(values.directoryLength(), 0u);
}

TEST_F(KeyValueStoreTest, OrdinaryWriteSetsReplacesAndRemoves) {
    EXPECT_TRUE(values.setValue(&t.ui, "A", "x", "1"));
    EXPECT_TRUE(values.setValue(&t.ui, "A", "y", "2"));
    EXPECT_TRUE(values.setValue(&t.ui, "A", "X", "3"));
    EXPECT_EQ(values.sectionCount(), 1);
    EXPECT_EQ(values.getInt("A", "x", 0), 3);
    EXPECT_TRUE(values.setValue(&t.ui, "A", "y", std::nullopt));
    EXPECT_EQ(values.getString("A", "y", "gone"), "gone");
    EXPECT_TRUE(values.sectionExists("A"));
}

TEST_F(KeyValueStoreTest, DeletedSectionIsGoneAndTheDirectoryKeepsItsLength) {
    writeSection("One");
    writeSection("Two");
    writeSection("Three");
    // ;One;0;Two;0;Three;0;
    const auto length = values.directoryLength();
    EXPECT_EQ(length, 21u);
    EXPECT_TRUE(values.setValue(&t.ui, "Two", std::nullopt, std::nullopt));
    EXPECT_FALSE(values.sectionExists("Two"));
    EXPECT_EQ(values.getString("Two", "N", "gone"), "gone");
    EXPECT_EQ(values.sectionCount(), 2);
    EXPECT_EQ(values.directoryLength(), length);
    EXPECT_TRUE(values.sectionExists("One"));
    EXPECT_EQ(values.getString("Three", "N"), "1");
}

TEST_F(KeyValueStoreTest, PlacesOfDeletedSectionsCountWhenNamesAreWalked) {
    writeSection("One");
    writeSection("Two");
    writeSection("Three");
    values.setValue(&t.ui, "One", std::nullopt, std::nullopt);
    EXPECT_EQ(values.sectionName(0), "   ");
    EXPECT_EQ(values.sectionName(1), "Two");
    // There are two sections, so the third place is out of reach.
    EXPECT_EQ(values.sectionName(2), std::nullopt);
    EXPECT_EQ(values.sectionName(-1), std::nullopt);
    EXPECT_FALSE(values.sectionExists("   "));
}

TEST_F(KeyValueStoreTest, NumberOfAFileIsNoName) {
    writeSection("A");
    EXPECT_FALSE(values.sectionExists("0"));
    EXPECT_EQ(values.getString("0", "N", "none"), "none");
    writeSection("0", {{"N", "zero"}});
    EXPECT_EQ(values.getString("0", "N"), "zero");
}

TEST_F(KeyValueStoreTest, NamesThatDifferInCaseAreTwoSections) {
    writeSection("abc", {{"N", "lower"}});
    EXPECT_FALSE(values.sectionExists("ABC"));
    EXPECT_TRUE(values.setValue(&t.ui, "ABC", std::nullopt, std::nullopt));
    EXPECT_EQ(values.getString("abc", "N"), "lower") << "only the name itself is deleted";
    values.setValue(&t.ui, "ABC", "N", std::nullopt);
    EXPECT_EQ(values.getString("abc", "N"), "lower");
    values.setValue(&t.ui, "ABC", "N", "upper");
    EXPECT_EQ(values.getString("abc", "N"), "lower");
    EXPECT_EQ(values.getString("ABC", "N"), "upper");
    EXPECT_EQ(values.sectionCount(), 2);
}

TEST_F(KeyValueStoreTest, BulkAddOfANameAgainIsFoundAtItsFirstPlaceAndThenAtTheNext) {
    writeSection("A", {{"N", "1"}});
    writeSection("A", {{"N", "2"}});
    EXPECT_EQ(values.sectionCount(), 2);
    EXPECT_EQ(values.getString("A", "N"), "1");
    values.setValue(&t.ui, "A", std::nullopt, std::nullopt);
    EXPECT_TRUE(values.sectionExists("A"));
    EXPECT_EQ(values.getString("A", "N"), "2");
    values.setValue(&t.ui, "A", std::nullopt, std::nullopt);
    EXPECT_FALSE(values.sectionExists("A"));
    writeSection("A", {{"N", "3"}});
    EXPECT_EQ(values.getString("A", "N"), "3");
}

TEST_F(KeyValueStoreTest, BulkAndOrdinaryWritesMix) {
    writeSection("A", {{"N", "1"}});
    values.setValue(&t.ui, "B", "N", "2");
    writeSection("C", {{"N", "3"}});
    values.setValue(&t.ui, "A", "M", "4");
    writeSection("D", {{"N", "5"}});
    EXPECT_EQ(values.getInt("A", "N", 0), 1);
    EXPECT_EQ(values.getInt("A", "M", 0), 4);
    EXPECT_EQ(values.getInt("B", "N", 0), 2);
    EXPECT_EQ(values.getInt("C", "N", 0), 3);
    EXPECT_EQ(values.getInt("D", "N", 0), 5);
}

TEST_F(KeyValueStoreTest, FileTakesSectionsUntilItIsOverItsSize) {
    // "\r\n[A]\r\nx=" and "\r\n" are 11 bytes.
    writeSection("A", {{"x", std::string(40000 - 11, 'v')}});
    writeSection("B", {{"x", "1"}});
    writeSection("C", {{"x", "1"}});
    values.closeStore(nullptr);
    EXPECT_EQ(values.sectionCount(), 0);

    writeSection("A", {{"x", std::string(40000 - 11, 'v')}});
    EXPECT_EQ(values.getText("A", "x", "", 1), "v");
    EXPECT_EQ(fileSize(t.store.path("KVU00000.sdk")), 40000u);
    writeSection("B");
    writeSection("C");
    EXPECT_EQ(values.getInt("B", "N", 0) + values.getInt("C", "N", 0), 2);
    EXPECT_NE(t.read("KVU00000.sdk").find("[B]"), std::string::npos);
    EXPECT_NE(t.read("KVU00001.sdk").find("[C]"), std::string::npos);
}

TEST_F(KeyValueStoreTest, OrdinaryWritesCloseAFileByTheirEstimate) {
    // The estimate is name + 4, key + value + 6: 12 in all, and the value.
    values.setValue(&t.ui, "A", "x", std::string(40000 - 12, 'v'));
    values.setValue(&t.ui, "B", "x", "1");
    values.setValue(&t.ui, "C", "x", "1");
    EXPECT_EQ(values.getString("A", "none"), "");
    EXPECT_NE(t.read("KVU00000.sdk").find("[B]"), std::string::npos);
    EXPECT_NE(t.read("KVU00001.sdk").find("[C]"), std::string::npos);
    EXPECT_EQ(values.directoryLength(), std::string(";A;0;B;0;C;1;").size());
}

TEST_F(KeyValueStoreTest, KnownNameIsWrittenToItsFileThoughThatIsFull) {
    values.setValue(&t.ui, "A", "x", std::string(41000, 'v'));
    values.setValue(&t.ui, "B", "x", "1");
    EXPECT_TRUE(values.setValue(&t.ui, "A", "y", "2"));
    EXPECT_EQ(values.getInt("A", "y", 0), 2);
    EXPECT_EQ(values.getInt("B", "x", 0), 1);
    EXPECT_NE(t.read("KVU00000.sdk").find("y=2"), std::string::npos);
}

TEST_F(KeyValueStoreTest, File501IsRefusedForBulkAdds) {
    const std::string value(40001, 'v');
    for (int i = 0; i < 499; ++i) {
        ASSERT_TRUE(writeSection("S" + std::to_string(i), {{"x", value}})) << i;
    }
    EXPECT_EQ(boxes(), Texts());
    EXPECT_FALSE(writeSection("S499", {{"x", value}}));
    EXPECT_EQ(boxes(), Texts{kTooManyFiles});
    EXPECT_TRUE(t.has("KVU00499.sdk"));
    EXPECT_FALSE(writeSection("S500", {{"x", value}}));
    EXPECT_EQ(boxes(), Texts{kTooManyFiles});
    EXPECT_FALSE(t.has("KVU00500.sdk"));
    EXPECT_EQ(values.getText("S499", "x", "", 1), "v");
    values.closeStore(nullptr);
    EXPECT_FALSE(t.has("KVU00000.sdk"));
    EXPECT_FALSE(t.has("KVU00499.sdk"));
}

TEST_F(KeyValueStoreTest, File501IsRefusedForOrdinaryWrites) {
    const std::string value(40001, 'v');
    for (int i = 0; i < 499; ++i) {
        ASSERT_TRUE(values.setValue(&t.ui, "S" + std::to_string(i), "x", value)) << i;
    }
    EXPECT_FALSE(values.setValue(&t.ui, "S499", "x", value));
    EXPECT_EQ(boxes(), Texts{kTooManyFiles});
    EXPECT_FALSE(values.setValue(nullptr, "S500", "x", value));
    EXPECT_FALSE(t.has("KVU00500.sdk"));
}

TEST_F(KeyValueStoreTest, SecondInstanceInTheFolderGetsAnotherThirdLetter) {
    writeSection("A", {{"N", "first"}});
    KeyValueStore second(t.store);
    EXPECT_TRUE(second.setValue(&t.ui, "A", "N", "second"));
    KeyValueStore third(t.store);
    EXPECT_TRUE(third.setValue(&t.ui, "A", "N", "third"));
    EXPECT_TRUE(t.has("KVU00000.sdk"));
    EXPECT_TRUE(t.has("KV100000.sdk"));
    EXPECT_TRUE(t.has("KV200000.sdk"));
    EXPECT_EQ(values.getString("A", "N"), "first");
    EXPECT_EQ(second.getString("A", "N"), "second");
    EXPECT_EQ(third.getString("A", "N"), "third");
    values.closeStore(&t.ui);
    EXPECT_EQ(second.getString("A", "N"), "second");
    second.closeStore(&t.ui);
    // The letter stays for the life of the instance.
    EXPECT_TRUE(second.setValue(&t.ui, "B", "N", "again"));
    EXPECT_TRUE(t.has("KV100000.sdk"));
    EXPECT_FALSE(t.has("KVU00000.sdk"));
    second.closeStore(&t.ui);
    third.closeStore(&t.ui);
    EXPECT_EQ(boxes(), Texts());
}

TEST_F(KeyValueStoreTest, WithAllFamiliesTakenItSaysSoAndGoesOn) {
    t.write("KVU00000.sdk", "");
    for (int i = 1; i <= 9; ++i) {
        t.write("KV" + std::to_string(i) + "00000.sdk", "");
    }
    EXPECT_TRUE(writeSection("A", {{"N", "1"}}));
    EXPECT_EQ(boxes(), Texts{"Unable to create database files"});
    EXPECT_EQ(values.getInt("A", "N", 0), 1);
    EXPECT_NE(t.read("KV900000.sdk"), "");
}

TEST_F(KeyValueStoreTest, OrdinaryWritesStayBehindUntilAnotherFileIsNeeded) {
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(values.setValue(&t.ui, "S" + std::to_string(i), "N", "1"));
    }
    EXPECT_EQ(t.read("KVU00000.sdk"), "") << "a file is not written again for each section";
    writeSection("Bulk");
    const auto text = t.read("KVU00000.sdk");
    EXPECT_NE(text.find("[S0]\r\nN=1\r\n"), std::string::npos);
    EXPECT_NE(text.find("[S999]\r\nN=1\r\n"), std::string::npos);
}

TEST_F(KeyValueStoreTest, NameThatIsNotInTheDirectoryReadsNoFile) {
    writeSection("A", {{"x", std::string(41000, 'v')}});
    // The section is in the file, but was not put there by this store.
    t.write("KVU00000.sdk", "[B]\r\nN=1\r\n");
    t.write("KVU00001.sdk", "[B]\r\nN=1\r\n");
    EXPECT_FALSE(values.sectionExists("B"));
    EXPECT_EQ(values.getString("B", "N", "none"), "none");
    EXPECT_EQ(values.getInt("B", "N", 7), 7);
}

TEST_F(KeyValueStoreTest, CloseDeletesAllFilesAndForgetsEverything) {
    for (int i = 0; i < 5; ++i) {
        writeSection("S" + std::to_string(i), {{"x", std::string(40001, 'v')}});
    }
    values.closeStore(&t.ui);
    EXPECT_EQ(boxes(), Texts());
    for (int i = 0; i < 6; ++i) {
        EXPECT_FALSE(t.store.exists("KVU%5.5d.sdk", i)) << i;
    }
    EXPECT_EQ(values.sectionCount(), 0);
    EXPECT_EQ(values.directoryLength(), 0u);
    EXPECT_FALSE(values.sectionExists("S0"));
    EXPECT_TRUE(writeSection("New"));
    EXPECT_EQ(values.sectionName(0), "New");
}

TEST_F(KeyValueStoreTest, CloseWarnsOfAFileThatBecameTooLarge) {
    // Bulk: "\r\n[A]\r\nx=" and "\r\n" are 11 bytes.
    writeSection("A", {{"x", std::string(65500 - 11, 'v')}});
    values.closeStore(&t.ui);
    EXPECT_EQ(boxes(), Texts());
    writeSection("A", {{"x", std::string(65501 - 11, 'v')}});
    values.closeStore(&t.ui);
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes.front().icon, Icon::Warning);
    EXPECT_EQ(boxes(), Texts{kTooLarge});
    // An ordinary write that is still behind counts as well.
    values.setValue(&t.ui, "A", "x", std::string(66000, 'v'));
    values.closeStore(&t.ui);
    EXPECT_EQ(boxes(), Texts{kTooLarge});
    EXPECT_FALSE(t.has("KVU00000.sdk"));
}

TEST_F(KeyValueStoreTest, FailedOpenNamesThePathAndTheReason) {
    ASSERT_TRUE(deleteFolder(t.store.folder()).ok());
    EXPECT_FALSE(writeSection("A"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    const auto text = boxes().front();
    EXPECT_TRUE(text.starts_with("ERROR: Unable to open Database file\n")) << text;
    EXPECT_NE(text.find("KVU00000.sdk"), std::string::npos) << text;
    EXPECT_NE(text.find("\nReason: "), std::string::npos) << text;
    EXPECT_FALSE(values.setValue(nullptr, "A", "x", "1"));
    EXPECT_FALSE(values.sectionExists("A"));
}

TEST_F(KeyValueStoreTest, WithoutAnActiveStoreNothingIsWritten) {
    t.store.deactivate(nullptr);
    EXPECT_FALSE(writeSection("A"));
    EXPECT_FALSE(values.setValue(&t.ui, "A", "x", "1"));
    EXPECT_EQ(t.ui.boxes.size(), 2u);
    EXPECT_FALSE(fileExists("KVU00000.sdk"));
    values.closeStore(&t.ui);
}

TEST_F(KeyValueStoreTest, FileThatCanNotBeWrittenBehindIsReportedAndNotForgotten) {
    const std::string value(40001, 'v');
    values.setValue(&t.ui, "A", "x", value);
    // A folder in the place of the file that the first write is behind of.
    ASSERT_TRUE(deleteFile(t.store.path("KVU00000.sdk")).ok());
    ASSERT_TRUE(makeFolder(t.store.path("KVU00000.sdk")).ok());
    EXPECT_FALSE(values.setValue(&t.ui, "B", "x", "1"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_TRUE(boxes().front().starts_with("ERROR: Unable to write Database file\n"));
    EXPECT_FALSE(values.sectionExists("B"));
    ASSERT_TRUE(deleteFolder(t.store.path("KVU00000.sdk")).ok());
    EXPECT_TRUE(values.setValue(&t.ui, "B", "x", "1"));
    EXPECT_EQ(values.getString("A", "x"), value);
    EXPECT_EQ(values.getString("B", "x"), "1");
}

TEST_F(KeyValueStoreTest, HundredThousandNamesStayFast) {
    std::string name;
    for (int i = 0; i < 100000; ++i) {
        name = "Measurement" + std::to_string(i);
        ASSERT_FALSE(values.sectionExists(name));
        ASSERT_TRUE(writeSection(name));
    }
    EXPECT_EQ(values.sectionCount(), 100000);
    EXPECT_EQ(values.sectionName(99999), "Measurement99999");
    EXPECT_EQ(values.getInt("Measurement54321", "N", 0), 1);
}

TEST_F(KeyValueStoreTest, OperationsComeToTheSameAsThoseOfALinearModel) {
    const std::string names[] = {"a", "A", "bb", "0", "1", "   ", "[kavu]", "x]", "name one"};
    const std::string keys[] = {"k", "K", "n", "M"};
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::mt19937 random(seed);
        KeyValueStore store(t.store);
        KeyValueModel model;
        for (int step = 0; step < 400; ++step) {
            const auto& name = names[random() % std::size(names)];
            const auto& key = keys[random() % std::size(keys)];
            const auto value = std::to_string(step);
            switch (random() % 8) {
                case 0:
                case 1: {
                    const Pairs pairs{{key, value}, {"both", "1"}};
                    ASSERT_TRUE(store.writeSection(&t.ui, name, pairs));
                    model.writeSection(name, pairs);
                    break;
                }
                case 2:
                    ASSERT_TRUE(store.setValue(&t.ui, name, std::nullopt, std::nullopt));
                    model.setValue(name, std::nullopt, std::nullopt);
                    break;
                case 3:
                    ASSERT_TRUE(store.setValue(&t.ui, name, key, std::nullopt));
                    model.setValue(name, key, std::nullopt);
                    break;
                default:
                    ASSERT_TRUE(store.setValue(&t.ui, name, key, value));
                    model.setValue(name, key, value);
            }
            const auto& other = names[random() % std::size(names)];
            ASSERT_EQ(store.sectionExists(other), model.exists(other)) << seed << " " << step;
            ASSERT_EQ(store.getString(other, key, "none"), model.value(other, key).value_or("none"))
                << seed << " " << step;
            ASSERT_EQ(store.sectionCount(), model.count());
            ASSERT_EQ(store.directoryLength(), model.directory().size());
            const auto index = static_cast<int>(random() % 30);
            ASSERT_EQ(store.sectionName(index), model.name(index)) << seed << " " << step;
        }
        store.closeStore(&t.ui);
    }
    EXPECT_EQ(boxes(), Texts());
}

// --- Helpers for any profile file -------------------------------------------------------

class ProfileHelpersTest : public ::testing::Test {
  protected:
    TempFolder folder_;
    std::string path_ = folder_ / "f.ini";
};

TEST_F(ProfileHelpersTest, ValueOfAnyLengthIsReadWithoutTrailingBlanks) {
    const std::string value(20001, 'v');
    writeFile(path_, "[A]\r\nx=" + value + "  \r\ny= \r\n");
    EXPECT_EQ(readValue("A", "x", "", path_), value);
    EXPECT_EQ(readValue("A", "y", "otherwise", path_), "");
    EXPECT_EQ(readValue("A", "z", "otherwise", path_), "otherwise");
    EXPECT_EQ(readValue("A", "x", "otherwise", folder_ / "none"), "otherwise");
}

TEST_F(ProfileHelpersTest, SectionsAreRenamedInPlace) {
    writeFile(path_, "[A]\r\nx=1\r\n[B]\r\nx=2\r\n");
    EXPECT_TRUE(renameSection("A", "C", path_));
    EXPECT_EQ(readFile(path_), "[C]\r\nx=1\r\n[B]\r\nx=2\r\n");
    EXPECT_FALSE(renameSection("A", "D", path_));
    EXPECT_FALSE(renameSection("", "D", path_));
    EXPECT_FALSE(renameSection("B", "", path_));
    EXPECT_FALSE(renameSection("B", "D", folder_ / "none"));
    EXPECT_EQ(readFile(path_), "[C]\r\nx=1\r\n[B]\r\nx=2\r\n");
    EXPECT_EQ(sectionNames(path_), (Texts{"C", "B"}));
}

TEST_F(ProfileHelpersTest, CopyReplacesTheTargetAndLeavesOutEmptyValues) {
    writeFile(path_, "[A]\r\nx=1\r\ny=\r\nz=3\r\n[B]\r\nold=1\r\n[a]\r\nx=9\r\n");
    EXPECT_TRUE(copySection("A", "B", path_));
    EXPECT_EQ(readFile(path_), "[A]\r\nx=1\r\ny=\r\nz=3\r\n[a]\r\nx=9\r\n[B]\r\nx=1\r\nz=3\r\n");
    EXPECT_FALSE(copySection("none", "B", path_));
    EXPECT_TRUE(readValue("B", "x", "", path_) == "1") << "no source, no change";
}

TEST_F(ProfileHelpersTest, CopyToANameThatDiffersInCaseLeavesTheSource) {
    writeFile(path_, "[A]\r\nx=1\r\n");
    EXPECT_TRUE(copySection("A", "a", path_));
    EXPECT_EQ(readFile(path_), "[A]\r\nx=1\r\n[a]\r\nx=1\r\n");
}

TEST_F(ProfileHelpersTest, CopyToItselfKeepsTheValues) {
    writeFile(path_, "[A]\r\nx=1\r\n[B]\r\ny=2\r\n");
    EXPECT_TRUE(copySection("A", "A", path_));
    EXPECT_EQ(readValue("A", "x", "", path_), "1");
    EXPECT_EQ(readValue("B", "y", "", path_), "2");
}

}  // namespace
}  // namespace kavu::test
