#include "app/shell/OptionDialogs.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// A dialog's column: the parts from top to bottom, the buttons below.
QVBoxLayout* beginColumn(QDialog& dialog, const char* name, const QString& title) {
    dialog.setObjectName(QLatin1String(name));
    dialog.setWindowTitle(title);
    auto* const column = new QVBoxLayout(&dialog);
    look::arrangeWindow(*column, dialog);
    return column;
}

void endColumn(QDialog& dialog, QVBoxLayout& column) {
    column.addStretch();
    column.addWidget(look::makeDialogButtons(dialog));
    // A minimum width of the dialog itself would hide that of its parts.
    column.addStrut(look::charactersWide(dialog, 48));
}

QComboBox* makeEditionList(const char* name, int chosen, QWidget* parent) {
    auto* const list = new QComboBox(parent);
    list->setObjectName(QLatin1String(name));
    for (const int year : kEditions) {
        list->addItem(toQString(editionText(year)), year);
    }
    list->setCurrentIndex(std::max(0, list->findData(chosen)));
    return list;
}

/// A box with a column of parts.
QVBoxLayout* addBox(QVBoxLayout& column, const QString& title, QWidget* parent) {
    auto* const box = new QGroupBox(title, parent);
    auto* const inside = new QVBoxLayout(box);
    column.addWidget(box);
    return inside;
}

QRadioButton* addChoice(QVBoxLayout& box, const char* name, const QString& text, bool chosen) {
    auto* const button = new QRadioButton(text);
    button->setObjectName(QLatin1String(name));
    button->setChecked(chosen);
    box.addWidget(button);
    return button;
}

}  // namespace

// --- editions -----------------------------------------------------------------------------

VersionDialog::VersionDialog(const VersionOptions& options, int openEdition, QWidget* parent)
    : QDialog(parent) {
    auto title = QStringLiteral("TMATS Version Numbers");
    if (openEdition > 0) {
        title +=
            toQString(formatPrintf(" (Current file is 106-%2.2d)", editionNumber(openEdition)));
    }
    auto* const column = beginColumn(*this, "TMATS_VERSIONS", title);
    auto* const reading = addBox(*column, QStringLiteral("Reading"), this);
    input_ = makeEditionList("inputVersion", options.inputVersion, this);
    reading->addWidget(
        look::addLabel(QStringLiteral("Version of files that do not state theirs:"), *input_));
    reading->addWidget(input_);

    auto* const saving = addBox(*column, QStringLiteral("Saving"), this);
    asRead_ = addChoice(*saving, "saveAsRead",
                        QStringLiteral("&Save in the same version as when the file was read."),
                        options.method != 2);
    asSelected_ = addChoice(*saving, "saveAsSelected",
                            QStringLiteral("Save in the s&elected version:"), options.method == 2);
    output_ = makeEditionList("outputVersion", options.outputVersion, this);
    output_->setAccessibleName(QStringLiteral("Version in which files are saved"));
    output_->setEnabled(options.method == 2);
    saving->addWidget(output_);
    connect(asSelected_, &QRadioButton::toggled, output_, &QWidget::setEnabled);
    endColumn(*this, *column);
}

VersionOptions VersionDialog::options() const {
    VersionOptions options;
    options.inputVersion = input_->currentData().toInt();
    options.method = asSelected_->isChecked() ? 2 : 1;
    options.outputVersion = output_->currentData().toInt();
    return options;
}

// --- the update file ----------------------------------------------------------------------

