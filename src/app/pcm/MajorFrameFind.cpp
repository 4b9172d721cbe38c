#include "app/pcm/MajorFrameFind.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"

#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kavu {

MajorFrameFind::MajorFrameFind(const PcmFormat& format, std::function<FramePlace()> present,
                               QWidget* parent)
    : QWidget(parent), format_(format), present_(std::move(present)) {
    setObjectName(QStringLiteral("findBar"));
    text_ = new QLineEdit(this);
    text_->setObjectName(QStringLiteral("findText"));
    text_->setMaximumWidth(look::charactersWide(*this, 34));
    text_->installEventFilter(this);
    auto* const layout = new QHBoxLayout(this);
    look::arrangePart(*layout, *this);
    layout->addWidget(look::addLabel(QStringLiteral("Find:"), *text_));
    layout->addWidget(text_, 1);
    const auto addButton = [&](const char* name, const QString& text, const QString& icon) {
        auto* const button = look::makeButton(name, text, icon, this);
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::ClickFocus);
        layout->addWidget(button);
        return button;
    };
    connect(addButton("findPrevious", QStringLiteral("Previous"), QStringLiteral("up")),
            &QPushButton::clicked, this, [this] { find(false); });
    connect(addButton("findNext", QStringLiteral("Next"), QStringLiteral("down")),
            &QPushButton::clicked, this, [this] { find(true); });
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("findResult"));
    result_->setTextFormat(Qt::PlainText);
    layout->addWidget(result_);
    layout->addStretch(1);
    text_->setFocusPolicy(Qt::ClickFocus);
    connect(text_, &QLineEdit::textEdited, this, [this] { search(true, true); });
    hide();
}

void MajorFrameFind::begin() {
    show();
    text_->setFocus(Qt::ShortcutFocusReason);
    text_->selectAll();
}

void MajorFrameFind::find(bool forward) {
    if (text_->text().isEmpty()) {
        begin();
    } else {
        search(false, forward);
    }
}

void MajorFrameFind::search(bool includeHere, bool forward) {
    const auto places = findPlaces(format_, toBytes(text_->text()));
    if (const auto hit = nextPlace(places, present_(), includeHere, forward)) {
        const auto& [at, name] = places[*hit];
        result_->setText(QStringLiteral("%1 of %2: %3 at FWP %4, FN %5")
                             .arg(*hit + 1)
                             .arg(places.size())
                             .arg(toQString(name))
                             .arg(at.word)
                             .arg(at.frame));
        emit found(at);
    } else {
        result_->setText(
            text_->text().isEmpty()
                ? QString()
                : QStringLiteral("No measurement or async stream has this text in its name"));
    }
}

bool MajorFrameFind::eventFilter(QObject* watched, QEvent* event) {
    if (watched == text_ && event->type() == QEvent::KeyPress) {
        const auto* const press = static_cast<QKeyEvent*>(event);
        if (press->key() == Qt::Key_Escape) {
            hide();
            emit ended();
            return true;
        }
        if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter) {
            find((press->modifiers() & Qt::ShiftModifier) == 0);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace kavu
