#include "forms/logo.h"

#include <QPainter>
#include <algorithm>

namespace tarnwick::forms {

void paintLogo(QPainter& painter, const QRectF& square) {
    const double unit = square.width() / 32.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(square.topLeft(), square.bottomLeft());
    ground.setColorAt(0.0, QColor(38, 110, 140));
    ground.setColorAt(1.0, QColor(18, 58, 84));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(square, 6 * unit, 6 * unit);

    // Two stretches of speech with a pause between them.
    constexpr double kHeights[] = {5, 12, 18, 11, 4, 0, 0, 7, 16, 22, 13, 6};
    double x = square.left() + 4.5 * unit;
    for (const double height : kHeights) {
        const double tall = std::max(height, 1.2) * unit;
        painter.setBrush(height > 0 ? QColor(255, 255, 255) : QColor(242, 177, 52));
        painter.drawRoundedRect(QRectF(x, square.center().y() - tall / 2, 1.3 * unit, tall),
                                0.6 * unit, 0.6 * unit);
        x += 1.96 * unit;
    }
    painter.restore();
}

Logo::Logo(QWidget* parent) : QWidget(parent) {}

void Logo::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double side = std::min(width(), height());
    paintLogo(painter, QRectF((width() - side) / 2, (height() - side) / 2, side, side));
}

}  // namespace tarnwick::forms
