#include "app/framework/EditableList.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/ListHead.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowDialog.h"
#include "app/framework/RowModel.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kUnableToEdit[] = "Unable To Edit ListView";
/// A list longer than this takes long enough to sort that its progress is shown.
constexpr std::size_t kLongList = 1000;

std::vector<std::string> titlesOf(const std::vector<ListColumn>& columns) {
    std::vector<std::string> titles;
    for (const auto& column : columns) {
        titles.push_back(column.title);
    }
    return titles;
}

bool isNumeric(ColumnKind kind) {
    return kind == ColumnKind::Integer || kind == ColumnKind::Double;
}

long clampedLong(double number) {
    // The ends of a double's range are no longs.
    if (number <= static_cast<double>(std::numeric_limits<long>::min())) {
        return std::numeric_limits<long>::min();
    }
    if (number >= static_cast<double>(std::numeric_limits<long>::max())) {
        return std::numeric_limits<long>::max();
    }
    return static_cast<long>(number);
}

/// What is wrong with a value by itself.
std::optional<std::string> refusalOfKind(const ListColumn& column, const std::string& value) {
    if (value.empty()) {
        return !column.required
                   ? std::nullopt
                   : std::optional(formatPrintf("You must enter a value for '%s'.", column.title));
    }
    switch (column.kind) {
        case ColumnKind::Integer:
            return integerCheck(clampedLong(column.least), clampedLong(column.most))(value);
        case ColumnKind::Double:
            return doubleCheck(column.least, column.most)(value);
        case ColumnKind::Text:
        case ColumnKind::Choice:
            break;
    }
    return textCheck(column.limit)(value);
}

}  // namespace

std::string rangeOf(const ListColumn& column) {
    switch (column.kind) {
        case ColumnKind::Integer:
            return rangeText(clampedLong(column.least), clampedLong(column.most));
        case ColumnKind::Double:
            return rangeText(column.least, column.most);
        case ColumnKind::Text:
            return limitText(column.limit);
        case ColumnKind::Choice:
            break;
    }
    return {};
}

EditableList::EditableList(FormContext& form, const char* name, ListSetup setup, QWidget* parent)
    : QWidget(parent), form_(form), setup_(std::move(setup)) {
    setObjectName(QLatin1String(name));
    auto* layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    makeView();
    layout->addWidget(view_, 1);
    buttons_ = new QHBoxLayout;
    layout->addLayout(buttons_);
    makeButtons();
    updateButtons();
}

EditableList::~EditableList() = default;

void EditableList::makeView() {
    model_ = new RowModel(titlesOf(setup_.columns), this);
    for (int i = 0; i < static_cast<int>(setup_.columns.size()); ++i) {
        if (isNumeric(setup_.columns[static_cast<std::size_t>(i)].kind)) {
            model_->setNumeric(i);
        }
    }
    view_ = new QTableView(this);
    view_->setObjectName(QStringLiteral("rows"));
    view_->setAccessibleName(QStringLiteral("Rows"));
    view_->setModel(model_);
    view_->setSelectionBehavior(QTableView::SelectRows);
    view_->setSelectionMode(QTableView::SingleSelection);
    view_->setEditTriggers(QTableView::NoEditTriggers);
    view_->setAlternatingRowColors(true);
    view_->setShowGrid(false);
    view_->setTabKeyNavigation(false);
    view_->setWordWrap(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setMinimumSectionSize(1);
    view_->verticalHeader()->setDefaultSectionSize(look::unit(*view_) * 3);
    head_ = new ListHead(view_);
    view_->setHorizontalHeader(head_);
    auto* const head = head_;
    head->setHighlightSections(false);
    head->setStretchLastSection(true);
    head->setResizeContentsPrecision(200);
    head->setSectionsClickable(setup_.canSort);
    head->setSortIndicatorShown(setup_.canSort);
    head->setSortIndicator(-1, Qt::AscendingOrder);
    view_->setMinimumSize(look::charactersWide(*this, 48), look::unit(*this) * 3 * 7);
    view_->installEventFilter(this);
    view_->viewport()->installEventFilter(this);
    // A width that a person has chosen is not fitted again.
    connect(head, &QHeaderView::sectionResized, this, [this] {
        isSizedByHand_ = isSizedByHand_ || (!isFitting_ && head_->viewport()->underMouse() &&
                                            QGuiApplication::mouseButtons() != Qt::NoButton);
    });
    if (setup_.canSort) {
        connect(head, &QHeaderView::sectionClicked, this, &EditableList::sortBy);
    }
    connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (setup_.editCells) {
            editCell(index.column());
        } else {
            editRow();
        }
    });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        updateButtons();
        emit currentRowChanged(currentRow());
    });
}

