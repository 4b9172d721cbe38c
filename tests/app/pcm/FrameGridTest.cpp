#include "app/pcm/DisplayStage.h"
#include "app/pcm/FrameAccess.h"
#include "app/pcm/FrameGrid.h"
#include "app/pcm/MeasurementList.h"

#include <chrono>

#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTreeView>
#include <QWheelEvent>

namespace kavu {
namespace {

using test::DisplayStage;
using test::find;

void turn(QWidget& widget, int angle, Qt::MouseButtons buttons = Qt::NoButton,
          Qt::KeyboardModifiers modifiers = {}) {
    const QPointF point(20, 20);
    QWheelEvent event(point, widget.mapToGlobal(point), {}, QPoint(0, angle), buttons, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

TEST(FrameGridWindow, TheWheelScrollsByARowAndZoomsByOneWithTheMiddleButton) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        turn(grid, -120);
        EXPECT_EQ(window.areas().view().scrolledRows, 1) << "toward the user is one more";
        turn(grid, 120);
        EXPECT_EQ(window.areas().view().scrolledRows, 0);
        turn(grid, -120, Qt::MiddleButton);
        EXPECT_EQ(window.areas().view().cellWidth(), 31);
        turn(grid, 240, Qt::MiddleButton);
        EXPECT_EQ(window.areas().view().cellWidth(), 29);
        turn(grid, 120, Qt::NoButton, Qt::ControlModifier);
        EXPECT_EQ(window.areas().view().cellWidth(), 31);
    });
}

TEST(FrameGridWindow, ABlockIsCopiedAsText) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 1);
        DisplayStage::click(window, 5, 2, Qt::ShiftModifier);
        DisplayStage::choose(window, "copy");
        EXPECT_EQ(QGuiApplication::clipboard()->text(),
                  QStringLiteral("SPEED\tALT\t\nSPEED\tALT\tOIL_T\n"));
    });
}

TEST(FrameGridWindow, FindingGoesAlongWhileOneTypes) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        DisplayStage::choose(window, "find");
        auto* const field = find<QLineEdit>(window, "findText");
        EXPECT_TRUE(field->isVisible());
        QTest::keyClicks(field, QStringLiteral("oil"));
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 2}));
        EXPECT_EQ(find<QLabel>(window, "findResult")->text(),
                  QStringLiteral("1 of 2: OIL_T at FWP 5, FN 2"));
        test::press(window, "findNext");
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 2})) << "around";
        test::press(window, "findPrevious");
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        QTest::keyClicks(field, QStringLiteral("zz"));
        EXPECT_EQ(find<QLabel>(window, "findResult")->text(),
                  QStringLiteral("No measurement or async stream has this text in its name"));
        QTest::keyClick(field, Qt::Key_Escape);
        EXPECT_FALSE(field->isVisible());
        EXPECT_TRUE(window.isVisible());
    });
}

TEST(FrameGridWindow, TheListFiltersAndGoesToThePlaceOfAClick) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        auto* const view = find<QTreeView>(window, "measurements");
        ASSERT_EQ(view->model()->rowCount(), 4);
        EXPECT_EQ(view->model()->index(0, 0).data().toString(), QStringLiteral("SPEED"));
        EXPECT_EQ(view->model()->index(0, 1).data().toString(), QStringLiteral("MF"));
        EXPECT_EQ(view->model()->index(0, 2).data().toInt(), 16);
        test::type(window, "filter", QStringLiteral("_p"));
        ASSERT_EQ(view->model()->rowCount(), 1);
        EXPECT_EQ(find<QLabel>(window, "measurementCount")->text(),
                  QStringLiteral("1 of 4 measurements"));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(0, 0)).center());
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
    });
}

TEST(FrameGridWindow, EntriesWithoutAStepAreDisabledAndSaySo) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        const auto* const reports = DisplayStage::entry(window, "reports");
        EXPECT_FALSE(reports->isEnabled());
        EXPECT_EQ(reports->toolTip(), QStringLiteral("Not available in this program"));
        EXPECT_FALSE(DisplayStage::entry(window, "viewDatabase")->isEnabled());
    });
}

TEST(FrameGridWindow, EntriesFollowTheEdition) {
    for (const int edition : {2007, 2009, 2011}) {
        DisplayStage s(edition);
        s.show([&](MajorFrameWindow& window) {
            const auto has = [&](const char* name) {
                return window.findChild<QAction*>(QLatin1String(name)) != nullptr;
            };
            EXPECT_EQ(has("filterList"), edition >= 2009) << edition;
            EXPECT_EQ(has("taggedData"), edition >= 2011) << edition;
            EXPECT_EQ(has("definitionMode"), edition < 2011) << edition;
        });
    }
}

TEST(FrameGridWindow, AssistiveTechnologySeesTheCellsInViewQuickly) {
    test::StreamFixture s(2009, 2047, 256);
    s.place(2040, 1, "LATE");
    // A widget keeps the interface that it was first asked for.
    installFrameAccess();
    FrameGridAreas areas(s.format, nullptr);
    areas.resize(900, 600);
    areas.show();
    QApplication::processEvents();
    auto* const access = QAccessible::queryAccessibleInterface(&areas.grid());
    ASSERT_NE(access, nullptr);
    EXPECT_EQ(access->role(), QAccessible::Table);
    auto* const table = access->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->columnCount(), areas.grid().columnsInView());
    EXPECT_EQ(table->rowCount(), areas.grid().rowsInView());
    EXPECT_LT(table->columnCount() * table->rowCount(), 3000)
        << "half a million places are not exposed";
    EXPECT_EQ(access->childCount(), table->rowCount());
    ASSERT_TRUE(areas.goToCell(2040, 200));
    const auto begin = std::chrono::steady_clock::now();
    int late = 0;
    int cells = 0;
    for (int child = 0; child < access->childCount(); ++child) {
        auto* const row = access->child(child);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->role(), QAccessible::Row);
        EXPECT_EQ(row->parent(), access);
        for (int column = 0; column < row->childCount(); ++column, ++cells) {
            const auto name = row->child(column)->text(QAccessible::Name);
            late += name == QStringLiteral("FWP 2040 FN 200: LATE") ? 1 : 0;
        }
    }
    const auto took = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(late, 1);
    EXPECT_EQ(cells, table->columnCount() * table->rowCount());
    EXPECT_LT(took / cells, std::chrono::milliseconds(50)) << "for one answer";
    auto* const cell = table->cellAt(0, 0);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->role(), QAccessible::Cell);
    auto* const row = cell->parent();
    EXPECT_EQ(row, access->child(0));
    EXPECT_EQ(row->indexOfChild(cell), 0);
    EXPECT_EQ(access->indexOfChild(row), 0);
    EXPECT_EQ(row->child(row->childCount()), nullptr);
    EXPECT_EQ(row->child(-1), nullptr);
    EXPECT_EQ(access->child(access->indexOfChild(cell)), cell) << "a number for each cell, too";
    EXPECT_EQ(table->cellAt(table->rowCount(), 0), nullptr);
    EXPECT_EQ(table->selectedCellCount(), 1);
    EXPECT_EQ(access->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
}

}  // namespace
}  // namespace kavu
