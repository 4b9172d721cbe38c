#include "app/reports/PageView.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/reports/PaperSurface.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace kavu {

namespace {

constexpr double kScreenPerPoint = 96.0 / 72.0;
constexpr double kGap = 12;  ///< pixels around a page
constexpr int kZoomOfKey = 25;
/// Texts whose tops differ by less, in points, are on one line.
constexpr double kSameLine = 2;

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("pages"));
    setAccessibleName(QStringLiteral("Pages"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    verticalScrollBar()->setSingleStep(look::unit(*this) * 4);
    setMinimumSize(look::charactersWide(*this, 40), look::unit(*this) * 14);
}

void PageView::setDocument(std::shared_ptr<const PrintedDocument> document) {
    document_ = std::move(document);
    lines_.assign(document_ ? document_->pages.size() : 0, std::nullopt);
    anchor_ = cursor_ = {};
    shownPage_ = 0;
    updateBars();
    verticalScrollBar()->setValue(0);
    viewport()->update();
    emit selectionChanged();
}

int PageView::pageCount() const {
    return document_ ? static_cast<int>(document_->pages.size()) : 0;
}

double PageView::scale() const {
    return kScreenPerPoint * zoom_ / 100;
}

QSizeF PageView::pagePixels() const {
    return document_ ? QSizeF(document_->paper.width, document_->paper.height) * scale() : QSizeF();
}

double PageView::pageTop(std::size_t page) const {
    return kGap + static_cast<double>(page) * (pagePixels().height() + kGap) -
           verticalScrollBar()->value();
}

double PageView::pageLeft() const {
    return std::max(kGap, (viewport()->width() - pagePixels().width()) / 2) -
           horizontalScrollBar()->value();
}

void PageView::updateBars() {
    const auto page = pagePixels();
    const auto room = viewport()->size();
    const double height = kGap + pageCount() * (page.height() + kGap);
    const double width = page.width() + 2 * kGap;
    verticalScrollBar()->setPageStep(room.height());
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(height) - room.height()));
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(width) - room.width()));
    scrollContentsBy(0, 0);
}

void PageView::setZoom(int percent) {
    const int wanted = std::clamp(percent, kLeastZoom, kMostZoom);
    if (wanted == zoom_) {
        return;
    }
    // What was in the middle stays there.
    const double middle = viewport()->height() / 2.0;
    const double at = (verticalScrollBar()->value() + middle) / zoom_;
    zoom_ = wanted;
    updateBars();
    verticalScrollBar()->setValue(static_cast<int>(at * zoom_ - middle));
    viewport()->update();
    emit zoomChanged(zoom_);
}

void PageView::fitWidth() {
    if (document_ && document_->paper.width > 0) {
        const double room = viewport()->width() - 2 * kGap;
        setZoom(static_cast<int>(100 * room / (document_->paper.width * kScreenPerPoint)));
    }
}

int PageView::currentPage() const {
    if (pageCount() == 0) {
        return 0;
    }
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const int page = static_cast<int>(middle / (pagePixels().height() + kGap)) + 1;
    return std::clamp(page, 1, pageCount());
}

void PageView::goToPage(int page) {
    const int index = std::clamp(page, 1, std::max(1, pageCount())) - 1;
    verticalScrollBar()->setValue(
        verticalScrollBar()->value() +
        static_cast<int>(pageTop(static_cast<std::size_t>(index)) - kGap));
}

void PageView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
    if (const int page = currentPage(); page != shownPage_) {
        shownPage_ = page;
        emit pageChanged(page);
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateBars();
}

// --- painting -------------------------------------------------------------------------------

void PageView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Mid));
    const double height = pagePixels().height() + kGap;
    for (std::size_t page = 0; page < static_cast<std::size_t>(pageCount()); ++page) {
        const double top = pageTop(page);
        if (top < viewport()->height() && top + height > 0) {
            paintPage(painter, page);
        }
    }
}

