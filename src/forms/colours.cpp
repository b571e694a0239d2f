#include "forms/colours.h"

#include <QLineEdit>
#include <QPalette>

namespace tarnwick::forms {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

void setBackground(QLineEdit* box, const QColor& colour) {
    QPalette palette = box->palette();
    palette.setColor(QPalette::Base, colour);
    palette.setColor(QPalette::Text, Qt::black);
    box->setPalette(palette);
}

void clearBackground(QLineEdit* box) { box->setPalette({}); }

}  // namespace tarnwick::forms
