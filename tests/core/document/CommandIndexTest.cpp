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
    RecordingInterface ui;
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

TEST_F(CommandIndexTest, FileThatCannotBeReadHasNoCommands) {
    const TempFolder folder;
    EXPECT_FALSE(commands.readFile(reader, folder / "none").ok());
    EXPECT_EQ(commands.size(), 0u);
    writeFile(folder / "file", "A:1;");
    EXPECT_TRUE(commands.readFile(reader, folder / "file").ok());
    EXPECT_EQ(find("a"), "1");
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
