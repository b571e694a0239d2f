#include "widgets/waveform_colours.h"

namespace tarnwick::widgets {

namespace {

QColor blend(const QColor& one, const QColor& other, double shareOfOther) {
    const auto mix = [&](int a, int b) { return qRound(a + (b - a) * shareOfOther); };
    return QColor(mix(one.red(), other.red()), mix(one.green(), other.green()),
                  mix(one.blue(), other.blue()));
}

}  // namespace

WaveformColours::WaveformColours(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const QColor accent = palette.color(QPalette::Highlight);
    const bool dark = base.lightness() < text.lightness();

    background = base;
    outside = blend(base, text, 0.08);
    frame = blend(base, text, 0.30);
    wave = blend(accent, text, 0.25);
    zeroLine = blend(base, text, 0.25);
    ruler = blend(base, text, 0.65);
    selection = accent;
    selection.setAlpha(dark ? 95 : 70);
    selectionEdge = accent;
    cursor = text;
    // Red stands out from any accent; a lighter one is needed on a dark ground.
    playHead = dark ? QColor(255, 107, 107) : QColor(204, 30, 30);
}

}  // namespace tarnwick::widgets
