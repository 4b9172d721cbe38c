#include "pcm/StreamFixture.h"
#include "pcm/structure/AsyncFields.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

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

TEST_F(AsyncFieldsTest, AnEditOfAnIntervalHasAllOfItsPlaces) {
    auto editing = fresh("A", 4);
    editing.contents.supercom = "3";
    editing.contents.locationMode = "FI";
    editing.contents.interval = 5;
    ASSERT_TRUE(save(editing));
    const auto again = asyncEditing(format, 1, 9);
    ASSERT_EQ(again.places.size(), 3U);
    EXPECT_EQ(again.places[0].fwp, 4);
    ASSERT_TRUE(save(again));
    for (const int word : {4, 9, 14}) {
        EXPECT_TRUE(isAsyncAt(format, word, 1, 1)) << word;
    }
}

/// Three locations by an interval, each with a mask, a length and frames of its own.
const std::vector<std::string> kStepped = {
    "AEF\\N:1",     "AEF\\DLN-1:INNER", "AEF1-1:3",      "AEF2-1:FI",         "AEF3-1-1:4",
    "AEF4-1:5",     "AEF5-1-1:4",       "AEF6-1-1:1111", "AEF7-1-1:1",        "AEF8-1-1-1:1",
    "AEF9-1-1-1:2", "AEF10-1-1-1:7",    "AEF5-1-2:8",    "AEF6-1-2:11110000", "AEF7-1-2:NO",
    "AEF5-1-3:4",   "AEF6-1-3:1111",    "AEF7-1-3:1",    "AEF8-1-3-1:2",      "AEF9-1-3-1:1",
    "AEF10-1-3-1:3"};

TEST_F(AsyncFieldsTest, ANewNameAloneLeavesPlacesMasksLengthsAndFrames) {
    ASSERT_TRUE(read(kStepped));
    const auto before = written();
    auto editing = asyncEditing(format, 1, 9);
    editing.contents.dataLinkName = "RENAMED";
    ASSERT_TRUE(save(editing));
    auto expected = before;
    std::replace(expected.begin(), expected.end(), std::string("AEF\\DLN-1:INNER"),
                 std::string("AEF\\DLN-1:RENAMED"));
    EXPECT_EQ(written(), expected);
    for (const auto& command : kStepped) {
        EXPECT_TRUE(holds(before, command)) << command << " comes back from a file";
    }
}

TEST_F(AsyncFieldsTest, ALocationThatTheLoadHasLeftOutDoesNotKeepANameFromBeingEdited) {
    auto commands = kStepped + plainCounter(1, 9, 8, "SFID");
    commands.push_back("ISF\\N:1");
    ASSERT_TRUE(read(commands));
    ASSERT_FALSE(isAsyncAt(format, 9, -1, 1));
    auto editing = asyncEditing(format, 1, 4);
    editing.contents.dataLinkName = "RENAMED";
    EXPECT_TRUE(save(editing));
    EXPECT_TRUE(isAsyncAt(format, 14, -1, 1));
    EXPECT_FALSE(ui.hasBox(196));
}

TEST_F(AsyncFieldsTest, AnotherFirstPlaceTakesAlongWhatWasLikeIt) {
    ASSERT_TRUE(read(kStepped));
    auto editing = asyncEditing(format, 1, 4);
    auto& places = editing.places;
    places[2].mask = places[0].mask;
    editFirstPlace(editing, {5, "11", {}});
    EXPECT_EQ(places[0], (AsyncPlace{5, "11", {}}));
    EXPECT_EQ(places[1].mask, "11110000") << "its own";
    EXPECT_EQ(places[2].mask, "11");
    EXPECT_EQ(places[2].frames, (std::vector<FrameRange>{{2, 1, 3}})) << "its own";
    ASSERT_TRUE(save(editing));
    const auto lines = written();
    for (const auto* const line : {"AEF3-1-1:5", "AEF5-1-1:2", "AEF6-1-1:11", "AEF7-1-1:NO",
                                   "AEF5-1-2:8", "AEF6-1-2:11110000", "AEF5-1-3:2"}) {
        EXPECT_TRUE(holds(lines, line)) << line;
    }
    EXPECT_TRUE(isAsyncAt(format, 15, -1, 1));
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
