// Finding the places of measurements and async streams in the grid while one types, with next and
// previous.
#pragma once

#include "pcm/display/FrameDisplaySearch.h"

#include <functional>

#include <QWidget>

class QLabel;
class QLineEdit;

namespace kavu {

class MajorFrameFind : public QWidget {
    Q_OBJECT
  public:
    /// `present` gives the selected cell. The format must outlive the bar.
    MajorFrameFind(const PcmFormat& format, std::function<FramePlace()> present, QWidget* parent);

    /// Shows the bar and gives it the keyboard.
    void begin();
    void find(bool forward);

  signals:
    void found(FramePlace at);
    void ended();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void search(bool includeHere, bool forward);

    const PcmFormat& format_;
    std::function<FramePlace()> present_;
    QLineEdit* text_ = nullptr;
    QLabel* result_ = nullptr;
};

}  // namespace kavu
