#include "conversion/ConversionFixture.h"
#include "conversion/ConversionSections.h"
#include "conversion/ConversionStore.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Names;
using test::Numbers;

/// Chunks written as they stand.
void putChunk(ConversionFixture& f, std::int64_t number, const std::string& text) {
    test::writeFile(chunkPath(f.store, number), text);
    f.conversions.forget();
}

// --- Finding ------------------------------------------------------------------------------

TEST(LocateDefinition, FindsTheChunkOfARecord) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    putChunk(f, 1, "[B]\r\nMN1=b\r\n");
    const auto place = f.conversions.locateDefinition("B");
    EXPECT_TRUE(place.found);
    EXPECT_EQ(place.chunk, 1);
    EXPECT_EQ(place.path, chunkPath(f.store, 1));
    EXPECT_EQ(place.section, "B");
}

TEST(LocateDefinition, TakesTheExactNameFirstAndThenOneThatDiffersInCase) {
    ConversionFixture f;
    putChunk(f, 0, "[temp]\r\nMN1=lower\r\n");
    putChunk(f, 1, "[TEMP]\r\nMN1=upper\r\n");
    EXPECT_EQ(f.conversions.locateDefinition("TEMP").chunk, 1);
    EXPECT_EQ(f.conversions.locateDefinition("temp").chunk, 0);
    const auto other = f.conversions.locateDefinition("Temp");
    EXPECT_TRUE(other.found);
    EXPECT_EQ(other.section, "temp");
}

TEST(LocateDefinition, StartsAtTheChunkFoundLast) {
    ConversionFixture f;
    for (int i = 0; i < 3; ++i) {
        putChunk(f, i, "[Twice]\r\nMN1=x\r\n[Only" + std::to_string(i) + "]\r\nMN1=x\r\n");
    }
    EXPECT_EQ(f.conversions.locateDefinition("Twice").chunk, 0);
    EXPECT_EQ(f.conversions.locateDefinition("Only1").chunk, 1);
    EXPECT_EQ(f.conversions.locateDefinition("Twice").chunk, 1);
    EXPECT_EQ(f.conversions.locateDefinition("Only2").chunk, 2);
    EXPECT_EQ(f.conversions.locateDefinition("Twice").chunk, 2);
    EXPECT_EQ(f.conversions.locateDefinition("Only0").chunk, 0);
}

TEST(LocateDefinition, ASectionWithoutAKeyIsNoRecord) {
    ConversionFixture f;
    putChunk(f, 0, "[Empty]\r\n[B]\r\nMN1=b\r\n");
    EXPECT_FALSE(f.conversions.locateDefinition("Empty").found);
    EXPECT_EQ(f.conversions.definitionNames(0), (Names{"B"}));
}

TEST(LocateDefinition, SendsANewRecordToTheFirstChunkWithRoom) {
    const auto full = "[Full]\r\nDPA=" + std::string(30000, 'x') + "\r\n";
    ConversionFixture f;
    EXPECT_EQ(f.conversions.locateDefinition("New").chunk, 0);
    putChunk(f, 0, full);
    EXPECT_EQ(f.conversions.locateDefinition("New").chunk, 1);
    putChunk(f, 1, "[B]\r\nMN1=b\r\n");
    putChunk(f, 2, "[C]\r\nMN1=c\r\n");
    const auto place = f.conversions.locateDefinition("New");
    EXPECT_FALSE(place.found);
    EXPECT_EQ(place.chunk, 1);
    EXPECT_EQ(place.section, "New");
}

TEST(LocateDefinition, AChunkOf30000BytesIsFull) {
    const std::string head = "[A]\r\nDPA=";
    ConversionFixture f;
    putChunk(f, 0, head + std::string(30000 - head.size() - 2, 'x') + "\r\n");
    EXPECT_EQ(f.conversions.locateDefinition("New").chunk, 1);
    putChunk(f, 0, head + std::string(29999 - head.size() - 2, 'x') + "\r\n");
    EXPECT_EQ(f.conversions.locateDefinition("New").chunk, 0);
}

