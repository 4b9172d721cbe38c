#include "app/pcm/FrameGridPaint.h"

#include "app/framework/QtText.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QWidget>

namespace kavu {

namespace {

constexpr Rgb kShade = 0x808080;
/// From this height on a cell has an edge of its own, and shaded lines.
constexpr int kShadedHeight = 10;
constexpr int kMarkedHeight = 10;
constexpr double kSmaller = 0.75;
constexpr const char* kStar = "*";

QColor colourOf(Rgb rgb) {
    return QColor::fromRgb(static_cast<QRgb>(rgb | 0xFF000000U));
}

Rgb rgbOf(const QColor& colour) {
    return static_cast<Rgb>(colour.rgb()) & 0xFFFFFFU;
}

QFont smallerFont(const QFont& font) {
    QFont smaller = font;
    smaller.setPixelSize(
        std::max(5, static_cast<int>(QFontMetricsF(font).height() * kSmaller * kSmaller)));
    return smaller;
}

}  // namespace

CellFont::CellFont(const QFont& font) : font_(font), raw_(QRawFont::fromFont(font)), capital_(0) {
    const QFontMetricsF metrics(font);
    capital_ = static_cast<int>(std::ceil(metrics.capHeight()));
    for (std::size_t i = 0x20; i < advances_.size(); ++i) {
        const QString letter(QChar(static_cast<ushort>(i)));
        advances_[i] = metrics.horizontalAdvance(letter);
        const auto glyphs = raw_.glyphIndexesForString(letter);
        glyphs_[i] = glyphs.isEmpty() ? 0 : glyphs.front();
    }
}

/// Names are plain letters: they need no shaping, which takes longer than all else.
void CellFont::draw(QPainter& painter, const QPoint& begin, const std::string& text) const {
    QList<quint32> glyphs;
    QList<QPointF> places;
    double x = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= glyphs_.size() || glyphs_[byte] == 0) {
            painter.setFont(font_);
            painter.drawText(begin, toQString(text));
            return;
        }
        glyphs.push_back(glyphs_[byte]);
        places.push_back({x, 0});
        x += advances_[byte];
    }
    QGlyphRun run;
    run.setRawFont(raw_);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    painter.drawGlyphRun(begin, run);
}

int CellFont::width(const std::string& text) const {
    double sum = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= advances_.size()) {
            return static_cast<int>(
                std::ceil(QFontMetricsF(font_).horizontalAdvance(toQString(text))));
        }
        sum += advances_[byte];
    }
    return static_cast<int>(std::ceil(sum));
}

bool CellFont::fits(const std::string& text, const QSize& room) const {
    return capital_ <= room.height() && width(text) <= room.width();
}

/// A word of the grid while it is painted: its own size and place, and what is the same for
/// all of its cells.
struct FrameGridPaint::Column {
    const FrameDisplay& display;
    const FrameView& view;
    bool hasFocus;
    int word;
    int depth;
    int shown;  ///< frames that are shown
    int x;
    FrameBlock block;
    std::optional<PlaceKind> kind;  ///< if all cells are of one kind

    Column(const FrameDisplay& of, const FrameView& from, bool focus, int fwp)
        : display(of),
          view(from),
          hasFocus(focus),
          word(fwp),
          depth(of.depth(fwp)),
          shown(of.showAllCells ? of.frames() : depth),
          x((fwp - from.firstWord) * from.cellWidth()),
          block(from.block()) {
        if (of.format().asyncCount() == 0 || of.format().wordType(fwp) != WordType::Subframe) {
            kind = of.kindAt({fwp, 1});
        }
    }
    [[nodiscard]] Rgb ground(int frame, Rgb face) const {
        const FramePlace at{word, frame};
        return cellColour(kind ? *kind : display.kindAt(at), frame <= depth, isSelected(frame),
                          face, display.colours);
    }
    [[nodiscard]] bool isSelected(int frame) const {
        return frame <= depth && block.holds({word, frame});
    }
    [[nodiscard]] bool isCurrent(int frame) const {
        return view.selected() == FramePlace{word, frame};
    }
    [[nodiscard]] QRect rect(int frame) const {
        return {x, (frame - 1 - view.scrolledRows) * view.cellHeight(), view.cellWidth(),
                view.cellHeight()};
    }
};

FrameGridPaint::FrameGridPaint(const QWidget& widget)
    : normal_(widget.font()),
      small_(smallerFont(widget.font())),
      face_(rgbOf(widget.palette().color(QPalette::Button))),
      border_(widget.palette().color(QPalette::Dark)),
      ground_(widget.palette().color(QPalette::Window)),
      frame_(widget.palette().color(QPalette::Highlight)),
      ratio_(widget.devicePixelRatioF()) {}

