#include "mdb/dbase/TableBytes.h"
#include "mdb/import/ImportFile.h"
#include "support/TestContext.h"

namespace kavu::test {
namespace {

using Names = std::vector<std::string>;

class ImportFileTest : public testing::Test {
  protected:
    std::optional<ImportResult> import(const std::string& text, ImportLayout layout,
                                       bool overwrites = false) {
        return importFrom("in.csv", text, std::move(layout), overwrites);
    }
    std::optional<ImportResult> importFrom(const std::string& name, const std::string& text,
                                           ImportLayout layout, bool overwrites = false) {
        writeFile(folder_ / name, text);
        layout_ = std::move(layout);
        ui_.boxes.clear();
        return importFile(t_.context, &ui_, {folder_ / name, layout_, version_}, database(),
                          overwrites);
    }
    MeasurementDatabase& database() {
        database_ = std::make_unique<MeasurementDatabase>(t_.messages, target_, version_,
                                                          SampleRateOptions{});
        return *database_;
    }
    std::vector<MdbRecord> records() {
        std::vector<MdbRecord> all;
        EXPECT_EQ(database().open(), MeasurementDatabase::Opening::Ready);
        for (auto record = database_->first(); record; record = database_->next()) {
            all.push_back(*record);
        }
        return all;
    }
    Names names() {
        Names all;
        for (const auto& record : records()) {
            all.push_back(record.name());
        }
        return all;
    }
    int shown(int id) const { return ui_.countBoxes(id); }

    TestContext t_;
    TempFolder folder_;
    std::string target_ = folder_ / "db.otb";
    MdbVersion version_ = MdbVersion::WithBus;
    RecordingInterface ui_;
    ImportLayout layout_;
    std::unique_ptr<MeasurementDatabase> database_;
};

const ImportLayout kNameAndNote{ImportKind::Delimited, ',', false, {{0, "1"}, {26, "2"}}};
const std::vector<TableColumn> kTable{{"MEAS", 8}, {"NOTE", 10}, {"MEMO", 10, 'M'}};

// --- delimited ----------------------------------------------------------------------------

TEST_F(ImportFileTest, ImportsEveryRowOfADelimitedFile) {
    const auto result = import("A,first\nB,\"two\nlines\"\n", kNameAndNote);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 2U);
    const auto all = records();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0][26], "first");
    EXPECT_EQ(all[1][26], "two\x15lines");
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].id, -424);
    EXPECT_EQ(ui_.boxes[0].titleId, 80);
    EXPECT_EQ(ui_.boxes[0].text, "Conversion complete. 2 measurements were converted.");
}

TEST_F(ImportFileTest, ANameThatOccursTwiceIsImportedOnce) {
    writeFile(target_, "OLD" + std::string(35, ';') + "\r\n");
    const auto result = import("A,1\nA,2\nOLD,3\na,4\n", kNameAndNote);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 2U);
    EXPECT_EQ(result->skipped, (Names{"A", "OLD"}));
    EXPECT_EQ(names(), (Names{"OLD", "A", "a"}));
    EXPECT_TRUE(ui_.boxes.empty());
    ASSERT_EQ(ui_.shown.size(), 1U);
    EXPECT_EQ(ui_.shown[0].title, "Import Results");
    const auto& lines = ui_.shown[0].lines;
    EXPECT_EQ(std::count(lines.begin(), lines.end(),
                         "The following measurements were not imported into the database, because "
                         "they already existed in the KAVU database,"),
              1);
    EXPECT_EQ(lines.back(), "OLD");
    EXPECT_EQ(ui_.countLogs(424), 1);
}

TEST_F(ImportFileTest, ALayoutOfTheNameAloneGivesRecordsOfNothingElse) {
    ASSERT_TRUE(import("A,1\nB,2\n", {ImportKind::Delimited, ',', false, {{0, "1"}}}));
    for (const auto& record : records()) {
        for (std::size_t field = 1; field < mdbfield::kCount; ++field) {
            EXPECT_EQ(record[field], "");
        }
    }
}

TEST_F(ImportFileTest, MoreFieldsInALaterLineStayReadable) {
    ui_.otherwise = Button::Yes;
    ASSERT_TRUE(
        import("A,1\nB,2,three\n", {ImportKind::Delimited, ',', false, {{0, "1"}, {26, "3"}}}));
    EXPECT_EQ(shown(420), 1);
    EXPECT_TRUE(ui_.hasText("only 2 fields"));
    EXPECT_TRUE(ui_.hasText("Field #3 Measurement Description"));
    EXPECT_EQ(records()[0][26], "");
    EXPECT_EQ(records()[1][26], "three");
}

