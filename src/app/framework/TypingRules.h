// Limits that hold while a person types. Nothing that a file brought along is cut: a text
// that is too long may be shown and made shorter, it only cannot be made longer.
#pragma once

#include <cstddef>
#include <functional>

#include <QPlainTextEdit>
#include <QString>
#include <QValidator>

namespace kavu {

/// Receives why a key did nothing; an empty text when the last reason is over.
using TypingHint = std::function<void(const QString&)>;

class TypingRule : public QValidator {
    Q_OBJECT
  public:
    /// `limit` in bytes as stored, 0 is no limit.
    TypingRule(std::size_t limit, bool digitsOnly, TypingHint hint, QObject* parent);

    State validate(QString& text, int& position) const override;
    /// The text that the control holds now.
    void took(const QString& text);

  private:
    [[nodiscard]] std::size_t strangers(const QString& text) const;

    std::size_t limit_;
    bool digitsOnly_;
    TypingHint hint_;
    std::size_t size_ = 0;
    std::size_t strangers_ = 0;
};

class LimitedTextEdit : public QPlainTextEdit {
    Q_OBJECT
  public:
    /// `limit` in bytes as stored, where a line break takes two; 0 is no limit.
    LimitedTextEdit(std::size_t limit, TypingHint hint, QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    /// True if there is room for more text in place of the selection; gives a hint if not.
    bool takes(const QString& added);

    std::size_t limit_;
    TypingHint hint_;
};

[[nodiscard]] QString limitHint(std::size_t limit);

}  // namespace kavu
