#include "core/document/Transaction.h"
#include "pcm/LoadFixture.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/structure/SubframeRecordEdit.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/KeptWriting.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::wordFrame;
using test::operator+;

class KeptWritingTest : public ::testing::Test {
  protected:
    void start(int edition, const Commands& format, const Commands& measurements = listOf({})) {
        s_.emplace(edition);
        s_->steps_.chooseDefinitionMode = [](UserInterface&, bool) { return false; };
        ASSERT_TRUE(s_->load(format, measurements));
        s_->ui.otherwise = Button::Yes;
    }
    /// Saves, and loads again.
    void save() {
        auto& s = *s_;
        s.ui.boxes.clear();
        s.format.changed = true;
        ASSERT_TRUE(savePcmFormat(s.format, s.parent));
        lines_ = s.saved("[kavu]PCMFMT.P01") + s.saved("[kavu]PCMMEAS.D01");
        ASSERT_TRUE(s.reload());
        s.ui.otherwise = Button::Yes;
    }
    [[nodiscard]] bool has(const std::string& command) const {
        return std::count(lines_.begin(), lines_.end(), command + ";") == 1;
    }

    std::optional<LoadFixture> s_;
    Commands lines_;
};

Commands measurementAt(const std::string& name, int word, const Commands& more = {}) {
    return Commands{"MN@:" + name, "LT@:MF", "MF@:" + std::to_string(word)} + more;
}

TEST_F(KeptWritingTest, AStreamThatTheModelHoldsAsksNothing) {
    start(2009, plainFormat(16, 4) + counterAt(1, 4), listOf({measurementAt("A", 2)}));
    EXPECT_TRUE(s_->format.kept.empty());
    save();
    EXPECT_TRUE(s_->ui.boxes.empty());
}

TEST_F(KeptWritingTest, WithoutAParentNothingIsKept) {
    start(2009, plainFormat(16, 4) + Commands{"VND:1"}, listOf({measurementAt("A", 2)}));
    s_->parent = nullptr;
    save();
    EXPECT_FALSE(has("P-1\\VND:1"));
}

TEST_F(KeptWritingTest, ASecondSaveAsksAgainAfterYesAndNoMoreAfterNo) {
    for (const auto reply : {Button::Yes, Button::No}) {
        start(2009, plainFormat(16, 4), listOf({measurementAt("A", 2, {"VND@:1"})}));
        auto& s = *s_;
        s.ui.otherwise = reply;
        for (const std::size_t expected : {1U, reply == Button::Yes ? 2U : 1U}) {
            s.format.changed = true;
            ASSERT_TRUE(savePcmFormat(s.format, s.parent));
            EXPECT_EQ(s.ui.boxes.size(), expected);
        }
    }
}

TEST_F(KeptWritingTest, ACommandGoesWithItsMeasurement) {
    start(2009, plainFormat(16, 4),
          listOf({measurementAt("LATE", 9, {"VND@:late", "VND@-3-2:late"}),
                  measurementAt("EARLY", 5, {"VND@:early"})}));
    save();
    EXPECT_TRUE(has("D-1\\VND-1-2:late"));
    EXPECT_TRUE(has("D-1\\VND-1-2-3-2:late"));
    EXPECT_TRUE(has("D-1\\VND-1-1:early"));
    // It knows its measurement by another name, and goes with a deleted one.
    auto renamed = s_->first("LATE");
    s_->format.removeMeasurement("LATE");
    renamed.name = "FIRST";
    s_->format.cells().store(s_->format.cellAt(2, 1), renamed);
    save();
    EXPECT_TRUE(has("D-1\\VND-1-1:late"));
    s_->format.removeMeasurement("FIRST");
    save();
    EXPECT_FALSE(s_->ui.hasText("late"));
    EXPECT_TRUE(has("D-1\\VND-1-1:early"));
}

