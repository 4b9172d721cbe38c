#include "app/pcm/FrameGridAreas.h"

#include "app/framework/Look.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>

namespace kavu {

namespace {

QLabel* makeHeading(const char* name, const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QScrollBar* makeBar(Qt::Orientation orientation, const char* name, const QString& spoken,
                    QWidget* parent) {
    auto* const bar = new QScrollBar(orientation, parent);
    bar->setObjectName(QLatin1String(name));
    bar->setAccessibleName(spoken);
    return bar;
}

}  // namespace

FrameGridAreas::FrameGridAreas(const PcmFormat& format, QWidget* parent)
    : QWidget(parent), display_(format), view_(display_) {
    makeAreas();
    connectAreas();
    streamChanged();
}

void FrameGridAreas::makeAreas() {
    grid_ = new FrameGrid(display_, view_, this);
    labels_ = new FrameStrip(FrameArea::Labels, "sub_frame_label", display_, view_, this);
    words_ = new FrameStrip(FrameArea::WordLegend, "minor_frame_legend", display_, view_, this);
    frames_ = new FrameStrip(FrameArea::FrameLegend, "sub_frame_legend", display_, view_, this);
    across_ = makeBar(Qt::Horizontal, "wordScroll", QStringLiteral("Frame word positions"), this);
    down_ = makeBar(Qt::Vertical, "frameScroll", QStringLiteral("Frame numbers"), this);
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeading("labelHeading", QStringLiteral("Subframe Definitions"), this), 0,
                      2);
    layout->addWidget(labels_, 1, 2);
    layout->addWidget(makeHeading("wordHeading", QStringLiteral("FRAME WORD POSITION"), this), 2,
                      2);
    layout->addWidget(words_, 3, 2);
    // So many lines are higher than a low window: they do not keep it from getting low.
    auto* const heading =
        makeHeading("frameHeading", QStringLiteral("F\nR\nA\nM\nE\n\nN\nU\nM\nB\nE\nR"), this);
    heading->setMinimumHeight(1);
    heading->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    heading->setContentsMargins(look::unit(*this) / 2, 0, look::unit(*this) / 2, 0);
    layout->addWidget(heading, 4, 0);
    layout->addWidget(frames_, 4, 1);
    layout->addWidget(grid_, 4, 2);
    layout->addWidget(down_, 4, 3);
    layout->addWidget(across_, 5, 2);
    layout->setRowStretch(4, 1);
    layout->setColumnStretch(2, 1);
    for (auto* const strip : {labels_, words_}) {
        strip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    frames_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void FrameGridAreas::connectAreas() {
    connect(across_, &QScrollBar::valueChanged, this, &FrameGridAreas::takeScroll);
    connect(down_, &QScrollBar::valueChanged, this, &FrameGridAreas::takeScroll);
    connect(grid_, &FrameGrid::selectionMoved, this, [this] {
        refreshStrips();
        emit selectionMoved();
    });
    connect(grid_, &FrameGrid::moveRequested, this,
            [this](FramePlace at, bool extend) { goToCell(at.word, at.frame, extend); });
    connect(grid_, &FrameGrid::stepRequested, this, &FrameGridAreas::moveBy);
    connect(grid_, &FrameGrid::zoomRequested, this,
            [this](int pixels) { setCellWidth(view_.cellWidth() + pixels); });
    connect(grid_, &FrameGrid::scrollRequested, this, [this](int words, int frames) {
        across_->setValue(across_->value() + words);
        down_->setValue(down_->value() + frames);
    });
    for (const auto* const strip : {labels_, words_, frames_}) {
        connect(strip, &FrameStrip::clicked, this,
                [this](FramePlace at) { goToCell(at.word, at.frame); });
    }
    for (const auto* const strip : {labels_, words_}) {
        connect(strip, &FrameStrip::menuRequested, this,
                [this](FramePlace at, const QPoint& point) {
                    if (!view_.holdsWord(at.word)) {
                        goToCell(at.word, at.frame);
                    }
                    emit wordMenuRequested(at.word, point);
                });
    }
    connect(frames_, &FrameStrip::menuRequested, this, [this](FramePlace at, const QPoint& point) {
        emit frameMenuRequested(at.frame, point);
    });
    connect(labels_, &FrameStrip::activated, this,
            [this](FramePlace at) { emit labelActivated(at.word); });
}

/// Brings the bars to the view.
void FrameGridAreas::showScroll() {
    showing_ = true;
    across_->setRange(0, display_.words());
    down_->setRange(0, display_.frames());
    across_->setPageStep(grid_->fullColumns());
    down_->setPageStep(grid_->fullRows());
    across_->setValue(view_.firstWord);
    down_->setValue(view_.scrolledRows);
    showing_ = false;
}

void FrameGridAreas::takeScroll() {
    if (!showing_) {
        view_.firstWord = across_->value();
        view_.scrolledRows = down_->value();
        refresh();
    }
}

void FrameGridAreas::refreshStrips() {
    labels_->refresh();
    words_->refresh();
    frames_->refresh();
}

void FrameGridAreas::refresh() {
    grid_->refresh();
    refreshStrips();
}

void FrameGridAreas::streamChanged() {
    view_.cut = {};  // its cells may be others now
    view_.firstWord = std::clamp(view_.firstWord, 0, std::max(0, display_.words()));
    view_.scrolledRows = std::clamp(view_.scrolledRows, 0, std::max(0, display_.frames()));
    if (const auto selected = view_.selected(); selected && !display_.isWithin(selected)) {
        const auto other = view_.selectable(selected);
        if (!view_.select(other)) {
            view_.clearSelection();
        }
    }
    showScroll();
    refresh();
    emit selectionMoved();
}

bool FrameGridAreas::setCellWidth(int width) {
    if (!view_.setCellWidth(width)) {
        return false;
    }
    if (const auto selected = view_.selected()) {
        view_.scrollTo(selected, grid_->fullColumns(), grid_->fullRows());
    }
    showScroll();
    refresh();
    emit zoomed();
    return true;
}

bool FrameGridAreas::goToCell(int word, int frame, bool extend) {
    const auto at = view_.selectable({word, frame});
    if (!at) {
        return false;
    }
    if (view_.scrollTo(at, grid_->fullColumns(), grid_->fullRows())) {
        showScroll();
        refresh();
    }
    return grid_->select(at, extend);
}

void FrameGridAreas::moveBy(FrameMove move, bool extend) {
    const bool keepsRow = isSideways(move) && view_.selected();
    const int row = view_.rowOfMoves();
    const auto at = view_.moved(move, grid_->fullColumns(), grid_->fullRows());
    if (goToCell(at.word, at.frame, extend) && keepsRow) {
        view_.keepRowOfMoves(row);
    }
}

void FrameGridAreas::selectBlock(FramePlace first, FramePlace last) {
    if (view_.selectBlock(first, last)) {
        refresh();
        emit selectionMoved();
    }
}

void FrameGridAreas::selectWord(int word) {
    selectBlock({word, 1}, {word, display_.depth(word)});
}

/// From the last word back, so that the grid stays at the front of the frame.
void FrameGridAreas::selectFrame(int frame) {
    const auto end = [&](int word) {
        return FramePlace{word, std::clamp(frame, 1, std::max(1, display_.depth(word)))};
    };
    selectBlock(end(display_.words() - 1), end(0));
}

void FrameGridAreas::selectAll() {
    const int last = display_.words() - 1;
    selectBlock({last, display_.depth(last)}, {0, 1});
}

void FrameGridAreas::markCut(const FrameBlock& block) {
    view_.cut = block;
    grid_->refresh();
}

void FrameGridAreas::mark(const std::string& name) {
    if (display_.marked != name) {
        display_.marked = name;
        grid_->refresh();
    }
}

DisplayPlace FrameGridAreas::place() const {
    return {view_.selected(), view_.firstWord, view_.scrolledRows};
}

void FrameGridAreas::restore(const DisplayPlace& place) {
    view_.firstWord = std::clamp(place.firstWord, 0, std::max(0, display_.words() - 1));
    view_.scrolledRows = std::clamp(place.scrolledRows, 0, std::max(0, display_.frames() - 1));
    (void)view_.select(place.selected);
    showScroll();
    refresh();
    emit selectionMoved();
}

void FrameGridAreas::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showScroll();
}

void FrameGridAreas::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && grid_ != nullptr) {
        refresh();
    }
}

}  // namespace kavu
