// The key to the grid of a frame: a sample of each colour and mark, and what it means.
#pragma once

#include "app/pcm/FrameGridPaint.h"

#include <memory>
#include <vector>

#include <QWidget>

namespace kavu {

class FrameKey : public QWidget {
    Q_OBJECT
  public:
    /// The display must outlive it; who changes what is shown of it calls `refresh`.
    FrameKey(const FrameDisplay& display, QWidget* parent);

    /// Paints the key of what is shown now.
    void refresh();
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Sample {
        QString meaning;
        PlaceKind kind = PlaceKind::Plain;
        FrameMarks marks{};
        FrameInk ink = FrameInk::Plain;
        bool isWithin = true;
        bool isMarked = false;
    };
    [[nodiscard]] std::vector<Sample> samples() const;
    [[nodiscard]] QSize sampleSize() const;

    const FrameDisplay& display_;
    std::unique_ptr<FrameGridPaint> paint_;
    FrameColours shownColours_ = FrameColours::Classic;
};

}  // namespace kavu
