#include "widgets/waveform_scales.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tarnwick::widgets {

namespace {

constexpr int kTextGap = 18;  // logical pixels between two texts of the ruler
constexpr int kMinorGap = 7;  // between two of its marks
constexpr int kLevels[] = {0, 3, 6, 9, 12, 18, 24, 30, 36, 42, 48};  // dB below full scale

qint32 textStepMs(const WaveformLayout& layout, const TimeAxis& time, qint32 lastMs) {
    const QFontMetrics metrics(layout.font());
    const auto needed = [&](qint32 step) {
        // Measures only the last time, as all digits of this font have the same width.
        return metrics.horizontalAdvance(rulerText(lastMs, step)) + layout.pixels(kTextGap);
    };
    const qint32 fine = rulerStepMs(time.msPerPixel(), needed(1));
    return fine < 1000 ? fine : std::max(rulerStepMs(time.msPerPixel(), needed(1000)), 1000);
}

// The marks of one channel, symmetric about the zero line.
class LevelMarks {
  public:
    LevelMarks(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
               const ChannelBand& band, float verticalScale)
        : painter_(painter),
          layout_(layout),
          colours_(colours),
          band_(band),
          scale_(verticalScale),
          line_(QFontMetrics(layout.font()).ascent()) {}

    void draw() {
        if (line_ > band_.bottom() - band_.top()) return;
        // Without a minus, which at this size would touch the sign and seem to strike it out.
        put({0.0f, 0.0f}, QStringLiteral("∞"));
        for (const int decibels : kLevels) {
            const auto level = static_cast<float>(std::pow(10.0, -decibels / 20.0));
            if (level * scale_ <= 1.001f)
                put({level, -level},
                    decibels == 0 ? QStringLiteral("0") : QStringLiteral("−%1").arg(decibels));
        }
    }

  private:
    int topOf(float level) const {
        return std::clamp(band_.rowOf(level, scale_) - line_ / 2, band_.top() + layout_.hair(),
                          band_.bottom() - line_ + 1);
    }
    bool fits(float level) const {
        return std::ranges::none_of(taken_, [&](int other) {
            return std::abs(other - topOf(level)) < line_ + layout_.pixels(2);
        });
    }
    void put(std::pair<float, float> levels, const QString& text) {
        if (!fits(levels.first) || !fits(levels.second)) return;
        const QRect place = layout_.levels();
        const int right = place.right() - layout_.pixels(6);
        for (const float level : {levels.first, levels.second}) {
            const int top = topOf(level);
            taken_.push_back(top);
            painter_.fillRect(right + layout_.pixels(2), band_.rowOf(level, scale_),
                              layout_.pixels(4), layout_.hair(), colours_.ruler);
            painter_.drawText(QRect(place.left(), top - line_, right - place.left(), 3 * line_),
                              Qt::AlignRight | Qt::AlignVCenter, text);
        }
    }

    QPainter& painter_;
    const WaveformLayout& layout_;
    const WaveformColours& colours_;
    ChannelBand band_;
    float scale_;
    int line_;
    std::vector<int> taken_;  // first rows of texts
};

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
        // At the bottom, clear of the small marks.
        const QRect box(x + layout.pixels(4), place.bottom() + 1 - metrics.height(),
                        metrics.horizontalAdvance(text), metrics.height());
        if (box.right() <= place.right()) painter.drawText(box, Qt::AlignLeft, text);
    }
}

void drawLevelScale(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                    int channels, float verticalScale) {
    const QRect place = layout.levels();
    if (place.isEmpty()) return;
    painter.fillRect(place.right() - layout.hair() + 1, place.top(), layout.hair(), place.height(),
                     colours.frame);
    painter.setPen(colours.ruler);
    for (int channel = 0; channel < channels; ++channel)
        LevelMarks(painter, layout, colours,
                   ChannelBand(channel, channels, place.top(), place.height()), verticalScale)
            .draw();
}

}  // namespace tarnwick::widgets
