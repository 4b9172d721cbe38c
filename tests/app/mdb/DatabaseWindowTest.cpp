#include "app/framework/ProgressWindow.h"
#include "app/framework/QtInterface.h"
#include "app/framework/TableClipboard.h"
#include "app/mdb/ChangesDialog.h"
#include "app/mdb/WindowStage.h"
#include "app/support/WidgetChecks.h"
#include "core/files/UserFile.h"
#include "core/talk/ProfileSettings.h"

#include <algorithm>
#include <chrono>

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

using Names = std::vector<std::string>;

std::string threeLines() {
    return mdbLine({"beta", "ROOT"}) + mdbLine({"Alpha"}) + mdbLine({"gamma", "root2"});
}

TEST(DatabaseWindow, ShowsPathAndRecordsAndIsWhole) {
    WindowStage stage(threeLines());
    EXPECT_EQ(stage.window->objectName(), QStringLiteral("EDITMEASUREMENTDATABASE"));
    EXPECT_EQ(toBytes(find<QLabel>(*stage.window, "database")->text()),
              "Current Database: " + stage.path);
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma"}));
    EXPECT_EQ(stage.state(), "3 records");
    EXPECT_EQ(stage.window->model().columnCount(), 36);
    EXPECT_EQ(checkWindow(*stage.window), std::vector<std::string>{});
}

TEST(DatabaseWindow, ADatabaseOf28ColumnsShowsNo1553Fields) {
    WindowStage stage(mdbLine({"A"}, 28), MdbVersion::Basic);
    EXPECT_EQ(stage.window->model().columnCount(), 28);
    EXPECT_EQ(stage.window->model().columnOf(f::kBusNumber), -1);
}

TEST(DatabaseWindow, FiltersByAnyFieldOrByOne) {
    WindowStage stage(threeLines());
    type(*stage.window, "filter", QStringLiteral("ROOT"));
    EXPECT_EQ(stage.shown(), (Names{"beta", "gamma"}));
    EXPECT_EQ(stage.state(), "2 of 3 records");
    find<QComboBox>(*stage.window, "filterField")->setCurrentIndex(1);
    EXPECT_EQ(stage.shown(), Names{});
    type(*stage.window, "filter", QStringLiteral("a"));
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma"}));
}

TEST(DatabaseWindow, AClickOnAHeadSortsAndAThirdOneShowsTheOrderOfTheFile) {
    WindowStage stage(threeLines());
    auto* const head = stage.window->view().horizontalHeader();
    const auto click = [head] {
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                          {head->sectionViewportPosition(0) + 20, head->height() / 2});
        QApplication::processEvents();
    };
    click();
    EXPECT_EQ(stage.shown(), (Names{"Alpha", "beta", "gamma"}));
    click();
    EXPECT_EQ(stage.shown(), (Names{"gamma", "beta", "Alpha"}));
    click();
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma"}));
}

TEST(DatabaseWindow, ASortOfManyRecordsShowsItsProgress) {
    std::string lines;
    for (int i = 0; i < 3000; ++i) {
        lines += mdbLine({"M" + std::to_string((i * 7919) % 3000)});
    }
    WindowStage stage(lines);
    stage.ui.progressTexts.clear();
    stage.ui.bars.clear();
    stage.window->view().sortByColumn(0, Qt::AscendingOrder);
    EXPECT_EQ(stage.ui.progressTexts, Names{"Sorting by 'Measurement Name'"});
    EXPECT_FALSE(stage.ui.bars.empty());
    EXPECT_TRUE(std::is_sorted(stage.ui.bars.begin(), stage.ui.bars.end()));
    EXPECT_EQ(stage.ui.progressOpened, stage.ui.progressClosed);
    EXPECT_EQ(stage.shown().front(), "M0");
}

// --- the column of names -------------------------------------------------------------------------

