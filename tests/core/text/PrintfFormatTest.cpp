#include "core/text/PrintfFormat.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

constexpr auto kInteger = PrintfKind::Integer;
constexpr auto kFloating = PrintfKind::Floating;
constexpr auto kText = PrintfKind::Text;

TEST(PrintfFormatTest, KindsAreThoseOfTheArgument) {
    EXPECT_EQ(kPrintfKind<int>, kInteger);
    EXPECT_EQ(kPrintfKind<char>, kInteger);
    EXPECT_EQ(kPrintfKind<bool>, kInteger);
    EXPECT_EQ(kPrintfKind<std::uint64_t>, kInteger);
    EXPECT_EQ(kPrintfKind<double>, kFloating);
    EXPECT_EQ(kPrintfKind<float>, kFloating);
    EXPECT_EQ(kPrintfKind<std::string>, kText);
    EXPECT_EQ(kPrintfKind<std::string_view>, kText);
    EXPECT_EQ(kPrintfKind<const char*>, kText);
    EXPECT_EQ(kPrintfKind<char[4]>, kText);
}

TEST(PrintfFormatTest, FormatsThatTakeTheirArgumentsFit) {
    struct Row {
        const char* format;
        std::vector<PrintfKind> arguments;
    };
    for (const auto& [format, arguments] : std::vector<Row>{
             {"", {}},
             {"plain", {}},
             {"100%%", {}},
             {"%%%d%%", {kInteger}},
             {"%d%s", {kInteger, kText}},
             {"%2.2d %8.8ld %lld %hhu %zx %+i %#X %o", std::vector(8, kInteger)},
             {"%c-%d", {kInteger, kInteger}},
             {"%e %E %f %F %g %G %a %A", std::vector(8, kFloating)},
             {"%-6s|%6s|%.2s", {kText, kText, kText}},
             {"%.*f", {kInteger, kFloating}},
             {"%*.*s", {kInteger, kInteger, kText}},
         }) {
        EXPECT_TRUE(fitsArguments(format, arguments)) << format;
    }
}

TEST(PrintfFormatTest, FormatsThatMissTheirArgumentsInCountOrKindDoNotFit) {
    struct Row {
        const char* format;
        std::vector<PrintfKind> arguments;
    };
    for (const auto& [format, arguments] : std::vector<Row>{
             {"plain", {kInteger}},
             {"100%%", {kText}},
             {"%d", {}},
             {"%d", {kInteger, kInteger}},
             {"%d", {kText}},
             {"%d", {kFloating}},
             {"%c", {kText}},
             {"%g", {kInteger}},
             {"%s", {kInteger}},
             {"%s", {kFloating}},
             {"%s %d", {kInteger, kText}},
             {"%*d", {kInteger}},
             {"%.*f", {kFloating, kInteger}},
             {"%", {}},
             {"%", {kInteger}},
             {"100%", {kInteger}},
             {"%5", {kInteger}},
             {"%l", {kInteger}},
             {"%y", {kInteger}},
             {"%n", {kInteger}},
             {"%p", {kText}},
             {"%1$d", {kInteger}},
         }) {
        EXPECT_FALSE(fitsArguments(format, arguments)) << format;
    }
}

TEST(PrintfFormatTest, AFormatOfTheRunOfTheProgramIsTakenAsItIs) {
    const PrintfFormat<int> format = runtimeFormat("%s");
    EXPECT_EQ(format.text(), "%s");
}

}  // namespace
}  // namespace kavu::test
