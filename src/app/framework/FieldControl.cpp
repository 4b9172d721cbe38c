#include "app/framework/FieldControl.h"

#include "app/framework/ClearChoice.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/TypingRules.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace kavu {

void FieldControl::show(std::string_view bytes) {
    showing_ = true;
    original_ = bytes;
    std::string text(bytes);
    fromStoredForm(text);
    setShown(text);
    shown_ = held();
    showing_ = false;
}

void FieldControl::edit(std::string_view bytes) {
    if (value() == bytes) {
        return;
    }
    showing_ = true;
    std::string text(bytes);
    fromStoredForm(text);
    setShown(text);
    showing_ = false;
    userEdited();
}

std::string FieldControl::value() const {
    if (held() == shown_) {
        return original_;
    }
    auto bytes = heldBytes();
    toStoredForm(bytes);
    return bytes;
}

std::string FieldControl::heldBytes() const {
    return toBytes(held());
}

void FieldControl::userEdited() {
    if (!showing_) {
        host_.edited(field_);
    }
}

void FieldControl::checkSemicolon(const QString& text) {
    if (!showing_ && text.contains(u';')) {
        showSemicolonRefused(host_.form.ui);
    }
}

bool FieldControl::refuseSemicolon() {
    // What came in this way was not typed here; only an edit can be mended here.
    if (held() == shown_ || !held().contains(u';')) {
        return true;
    }
    showSemicolonRefused(host_.form.ui);
    widget().setFocus();
    return false;
}

namespace {

/// Widths come in a few sizes, so that a page of fields has few edges.
int controlWidth(const QWidget& widget, std::size_t limit) {
    const auto characters = limit == 0 || limit > 32 ? 34 : limit > 20 ? 38 : limit > 10 ? 28 : 14;
    return look::charactersWide(widget, characters);
}

class TextControl : public FieldControl {
  public:
    TextControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field), edit_(new QLineEdit(host.parent)) {
        const bool digits = field.kind == FieldKind::Count || field.kind == FieldKind::Digits;
        rule_ = new TypingRule(field.limit, digits, host.hint, edit_);
        edit_->setValidator(rule_);
        const int width = controlWidth(*edit_, field.limit);
        edit_->setMinimumWidth(width);
        if (field.limit != 0 && field.limit <= 32) {
            edit_->setMaximumWidth(width);
        }
        connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) {
            rule_->took(text);
            userEdited();
            checkSemicolon(text);
        });
    }
    [[nodiscard]] QWidget& widget() const override { return *edit_; }
    [[nodiscard]] bool validate() override { return refuseSemicolon(); }

  protected:
    void setShown(const std::string& text) override {
        const auto shown = toQString(text);
        rule_->took(shown);
        edit_->setText(shown);
        edit_->setCursorPosition(0);
    }
    [[nodiscard]] QString held() const override { return edit_->text(); }

  private:
    QLineEdit* edit_;
    TypingRule* rule_;
};

class CommentControl : public FieldControl {
  public:
    CommentControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field),
          edit_(new LimitedTextEdit(field.limit, host.hint, host.parent)) {
        edit_->setTabChangesFocus(true);
        edit_->setMinimumWidth(controlWidth(*edit_, 0));
        edit_->setMinimumHeight(edit_->fontMetrics().lineSpacing() * 5);
        connect(edit_, &QPlainTextEdit::textChanged, this, [this] {
            userEdited();
            checkSemicolon(edit_->toPlainText());
        });
    }
    [[nodiscard]] QWidget& widget() const override { return *edit_; }
    [[nodiscard]] bool validate() override { return refuseSemicolon(); }

  protected:
    void setShown(const std::string& text) override {
        // Text that somebody has put there himself has the line breaks of his file.
        loneLineFeeds_ =
            text.find('\n') != std::string::npos && text.find('\r') == std::string::npos;
        edit_->setPlainText(toQString(text));
    }
    [[nodiscard]] QString held() const override { return edit_->toPlainText(); }
    [[nodiscard]] std::string heldBytes() const override {
        const auto bytes = toBytes(held());
        return loneLineFeeds_ ? bytes : replaceAll(bytes, "\n", "\r\n");
    }

  private:
    LimitedTextEdit* edit_;
    bool loneLineFeeds_ = false;
};

