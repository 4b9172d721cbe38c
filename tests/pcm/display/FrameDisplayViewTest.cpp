#include "pcm/StreamFixture.h"
#include "pcm/display/FrameDisplayView.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;

struct ViewFixture : StreamFixture {
    ViewFixture() : StreamFixture(2009, 32, 16) {
        auto commands = plainCounter(1, 30, 16, "FRAMES");
        for (const auto* command : {"ISF\\N:1", "SF\\N-1:1", "SF1-1-1:ENGINE", "SF2-1-1:NO",
                                    "SF4-1-1-1:5", "SF6-1-1:4"}) {
            commands.emplace_back(command);
        }
        EXPECT_TRUE(read(commands));
    }
    FrameDisplay display{format};
    FrameView view{display};
};

TEST(FrameView, TheHeightIsHalfTheWidthAndFiveGivesTwo) {
    ViewFixture f;
    EXPECT_EQ(f.view.cellWidth(), 30);
    EXPECT_EQ(f.view.cellHeight(), 15);
    EXPECT_TRUE(f.view.setCellWidth(5));
    EXPECT_EQ(f.view.cellHeight(), 2);
    EXPECT_FALSE(f.view.setCellWidth(3)) << "it is the least";
    EXPECT_EQ(f.view.cellWidth(), 5);
    EXPECT_TRUE(f.view.setCellWidth(1000));
    EXPECT_EQ(f.view.cellWidth(), 150);
}

TEST(FrameView, ZoomingOutAtNineEndsAtFive) {
    ViewFixture f;
    f.view.setCellWidth(9);
    EXPECT_TRUE(f.view.setCellWidth(f.view.cellWidth() - kZoomStep));
    EXPECT_EQ(f.view.cellWidth(), 5);
}

TEST(FrameView, EntriesOfTheZoomAreParts) {
    EXPECT_EQ(widthOfPercent(25), 37);
    EXPECT_EQ(widthOfPercent(50), 75);
    EXPECT_EQ(widthOfPercent(75), 112);
    EXPECT_EQ(widthOfPercent(100), 150);
    EXPECT_EQ(zoomPercent(30), "20");
    EXPECT_EQ(zoomPercent(37), "25");
    EXPECT_EQ(zoomPercent(5), "3");
    EXPECT_EQ(zoomPercent(150), "100");
}

TEST(FrameView, ACellIsFoundUnderAPoint) {
    ViewFixture f;
    EXPECT_EQ(f.view.cellAtPoint(0, 0), (FramePlace{0, 1}));
    EXPECT_EQ(f.view.cellAtPoint(29, 14), (FramePlace{0, 1}));
    EXPECT_EQ(f.view.cellAtPoint(30, 15), (FramePlace{1, 2}));
    EXPECT_FALSE(f.view.cellAtPoint(-1, 0));
    EXPECT_FALSE(f.view.cellAtPoint(32 * 30, 0));
    EXPECT_FALSE(f.view.cellAtPoint(0, 16 * 15));
    f.view.firstWord = 4;
    f.view.scrolledRows = 3;
    EXPECT_EQ(f.view.cellAtPoint(31, 16), (FramePlace{5, 5}));
}

TEST(FrameView, APlaceBelowTheDepthOfItsWordCanNotBeSelected) {
    ViewFixture f;
    ASSERT_TRUE(f.view.select({5, 4}));
    EXPECT_FALSE(f.view.select({5, 5}));
    EXPECT_EQ(f.view.selected(), (FramePlace{5, 4}));
    f.display.showAllCells = true;
    EXPECT_FALSE(f.view.select({5, 5})) << "it is shown, and still no place of its own";
    EXPECT_FALSE(f.view.select({32, 1}));
    EXPECT_FALSE(f.view.select({}));
    EXPECT_EQ(f.view.selectable({5, 6}), (FramePlace{5, 2}));
    EXPECT_EQ(f.view.selectable({5, 17}), FramePlace{});
    EXPECT_EQ(f.view.selectable({32, 1}), FramePlace{});
}

