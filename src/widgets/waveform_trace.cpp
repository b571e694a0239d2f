#include "widgets/waveform_trace.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tarnwick::widgets {

namespace {

constexpr int kLineFrames = 2;       // frames per column below which the wave becomes a line
constexpr int kDotDistance = 4;      // logical pixels between samples needed for dots
constexpr double kDotRadius = 1.75;  // logical pixels
constexpr float kFullScale = 32767.0f / 32768.0f;

}  // namespace

WaveformTrace::WaveformTrace(QPainter& painter, const engine::Waveform& waveform,
                             const WaveformLayout& layout, const WaveformColours& colours,
                             float verticalScale)
    : painter_(painter),
      waveform_(waveform),
      layout_(layout),
      colours_(colours),
      scale_(verticalScale) {}

void WaveformTrace::draw(int channel, const TimeRange& view) {
    const QRect& area = layout_.wave();
    if (area.isEmpty()) return;
    const ChannelBand band(channel, waveform_.channels(), area.top(), area.height());
    if (channel > 0)
        painter_.fillRect(area.left(), band.top(), area.width(), layout_.hair(), colours_.frame);
    painter_.fillRect(area.left(), band.zeroRow(), area.width(), layout_.hair(), colours_.zeroLine);

    const double columnFrames = layout_.axis(view).msPerPixel() * waveform_.sampleRate() / 1000.0;
    columnFrames < kLineFrames ? drawLine(channel, view, band) : drawColumns(channel, view, band);
}

void WaveformTrace::drawColumns(int channel, const TimeRange& view, const ChannelBand& band) {
    const QRect& area = layout_.wave();
    std::vector<engine::WaveColumn> columns(static_cast<std::size_t>(area.width()));
    if (!waveform_.columns(channel, view.beginMs, view.endMs, columns)) return;
    const TimeAxis axis(view, 0.0, double(columns.size()));
    const auto columnOf = [&](double ms) {
        return static_cast<std::size_t>(
            std::clamp(std::ceil(axis.xOf(ms)), 0.0, double(columns.size())));
    };
    columns.resize(columnOf(waveform_.duration()));
    const int hair = layout_.hair(), mark = 2 * hair;
    for (std::size_t i = columnOf(0.0); i < columns.size(); ++i) {
        const int x = area.left() + static_cast<int>(i);
        const int highest = band.rowOf(columns[i].maximum, scale_);
        const int lowest = band.rowOf(columns[i].minimum, scale_);
        int top = highest, bottom = std::max(lowest, highest + hair - 1);
        // Extended to the nearest row of the neighbour, so that a steep wave has no gaps.
        if (i > 0) {
            top = std::min(top, band.rowOf(columns[i - 1].minimum, scale_));
            bottom = std::max(bottom, band.rowOf(columns[i - 1].maximum, scale_));
        }
        painter_.fillRect(x, top, 1, bottom - top + 1, colours_.wave);
        if (columns[i].maximum >= kFullScale)
            painter_.fillRect(x, highest, 1, mark, colours_.clipped);
        if (columns[i].minimum <= -kFullScale)
            painter_.fillRect(x, lowest - mark + 1, 1, mark, colours_.clipped);
    }
}

void WaveformTrace::drawLine(int channel, const TimeRange& view, const ChannelBand& band) {
    const double framesPerMs = waveform_.sampleRate() / 1000.0;
    const double last = std::min(view.endMs, double(waveform_.duration())) * framesPerMs;
    const double first = std::max(std::floor(view.beginMs * framesPerMs) - 1.0, 0.0);
    if (!(last > first)) return;
    std::vector<engine::WaveColumn> frames(static_cast<std::size_t>(std::ceil(last - first)) + 1);
    // Shifted by half a frame, so that each column is one frame despite rounding.
    const double begin = first + 0.5, end = begin + double(frames.size());
    if (!waveform_.columns(channel, begin / framesPerMs, end / framesPerMs, frames)) return;

    const TimeAxis axis = layout_.axis(view);
    QPolygonF line;
    for (std::size_t i = 0; i < frames.size(); ++i)
        line << QPointF(axis.xOf((first + double(i)) / framesPerMs),
                        band.yOf(frames[i].maximum, scale_) + 0.5);
    const QRect& area = layout_.wave();
    painter_.save();
    painter_.setClipRect(area.left(), band.top(), area.width(), band.bottom() - band.top() + 1);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(QPen(colours_.wave, 1.25 * layout_.hair()));
    painter_.drawPolyline(line);
    const bool dots = 1.0 / (axis.msPerPixel() * framesPerMs) >= layout_.pixels(kDotDistance);
    const double radius = dots ? kDotRadius * layout_.ratio() : layout_.hair();
    painter_.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const bool clipped = std::abs(frames[i].maximum) >= kFullScale;
        if (!dots && !clipped) continue;
        painter_.setBrush(clipped ? colours_.clipped : colours_.wave);
        painter_.drawEllipse(line[qsizetype(i)], radius, radius);
    }
    painter_.restore();
}

}  // namespace tarnwick::widgets
