#include "conversion/ConversionFixture.h"
#include "conversion/DefinitionEdit.h"
#include "core/text/Text.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::lines;
using test::Names;
using Rows = std::vector<std::vector<std::string>>;

std::optional<DefinitionEdit> open(ConversionFixture& f, const std::string& name) {
    return DefinitionEdit::open(f.context, f.conversions, &f.ui, name);
}

constexpr const char* kTwo =
    "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS3-1:1;C-1\\PS4-1:2;C-1\\MN1:first;"
    "C-2\\DCN:B;C-2\\DCT:COE;C-2\\CO\\N:1;C-2\\CO:5;C-2\\CO-1:6;C-2\\COM:of B;";

// --- Open, store, cancel -------------------------------------------------------------------

TEST(DefinitionEdit, AnEmptyNameIsReported) {
    ConversionFixture f;
    EXPECT_FALSE(open(f, ""));
    EXPECT_TRUE(f.ui.hasText("ERROR: No measurement name"));
    EXPECT_FALSE(DefinitionEdit::open(f.context, f.conversions, nullptr, ""));
}

TEST(DefinitionEdit, StoresAndMarksTheRecord) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    f.document.changed = false;
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    EXPECT_FALSE(edit->wasTemplate());
    EXPECT_EQ(edit->value("MN1"), "first");
    ASSERT_TRUE(edit->setValues(&f.ui, {{"MN1", "two\r\nlines"}, {"MN3", "PSI"}}));
    EXPECT_EQ(edit->value("MN1"), "two\r\nlines");
    EXPECT_EQ(f.value("A", "MN1"), "first") << "the chunk waits for OK";
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_EQ(f.value("A", "Chg"), "1");
    EXPECT_EQ(f.value("A", "MN3"), "PSI");
    EXPECT_TRUE(f.document.changed);
    EXPECT_FALSE(f.has(working::kData1)) << "the working copy is gone";
}

TEST(DefinitionEdit, CancelLeavesNoTrace) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    const auto before = f.save();
    f.document.changed = false;
    auto edit = open(f, "B");
    ASSERT_TRUE(edit);
    ASSERT_TRUE(edit->setValues(&f.ui, {{"MN1", "changed"}}));
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "B", "other", true));
    ASSERT_TRUE(edit->cancel(&f.ui));
    EXPECT_EQ(f.save(), before);
    EXPECT_FALSE(f.document.changed);
    EXPECT_FALSE(f.has(working::kData1));
}

TEST(DefinitionEdit, ARecordThatWasOnlyATemplateGoesWithItsCancel) {
    ConversionFixture f;
    auto edit = open(f, "NEW");
    ASSERT_TRUE(edit);
    EXPECT_TRUE(edit->wasTemplate());
    EXPECT_TRUE(edit->cancel(&f.ui));
    EXPECT_FALSE(f.conversions.locateDefinition("NEW").found);
    EXPECT_EQ(f.save(), "");
}

TEST(DefinitionEdit, ATemplateThatIsStoredKeepsItsConversion) {
    ConversionFixture f;
    f.settings.write("CDCT", "COE");
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "T", true));
    EXPECT_NE(f.save().find("DCT:NON;"), std::string::npos) << "nobody has edited it";
    auto edit = open(f, "U");
    ASSERT_TRUE(edit);
    ASSERT_TRUE(edit->store(&f.ui));
    const auto saved = f.save();
    EXPECT_NE(saved.find("C-2\\DCT:COE;"), std::string::npos) << saved;
    EXPECT_NE(saved.find("C-2\\CO-1:1.0;"), std::string::npos);
}

TEST(DefinitionEdit, TrimsTheSampleRateOnlyIfRatesAreChecked) {
    for (const bool check : {false, true}) {
        ConversionFixture f;
        f.settings.write("ChkSR", check ? "1" : "0");
        ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\SR:12.500000;")));
        auto edit = open(f, "A");
        ASSERT_TRUE(edit && edit->store(&f.ui));
        EXPECT_EQ(f.value("A", "SR"), check ? "12.5" : "12.500000");
    }
}