TEST(DefinitionNames, GivesOneChunkOrAll) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    putChunk(f, 1, "[C]\r\nMN1=c\r\n");
    EXPECT_EQ(f.conversions.definitionNames(0), (Names{"A", "B"}));
    EXPECT_EQ(f.conversions.definitionNames(1), (Names{"C"}));
    EXPECT_EQ(f.conversions.definitionNames(2), std::nullopt);
    EXPECT_EQ(f.conversions.definitionNames(-1), (Names{"A", "B", "C"}));
}

// --- Making -------------------------------------------------------------------------------

TEST(CreateDefaultDefinition, WritesTheDefaultKeys) {
    ConversionFixture f;
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", true));
    EXPECT_EQ(f.chunkText(0),
              "[M]\r\nEuTemplate=1\r\nTRD5=01-02-2026\r\nBFM=UNS\r\nCRT=01-02-2026-03-04-05\r\n"
              "DCT=NON\r\n");
}

TEST(CreateDefaultDefinition, WritesTheDatesOf1996WithTwoDigitYears) {
    ConversionFixture f(1996);
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", false));
    EXPECT_EQ(f.chunkText(0),
              "[M]\r\nTRD5=01-02-26\r\nBFM=UNS\r\nCRT=01-02-26-03-04-05\r\nDCT=NON\r\n");
}

TEST(CreateDefaultDefinition, TakesTheDefaultsOfTheSettings) {
    ConversionFixture f;
    for (const auto* key : {"CTRD4", "CPOC1", "CPOC2", "CPOC3", "CPOC4", "CMN4", "CBFM"}) {
        f.settings.write(key, std::string(key).substr(1));
    }
    f.settings.write("CDCT", "coe");
    f.settings.writeInteger("ChkSR", 1);
    f.conversions.sampleRateStep = [](std::string_view name) {
        return "rate of " + std::string(name);
    };
    Names commented;
    f.conversions.defaultCommentStep = [&](UserInterface*, const std::string& name) {
        commented.push_back(name);
    };
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", false));
    EXPECT_EQ(f.chunkText(0),
              "[M]\r\nTRD4=TRD4\r\nTRD5=01-02-2026\r\nPOC1=POC1\r\nPOC2=POC2\r\nPOC3=POC3\r\n"
              "POC4=POC4\r\nMN4=MN4\r\nBFM=BFM\r\nSR=rate of M\r\nCRT=01-02-2026-03-04-05\r\n"
              "DCT=coe\r\nCO1=N\r\nCO\\N=1\r\nCO=0.0\r\nCO-1=1.0\r\n");
    EXPECT_EQ(commented, (Names{"M"}));
}

TEST(CreateDefaultDefinition, LeavesARecordThatIsThere) {
    ConversionFixture f;
    putChunk(f, 0, "[M]\r\nMN1=mine\r\n");
    EXPECT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", true));
    EXPECT_EQ(f.chunkText(0), "[M]\r\nMN1=mine\r\n");
}

TEST(CreateDefaultDefinition, RefusesANameThatNoSectionCanHave) {
    ConversionFixture f;
    EXPECT_FALSE(f.conversions.createDefaultDefinition(&f.ui, "", true));
    EXPECT_FALSE(f.conversions.createDefaultDefinition(&f.ui, "a\nb", true));
    EXPECT_TRUE(f.chunks().empty());
}

TEST(CreateDefaultDefinition, GoesOnInANewChunkWhenOneIsFull) {
    ConversionFixture f;
    f.settings.write("CPOC3", std::string(500, 'p'));
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(f.conversions.createDefaultDefinition(nullptr, "M" + std::to_string(i), true));
    }
    EXPECT_EQ(f.chunks(), (Numbers{0, 1}));
    EXPECT_EQ(f.conversions.definitionNames(-1)->size(), 100U);
    EXPECT_EQ(f.savedNames().size(), 100U);
}

