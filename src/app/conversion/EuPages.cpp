#include "app/conversion/EuPages.h"

#include "app/conversion/EuDialogs.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

EuFieldPage::EuFieldPage(FormContext& form, const EuPage& page, DefinitionValues::Fields& values,
                         bool readOnly)
    : PropertyPage(form, page.resource, std::string(page.title)), values_(values) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, page.fields, {}, this);
    fields_->setEnabled(!readOnly);
    layout->addWidget(fields_, 1);
    told_ = look::makeNote({}, this);
    told_->setObjectName(QStringLiteral("told"));
    told_->hide();
    layout->addWidget(told_);
    buttons_ = new QHBoxLayout;
    buttons_->addStretch();
    layout->addLayout(buttons_);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

QPushButton* EuFieldPage::addButton(const char* name, const QString& text) {
    auto* const button = look::makeButton(name, text, {}, this);
    buttons_->insertWidget(buttons_->count() - 1, button);
    return button;
}

void EuFieldPage::take() {
    fields_->storeValues(values_);
}

void EuFieldPage::tell(std::string_view text) {
    told_->setText(toQString(text));
    told_->show();
    QAccessibleEvent event(told_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void EuFieldPage::load() {
    fields_->setValues(values_);
}

bool EuFieldPage::validate() {
    if (!fields_->validate()) {
        return false;
    }
    take();
    return !check || check();
}

bool EuFieldPage::store() {
    take();
    return true;
}

std::unique_ptr<ListPage> makeEuListPage(FormContext& form, const EuPage& page,
                                         DefinitionValues& values, bool readOnly) {
    const auto& list = *page.list;
    const bool open = list.isIn(form.edition);
    ListSetup setup;
    for (const auto& column : list.columns) {
        setup.columns.push_back({.title = std::string(column.label), .limit = column.limit});
    }
    setup.mostRows = list.rowsIn(form.edition);
    setup.canMove = true;
    setup.rowDialogTitle = "Edit " + std::string(list.title);
    auto made =
        std::make_unique<ListPage>(form, page.resource, std::string(page.title), std::move(setup),
                                   values.lists[std::string(list.countCode)]);
    made->list().setEnabled(open && !readOnly);
    if (!open) {
        made->layout()->addWidget(look::makeNote(
            QStringLiteral("Before 106-99 a measurement has one such value, which is kept."),
            made.get()));
    }
    return made;
}

bool editBitWeights(FormContext& form, DefinitionValues::Rows& rows, QWidget* parent) {
    BitWeightDialog dialog(form, rows, parent);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return false;
    }
    rows = dialog.rows();
    return true;
}

std::optional<std::string> askImportSource(FormContext& form, const std::vector<std::string>& names,
                                           const std::string& preselected, QWidget* parent) {
    ImportValuesDialog dialog(names, preselected, parent);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.chosen();
}

std::optional<std::string> askFloatingPointFormat(FormContext& form) {
    TablePrompt prompt;
    prompt.title = eutext::kFloatingPointTypes;
    prompt.columns = {"Format", "Code"};
    for (const auto& format : floatingPointFormats()) {
        prompt.rows.push_back({std::string(format.text), std::string(format.code)});
    }
    const int row = form.ui.selectFromTable(prompt);
    const auto formats = floatingPointFormats();
    if (row < 0 || row >= static_cast<int>(formats.size())) {
        return std::nullopt;
    }
    return std::string(formats[static_cast<std::size_t>(row)].code);
}

}  // namespace kavu
