// Blocks of the display: selecting, moving about, clipboard, fill, delete, and what else a day of
// work in it needs.
#include "app/framework/TableClipboard.h"
#include "app/pcm/DisplayStage.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/structure/AsyncEdit.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSplitter>
#include <QTreeView>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::DisplayStage;
using test::find;
using testing::HasSubstr;

std::string statusOf(MajorFrameWindow& window) {
    return toBytes(find<QLabel>(window, "cellStatus")->text());
}

void key(MajorFrameWindow& window, int which, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&DisplayStage::grid(window), static_cast<Qt::Key>(which), modifiers);
}

// --- Escape -----------------------------------------------------------------------------------

// As the display was designed Escape closed it, and with it all levels of the undo.
TEST(MajorFrameDaily, EscapeAsksNothingAndClosesNothingWhileThereAreLevels) {
    DisplayStage s;
    s.onEdit = [&] { s.place(20, 1, "NEW"); };
    s.show([&](MajorFrameWindow& window) {
        window.editCell(3, 1);
        key(window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
        EXPECT_THAT(statusOf(window), HasSubstr("Ctrl+W"));
        DisplayStage::choose(window, "undo");
        key(window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "what was undone can be done again";
        EXPECT_TRUE(s.ui.boxes.empty());
        key(window, Qt::Key_W, Qt::ControlModifier);
        EXPECT_FALSE(window.isVisible());
    });
    DisplayStage fresh;
    fresh.show([](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        DisplayStage::click(window, 4, 2, Qt::ShiftModifier);
        key(window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "the block first";
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{4, 2}, {4, 2}}));
        key(window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
}

// --- moving -----------------------------------------------------------------------------------

TEST(MajorFrameDaily, MovingThroughAShallowSubframeKeepsTheFrame) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        DisplayStage::click(window, 4, 9);
        key(window, Qt::Key_Right);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 4}));
        key(window, Qt::Key_Right);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{6, 9}));
    });
}

TEST(MajorFrameDaily, ControlAndArrowsJump) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        DisplayStage::click(window, 9, 2);
        key(window, Qt::Key_Left, Qt::ControlModifier);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 2}));
        key(window, Qt::Key_Left, Qt::ControlModifier);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{3, 2})) << "the end of the run";
        key(window, Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{3, 2}, {3, 16}}));
    });
}

// Holding the button once showed the cell under the pointer as the pressed one.
TEST(MajorFrameDaily, DraggingSelectsABlockAndScrollsAtTheEdge) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        QTest::mousePress(&grid, Qt::LeftButton, {}, DisplayStage::middleOf(window, 3, 2));
        QTest::mouseMove(&grid, DisplayStage::middleOf(window, 6, 4));
        const auto drag = [&](const QPoint& to) {
            QMouseEvent move(QEvent::MouseMove, to, grid.mapToGlobal(to), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(&grid, &move);
        };
        drag(DisplayStage::middleOf(window, 6, 4));
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{3, 2}, {6, 4}}));
        window.areas().setCellWidth(100);
        drag({grid.width() + 30, 10});
        EXPECT_GT(window.areas().view().firstWord, 0);
        EXPECT_EQ(window.areas().view().block().first, (FramePlace{3, 2}));
        QTest::mouseRelease(&grid, Qt::LeftButton, {}, {10, 10});
    });
}

TEST(MajorFrameDaily, ARefusedGoToSaysWhy) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        for (const auto& [field, text, reason] :
             {std::tuple{"goToFwp", "99", "There is no FWP 99: this frame has the words 0 to 31."},
              std::tuple{"goToFn", "12 17",
                         "There is no FN 17: this stream has the frames 1 to 16."},
              std::tuple{"goToFn", "x", "Enter a number, or two: word and frame."}}) {
            test::type(window, field, QLatin1String(text));
            QTest::keyClick(find<QLineEdit>(window, field), Qt::Key_Return);
            EXPECT_EQ(statusOf(window), std::string("Go To: ") + reason);
            EXPECT_EQ(DisplayStage::selected(window), (FramePlace{3, 1}));
        }
        EXPECT_EQ(s.ui.beeps, 3);
        DisplayStage::click(window, 4, 1);
        EXPECT_THAT(statusOf(window), HasSubstr("ALT")) << "until something else is selected";
    });
}

