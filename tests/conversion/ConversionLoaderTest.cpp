#include "conversion/ConversionFixture.h"
#include "conversion/ConversionLoader.h"
#include "core/document/ConversionRuns.h"
#include "core/text/Text.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Names;
using test::Numbers;

std::string record(std::int64_t index, const std::string& name,
                   const std::string& field = "MN1:x") {
    const auto prefix = "C-" + std::to_string(index) + "\\";
    return prefix + "DCN:" + name + ";\r\n" + prefix + field + ";\r\n";
}

TEST(ConversionLoader, IndicesOneTwentySixAndFiftyOneGiveThreeChunks) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + record(26, "B") + record(51, "C")));
    EXPECT_EQ(f.chunks(), (Numbers{0, 1, 2}));
    EXPECT_EQ(f.chunkText(1), "[B]\r\nMN1=x\r\n");
}

/// The chunks that a load makes of a text of one command a line, and what a save writes then, with
/// or without notes of the places.
std::string loaded(const std::string& commands, bool withNotes) {
    ConversionFixture f;
    f.write(working::kData1, commands);
    ConversionRuns runs;
    if (withNotes) {
        ConversionRunNotes notes;
        for (std::size_t at = 0; at < commands.size();) {
            const auto end = commands.find('\n', at) + 1;
            notes.add(std::string_view(commands).substr(at, end - at - 2), end - at);
            at = end;
        }
        runs = notes.take(f.store.pathOf(working::kData1));
    }
    EXPECT_TRUE(loadConversionGroup(f.context, f.names, f.conversions, &f.ui, 2011, runs));
    auto text = f.save();
    for (const auto chunk : f.chunks()) {
        text += "chunk " + std::to_string(chunk) + "\r\n" + f.chunkText(chunk);
    }
    return text;
}

TEST(ConversionLoader, NotesOfThePlacesGiveWhatALookAtTheFileGives) {
    // Indices that go up, that alternate, that have no number, and one chunk that is too large.
    std::string commands;
    for (int i = 1; i <= 60; ++i) {
        commands += record(i, "UP" + std::to_string(i), "MN1:" + std::string(1200, 'x'));
    }
    for (int i = 0; i < 200; ++i) {
        commands += record(i % 2 == 0 ? 70 + i : 400 - i, "TURN" + std::to_string(i));
    }
    commands += record(-7, "NEGATIVE") + "C-z\\DCN:LETTER;\r\nC-3\\TRD1:late;\r\n";
    EXPECT_EQ(loaded(commands, true), loaded(commands, false));
    EXPECT_EQ(loaded("", true), loaded("", false));
}

TEST(ConversionLoader, NotesOfAnotherFileAreOfNoUse) {
    ConversionFixture f;
    const auto path = f.folder / "other";
    test::writeFile(path, "");
    ConversionRunNotes notes;
    notes.add("C-99\\DCN:B;", 13);
    const auto runs = notes.take(path);
    f.write(working::kData1, record(1, "A"));
    ASSERT_TRUE(loadConversionGroup(f.context, f.names, f.conversions, &f.ui, 2011, runs));
    EXPECT_EQ(f.chunks(), (Numbers{0}));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=x\r\n");
}

TEST(ConversionLoader, IndicesOneTwoThreeGiveOneChunk) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + record(2, "B") + record(3, "C")));
    EXPECT_EQ(f.chunks(), (Numbers{0}));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=x\r\n[B]\r\nMN1=x\r\n[C]\r\nMN1=x\r\n");
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_FALSE(f.document.changed);
}

TEST(ConversionLoader, NoWorkingFileOfTheLoadStays) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A")));
    EXPECT_FALSE(f.has("DATA1.TMP"));
    EXPECT_FALSE(f.has("DATA2.TMP"));
    EXPECT_FALSE(f.has("KVU00000.sdk"));
    EXPECT_EQ(f.names.sectionCount(), 0);
}

TEST(ConversionLoader, AnEmptyGroupLoadsToNothing) {
    ConversionFixture f;
    EXPECT_TRUE(f.load(""));
    EXPECT_TRUE(f.chunks().empty());
    EXPECT_EQ(f.save(), "");
}

TEST(ConversionLoader, AMissingWorkingFileIsAnEmptyGroup) {
    ConversionFixture f;
    EXPECT_TRUE(loadConversionGroup(f.context, f.names, f.conversions, nullptr, 2011));
}

