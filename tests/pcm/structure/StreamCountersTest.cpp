#include "pcm/StreamFixture.h"
#include "pcm/structure/StreamCounters.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Counters "SFID" in word 30 and "SFID2" in word 31, the subframe "S" in word 5.
class StreamCounters : public ::testing::Test {
  protected:
    StreamCounters() {
        EXPECT_TRUE(createSFID(f.format, &f.ui, 30));
        EXPECT_TRUE(createSFID(f.format, &f.ui, 31));
        EXPECT_TRUE(createSubframe(f.format, &f.ui, {.fwp = 5, .name = "S"}));
        f.format.changed = false;
    }
    StreamFixture f;
};

TEST_F(StreamCounters, AreCountedAndFoundOverTheNamedOnes) {
    EXPECT_EQ(getNumberOfSFIDs(f.format), 2);
    EXPECT_EQ(getSFIDInfo(f.format, 2)->name, "SFID2");
    EXPECT_EQ(getSFIDInfo(f.format, 2)->fwp, 31);
    EXPECT_FALSE(getSFIDInfo(f.format, 0));
    EXPECT_FALSE(getSFIDInfo(f.format, 3));
    ASSERT_TRUE(deleteSubframe(f.format, nullptr, "S"));
    ASSERT_TRUE(deleteSFID(f.format, nullptr, "SFID"));
    EXPECT_EQ(getNumberOfSFIDs(f.format), 1);
    EXPECT_EQ(getSFIDInfo(f.format, 1)->name, "SFID2");
    EXPECT_FALSE(deleteSFID(f.format, &f.ui, "SFID"));
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST_F(StreamCounters, AWordInUseTakesNoCounter) {
    EXPECT_FALSE(createSFID(f.format, &f.ui, 5));
    f.place(7, 1, "A");
    EXPECT_FALSE(createSFID(f.format, &f.ui, 7));
    EXPECT_EQ(f.ui.countBoxes(231), 1);
}

TEST_F(StreamCounters, NumbersAreReadAndSetWithinTheirRules) {
    struct Row {
        std::optional<int> (*get)(const PcmFormat&, std::string_view);
        bool (*set)(PcmFormat&, std::string_view, int);
        int good;
        std::vector<int> bad;
    };
    for (const auto& row : {Row{getSFIDCounterLength, setSFIDCounterLength, 12, {0, 17, -1}},
                            Row{getSFIDWordLength, setSFIDWordLength, 24, {0, 100}},
                            Row{getSFIDMSBStartBit, setSFIDMSBStartBit, 3, {0, -1, 100}},
                            Row{getSFIDEndValue, setSFIDEndValue, 500, {0, 1000}},
                            Row{getSFIDStartValue, setSFIDStartValue, 0, {-1, 1000}},
                            Row{getSFIDEndFrame, setSFIDEndFrame, 4, {0, 1, 9}},
                            Row{getSFIDStartFrame, setSFIDStartFrame, 3, {0, 4, 8}}}) {
        EXPECT_TRUE(row.set(f.format, "SFID", row.good));
        EXPECT_EQ(row.get(f.format, "SFID"), row.good);
        for (const int bad : row.bad) {
            EXPECT_FALSE(row.set(f.format, "SFID", bad)) << bad;
            EXPECT_EQ(row.get(f.format, "SFID"), row.good);
        }
        EXPECT_FALSE(row.get(f.format, "NOBODY"));
        EXPECT_FALSE(row.set(f.format, "NOBODY", row.good));
    }
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST_F(StreamCounters, TheEndValueFollows) {
    ASSERT_TRUE(setSFIDStartValue(f.format, "SFID", 10));
    EXPECT_EQ(getSFIDEndValue(f.format, "SFID"), 17);
    ASSERT_TRUE(setSFIDCountDirection(f.format, "SFID", "dec"));
    EXPECT_EQ(getSFIDCountDirection(f.format, "SFID"), "DEC");
    EXPECT_EQ(getSFIDEndValue(f.format, "SFID"), 3);
    ASSERT_TRUE(setSFIDEndFrame(f.format, "SFID", 5));
    EXPECT_EQ(getSFIDEndValue(f.format, "SFID"), 6);
    ASSERT_TRUE(setSFIDStartFrame(f.format, "SFID", 2));
    EXPECT_EQ(getSFIDEndValue(f.format, "SFID"), 7);
    EXPECT_FALSE(setSFIDCountDirection(f.format, "SFID", "UP"));
}

TEST_F(StreamCounters, TheTransferOrderIsOneOfTheEditions) {
    EXPECT_TRUE(setSFIDTransferOrder(f.format, "SFID", "L"));
    EXPECT_EQ(getSFIDTransferOrder(f.format, "SFID"), "L");
    EXPECT_TRUE(setSFIDTransferOrder(f.format, "SFID", "D"));
    EXPECT_FALSE(setSFIDTransferOrder(f.format, "SFID", "X"));
    f.document.version = 2007;
    EXPECT_FALSE(setSFIDTransferOrder(f.format, "SFID", "D"));
}

TEST_F(StreamCounters, ANewNameIsUnique) {
    EXPECT_FALSE(setSFIDName(f.format, &f.ui, "SFID", "SFID2"));
    EXPECT_EQ(f.ui.countBoxes(365), 1);
    EXPECT_FALSE(setSFIDName(f.format, &f.ui, "SFID", ""));
    EXPECT_EQ(f.ui.countBoxes(361), 1);
    EXPECT_TRUE(setSFIDName(f.format, &f.ui, "SFID", "NEW"));
    EXPECT_EQ(getSFIDInfo(f.format, 1)->name, "NEW");
    EXPECT_FALSE(setSFIDName(f.format, &f.ui, "SFID", "X"));
}

TEST_F(StreamCounters, SubframesAreReadAndSetByName) {
    EXPECT_EQ(getSubframeName(f.format, 5), "S");
    EXPECT_FALSE(getSubframeName(f.format, 6));
    EXPECT_EQ(getSubframeDepth(f.format, "S"), 8);
    EXPECT_TRUE(setSubframeDepth(f.format, &f.ui, "S", 4));
    EXPECT_EQ(getSubframeDepth(f.format, "S"), 4);
    EXPECT_FALSE(setSubframeDepth(f.format, &f.ui, "S", 3));
    EXPECT_EQ(f.ui.countBoxes(351), 1);
    EXPECT_FALSE(setSubframeDepth(f.format, &f.ui, "S", 2000000000));
    EXPECT_FALSE(setSubframeDepth(f.format, &f.ui, "X", 4));
    EXPECT_FALSE(getSubframeDepth(f.format, "X"));
    EXPECT_TRUE(setSubframeName(f.format, &f.ui, "S", "T"));
    EXPECT_EQ(getSubframeName(f.format, 5), "T");
    EXPECT_FALSE(setSubframeName(f.format, &f.ui, "S", "U"));
    EXPECT_FALSE(deleteSubframe(f.format, nullptr, "S"));
    EXPECT_TRUE(deleteSubframe(f.format, nullptr, "T"));
}

TEST_F(StreamCounters, SubframesAreSpreadByCountAndInterval) {
    EXPECT_TRUE(setSubframeLocations(f.format, &f.ui, "S", 3, 4));
    EXPECT_EQ(f.wordsOf("S"), (std::vector<int>{5, 9, 13}));
    const auto locations = getSubframeLocations(f.format, "S");
    ASSERT_TRUE(locations);
    EXPECT_EQ(locations->fwp, 5);
    EXPECT_EQ(locations->locations, 3);
    EXPECT_EQ(locations->interval, 4);
    EXPECT_FALSE(setSubframeLocations(f.format, &f.ui, "S", 0, 4));
    EXPECT_FALSE(setSubframeLocations(f.format, &f.ui, "S", 1000000, 4));
    EXPECT_FALSE(setSubframeLocations(f.format, &f.ui, "S", 2, 10000));
    EXPECT_FALSE(setSubframeLocations(f.format, &f.ui, "S", 2, -1));
    EXPECT_EQ(f.ui.countBoxes(160), 4);
    EXPECT_TRUE(setSubframeLocations(f.format, &f.ui, "S", 1, 0));
    EXPECT_EQ(f.wordsOf("S"), std::vector<int>{5});
    EXPECT_EQ(getSubframeLocations(f.format, "S")->locations, 1);
}

TEST_F(StreamCounters, ASubframeMovesToTheCounterOfThatName) {
    EXPECT_EQ(getSubframeIDCounter(f.format, "S"), "SFID");
    EXPECT_TRUE(setSubframeIDCounter(f.format, &f.ui, "S", "SFID2"));
    EXPECT_EQ(getSubframeIDCounter(f.format, "S"), "SFID2");
    EXPECT_FALSE(setSubframeIDCounter(f.format, &f.ui, "S", "NOBODY"));
    EXPECT_EQ(f.ui.countBoxes(359), 1);
    EXPECT_FALSE(setSubframeIDCounter(f.format, &f.ui, "X", "SFID"));
}

}  // namespace
}  // namespace kavu
