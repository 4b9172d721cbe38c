#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::StreamFixture;

IdCounter counting(int initial, int start, int end, const char* direction) {
    IdCounter counter;
    counter.initialValue = std::to_string(initial);
    counter.startFrame = std::to_string(start);
    counter.endFrame = std::to_string(end);
    counter.countDirection = direction;
    return counter;
}

TEST(IdCounterEdit, ANewCounterHasItsDefaults) {
    StreamFixture f;
    f.format.setWordLength(9, 12);
    ASSERT_EQ(createIdCounter(f.format, f.parent, 9), 0);
    const auto& counter = f.counter(0);
    EXPECT_EQ(counter.name, "SFID");
    EXPECT_EQ(counter.type, "ID");
    EXPECT_EQ(counter.wordLength, "12");
    EXPECT_EQ(counter.counterLength, "12");
    EXPECT_EQ(counter.msbStartBit, "1");
    EXPECT_EQ(counter.initialValue, "1");
    EXPECT_EQ(counter.startFrame, "1");
    EXPECT_EQ(counter.endValue, "8");
    EXPECT_EQ(counter.endFrame, "8");
    EXPECT_EQ(counter.countDirection, "INC");
    EXPECT_TRUE(counter.transferOrder.empty());
    EXPECT_EQ(f.format.wordType(9), WordType::IdCounter);
    EXPECT_EQ(f.format.cells().cellCount(9), 1);
    EXPECT_TRUE(f.format.changed);
}

TEST(IdCounterEdit, ANewCounterTakesAHoleFirst) {
    StreamFixture f;
    ASSERT_EQ(createIdCounter(f.format, nullptr, 5), 0);
    ASSERT_EQ(createIdCounter(f.format, nullptr, 6), 1);
    ASSERT_TRUE(deleteIdCounter(f.format, nullptr, 5));
    EXPECT_EQ(f.format.wordType(5), WordType::Minor);
    EXPECT_EQ(countIdCounters(f.format), 1);
    EXPECT_EQ(createIdCounter(f.format, nullptr, 7), 0);
    EXPECT_EQ(f.counter(0).name, "SFID");
    EXPECT_EQ(wordOfIdCounter(f.format, 0), 7);
}

TEST(IdCounterEdit, TheHundredthCounterIsRefused) {
    StreamFixture f(2009, 128);
    for (int fwp = 1; fwp <= 99; ++fwp) {
        ASSERT_TRUE(createIdCounter(f.format, f.parent, fwp));
    }
    EXPECT_FALSE(createIdCounter(f.format, f.parent, 100));
    EXPECT_EQ(f.ui.countBoxes(177), 1);
    EXPECT_EQ(f.format.idCounters.size(), 99U);
    EXPECT_EQ(f.format.wordType(100), WordType::Minor);
}

TEST(IdCounterEdit, NoCounterOutsideTheFrame) {
    StreamFixture f;
    for (const int fwp : {-1, 0, 32, 5000}) {
        EXPECT_FALSE(createIdCounter(f.format, f.parent, fwp)) << fwp;
    }
}

TEST(IdCounterEdit, GeneratedNamesCountUp) {
    StreamFixture f;
    EXPECT_EQ(generateIdCounterName(f.format), "SFID");
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    EXPECT_EQ(generateIdCounterName(f.format), "SFID2");
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 6));
    EXPECT_EQ(generateIdCounterName(f.format), "SFID3");
}

TEST(IdCounterEdit, ACounterStaysWhileASubframeRefersToIt) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 7, .name = "SUB"}));
    EXPECT_FALSE(deleteIdCounter(f.format, f.parent, 5));
    ASSERT_EQ(f.ui.countBoxes(360), 1);
    EXPECT_EQ(f.ui.boxes.back().text,
              "You cannot delete this ID Counter. SUB references this ID Counter.");
    EXPECT_EQ(f.ui.boxes.back().titleId, 130);
    EXPECT_EQ(countIdCounters(f.format), 1);
    // Silent, and still refused.
    EXPECT_FALSE(deleteIdCounter(f.format, nullptr, 5));
    ASSERT_TRUE(deleteSubframe(f.format, nullptr, 7, true));
    EXPECT_TRUE(deleteIdCounter(f.format, nullptr, 5));
}

