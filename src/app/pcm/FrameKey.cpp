#include "app/pcm/FrameKey.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"

#include <QEvent>
#include <QPainter>
#include <QStringList>

namespace kavu {

FrameKey::FrameKey(const FrameDisplay& display, QWidget* parent)
    : QWidget(parent), display_(display) {
    setObjectName(QStringLiteral("frameKey"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    refresh();
}

std::vector<FrameKey::Sample> FrameKey::samples() const {
    std::vector<Sample> samples = {
        {.meaning = QStringLiteral("Sync word"), .kind = PlaceKind::Sync},
        {.meaning = QStringLiteral("ID counter"), .kind = PlaceKind::IdCounter},
        {.meaning = QStringLiteral("Async stream"),
         .kind = PlaceKind::Async,
         .marks = {.async = true}},
        {.meaning = QStringLiteral("Several measurements"),
         .marks = {.several = true},
         .ink = FrameInk::Several},
        {.meaning = QStringLiteral("Same bits taken twice"), .marks = {.overlap = true}},
        {.meaning = QStringLiteral("Marked in the list"), .isMarked = true}};
    if (display_.highlightEu) {
        samples.push_back(
            {.meaning = QStringLiteral("EU definition"), .ink = FrameInk::Conversion});
    }
    if (display_.showAllCells) {
        samples.push_back({.meaning = QStringLiteral("Repetition"), .isWithin = false});
    }
    return samples;
}

void FrameKey::refresh() {
    QStringList meanings;
    for (const auto& sample : samples()) {
        meanings << sample.meaning;
    }
    // The grid refreshes at every scroll; the key hardly ever has changed then.
    if (const auto name = QStringLiteral("Key: ") + meanings.join(QStringLiteral(", "));
        name != accessibleName() || shownColours_ != display_.colours) {
        shownColours_ = display_.colours;
        setAccessibleName(name);
        updateGeometry();
        update();
    }
}

QSize FrameKey::sampleSize() const {
    const int height = fontMetrics().height();
    return {height * 2, height};
}

QSize FrameKey::sizeHint() const {
    const int gap = look::unit(*this);
    int width = 0;
    for (const auto& sample : samples()) {
        width +=
            sampleSize().width() + gap + fontMetrics().horizontalAdvance(sample.meaning) + 2 * gap;
    }
    return {width, sampleSize().height() + gap};
}

QSize FrameKey::minimumSizeHint() const {
    return {1, sizeHint().height()};
}

void FrameKey::changeEvent(QEvent* event) {
    paint_.reset();
    QWidget::changeEvent(event);
}

void FrameKey::paintEvent(QPaintEvent* /*event*/) {
    if (paint_ == nullptr) {
        paint_ = std::make_unique<FrameGridPaint>(*this);
    }
    QPainter painter(this);
    const int gap = look::unit(*this);
    const auto size = sampleSize();
    const int top = height() - size.height();
    int left = 0;
    for (const auto& sample : samples()) {
        const int text = fontMetrics().horizontalAdvance(sample.meaning);
        // Half a meaning would be none.
        if (left + size.width() + gap + text > width()) {
            return;
        }
        const auto letters = sample.ink == FrameInk::Plain ? std::string() : std::string("Ab");
        paint_->paintSample(painter, {{left, top}, size},
                            {.kind = sample.kind,
                             .isWithin = sample.isWithin,
                             .text = {letters, sample.ink},
                             .marks = sample.marks,
                             .isMarked = sample.isMarked},
                            display_.colours);
        left += size.width() + gap;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.setFont(font());
        painter.drawText(QRect(left, top, text + 1, size.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, sample.meaning);
        left += text + 2 * gap;
    }
}

}  // namespace kavu
