#include "forms/units.h"

#include <QWidget>
#include <cmath>

namespace tarnwick::forms {

int px(double twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }

QRect rectOf(const Place& place) {
    return {px(place.left), px(place.top), px(place.width), px(place.height)};
}

void put(QWidget* control, const Place& place) {
    QRect rect = rectOf(place);
    const QSize hint = control->sizeHint();
    if (rect.width() == 0) {
        rect.setWidth(hint.width());
    }
    if (rect.height() == 0) {
        rect.setHeight(hint.height());
    }
    control->setGeometry(rect);
}

}  // namespace tarnwick::forms
