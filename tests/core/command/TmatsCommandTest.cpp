#include "core/TmatsReader.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::readFile;
using test::TempFolder;
using testing::ElementsAre;

using namespace std::string_literals;

// --- indices -----------------------------------------------------------------------------

struct IndexCase {
    const char* command;
    char letter;
    std::int64_t group;
    std::vector<int> fields;
};

TEST(CommandIndicesTest, AreReadFromTheCode) {
    const IndexCase cases[] = {
        {"D-2\\MN-3-4:X;", 'D', 2, {3, 4}},
        {"G\\DSI-12:X;", 'G', 0, {12}},
        {"P-1\\MF1:8;", 'P', 1, {}},
        {"P-1\\ISF\\N-5:8;", 'P', 1, {5}},
        {"D-1\\X-1-2-3-4-5:8;", 'D', 1, {1, 2, 3, 4}},
        {"D-01\\MN-003-04:X;", 'D', 1, {3, 4}},
        {"D-1\\MN-0:X;", 'D', 1, {0}},
        {"P-7", 'P', 7, {}},
        {"P-", 'P', 0, {}},
        {"P", 'P', 0, {}},
        {"d-3\\MN-1 -2:X;", 'd', 3, {1}},
        {"d-3\\MN- 1-\t2:X;", 'd', 3, {1, 2}},
        {"D-1\\MN-A:X;", 'D', 1, {}},
        {"D-1\\MN-:X;", 'D', 1, {}},
        {"D-1\\MN--3:X;", 'D', 1, {-3}},
        {"D-1\\MN-3x-4:X;", 'D', 1, {3}},
        {"D-1\\MN:1-2-3;", 'D', 1, {}},
        {"D-x\\MN-1:;", 'D', 0, {1}},
        {"G-PN-3:x;", 'G', 0, {}},
    };
    for (const auto& c : cases) {
        const auto indices = parseCommandIndices(c.command);
        EXPECT_EQ(indices.letter, c.letter) << c.command;
        EXPECT_EQ(indices.group, c.group) << c.command;
        ASSERT_EQ(indices.count, static_cast<int>(c.fields.size())) << c.command;
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(indices.fields[i], i < c.fields.size() ? c.fields[i] : 0)
                << c.command << " " << i;
        }
    }
}

TEST(CommandIndicesTest, NothingAndAColonAloneHaveNone) {
    for (const char* text : {"", ":", ":x-1;"}) {
        const auto indices = parseCommandIndices(text);
        EXPECT_EQ(indices.letter, 0) << text;
        EXPECT_EQ(indices.count, 0) << text;
    }
}

TEST(CommandIndicesTest, NumberBeyondTheRangeIsTheEndOfTheRange) {
    const auto indices =
        parseCommandIndices("P-99999999999999999999\\MN-99999999999-2147483648--2147483649:x;");
    EXPECT_EQ(indices.group, std::numeric_limits<std::int64_t>::max());
    ASSERT_EQ(indices.count, 3);
    EXPECT_EQ(indices.fields[0], std::numeric_limits<int>::max());
    EXPECT_EQ(indices.fields[1], std::numeric_limits<int>::max());
    EXPECT_EQ(indices.fields[2], std::numeric_limits<int>::min());
}

// --- splitting ---------------------------------------------------------------------------

struct SplitCase {
    const char* command;
    const char* group;
    const char* code;
    const char* value;
};

TEST(SplitCommandTest, GivesGroupCodeAndValue) {
    const SplitCase cases[] = {
        {"P-1\\MF1:8;", "P-1", "MF1", "8"},
        {"G\\DSI-1:x;", "G", "DSI-1", "x"},
        {"P-1\\ISF\\N:3;", "P-1", "ISF\\N", "3"},
        {"G\\COM:a:b;", "G", "COM", "a:b"},
        {"G\\COM:a;b;;", "G", "COM", "ab"},
        {"G\\COM:;", "G", "COM", ""},
        {"G\\COM", "G", "COM", ""},
        {"\\X:1;", "", "X", "1"},
        {"X:a\\b:c;", "X:a", "b", "c"},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        const auto parts = splitCommand(c.command);
        EXPECT_EQ(parts.group, c.group) << c.command;
        EXPECT_EQ(parts.code, c.code) << c.command;
        EXPECT_EQ(parts.value, c.value) << c.command;
    }
}

TEST(SplitCommandTest, TextWithoutABackslashIsAllGroupPart) {
    const auto parts = splitCommand("COMMENT: text;");
    EXPECT_EQ(parts.group, "COMMENT: text;");
    EXPECT_EQ(parts.code, "");
    EXPECT_EQ(parts.value, "");
}

// --- private record ----------------------------------------------------------------------

TEST(CommentRecordTest, IsSeparatedFromTheCommentHoweverItWasLaidOut) {
    struct Case {
        const char* comment;
        const char* record;
        const char* plain;
    };
    const Case cases[] = {
        {"plain", "", "plain"},
        {"", "", ""},
        {"[KAVU: D1=x]", "[KAVU: D1=x]", ""},
        {"front [KAVU: D1=x] behind", "[KAVU: D1=x]", "front  behind"},
        {"front[KAVU: D1=x", "[KAVU: D1=x", "front"},
        {"[KAVU: a=1] and [KAVU: b=2]", "[KAVU: a=1]", " and [KAVU: b=2]"},
        {"[kavu: a=1]", "", "[kavu: a=1]"},
        {"a ] b [KAVU:]c", "[KAVU:]", "a ] b c"},
    };
    for (const auto& c : cases) {
        const auto parts = splitCommentRecord(c.comment);
        EXPECT_EQ(parts.record, c.record) << c.comment;
        EXPECT_EQ(parts.plain, c.plain) << c.comment;
    }
}

