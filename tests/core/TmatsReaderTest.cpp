#include "core/TmatsReader.h"
#include "support/TestContext.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::readFile;
using test::RecordingInterface;
using test::TempFolder;
using testing::ElementsAre;
using testing::IsEmpty;

using namespace std::string_literals;

struct CutCase {
    std::vector<std::string> commands;
    long lines = 0;
    std::size_t lastLength = 99;
};

/// All commands of a text, comments included or not.
CutCase cut(std::string_view text, bool raw = true) {
    CutCase result;
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    std::string command;
    while (raw ? reader.nextRawCommand(source, command, &result.lines, &result.lastLength)
               : reader.nextCommand(source, command, &result.lines, &result.lastLength)) {
        EXPECT_EQ(result.lastLength, command.size());
        result.commands.push_back(command);
    }
    EXPECT_EQ(command, "");
    return result;
}

// --- cutting -----------------------------------------------------------------------------

TEST(TmatsReaderCut, TwoCommandsOnOneLineAreTwoCommands) {
    EXPECT_THAT(cut("A:1;B:2;").commands, ElementsAre("A:1;", "B:2;"));
}

TEST(TmatsReaderCut, WhiteSpaceAndControlZInFrontAndBlanksBeforeTheSemicolonGo) {
    EXPECT_THAT(cut("  \r\n\t\x1AP-1\\TF:ONE ;").commands, ElementsAre("P-1\\TF:ONE;"));
}

TEST(TmatsReaderCut, LineFeedInsideACommandGetsACarriageReturn) {
    EXPECT_THAT(cut("P-1\\COM:line one\nline two;").commands,
                ElementsAre("P-1\\COM:line one\r\nline two;"));
}

TEST(TmatsReaderCut, RunOfCarriageReturnsCollapsesInFrontOfALineFeed) {
    EXPECT_THAT(cut("a\r\r\nb;").commands, ElementsAre("a\r\nb;"));
}

TEST(TmatsReaderCut, RunOfCarriageReturnsAloneCollapsesToOne) {
    EXPECT_THAT(cut("a\r\r\rb;").commands, ElementsAre("a\rb;"));
}

TEST(TmatsReaderCut, SemicolonAloneIsACommandOfOneCharacter) {
    EXPECT_THAT(cut(";").commands, ElementsAre(";"));
}

TEST(TmatsReaderCut, EmptyValueLeavesACommandOfThreeCharacters) {
    EXPECT_THAT(cut("X:;").commands, ElementsAre("X:;"));
}

TEST(TmatsReaderCut, ValueOfBlanksIsCutToNothing) {
    EXPECT_THAT(cut("x:  ;").commands, ElementsAre("x:;"));
}

TEST(TmatsReaderCut, BlanksInACommandOfTwoCharactersStay) {
    // Only what is longer than two characters is trimmed; the blank in front goes anyway.
    EXPECT_THAT(cut("x;").commands, ElementsAre("x;"));
    EXPECT_THAT(cut("x ;").commands, ElementsAre("x;"));
}

TEST(TmatsReaderCut, TabsAndLineEndsBeforeTheSemicolonStay) {
    EXPECT_THAT(cut("A:1\t;B:2\n;C:3\t  ;").commands, ElementsAre("A:1\t;", "B:2\r\n;", "C:3\t;"));
}

TEST(TmatsReaderCut, WhiteSpaceBehindTheColonStays) {
    EXPECT_THAT(cut("A: \t1;").commands, ElementsAre("A: \t1;"));
}

TEST(TmatsReaderCut, PartialCommandAtTheEndIsDroppedButItsLengthIsTold) {
    const auto result = cut("G\\106:09");
    EXPECT_THAT(result.commands, IsEmpty());
    EXPECT_EQ(result.lastLength, 8u);
}

TEST(TmatsReaderCut, PartialLengthCountsNormalisedLineEnds) {
    EXPECT_EQ(cut("A:1\n").lastLength, 5u);
    EXPECT_EQ(cut("A:1\r\r\nx").lastLength, 6u);
}

