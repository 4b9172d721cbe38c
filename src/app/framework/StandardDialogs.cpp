#include "app/framework/StandardDialogs.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/FilePrompts.h"

#include <algorithm>
#include <array>

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
    if (!box.details.empty()) {
        shown.setDetailedText(toQString(box.details));
        for (auto* const button : shown.buttons()) {
            button->setObjectName(QStringLiteral("details"));  // the only one so far
        }
    }
    if (box.icon != Icon::None) {
        const int size = look::unit(shown) * 4;
        shown.setIconPixmap(
            look::icon(iconName(box.icon)).pixmap(QSize(size, size), shown.devicePixelRatioF()));
    }
    for (const auto& row : kButtons) {
        if (holds(box.buttons, row.button)) {
            auto* button = shown.addButton(row.standard);
            button->setObjectName(QLatin1String(row.name));
            const auto& own = row.button == Button::Yes  ? box.yesText
                              : row.button == Button::No ? box.noText
                                                         : std::string();
            button->setText(own.empty() ? QString::fromUtf16(row.text) : toQString(own));
            button->setAccessibleName(look::spokenName(button->text()));
            if (row.button == box.defaultButton) {
                shown.setDefaultButton(row.standard);
                // Whoever only closes the box has given no reply.
                if (!box.name.empty() && !holds(box.buttons, Button::Cancel)) {
                    shown.setEscapeButton(row.standard);
                }
            }
        }
    }
}

QString filterText(const std::pair<std::string, std::string>& filter) {
    QString patterns = toQString(filter.second);
    // Some texts name their patterns themselves; they are shown once.
    const QString text = toQString(filter.first).section(QStringLiteral(" ("), 0, 0);
    return text + QStringLiteral(" (") + patterns.replace(u';', u' ') + QStringLiteral(")");
}

/// Asks before it closes with a file that would be overwritten, typed or clicked.
class FileDialog : public QFileDialog {
  public:
    FileDialog(FilePrompt prompt, std::function<bool(const std::string&)> ask, QWidget* parent)
        : QFileDialog(parent), prompt_(std::move(prompt)), ask_(std::move(ask)) {}

    void accept() override {
        if (mayTake()) {
            QFileDialog::accept();
        }
    }

  private:
    /// True as well for a folder, into which the dialog goes.
    [[nodiscard]] bool mayTake() const {
        const auto choice = chosenFile(*this, prompt_);
        if (!prompt_.confirmsOverwrite || !choice ||
            QFileInfo(QFile::decodeName(choice->path.c_str())).isDir()) {
            return true;
        }
        const auto question = overwriteQuestion(choice->path, prompt_.own);
        return !question || ask_(*question);
    }

    FilePrompt prompt_;
    std::function<bool(const std::string&)> ask_;
};

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
    if (prompt.path.empty() && !prompt.folder.empty()) {
        dialog.setDirectory(QFile::decodeName(prompt.folder.c_str()));
    } else if (!prompt.path.empty()) {
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

std::unique_ptr<QMessageBox> makeMessageBox(const MessageBox& box, QWidget* parent) {
    auto shown = std::make_unique<QMessageBox>(parent);
    fillBox(*shown, box);
    return shown;
}

Button pressedButton(const QMessageBox& box) {
    const auto* clicked = box.clickedButton();
    for (const auto& row : kButtons) {
        if (clicked != nullptr && box.button(row.standard) == clicked) {
            return row.button;
        }
    }
    return Button::None;
}

std::unique_ptr<QFileDialog> makeFileDialog(const FilePrompt& prompt,
                                            std::function<bool(const std::string&)> ask,
                                            QWidget* parent) {
    auto dialog = std::make_unique<FileDialog>(prompt, std::move(ask), parent);
    fillFileDialog(*dialog, prompt);
    return dialog;
}

std::optional<FileChoice> chosenFile(const QFileDialog& dialog, const FilePrompt& prompt) {
    const auto files = dialog.selectedFiles();
    if (files.isEmpty()) {
        return std::nullopt;
    }
    FileChoice choice;
    choice.path = QFile::encodeName(files.constFirst()).toStdString();
    if (prompt.forSaving) {
        choice.path = withExtension(choice.path, prompt.extension);
    }
    const auto index = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    choice.filterIndex = std::max(1, static_cast<int>(index) + 1);
    return choice;
}

}  // namespace kavu
