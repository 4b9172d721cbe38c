#include "cli/TerminalText.h"

#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

TEST(TerminalText, KeepsLinesTabsAndLetters) {
    EXPECT_EQ(terminalText("a\tb\nc \xC3\xA9"), "a\tb\nc \xC3\xA9");
}

TEST(TerminalText, StoredLineBreaksAreLineBreaks) {
    EXPECT_EQ(terminalText("a\x14\x15"
                           "b"),
              "a\nb");
    EXPECT_EQ(terminalText("a\r\nb\rc"), "a\nb\nc");
}

TEST(TerminalText, ControlCharactersBecomeVisible) {
    EXPECT_EQ(terminalText(std::string("\0", 1)), "\xE2\x90\x80");
    EXPECT_EQ(terminalText("\x1b"), "\xE2\x90\x9B");
    EXPECT_EQ(terminalText("\x7f"), "\xE2\x90\xA1");
    EXPECT_EQ(terminalText("\xC2\x9B"), "\xEF\xBF\xBD");
    EXPECT_EQ(terminalText("\xC2\xA0"), "\xC2\xA0");
}

TEST(TerminalText, OtherBytesAreWindows1252) {
    EXPECT_EQ(terminalText("\xE9t\xE9"), "\xC3\xA9t\xC3\xA9");
}

TEST(TerminalText, ALineHasNoBreaks) {
    EXPECT_EQ(terminalLine("a\nb\tc"), "a b c");
}

TEST(TerminalText, ATableAlignsByCharactersAndEndsWithTheLastCell) {
    EXPECT_EQ(alignedTable({{"\xC3\xA9", "x", "1"}, {"long", "", ""}, {"b", "yy"}}),
              "\xC3\xA9     x   1\nlong\nb     yy\n");
    EXPECT_EQ(alignedTable({}), "");
}

}  // namespace
}  // namespace kavu::cli