TEST(ConversionLoader, ANameOf33CharactersIsStoredAs32AndThenADuplicate) {
    ConversionFixture f;
    const std::string name(32, 'n');
    ASSERT_TRUE(f.load(record(1, name + "X") + record(2, name, "MN1:second")));
    ASSERT_EQ(f.ui.countLogs(318), 1);
    EXPECT_EQ(f.ui.logs[0].titleId, 106);
    EXPECT_NE(f.ui.logs[0].text.find("'C-1\\DCN:" + name + "X'"), std::string::npos);
    EXPECT_NE(f.ui.logs[0].text.find("truncated to '" + name + "'"), std::string::npos);
    ASSERT_EQ(f.ui.countLogs(317), 1);
    EXPECT_NE(f.ui.logs[1].text.find("'" + name + "' was defined more than once"),
              std::string::npos);
    EXPECT_TRUE(f.document.changed);
    EXPECT_EQ(f.value(name, "MN1"), "x");
    EXPECT_EQ(f.savedNames(), (Names{name}));
}

TEST(ConversionLoader, AnOverlongNameAloneDoesNotMarkTheDocumentChanged) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, std::string(40, 'n'))));
    EXPECT_EQ(f.ui.countLogs(318), 1);
    EXPECT_FALSE(f.document.changed);
}

TEST(ConversionLoader, ADefinitionWithoutANameVanishesWithoutAMessageButWithANote) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\MN1:lost;\r\n" + record(2, "B") + record(3, "B")));
    EXPECT_EQ(f.savedNames(), (Names{"B"}));
    EXPECT_EQ(f.save().find("lost"), std::string::npos);
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_EQ(f.ui.logs.size(), 1u);  // of the duplicate, which the note leaves out
    EXPECT_EQ(f.ui.notes,
              std::vector<std::string>{"1 C groups without a name (DCN) are left out."});
}

TEST(ConversionLoader, ANameThatIsBlankAsFarAsANameGoesIsNoName) {
    ConversionFixture f;
    ASSERT_TRUE(
        f.load("C-1\\DCN:" + std::string(33, ' ') + "x;\r\nC-1\\MN1:a;\r\n" + record(2, "B")));
    EXPECT_EQ(f.savedNames(), (Names{"B"}));
    EXPECT_EQ(f.ui.countLogs(318), 1);
}

TEST(ConversionLoader, ABlankNameIsNoName) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "   ") + record(2, "B")));
    EXPECT_EQ(f.savedNames(), (Names{"B"}));
}

TEST(ConversionLoader, OverlongValuesAreCutWithMessage315) {
    const struct {
        const char* what;
        int edition;
        const char* field;
        const char* key;
        const char* stored;
        int messages;
    } cases[] = {
        {"a count of pairs", 2011, "PS\\N:123", "PS\\N", "12", 1},
        {"the count of measurands has a limit that never fires", 2011, "DP\\N:123", "DP\\N", "123",
         0},
        {"nor does that of occurrences", 2011, "DPNO:12345", "DPNO", "12345", 0},
        {"a voice encoding", 2011, "VOI\\E:ABCDE", "VOI\\E", "ABCD", 1},
        {"a voice encoding in 1996", 1996, "VOI\\E:ABCDE", "VOI\\E", "ABCDE", 0},
        {"a code without a limit", 2011, "TRD1:1234567890123456789012345678901234567890", "TRD1",
         "1234567890123456789012345678901234567890", 0},
        {"an indexed code", 2011, "PS3-7:12345678901234567", "PS3-7", "1234567890123456", 1},
        {"exactly the limit", 2011, "PS3-7:1234567890123456", "PS3-7", "1234567890123456", 0},
    };
    for (const auto& c : cases) {
        ConversionFixture f(c.edition);
        ASSERT_TRUE(f.load(record(1, "A", c.field)));
        EXPECT_EQ(f.value("A", c.key), c.stored) << c.what;
        EXPECT_EQ(f.ui.countLogs(315), c.messages) << c.what;
        EXPECT_EQ(f.document.changed, c.messages > 0) << c.what;
    }
}

