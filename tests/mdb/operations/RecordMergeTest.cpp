#include "mdb/operations/RecordMerge.h"
#include "mdb/record/MdbFields.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

using Records = std::vector<EditedRecord>;

EditedRecord row(std::size_t entry, const std::string& name, const std::string& root = {}) {
    EditedRecord made{.record = MdbRecord(name), .entry = entry};
    made.record.set(f::kRoot, root);
    return made;
}
EditedRecord changed(EditedRecord made, std::size_t field, const std::string& text) {
    made.record.set(field, text);
    made.isChanged = true;
    return made;
}

TEST(RecordMerge, WithoutAnEditThePresentRecordsStand) {
    const Records former = {row(0, "A"), row(1, "B")};
    const auto merge = mergeRecords(former, former, {row(0, "B", "R"), row(2, "C")});
    ASSERT_EQ(merge.rows.size(), 2U);
    EXPECT_EQ(merge.rows[0].record[f::kRoot], "R");
    EXPECT_EQ(merge.rows[0].entry, 0U);
    EXPECT_EQ(merge.rows[1].entry, 2U);
    EXPECT_FALSE(merge.rows[0].isChanged);
    EXPECT_TRUE(merge.conflicts.empty());
}

TEST(RecordMerge, FieldsOfOneRecordAreMergedOneByOne) {
    const auto merge = mergeRecords({row(0, "A")}, {changed(row(0, "A"), f::kMask, "FW")},
                                    {row(4, "A", "theirs")});
    ASSERT_EQ(merge.rows.size(), 1U);
    EXPECT_EQ(merge.rows[0].record[f::kRoot], "theirs");
    EXPECT_EQ(merge.rows[0].record[f::kMask], "FW");
    EXPECT_EQ(merge.rows[0].entry, 4U);
    EXPECT_TRUE(merge.rows[0].isChanged);
    EXPECT_TRUE(merge.conflicts.empty());
}

TEST(RecordMerge, TheSameValueFromBothIsNoConflictAndNothingToWrite) {
    const auto merge = mergeRecords({row(0, "A")}, {changed(row(0, "A"), f::kRoot, "same")},
                                    {row(0, "A", "same")});
    EXPECT_TRUE(merge.conflicts.empty());
    EXPECT_FALSE(merge.rows.at(0).isChanged);
}

TEST(RecordMerge, ANameThatWasChangedHereStaysThatOfItsRecord) {
    const auto merge =
        mergeRecords({row(0, "A"), row(1, "B")}, {changed(row(0, "A"), f::kName, "Z"), row(1, "B")},
                     {row(0, "B"), row(1, "A", "theirs")});
    ASSERT_EQ(merge.rows.size(), 2U);
    EXPECT_EQ(merge.rows[1].record.name(), "Z");
    EXPECT_EQ(merge.rows[1].record[f::kRoot], "theirs");
}

TEST(RecordMerge, RecordsOfOneNameAreKnownByTheirOrder) {
    const Records former = {row(0, "A", "first"), row(1, "A", "second")};
    const auto merge = mergeRecords(former, {former[0], changed(former[1], f::kMask, "FW")},
                                    {row(0, "A", "first"), row(1, "A", "second")});
    EXPECT_EQ(merge.rows.at(0).record[f::kMask], "");
    EXPECT_EQ(merge.rows.at(1).record[f::kMask], "FW");
}

TEST(RecordMerge, ManyRecordsTakeTimeInProportion) {
    Records former;
    for (std::size_t i = 0; i < 20'000; ++i) {
        former.push_back(row(i, "M" + std::to_string(i)));
    }
    auto edited = former;
    for (auto& each : edited) {
        each = changed(each, f::kMask, "FW");
    }
    EXPECT_EQ(mergeRecords(former, edited, former).rows.size(), 20'000U);
}

}  // namespace
}  // namespace kavu::test
