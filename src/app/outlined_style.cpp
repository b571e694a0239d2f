#include "app/outlined_style.h"

#include <QPainter>
#include <QStyleOption>

#include "app/appearance.h"

namespace tarnwick::app {

namespace {

constexpr int kCorner = 2;

bool wantsOutline(const QStyleOption& option) {
    // What has the focus has an outline of the accent's colour already.
    return isDark(option.palette) && !(option.state & QStyle::State_HasFocus);
}

QColor lineColour(const QStyleOption& option) {
    QColor line = option.palette.color(QPalette::Text);
    line.setAlphaF(option.state & QStyle::State_Enabled ? 0.40F : 0.22F);
    return line;
}

void outline(QPainter& painter, const QStyleOption& option, bool round) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(lineColour(option));
    painter.setBrush(Qt::NoBrush);
    const QRectF line = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    round ? painter.drawEllipse(line) : painter.drawRoundedRect(line, kCorner, kCorner);
    painter.restore();
}

}  // namespace

OutlinedStyle::OutlinedStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void OutlinedStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!wantsOutline(*option)) return;
    const bool framed =
        element == PE_Frame || element == PE_FrameLineEdit || element == PE_IndicatorCheckBox;
    if (framed || element == PE_IndicatorRadioButton)
        outline(*painter, *option, element == PE_IndicatorRadioButton);
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox && wantsOutline(*option)) outline(*painter, *option, false);
}

}  // namespace tarnwick::app