void PageView::paintPage(QPainter& painter, std::size_t page) const {
    painter.save();
    painter.translate(pageLeft(), pageTop(page));
    painter.fillRect(QRectF(QPointF(), pagePixels()), Qt::white);
    painter.scale(scale(), scale());
    painter.setClipRect(QRectF(0, 0, document_->paper.width, document_->paper.height));
    paintSelection(painter, page);
    {
        // A clip of the page would let it draw beside the paper.
        PaperSurface surface(painter, document_->paper);
        document_->pages[page].drawOn(surface);
    }
    painter.restore();
}

void PageView::forSelected(
    std::size_t page,
    const std::function<void(const Line& line, qsizetype first, qsizetype last)>& visit) const {
    const auto& from = std::min(anchor_, cursor_);
    const auto& to = std::max(anchor_, cursor_);
    if (from == to || page < from.page || page > to.page) {
        return;
    }
    const auto& shown = lines(page);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Place start{page, i, 0};
        const Place end{page, i, shown[i].shown.size()};
        if (end > from && start < to) {
            visit(shown[i], from > start ? from.character : 0,
                  to < end ? to.character : end.character);
        }
    }
}

void PageView::paintSelection(QPainter& painter, std::size_t page) const {
    constexpr int kThrough = 110;  // the letters are black in both palettes
    auto colour = palette().color(QPalette::Highlight);
    colour.setAlpha(kThrough);
    forSelected(page, [&](const Line& line, qsizetype first, qsizetype last) {
        const auto& text = *line.text;
        const double left = offsetOf(line, first);
        painter.fillRect(
            QRectF(text.at.x + left, text.at.y, offsetOf(line, last) - left, text.size.height),
            colour);
    });
}

double PageView::offsetOf(const Line& line, qsizetype character) {
    const QFontMetricsF metrics(PaperSurface::fontOf(line.text->font));
    return metrics.horizontalAdvance(line.shown.left(character));
}

// --- texts ----------------------------------------------------------------------------------

const std::vector<PageView::Line>& PageView::lines(std::size_t page) const {
    auto& made = lines_[page];
    if (!made) {
        made.emplace();
        for (const auto& text : document_->pages[page].texts()) {
            made->push_back({&text, toQString(text.text)});
        }
        std::stable_sort(made->begin(), made->end(), [](const Line& a, const Line& b) {
            return a.text->at.y < b.text->at.y ||
                   (a.text->at.y == b.text->at.y && a.text->at.x < b.text->at.x);
        });
    }
    return *made;
}

std::optional<PageView::Place> PageView::placeAt(QPointF pixel) const {
    if (pageCount() == 0) {
        return std::nullopt;
    }
    const double height = pagePixels().height() + kGap;
    const auto index = static_cast<int>((pixel.y() + verticalScrollBar()->value() - kGap) / height);
    const auto page = static_cast<std::size_t>(std::clamp(index, 0, pageCount() - 1));
    const QPointF at((pixel.x() - pageLeft()) / scale(), (pixel.y() - pageTop(page)) / scale());
    const auto& shown = lines(page);
    std::optional<std::size_t> nearest;
    double distance = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const auto& text = *shown[i].text;
        const double below =
            std::max({0.0, text.at.y - at.y(), at.y() - text.at.y - text.size.height});
        const double beside =
            std::max({0.0, text.at.x - at.x(), at.x() - text.at.x - text.size.width});
        // A line that one points at counts before all others, however far its text is.
        const double far = below * 1000 + beside;
        if (!nearest || far < distance) {
            nearest = i;
            distance = far;
        }
    }
    if (!nearest) {
        return Place{page, 0, 0};
    }
    const auto& line = shown[*nearest];
    qsizetype character = 0;
    const double inside = at.x() - line.text->at.x;
    while (character < line.shown.size() &&
           (offsetOf(line, character) + offsetOf(line, character + 1)) / 2 < inside) {
        ++character;
    }
    return Place{page, *nearest, character};
}