TEST(DefinitionEdit, AWorkingCopyThatIsGoneIsNotMadeAnew) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    ASSERT_TRUE(deleteFile(f.store.pathOf(working::kData1)).ok());
    EXPECT_FALSE(edit->setValues(&f.ui, {{"MN1", "x"}}));
    const std::string_view codes[] = {"MC1"};
    EXPECT_FALSE(edit->setRows(&f.ui, "MC\\N", codes, {{"1"}}));
    const double c[] = {1, 2};
    EXPECT_FALSE(f.conversions.writeFitCoefficients(&f.ui, "A", 1, c));
    EXPECT_FALSE(edit->store(&f.ui));
    EXPECT_EQ(f.value("A", "MN1"), "first");
}

// --- Lists ---------------------------------------------------------------------------------

TEST(DefinitionEditRows, AreWrittenAndAShorterListLeavesNothingBehind) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    const std::string_view codes[] = {"MC1", "MC2", "MC3"};
    ASSERT_TRUE(edit->setRows(&f.ui, "MC\\N", codes, {{"a", "1", "2"}, {"b", "", "4"}}));
    EXPECT_EQ(edit->rows("MC\\N", codes), (Rows{{"a", "1", "2"}, {"b", "", "4"}}));
    ASSERT_TRUE(edit->setRows(&f.ui, "MC\\N", codes, {{"c", "5", "6"}}));
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_EQ(f.value("A", "MC\\N"), "1");
    EXPECT_EQ(f.value("A", "MC3-2"), "");
}

TEST(DefinitionEditRows, ACountFromAFileIsNotTrusted) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DPC\\N:99;C-1\\DP\\N:2000000000;")));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    const std::string_view codes[] = {"DP"};
    EXPECT_EQ(edit->rows("DP\\N", codes).size(), 9999U);
}

TEST(DefinitionEdit, ChangingTheTypeAndBackKeepsThePairs) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit && edit->setValues(&f.ui, {{"DCT", "COE"}, {"CO\\N", "1"}, {"CO", "3"}}));
    ASSERT_TRUE(edit->setValues(&f.ui, {{"DCT", "PRS"}}));
    EXPECT_EQ(edit->value("PS3-1"), "1");
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_NE(f.save().find("C-1\\PS4-1:2;"), std::string::npos);
}

TEST(DefinitionEdit, StampsTheReleaseUnlessItWasSetByHand) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit && edit->stampRelease(&f.ui, true));
    EXPECT_EQ(edit->value("CRT"), "");
    ASSERT_TRUE(edit->stampRelease(&f.ui, false));
    EXPECT_EQ(edit->value("CRT"), "01-02-2026-03-04-05");
    f.document.version = 1996;
    ASSERT_TRUE(edit->stampRelease(&f.ui, false));
    EXPECT_EQ(edit->value("CRT"), "01-02-26-03-04-05");
}

// --- Import --------------------------------------------------------------------------------

TEST(ImportValues, TakesAllOfAnotherRecordAndItsComment) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->importValues(&f.ui, "B"), DefinitionEdit::Import::OtherType);
    EXPECT_EQ(edit->value("CO-1"), "6");
    EXPECT_EQ(edit->value("PS3-1"), "");
    EXPECT_EQ(f.settings.text("CopyEUDefsFrom"), "B");
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_EQ(f.conversions.readEuComment("A", false), "of B");
    EXPECT_EQ(f.value("B", "CO-1"), "6");
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
}

TEST(ImportValues, TellsIfTheTypeIsTheSame) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:COE;C-2\\DCN:B;C-2\\DCT:COE;")));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->importValues(&f.ui, "B"), DefinitionEdit::Import::SameType);
    EXPECT_EQ(edit->importValues(&f.ui, "C"), DefinitionEdit::Import::NoSource);
}