TEST(ConversionLoader, Message315NamesTheMeasurementAndCutsALongValue) {
    ConversionFixture f;
    const std::string longValue(300, 'v');
    ASSERT_TRUE(f.load("C-7\\DICP-1:" + longValue + ";\r\n" + record(7, "A", "PS\\N:123")));
    ASSERT_EQ(f.ui.countLogs(315), 2);
    EXPECT_NE(f.ui.logs[0].text.find("(Measurement name: <name not defined>)"), std::string::npos);
    EXPECT_NE(f.ui.logs[0].text.find("'C-7\\DICP-1:" + std::string(80, 'v') + "...'"),
              std::string::npos);
    EXPECT_NE(f.ui.logs[0].text.find("longer than 240 characters"), std::string::npos);
    EXPECT_NE(f.ui.logs[1].text.find("(Measurement name: A)"), std::string::npos);
    EXPECT_NE(f.ui.logs[1].text.find("'C-7\\PS\\N:123'"), std::string::npos);
    EXPECT_EQ(f.value("A", "DICP-1"), std::string(240, 'v'));
}

TEST(ConversionLoader, ADuplicateIsDroppedWhole) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A", "MN1:first") + "C-2\\TRD1:gone;\r\n" +
                       record(2, "A", "MN1:second") + record(30, "A", "MN1:third")));
    EXPECT_EQ(f.ui.countLogs(317), 2);
    EXPECT_EQ(f.ui.logs[0].titleId, 106);
    EXPECT_EQ(f.save(),
              "C-1\\DCN:A;\r\nC-1\\MN1:first;\r\nC-1\\MC\\N:N;\r\nC-1\\MA\\N:N;\r\n"
              "C-1\\DCT:NON;\r\n");
}

TEST(ConversionLoader, NamesThatDifferOnlyInCaseAreTwoRecords) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "Temp", "MN1:one") + record(2, "TEMP", "MN1:two")));
    EXPECT_EQ(f.ui.countLogs(317), 0);
    EXPECT_EQ(f.value("Temp", "MN1"), "one");
    EXPECT_EQ(f.value("TEMP", "MN1"), "two");
    EXPECT_EQ(f.value("temp", "MN1"), "one");
    EXPECT_EQ(f.savedNames(), (Names{"Temp", "TEMP"}));
}

TEST(ConversionLoader, AMeasurementWhoseNameIsANumberIsNoDuplicate) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + record(2, "0") + record(3, "1")));
    EXPECT_EQ(f.ui.countLogs(317), 0);
    EXPECT_EQ(f.savedNames(), (Names{"A", "0", "1"}));
}

TEST(ConversionLoader, ARecordThatHasOnlyItsNameIsKept) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:Lonely;\r\n" + record(2, "B")));
    EXPECT_EQ(f.chunkText(0), "[Lonely]\r\nDCN=Lonely\r\n[B]\r\nMN1=x\r\n");
    EXPECT_TRUE(f.conversions.locateDefinition("Lonely").found);
    EXPECT_EQ(f.savedNames(), (Names{"Lonely", "B"}));
}

TEST(ConversionLoader, SectionsStandInTheOrderOfTheirFirstStoredCommand) {
    ConversionFixture f;
    ASSERT_TRUE(
        f.load("C-1\\DCN:One;\r\nC-2\\MN1:b;\r\nC-3\\DCN:Three;\r\nC-1\\MN1:a;\r\n"
               "C-2\\DCN:Two;\r\n"));
    EXPECT_EQ(f.chunkText(0), "[Two]\r\nMN1=b\r\n[Three]\r\nDCN=Three\r\n[One]\r\nMN1=a\r\n");
}

TEST(ConversionLoader, CommandsBeforeTheirNameAndInterleavedAreRegrouped) {
    ConversionFixture f;
    ASSERT_TRUE(
        f.load("C-2\\MN1:b1;\r\nC-30\\MN1:c1;\r\nC-1\\MN1:a1;\r\nC-2\\DCN:B;\r\n"
               "C-1\\DCN:A;\r\nC-30\\DCN:C;\r\nC-2\\MN2:b2;\r\nC-30\\MN2:c2;\r\n"));
    EXPECT_EQ(f.chunkText(0), "[B]\r\nMN1=b1\r\nMN2=b2\r\n[A]\r\nMN1=a1\r\n");
    EXPECT_EQ(f.chunkText(1), "[C]\r\nMN1=c1\r\nMN2=c2\r\n");
}

TEST(ConversionLoader, ASecondNameOfAnIndexIsIgnoredAndHidesNoOther) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + "C-1\\DCN:B;\r\n" + record(2, "B")));
    EXPECT_EQ(f.ui.countLogs(317), 0);
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
}