TEST(TmatsReaderCut, FileOfBlankLinesIsACleanEnd) {
    const auto result = cut("\r\n\n  \t\n");
    EXPECT_THAT(result.commands, IsEmpty());
    EXPECT_EQ(result.lastLength, 0u);
}

TEST(TmatsReaderCut, EmptyFileIsACleanEnd) {
    const auto result = cut("");
    EXPECT_THAT(result.commands, IsEmpty());
    EXPECT_EQ(result.lastLength, 0u);
    EXPECT_EQ(result.lines, 1);
}

TEST(TmatsReaderCut, ControlZInsideACommandIsKept) {
    EXPECT_THAT(cut("A:1\x1A"
                    "2;\x1A B:3;")
                    .commands,
                ElementsAre("A:1\x1A"
                            "2;",
                            "B:3;"));
}

TEST(TmatsReaderCut, NulBytesBelongToTheCommand) {
    EXPECT_THAT(cut("A:1\0002;"s).commands, ElementsAre("A:1\0002;"s));
    EXPECT_THAT(cut("\0A:1;"s).commands, ElementsAre("\0A:1;"s));
}

TEST(TmatsReaderCut, LineCounterIsTheLineNumberInAFileOfOneCommandALine) {
    TmatsReader reader;
    auto source = ByteSource::fromMemory("A:1;\r\nB:2;\r\nC:3;\r\n");
    long lines = 0;
    std::string command;
    for (const long expected : {1, 2, 3}) {
        ASSERT_TRUE(reader.nextRawCommand(source, command, &lines));
        EXPECT_EQ(lines, expected);
    }
    EXPECT_FALSE(reader.nextRawCommand(source, command, &lines));
    EXPECT_EQ(lines, 4) << "the end counts as a line too";
    EXPECT_FALSE(reader.nextRawCommand(source, command, &lines));
    EXPECT_EQ(lines, 5) << "every time that it is met";
}

TEST(TmatsReaderCut, LineCounterRunsShortByBlankLinesAndCountsLineFeedsInside) {
    TmatsReader reader;
    auto source = ByteSource::fromMemory("\n\n\nA:1\n\n2;\n\nB:3");
    long lines = 0;
    std::string command;
    ASSERT_TRUE(reader.nextRawCommand(source, command, &lines));
    EXPECT_EQ(lines, 3);
    EXPECT_FALSE(reader.nextRawCommand(source, command, &lines));
    EXPECT_EQ(lines, 4);
}

TEST(TmatsReaderCut, CommandAcrossTheWindowsOfAFileIsWhole) {
    TempFolder folder;
    const auto path = folder / "wide.tma";
    // Commands of odd lengths put their ends, and the carriage return and line feed of
    // their values, on both sides of every window's end at some place.
    std::string text;
    std::vector<std::string> expected;
    for (int i = 0; text.size() < 3'000'000; ++i) {
        const auto width = static_cast<std::size_t>(i % 97);
        const auto command = "D-1\\MN-" + std::to_string(i) + ":" + std::string(width, 'x') +
                             "\r\n" + std::string(width, 'y') + ";";
        expected.push_back(command);
        text += command + "\r\n";
    }
    test::writeFile(path, text);
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    TmatsReader reader;
    std::string command;
    for (const auto& whole : expected) {
        ASSERT_TRUE(reader.nextCommand(source, command));
        ASSERT_EQ(command, whole);
    }
    EXPECT_FALSE(reader.nextCommand(source, command));
}

TEST(TmatsReaderCut, LineEndSplitByTheWindowIsOneLineEnd) {
    TempFolder folder;
    const auto path = folder / "split.tma";
    constexpr std::size_t kWindow = 256 * 1024;
    for (const std::size_t offset : {kWindow - 2, kWindow - 1, kWindow}) {
        const std::string front = "A:" + std::string(offset - 2, 'x');
        test::writeFile(path, front + "\r\ny;");
        ByteSource source;
        ASSERT_TRUE(source.open(path).ok());
        TmatsReader reader;
        std::string command;
        ASSERT_TRUE(reader.nextCommand(source, command));
        EXPECT_EQ(command.size(), offset + 4) << offset;
        EXPECT_TRUE(command.ends_with("x\r\ny;")) << offset;
    }
}

