#include "app/mdb/LocationDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr const char* kPathPrompt = "Enter New Measurement Database Pathname For KAVU-9";

}  // namespace

QComboBox* makeVersionList(const char* objectName, MdbVersion version, QWidget* parent) {
    auto* const list = new QComboBox(parent);
    list->setObjectName(QLatin1String(objectName));
    for (const auto name : kMdbVersionNames) {
        list->addItem(toQString(name));
    }
    list->setCurrentIndex(static_cast<int>(version));
    return list;
}

LocationDialog::LocationDialog(FormContext& form, const std::string& path, MdbVersion version,
                               QWidget* parent)
    : HelpedDialog(form, "MDB_LOCATION",
                   QStringLiteral("Change Measurement Database Version/Location"), parent) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    version_ = makeVersionList("version", version, this);
    column->addWidget(look::addKeyLabel(QStringLiteral("&Version:"), *version_));
    column->addWidget(version_);
    path_ = new QLineEdit(toQString(path), this);
    path_->setObjectName(QStringLiteral("path"));
    column->addWidget(look::addLabel(QLatin1String(kPathPrompt) + QLatin1Char(':'), *path_));
    auto* const row = new QHBoxLayout;
    row->addWidget(path_, 1);
    auto* const browseButton =
        look::makeButton("browse", QStringLiteral("&Browse..."), QStringLiteral("folder"), this);
    connect(browseButton, &QPushButton::clicked, this, &LocationDialog::browse);
    row->addWidget(browseButton);
    column->addLayout(row);
    column->addWidget(look::makeNote(
        QStringLiteral("The file is read as the version says; it is not converted."), this));
    column->addStretch();
    column->addWidget(look::makeDialogButtons(*this));
    column->addStrut(look::charactersWide(*this, 64));
}

std::string LocationDialog::path() const {
    return toBytes(path_->text().trimmed());
}

MdbVersion LocationDialog::version() const {
    return static_cast<MdbVersion>(version_->currentIndex());
}

void LocationDialog::browse() {
    FilePrompt prompt;
    prompt.title = kPathPrompt;
    prompt.filters = {{"KAVU Database Files", "*.otb"}, {"All Files", "*"}};
    prompt.path = path();
    prompt.forSaving = true;  // a file that is not there is made
    prompt.extension = ".otb";
    if (const auto choice = form().ui.chooseFile(prompt)) {
        path_->setText(toQString(choice->path));
    }
}

void LocationDialog::accept() {
    if (path().empty()) {
        showBox(&form().ui, "Enter the path of the measurement database.", toBytes(windowTitle()),
                Icon::Warning);
        path_->setFocus();
        return;
    }
    QDialog::accept();
}

}  // namespace kavu
