// The grid of a frame with its labels and its legends, which stay in view, and the scroll bars.
#pragma once

#include "app/pcm/FrameGrid.h"
#include "pcm/display/DisplayPlaces.h"

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
    /// Moves the selected cell by a key, and keeps the frame across words that are less deep.
    void moveBy(FrameMove move, bool extend);
    /// Selects all cells of a word, of a frame, or of both.
    void selectWord(int word);
    void selectFrame(int frame);
    void selectAll();
    /// The cells that the next paste moves; an empty block for none.
    void markCut(const FrameBlock& block);
    /// Marks all places of a measurement; an empty name for none.
    void mark(const std::string& name);
    [[nodiscard]] DisplayPlace place() const;
    /// Shows what `place` has returned, as far as the frame still has it.
    void restore(const DisplayPlace& place);
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
    /// The menu of the labels and of the numbers of words, and that of the numbers of frames.
    void wordMenuRequested(int word, const QPoint& globalPosition);
    void frameMenuRequested(int frame, const QPoint& globalPosition);
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
    void selectBlock(FramePlace first, FramePlace last);

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
