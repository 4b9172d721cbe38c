#include "app/pcm/FilterListDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "pcm/PcmFormat.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

FilterListDialog::FilterListDialog(FormContext& form, PcmFormat& format,
                                   std::vector<FilterRow> rows, QWidget* parent)
    : EditDialog(form, "EditMeasurementFilterList", QStringLiteral("Edit Measurement Filter List"),
                 parent),
      format_(format),
      settings_(filterSettings(format)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    const bool selects = settings_.size() == 2;
    ListSetup setup;
    setup.columns = {{.title = "Measurement Name", .editable = false},
                     {.title = selects ? "Selected" : "Filter/Overwrite",
                      .kind = ColumnKind::Choice,
                      .choices = settings_}};
    setup.canAdd = false;
    setup.canDelete = false;
    setup.rowDialogTitle = "Edit Measurement Filter List";
    list_ = new EditableList(form, "list", std::move(setup), this);
    list_->view()->setAccessibleName(QStringLiteral("Measurement Filter List"));
    std::vector<ListRow> shown;
    for (auto& row : rows) {
        shown.push_back({std::move(row.name), std::move(row.setting)});
    }
    list_->setRows(std::move(shown));
    for (const auto& setting : settings_) {
        const auto name = "set" + setting;
        auto* button = list_->addButton(name.c_str(), toQString("Set To " + setting));
        connect(button, &QPushButton::clicked, this, [this, setting] { setSelected(setting); });
    }
    layout->addWidget(list_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
    list_->view()->setMinimumHeight(look::unit(*this) * 30);
}

/// The selected measurement takes a setting, and the selection goes on to the next one.
void FilterListDialog::setSelected(const std::string& setting) {
    const int row = list_->currentRow();
    if (row < 0) {
        form().ui.beep();
        return;
    }
    auto values = list_->rows()[static_cast<std::size_t>(row)];
    values[1] = setting;
    list_->replaceRow(row, std::move(values));
    list_->selectRow(std::min(row + 1, list_->rowCount() - 1));
}

bool FilterListDialog::store() {
    std::vector<FilterRow> rows;
    for (const auto& row : list_->rows()) {
        rows.push_back({row[0], row[1]});
    }
    return storeFilterList(format_, &form().ui, rows);
}

bool editFilterList(FormContext& form, PcmFormat& format, QWidget* window) {
    auto rows = readFilterList(format, &form.ui);
    if (!rows) {
        return false;
    }
    FilterListDialog dialog(form, format, std::move(*rows), window);
    return runDialog(form.door, dialog) == QDialog::Accepted;
}

}  // namespace kavu
