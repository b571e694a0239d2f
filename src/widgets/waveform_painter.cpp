#include "widgets/waveform_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "widgets/waveform_scales.h"
#include "widgets/waveform_trace.h"

namespace tarnwick::widgets {

namespace {

void fillOutside(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                 const TimeAxis& axis, qint32 durationMs) {
    const QRect& wave = layout.wave();
    const double end = std::clamp(std::ceil(axis.xOf(durationMs)), double(wave.left()),
                                  double(wave.left() + wave.width()));
    painter.fillRect(QRect(QPoint(static_cast<int>(end), wave.top()), wave.bottomRight()),
                     colours.outside);
}

}  // namespace

TimeRange shownRange(const engine::Waveform& waveform) {
    qint32 begin = 0, end = -1;
    waveform.GetDisplayRange(begin, end);
    return visibleRange(begin, end, waveform.duration());
}

QImage renderWaveform(const engine::Waveform& waveform, const WaveformLayout& layout,
                      const WaveformColours& colours, const ShownRows& rows) {
    QImage image(layout.size(), QImage::Format_RGB32);
    image.fill(colours.scaleGround);
    const TimeRange view = shownRange(waveform);
    engine::WaveformSettings settings;
    waveform.GetSettings(settings);
    const float scale = settings.verticalScale();

    QPainter painter(&image);
    painter.setFont(layout.font());
    painter.fillRect(layout.wave(), colours.background);
    const bool banded = !layout.strip().isEmpty();
    if (banded) drawBands(painter, layout, colours, view, waveform.silences());
    fillOutside(painter, layout, colours, layout.axis(view), waveform.duration());
    if (waveform.channels() == 0) return image;
    WaveformTrace trace(painter, waveform, layout, colours, scale);
    for (int channel = 0; channel < waveform.channels(); ++channel)
        trace.draw(channel, view);
    drawTimeRuler(painter, layout, colours, view, waveform.duration());
    drawLevelScale(painter, layout, colours, waveform.channels(), scale);
    if (banded) drawRows(painter, layout, colours, view, waveform.silences(), rows);
    return image;
}

}  // namespace tarnwick::widgets
