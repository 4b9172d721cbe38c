#include "app/pcm/PcmSwitchPage.h"

#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/PcmAttributes.h"
#include "pcm/model/PcmFormatFields.h"

#include <algorithm>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kLocation = "FFI1";
constexpr std::string_view kLists = "MLC\\N";
constexpr std::string_view kFormats = "FSC\\N";

const Field& switchCount(std::string_view count) {
    const auto table = formatSwitchFields();
    return *std::find_if(table.begin(), table.end(),
                         [count](const Field& field) { return field.code == count; });
}

std::vector<Field> columnsOf(std::string_view count) {
    std::vector<Field> columns;
    for (const auto& field : formatSwitchFields()) {
        if (field.list == count) {
            columns.push_back(field);
        }
    }
    return columns;
}

}  // namespace

PcmSwitchPage::PcmSwitchPage(PcmAttributesModel& model, QWidget* parent)
    : PropertyPage(model.form, pcm_page::kFormatSwitch, "Format Switch", parent), model_(model) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    fields_ = new FieldForm(form(), formatSwitchFields(), pcm_page::kFormatSwitch, this);
    column->addWidget(fields_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(look::unit(*this) * 2);
    column->addLayout(row, 1);
    const auto add = [&](std::string_view count, const char* name) {
        auto* const box = new QGroupBox(toQString(switchCount(count).label), this);
        auto* const inside = new QVBoxLayout(box);
        auto* const list = makeList(count, name);
        inside->addWidget(list);
        row->addWidget(box, 1);
        return list;
    };
    lists_ = add(kLists, "MLC");
    formats_ = add(kFormats, "FSC");
    connect(fields_, &FieldForm::edited, this, &PcmSwitchPage::takeEdit);
}

EditableList* PcmSwitchPage::makeList(std::string_view count, const char* name) {
    ListSetup setup;
    for (const auto& field : columnsOf(count)) {
        setup.columns.push_back({.title = std::string(field.label),
                                 .limit = field.limit,
                                 .objectName = std::string(field.code)});
    }
    const auto& governing = switchCount(count);
    setup.mostRows = static_cast<int>(governing.rows);
    setup.rowDialogTitle = std::string(governing.label);
    auto* const list = new EditableList(form(), name, std::move(setup), this);
    connect(list, &EditableList::changed, this, [this] { markChanged(); });
    return list;
}

void PcmSwitchPage::load() {
    fields_->setValues(model_.side.formatSwitch.values);
    showRows(*lists_, kLists);
    showRows(*formats_, kFormats);
}

void PcmSwitchPage::showRows(EditableList& list, std::string_view count) {
    std::vector<ListRow> shown;
    for (const auto& row : model_.side.formatSwitch.rows(count)) {
        auto& cells = shown.emplace_back();
        for (const auto& field : columnsOf(count)) {
            cells.emplace_back(row.value(field.code));
        }
    }
    list.setRows(std::move(shown));
}

void PcmSwitchPage::takeEdit(const QString& code) {
    if (checking_) {
        return;
    }
    const auto before = model_.side.formatSwitch.value(kLocation);
    if (toBytes(code) == kLocation &&
        !checkSwitchLocation(model_.format, &form().ui, fields_->value(kLocation))) {
        checking_ = true;
        fields_->editValue(kLocation, before);
        checking_ = false;
        return;
    }
    if (toBytes(code) == kLocation) {
        model_.side.formatSwitch.set(kLocation, fields_->value(kLocation));
    }
    markChanged();
}

bool PcmSwitchPage::validate() {
    return fields_->validate();
}

bool PcmSwitchPage::store() {
    fields_->storeValues(model_.side.formatSwitch.values);
    storeRows(*lists_, kLists);
    storeRows(*formats_, kFormats);
    return true;
}

void PcmSwitchPage::storeRows(const EditableList& list, std::string_view count) {
    auto& lists = model_.side.formatSwitch.lists;
    if (list.rowCount() == 0) {
        lists.erase(std::string(count));
        return;
    }
    auto& rows = lists[std::string(count)];
    rows.clear();
    const auto columns = columnsOf(count);
    for (const auto& cells : list.rows()) {
        auto& row = rows.emplace_back();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            row.set(columns[i].code, cells[i]);
        }
    }
}

}  // namespace kavu
