#include "app/framework/EditableList.h"
#include "app/framework/ListHead.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"
#include "app/support/FormStage.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;
using Rows = std::vector<ListRow>;

ListSetup sampleSetup() {
    ListSetup setup;
    setup.columns = {
        {.title = "Name", .limit = 8, .unique = true, .required = true},
        {.title = "Length", .kind = ColumnKind::Integer, .least = 1, .most = 64},
        {.title = "Rate", .kind = ColumnKind::Double, .least = 0, .most = 1000},
        {.title = "Type", .kind = ColumnKind::Choice, .choices = {"RF", "Tape"}, .initial = "RF"}};
    setup.mostRows = 4;
    setup.canMove = true;
    setup.rowDialogTitle = "Edit Thing";
    return setup;
}

const Rows kRows = {{"b", "10", "1.5", "RF"}, {"A", "9", "20", "Tape"}, {"c", "100", "", "RF"}};

TEST(ListHeadTest, ALongTitleIsBrokenNearItsMiddle) {
    const std::pair<const char*, const char*> rows[] = {
        {"Data Set", "Data Set"},
        {"Data Type", "Data\nType"},
        {"Modulation Sense", "Modulation\nSense"},
        {"Low Pass Filter Bandwidth", "Low Pass Filter\nBandwidth"},
        {"Measurement/Data Link Name", "Measurement/Data\nLink Name"},
        {"Oversampledeverywhere", "Oversampledeverywhere"},
        {"", ""},
    };
    for (const auto& [title, shown] : rows) {
        EXPECT_EQ(toBytes(brokenTitle(QLatin1String(title))), shown);
    }
}

class EditableListTest : public testing::Test {
  protected:
    EditableList& make(ListSetup setup = sampleSetup(), Rows rows = kRows) {
        list = std::make_unique<EditableList>(stage.form, "things", std::move(setup));
        list->setRows(std::move(rows));
        QObject::connect(list.get(), &EditableList::changed, [this] { ++changes; });
        list->resize(600, 400);
        list->show();
        list->activateWindow();
        QApplication::processEvents();
        return *list;
    }
    void expectBox(const char* text, const char* title) {
        ASSERT_FALSE(stage.ui.boxes.empty()) << text;
        EXPECT_EQ(stage.ui.boxes.back().text, text);
        EXPECT_EQ(stage.ui.boxes.back().title, title);
    }
    std::vector<std::string> column(int at) {
        std::vector<std::string> values;
        for (const auto& row : list->rows()) {
            values.push_back(row[static_cast<std::size_t>(at)]);
        }
        return values;
    }
    /// A column as the view shows it.
    std::vector<std::string> shown(int at) {
        std::vector<std::string> values;
        const auto* const model = list->view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            values.push_back(model->index(row, at).data().toString().toStdString());
        }
        return values;
    }
    using Texts = std::vector<std::string>;

    test::FormStage stage;
    std::unique_ptr<EditableList> list;
    int changes = 0;
};

TEST_F(EditableListTest, TitlesHaveTwoLinesOnlyWhereTheColumnsHaveNoRoomOtherwise) {
    auto setup = sampleSetup();
    const auto head = [&](const EditableList& shown) {
        return static_cast<const ListHead*>(shown.view()->horizontalHeader());
    };
    EXPECT_FALSE(head(make(setup))->breaksTitles());
    const int height = list->view()->horizontalHeader()->height();
    for (auto& column : setup.columns) {
        column.title = "A Long " + column.title + " Of A Thing";
    }
    auto& narrow = make(setup);
    narrow.resize(600, 400);
    narrow.setRows(kRows);
    QApplication::processEvents();
    EXPECT_TRUE(head(narrow)->breaksTitles());
    EXPECT_GT(head(narrow)->height(), height);
    EXPECT_EQ(narrow.view()->horizontalScrollBar()->maximum(), 0);
    for (int i = 0; i < 4; ++i) {
        EXPECT_GE(head(narrow)->sectionSize(i), head(narrow)->sectionSizeHint(i)) << i;
    }
    narrow.resize(1200, 400);
    QApplication::processEvents();
    narrow.setRows(kRows);
    EXPECT_FALSE(head(narrow)->breaksTitles());
}

