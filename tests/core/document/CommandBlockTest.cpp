#include "core/TmatsReader.h"
#include "core/document/CommandBlock.h"
#include "core/files/FileIo.h"

#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Commands = std::vector<std::pair<long, std::string>>;

/// The commands with the count of lines at each, and what no command ends.
struct FoundCommands {
    Commands commands;
    std::string rest;
    std::uint64_t filler = 0;
    bool operator==(const FoundCommands&) const = default;
};

FoundCommands cutInBlocks(const std::string& text, TmatsReader& reader) {
    FoundCommands cut;
    auto source = ByteSource::fromMemory(text);
    CommandBlock block;
    long line = 0;
    while (block.read(source, cut.rest)) {
        EXPECT_EQ(block.end(), source.position() - cut.rest.size());
        block.cut(reader, [] {});
        for (const auto& piece : block.pieces()) {
            cut.filler += piece.filler;
            for (const auto& command : piece.commands) {
                line += command.lines;
                cut.commands.emplace_back(line, command.text);
                EXPECT_EQ(command.isPrintable, isPrintable(command.text));
                EXPECT_EQ(command.shape.isSplit, shapeOfCode(command.text).isSplit);
            }
        }
    }
    cut.filler += reader.takeSkippedFiller();
    return cut;
}

FoundCommands cutOneByOne(const std::string& text, TmatsReader& reader) {
    FoundCommands cut;
    auto source = ByteSource::fromMemory(text);
    std::string room;
    long line = 0;
    while (const auto command = reader.viewNextRaw(source, room, &line)) {
        cut.commands.emplace_back(line, *command);
    }
    cut.rest = text.substr(text.rfind(';') + 1);
    auto rest = ByteSource::fromMemory(cut.rest);
    TmatsReader ofRest;
    (void)ofRest.viewNextRaw(rest, room);
    cut.filler = reader.takeSkippedFiller() - ofRest.takeSkippedFiller();
    return cut;
}

std::string randomText(unsigned seed, std::size_t size) {
    std::mt19937 random(seed);
    const std::vector<std::string> parts = {
        "C-1\\DCN:A", "G\\COM:x", ";",  ";\r\n", ";\n", " ;", "\r\n", "\r\r\n", "COMMENT: c ",
        "\x1A",       "\x14\x15", "\t", ";;",    "\n",  "ä",  "0",    "\\"};
    std::string text;
    while (text.size() < size) {
        text += parts[random() % parts.size()];
        if (random() % 20000 == 0) {
            text.append(random() % 700000, 'x');
        }
    }
    return text;
}

TEST(CommandBlock, TheCommandsAreThoseOfOnePass) {
    for (unsigned seed = 0; seed < 8; ++seed) {
        const auto text = randomText(seed, seed < 4 ? 2000000 : 300 * seed);
        TmatsReader reader;
        EXPECT_TRUE(cutInBlocks(text, reader) == cutOneByOne(text, reader)) << seed;
    }
}

TEST(CommandBlock, SubstitutionsAreDoneAndCountedAsInOnePass) {
    const auto text = randomText(9, 1000000);
    TmatsReader one;
    TmatsReader other;
    for (auto* const reader : {&one, &other}) {
        reader->addSubstitution("DCN", "dcn;COM");
    }
    EXPECT_TRUE(cutInBlocks(text, one) == cutOneByOne(text, other));
    EXPECT_EQ(one.substitutionFlags(), other.substitutionFlags());
    EXPECT_NE(one.substitutionFlags(), 0U);
}

TEST(CommandBlock, WithoutASemicolonThereIsNoBlock) {
    TmatsReader reader;
    EXPECT_EQ(cutInBlocks("", reader), FoundCommands());
    EXPECT_EQ(cutInBlocks("G\\PN:A", reader), (FoundCommands{{}, "G\\PN:A", 0}));
    EXPECT_EQ(cutInBlocks(";", reader), (FoundCommands{{{1, ";"}}, "", 0}));
}

}  // namespace
}  // namespace kavu
