#include "app/conversion/QtSurface.h"

#include "app/framework/QtText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QFontMetricsF>
#include <QPen>
#include <QPolygonF>

namespace kavu {

namespace {

/// Far outside of every device, and near enough for the arithmetic of painters.
constexpr double kFarthest = 1e6;
/// A path of more points is thinned out: more than these cannot be distinguished on a device.
constexpr std::size_t kLongPath = 4096;
/// Columns of a pixel in which the points of a long path are distinguished.
constexpr double kColumnsPerPixel = 4;

double bounded(double value) {
    return std::isnan(value) ? 0.0 : std::clamp(value, -kFarthest, kFarthest);
}

QPointF toPoint(DrawingPoint p) {
    return {bounded(p.x), bounded(p.y)};
}

QRectF toRect(const DrawingRect& rect) {
    return {toPoint({rect.left, rect.top}), toPoint({rect.right, rect.bottom})};
}

QColor toColour(DrawingColour colour) {
    return QColor::fromRgb(static_cast<QRgb>(colour & 0xFFFFFF));
}

Qt::PenStyle styleOf(LineStyle style) {
    switch (style) {
        case LineStyle::Solid:
            return Qt::SolidLine;
        case LineStyle::Dash:
            return Qt::DashLine;
        case LineStyle::Dot:
            return Qt::DotLine;
        case LineStyle::DashDot:
            return Qt::DashDotLine;
        case LineStyle::DashDotDot:
            return Qt::DashDotDotLine;
        case LineStyle::None:
            break;
    }
    return Qt::NoPen;
}

/// The points of a path that look the same: of those in one column the first, the lowest, the
/// highest and the last.
QPolygonF thinned(const std::vector<QPointF>& path) {
    QPolygonF seen;
    const auto columnOf = [](const QPointF& p) { return std::floor(p.x() * kColumnsPerPixel); };
    for (std::size_t i = 0; i < path.size();) {
        std::size_t end = i;
        std::size_t low = i;
        std::size_t high = i;
        for (; end < path.size() && columnOf(path[end]) == columnOf(path[i]); ++end) {
            low = path[end].y() > path[low].y() ? end : low;
            high = path[end].y() < path[high].y() ? end : high;
        }
        std::size_t before = std::numeric_limits<std::size_t>::max();
        for (const auto at : {i, std::min(low, high), std::max(low, high), end - 1}) {
            if (at != before) {
                seen.append(path[at]);
            }
            before = at;
        }
        i = end;
    }
    return seen;
}

bool isUpright(const QPointF& a, const QPointF& b) {
    return a.x() == b.x() || a.y() == b.y();
}

}  // namespace

QtSurface::QtSurface(QPainter& painter, const QRectF& area, const QFont& font)
    : painter_(painter), area_(area), font_(font) {}

QtSurface::~QtSurface() {
    endPath();
}

DrawingRect QtSurface::area() const {
    return {area_.left(), area_.top(), area_.right(), area_.bottom()};
}

bool QtSurface::setPen(const DrawingPen& pen) {
    endPath();
    QPen set(toColour(pen.colour), std::max(pen.width, 1), styleOf(pen.style));
    set.setCapStyle(Qt::FlatCap);
    set.setJoinStyle(Qt::MiterJoin);
    painter_.setPen(set);
    return true;
}

void QtSurface::setHollowBrush() {
    endPath();
    painter_.setBrush(Qt::NoBrush);
}

void QtSurface::setSolidBrush(DrawingColour colour) {
    endPath();
    painter_.setBrush(toColour(colour));
}

void QtSurface::line(DrawingPoint from, DrawingPoint to) {
    // A broken line keeps its rhythm only over a path that is painted as a whole.
    const auto start = toPoint(from);
    if (path_.empty() || path_.back() != start) {
        endPath();
        path_.push_back(start);
    }
    path_.push_back(toPoint(to));
}

void QtSurface::endPath() {
    if (path_.size() == 2) {
        painter_.setRenderHint(QPainter::Antialiasing, !isUpright(path_[0], path_[1]));
        painter_.drawLine(path_[0], path_[1]);
    } else if (path_.size() > 2) {
        painter_.setRenderHint(QPainter::Antialiasing);
        const auto shown = path_.size() > kLongPath
                               ? thinned(path_)
                               : QPolygonF(QList<QPointF>(path_.begin(), path_.end()));
        const auto pen = painter_.pen();
        auto round = pen;
        round.setJoinStyle(Qt::BevelJoin);
        painter_.setPen(round);
        painter_.drawPolyline(shown);
        painter_.setPen(pen);
    }
    path_.clear();
}

void QtSurface::rectangle(const DrawingRect& rect) {
    endPath();
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.drawRect(toRect(rect));
}

void QtSurface::ellipse(const DrawingRect& rect) {
    endPath();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.drawEllipse(toRect(rect));
}

void QtSurface::polygon(std::span<const DrawingPoint> points) {
    endPath();
    QPolygonF polygon;
    for (const auto& point : points) {
        polygon.append(toPoint(point));
    }
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.drawPolygon(polygon);
}

QFont QtSurface::fontOf(const DrawingFont& font) const {
    QFont made = font_;
    if (!font.family.empty()) {
        made.setFamily(toQString(font.family));
        made.setStyleHint(QFont::SansSerif);
    }
    if (font.height > 0) {
        made.setPixelSize(std::max(1, static_cast<int>(std::lround(bounded(font.height)))));
    }
    made.setBold(font.bold || made.bold());
    return made;
}

DrawingSize QtSurface::textSize(std::string_view text, const DrawingFont& font) const {
    const QFontMetricsF metrics(fontOf(font));
    return {metrics.horizontalAdvance(toQString(text)), metrics.height()};
}

void QtSurface::text(DrawingPoint at, std::string_view text, const DrawingFont& font) {
    endPath();
    const auto shown = fontOf(font);
    painter_.save();
    painter_.setRenderHint(QPainter::TextAntialiasing);
    painter_.setPen(Qt::black);
    painter_.setFont(shown);
    painter_.translate(toPoint(at));
    painter_.rotate(-font.angle);
    painter_.drawText(QPointF(0, QFontMetricsF(shown).ascent()), toQString(text));
    painter_.restore();
}

void QtSurface::clip(const DrawingRect& rect) {
    endPath();
    painter_.setClipRect(toRect(rect));
}

void QtSurface::releaseClip() {
    endPath();
    painter_.setClipping(false);
}

}  // namespace kavu
