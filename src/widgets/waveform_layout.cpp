#include "widgets/waveform_layout.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace tarnwick::widgets {

namespace {

constexpr double kScaleText = 0.9;  // of the font's size

QRect outward(const QRect& rect, double factor, double margin) {
    const auto floor = [&](int edge) { return int(std::floor(edge * factor - margin)); };
    const auto ceil = [&](int edge) { return int(std::ceil(edge * factor + margin)); };
    const QPoint corner(floor(rect.x()), floor(rect.y()));
    return QRect(corner.x(), corner.y(), ceil(rect.x() + rect.width()) - corner.x(),
                 ceil(rect.y() + rect.height()) - corner.y());
}

// The number of device pixels that lie inside the widget at any position of its corner. One more
// might be clipped, and the frame with it.
QSize wholePixels(const QSize& size, qreal ratio) {
    return {static_cast<int>(size.width() * ratio), static_cast<int>(size.height() * ratio)};
}

}  // namespace

WaveformLayout::WaveformLayout(const QSize& size, qreal ratio,
                               const engine::WaveformSettings& settings, const QFont& font,
                               bool hasStrip)
    : ratio_(ratio),
      size_(wholePixels(size, ratio)),
      hair_(std::max(1, int(ratio))),
      frame_(2 * hair_),
      font_(font),
      wave_(QRect(QPoint(0, 0), size_).adjusted(frame_, frame_, -frame_, -frame_)) {
    // In pixels, as the picture has no resolution for a size in points.
    font_.setPixelSize(pixels(QFontInfo(font).pixelSize() * kScaleText));
    const QFontMetrics metrics(font_);
    using engine::WaveformSettings;
    if (settings.byteAt(WaveformSettings::kHideRuler) == 0)
        wave_.setBottom(wave_.bottom() - metrics.height() - pixels(5));
    if (settings.byteAt(WaveformSettings::kHideLevels) == 0)
        wave_.setLeft(wave_.left() + metrics.horizontalAdvance(QStringLiteral("−00")) + pixels(10));
    if (hasStrip) stripHeight_ = metrics.height() + pixels(3);
    wave_.setTop(wave_.top() + stripHeight_);
}

bool WaveformLayout::uneven() const { return ratio_ != std::floor(ratio_); }

int WaveformLayout::pixels(double logical) const {
    return std::max(1, static_cast<int>(std::lround(logical * ratio_)));
}

QRect WaveformLayout::ruler() const {
    return QRect(QPoint(wave_.left(), wave_.bottom() + 1),
                 QPoint(wave_.right(), size_.height() - 1 - frame_));
}

QRect WaveformLayout::levels() const {
    return QRect(QPoint(frame_, wave_.top()), QPoint(wave_.left() - 1, wave_.bottom()));
}

QRect WaveformLayout::strip() const {
    return QRect(wave_.left(), wave_.top() - stripHeight_, wave_.width(), stripHeight_);
}

TimeAxis WaveformLayout::axis(const TimeRange& view) const {
    return {view, double(wave_.left()), double(wave_.width())};
}

TimeAxis WaveformLayout::logicalAxis(const TimeRange& view) const {
    return {view, wave_.left() / ratio_, wave_.width() / ratio_};
}

QRect WaveformLayout::logical(const QRect& device) const {
    // With a fractional ratio the widget's own corner may lie between two device pixels.
    return outward(device, 1.0 / ratio_, uneven() ? 0.5 : 0.0);
}

QRect WaveformLayout::device(const QRect& logical) const {
    return outward(logical, ratio_, uneven() ? 1.0 : 0.0).intersected(QRect(QPoint(0, 0), size_));
}

}  // namespace tarnwick::widgets