QSize FrameGridPaint::textRoom(const QSize& cell) {
    // Two pixels on the left for what may be the edge, four on the right with the shade.
    return cell.height() >= kShadedHeight ? cell - QSize(5, 4) : cell - QSize(1, 1);
}

const CellFont* FrameGridPaint::fontFor(const QSize& cell, std::string& shown) const {
    const auto room = textRoom(cell);
    if (normal_.fits(shown, room)) {
        return &normal_;
    }
    shown = kStar;
    // A star is half as high as a letter, and has its room where it is.
    return small_.fits(kStar, room) ? &small_ : normal_.fits(kStar, room) ? &normal_ : nullptr;
}

// --- the look of a cell without its text ------------------------------------------------------

void FrameGridPaint::drawLook(QPainter& painter, const QRect& cell, Rgb ground,
                              bool isSelected) const {
    painter.fillRect(cell, colourOf(ground));
    const int right = cell.right();
    const int bottom = cell.bottom();
    painter.fillRect(cell.left(), bottom, cell.width(), 1, border_);
    painter.fillRect(right, cell.top(), 1, cell.height(), border_);
    if (cell.height() < kShadedHeight) {
        return;
    }
    const auto shade = colourOf(kShade);
    if (isSelected) {
        // Pressed: the shade is on the other side.
        painter.fillRect(cell.left(), cell.top(), cell.width() - 1, 2, border_);
        painter.fillRect(cell.left(), cell.top(), 2, cell.height() - 1, border_);
        return;
    }
    painter.fillRect(cell.left() + 1, bottom - 2, cell.width() - 2, 2, shade);
    painter.fillRect(right - 2, cell.top() + 1, 2, cell.height() - 2, shade);
}

const QPixmap& FrameGridPaint::look(Rgb ground, bool isSelected, const QSize& size) {
    if (size_ != size) {
        looks_.clear();
        size_ = size;
    }
    auto& pixmap = looks_[{ground, isSelected}];
    if (pixmap.isNull()) {
        pixmap = QPixmap(size * ratio_);
        pixmap.setDevicePixelRatio(ratio_);
        QPainter painter(&pixmap);
        drawLook(painter, {{}, size}, ground, isSelected);
    }
    return pixmap;
}

Rgb FrameGridPaint::readable(Rgb ink, Rgb ground) {
    const auto [at, isNew] = inks_.try_emplace({ink, ground}, 0);
    if (isNew) {
        at->second = readableInk(ink, ground);
    }
    return at->second;
}

// --- texts ------------------------------------------------------------------------------------

void FrameGridPaint::paintStar(QPainter& painter, const QRect& cell, const CellFont& font,
                               Rgb ink) {
    auto& pixmap = stars_[{&font, ink}];
    const int side = font.width(kStar) + 2;
    if (pixmap.isNull()) {
        pixmap = QPixmap(QSize(side, font.capital() + 2) * ratio_);
        pixmap.setDevicePixelRatio(ratio_);
        pixmap.fill(Qt::transparent);
        QPainter star(&pixmap);
        star.setFont(font.font());
        star.setPen(colourOf(ink));
        star.drawText(1, font.capital() + 1, QStringLiteral("*"));
    }
    painter.drawPixmap(cell.left() + (cell.width() - side) / 2,
                       cell.top() + (cell.height() - font.capital() - 2) / 2, pixmap);
}

void FrameGridPaint::paintText(QPainter& painter, const QRect& cell, Rgb ground, FrameText text,
                               bool isSelected) {
    if (text.text.empty()) {
        return;
    }
    const auto* const font = fontFor(cell.size(), text.text);
    if (font == nullptr) {
        return;
    }
    const Rgb ink = readable(inkColour(text.ink), ground);
    const auto place = isSelected ? cell.translated(1, 1) : cell;
    if (text.text == kStar) {
        paintStar(painter, place, *font, ink);
        return;
    }
    painter.setPen(colourOf(ink));
    const int shift = cell.height() >= kShadedHeight ? 1 : 0;
    font->draw(painter,
               {place.left() - shift + (place.width() - font->width(text.text)) / 2,
                place.top() - shift + (place.height() + font->capital()) / 2},
               text.text);
    if (colours_ == FrameColours::Calm && text.ink == FrameInk::Conversion) {
        // A line says without colours what the ink says.
        const int width = font->width(text.text);
        painter.fillRect(place.left() - shift + (place.width() - width) / 2,
                         place.top() - shift + (place.height() + font->capital()) / 2 + 2, width, 1,
                         colourOf(ink));
    }
}

