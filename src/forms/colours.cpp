#include "forms/colours.h"

#include <QLineEdit>
#include <QPalette>

namespace tarnwick::forms {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QColor readableOn(const QColor& ground, const QColor& colour) {
    constexpr int kHalf = 128, kLighterPercent = 140;
    return ground.lightness() < kHalf ? colour.lighter(kLighterPercent) : colour;
}

void setBackground(QLineEdit* box, const QColor& colour) {
    QPalette palette = box->palette();
    palette.setColor(QPalette::Base, colour);
    palette.setColor(QPalette::Text, Qt::black);
    box->setPalette(palette);
}

void clearBackground(QLineEdit* box) { box->setPalette({}); }

}  // namespace tarnwick::forms
