#include "mdb/dbase/DbaseHeader.h"
#include "mdb/dbase/TableBytes.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

const std::vector<TableColumn> kTwoColumns{{"NAME", 8}, {"COUNT", 5, 'N', 2}};

TEST(DbaseHeaderTest, ReadsNumbersAndColumns) {
    const auto bytes = tableBytes(kTwoColumns, {" A", " B", " C"});
    std::string reason;
    const auto header = DbaseHeader::parse(bytes, bytes.size(), reason);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->rowCount, 3);
    EXPECT_EQ(header->headerLength, 97U);
    EXPECT_EQ(header->rowLength, 14U);
    ASSERT_EQ(header->columns.size(), 2U);
    EXPECT_EQ(header->columns[1].name, "COUNT");
    EXPECT_EQ(header->columns[1].type, 'N');
    EXPECT_EQ(header->columns[1].length, 5);
    EXPECT_EQ(header->columns[1].offset, 9U);
}

TEST(DbaseHeaderTest, RowsAreThoseThatAreWholeInTheFile) {
    auto bytes = tableBytes(kTwoColumns, {" A", " B", " C"});
    std::string reason;
    bytes.resize(97 + 14 * 2 + 13);
    EXPECT_EQ(DbaseHeader::parse(bytes, bytes.size(), reason)->rowCount, 2);
    bytes.resize(97);
    EXPECT_EQ(DbaseHeader::parse(bytes, bytes.size(), reason)->rowCount, 0);
    bytes = tableBytes(kTwoColumns, {" A", " B", " C"});
    bytes.replace(4, 4, littleEndian(1, 4));
    EXPECT_EQ(DbaseHeader::parse(bytes, bytes.size(), reason)->rowCount, 1);
    bytes.replace(4, 4, littleEndian(0xFFFFFFFF, 4));
    EXPECT_EQ(DbaseHeader::parse(bytes, bytes.size(), reason)->rowCount, 3);
}

TEST(DbaseHeaderTest, OnlyTheLowHalfOfTheRowLengthCounts) {
    auto bytes = tableBytes(kTwoColumns, {" A"});
    bytes[12] = '\x7F';
    std::string reason;
    EXPECT_EQ(DbaseHeader::parse(bytes, bytes.size(), reason)->rowLength, 14U);
}

TEST(DbaseHeaderTest, TheFirstEndByteEndsTheColumns) {
    // Other makers have a block behind the descriptors, which belongs to the header.
    auto bytes = tableBytes(kTwoColumns, {" A"});
    bytes.insert(97, std::string(263, '\x07'));
    bytes.replace(8, 2, littleEndian(97 + 263, 2));
    std::string reason;
    const auto header = DbaseHeader::parse(bytes, bytes.size(), reason);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->columns.size(), 2U);
    EXPECT_EQ(header->headerLength, 360U);
    EXPECT_EQ(header->rowCount, 1);
}

TEST(DbaseHeaderTest, AHeaderOfNoColumnsIsATable) {
    const auto bytes = tableBytes({}, {" ", " "});
    std::string reason;
    const auto header = DbaseHeader::parse(bytes, bytes.size(), reason);
    ASSERT_TRUE(header);
    EXPECT_TRUE(header->columns.empty());
    EXPECT_EQ(header->rowCount, 2);
}

TEST(DbaseHeaderTest, RefusesWhatIsNoTable) {
    const auto good = tableBytes(kTwoColumns, {" A"});
    std::string reason;
    for (std::size_t size = 0; size < 97; ++size) {
        EXPECT_FALSE(DbaseHeader::parse(std::string_view(good).substr(0, size), size, reason))
            << size;
    }
    auto bytes = good;
    bytes[96] = '\x0C';
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    bytes = good;
    bytes.replace(8, 2, littleEndian(31, 2));
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    bytes.replace(8, 2, littleEndian(bytes.size() + 1, 2));
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    EXPECT_EQ(reason, "");
}

TEST(DbaseHeaderTest, NamesTheColumnThatIsTooLong) {
    std::string reason;
    auto bytes = tableBytes({{"OK", 127}, {"WIDE", 128}}, {});
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    EXPECT_EQ(reason, "Column 'WIDE' has a length of 128; no more than 127 are supported.");
    // Texts of 256 characters and more: the rest of the length is in the next byte.
    bytes = tableBytes({{"LONG", 10, 'C', 1}}, {});
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    EXPECT_EQ(reason, "Column 'LONG' has a length of 266; no more than 127 are supported.");
    bytes = tableBytes(kTwoColumns, {});
    bytes.replace(10, 2, littleEndian(13, 2));
    EXPECT_FALSE(DbaseHeader::parse(bytes, bytes.size(), reason));
    EXPECT_EQ(reason, "Column 'COUNT' does not fit into a row of 13 bytes.");
}

}  // namespace
}  // namespace kavu::test