TEST_F(KeptWritingTest, UndoBringsTheCommandsOfAMeasurementBack) {
    start(2009, plainFormat(16, 4), listOf({measurementAt("A", 9, {"VND@:1"})}));
    StreamUndo undo(s_->format);
    s_->format.removeMeasurement("A");
    ASSERT_TRUE(undo.commit());
    s_->format.changed = true;
    ASSERT_TRUE(savePcmFormat(s_->format, s_->parent));
    ASSERT_TRUE(undo.undo());
    save();
    EXPECT_TRUE(has("D-1\\VND-1-1:1"));
}

TEST_F(KeptWritingTest, AMeasurementIsInEveryListAndItsCommandsAreInTheirs) {
    const auto second = replaceAll("MN-2-1:B|LT-2-1:MF|MF-2-1:5|VND-2-1:b", "|", "\n");
    start(2009, plainFormat(16, 4),
          listOf({measurementAt("A", 2, {"VND@:a"})}) + Commands{"MLN-2:Two", "MN\\N-2:1"} +
              splitLines(second));
    s_->write("[kavu]PCMMEAS.D01", replaceAll(s_->read("[kavu]PCMMEAS.D01"), "ML\\N:1", "ML\\N:2"));
    ASSERT_TRUE(s_->reload());
    s_->ui.otherwise = Button::Yes;
    for (int i = 0; i < 3; ++i) {
        save();
        EXPECT_TRUE(has("D-1\\VND-1-1:a"));
        EXPECT_TRUE(has("D-1\\VND-2-2:b"));
        EXPECT_TRUE(has("D-1\\MN\\N-1:2")) << "the same measurement in two lists is one";
        EXPECT_TRUE(has("D-1\\MN\\N-2:2"));
    }
}

TEST_F(KeptWritingTest, AMeasurementThatSaysSomethingElseInAnotherListStaysThere) {
    start(2009, plainFormat(16, 4),
          listOf({measurementAt("A", 2)}) +
              Commands{"MLN-2:Two", "MN\\N-2:1", "MN-2-1:A", "LT-2-1:MF", "MF-2-1:7"});
    s_->write("[kavu]PCMMEAS.D01", replaceAll(s_->read("[kavu]PCMMEAS.D01"), "ML\\N:1", "ML\\N:2"));
    ASSERT_TRUE(s_->reload());
    s_->ui.otherwise = Button::Yes;
    for (int i = 0; i < 3; ++i) {
        save();
        EXPECT_TRUE(has("D-1\\MF-2-1:2"));
        EXPECT_TRUE(has("D-1\\MF-2-2:7"));
        EXPECT_TRUE(has("D-1\\MN\\N-2:2"));
    }
}

TEST_F(KeptWritingTest, RowsBehindTheCountAreNoOnesWhenTheListGrows) {
    start(2009, plainFormat(16, 4),
          listOf({measurementAt("A", 2)}) +
              Commands{"MN-1-2:BEHIND", "MFM-1-2:0011", "VND-1-4:behind"});
    Measurement added;
    added.name = "B";
    added.locationType = "MF";
    s_->format.cells().store(s_->format.cellAt(3, 1), added);
    save();
    EXPECT_TRUE(has("D-1\\MN-1-2:B"));
    EXPECT_TRUE(has("D-1\\MN\\N-1:2"));
    EXPECT_TRUE(has("D-1\\MN-1-3:BEHIND"));
    EXPECT_TRUE(has("D-1\\MFM-1-3:0011"));
    EXPECT_TRUE(has("D-1\\VND-1-5:behind"));
    EXPECT_TRUE(s_->first("B").mask.empty() || s_->first("B").mask == "FW");
}

TEST_F(KeptWritingTest, EveryFurtherStatementOfACountThatSeveralPassesReadIsKept) {
    start(2009, plainFormat(16, 4) + counterAt(1, 4) + Commands{"ISF\\N:7", "ISF\\N:9"},
          listOf({measurementAt("A", 2)}));
    save();
    EXPECT_TRUE(has("P-1\\ISF\\N:1"));
    EXPECT_TRUE(has("P-1\\ISF\\N:7"));
    EXPECT_TRUE(has("P-1\\ISF\\N:9"));
}