TEST_F(EditableListTest, ShowsRowsWithTheirHeadsAndSelectsTheFirst) {
    make();
    const auto* model = list->view()->model();
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(),
              QStringLiteral("Length"));
    EXPECT_EQ(model->index(1, 0).data().toString(), QStringLiteral("A"));
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(list->rows(), kRows);
    EXPECT_EQ(changes, 0);
}

TEST_F(EditableListTest, TheLastColumnDoesNotGrowWhenRowsAreShownAgain) {
    make();
    const auto* head = list->view()->horizontalHeader();
    const int before = head->length();
    EXPECT_EQ(before, list->view()->viewport()->width());
    for (int i = 0; i < 20; ++i) {
        list->setRows(kRows);
    }
    QApplication::processEvents();
    EXPECT_EQ(head->length(), before);
}

TEST_F(EditableListTest, KeepsTheBytesOfRowsAndFillsShortOnesUp) {
    make(sampleSetup(), {{"K\xF6ln"}, {"1", "2", "3", "4", "5"}});
    EXPECT_EQ(list->rows(), (Rows{{"K\xF6ln", "", "", ""}, {"1", "2", "3", "4"}}));
    EXPECT_EQ(list->view()->model()->index(0, 0).data().toString(), QStringLiteral("Köln"));
}

TEST_F(EditableListTest, AddOpensTheRowDialogOverABlankRow) {
    make();
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("EditRow"));
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Thing"));
        EXPECT_EQ(list->currentRow(), 3);
        EXPECT_EQ(find<QComboBox>(dialog, "type")->currentText(), QStringLiteral("RF"));
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("new"));
        type(dialog, "length", QStringLiteral("12"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    press(*list, "add");
    EXPECT_EQ(list->rows().back(), (ListRow{"new", "12", "", "RF"}));
    EXPECT_EQ(list->currentRow(), 3);
    EXPECT_EQ(changes, 1);
    // Now the list is full.
    EXPECT_FALSE(find<QPushButton>(*list, "add")->isEnabled());
    list->addRow();
    expectBox("This list can hold no more than 4 entries.", "Unable To Edit ListView");
}

TEST_F(EditableListTest, ANewRowHasItsNumberBeforeItIsAskedFor) {
    auto setup = sampleSetup();
    setup.columns[1].numbered = [](int number) { return std::to_string(number * 10); };
    make(setup);
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(shown(1).back(), "40");
        EXPECT_EQ(find<QLineEdit>(dialog, "length")->text(), QStringLiteral("40"));
        press(dialog, "cancel");
    });
    press(*list, "add");
    EXPECT_EQ(list->rows(), kRows);
}

TEST_F(EditableListTest, AnAddThatIsCancelledTakesTheRowAwayAndSelectsTheOneAbove) {
    make();
    stage.door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    press(*list, "add");
    EXPECT_EQ(list->rows(), kRows);
    EXPECT_EQ(list->currentRow(), 2);
    EXPECT_EQ(changes, 0);
}

