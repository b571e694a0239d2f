#pragma once

#include <QtGlobal>

// Maps times, channels and samples of a sound to places in a picture of it. Pure arithmetic,
// without widgets. Times are milliseconds from the start of the sound, x grows to the right, y
// downwards, in the caller's pixels, logical or device.

namespace tarnwick::widgets {

// A stretch of time that a picture shows. `endMs` is greater than `beginMs`.
struct TimeRange {
    double beginMs;
    double endMs;

    double width() const { return endMs - beginMs; }
    friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

// The shortest stretch that the wheel zooms to, in ms.
inline constexpr double kLeastViewMs = 10.0;

// The range that a sound editor reports, with an end of -1 replaced by the end of the sound, and at
// least 1 ms wide to avoid division by zero.
TimeRange visibleRange(qint32 beginMs, qint32 endMs, qint32 durationMs);

// The view with its width multiplied by `factor` and `fixedMs` staying at its place on the screen.
// Stays inside the sound and is at least kLeastViewMs wide unless the sound is shorter. A view that
// grows to nearly the whole sound becomes the whole, as rounding to milliseconds leaves a gap.
TimeRange zoomed(TimeRange view, double factor, double fixedMs, double durationMs);

// The view moved by `byMs`, with the same width. Does not move before the start of the sound or
// further past its end than it already is.
TimeRange scrolled(TimeRange view, double byMs, double durationMs);

// The view moved just far enough to show `ms` with some room beside it.
TimeRange showing(TimeRange view, double ms, double durationMs);

// Maps times to the pixels of a strip that begins at `left` and is `width` pixels wide.
class TimeAxis {
  public:
    TimeAxis(TimeRange view, double left, double width);

    double xOf(double ms) const { return left_ + (ms - view_.beginMs) / msPerPixel_; }
    double msOf(double x) const { return view_.beginMs + (x - left_) * msPerPixel_; }
    // The time at x, rounded to whole milliseconds and clamped to the sound.
    qint32 positionAt(double x, qint32 durationMs) const;
    double msPerPixel() const { return msPerPixel_; }
    double left() const { return left_; }
    double right() const { return xOf(view_.endMs); }
    const TimeRange& view() const { return view_; }

  private:
    TimeRange view_;
    double left_;
    double msPerPixel_;
};

// Distance between two marks of a time ruler: the smallest round time (1, 2, 5, 10 … ms, then parts
// of minutes and hours) that is at least `leastPixels` wide.
qint32 rulerStepMs(double msPerPixel, double leastPixels);
// Distance of the small marks between them: the smallest round time that divides `stepMs` and is at
// least `leastPixels` wide; `stepMs` itself if there is none.
qint32 rulerMinorStepMs(qint32 stepMs, double msPerPixel, double leastPixels);

// The strip of one channel, `channel` counting from 0 at the top.
class ChannelBand {
  public:
    // Divides `height` pixels from `top` among `channels` strips, 1 or more.
    ChannelBand(int channel, int channels, int top, int height);

    int top() const { return top_; }
    int bottom() const { return top_ + height_ - 1; }  // last row
    int zeroRow() const { return rowOf(0.0f, 1.0f); }
    // The place of a sample (-1.0 to 1.0) drawn at `scale` times its height; clamped to the strip.
    double yOf(float sample, float scale) const;
    int rowOf(float sample, float scale) const;

  private:
    int top_;
    int height_;
};

}  // namespace tarnwick::widgets
