#include "app/groups/GroupRows.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/RowDialog.h"
#include "core/command/CommandPath.h"
#include "core/text/Text.h"
#include "groups/RTracks.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QHeaderView>
#include <QTableView>

namespace kavu {

namespace {

/// The setup with one column more, for the id. No view shows it.
ListSetup withId(ListSetup setup) {
    setup.columns.push_back({.title = "Id", .editable = false});
    return setup;
}

}  // namespace

ListColumn columnOf(const Field& field, int edition) {
    ListColumn column;
    column.title = field.label;
    column.limit = limitIn(edition, field);
    column.objectName = std::string(codeHead(field.code));
    if (!field.choices.empty()) {
        column.kind = ColumnKind::Choice;
        column.limit = 0;
        // A missing command would be the default again, and not nothing.
        column.mayBeEmpty = field.missing.empty();
        for (const auto& choice : choicesOf(field, edition)) {
            column.choices.emplace_back(choice.text);
        }
    }
    return column;
}

ValueCheck digitsCheck(std::size_t limit) {
    return [limit](const std::string& value) -> std::optional<std::string> {
        if (!std::all_of(value.begin(), value.end(), isDigit)) {
            return "Value entered is not a valid integer. Please re-enter.";
        }
        return textCheck(limit)(value);
    };
}

ListRow cellsOf(const GroupRow& row, std::span<const Field> fields, int edition) {
    ListRow cells;
    for (const auto& field : fields) {
        cells.push_back(textOfValue(field, edition, row.value(field.code), {}));
    }
    return cells;
}

void takeCells(GroupRow& row, const ListRow& cells, std::span<const Field> fields, int edition) {
    const auto before = cellsOf(row, fields, edition);
    for (std::size_t i = 0; i < fields.size() && i < cells.size(); ++i) {
        if (cells[i] != before[i]) {
            row.set(fields[i].code, valueOfText(fields[i], edition, cells[i]));
        }
    }
}

IdentifiedList::IdentifiedList(FormContext& form, const char* name, const ListSetup& setup,
                               QWidget* parent)
    : EditableList(form, name, withId(setup), parent), form_(form), shown_(setup) {
    view()->setColumnHidden(static_cast<int>(setup.columns.size()), true);
    rowEditor = [this](int row, const ListRow& before) { return editRowOf(row, before); };
}

void IdentifiedList::setIdentifiedRows(const std::vector<ListRow>& rows) {
    auto all = rows;
    nextId_ = 0;
    for (auto& row : all) {
        row.resize(shown_.columns.size());
        row.push_back(std::to_string(nextId_++));
    }
    setRows(std::move(all));
    // Some heads are longer than a column is made by itself.
    const auto& head = *view()->horizontalHeader();
    for (int i = 0; i < static_cast<int>(shown_.columns.size()); ++i) {
        view()->setColumnWidth(i, std::max(view()->columnWidth(i), head.sectionSizeHint(i)));
    }
}

int IdentifiedList::idOf(int row) const {
    const auto& cells = rows()[static_cast<std::size_t>(row)];
    return cells.back().empty() ? -1 : static_cast<int>(parseInteger(cells.back()).value_or(-1));
}

int IdentifiedList::currentId() const {
    return currentRow() < 0 ? -1 : idOf(currentRow());
}

ListRow IdentifiedList::cellsOfRow(int row) const {
    auto cells = rows()[static_cast<std::size_t>(row)];
    cells.pop_back();
    return cells;
}

std::optional<ListRow> IdentifiedList::editRowOf(int row, const ListRow& before) {
    auto cells = before;
    const auto id = cells.back();
    cells.pop_back();
    RowDialog dialog(form_, *this, shown_, row, cells, id.empty(), window());
    if (runDialog(form_.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    auto entered = dialog.values();
    entered.push_back(id.empty() ? std::to_string(nextId_++) : id);
    return entered;
}

}  // namespace kavu