TEST(FrameView, KeysMoveWithinTheFrame) {
    ViewFixture f;
    struct Row {
        FramePlace from;
        FrameMove move;
        FramePlace to;
    };
    for (const auto& row : {
             Row{{3, 3}, FrameMove::Left, {2, 3}},
             Row{{0, 3}, FrameMove::Left, {0, 3}},
             Row{{3, 3}, FrameMove::Right, {4, 3}},
             Row{{31, 3}, FrameMove::Right, {31, 3}},
             Row{{3, 1}, FrameMove::Up, {3, 1}},
             Row{{3, 16}, FrameMove::Down, {3, 16}},
             Row{{4, 9}, FrameMove::Right, {5, 4}},  // not below the depth of the word
             Row{{5, 4}, FrameMove::Down, {5, 4}},
             Row{{7, 7}, FrameMove::RowBegin, {0, 7}},
             Row{{7, 7}, FrameMove::RowEnd, {31, 7}},
             Row{{7, 7}, FrameMove::FirstCell, {0, 1}},
             Row{{7, 7}, FrameMove::LastCell, {31, 16}},
             Row{{7, 7}, FrameMove::PageUp, {7, 2}},
             Row{{7, 7}, FrameMove::PageDown, {7, 12}},
             Row{{7, 7}, FrameMove::PageLeft, {0, 7}},
             Row{{7, 7}, FrameMove::PageRight, {17, 7}},
         }) {
        ASSERT_TRUE(f.view.select(row.from));
        EXPECT_EQ(f.view.moved(row.move, 10, 5), row.to)
            << row.from.word << " " << row.from.frame << " by " << static_cast<int>(row.move);
    }
}

TEST(FrameView, MovesThroughAShallowSubframeComeOutInTheirFrame) {
    ViewFixture f;
    ASSERT_TRUE(f.view.select({4, 9}));
    const auto move = [&](FrameMove by) {
        const int row = f.view.rowOfMoves();
        const auto to = f.view.moved(by, 10, 5);
        ASSERT_TRUE(f.view.select(to));
        if (isSideways(by)) {
            f.view.keepRowOfMoves(row);
        }
    };
    move(FrameMove::Right);
    EXPECT_EQ(f.view.selected(), (FramePlace{5, 4}));
    move(FrameMove::Right);
    EXPECT_EQ(f.view.selected(), (FramePlace{6, 9}));
    move(FrameMove::Left);
    move(FrameMove::Left);
    EXPECT_EQ(f.view.selected(), (FramePlace{4, 9}));
    move(FrameMove::Right);
    move(FrameMove::Up);
    EXPECT_EQ(f.view.selected(), (FramePlace{5, 3}));
    move(FrameMove::Right);
    EXPECT_EQ(f.view.selected(), (FramePlace{6, 3})) << "up was a choice of another frame";
}

TEST(FrameView, JumpsGoToTheEndOfARunOrToTheNextUsedCell) {
    ViewFixture f;
    f.place(8, 1, "A");
    f.place(9, 1, "B");
    f.place(10, 1, "C");
    f.place(5, 2, "D", "SF");
    f.place(5, 3, "E", "SF");
    struct Row {
        FramePlace from;
        FrameMove move;
        FramePlace to;
    };
    for (const auto& row : {
             Row{{8, 3}, FrameMove::JumpRight, {10, 3}},   // to the end of the run
             Row{{10, 3}, FrameMove::JumpRight, {30, 3}},  // to the counter
             Row{{12, 3}, FrameMove::JumpLeft, {10, 3}},
             Row{{10, 3}, FrameMove::JumpLeft, {8, 3}},
             Row{{8, 2}, FrameMove::JumpLeft, {5, 2}},     // across empty cells
             Row{{8, 9}, FrameMove::JumpLeft, {0, 9}},     // word 5 is empty at its last cell
             Row{{30, 3}, FrameMove::JumpRight, {31, 3}},  // none is left: the edge
             Row{{31, 3}, FrameMove::JumpRight, {31, 3}},
             Row{{5, 1}, FrameMove::JumpDown, {5, 2}},
             Row{{5, 2}, FrameMove::JumpDown, {5, 3}},
             Row{{5, 3}, FrameMove::JumpDown, {5, 4}},
             Row{{5, 4}, FrameMove::JumpUp, {5, 3}},
             Row{{5, 3}, FrameMove::JumpUp, {5, 2}},
             Row{{8, 9}, FrameMove::JumpDown, {8, 16}},
             Row{{8, 9}, FrameMove::JumpUp, {8, 1}},
         }) {
        ASSERT_TRUE(f.view.select(row.from));
        EXPECT_EQ(f.view.moved(row.move, 10, 5), row.to)
            << row.from.word << " " << row.from.frame << " by " << static_cast<int>(row.move);
    }
}

