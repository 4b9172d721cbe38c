#include "core/text/Printf.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(PrintfTest, FormatsAsTheCLibraryDoes) {
    EXPECT_EQ(formatPrintf("plain"), "plain");
    EXPECT_EQ(formatPrintf("100%%"), "100%");
    EXPECT_EQ(formatPrintf("%2.2d", 5), "05");
    EXPECT_EQ(formatPrintf("%2.2d", 123), "123");
    EXPECT_EQ(formatPrintf("%2.2d", -5), "-05");
    EXPECT_EQ(formatPrintf("%4.4d", 0), "0000");
    EXPECT_EQ(formatPrintf("[kavu]%8.8ld.C_O", 42L), "[kavu]00000042.C_O");
    EXPECT_EQ(formatPrintf("%8.8ld", 123456789L), "123456789");
    EXPECT_EQ(formatPrintf("KVU%5.5d.sdk", 7), "KVU00007.sdk");
    EXPECT_EQ(formatPrintf("%5d|%-5d|%05d", 42, 42, 42), "   42|42   |00042");
    EXPECT_EQ(formatPrintf("%x %X %o", 255, 255, 8), "ff FF 10");
    EXPECT_EQ(formatPrintf("%2.2X", std::uint8_t{10}), "0A");
    EXPECT_EQ(formatPrintf("%s\\%s", "P-1", std::string("MF1")), "P-1\\MF1");
    EXPECT_EQ(formatPrintf("%-6s|%6s|%.2s", "ab", "ab", "abc"), "ab    |    ab|ab");
    EXPECT_EQ(formatPrintf("%c-%d", 'P', 3), "P-3");
    EXPECT_EQ(formatPrintf("%.2f %.3e", 1.005, 12345.678), "1.00 1.235e+04");
    EXPECT_EQ(formatPrintf("%d %ld %lld", -1, -1L, -1LL), "-1 -1 -1");
}

TEST(PrintfTest, PrecisionMayBeAnArgument) {
    EXPECT_EQ(formatPrintf("%.*f", 3, 2.0), "2.000");
    EXPECT_EQ(formatPrintf("%.*e", 2, 1500.0), "1.50e+03");
}

TEST(PrintfTest, TextsAreNeverFormatsAndMayHoldAnything) {
    using namespace std::string_literals;
    EXPECT_EQ(formatPrintf("<%s>", "%s%n%d"), "<%s%n%d>");
    EXPECT_EQ(formatPrintf("<%s>", "a\0b"s), "<a\0b>"s);
    EXPECT_EQ(formatPrintf("<%s>", std::string_view()), "<>");
    EXPECT_EQ(formatPrintf("<%s>", "{}"), "<{}>");
}

TEST(PrintfTest, FormatThatDoesNotFitItsArgumentsIsGivenAsItStands) {
    EXPECT_EQ(formatPrintf(runtimeFormat("%d and %d"), 1), "%d and %d");
    EXPECT_EQ(formatPrintf(runtimeFormat("%d"), "text"), "%d");
    EXPECT_EQ(formatPrintf(runtimeFormat("%"), 1), "%");
    EXPECT_EQ(formatPrintf(runtimeFormat("%s")), "%s");
}

TEST(PrintfTest, ArgumentsThatAreNotAskedForAreLeftOut) {
    EXPECT_EQ(formatPrintf(runtimeFormat("%d"), 1, 2), "1");
}

}  // namespace
}  // namespace kavu