TEST(TmatsReaderCut, CarriageReturnAtTheEndOfAWindowIsForgottenByTheNextWindow) {
    TempFolder folder;
    const auto path = folder / "far.tma";
    constexpr std::size_t kWindow = 256 * 1024;
    const std::string front = "A:" + std::string(kWindow - 3, 'x') + "\r";
    test::writeFile(path, front + std::string(kWindow, 'y') + "\nz;");
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    TmatsReader reader;
    std::string command;
    ASSERT_TRUE(reader.nextCommand(source, command));
    EXPECT_EQ(command.size(), 2 * kWindow + 4) << "the line feed gets a carriage return of its own";
    EXPECT_TRUE(command.ends_with("y\r\nz;"));
}

TEST(TmatsReaderCut, ValueOfAHundredMegabytesIsOneCommand) {
    constexpr std::size_t kSize = 100'000'000;
    std::string text = "V-1\\COM:" + std::string(kSize, 'v') + ";G\\PN:x;";
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    std::string command;
    ASSERT_TRUE(reader.nextCommand(source, command));
    EXPECT_EQ(command.size(), kSize + 9);
    ASSERT_TRUE(reader.nextCommand(source, command));
    EXPECT_EQ(command, "G\\PN:x;");
}

// --- comments ----------------------------------------------------------------------------

TEST(TmatsReaderFiller, IsCutOffAfterTheLastSemicolonOnly) {
    using namespace std::string_literals;
    struct Row {
        std::string bytes;
        std::uint64_t cut;
    };
    const Row rows[] = {
        {"A:1;\0"s, 1},
        {"A:1;\x1A"s, 1},
        {"A:1; \t\r\n\0\x1A\r\n"s, 8},
        {"A:1;"s, 0},
        {"A:1;\r\n \t"s, 0},
        {"A:1;\0B"s, 0},
        {"A:1;B\0\0"s, 0},
        {"\0\0"s, 0},
        {""s, 0},
        {"A:1\0;\0"s, 1},
        {"A:1;" + std::string(200000, '\0'), 200000},
        {"A:1;x" + std::string(200000, '\0'), 0},
    };
    for (const auto& row : rows) {
        auto source = ByteSource::fromMemory(row.bytes);
        EXPECT_EQ(cutFiller(source), row.cut) << row.bytes.substr(0, 20);
        EXPECT_EQ(source.position(), 0U);
        std::size_t left = 0;
        while (source.get() >= 0) {
            ++left;
        }
        EXPECT_EQ(left, row.bytes.size() - row.cut) << row.bytes.substr(0, 20);
    }
}

TEST(TmatsReaderFiller, OfAFileLargerThanItsWindowIsCutOff) {
    const test::TempFolder folder;
    const std::string path = folder / "padded";
    const std::string commands = "A:" + std::string(300000, 'x') + ";";
    test::writeFile(path, commands + std::string(700000, '\0'));
    ByteSource source;
    ASSERT_TRUE(source.open(path).ok());
    EXPECT_EQ(cutFiller(source), 700000U);
    TmatsReader reader;
    EXPECT_EQ(reader.nextCommandString(source), commands);
    EXPECT_TRUE(source.atEnd());
    source.seek(0);
    EXPECT_EQ(reader.nextCommandString(source), commands);
    EXPECT_TRUE(source.atEnd());
}

TEST(TmatsReaderComments, AreSkippedInAnyCase) {
    EXPECT_THAT(cut("comment: anything;A:1;CoMmEnT: x;COMMENT:;B:2;", false).commands,
                ElementsAre("A:1;", "B:2;"));
}

TEST(TmatsReaderComments, WithABlankBeforeTheColonAreNone) {
    EXPECT_THAT(cut("COMMENT : x;", false).commands, ElementsAre("COMMENT : x;"));
}

