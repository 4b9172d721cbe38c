#include "app/groups/MultiplexDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/RowDialog.h"
#include "app/groups/GroupRows.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kOtherType = "OTH";
constexpr std::size_t kDataTypeColumn = 1;
constexpr std::size_t kLinkColumn = 5;
constexpr std::size_t kLinkLimit = 32;
constexpr int kListWidth = 136;  // characters: the name is in the last column
constexpr char kNameTitle[] = "Measurement/Data Link Name";

/// The columns of a subcarrier but its name, which has two codes.
std::vector<Field> columnFields(int edition) {
    auto fields = knownFields(subcarrierFields(), edition);
    fields.resize(kLinkColumn);
    return fields;
}

ListSetup signalList(int edition) {
    ListSetup setup;
    for (const auto& field : columnFields(edition)) {
        ListColumn column{.title = std::string(field.label),
                          .limit = field.limit,
                          .objectName = std::string(field.code)};
        if (field.kind == FieldKind::Choice) {
            column.kind = ColumnKind::Choice;
            // The limit is that of what is stored.
            column.limit = 0;
            for (const auto& choice : choicesOf(field, edition)) {
                column.choices.emplace_back(choice.text);
            }
        }
        setup.columns.push_back(std::move(column));
    }
    // Without a type there would be no command for the name.
    setup.columns[kDataTypeColumn].initial = setup.columns[kDataTypeColumn].choices.front();
    setup.columns.push_back({.title = kNameTitle, .limit = kLinkLimit, .objectName = "name"});
    setup.mostRows = static_cast<int>(kMostSubcarriers);
    setup.rowDialogTitle = "IRIG Sub Carrier";
    setup.name = "IRIG Sub Carriers";
    setup.rowsOnly = true;
    return setup;
}

/// The entry of a choice that begins with the value, in its case. A value that no entry
/// begins with is shown as it is, so that it is not lost.
std::string shownCell(const Field& field, std::string_view value, int edition) {
    if (field.kind != FieldKind::Choice || value.empty()) {
        return std::string(value);
    }
    const auto choices = choicesOf(field, edition);
    const auto it = std::find_if(choices.begin(), choices.end(), [&](const Choice& choice) {
        return choice.text.starts_with(value);
    });
    return std::string(it == choices.end() ? value : it->text);
}

std::string storedCell(const Field& field, const std::string& shown, int edition) {
    if (field.kind != FieldKind::Choice) {
        return shown;
    }
    const auto choices = choicesOf(field, edition);
    const auto it = std::find_if(choices.begin(), choices.end(),
                                 [&](const Choice& choice) { return choice.text == shown; });
    return it == choices.end() ? shown : storedChoice(*it, field.limit);
}

/// The dialog over a row, which stays open as long as the page does not take the name.
class SubcarrierDialog : public RowDialog {
  public:
    using RowDialog::RowDialog;
    std::function<bool(const ListRow&)> mayAccept;

    void accept() override {
        // A rename comes last: it cannot be taken back.
        if (checkValues() && mayAccept(values())) {
            QDialog::accept();
        }
    }
};

}  // namespace

MultiplexPage::MultiplexPage(FormContext& form, SourceParts parts, MultiplexGroup group,
                             QWidget* parent)
    : PropertyPage(form, "multiplex_info", "Multiplex/Modulation", parent),
      parts_(parts),
      group_(std::move(group)) {
    auto* const columns = new QBoxLayout(QBoxLayout::LeftToRight, this);
    look::arrangeWindow(*columns, *this);
    fields_ = new FieldForm(form, multiplexFields(), "multiplex_info", this);
    columns->addWidget(fields_);
    auto* const names = new QVBoxLayout;
    names->addWidget(makeNameBox());
    names->addWidget(makeListBox(), 1);
    columns->addLayout(names, 1);
    // On a screen without room for both next to each other the list is below the fields.
    if (columns->sizeHint().width() > look::roomForPage(*this)) {
        columns->setDirection(QBoxLayout::TopToBottom);
    }
    connect(fields_, &FieldForm::edited, this, &MultiplexPage::fieldEdited);
    if (signalNameOf(group_.record.value(kSignalType)) == SignalName::DataLink) {
        knownLink_ = basebandName(group_);
    }
    for (const auto& row : group_.record.rows(kSubcarrierCount)) {
        if (signalNameOf(row.value(kSubcarrierType)) == SignalName::DataLink) {
            knownRowLinks_[row.fileRow] = subcarrierName(row);
        }
    }
}

