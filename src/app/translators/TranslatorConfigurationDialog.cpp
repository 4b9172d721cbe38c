#include "app/translators/TranslatorConfigurationDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kavu {

TranslatorConfigurationDialog::TranslatorConfigurationDialog(FormContext& form,
                                                             TranslatorConfiguration& configuration,
                                                             QWidget* parent)
    : EditDialog(form, "TranslatorConfigurationDialog", toQString(translator_text::kDialogTitle),
                 parent),
      configuration_(configuration) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    rows_ = new QTreeWidget(this);
    rows_->setObjectName(QStringLiteral("items"));
    rows_->setHeaderLabels(
        {toQString(translator_text::kDescription), toQString(translator_text::kValue)});
    rows_->setRootIsDecorated(false);
    rows_->setAllColumnsShowFocus(true);
    rows_->header()->setStretchLastSection(false);
    rows_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    rows_->setColumnWidth(1, look::charactersWide(*this, 32));
    rows_->setMinimumSize(look::charactersWide(*this, 88), look::unit(*this) * 16);
    layout->addWidget(look::addLabel(toQString(translator_text::kListTitle), *rows_));
    layout->addWidget(rows_, 1);
    auto* const buttons = new QHBoxLayout;
    auto* const edit =
        look::makeButton("edit", QStringLiteral("&Edit"), QStringLiteral("edit"), this);
    auto* const defaults =
        look::makeButton("defaults", QStringLiteral("&Restore Vendor Defaults"), {}, this);
    defaults->setEnabled(!configuration_.items().empty());
    buttons->addWidget(edit);
    buttons->addWidget(defaults);
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addWidget(look::makeDialogButtons(*this));
    connect(rows_, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { editRow(rows_->indexOfTopLevelItem(item)); });
    connect(edit, &QPushButton::clicked, this,
            [this] { editRow(rows_->indexOfTopLevelItem(rows_->currentItem())); });
    connect(defaults, &QPushButton::clicked, this, [this] { restoreDefaults(); });
    showRows();
    rows_->setFocus();
}

void TranslatorConfigurationDialog::showRows() {
    const int selected = std::max(0, rows_->indexOfTopLevelItem(rows_->currentItem()));
    rows_->clear();
    for (const auto& row : configuration_.rows()) {
        auto* const item =
            new QTreeWidgetItem(rows_, {toQString(row.description), toQString(row.value)});
        item->setDisabled(!row.canEdit);
    }
    rows_->setCurrentItem(rows_->topLevelItem(selected));
}

void TranslatorConfigurationDialog::editRow(int row) {
    if (row >= 0 && configuration_.edit(static_cast<std::size_t>(row), &form().ui)) {
        markChanged();
        showRows();
    }
}

void TranslatorConfigurationDialog::restoreDefaults() {
    if (configuration_.restoreDefaults(&form().ui)) {
        if (configuration_.isChanged()) {
            markChanged();
        }
        showRows();
    }
}

bool TranslatorConfigurationDialog::store() {
    const auto status = configuration_.save(&form().ui);
    if (!status.ok()) {
        showBox(&form().ui,
                formatPrintf("Unable to write '%s'\n\nReason: %s", status.path(), status.reason()),
                std::string(translator_text::kErrorTitle));
    }
    return status.ok();
}

}  // namespace kavu