TEST(CreateDefaultDefinition, ReportsAChunkThatCanNotBeWritten) {
    ConversionFixture f;
    (void)f.conversions.chunkNumbers();
    std::filesystem::create_directory(chunkPath(f.store, 0));
    EXPECT_FALSE(f.conversions.createDefaultDefinition(&f.ui, "M", true));
    EXPECT_EQ(f.ui.countBoxes(313), 1);
}

// --- Renaming and deleting ----------------------------------------------------------------

TEST(RenameDefinition, RenamesTheRecordAndItsCommentFile) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", std::string(40000, 'c'), false));
    EXPECT_TRUE(f.conversions.renameDefinition(&f.ui, "New", "A"));
    EXPECT_EQ(f.chunkText(0), "[New]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    EXPECT_FALSE(f.conversions.locateDefinition("A").found);
    EXPECT_EQ(f.conversions.readEuComment("New", false).size(), 40000U);
    EXPECT_FALSE(fileExists(commentPath(f.store, "A")));
}

TEST(RenameDefinition, RefusesWhatIsNotThereAndWhatIsTaken) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    EXPECT_FALSE(f.conversions.renameDefinition(&f.ui, "New", "Missing"));
    EXPECT_FALSE(f.conversions.renameDefinition(&f.ui, "B", "A"));
    EXPECT_TRUE(f.conversions.renameDefinition(&f.ui, "A", "A"));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
}

TEST(RenameDefinition, ChangesTheCaseOfAName) {
    ConversionFixture f;
    putChunk(f, 0, "[a]\r\nMN1=a\r\n");
    EXPECT_TRUE(f.conversions.renameDefinition(&f.ui, "A", "a"));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=a\r\n");
}

TEST(DeleteDefinition, DeletesTheRecordAndItsCommentFile) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", std::string(40000, 'c'), false));
    EXPECT_TRUE(f.conversions.deleteDefinition(&f.ui, "A"));
    EXPECT_EQ(f.chunkText(0), "[B]\r\nMN1=b\r\n");
    EXPECT_FALSE(fileExists(commentPath(f.store, "A")));
    EXPECT_FALSE(f.conversions.deleteDefinition(&f.ui, "A"));
    EXPECT_EQ(f.savedNames(), (Names{"B"}));
}

// --- Editing ------------------------------------------------------------------------------

TEST(DefinitionEdit, LeavesTheChunkUntilItIsCommitted) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n[B]\r\nMN1=b\r\n");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    ProfileFile copy(f.store.pathOf("DATA1.TMP"));
    copy.setValue("A", "MN1", "edited");
    ASSERT_TRUE(copy.flush().ok());
    EXPECT_EQ(f.value("A", "MN1"), "a");
    ASSERT_TRUE(f.conversions.commitDefinitionEdit(&f.ui, "A"));
    EXPECT_EQ(f.value("A", "MN1"), "edited");
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=edited\r\n[B]\r\nMN1=b\r\n");
}

TEST(DefinitionEdit, CanGiveTheCopyAnotherName) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", std::string(40000, 'c'), false));
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "Copy"));
    EXPECT_EQ(f.read("DATA1.TMP"), "[Copy]\r\nMN1=a\r\n");
    EXPECT_TRUE(fileExists(commentCopyPath(f.store, "Copy")));
    EXPECT_EQ(f.conversions.readEuComment("Copy", true).size(), 40000U);
    EXPECT_FALSE(f.conversions.beginDefinitionEdit(&f.ui, "Missing", "Missing"));
}

TEST(DefinitionEdit, CommitsTheComment) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", std::string(40000, 'c'), true));
    EXPECT_EQ(f.conversions.readEuComment("A", false), "");
    ASSERT_TRUE(f.conversions.commitDefinitionEdit(&f.ui, "A"));
    EXPECT_EQ(f.conversions.readEuComment("A", false).size(), 40000U);
    EXPECT_FALSE(fileExists(commentCopyPath(f.store, "A")));
    EXPECT_NE(f.save().find("\\COM:ccc"), std::string::npos);

    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", "short", true));
    ASSERT_TRUE(f.conversions.commitDefinitionEdit(&f.ui, "A"));
    EXPECT_EQ(f.conversions.readEuComment("A", false), "short");
    EXPECT_FALSE(fileExists(commentPath(f.store, "A")));
}

