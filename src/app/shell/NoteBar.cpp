#include "app/shell/NoteBar.h"

#include "app/framework/Look.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

NoteBar::NoteBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("noteBar"));
    setAccessibleName(QStringLiteral("Notes"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    column_ = new QVBoxLayout(this);
    look::arrangeWindow(*column_, *this);
    hide();
}

void NoteBar::showNote(About about, const QString& text, const std::vector<Action>& actions) {
    removeNote(about);
    auto* const line = new QWidget(this);
    auto* const row = new QHBoxLayout(line);
    look::arrangePart(*row, *this);
    row->addWidget(look::makeSymbol(QStringLiteral("information"), 2 * look::unit(*this), line));
    auto* const label = new QLabel(text, line);
    label->setObjectName(QStringLiteral("noteText"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    row->addWidget(label, 1);
    for (const auto& action : actions) {
        auto* const button = look::makeButton(action.objectName, action.text, {}, line);
        connect(button, &QPushButton::clicked, this, [this, about, run = action.run] {
            removeNote(about);
            if (run) {
                run();
            }
        });
        row->addWidget(button);
    }
    column_->addWidget(line);
    notes_.push_back({about, line, label});
    show();
}

void NoteBar::removeNote(About about) {
    const auto found = std::ranges::find(notes_, about, &Note::about);
    if (found == notes_.end()) {
        return;
    }
    // The note may be taken away by one of its own buttons; nothing finds the others any more.
    auto* const row = found->row;
    notes_.erase(found);
    column_->removeWidget(row);
    row->hide();
    row->setParent(nullptr);
    row->deleteLater();
    setVisible(!notes_.empty());
}

bool NoteBar::has(About about) const {
    return std::ranges::find(notes_, about, &Note::about) != notes_.end();
}

QString NoteBar::text() const {
    QStringList texts;
    for (const auto& note : notes_) {
        texts << note.text->text();
    }
    return texts.join(u'\n');
}

}  // namespace kavu
