#include "mdb/DatabaseStage.h"
#include "mdb/import/ImportFile.h"
#include "mdb/operations/DatabaseCsv.h"
#include "mdb/operations/DatabaseEdit.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(DatabaseCsv, OnlyWhatNeedsQuotesHasThem) {
    EXPECT_EQ(csvLine({"a", "b c", ""}), "a,b c,\r\n");
    EXPECT_EQ(csvLine({"x,y", "say \"x\"", " a", "1\r\n2"}),
              "\"x,y\",\"say \"\"x\"\"\",\" a\",\"1\r\n2\"\r\n");
}

TEST(DatabaseCsv, AnImportReadsWhatWasExported) {
    DatabaseStage stage(MdbVersion::Xml);
    DatabaseEdit edit(stage.context, stage.database);
    writeFile(stage.path, "");
    ASSERT_TRUE(edit.begin(&stage.ui));
    auto record = DatabaseStage::record("A", "one, \"two\"");
    edit.add(record);
    edit.add(DatabaseStage::record("B", "left out"));
    edit.add(DatabaseStage::record("C"));
    const auto file = stage.folder / "out.csv";
    ASSERT_TRUE(
        writeDatabaseCsv(file, edit, {2, 0}, {mdbfield::kName, mdbfield::kDescription}).ok());

    ImportLayout layout{.hasHeader = true};
    layout.references = matchImportNames(
        importNames(stage.messages, file, ImportKind::Delimited, ','), MdbVersion::Xml);
    EXPECT_EQ(layout.references.size(), 2U);
    MeasurementDatabase target(stage.messages, stage.folder / "target.mdb", MdbVersion::Xml, {});
    const auto result =
        importFile(stage.context, &stage.ui, {file, layout, MdbVersion::Xml}, target, false);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->converted, 2U);
    EXPECT_EQ(target.lookUp("A"), record);
    EXPECT_TRUE(target.lookUp("C"));
}

TEST(DatabaseCsv, AFailureIsToldAndLeavesWhatWasThere) {
    DatabaseStage stage(MdbVersion::Xml);
    const DatabaseEdit edit(stage.context, stage.database);
    EXPECT_FALSE(writeDatabaseCsv(stage.folder / "none/out.csv", edit, {}, {0}).ok());
}

}  // namespace
}  // namespace kavu::test