TEST(DefinitionEdit, ACommentLeftByAnEarlierEditIsNotTaken) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    test::writeFile(commentCopyPath(f.store, "A"), "stale");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    ASSERT_TRUE(f.conversions.commitDefinitionEdit(&f.ui, "A"));
    EXPECT_EQ(f.conversions.readEuComment("A", false), "");
}

TEST(OpenDefinitionForEdit, MakesARecordThatIsATemplateOnlyUntilItIsOpened) {
    ConversionFixture f;
    bool isTemplate = false;
    ASSERT_TRUE(f.conversions.openDefinitionForEdit(&f.ui, "M", isTemplate));
    EXPECT_TRUE(isTemplate);
    EXPECT_EQ(f.value("M", "EuTemplate"), "");
    EXPECT_EQ(f.read("DATA1.TMP"), f.chunkText(0));
    ASSERT_TRUE(f.conversions.openDefinitionForEdit(&f.ui, "M", isTemplate));
    EXPECT_FALSE(isTemplate);
}

TEST(OpenDefinitionForEdit, AnEmptyNameIsReported) {
    ConversionFixture f;
    bool isTemplate = true;
    EXPECT_FALSE(f.conversions.openDefinitionForEdit(&f.ui, "", isTemplate));
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_EQ(f.ui.boxes[0].text, "ERROR: No measurement name");
    EXPECT_EQ(f.ui.boxes[0].title, "KAVU-9 Internal Error");
    EXPECT_FALSE(f.conversions.openDefinitionForEdit(nullptr, "", isTemplate));
}

// --- Comments -----------------------------------------------------------------------------

TEST(EuComment, IsStoredInTheRecordUpTo30000BytesOfFile) {
    const std::string chunk = "[A]\r\nMN1=a\r\n";
    for (const bool fits : {true, false}) {
        ConversionFixture f;
        putChunk(f, 0, chunk);
        const std::string text(30000 - chunk.size() + (fits ? 0 : 1), 'c');
        ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", text, false));
        EXPECT_EQ(fileExists(commentPath(f.store, "A")), !fits);
        EXPECT_EQ(f.value("A", "COM").empty(), !fits);
        EXPECT_EQ(f.conversions.readEuComment("A", false), text);
    }
}

TEST(EuComment, KeepsItsLineBreaks) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", "one\r\ntwo", false));
    EXPECT_EQ(f.value("A", "COM"), "one\x14\x15two");
    EXPECT_EQ(f.conversions.readEuComment("A", false), "one\r\ntwo");
}

TEST(EuComment, AnEmptyOneIsNone) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\nCOM=old\r\n");
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "A", "", false));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=a\r\n");
    EXPECT_EQ(f.conversions.readEuComment("A", false), "");
    EXPECT_EQ(f.conversions.readEuComment("Missing", false), "");
    EXPECT_FALSE(f.conversions.writeEuComment(&f.ui, "Missing", "x", false));
}

TEST(EuComment, ThatCanNotBeWrittenLeavesTheFormerOne) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\nCOM=old\r\n");
    std::filesystem::create_directory(commentPath(f.store, "A"));
    EXPECT_FALSE(f.conversions.writeEuComment(&f.ui, "A", std::string(40000, 'c'), false));
    EXPECT_EQ(f.ui.countBoxes(313), 1);
    EXPECT_EQ(f.conversions.readEuComment("A", false), "old");
}

TEST(EuComment, NamesThatAreNoFileNamesHaveTheirOwnFiles) {
    ConversionFixture f;
    const Names names = {"../up", "a/b", "a%2Fb", "x", "X"};
    for (const auto& name : names) {
        ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, name, false));
    }
    // X is a look-up of x; a record of its own comes from a file.
    for (const auto& name : names) {
        ASSERT_TRUE(
            f.conversions.writeEuComment(&f.ui, name, name + std::string(40000, 'c'), false));
    }
    EXPECT_EQ(f.conversions.readEuComment("../up", false).substr(0, 5), "../up");
    EXPECT_EQ(f.conversions.readEuComment("a/b", false).substr(0, 4), "a/bc");
    EXPECT_EQ(f.conversions.readEuComment("a%2Fb", false).substr(0, 6), "a%2Fbc");
    EXPECT_EQ(f.conversions.readEuComment("x", false).substr(0, 2), "Xc");
    EXPECT_FALSE(fileExists(f.folder / "up.C_COM"));
}

