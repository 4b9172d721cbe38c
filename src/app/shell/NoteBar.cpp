#include "app/shell/NoteBar.h"

#include "app/framework/Look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace kavu {

NoteBar::NoteBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("noteBar"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    auto* const row = new QHBoxLayout(this);
    look::arrangeWindow(*row, *this);
    auto* const symbol = new QLabel(this);
    const int size = 2 * look::unit(*this);
    symbol->setPixmap(look::icon(QStringLiteral("information")).pixmap(size, size));
    row->addWidget(symbol);
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("noteText"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    row->addWidget(text_, 1);
    buttons_ = new QHBoxLayout;
    row->addLayout(buttons_);
    hide();
}

void NoteBar::showNote(const QString& text, const std::vector<Action>& actions) {
    while (auto* const item = buttons_->takeAt(0)) {
        // The note may be replaced by one of its own buttons.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    text_->setText(text);
    for (const auto& action : actions) {
        auto* const button = look::makeButton(action.objectName, action.text, {}, this);
        connect(button, &QPushButton::clicked, this, [this, run = action.run] {
            hide();
            if (run) {
                run();
            }
        });
        buttons_->addWidget(button);
    }
    show();
}

QString NoteBar::text() const {
    return text_->text();
}

}  // namespace kavu
