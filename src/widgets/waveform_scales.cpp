#include "widgets/waveform_scales.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tarnwick::widgets {

namespace {

constexpr double kTextGap = 12.0;  // logical pixels between two texts of the ruler
constexpr double kMinorGap = 7.0;  // between two of its marks
constexpr int kLevels[] = {0, 3, 6, 9, 12, 18, 24, 30, 36, 42, 48};  // dB under full scale

qint32 textStepMs(const WaveformLayout& layout, const TimeAxis& time, qint32 lastMs) {
    const QFontMetrics metrics(layout.font());
    const auto needed = [&](qint32 step) {
        // All digits of this font are of one width.
        return metrics.horizontalAdvance(rulerText(lastMs, step)) + layout.pixels(kTextGap);
    };
    const qint32 fine = rulerStepMs(time.msPerPixel(), needed(1));
    return fine < 1000 ? fine : std::max(rulerStepMs(time.msPerPixel(), needed(1000)), 1000);
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

void drawTimeRuler(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                   const TimeRange& view, qint32 durationMs) {
    const QRect place = layout.ruler();
    if (place.isEmpty()) return;
    painter.fillRect(place, colours.scaleGround);
    painter.fillRect(place.left(), place.top(), place.width(), layout.hair(), colours.frame);

    const TimeAxis time = layout.axis(view);
    const double last = std::min(view.endMs, double(durationMs));
    const qint32 step = textStepMs(layout, time, static_cast<qint32>(std::max(last, 0.0)));
    const qint32 minor = rulerMinorStepMs(step, time.msPerPixel(), layout.pixels(kMinorGap));
    const QFontMetrics metrics(layout.font());
    painter.setPen(colours.ruler);
    const double begin = std::max(view.beginMs, 0.0);
    for (double ms = std::ceil(begin / minor) * minor; ms <= last; ms += minor) {
        const auto x = static_cast<int>(std::floor(time.xOf(ms)));
        if (x > place.right()) break;
        const bool major = std::fmod(ms, step) == 0.0;
        painter.fillRect(x, place.top(), layout.hair(),
                         major ? place.height() / 2 : place.height() / 4, colours.ruler);
        if (!major) continue;
        const QString text = rulerText(static_cast<qint32>(ms), step);
        const QRect box(x + layout.pixels(4), place.top() + layout.pixels(2),
                        metrics.horizontalAdvance(text), metrics.height());
        if (box.right() <= place.right()) painter.drawText(box, Qt::AlignLeft, text);
    }
}

void drawLevelScale(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                    int channels, float verticalScale) {
    const QRect place = layout.levels();
    if (place.isEmpty()) return;
    painter.fillRect(place, colours.scaleGround);
    painter.fillRect(place.right() - layout.hair() + 1, place.top(), layout.hair(), place.height(),
                     colours.frame);
    painter.setPen(colours.ruler);
    const int line = QFontMetrics(layout.font()).ascent();
    const int right = place.right() - layout.pixels(6);
    for (int channel = 0; channel < channels; ++channel) {
        const ChannelBand band(channel, channels, place.top(), place.height());
        std::vector<int> taken;  // middle rows of texts
        const auto mark = [&](int row, const QString& text) {
            const int top =
                std::clamp(row - line / 2, band.top() + layout.hair(), band.bottom() - line + 1);
            const bool meets = std::ranges::any_of(
                taken, [&](int other) { return std::abs(other - top) < line + layout.pixels(2); });
            if (meets || line > band.bottom() - band.top()) return;
            taken.push_back(top);
            painter.fillRect(right + layout.pixels(2), row, layout.pixels(4), layout.hair(),
                             colours.ruler);
            painter.drawText(QRect(place.left(), top - line, right - place.left(), 3 * line),
                             Qt::AlignRight | Qt::AlignVCenter, text);
        };
        mark(band.zeroRow(), QStringLiteral("−∞"));
        for (const int decibels : kLevels) {
            const auto level = static_cast<float>(std::pow(10.0, -decibels / 20.0));
            if (!(level * verticalScale <= 1.001f)) continue;
            const QString text =
                decibels == 0 ? QStringLiteral("0") : QStringLiteral("−%1").arg(decibels);
            mark(band.rowOf(level, verticalScale), text);
            mark(band.rowOf(-level, verticalScale), text);
        }
    }
}

}  // namespace tarnwick::widgets
