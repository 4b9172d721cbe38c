#include "app/pcm/FrameGrid.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

namespace kavu {

namespace {

constexpr int kNotch = 120;  ///< of a wheel

std::optional<FrameMove> moveOf(const QKeyEvent& event) {
    const bool control = (event.modifiers() & Qt::ControlModifier) != 0;
    const bool alt = (event.modifiers() & Qt::AltModifier) != 0;
    switch (event.key()) {
        case Qt::Key_Left:
            return control ? FrameMove::JumpLeft : FrameMove::Left;
        case Qt::Key_Right:
            return control ? FrameMove::JumpRight : FrameMove::Right;
        case Qt::Key_Up:
            return control ? FrameMove::JumpUp : FrameMove::Up;
        case Qt::Key_Down:
            return control ? FrameMove::JumpDown : FrameMove::Down;
        case Qt::Key_Home:
            return control ? FrameMove::FirstCell : FrameMove::RowBegin;
        case Qt::Key_End:
            return control ? FrameMove::LastCell : FrameMove::RowEnd;
        case Qt::Key_PageUp:
            return control || alt ? FrameMove::PageLeft : FrameMove::PageUp;
        case Qt::Key_PageDown:
            return control || alt ? FrameMove::PageRight : FrameMove::PageDown;
        default:
            return std::nullopt;
    }
}

}  // namespace

FrameGrid::FrameGrid(FrameDisplay& display, FrameView& view, QWidget* parent)
    : QWidget(parent), display_(display), view_(view) {
    setObjectName(QStringLiteral("pcm_display_window"));
    setAccessibleName(QStringLiteral("Major frame"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize FrameGrid::sizeHint() const {
    return {look::charactersWide(*this, 100), look::unit(*this) * 50};
}

int FrameGrid::columnsInView() const {
    const int room = (width() + view_.cellWidth() - 1) / view_.cellWidth();
    return std::clamp(display_.words() - view_.firstWord, 0, room);
}

int FrameGrid::rowsInView() const {
    const int room = (height() + view_.cellHeight() - 1) / view_.cellHeight();
    return std::clamp(display_.frames() - view_.scrolledRows, 0, room);
}

QRect FrameGrid::cellRect(FramePlace at) const {
    return {(at.word - view_.firstWord) * view_.cellWidth(),
            (at.frame - 1 - view_.scrolledRows) * view_.cellHeight(), view_.cellWidth(),
            view_.cellHeight()};
}

bool FrameGrid::select(FramePlace at, bool extend) {
    const auto before = view_.block();
    if (!view_.select(at, extend)) {
        return false;
    }
    const auto after = view_.block();
    if (before.first == before.last && after.first == after.last) {
        update(cellRect(before.last));
        update(cellRect(after.last));
    } else {
        update();
    }
    emit selectionMoved();
    return true;
}

void FrameGrid::refresh() {
    update();
    emit viewRefreshed();
}

// --- events -----------------------------------------------------------------------------------

void FrameGrid::paintEvent(QPaintEvent* event) {
    if (paint_ == nullptr) {
        paint_ = std::make_unique<FrameGridPaint>(*this);
    }
    QPainter painter(this);
    for (const auto& dirty : event->region()) {
        painter.setClipRect(dirty);
        paint_->paintGrid(painter, dirty, display_, view_, hasFocus());
    }
}

void FrameGrid::changeEvent(QEvent* event) {
    paint_.reset();
    QWidget::changeEvent(event);
}

void FrameGrid::focusInEvent(QFocusEvent* event) {
    update(cellRect(view_.selected()));
    QWidget::focusInEvent(event);
    emit selectionMoved();
}

void FrameGrid::focusOutEvent(QFocusEvent* event) {
    update(cellRect(view_.selected()));
    QWidget::focusOutEvent(event);
}

void FrameGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit viewRefreshed();
}

bool FrameGrid::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        showTip(help->pos(), help->globalPos());
        return true;
    }
    return QWidget::event(event);
}

void FrameGrid::showTip(const QPoint& point, const QPoint& globalPoint) {
    const auto at = view_.cellAtPoint(point.x(), point.y());
    const auto text = display_.tipText(at);
    if (text.empty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(globalPoint, plainToolTip(toQString(text)), this, cellRect(at));
    }
}

void FrameGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit editRequested();
        return;
    }
    if (const auto move = moveOf(*event)) {
        emit stepRequested(*move, (event->modifiers() & Qt::ShiftModifier) != 0);
        return;
    }
    QWidget::keyPressEvent(event);
}

/// True if there is a cell that can be selected.
bool FrameGrid::selectUnder(const QPoint& point, bool extend) {
    const auto at = view_.cellAtPoint(point.x(), point.y());
    if (at == view_.selected() && (extend || view_.block().first == view_.block().last)) {
        return static_cast<bool>(at);
    }
    return at && select(at, extend);
}

void FrameGrid::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton) {
        dragging_ = selectUnder(event->pos(), (event->modifiers() & Qt::ShiftModifier) != 0);
    } else if (event->button() == Qt::RightButton) {
        const auto at = view_.cellAtPoint(event->pos().x(), event->pos().y());
        if (!view_.block().holds(at)) {
            selectUnder(event->pos(), false);
        }
    }
}

/// The place of the frame that is next to a point, which may be outside of the grid.
FramePlace FrameGrid::nearestPlace(const QPoint& point) const {
    const auto index = [](int position, int size) { return position >= 0 ? position / size : -1; };
    const int word = view_.firstWord + index(std::min(point.x(), width()), view_.cellWidth());
    const int row = view_.scrolledRows + index(std::min(point.y(), height()), view_.cellHeight());
    return {std::clamp(word, 0, std::max(0, display_.words() - 1)),
            std::clamp(row + 1, 1, std::max(1, display_.frames()))};
}

/// A block from where the button was pressed; beyond the edge the grid scrolls.
void FrameGrid::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0 || !dragging_) {
        return;
    }
    if (rect().contains(event->pos())) {
        selectUnder(event->pos(), true);
        return;
    }
    auto at = nearestPlace(event->pos());
    at.frame = std::clamp(at.frame, 1, std::max(1, display_.depth(at.word)));
    emit moveRequested(at, true);
}

void FrameGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto at = view_.cellAtPoint(event->pos().x(), event->pos().y());
    if (event->button() == Qt::LeftButton && display_.isWithin(at)) {
        select(at);
        emit editRequested();
    }
}

void FrameGrid::wheelEvent(QWheelEvent* event) {
    const auto delta = event->angleDelta();
    const bool sideways = delta.y() == 0 || (event->modifiers() & Qt::ShiftModifier) != 0;
    wheel_ += delta.y() != 0 ? delta.y() : delta.x();
    const int turns = std::exchange(wheel_, wheel_ % kNotch) / -kNotch;
    event->accept();
    if (turns == 0) {
        return;
    }
    // A turn toward the user counts up; with the Ctrl key, as everywhere, it makes smaller.
    if ((event->buttons() & Qt::MiddleButton) != 0) {
        emit zoomRequested(turns);
    } else if ((event->modifiers() & Qt::ControlModifier) != 0) {
        emit zoomRequested(-turns * std::max(1, view_.cellWidth() / 10));
    } else {
        emit scrollRequested(sideways ? turns : 0, sideways ? 0 : turns);
    }
}

void FrameGrid::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    emit menuRequested(byKey && view_.selected() ? mapToGlobal(cellRect(view_.selected()).center())
                                                 : event->globalPos());
}

}  // namespace kavu
