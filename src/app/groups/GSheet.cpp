#include "app/groups/GSheet.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowDialog.h"
#include "app/groups/GroupRows.h"
#include "app/groups/RSheet.h"
#include "app/groups/TSheet.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "groups/DataSources.h"
#include "vocabulary/GGroupFields.h"

#include <algorithm>

#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::size_t kTypeColumn = 0;
constexpr std::size_t kSourceColumn = 1;
/// After the columns that are shown: the type as the file has it.
constexpr std::size_t kStoredColumn = 2;
/// And the number of the row in the file, empty for a new one.
constexpr std::size_t kRowColumn = 3;
constexpr std::string_view kRadio = "RF";

bool isDate(std::string_view code) {
    const auto fields = generalFields();
    return std::any_of(fields.begin(), fields.end(), [code](const Field& field) {
        return field.code == code && field.kind == FieldKind::Date;
    });
}

ListSetup contactSetup(int edition) {
    ListSetup setup;
    for (const auto& field : contactFields()) {
        setup.columns.push_back(columnOf(field, edition));
    }
    setup.mostRows = static_cast<int>(kMostContacts);
    setup.rowDialogTitle = "Edit Point Of Contact";
    setup.name = "Points Of Contact";
    return setup;
}

ListSetup sourceSetup(int edition) {
    ListSetup setup;
    ListColumn type{.title = "Type", .kind = ColumnKind::Choice, .objectName = "DST"};
    for (const auto& choice : sourceTypes(edition)) {
        type.choices.emplace_back(choice.text);
    }
    type.initial = type.choices.front();
    // Whatever is done to a source finds it by its name.
    setup.columns = {type, {.title = "Name", .limit = 32, .unique = true, .objectName = "DSI"}};
    setup.mostRows = static_cast<int>(kMostSources);
    setup.rowDialogTitle = "Edit Data Source";
    setup.rowsOnly = true;  // a new name may be a rename
    setup.name = "Data Sources";
    return setup;
}

ListSetup withHiddenColumns(ListSetup setup) {
    setup.columns.push_back({.title = "Stored", .editable = false});
    setup.columns.push_back({.title = "Row", .editable = false});
    return setup;
}

}  // namespace

// --- Program information ------------------------------------------------------------------------

ProgramPage::ProgramPage(FormContext& form, FieldValues& values, QWidget* parent)
    : FieldPage(form, "GeneralInfo1", "Program Information", generalFields(), values, parent) {
    connect(&fields(), &FieldForm::edited, this, &ProgramPage::fillDatesFor);
}

void ProgramPage::fillDatesFor(const QString& code) {
    const auto changed = toBytes(code);
    if (isDate(changed)) {
        return;
    }
    FieldValues now;
    fields().storeValues(now);
    for (const auto filled :
         fillDates(generalDates(), changed, now, form().clock, form().edition)) {
        fields().editValue(filled, now[std::string(filled)]);
    }
}

// --- Points of contact --------------------------------------------------------------------------

ContactPage::ContactPage(FormContext& form, GroupRow& record, QWidget* parent)
    : PropertyPage(form, "GeneralInfo2", "Points Of Contact", parent), record_(record) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    list_ = new IdentifiedList(form, "contacts", contactSetup(form.edition), this);
    list_->view()->setAccessibleName(QStringLiteral("Points Of Contact"));
    layout->addWidget(list_);
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

void ContactPage::load() {
    const auto contacts = record_.rows(kContactCount);
    before_.assign(contacts.begin(), contacts.end());
    std::vector<ListRow> rows;
    for (const auto& row : before_) {
        auto& cells = rows.emplace_back();
        for (const auto& field : contactFields()) {
            cells.emplace_back(row.value(field.code));
        }
    }
    list_->setIdentifiedRows(rows);
}

bool ContactPage::store() {
    if (list_->rowCount() == 0 && !record_.lists.contains(kContactCount)) {
        return true;
    }
    auto& rows = record_.lists[std::string(kContactCount)];
    rows.clear();
    const auto fields = contactFields();
    for (int number = 0; number < list_->rowCount(); ++number) {
        const auto id = static_cast<std::size_t>(list_->idOf(number));
        const auto cells = list_->cellsOfRow(number);
        auto& row = rows.emplace_back();
        row.fileRow = id < before_.size() ? before_[id].fileRow : 0;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            row.set(fields[i].code, cells[i]);
        }
    }
    return true;
}

// --- Data sources -------------------------------------------------------------------------------

SourcePage::SourcePage(FormContext& form, GroupRow& record, SourceDeeds deeds, QWidget* parent)
    : PropertyPage(form, "GeneralInfo3", "Data Sources", parent),
      record_(record),
      deeds_(std::move(deeds)),
      setup_(sourceSetup(form.edition)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    list_ = new EditableList(form, "sources", withHiddenColumns(setup_), this);
    list_->view()->setAccessibleName(QStringLiteral("Data Sources"));
    for (const auto hidden : {kStoredColumn, kRowColumn}) {
        list_->view()->setColumnHidden(static_cast<int>(hidden), true);
    }
    list_->rowEditor = [this](int row, const ListRow& before) { return editRow(row, before); };
    list_->mayDelete = [this](int row) { return mayDelete(row); };
    definition_ =
        list_->addButton("editSourceDefinition", QStringLiteral("Edit &Source Definition"));
    layout->addWidget(list_);
    connect(list_, &EditableList::changed, this, [this] {
        markChanged();
        updateDefinitionButton();
    });
    connect(list_, &EditableList::currentRowChanged, this, [this] { updateDefinitionButton(); });
    connect(definition_, &QPushButton::clicked, this, &SourcePage::editDefinition);
}

