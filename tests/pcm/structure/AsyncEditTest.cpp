#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Three records in words 5, 6 and 7, the second one also in word 5.
class AsyncEdit : public ::testing::Test {
  protected:
    AsyncEdit() {
        EXPECT_TRUE(
            f.read({"AEF\\N:3", "AEF\\DLN-1:A", "AEF3-1-1:5", "AEF\\DLN-2:B", "AEF1-2:2",
                    "AEF2-2:EL", "AEF3-2-1:5", "AEF3-2-2:6", "AEF\\DLN-3:C", "AEF3-3-1:7"}));
    }
    std::string name(int record) const {
        return f.format.asyncFormats.at(static_cast<std::size_t>(record - 1)).dataLinkName.str();
    }
    StreamFixture f{2009};
};

TEST_F(AsyncEdit, ASlotIsFoundByWordFrameAndRecord) {
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 0));
    EXPECT_TRUE(isAsyncAt(f.format, 5, -1, 2));
    EXPECT_TRUE(isAsyncAt(f.format, -1, 3, 3));
    EXPECT_TRUE(isAsyncAt(f.format, -1, -1, 0));
    EXPECT_FALSE(isAsyncAt(f.format, 5, 1, 3));
    EXPECT_FALSE(isAsyncAt(f.format, 8, -1, 0));
    EXPECT_FALSE(isAsyncAt(f.format, 5, 9, 0));
    EXPECT_FALSE(isAsyncAt(f.format, 4000, 1, 0));
}

TEST_F(AsyncEdit, RemovingARecordFreesItsSlotsAndMovesLaterOnesUp) {
    ASSERT_TRUE(removeAsyncFormat(f.format, f.parent, 2, -1, -1));
    EXPECT_EQ(f.format.asyncCount(), 2);
    EXPECT_EQ(name(2), "C");
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 1));
    EXPECT_FALSE(isAsyncAt(f.format, 5, 1, 2));
    EXPECT_FALSE(isAsyncAt(f.format, 6, 1, 0));
    EXPECT_TRUE(isAsyncAt(f.format, 7, 1, 2));
    EXPECT_FALSE(removeAsyncFormat(f.format, f.parent, 3, -1, -1));
    EXPECT_EQ(f.ui.countBoxes(370), 1);
    EXPECT_FALSE(removeAsyncFormat(f.format, nullptr, 0, -1, -1));
}

TEST_F(AsyncEdit, RemovingItFromOnePlaceKeepsTheOthers) {
    ASSERT_TRUE(removeAsyncFormat(f.format, f.parent, 2, 5, 1));
    EXPECT_EQ(f.format.asyncCount(), 3);
    EXPECT_TRUE(isAsyncAt(f.format, 5, 1, 1));
    EXPECT_FALSE(isAsyncAt(f.format, 5, 1, 2));
    EXPECT_EQ(f.format.asyncFormats[1].locations.size(), 1U);
    ASSERT_TRUE(removeAsyncFormat(f.format, f.parent, 2, 6, -1));
    EXPECT_EQ(f.format.asyncCount(), 2);
    EXPECT_EQ(name(2), "C");
}

TEST_F(AsyncEdit, AMeasurementThatSharesASlotStays) {
    Measurement measurement;
    measurement.name = "M";
    const auto cell = f.format.cellAt(7, 1);
    f.format.cells().store(cell, measurement);
    ASSERT_TRUE(isAsyncAt(f.format, 7, 1, 3));
    ASSERT_TRUE(removeAsyncFormat(f.format, f.parent, 3, -1, -1));
    EXPECT_TRUE(f.format.hasMeasurement("M"));
    EXPECT_EQ(f.format.countMeasurementsAt(7, 1, true), 1);
}

TEST_F(AsyncEdit, DeletingAsks) {
    f.ui.byId[137] = Button::No;
    f.format.changed = false;
    EXPECT_FALSE(deleteAsyncFormat(f.format, f.parent, 1));
    EXPECT_EQ(f.format.asyncCount(), 3);
    EXPECT_FALSE(f.format.changed);
    f.ui.byId[137] = Button::Yes;
    EXPECT_TRUE(deleteAsyncFormat(f.format, f.parent, 1));
    EXPECT_TRUE(deleteAsyncFormat(f.format, nullptr, 1));
    EXPECT_EQ(f.format.asyncCount(), 1);
    EXPECT_EQ(f.ui.countBoxes(137), 2);
    EXPECT_EQ(f.ui.boxes.back().titleId, 138);
    EXPECT_TRUE(f.format.changed);
}

TEST_F(AsyncEdit, AClearedRecordIsEmptyAndKeepsItsSlots) {
    clearAsyncFormat(f.format, 2);
    EXPECT_EQ(f.format.asyncFormats[1], AsyncFormat{});
    EXPECT_TRUE(isAsyncAt(f.format, 6, 1, 2));
    clearAsyncFormat(f.format, 9);
    clearAsyncFormat(f.format, 0);
    EXPECT_EQ(f.format.asyncCount(), 3);
}

TEST_F(AsyncEdit, RangesFollowTheNumberOfFrames) {
    f.document.version = 2011;
    auto& frames = f.format.asyncFormats[1].locations[1].frames;
    frames = {{2, 1, 8}, {7, 0, 7}};
    ASSERT_TRUE(f.format.setNumberOfFrames(f.parent, 4));
    EXPECT_EQ(frames, (std::vector<FrameRange>{{2, 1, 4}}));
    EXPECT_EQ(f.format.asyncFormats[0].locations[0].frames, (std::vector<FrameRange>{{1, 1, 4}}));
    ASSERT_TRUE(f.format.setNumberOfFrames(f.parent, 16));
    EXPECT_EQ(frames, (std::vector<FrameRange>{{2, 1, 4}}));
    EXPECT_TRUE(StreamFixture::holds(f.written(), "AEF7-1-1:NO"));
    EXPECT_TRUE(StreamFixture::holds(f.written(), "AEF10-2-2-1:4"));
    ASSERT_TRUE(f.format.setNumberOfFrames(f.parent, 1));
    EXPECT_EQ(frames, (std::vector<FrameRange>{{1, 1, 1}}));
}

TEST_F(AsyncEdit, PlacesFollowTheSlotsWhenWordsHaveMoved) {
    freeAsyncSlots(f.format, 2);
    AsyncLocation moved{8, {{1, 1, 8}}};
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 2, moved, "01"));
    f.format.asyncFormats[1].locations = {{5, {{2, 1, 3}}}, {6, {{4, 1, 5}}}};
    const auto places = asyncPlaces(f.format);
    ASSERT_EQ(places[1].size(), 1U);
    EXPECT_EQ(places[1][0].fwp, 8);
    EXPECT_EQ(places[1][0].mask, "01");
    EXPECT_EQ(places[1][0].frames, (std::vector<FrameRange>{{2, 1, 3}}));
}

}  // namespace
}  // namespace kavu
