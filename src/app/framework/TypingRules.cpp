#include "app/framework/TypingRules.h"

#include "app/framework/QtText.h"

#include <algorithm>

#include <QKeyEvent>
#include <QMimeData>

namespace kavu {

QString limitHint(std::size_t limit) {
    return QStringLiteral("At most %1 characters.").arg(limit);
}

TypingRule::TypingRule(std::size_t limit, bool digitsOnly, TypingHint hint, QObject* parent)
    : QValidator(parent), limit_(limit), digitsOnly_(digitsOnly), hint_(std::move(hint)) {}

std::size_t TypingRule::strangers(const QString& text) const {
    return !digitsOnly_
               ? 0
               : static_cast<std::size_t>(std::count_if(
                     text.begin(), text.end(), [](QChar c) { return c < u'0' || c > u'9'; }));
}

QValidator::State TypingRule::validate(QString& text, int&) const {
    const auto size = toBytes(text).size();
    if (limit_ != 0 && size > limit_ && size > size_) {
        hint_(limitHint(limit_));
        return Invalid;
    }
    if (strangers(text) > strangers_) {
        hint_(QStringLiteral("Digits only."));
        return Invalid;
    }
    return Acceptable;
}

void TypingRule::took(const QString& text) {
    size_ = toBytes(text).size();
    strangers_ = strangers(text);
    hint_({});
}

LimitedTextEdit::LimitedTextEdit(std::size_t limit, TypingHint hint, QWidget* parent)
    : QPlainTextEdit(parent), limit_(limit), hint_(std::move(hint)) {}

bool LimitedTextEdit::takes(const QString& added) {
    const auto sizeOf = [](const QString& text) {
        return toBytes(text).size() + static_cast<std::size_t>(text.count(u'\n'));
    };
    hint_({});
    if (limit_ == 0 || added.isEmpty()) {
        return true;
    }
    QString selected = textCursor().selectedText();
    selected.replace(QChar::ParagraphSeparator, u'\n');
    if (sizeOf(toPlainText()) - sizeOf(selected) + sizeOf(added) <= limit_) {
        return true;
    }
    hint_(limitHint(limit_));
    return false;
}

void LimitedTextEdit::keyPressEvent(QKeyEvent* event) {
    QString added = event->text();
    added.replace(u'\r', u'\n');
    const bool types = !added.isEmpty() && (added[0].isPrint() || added[0] == u'\n') &&
                       (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
    if (!types || takes(added)) {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void LimitedTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (takes(event->commitString())) {
        QPlainTextEdit::inputMethodEvent(event);
    }
}

void LimitedTextEdit::insertFromMimeData(const QMimeData* source) {
    if (takes(source->text())) {
        QPlainTextEdit::insertFromMimeData(source);
    }
}

}  // namespace kavu
