#include "app/pcm/EditDataWordControls.h"

#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/TypingRules.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace kavu {

CodeBox::CodeBox(const char* name, std::span<const Choice> choices, QWidget* parent)
    : QComboBox(parent), choices_(choices) {
    setObjectName(QLatin1String(name));
    for (const auto& choice : choices_) {
        addItem(toQString(choice.text));
    }
    setCurrentIndex(-1);
}

int CodeBox::indexOf(std::string_view code) const {
    const auto it = std::find_if(choices_.begin(), choices_.end(), [&](const Choice& choice) {
        return equalsIgnoreCase(choice.value, code);
    });
    return it == choices_.end() ? -1 : static_cast<int>(it - choices_.begin());
}

void CodeBox::setCode(std::string_view code) {
    const QSignalBlocker quiet(this);
    original_ = std::string(code);
    const int index = indexOf(code);
    setPlaceholderText(index < 0 ? toQString(code) : QString());
    setCurrentIndex(index);
}

std::string CodeBox::code() const {
    const int index = currentIndex();
    return index < 0 || index == indexOf(original_)
               ? original_
               : std::string(choices_[static_cast<std::size_t>(index)].value);
}

NumberEdit::NumberEdit(const char* name, int digits, QWidget* parent) : QLineEdit(parent) {
    setObjectName(QLatin1String(name));
    auto* rule = new TypingRule(
        static_cast<std::size_t>(digits), true, [](const QString&) {}, this);
    setValidator(rule);
    connect(this, &QLineEdit::textEdited, rule, &TypingRule::took);
    setMinimumWidth(look::charactersWide(*this, 8));
}

void NumberEdit::setNumber(int number) {
    const QSignalBlocker quiet(this);
    setText(number == 0 ? QString() : QString::number(number));
}

int NumberEdit::number() const {
    return leadingInt(toBytes(text()));
}

int addField(QGridLayout& grid, const char16_t* label, QWidget& control) {
    const int row = grid.rowCount();
    auto* shown = look::addKeyLabel(QString::fromUtf16(label), control);
    grid.addWidget(shown, row, 0);
    grid.addWidget(&control, row, 1);
    return row;
}

QGridLayout* makeFieldGrid(const QWidget& owner) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(look::unit(owner));
    grid->setVerticalSpacing(look::unit(owner) * 3 / 4);
    grid->setColumnStretch(1, 1);
    return grid;
}

bool mayDeleteEntry(FormContext& form) {
    return showBox(&form.ui, "Do you wish to delete the selected entry?",
                   std::string(loadText(title::kDeleteEntry).value_or("")), Icon::Question,
                   Buttons::YesNo) == Button::Yes;
}

void nameDeleteButton(EditableList& list, const QString& text) {
    if (auto* const button = list.findChild<QPushButton*>(QStringLiteral("delete"))) {
        button->setText(text);
        button->setAccessibleName(text);
    }
}

QWidget* makePanelTitle(const QString& title, QWidget* panel) {
    panel->setWindowTitle(title);
    auto* label = new QLabel(title, panel);
    label->setTextFormat(Qt::PlainText);
    auto font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

}  // namespace kavu
