#include "core/text/Text.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TextTest, CaseIsThatOfTheAsciiLettersOnly) {
    EXPECT_EQ(lowerAscii("ABCxyz-[\xC4@"), "abcxyz-[\xC4@");
    EXPECT_TRUE(equalsIgnoreCase("P-1\\Tf", "p-1\\tF"));
    EXPECT_FALSE(equalsIgnoreCase("a", "ab"));
    EXPECT_FALSE(equalsIgnoreCase("[", "{")) << "32 apart, but no letters";
    EXPECT_FALSE(equalsIgnoreCase("\xC4", "\xE4"));
    EXPECT_TRUE(equalsIgnoreCase("", ""));
    EXPECT_TRUE(startsWithIgnoreCase("Comment: x", "COMMENT:"));
    EXPECT_FALSE(startsWithIgnoreCase("COMMENT", "COMMENT:"));
    EXPECT_TRUE(startsWithIgnoreCase("x", ""));
    EXPECT_EQ(toUpperAscii('z'), 'Z');
    EXPECT_EQ(toUpperAscii('{'), '{');
}

TEST(TextTest, TrimTakesAllWhiteSpaceAndTrimTrailingBlanksOnlyBlanks) {
    EXPECT_EQ(trim(" \t\r\n\v\fa b\v \n"), "a b");
    EXPECT_EQ(trim(" \t "), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trimRight(" a \n"), " a");
    EXPECT_EQ(trimTrailingBlanks(" a\t  "), " a\t");
    EXPECT_EQ(trimTrailingBlanks("   "), "");
}

TEST(TextTest, LeadingIntegerReadsWhatIsInFrontAndIsBounded) {
    using Limits = std::numeric_limits<std::int64_t>;
    struct Case {
        const char* text;
        std::int64_t number;
    };
    const Case cases[] = {
        {"", 0},
        {"  ", 0},
        {"x1", 0},
        {"-", 0},
        {"+", 0},
        {"- 1", 0},
        {"+-1", 0},
        {"--1", 0},
        {"12", 12},
        {" \t\n12x", 12},
        {"+7", 7},
        {"-7.9", -7},
        {"007", 7},
        {"1 2", 1},
        {"9223372036854775807", Limits::max()},
        {"9223372036854775808", Limits::max()},
        {"-9223372036854775808", Limits::min()},
        {"-9223372036854775809", Limits::min()},
        {"99999999999999999999999999x", Limits::max()},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(leadingInteger(c.text), c.number) << c.text;
    }
}

TEST(TextTest, LeadingIntIsClampedToAnInt) {
    EXPECT_EQ(leadingInt("2147483647"), 2147483647);
    EXPECT_EQ(leadingInt("2147483648"), 2147483647);
    EXPECT_EQ(leadingInt("-2147483649"), std::numeric_limits<int>::min());
    EXPECT_EQ(leadingInt("-5"), -5);
}

TEST(TextTest, StoredFormMapsTwoBytesBothWaysAndNothingElse) {
    std::string text = "a\r\nb\n\rc\t\x13\x16";
    toStoredForm(text);
    EXPECT_EQ(text,
              "a\x14\x15"
              "b\x15\x14"
              "c\t\x13\x16");
    fromStoredForm(text);
    EXPECT_EQ(text, "a\r\nb\n\rc\t\x13\x16");
}

TEST(TextTest, ReplaceAllGoesOnBehindWhatItPutIn) {
    EXPECT_EQ(replaceAll("a&b&&", "&", "&amp;"), "a&amp;b&amp;&amp;");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("", "a", "x"), "");
    EXPECT_EQ(replaceAll("abab", "ab", ""), "");
}

TEST(TextTest, LinesEndInLineFeedWithOrWithoutCarriageReturn) {
    EXPECT_THAT(splitLines("a\r\nb\n\nc"), ElementsAre("a", "b", "", "c"));
    EXPECT_THAT(splitLines("a\n"), ElementsAre("a"));
    EXPECT_THAT(splitLines("\n"), ElementsAre(""));
    EXPECT_THAT(splitLines("a\rb"), ElementsAre("a\rb"));
    EXPECT_THAT(splitLines(""), IsEmpty());
}

TEST(TextTest, CutNeverEndsWithinAUtf8Character) {
    EXPECT_EQ(cutToBytes("abc", 5), "abc");
    EXPECT_EQ(cutToBytes("abc", 2), "ab");
    EXPECT_EQ(cutToBytes("a\xC3\xA4z", 2), "a");
    EXPECT_EQ(cutToBytes("a\xC3\xA4z", 3), "a\xC3\xA4");
    EXPECT_EQ(cutToBytes("\xE2\x82\xAC", 2), "");
    EXPECT_EQ(cutToBytes("\xA4\xA4\xA4", 2), "\xA4\xA4") << "bytes that are no UTF-8 are bytes";
    EXPECT_EQ(cutToBytes("abc", 0), "");
}

TEST(TextTest, NumbersAreAppended) {
    std::string text = "C-";
    appendNumber(text, 12);
    appendNumber(text, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(text, "C-12-9223372036854775808");
}

TEST(IsPrintable, FindsAByteBelowTheBlankWhereverItIs) {
    for (std::size_t size = 0; size < 40; ++size) {
        EXPECT_TRUE(isPrintable(std::string(size, ' '))) << size;
        EXPECT_TRUE(isPrintable(std::string(size, '\x80'))) << size;
        EXPECT_TRUE(isPrintable(std::string(size, '\xff'))) << size;
        for (std::size_t at = 0; at < size; ++at) {
            for (const char c : {'\0', '\t', '\n', '\r', '\x1f'}) {
                for (const char other : {' ', 'a', '\x7f', '\x80', '\xff'}) {
                    std::string text(size, other);
                    text[at] = c;
                    EXPECT_FALSE(isPrintable(text)) << size << ' ' << at << ' ' << int{c};
                }
            }
        }
    }
}

}  // namespace
}  // namespace kavu