TEST_F(EditableListTest, EditADoubleClickAndEnterOpenTheRow) {
    make();
    int opened = 0;
    const auto driver = [&](QDialog& dialog) {
        ++opened;
        EXPECT_EQ(find<QLineEdit>(dialog, "name")->text(), QStringLiteral("A"));
        press(dialog, "ok");
    };
    stage.door.next(driver).next(driver).next(driver);
    list->selectRow(1);
    press(*list, "edit");
    auto* view = list->view();
    const auto place = view->visualRect(view->model()->index(1, 1)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(changes, 0);
}

TEST_F(EditableListTest, ARowDialogRefusesWhatTheColumnsRefuse) {
    make();
    stage.door.next([&](QDialog& dialog) {
        const auto refuse = [&](const char* field, const char16_t* bad, const char* why) {
            type(dialog, field, QString::fromUtf16(bad));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
            expectBox(why, "ERROR: Illegal Value Entered");
            EXPECT_EQ(dialog.focusWidget()->objectName(), QLatin1String(field));
        };
        refuse("name", u"a", "Another 'Name' exists with this same value.");
        refuse("name", u"x;", "Error: The value you entered cannot contain a semi-colon");
        find<QLineEdit>(dialog, "name")->clear();
        refuse("name", u"", "You must enter a value for 'Name'.");
        type(dialog, "name", QStringLiteral("longer than eight"));
        EXPECT_EQ(find<QLineEdit>(dialog, "name")->text(), QStringLiteral("longer t"));
        EXPECT_EQ(find<QLabel>(dialog, "hint")->text(), QStringLiteral("At most 8 characters."));
        refuse("length", u"x", "Value entered is not a valid integer. Please re-enter.");
        refuse("length", u"65",
               "Integer number out of range. You must enter a number between 1 and 64");
        type(dialog, "length", QStringLiteral("64"));
        refuse("rate", u"1,5",
               "Value entered is not a valid floating point number. Please re-enter.");
        refuse("rate", u"1001",
               "Floating point number out of range. You must enter a number between 0 and 1000");
        type(dialog, "rate", QStringLiteral("0.25"));
        find<QComboBox>(dialog, "type")->setCurrentIndex(1);
        press(dialog, "ok");
    });
    press(*list, "edit");
    EXPECT_EQ(list->rows()[0], (ListRow{"longer t", "64", "0.25", "Tape"}));
    EXPECT_EQ(changes, 1);
}

TEST_F(EditableListTest, AValueThatCameFromTheFileIsNotCheckedUntilItIsEdited) {
    make(sampleSetup(), {{"far longer than eight", "999", "x", "Odd"}, {"\xF6", "1", "1", "RF"}});
    stage.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    press(*list, "edit");
    EXPECT_EQ(list->rows()[0], (ListRow{"far longer than eight", "999", "x", "Odd"}));
    list->selectRow(1);
    stage.door.next([](QDialog& dialog) {
        type(dialog, "length", QStringLiteral("2"));
        press(dialog, "ok");
    });
    press(*list, "edit");
    EXPECT_EQ(list->rows()[1], (ListRow{"\xF6", "2", "1", "RF"}));
    EXPECT_TRUE(stage.ui.boxes.empty());
}

TEST_F(EditableListTest, ACellIsEditedInPlaceByTheDialogCurrentValue) {
    make();
    list->selectRow(1);
    list->view()->setCurrentIndex(list->view()->model()->index(1, 1));
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Current Value"));
        EXPECT_EQ(find<QLineEdit>(dialog, "value")->text(), QStringLiteral("9"));
        type(dialog, "value", QStringLiteral("65"));
        press(dialog, "ok");
        expectBox("Integer number out of range. You must enter a number between 1 and 64",
                  "ERROR: Illegal Value Entered");
        type(dialog, "value", QStringLiteral("64"));
        press(dialog, "ok");
    });
    QTest::keyClick(list->view(), Qt::Key_F2);
    EXPECT_EQ(list->rows()[1][1], "64");
    EXPECT_EQ(changes, 1);
}

TEST_F(EditableListTest, ACellThatCollidesWithAnotherRowIsRefused) {
    make();
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "value", QStringLiteral("a"));
        press(dialog, "ok");
        expectBox("Another 'Name' exists with this same value.", "ERROR: Illegal Value Entered");
        type(dialog, "value", QStringLiteral("x;y"));
        press(dialog, "ok");
        expectBox("Error: The value you entered cannot contain a semi-colon",
                  "ERROR: Illegal Value Entered");
        press(dialog, "cancel");
    });
    list->editCell(0);
    EXPECT_EQ(list->rows(), kRows);
}

