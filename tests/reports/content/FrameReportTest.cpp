#include "pcm/PlaceFragments.h"
#include "reports/ReportStage.h"
#include "reports/content/FrameReport.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;
using test::wordFrame;
using test::operator+;

constexpr auto kFrame = ReportKind::Frame;

/// Four frames of five words, counter in word 1: word 2 has A in all frames, word 3 has B and C in
/// frame 2, word 4 nothing.
struct FrameStage : ReportStage {
    FrameStage() {
        EXPECT_TRUE(load(plainFormat(5, 4) + counterAt(1, 4) + Commands{"D2:1000000"},
                         listOf({inEveryFrame("A", 2, 4), wordFrame("B", 3, 2, 0, 2),
                                 wordFrame("C", 3, 2, 0, 2)})));
    }
};

TEST(FrameReport, ShowsTheEntireFrameAndFoldsItsWords) {
    FrameStage t;
    EXPECT_EQ(t.body(kFrame),
              "     1    2 3 4\n"
              "1    SFID A    \n"
              "2         A B  \n"
              "            C  \n"
              "3         A    \n"
              "4         A    \n");
}

TEST(FrameReport, HasTheHeadWithPatternAndBitRate) {
    FrameStage t;
    t.document.path = "/somewhere/a.tma";
    t.set("MFReptTitle", "One\nLonger two");
    const auto text = t.text(kFrame);
    EXPECT_TRUE(
        text.starts_with("One\nLonger two\nTMATS File: a.tma\nData Link: PCM 1\n\n"
                         "==========\nDate: 01-02-2026  Time: 03:04:05\n"
                         "Frame Sync Pattern:\t"))
        << text;
    EXPECT_NE(text.find("\nBit Rate:\t\t1000000\n\n"), std::string::npos) << text;
}

TEST(FrameReport, ADocumentWithoutAFileIsAProject) {
    FrameStage t;
    EXPECT_NE(t.text(kFrame).find("\nTMATS Project: KAVU-9\n"), std::string::npos);
}

TEST(FrameReport, AMissingBitRateIsNotSpecified) {
    FrameStage t;
    t.format.bitRate.clear();
    EXPECT_NE(t.text(kFrame).find("Bit Rate:\t\t(not specified)\n"), std::string::npos);
}

TEST(FrameReport, StyleTwoShowsAWordDownToItsOwnDepthAndStopsAtTheLastFrameThatHoldsAnything) {
    ReportStage plain;
    ASSERT_TRUE(plain.load(plainFormat(3, 4), listOf({inEveryFrame("A", 1, 4)})));
    plain.set("MFReptStyle", "2");
    EXPECT_EQ(plain.body(kFrame), "     1 2\n1    A  \n");
    plain.set("MFReptCompact", "0");
    EXPECT_EQ(plain.body(kFrame), "     1 2\n1    A  \n");
    FrameStage hidden;  // A is in a word of a subframe of four frames
    hidden.set("MFReptStyle", "2");
    EXPECT_TRUE(hidden.body(kFrame).ends_with("4         A    \n")) << hidden.body(kFrame);
}

TEST(FrameReport, StyleThreeIsOneRowWithListsBelow) {
    FrameStage t;
    t.set("MFReptStyle", "3");
    EXPECT_EQ(t.body(kFrame),
              "     1            2 3         4\n"
              "     (ID Counter) A (Depth=4)  \n"
              "\nFWP 3:\n\t2=B\n\t2=C\n");
    t.set("MFReptCompact", "0");
    t.set("MFReptDupMes", "0");
    EXPECT_TRUE(t.body(kFrame).ends_with("\nFWP 3:\n\t1=\n\t2=B*\n\t3=\n\t4=\n"));
}

TEST(FrameReport, TwoMeasurementsAtOnePositionWithoutAllNamesAreTheFirstAndAStar) {
    FrameStage t;
    t.set("MFReptDupMes", "0");
    EXPECT_NE(t.body(kFrame).find("2         A B*  \n3"), std::string::npos) << t.body(kFrame);
}

TEST(FrameReport, AFrameWithoutMeasurementsGivesOnlyTheHead) {
    for (const auto* const style : {"1", "2", "3"}) {
        ReportStage t;
        ASSERT_TRUE(t.load(plainFormat(5, 2)));
        t.set("MFReptStyle", style);
        EXPECT_EQ(t.body(kFrame), "") << style;
    }
}

