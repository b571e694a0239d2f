#include "widgets/waveform_painter.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "widgets/waveform_colours.h"

namespace tarnwick::widgets {

namespace {

constexpr int kRulerHeight = 20;
constexpr int kLevelsWidth = 36;
constexpr int kLeastMarkDistance = 80;

QRect deviceRect(const QRect& rect, qreal ratio) {
    const QPointF topLeft = QPointF(rect.topLeft()) * ratio;
    const QPointF corner = QPointF(rect.x() + rect.width(), rect.y() + rect.height()) * ratio;
    return QRect(topLeft.toPoint(), corner.toPoint() - QPoint(1, 1));
}

}  // namespace

QString rulerText(qint32 ms, qint32 stepMs) {
    const qint32 hours = ms / 3600000, minutes = ms / 60000 % 60, seconds = ms / 1000 % 60;
    QString text = hours > 0 ? QStringLiteral("%1:%2").arg(hours).arg(minutes, 2, 10, QChar(u'0'))
                             : QString::number(minutes);
    text += QStringLiteral(":%1").arg(seconds, 2, 10, QChar(u'0'));
    if (stepMs < 1000) text += QStringLiteral(".%1").arg(ms % 1000, 3, 10, QChar(u'0'));
    return text;
}

WaveformPainter::WaveformPainter(const engine::Waveform& waveform, const Surface& surface)
    : waveform_(waveform), surface_(surface), area_(QPoint(0, 0), surface.size) {
    qint32 begin = 0, end = -1;
    waveform_.GetDisplayRange(begin, end);
    view_ = visibleRange(begin, end, waveform_.duration());
    waveform_.GetSettings(settings_);
    if (settings_.byteAt(engine::WaveformSettings::kShowRuler) != 0)
        area_.setBottom(area_.bottom() - kRulerHeight);
    if (settings_.byteAt(engine::WaveformSettings::kShowLevels) != 0) area_.setLeft(kLevelsWidth);
}

TimeAxis WaveformPainter::axis() const {
    return {view_, double(area_.left()), double(area_.width())};
}

QImage WaveformPainter::render() const {
    const WaveformColours colours(surface_.palette);
    QImage image(surface_.size * surface_.ratio, QImage::Format_RGB32);
    image.fill(colours.background);

    // The wave goes in by device pixels: a column of sound is a column of the screen at any
    // density.
    QPainter painter(&image);
    const QRect area = deviceRect(area_, surface_.ratio);
    const TimeAxis deviceAxis(view_, area.left(), area.width());
    const int end = static_cast<int>(
        std::ceil(std::clamp(deviceAxis.xOf(waveform_.duration()), -1.0, area.right() + 1.0)));
    if (end <= area.right())
        painter.fillRect(QRect(QPoint(std::max(end, area.left()), area.top()), area.bottomRight()),
                         colours.outside);
    for (int channel = 0; channel < waveform_.channels(); ++channel)
        drawChannel(painter, channel, area, colours);

    painter.scale(surface_.ratio, surface_.ratio);
    painter.setFont(surface_.font);
    if (waveform_.channels() > 0) {
        if (settings_.byteAt(engine::WaveformSettings::kShowRuler) != 0)
            drawRuler(painter, colours);
        if (settings_.byteAt(engine::WaveformSettings::kShowLevels) != 0)
            drawLevels(painter, colours);
    }
    painter.end();
    image.setDevicePixelRatio(surface_.ratio);
    return image;
}

void WaveformPainter::drawChannel(QPainter& painter, int channel, const QRect& deviceArea,
                                  const WaveformColours& colours) const {
    if (deviceArea.isEmpty()) return;
    const ChannelBand band(channel, waveform_.channels(), deviceArea.top(), deviceArea.height());
    if (channel > 0)
        painter.fillRect(deviceArea.left(), band.top(), deviceArea.width(), 1, colours.frame);
    painter.fillRect(deviceArea.left(), band.zeroRow(), deviceArea.width(), 1, colours.zeroLine);

    std::vector<engine::WaveColumn> columns(static_cast<std::size_t>(deviceArea.width()));
    if (!waveform_.columns(channel, view_.beginMs, view_.endMs, columns)) return;
    const TimeAxis axis(view_, 0.0, double(columns.size()));
    const auto pastEnd =
        std::clamp(std::ceil(axis.xOf(waveform_.duration())), 0.0, double(columns.size()));
    columns.resize(static_cast<std::size_t>(pastEnd));
    const float scale = settings_.verticalScale();
    for (std::size_t i = std::size_t(std::clamp(axis.xOf(0.0), 0.0, pastEnd)); i < columns.size();
         ++i) {
        // A column reaches to its neighbour's nearest row, so that a steep wave stays one line.
        int top = band.rowOf(columns[i].maximum, scale);
        int bottom = band.rowOf(columns[i].minimum, scale);
        if (i > 0) {
            top = std::min(top, band.rowOf(columns[i - 1].minimum, scale));
            bottom = std::max(bottom, band.rowOf(columns[i - 1].maximum, scale));
        }
        painter.fillRect(deviceArea.left() + static_cast<int>(i), top, 1, bottom - top + 1,
                         colours.wave);
    }
}

void WaveformPainter::drawRuler(QPainter& painter, const WaveformColours& colours) const {
    painter.setPen(colours.ruler);
    const int top = area_.bottom() + 1;
    painter.drawLine(area_.left(), top, area_.right(), top);
    const TimeAxis time = axis();
    const qint32 step = rulerStepMs(time.msPerPixel(), kLeastMarkDistance);
    const double last = std::min(view_.endMs, double(waveform_.duration()));
    for (double ms = std::ceil(std::max(view_.beginMs, 0.0) / step) * step; ms <= last;
         ms += step) {
        const int x = static_cast<int>(std::lround(time.xOf(ms)));
        painter.drawLine(x, top, x, top + 5);
        painter.drawText(QRect(x + 4, top + 2, kLeastMarkDistance, kRulerHeight - 2),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         rulerText(static_cast<qint32>(ms), step));
    }
}

void WaveformPainter::drawLevels(QPainter& painter, const WaveformColours& colours) const {
    painter.setPen(colours.ruler);
    painter.drawLine(area_.left() - 1, area_.top(), area_.left() - 1, area_.bottom());
    const float scale = settings_.verticalScale();
    if (!(scale > 0.0f)) return;
    const int line = QFontMetrics(surface_.font).height();
    for (int channel = 0; channel < waveform_.channels(); ++channel) {
        const ChannelBand band(channel, waveform_.channels(), area_.top(), area_.height());
        for (const int quarter : {-2, -1, 0, 1, 2}) {
            const float level = quarter / 2.0f / scale;
            const int row = band.rowOf(level, scale);
            const int top = std::clamp(row - line / 2, band.top(), band.bottom() - line + 1);
            painter.drawText(QRect(0, top, kLevelsWidth - 8, line),
                             Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(std::abs(100.0 * level), 'g', 3));
            painter.drawLine(kLevelsWidth - 5, row, kLevelsWidth - 2, row);
        }
    }
}

}  // namespace tarnwick::widgets
