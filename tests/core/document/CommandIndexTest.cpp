#include "core/TmatsReader.h"
#include "core/document/CommandIndex.h"
#include "support/TestContext.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::RecordingInterface;
using test::TempFolder;
using test::writeFile;

class CommandIndexTest : public testing::Test {
  protected:
    void read(std::string_view text, Comments comments = Comments::Skip,
              std::initializer_list<std::string_view> wanted = {}) {
        auto source = ByteSource::fromMemory(text);
        ASSERT_TRUE(commands.read(reader, source, comments, {wanted.begin(), wanted.size()}).ok());
    }
    std::optional<std::string> find(std::string_view code) {
        const auto found = commands.find(code);
        return found ? std::optional(std::string(found->value)) : std::nullopt;
    }
    std::vector<std::string_view> texts() const {
        std::vector<std::string_view> all;
        for (std::size_t i = 0; i < commands.size(); ++i) {
            all.push_back(commands.at(i).text);
        }
        return all;
    }
    TmatsReader reader;
    CommandIndex commands;
};

TEST_F(CommandIndexTest, HoldsAllCommandsInTheirOrder) {
    read("R-1\\ID:tape;\r\n COMMENT: x;\r\nnone;:v;\r\nR-1\\A: 1\n2 ;\r\ncut off");
    EXPECT_THAT(texts(), testing::ElementsAre("R-1\\ID:tape;", "none;", ":v;", "R-1\\A: 1\r\n2;"));
    EXPECT_EQ(commands.at(3).field, "A");
    EXPECT_EQ(commands.at(3).value, " 1\r\n2");
    commands.clear();
    EXPECT_EQ(commands.size(), 0u);
    EXPECT_EQ(find("R-1\\ID"), std::nullopt);
}

TEST_F(CommandIndexTest, CommentsAreCommandsForThoseWhoKeepThem) {
    read("Comment: x;A:1;", Comments::Keep);
    EXPECT_THAT(texts(), testing::ElementsAre("Comment: x;", "A:1;"));
    EXPECT_EQ(find("COMMENT"), " x");
}

TEST_F(CommandIndexTest, PeeksWithoutMoving) {
    read("X:1;A:a;X:2;");
    EXPECT_EQ(find("X"), "1");
    EXPECT_EQ(commands.peek("x")->value, "2");
    EXPECT_EQ(commands.peek("x")->place, 2u);
    EXPECT_EQ(commands.peek("A")->code, "A");
    EXPECT_EQ(commands.peek("Z"), std::nullopt);
    EXPECT_EQ(find("X"), "2");
    EXPECT_EQ(find("X"), "1");
}

TEST_F(CommandIndexTest, TheFirstReadCommandOfACodeIsFoundWhereverTheSearchIs) {
    read("X:1;A:a;X:2;x:3;");
    EXPECT_EQ(commands.peekRead("X"), std::nullopt);
    commands.markRead(3);
    EXPECT_EQ(commands.peekRead("X")->place, 3u);
    EXPECT_EQ(find("X"), "1");
    EXPECT_EQ(find("X"), "2");
    commands.markRead(0);
    EXPECT_EQ(commands.peekRead("x")->value, "1");
    EXPECT_EQ(commands.peekRead("A"), std::nullopt);
    EXPECT_EQ(find("X"), "3");
}

TEST_F(CommandIndexTest, CommandsAreAddedAndMarkedOneByOne) {
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(commands.add("X-" + std::to_string(i) + ":" + std::to_string(i) + ";"));
        EXPECT_EQ(find("x-" + std::to_string(i / 2)), std::to_string(i / 2));
    }
    EXPECT_FALSE(commands.isRead(7));
    commands.markRead(7);
    EXPECT_TRUE(commands.isRead(7));
    EXPECT_FALSE(commands.isRead(8));
    EXPECT_EQ(commands.at(7).text, "X-7:7;") << "the mark is no part of it";
}