TEST(ImportValues, CopiesACommentThatLiesInAFile) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    const std::string comment(40000, 'x');
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "B", comment, false));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->importValues(&f.ui, "B"), DefinitionEdit::Import::OtherType);
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_EQ(f.conversions.readEuComment("A", false), comment);
    EXPECT_EQ(f.conversions.readEuComment("B", false), comment);
}

TEST(ImportSources, AreAllOthers) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    f.settings.write("CopyEUDefsFrom", "B");
    std::string last;
    EXPECT_EQ(importSources(f.context, f.conversions, &f.ui, "a", &last), Names{"B"});
    EXPECT_EQ(last, "B");
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(ImportSources, WithoutAnyMessage435IsShown) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:COE;")));
    EXPECT_TRUE(importSources(f.context, f.conversions, &f.ui, "A").empty());
    ASSERT_TRUE(f.ui.hasBox(435));
    EXPECT_EQ(f.ui.boxes[0].titleId, 80);
    EXPECT_TRUE(importSources(f.context, f.conversions, nullptr, "A").empty());
}

// --- Defaults ------------------------------------------------------------------------------

TEST(SaveTypeDefaults, AsksFirst) {
    ConversionFixture f;
    EXPECT_FALSE(saveTypeDefaults(f.context, &f.ui, "TWO's Complement", "SP  - Special"));
    ASSERT_TRUE(f.ui.hasBox(437));
    EXPECT_NE(f.ui.boxes[0].text.find("Telemetry Value Definition, and Data Conversion Type"),
              std::string::npos);
    EXPECT_EQ(f.settings.text("CBFM"), "");
    f.ui.byId[437] = Button::Yes;
    EXPECT_TRUE(saveTypeDefaults(f.context, &f.ui, "TWO's Complement", "SP  - Special"));
    EXPECT_EQ(f.settings.text("CBFM"), "TWO");
    EXPECT_EQ(f.settings.text("CDCT"), "SP");
    EXPECT_FALSE(saveTypeDefaults(f.context, nullptr, "INT", "NON"));
}

TEST(OtherDefaults, AreUsedByNewRecords) {
    ConversionFixture f;
    saveLinkTypeDefault(f.context, "ANAlog");
    saveClassificationDefault(f.context, "UB   - Unclassified (TM & EU)");
    const std::string contact[] = {"Name", "Agency", "Street\r\nTown", "5"};
    saveContactDefaults(f.context, contact);
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", false));
    const auto saved = f.save();
    for (const char* const part :
         {"MN4:ANA;", "TRD4:UB;", "POC1:Name;", "POC3:Street\r\nTown;", "POC4:5;"}) {
        EXPECT_NE(saved.find(part), std::string::npos) << part;
    }
}

// --- The list of all records ---------------------------------------------------------------

TEST(DefinitionRows, ShowMeasurementsAndTypes) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto rows = definitionRows(f.context, f.conversions, "All Measurements");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].measurement, "A");
    EXPECT_EQ(rows[0].type, "PRS - Pair Set");
    rows = definitionRows(f.context, f.conversions, "COE - Coefficients");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].measurement, "B");
    EXPECT_TRUE(definitionRows(f.context, f.conversions, "VID - Video").empty());
}

TEST(DefinitionFilters, HaveAllMeasurementsFirst) {
    EXPECT_EQ(definitionFilters(2011).front(), "All Measurements");
    EXPECT_EQ(definitionFilters(2011).size(), 13U);
    EXPECT_EQ(definitionFilters(2005).size(), 12U) << "negative powers come in 2007";
}