TEST(TmatsReaderComments, OfAGroupAreOrdinaryFields) {
    EXPECT_THAT(cut("G\\COM:x;P-1\\COMMENT:y;", false).commands,
                ElementsAre("G\\COM:x;", "P-1\\COMMENT:y;"));
}

TEST(TmatsReaderComments, AreGivenRaw) {
    EXPECT_THAT(cut("COMMENT: x;").commands, ElementsAre("COMMENT: x;"));
}

TEST(TmatsReaderComments, RunTheLineCounterAndSwallowUpToTheirSemicolon) {
    const auto result = cut("COMMENT: a\nb;\nCOMMENT no end\nG\\PN:x;A:1;", false);
    EXPECT_THAT(result.commands, ElementsAre("COMMENT no end\r\nG\\PN:x;", "A:1;"));
    EXPECT_EQ(result.lines, 6);
}

TEST(TmatsReaderComments, ThatIsCutOffTellsItsLength) {
    EXPECT_EQ(cut("A:1;COMMENT: x", false).lastLength, 10u);
}

TEST(TmatsReaderText, NextCommandStringIsEmptyAtTheEnd) {
    TmatsReader reader;
    auto source = ByteSource::fromMemory("COMMENT:x;A:1;\nB:2");
    long lines = 0;
    EXPECT_EQ(reader.nextCommandString(source, &lines), "A:1;");
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(reader.nextCommandString(source), "");
    EXPECT_EQ(reader.nextCommandString(source), "");
}

// --- look-ups ----------------------------------------------------------------------------

class TmatsReaderLookUp : public testing::Test {
  protected:
    /// The value of a code in a text read from its front, or "(none)".
    std::string value(std::string_view text, std::string_view code, int limit = 0,
                      UserInterface* parent = nullptr) {
        auto source = ByteSource::fromMemory(text);
        return std::string(reader.findField(parent, source, "", code, limit).value_or("(none)"));
    }

    RecordingInterface ui;
    TmatsReader reader;
};

TEST_F(TmatsReaderLookUp, IsNotCaseSensitiveAndKeepsTheCaseOfTheValue) {
    EXPECT_EQ(value("P-1\\TF:OnE;", "p-1\\tf"), "OnE");
    EXPECT_EQ(value("p-1\\tf:OnE;", "P-1\\TF"), "OnE");
}

TEST_F(TmatsReaderLookUp, EmptyValueIsAsIfTheFieldWereMissing) {
    EXPECT_EQ(value("X:;", "X"), "(none)");
    EXPECT_EQ(value("x:  ;", "x"), "(none)");
    EXPECT_EQ(value(";", ""), "(none)");
}

TEST_F(TmatsReaderLookUp, GoesOnBehindAnEmptyValue) {
    EXPECT_EQ(value("X:;Y:1;X:2;", "X"), "2");
}

TEST_F(TmatsReaderLookUp, CommandWithoutAColonMatchesNothing) {
    EXPECT_EQ(value("P-1\\TF;P-1\\TF:1;", "P-1\\TF"), "1");
    EXPECT_EQ(value("P-1\\TF;", "P-1\\TF;"), "(none)");
}

TEST_F(TmatsReaderLookUp, ValueMayHoldColons) {
    EXPECT_EQ(value("G\\COM:a:b;", "G\\COM"), "a:b");
}

TEST_F(TmatsReaderLookUp, CodeIsComparedWhole) {
    EXPECT_EQ(value("G\\DSI-10:x;G\\DSI-1:y;", "G\\DSI-1"), "y");
}

TEST_F(TmatsReaderLookUp, CodeIsBuiltFromPrefixFormatAndArguments) {
    auto source = ByteSource::fromMemory("R-3\\CDT-7:PCMIN;");
    EXPECT_EQ(reader.findField(nullptr, source, "R-3\\", "CDT-%d", 0, 7), "PCMIN");
}

TEST_F(TmatsReaderLookUp, PercentInThePrefixIsNoFormat) {
    auto source = ByteSource::fromMemory("%d\\X:1;");
    EXPECT_EQ(reader.findField(nullptr, source, "%d\\", "X", 0), "1");
}

