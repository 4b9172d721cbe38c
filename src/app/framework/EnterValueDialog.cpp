#include "app/framework/EnterValueDialog.h"

#include "app/framework/ClearChoice.h"
#include "app/framework/Look.h"
#include "core/talk/UserInterface.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace kavu {

EnterValueDialog::EnterValueDialog(UserInterface& ui, EnterValueSetup setup, QWidget* parent)
    : QDialog(parent), ui_(ui), setup_(std::move(setup)), initial_(setup_.initial) {
    setObjectName(QStringLiteral("EnterValue"));
    setWindowTitle(setup_.title.empty() ? QStringLiteral("Enter Value") : toQString(setup_.title));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);

    if (!setup_.listed.empty()) {
        addListed(*layout);
    }
    auto& control = makeControl();
    auto* label = look::addLabel(
        setup_.prompt.empty() ? QStringLiteral("Value:") : toQString(setup_.prompt), control);
    label->setWordWrap(true);
    label->setMinimumWidth(look::charactersWide(*this, 44));
    layout->addWidget(label);
    layout->addWidget(&control);
    if (!setup_.hint.empty()) {
        auto* const hint = look::makeNote(toQString(setup_.hint), this);
        hint->setObjectName(QStringLiteral("hint"));
        layout->addWidget(hint);
        control.setAccessibleDescription(hint->text());
    }

    lock_ = new QCheckBox(QStringLiteral("&Lock this window's position on screen"), this);
    lock_->setObjectName(QStringLiteral("lockPosition"));
    lock_->setAccessibleName(look::spokenName(lock_->text()));
    lock_->setVisible(setup_.offerLock);
    layout->addSpacing(look::unit(*this) / 2);
    layout->addWidget(lock_);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    control.setFocus();
}

/// Names to look at, not to choose from.
void EnterValueDialog::addListed(QVBoxLayout& layout) {
    constexpr int kMostLines = 6;
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("listed"));
    list->addItems(toQStrings(setup_.listed));
    list->setSelectionMode(QListWidget::NoSelection);
    list->setUniformItemSizes(true);
    const int lines = std::clamp(list->count(), 2, kMostLines);
    list->setFixedHeight(std::max(lines * list->sizeHintForRow(0) + look::unit(*this),
                                  list->minimumSizeHint().height()));
    layout.addWidget(look::addLabel(QStringLiteral("There are already:"), *list));
    layout.addWidget(list);
    layout.addSpacing(look::unit(*this) / 2);
}

QWidget& EnterValueDialog::makeControl() {
    if (setup_.choices.empty()) {
        edit_ = new QLineEdit(initial_.shown(), this);
        edit_->setObjectName(QStringLiteral("value"));
        edit_->selectAll();
        return *edit_;
    }
    choices_ = new QComboBox(this);
    choices_->setObjectName(QStringLiteral("value"));
    choices_->addItems(toQStrings(setup_.choices));
    const auto it = std::find(setup_.choices.begin(), setup_.choices.end(), setup_.initial);
    choices_->setCurrentIndex(
        it == setup_.choices.end() ? -1 : static_cast<int>(it - setup_.choices.begin()));
    if (it == setup_.choices.end()) {
        choices_->setPlaceholderText(initial_.shown());
    }
    if (setup_.mayBeEmpty) {
        clearOnDelete(*choices_);
    }
    return *choices_;
}

std::string EnterValueDialog::value() const {
    if (edit_ != nullptr) {
        return initial_.bytesOf(edit_->text());
    }
    const int index = choices_->currentIndex();
    if (index >= 0) {
        return setup_.choices[static_cast<std::size_t>(index)];
    }
    // A value that is no entry is held by its place until it is emptied.
    return choices_->placeholderText().isEmpty() ? std::string() : setup_.initial;
}

bool EnterValueDialog::positionLocked() const {
    return lock_->isChecked();
}

void EnterValueDialog::setPositionLocked(bool locked) {
    lock_->setChecked(locked);
}

void EnterValueDialog::accept() {
    const auto entered = value();
    if (setup_.refuseSemicolon && entered.find(';') != std::string::npos) {
        showSemicolonRefused(ui_);
    } else if (const auto error = setup_.check ? setup_.check(entered) : std::nullopt) {
        showBox(&ui_, *error, setup_.errorTitle, Icon::Error);
    } else {
        QDialog::accept();
        return;
    }
    if (edit_ != nullptr) {
        edit_->setFocus();
        edit_->selectAll();
    }
}

}  // namespace kavu
