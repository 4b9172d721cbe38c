#include "app/bus/BusPages.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "bus/definition/BusFormCheck.h"
#include "bus/definition/BusRows.h"
#include "core/TmatsDocument.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

BusFormState BusFormState::of(const BusDefinition& definition, const BusPlace& place) {
    BusFormState state;
    state.place = place;
    state.before = busFormValues(*busRowAt(definition, place), levelOf(place));
    state.now = state.before;
    return state;
}

bool checkBusFields(const BusFormSetup& setup, const BusFormState& state, FieldForm& fields) {
    if (!fields.validate()) {
        return false;
    }
    const auto level = levelOf(state.place);
    const auto& definition = setup.definition;
    const bool isArinc =
        level == BusLevel::Message &&
        isArincBus(definition.buses()[state.place.front() - 1], definition.edition);
    GroupRow row;
    BusFormCheck check(setup.document, &setup.form.ui, row, level, definition.edition);
    for (const auto code : fields.codes()) {
        const bool isOfRow =
            findBusField(level, code) != nullptr ||
            (level == BusLevel::Message && findBusField(BusLevel::Receive, code) != nullptr);
        const auto value = fields.value(code);
        if (isOfRow && value != valueOf(state.before, code) && !check.enter(code, value, isArinc)) {
            fields.control(code)->setFocus();
            return false;
        }
    }
    return true;
}

bool storeBusFields(const BusFormSetup& setup, BusFormState& state, FieldForm& fields) {
    fields.storeValues(state.now);
    return checkBusFields(setup, state, fields) && setup.edit.set(state.place, state.changes());
}

// --- Pages of fields ----------------------------------------------------------------------------

BusFieldPage::BusFieldPage(const BusFormSetup& setup, const char* resourceName,
                           const std::string& title, std::span<const Field> fields,
                           BusFormState& state, QWidget* parent)
    : PropertyPage(setup.form, resourceName, title, parent), setup_(setup), state_(state) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(setup.form, fields, {}, this);
    layout->addWidget(fields_);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

void BusFieldPage::load() {
    fields_->setValues(state_.now);
}

bool BusFieldPage::validate() {
    return checkBusFields(setup_, state_, *fields_);
}

bool BusFieldPage::store() {
    fields_->storeValues(state_.now);
    return true;
}

// --- Lists of rows ------------------------------------------------------------------------------

namespace {

BusLevel levelIn(BusPlace owner) {
    owner.push_back(1);
    return levelOf(owner);
}

ListSetup rowListSetup(BusLevel level, int edition) {
    ListSetup list;
    for (auto& title : busColumns(level, edition)) {
        list.columns.push_back({.title = std::move(title), .editable = false});
    }
    list.rowsOnly = true;
    return list;
}

}  // namespace

BusRowList::BusRowList(const BusFormSetup& setup, BusPlace owner, const char* name, QWidget* parent)
    : EditableList(setup.form, name, rowListSetup(levelIn(owner), setup.definition.edition),
                   parent),
      setup_(setup),
      owner_(std::move(owner)),
      level_(levelIn(owner_)) {
    rowEditor = [this](int row, const ListRow&) { return editRowOf(row); };
    mayDelete = [this](int row) {
        auto place = owner_;
        place.push_back(static_cast<std::size_t>(row) + 1);
        return setup_.edit.remove(place);
    };
    connect(this, &EditableList::changed, this, &BusRowList::rowsEdited);
}

void BusRowList::showRows() {
    std::vector<ListRow> cells;
    for (const auto& row : rowsOf(std::as_const(*busRowAt(setup_.definition, owner_)), level_)) {
        cells.push_back(busCells(level_, row, setup_.definition.edition));
    }
    setRows(std::move(cells));
}

std::optional<ListRow> BusRowList::editRowOf(int row) {
    auto place = owner_;
    place.push_back(static_cast<std::size_t>(row) + 1);
    if (busRowAt(setup_.definition, place) == nullptr) {
        if (!addBusRow(setup_, owner_, window())) {
            return std::nullopt;
        }
    } else if (editBusRow(setup_, place, window())) {
        // What has changed may be deeper than the cells show.
        emit rowsEdited();
    } else {
        return std::nullopt;
    }
    return busCells(level_, *busRowAt(setup_.definition, place), setup_.definition.edition);
}

BusRowsPage::BusRowsPage(const BusFormSetup& setup, const char* resourceName,
                         const std::string& title, BusPlace owner, const char* listName,
                         QWidget* parent)
    : PropertyPage(setup.form, resourceName, title, parent), owner_(std::move(owner)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    list_ = new BusRowList(setup, owner_, listName, this);
    list_->view()->setAccessibleName(toQString(title));
    layout->addWidget(list_);
    connect(list_, &BusRowList::rowsEdited, this, [this] { markChanged(); });
    if (levelOf(owner_) == BusLevel::Message) {
        addDatabaseButton(setup);
    }
}

void BusRowsPage::addDatabaseButton(const BusFormSetup& setup) {
    auto* const button =
        list_->addButton("addFromDatabase", QStringLiteral("Add Measurement &From Database"));
    button->setEnabled(setup.hasDatabase());
    connect(button, &QPushButton::clicked, this, [this, &setup, button] {
        if (setup.addFromDatabase(*window(), owner_)) {
            list_->showRows();
            markChanged();
        }
        button->setEnabled(setup.hasDatabase());
    });
}

// --- Dialogs ------------------------------------------------------------------------------------

BusFieldDialog::BusFieldDialog(FormContext& form, const char* resourceName, const QString& title,
                               std::span<const Field> fields, const FieldValues& values,
                               Store store, QWidget* parent)
    : EditDialog(form, resourceName, title, parent), store_(std::move(store)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, fields, {}, this);
    fields_->setValues(values);
    layout->addWidget(fields_);
    layout->addWidget(look::makeDialogButtons(*this));
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

bool BusFieldDialog::store() {
    return fields_->validate() && store_(*fields_);
}

}  // namespace kavu