TEST_F(KeptWritingTest, CountersAndSubframesTakeWhatIsUnknownAlong) {
    auto format =
        plainFormat(16, 4) + counterAt(1, 4,
                                       Commands{"SF\\N-1:2"} + subframeAt(1, "GONE", 3, 4) +
                                           subframeAt(2, "STAYS", 4, 4) +
                                           Commands{"SF3-1-2:", "SF5-1-2:7", "SF1-1-3:BEHIND"});
    start(2009, format, listOf({measurementAt("A", 2)}));
    save();
    EXPECT_TRUE(has("P-1\\SF5-1-2:7"));
    ASSERT_TRUE(deleteSubframe(s_->format, s_->parent, 3, true));
    save();
    EXPECT_TRUE(has("P-1\\SF1-1-1:STAYS"));
    EXPECT_TRUE(has("P-1\\SF5-1-1:7")) << "it is of that subframe";
    EXPECT_TRUE(has("P-1\\SF1-1-3:BEHIND"));
}

TEST_F(KeptWritingTest, ASubframeTakesWhatIsUnknownAlongToAnotherCounter) {
    auto counters =
        counterAt(1, 4,
                  Commands{"SF\\N-1:2"} + subframeAt(1, "STAYS", 3, 4) +
                      subframeAt(2, "MOVES", 4, 4) + Commands{"SF5-1-1:6", "SF5-1-2:7"});
    for (auto command : counterAt(2, 4, {"SF\\N-1:0"})) {
        counters.push_back(replaceAll(replaceAll(command, "-1:", "-2:"), ":SFID", ":OTHER"));
    }
    std::replace(counters.begin(), counters.end(), std::string("ISF\\N:1"),
                 std::string("ISF\\N:2"));
    start(2009, plainFormat(16, 4) + counters, listOf({measurementAt("A", 2)}));
    auto editing = subframeEditing(s_->format, 4);
    ASSERT_EQ(editing.record.name, "MOVES");
    editing.counter = 1;
    editing.record.name = "RENAMED";
    ASSERT_TRUE(saveSubframeEditing(s_->format, s_->parent, 4, editing));
    save();
    EXPECT_TRUE(has("P-1\\SF1-1-1:STAYS"));
    EXPECT_TRUE(has("P-1\\SF5-1-1:6"));
    EXPECT_TRUE(has("P-1\\SF1-2-1:RENAMED"));
    EXPECT_TRUE(has("P-1\\SF5-2-1:7"));
    // The counter that it came from may be gone by now.
    editing = subframeEditing(s_->format, 3);
    editing.counter = 1;
    ASSERT_TRUE(saveSubframeEditing(s_->format, s_->parent, 3, editing));
    ASSERT_TRUE(deleteIdCounter(s_->format, nullptr, 1));
    save();
    EXPECT_TRUE(has("P-1\\SF1-2-2:STAYS"));
    EXPECT_TRUE(has("P-1\\SF5-2-2:6"));
    EXPECT_TRUE(has("P-1\\SF5-2-1:7"));
}

TEST_F(KeptWritingTest, ARowBehindTheCountMakesRoomForANewOne) {
    start(2009,
          plainFormat(16, 4) + counterAt(1, 4) +
              Commands{"AEF\\N:0", "AEF\\DLN-1:BEHIND", "AEF5-1-1:8", "AEF\\OWN-1:own"},
          listOf({measurementAt("A", 2)}));
    AsyncFormat record;
    record.dataLinkName = "NEW";
    record.supercom = "NO";
    record.locations.push_back({5, {{1, 1, 4}}});
    s_->format.asyncFormats.push_back(record);
    ASSERT_TRUE(placeAsyncSlots(s_->format, s_->parent, 1, record.locations.front(), "FW"));
    save();
    EXPECT_TRUE(has("P-1\\AEF\\DLN-1:NEW"));
    EXPECT_TRUE(has("P-1\\AEF\\DLN-2:BEHIND"));
    EXPECT_TRUE(has("P-1\\AEF5-2-1:8"));
    EXPECT_TRUE(has("P-1\\AEF\\OWN-1:own")) << "of no known list: it stays as it is";
}

