#include "app/pcm/WordFrameMap.h"

#include "app/framework/Look.h"

#include <algorithm>

#include <QPainter>

namespace kavu {

namespace {

constexpr unsigned kOther = 1;
constexpr unsigned kCurrent = 2;
/// Below this width of a cell its outline would cover it.
constexpr int kLeastGrid = 5;

int edge(int index, int count, int length) {
    return static_cast<int>(static_cast<std::int64_t>(index) * length / std::max(1, count));
}

}  // namespace

WordFrameMap::WordFrameMap(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("map"));
    setAccessibleName(QStringLiteral("Map Of The Frame"));
    setMinimumSize(look::charactersWide(*this, 36), look::unit(*this) * 12);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize WordFrameMap::sizeHint() const {
    return {look::charactersWide(*this, 52), look::unit(*this) * 22};
}

void WordFrameMap::mark(const Places& places, unsigned value) {
    for (const auto& [word, frame] : places) {
        if (word >= 1 && word <= words_ && frame >= 1 && frame <= frames_) {
            auto& cell =
                cells_[static_cast<std::size_t>(frame - 1) * static_cast<std::size_t>(words_) +
                       static_cast<std::size_t>(word - 1)];
            cell = std::max(cell, static_cast<unsigned char>(value));
        }
    }
}

void WordFrameMap::setPlaces(int words, int frames, const Places& current, const Places& others) {
    words_ = std::max(0, words);
    frames_ = std::max(0, frames);
    cells_.assign(static_cast<std::size_t>(words_) * static_cast<std::size_t>(frames_), 0);
    mark(others, kOther);
    mark(current, kCurrent);
    covered_ = static_cast<int>(std::count(cells_.begin(), cells_.end(), kCurrent));
    update();
}

QRect WordFrameMap::frameRect() const {
    return rect().adjusted(0, 0, -1, -1);
}

void WordFrameMap::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto area = frameRect();
    painter.fillRect(area, palette().color(QPalette::Base));
    if (words_ == 0 || frames_ == 0) {
        return;
    }
    const auto strong = palette().color(QPalette::Highlight);
    auto weak = strong;
    weak.setAlphaF(0.35F);
    const int width = area.width();
    const int height = area.height();
    // A row of cells of one kind is one rectangle: there are never more of them than ends.
    for (int frame = 0; frame < frames_; ++frame) {
        const auto* const row =
            &cells_[static_cast<std::size_t>(frame) * static_cast<std::size_t>(words_)];
        const int top = edge(frame, frames_, height);
        const int bottom = std::max(top + 1, edge(frame + 1, frames_, height));
        for (int word = 0; word < words_;) {
            int end = word + 1;
            while (end < words_ && row[end] == row[word]) {
                ++end;
            }
            if (row[word] != 0) {
                const int left = edge(word, words_, width);
                const int right = std::max(left + 2, edge(end, words_, width));
                painter.fillRect(
                    QRect(area.left() + left, area.top() + top, right - left, bottom - top),
                    row[word] == kCurrent ? strong : weak);
            }
            word = end;
        }
    }
    painter.setPen(palette().color(QPalette::Mid));
    if (width / words_ >= kLeastGrid) {
        for (int word = 1; word < words_; ++word) {
            const int x = area.left() + edge(word, words_, width);
            painter.drawLine(x, area.top(), x, area.bottom());
        }
    }
    if (height / frames_ >= kLeastGrid) {
        for (int frame = 1; frame < frames_; ++frame) {
            const int y = area.top() + edge(frame, frames_, height);
            painter.drawLine(area.left(), y, area.right(), y);
        }
    }
    painter.drawRect(area);
}

}  // namespace kavu
