// How the house paints: the toolkit's plain style without the decorations that differ from
// desktop to desktop.
#pragma once

#include <QProxyStyle>

namespace kavu {

class LookStyle : public QProxyStyle {
    Q_OBJECT
  public:
    LookStyle();
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
};

}  // namespace kavu