TEST(DeleteDefinitionRow, AsksAndMovesTheSelection) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    f.document.changed = false;
    auto rows = definitionRows(f.context, f.conversions, "");
    std::size_t selection = 1;
    EXPECT_FALSE(deleteDefinitionRow(f.context, f.conversions, &f.ui, rows, selection));
    EXPECT_EQ(f.ui.boxes.back().id, -82);
    EXPECT_EQ(f.ui.boxes.back().titleId, 83);
    EXPECT_FALSE(deleteDefinitionRow(f.context, f.conversions, nullptr, rows, selection));
    EXPECT_FALSE(f.document.changed);
    f.ui.byId[82] = Button::Yes;
    EXPECT_TRUE(deleteDefinitionRow(f.context, f.conversions, &f.ui, rows, selection));
    EXPECT_EQ(selection, 0U);
    EXPECT_EQ(rows.size(), 1U);
    EXPECT_TRUE(f.document.changed);
    EXPECT_EQ(f.savedNames(), Names{"A"});
    EXPECT_TRUE(deleteDefinitionRow(f.context, f.conversions, &f.ui, rows, selection));
    EXPECT_FALSE(deleteDefinitionRow(f.context, f.conversions, &f.ui, rows, selection));
}

// --- Strings of the comment ----------------------------------------------------------------

TEST(CommentStrings, AreReadAsTheyWereWritten) {
    ConversionFixture f;
    const std::vector<CommentString> strings{
        {true, true, "Sensor:", "S-1"}, {false, true, "Off:", ""}, {true, false, "Hidden:", "x"}};
    f.settings.writeProfile("EUComment", "S9", "stale");
    writeCommentStrings(f.context, strings);
    EXPECT_EQ(readCommentStrings(f.context), strings);
    EXPECT_EQ(f.settings.profileInteger("EUComment", "C", 0), 3);
    EXPECT_EQ(f.settings.profileText("EUComment", "S9"), "") << "the section is made anew";
    EXPECT_EQ(defaultComment(strings), "Sensor: S-1\r\nHidden: x");
    EXPECT_EQ(commentStringValue(defaultComment(strings), "Hidden:"), "x");
    EXPECT_EQ(commentStringValue("text", "Hidden:"), "");
    EXPECT_EQ(commentStringValue("text", " "), "");
}

TEST(CommentStrings, ACountFromAFileIsNotTrusted) {
    ConversionFixture f;
    f.settings.writeProfile("EUComment", "C", "2000000000");
    EXPECT_EQ(readCommentStrings(f.context).size(), 1000U);
    f.settings.writeProfile("EUComment", "C", "-1");
    EXPECT_TRUE(readCommentStrings(f.context).empty());
}

// --- The private pairs ---------------------------------------------------------------------

TEST(PrivatePairs, LeaveTheCommentForAnEditAndGoBackAtTheSave) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:PRS;C-1\\COM:[KAVU: ZeroCal=5 RCal=9]seen;")));
    EXPECT_EQ(f.conversions.commentRecordGet("A", "RCal"), "9") << "also before any edit";
    EXPECT_NE(f.save().find("COM:[KAVU: ZeroCal=5 RCal=9]seen;"), std::string::npos);
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    EXPECT_EQ(f.conversions.readEuComment("A", true), "seen");
    EXPECT_EQ(f.conversions.commentRecordGet("A", "ZeroCal"), "5");
    ASSERT_TRUE(f.conversions.commentRecordSet(&f.ui, "A", "ZeroCal", "7"));
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_NE(f.save().find("COM:[KAVU:RCal=9 ZeroCal=7]seen;"), std::string::npos) << f.save();
}

TEST(PrivatePairs, AreTheWholeCommentIfThereIsNoOther) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:PRS;")));
    ASSERT_TRUE(f.conversions.commentRecordSet(&f.ui, "A", "RCal", "1"));
    EXPECT_NE(f.save().find("COM:[KAVU:RCal=1];"), std::string::npos);
    ASSERT_TRUE(f.conversions.commentRecordSet(&f.ui, "A", "RCal", ""));
    EXPECT_EQ(f.save().find("COM:"), std::string::npos);
}

