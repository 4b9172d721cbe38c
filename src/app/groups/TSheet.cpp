#include "app/groups/TSheet.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/groups/GroupRows.h"
#include "app/groups/MultiplexDialog.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "groups/DataSources.h"
#include "vocabulary/TGroupFields.h"

#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kTransmissionTitle[] = "Edit Transmission Attributes - Data Source: %s";
constexpr std::string_view kListPage = "RF9";

/// What the cells of a row show.
ListRow shownCells(const GroupRow& row) {
    ListRow cells;
    for (const auto& field : transmissionSubcarrierFields()) {
        const auto value = row.value(field.code);
        cells.emplace_back(value.empty() ? field.placeholder : value);
    }
    return cells;
}

}  // namespace

SubcarrierPage::SubcarrierPage(FormContext& form, const char* resourceName,
                               const std::string& title, GroupRow& record, QWidget* parent)
    : PropertyPage(form, resourceName, title, parent), record_(record) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    ListSetup setup;
    for (const auto& field : transmissionSubcarrierFields()) {
        setup.columns.push_back(columnOf(field, form.edition));
    }
    setup.mostRows = static_cast<int>(kMostTransmissionSubcarriers);
    setup.rowDialogTitle = "Subcarrier";
    setup.name = title;
    list_ = new IdentifiedList(form, "subcarriers", setup, this);
    list_->view()->setAccessibleName(toQString(title));
    list_->rowEditor = [edit = list_->rowEditor](int row, const ListRow& before) {
        auto entered = edit(row, before);
        const auto fields = transmissionSubcarrierFields();
        for (std::size_t i = 0; entered && i < fields.size(); ++i) {
            auto& cell = (*entered)[i];
            cell = cell.empty() ? std::string(fields[i].placeholder) : cell;
        }
        return entered;
    };
    layout->addWidget(list_);
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

void SubcarrierPage::load() {
    const auto rows = record_.rows(kTransmissionSubcarriers);
    before_.assign(rows.begin(), rows.end());
    std::vector<ListRow> shown;
    for (const auto& row : before_) {
        shown.push_back(shownCells(row));
    }
    list_->setIdentifiedRows(shown);
}

bool SubcarrierPage::store() {
    if (list_->rowCount() == 0 && before_.empty()) {
        return true;
    }
    const auto fields = transmissionSubcarrierFields();
    std::vector<GroupRow> rows;
    for (int i = 0; i < list_->rowCount(); ++i) {
        const auto id = static_cast<std::size_t>(list_->idOf(i));
        auto& row = rows.emplace_back(id < before_.size() ? before_[id] : GroupRow{});
        const auto cells = list_->cellsOfRow(i);
        const auto shown = shownCells(row);
        for (std::size_t c = 0; c < fields.size(); ++c) {
            if (cells[c] != shown[c]) {
                row.set(fields[c].code, cells[c] == fields[c].placeholder ? "" : cells[c]);
            }
        }
    }
    record_.lists[std::string(kTransmissionSubcarriers)] = std::move(rows);
    return true;
}

TransmissionSheet::TransmissionSheet(FormContext& form, DocumentContext& document,
                                     EditedGroup group, std::function<bool()> editMultiplex,
                                     QWidget* parent)
    : PropertySheet(form, "Transmission",
                    formatPrintf(kTransmissionTitle, group.record.value("ID")), "", parent),
      group_(std::move(group)) {
    for (const auto& page : transmissionPages()) {
        if (page.name == kListPage) {
            addPage(std::make_unique<SubcarrierPage>(form, page.name, page.title, group_.record));
        } else {
            addPage(std::make_unique<FieldPage>(form, page.name, page.title, transmissionFields(),
                                                group_.record.values));
        }
    }
    auto* const button = addButton("editMultiplex", QStringLiteral("Edit &Multiplex Info"));
    connect(button, &QPushButton::clicked, this, [this, edit = std::move(editMultiplex)] {
        changedElsewhere_ = edit() || changedElsewhere_;
    });
    setWriter([this, &form, &document] { return storeTransmission(document, &form.ui, group_); });
    if (group_.isNew) {
        markChanged();
    }
}

bool editTransmission(FormContext& form, SourceParts parts, const std::string& source) {
    auto group = readTransmission(parts.context, &form.ui, source);
    if (!group) {
        return false;
    }
    TransmissionSheet sheet(form, parts.context, std::move(*group),
                            [&] { return editMultiplex(form, parts, source); });
    return runPropertySheet(form, sheet) == SheetResult::Stored || sheet.changedElsewhere();
}

}  // namespace kavu
