// The controls of fields that are entered as a whole: a button that asks for the value, and a
// list with free entry.
#include "app/framework/FieldControl.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/TypingRules.h"
#include "core/talk/UserInterface.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>

namespace kavu {

namespace {

constexpr int kCharactersWide = 14;
constexpr std::size_t kShortText = 10;

class PromptControl : public FieldControl {
  public:
    PromptControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field),
          button_(look::makeButton("", {}, QStringLiteral("edit"), host.parent)) {
        button_->setMinimumWidth(look::charactersWide(*button_, kCharactersWide));
        button_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        connect(button_, &QPushButton::clicked, this, &PromptControl::prompt);
    }
    [[nodiscard]] QWidget& widget() const override { return *button_; }

  protected:
    void setShown(const std::string& text) override {
        shownText_ = ShownText(text);
        auto shown = shownText_.shown();
        button_->setText(shown.replace(u'&', QStringLiteral("&&")));
        // The name of the button is its label; its text is what it holds.
        button_->setAccessibleDescription(shownText_.shown());
    }
    [[nodiscard]] QString held() const override { return shownText_.shown(); }
    [[nodiscard]] std::string heldBytes() const override { return shownText_.bytes(); }

  private:
    void prompt() {
        if (field().kind == FieldKind::Digits) {
            promptNumber();
            return;
        }
        TextPrompt ask;
        ask.title = std::string(field().prompt);
        ask.prompt = std::string(field().label);
        ask.initial = value();
        ask.limit = field().limit;
        if (const auto entered = host_.form.ui.enterText(ask)) {
            edit(*entered);
        }
    }
    /// Who checks the edit knows the range; here it is only the digits that there is room for.
    void promptNumber() {
        constexpr std::size_t kMostDigits = 9;
        long most = 1;
        for (std::size_t i = 0; i < std::min(field().limit, kMostDigits); ++i) {
            most *= 10;
        }
        IntegerPrompt ask;
        ask.title = std::string(field().prompt);
        ask.prompt = std::string(field().label);
        ask.initial = parseInteger(value()).value_or(0);
        ask.least = 0;
        ask.most = most - 1;
        if (const auto entered = host_.form.ui.enterInteger(ask)) {
            edit(std::to_string(*entered));
        }
    }

    QPushButton* button_;
    ShownText shownText_;
};

class SuggestControl : public FieldControl {
  public:
    SuggestControl(FieldControlHost& host, const Field& field)
        : FieldControl(host, field), box_(new QComboBox(host.parent)) {
        box_->setEditable(true);
        box_->setInsertPolicy(QComboBox::NoInsert);
        box_->setCompleter(nullptr);
        for (const auto& choice : choicesOf(field, host.form.edition)) {
            box_->addItem(toQString(choice.text));
        }
        const bool isShort = field.limit != 0 && field.limit <= kShortText;
        const int width =
            look::charactersWide(*box_, isShort ? kCharactersWide : 3 * kCharactersWide);
        box_->setMinimumWidth(width);
        if (isShort) {
            box_->setMaximumWidth(width);
        }
        box_->setMaxVisibleItems(20);
        box_->installEventFilter(this);
        rule_ = new TypingRule(field.limit, false, host.hint, box_->lineEdit());
        box_->lineEdit()->setValidator(rule_);
        connect(box_->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
            rule_->took(text);
            checkSemicolon(text);
        });
        connect(box_->lineEdit(), &QLineEdit::editingFinished, this, &SuggestControl::take);
        connect(box_, &QComboBox::activated, this, &SuggestControl::take);
    }
    [[nodiscard]] QWidget& widget() const override { return *box_; }
    [[nodiscard]] bool validate() override {
        take();
        return refuseSemicolon();
    }

  protected:
    void setShown(const std::string& text) override {
        const auto shown = toQString(text);
        rule_->took(shown);
        box_->setCurrentIndex(box_->findText(shown));
        box_->setEditText(shown);
        box_->lineEdit()->setCursorPosition(0);
        taken_ = shown;
    }
    [[nodiscard]] QString held() const override { return box_->currentText(); }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::Wheel && !box_->hasFocus()) {
            event->ignore();
            return true;
        }
        return FieldControl::eventFilter(receiver, event);
    }

  private:
    /// A text that is half typed is no value yet: an edit is reported when it is complete.
    void take() {
        if (held() != taken_) {
            taken_ = held();
            userEdited();
        }
    }

    QComboBox* box_;
    TypingRule* rule_ = nullptr;
    QString taken_;
};

}  // namespace

std::unique_ptr<FieldControl> makePromptControl(FieldControlHost& host, const Field& field) {
    return std::make_unique<PromptControl>(host, field);
}

std::unique_ptr<FieldControl> makeSuggestControl(FieldControlHost& host, const Field& field) {
    return std::make_unique<SuggestControl>(host, field);
}

}  // namespace kavu
