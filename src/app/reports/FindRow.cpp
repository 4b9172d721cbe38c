#include "app/reports/FindRow.h"

#include "app/framework/Look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

namespace kavu {

FindRow::FindRow(Find find, QWidget& window) : QWidget(&window), find_(std::move(find)) {
    row_ = new QHBoxLayout(this);
    look::arrangePart(*row_, *this);
    text_ = new QLineEdit(this);
    text_->setObjectName(QStringLiteral("find"));
    text_->setClearButtonEnabled(true);
    row_->addWidget(look::addKeyLabel(QStringLiteral("&Find:"), *text_));
    row_->addWidget(text_, 1);
    const auto add = [this](const char* name, const QString& text, bool forward) {
        auto* const button = look::makeButton(name, text, {}, this);
        row_->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, forward] { this->find(forward); });
    };
    add("findNext", QStringLiteral("&Next"), true);
    add("findPrevious", QStringLiteral("Pre&vious"), false);
    found_ = new QLabel(this);
    found_->setObjectName(QStringLiteral("found"));
    row_->addWidget(found_);
    connect(text_, &QLineEdit::returnPressed, this, [this] { this->find(true); });
    connect(text_, &QLineEdit::textChanged, found_, &QLabel::clear);
    const auto key = [&](const QKeySequence& keys, auto run) {
        connect(new QShortcut(keys, &window), &QShortcut::activated, this, run);
    };
    key(QKeySequence::Find, [this] {
        text_->setFocus(Qt::ShortcutFocusReason);
        text_->selectAll();
    });
    key(QKeySequence(Qt::Key_F3), [this] { this->find(true); });
    key(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { this->find(false); });
}

void FindRow::addWidget(QWidget* widget) {
    row_->addWidget(widget);
}

void FindRow::find(bool forward) {
    const auto text = text_->text();
    found_->setText(text.isEmpty() || find_(text, forward) ? QString()
                                                           : QStringLiteral("Not found"));
}

}  // namespace kavu