TEST_F(ImportFileTest, FieldsBeyondTheFileAreAskedAboutBeforeAnythingIsChanged) {
    writeFile(target_, "OLD" + std::string(35, ';') + "\r\n");
    const auto before = readFile(target_);
    ui_.otherwise = Button::No;
    EXPECT_FALSE(import("A,1\n", {ImportKind::Delimited, ',', false, {{0, "1"}, {26, "3"}}}, true));
    EXPECT_EQ(readFile(target_), before);
}

TEST_F(ImportFileTest, AFileWithoutFieldsGives419) {
    for (const char* const text : {"", "\n\n", "\x1A", "  \nA,1\n"}) {
        EXPECT_FALSE(import(text, kNameAndNote)) << text;
        EXPECT_EQ(shown(419), 1) << text;
        EXPECT_EQ(ui_.boxes.back().titleId, 80);
    }
    EXPECT_FALSE(fileExists(target_));
}

TEST_F(ImportFileTest, ALayoutWithoutANameGives425BeforeTheFileIsLookedAt) {
    for (const auto kind : {ImportKind::Dbase, ImportKind::Delimited, ImportKind::Fixed}) {
        EXPECT_FALSE(import("", {kind, ',', false, {{26, "1", "2"}}}));
        EXPECT_EQ(shown(425), 1);
        EXPECT_EQ(ui_.boxes.size(), 1U);
        EXPECT_FALSE(import("", {kind, ',', false, {{0, " "}, {26, "1", "2"}}}));
        EXPECT_EQ(shown(425), 1);
    }
    // The file does not have the field of the name.
    EXPECT_FALSE(import("A,1\n", {ImportKind::Delimited, ',', false, {{0, "3"}}}));
    EXPECT_EQ(shown(425), 1);
}

TEST_F(ImportFileTest, AHeaderNamesTheFields) {
    const ImportLayout layout{ImportKind::Delimited, ',', true, {{0, "tag"}, {26, "TEXT"}}};
    ASSERT_TRUE(import("Text,Tag\none,A\n", layout));
    EXPECT_EQ(names(), Names{"A"});
    EXPECT_EQ(records()[0][26], "one");
    // Numbers still count.
    ASSERT_TRUE(import("x,y\none,B\n", {ImportKind::Delimited, ',', true, {{0, "2"}}}, true));
    EXPECT_EQ(names(), Names{"B"});
    EXPECT_FALSE(import("x,y\n", {ImportKind::Delimited, ',', true, {{0, "z"}}}));
    EXPECT_EQ(shown(425), 1);
}

TEST_F(ImportFileTest, RowsWithoutANameAreDropped) {
    const auto result = import("A,1\n,2\n\n  ,3\nB\n", kNameAndNote);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 2U);
    EXPECT_TRUE(result->skipped.empty());
    EXPECT_EQ(names(), (Names{"A", "B"}));
}

TEST_F(ImportFileTest, ARecordThatTheFormCannotHoldIsRefusedByName) {
    const auto result = import("A,a;b\nB,ok\nC,;\n", kNameAndNote);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->refused, (Names{"A", "C"}));
    EXPECT_EQ(result->converted, 1U);
    EXPECT_EQ(shown(402), 1);
    version_ = MdbVersion::Xml;
    target_ = folder_ / "db.xml";
    EXPECT_EQ(import("A,a;b\n", kNameAndNote)->converted, 1U);
    EXPECT_EQ(records()[0][26], "a;b");
}

TEST_F(ImportFileTest, OverwriteClearsTheDatabaseFirst) {
    writeFile(target_, "OLD" + std::string(35, ';') + "\r\n");
    EXPECT_EQ(import("OLD,1\nB,2\n", kNameAndNote, true)->converted, 2U);
    EXPECT_EQ(names(), (Names{"OLD", "B"}));
    EXPECT_EQ(records()[0][26], "1");
}

TEST_F(ImportFileTest, ACancelKeepsWhatWasDone) {
    ui_.cancelAtPoll = 3;
    const auto result = import("A,1\nB,2\nC,3\nD,4\n", kNameAndNote);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 2U);
    EXPECT_EQ(names(), (Names{"A", "B"}));
    EXPECT_TRUE(ui_.hasText("2 measurements were converted"));
}

TEST_F(ImportFileTest, AFileThatCannotBeOpenedIsTold) {
    layout_ = kNameAndNote;
    EXPECT_FALSE(
        importFile(t_.context, &ui_, {folder_ / "none.csv", layout_, version_}, database(), true));
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].title, "Unable To Open File");
    EXPECT_FALSE(fileExists(target_));
}

TEST_F(ImportFileTest, ADatabaseThatCannotBeOpenedGives428) {
    version_ = MdbVersion::Xml;
    writeFile(target_, "<Other><A/></Other>");
    EXPECT_FALSE(import("A,1\n", kNameAndNote, true));
    EXPECT_EQ(shown(428), 1);
    EXPECT_EQ(readFile(target_), "<Other><A/></Other>");
}

