#include "app/framework/EnterTextsDialog.h"

#include "app/framework/Look.h"
#include "app/framework/Refusals.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kavu {

EnterTextsDialog::EnterTextsDialog(UserInterface& ui, const std::string& title,
                                   const std::vector<TextPrompt>& prompts, QWidget* parent)
    : QDialog(parent), ui_(ui) {
    setObjectName(QStringLiteral("EnterTexts"));
    setWindowTitle(title.empty() ? QStringLiteral("Enter Value") : toQString(title));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* form = new QFormLayout;
    look::arrangePart(*form, *this);
    layout->addLayout(form);
    for (const auto& prompt : prompts) {
        Line line{new QLineEdit(this), ShownText(prompt.initial), prompt.limit};
        line.edit->setObjectName(QStringLiteral("value%1").arg(lines_.size()));
        line.edit->setText(line.initial.shown());
        line.edit->setMinimumWidth(look::charactersWide(*this, 36));
        const auto hint = toQString(limitText(prompt.limit));
        line.edit->setPlaceholderText(hint);
        line.edit->setAccessibleDescription(hint);
        form->addRow(look::addLabel(toQString(prompt.prompt), *line.edit), line.edit);
        lines_.push_back(std::move(line));
    }
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    if (!lines_.empty()) {
        lines_.front().edit->setFocus();
        lines_.front().edit->selectAll();
    }
}

std::vector<std::string> EnterTextsDialog::values() const {
    std::vector<std::string> texts;
    for (const auto& line : lines_) {
        texts.push_back(line.initial.bytesOf(line.edit->text()));
    }
    return texts;
}

void EnterTextsDialog::accept() {
    for (const auto& line : lines_) {
        const auto entered = line.initial.bytesOf(line.edit->text());
        const auto error = textCheck(line.limit)(entered);
        if (entered.find(';') != std::string::npos) {
            showSemicolonRefused(ui_);
        } else if (error) {
            showBox(&ui_, *error, kIllegalText, Icon::Error);
        } else {
            continue;
        }
        line.edit->setFocus();
        line.edit->selectAll();
        return;
    }
    QDialog::accept();
}

}  // namespace kavu