TEST(MajorFrameDaily, PromptsOfSearchesStartAtTheSelection) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 5, 3);
        DisplayStage::choose(window, "goToMeasurement");
        DisplayStage::choose(window, "goToSubframe");
    });
    ASSERT_EQ(s.ui.textPrompts.size(), 2U);
    EXPECT_EQ(s.ui.textPrompts[0].initial, "OIL_P");
    EXPECT_EQ(s.ui.textPrompts[1].initial, "ENGINE");
}

// --- blocks -----------------------------------------------------------------------------------

TEST(MajorFrameDaily, DeleteOfABlockAsksOnceAndIsOneLevel) {
    DisplayStage s;
    s.ui.otherwise = Button::Yes;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        DisplayStage::click(window, 5, 4, Qt::ShiftModifier);
        key(window, Qt::Key_Delete);
        EXPECT_EQ(s.ui.boxes.size(), 1U);
        EXPECT_THAT(s.ui.boxes[0].text, HasSubstr("OIL_T"));
        EXPECT_FALSE(s.format.hasAnyMeasurement());
        EXPECT_EQ(toBytes(DisplayStage::entry(window, "undo")->text()), "&Undo Delete Block");
        key(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(s.format.hasMeasurement("SPEED"));
        EXPECT_TRUE(s.format.hasMeasurement("OIL_P"));
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
        EXPECT_EQ(toBytes(DisplayStage::entry(window, "redo")->text()), "&Redo Delete Block");
    }));
}

TEST(MajorFrameDaily, CutAndPasteMoveTheCellsWithTheirNames) {
    DisplayStage s;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        DisplayStage::click(window, 4, 1, Qt::ShiftModifier);
        key(window, Qt::Key_X, Qt::ControlModifier);
        EXPECT_TRUE(s.format.hasMeasurement("SPEED")) << "nothing goes before the paste";
        EXPECT_THAT(statusOf(window), HasSubstr("Cut"));
        window.areas().goToCell(20, 1);
        key(window, Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(s.format.findInCell(20, 1, "SPEED"));
        EXPECT_TRUE(s.format.findInCell(21, 1, "ALT"));
        EXPECT_FALSE(s.format.findInCell(3, 1, "SPEED"));
        EXPECT_TRUE(s.ui.boxes.empty() && s.ui.choicePrompts.empty());
        EXPECT_EQ(toBytes(DisplayStage::entry(window, "undo")->text()), "&Undo Move Cells");
        key(window, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(s.format.findInCell(3, 1, "SPEED"));
        // A cut that is let go of is none.
        DisplayStage::click(window, 3, 1);
        key(window, Qt::Key_X, Qt::ControlModifier);
        key(window, Qt::Key_Escape);
        EXPECT_FALSE(window.areas().view().cut.first);
        EXPECT_TRUE(window.isVisible());
    }));
}

TEST(MajorFrameDaily, PastingOverSomethingNamesItAndCancelLeavesIt) {
    DisplayStage s;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        key(window, Qt::Key_C, Qt::ControlModifier);
        DisplayStage::click(window, 4, 1);
        s.ui.choices = {-1, 0};
        key(window, Qt::Key_V, Qt::ControlModifier);
        ASSERT_EQ(s.ui.choicePrompts.size(), 1U);
        EXPECT_THAT(s.ui.choicePrompts[0].text, HasSubstr("ALT: is deleted"));
        EXPECT_THAT(s.ui.choicePrompts[0].text, HasSubstr("SPEED becomes SPEED_2"));
        EXPECT_TRUE(s.format.hasMeasurement("ALT"));
        EXPECT_FALSE(window.displayChanged());
        key(window, Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(s.format.findInCell(4, 1, "SPEED_2"));
        EXPECT_FALSE(s.format.hasMeasurement("ALT"));
        EXPECT_EQ(toBytes(DisplayStage::entry(window, "undo")->text()), "&Undo Paste");
    }));
}