TEST(ConversionLoader, ACodeThatComesAgainKeepsItsPlaceWithTheLastValue) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:A;\r\nC-1\\MN1:1;\r\nC-1\\MN2:2;\r\nC-1\\mn1:3;\r\n"));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=3\r\nMN2=2\r\n");
}

TEST(ConversionLoader, ACodeThatComesAgainInALongRecordKeepsItsPlace) {
    ConversionFixture f;
    std::string text = "C-1\\DCN:A;\r\n";
    for (int i = 1; i <= 200; ++i) {
        text += "C-1\\PS3-" + std::to_string(i) + ":" + std::to_string(i) + ";\r\n";
    }
    ASSERT_TRUE(f.load(text + "C-1\\PS3-3:new;\r\nC-1\\PS3-150:newer;\r\n"));
    EXPECT_EQ(f.value("A", "PS3-3"), "new");
    EXPECT_EQ(f.value("A", "PS3-150"), "newer");
    EXPECT_EQ(f.conversions.chunk(0)->keyNames("A").size(), 200U);
}

TEST(ConversionLoader, EmptyValuesAndCodesThatAreNoKeysAreDropped) {
    ConversionFixture f;
    ASSERT_TRUE(
        f.load("C-1\\DCN:A;\r\nC-1\\MN1:;\r\nC-1\\A=B:1;\r\nC-1\\[X:1;\r\nC-1\\:1;\r\n"
               "C-1\\MN2;\r\nC-1\\MN3:y;\r\n"));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN3=y\r\n");
}

TEST(ConversionLoader, OuterBlanksOfAValueAreGoneAtSave) {
    ConversionFixture f;
    const auto saved = f.roundTrip("C-1\\DCN:A;\r\nC-1\\MN1:  inner blank  ;\r\n");
    EXPECT_NE(saved.find("C-1\\MN1:inner blank;\r\n"), std::string::npos);
}

TEST(ConversionLoader, LowerCaseCodesAreRead) {
    ConversionFixture f;
    const auto saved = f.roundTrip("c-1\\dcn:A;\r\nc-1\\mn1:x;\r\n");
    EXPECT_NE(saved.find("C-1\\DCN:A;\r\nC-1\\MN1:x;\r\n"), std::string::npos);
}

// --- Holes, odd indices, compaction -----------------------------------------------------

TEST(ConversionLoader, HolesBetweenGroupIndicesLoseNothing) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + record(100, "B")));
    EXPECT_EQ(f.chunks(), (Numbers{0, 1}));
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
}

TEST(ConversionLoader, AFirstIndexOf70IsChunk0InTheEnd) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(70, "A")));
    EXPECT_EQ(f.chunks(), (Numbers{0}));
    EXPECT_EQ(f.savedNames(), (Names{"A"}));
}

TEST(ConversionLoader, AnIndexOfTwoThousandMillionCostsNothing) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(2000000000, "A") + record(1, "B")));
    EXPECT_EQ(f.chunks(), (Numbers{0, 1}));
    EXPECT_EQ(f.savedNames(), (Names{"B", "A"}));
}

TEST(ConversionLoader, StrangeIndicesKeepTheirRecords) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(0, "Zero") + record(-30, "Minus30") + record(-1, "Minus1") +
                       "C-007\\DCN:Seven;\r\nC-7\\MN1:x;\r\n" +
                       "C-99999999999999999999\\DCN:Huge;\r\n" + "C\\DCN:NoIndex;\r\n"));
    EXPECT_EQ(f.value("Seven", "MN1"), "x");
    // Without an index a command belongs to index 0, which has a name.
    EXPECT_EQ(f.savedNames(), (Names{"Zero", "Minus30", "Minus1", "Seven", "Huge"}));
}

TEST(ConversionLoader, AChunkWithoutAnyNamedRecordDoesNotEndTheLoad) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\MN1:x;\r\nC-30\\MN1:x;\r\n" + record(51, "A") + "C-80\\MN1:x;\r\n"));
    EXPECT_EQ(f.savedNames(), (Names{"A"}));
    const auto left = f.chunks();
    ASSERT_FALSE(left.empty());
    EXPECT_EQ(left[0], 0);
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=x\r\n");
}

