#include "conversion/ChunkSplitter.h"
#include "conversion/ConversionFixture.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Names;
using test::Numbers;

/// A record of about `bytes` bytes.
std::string bigRecord(int index, const std::string& name, std::size_t bytes) {
    const auto prefix = "C-" + std::to_string(index) + "\\";
    return prefix + "DCN:" + name + ";\r\n" + prefix + "DPA:" + std::string(bytes, 'a') + ";\r\n";
}

TEST(ChunkSplitter, AnOversizeChunkIsSplitUntilOnlySingleMeasurementsAreLarger) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(bigRecord(1, "A", 14000) + bigRecord(2, "B", 14000) +
                       bigRecord(3, "C", 14000) + bigRecord(4, "D", 14000)));
    // 56000 bytes: A stays, 42000: B stays, 28000 bytes are no more too large.
    EXPECT_EQ(f.chunks(), (Numbers{0, 1, 2}));
    EXPECT_EQ(f.conversions.definitionNames(0), (Names{"A"}));
    EXPECT_EQ(f.conversions.definitionNames(1), (Names{"B"}));
    EXPECT_EQ(f.conversions.definitionNames(2), (Names{"C", "D"}));
    EXPECT_EQ(f.savedNames(), (Names{"A", "B", "C", "D"}));
}

TEST(ChunkSplitter, WhatIsSplitOffGoesToTheNextFreeNumber) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(bigRecord(1, "A", 20000) + bigRecord(2, "B", 20000) +
                       bigRecord(26, "C", 20000) + bigRecord(27, "D", 20000) +
                       bigRecord(28, "E", 20000) + bigRecord(51, "F", 100)));
    // From 0: A stays, B to 3. From 1: C stays, D and E to 4; from 4: D stays, E to 5.
    EXPECT_EQ(f.chunks(), (Numbers{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(f.savedNames(), (Names{"A", "C", "F", "B", "D", "E"}));
}

TEST(ChunkSplitter, AChunkOf30000BytesIsLeft) {
    ConversionFixture f;
    const std::string head = "C-1\\DCN:A;\r\nC-2\\DCN:B;\r\nC-2\\DPA:";
    const std::string tail = ";\r\n";
    ASSERT_TRUE(f.load(head + std::string(30000 - head.size() - tail.size(), 'a') + tail));
    EXPECT_EQ(f.chunks(), (Numbers{0}));

    ConversionFixture larger;
    ASSERT_TRUE(larger.load(head + std::string(30001 - head.size() - tail.size(), 'a') + tail));
    EXPECT_EQ(larger.chunks(), (Numbers{0, 1}));
}

TEST(ChunkSplitter, InterleavedIndicesLoseNothing) {
    ConversionFixture f;
    const std::string many(16000, 'a');
    ASSERT_TRUE(f.load("C-2\\MN1:b;\r\nC-1\\DCN:A;\r\nC-2\\DCN:B;\r\nC-1\\DPA:" + many +
                       ";\r\nC-2\\DPA:" + many + ";\r\nC-1\\MN1:a;\r\nC-2\\MN2:bb;\r\n"));
    EXPECT_EQ(f.conversions.definitionNames(0), (Names{"A"}));
    EXPECT_EQ(f.conversions.definitionNames(1), (Names{"B"}));
    EXPECT_EQ(f.value("A", "MN1"), "a");
    EXPECT_EQ(f.value("A", "DPA"), many);
    EXPECT_EQ(f.value("B", "MN1"), "b");
    EXPECT_EQ(f.value("B", "MN2"), "bb");
    EXPECT_EQ(f.value("B", "DPA"), many);
}

TEST(ChunkSplitter, ASingleLargeMeasurementIsSplitOnceAndLeft) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(bigRecord(1, "A", 50000) + "C-1\\COM:short;\r\n"));
    EXPECT_EQ(f.chunks(), (Numbers{0}));
    EXPECT_EQ(f.value("A", "DPA").size(), 50000U);
    // Its comment stands outside it.
    EXPECT_EQ(f.value("A", "COM"), "");
    EXPECT_EQ(test::readFile(commentPath(f.store, "A")), "short");
    EXPECT_EQ(f.conversions.readEuComment("A", false), "short");
    EXPECT_NE(f.save().find("C-1\\COM:short;\r\n"), std::string::npos);
}

