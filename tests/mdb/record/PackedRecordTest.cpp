#include "mdb/record/PackedRecord.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

TEST(PackedRecord, HoldsEveryFieldAsTheRecordHasIt) {
    MdbRecord record;
    for (std::size_t i = 0; i < f::kCount; ++i) {
        record[i] = std::string(i % 3 == 0 ? 0 : i * 7, static_cast<char>('A' + i));
    }
    record[f::kData] = std::string("a\0b", 3);
    const PackedRecord packed = record;
    EXPECT_EQ(packed.unpacked(), record);
    for (std::size_t i = 0; i <= f::kCount; ++i) {
        EXPECT_EQ(packed[i], record[i]) << i;
    }
}

TEST(PackedRecord, AChangedFieldLeavesTheOthers) {
    PackedRecord packed = MdbRecord("NAME");
    packed.set(f::kData, "0 1");
    packed.set(f::kMask, "FW");
    packed.set(f::kData, "");
    EXPECT_EQ(packed.name(), "NAME");
    EXPECT_EQ(packed[f::kMask], "FW");
    EXPECT_EQ(packed[f::kData], "");
}

TEST(PackedRecord, RecordsWithoutTextsAreTheSame) {
    PackedRecord emptied = MdbRecord("A");
    emptied.set(f::kName, "");
    EXPECT_EQ(emptied, PackedRecord());
    EXPECT_EQ(PackedRecord(MdbRecord()), PackedRecord());
    EXPECT_NE(PackedRecord(MdbRecord("A")), PackedRecord());
}

}  // namespace
}  // namespace kavu::test
