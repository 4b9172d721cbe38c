#include "mdb/import/TextRecords.h"

#include <cerrno>
#include <chrono>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

using Fields = std::vector<std::string>;

std::vector<Fields> split(std::string_view text, char delimiter = ',') {
    auto source = ByteSource::fromMemory(text);
    LineReader lines(source);
    std::vector<Fields> records;
    Fields fields;
    while (takeDelimited(lines, delimiter, fields)) {
        records.push_back(fields);
    }
    EXPECT_TRUE(lines.status().ok());
    return records;
}

TEST(TextRecordsTest, SplitsFieldsWithoutOuterBlanks) {
    EXPECT_EQ(split("a, b ,,c"), (std::vector<Fields>{{"a", "b", "", "c"}}));
    EXPECT_EQ(split("a,"), (std::vector<Fields>{{"a", ""}}));
    EXPECT_EQ(split(","), (std::vector<Fields>{{"", ""}}));
    EXPECT_EQ(split(""), std::vector<Fields>{});
    EXPECT_EQ(split("a\tb\t\tc", '\t'), (std::vector<Fields>{{"a", "b", "", "c"}}));
    EXPECT_EQ(split("\t\t", '\t'), (std::vector<Fields>{{"", "", ""}}));
}

TEST(TextRecordsTest, LinesEndInAnyWay) {
    EXPECT_EQ(split("a\nb\r\nc\rd"), (std::vector<Fields>{{"a"}, {"b"}, {"c"}, {"d"}}));
    EXPECT_EQ(split("a\n\n \nb"), (std::vector<Fields>{{"a"}, {}, {}, {"b"}}));
}

TEST(TextRecordsTest, MarkOfTheByteOrderAndEndByteAreDropped) {
    EXPECT_EQ(split("\xEF\xBB\xBF\"a\",b\r\n\x1A"), (std::vector<Fields>{{"a", "b"}}));
    EXPECT_EQ(split("a\x1A"), (std::vector<Fields>{{"a"}}));
}

TEST(TextRecordsTest, ARunOfBlanksIsOneDelimiter) {
    EXPECT_EQ(split("  a   b c  ", ' '), (std::vector<Fields>{{"a", "b", "c"}}));
    EXPECT_EQ(split("\"a b\"  c", ' '), (std::vector<Fields>{{"a b", "c"}}));
    EXPECT_EQ(split("  ", ' '), (std::vector<Fields>{{}}));
}

TEST(TextRecordsTest, QuotesHoldDelimitersQuotesAndLineBreaks) {
    EXPECT_EQ(split("\"a,b\",\"c\"\"d\",\"\""), (std::vector<Fields>{{"a,b", "c\"d", ""}}));
    EXPECT_EQ(split("\"a\nb\r\nc\",d\ne"), (std::vector<Fields>{{"a\nb\nc", "d"}, {"e"}}));
    EXPECT_EQ(split(" \"a,b\" , c"), (std::vector<Fields>{{"a,b", "c"}}));
}

TEST(TextRecordsTest, AQuoteThatIsNotClosedIsAPlainCharacter) {
    EXPECT_EQ(split("\"a,b\nc"), (std::vector<Fields>{{"\"a", "b"}, {"c"}}));
    EXPECT_EQ(split("\"a\"b,c"), (std::vector<Fields>{{"\"a\"b", "c"}}));
    EXPECT_EQ(split("a\"b\",c"), (std::vector<Fields>{{"a\"b\"", "c"}}));
    EXPECT_EQ(split("5\",\"6\""), (std::vector<Fields>{{"5\"", "6"}}));
    EXPECT_EQ(split("\""), (std::vector<Fields>{{"\""}}));
}

TEST(TextRecordsTest, AFieldHoldsAtMost100Lines) {
    std::string text = "\"1";
    for (int i = 2; i <= 100; ++i) {
        text += "\n" + std::to_string(i);
    }
    EXPECT_EQ(split(text + "\",x").size(), 1U);
    EXPECT_EQ(split(text + "\n101\",x").size(), 101U);
}

TEST(TextRecordsTest, ManyQuotesThatAreNotClosedTakeTimeInProportion) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += "\"a,\"b,\"c\n";
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(split(text).size(), 20000U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST(TextRecordsTest, ALineThatIsTooLongIsAFailure) {
    const std::string text(LineReader::kMostBytes + 1, 'x');
    auto source = ByteSource::fromMemory(text);
    LineReader lines(source);
    EXPECT_EQ(lines.ahead(0), nullptr);
    EXPECT_EQ(lines.status().code(), EFBIG);
}

TEST(TextRecordsTest, ColumnsCountCharacters) {
    EXPECT_EQ(cutColumns("abcdef", 1, 2), "ab");
    EXPECT_EQ(cutColumns("abcdef", 5, 9), "ef");
    EXPECT_EQ(cutColumns("abcdef", 7, 1), std::nullopt);
    EXPECT_EQ(cutColumns("", 1, 1), std::nullopt);
    EXPECT_EQ(cutColumns("K\xC3\xB6ln 1", 2, 3), "\xC3\xB6ln");
    EXPECT_EQ(cutColumns("K\xF6ln 1", 2, 3), "\xF6ln");
    EXPECT_EQ(cutColumns("abc", 1, 1000000000), "abc");
}

}  // namespace
}  // namespace kavu::test