TEST_F(TmatsReaderLookUp, SourceThatIsNotOpenGivesNothing) {
    ByteSource closed;
    EXPECT_EQ(reader.findField(nullptr, closed, "", "X", 0), std::nullopt);
}

TEST_F(TmatsReaderLookUp, WrapsThroughTheEndToTheFieldJustInFront) {
    const std::string text = "A:1;B:2;C:3;";
    auto source = ByteSource::fromMemory(text);
    ASSERT_EQ(reader.findField(nullptr, source, "", "B", 0), "2");
    EXPECT_EQ(source.position(), 8u);
    EXPECT_EQ(reader.findField(nullptr, source, "", "B", 0), "2");
    EXPECT_EQ(source.position(), 8u);
    EXPECT_EQ(reader.findField(nullptr, source, "", "B", 0), "2")
        << "a second identical look-up wraps again";
    EXPECT_EQ(source.position(), 8u);
}

TEST_F(TmatsReaderLookUp, FirstOccurrenceBehindThePositionWins) {
    auto source = ByteSource::fromMemory("X:1;A:a;X:2;X:3;");
    std::vector<std::string> values;
    for (int i = 0; i < 4; ++i) {
        values.emplace_back(reader.findField(nullptr, source, "", "X", 0).value_or(""));
    }
    EXPECT_THAT(values, ElementsAre("1", "2", "3", "1"));
}

TEST_F(TmatsReaderLookUp, ThatFailsLeavesThePositionWhereItWas) {
    auto source = ByteSource::fromMemory("A:1;B:2;C:3;");
    ASSERT_EQ(reader.findField(nullptr, source, "", "A", 0), "1");
    EXPECT_EQ(reader.findField(nullptr, source, "", "Z", 0), std::nullopt);
    EXPECT_EQ(source.position(), 4u);
}

TEST_F(TmatsReaderLookUp, ForwardReadsExactlyOneCommand) {
    auto source = ByteSource::fromMemory("A:1;COMMENT:c;B:2;");
    EXPECT_EQ(reader.readFieldForward(nullptr, source, "B", 0), std::nullopt);
    EXPECT_EQ(source.position(), 4u);
    EXPECT_EQ(reader.readFieldForward(nullptr, source, "B", 0), "2");
    EXPECT_EQ(reader.readFieldForward(nullptr, source, "B", 0), std::nullopt);
}

struct IntCase {
    const char* text;
    bool found;
    int value;
};

TEST_F(TmatsReaderLookUp, IntegersAreDecimalAndNeverNegative) {
    const IntCase cases[] = {
        {"N:42;", true, 42},
        {"N:-7;", true, 0},
        {"N: 12 words;", true, 12},
        {"N:+3;", true, 3},
        {"N:abc;", true, 0},
        {"N:007;", true, 7},
        {"N:99999999999;", true, 2147483647},
        {"N:-99999999999;", true, 0},
        {"N:;", false, 0},
        {"M:1;", false, 0},
    };
    for (const auto& c : cases) {
        auto source = ByteSource::fromMemory(c.text);
        int result = 77;
        EXPECT_EQ(reader.findIntField(nullptr, source, "", "N", result), c.found) << c.text;
        EXPECT_EQ(result, c.value) << c.text;
    }
}

TEST_F(TmatsReaderLookUp, FindsTheCommandThatContainsACodeReadingForwardOnly) {
    auto source = ByteSource::fromMemory("D-1\\MN-1:a;D-2\\MN-2:b;COMMENT:\\MN-3:;D-4\\MN-3:c;");
    EXPECT_EQ(reader.findCommandContaining(source, "MN-%d", 2), "D-2\\MN-2:b;");
    EXPECT_EQ(reader.findCommandContaining(source, "MN-%d", 1), std::nullopt);
    source.seek(0);
    EXPECT_EQ(reader.findCommandContaining(source, "MN-%d", 3), "D-4\\MN-3:c;");
    source.seek(0);
    EXPECT_EQ(reader.findCommandContaining(source, "mn-1"), std::nullopt);
}