TEST_F(KeptWritingTest, ABusStreamKeepsWhatOnlyOtherTypesHave) {
    start(2009, plainFormat(128, 1, "1553") +
                    Commands{"ISF1-1:SFID", "AEF\\DLN-1:INNER", "D3:E", "MFF\\MFN-1:2"});
    save();
    for (const auto* const command :
         {"P-1\\ISF1-1:SFID", "P-1\\AEF\\DLN-1:INNER", "P-1\\MFF\\MFN-1:2"}) {
        EXPECT_TRUE(has(command)) << command;
    }
}

TEST_F(KeptWritingTest, ABusThatBecomesAFrameKeepsTheMeasurementsOfItsName) {
    start(2009, plainFormat(128, 1, "1553"), listOf({measurementAt("A", 2, {"VND@:own"})}));
    EXPECT_FALSE(s_->format.kept.rows.empty());
    save();
    EXPECT_TRUE(s_->ui.boxes.empty()) << "the group is not written";
    EXPECT_TRUE(has("D-1\\MF-1-1:2"));
    s_->format.typeFormat = "TWO";
    s_->format.isBusStream = false;
    save();
    for (const auto* const command :
         {"D-1\\MN\\N-1:1", "D-1\\MN-1-1:A", "D-1\\MF-1-1:2", "D-1\\VND-1-1:own"}) {
        EXPECT_TRUE(has(command)) << command;
    }
}

TEST_F(KeptWritingTest, TaggedDataTakesItsCommandsAlong) {
    const Commands tagged = {"LT@:TD",    "TD\\N@:1", "TD1@:16",  "TD2@-1:5",
                             "TD3@-1:FW", "TD4@-1:D", "TD5@-1:1", "VND@-1:own"};
    start(2011, plainFormat(16, 4) + counterAt(1, 4),
          listOf({wordFrame("RANGE", 5, 1, 1, 4), Commands{"MN@:TAGGED"} + tagged}));
    save();
    EXPECT_TRUE(has("D-1\\MN-1-1:TAGGED"));
    EXPECT_TRUE(has("D-1\\VND-1-1-1:own"));
}

TEST_F(KeptWritingTest, ACommentStaysInFrontOfACommandThatIsKept) {
    start(2009, plainFormat(16, 4), listOf({measurementAt("A", 2)}));
    s_->write("[kavu]PCMMEAS.D01",
              s_->read("[kavu]PCMMEAS.D01") + "COMMENT: of the next one;\r\nD-1\\VND-1-1:own;\r\n");
    ASSERT_TRUE(s_->reload());
    s_->ui.otherwise = Button::Yes;
    save();
    const auto at = std::find(lines_.begin(), lines_.end(), "D-1\\VND-1-1:own;");
    ASSERT_NE(at, lines_.end());
    EXPECT_EQ(*(at - 1), "COMMENT: of the next one;");
}

TEST_F(KeptWritingTest, AFailureKeepsBothGroupsAsTheyWere) {
    start(2009, plainFormat(16, 4) + Commands{"VND:1"}, listOf({measurementAt("A", 2)}));
    const auto before = s_->read("[kavu]PCMFMT.P01");
    std::filesystem::create_directory(s_->store.pathOf("[kavu]PCMMEAS.D01") + ".new");
    s_->format.encryption = "E";
    s_->format.changed = true;
    EXPECT_FALSE(savePcmFormat(s_->format, s_->parent));
    EXPECT_EQ(s_->read("[kavu]PCMFMT.P01"), before);
    EXPECT_FALSE(s_->format.kept.empty());
}

}  // namespace
}  // namespace kavu