void EditableList::makeButtons() {
    const auto make = [&](bool wanted, const char* name, const char16_t* text, const char16_t* icon,
                          auto action) {
        auto* button =
            look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), this);
        connect(button, &QPushButton::clicked, this, action);
        button->setVisible(wanted);
        buttons_->addWidget(button);
        return button;
    };
    add_ = make(setup_.canAdd, "add", u"&Add", u"add", [this] { addRow(); });
    edit_ = make(setup_.canEdit, "edit", u"&Edit", u"edit", [this] { editRow(); });
    delete_ = make(setup_.canDelete, "delete", u"&Delete", u"delete", [this] { deleteRow(); });
    up_ = make(setup_.canMove, "moveUp", u"Move &Up", u"up", [this] { moveRow(-1); });
    down_ = make(setup_.canMove, "moveDown", u"Move Do&wn", u"down", [this] { moveRow(1); });
    buttons_->addStretch();
}

QPushButton* EditableList::addButton(const char* name, const QString& text) {
    auto* button = look::makeButton(name, text, {}, this);
    buttons_->addWidget(button);
    return button;
}

void EditableList::updateButtons() {
    const int row = currentRow();
    add_->setEnabled(setup_.mostRows == 0 || rowCount() < setup_.mostRows);
    edit_->setEnabled(row >= 0);
    delete_->setEnabled(row >= 0);
    const bool movable = model_->isInOwnOrder();
    up_->setEnabled(movable && row > 0);
    down_->setEnabled(movable && row >= 0 && row + 1 < rowCount());
    for (auto* const button : {up_, down_}) {
        button->setToolTip(movable ? QString()
                                   : QStringLiteral("The list is shown sorted. A click on the head "
                                                    "of the column brings back its own order."));
    }
}

void EditableList::fitColumns() {
    if (isFitting_) {
        return;
    }
    isFitting_ = true;
    // A stretched column does not shrink to its contents: it would grow with every fit.
    head_->setStretchLastSection(false);
    const int least = std::max(minimumWidth(), view_->minimumWidth()) - 2 * view_->frameWidth();
    // Before it has its place there is no width but the least.
    const int room = view_->testAttribute(Qt::WA_Resized) ? view_->viewport()->width() : least;
    const int air = look::unit(*this);
    head_->setBreaksTitles(false);
    if (fitToContents(air) > room) {
        head_->setBreaksTitles(true);
        if (fitToContents(air) > room) {
            shrinkColumns(fitToContents(0) - room);
            if (head_->length() > room) {
                // What has to be scrolled to in any case is shown in full.
                fitToContents(0);
            }
        }
    }
    head_->setStretchLastSection(true);
    isFitting_ = false;
}

/// Gives each column the width of its contents and some air, and returns that of all.
int EditableList::fitToContents(int air) {
    int all = 0;
    for (int column = 0; column < model_->columnCount(); ++column) {
        view_->resizeColumnToContents(column);
        const int width =
            std::clamp(view_->columnWidth(column) + air, look::charactersWide(*this, 10),
                       look::charactersWide(*this, 40));
        view_->setColumnWidth(column, width);
        all += width;
    }
    return all;
}

/// Takes what is too much from the widest columns, which then elide their values, but never so much
/// that a title is cut. What is left of it is scrolled to.
void EditableList::shrinkColumns(int excess) {
    while (excess > 0) {
        const int narrow = look::charactersWide(*this, 8);
        int widest = -1;
        int second = 0;
        for (int column = 0; column < model_->columnCount(); ++column) {
            const int width = view_->columnWidth(column);
            if (width <= std::max(narrow, head_->sectionSizeHint(column))) {
                continue;
            }
            if (widest < 0 || width > view_->columnWidth(widest)) {
                second = widest < 0 ? 0 : view_->columnWidth(widest);
                widest = column;
            } else {
                second = std::max(second, width);
            }
        }
        if (widest < 0) {
            return;
        }
        const int width = view_->columnWidth(widest);
        const int least = std::max({narrow, head_->sectionSizeHint(widest), second - 1});
        const int taken = std::min(excess, std::max(1, width - least));
        view_->setColumnWidth(widest, width - taken);
        excess -= taken;
    }
}

void EditableList::setRows(std::vector<ListRow> rows) {
    model_->setRows(std::move(rows));
    showSortedBy(-1);
    fitColumns();
    selectRow(0);
    updateButtons();
}

const std::vector<ListRow>& EditableList::rows() const {
    return model_->rows();
}

int EditableList::rowCount() const {
    return model_->rowCount();
}

int EditableList::currentRow() const {
    const auto selected = view_->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : model_->rowAt(selected.constFirst().row());
}