void SourcePage::load() {
    std::vector<ListRow> rows;
    for (const auto& row : record_.rows(kSourceCount)) {
        const auto stored = row.value(kSourceType);
        rows.push_back({std::string(sourceTypeText(stored, form().edition)),
                        std::string(row.value(kSourceName)), std::string(stored),
                        std::to_string(row.fileRow)});
    }
    list_->setRows(std::move(rows));
    updateDefinitionButton();
}

bool SourcePage::store() {
    if (list_->rowCount() == 0 && !record_.lists.contains(kSourceCount)) {
        return true;
    }
    auto& rows = record_.lists[std::string(kSourceCount)];
    rows.clear();
    for (const auto& cells : list_->rows()) {
        auto& row = rows.emplace_back();
        row.set(kSourceName, cells[kSourceColumn]);
        row.set(kSourceType, cells[kStoredColumn]);
        row.fileRow = clampedCount(cells[kRowColumn], kMostSources);
    }
    return true;
}

std::optional<ListRow> SourcePage::editRow(int row, const ListRow& before) {
    ListRow shown(before.begin(), before.begin() + kStoredColumn);
    const bool isNew = before[kRowColumn].empty() && before[kSourceColumn].empty();
    RowDialog dialog(form(), *list_, setup_, row, shown, isNew, window());
    if (runDialog(form().door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    auto entered = dialog.values();
    const auto& oldName = before[kSourceColumn];
    const auto& newName = entered[kSourceColumn];
    const auto change = isNew ? NameChange::Plain : deeds_.askName(oldName, newName);
    if (change == NameChange::Refused) {
        return std::nullopt;
    }
    if (change == NameChange::Rename) {
        if (!deeds_.rename(oldName, newName)) {
            return std::nullopt;
        }
        emit documentChanged();
    }
    const bool sameType = !isNew && entered[kTypeColumn] == before[kTypeColumn];
    entered.emplace_back(sameType ? std::string_view(before[kStoredColumn])
                                  : storedSourceType(entered[kTypeColumn]));
    entered.push_back(before[kRowColumn]);
    return entered;
}

bool SourcePage::mayDelete(int row) {
    const auto& name = list_->rows()[static_cast<std::size_t>(row)][kSourceColumn];
    if (!deeds_.isListed(name)) {
        return form().messages.showTitled(&form().ui, -title::kDeleteEntry, setup_.name,
                                          kYesNoBox) == Button::Yes;
    }
    if (!deeds_.erase(name)) {
        return false;
    }
    emit documentChanged();
    return true;
}

void SourcePage::updateDefinitionButton() {
    const int row = list_->currentRow();
    bool has = false;
    if (row >= 0) {
        const auto& cells = list_->rows()[static_cast<std::size_t>(row)];
        has = cells[kTypeColumn] != setup_.columns[kTypeColumn].choices.back() &&
              !cells[kSourceColumn].empty();
    }
    definition_->setEnabled(has);
}

void SourcePage::editDefinition() {
    const auto cells = list_->rows()[static_cast<std::size_t>(list_->currentRow())];
    if (deeds_.editDefinition(cells[kSourceColumn], cells[kTypeColumn] == kRadio)) {
        emit documentChanged();
    }
}

// --- The sheet ----------------------------------------------------------------------------------

GeneralSheet::GeneralSheet(FormContext& form, DocumentContext& document, EditedGroup group,
                           SourceDeeds deeds, QWidget* parent)
    : PropertySheet(form, "GeneralInfo", "Edit General Information", "", parent),
      group_(std::move(group)) {
    auto sources = std::make_unique<SourcePage>(form, group_.record, std::move(deeds));
    connect(sources.get(), &SourcePage::documentChanged, this,
            [this] { changedElsewhere_ = true; });
    addPage(std::make_unique<ProgramPage>(form, group_.record.values));
    addPage(std::make_unique<ContactPage>(form, group_.record));
    addPage(std::move(sources));
    addPage(std::make_unique<FieldPage>(form, "GeneralInfo4", "Comments", generalFields(),
                                        group_.record.values));
    setWriter([this, &form, &document] { return storeGeneral(document, &form.ui, group_); });
}

bool editGeneral(FormContext& form, SourceParts parts) {
    auto group = readGeneral(parts.context, &form.ui);
    if (!group) {
        return false;
    }
    SourceDeeds deeds;
    deeds.askName = [&](const std::string& oldName, const std::string& newName) {
        return askNameChange(parts.context, &form.ui, oldName, newName);
    };
    deeds.rename = [&](const std::string& oldName, const std::string& newName) {
        return renameDataSource(parts, &form.ui, oldName, newName);
    };
    deeds.isListed = [&](const std::string& name) {
        std::vector<std::string> names;
        listDataSources(parts.context, &form.ui, &names);
        return !name.empty() && (std::find(names.begin(), names.end(), name) != names.end() ||
                                 isExistingSource(parts.context, &form.ui, name));
    };
    deeds.erase = [&](const std::string& name) { return deleteDataSource(parts, &form.ui, name); };
    deeds.editDefinition = [&](const std::string& name, bool isRadio) {
        return isRadio ? editTransmission(form, parts, name) : editRecorder(form, parts, name);
    };
    GeneralSheet sheet(form, parts.context, std::move(*group), std::move(deeds));
    return runPropertySheet(form, sheet) == SheetResult::Stored || sheet.changedElsewhere();
}

}  // namespace kavu