class ChoiceControl : public FieldControl {
  public:
    ChoiceControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field),
          choices_(choicesOf(field, host.form.edition)),
          box_(new QComboBox(host.parent)) {
        for (const auto& choice : choices_) {
            box_->addItem(toQString(choice.text));
        }
        box_->setMinimumWidth(std::max(controlWidth(*box_, 12), box_->sizeHint().width()));
        box_->setFocusPolicy(Qt::StrongFocus);
        box_->setMaxVisibleItems(20);
        clearOnDelete(*box_);
        box_->installEventFilter(this);
        connect(box_, &QComboBox::currentIndexChanged, this, [this] { userEdited(); });
    }
    [[nodiscard]] QWidget& widget() const override { return *box_; }

  protected:
    void setShown(const std::string& text) override {
        const int index = choiceIndex(choices_, text);
        // A value that is no entry is seen, but not selected.
        box_->setPlaceholderText(index < 0 ? toQString(text) : QString());
        box_->setCurrentIndex(index);
    }
    [[nodiscard]] QString held() const override { return QString::number(box_->currentIndex()); }
    [[nodiscard]] std::string heldBytes() const override {
        const int index = box_->currentIndex();
        return index < 0 ? std::string()
                         : storedChoice(choices_[static_cast<std::size_t>(index)], field().limit);
    }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::Wheel && !box_->hasFocus()) {
            // A user who scrolls the page does not mean the choice under the pointer.
            event->ignore();
            return true;
        }
        return FieldControl::eventFilter(receiver, event);
    }

  private:
    std::vector<Choice> choices_;
    QComboBox* box_;
};

class DateControl : public FieldControl {
  public:
    DateControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field),
          withTime_(field.kind == FieldKind::DateTime),
          button_(look::makeButton("", QStringLiteral("00-00-0000"), QStringLiteral("date"),
                                   host.parent)) {
        if (withTime_) {
            button_->setText(QStringLiteral("00-00-0000-00-00-00"));
        }
        // A button without a date is as wide as one with it.
        button_->setMinimumWidth(button_->sizeHint().width());
        button_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        connect(button_, &QPushButton::clicked, this, &DateControl::prompt);
    }
    [[nodiscard]] QWidget& widget() const override { return *button_; }

  protected:
    void setShown(const std::string& text) override {
        shownText_ = ShownText(text);
        auto shown = shownText_.shown();
        button_->setText(shown.replace(u'&', QStringLiteral("&&")));
        // The name of the button is its label; its text is what it holds.
        button_->setAccessibleDescription(shown);
    }
    [[nodiscard]] QString held() const override { return shownText_.shown(); }
    [[nodiscard]] std::string heldBytes() const override { return shownText_.bytes(); }

  private:
    void prompt() {
        constexpr int kInvalidDate = 447;
        auto& form = host_.form;
        const auto shape = withTime_ ? dateTimeForm(form.edition) : dateForm(form.edition);
        const auto now = form.clock.now();
        TextPrompt ask;
        ask.title = (withTime_ ? "Enter Date & Time (" : "Enter Date (") + std::string(shape) + ")";
        ask.prompt = toBytes(button_->accessibleName()) + ":";
        ask.initial = !value().empty() ? value()
                      : withTime_      ? tmatsDateTime(now, form.edition)
                                       : tmatsDate(now, form.edition);
        while (const auto entered = form.ui.enterText(ask)) {
            if (withTime_ ? isValidDateTime(*entered, form.edition)
                          : isValidDate(*entered, form.edition)) {
                edit(*entered);
                return;
            }
            form.messages.show(&form.ui, kInvalidDate, title::kIllegalValueEntered, kErrorBox,
                               shape);
            ask.initial = *entered;
        }
    }

    bool withTime_;
    QPushButton* button_;
    ShownText shownText_;
};

}  // namespace

std::unique_ptr<FieldControl> makeFieldControl(FieldControlHost& host, const Field& field) {
    std::unique_ptr<FieldControl> control;
    switch (field.kind) {
        case FieldKind::Choice:
            control = std::make_unique<ChoiceControl>(host, field);
            break;
        case FieldKind::Date:
        case FieldKind::DateTime:
            control = std::make_unique<DateControl>(host, field);
            break;
        case FieldKind::Comment:
            control = std::make_unique<CommentControl>(host, field);
            break;
        case FieldKind::Text:
        case FieldKind::Count:
        case FieldKind::Digits:
            control = !field.prompt.empty()    ? makePromptControl(host, field)
                      : !field.choices.empty() ? makeSuggestControl(host, field)
                                               : std::make_unique<TextControl>(host, field);
            break;
    }
    control->widget().setObjectName(toQString(field.code));
    return control;
}

}  // namespace kavu