/// Shapes that speak without colours: a corner for several measurements, two crossed lines
/// where their bits overlap, two bars for an async stream.
void FrameGridPaint::paintMarks(QPainter& painter, const QRect& cell, const FrameMarks& marks,
                                Rgb ink) {
    const auto colour = colourOf(ink);
    const int size = std::clamp(cell.height() / 4, 4, 10);
    if (marks.async) {
        painter.fillRect(cell.left() + 2, cell.top() + 3, 1, cell.height() - 8, colour);
        painter.fillRect(cell.left() + 4, cell.top() + 3, 1, cell.height() - 8, colour);
    }
    if (marks.several) {
        const QPoint corner(cell.right() - 3, cell.top() + 1);
        for (int row = 0; row < size; ++row) {
            painter.fillRect(corner.x() - (size - row) + 1, corner.y() + row, size - row, 1,
                             colour);
        }
    }
    if (marks.overlap) {
        const QPoint corner(cell.left() + 7, cell.top() + 2);
        painter.setPen(colour);
        painter.drawLine(corner, corner + QPoint(size - 1, size - 1));
        painter.drawLine(corner + QPoint(size - 1, 0), corner + QPoint(0, size - 1));
    }
}

// --- cells ------------------------------------------------------------------------------------

void FrameGridPaint::paintCell(QPainter& painter, const Column& column, int frame) {
    const auto cell = column.rect(frame);
    const bool selected = column.isSelected(frame);
    const auto ground = column.ground(frame, face_);
    const FramePlace at{column.word, frame};
    paintText(painter, cell, ground, column.display.cellText(FrameArea::Grid, column.word, frame),
              selected);
    const auto marks = cell.height() >= kMarkedHeight ? column.display.marksAt(at) : FrameMarks{};
    if (marks.several || marks.overlap || marks.async) {
        paintMarks(painter, cell, marks, readable(0, ground));
    }
    if (column.display.isMarked(at)) {
        paintMarked(painter, cell, ground);
    }
    if (column.isCurrent(frame)) {
        paintCurrent(painter, cell, ground, column.hasFocus);
    }
}