// --- binary strings ----------------------------------------------------------------------

TEST_F(TmatsReaderLookUp, BinaryStringsPassAndOthersAreRefused) {
    struct Case {
        const char* text;
        bool acceptX;
        bool found;
    };
    const Case cases[] = {{"B:0101;", false, true}, {"B:01x1;", false, false},
                          {"B:01xX;", true, true},  {"B:012;", true, false},
                          {"B: 01;", false, false}, {"B:;", false, false}};
    for (const auto& c : cases) {
        auto source = ByteSource::fromMemory(c.text);
        EXPECT_EQ(
            reader.findBinaryField(nullptr, source, nullptr, c.acceptX, "", "B", 0).has_value(),
            c.found)
            << c.text;
    }
}

TEST_F(TmatsReaderLookUp, BinaryComplaintGoesToTheLog) {
    TempFolder folder;
    FileWriter log;
    ASSERT_TRUE(log.open(folder / "log", WriteMode::Truncate).ok());
    auto source = ByteSource::fromMemory("P-1\\MF5:12;P-1\\IDC1-1:1;P-1\\SYN:2;");
    EXPECT_EQ(reader.findBinaryField(nullptr, source, &log, false, "P-1\\", "MF%d", 0, 5),
              std::nullopt);
    EXPECT_EQ(reader.findBinaryField(nullptr, source, &log, true, "P-1\\", "SYN", 0), std::nullopt);
    EXPECT_EQ(reader.findBinaryField(nullptr, source, &log, true, "P-1\\", "GONE", 0),
              std::nullopt);
    ASSERT_TRUE(log.close().ok());
    EXPECT_EQ(readFile(folder / "log"),
              "ERROR: The following TMATS command has errors: \"P-1\\MF5:12;\"\n"
              "According to the TMATS specification, this value must be a binary string made\n"
              "up of zeros and ones. \n\n"
              "ERROR: The following TMATS command has errors: \"P-1\\SYN:2;\"\n"
              "According to the TMATS specification, this value must be a binary string made\n"
              "up of zeros and ones, or the letter 'X'.\n\n");
}

// --- limits ------------------------------------------------------------------------------

TEST_F(TmatsReaderLookUp, PositiveLimitCutsAndSetsTheFlag) {
    int truncated = 0;
    reader.setLogFile("", &truncated);
    EXPECT_EQ(value("G\\PN:ABCDEFG;", "G\\PN", 4), "ABCD");
    EXPECT_EQ(truncated, 1);
}

TEST_F(TmatsReaderLookUp, NegativeLimitKeepsAndSetsTheFlag) {
    int truncated = 0;
    reader.setLogFile("", &truncated);
    EXPECT_EQ(value("G\\PN:ABCDEFG;", "G\\PN", -4), "ABCDEFG");
    EXPECT_EQ(truncated, 1);
}

TEST_F(TmatsReaderLookUp, LimitOfZeroLeavesTheFlagAsItWas) {
    for (const int before : {0, 1}) {
        int truncated = before;
        reader.setLogFile("", &truncated);
        EXPECT_EQ(value("G\\PN:ABCDEFG;", "G\\PN", 0, &ui), "ABCDEFG");
        EXPECT_EQ(truncated, before);
    }
    EXPECT_THAT(ui.boxes, IsEmpty());
}

TEST_F(TmatsReaderLookUp, ValueOfExactlyTheLimitPassesSilently) {
    int truncated = 0;
    reader.setLogFile("", &truncated);
    EXPECT_EQ(value("G\\PN:ABCD;", "G\\PN", 4, &ui), "ABCD");
    EXPECT_EQ(value("G\\PN:ABCD;", "G\\PN", -4, &ui), "ABCD");
    EXPECT_EQ(truncated, 0);
    EXPECT_THAT(ui.boxes, IsEmpty());
}

TEST_F(TmatsReaderLookUp, OtherFieldsOverTheLimitAreNotReportedOnTheWay) {
    EXPECT_EQ(value("A:LONGER;B:x;", "B", 4, &ui), "x");
    EXPECT_THAT(ui.boxes, IsEmpty());
}

