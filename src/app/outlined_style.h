#pragma once

#include <QProxyStyle>

namespace tarnwick::app {

// Fusion with light outlines on dark windows. Fusion draws outlines darker than the window, so on a
// dark window an empty check box or text field would hardly be visible. Light windows are not
// changed.
class OutlinedStyle : public QProxyStyle {
  public:
    OutlinedStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

}  // namespace tarnwick::app