TEST(FrameView, ABlockIsSelectedByItsCorners) {
    ViewFixture f;
    EXPECT_TRUE(f.view.selectBlock({3, 1}, {4, 16}));
    EXPECT_EQ(f.view.block(), (FrameBlock{{3, 1}, {4, 16}}));
    EXPECT_FALSE(f.view.selectBlock({3, 1}, {5, 5})) << "below the depth";
    EXPECT_EQ(f.view.block(), (FrameBlock{{3, 1}, {4, 16}}));
}

TEST(FrameView, TheFirstKeySelectsTheCellAtTheTopLeft) {
    ViewFixture f;
    f.view.firstWord = 4;
    f.view.scrolledRows = 2;
    EXPECT_EQ(f.view.moved(FrameMove::Right, 10, 5), (FramePlace{4, 3}));
    EXPECT_EQ(f.view.moved(FrameMove::LastCell, 10, 5), (FramePlace{31, 16}));
}

TEST(FrameView, ScrollsAsLittleAsItTakes) {
    ViewFixture f;
    f.view.firstWord = 5;
    f.view.scrolledRows = 5;
    EXPECT_FALSE(f.view.scrollTo({5, 6}, 10, 5));
    EXPECT_FALSE(f.view.scrollTo({14, 10}, 10, 5));
    EXPECT_TRUE(f.view.scrollTo({15, 11}, 10, 5));
    EXPECT_EQ(f.view.firstWord, 6);
    EXPECT_EQ(f.view.scrolledRows, 6);
    EXPECT_TRUE(f.view.scrollTo({2, 1}, 10, 5));
    EXPECT_EQ(f.view.firstWord, 2);
    EXPECT_EQ(f.view.scrolledRows, 0);
    EXPECT_EQ(f.view.fullColumns(95), 3);
    EXPECT_EQ(f.view.fullRows(44), 2);
    EXPECT_EQ(f.view.fullColumns(3), 1);
}

TEST(FrameView, ABlockGrowsFromWhereItWasBegun) {
    ViewFixture f;
    ASSERT_TRUE(f.view.select({6, 5}));
    EXPECT_EQ(f.view.block(), (FrameBlock{{6, 5}, {6, 5}}));
    ASSERT_TRUE(f.view.select({4, 7}, true));
    ASSERT_TRUE(f.view.select({3, 6}, true));
    EXPECT_EQ(f.view.block(), (FrameBlock{{6, 5}, {3, 6}}));
    EXPECT_TRUE(f.view.block().holds({4, 6}));
    EXPECT_FALSE(f.view.block().holds({4, 7}));
    EXPECT_FALSE(f.view.block().holds({}));
    ASSERT_TRUE(f.view.select({3, 6}));
    EXPECT_EQ(f.view.block(), (FrameBlock{{3, 6}, {3, 6}}));
    f.view.clearSelection();
    EXPECT_FALSE(f.view.block().holds({3, 6}));
}

TEST(FrameView, ABlockIsCopiedAsLinesOfText) {
    ViewFixture f;
    f.place(4, 1, "A");
    f.place(5, 1, "B", "SF");
    EXPECT_EQ(f.view.blockText({{5, 6}, {4, 5}}), "A\t\nA\t\n") << "below the depth is nothing";
    EXPECT_EQ(f.view.blockText({{3, 1}, {5, 2}}), "\tA\tB\n\tA\t\n");
    f.display.showAllCells = true;
    EXPECT_EQ(f.view.blockText({{4, 5}, {5, 6}}), "A\tB\nA\t\n");
    EXPECT_EQ(f.view.blockText({}), "");
}

}  // namespace
}  // namespace kavu