QWidget* MultiplexPage::makeNameBox() {
    nameBox_ = new QGroupBox(this);
    nameBox_->setObjectName(QStringLiteral("nameBox"));
    auto* const row = new QHBoxLayout(nameBox_);
    name_ = look::makeButton("signalName", {}, QStringLiteral("edit"), nameBox_);
    name_->setMinimumWidth(look::charactersWide(*name_, static_cast<int>(kLinkLimit)));
    row->addWidget(name_);
    row->addStretch();
    connect(name_, &QPushButton::clicked, this, &MultiplexPage::editName);
    return nameBox_;
}

QWidget* MultiplexPage::makeListBox() {
    auto* const box = new QGroupBox(QStringLiteral("IRIG Sub Carriers"), this);
    auto* const column = new QVBoxLayout(box);
    rows_ = new IdentifiedList(form(), "SI", signalList(form().edition), box);
    rows_->rowEditor = [this](int row, const ListRow& before) { return editRow(row, before); };
    rows_->setMinimumWidth(std::min(look::charactersWide(*rows_, kListWidth),
                                    look::roomForPage(*this) - 6 * look::unit(*this)));
    column->addWidget(rows_);
    connect(rows_, &EditableList::changed, this, [this] {
        takeRows();
        markChanged();
    });
    return box;
}

void MultiplexPage::load() {
    fields_->setValues(group_.record.values);
    showName();
    showRows();
}

void MultiplexPage::showName() {
    const auto kind = signalNameOf(fields_->value(kSignalType));
    nameBox_->setVisible(kind != SignalName::None);
    nameBox_->setTitle(kind == SignalName::Measurement ? QStringLiteral("Measurement Name")
                                                       : QStringLiteral("Data Link Name"));
    const auto shown = toQString(basebandName(group_));
    name_->setText(shown.isEmpty() ? QStringLiteral("(none)")
                                   : QString(shown).replace(u'&', QStringLiteral("&&")));
    name_->setAccessibleName(nameBox_->title() + QStringLiteral(": ") + shown);
}

void MultiplexPage::fieldEdited(const QString& code) {
    if (toBytes(code) == kSignalType) {
        // The name goes along as long as the new type has one; it is written under its code.
        const std::string name(basebandName(group_));
        group_.record.set(kSignalType, fields_->value(kSignalType));
        if (!name.empty()) {
            setBasebandName(group_, name);
        }
        showName();
    }
    markChanged();
}

bool MultiplexPage::takeLinkName(const std::string& known, const std::string& newName) {
    if (newName.empty() || newName == known) {
        return true;
    }
    if (!mayNameLink(parts_.context, &form().ui, newName)) {
        return false;
    }
    if (known.empty()) {
        return true;
    }
    const std::string oldName = known;
    if (!renameDataLink(parts_, &form().ui, oldName, newName)) {
        return false;
    }
    replaceLinkName(group_, oldName, newName);
    const auto rename = [&](std::string& name) { name = name == oldName ? newName : name; };
    rename(knownLink_);
    for (auto& [fileRow, name] : knownRowLinks_) {
        rename(name);
    }
    emit linkRenamed();
    markChanged();
    return true;
}

std::string MultiplexPage::knownLinkOf(std::size_t fileRow) const {
    const auto it = knownRowLinks_.find(fileRow);
    return fileRow == 0 || it == knownRowLinks_.end() ? std::string() : it->second;
}

void MultiplexPage::editName() {
    const bool link = signalNameOf(fields_->value(kSignalType)) == SignalName::DataLink;
    const std::string before(basebandName(group_));
    TextPrompt prompt;
    prompt.title = link ? "Enter Data Link Name" : "Enter Measurement Name";
    prompt.prompt = link ? "Data Link Name:" : "Measurement Name:";
    prompt.initial = before;
    prompt.limit = kLinkLimit;
    const auto entered = form().ui.enterText(prompt);
    if (!entered || *entered == before) {
        return;
    }
    if (holdsSemicolon(*entered)) {
        showSemicolonRefused(form().ui);
        return;
    }
    if (link && !takeLinkName(knownLink_, *entered)) {
        return;
    }
    setBasebandName(group_, *entered);
    showName();
    showRows();
    markChanged();
}

std::vector<std::string> MultiplexPage::shownRow(const GroupRow& row) const {
    std::vector<std::string> cells;
    for (const auto& field : columnFields(form().edition)) {
        cells.push_back(shownCell(field, row.value(field.code), form().edition));
    }
    cells.emplace_back(subcarrierName(row));
    return cells;
}

void MultiplexPage::showRows() {
    std::vector<ListRow> shown;
    fileRows_.clear();
    for (const auto& row : group_.record.rows(kSubcarrierCount)) {
        shown.push_back(shownRow(row));
        fileRows_.push_back(row.fileRow);
    }
    const int selected = rows_->currentRow();
    rows_->setIdentifiedRows(shown);
    if (selected >= 0) {
        rows_->selectRow(selected);
    }
}