TEST_F(TmatsReaderLookUp, OverLimitWithoutALogIsABox) {
    EXPECT_EQ(value("g\\pn:ABCDEFG;", "G\\PN", 4, &ui), "ABCD");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].title, "ERROR Parsing TMATS File");
    EXPECT_EQ(ui.boxes[0].text,
              "The TMATS command 'g\\pn:ABCDEFG;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field has been truncated.");
    EXPECT_EQ(ui.boxes[0].icon, Icon::Error);
    EXPECT_EQ(ui.boxes[0].buttons, Buttons::Ok);
    EXPECT_THAT(ui.logs, IsEmpty());

    EXPECT_EQ(value("G\\PN:ABCDEFG;", "G\\PN", -4, &ui), "ABCDEFG");
    ASSERT_EQ(ui.boxes.size(), 2u);
    EXPECT_EQ(ui.boxes[1].title, "TMATS File Warning");
    EXPECT_EQ(ui.boxes[1].text,
              "The TMATS command 'G\\PN:ABCDEFG;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field will be processed even though it was longer than "
              "expected.");
}

TEST_F(TmatsReaderLookUp, OverLimitWithALogGoesToTheLogAndTheParentHearsOfIt) {
    TempFolder folder;
    const auto log = folder / "log";
    reader.setLogFile(log);
    EXPECT_EQ(value("G\\PN:ABCDEFG;", "G\\PN", 4, &ui), "ABCD");
    EXPECT_EQ(value("G\\TA:ABCDEFG;", "G\\TA", -4, nullptr), "ABCDEFG");
    EXPECT_EQ(readFile(log),
              "ERROR Parsing TMATS File:\n\n\t"
              "The TMATS command 'G\\PN:ABCDEFG;'\n\twas too long. This field can only be 4 "
              "characters long.\n\tThis field has been truncated.\n\n"
              "TMATS File Warning:\n\n\t"
              "The TMATS command 'G\\TA:ABCDEFG;'\n\twas too long. This field can only be 4 "
              "characters long.\n\tThis field will be processed even though it was longer than "
              "expected.\n\n");
    EXPECT_THAT(ui.boxes, IsEmpty());
    ASSERT_EQ(ui.logs.size(), 1u);
    EXPECT_EQ(ui.logs[0].id, 0);
    EXPECT_EQ(ui.logs[0].title, "ERROR Parsing TMATS File");
    EXPECT_EQ(ui.logs[0].text,
              "The TMATS command 'G\\PN:ABCDEFG;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field has been truncated.");
}

TEST_F(TmatsReaderLookUp, EachFieldIsLoggedOnceForOneLogPathButAlwaysCutAndFlagged) {
    TempFolder folder;
    int truncated = 0;
    reader.setLogFile(folder / "log", &truncated);
    EXPECT_EQ(value("A:12345;", "A", 4, &ui), "1234");
    truncated = 0;
    EXPECT_EQ(value("A:12345;", "A", 4, &ui), "1234");
    EXPECT_EQ(truncated, 1);
    EXPECT_EQ(ui.logs.size(), 1u);
    EXPECT_EQ(value("A:12346;", "A", 4, &ui), "1234");
    EXPECT_EQ(ui.logs.size(), 2u) << "another value is another field";
    reader.setLogFile(folder / "log", &truncated);
    EXPECT_EQ(value("A:12345;", "A", 4, &ui), "1234");
    EXPECT_EQ(ui.logs.size(), 3u) << "a new log knows nothing of the old one";
}

TEST_F(TmatsReaderLookUp, LogThatCanNotBeOpenedFallsBackToTheBox) {
    TempFolder folder;
    reader.setLogFile(folder / "missing/log");
    EXPECT_EQ(value("A:12345;", "A", 4, &ui), "1234");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].title, "ERROR Parsing TMATS File");
    EXPECT_THAT(ui.logs, IsEmpty());
}

TEST_F(TmatsReaderLookUp, WithoutParentAndLogItIsSilent) {
    EXPECT_EQ(value("A:12345;", "A", 4, nullptr), "1234");
}

