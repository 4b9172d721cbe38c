// The grid of a frame, painted from the stream: word positions across, frames down. A change
// of the selection repaints the two cells concerned only.
#pragma once

#include "app/pcm/FrameGridPaint.h"
#include "pcm/display/FrameDisplayView.h"

#include <memory>

#include <QWidget>

namespace kavu {

class FrameGrid : public QWidget {
    Q_OBJECT
  public:
    /// Both must outlive the widget; who changes them calls `refresh`.
    FrameGrid(FrameDisplay& display, FrameView& view, QWidget* parent);

    [[nodiscard]] const FrameDisplay& display() const { return display_; }
    [[nodiscard]] const FrameView& view() const { return view_; }

    /// Selects a cell that is in view, and emits that; false for a place below the depth of
    /// its word.
    bool select(FramePlace at, bool extend = false);
    /// Paints all again: the stream, the zoom, or the place of the grid has changed.
    void refresh();

    [[nodiscard]] int fullColumns() const { return view_.fullColumns(width()); }
    [[nodiscard]] int fullRows() const { return view_.fullRows(height()); }
    /// Cells that are in view at least in part.
    [[nodiscard]] int columnsInView() const;
    [[nodiscard]] int rowsInView() const;
    [[nodiscard]] QRect cellRect(FramePlace at) const;

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void selectionMoved();
    void editRequested();
    /// A key moves the selection, possibly out of view.
    void stepRequested(FrameMove move, bool extend);
    /// The pointer drags the end of the block to a place that may be out of view.
    void moveRequested(FramePlace at, bool extend);
    void scrollRequested(int words, int frames);
    void zoomRequested(int pixels);
    void menuRequested(const QPoint& globalPosition);
    /// What is in view has changed.
    void viewRefreshed();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    bool selectUnder(const QPoint& point, bool extend);
    [[nodiscard]] FramePlace nearestPlace(const QPoint& point) const;
    void showTip(const QPoint& point, const QPoint& globalPoint);

    FrameDisplay& display_;
    FrameView& view_;
    std::unique_ptr<FrameGridPaint> paint_;
    int wheel_ = 0;  ///< of a fine wheel: what is not yet a notch
    bool dragging_ = false;
};

/// One of the three areas next to the grid that scroll with it: the labels of the words, the
/// numbers of the words, the numbers of the frames.
class FrameStrip : public QWidget {
    Q_OBJECT
  public:
    FrameStrip(FrameArea area, const char* name, FrameDisplay& display, FrameView& view,
               QWidget* parent);
    void refresh();
    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void clicked(FramePlace at);
    /// By a double click.
    void activated(FramePlace at);
    /// By the right button.
    void menuRequested(FramePlace at, const QPoint& globalPosition);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void paintNumbers(QPainter& painter, const QRect& dirty);
    void paintLabels(QPainter& painter, const QRect& dirty);
    [[nodiscard]] int wordAt(int x) const;
    /// None beyond the last word or frame.
    [[nodiscard]] FramePlace placeAt(const QPoint& point) const;

    FrameArea area_;
    FrameDisplay& display_;
    FrameView& view_;
    std::unique_ptr<FrameGridPaint> paint_;
};

}  // namespace kavu