TEST(IdCounterEdit, DeletingACounterAsksAndTakesItsMeasurements) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    f.place(5, 1, "COUNT");
    f.format.changed = false;
    f.ui.byId[129] = Button::No;
    EXPECT_FALSE(deleteIdCounter(f.format, f.parent, 5));
    EXPECT_TRUE(f.format.hasMeasurement("count"));
    EXPECT_FALSE(f.format.changed);
    EXPECT_EQ(f.boxTitle(129), 128);
    f.ui.byId[129] = Button::Yes;
    EXPECT_TRUE(deleteIdCounter(f.format, f.parent, 5));
    EXPECT_FALSE(f.format.hasMeasurement("count"));
    EXPECT_TRUE(f.format.changed);
}

TEST(IdCounterEdit, AWordWithoutCounterHasNoneToDelete) {
    StreamFixture f;
    EXPECT_FALSE(deleteIdCounter(f.format, f.parent, 5));
    EXPECT_EQ(f.ui.countBoxes(359), 1);
}

TEST(IdCounterEdit, HiddenSubframesThatHoldNothingGoWithTheCounter) {
    StreamFixture f(2011);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    makeHiddenSubframes(f.format, nullptr);
    f.place(9, 2, "A", "WDFR");
    EXPECT_FALSE(deleteIdCounter(f.format, f.parent, 5));
    EXPECT_EQ(f.ui.boxes.back().text,
              "You cannot delete this ID Counter. Frame Word Position 9 references this ID "
              "Counter.");
    f.format.removeMeasurement("A");
    f.ui.byId[129] = Button::Yes;
    EXPECT_TRUE(deleteIdCounter(f.format, f.parent, 5));
    for (int fwp = 1; fwp < 32; ++fwp) {
        EXPECT_EQ(f.format.wordType(fwp), WordType::Minor) << fwp;
    }
    EXPECT_FALSE(f.format.findSubframe("SF-9").has_value());
}

TEST(IdCounterEdit, HiddenSubframesInUseStayWhenAnotherCounterIsLeft) {
    StreamFixture f(2011);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 6));
    makeHiddenSubframes(f.format, nullptr);
    f.place(9, 2, "A", "WDFR");
    ASSERT_TRUE(deleteIdCounter(f.format, nullptr, 5));
    ASSERT_NE(f.format.subframeOfWord(9), nullptr);
    EXPECT_EQ(f.format.subframeOfWord(9)->name, "SF-9");
    EXPECT_EQ(f.format.subframeOfWord(10), nullptr);
    // A new counter takes the entry, and what is hidden there stays.
    ASSERT_EQ(createIdCounter(f.format, nullptr, 10), 0);
    EXPECT_EQ(f.format.subframeOfWord(9)->name, "SF-9");
}

TEST(IdCounterEdit, ACounterOnAWordOfAHiddenSubframeTakesTheWord) {
    StreamFixture f(2011);
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    makeHiddenSubframes(f.format, nullptr);
    ASSERT_TRUE(canCreateAt(f.format, f.parent, 9));
    ASSERT_EQ(createIdCounter(f.format, f.parent, 9), 1);
    EXPECT_EQ(f.format.cells().cellCount(9), 1);
    EXPECT_FALSE(f.format.findSubframe("SF-9").has_value());
}

TEST(IdCounterEdit, TheEndValueFollowsFromInitialValueDirectionAndFrames) {
    EXPECT_EQ(expectedEndValue(counting(1, 1, 8, "INC")), 8);
    EXPECT_EQ(expectedEndValue(counting(0, 3, 8, "INC")), 5);
    EXPECT_EQ(expectedEndValue(counting(8, 1, 8, "DEC")), 1);
    EXPECT_EQ(expectedEndValue(counting(3, 1, 8, "DEC")), -4);
    EXPECT_EQ(expectedEndValue(counting(3, 1, 8, "XYZ")), std::nullopt);
    auto counter = counting(3, 1, 8, "DEC");
    updateEndValue(counter);
    EXPECT_EQ(counter.endValue, "1");
    counter = counting(3, 1, 8, "XYZ");
    counter.endValue = "7";
    updateEndValue(counter);
    EXPECT_EQ(counter.endValue, "7");
}