TEST_F(CommandIndexTest, CommandsAreReadInSlicesAndLookUpsSeeThoseThatCameSince) {
    const std::string bytes = "A:1;COMMENT:no;B;A:2;C:  x ;half";
    auto source = ByteSource::fromMemory(bytes);
    EXPECT_TRUE(commands.readSome(reader, source, 2));
    EXPECT_EQ(commands.size(), 2u);
    EXPECT_EQ(commands.at(1).text, "COMMENT:no;");
    EXPECT_EQ(find("A"), "1");
    EXPECT_EQ(find("A"), "1") << "once around";
    EXPECT_TRUE(commands.readSome(reader, source, 2));
    EXPECT_EQ(find("A"), "2");
    EXPECT_FALSE(commands.readSome(reader, source, 2)) << "what has no end is no command";
    ASSERT_EQ(commands.size(), 5u);
    EXPECT_EQ(commands.at(4).value, "  x");
    EXPECT_EQ(find("C"), "  x");
    EXPECT_FALSE(commands.readSome(reader, source, 2));
    EXPECT_EQ(commands.size(), 5u);
}

TEST_F(CommandIndexTest, OnlyALookUpPaysForTheCodes) {
    constexpr std::size_t kCommands = 1000;
    for (std::size_t i = 0; i < kCommands; ++i) {
        EXPECT_TRUE(commands.add("X:1;"));
    }
    EXPECT_EQ(commands.memory(), kCommands * (4 + 12));
    EXPECT_EQ(find("X"), "1");
    EXPECT_GT(commands.memory(), kCommands * (4 + 12 + 20));
    EXPECT_LT(commands.memory(), kCommands * (4 + 12 + 40));
}

TEST_F(CommandIndexTest, FileThatCannotBeReadHasNoCommands) {
    const TempFolder folder;
    EXPECT_FALSE(commands.readFile(reader, folder / "none").ok());
    EXPECT_EQ(commands.size(), 0u);
    writeFile(folder / "file", "A:1;");
    EXPECT_TRUE(commands.readFile(reader, folder / "file").ok());
    EXPECT_EQ(find("a"), "1");
}

// --- The fields of a file -------------------------------------------------------------------

class CommandFileTest : public testing::Test {
  protected:
    CommandFileTest() : path(folder / "group") {}
    void readFile(std::initializer_list<std::string_view> wanted = {}) {
        fields.clear();
        status = fields.readFile(reader, path, Comments::Skip, {wanted.begin(), wanted.size()});
    }
    TempFolder folder;
    std::string path;
    TmatsReader reader;
    RecordingInterface ui;
    CommandIndex fields;
    IoStatus status;
};

TEST_F(CommandFileTest, FindsFieldsInAnyOrderAndCase) {
    writeFile(path, "R-1\\ID:tape;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\n");
    readFile();
    ASSERT_TRUE(status.ok());
    EXPECT_EQ(fields.findField(reader, nullptr, "R-1\\TK1-2", 0), "2");
    EXPECT_EQ(fields.findField(reader, nullptr, "r-1\\id", 0), "tape");
    EXPECT_EQ(fields.findField(reader, nullptr, "R-1\\TK1-3", 0), std::nullopt);
}

TEST_F(CommandFileTest, OccurrencesFollowThePositionAndWrap) {
    writeFile(path, "X:1;A:a;X:2;Y:y;X:3;");
    readFile();
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "1");
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "2");
    EXPECT_EQ(fields.findField(reader, nullptr, "Z", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "3");
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "1");
    EXPECT_EQ(fields.findField(reader, nullptr, "Y", 0), "y");
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "3");
    fields.rewind();
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "1");
}

TEST_F(CommandFileTest, EmptyValuesAndCommandsWithoutAColonAreNotThere) {
    writeFile(path, "X:;Y;X:2;COMMENT:z;:v;Z:  ;");
    readFile();
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "2");
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), "2");
    EXPECT_EQ(fields.findField(reader, nullptr, "Y", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "COMMENT", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "Z", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "", 0), "v") << "an empty code is a code";
}

TEST_F(CommandFileTest, KeepsOnlyTheFieldsThatAreWanted) {
    writeFile(path, "G\\DSI-1:a;G\\PN:b;G\\dst-1:c;NOGROUP:d;DSI-9:e;");
    readFile({"DSI", "DST-"});
    EXPECT_EQ(fields.findField(reader, nullptr, "G\\DSI-1", 0), "a");
    EXPECT_EQ(fields.findField(reader, nullptr, "G\\PN", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "G\\DST-1", 0), "c");
    EXPECT_EQ(fields.findField(reader, nullptr, "NOGROUP", 0), std::nullopt);
    EXPECT_EQ(fields.findField(reader, nullptr, "DSI-9", 0), "e");
}

