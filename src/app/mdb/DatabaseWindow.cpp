#include "app/mdb/DatabaseWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/mdb/RecordDelegate.h"
#include "app/mdb/WindowParts.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/text/Printf.h"
#include "mdb/operations/DatabaseCsv.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <algorithm>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace kavu {

DatabaseWindow::DatabaseWindow(FormContext& form, DatabaseEdit& edit,
                               const MeasurementDatabase& database, QWidget* parent)
    : EditDialog(form, "EDITMEASUREMENTDATABASE", QStringLiteral("Edit Measurement Database"),
                 parent),
      edit_(edit),
      database_(database),
      model_(new RecordModel(edit, database.version(), form.edition, &form.ui, this)) {
    setNew();  // OK checks a database that nobody has changed, too
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* const path =
        look::makeNote(QStringLiteral("Current Database: ") + toQString(database.path()), this);
    path->setObjectName(QStringLiteral("database"));
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(path);
    layout->addLayout(makeFilter());
    makeTable();
    layout->addWidget(view_, 1);
    current_ = look::makeNote({}, this);
    current_->setObjectName(QStringLiteral("current"));
    current_->setWordWrap(false);
    current_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    layout->addWidget(current_);
    layout->addLayout(makeButtons());
    auto* const buttons = look::makeDialogButtons(*this, true);
    layout->addWidget(buttons);
    auto* const help = buttons->button(QDialogButtonBox::Help);
    help->setEnabled(static_cast<bool>(form.help));
    connect(help, &QPushButton::clicked, this,
            [this] { this->form().help(toBytes(objectName())); });
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);  // Return edits a cell
    }
    makeKeys();
    connect(model_, &RecordModel::edited, this, [this] {
        markChanged();
        updateState();
    });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &DatabaseWindow::updateState);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &DatabaseWindow::showCurrent);
    resize(QSize(look::charactersWide(*this, 150), look::unit(*this) * 66)
               .boundedTo(look::roomOnScreen(*this)));
    if (model_->rowCount() > 0) {
        view_->setCurrentIndex(model_->index(0, 0));
    }
    updateState();
    view_->setFocus();
}

// --- the parts -----------------------------------------------------------------------------------

