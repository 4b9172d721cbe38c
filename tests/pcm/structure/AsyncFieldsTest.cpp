#include "pcm/StreamFixture.h"
#include "pcm/structure/AsyncFields.h"

namespace kavu {
namespace {

using test::StreamFixture;

class AsyncFieldsTest : public ::testing::Test, public StreamFixture {
  protected:
    AsyncFieldsTest() : StreamFixture(2011) {}
    bool save(AsyncEditing editing) { return saveAsyncEditing(format, parent, editing); }
    AsyncEditing fresh(const char* name, int fwp) {
        auto editing = asyncEditing(format, 0, fwp);
        editing.contents.dataLinkName = name;
        return editing;
    }
};

TEST_F(AsyncFieldsTest, ANewRecordStandsAtItsPlace) {
    EXPECT_TRUE(save(fresh("A", 7)));
    EXPECT_TRUE(isAsyncAt(format, 7, 1, 1));
    EXPECT_EQ(asyncRecordsAt(format, 7, 1), std::vector<int>{1});
    EXPECT_TRUE(asyncRecordsAt(format, 8, 1).empty());
    EXPECT_EQ(asyncEditing(format, 1, 7).contents.supercom, "NO");
    EXPECT_EQ(asyncEditing(format, 9, 7).record, 0) << "there is no such record";
}

TEST_F(AsyncFieldsTest, TheNameOfAnotherStreamIsRefused) {
    write("[kavu]PCMFMT.P02", "P-2\\DLN:Other;\r\n");
    EXPECT_FALSE(save(fresh("Other", 7)));
    EXPECT_EQ(ui.countBoxes(374), 1);
    EXPECT_TRUE(save(fresh("Another", 7)));
    EXPECT_FALSE(save(fresh("Another", 8)));
    EXPECT_EQ(ui.countBoxes(375), 1);
}

TEST_F(AsyncFieldsTest, AnEditOfAnIntervalBeginsWithTheFirstPlace) {
    auto editing = fresh("A", 4);
    editing.contents.supercom = "3";
    editing.contents.locationMode = "FI";
    editing.contents.interval = 5;
    ASSERT_TRUE(save(editing));
    const auto again = asyncEditing(format, 1, 9);
    ASSERT_EQ(again.places.size(), 1U);
    EXPECT_EQ(again.places[0].fwp, 4);
    ASSERT_TRUE(save(again));
    for (const int word : {4, 9, 14}) {
        EXPECT_TRUE(isAsyncAt(format, word, 1, 1)) << word;
    }
}

TEST_F(AsyncFieldsTest, AllFieldsOfADataMergeAreKept) {
    AsyncFormat contents;
    FieldValues values;
    for (const auto& field : dataMergeFields()) {
        values[std::string(field.code)] = field.kind == FieldKind::Digits ? "7" : "x";
    }
    setDataMergeValues(contents, values);
    EXPECT_EQ(dataMergeValues(contents), values);
    EXPECT_EQ(contents.adm5, 7);
    EXPECT_EQ(contents.userDataPosition, "x");
    setDataMergeValues(contents, {});
    EXPECT_EQ(contents, AsyncFormat{}) << "what is missing has its default";
}

TEST_F(AsyncFieldsTest, RangesAreWithinTheFrames) {
    EXPECT_TRUE(checkFrameRange(format, parent, {1, 1, 8}));
    EXPECT_TRUE(checkFrameRange(format, parent, {8, 0, 8}));
    for (const auto& range :
         {FrameRange{0, 1, 8}, FrameRange{9, 1, 9}, FrameRange{3, 1, 2}, FrameRange{3, 1, 9}}) {
        EXPECT_FALSE(checkFrameRange(format, parent, range));
    }
    EXPECT_EQ(ui.countBoxes(160), 4);
    EXPECT_EQ(framesText(format, {}), "All");
    EXPECT_EQ(framesText(format, {{1, 1, 8}}), "All");
    EXPECT_EQ(framesText(format, {{1, 1, 4}, {5, 2, 8}}), "1 - 4, 5 - 8 by 2");
}

TEST_F(AsyncFieldsTest, FramesAreToldFromTheNewestEditionOn) {
    EXPECT_TRUE(hasAsyncFrames(format));
    document.version = 2009;
    EXPECT_FALSE(hasAsyncFrames(format));
}

}  // namespace
}  // namespace kavu
