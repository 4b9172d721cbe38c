#include "app/framework/QtInterface.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/Look.h"
#include "app/framework/MessagesWindow.h"
#include "app/framework/ProgressWindow.h"
#include "app/framework/QtText.h"
#include "app/framework/SelectDialogs.h"
#include "core/FieldRules.h"
#include "core/Printf.h"
#include "core/Text.h"

#include <array>

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace kavu {

namespace {

struct ButtonRow {
    Button button;
    QMessageBox::StandardButton standard;
    const char* name;
    const char16_t* text;
};
constexpr std::array<ButtonRow, 5> kButtons = {{
    {Button::Ok, QMessageBox::Ok, "ok", u"OK"},
    {Button::Yes, QMessageBox::Yes, "yes", u"&Yes"},
    {Button::No, QMessageBox::No, "no", u"&No"},
    {Button::Retry, QMessageBox::Retry, "retry", u"&Retry"},
    {Button::Cancel, QMessageBox::Cancel, "cancel", u"Cancel"},
}};

bool holds(Buttons buttons, Button button) {
    switch (button) {
        case Button::Ok:
            return buttons == Buttons::Ok || buttons == Buttons::OkCancel;
        case Button::Yes:
        case Button::No:
            return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel;
        case Button::Retry:
            return buttons == Buttons::RetryCancel;
        case Button::Cancel:
            return buttons == Buttons::OkCancel || buttons == Buttons::RetryCancel ||
                   buttons == Buttons::YesNoCancel;
        case Button::None:
            break;
    }
    return false;
}

QString iconName(Icon icon) {
    switch (icon) {
        case Icon::Error:
            return QStringLiteral("error");
        case Icon::Question:
            return QStringLiteral("question");
        case Icon::Warning:
            return QStringLiteral("warning");
        case Icon::Information:
            return QStringLiteral("information");
        case Icon::None:
            break;
    }
    return {};
}

void fillBox(QMessageBox& shown, const MessageBox& box) {
    shown.setObjectName(QStringLiteral("MessageBox"));
    shown.setWindowTitle(toQString(box.title));
    // Texts hold names from files: they are never read as markup.
    shown.setTextFormat(Qt::PlainText);
    shown.setText(toQString(box.shownText()));
    shown.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (box.icon != Icon::None) {
        const int size = look::unit(shown) * 4;
        shown.setIconPixmap(
            look::icon(iconName(box.icon)).pixmap(QSize(size, size), shown.devicePixelRatioF()));
    }
    for (const auto& row : kButtons) {
        if (holds(box.buttons, row.button)) {
            auto* button = shown.addButton(row.standard);
            button->setObjectName(QLatin1String(row.name));
            button->setText(QString::fromUtf16(row.text));
            button->setAccessibleName(look::spokenName(button->text()));
            if (row.button == box.defaultButton) {
                shown.setDefaultButton(row.standard);
            }
        }
    }
}

QString filterText(const std::pair<std::string, std::string>& filter) {
    QString patterns = toQString(filter.second);
    return toQString(filter.first) + QStringLiteral(" (") + patterns.replace(u';', u' ') +
           QStringLiteral(")");
}

void fillFileDialog(QFileDialog& dialog, const FilePrompt& prompt) {
    dialog.setObjectName(QStringLiteral("ChooseFile"));
    // One dialog on every desktop; who saves asks about an existing file.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(prompt.forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(prompt.forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!prompt.title.empty()) {
        dialog.setWindowTitle(toQString(prompt.title));
    }
    QStringList filters;
    for (const auto& filter : prompt.filters) {
        filters.append(filterText(filter));
    }
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        const int index = std::clamp(prompt.filterIndex, 1, static_cast<int>(filters.size()));
        dialog.selectNameFilter(filters.at(index - 1));
    }
    if (!prompt.path.empty()) {
        const QFileInfo start(QFile::decodeName(prompt.path.c_str()));
        if (start.isDir()) {
            dialog.setDirectory(start.filePath());
        } else {
            dialog.setDirectory(start.absolutePath());
            dialog.selectFile(start.fileName());
        }
    }
}

}  // namespace

QtInterface::QtInterface(QWidget* window, DialogDoor& door) : window_(window), door_(door) {}

QtInterface::~QtInterface() = default;

QWidget* QtInterface::dialogParent() const {
    auto* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->isVisible() ? modal : window_.data();
}

Button QtInterface::message(const MessageBox& box) {
    QMessageBox shown(dialogParent());
    fillBox(shown, box);
    runDialog(door_, shown);
    const auto* clicked = shown.clickedButton();
    for (const auto& row : kButtons) {
        if (clicked != nullptr && shown.button(row.standard) == clicked) {
            return row.button;
        }
    }
    return Button::None;
}