TEST_F(TmatsReaderLookUp, PercentInAValueIsNoFormatInTheMessage) {
    EXPECT_EQ(value("A:%s%n%d;", "A", 2, &ui), "%s");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_THAT(ui.boxes[0].text, testing::HasSubstr("'A:%s%n%d;'"));
}

TEST_F(TmatsReaderLookUp, ValueEndsWhereOneSemicolonWas) {
    reader.addSubstitution("x", ";");
    EXPECT_EQ(value("A:1x;", "A"), "1;") << "only one trailing semicolon goes";
}

// --- substitution ------------------------------------------------------------------------

class TmatsReaderSubstitution : public testing::Test {
  protected:
    std::string next(std::string_view text, std::size_t* length = nullptr) {
        auto source = ByteSource::fromMemory(text);
        std::string command;
        (void)reader.nextCommand(source, command, nullptr, length);
        return command;
    }
    TmatsReader reader;
};

TEST_F(TmatsReaderSubstitution, ReplacesEveryOccurrenceRowByRowInTheirOrder) {
    reader.addSubstitution("&", "&amp;");
    reader.addSubstitution("<", "&lt;");
    std::size_t length = 0;
    EXPECT_EQ(next("G\\PN:a<b&c&;", &length), "G\\PN:a&lt;b&amp;c&amp;;");
    EXPECT_EQ(length, 23u) << "the length follows the changed text";
}

TEST_F(TmatsReaderSubstitution, InTheOtherOrderReplacesWhatWasReplaced) {
    reader.addSubstitution("<", "&lt;");
    reader.addSubstitution("&", "&amp;");
    EXPECT_EQ(next("A:<;"), "A:&amp;lt;;");
}

TEST_F(TmatsReaderSubstitution, EmptySearchTextIsNoRow) {
    reader.addSubstitution("", "x");
    EXPECT_EQ(next("A:1;"), "A:1;");
    EXPECT_EQ(reader.substitutionFlags(), 0u);
}

TEST_F(TmatsReaderSubstitution, EmptyReplacementRemoves) {
    reader.addSubstitution("\t", "");
    EXPECT_EQ(next("A:1\t2;"), "A:12;");
}

TEST_F(TmatsReaderSubstitution, FlagsTellWhatWasHit) {
    struct Case {
        const char* text;
        unsigned flags;
    };
    const Case cases[] = {{"G\\PN:a;", 0},    {"G\\PN:&;", 3},    {"C-1\\COM:&;", 5},
                          {"c-1\\COM:&;", 5}, {"P-1\\COM:&;", 9}, {"p-2\\COM:&;", 9},
                          {"C-1\\DCN:&;", 3}, {"P-1\\D2:&;", 3},  {"C-1\\com:&;", 3},
                          {"D-1\\COM:&;", 3}, {"G\\COM:&;", 3}};
    for (const auto& c : cases) {
        reader.clearSubstitutions();
        reader.addSubstitution("&", "&amp;");
        next(c.text);
        EXPECT_EQ(reader.substitutionFlags(), c.flags) << c.text;
    }
}

TEST_F(TmatsReaderSubstitution, FlagsAddUpAndClearingEmptiesBoth) {
    reader.addSubstitution("&", "&amp;");
    next("C-1\\COM:&;");
    next("P-1\\COM:&;");
    next("G\\PN:&;");
    EXPECT_EQ(reader.substitutionFlags(), 15u);
    reader.clearSubstitutions();
    EXPECT_EQ(reader.substitutionFlags(), 0u);
    EXPECT_EQ(next("G\\PN:&;"), "G\\PN:&;");
}

TEST_F(TmatsReaderSubstitution, LookUpsSeeTheChangedText) {
    reader.addSubstitution("&", "&amp;");
    auto source = ByteSource::fromMemory("G\\PN:a&b;");
    EXPECT_EQ(reader.findField(nullptr, source, "G\\", "PN", 0), "a&amp;b");
}

}  // namespace
}  // namespace kavu
