#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/model/FrameEditLists.h"

namespace kavu {
namespace {

using test::StreamFixture;

/// Measurements W1, W2 and so on in every plain word of a small frame.
struct SmallFrame : StreamFixture {
    explicit SmallFrame(int words = 12) : StreamFixture(2009, words) {
        for (int fwp = 1; fwp < words; ++fwp) {
            place(fwp, 1, "W" + std::to_string(fwp));
        }
        format.recalculateBitsPerMinorFrame();
        format.changed = false;
    }
    [[nodiscard]] std::string row() const {
        std::string text;
        for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
            text += nameAt(*this, fwp) + " ";
        }
        return text;
    }
};

TEST(FrameEditWords, TwoWordsInFrontMoveEverythingUpByTwo) {
    StreamFixture f;
    Measurement supercom;
    supercom.name = "M";
    supercom.locationType = "MFSC";
    supercom.locationMode = "I";
    supercom.locationCount = 2;
    supercom.interval = 10;
    f.place(5, 1, supercom);
    f.place(15, 1, supercom);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    f.format.setWordLength(5, 12);
    f.ui.integers = {0, 2};
    ASSERT_TRUE(insertFwps(f.format, f.parent));
    EXPECT_EQ(f.format.wordsPerMinorFrame, 34);
    EXPECT_EQ(nameAt(f, 7), "M");
    EXPECT_EQ(nameAt(f, 17), "M");
    EXPECT_EQ(nameAt(f, 5), "");
    EXPECT_EQ(f.format.wordLength(7), 12);
    EXPECT_EQ(f.format.wordLength(1), 16);
    EXPECT_EQ(f.format.wordType(32), WordType::IdCounter);
    EXPECT_EQ(f.format.idCounterOfWord(32), &f.format.idCounters[0]);
    EXPECT_EQ(f.format.cells().measurement(f.format.cellAt(7, 1)).interval, 10);
    EXPECT_EQ(f.format.wordType(0), WordType::Sync);
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(FrameEditWords, WordsCanBeInsertedBehindTheLastOne) {
    SmallFrame f(4);
    ASSERT_TRUE(insertFwps(f.format, f.parent, 3, 2));
    EXPECT_EQ(f.row(), "W1 W2 W3   ");
    EXPECT_EQ(f.format.bitsPerMinorFrame, 5 * 16 + f.format.wordLength(0));
}

TEST(FrameEditWords, InsertingRefusesPositionsAndCounts) {
    SmallFrame f;
    struct Row {
        int after, count, message;
    };
    for (const auto& [after, count, message] :
         {Row{-1, 1, 160}, Row{12, 1, 160}, Row{1, 0, 161}, Row{1, -3, 161}, Row{1, 2037, 189},
          Row{1, INT32_MAX, 189}}) {
        f.ui.boxes.clear();
        EXPECT_FALSE(insertFwps(f.format, f.parent, after, count));
        ASSERT_EQ(f.ui.boxes.size(), 1U);
        EXPECT_EQ(f.ui.boxes[0].id, message);
        EXPECT_EQ(f.format.wordsPerMinorFrame, 12);
    }
    EXPECT_FALSE(f.format.changed);
    f.ui.boxes.clear();
    f.ui.integers = {12L};
    EXPECT_FALSE(insertFwps(f.format, f.parent)) << "the count is not asked for";
    EXPECT_EQ(f.ui.countBoxes(160), 1);
    f.ui.integers = {1L, std::nullopt};
    EXPECT_FALSE(insertFwps(f.format, f.parent));
    EXPECT_FALSE(insertFwps(f.format, nullptr));
}

TEST(FrameEditWords, AStreamOfClassOneHasNoMoreWordsThanItMay) {
    StreamFixture f(2009, 1024);
    f.format.typeFormat = "ONE";
    f.place(3, 1, "A");
    EXPECT_FALSE(insertFwps(f.format, f.parent, 0, 1));
    EXPECT_EQ(f.ui.countBoxes(223), 1);
    EXPECT_EQ(nameAt(f, 3), "A");
}

TEST(FrameEditWords, ANoInTheMiddleKeepsThatWordAndGoesOn) {
    SmallFrame f;
    f.ui.integers = {3, 5};
    f.ui.queued = {Button::Yes, Button::No, Button::Yes};
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}), 2);
    EXPECT_EQ(f.row(), "W1 W2 W4 W6 W7 W8 W9 W10 W11 ");
    EXPECT_EQ(f.format.wordsPerMinorFrame, 10);
    ASSERT_EQ(f.ui.boxes.size(), 3U);
    EXPECT_EQ(f.ui.boxes[0].text, "Measurement 'W3'?");
    EXPECT_EQ(f.ui.boxes[1].text, "Measurement 'W4'?");
    EXPECT_EQ(f.ui.boxes[0].title, "Delete This Entry?");
    EXPECT_FALSE(f.format.hasMeasurement("W3"));
}

