#include "widgets/waveform_colours.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::widgets {

namespace {

constexpr double kGraphic = 3.0;  // least contrast of a graphic
constexpr double kText = 4.5;     // of a text

QColor blend(const QColor& one, const QColor& other, double shareOfOther) {
    const auto mix = [&](int a, int b) { return qRound(a + (b - a) * shareOfOther); };
    return QColor(mix(one.red(), other.red()), mix(one.green(), other.green()),
                  mix(one.blue(), other.blue()));
}

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// `colour`, moved away from the ground towards black or white until `enough` is true of it.
template <class Enough>
QColor movedAway(const QColor& colour, const QColor& ground, Enough enough) {
    const QColor black(Qt::black), white(Qt::white);
    const QColor& far = contrast(black, ground) > contrast(white, ground) ? black : white;
    for (double share = 0.0; share < 1.0; share += 0.1) {
        const QColor moved = blend(colour, far, share);
        if (enough(moved)) return moved;
    }
    return far;
}

// `colour`, moved towards black or white until its contrast with the ground is at least `least`.
QColor legible(const QColor& colour, const QColor& ground, double least) {
    return movedAway(colour, ground,
                     [&](const QColor& moved) { return contrast(moved, ground) >= least; });
}

}  // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

WaveformColours::WaveformColours(const QPalette& palette) {
    // Always those of an active window, so that the picture stays the same in an inactive one.
    const auto role = [&](QPalette::ColorRole which) {
        return palette.color(QPalette::Active, which);
    };
    const QColor base = role(QPalette::Base);
    const QColor text = role(QPalette::Text);
    const QColor accent = role(QPalette::Highlight);
    const bool dark = luminance(base) < luminance(text);

    background = base;
    outside = blend(base, text, 0.10);
    frame = blend(base, text, 0.30);
    focus = legible(accent, base, kGraphic);
    wave = legible(blend(accent, text, 0.20), base, kText);
    zeroLine = blend(base, text, 0.25);
    scaleGround = blend(base, text, 0.04);
    ruler = legible(blend(base, text, 0.70), scaleGround, kText);
    selectionEdge = legible(accent, base, kGraphic);
    cursor = legible(text, base, kText);
    // Red stands out from any accent; a lighter one is needed on a dark ground.
    const QColor red = dark ? QColor(255, 107, 107) : QColor(204, 30, 30);
    playHead = legible(red, base, kGraphic);
    clipped = playHead;

    blending = dark ? QPainter::CompositionMode_Screen : QPainter::CompositionMode_Multiply;
    for (double share = 0.36; share > 0.05; share -= 0.05) {
        selection = blend(dark ? Qt::black : Qt::white, accent, share);
        if (contrast(selected(wave), selected(background)) >= kGraphic) break;
    }
    chooseRowColours(text, accent);
}

void WaveformColours::chooseRowColours(const QColor& text, const QColor& accent) {
    const auto standsOut = [this](const QColor& colour, const QColor& ground) {
        return contrast(colour, ground) >= kGraphic &&
               contrast(selected(colour), selected(ground)) >= kGraphic;
    };
    // The eye tells two dark greys apart less easily than two light ones.
    for (double share = luminance(background) < luminance(text) ? 0.15 : 0.09; share > 0.0;
         share -= 0.02) {
        band = blend(background, text, share);
        if (standsOut(wave, band)) break;
    }
    flagged = legible(QColor(255, 0, 0), scaleGround, kText);
    pressed = legible(accent, scaleGround, kGraphic);
    slip = movedAway(QColor(255, 140, 0), background, [&](const QColor& colour) {
        return standsOut(colour, background) && standsOut(colour, band);
    });
}

QColor WaveformColours::banded(double share) const { return blend(background, band, share); }

QColor WaveformColours::selected(const QColor& colour) const {
    // Rounded as the painter does.
    const auto product = [](int one, int other) { return (one * other + 127) / 255; };
    const auto blended = [&](int under, int over) {
        return blending == QPainter::CompositionMode_Multiply
                   ? product(under, over)
                   : 255 - product(255 - under, 255 - over);
    };
    return QColor(blended(colour.red(), selection.red()),
                  blended(colour.green(), selection.green()),
                  blended(colour.blue(), selection.blue()));
}

}  // namespace tarnwick::widgets
