#include "mdb/DatabaseStage.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

struct TextDatabase : DatabaseStage {
    explicit TextDatabase(MdbVersion version = MdbVersion::WithBus) : DatabaseStage(version) {}
};

TEST(MdbTextStorage, ASmallFormHasNoBusFieldsAndItsColumnsAreShifted) {
    TextDatabase stage(MdbVersion::Basic);
    std::vector<std::string> fields(28);
    fields[0] = "A";
    fields[6] = "EV";
    fields[7] = "Strain";
    fields[27] = "1.0 2.0";
    stage.openWith(mdbLine(fields, 28));
    std::size_t columns = 0;
    const auto record = stage.database.find("A", &columns);
    ASSERT_TRUE(record);
    EXPECT_EQ(columns, 28U);
    EXPECT_EQ((*record)[6], "EV");
    for (auto i = mdbfield::kBusName; i < mdbfield::kFirstConversion; ++i) {
        EXPECT_EQ((*record)[i], "") << i;
    }
    EXPECT_EQ((*record)[15], "Strain");
    EXPECT_EQ((*record)[35], "1.0 2.0");
    EXPECT_EQ((*record)[36], "");
}

TEST(MdbTextStorage, FieldsAreTrimmedOfBlanksWhenTheyAreRead) {
    TextDatabase stage;
    stage.openWith("  A  ; W ;16\r\n");
    const auto record = stage.database.first();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->name(), "A");
    EXPECT_EQ((*record)[mdbfield::kRoot], "W");
    EXPECT_EQ((*record)[mdbfield::kWordLength], "16");
}

TEST(MdbTextStorage, LinesThatNobodyTouchesKeepTheirBytes) {
    TextDatabase stage;
    const std::string odd =
        " A ;x\n;no name;\r\n\r\nB;y;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;\r\n";
    stage.openWith(odd + "C;z\r\n");
    bool removed = false;
    EXPECT_TRUE(stage.database.remove(&stage.ui, "c", &removed));
    EXPECT_TRUE(removed);
    EXPECT_EQ(stage.bytes(), odd);
}

TEST(MdbTextStorage, AnAppendBehindALineWithoutAnEndWritesTheEndFirst) {
    TextDatabase stage(MdbVersion::Basic);
    stage.openWith("A;1");
    EXPECT_TRUE(stage.database.add(&stage.ui, DatabaseStage::record("B")));
    EXPECT_EQ(stage.bytes(), "A;1\r\n" + mdbLine({"B"}, 28));
}

TEST(MdbTextStorage, RemoveAndReplaceIgnoreCaseAndMeetEveryLine) {
    TextDatabase stage;
    stage.openWith(mdbLine({"Abc", "r1"}) + mdbLine({"B"}) + mdbLine({"aBC", "r2"}));
    bool replaced = false;
    EXPECT_TRUE(stage.database.replace(&stage.ui, DatabaseStage::record("ABC"), &replaced));
    EXPECT_TRUE(replaced);
    EXPECT_EQ(stage.bytes(), mdbLine({"ABC"}) + mdbLine({"B"}) + mdbLine({"ABC"}));
    EXPECT_TRUE(stage.database.remove(&stage.ui, "abc"));
    EXPECT_EQ(stage.bytes(), mdbLine({"B"}));
}

TEST(MdbTextStorage, AReadByNameComparesExactly) {
    TextDatabase stage;
    stage.openWith(mdbLine({"Abc", "r1"}) + mdbLine({"abc", "r2"}));
    EXPECT_EQ((*stage.database.find("abc"))[1], "r2");
    EXPECT_EQ((*stage.database.find("Abc"))[1], "r1");
    EXPECT_FALSE(stage.database.find("ABC"));
}

TEST(MdbTextStorage, TakingOutTheOnlyRecordLeavesAnEmptyFile) {
    TextDatabase stage;
    stage.openWith(mdbLine({"A"}));
    EXPECT_TRUE(stage.database.remove(&stage.ui, "A"));
    EXPECT_EQ(stage.bytes(), "");
    EXPECT_EQ(stage.database.open(), MeasurementDatabase::Opening::Ready);
    EXPECT_EQ(stage.database.recordCount(), 0U);
}

TEST(MdbTextStorage, AReplaceWithoutAMatchAddsBehindTheOthers) {
    TextDatabase stage;
    stage.openWith(mdbLine({"A"}));
    bool replaced = true;
    EXPECT_TRUE(stage.database.replace(&stage.ui, DatabaseStage::record("B"), &replaced));
    EXPECT_FALSE(replaced);
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}) + mdbLine({"B"}));
}

TEST(MdbTextStorage, ASemicolonInAFieldIsRefusedAndNothingIsWritten) {
    TextDatabase stage;
    stage.openWith(mdbLine({"A"}));
    EXPECT_FALSE(stage.database.add(&stage.ui, DatabaseStage::record("B", "x;y")));
    EXPECT_FALSE(stage.database.replace(&stage.ui, DatabaseStage::record("A", "x;y")));
    EXPECT_EQ(stage.ui.countBoxes(402), 2);
    EXPECT_EQ(stage.bytes(), mdbLine({"A"}));
}

TEST(MdbTextStorage, ALineBreakInAFieldStaysOnItsLine) {
    TextDatabase stage(MdbVersion::Basic);
    stage.openWith("");
    EXPECT_TRUE(stage.database.add(&stage.ui, DatabaseStage::record("A", "one\r\ntwo")));
    const auto bytes = stage.bytes();
    EXPECT_NE(bytes.find("one\x14\x15two"), std::string::npos);
    EXPECT_EQ(bytes.find('\n'), bytes.size() - 1);
}

TEST(MdbTextStorage, AFindCutsTheFirstColumnAt32ButARemovalTakesAllOfIt) {
    TextDatabase stage;
    const std::string name(40, 'n');
    stage.openWith(mdbLine({name, "root"}));
    EXPECT_FALSE(stage.database.find(name));
    EXPECT_TRUE(stage.database.find(name.substr(0, 32)));
    EXPECT_TRUE(stage.database.contains(name));
    EXPECT_FALSE(stage.database.contains(name.substr(0, 32)));
    bool removed = true;
    EXPECT_TRUE(stage.database.remove(&stage.ui, name.substr(0, 32), &removed));
    EXPECT_FALSE(removed);
    EXPECT_TRUE(stage.database.remove(&stage.ui, name, &removed));
    EXPECT_TRUE(removed);
}

}  // namespace
}  // namespace kavu::test
