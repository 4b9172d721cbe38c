#include "conversion/ConversionFixture.h"
#include "conversion/ConversionStore.h"

#include <filesystem>
#include <map>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;

std::map<std::int64_t, std::string> chunksOf(ConversionFixture& f) {
    std::map<std::int64_t, std::string> chunks;
    for (std::int64_t number = 0; fileExists(chunkPath(f.store, number)); ++number) {
        chunks[number] = test::readFile(chunkPath(f.store, number));
    }
    return chunks;
}

std::string recordName(int number) {
    return "FWP" + std::to_string(number % 97) + "_" + std::to_string(number);
}

TEST(ConversionBatch, ManyRecordsMakeTheSameFilesAsOneByOne) {
    constexpr int kCount = 900;
    ConversionFixture single;
    ConversionFixture batched;
    for (auto* const f : {&single, &batched}) {
        f->settings.write("CPOC3", std::string(500, 'p'));
    }
    for (int n = 0; n < kCount; ++n) {
        ASSERT_TRUE(single.conversions.createDefaultDefinition(nullptr, recordName(n), false));
    }
    {
        ConversionStore::Batch batch(batched.conversions);
        for (int n = 0; n < kCount; ++n) {
            ASSERT_TRUE(batched.conversions.createDefaultDefinition(nullptr, recordName(n), false));
            ASSERT_TRUE(batched.conversions.locateDefinition(recordName(n)).found);
        }
        EXPECT_TRUE(batch.write(nullptr));
    }
    const auto chunks = chunksOf(batched);
    EXPECT_GT(chunks.size(), 9U) << "more than wait at a time";
    EXPECT_EQ(chunks, chunksOf(single));
    EXPECT_EQ(batched.conversions.definitionNames(-1), single.conversions.definitionNames(-1));
    batched.conversions.forget();
    EXPECT_TRUE(batched.conversions.locateDefinition(recordName(kCount - 1)).found);
}

TEST(ConversionBatch, WhatWaitsIsSeenAndWrittenAtTheEnd) {
    ConversionFixture f;
    {
        ConversionStore::Batch batch(f.conversions);
        ASSERT_TRUE(f.conversions.createDefaultDefinition(nullptr, "A", false));
        EXPECT_FALSE(fileExists(chunkPath(f.store, 0)));
        ASSERT_TRUE(f.conversions.renameDefinition(nullptr, "B", "A"));
        EXPECT_TRUE(f.conversions.locateDefinition("B").found);
        EXPECT_FALSE(f.conversions.locateDefinition("A").found);
    }
    EXPECT_NE(test::readFile(chunkPath(f.store, 0)).find("[B]"), std::string::npos);
    ASSERT_TRUE(f.conversions.createDefaultDefinition(nullptr, "C", false));
    EXPECT_NE(test::readFile(chunkPath(f.store, 0)).find("[C]"), std::string::npos)
        << "the batch is over";
}

TEST(ConversionBatch, AllRecordsAreWrittenBeforeOthersReadTheFiles) {
    ConversionFixture f;
    ConversionStore::Batch batch(f.conversions);
    ASSERT_TRUE(f.conversions.createDefaultDefinition(nullptr, "A", false));
    EXPECT_TRUE(f.conversions.writeOut().ok());
    EXPECT_NE(test::readFile(chunkPath(f.store, 0)).find("[A]"), std::string::npos);
}

TEST(ConversionBatch, AFileThatCannotBeWrittenIsReportedAndItsRecordsAreGone) {
    ConversionFixture f;
    ConversionStore::Batch batch(f.conversions);
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "A", false));
    std::filesystem::create_directories(chunkPath(f.store, 0) + "/in the way");
    EXPECT_FALSE(batch.write(&f.ui));
    EXPECT_EQ(f.ui.countBoxes(313), 1);
    std::filesystem::remove_all(chunkPath(f.store, 0));
    f.conversions.forget();
    EXPECT_FALSE(f.conversions.locateDefinition("A").found);
}

}  // namespace
}  // namespace kavu
