// Commands that are read in place are those that are read by the byte.
#include "core/TmatsReader.h"
#include "core/document/BuildDocument.h"
#include "support/TestContext.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\x1A';
}

/// Cuts a text as the format says, byte by byte.
std::vector<std::string> cutByTheByte(const std::string& text) {
    std::vector<std::string> commands;
    std::string command;
    for (const char c : text) {
        if ((command.empty() && isSpace(c)) || (c == '\r' && command.ends_with('\r'))) {
            continue;
        }
        if (c == '\n' && !command.ends_with('\r')) {
            command += '\r';
        }
        command += c;
        if (c != ';') {
            continue;
        }
        while (command.size() > 2 && command[command.size() - 2] == ' ') {
            command.erase(command.size() - 2, 1);
        }
        commands.push_back(command);
        command.clear();
    }
    return commands;
}

/// A text of commands as programs write them, and of all that people make of them.
std::string randomText(std::mt19937& random, std::size_t size) {
    static const std::vector<std::string> kParts = {"P-1\\TF:ONE;\r\n",
                                                    "D-1\\MN-1-1:NAME;\r\n",
                                                    "G\\PN:x;\n",
                                                    ";",
                                                    " ;",
                                                    "COMMENT: no;\r\n",
                                                    "comment:;",
                                                    "\r\r\n",
                                                    "\n",
                                                    "\r",
                                                    " ",
                                                    "\x14",
                                                    "\x15 ;\r\n",
                                                    "\x1A",
                                                    "a:b\nc;",
                                                    "V-1\\X: y  ;\r\n",
                                                    "C-1\\COM:\x14\x15;\r\n",
                                                    "A\t;\r\n\r\n",
                                                    "CO:1;\r\n"};
    std::string text;
    // Most stretches are plain, so that runs of lines come about.
    while (text.size() < size) {
        const bool plain = random() % 4 != 0;
        for (auto i = random() % 30; i > 0; --i) {
            text += plain ? kParts[random() % 3] : kParts[random() % kParts.size()];
        }
        if (random() % 50 == 0) {
            text += "P-1\\COM:" + std::string(random() % 100000, 'x') + ";\r\n";
        }
    }
    return text;
}

TEST(TmatsReaderView, GivesWhatIsReadByTheByteFromMemoryAndFromAFile) {
    const test::TempFolder folder;
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        const auto text = randomText(random, round < 30 ? 2000 : 800000);
        const auto path = folder / "in.tma";
        test::writeFile(path, text);
        ByteSource file;
        ASSERT_TRUE(file.open(path).ok());
        auto memory = ByteSource::fromMemory(text);
        for (auto* const source : {&memory, &file}) {
            TmatsReader reader;
            std::vector<std::string> found;
            std::string room;
            std::size_t length = 0;
            long line = 0;
            while (const auto command = reader.viewNextRaw(*source, room, &line, &length)) {
                EXPECT_EQ(command->size(), length);
                found.emplace_back(*command);
            }
            ASSERT_EQ(found, cutByTheByte(text)) << round;
            long lines = 0;
            for (const auto& command : found) {
                lines += 1 + std::count(command.begin(), command.end(), '\n');
            }
            if (length == 0) {  // nothing is cut off at the end
                EXPECT_EQ(line, lines + 1);
            }
        }
    }
}

TEST(TmatsReaderView, SkipsCommentsAsTheCopyDoes) {
    TmatsReader reader;
    auto source = ByteSource::fromMemory("A:1;COMMENT: x;comment:y;\r\nB:2;COM:3;");
    std::string room;
    EXPECT_EQ(reader.viewNext(source, room), "A:1;");
    EXPECT_EQ(reader.viewNext(source, room), "B:2;");
    EXPECT_EQ(reader.viewNext(source, room), "COM:3;");
    EXPECT_EQ(reader.viewNext(source, room), std::nullopt);
}

TEST(TmatsReaderView, SubstitutionsChangeWhatIsRead) {
    TmatsReader reader;
    reader.addSubstitution("a", "b");
    auto source = ByteSource::fromMemory("A:a;\r\nB:2;\r\n");
    std::string room;
    unsigned count = 9;
    EXPECT_EQ(reader.takeLines(source, 5, count), "");
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(reader.viewNextRaw(source, room), "A:b;");
}

TEST(TmatsReaderLines, AreTakenAsLongAsTheyAreAsAFileIsWritten) {
    struct Case {
        const char* text;
        const char* lines;
        unsigned count;
    };
    const Case cases[] = {
        {"A:1;\r\nB:2;\r\n", "A:1;\r\nB:2;\r\n", 2},
        {" \r\nA:1;\r\nB:2;\nC:3;\r\n", "A:1;\r\n", 1},  // from the first command on
        {"A:1;\r\nB:2;", "A:1;\r\n", 1},
        {"A:1;\r\nCOMMENT:2;\r\n", "A:1;\r\n", 1},
        {"A:1;\r\n B:2;\r\n", "A:1;\r\n", 1},
        {"A:1;\r\nB:2 ;\r\n", "A:1;\r\n", 1},
        {"A:1;\r\nB:\x14\x15;\r\n", "A:1;\r\n", 1},
        {"A:1;\r\nB:\r\n2;\r\n", "A:1;\r\n", 1},
        {"A:1;B:2;\r\n", "", 0},
        {"A:1;\r\nB:2;\r\nC:3;\r\nD:4;\r\n", "A:1;\r\nB:2;\r\nC:3;\r\n", 3},  // not more than asked
        {"", "", 0},
    };
    for (const auto& c : cases) {
        TmatsReader reader;
        auto source = ByteSource::fromMemory(c.text);
        unsigned count = 99;
        EXPECT_EQ(reader.takeLines(source, 3, count), c.lines) << c.text;
        EXPECT_EQ(count, c.count) << c.text;
    }
}

TEST(CopyGroupFile, WritesEveryCommandOnALineOfItsOwn) {
    test::TestContext t;
    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        const auto text = randomText(random, round < 15 ? 3000 : 600000);
        for (const bool withComments : {false, true}) {
            std::string wanted;
            unsigned count = 0;
            for (auto command : cutByTheByte(text)) {
                if (!withComments && isComment(command)) {
                    continue;
                }
                fromStoredForm(command);
                wanted += command + "\r\n";
                ++count;
            }
            auto source = ByteSource::fromMemory(text);
            const auto path = t.folder / "out.tma";
            FileWriter target;
            ASSERT_TRUE(target.open(path, WriteMode::Truncate).ok());
            unsigned lines = 0;
            ASSERT_TRUE(
                copyGroupFile(t.context, nullptr, source, target, "Saving", lines, withComments));
            ASSERT_TRUE(target.close().ok());
            ASSERT_EQ(test::readFile(path), wanted) << round << withComments;
            EXPECT_EQ(lines, count);
        }
    }
}

}  // namespace
}  // namespace kavu