TEST_F(EditableListTest, ACellOfAChoiceOffersItsEntries) {
    make();
    stage.door.next([](QDialog& dialog) {
        auto* box = find<QComboBox>(dialog, "value");
        EXPECT_EQ(box->count(), 2);
        QTest::keyClick(box, Qt::Key_Down);
        press(dialog, "ok");
    });
    list->editCell(3);
    EXPECT_EQ(list->rows()[0][3], "Tape");
}

TEST_F(EditableListTest, TheDeleteKeyEmptiesAChoiceThatMayBeEmpty) {
    auto setup = sampleSetup();
    setup.columns[3].mayBeEmpty = true;
    setup.columns.push_back({.title = "Kind", .kind = ColumnKind::Choice, .choices = {"x"}});
    make(setup, {{"a", "1", "", "Tape", "x"}, {"b", "2", "", "raw", "x"}});
    stage.door.next([](QDialog& dialog) {
        for (const char* name : {"type", "kind"}) {
            QTest::keyClick(find<QComboBox>(dialog, name), Qt::Key_Delete);
        }
        press(dialog, "ok");
    });
    list->editRow();
    EXPECT_EQ(list->rows()[0], (ListRow{"a", "1", "", "", "x"}));
    list->selectRow(1);
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "value")->placeholderText(), QStringLiteral("raw"));
        press(dialog, "ok");
    });
    list->editCell(3);
    EXPECT_EQ(list->rows()[1][3], "raw") << "no entry, and nobody has emptied it";
    stage.door.next([](QDialog& dialog) {
        QTest::keyClick(find<QComboBox>(dialog, "value"), Qt::Key_Delete);
        press(dialog, "ok");
    });
    list->editCell(3);
    EXPECT_EQ(list->rows()[1][3], "");
}

TEST_F(EditableListTest, ADoubleClickEditsTheCellWhereTheListSaysSo) {
    auto setup = sampleSetup();
    setup.editCells = true;
    setup.columns[1].editable = false;
    make(setup);
    auto* view = list->view();
    const auto doubleClick = [&](int columnAt) {
        const auto place = view->visualRect(view->model()->index(0, columnAt)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    };
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("CurrentValue"));
        press(dialog, "ok");
    });
    doubleClick(2);
    doubleClick(1);
    EXPECT_EQ(stage.ui.beeps, 1);
}

TEST_F(EditableListTest, EditingWithNothingSelectedIsRefused) {
    make(sampleSetup(), {});
    EXPECT_FALSE(find<QPushButton>(*list, "edit")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(*list, "delete")->isEnabled());
    list->editRow();
    expectBox("Unable to edit. Nothing was selected.", "Unable To Edit ListView");
    list->editCell(0);
    list->deleteRow();
    EXPECT_EQ(stage.ui.boxes.size(), 3u);
}

TEST_F(EditableListTest, AListWithANameAsksUnderIt) {
    auto setup = sampleSetup();
    setup.name = "Things";
    make(setup);
    stage.ui.byId[83] = Button::Yes;
    press(*list, "delete");
    expectBox("Delete This Entry?", "Things");
    EXPECT_EQ(stage.ui.boxes.back().shownText(), "Delete This Entry?") << "without its number";
    EXPECT_EQ(list->rowCount(), 2);
}

TEST_F(EditableListTest, DeleteAsksAndSelectsTheNextRow) {
    make();
    stage.ui.queued = {Button::No, Button::Yes};
    list->selectRow(1);
    press(*list, "delete");
    EXPECT_EQ(list->rowCount(), 3);
    EXPECT_EQ(stage.ui.boxes.back().title, "Delete This Entry?");
    QTest::keyClick(list->view(), Qt::Key_Delete);
    EXPECT_EQ(column(0), (Texts{"b", "c"}));
    EXPECT_EQ(list->currentRow(), 1);
    EXPECT_EQ(changes, 1);
    list->mayDelete = [](int row) { return row == 1; };
    press(*list, "delete");
    EXPECT_EQ(list->currentRow(), 0);
    press(*list, "delete");
    EXPECT_EQ(column(0), (Texts{"b"}));
}

