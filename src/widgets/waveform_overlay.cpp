#include "widgets/waveform_overlay.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "widgets/selection_hand.h"

namespace tarnwick::widgets {

namespace {

// The full-height strip between two columns, including a line on either.
QRect strip(const WaveformLayout& layout, int from, int to) {
    const auto [left, right] = std::minmax(from, to);
    const QRect& wave = layout.wave();
    return QRect(left, wave.top(), right - left + layout.hair(), wave.height()).intersected(wave);
}

}  // namespace

WaveformOverlay::WaveformOverlay(const engine::Waveform& waveform, const WaveformLayout& layout,
                                 const TimeAxis& axis) {
    if (waveform.channels() == 0) return;
    const QRect& wave = layout.wave();
    const int last = wave.right() - layout.hair() + 1;
    // Clamped near the wave, so that a distant edge does not exceed the range of a pixel
    // coordinate. A line at the end of the view is still visible.
    const auto column = [&](double ms) {
        const double x = std::clamp(axis.xOf(ms), wave.left() - 10.0, wave.right() + 10.0);
        const int column = static_cast<int>(std::floor(x));
        return ms <= axis.view().endMs ? std::min(column, last) : column;
    };
    if (const auto stretch = selectedStretch(waveform)) {
        cursor_ = stretch->begin >= stretch->end;
        left_ = column(stretch->begin);
        right_ = cursor_ ? left_ : column(stretch->end);
    }
    const double position = waveform.playPosition();
    if (position >= 0.0) playHead_ = column(position);
}

void WaveformOverlay::paint(QPainter& painter, const WaveformLayout& layout,
                            const WaveformColours& colours) const {
    const auto line = [&](int column, const QColor& colour) {
        painter.fillRect(strip(layout, column, column), colour);
    };
    if (isStretch()) {
        painter.setCompositionMode(colours.blending);
        painter.fillRect(strip(layout, left_, right_), colours.selection);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        line(left_, colours.selectionEdge);
        line(right_, colours.selectionEdge);
    } else if (cursor_) {
        line(left_, colours.cursor);
    }
    if (playHead_ != kNone) line(playHead_, colours.playHead);
}

QRegion WaveformOverlay::selectionRegion(const WaveformLayout& layout) const {
    return left_ == kNone ? QRegion() : QRegion(strip(layout, left_, right_));
}

QRegion WaveformOverlay::difference(const WaveformOverlay& other,
                                    const WaveformLayout& layout) const {
    QRegion region;
    if (isStretch() && other.isStretch()) {
        if (left_ != other.left_) region += strip(layout, left_, other.left_);
        if (right_ != other.right_) region += strip(layout, right_, other.right_);
    } else if (right_ != other.right_ || cursor_ != other.cursor_) {
        region = selectionRegion(layout) + other.selectionRegion(layout);
    }
    if (playHead_ != other.playHead_)
        for (const int column : {playHead_, other.playHead_})
            if (column != kNone) region += strip(layout, column, column);
    return region;
}

}  // namespace tarnwick::widgets