TEST(ConversionLoader, ASecondGroupLandsBehindWhatIsThere) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A") + record(30, "B")));
    ASSERT_TRUE(f.load(record(1, "C")));
    EXPECT_EQ(f.chunks(), (Numbers{0, 1, 2}));
    EXPECT_EQ(f.savedNames(), (Names{"A", "B", "C"}));
}

// --- Failures and cancel ------------------------------------------------------------------

TEST(ConversionLoader, Message313WhenTheNamesFileCanNotBeMade) {
    ConversionFixture f;
    std::filesystem::create_directory(f.store.pathOf("DATA2.TMP"));
    EXPECT_FALSE(f.load(record(1, "A")));
    ASSERT_EQ(f.ui.countBoxes(313), 1);
    EXPECT_EQ(f.ui.boxes[0].titleId, 106);
    EXPECT_NE(f.ui.boxes[0].text.find("Unable to Create DATA2.TMP"), std::string::npos);
    EXPECT_NE(f.ui.boxes[0].text.find("Is a directory"), std::string::npos);
}

/// A parent that does something at the first poll for a cancel.
class Saboteur : public test::RecordingInterface {
  public:
    explicit Saboteur(std::function<void()> act) : act_(std::move(act)) {}
    bool cancelRequested() override {
        if (polls++ == 0) {
            act_();
        }
        return false;
    }

  private:
    std::function<void()> act_;
};

std::string records(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += record(i, "M" + std::to_string(i));
    }
    return text;
}

// No file holds the sections while they are made, so it is the raw commands that may fail.
TEST(ConversionLoader, Message314WhenTheRawCommandsAreCutOff) {
    ConversionFixture f;
    const auto path = rawGroupPath(f.store, 0);
    Saboteur saboteur([&] { std::filesystem::resize_file(path, 70); });
    f.write("DATA1.TMP", records(20000));
    EXPECT_FALSE(loadConversionGroup(f.context, f.names, f.conversions, &saboteur, 2011));
    ASSERT_EQ(saboteur.countBoxes(314), 1);
    EXPECT_EQ(saboteur.boxes[0].titleId, 106);
    EXPECT_NE(saboteur.boxes[0].text.find("Unable to read " + path), std::string::npos);
    EXPECT_NE(saboteur.boxes[0].text.find("Measurement Information will not be saved."),
              std::string::npos);
    EXPECT_TRUE(f.chunks().empty());
}

TEST(ConversionLoader, Message313WhenAChunkCanNotBeWritten) {
    ConversionFixture f;
    const auto path = chunkPath(f.store, 1);
    Saboteur saboteur([&] { std::filesystem::create_directory(path); });
    f.conversions.stagingLimit = 0;
    f.write("DATA1.TMP", records(40));
    EXPECT_FALSE(loadConversionGroup(f.context, f.names, f.conversions, &saboteur, 2011));
    ASSERT_EQ(saboteur.countBoxes(313), 1);
    EXPECT_EQ(saboteur.boxes[0].titleId, 106);
    EXPECT_NE(saboteur.boxes[0].text.find("Unable to Write/Create " + path), std::string::npos);
    EXPECT_EQ(f.chunks(), (Numbers{0}));
}

/// Looks at the working store in the middle of a load.
class Onlooker : public test::RecordingInterface {
  public:
    Onlooker(ConversionFixture& fixture, int at) : fixture_(fixture), at_(at) {}
    std::string raw;
    Numbers chunks;
    bool cancelRequested() override {
        if (++polls == at_) {
            raw = test::readFile(rawGroupPath(fixture_.store, 0));
            chunks = fixture_.chunks();
        }
        return false;
    }

  private:
    ConversionFixture& fixture_;
    int at_;
};

TEST(ConversionLoader, UntilAllCommandsAreRecordsTheyStayTogetherInOneFile) {
    ConversionFixture f;
    const auto text = records(40);
    Onlooker onlooker(f, 3);
    f.write("DATA1.TMP", text);
    EXPECT_TRUE(loadConversionGroup(f.context, f.names, f.conversions, &onlooker, 2011));
    EXPECT_EQ(onlooker.raw, text);
    EXPECT_EQ(onlooker.chunks, Numbers{});
    EXPECT_EQ(test::readFile(rawGroupPath(f.store, 0)), text);
    EXPECT_EQ(f.chunks(), (Numbers{0, 1}));
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 0)));
}