TEST(MajorFrameDaily, NamesOfASpreadsheetBecomeMeasurements) {
    DisplayStage s;
    QGuiApplication::clipboard()->setText(QStringLiteral("RPM\tTORQUE\n"));
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 10, 1);
        key(window, Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(s.format.findInCell(10, 1, "RPM"));
        EXPECT_TRUE(s.format.findInCell(11, 1, "TORQUE"));
        QGuiApplication::clipboard()->setText(QStringLiteral("a;b"));
        DisplayStage::click(window, 12, 1);
        key(window, Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(s.ui.hasText("a;b"));
        EXPECT_EQ(s.format.cells().nameCount(), 6);
    }));
}

TEST(MajorFrameDaily, FillAsksHowAndIsOneLevel) {
    DisplayStage s;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 8, 1);
        s.place(8, 1, "RPM");
        DisplayStage::click(window, 11, 1, Qt::ShiftModifier);
        s.ui.choices = {1};
        key(window, Qt::Key_R, Qt::ControlModifier);
        EXPECT_TRUE(s.format.findInCell(11, 1, "RPM"));
        EXPECT_EQ(s.format.countMeasurementOccurences("RPM"), 4 * 16);
        EXPECT_EQ(toBytes(DisplayStage::entry(window, "undo")->text()), "&Undo Fill");
    }));
}

// --- menus ------------------------------------------------------------------------------------

TEST(MajorFrameDaily, LabelsAndLegendsHaveMenus) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        for (const auto& [strip, menu] :
             {std::pair{"sub_frame_label", "wordMenu"}, std::pair{"minor_frame_legend", "wordMenu"},
              std::pair{"sub_frame_legend", "frameMenu"}}) {
            auto* const area = find<QWidget>(window, strip);
            const int middle = window.areas().view().cellWidth() * 7 / 2;
            const QPoint point = std::string(menu) == "wordMenu"
                                     ? QPoint(middle, 4)
                                     : QPoint(4, window.areas().view().cellHeight() * 5 / 2);
            QContextMenuEvent event(QContextMenuEvent::Mouse, point, area->mapToGlobal(point));
            QApplication::sendEvent(area, &event);
            auto* const shown = find<QMenu>(window, menu);
            EXPECT_TRUE(shown->isVisible()) << strip;
            shown->close();
        }
        EXPECT_EQ(DisplayStage::selected(window).word, 3) << "the word of the menu";
        DisplayStage::choose(window, "wordSelect");
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{3, 1}, {3, 16}}));
        DisplayStage::choose(window, "frameSelect");
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{31, 3}, {0, 3}}));
        DisplayStage::choose(window, "frameCopy");
        EXPECT_THAT(toBytes(QGuiApplication::clipboard()->text()), HasSubstr("SPEED\tALT\tOIL_P"));
        DisplayStage::choose(window, "selectAll");
        EXPECT_EQ(window.areas().view().block(), (FrameBlock{{31, 16}, {0, 1}}));
    });
}

// --- list and find ----------------------------------------------------------------------------

