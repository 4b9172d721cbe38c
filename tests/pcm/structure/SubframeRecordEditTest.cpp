#include "pcm/StreamFixture.h"
#include "pcm/structure/SubframeRecordEdit.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Counters SFID (word 1, frames 1 to 8) and SFID2 (word 2, frames 1 to 6), subframe S in word 5.
class SubframeRecordEditTest : public ::testing::Test, public StreamFixture {
  protected:
    SubframeRecordEditTest() {
        createIdCounter(format, nullptr, 1);
        createIdCounter(format, nullptr, 2);
        format.idCounters[1].endFrame = "6";
        createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4});
        format.changed = false;
    }
};

TEST_F(SubframeRecordEditTest, TellsRecordCounterAndWords) {
    const auto editing = subframeEditing(format, 5);
    EXPECT_EQ(editing.record.name, "S");
    EXPECT_EQ(editing.counter, 0);
    EXPECT_EQ(editing.everyLocation, std::vector<int>{5});
    EXPECT_EQ(subframeEditing(format, 6), SubframeEditing{});
}

TEST_F(SubframeRecordEditTest, AnotherCounterTakesTheSubframe) {
    auto editing = subframeEditing(format, 5);
    editing.counter = 1;
    editing.record.depth = "3";
    EXPECT_TRUE(saveSubframeEditing(format, parent, 5, editing));
    EXPECT_EQ(format.word(5).idCounterIndex, 1);
    EXPECT_EQ(format.subframeOfWord(5)->depth, "3");
    EXPECT_TRUE(format.idCounters[0].subframes[0].name.empty());
    EXPECT_TRUE(format.changed);
}

TEST_F(SubframeRecordEditTest, ADepthThatDoesNotDivideTheDepthOfTheNewCounterIsRefused) {
    StreamUndo before(format);
    auto editing = subframeEditing(format, 5);
    editing.counter = 1;
    EXPECT_FALSE(saveSubframeEditing(format, parent, 5, editing)) << "4 does not divide 6";
    EXPECT_EQ(ui.countBoxes(351), 1);
    EXPECT_EQ(format.word(5).idCounterIndex, 0);
    EXPECT_EQ(format.subframeOfWord(5)->name, "S");
    EXPECT_FALSE(format.changed);
}

TEST_F(SubframeRecordEditTest, LocationsStaySortedAndSingle) {
    std::vector<int> words{5, 15};
    EXPECT_TRUE(addLocation(format, parent, words, 9));
    EXPECT_TRUE(addLocation(format, parent, words, 9));
    EXPECT_TRUE(addLocation(format, parent, words, 2));
    EXPECT_EQ(words, (std::vector<int>{2, 5, 9, 15}));
    EXPECT_FALSE(addLocation(format, parent, words, 0));
    EXPECT_EQ(ui.countBoxes(161), 1);
    EXPECT_EQ(words.size(), 4U);
}

}  // namespace
}  // namespace kavu