TEST_F(ImportFileTest, TheDatabaseInUseIsValidatedAgain) {
    const std::string longName(33, 'N');
    ASSERT_TRUE(import(longName + ",1\n", kNameAndNote));
    EXPECT_EQ(ui_.countLogs(408), 0);
    t_.settings.set(setting::kDatabasePath, target_);
    t_.settings.set(setting::kDatabaseVersion, 1);
    t_.settings.set(setting::kDatabaseEnabled, true);
    ASSERT_TRUE(import("B,2\n", kNameAndNote));
    EXPECT_EQ(ui_.countLogs(408), 1);
    t_.settings.set(setting::kDatabaseEnabled, false);
    ASSERT_TRUE(import("C,2\n", kNameAndNote));
    EXPECT_EQ(ui_.countLogs(408), 1);
}

TEST_F(ImportFileTest, ASilentImportWorks) {
    writeFile(folder_ / "in.csv", "A,1\n");
    layout_ = kNameAndNote;
    const auto result =
        importFile(t_.context, nullptr, {folder_ / "in.csv", layout_, version_}, database(), false);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 1U);
}

// --- fixed columns ------------------------------------------------------------------------

TEST_F(ImportFileTest, CutsFixedColumns) {
    const ImportLayout layout{ImportKind::Fixed, ',', false, {{0, "1", "4"}, {26, "6", "9"}}};
    const auto result = import("AAAA first\n\nK\xC3\xB6ln text \r\nB\nCC   x\n", layout);
    ASSERT_TRUE(result);
    EXPECT_EQ(names(), (Names{"AAAA", "K\xC3\xB6ln", "CC"}));
    EXPECT_EQ(records()[1][26], "text");
    // The line "B" ends before the text; the blank one does not count.
    EXPECT_EQ(shown(422), 1);
}

TEST_F(ImportFileTest, BlankLinesAlonePassWithout422) {
    const ImportLayout layout{ImportKind::Fixed, ',', false, {{0, "1", "4"}}};
    EXPECT_EQ(import("A\n   \n\nB\n", layout)->converted, 2U);
    EXPECT_EQ(shown(422), 0);
}

TEST_F(ImportFileTest, AStartWithoutASizeGives421) {
    EXPECT_FALSE(import("A\n", {ImportKind::Fixed, ',', false, {{0, "1", "4"}, {26, "6", ""}}}));
    ASSERT_EQ(shown(421), 1);
    EXPECT_TRUE(ui_.hasText("Entry #27 in the list has a starting column of '6'"));
    version_ = MdbVersion::Basic;
    EXPECT_FALSE(import("A\n", {ImportKind::Fixed, ',', false, {{0, "1", "4"}, {26, "6", "0"}}}));
    EXPECT_TRUE(ui_.hasText("Entry #19 in the list"));
}

// --- dBase --------------------------------------------------------------------------------

TEST_F(ImportFileTest, ImportsTheRowsOfATableThatAreNotDeleted) {
    const auto table = tableBytes(kTable, {" A       first", "*B       gone", "         none"});
    const ImportLayout layout{ImportKind::Dbase, ',', false, {{0, "meas"}, {26, "Note"}}};
    const auto result = importFrom("in.dbf", table, layout);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 1U);
    EXPECT_EQ(names(), Names{"A"});
    EXPECT_EQ(records()[0][26], "first");
}

TEST_F(ImportFileTest, AColumnThatIsMissingGives423WithItsName) {
    const auto table = tableBytes(kTable, {" A"});
    EXPECT_FALSE(
        importFrom("in.dbf", table, {ImportKind::Dbase, ',', false, {{0, "MEAS"}, {26, "X"}}}));
    EXPECT_EQ(shown(423), 1);
    EXPECT_TRUE(ui_.hasText("'X' was not found"));
    EXPECT_FALSE(fileExists(target_));
}

TEST_F(ImportFileTest, AColumnWhoseCellsAreNoTextIsRefusedByName) {
    const auto table = tableBytes(kTable, {" A"});
    EXPECT_FALSE(
        importFrom("in.dbf", table, {ImportKind::Dbase, ',', false, {{0, "MEAS"}, {26, "MEMO"}}}));
    EXPECT_TRUE(ui_.hasText("Unable to import column 'MEMO' of the Dbase file. Its type 'M'"));
    // One that is not asked for does no harm.
    EXPECT_TRUE(importFrom("in.dbf", table, {ImportKind::Dbase, ',', false, {{0, "MEAS"}}}));
}

