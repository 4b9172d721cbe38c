#include "app/bus/BusTerminalsPage.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"

#include <array>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShowEvent>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr auto kTerminalFields = std::to_array<Field>({
    {.code = "name", .label = "Name:", .limit = kTerminalNameWidth},
    {.code = "address", .label = "Address:", .limit = kTerminalAddressWidth},
});

std::vector<ListRow> terminalRows(const std::vector<Terminal>& terminals) {
    std::vector<ListRow> rows;
    for (const auto& [name, address] : terminals) {
        rows.push_back({name, address});
    }
    return rows;
}

}  // namespace

BusTerminalsPage::BusTerminalsPage(const BusFormSetup& setup, std::size_t bus, QWidget* parent)
    : PropertyPage(setup.form, "1553_EDIT_BUS3", "Defined Terminals", parent),
      setup_(setup),
      bus_(bus) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* const lists = new QHBoxLayout;
    layout->addLayout(lists, 1);
    const auto addList = [&](TerminalKind kind, const char* name, const char* title) {
        auto* const box = new QGroupBox(QLatin1String(title), this);
        auto* const inside = new QVBoxLayout(box);
        look::arrangePart(*inside, *box);
        auto* const list = makeList(kind, name, title);
        inside->addWidget(list);
        lists->addWidget(box, 1);
        return list;
    };
    remote_ = addList(TerminalKind::Remote, "remoteTerminals", "Defined Remote Terminals");
    sub_ = addList(TerminalKind::Sub, "subTerminals", "Defined Subterminals");
    auto* const buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    auto* const save =
        look::makeButton("saveAsDefaults", QStringLiteral("&Save As Defaults"), {}, this);
    auto* const load = look::makeButton("loadDefaults", QStringLiteral("&Load Defaults"), {}, this);
    buttons->addWidget(save);
    buttons->addWidget(load);
    buttons->addStretch();
    connect(save, &QPushButton::clicked, this, &BusTerminalsPage::saveDefaults);
    connect(load, &QPushButton::clicked, this, &BusTerminalsPage::loadDefaults);
}

EditableList* BusTerminalsPage::makeList(TerminalKind kind, const char* name, const char* title) {
    ListSetup list;
    list.columns = {{.title = "Name", .editable = false}, {.title = "Address", .editable = false}};
    list.canDelete = false;
    list.rowsOnly = true;
    auto* const made = new EditableList(setup_.form, name, std::move(list), this);
    made->view()->setAccessibleName(QLatin1String(title));
    made->view()->setMinimumWidth(look::charactersWide(*this, 30));
    made->rowEditor = [this, kind](int row, const ListRow&) { return editTerminal(kind, row); };
    connect(made, &EditableList::changed, this, [this] { markChanged(); });
    return made;
}

void BusTerminalsPage::load() {
    remote_->setRows(terminalRows(terminals(TerminalKind::Remote)));
    sub_->setRows(terminalRows(terminals(TerminalKind::Sub)));
}

void BusTerminalsPage::showEvent(QShowEvent* event) {
    load();
    PropertyPage::showEvent(event);
}

const std::vector<Terminal>& BusTerminalsPage::terminals(TerminalKind kind) const {
    const auto& lists = setup_.definition.listKnownTerminals(bus_);
    return kind == TerminalKind::Remote ? lists.remote : lists.sub;
}

std::optional<ListRow> BusTerminalsPage::editTerminal(TerminalKind kind, int row) {
    const auto at = static_cast<std::size_t>(row);
    const bool isNew = at >= terminals(kind).size();
    FieldValues values;
    if (!isNew) {
        values = {{"name", terminals(kind)[at].name}, {"address", terminals(kind)[at].address}};
    }
    const auto enter = [&](FieldForm& fields) {
        return enterTerminal(setup_.document, &setup_.form.ui, setup_.definition, bus_, kind,
                             {fields.value("name"), fields.value("address")}, isNew ? 0 : at + 1);
    };
    const bool isRemote = kind == TerminalKind::Remote;
    BusFieldDialog dialog(
        setup_.form, "1553_EDIT_TERMINAL",
        isRemote ? QStringLiteral("Remote Terminal") : QStringLiteral("Subterminal"),
        kTerminalFields, values, enter, window());
    if (runDialog(setup_.form.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    const auto& entered = terminals(kind)[at];
    return ListRow{entered.name, entered.address};
}

void BusTerminalsPage::saveDefaults() {
    saveTerminalsAsDefaults(setup_.document, &setup_.form.ui, setup_.definition, bus_);
}

void BusTerminalsPage::loadDefaults() {
    if (loadDefaultTerminals(setup_.document, &setup_.form.ui, setup_.definition, bus_)) {
        load();
        markChanged();
    }
}

}  // namespace kavu
