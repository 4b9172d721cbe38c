// Copy and paste of the window of a database.
#include "app/framework/DialogDoor.h"
#include "app/framework/QtText.h"
#include "app/framework/TableClipboard.h"
#include "app/mdb/ChangesDialog.h"
#include "app/mdb/DatabaseWindow.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QTableView>

namespace kavu {

namespace {

constexpr const char* kClipKind = "database";
constexpr const char* kPasteCellsTitle = "Paste Into Database";
/// A list of more cells is not read by anybody; all of them are pasted.
constexpr std::size_t kMostShownCells = 10'000;

}  // namespace

/// What a paste would do, cell by cell.
struct DatabaseWindow::Paste {
    std::vector<DatabaseEdit::CellChange> cells{};  ///< also those that stay as they are
    std::size_t newRows = 0;
    std::size_t droppedColumns = 0;  ///< of the clipboard, to the right of the last field
};

void DatabaseWindow::copyCells() const {
    const auto block = selectedBlock();
    if (block.places.empty()) {
        return;
    }
    TableClip clip;
    clip.kind = kClipKind;
    for (const int place : block.places) {
        auto& shown = clip.rows.emplace_back();
        for (const int column : block.columns) {
            shown.push_back(model_->textAt(model_->rowAt(place), model_->fieldAt(column)));
        }
    }
    clip.own = clip.rows;  // with the bytes that a text of the clipboard could not hold
    copyTable(clip);
}

DatabaseWindow::Paste DatabaseWindow::plannedPaste() const {
    const auto clip = pasteTable();
    Paste paste;
    if (!clip) {
        return paste;
    }
    const auto& rows = clip->kind == kClipKind ? clip->own : clip->rows;
    const auto block = selectedBlock();
    const auto at = view_->currentIndex();
    if (rows.size() == 1 && rows.front().size() == 1 && !block.places.empty()) {
        for (const int place : block.places) {
            for (const int column : block.columns) {
                paste.cells.push_back(
                    {model_->rowAt(place), model_->fieldAt(column), rows.front().front()});
            }
        }
        return paste;
    }
    int place = block.places.empty() ? std::max(at.row(), 0) : block.places.front();
    const int first = block.columns.empty() ? std::max(at.column(), 0) : block.columns.front();
    for (const auto& row : rows) {
        const bool isNew = place >= model_->rowCount();
        const auto target = isNew ? edit_.size() + paste.newRows++ : model_->rowAt(place);
        int column = first;
        for (const auto& text : row) {
            if (column < model_->columnCount()) {
                paste.cells.push_back({target, model_->fieldAt(column), text});
            }
            ++column;
        }
        const auto dropped = std::max(0, column - model_->columnCount());
        paste.droppedColumns = std::max(paste.droppedColumns, static_cast<std::size_t>(dropped));
        ++place;
    }
    return paste;
}

void DatabaseWindow::pasteCells() {
    endCellEdit();
    const auto paste = plannedPaste();
    if (paste.cells.empty()) {
        showBox(&form().ui, "There is no text in the clipboard.", kPasteCellsTitle,
                Icon::Information);
        return;
    }
    std::vector<ShownChange> changes;
    std::size_t count = 0;
    std::vector<MdbFault> faults;
    for (const auto& [row, field, text] : paste.cells) {
        const bool isNew = row >= edit_.size();
        const auto before = isNew ? std::string() : model_->textAt(row, field);
        if (before == text) {
            continue;
        }
        if (++count > kMostShownCells) {
            continue;
        }
        faults.clear();
        model_->table().check(field, text, faults);
        changes.push_back({.name = isNew ? formatPrintf("(new record %d)", row - edit_.size() + 1)
                                         : std::string(edit_.row(row).name()),
                           .field = std::string(mdbFields()[field].label),
                           .before = before,
                           .after = text,
                           .remark = faults.empty() ? "" : "Not allowed here"});
    }
    if (count == 0 && paste.newRows == 0) {
        showBox(&form().ui, "The clipboard holds what is there already.", kPasteCellsTitle,
                Icon::Information);
        return;
    }
    ChangesSetup setup;
    setup.resourceName = "MDB_PASTE";
    setup.title = kPasteCellsTitle;
    setup.text = paste.newRows == 0
                     ? formatPrintf("%d cells will change.", count)
                     : formatPrintf("%d cells will change, and %d records will be added.", count,
                                    paste.newRows);
    setup.text += paste.droppedColumns > 0
                      ? formatPrintf(" %d columns of the clipboard have no field and are left out.",
                                     paste.droppedColumns)
                      : "";
    setup.text +=
        count > kMostShownCells ? formatPrintf(" The first %d are shown.", kMostShownCells) : "";
    ChangesDialog dialog(form(), setup, std::move(changes), this);
    if (runDialog(form().door, dialog) == QDialog::Accepted) {
        (void)edit_.setCells(paste.cells);
        follow();
    }
    view_->setFocus();
}

}  // namespace kavu