void PageView::select(const Place& from, const Place& to) {
    anchor_ = from;
    cursor_ = to;
    viewport()->update();
    emit selectionChanged();
}

void PageView::selectAll() {
    if (pageCount() == 0) {
        return;
    }
    const auto page = static_cast<std::size_t>(pageCount()) - 1;
    select({}, {page, lines(page).size(), 0});
}

QString PageView::selectedText() const {
    QString text;
    const auto& from = std::min(anchor_, cursor_);
    const auto& to = std::max(anchor_, cursor_);
    for (std::size_t page = from.page; from != to && page <= to.page; ++page) {
        const PageText* before = nullptr;
        forSelected(page, [&](const Line& line, qsizetype first, qsizetype last) {
            if (!text.isEmpty()) {
                const bool isSame =
                    before != nullptr && std::abs(before->at.y - line.text->at.y) < kSameLine;
                text += QLatin1Char(isSame ? ' ' : '\n');
            }
            text += line.shown.mid(first, last - first);
            before = line.text;
        });
    }
    return text;
}

void PageView::copy() const {
    if (const auto text = selectedText(); !text.isEmpty()) {
        QApplication::clipboard()->setText(text);
    }
}

bool PageView::find(const QString& text, bool forward) {
    const auto pages = static_cast<std::size_t>(pageCount());
    if (text.isEmpty() || pages == 0) {
        return false;
    }
    // A place is looked for after what is selected, or before it, and then from the other end.
    const auto start = forward ? std::max(anchor_, cursor_) : std::min(anchor_, cursor_);
    std::optional<Place> best;
    for (std::size_t round = 0; round <= pages && !best; ++round) {
        const auto page =
            forward ? (start.page + round) % pages : (start.page + pages - round % pages) % pages;
        const auto& shown = lines(page);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            for (auto at = shown[i].shown.indexOf(text, 0, Qt::CaseInsensitive); at >= 0;
                 at = shown[i].shown.indexOf(text, at + 1, Qt::CaseInsensitive)) {
                const Place place{page, i, at};
                const bool isBehind = forward ? place >= start : place < start;
                // The page that was begun in is looked through again at the end, from its start.
                if ((round > 0 || isBehind) &&
                    (!best || (forward ? place < *best : place > *best))) {
                    best = place;
                }
            }
        }
    }
    if (!best) {
        return false;
    }
    auto end = *best;
    end.character += text.size();
    select(*best, end);
    show(*best);
    return true;
}

void PageView::show(const Place& place) {
    const auto& line = lines(place.page)[place.text];
    const double top = pageTop(place.page) + line.text->at.y * scale();
    const double left = pageLeft() + (line.text->at.x + offsetOf(line, place.character)) * scale();
    const auto room = viewport()->size();
    if (top < 0 || top + line.text->size.height * scale() > room.height()) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      static_cast<int>(top - room.height() / 3.0));
    }
    if (left < 0 || left > room.width() * 0.9) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                        static_cast<int>(left - room.width() / 3.0));
    }
}

// --- input ----------------------------------------------------------------------------------

void PageView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (const auto place = placeAt(event->position())) {
        select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : *place, *place);
    }
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        if (const auto place = placeAt(event->position())) {
            select(anchor_, *place);
        }
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        setZoom(zoom_ + (event->angleDelta().y() > 0 ? kZoomOfKey : -kZoomOfKey));
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::ZoomIn)) {
        setZoom(zoom_ + kZoomOfKey);
    } else if (event->matches(QKeySequence::ZoomOut)) {
        setZoom(zoom_ - kZoomOfKey);
    } else if (event->key() == Qt::Key_Home) {
        goToPage(1);
    } else if (event->key() == Qt::Key_End) {
        goToPage(pageCount());
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace kavu
