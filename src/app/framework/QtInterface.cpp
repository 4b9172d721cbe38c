#include "app/framework/QtInterface.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EnterTextsDialog.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/MessagesWindow.h"
#include "app/framework/ProgressWindow.h"
#include "app/framework/QtText.h"
#include "app/framework/SelectDialogs.h"
#include "app/framework/StandardDialogs.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/Messages.h"
#include "vocabulary/FieldRules.h"

#include <array>
#include <utility>

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace kavu {

QtInterface::QtInterface(QWidget* window, DialogDoor& door) : window_(window), door_(door) {}

QtInterface::~QtInterface() = default;

QWidget* QtInterface::dialogParent() const {
    auto* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->isVisible() ? modal : window_.data();
}

Button QtInterface::message(const MessageBox& box) {
    const auto shown = makeMessageBox(box, dialogParent());
    runDialog(door_, *shown);
    return pressedButton(*shown);
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
    setup.listed = prompt.listed;
    setup.check = textCheck(prompt.limit);
    setup.hint = limitText(prompt.limit);
    setup.errorTitle = kIllegalText;
    return enterValue(std::move(setup));
}

std::optional<std::vector<std::string>> QtInterface::enterTexts(
    const std::string& title, const std::vector<TextPrompt>& prompts) {
    EnterTextsDialog dialog(*this, title, prompts, dialogParent());
    return runDialog(door_, dialog) == QDialog::Accepted ? std::optional(dialog.values())
                                                         : std::nullopt;
}

std::optional<long> QtInterface::enterInteger(const IntegerPrompt& prompt) {
    EnterValueSetup setup;
    setup.title = prompt.title;
    setup.prompt = prompt.prompt;
    setup.initial = std::to_string(prompt.initial);
    setup.check = integerCheck(prompt.least, prompt.most);
    setup.hint = rangeText(prompt.least, prompt.most);
    const auto value = enterValue(std::move(setup));
    return value ? parseInteger(*value) : std::nullopt;
}

std::optional<double> QtInterface::enterDouble(const DoublePrompt& prompt) {
    EnterValueSetup setup;
    setup.title = prompt.title;
    setup.prompt = prompt.prompt;
    setup.initial = numberText(prompt.initial);
    setup.check = doubleCheck(prompt.least, prompt.most);
    setup.hint = rangeText(prompt.least, prompt.most);
    const auto value = enterValue(std::move(setup));
    return value ? parseDouble(*value) : std::nullopt;
}

int QtInterface::chooseFromList(const std::string& title, const std::vector<std::string>& choices) {
    ChoiceDialog dialog(title, choices, dialogParent());
    return runDialog(door_, dialog) == QDialog::Accepted ? dialog.choice() : -1;
}

int QtInterface::choose(const ChoicePrompt& prompt) {
    QuestionDialog dialog(prompt, dialogParent());
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
    const auto ask = [this](const std::string& question) {
        return showBox(this, question, kFileExistsTitle, Icon::Question, Buttons::YesNo,
                       Button::No) == Button::Yes;
    };
    const auto dialog = makeFileDialog(prompt, ask, dialogParent());
    return runDialog(door_, *dialog) == QDialog::Accepted ? chosenFile(*dialog, prompt)
                                                          : std::nullopt;
}

void QtInterface::logged(const LoggedMessage& message) {
    logged_.push_back(message);
    if (hooks.logged) {
        hooks.logged(message);
    }
}

void QtInterface::showMessages(const std::string& title, const std::string& subtitle,
                               const std::vector<std::string>& lines) {
    MessageReport report{{title, subtitle, lines}, {}, streamOfTitle(title)};
    report.findings =
        findingsOfLog(std::exchange(logged_, {}), lines,
                      report.stream.empty() ? "File" : "Stream '" + report.stream + "'");
    for (auto& finding : report.findings) {
        if (finding.place.stream.empty()) {
            finding.place.stream = report.stream;
        }
    }
    if (hooks.report && hooks.report(report)) {
        return;
    }
    FindingModel model;
    model.setFindings(report.findings);
    MessagesWindow window(*this, door_, report.content, model, hooks.goTo, dialogParent());
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
    // At once: the window comes only after a while.
    const auto* const shown = QGuiApplication::overrideCursor();
    QGuiApplication::setOverrideCursor(shown != nullptr ? *shown : QCursor(Qt::BusyCursor));
    return true;
}

void QtInterface::closeProgress() {
    const bool hadKeyboard =
        progress_ && progress_->isVisible() && (cancelled_ || progress_->isActiveWindow());
    if (progress_) {
        QGuiApplication::restoreOverrideCursor();
    }
    progress_.reset();
    cancelled_ = false;
    if (auto* const window = dialogParent(); hadKeyboard && window != nullptr) {
        // The question of the cancel and the window under it go in the same moment: a window
        // manager that was about to give the keyboard to the one has no window to give it to.
        window->activateWindow();
    }
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
    cancelled_ = answer == Button::Yes;
    if (!cancelled_) {
        progress_->pump(true);
    }
    return cancelled_;
}

}  // namespace kavu