TEST(FrameEditWords, AnAsyncFormatIsAskedForByItsName) {
    StreamFixture f;
    f.format.asyncFormats.resize(1);
    f.format.asyncFormats[0].dataLinkName = "Inner";
    f.format.asyncFormats[0].locations = {{4, {{1, 1, 8}}}};
    ASSERT_TRUE(placeAsyncSlots(f.format, nullptr, 1, f.format.asyncFormats[0].locations[0], "FW"));
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, 4, 4), 0);
    EXPECT_EQ(f.ui.boxes.at(0).text, "Async format definition 'Inner'?");
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, 4, 4), 1);
    EXPECT_EQ(f.format.asyncCount(), 0);
}

TEST(FrameEditWords, CountersAndSubframesGoByTheirOwnQuestions) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 4));
    ASSERT_TRUE(
        createSubframe(f.format, nullptr, {.fwp = 5, .name = "S", .locations = 2, .interval = 10}));
    f.place(5, 3, "Part", "SF");
    f.place(20, 1, "After");
    f.ui.otherwise = Button::Yes;
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, 4, 5), 1) << "the counter is still referred to";
    EXPECT_EQ(f.ui.countBoxes(360), 1);
    EXPECT_EQ(f.ui.countBoxes(123), 1);
    EXPECT_EQ(f.format.wordType(4), WordType::IdCounter);
    EXPECT_FALSE(f.format.hasMeasurement("Part"));
    EXPECT_EQ(f.format.wordType(14), WordType::Minor) << "the subframe's other word";
    EXPECT_EQ(nameAt(f, 19), "After");
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, 4, 4), 1);
    EXPECT_EQ(f.ui.countBoxes(129), 1);
    EXPECT_EQ(countIdCounters(f.format), 0);
    EXPECT_EQ(nameAt(f, 18), "After");
}

TEST(FrameEditWords, DeletingRefusesPositions) {
    SmallFrame f;
    for (const auto& [first, last] : {std::pair{0, 3}, {12, 12}, {5, 4}, {5, 12}}) {
        f.ui.boxes.clear();
        EXPECT_EQ(deleteFwps(f.format, f.parent, {}, first, last), std::nullopt);
        EXPECT_EQ(f.ui.countBoxes(160), 1);
    }
    f.ui.boxes.clear();
    f.ui.integers = {0L};
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}), std::nullopt);
    EXPECT_EQ(f.ui.countBoxes(160), 1);
    EXPECT_EQ(deleteFwps(f.format, nullptr, {}), std::nullopt);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 12);
    EXPECT_FALSE(f.format.changed);
}

TEST(FrameEditWords, ABusStreamKeepsItsLeastNumberOfWords) {
    StreamFixture f(2009, 129);
    f.format.isBusStream = true;
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, 1, 3), 1);
    EXPECT_EQ(f.ui.countBoxes(222), 1);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 128);
}

