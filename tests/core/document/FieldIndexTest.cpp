#include "core/document/FieldIndex.h"
#include "support/TestContext.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::RecordingInterface;
using test::TempFolder;
using test::writeFile;

class FieldIndexTest : public testing::Test {
  protected:
    FieldIndexTest() : path(folder / "group") {}
    TempFolder folder;
    std::string path;
    TmatsReader reader;
    RecordingInterface ui;
};

TEST_F(FieldIndexTest, FindsFieldsInAnyOrderAndCase) {
    writeFile(path, "R-1\\ID:tape;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\n");
    FieldIndex fields(reader, path);
    ASSERT_TRUE(fields.status().ok());
    EXPECT_EQ(fields.findField(nullptr, "R-1\\", "TK1-%d", 0, 2), "2");
    EXPECT_EQ(fields.findField(nullptr, "r-1\\", "id", 0), "tape");
    EXPECT_EQ(fields.findField(nullptr, "R-1\\", "TK1-%d", 0, 3), std::nullopt);
}

TEST_F(FieldIndexTest, OccurrencesFollowThePositionAndWrap) {
    writeFile(path, "X:1;A:a;X:2;Y:y;X:3;");
    FieldIndex fields(reader, path);
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "1");
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "2");
    EXPECT_EQ(fields.findField(nullptr, "", "Z", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "3");
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "1");
    EXPECT_EQ(fields.findField(nullptr, "", "Y", 0), "y");
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "3");
    fields.rewind();
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "1");
}

TEST_F(FieldIndexTest, EmptyValuesAndCommandsWithoutAColonAreNotThere) {
    writeFile(path, "X:;Y;X:2;COMMENT:z;:v;Z:  ;");
    FieldIndex fields(reader, path);
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "2");
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), "2");
    EXPECT_EQ(fields.findField(nullptr, "", "Y", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "", "COMMENT", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "", "Z", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "", "", 0), "v") << "an empty code is a code";
}

TEST_F(FieldIndexTest, KeepsOnlyTheFieldsThatAreWanted) {
    writeFile(path, "G\\DSI-1:a;G\\PN:b;G\\dst-1:c;NOGROUP:d;DSI-9:e;");
    FieldIndex fields(reader, path, {"DSI", "DST-"});
    EXPECT_EQ(fields.findField(nullptr, "G\\", "DSI-1", 0), "a");
    EXPECT_EQ(fields.findField(nullptr, "G\\", "PN", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "G\\", "DST-1", 0), "c");
    EXPECT_EQ(fields.findField(nullptr, "", "NOGROUP", 0), std::nullopt);
    EXPECT_EQ(fields.findField(nullptr, "", "DSI-9", 0), "e");
}

TEST_F(FieldIndexTest, IntegersAreDecimalAndNeverNegative) {
    writeFile(path, "A:12;B:-7;C:x;");
    FieldIndex fields(reader, path);
    int value = 5;
    EXPECT_TRUE(fields.findIntField(nullptr, "", "A", value));
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(fields.findIntField(nullptr, "", "B", value));
    EXPECT_EQ(value, 0);
    value = 5;
    EXPECT_FALSE(fields.findIntField(nullptr, "", "D", value));
    EXPECT_EQ(value, 0);
}

TEST_F(FieldIndexTest, LimitsAreThoseOfTheReader) {
    writeFile(path, "g\\pn:ABCDEFG;");
    int truncated = 0;
    reader.setLogFile("", &truncated);
    FieldIndex fields(reader, path);
    EXPECT_EQ(fields.findField(&ui, "G\\", "PN", 4), "ABCD");
    EXPECT_EQ(truncated, 1);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text,
              "The TMATS command 'g\\pn:ABCDEFG;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field has been truncated.");
    EXPECT_EQ(fields.findField(&ui, "G\\", "PN", 0), "ABCDEFG") << "what is kept is whole";
}

TEST_F(FieldIndexTest, FileThatCanNotBeReadHasNoCommands) {
    FieldIndex fields(reader, folder / "none");
    EXPECT_FALSE(fields.status().ok());
    EXPECT_EQ(fields.findField(nullptr, "", "X", 0), std::nullopt);
}

TEST_F(FieldIndexTest, AnswersAsTheReaderDoesOnRandomFiles) {
    std::mt19937 random(20260102);
    const auto below = [&random](int n) {
        return static_cast<int>(random() % static_cast<unsigned>(n));
    };
    const std::vector<std::string> codes = {"A", "a", "B", "X-1\\A", "x-1\\a", "C", "COMMENT", ""};
    const std::vector<std::string> values = {"",           " ",   "1",    "-2",
                                             "long value", "a:b", "x\ny", "\x1A"};
    const std::vector<std::string> ends = {";", ";", ";", ";\r\n", " ;", "\n\n"};
    int found = 0;
    for (int round = 0; round < 400; ++round) {
        std::string text;
        for (int i = below(12); i > 0; --i) {
            text += codes[static_cast<std::size_t>(below(8))] + (below(8) == 0 ? "" : ":") +
                    values[static_cast<std::size_t>(below(8))] +
                    ends[static_cast<std::size_t>(below(6))];
        }
        writeFile(path, text);
        ByteSource source;
        ASSERT_TRUE(source.open(path).ok());
        FieldIndex fields(reader, path);
        for (int look = 0; look < 30; ++look) {
            const auto& code = codes[static_cast<std::size_t>(below(8))];
            const int limit = below(3) * 2 - 2;
            const auto slow = reader.findField(nullptr, source, "", code, limit);
            const auto expected = slow ? std::optional(std::string(*slow)) : std::nullopt;
            const auto actual = fields.findField(nullptr, "", code, limit);
            ASSERT_EQ(expected.has_value(), actual.has_value()) << text << "\ncode " << code;
            if (actual) {
                ASSERT_EQ(*expected, *actual) << text << "\ncode " << code;
                ++found;
            }
        }
    }
    EXPECT_GT(found, 1000) << "the files must have something to find";
}

}  // namespace
}  // namespace kavu