TEST(DatabaseWindow, TheNamesStayInSightWhenTheTableIsScrolledSideways) {
    WindowStage stage(threeLines());
    auto& view = stage.window->view();
    auto& names = view.names();
    EXPECT_FALSE(names.isVisible());
    stage.selectCell(1, f::kData);
    QApplication::processEvents();
    ASSERT_GT(view.horizontalScrollBar()->value(), 0);
    EXPECT_TRUE(names.isVisible());
    EXPECT_EQ(names.width(), view.columnWidth(0));
    EXPECT_EQ(names.mapTo(&view, QPoint()),
              QPoint(view.viewport()->x(), view.horizontalHeader()->y()));
    for (int place = 0; place < 3; ++place) {
        const auto cell = names.visualRect(stage.cell(place, f::kName));
        EXPECT_EQ(names.viewport()->mapTo(&view, cell.topLeft()).y(),
                  view.viewport()
                      ->mapTo(&view, view.visualRect(stage.cell(place, f::kData)).topLeft())
                      .y());
    }
    view.horizontalScrollBar()->setValue(0);
    EXPECT_FALSE(names.isVisible());
}

TEST(DatabaseWindow, ACellIsNotScrolledBehindTheNames) {
    WindowStage stage(threeLines());
    auto& view = stage.window->view();
    stage.selectCell(0, f::kData);
    while (view.currentIndex().column() > 1) {
        QTest::keyClick(&view, Qt::Key_Left);
        const auto cell = view.visualRect(view.currentIndex());
        ASSERT_TRUE(view.horizontalScrollBar()->value() == 0 || cell.left() >= view.columnWidth(0))
            << view.currentIndex().column();
    }
}

TEST(DatabaseWindow, TheColumnOfNamesSelectsSortsAndEdits) {
    WindowStage stage(threeLines());
    auto& view = stage.window->view();
    auto& names = view.names();
    stage.selectCell(0, f::kData);
    QApplication::processEvents();
    const int scrolled = view.horizontalScrollBar()->value();
    const auto at = names.visualRect(stage.cell(2, f::kName)).center();
    QTest::mouseClick(names.viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(view.currentIndex(), stage.cell(2, f::kName));
    EXPECT_EQ(view.horizontalScrollBar()->value(), scrolled) << "a click scrolls nothing away";
    EXPECT_TRUE(view.hasFocus());
    auto* const head = names.horizontalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, {20, head->height() / 2});
    EXPECT_EQ(stage.shown(), (Names{"Alpha", "beta", "gamma"}));
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 0);
    stage.typeInto(0, f::kName, "typed");
    EXPECT_EQ(stage.edit.row(1).name(), "typed");
    EXPECT_FALSE(names.isVisible()) << "a name is edited in its own place";
}

TEST(DatabaseWindow, TheNamesFollowTheTableDownAndItsWidth) {
    std::string lines;
    for (int i = 0; i < 500; ++i) {
        lines += mdbLine({"M" + std::to_string(i)});
    }
    WindowStage stage(lines);
    auto& view = stage.window->view();
    auto& names = view.names();
    stage.selectCell(0, f::kData);
    view.verticalScrollBar()->setValue(200);
    EXPECT_EQ(names.rowAt(1), view.rowAt(1));
    names.verticalScrollBar()->setValue(100);
    EXPECT_EQ(view.verticalScrollBar()->value(), 100);
    view.setColumnWidth(0, 333);
    EXPECT_EQ(names.columnWidth(0), 333);
    EXPECT_EQ(names.width(), 333);
    names.setColumnWidth(0, 222);
    EXPECT_EQ(view.columnWidth(0), 222);
    type(*stage.window, "filter", QStringLiteral("M49"));
    EXPECT_EQ(stage.shown().size(), 11U);
    EXPECT_TRUE(names.isColumnHidden(1));
}

TEST(DatabaseWindow, ACellThatIsTypedIntoGoesToTheFileWithOkAlone) {
    WindowStage stage(threeLines());
    const auto before = stage.bytes();
    stage.typeInto(1, f::kDescription, "new text");
    EXPECT_EQ(stage.edit.row(1)[f::kDescription], "new text");
    EXPECT_EQ(stage.bytes(), before);
    press(*stage.window, "ok");
    EXPECT_EQ(stage.window->result(), QDialog::Accepted);
    std::vector<std::string> fields(36);
    fields[0] = "Alpha";
    fields[f::kDescription] = "new text";
    EXPECT_EQ(stage.bytes(),
              mdbLine({"beta", "ROOT"}) + mdbLine(fields) + mdbLine({"gamma", "root2"}));
}