/// A frame in the colour that is farthest from the ground, which no other cell has; with the focus
/// also the dotted one of controls.
void FrameGridPaint::paintCurrent(QPainter& painter, const QRect& cell, Rgb ground, bool hasFocus) {
    const auto ink = colourOf(readable(0, ground));
    const bool isSmall = cell.height() < kShadedHeight;
    painter.setPen(QPen(ink, isSmall ? 1 : 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(isSmall ? cell.adjusted(0, 0, -1, -1) : cell.adjusted(1, 1, -1, -1));
    if (hasFocus && !isSmall) {
        painter.setPen(QPen(ink, 1, Qt::DotLine));
        painter.drawRect(cell.adjusted(4, 4, -5, -5));
    }
}

/// Four corners, a shape that no other mark has.
void FrameGridPaint::paintMarked(QPainter& painter, const QRect& cell, Rgb ground) {
    const auto colour = colourOf(readable(rgbOf(frame_), ground));
    const int thick = cell.height() >= kShadedHeight ? 2 : 1;
    const int length = std::max(2, cell.height() / 3);
    const auto area = cell.adjusted(0, 0, -1, -1);
    for (const bool right : {false, true}) {
        for (const bool low : {false, true}) {
            const int x = right ? area.right() - length + 1 : area.left();
            const int y = low ? area.bottom() - thick + 1 : area.top();
            painter.fillRect(x, y, length, thick, colour);
            const int side = right ? area.right() - thick + 1 : area.left();
            const int top = low ? area.bottom() - length + 1 : area.top();
            painter.fillRect(side, top, thick, length, colour);
        }
    }
}

/// Of cells without room for a text only the marks that matter.
void FrameGridPaint::paintSmallCells(QPainter& painter, const Column& column, int firstFrame,
                                     int lastFrame) {
    const bool hasMarked = !column.display.marked.empty();
    for (int frame = firstFrame; frame <= lastFrame && hasMarked; ++frame) {
        if (column.display.isMarked({column.word, frame})) {
            const auto ground = column.ground(frame, face_);
            painter.fillRect(column.rect(frame).adjusted(1, 0, -1, -1),
                             colourOf(readable(rgbOf(frame_), ground)));
        }
    }
    const auto at = column.view.selected();
    if (at.word == column.word && at.frame >= firstFrame && at.frame <= lastFrame) {
        paintCurrent(painter, column.rect(at.frame), column.ground(at.frame, face_),
                     column.hasFocus);
    }
}

void FrameGridPaint::paintTexts(QPainter& painter, const Column& column, int firstFrame,
                                int lastFrame) {
    const QSize size(column.view.cellWidth(), column.view.cellHeight());
    if (std::string star = kStar; fontFor(size, star) == nullptr) {
        paintSmallCells(painter, column, firstFrame, lastFrame);
        return;
    }
    for (int frame = firstFrame; frame <= lastFrame; ++frame) {
        paintCell(painter, column, frame);
    }
}

void FrameGridPaint::paintRun(QPainter& painter, const Run& run, const QSize& size) {
    if (!run.area.isEmpty()) {
        painter.drawTiledPixmap(run.area, look(run.ground, run.isSelected, size));
    }
}

/// Cells of one look that are below each other are painted at once.
void FrameGridPaint::paintColumn(QPainter& painter, const Column& column, int firstFrame,
                                 int lastFrame, Run& pending) {
    const QSize size(column.view.cellWidth(), column.view.cellHeight());
    int begin = firstFrame;
    while (begin <= lastFrame) {
        const bool selected = column.isSelected(begin);
        const auto ground = column.ground(begin, face_);
        int end = begin + 1;
        while (end <= lastFrame && column.isSelected(end) == selected &&
               column.ground(end, face_) == ground) {
            ++end;
        }
        const QRect area(column.rect(begin).topLeft(),
                         QSize(size.width(), size.height() * (end - begin)));
        if (ground == pending.ground && selected == pending.isSelected &&
            area.top() == pending.area.top() && area.height() == pending.area.height() &&
            area.left() == pending.area.right() + 1) {
            pending.area.setRight(area.right());
        } else {
            paintRun(painter, pending, size);
            pending = {area, ground, selected};
        }
        begin = end;
    }
}

void FrameGridPaint::paintGrid(QPainter& painter, const QRect& dirty, const FrameDisplay& display,
                               const FrameView& view, bool hasFocus) {
    painter.fillRect(dirty, ground_);
    colours_ = display.colours;
    const int firstWord = view.firstWord + dirty.left() / view.cellWidth();
    const int lastWord =
        std::min(display.words() - 1, view.firstWord + dirty.right() / view.cellWidth());
    const int firstFrame = view.scrolledRows + 1 + dirty.top() / view.cellHeight();
    const int lastFrame =
        std::min(display.frames(), view.scrolledRows + 1 + dirty.bottom() / view.cellHeight());
    Run pending;
    for (int word = firstWord; word <= lastWord; ++word) {
        const Column column(display, view, hasFocus, word);
        paintColumn(painter, column, firstFrame, std::min(lastFrame, column.shown), pending);
    }
    paintRun(painter, pending, {view.cellWidth(), view.cellHeight()});
    for (int word = firstWord; word <= lastWord; ++word) {
        const Column column(display, view, hasFocus, word);
        paintTexts(painter, column, firstFrame, std::min(lastFrame, column.shown));
    }
    paintBlocks(painter, view);
}

/// Frames around the selected block and around the one that was cut.
void FrameGridPaint::paintBlocks(QPainter& painter, const FrameView& view) const {
    const auto areaOf = [&](const FrameBlock& block) {
        const auto corner = [&](FramePlace at) {
            return QRect((at.word - view.firstWord) * view.cellWidth(),
                         (at.frame - 1 - view.scrolledRows) * view.cellHeight(), view.cellWidth(),
                         view.cellHeight());
        };
        return corner(block.first).united(corner(block.last)).adjusted(1, 1, -1, -1);
    };
    const auto block = view.block();
    if (block.first && !(block.first == block.last)) {
        painter.setPen(QPen(frame_, 2));
        painter.drawRect(areaOf(block));
    }
    if (view.cut.first) {
        painter.setPen(QPen(frame_, 3, Qt::DashLine));
        painter.drawRect(areaOf(view.cut));
    }
}

void FrameGridPaint::paintBox(QPainter& painter, const QRect& box, Rgb ground,
                              const FrameText& text, bool isSelected) {
    drawLook(painter, box, ground, isSelected);
    paintText(painter, box, ground, text, isSelected);
}

void FrameGridPaint::paintSample(QPainter& painter, const QRect& cell, const Sample& sample,
                                 FrameColours colours) {
    colours_ = colours;
    const auto ground = cellColour(sample.kind, sample.isWithin, false, face_, colours);
    paintBox(painter, cell, ground, sample.text, false);
    paintMarks(painter, cell, sample.marks, readable(0, ground));
    if (sample.isMarked) {
        paintMarked(painter, cell, ground);
    }
}

}  // namespace kavu
