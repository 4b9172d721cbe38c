#include "app/conversion/PlotView.h"

#include "app/conversion/QtSurface.h"
#include "app/framework/Look.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

namespace kavu {

PlotView::PlotView(const char* name, const QString& spokenName, Draw draw, QWidget* parent)
    : QWidget(parent), draw_(std::move(draw)) {
    setObjectName(QLatin1String(name));
    setAccessibleName(spokenName);
    setMouseTracking(true);
    setMinimumSize(look::charactersWide(*this, 40), look::unit(*this) * 14);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize PlotView::sizeHint() const {
    return {look::charactersWide(*this, 80), look::unit(*this) * 40};
}

void PlotView::redraw() {
    picture_ = QPixmap();
    update();
}

void PlotView::paintEvent(QPaintEvent* /*event*/) {
    const auto pixels = size() * devicePixelRatio();
    if (picture_.isNull() || picture_.size() != pixels) {
        picture_ = QPixmap(pixels);
        picture_.setDevicePixelRatio(devicePixelRatio());
        picture_.fill(Qt::white);
        QPainter painter(&picture_);
        // The outline of the area has its width within the widget.
        QtSurface surface(painter, QRectF(QPointF(0, 0), QSizeF(width() - 1, height() - 1)),
                          font());
        draw_(surface);
    }
    QPainter(this).drawPixmap(0, 0, picture_);
}

void PlotView::mouseMoveEvent(QMouseEvent* event) {
    emit pointedAt(event->position());
}

void PlotView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit clickedAt(event->position());
    }
}

void PlotView::leaveEvent(QEvent* /*event*/) {
    emit pointerLeft();
}

void PlotView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        redraw();
    }
    QWidget::changeEvent(event);
}

}  // namespace kavu