TEST(MajorFrameDaily, TheListFollowsTheSelectionAndAllPlacesAreMarked) {
    DisplayStage s;
    s.place(9, 1, "SPEED", "MFSC");
    s.place(9, 1, "EXTRA");
    s.show([](MajorFrameWindow& window) {
        auto* const view = find<QTreeView>(window, "measurements");
        const auto current = [&] {
            return toBytes(view->currentIndex().siblingAtColumn(0).data().toString());
        };
        DisplayStage::click(window, 3, 4);
        EXPECT_EQ(current(), "SPEED");
        EXPECT_TRUE(window.areas().display().isMarked({9, 1}));
        EXPECT_FALSE(window.areas().display().isMarked({4, 1}));
        DisplayStage::click(window, 9, 1);
        EXPECT_EQ(current(), "SPEED") << "the one that was chosen, though EXTRA is here, too";
        DisplayStage::click(window, 12, 1);
        EXPECT_FALSE(view->currentIndex().isValid());
        EXPECT_TRUE(window.areas().display().marked.empty());
        // And the other way round: the row that one moves to in the list is marked.
        view->setCurrentIndex(view->model()->index(1, 0));
        EXPECT_EQ(window.areas().display().marked, current());
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{12, 1})) << "a move goes nowhere";
    });
}

TEST(MajorFrameDaily, FindGoesFromPlaceToPlaceAndKnowsAsyncNames) {
    DisplayStage s;
    s.place(9, 1, "SPEED", "MFSC");
    s.format.asyncFormats.resize(1);
    s.format.asyncFormats[0].dataLinkName = "SPEECH";
    ASSERT_TRUE(placeAsyncSlots(s.format, nullptr, 1, {12, {{1, 1, 16}}}, "FW"));
    s.show([](MajorFrameWindow& window) {
        DisplayStage::choose(window, "find");
        auto* const field = find<QLineEdit>(window, "findText");
        QTest::keyClicks(field, QStringLiteral("spee"));
        std::vector<FramePlace> places;
        for (int i = 0; i < 4; ++i) {
            places.push_back(DisplayStage::selected(window));
            QTest::keyClick(field, Qt::Key_Return);
        }
        EXPECT_EQ(places, (std::vector<FramePlace>{{3, 1}, {9, 1}, {12, 1}, {3, 1}}));
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(find<QLabel>(window, "findResult")->text(),
                  QStringLiteral("3 of 3: SPEECH at FWP 12, FN 1"));
    });
}

// --- what is remembered -----------------------------------------------------------------------

TEST(MajorFrameDaily, LayoutSortAndPositionAreRemembered) {
    DisplayStage s;
    QList<int> sizes;
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 12, 7);
        find<QTreeView>(window, "measurements")->sortByColumn(0, Qt::DescendingOrder);
        find<QTreeView>(window, "measurements")->setColumnWidth(0, 77);
        find<QSplitter>(window, "displaySplitter")->setSizes({600, 300});
        sizes = find<QSplitter>(window, "displaySplitter")->sizes();
    });
    s.show([&](MajorFrameWindow& window) {
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{12, 7}));
        const auto* const view = find<QTreeView>(window, "measurements");
        EXPECT_EQ(view->model()->index(0, 0).data().toString(), QStringLiteral("SPEED"));
        EXPECT_EQ(view->model()->index(3, 0).data().toString(), QStringLiteral("ALT"));
        EXPECT_EQ(view->columnWidth(0), 77);
        EXPECT_EQ(find<QSplitter>(window, "displaySplitter")->sizes(), sizes);
    });
    s.format.streamName = "ANOTHER";
    s.show([](MajorFrameWindow& window) { EXPECT_FALSE(DisplayStage::selected(window)); });
    s.format.streamName = "PCM 1";
    s.show([](MajorFrameWindow& window) {
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{12, 7}));
    });
}

TEST(MajorFrameDaily, CalmColoursAreChosenAndRemembered) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        EXPECT_TRUE(DisplayStage::entry(window, "calmColoursOff")->isChecked());
        DisplayStage::choose(window, "calmColoursOn");
        EXPECT_EQ(window.areas().display().colours, FrameColours::Calm);
    });
    EXPECT_EQ(s.form.settings.get(setting::kDisplayColours), 1);
    s.show([](MajorFrameWindow& window) {
        EXPECT_EQ(window.areas().display().colours, FrameColours::Calm);
        DisplayStage::choose(window, "calmColoursOff");
    });
    EXPECT_EQ(s.form.settings.get(setting::kDisplayColours), 0);
}

}  // namespace
}  // namespace kavu
