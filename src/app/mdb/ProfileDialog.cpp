#include "app/mdb/ProfileDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "mdb/import/ImportProfiles.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kavu {

ProfileDialog::ProfileDialog(FormContext& form, Purpose purpose, const std::string& title,
                             QWidget* parent)
    : HelpedDialog(form, purpose == Purpose::Save ? "SAVE_IMPORT_PROFILE" : "LOAD_IMPORT_PROFILE",
                   purpose == Purpose::Save
                       ? QStringLiteral("Save Database Settings")
                       : QStringLiteral("Load Previous Saved Database Settings"),
                   parent) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    const bool saves = purpose == Purpose::Save;
    if (saves) {
        saveNew_ = new QRadioButton(QStringLiteral("Save As &New Profile"), this);
        saveNew_->setObjectName(QStringLiteral("saveNew"));
        saveNew_->setChecked(true);
        title_ = new QLineEdit(toQString(title), this);
        title_->setObjectName(QStringLiteral("title"));
        replace_ = new QRadioButton(QStringLiteral("&Replace Existing Profile"), this);
        replace_->setObjectName(QStringLiteral("replace"));
        column->addWidget(saveNew_);
        column->addWidget(look::addKeyLabel(QStringLiteral("&Title:"), *title_));
        column->addWidget(title_);
        column->addWidget(replace_);
        connect(saveNew_, &QRadioButton::toggled, this, &ProfileDialog::updateState);
    }
    list_ = new QTableWidget(0, 2, this);
    list_->setObjectName(QStringLiteral("profiles"));
    list_->setAccessibleName(QStringLiteral("Profiles"));
    list_->setHorizontalHeaderLabels({QStringLiteral("Title"), QStringLiteral("Type")});
    list_->setSelectionBehavior(QTableWidget::SelectRows);
    list_->setSelectionMode(QTableWidget::SingleSelection);
    list_->setEditTriggers(QTableWidget::NoEditTriggers);
    list_->setTabKeyNavigation(false);
    list_->verticalHeader()->setVisible(false);
    list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() +
                                                   look::unit(*this));
    list_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->setColumnWidth(1, look::charactersWide(*this, 20));
    list_->setMinimumSize(look::charactersWide(*this, 60), look::unit(*this) * 16);
    column->addWidget(list_, 1);
    auto* const row = new QHBoxLayout;
    delete_ =
        look::makeButton("delete", QStringLiteral("&Delete..."), QStringLiteral("delete"), this);
    delete_->setAutoDefault(false);
    row->addWidget(delete_);
    row->addStretch(1);
    column->addLayout(row);
    auto* const buttons = look::makeDialogButtons(*this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    column->addWidget(buttons);
    connect(delete_, &QPushButton::clicked, this, &ProfileDialog::deleteProfile);
    connect(list_, &QTableWidget::itemSelectionChanged, this, &ProfileDialog::updateState);
    if (!saves) {
        connect(list_, &QTableWidget::cellDoubleClicked, this, &ProfileDialog::accept);
    }
    fill();
    if (saves) {
        title_->setFocus();
    }
}

void ProfileDialog::fill() {
    const auto profiles = listImportProfiles(form().settings);
    list_->setRowCount(static_cast<int>(profiles.size()));
    for (int row = 0; row < list_->rowCount(); ++row) {
        const auto& profile = profiles[static_cast<std::size_t>(row)];
        const auto kind = static_cast<std::size_t>(profile.layout.kind);
        list_->setItem(row, 0, new QTableWidgetItem(toQString(profile.title)));
        list_->setItem(row, 1, new QTableWidgetItem(toQString(importKinds()[kind].name)));
    }
    if (list_->rowCount() > 0) {
        list_->setCurrentCell(0, 0);
    }
    updateState();
}

bool ProfileDialog::isNew() const {
    return saveNew_ != nullptr && saveNew_->isChecked();
}

std::string ProfileDialog::selected() const {
    const int row = list_->currentRow();
    return row < 0 ? std::string() : toBytes(list_->item(row, 0)->text());
}

std::string ProfileDialog::title() const {
    return isNew() ? toBytes(title_->text().trimmed()) : selected();
}

void ProfileDialog::updateState() {
    const bool hasProfile = list_->currentRow() >= 0;
    delete_->setEnabled(hasProfile);
    ok_->setEnabled(isNew() || hasProfile);
    if (title_ != nullptr) {
        title_->setEnabled(isNew());
        replace_->setEnabled(list_->rowCount() > 0);
    }
}

void ProfileDialog::deleteProfile() {
    const auto chosen = selected();
    if (!chosen.empty() &&
        showBox(&form().ui, formatPrintf("Delete the profile, \"%s\"?", chosen), "Delete Profile",
                Icon::Question, Buttons::YesNo, Button::No) == Button::Yes) {
        (void)deleteImportProfile(form().settings, chosen);
        fill();
    }
}

void ProfileDialog::accept() {
    const auto chosen = title();
    if (chosen.empty()) {
        showBox(&form().ui, "Enter the title of the profile.", toBytes(windowTitle()),
                Icon::Warning);
        title_->setFocus();
        return;
    }
    if (isNew() && loadImportProfile(form().settings, chosen) &&
        showBox(&form().ui, formatPrintf("Overwrite the profile, \"%s\"?", chosen),
                "Overwrite Existing Entry?", Icon::Question, Buttons::YesNo,
                Button::No) != Button::Yes) {
        return;
    }
    QDialog::accept();
}

}  // namespace kavu
