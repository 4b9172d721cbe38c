// A small map of the major frame that shows which words and frames an entry covers. Words run
// from left to right, frames from top to bottom.
#pragma once

#include <utility>
#include <vector>

#include <QImage>
#include <QWidget>

namespace kavu {

class WordFrameMap : public QWidget {
    Q_OBJECT
  public:
    explicit WordFrameMap(QWidget* parent = nullptr);

    using Places = std::vector<std::pair<int, int>>;
    /// Shows the places (word, frame) of one fragment strongly and those of the others weakly,
    /// in a frame of words 1 to `words` and so many frames.
    void setPlaces(int words, int frames, const Places& current, const Places& others);
    /// The number of shown places of the fragment, for tests and the text below the map.
    [[nodiscard]] int covered() const { return covered_; }

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void mark(const Places& places, unsigned value);
    [[nodiscard]] QRect frameRect() const;

    int words_ = 0;
    int frames_ = 0;
    int covered_ = 0;
    std::vector<unsigned char> cells_;  ///< frame by frame: 0 free, 1 other, 2 current
};

}  // namespace kavu