TEST(CommentRecord, KeepsItsPairs) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    auto& store = f.conversions;
    EXPECT_EQ(store.commentRecordGet("A", "ZeroCal"), "");
    EXPECT_TRUE(store.commentRecordSet(&f.ui, "A", "ZeroCal", "1.5"));
    EXPECT_TRUE(store.commentRecordSet(&f.ui, "A", "RCal", "2"));
    EXPECT_EQ(f.value("A", "KavuCmd"), "ZeroCal=1.5 RCal=2");
    EXPECT_TRUE(store.commentRecordSet(&f.ui, "A", "ZeroCal", "3"));
    EXPECT_EQ(f.value("A", "KavuCmd"), "RCal=2 ZeroCal=3");
    EXPECT_EQ(store.commentRecordGet("A", "ZeroCal"), "3");
    EXPECT_TRUE(store.commentRecordSet(&f.ui, "A", "RCal", ""));
    EXPECT_TRUE(store.commentRecordSet(&f.ui, "A", "ZeroCal", ""));
    EXPECT_EQ(f.chunkText(0), "[A]\r\nMN1=a\r\n");
}

TEST(CommentRecord, HoldsAtMost499Characters) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    EXPECT_TRUE(f.conversions.commentRecordSet(&f.ui, "A", "K", std::string(497, 'v')));
    EXPECT_FALSE(f.conversions.commentRecordSet(&f.ui, "A", "L", "1"));
    EXPECT_EQ(f.conversions.commentRecordGet("A", "K"), std::string(497, 'v'));
}

TEST(CommentRecord, WorksOnTheWorkingCopyIfThereIsOne) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    EXPECT_TRUE(f.conversions.commentRecordSet(&f.ui, "A", "RCal", "2"));
    EXPECT_EQ(f.value("A", "KavuCmd"), "");
    EXPECT_EQ(f.conversions.commentRecordGet("A", "RCal"), "2");
    EXPECT_EQ(f.read("DATA1.TMP"), "[A]\r\nMN1=a\r\nKavuCmd=RCal=2\r\n");
}

// --- Fits and choices ---------------------------------------------------------------------

TEST(WriteFitCoefficients, StoresThemInTheWorkingCopy) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    const double coefficients[] = {0.5, -1250, 3};
    EXPECT_TRUE(f.conversions.writeFitCoefficients(&f.ui, "A", 2, coefficients));
    EXPECT_EQ(f.read("DATA1.TMP"),
              "[A]\r\nMN1=a\r\nCO1=Y\r\nCO\\N=2\r\nCO=5.00000000E-01\r\n"
              "CO-1=-1.25000000E+03\r\nCO-2=3.00000000E+00\r\n");
    EXPECT_FALSE(f.conversions.writeFitCoefficients(&f.ui, "A", 3, coefficients));
    EXPECT_FALSE(f.conversions.writeFitCoefficients(&f.ui, "A", -1, coefficients));
    f.settings.writeInteger("FloatPrecision", 2);
    EXPECT_TRUE(f.conversions.writeFitCoefficients(&f.ui, "A", 0, coefficients));
    EXPECT_NE(f.read("DATA1.TMP").find("CO=5.00E-01\r\n"), std::string::npos);
}

