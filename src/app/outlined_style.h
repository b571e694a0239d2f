#pragma once

#include <QProxyStyle>

namespace tarnwick::app {

// Fusion with light outlines on dark windows. Fusion draws outlines darker than the window; there
// an empty check box or text field could hardly be told from its ground. Light windows look as
// Fusion has them.
class OutlinedStyle : public QProxyStyle {
  public:
    OutlinedStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

}  // namespace tarnwick::app