TEST(FrameEditWords, WordsThreeToFiveAfterTenPutSixAtThreeAndThreeAtEight) {
    SmallFrame f;
    f.ui.integers = {3, 5, 10};
    ASSERT_TRUE(moveFwps(f.format, f.parent));
    EXPECT_EQ(nameAt(f, 3), "W6");
    EXPECT_EQ(nameAt(f, 8), "W3");
    EXPECT_EQ(f.row(), "W1 W2 W6 W7 W8 W9 W10 W3 W4 W5 W11 ");
    EXPECT_TRUE(f.format.changed);
}

TEST(FrameEditWords, ABlockCanMoveDown) {
    SmallFrame f;
    ASSERT_TRUE(moveFwps(f.format, f.parent, 8, 9, 2));
    EXPECT_EQ(f.row(), "W1 W2 W8 W9 W3 W4 W5 W6 W7 W10 W11 ");
}

TEST(FrameEditWords, MovingRefusesTheBlockItselfAndPositionsOutside) {
    SmallFrame f;
    struct Row {
        int first, last, after, message;
    };
    for (const auto& [first, last, after, message] :
         {Row{0, 1, 5, 160}, Row{3, 2, 5, 160}, Row{3, 12, 5, 160}, Row{3, 5, 3, 228},
          Row{3, 5, 5, 228}, Row{3, 5, 0, 228}, Row{3, 5, 12, 228}}) {
        f.ui.boxes.clear();
        f.ui.integers = {first, last, after};
        EXPECT_FALSE(moveFwps(f.format, f.parent));
        ASSERT_EQ(f.ui.boxes.size(), 1U);
        EXPECT_EQ(f.ui.boxes[0].id, message);
        EXPECT_FALSE(moveFwps(f.format, nullptr, first, last, after));
    }
    EXPECT_EQ(f.row(), SmallFrame().row());
    EXPECT_FALSE(f.format.changed);
}

TEST(FrameEditWords, SubframesMoveWithTheirCellsAndAreNotRenumbered) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 30));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
    f.place(5, 3, "A", "SF");
    f.place(5, 3, "B", "SF");
    clearMeasurement(f.format, "A");
    ASSERT_TRUE(moveFwps(f.format, f.parent, 5, 5, 10));
    EXPECT_EQ(f.wordsOf("S"), std::vector<int>{10});
    EXPECT_EQ(f.format.cells().cellCount(10), 4);
    EXPECT_EQ(nameAt(f, 10, 3), "") << "the free cell in front stays in front";
    EXPECT_TRUE(f.format.findInCell(10, 3, "B"));
    EXPECT_FALSE(f.format.hasMeasurement("\x01"));
}

TEST(FrameEditWords, PromptsStartAtTheSelectedWords) {
    test::StreamFixture f;
    const auto initials = [&] {
        std::vector<long> numbers;
        for (const auto& prompt : std::exchange(f.ui.integerPrompts, {})) {
            numbers.push_back(prompt.initial);
        }
        return numbers;
    };
    f.ui.integers = {5, std::nullopt};
    EXPECT_FALSE(insertFwps(f.format, f.parent, {4, 6}));
    EXPECT_EQ(initials(), (std::vector<long>{6, 1}));
    f.ui.integers = {4, std::nullopt};
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, SelectedWords{4, 6}), std::nullopt);
    EXPECT_EQ(initials(), (std::vector<long>{4, 6}));
    f.ui.integers = {5, std::nullopt};
    EXPECT_EQ(deleteFwps(f.format, f.parent, {}, SelectedWords{4, 6}), std::nullopt);
    EXPECT_EQ(initials(), (std::vector<long>{4, 5})) << "the user has begun elsewhere";
    f.ui.integers = {1, 6, std::nullopt};
    EXPECT_FALSE(moveFwps(f.format, f.parent, {0, 6}));
    EXPECT_EQ(initials(), (std::vector<long>{1, 6, 1})) << "the sync word is never moved";
}

}  // namespace
}  // namespace kavu