void EditableList::selectRow(int row) {
    if (row < 0 || row >= rowCount()) {
        view_->selectionModel()->clear();
        return;
    }
    const auto index =
        model_->index(model_->placeOf(row), std::max(0, view_->currentIndex().column()));
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
}

void EditableList::replaceRow(int row, ListRow values) {
    if (model_->rows()[static_cast<std::size_t>(row)] != values) {
        model_->replaceRow(row, std::move(values));
        emit changed();
    }
}

std::optional<std::string> EditableList::refusal(int row, int column,
                                                 const std::string& value) const {
    const auto& of = setup_.columns[static_cast<std::size_t>(column)];
    if (value.find(';') != std::string::npos) {
        return "Error: The value you entered cannot contain a semi-colon";
    }
    if (auto why = refusalOfKind(of, value)) {
        return why;
    }
    if (of.check && !value.empty()) {
        if (auto why = of.check(value)) {
            return why;
        }
    }
    if (!of.unique || value.empty()) {
        return std::nullopt;
    }
    const auto& all = model_->rows();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (static_cast<int>(i) != row &&
            equalsIgnoreCase(all[i][static_cast<std::size_t>(column)], value)) {
            return formatPrintf("Another '%s' exists with this same value.", of.title);
        }
    }
    return std::nullopt;
}

bool EditableList::somethingSelected() {
    if (currentRow() >= 0) {
        return true;
    }
    showBox(&form_.ui, "Unable to edit. Nothing was selected.", kUnableToEdit);
    return false;
}

std::optional<ListRow> EditableList::runRowDialog(int row, const ListRow& before, bool isNew) {
    if (rowEditor) {
        return rowEditor(row, before);
    }
    RowDialog dialog(form_, *this, setup_, row, before, isNew, window());
    return runDialog(form_.door, dialog) == QDialog::Accepted ? std::optional(dialog.values())
                                                              : std::nullopt;
}

void EditableList::addRow() {
    if (setup_.mostRows != 0 && rowCount() >= setup_.mostRows) {
        showBox(&form_.ui,
                formatPrintf("This list can hold no more than %d entries.", setup_.mostRows),
                kUnableToEdit);
        return;
    }
    ListRow blank;
    const int row = rowCount();
    for (const auto& column : setup_.columns) {
        blank.push_back(column.numbered ? column.numbered(row + 1) : column.initial);
    }
    model_->appendRow(blank);
    selectRow(row);
    if (auto entered = runRowDialog(row, blank, true)) {
        model_->replaceRow(row, std::move(*entered));
        updateButtons();
        emit changed();
        return;
    }
    model_->removeRowAt(row);
    selectRow(row - 1);
    updateButtons();
}

void EditableList::editRow() {
    if (!setup_.canEdit || !somethingSelected()) {
        return;
    }
    const int row = currentRow();
    if (auto entered = runRowDialog(row, rows()[static_cast<std::size_t>(row)], false)) {
        replaceRow(row, std::move(*entered));
    }
}

void EditableList::deleteRow() {
    if (!somethingSelected()) {
        return;
    }
    const int row = currentRow();
    const int place = model_->placeOf(row);
    const auto ask = [this] {
        return setup_.name.empty()
                   ? showBox(&form_.ui, "Do you wish to delete the selected entry?",
                             std::string(loadText(title::kDeleteEntry).value_or("")),
                             Icon::Question, Buttons::YesNo)
                   : form_.messages.showTitled(&form_.ui, -title::kDeleteEntry, setup_.name,
                                               kYesNoBox);
    };
    const bool may = mayDelete ? mayDelete(row) : ask() == Button::Yes;
    if (!may || row >= rowCount()) {
        return;
    }
    model_->removeRowAt(row);
    selectRow(rowCount() == 0 ? -1 : model_->rowAt(std::min(place, rowCount() - 1)));
    updateButtons();
    emit changed();
}

void EditableList::moveRow(int by) {
    const int row = currentRow();
    const int to = row + by;
    if (row < 0 || to < 0 || to >= rowCount()) {
        return;
    }
    if (!model_->isInOwnOrder()) {
        form_.ui.beep();
        return;
    }
    model_->swapRows(row, to);
    selectRow(to);
    updateButtons();
    emit changed();
}