TEST(WriteFitCoefficients, LeavesNoTermOfAHigherOrderBehind) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nCO\\N=12\r\nCO-3=3\r\nCO-4=4\r\nCO-12=12\r\n[B]\r\nCO-4=4\r\n");
    ASSERT_TRUE(f.conversions.beginDefinitionEdit(&f.ui, "A", "A"));
    const double coefficients[] = {0.5, -1250, 3};
    EXPECT_TRUE(f.conversions.writeFitCoefficients(&f.ui, "A", 2, coefficients));
    EXPECT_EQ(f.read("DATA1.TMP"),
              "[A]\r\nCO\\N=2\r\nCO1=Y\r\nCO=5.00000000E-01\r\nCO-1=-1.25000000E+03\r\n"
              "CO-2=3.00000000E+00\r\n[B]\r\nCO-4=4\r\n");
}

TEST(ConversionChoices, AreOfferedFromTheirEditionOn) {
    using Texts = std::vector<std::string_view>;
    EXPECT_EQ(ConversionStore::binaryFormatList(1996),
              (Texts{"INTeger", "UNSigned Binary", "SIGn And Magnitude", "ONE's Complement",
                     "TWO's Complement", "OFFset Binary", "OTHer"}));
    EXPECT_EQ(ConversionStore::binaryFormatList(2011),
              (Texts{"INTeger", "UNSigned Binary", "SIG - Sign And Magnitude (+=0)",
                     "SIM - Sign And Magnitude (+=1)", "ONE's Complement", "TWO's Complement",
                     "OFFset Binary", "FPT - Float", "BCD - Binary Coded Decimal",
                     "BWT - Bit Weight", "OTHer"}));
    EXPECT_EQ(ConversionStore::conversionTypeList(1996),
              (Texts{"NON - None", "PRS - Pair Set", "COE - Coefficients", "DER - Derived",
                     "DIS - Discrete", "OTH - Other", "SP  - Special Processing", "VID - Video",
                     "VOI - Voice"}));
    EXPECT_EQ(ConversionStore::conversionTypeList(2007).size(), 12U);
    EXPECT_EQ(ConversionStore::conversionTypeList(2005).size(), 11U);
}

// --- Passes -------------------------------------------------------------------------------

TEST(ForEachChunk, VisitsAllInOrderAndWritesWhatWasChanged) {
    ConversionFixture f;
    for (int i = 0; i < 20; ++i) {
        putChunk(f, i, "[M" + std::to_string(i) + "]\r\nTRD4=OTH\r\n");
    }
    Names visited;
    ASSERT_TRUE(
        forEachRecord(f.context, f.conversions, [&](ProfileFile& chunk, std::string_view name) {
            visited.emplace_back(name);
            // A look-up in the middle of a pass must not disturb it.
            EXPECT_TRUE(f.conversions.locateDefinition("M19").found);
            if (name == "M3") {
                chunk.renameSection(name, "Renamed");
            } else {
                chunk.setValue(name, "TRD4", "O");
            }
            return true;
        }).ok());
    EXPECT_EQ(visited.size(), 20U);
    EXPECT_EQ(visited[10], "M10");
    EXPECT_EQ(f.chunkText(7), "[M7]\r\nTRD4=O\r\n");
    EXPECT_FALSE(f.conversions.locateDefinition("M3").found);
    EXPECT_EQ(f.conversions.locateDefinition("Renamed").chunk, 3);
}

TEST(ForEachChunk, EndsWhenTheVisitorSaysSo) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    putChunk(f, 1, "[B]\r\nMN1=b\r\n");
    int visits = 0;
    EXPECT_TRUE(forEachChunk(f.context, f.conversions, [&](ProfileFile&) {
                    ++visits;
                    return false;
                }).ok());
    EXPECT_EQ(visits, 1);
}

TEST(ForEachChunk, GivesTheFileThatCanNotBeWritten) {
    ConversionFixture f;
    putChunk(f, 0, "[A]\r\nMN1=a\r\n");
    std::filesystem::create_directory(chunkPath(f.store, 0) + ".new");
    const auto status = forEachChunk(f.context, f.conversions, [](ProfileFile& chunk) {
        return chunk.setValue("A", "MN1", "changed");
    });
    EXPECT_FALSE(status.ok());
    EXPECT_NE(status.path().find("C_O"), std::string::npos);
    EXPECT_EQ(f.value("A", "MN1"), "a");
}

}  // namespace
}  // namespace kavu