TEST_F(CommandFileTest, IntegersAreDecimalAndNeverNegative) {
    writeFile(path, "A:12;B:-7;C:x;");
    readFile();
    EXPECT_EQ(fields.findIntField(nullptr, "A"), 12);
    EXPECT_EQ(fields.findIntField(nullptr, "B"), 0);
    EXPECT_EQ(fields.findIntField(nullptr, "C"), 0);
    EXPECT_EQ(fields.findIntField(nullptr, "D"), std::nullopt);
}

TEST_F(CommandFileTest, LimitsAreThoseOfTheReader) {
    writeFile(path, "g\\pn:ABCDEFG;");
    int truncated = 0;
    reader.setLogFile("", &truncated);
    readFile();
    EXPECT_EQ(fields.findField(reader, &ui, "G\\PN", 4), "ABCD");
    EXPECT_EQ(truncated, 1);
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text,
              "The TMATS command 'g\\pn:ABCDEFG;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field has been truncated.");
    EXPECT_EQ(fields.findField(reader, &ui, "G\\PN", 0), "ABCDEFG") << "what is kept is whole";
}

TEST_F(CommandFileTest, FileThatCanNotBeReadHasNoCommands) {
    path = folder / "none";
    readFile();
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(fields.findField(reader, nullptr, "X", 0), std::nullopt);
}

TEST_F(CommandFileTest, AnswersAsTheReaderDoesOnRandomFiles) {
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
        readFile();
        for (int look = 0; look < 30; ++look) {
            const auto& code = codes[static_cast<std::size_t>(below(8))];
            const int limit = below(3) * 2 - 2;
            const auto slow = reader.findField(nullptr, source, "", code, limit);
            const auto expected = slow ? std::optional(std::string(*slow)) : std::nullopt;
            const auto actual = fields.findField(reader, nullptr, code, limit);
            ASSERT_EQ(expected.has_value(), actual.has_value()) << text << "\ncode " << code;
            if (actual) {
                ASSERT_EQ(*expected, *actual) << text << "\ncode " << code;
                ++found;
            }
        }
    }
    EXPECT_GT(found, 1000) << "the files must have something to find";
}

// --- As the reader answers ------------------------------------------------------------------

/// A text of random commands: repeats, codes in any case, commands without value, without `:`
/// and without end, comments, white space.
class RandomGroups {
  public:
    std::string_view text() {
        text_.clear();
        for (int i = below(6); i > 0; --i) {
            text_ += code();
            text_ += below(8) == 0 ? "" : ":";
            text_ += kValues[below(std::size(kValues))];
            text_ += kEnds[below(std::size(kEnds))];
        }
        return text_;
    }
    std::string_view code() { return kCodes[below(std::size(kCodes))]; }
    unsigned below(std::size_t n) { return static_cast<unsigned>(random_() % n); }

  private:
    static constexpr std::string_view kCodes[] = {
        "A", "a", "B", "X-1\\A", "x-1\\a", "X-1\\A-1", "COMMENT", "Comment", "A ", "",
    };
    static constexpr std::string_view kValues[] = {
        "", "", " ", "1", "-2", "a:b", "x\ny", "\x1A", "\r\r\n",
    };
    static constexpr std::string_view kEnds[] = {";", ";", ";", ";\r\n", " ;", ";;", "\n\n"};

    std::mt19937 random_{20260102};
    std::string text_;
};

std::string shown(const std::optional<std::string_view>& value) {
    return value ? "'" + std::string(*value) + "'" : "nothing";
}

TEST_F(CommandIndexTest, AnswersAsTheReaderOnRandomSequences) {
    RandomGroups random;
    int found = 0;
    int missing = 0;
    for (int round = 0; round < 100'000; ++round) {
        const auto text = random.text();
        auto slow = ByteSource::fromMemory(text);
        auto source = ByteSource::fromMemory(text);
        commands.clear();
        ASSERT_TRUE(commands.read(reader, source).ok());
        auto code = random.code();
        for (int look = 0; look < 4; ++look) {
            // The same again, or the one just in front of the position, or any.
            code = random.below(4) == 0 ? code : random.code();
            std::string expected = shown(reader.findField(nullptr, slow, code, "", 0));
            const auto actual = commands.find(code);
            ASSERT_EQ(shown(actual ? std::optional(actual->value) : std::nullopt), expected)
                << text << "\ncode '" << code << "', look-up " << look;
            ++(actual ? found : missing);
        }
    }
    EXPECT_GT(found, 50'000) << "there must be something to find";
    EXPECT_GT(missing, 50'000);
}

}  // namespace
}  // namespace kavu
