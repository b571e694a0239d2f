#pragma once

#include <QRect>

class QWidget;

// The unit of the forms' design. UI thread only.
namespace tarnwick::forms {

// Design units in a logical pixel.
inline constexpr double kTwipsPerPixel = 15.0;

// Twips as logical pixels, rounded to the nearest, halves away from zero.
int px(double twips);

// A place inside the parent in twips. A width or height of 0 takes the control's size hint.
struct Place {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

QRect rectOf(const Place& place);
void put(QWidget* control, const Place& place);

}  // namespace tarnwick::forms
