// Icons of the house, painted from their drawings in the colours of the palette.
#pragma once

#include <QIconEngine>

namespace kavu {

class LookIconEngine : public QIconEngine {
  public:
    explicit LookIconEngine(const QString& name) : name_(name) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine* clone() const override;

  private:
    QString name_;
};

}  // namespace kavu