void MultiplexPage::takeRows() {
    auto& rows = group_.record.lists[std::string(kSubcarrierCount)];
    rows.clear();
    const auto fields = columnFields(form().edition);
    for (int i = 0; i < rows_->rowCount(); ++i) {
        const auto shown = rows_->cellsOfRow(i);
        auto& row = rows.emplace_back();
        // A new row has no id.
        const auto id = static_cast<std::size_t>(rows_->idOf(i));
        row.fileRow = id < fileRows_.size() ? fileRows_[id] : 0;
        for (std::size_t k = 0; k < fields.size(); ++k) {
            row.set(fields[k].code, storedCell(fields[k], shown[k], form().edition));
        }
        setSubcarrierName(row, shown[kLinkColumn]);
    }
}

bool MultiplexPage::mayHaveName(const ListRow& before, const ListRow& now, std::size_t fileRow) {
    const auto& name = now[kLinkColumn];
    const auto& type = now[kDataTypeColumn];
    switch (signalNameOf(type)) {
        case SignalName::None:
            // Only Other stands for a signal without a name.
            if (name.empty() || startsWithIgnoreCase(type, kOtherType)) {
                return true;
            }
            showBox(&form().ui, "You must select a Data Type for this name.", kIllegalNumber);
            return false;
        case SignalName::Measurement:
            return name == before[kLinkColumn] || mayNameLink(parts_.context, &form().ui, name);
        case SignalName::DataLink:
            break;
    }
    if (!takeLinkName(knownLinkOf(fileRow), name)) {
        return false;
    }
    // Other signals of the group may bear the same link.
    showName();
    return true;
}

std::optional<ListRow> MultiplexPage::editRow(int index, const ListRow& given) {
    // The last cell is the id.
    ListRow before = given;
    const bool isNew = before.back().empty();
    before.pop_back();
    const int id = rows_->idOf(index);
    const auto fileRow = id >= 0 && id < static_cast<int>(fileRows_.size())
                             ? fileRows_[static_cast<std::size_t>(id)]
                             : 0;
    const auto setup = signalList(form().edition);
    SubcarrierDialog dialog(form(), *rows_, setup, index, before, isNew, window());
    bool renamed = false;
    const auto whenRenamed =
        connect(this, &MultiplexPage::linkRenamed, this, [&renamed] { renamed = true; });
    dialog.mayAccept = [&](const ListRow& now) { return mayHaveName(before, now, fileRow); };
    const bool accepted = runDialog(form().door, dialog) == QDialog::Accepted;
    disconnect(whenRenamed);
    if (renamed) {
        showRows();
    }
    if (!accepted) {
        return std::nullopt;
    }
    auto row = dialog.values();
    if (signalNameOf(row[kDataTypeColumn]) == SignalName::None) {
        row[kLinkColumn].clear();
    }
    // The rows that are shown again have new ids.
    row.push_back(rows_->rows()[static_cast<std::size_t>(index)].back());
    return row;
}

bool MultiplexPage::validate() {
    if (!fields_->validate()) {
        return false;
    }
    const bool isLink = signalNameOf(fields_->value(kSignalType)) == SignalName::DataLink;
    return !isLink || takeLinkName(knownLink_, std::string(basebandName(group_)));
}

bool MultiplexPage::store() {
    fields_->storeValues(group_.record.values);
    return storeMultiplex(parts_.context, &form().ui, group_);
}

std::unique_ptr<PropertySheet> makeMultiplexDialog(FormContext& form, SourceParts parts,
                                                   MultiplexGroup group) {
    auto sheet = std::make_unique<PropertySheet>(
        form, "MULTIPLEX_INFO", "Multiplex/Modulation - Data Source: " + group.source, "");
    if (group.isNew) {
        sheet->markChanged();
    }
    auto page = std::make_unique<MultiplexPage>(form, parts, std::move(group));
    QObject::connect(page.get(), &MultiplexPage::linkRenamed, sheet.get(),
                     [sheet = sheet.get()] { sheet->disableCancel(); });
    sheet->addPage(std::move(page));
    return sheet;
}

bool editMultiplex(FormContext& form, SourceParts parts, const std::string& source) {
    MultiplexGroup group;
    loadMultiplex(parts.context, &form.ui, source, multiplexIndex(parts.context, &form.ui, source),
                  group);
    const auto sheet = makeMultiplexDialog(form, parts, std::move(group));
    const bool stored = runPropertySheet(form, *sheet) == SheetResult::Stored;
    setStatusText(&form.ui, {});
    return stored;
}

}  // namespace kavu
