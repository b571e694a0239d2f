#include "widgets/waveform_bands.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace tarnwick::widgets {

namespace {

constexpr int kNumberGap = 6;  // least distance of two numbers, logical pixels
constexpr int kEdgeLine = 2;   // of the pressed stretch, logical pixels
constexpr int kEdgeEnd = 4;    // height of its ends

// The stretches of the view with the places of their numbers, each in the middle of the visible
// part. A number that would be cut off at the edge of the strip is left out.
std::vector<NumberPlace> numberPlaces(const WaveformLayout& layout, const TimeAxis& axis,
                                      Silences silences) {
    const QRect strip = layout.strip();
    const double left = strip.left(), right = strip.right() + 1.0;
    // All digits of this font have the same width, and measuring thousands of texts takes long.
    const double digit = QFontMetrics(layout.font()).horizontalAdvance(QChar(u'0'));
    const StretchRange stretches = stretchesIn(silences, axis.view());
    std::vector<NumberPlace> places;
    for (int number = stretches.first; number <= stretches.last; ++number) {
        const TimeRange times = stretchTimes(silences, number).value();
        const double middle =
            (std::max(axis.xOf(times.beginMs), left) + std::min(axis.xOf(times.endMs), right)) / 2;
        int digits = 1;
        for (int rest = number; rest >= 10; rest /= 10)
            ++digits;
        const double half = digits * digit / 2;
        if (middle - half >= left && middle + half <= right)
            places.push_back({number, middle - half, middle + half});
    }
    return places;
}

void drawNumbers(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                 const TimeAxis& axis, Silences silences, const std::vector<bool>& flagged) {
    const std::vector<NumberPlace> places = numberPlaces(layout, axis, silences);
    const int step = numberStep(places, layout.pixels(kNumberGap));
    const int baseline = layout.strip().top() + QFontMetrics(layout.font()).ascent();
    for (const auto& [number, left, right] : places) {
        if (number % step != 0) continue;
        const auto index = static_cast<std::size_t>(number - 1);
        const bool red = index < flagged.size() && flagged[index];
        painter.setPen(red ? colours.flagged : colours.ruler);
        painter.drawText(QPoint(qRound(left), baseline), QString::number(number));
    }
}

void drawPressedEdge(QPainter& painter, const WaveformLayout& layout,
                     const WaveformColours& colours, const TimeAxis& axis,
                     const TimeRange& stretch) {
    const QRect strip = layout.strip();
    const int line = layout.pixels(kEdgeLine);
    // Clamped near the strip, so that a distant end does not exceed the range of a pixel
    // coordinate and is not seen.
    const auto column = [&](double ms) {
        return int(std::floor(
            std::clamp(axis.xOf(ms), strip.left() - 2.0 * line, strip.right() + 2.0 * line)));
    };
    const int left = column(stretch.beginMs);
    const int width = std::max(column(stretch.endMs) - left, line);
    const int bottom = strip.bottom() + 1, end = layout.pixels(kEdgeEnd);
    const QRect parts[] = {QRect(left, bottom - line, width, line),
                           QRect(left, bottom - end, line, end),
                           QRect(left + width - line, bottom - end, line, end)};
    for (const QRect& part : parts)
        painter.fillRect(part.intersected(strip), colours.pressed);
}

// A mark with a thin border in the colour of the background, which sets it off from the wave.
QImage markImage(const WaveformLayout& layout, const WaveformColours& colours) {
    const int border = layout.hair();
    const double half = layout.pixels(kMarkWidth) / 2.0, height = layout.pixels(kMarkHeight);
    const int halfWidth = static_cast<int>(std::ceil(half)) + 2 * border;
    QImage image(2 * halfWidth + 1, layout.pixels(kMarkHeight) + 3 * border,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const double middle = image.width() / 2.0;
    const QPolygonF triangle{{middle - half, 0}, {middle + half, 0}, {middle, height}};
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.background, 2 * border));
    painter.setBrush(colours.background);
    painter.drawPolygon(triangle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.slip);
    painter.drawPolygon(triangle);
    return image;
}

void drawMarks(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
               const TimeAxis& axis, const std::vector<qint32>& slipsMs) {
    if (slipsMs.empty()) return;
    const QRect& wave = layout.wave();
    const QImage mark = markImage(layout, colours);
    const double beyond = mark.width() * axis.msPerPixel();
    auto slip = std::ranges::lower_bound(slipsMs, axis.view().beginMs - beyond, {},
                                         [](qint32 ms) { return double(ms); });
    painter.save();
    painter.setClipRect(wave);
    int before = wave.left() - 2 * mark.width();
    for (; slip != slipsMs.end() && *slip <= axis.view().endMs + beyond; ++slip) {
        const int column = static_cast<int>(std::floor(axis.xOf(*slip)));
        if (column != before)
            painter.drawImage(QPoint(column - mark.width() / 2, wave.top()), mark);
        before = column;
    }
    painter.restore();
}

}  // namespace

void drawBands(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
               const TimeRange& view, Silences silences) {
    const QRect& wave = layout.wave();
    if (silences.empty() || wave.isEmpty()) return;
    const std::vector<float> shares = coverage(silences, view, wave.width());
    // All rows are the same, so one is enough as a texture; many thin rectangles would take longer.
    QImage row(wave.width(), 1, QImage::Format_RGB32);
    auto* const pixels = reinterpret_cast<QRgb*>(row.scanLine(0));
    std::ranges::transform(shares, pixels,
                           [&](float share) { return colours.banded(share).rgb(); });
    painter.setBrushOrigin(wave.topLeft());
    painter.fillRect(wave, QBrush(row));
    painter.setBrushOrigin(0, 0);
}

void drawRows(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
              const TimeRange& view, Silences silences, const ShownRows& rows) {
    const QRect strip = layout.strip();
    const TimeAxis axis = layout.axis(view);
    painter.fillRect(strip.left(), strip.bottom() + 1 - layout.hair(), strip.width(), layout.hair(),
                     colours.frame);
    drawNumbers(painter, layout, colours, axis, silences, rows.marks.flagged);
    if (const auto stretch = stretchTimes(silences, rows.pressed))
        drawPressedEdge(painter, layout, colours, axis, *stretch);
    drawMarks(painter, layout, colours, axis, rows.marks.slipsMs);
}

}  // namespace tarnwick::widgets