TEST_F(ImportFileTest, ShowsTheColumnsOfATable) {
    writeFile(folder_ / "in.dbf", tableBytes(kTable, {}));
    showDbaseFields(t_.messages, &ui_, folder_ / "in.dbf");
    ASSERT_EQ(ui_.shown.size(), 1U);
    EXPECT_EQ(ui_.shown[0].title, "Database Contents");
    EXPECT_EQ(ui_.shown[0].subtitle, "Dbase File: " + (folder_ / "in.dbf"));
    EXPECT_EQ(ui_.shown[0].lines,
              (Names{"Dbase File: " + (folder_ / "in.dbf"), "Number of columns in this database: 3",
                     "", "#1:\tMEAS", "#2:\tNOTE", "#3:\tMEMO"}));
}

// --- preview and mapping ------------------------------------------------------------------

TEST_F(ImportFileTest, APreviewSaysWhichRowsAreSkippedAndWhy) {
    writeFile(target_, "OLD" + std::string(35, ';') + "\r\n");
    const auto before = readFile(target_);
    writeFile(folder_ / "in.csv", "Name,Text\nA,1\nA,2\nOLD,3\n,4\n\nB,a;b\nC,6\n");
    layout_ = {ImportKind::Delimited, ',', true, {{0, "Name"}, {26, "Text"}}};
    const ImportInput input{folder_ / "in.csv", layout_, version_};
    ASSERT_EQ(database().open(), MeasurementDatabase::Opening::Ready);
    const auto rows = previewImport(t_.context, input, database_.get(), false);
    Names reasons;
    for (const auto& row : rows) {
        reasons.push_back(std::to_string(row.number) + row.record.name() + ": " + row.skipped);
    }
    EXPECT_EQ(reasons, (Names{"2A: ", "3A: The measurement is in the database already",
                              "4OLD: The measurement is in the database already",
                              "5: There is no measurement name", "6: The line is blank",
                              "7B: A field holds a semi-colon", "8C: "}));
    EXPECT_EQ(previewImport(t_.context, input, database_.get(), true)[2].skipped, "");
    EXPECT_EQ(readFile(target_), before);
    EXPECT_TRUE(ui_.boxes.empty());
}

TEST_F(ImportFileTest, APreviewHasThe20FirstRows) {
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "M" + std::to_string(i) + "\n";
    }
    writeFile(folder_ / "in.csv", text);
    // The description is not in the file, about which a preview does not ask.
    layout_ = kNameAndNote;
    const ImportInput input{folder_ / "in.csv", layout_, version_};
    EXPECT_EQ(previewImport(t_.context, input, nullptr, false).size(), 20U);
    layout_ = {};
    EXPECT_TRUE(previewImport(t_.context, input, nullptr, false).empty());
}

TEST_F(ImportFileTest, ColumnsAreMappedByTheNamesThatMatch) {
    writeFile(folder_ / "in.csv", "NAME,Low_Value,Other,eu units\nA,1,2,3\n");
    auto names = importNames(t_.messages, folder_ / "in.csv", ImportKind::Delimited, ',');
    EXPECT_EQ(names, (Names{"NAME", "Low_Value", "Other", "eu units"}));
    const auto references = matchImportNames(names, MdbVersion::Xml);
    ASSERT_EQ(references.size(), 3U);
    EXPECT_EQ(references[0].field, mdbfield::kName);
    EXPECT_EQ(references[0].first, "NAME");
    EXPECT_EQ(references[1].field, 27U);
    EXPECT_EQ(references[2].first, "Low_Value");
    writeFile(folder_ / "in.dbf", tableBytes(kTable, {}));
    names = importNames(t_.messages, folder_ / "in.dbf", ImportKind::Dbase, ',');
    EXPECT_EQ(names, (Names{"MEAS", "NOTE", "MEMO"}));
    EXPECT_TRUE(importNames(t_.messages, folder_ / "none", ImportKind::Dbase, ',').empty());
}

TEST(ImportLayoutTest, ExtensionsSayKindAndDelimiter) {
    EXPECT_EQ(importKindOfFile("/a/b.DBF"), ImportKind::Dbase);
    EXPECT_EQ(importKindOfFile("b.asc"), ImportKind::Fixed);
    for (const char* const name : {"b.csv", "b.txt", "b.PRN"}) {
        EXPECT_EQ(importKindOfFile(name), ImportKind::Delimited);
    }
    EXPECT_EQ(importKindOfFile("csv"), std::nullopt);
    EXPECT_EQ(importDelimiterOfFile("a.csv"), ',');
    EXPECT_EQ(importDelimiterOfFile("a.TXT"), '\t');
    EXPECT_EQ(importDelimiterOfFile("a.prn"), ' ');
    EXPECT_EQ(importKindOf("fixed"), ImportKind::Fixed);
    EXPECT_EQ(importKindOf("Fixed"), std::nullopt);
    EXPECT_EQ(importRowOf(26, MdbVersion::Basic), 19U);
    EXPECT_EQ(importRowOf(8, MdbVersion::Basic), 0U);
}

}  // namespace
}  // namespace kavu::test
