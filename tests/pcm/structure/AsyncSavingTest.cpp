#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;

class AsyncSaving : public ::testing::Test {
  protected:
    AsyncSaving() {
        EXPECT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 31, 8, "SFID") +
                           Commands{"AEF\\N:1", "AEF\\DLN-1:OLD", "AEF3-1-1:5"}));
        contents.dataLinkName = "NEW";
        contents.supercom = "NO";
        contents.locationMode = "NA";
        f.format.changed = false;
    }
    bool save(int record, const std::vector<AsyncPlace>& places) {
        return saveAsyncFormat(f.format, f.parent, record, contents, places,
                               [](std::string_view link) { return link == "TAKEN"; });
    }
    void expectRefused(int id, const std::vector<AsyncPlace>& places, int record = 0) {
        const auto before = f.ui.boxes.size();
        EXPECT_FALSE(save(record, places)) << id;
        ASSERT_EQ(f.ui.boxes.size(), before + 1) << id;
        EXPECT_EQ(f.ui.boxes.back().id, id);
        EXPECT_EQ(f.format.asyncCount(), 1) << id;
        EXPECT_FALSE(f.format.changed) << id;
    }
    StreamFixture f{2009};
    AsyncFormat contents;
};

TEST_F(AsyncSaving, ANewRecordGetsItsSlot) {
    ASSERT_TRUE(save(0, {{7, "0011", {}}}));
    ASSERT_EQ(f.format.asyncCount(), 2);
    EXPECT_EQ(f.format.asyncFormats[1].dataLinkName, "NEW");
    EXPECT_TRUE(isAsyncAt(f.format, 7, 1, 2));
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(StreamFixture::holds(f.written(), "AEF6-2-1:0011"));
}

TEST_F(AsyncSaving, ARecordForWhichNoCellIsLeftIsRefusedAndLeavesNoSlot) {
    // A slot of word 5 would have to be chained to the one that is there.
    f.format.cells().limitChained(0);
    contents.supercom = "2";
    contents.locationMode = "EL";
    EXPECT_FALSE(save(0, {{3, "", {}}, {5, "", {}}}));
    EXPECT_EQ(f.ui.countBoxes(197), 1);
    EXPECT_EQ(f.ui.boxes.back().text,
              "Unable to assign Async Embedded format to frame word position #5 (start frame:1 "
              "frame interval:1 end frame:8). This stream definition will not be processed.");
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_FALSE(isAsyncAt(f.format, 3, 1, 2));
}

TEST_F(AsyncSaving, AnEditedRecordMoves) {
    contents.supercom = "3";
    contents.locationMode = "FI";
    contents.interval = 4;
    ASSERT_TRUE(save(1, {{7, "", {}}}));
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_FALSE(isAsyncAt(f.format, 5, 1, 0));
    for (const int fwp : {7, 11, 15}) {
        EXPECT_TRUE(isAsyncAt(f.format, fwp, 1, 1)) << fwp;
    }
    EXPECT_EQ(asyncPlaces(f.format)[0][2].mask, std::string(16, '1'));
}

TEST_F(AsyncSaving, EveryLocationHasAsManyAsThereArePlaces) {
    contents.supercom = "9";
    contents.locationMode = "EL";
    ASSERT_TRUE(save(0, {{9, "1", {}}, {8, "01", {}}}));
    EXPECT_EQ(f.format.asyncFormats[1].supercom, "2");
    EXPECT_TRUE(isAsyncAt(f.format, 8, 1, 2));
    EXPECT_TRUE(isAsyncAt(f.format, 9, 1, 2));
}

TEST_F(AsyncSaving, ADataMergeTakesTheFullWord) {
    contents.isDataMerge = true;
    ASSERT_TRUE(save(0, {{9, "1", {}}}));
    EXPECT_EQ(asyncPlaces(f.format)[1][0].mask, "FW");
}

TEST_F(AsyncSaving, TheNameIsNeededAndItsOwn) {
    contents.dataLinkName = "";
    expectRefused(367, {{7, "", {}}});
    EXPECT_EQ(f.boxTitle(367), 136);
    contents.dataLinkName = "OLD";
    expectRefused(375, {{7, "", {}}});
    contents.dataLinkName = "TAKEN";
    expectRefused(374, {{7, "", {}}});
    contents.dataLinkName = "OLD";
    EXPECT_TRUE(save(1, {{7, "", {}}}));
}

TEST_F(AsyncSaving, ANameInAnotherCaseIsAnotherName) {
    contents.dataLinkName = "old";
    EXPECT_TRUE(save(0, {{7, "", {}}}));
    EXPECT_EQ(f.format.asyncCount(), 2);
}

TEST_F(AsyncSaving, ASupercommutatedRecordNeedsATypeAndAnInterval) {
    contents.supercom = "2";
    expectRefused(368, {{7, "", {}}});
    contents.locationMode = "FI";
    contents.interval = 0;
    expectRefused(369, {{7, "", {}}});
}

TEST_F(AsyncSaving, WordsAndMasksAreChecked) {
    expectRefused(195, {{32, "", {}}});
    expectRefused(196, {{31, "", {}}});
    expectRefused(371, {{7, "12", {}}});
    expectRefused(372, {{7, std::string(17, '1'), {}}});
    EXPECT_TRUE(f.ui.boxes.back().text.starts_with(
        "Invalid Bitmask entered. The word length for this Frame Word Position is 16.  You have "
        "entered a bitmask that is 17 characters in length."));
    expectRefused(234, {});
    contents.supercom = "2";
    contents.locationMode = "EL";
    expectRefused(373, {{7, "", {}}, {7, "", {}}});
    contents.locationMode = "FI";
    contents.interval = 100;
    expectRefused(195, {{7, "", {}}});
    expectRefused(370, {{7, "", {}}}, 2);
}

TEST_F(AsyncSaving, TheListHasRoomForEighteenAndForOneFewerWithAMerge) {
    for (int n = 2; n <= 17; ++n) {
        contents.dataLinkName = "N" + std::to_string(n);
        ASSERT_TRUE(save(0, {{n, "", {}}})) << n;
    }
    contents.isDataMerge = true;
    contents.dataLinkName = "M";
    EXPECT_FALSE(save(0, {{20, "", {}}}));
    EXPECT_EQ(f.ui.countBoxes(215), 1);
    contents.isDataMerge = false;
    EXPECT_TRUE(save(0, {{20, "", {}}}));
    contents.dataLinkName = "LAST";
    EXPECT_FALSE(save(0, {{21, "", {}}}));
    EXPECT_EQ(f.ui.countBoxes(215), 2);
    EXPECT_EQ(f.format.asyncCount(), 18);
}

}  // namespace
}  // namespace kavu
