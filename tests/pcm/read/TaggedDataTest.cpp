#include "pcm/LoadFixture.h"
#include "pcm/read/TaggedData.h"

namespace kavu {
namespace {

using test::Commands;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;

const Commands kTagged = {"MN@:TAGGED", "MN1@:NO",   "MN2@:D",    "MN3@:M",    "LT@:TD",
                          "TD\\N@:2",   "TD1@:16",   "TD2@-1:12", "TD3@-1:01", "TD4@-1:M",
                          "TD5@-1:1",   "TD2@-2:13", "TD3@-2:FW", "TD5@-2:2"};

class TaggedDataTest : public ::testing::Test, public LoadFixture {
  protected:
    TaggedDataTest() : LoadFixture(2011) {
        EXPECT_TRUE(load(plainFormat(8, 2), listOf({kTagged})));
        format.changed = false;
    }
};

TEST_F(TaggedDataTest, MeasurementsAreReadWithTheirTags) {
    const auto all = readTaggedData(format, parent);
    ASSERT_TRUE(all);
    ASSERT_EQ(all->size(), 1U);
    EXPECT_EQ((*all)[0].name(), "TAGGED");
    EXPECT_EQ((*all)[0].values.at("TD1"), "16");
    ASSERT_EQ((*all)[0].tags.size(), 2U);
    EXPECT_EQ((*all)[0].tags[1].values.at("TD2"), "13");
    EXPECT_FALSE((*all)[0].tags[1].values.contains("TD4"));
}

TEST_F(TaggedDataTest, WhatWasReadIsWrittenAsItWas) {
    const auto before = read("[kavu]DTAG0000.D01");
    ASSERT_NE(before, "");
    EXPECT_TRUE(storeTaggedData(format, parent, *readTaggedData(format, parent)));
    EXPECT_EQ(read("[kavu]DTAG0000.D01"), before);
    EXPECT_TRUE(format.changed);
}

TEST_F(TaggedDataTest, ANewMeasurementReachesTheGroupFileAndTheNextLoad) {
    auto all = *readTaggedData(format, parent);
    TaggedMeasurement fresh;
    fresh.values = {{"MN", "FRESH"}, {"TD1", "8"}};
    fresh.tags = {{{{"TD2", "44"}}}};
    all.push_back(fresh);
    ASSERT_TRUE(storeTaggedData(format, parent, all));
    ASSERT_TRUE(savePcmFormat(format, parent));
    ASSERT_TRUE(reload());
    const auto again = *readTaggedData(format, parent);
    ASSERT_EQ(again.size(), 2U);
    EXPECT_EQ(again[1].name(), "FRESH");
    EXPECT_EQ(again[1].tags[0].values.at("TD2"), "44");
}

TEST_F(TaggedDataTest, AStreamThatWasNeverSavedGetsItsGroup) {
    format.dGroup = 0;
    format.streamName = "New";
    EXPECT_TRUE(storeTaggedData(format, parent, {}));
    EXPECT_EQ(format.dGroup, 2);
}

TEST_F(TaggedDataTest, NamesAreTheirOwn) {
    const auto all = *readTaggedData(format, parent);
    EXPECT_TRUE(checkTaggedName(format, parent, all, "OTHER"));
    EXPECT_FALSE(checkTaggedName(format, parent, all, "tagged"));
    EXPECT_EQ(ui.countBoxes(339), 1);
    EXPECT_FALSE(checkTaggedName(format, parent, all, ""));
    Measurement cell;
    cell.name = "WORD";
    format.cells().store(format.getFreeCell(nullptr, 3, 1), cell);
    EXPECT_FALSE(checkTaggedName(format, parent, all, "WORD"));
    EXPECT_EQ(ui.countBoxes(334), 1);
}

TEST_F(TaggedDataTest, OlderEditionsHaveNone) {
    EXPECT_TRUE(hasTaggedData(format));
    document.version = 2009;
    EXPECT_FALSE(hasTaggedData(format));
    EXPECT_FALSE(storeTaggedData(format, parent, {}));
}

TEST_F(TaggedDataTest, AFileThatCanNotBeWrittenIsReported) {
    const auto path = store.pathOf("[kavu]DTAG0000.D01");
    const auto all = *readTaggedData(format, parent);
    ASSERT_FALSE(all.empty());
    std::filesystem::create_directory(path + ".new");
    EXPECT_FALSE(storeTaggedData(format, parent, all));
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_NE(ui.boxes.back().text.find(path), std::string::npos);
    EXPECT_FALSE(format.changed);
}

}  // namespace
}  // namespace kavu