TEST(DatabaseWindow, TypingStopsAtTheLimitAndAListOffersItsValuesAlone) {
    WindowStage stage(threeLines());
    stage.typeInto(0, f::kWordLength, "123");
    EXPECT_EQ(stage.edit.row(0)[f::kWordLength], "12");
    stage.selectCell(0, f::kParity);
    QTest::keyClick(&stage.window->view(), Qt::Key_F2);
    auto* const list = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(list, nullptr);
    Names values;
    for (int i = 0; i < list->count(); ++i) {
        values.push_back(toBytes(list->itemText(i)));
    }
    EXPECT_EQ(values, (Names{"", "EV", "OD", "NO", "DE"}));
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_TRUE(stage.window->isVisible());
}

TEST(DatabaseWindow, AFaultIsMarkedAndMessage427KeepsTheWindowOpen) {
    std::vector<std::string> fields(36);
    fields[0] = "A";
    fields[f::kParity] = "XX";
    WindowStage stage(mdbLine({"B"}) + mdbLine(fields));
    const auto before = stage.bytes();
    EXPECT_EQ(stage.cell(1, f::kParity).data(Qt::ToolTipRole).toString(),
              QStringLiteral("Must be one of: EV OD NO DE"));
    EXPECT_TRUE(stage.cell(1, f::kParity).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(stage.cell(0, f::kParity).data(Qt::BackgroundRole).isValid());
    press(*stage.window, "ok");
    EXPECT_TRUE(stage.ui.hasBox(427));
    EXPECT_TRUE(stage.window->isVisible());
    EXPECT_EQ(stage.window->view().currentIndex(), stage.cell(1, f::kParity));
    EXPECT_EQ(toBytes(find<QLabel>(*stage.window, "current")->text()),
              "A  |  Measurement Parity: Must be one of: EV OD NO DE");
    EXPECT_EQ(stage.bytes(), before);
    stage.selectCell(0, f::kName);
    QTest::keyClick(stage.window.get(), Qt::Key_F8);
    EXPECT_EQ(stage.window->view().currentIndex(), stage.cell(1, f::kParity));
}

TEST(DatabaseWindow, RecordsAreAddedDuplicatedDeletedAndAllOfItIsUndone) {
    WindowStage stage(threeLines());
    stage.ui.otherwise = Button::Yes;
    press(*stage.window, "add");
    auto* const editor = QApplication::focusWidget();
    QTest::keyClicks(editor, QStringLiteral("delta"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma", "delta"}));
    stage.selectCell(0, f::kName);
    press(*stage.window, "duplicate");
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma", "delta", "beta"}));
    stage.selectCell(1, f::kName);
    press(*stage.window, "delete");
    EXPECT_EQ(stage.ui.boxes.back().title, "Delete Measurement Database Entry");
    EXPECT_EQ(stage.shown(), (Names{"beta", "gamma", "delta", "beta"}));
    for (int i = 0; i < 4; ++i) {
        press(*stage.window, "undo");
    }
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma"}));
    EXPECT_FALSE(find<QPushButton>(*stage.window, "undo")->isEnabled());
}

TEST(DatabaseWindow, AnUndoLeavesTheCursorWhereItIs) {
    WindowStage stage(threeLines());
    stage.typeInto(2, f::kDescription, "text");
    stage.selectCell(2, f::kRoot);
    press(*stage.window, "undo");
    EXPECT_EQ(stage.edit.row(2)[f::kDescription], "");
    EXPECT_EQ(stage.window->view().currentIndex(), stage.cell(2, f::kRoot));
}

TEST(DatabaseWindow, AllEntriesGoAfterQuestion410) {
    WindowStage stage(threeLines());
    stage.trigger("deleteAll");
    EXPECT_TRUE(stage.ui.hasBox(410));
    EXPECT_EQ(stage.shown().size(), 3U);
    stage.ui.byId[410] = Button::Yes;
    stage.trigger("deleteAll");
    EXPECT_EQ(stage.shown().size(), 0U);
}

TEST(DatabaseWindow, SampleEntriesAreMade) {
    WindowStage stage;
    stage.ui.otherwise = Button::Yes;
    stage.ui.integers = {2};
    stage.trigger("samples");
    EXPECT_EQ(stage.shown(), (Names{"Measurement_1", "Measurement_2"}));
}

// --- copy and paste ------------------------------------------------------------------------------

TEST(DatabaseWindow, ABlockIsCopiedAsTextOfCellsWithTabs) {
    WindowStage stage(threeLines());
    stage.window->view().selectionModel()->select(
        {stage.cell(0, f::kName), stage.cell(1, f::kRoot)}, QItemSelectionModel::ClearAndSelect);
    QTest::keyClick(&stage.window->view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("beta\tROOT\nAlpha\t\n"));
}

TEST(DatabaseWindow, APasteIsShownBeforeItChangesAnythingAndIsOneStep) {
    WindowStage stage(threeLines());
    QGuiApplication::clipboard()->setText(QStringLiteral("gamma\troot3\nnew\tR\n"));
    stage.selectCell(2, f::kName);
    stage.door.next([&](QDialog& dialog) {
        const auto& changes = dynamic_cast<ChangesDialog&>(dialog).changes();
        ASSERT_EQ(changes.size(), 3U);
        EXPECT_EQ(changes[0].name, "gamma");
        EXPECT_EQ(changes[0].field, "Root Word Name");
        EXPECT_EQ(changes[0].before, "root2");
        EXPECT_EQ(changes[0].after, "root3");
        EXPECT_EQ(changes[1].name, "(new record 1)");
        EXPECT_EQ(toBytes(find<QLabel>(dialog, "text")->text()),
                  "3 cells will change, and 1 records will be added.");
        EXPECT_EQ(stage.edit.row(2)[f::kRoot], "root2");
        EXPECT_EQ(checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(toBytes(find<QPlainTextEdit>(dialog, "current")->toPlainText()),
                  "gamma  |  Root Word Name\nOld value: root2\nNew value: root3");
        find<QTableView>(dialog, "changes")->setFocus();
        QTest::keyClick(find<QTableView>(dialog, "changes"), Qt::Key_Down);
        EXPECT_TRUE(find<QPlainTextEdit>(dialog, "current")
                        ->toPlainText()
                        .startsWith(QStringLiteral("(new record 1)")));
        press(dialog, "ok");
    });
    QTest::keyClick(&stage.window->view(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stage.rowNames(), (Names{"beta", "Alpha", "gamma", "new"}));
    EXPECT_EQ(stage.edit.row(2)[f::kRoot], "root3");
    press(*stage.window, "undo");
    EXPECT_EQ(stage.rowNames(), (Names{"beta", "Alpha", "gamma"}));
    EXPECT_EQ(stage.edit.row(2)[f::kRoot], "root2");
}

TEST(DatabaseWindow, ACancelledPasteChangesNothing) {
    WindowStage stage(threeLines());
    QGuiApplication::clipboard()->setText(QStringLiteral("x"));
    stage.selectCell(0, f::kName);
    stage.door.next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    press(*stage.window, "paste");
    EXPECT_EQ(stage.edit.row(0).name(), "beta");
    EXPECT_FALSE(stage.edit.canUndo());
}

TEST(DatabaseWindow, OneValueGoesToAllSelectedCellsAndFaultsAreRemarked) {
    WindowStage stage(threeLines());
    QGuiApplication::clipboard()->setText(QStringLiteral("YY"));
    stage.window->view().selectionModel()->select(
        {stage.cell(0, f::kParity), stage.cell(2, f::kParity)},
        QItemSelectionModel::ClearAndSelect);
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<ChangesDialog&>(dialog).changes().front().remark,
                  "Not allowed here");
        press(dialog, "ok");
    });
    press(*stage.window, "paste");
    for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_EQ(stage.edit.row(row)[f::kParity], "YY");
    }
    stage.activate();
    QTest::keyClick(&stage.window->view(), Qt::Key_Delete);
    EXPECT_EQ(stage.edit.row(1)[f::kParity], "");
}

TEST(DatabaseWindow, ColumnsThatHaveNoFieldAreNamedBeforeThePaste) {
    WindowStage stage(threeLines());
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\tc"));
    stage.selectCell(0, f::kData);
    stage.door.next([](QDialog& dialog) {
        EXPECT_TRUE(find<QLabel>(dialog, "text")
                        ->text()
                        .contains(QStringLiteral("2 columns of the clipboard have no field")));
        press(dialog, "cancel");
    });
    press(*stage.window, "paste");
}

// --- export, end ---------------------------------------------------------------------------------

TEST(DatabaseWindow, TheRecordsThatAreShownAreExportedInTheirOrder) {
    WindowStage stage(mdbLine({"b", "x,y"}) + mdbLine({"a", "say \"x\""}) + mdbLine({"c"}));
    stage.window->view().sortByColumn(0, Qt::AscendingOrder);
    type(*stage.window, "filter", QStringLiteral("x"));
    const auto path = stage.folder / "out.csv";
    stage.ui.files = {FileChoice{path}};
    press(*stage.window, "export");
    const auto text = readFile(path);
    EXPECT_TRUE(text.starts_with("Measurement Name,Root Word Name,Word Length,"));
    const std::string rest(34, ',');
    EXPECT_TRUE(text.ends_with("\r\na,\"say \"\"x\"\"\"" + rest + "\r\nb,\"x,y\"" + rest + "\r\n"))
        << text;
}

TEST(DatabaseWindow, EscapeAsksOnlyAfterAChangeAndLeavesTheFile) {
    {
        WindowStage stage(threeLines());
        QTest::keyClick(stage.window.get(), Qt::Key_Escape);
        EXPECT_FALSE(stage.window->isVisible());
        EXPECT_TRUE(stage.ui.boxes.empty());
    }
    WindowStage stage(threeLines());
    const auto before = stage.bytes();
    stage.typeInto(0, f::kName, "X");
    QTest::keyClick(stage.window.get(), Qt::Key_Escape);
    EXPECT_TRUE(stage.window->isVisible());
    stage.ui.otherwise = Button::Yes;
    QTest::keyClick(stage.window.get(), Qt::Key_Escape);
    EXPECT_FALSE(stage.window->isVisible());
    EXPECT_EQ(stage.bytes(), before);
}

TEST(DatabaseWindow, F1AndTheHelpButtonOpenItsTopic) {
    WindowStage stage(threeLines());
    QTest::keyClick(stage.window.get(), Qt::Key_F1);
    press(*stage.window, "help");
    EXPECT_EQ(stage.topics, (Names{"EDITMEASUREMENTDATABASE", "EDITMEASUREMENTDATABASE"}));
}

TEST(DatabaseWindow, ReturnEditsACellAndDoesNotCloseTheWindow) {
    WindowStage stage(threeLines());
    stage.selectCell(0, f::kRoot);
    QTest::keyClick(&stage.window->view(), Qt::Key_Return);
    auto* const editor = QApplication::focusWidget();
    ASSERT_NE(editor, &stage.window->view());
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_TRUE(stage.window->isVisible());
    find<QLineEdit>(*stage.window, "filter")->setFocus();
    QTest::keyClick(find<QLineEdit>(*stage.window, "filter"), Qt::Key_Return);
    EXPECT_TRUE(stage.window->isVisible());
}

TEST(DatabaseWindow, WhatAnotherProgramHasChangedIsShownTogetherWithTheEditBeforeItIsWritten) {
    WindowStage stage(threeLines());
    stage.typeInto(0, f::kDescription, "mine");
    const auto theirs = mdbLine({"beta", "ROOT"}) + mdbLine({"added there"});
    writeFile(stage.path, theirs);
    press(*stage.window, "ok");
    EXPECT_TRUE(stage.window->isVisible()) << "the question is answered with no";
    EXPECT_EQ(stage.shown(), (Names{"beta", "Alpha", "gamma"}));
    stage.ui.otherwise = Button::Yes;
    press(*stage.window, "ok");
    EXPECT_TRUE(stage.window->isVisible());
    EXPECT_EQ(stage.bytes(), theirs);
    EXPECT_EQ(stage.shown(), (Names{"beta", "added there"}));
    EXPECT_EQ(stage.cell(0, f::kDescription).data().toString(), QStringLiteral("mine"));
    EXPECT_FALSE(find<QPushButton>(*stage.window, "undo")->isEnabled());
    press(*stage.window, "ok");
    EXPECT_FALSE(stage.window->isVisible());
    EXPECT_NE(stage.bytes().find("mine"), std::string::npos);
    EXPECT_NE(stage.bytes().find("added there"), std::string::npos);
}

TEST(DatabaseWindow, AFileThatAnotherProgramIsWritingIsReportedAndTheEditGoesOn) {
    WindowStage stage(threeLines());
    stage.typeInto(0, f::kDescription, "mine");
    {
        UserFile other;
        ASSERT_TRUE(other.claim(stage.path).ok());
        press(*stage.window, "ok");
        EXPECT_TRUE(stage.window->isVisible());
        EXPECT_TRUE(stage.ui.hasText("Another program is writing the measurement database"));
        EXPECT_EQ(stage.bytes(), threeLines());
    }
    press(*stage.window, "ok");
    EXPECT_FALSE(stage.window->isVisible());
    EXPECT_NE(stage.bytes().find("mine"), std::string::npos);
}

TEST(DatabaseWindow, WhileAnotherProgramWritesTheFileTheWindowLivesSaysSoAndEscapeEndsTheWait) {
    WindowStage stage(threeLines());
    stage.typeInto(0, f::kDescription, "mine");
    QtInterface ui(stage.window.get(), stage.door);
    auto form = formContext(ui, stage.door, stage.context);
    DatabaseWindow window(form, stage.edit, stage.database, nullptr);
    window.show();
    QApplication::processEvents();
    UserFile other;
    ASSERT_TRUE(other.claim(stage.path).ok());
    std::string waitsFor;
    bool isBusy = false;
    QTimer late;
    QObject::connect(&late, &QTimer::timeout, &window, [&] {
        late.stop();
        auto* const progress = ui.progressWindow();
        ASSERT_NE(progress, nullptr);
        EXPECT_TRUE(progress->isVisible());
        waitsFor = toBytes(find<QLabel>(*progress, "text")->text());
        isBusy = QGuiApplication::overrideCursor() != nullptr;
        QTest::keyClick(progress, Qt::Key_Escape);
    });
    late.start(ProgressWindow::kShowAfterMilliseconds + 200);
    stage.door.next([](QDialog& question) {
        EXPECT_EQ(question.windowTitle(), QStringLiteral("Cancel Operation"));
        press(question, "yes");
    });
    QElapsedTimer timer;
    timer.start();
    press(window, "ok");
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(waitsFor, "Waiting for another program that is writing the measurement database '" +
                            stage.path + "'");
    EXPECT_TRUE(isBusy);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(stage.edit.isChanged());
    EXPECT_EQ(stage.bytes(), threeLines());
}

TEST(DatabaseWindow, TheContextMenuOfTheTableOffersWhatItsKeysDo) {
    WindowStage stage(threeLines());
    auto& view = stage.window->view();
    EXPECT_EQ(view.contextMenuPolicy(), Qt::ActionsContextMenu);
    Names texts;
    for (const auto* const action : view.actions()) {
        texts.push_back(toBytes(action->text().remove(u'&')));
    }
    EXPECT_EQ(texts, (Names{"Edit", "Clear", "Copy", "Paste...", "Undo", "Add Entry",
                            "Duplicate Entry", "Delete Entry"}));
    stage.selectCell(0, f::kRoot);
    stage.trigger("clearCells");
    EXPECT_EQ(stage.edit.row(0)[f::kRoot], "");
    stage.trigger("duplicateEntries");
    EXPECT_EQ(stage.shown().size(), 4U);
}

TEST(DatabaseWindow, FiftyThousandRecordsAreScrolledWithoutAWait) {
    std::string lines;
    for (int i = 0; i < 50'000; ++i) {
        lines += mdbLine({"M" + std::to_string(i), "R"});
    }
    WindowStage stage(lines);
    auto& view = stage.window->view();
    QElapsedTimer timer;
    timer.start();
    constexpr int kSteps = 40;
    for (int i = 0; i < kSteps; ++i) {
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() * i / kSteps);
        (void)view.viewport()->grab();
    }
    // Without optimisation, and with other work beside it.
    EXPECT_LT(timer.elapsed() / kSteps, 200);
    EXPECT_EQ(stage.state(), "50,000 records");
}

TEST(EditDatabase, WithoutAUsableDatabaseThereIsNoWindowAndItIsSwitchedOff) {
    TestContext t;
    TestDoor door;
    auto form = formContext(t.ui, door, t.context);
    t.settings.set(setting::kDatabaseEnabled, true);
    t.settings.set(setting::kDatabasePath, t.folder / "none.mdb");
    EXPECT_FALSE(editDatabase(form, t.context, nullptr));
    EXPECT_TRUE(t.ui.hasBox(428));
    EXPECT_FALSE(t.settings.get(setting::kDatabaseEnabled));
}

}  // namespace
}  // namespace kavu::test
