#include "app/conversion/DefinitionList.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kNoRecords = 105;

}  // namespace

DefinitionListDialog::DefinitionListDialog(FormContext& form, DocumentContext& document,
                                           ConversionStore& store,
                                           std::function<bool(const std::string& name)> edit,
                                           QWidget* parent)
    : QDialog(parent), form_(form), document_(document), store_(store), edit_(std::move(edit)) {
    setObjectName(QStringLiteral("edit_data_conversion_from_menu"));
    setWindowTitle(QStringLiteral("Data Conversion Information"));
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    makeFilters(*column);
    ListSetup setup;
    setup.columns = {{.title = "Measurement", .editable = false},
                     {.title = "EU Type", .editable = false}};
    setup.canAdd = false;
    list_ = new EditableList(form_, "definitions", std::move(setup), this);
    list_->view()->setAccessibleName(QStringLiteral("Data conversion records"));
    list_->view()->setMinimumWidth(look::charactersWide(*this, 64));
    list_->view()->setMinimumHeight(look::unit(*this) * 30);
    list_->rowEditor = [this](int row, const ListRow&) -> std::optional<ListRow> {
        editRecord(row);
        return std::nullopt;
    };
    list_->mayDelete = [this](int row) { return deleteRecord(row); };
    connect(list_, &EditableList::changed, this, &DefinitionListDialog::showCount);
    auto* const print = list_->addButton("print", QStringLiteral("&Print..."));
    print->setEnabled(static_cast<bool>(form_.reports.calibrations));
    connect(print, &QPushButton::clicked, this, [this] { form_.reports.calibrations(this); });
    column->addWidget(list_, 1);
    count_ = look::makeNote({}, this);
    count_->setObjectName(QStringLiteral("count"));
    column->addWidget(count_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    rebuild({});
}

void DefinitionListDialog::makeFilters(QLayout& column) {
    auto* const row = new QHBoxLayout;
    display_ = new QComboBox(this);
    display_->setObjectName(QStringLiteral("display"));
    display_->addItems(toQStrings(definitionFilters(form_.edition)));
    display_->setMaxVisibleItems(20);
    find_ = new QLineEdit(this);
    find_->setObjectName(QStringLiteral("find"));
    find_->setClearButtonEnabled(true);
    row->addWidget(look::addLabel(QStringLiteral("Display:"), *display_));
    row->addWidget(display_);
    row->addWidget(look::addLabel(QStringLiteral("Find:"), *find_));
    row->addWidget(find_, 1);
    static_cast<QVBoxLayout&>(column).addLayout(row);
    connect(display_, &QComboBox::currentIndexChanged, this, [this] { rebuild({}); });
    connect(find_, &QLineEdit::textChanged, this, [this] { showFound({}); });
}

void DefinitionListDialog::rebuild(const std::string& select) {
    records_ = definitionRows(document_, store_, toBytes(display_->currentText()));
    showFound(select);
}

void DefinitionListDialog::showFound(const std::string& select) {
    const auto wanted = find_->text();
    std::vector<ListRow> rows;
    int selected = 0;
    for (const auto& record : records_) {
        if (!wanted.isEmpty() &&
            !toQString(record.measurement).contains(wanted, Qt::CaseInsensitive)) {
            continue;
        }
        if (record.measurement == select) {
            selected = static_cast<int>(rows.size());
        }
        rows.push_back({record.measurement, record.type});
    }
    list_->setRows(std::move(rows));
    list_->selectRow(selected);
    showCount();
}

void DefinitionListDialog::showCount() {
    const int shown = list_->rowCount();
    count_->setText(
        shown == 0 ? toQString(loadText(kNoRecords).value_or(""))
                   : toQString(formatPrintf("%d measurement%s", shown, shown == 1 ? "" : "s")));
}

void DefinitionListDialog::editRecord(int row) {
    const auto name = list_->rows()[static_cast<std::size_t>(row)][0];
    if (edit_(name)) {
        changedRecords_ = true;
        // Its type may be another one now.
        rebuild(name);
    }
}

bool DefinitionListDialog::deleteRecord(int row) {
    const auto& shown = list_->rows()[static_cast<std::size_t>(row)];
    std::vector<DefinitionRow> one = {{shown[0], shown[1]}};
    std::size_t selection = 0;
    if (!deleteDefinitionRow(document_, store_, &form_.ui, one, selection)) {
        return false;
    }
    changedRecords_ = true;
    std::erase_if(records_, [&](const auto& record) { return record.measurement == shown[0]; });
    return true;
}

}  // namespace kavu