QLayout* DatabaseWindow::makeFilter() {
    auto* const row = new QHBoxLayout;
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("filter"));
    filter_->setClearButtonEnabled(true);
    filterField_ = new QComboBox(this);
    filterField_->setObjectName(QStringLiteral("filterField"));
    filterField_->addItem(QStringLiteral("Any Field"));
    for (int column = 0; column < model_->columnCount(); ++column) {
        filterField_->addItem(
            model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    state_ = look::makeNote({}, this);
    state_->setObjectName(QStringLiteral("state"));
    state_->setWordWrap(false);
    row->addWidget(look::addKeyLabel(QStringLiteral("&Filter:"), *filter_));
    row->addWidget(filter_, 2);
    row->addWidget(look::addLabel(QStringLiteral("in"), *filterField_));
    row->addWidget(filterField_, 1);
    row->addWidget(state_, 1);
    connect(filter_, &QLineEdit::textChanged, this, &DatabaseWindow::applyFilter);
    connect(filterField_, &QComboBox::currentIndexChanged, this, &DatabaseWindow::applyFilter);
    return row;
}

void DatabaseWindow::makeTable() {
    view_ = new RecordView(this);
    arrangeLongTable(*view_, "records", QStringLiteral("Records of the database"), *model_, 4);
    view_->setItemDelegate(new RecordDelegate(*model_, view_));
    makeSortable(*view_);
    widenColumns(*view_, 10);
    view_->shareSorting();
    view_->setColumnWidth(0, std::max(view_->columnWidth(0), look::charactersWide(*this, 26)));
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QLayout* DatabaseWindow::makeButtons() {
    auto* const row = new QHBoxLayout;
    const auto add = [&](const char* name, const char16_t* text, const char16_t* icon,
                         auto action) {
        return addRowButton(*row, this, name, text, icon, action);
    };
    add("add", u"&Add", u"add", &DatabaseWindow::addRecord);
    needRecord_ = {add("duplicate", u"D&uplicate", u"copy", &DatabaseWindow::duplicateRecords),
                   add("delete", u"&Delete", u"delete", &DatabaseWindow::deleteRecords)};
    undo_ = add("undo", u"U&ndo", u"undo", &DatabaseWindow::undo);
    needRecord_.push_back(add("copy", u"&Copy", u"copy", &DatabaseWindow::copyCells));
    add("paste", u"&Paste...", u"", &DatabaseWindow::pasteCells);
    add("export", u"&Export...", u"export", &DatabaseWindow::exportRecords);
    auto* const more = look::makeButton("more", QStringLiteral("&More"), {}, this);
    auto* const menu = new QMenu(more);
    const auto entry = [&](const char* name, const char16_t* text, auto action) {
        auto* const made = menu->addAction(QString::fromUtf16(text));
        made->setObjectName(QLatin1String(name));
        connect(made, &QAction::triggered, this, action);
    };
    entry("samples", u"Create &Sample Entries...", &DatabaseWindow::createSamples);
    entry("deleteAll", u"Delete &All Entries...", &DatabaseWindow::deleteAll);
    entry("nextFault", u"Go To Next &Fault\tF8", &DatabaseWindow::goToNextFault);
    more->setMenu(menu);
    row->addWidget(more);
    row->addStretch(1);
    return row;
}

/// The keys of the table, which its context menu lists, and those of the window.
void DatabaseWindow::makeKeys() {
    const auto add = [this](const char* name, const char16_t* text, const QList<QKeySequence>& keys,
                            auto action) {
        auto* const made = new QAction(QString::fromUtf16(text), view_);
        made->setObjectName(QLatin1String(name));
        made->setShortcuts(keys);
        made->setShortcutContext(Qt::WidgetShortcut);
        connect(made, &QAction::triggered, this, action);
        view_->addAction(made);
    };
    add("editCell", u"&Edit", {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)},
        [this] { view_->edit(view_->currentIndex()); });
    add("clearCells", u"C&lear", {QKeySequence(Qt::Key_Delete)}, &DatabaseWindow::clearCells);
    add("copyCells", u"&Copy", {QKeySequence::Copy}, &DatabaseWindow::copyCells);
    add("pasteCells", u"&Paste...", {QKeySequence::Paste}, &DatabaseWindow::pasteCells);
    add("undoStep", u"U&ndo", {QKeySequence::Undo}, &DatabaseWindow::undo);
    add("addEntry", u"&Add Entry", {QKeySequence(Qt::Key_Insert)}, &DatabaseWindow::addRecord);
    add("duplicateEntries", u"D&uplicate Entry", {}, &DatabaseWindow::duplicateRecords);
    add("deleteEntries", u"&Delete Entry", {}, &DatabaseWindow::deleteRecords);
    const auto addForWindow = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    addForWindow(QKeySequence::Find, [this] { filter_->setFocus(); });
    addForWindow(QKeySequence(Qt::Key_F8), &DatabaseWindow::goToNextFault);
}

// --- what is shown -------------------------------------------------------------------------------

void DatabaseWindow::applyFilter() {
    const int chosen = filterField_->currentIndex();
    model_->setFilter(filter_->text(),
                      chosen <= 0 ? RecordModel::kAnyField : model_->fieldAt(chosen - 1));
    if (model_->rowCount() > 0) {
        view_->setCurrentIndex(model_->index(0, 0));
    }
    updateState();
}

/// After a change of the edit that did not come through a cell.
void DatabaseWindow::follow() {
    const auto place = view_->currentIndex();
    model_->follow();
    if (!view_->currentIndex().isValid() && model_->rowCount() > 0) {
        view_->setCurrentIndex(model_->index(std::clamp(place.row(), 0, model_->rowCount() - 1),
                                             std::max(place.column(), 0)));
    }
    markChanged();
    updateState();
}

/// Lists everything again; the cursor stays at its place.
void DatabaseWindow::refresh() {
    const auto place = view_->currentIndex();
    const int row = place.row();
    const int column = place.column();
    model_->refresh();
    if (model_->rowCount() > 0) {
        view_->setCurrentIndex(
            model_->index(std::clamp(row, 0, model_->rowCount() - 1), std::max(column, 0)));
    }
    markChanged();
    updateState();
}

void DatabaseWindow::updateState() {
    const auto shown = static_cast<std::size_t>(model_->rowCount());
    state_->setText(shown == edit_.size()
                        ? QStringLiteral("%L1 records").arg(shown)
                        : QStringLiteral("%L1 of %L2 records").arg(shown).arg(edit_.size()));
    undo_->setEnabled(edit_.canUndo());
    showCurrent();
    for (auto* const button : needRecord_) {
        button->setEnabled(view_->selectionModel()->hasSelection());
    }
}

/// Which record and field the cursor is in, as the name may be out of sight, and what is wrong
/// there.
void DatabaseWindow::showCurrent() {
    const auto index = view_->currentIndex();
    if (!index.isValid()) {
        current_->clear();
        return;
    }
    const auto fault = index.data(Qt::ToolTipRole).toString();
    const auto field =
        model_->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    current_->setText(QStringLiteral("%1  |  %2")
                          .arg(model_->index(index.row(), 0).data().toString(),
                               fault.isEmpty() ? field : field + QStringLiteral(": ") + fault));
}

void DatabaseWindow::select(std::size_t row, std::size_t field) {
    const int column = std::max(0, model_->columnOf(field));
    if (model_->placeOf(row) < 0) {
        const QSignalBlocker quiet(filter_);
        filter_->clear();
        applyFilter();
    }
    const auto index = model_->index(model_->placeOf(row), column);
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
    view_->setFocus();
}

/// A cell that is being edited takes what was typed.
void DatabaseWindow::endCellEdit() {
    const auto* const focus = QApplication::focusWidget();
    if (focus != nullptr && focus != view_ && view_->isAncestorOf(focus)) {
        view_->setFocus();
    }
}

std::vector<std::size_t> DatabaseWindow::selectedRows() const {
    std::vector<std::size_t> rows;
    for (const int place : selectedBlock().places) {
        rows.push_back(model_->rowAt(place));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

DatabaseWindow::Block DatabaseWindow::selectedBlock() const {
    Block block;
    for (const auto& range : view_->selectionModel()->selection()) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            block.places.push_back(place);
        }
        for (int column = range.left(); column <= range.right(); ++column) {
            block.columns.push_back(column);
        }
    }
    for (auto* const numbers : {&block.places, &block.columns}) {
        std::sort(numbers->begin(), numbers->end());
        numbers->erase(std::unique(numbers->begin(), numbers->end()), numbers->end());
    }
    return block;
}

// --- edits ---------------------------------------------------------------------------------------

void DatabaseWindow::addRecord() {
    endCellEdit();
    const auto row = edit_.add(MdbRecord());
    follow();
    select(row, mdbfield::kName);
    view_->edit(view_->currentIndex());
}

void DatabaseWindow::duplicateRecords() {
    endCellEdit();
    if (const auto rows = selectedRows(); !rows.empty()) {
        const auto first = edit_.duplicate(rows);
        follow();
        select(first, mdbfield::kName);
    }
}

void DatabaseWindow::deleteRecords() {
    endCellEdit();
    if (edit_.remove(&form().ui, selectedRows())) {
        follow();
    }
}

void DatabaseWindow::deleteAll() {
    endCellEdit();
    std::vector<std::size_t> all(edit_.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = i;
    }
    if (edit_.remove(&form().ui, all)) {
        follow();
    }
}

void DatabaseWindow::clearCells() {
    std::vector<DatabaseEdit::CellChange> changes;
    const auto block = selectedBlock();
    for (const int place : block.places) {
        for (const int column : block.columns) {
            if (view_->selectionModel()->isSelected(model_->index(place, column))) {
                changes.push_back({model_->rowAt(place), model_->fieldAt(column), {}});
            }
        }
    }
    if (edit_.setCells(changes) > 0) {
        follow();
    }
}

void DatabaseWindow::undo() {
    endCellEdit();
    if (edit_.undo()) {
        refresh();
    }
}

void DatabaseWindow::createSamples() {
    endCellEdit();
    if (edit_.createSamples(&form().ui)) {
        refresh();
    }
}

void DatabaseWindow::exportRecords() {
    endCellEdit();
    FilePrompt prompt;
    prompt.title = "Export Measurements";
    prompt.filters = {{"Comma Delimited Files", "*.csv"}, {"All Files", "*"}};
    prompt.forSaving = true;
    prompt.extension = ".csv";
    prompt.confirmsOverwrite = true;
    const auto choice = form().ui.chooseFile(prompt);
    if (!choice) {
        return;
    }
    std::vector<std::size_t> rows;
    for (int place = 0; place < model_->rowCount(); ++place) {
        rows.push_back(model_->rowAt(place));
    }
    std::vector<std::size_t> fields;
    for (int column = 0; column < model_->columnCount(); ++column) {
        fields.push_back(model_->fieldAt(column));
    }
    if (const auto status = writeDatabaseCsv(choice->path, edit_, rows, fields); !status.ok()) {
        reportUnableToWrite(&form().ui, status);
    }
}

void DatabaseWindow::goToNextFault() {
    const auto next = model_->nextFault(view_->currentIndex());
    if (!next.isValid()) {
        showBox(&form().ui, "No record that is shown breaks a rule.", toBytes(windowTitle()),
                Icon::Information);
        return;
    }
    select(model_->rowAt(next.row()), model_->fieldAt(next.column()));
}

/// The buttons of a dialog make OK its default when they are shown; here Return ends the typing in
/// a cell or a filter.
void DatabaseWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        EditDialog::keyPressEvent(event);
    }
}

bool DatabaseWindow::store() {
    endCellEdit();
    std::vector<DatabaseEdit::Fault> faults;
    if (edit_.store(&form().ui, &faults)) {
        return true;
    }
    if (!faults.empty()) {
        select(faults.front().row, faults.front().index);
    } else {
        refresh();  // the changes may have been put on top of those of another program
    }
    return false;
}

bool editDatabase(FormContext& form, DocumentContext& document, QWidget* parent) {
    const auto database = settingsDatabase(document);
    DatabaseEdit edit(document, *database);
    if (!edit.begin(&form.ui)) {
        return false;
    }
    DatabaseWindow window(form, edit, *database, parent);
    if (runDialog(form.door, window) == QDialog::Accepted) {
        return true;
    }
    (void)edit.cancel(&form.ui);
    return false;
}

}  // namespace kavu