void EditableList::editCell(int column) {
    if (!somethingSelected()) {
        return;
    }
    const int row = currentRow();
    const auto at = static_cast<std::size_t>(column);
    if (column < 0 || at >= setup_.columns.size() || !setup_.columns[at].editable) {
        form_.ui.beep();
        return;
    }
    auto values = rows()[static_cast<std::size_t>(row)];
    EnterValueSetup setup;
    setup.title = "Current Value";
    setup.prompt = setup_.columns[at].title + ":";
    setup.initial = values[at];
    setup.choices = setup_.columns[at].choices;
    setup.mayBeEmpty = setup_.columns[at].mayBeEmpty;
    setup.refuseSemicolon = false;
    setup.offerLock = false;
    setup.check = [&](const std::string& value) {
        return value == values[at] ? std::nullopt : refusal(row, column, value);
    };
    setup.hint = rangeOf(setup_.columns[at]);
    EnterValueDialog dialog(form_.ui, std::move(setup), window());
    dialog.setObjectName(QStringLiteral("CurrentValue"));
    if (runDialog(form_.door, dialog) == QDialog::Accepted) {
        values[at] = dialog.value();
        replaceRow(row, std::move(values));
    }
}

std::vector<int> EditableList::sortedOrder(int column) {
    const auto& all = rows();
    const auto& of = setup_.columns[static_cast<std::size_t>(column)];
    std::vector<int> order(all.size());
    std::iota(order.begin(), order.end(), 0);
    const double expected =
        static_cast<double>(all.size()) * static_cast<double>(std::bit_width(all.size()));
    std::size_t compared = 0;
    const bool numeric = isNumeric(of.kind);
    const auto cell = [&](int row) -> const std::string& {
        return all[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        if ((++compared & 0xFFF) == 0) {
            const double share = 100 * static_cast<double>(compared) / expected;
            const int percent = std::min(99, static_cast<int>(share));
            form_.ui.setProgressText(
                formatPrintf("Sorting list by '%s'\n%d%% Complete", of.title, percent));
            form_.ui.setProgressBar(percent);
            form_.ui.yieldToInterface();
        }
        return sortedDown_ ? cellLess(cell(b), cell(a), numeric)
                           : cellLess(cell(a), cell(b), numeric);
    });
    return order;
}

void EditableList::showSortedBy(int column) {
    sortedColumn_ = column;
    head_->setSortIndicator(column, sortedDown_ ? Qt::DescendingOrder : Qt::AscendingOrder);
    updateButtons();
}

void EditableList::sortBy(int column) {
    if (column < 0 || column >= model_->columnCount()) {
        return;
    }
    const bool isSorted = column == sortedColumn_;
    const bool isBack = isSorted && sortedDown_;
    sortedDown_ = isSorted && !sortedDown_;
    const int current = currentRow();
    const bool isLong = rows().size() > kLongList;
    ProgressScope progress(isLong ? &form_.ui : nullptr, ProgressMode::WithoutCancel);
    if (isLong) {
        form_.ui.setStatusText(formatPrintf("Sorting Column #%d", column + 1));
    }
    auto order = isBack ? std::vector<int>() : sortedOrder(column);
    if (isLong) {
        form_.ui.setProgressText("Rebuilding List");
        form_.ui.yieldToInterface();
    }
    model_->showInOrder(std::move(order));
    selectRow(current);
    showSortedBy(isBack ? -1 : column);
    if (!isSizedByHand_) {
        fitColumns();  // the arrow needs room
    }
    if (isLong) {
        form_.ui.setProgressBar(-1);
        form_.ui.setStatusText({});
    }
}

bool EditableList::handleKey(int key, bool alt) {
    switch (key) {
        case Qt::Key_F2:
            if (setup_.rowsOnly) {
                editRow();
            } else {
                editCell(std::max(0, view_->currentIndex().column()));
            }
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            editRow();
            return setup_.canEdit;
        case Qt::Key_Insert:
            if (add_->isVisibleTo(this) && add_->isEnabled()) {
                addRow();
            }
            return true;
        case Qt::Key_Delete:
            if (delete_->isVisibleTo(this) && delete_->isEnabled()) {
                deleteRow();
            }
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (alt && setup_.canMove) {
                moveRow(key == Qt::Key_Up ? -1 : 1);
                return true;
            }
            return false;
        default:
            return false;
    }
}

bool EditableList::eventFilter(QObject* receiver, QEvent* event) {
    if (view_ != nullptr && receiver == view_->viewport() && event->type() == QEvent::Resize &&
        !isSizedByHand_) {
        fitColumns();
    }
    if (receiver == view_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (handleKey(key->key(), (key->modifiers() & Qt::AltModifier) != 0)) {
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

ListPage::ListPage(FormContext& form, const char* resourceName, const std::string& title,
                   ListSetup setup, std::vector<ListRow>& rows, QWidget* parent)
    : PropertyPage(form, resourceName, title, parent), rows_(rows) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    list_ = new EditableList(form, "list", std::move(setup), this);
    list_->view()->setAccessibleName(toQString(title));
    layout->addWidget(list_);
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

void ListPage::load() {
    list_->setRows(rows_);
}

bool ListPage::store() {
    rows_ = list_->rows();
    return true;
}

}  // namespace kavu
