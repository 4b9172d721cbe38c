// The grid of a frame with its labels and its legends, which stay in view, and the scroll bars.
#pragma once

#include "app/pcm/FrameGrid.h"

#include <QWidget>

class QScrollBar;

namespace kavu {

class FrameGridAreas : public QWidget {
    Q_OBJECT
  public:
    FrameGridAreas(const PcmFormat& format, QWidget* parent);

    [[nodiscard]] FrameDisplay& display() { return display_; }
    [[nodiscard]] const FrameView& view() const { return view_; }
    [[nodiscard]] FrameGrid& grid() { return *grid_; }

    /// Scrolls a cell into view and selects it; of a place below the depth of its word the
    /// cell that repeats there. False outside of the frame.
    bool goToCell(int word, int frame, bool extend = false);
    /// False if that was its width already.
    bool setCellWidth(int width);
    /// The stream has changed.
    void streamChanged();
    /// What is shown of it has changed.
    void refresh();

  signals:
    void selectionMoved();
    /// The label of a word was double clicked.
    void labelActivated(int word);
    void zoomed();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void makeAreas();
    void connectAreas();
    void showScroll();
    void takeScroll();
    void refreshStrips();

    FrameDisplay display_;
    FrameView view_;
    FrameGrid* grid_ = nullptr;
    FrameStrip* labels_ = nullptr;
    FrameStrip* words_ = nullptr;
    FrameStrip* frames_ = nullptr;
    QScrollBar* across_ = nullptr;
    QScrollBar* down_ = nullptr;
    bool showing_ = false;
};

}  // namespace kavu