TEST(IdCounterEdit, TheStartBitIsAtLeastOne) {
    StreamFixture f;
    IdCounter counter;
    EXPECT_FALSE(setMsbStartBit(f.format, f.parent, counter, 0));
    EXPECT_EQ(f.ui.countBoxes(366), 1);
    EXPECT_TRUE(counter.msbStartBit.empty());
    EXPECT_TRUE(setMsbStartBit(f.format, f.parent, counter, 1));
    EXPECT_EQ(counter.msbStartBit, "1");
}

TEST(IdCounterEdit, TheFramesKeepTheirOrderAndTheFormatsLimits) {
    StreamFixture f;
    auto counter = counting(1, 1, 8, "INC");
    EXPECT_FALSE(setStartFrame(f.format, f.parent, counter, 0));
    EXPECT_EQ(f.ui.boxes.back().text,
              "The starting subframe number this ID COUNTER is invalid.\n\nThis value cannot be "
              "less than 1 or greater than 8.");
    EXPECT_FALSE(setEndFrame(f.format, f.parent, counter, 9));
    EXPECT_EQ(f.ui.countBoxes(363), 2);
    EXPECT_TRUE(setEndFrame(f.format, f.parent, counter, 5));
    EXPECT_EQ(counter.endValue, "5");
    EXPECT_FALSE(setStartFrame(f.format, f.parent, counter, 5));
    EXPECT_FALSE(setEndFrame(f.format, f.parent, counter, 1));
    EXPECT_EQ(f.ui.countBoxes(364), 2);
    EXPECT_TRUE(setStartFrame(f.format, f.parent, counter, 4));
    EXPECT_EQ(counter.endValue, "2");
    EXPECT_EQ(counter.startFrame, "4");
    EXPECT_EQ(counter.endFrame, "5");
}

TEST(IdCounterEdit, LeavingTheFormChecksNameAndLength) {
    StreamFixture f;
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 5));
    ASSERT_TRUE(createIdCounter(f.format, nullptr, 6));
    ASSERT_TRUE(createSubframe(f.format, nullptr, {.fwp = 7, .name = "S"}));
    f.format.changed = false;
    IdCounter record = f.counter(0);
    record.subframes.clear();
    record.name = "";
    EXPECT_FALSE(saveIdCounter(f.format, f.parent, 5, record));
    EXPECT_EQ(f.ui.countBoxes(361), 1);
    record.name = "SFID2";
    EXPECT_FALSE(saveIdCounter(f.format, f.parent, 5, record));
    EXPECT_EQ(f.ui.boxes.back().text,
              "Invalid ID Counter name entered. Another ID counter at frame word position #6 has "
              "the same name");
    record.name = "OTHER";
    record.counterLength = "17";
    EXPECT_FALSE(saveIdCounter(f.format, f.parent, 5, record));
    EXPECT_EQ(f.ui.boxes.back().text,
              "The 'ID Counter Length' of this ID COUNTER is too large. You may not enter a number "
              "greater than 16.");
    EXPECT_FALSE(f.format.changed);
    record.counterLength = "16";
    EXPECT_TRUE(saveIdCounter(f.format, f.parent, 5, record));
    EXPECT_EQ(f.counter(0).name, "OTHER");
    EXPECT_EQ(f.subframe(0, 0).name, "S");
    EXPECT_TRUE(f.format.changed);
    EXPECT_FALSE(saveIdCounter(f.format, f.parent, 20, record));
    EXPECT_EQ(f.ui.countBoxes(359), 1);
}

}  // namespace
}  // namespace kavu
