#include "conversion/ConversionCompaction.h"
#include "conversion/ConversionFixture.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Numbers;

struct CompactionCase {
    const char* what;
    /// Chunk numbers; a negative one (less 1) is an empty chunk.
    Numbers before;
    /// The number that the chunk at each place had before, -1 for an empty one.
    Numbers after;
};

class ConversionCompaction : public testing::TestWithParam<CompactionCase> {};

constexpr std::int64_t empty(std::int64_t number) {
    return -number - 1;
}

TEST_P(ConversionCompaction, LeavesNoHoleAndNoEmptyChunkInFrontOfAFullOne) {
    ConversionFixture f;
    for (const auto chunk : GetParam().before) {
        const auto number = chunk < 0 ? -chunk - 1 : chunk;
        test::writeFile(chunkPath(f.store, number), chunk < 0 ? "" : std::to_string(number));
    }
    StagedChunks none;
    ASSERT_TRUE(compactChunks(f.context, none).ok());
    Numbers places;
    for (std::size_t i = 0; i < GetParam().after.size(); ++i) {
        places.push_back(static_cast<std::int64_t>(i));
    }
    ASSERT_EQ(f.chunks(), places) << GetParam().what;
    for (const auto place : places) {
        const auto from = GetParam().after[static_cast<std::size_t>(place)];
        EXPECT_EQ(f.chunkText(place), from < 0 ? "" : std::to_string(from)) << GetParam().what;
    }
}

TEST_P(ConversionCompaction, IsTheSameForChunksThatAreNotInFilesYet) {
    // Every kind of mixture: one bit for each chunk.
    const auto& before = GetParam().before;
    for (unsigned inFiles = 0; inFiles < 1U << before.size(); ++inFiles) {
        ConversionFixture f;
        StagedChunks staged;
        for (std::size_t i = 0; i < before.size(); ++i) {
            const auto number = before[i] < 0 ? -before[i] - 1 : before[i];
            auto text = before[i] < 0 ? std::string() : std::to_string(number);
            if ((inFiles >> i & 1U) != 0) {
                test::writeFile(chunkPath(f.store, number), text);
            } else {
                ASSERT_TRUE(staged.put(f.files, number, std::move(text)).ok());
            }
        }
        ASSERT_TRUE(compactChunks(f.context, staged).ok());
        ASSERT_TRUE(staged.writeOut(f.files).ok());
        ASSERT_EQ(f.chunks().size(), GetParam().after.size()) << GetParam().what << inFiles;
        for (std::size_t i = 0; i < GetParam().after.size(); ++i) {
            const auto from = GetParam().after[i];
            EXPECT_EQ(f.chunkText(static_cast<std::int64_t>(i)),
                      from < 0 ? "" : std::to_string(from))
                << GetParam().what << inFiles;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ConversionCompaction,
    testing::Values(CompactionCase{"nothing", {}, {}},
                    CompactionCase{"dense", {0, 1, 2}, {0, 1, 2}},
                    CompactionCase{"one chunk behind a hole", {2}, {2}},
                    CompactionCase{"one empty chunk", {empty(0)}, {-1}},
                    CompactionCase{"a hole takes the last", {0, 2, 3}, {0, 3, 2}},
                    CompactionCase{"an empty one takes the last", {0, empty(1), 2, 3}, {0, 3, 2}},
                    CompactionCase{"what was moved is empty itself", {empty(0), 1, empty(2)}, {1}},
                    CompactionCase{"all empty", {empty(0), empty(1), empty(2)}, {-1}},
                    CompactionCase{"an empty one at the end stays", {0, 1, empty(2)}, {0, 1, -1}},
                    CompactionCase{
                        "far away", {0, 80000000, 4000000000}, {0, 4000000000, 80000000}},
                    CompactionCase{"two holes", {1, 3, 5}, {5, 1, 3}}));

TEST(CompactChunks, AFailureEndsThePassAndNamesTheFile) {
    ConversionFixture f;
    test::writeFile(chunkPath(f.store, 2), "x");
    std::filesystem::create_directory(chunkPath(f.store, 0));
    StagedChunks none;
    const auto status = compactChunks(f.context, none);
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(f.chunkText(2), "x");
}

}  // namespace
}  // namespace kavu