std::optional<std::string> QtInterface::enterValue(EnterValueSetup setup) {
    const auto title = setup.title;
    EnterValueDialog dialog(*this, std::move(setup), dialogParent());
    if (const auto locked = locked_.find(title); locked != locked_.end()) {
        dialog.move(locked->second);
        dialog.setPositionLocked(true);
    }
    const int result = runDialog(door_, dialog);
    if (dialog.positionLocked()) {
        locked_[title] = dialog.pos();
    } else {
        locked_.erase(title);
    }
    return result == QDialog::Accepted ? std::optional(dialog.value()) : std::nullopt;
}

std::optional<std::string> QtInterface::enterText(const TextPrompt& prompt) {
    EnterValueSetup setup;
    setup.title = prompt.title;
    setup.prompt = prompt.prompt;
    setup.initial = prompt.initial;
    setup.check = textCheck(prompt.limit);
    setup.errorTitle = kIllegalText;
    return enterValue(std::move(setup));
}

std::optional<long> QtInterface::enterInteger(const IntegerPrompt& prompt) {
    EnterValueSetup setup;
    setup.title = prompt.title;
    setup.prompt = prompt.prompt;
    setup.initial = std::to_string(prompt.initial);
    setup.check = integerCheck(prompt.least, prompt.most);
    const auto value = enterValue(std::move(setup));
    return value ? parseInteger(*value) : std::nullopt;
}

std::optional<double> QtInterface::enterDouble(const DoublePrompt& prompt) {
    EnterValueSetup setup;
    setup.title = prompt.title;
    setup.prompt = prompt.prompt;
    setup.initial = numberText(prompt.initial);
    setup.check = doubleCheck(prompt.least, prompt.most);
    const auto value = enterValue(std::move(setup));
    return value ? parseDouble(*value) : std::nullopt;
}

int QtInterface::chooseFromList(const std::string& title, const std::vector<std::string>& choices) {
    ChoiceDialog dialog(title, choices, dialogParent());
    return runDialog(door_, dialog) == QDialog::Accepted ? dialog.choice() : -1;
}

int QtInterface::selectFromTable(const TablePrompt& prompt) {
    SelectDialog dialog(prompt, false, dialogParent());
    if (runDialog(door_, dialog) != QDialog::Accepted) {
        return -1;
    }
    const auto rows = dialog.rows();
    return rows.empty() ? -1 : rows.front();
}

std::vector<int> QtInterface::selectRowsFromTable(const TablePrompt& prompt) {
    SelectDialog dialog(prompt, true, dialogParent());
    return runDialog(door_, dialog) == QDialog::Accepted ? dialog.rows() : std::vector<int>();
}

std::optional<FileChoice> QtInterface::chooseFile(const FilePrompt& prompt) {
    QFileDialog dialog(dialogParent());
    fillFileDialog(dialog, prompt);
    if (runDialog(door_, dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    FileChoice choice;
    choice.path = QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
    const auto filters = dialog.nameFilters();
    choice.filterIndex =
        std::max(1, static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1);
    return choice;
}

void QtInterface::logged(const LoggedMessage& message) {
    if (hooks.logged) {
        hooks.logged(message);
    }
}

void QtInterface::showMessages(const std::string& title, const std::string& subtitle,
                               const std::vector<std::string>& lines) {
    MessagesWindow window(*this, door_, {title, subtitle, lines}, hooks.goToLine, dialogParent());
    runDialog(door_, window);
}

void QtInterface::note(const std::string& text) {
    if (hooks.note) {
        hooks.note(text);
    }
}

void QtInterface::setStatusText(const std::string& text) {
    if (hooks.statusText) {
        hooks.statusText(text);
    }
}

void QtInterface::setProgressBar(double percent) {
    if (hooks.progressBar) {
        hooks.progressBar(percent);
    }
    if (progress_) {
        progress_->setPercent(percent);
    }
}

void QtInterface::beep() {
    if (hooks.beep) {
        hooks.beep();
    } else {
        QApplication::beep();
    }
}

bool QtInterface::openProgress(ProgressMode mode, bool withBar) {
    if (progress_) {
        return false;
    }
    progress_ =
        std::make_unique<ProgressWindow>(mode == ProgressMode::WithCancel, withBar, dialogParent());
    return true;
}

void QtInterface::closeProgress() {
    progress_.reset();
}

void QtInterface::setProgressText(const std::string& text) {
    if (progress_) {
        progress_->setText(toQString(text));
    }
}

void QtInterface::yieldToInterface() {
    if (progress_) {
        progress_->pump();
    }
}

bool QtInterface::cancelRequested() {
    yieldToInterface();
    if (!progress_ || !progress_->cancelPending()) {
        return false;
    }
    beep();
    const auto answer = showBox(this, "Do you really want to cancel?", "Cancel Operation",
                                Icon::Question, Buttons::YesNo);
    progress_->clearPending();
    if (answer != Button::Yes) {
        progress_->pump(true);
    }
    return answer == Button::Yes;
}

}  // namespace kavu