TEST(PrivatePairs, OfAnotherRecordAreNotWrittenIntoTheWorkingCopy) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:PRS;C-30\\DCN:B;C-30\\DCT:PRS;")));
    auto edit = open(f, "A");
    ASSERT_TRUE(edit);
    ASSERT_TRUE(f.conversions.commentRecordSet(&f.ui, "B", "RCal", "1"));
    ASSERT_TRUE(edit->store(&f.ui));
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
    EXPECT_EQ(f.conversions.commentRecordGet("B", "RCal"), "1");
}

// --- What can not be read ------------------------------------------------------------------

TEST(DefinitionEdit, ACommentThatCanNotBeReadStopsTheEditAndStays) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    ASSERT_TRUE(f.conversions.writeEuComment(&f.ui, "B", std::string(40000, 'x'), false));
    const auto path = commentPath(f.store, "B");
    ASSERT_TRUE(deleteFile(path).ok());
    ASSERT_TRUE(makeFolder(path).ok());
    EXPECT_FALSE(open(f, "B"));
    EXPECT_TRUE(f.ui.hasBox(313));
    IoStatus status;
    EXPECT_EQ(f.conversions.readEuComment("B", false, &status), "");
    EXPECT_FALSE(status.ok());
    EXPECT_TRUE(folderExists(path));
}

TEST(DefinitionEdit, AChunkThatCanNotBeReadIsReported) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kTwo)));
    ASSERT_TRUE(f.conversions.writeOut().ok());
    ASSERT_TRUE(f.conversions.locateDefinition("A").found);
    const auto path = chunkPath(f.store, 0);
    ASSERT_TRUE(deleteFile(path).ok());
    ASSERT_TRUE(makeFolder(path).ok());
    for (UserInterface* const parent :
         {static_cast<UserInterface*>(&f.ui), static_cast<UserInterface*>(nullptr)}) {
        EXPECT_FALSE(DefinitionEdit::open(f.context, f.conversions, parent, "A"));
    }
    EXPECT_TRUE(f.ui.hasBox(313));
}

TEST(UpdateFile, TakesTheRecordThatTheSheetHasStored) {
    ConversionFixture f;
    const auto path = f.folder / "update.txt";
    f.settings.write("EnableUpd", "1");
    f.settings.write("UpdPath", path);
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "B");
    ASSERT_TRUE(edit && edit->setValues(&f.ui, {{"CO", "8"}}) && edit->store(&f.ui));
    const auto saved = f.save();
    EXPECT_EQ(saved.find("Chg"), std::string::npos);
    EXPECT_NE(test::readFile(path).find("B, 6, 8\n\n"), std::string::npos);
    EXPECT_EQ(test::readFile(path).find("A, "), std::string::npos);
    EXPECT_EQ(f.value("B", "Chg"), "") << "used up";
}

TEST(UpdateFile, HoldsOnlyTheTermsOfTheLastFit) {
    ConversionFixture f;
    const auto path = f.folder / "update.txt";
    f.settings.write("EnableUpd", "1");
    f.settings.write("UpdPath", path);
    ASSERT_TRUE(f.load(lines(kTwo)));
    auto edit = open(f, "B");
    ASSERT_TRUE(edit);
    const double high[] = {1, 2, 3, 4};
    const double low[] = {5, 7};
    EXPECT_TRUE(f.conversions.writeFitCoefficients(&f.ui, "B", 3, high));
    EXPECT_TRUE(f.conversions.writeFitCoefficients(&f.ui, "B", 1, low));
    ASSERT_TRUE(edit->store(&f.ui));
    (void)f.save();
    EXPECT_NE(test::readFile(path).find("B, 7.00000000E+00, 5.00000000E+00\n\n"), std::string::npos)
        << test::readFile(path);
}

}  // namespace
}  // namespace kavu