TEST(ChunkSplitter, ACommentOf40000CharactersLiesInAFileAndIsSavedWhole) {
    ConversionFixture f;
    const std::string comment = "first\x14\x15" + std::string(40000, 'c');
    ASSERT_TRUE(f.load("C-1\\DCN:Long Name/1;\r\nC-1\\MN1:x;\r\nC-1\\COM:" + comment +
                       ";\r\nC-2\\DCN:B;\r\nC-2\\COM:small;\r\n"));
    // Until a record is asked for its comment is where it came from, and is saved from there.
    const auto untouched = f.save();
    ASSERT_TRUE(f.conversions.writeOut().ok());
    const auto path = commentPath(f.store, "Long Name/1");
    EXPECT_TRUE(path.ends_with(".C_COM"));
    EXPECT_EQ(test::readFile(path), comment);
    EXPECT_EQ(f.value("B", "COM"), "small");
    const auto saved = f.save();
    EXPECT_NE(saved.find("C-1\\COM:first\r\n" + std::string(40000, 'c') + ";\r\n"),
              std::string::npos);
    EXPECT_NE(saved.find("C-2\\COM:small;\r\n"), std::string::npos);
    EXPECT_EQ(saved, untouched);
}

TEST(ChunkSplitter, ACommentIsMovedUnderTheNameAsTheStoreKeepsIt) {
    ConversionFixture f;
    const std::string name(40, 'n');
    ASSERT_TRUE(f.load("C-1\\COM:" + std::string(40000, 'c') + ";\r\nC-1\\DCN:" + name +
                       ";\r\nC-1\\MN1:x;\r\n"));
    const auto kept = name.substr(0, 32);
    EXPECT_EQ(f.conversions.readEuComment(kept, false).size(), 40000U);
    EXPECT_NE(f.save().find("\\COM:" + std::string(40000, 'c') + ";"), std::string::npos);
}

TEST(ChunkSplitter, ADroppedDuplicateDoesNotTakeTheCommentOfTheFirst) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:A;\r\nC-1\\COM:" + std::string(31000, '1') +
                       ";\r\nC-30\\DCN:A;\r\nC-30\\COM:" + std::string(31000, '2') + ";\r\n"));
    EXPECT_EQ(f.ui.countLogs(317), 1);
    EXPECT_EQ(f.conversions.readEuComment("A", false), std::string(31000, '1'));
}

TEST(ChunkSplitter, CommandsWithoutANameDoNotKeepItGoing) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DPA:" + std::string(40000, 'a') + ";\r\nC-2\\DPA:" +
                       std::string(40000, 'b') + ";\r\nC-3\\DCN:A;\r\nC-3\\MN1:x;\r\n"));
    EXPECT_EQ(f.savedNames(), (Names{"A"}));
}

TEST(ChunkSplitter, AChunkThatIsConvertedAlreadyIsNotSplitAgain) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(bigRecord(1, "A", 50000)));
    const auto before = f.chunkText(0);
    ASSERT_TRUE(f.load(bigRecord(1, "B", 50000)));
    EXPECT_EQ(f.chunkText(0), before);
    EXPECT_EQ(f.savedNames(), (Names{"A", "B"}));
}

TEST(ChunkSplitter, ManyMeasurementsOfNegativeIndexInOneChunkAreSplitInOnePass) {
    ConversionFixture f;
    std::string text;
    Names names;
    for (int i = 1; i <= 3000; ++i) {
        names.push_back("M" + std::to_string(i));
        text += bigRecord(-i, names.back(), 60);
    }
    ASSERT_TRUE(f.load(text));
    EXPECT_EQ(f.savedNames(), names);
}

}  // namespace
}  // namespace kavu
