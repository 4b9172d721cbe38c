#include "core/text/TextEncoding.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(TextEncodingTest, WellFormedUtf8IsKnown) {
    for (const char* text : {"", "ascii", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                             "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xEF\xBB\xBFG\\PN:x;"}) {
        EXPECT_TRUE(isValidUtf8(text)) << text;
    }
}

TEST(TextEncodingTest, WhatIsNotWellFormedIsKnown) {
    for (const char* text :
         {"\x80", "\xBF", "\xC3", "a\xC3", "\xC3(", "\xE2\x82", "\xE2\x28\xA1", "\xF0\x9F\x98",
          "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF", "\xFE"}) {
        EXPECT_FALSE(isValidUtf8(text)) << text;
    }
}

TEST(TextEncodingTest, AByteIsSeenWhereverItIsInALongText) {
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string plain(size, 'a');
        EXPECT_TRUE(isValidUtf8(plain)) << size;
        for (std::size_t at = 0; at < size; ++at) {
            auto text = plain;
            text[at] = '\xE4';
            EXPECT_FALSE(isValidUtf8(text)) << size << " " << at;
            EXPECT_TRUE(isValidUtf8(plain.substr(0, at) + "\xC3\xA4" + plain.substr(at)))
                << size << " " << at;
        }
    }
}

TEST(TextEncodingTest, ValidUtf8StaysAsItIs) {
    EXPECT_EQ(toUtf8("20 \xC2\xB0"
                     "C \xE2\x82\xAC"),
              "20 \xC2\xB0"
              "C \xE2\x82\xAC");
}

TEST(TextEncodingTest, OtherBytesAreWindows1252) {
    EXPECT_EQ(toUtf8("20 \xB0"
                     "C"),
              "20 \xC2\xB0"
              "C");
    EXPECT_EQ(toUtf8("\x80\x85\x92\x9F"), "\xE2\x82\xAC\xE2\x80\xA6\xE2\x80\x99\xC5\xB8");
    EXPECT_EQ(toUtf8("\xC3\xA4\xFF"), "\xC3\x83\xC2\xA4\xC3\xBF")
        << "one bad byte makes the whole text Windows-1252";
}

TEST(TextEncodingTest, BytesWithoutACharacterBecomeTheReplacementCharacter) {
    EXPECT_EQ(toUtf8("\x81\x8D\x8F\x90\x9D"),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(TextEncodingTest, AnyByteGivesValidUtf8) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string text = {static_cast<char>(first), static_cast<char>(second)};
            ASSERT_TRUE(isValidUtf8(toUtf8(text))) << first << " " << second;
        }
    }
}

}  // namespace
}  // namespace kavu
