#include "app/framework/ProgressWindow.h"

#include "app/framework/Look.h"

#include <algorithm>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

namespace kavu {

namespace {

/// What a person, or a program on a person's behalf, sends to a window.
bool isInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::FileOpen:
            return true;
        default:
            return false;
    }
}

bool asksToEnd(QEvent::Type type) {
    return type == QEvent::Close || type == QEvent::Quit;
}

}  // namespace

ProgressWindow::ProgressWindow(bool withCancel, bool withBar, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      withCancel_(withCancel) {
    setObjectName(QStringLiteral("ProgressWindow"));
    setWindowTitle(QStringLiteral("Operation In Progress"));
    setWindowModality(Qt::ApplicationModal);
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    heading_ = new QLabel(withCancel ? QStringLiteral("Press <ESC> Or Cancel To Abort")
                                     : QStringLiteral("Please Stand By"),
                          this);
    heading_->setObjectName(QStringLiteral("heading"));
    heading_->setTextFormat(Qt::PlainText);
    label_ = look::makeNote({}, this);
    label_->setObjectName(QStringLiteral("text"));
    label_->setMinimumWidth(look::charactersWide(*this, 52));
    // Room for two lines, so that the window keeps its size while its text changes.
    label_->setMinimumHeight(label_->fontMetrics().lineSpacing() * 2);
    label_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(heading_);
    layout->addWidget(label_);
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("bar"));
    bar_->setAccessibleName(QStringLiteral("Progress"));
    bar_->setVisible(withBar);
    bar_->setRange(0, 100);
    layout->addWidget(bar_);
    layout->addStretch();
    cancel_ = look::makeButton("cancel", QStringLiteral("Cancel"), {}, this);
    cancel_->setVisible(withCancel);
    cancel_->setDefault(true);
    connect(cancel_, &QPushButton::clicked, this, &ProgressWindow::askToCancel);
    layout->addWidget(cancel_, 0, Qt::AlignRight);
    sinceOpened_.start();
    sincePump_.start();
}

ProgressWindow::~ProgressWindow() = default;

void ProgressWindow::setText(const QString& text) {
    text_ = text;
    stale_ = true;
}

void ProgressWindow::setPercent(double percent) {
    percent_ = percent;
    stale_ = true;
}

void ProgressWindow::showIfLate() {
    if (!isVisible() && sinceOpened_.elapsed() >= kShowAfterMilliseconds) {
        show();
        activateWindow();
        cancel_->setFocus();
    }
}

void ProgressWindow::showContents() {
    if (!stale_) {
        return;
    }
    stale_ = false;
    label_->setText(text_);
    bar_->setRange(0, percent_ < 0 ? 0 : 100);
    bar_->setValue(static_cast<int>(std::clamp(percent_, 0.0, 100.0)));
}

void ProgressWindow::pump(bool atOnce) {
    if (pumping_ || (!atOnce && sincePump_.elapsed() < kPumpMilliseconds)) {
        return;
    }
    pumping_ = true;
    showIfLate();
    if (isVisible()) {
        showContents();
    }
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    QCoreApplication::instance()->removeEventFilter(this);
    pumping_ = false;
    sincePump_.start();
}

bool ProgressWindow::eventFilter(QObject* receiver, QEvent* event) {
    return isDropped(receiver, event) || QDialog::eventFilter(receiver, event);
}

bool ProgressWindow::isDropped(QObject* receiver, QEvent* event) {
    if (asksToEnd(event->type())) {
        return true;
    }
    if (!isInput(event->type()) || receiver == windowHandle()) {
        return false;
    }
    const auto* widget = qobject_cast<QWidget*>(receiver);
    if (widget != nullptr && widget->window() == this) {
        return false;
    }
    // Before this window is up, Esc is pressed in the window that is.
    if (event->type() == QEvent::KeyPress && !isVisible() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        askToCancel();
    }
    const auto* owner = parentWidget() == nullptr ? nullptr : parentWidget()->window();
    return owner == nullptr || !owner->isMinimized();
}

bool ProgressWindow::cancelPending() const {
    const auto* focus = QGuiApplication::focusWindow();
    return pending_ && (!isVisible() || focus == nullptr || focus == windowHandle());
}

void ProgressWindow::askToCancel() {
    pending_ = pending_ || withCancel_;
}

void ProgressWindow::reject() {
    // Esc: the operation decides when to look, and closes the window itself.
    askToCancel();
}

void ProgressWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void ProgressWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        event->key() == Qt::Key_Escape) {
        askToCancel();
        return;
    }
    QDialog::keyPressEvent(event);
}

}  // namespace kavu