TEST(FrameReport, WithoutCompactingEmptyFramesStay) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(3, 2)));
    t.set("MFReptCompact", "0");
    EXPECT_EQ(t.body(kFrame), "     1 2\n1       \n2       \n");
}

TEST(FrameReport, CompactingDropsFramesThatAreEmptyInAllWords) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 4) + counterAt(1, 4), listOf({wordFrame("B", 3, 3, 0, 3)})));
    EXPECT_EQ(t.body(kFrame), "     1    2 3\n1    SFID    \n3           B\n");
}

TEST(FrameReport, BlocksFitThePageAndHaveAtLeastOneColumn) {
    FrameStage t;
    EXPECT_EQ(t.body(kFrame, {.pageWidth = 11}),
              "     1    2\n"
              "1    SFID A\n"
              "2         A\n"
              "3         A\n"
              "4         A\n"
              "\n"
              "     3 4\n"
              "1       \n"
              "2    B  \n"
              "     C  \n"
              "3       \n"
              "4       \n");
    EXPECT_TRUE(t.body(kFrame, {.pageWidth = 1}).starts_with("     1   \n1    SFID\n"));
}

TEST(FrameReport, APageBreakRepeatsTheHeadOfTheTable) {
    FrameStage t;
    const auto text = t.text(kFrame, {.pageWidth = 132, .pageLines = 12});
    EXPECT_NE(text.find("1    SFID A    \n2         A B  \n\f     1    2 3 4\n            C  \n"),
              std::string::npos)
        << text;
}

TEST(FrameReport, PaddingCountsShownCharactersAndNotBytes) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(3, 1), listOf({inEveryFrame("K\xC3\xB6ln", 1, 1)})));
    EXPECT_EQ(t.body(kFrame), "     1    2\n1    K\xC3\xB6ln  \n");
}

TEST(FrameReport, ASubframeIsNamedInFrameOneWhereNoMeasurementIs) {
    ReportStage t(2009);
    ASSERT_TRUE(t.load(plainFormat(4, 4) +
                       counterAt(1, 4, Commands{"SF\\N-1:1"} + test::subframeAt(1, "Sub", 2, 2))));
    EXPECT_EQ(t.body(kFrame), "     1    2   3\n1    SFID Sub  \n");
}

TEST(FrameReport, AHiddenSubframeWithTheSameNamesInAllFramesIsAPlainWord) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 2) + counterAt(1, 2),
                       listOf({wordFrame("A", 2, 1, 0, 1), wordFrame("B", 3, 1, 0, 1)})));
    test::placeFragments(t.format, &t.ui, "A",
                         {{.startWord = 2,
                           .endWord = 2,
                           .startFrame = 1,
                           .frameInterval = 1,
                           .endFrame = 2,
                           .mask = "FW"}});
    t.set("MFReptStyle", "3");
    const auto body = t.body(kFrame);
    EXPECT_TRUE(
        body.starts_with("     1            2 3        \n"
                         "     (ID Counter) A (Depth=2)\n"))
        << body;
}

TEST(DelimitedFrame, HasALineForEachFrameFoldedAndNoneIsLeftOut) {
    FrameStage t;
    EXPECT_EQ(t.delimited(kFrame), "SFID;A;;\n;A;B/C;\n;A;;\n;A;;\n");
    t.set("MFReptDupMes", "0");
    EXPECT_EQ(t.delimited(kFrame), "SFID;A;;\n;A;B*;\n;A;;\n;A;;\n");
}

TEST(FrameReport, AnOptionThatCannotBeReadDropsTheReport) {
    FrameStage t;
    t.set("MFReptDupMes", "2");
    EXPECT_EQ(t.text(kFrame), "(none)");
    EXPECT_EQ(t.delimited(kFrame), "(none)");
    ASSERT_EQ(t.ui.boxes.size(), 2U);
    EXPECT_EQ(t.ui.boxes.front().id, 404);
}

TEST(FrameReport, ACancelKeepsWhatWasMadeUntilThen) {
    FrameStage t;
    t.ui.cancelAtPoll = t.ui.polls + 2;
    const auto body = t.body(kFrame);
    EXPECT_TRUE(body.starts_with("     1    2 3 4\n1    SFID A    \n")) << body;
    EXPECT_EQ(body.find("\n4 "), std::string::npos);
}

}  // namespace
}  // namespace kavu
