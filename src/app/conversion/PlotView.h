// A picture that logic draws on a surface, as a widget: it is painted once after each change,
// and reports where the pointer is in it.
#pragma once

#include "drawing/DrawingSurface.h"

#include <functional>

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace kavu {

class PlotView : public QWidget {
    Q_OBJECT
  public:
    using Draw = std::function<void(DrawingSurface&)>;

    /// `draw` is called while the widget is painted and must cover its whole area.
    PlotView(const char* name, const QString& spokenName, Draw draw, QWidget* parent = nullptr);

    /// What is drawn has changed.
    void redraw();

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    /// The pointer is over a place of the surface.
    void pointedAt(QPointF place);
    void pointerLeft();
    void clickedAt(QPointF place);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    Draw draw_;
    QPixmap picture_;
};

}  // namespace kavu