TEST(CommentRecordTest, GivesTheValueOfAKey) {
    const std::string comment = "text [KAVU: D1=x  D2=y= E= F=a] G=z";
    EXPECT_EQ(commentRecordValue(comment, "D1"), "x");
    EXPECT_EQ(commentRecordValue(comment, "D2"), "y=");
    EXPECT_EQ(commentRecordValue(comment, "E"), "");
    EXPECT_EQ(commentRecordValue(comment, "F"), "a");
    EXPECT_EQ(commentRecordValue(comment, "G"), std::nullopt) << "behind the record";
    EXPECT_EQ(commentRecordValue(comment, "d1"), std::nullopt) << "the key is exact";
    EXPECT_EQ(commentRecordValue("D1=x", "D1"), std::nullopt) << "no record";
    EXPECT_EQ(commentRecordValue("[KAVU: D1=x", "D1"), "x") << "a record without its end";
    EXPECT_EQ(commentRecordValue("[KAVU: odd] D1=x", "odd] D1"), std::nullopt);
}

TEST(CommentRecordTest, FirstPairOfAKeyWins) {
    EXPECT_EQ(commentRecordValue("[KAVU: a=1 a=2]", "a"), "1");
}

TEST(CommentRecordTest, TakesChangesAddsAndDropsPairs) {
    struct Case {
        const char* before;
        const char* key;
        const char* value;
        const char* after;
    };
    const Case cases[] = {
        {"", "D1", "x", "[KAVU: D1=x]"},
        {"[KAVU: D1=x]", "D2", "y", "[KAVU: D1=x D2=y]"},
        {"[KAVU: D1=x D2=y]", "D1", "z", "[KAVU: D1=z D2=y]"},
        {"[KAVU:   D1=x   D2=y]", "D2", "", "[KAVU: D1=x]"},
        {"[KAVU: D1=x]", "D1", "", ""},
        {"", "D1", "", ""},
        {"[KAVU:]", "D1", "", ""},
        {"[KAVU: D1=x", "D2", "y", "[KAVU: D1=x D2=y]"},
        {"[KAVU: D1=x]", "d1", "y", "[KAVU: D1=x d1=y]"},
        {"other text", "D1", "x", "other text"},
        {" [KAVU: D1=x]", "D1", "y", " [KAVU: D1=x]"},
    };
    for (const auto& c : cases) {
        std::string record = c.before;
        setCommentRecordValue(record, c.key, c.value);
        EXPECT_EQ(record, c.after) << c.before << " " << c.key << "=" << c.value;
    }
}

// --- writing -----------------------------------------------------------------------------

class WriteCommandTest : public testing::Test {
  protected:
    WriteCommandTest() { EXPECT_TRUE(writer.open(folder / "out", WriteMode::Truncate).ok()); }
    std::string written() {
        EXPECT_TRUE(writer.close().ok());
        return readFile(folder / "out");
    }
    TempFolder folder;
    FileWriter writer;
};

TEST_F(WriteCommandTest, WritesNothingForAnEmptyValue) {
    EXPECT_FALSE(writeCommand(writer, "P-1\\", "MF1", ""));
    EXPECT_FALSE(writeCommandPlain(writer, "P-1\\", "MF1", ""));
    EXPECT_EQ(written(), "");
}

TEST_F(WriteCommandTest, StoresLineBreaksAndDropsTrailingBlanks) {
    EXPECT_TRUE(writeCommand(writer, "P-1\\", "COM", " one\r\ntwo  "));
    EXPECT_TRUE(writeCommand(writer, "P-1\\", "TF", "ONE\t "));
    EXPECT_EQ(written(), "P-1\\COM: one\x14\x15two;\r\nP-1\\TF:ONE\t;\r\n");
}

TEST_F(WriteCommandTest, ValueOfBlanksIsWrittenEmpty) {
    EXPECT_TRUE(writeCommand(writer, "P-1\\", "TF", "   "));
    EXPECT_EQ(written(), "P-1\\TF:;\r\n");
}

TEST_F(WriteCommandTest, PlainRestoresLineBreaksAndKeepsTrailingBlanks) {
    EXPECT_TRUE(writeCommandPlain(writer, "P-1\\", "COM", "one\x14\x15two \r\n "));
    EXPECT_EQ(written(), "P-1\\COM:one\r\ntwo \r\n ;\r\n");
}

TEST_F(WriteCommandTest, IntegersAreAlwaysWritten) {
    writeIntCommand(writer, "P-1\\", "N", 0);
    writeIntCommand(writer, "P-1\\", "M", -12);
    EXPECT_EQ(written(), "P-1\\N:0;\r\nP-1\\M:-12;\r\n");
}

TEST_F(WriteCommandTest, WhatIsWrittenIsReadBackAsItWas) {
    const std::string value = "line one\r\n\tline two: 50 % \\ x";
    EXPECT_TRUE(writeCommand(writer, "G\\", "COM", value));
    const auto text = written();
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    std::string back(reader.findField(nullptr, source, "G\\", "COM", 0).value_or(""));
    fromStoredForm(back);
    EXPECT_EQ(back, value);
}

}  // namespace
}  // namespace kavu