TEST(ConversionLoader, RecordsBeyondTheLimitOfWhatMayWaitAreInFilesAtOnce) {
    ConversionFixture f;
    f.conversions.stagingLimit = 0;
    ASSERT_TRUE(f.load(records(40)));
    EXPECT_TRUE(fileExists(chunkPath(f.store, 0)));
    EXPECT_TRUE(fileExists(chunkPath(f.store, 1)));
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 0)));
}

TEST(ConversionLoader, ALoadOnTopOfRecordsThatWaitKeepsBoth) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "A")));
    ASSERT_TRUE(f.load(record(1, "B")));
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 0)));
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 1)));
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
}

TEST(ConversionLoader, AChangedRecordBringsAllToTheirFilesFirst) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(records(40)));
    EXPECT_FALSE(fileExists(chunkPath(f.store, 0)));
    ASSERT_TRUE(f.conversions.renameDefinition(&f.ui, "New", "M1"));
    EXPECT_TRUE(fileExists(chunkPath(f.store, 0)));
    EXPECT_TRUE(fileExists(chunkPath(f.store, 1)));
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 0)));
}

TEST(ConversionLoader, ARecordThatCanNotBeStoredStaysAsItWasLoaded) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(records(40)));
    std::filesystem::create_directory(chunkPath(f.store, 1));
    EXPECT_FALSE(f.conversions.renameDefinition(&f.ui, "New", "M1"));
    EXPECT_EQ(f.ui.countBoxes(313), 1);
    EXPECT_TRUE(f.conversions.locateDefinition("M1").found);
    EXPECT_FALSE(f.conversions.locateDefinition("New").found);
    EXPECT_TRUE(fileExists(rawGroupPath(f.store, 0)));
    EXPECT_EQ(f.savedNames().size(), 40U);
}

TEST(ConversionLoader, CommandsOverSeveralLinesGetTheirStoredForm) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:A;\r\nC-1\\COM:one\r\ntwo;C-1\\MN1:x;  C-1\\MN2:y;"));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nCOM=one\x14\x15two\r\nMN1=x\r\nMN2=y\r\n");
    EXPECT_NE(f.save().find("C-1\\COM:one\r\ntwo;\r\n"), std::string::npos);
}

TEST(ConversionLoader, FailuresAreSilentWithoutAParent) {
    ConversionFixture f;
    std::filesystem::create_directory(f.store.pathOf("DATA2.TMP"));
    EXPECT_FALSE(f.loadSilently(record(1, "A")));
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(ConversionLoader, WithoutAParentAllIsLoaded) {
    ConversionFixture f;
    EXPECT_TRUE(f.loadSilently(record(1, "A", "PS\\N:123") + record(2, "A")));
    EXPECT_TRUE(f.document.changed);
    EXPECT_EQ(f.value("A", "PS\\N"), "12");
}

TEST(ConversionLoader, ACancelEndsTheLoadWithFailure) {
    for (const int poll : {1, 2, 3}) {
        ConversionFixture f;
        f.ui.cancelAtPoll = poll;
        EXPECT_FALSE(f.load(records(60))) << poll;
        EXPECT_TRUE(f.ui.boxes.empty());
        EXPECT_FALSE(f.has("DATA2.TMP"));
        EXPECT_EQ(f.names.sectionCount(), 0);
        // The files so far remain.
        EXPECT_EQ(f.chunks(), poll < 3 ? Numbers{} : Numbers{0}) << poll;
    }
}

TEST(ConversionLoader, ShowsWhichMeasurementItIsAt) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(record(1, "First") + record(2, "Second")));
    ASSERT_FALSE(f.ui.progressTexts.empty());
    EXPECT_EQ(f.ui.progressTexts[0], "Initializing Data Conversion Info. Measurement #1: First");
    ASSERT_FALSE(f.ui.bars.empty());
    EXPECT_EQ(f.ui.bars[0], 0.0);
}

TEST(ConversionLoader, TenThousandRecordsComeOutInOrder) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(records(10000)));
    EXPECT_EQ(f.chunks().size(), 401U);
    const auto saved = f.savedNames();
    ASSERT_EQ(saved.size(), 10000U);
    EXPECT_EQ(saved.front(), "M1");
    EXPECT_EQ(saved.back(), "M10000");
    EXPECT_EQ(f.conversions.definitionNames(-1)->size(), 10000U);
}

}  // namespace
}  // namespace kavu