TEST_F(EditableListTest, RowsMoveByButtonsAndKeys) {
    make();
    EXPECT_FALSE(find<QPushButton>(*list, "moveUp")->isEnabled());
    press(*list, "moveDown");
    EXPECT_EQ(column(0), (Texts{"A", "b", "c"}));
    EXPECT_EQ(list->currentRow(), 1);
    QTest::keyClick(list->view(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(column(0), (Texts{"A", "c", "b"}));
    EXPECT_FALSE(find<QPushButton>(*list, "moveDown")->isEnabled());
    press(*list, "moveUp");
    EXPECT_EQ(column(0), (Texts{"A", "b", "c"}));
    EXPECT_EQ(changes, 3);
}

TEST_F(EditableListTest, AClickOnAHeadSortsByTheKindOfTheColumnThenTheOtherWayThenNot) {
    make();
    list->selectRow(2);
    auto* head = list->view()->horizontalHeader();
    const auto click = [&](int section) {
        const QPoint place(head->sectionViewportPosition(section) + 10, head->height() / 2);
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    };
    click(0);
    EXPECT_EQ(shown(0), (Texts{"A", "b", "c"}));
    click(1);
    EXPECT_EQ(shown(1), (Texts{"9", "10", "100"}));
    click(1);
    EXPECT_EQ(shown(1), (Texts{"100", "10", "9"}));
    EXPECT_EQ(head->sortIndicatorSection(), 1);
    EXPECT_EQ(head->sortIndicatorOrder(), Qt::DescendingOrder);
    // The row that was selected still is.
    EXPECT_EQ(list->currentRow(), 2);
    EXPECT_EQ(list->view()->currentIndex().row(), 0);
    click(1);
    EXPECT_EQ(shown(1), (Texts{"10", "9", "100"}));
    EXPECT_LT(head->sortIndicatorSection(), 0);
    EXPECT_TRUE(stage.ui.progressTexts.empty());
}

TEST_F(EditableListTest, ASortIsAViewAndNeverTheOrderOfTheRows) {
    make();
    list->sortBy(0);
    EXPECT_EQ(list->rows(), kRows);
    EXPECT_EQ(changes, 0);
    // A row is edited, added and deleted where it is, wherever it is shown.
    list->selectRow(0);
    EXPECT_EQ(list->view()->currentIndex().row(), 1);
    list->rowEditor = [&](int row, const ListRow&) -> std::optional<ListRow> {
        return ListRow{row == 3 ? "aa" : "z", "1", "", "RF"};
    };
    press(*list, "edit");
    EXPECT_EQ(column(0), (Texts{"z", "A", "c"}));
    EXPECT_EQ(shown(0), (Texts{"A", "z", "c"})) << "an edited row does not jump away";
    press(*list, "add");
    EXPECT_EQ(column(0), (Texts{"z", "A", "c", "aa"}));
    EXPECT_EQ(shown(0), (Texts{"A", "z", "c", "aa"}));
    EXPECT_EQ(list->currentRow(), 3);
    stage.ui.otherwise = Button::Yes;
    list->selectRow(0);
    press(*list, "delete");
    EXPECT_EQ(column(0), (Texts{"A", "c", "aa"}));
    EXPECT_EQ(shown(0), (Texts{"A", "c", "aa"}));
    EXPECT_EQ(list->currentRow(), 1) << "the next of those that are shown";
    // New rows are shown in their own order.
    list->setRows(kRows);
    EXPECT_EQ(shown(0), (Texts{"b", "A", "c"}));
}

TEST_F(EditableListTest, RowsDoNotMoveWhileTheyAreShownSorted) {
    make();
    list->sortBy(0);
    list->selectRow(1);
    for (const char* const name : {"moveUp", "moveDown"}) {
        EXPECT_FALSE(find<QPushButton>(*list, name)->isEnabled());
        EXPECT_NE(find<QPushButton>(*list, name)->toolTip(), QString());
    }
    QTest::keyClick(list->view(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(stage.ui.beeps, 1);
    EXPECT_EQ(list->rows(), kRows);
    EXPECT_EQ(changes, 0);
    list->sortBy(0);
    list->sortBy(0);
    press(*list, "moveDown");
    EXPECT_EQ(column(0), (Texts{"b", "c", "A"}));
    EXPECT_EQ(find<QPushButton>(*list, "moveUp")->toolTip(), QString());
}

TEST_F(EditableListTest, TheSortOfALongListTellsItsProgress) {
    Rows rows;
    for (int i = 0; i < 20000; ++i) {
        rows.push_back({"N" + std::to_string(i * 7919 % 20000), std::to_string(i % 64), "", "RF"});
    }
    QElapsedTimer timer;
    timer.start();
    make(sampleSetup(), rows);
    list->sortBy(0);
    list->sortBy(1);
    // Unoptimised and on a busy machine; a quadratic sort would take minutes.
    EXPECT_LT(timer.elapsed(), 5000);
    const auto& texts = stage.ui.progressTexts;
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts.front(), "Sorting list by 'Name'\n1% Complete");
    EXPECT_EQ(texts.back(), "Rebuilding List");
    EXPECT_NE(
        std::find(stage.ui.statusTexts.begin(), stage.ui.statusTexts.end(), "Sorting Column #2"),
        stage.ui.statusTexts.end());
    EXPECT_EQ(stage.ui.progressOpened, 2);
    EXPECT_EQ(stage.ui.progressClosed, 2);
    EXPECT_EQ(list->rows(), rows);
    const auto lengths = shown(1);
    EXPECT_TRUE(std::is_sorted(lengths.begin(), lengths.end(), [](const auto& a, const auto& b) {
        return std::stol(a) < std::stol(b);
    }));
}

TEST_F(EditableListTest, AFormMayPutItsOwnDialogAndButtonsThere) {
    make();
    list->rowEditor = [](int row, const ListRow& before) -> std::optional<ListRow> {
        return row == 0 ? std::nullopt : std::optional(ListRow{"own", before[1], "", "RF"});
    };
    auto* own = list->addButton("editSource", QStringLiteral("Edit Source Definition"));
    EXPECT_TRUE(list->isAncestorOf(own));
    press(*list, "edit");
    EXPECT_EQ(changes, 0);
    list->selectRow(1);
    press(*list, "edit");
    EXPECT_EQ(list->rows()[1], (ListRow{"own", "9", "", "RF"}));
}

TEST_F(EditableListTest, APageOfAListMovesItsRowsInAndOut) {
    Rows rows = kRows;
    PropertySheet sheet(stage.form, "Sheet", "Edit", "");
    auto& page = static_cast<ListPage&>(sheet.addPage(
        std::make_unique<ListPage>(stage.form, "Things", "Things", sampleSetup(), rows)));
    stage.door.next([&](QDialog& dialog) {
        EXPECT_FALSE(sheet.isChanged());
        page.list().moveRow(1);
        EXPECT_TRUE(sheet.isChanged());
        page.list().sortBy(0);
        press(dialog, "ok");
    });
    EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::Stored);
    EXPECT_EQ(rows, (Rows{kRows[1], kRows[0], kRows[2]})) << "moved, and not sorted";
}

TEST(CellLess, NumbersAreBeforeTextsAndTextsHaveNoCase) {
    EXPECT_TRUE(cellLess("9", "10", true));
    EXPECT_FALSE(cellLess("9", "10", false));
    EXPECT_TRUE(cellLess("10", "x", true));
    EXPECT_FALSE(cellLess("x", "10", true));
    EXPECT_TRUE(cellLess("a", "B", false));
    EXPECT_FALSE(cellLess("a", "A", false));
}

}  // namespace
}  // namespace kavu
