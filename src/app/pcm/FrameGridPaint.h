// How the cells of a frame are painted. Texts come from the stream at the moment of painting;
// what is held here are only the looks of cells without their texts, for one size.
#pragma once

#include "pcm/display/FrameDisplayView.h"

#include <array>
#include <map>
#include <utility>

#include <QFont>
#include <QPixmap>
#include <QRawFont>

class QPainter;
class QWidget;

namespace kavu {

/// A font, with what it takes to know quickly if a text has room.
class CellFont {
  public:
    explicit CellFont(const QFont& font);

    [[nodiscard]] const QFont& font() const { return font_; }
    [[nodiscard]] int width(const std::string& text) const;
    [[nodiscard]] bool fits(const std::string& text, const QSize& room) const;
    /// Height of a capital letter.
    [[nodiscard]] int capital() const { return capital_; }
    /// Draws a text from its left end on the base line.
    void draw(QPainter& painter, const QPoint& begin, const std::string& text) const;

  private:
    QFont font_;
    QRawFont raw_;
    int capital_;
    /// Of the characters that nearly all texts are made of.
    std::array<double, 128> advances_{};
    std::array<quint32, 128> glyphs_{};
};

class FrameGridPaint {
  public:
    /// Fonts, palette and scaling of the widget.
    explicit FrameGridPaint(const QWidget& widget);

    /// Paints the cells of a grid that `dirty` touches, and nothing else of it.
    void paintGrid(QPainter& painter, const QRect& dirty, const FrameDisplay& display,
                   const FrameView& view, bool hasFocus);
    /// One box, of a label.
    void paintBox(QPainter& painter, const QRect& box, Rgb ground, const FrameText& text,
                  bool isSelected);

    /// A cell that is no part of the grid, to show what its colours and marks are like.
    struct Sample {
        PlaceKind kind = PlaceKind::Plain;
        bool isWithin = true;
        FrameText text{};
        FrameMarks marks{};
        bool isMarked = false;  ///< a place of the marked measurement
    };
    void paintSample(QPainter& painter, const QRect& cell, const Sample& sample,
                     FrameColours colours);
    /// The colour of the interface's surfaces.
    [[nodiscard]] Rgb face() const { return face_; }

    /// The font that a text takes in a cell of that size, or null if not even a "*" has room;
    /// `shown` becomes the text or the "*".
    [[nodiscard]] const CellFont* fontFor(const QSize& cell, std::string& shown) const;
    /// The part of a cell that a text may take.
    [[nodiscard]] static QSize textRoom(const QSize& cell);

  private:
    struct Column;
    [[nodiscard]] const QPixmap& look(Rgb ground, bool isSelected, const QSize& size);
    [[nodiscard]] Rgb readable(Rgb ink, Rgb ground);
    void drawLook(QPainter& painter, const QRect& cell, Rgb ground, bool isSelected) const;
    /// Columns next to each other that are of one look are painted at once.
    struct Run {
        QRect area;
        Rgb ground = 0;
        bool isSelected = false;
    };
    void paintRun(QPainter& painter, const Run& run, const QSize& size);
    void paintColumn(QPainter& painter, const Column& column, int firstFrame, int lastFrame,
                     Run& pending);
    void paintTexts(QPainter& painter, const Column& column, int firstFrame, int lastFrame);
    void paintCell(QPainter& painter, const Column& column, int frame);
    void paintCurrent(QPainter& painter, const QRect& cell, Rgb ground, bool hasFocus);
    void paintMarked(QPainter& painter, const QRect& cell, Rgb ground);
    void paintSmallCells(QPainter& painter, const Column& column, int firstFrame, int lastFrame);
    void paintBlocks(QPainter& painter, const FrameView& view) const;
    void paintText(QPainter& painter, const QRect& cell, Rgb ground, FrameText text,
                   bool isSelected);
    void paintStar(QPainter& painter, const QRect& cell, const CellFont& font, Rgb ink);
    static void paintMarks(QPainter& painter, const QRect& cell, const FrameMarks& marks, Rgb ink);

    CellFont normal_;
    CellFont small_;
    Rgb face_;
    QColor border_;
    QColor ground_;
    QColor frame_;
    double ratio_;
    std::map<std::pair<Rgb, bool>, QPixmap> looks_;
    std::map<std::pair<const CellFont*, Rgb>, QPixmap> stars_;
    std::map<std::pair<Rgb, Rgb>, Rgb> inks_;
    QSize size_;
    FrameColours colours_ = FrameColours::Classic;  ///< of what is painted now
};

}  // namespace kavu
