#include "app/outlined_style.h"

#include <QPainter>
#include <QStyleOption>

#include "forms/colours.h"

namespace tarnwick::app {

namespace {

constexpr int kCorner = 2;

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
    if (!forms::isDark(option->palette)) return;
    const bool focus = option->state & State_HasFocus;
    // A text field with the focus already has an outline in the accent colour.
    const bool framed = element == PE_Frame || element == PE_IndicatorCheckBox ||
                        (element == PE_FrameLineEdit && !focus);
    if (framed || element == PE_IndicatorRadioButton)
        outline(*painter, *option, element == PE_IndicatorRadioButton);
}

void OutlinedStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control != CC_ComboBox || !forms::isDark(option->palette)) return;
    // The same is true for a combo box after a key was used.
    const State accented = State_HasFocus | State_KeyboardFocusChange;
    if ((option->state & accented) != accented) outline(*painter, *option, false);
}

}  // namespace tarnwick::app
