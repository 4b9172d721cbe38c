#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"
#include "app/pcm/FrameGrid.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace kavu {

namespace {

/// Every n-th number is shown, so that the longest one has its room.
int numberStep(int room, int needed) {
    for (const int step : {1, 2, 5, 10, 20, 50, 100, 200}) {
        if (step * room >= needed) {
            return step;
        }
    }
    return 500;
}

}  // namespace

FrameStrip::FrameStrip(FrameArea area, const char* name, FrameDisplay& display, FrameView& view,
                       QWidget* parent)
    : QWidget(parent), area_(area), display_(display), view_(view) {
    setObjectName(QLatin1String(name));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize FrameStrip::sizeHint() const {
    const int line = fontMetrics().height();
    if (area_ == FrameArea::FrameLegend) {
        return {look::charactersWide(*this, 5), line};
    }
    return {line, area_ == FrameArea::Labels ? line + look::unit(*this) : line + 2};
}

void FrameStrip::refresh() {
    update();
}

void FrameStrip::changeEvent(QEvent* event) {
    paint_.reset();
    QWidget::changeEvent(event);
}

int FrameStrip::wordAt(int x) const {
    return view_.firstWord + x / view_.cellWidth();
}

bool FrameStrip::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && area_ == FrameArea::Labels) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const auto text = display_.cellText(area_, wordAt(help->pos().x()), 0).text;
        QToolTip::showText(help->globalPos(), plainToolTip(toQString(text)), this);
        return true;
    }
    return QWidget::event(event);
}

FramePlace FrameStrip::placeAt(const QPoint& point) const {
    const bool down = area_ == FrameArea::FrameLegend;
    const auto selected = view_.selected();
    const FramePlace at{down ? std::max(selected.word, view_.firstWord) : wordAt(point.x()),
                        down ? view_.scrolledRows + 1 + point.y() / view_.cellHeight()
                             : std::max(selected.frame, 1)};
    return at.word < display_.words() && at.frame <= display_.frames() ? at : FramePlace{};
}

void FrameStrip::mousePressEvent(QMouseEvent* event) {
    const auto at = placeAt(event->pos());
    if (at && event->button() == Qt::LeftButton) {
        emit clicked(at);
    }
}

void FrameStrip::contextMenuEvent(QContextMenuEvent* event) {
    if (const auto at = placeAt(event->pos())) {
        emit menuRequested(at, event->globalPos());
    }
}

void FrameStrip::mouseDoubleClickEvent(QMouseEvent* event) {
    if (const auto at = placeAt(event->pos())) {
        emit activated(at);
    }
}

void FrameStrip::paintEvent(QPaintEvent* event) {
    if (paint_ == nullptr) {
        paint_ = std::make_unique<FrameGridPaint>(*this);
    }
    QPainter painter(this);
    const auto dirty = event->rect();
    painter.fillRect(dirty, palette().window());
    if (area_ == FrameArea::Labels) {
        paintLabels(painter, dirty);
    } else {
        paintNumbers(painter, dirty);
    }
}

void FrameStrip::paintLabels(QPainter& painter, const QRect& dirty) {
    const int last = std::min(wordAt(dirty.right()), display_.words() - 1);
    for (int word = wordAt(dirty.left()); word <= last; ++word) {
        const bool selected = view_.holdsWord(word);
        const QRect box((word - view_.firstWord) * view_.cellWidth(), 0, view_.cellWidth(),
                        height());
        paint_->paintBox(painter, box, display_.labelColourOf(word, selected, paint_->face()),
                         display_.cellText(area_, word, 0), selected);
    }
}

void FrameStrip::paintNumbers(QPainter& painter, const QRect& dirty) {
    const bool down = area_ == FrameArea::FrameLegend;
    const int first = down ? view_.scrolledRows + 1 : view_.firstWord;
    const int end = down ? display_.frames() + 1 : display_.words();
    const int room = down ? view_.cellHeight() : view_.cellWidth();
    const auto textOf = [&](int number) {
        return toQString(display_.cellText(area_, number, number).text);
    };
    const int needed =
        down ? fontMetrics().height() : fontMetrics().horizontalAdvance(QString::number(end)) + 4;
    const int step = numberStep(room, needed);
    const int from = first + (down ? dirty.top() : dirty.left()) / room;
    const int to = std::min(end - 1, first + (down ? dirty.bottom() : dirty.right()) / room);
    const auto selected = down ? view_.selected().frame : view_.selected().word;
    // In the middle of its cell, and beyond it where the cell is too small, but never cut off.
    const int extent = std::max(room, needed);
    const auto boxOf = [&](int number) {
        const int begin = std::max(0, (number - first) * room + (room - extent) / 2);
        return down ? QRect(0, begin, width(), extent) : QRect(begin, 0, extent, height());
    };
    const bool isShown = selected >= first && selected < end;
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::WindowText));
    for (int number = std::max(first, from - step); number <= std::min(end - 1, to + step);
         ++number) {
        const bool isHidden = isShown && boxOf(number).intersects(boxOf(selected));
        if ((number % step == 0 || step == 1) && !isHidden) {
            painter.drawText(boxOf(number), Qt::AlignCenter, textOf(number));
        }
    }
    if (isShown) {
        painter.fillRect(boxOf(selected), palette().highlight());
        painter.setPen(palette().color(QPalette::HighlightedText));
        painter.drawText(boxOf(selected), Qt::AlignCenter, textOf(selected));
    }
}

}  // namespace kavu