UpdateDialog::UpdateDialog(FormContext& form, QWidget* parent) : QDialog(parent), form_(form) {
    auto* const column =
        beginColumn(*this, "UPDATE_OPTIONS", QStringLiteral("KAVU-Update Options"));
    enabled_ = new QCheckBox(
        QStringLiteral("&Write changed calibrations to an update file when a file is saved"), this);
    enabled_->setObjectName(QStringLiteral("EnableUpd"));
    enabled_->setChecked(form.settings.get(setting::kWriteUpdates));
    column->addWidget(enabled_);

    auto* const file = addBox(*column, QStringLiteral("Update File"), this);
    path_ = new QLineEdit(toQString(form.settings.get(setting::kUpdatePath)), this);
    path_->setObjectName(QStringLiteral("UpdPath"));
    browse_ =
        look::makeButton("browse", QStringLiteral("&Browse..."), QStringLiteral("folder"), this);
    file->addWidget(look::addLabel(QStringLiteral("Path:"), *path_));
    auto* const row = new QHBoxLayout;
    row->addWidget(path_, 1);
    row->addWidget(browse_);
    file->addLayout(row);
    const bool append = form.settings.get(setting::kAppendUpdates);
    append_ = addChoice(*file, "append", QStringLiteral("&Append to the file"), append);
    overwrite_ = addChoice(*file, "overwrite", QStringLiteral("&Overwrite the file"), !append);

    connect(enabled_, &QCheckBox::toggled, this, &UpdateDialog::enableParts);
    connect(browse_, &QPushButton::clicked, this, &UpdateDialog::browse);
    enableParts();
    endColumn(*this, *column);
}

void UpdateDialog::enableParts() {
    const auto parts = {static_cast<QWidget*>(path_), static_cast<QWidget*>(browse_),
                        static_cast<QWidget*>(append_), static_cast<QWidget*>(overwrite_)};
    for (auto* const part : parts) {
        part->setEnabled(enabled_->isChecked());
    }
}

void UpdateDialog::browse() {
    FilePrompt prompt;
    prompt.title = "KAVU-Update File";
    prompt.filters = {{"Text Files", "*.txt"}, {"All Files", "*"}};
    prompt.path = toBytes(path_->text());
    prompt.forSaving = true;
    if (const auto choice = form_.ui.chooseFile(prompt)) {
        path_->setText(toQString(choice->path));
    }
}

void UpdateDialog::accept() {
    if (enabled_->isChecked() && path_->text().trimmed().isEmpty()) {
        showBox(&form_.ui, "Enter the path of the update file, or switch it off.",
                "KAVU-Update Options", Icon::Warning);
        path_->setFocus();
        return;
    }
    QDialog::accept();
}

void UpdateDialog::store() const {
    form_.settings.set(setting::kWriteUpdates, enabled_->isChecked());
    form_.settings.set(setting::kUpdatePath, toBytes(path_->text().trimmed()));
    form_.settings.set(setting::kAppendUpdates, append_->isChecked());
}

// --- sample rates -------------------------------------------------------------------------

SampleRateDialog::SampleRateDialog(bool calculate, int digits, QWidget* parent) : QDialog(parent) {
    auto* const column =
        beginColumn(*this, "SAMPLE_RATE_OPTIONS", QStringLiteral("Sample Rate Options"));
    calculate_ = new QCheckBox(
        QStringLiteral("&Calculate sample rates of measurements automatically"), this);
    calculate_->setObjectName(QStringLiteral("ChkSR"));
    calculate_->setChecked(calculate);
    column->addWidget(calculate_);
    digits_ = new QComboBox(this);
    digits_->setObjectName(QStringLiteral("SRPrec"));
    for (int count = 0; count <= kMostDigits; ++count) {
        digits_->addItem(QString::number(count));
    }
    digits_->setCurrentIndex(std::clamp(digits, 0, kMostDigits));
    digits_->setEnabled(calculate);
    connect(calculate_, &QCheckBox::toggled, digits_, &QWidget::setEnabled);
    auto* const row = new QHBoxLayout;
    row->addWidget(look::addLabel(QStringLiteral("Digits after the decimal point:"), *digits_));
    row->addWidget(digits_);
    row->addStretch();
    column->addLayout(row);
    endColumn(*this, *column);
}

bool SampleRateDialog::calculate() const {
    return calculate_->isChecked();
}

int SampleRateDialog::digits() const {
    return digits_->currentIndex();
}

}  // namespace kavu
