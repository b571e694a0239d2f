#pragma once

#include <QtGlobal>

// Where times, channels and samples of a sound lie in a picture of it. Pure arithmetic: knows no
// widget. Times are milliseconds from the start of the sound, x grows to the right, y downwards, in
// whatever pixels the caller counts.

namespace tarnwick::widgets {

// A stretch of time that a picture shows. `endMs` lies past `beginMs`.
struct TimeRange {
    double beginMs;
    double endMs;

    double width() const { return endMs - beginMs; }
    friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

// The least stretch that the wheel zooms to, in ms.
inline constexpr double kLeastViewMs = 10.0;

// The range that a sound editor reports, with an end of -1 taken as the end of the sound, and at
// least a millisecond wide so that nothing divides by zero.
TimeRange visibleRange(qint32 beginMs, qint32 endMs, qint32 durationMs);

// The view after its width is multiplied by `factor` with `fixedMs` staying where it is on the
// screen: inside the sound, and not under kLeastViewMs unless the sound itself is shorter. A view
// that grows to nearly the whole sound becomes the whole, for whole milliseconds do not add up.
TimeRange zoomed(TimeRange view, double factor, double fixedMs, double durationMs);

// The view moved by `byMs`, same width. Does not move before the start, nor further past the end
// than it is already.
TimeRange scrolled(TimeRange view, double byMs, double durationMs);

// The view moved no further than it takes to show `ms` with some room around it.
TimeRange showing(TimeRange view, double ms, double durationMs);

// Maps times to the pixels of a strip that begins at `left` and is `width` pixels wide.
class TimeAxis {
  public:
    TimeAxis(TimeRange view, double left, double width);

    double xOf(double ms) const { return left_ + (ms - view_.beginMs) / msPerPixel_; }
    double msOf(double x) const { return view_.beginMs + (x - left_) * msPerPixel_; }
    // The time under x, to the nearest whole millisecond that lies in the sound.
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

// Distance between two marks of a time ruler: the smallest round time (1, 2, 5, 10 … ms, then the
// parts of minutes and hours) that is at least `leastPixels` wide.
qint32 rulerStepMs(double msPerPixel, double leastPixels);
// Distance of the small marks between them: the smallest round time that divides `stepMs` and is at
// least `leastPixels` wide; `stepMs` itself where none is.
qint32 rulerMinorStepMs(qint32 stepMs, double msPerPixel, double leastPixels);

// The strip of one channel, `channel` counting from 0 at the top.
class ChannelBand {
  public:
    // Divides `height` pixels from `top` among `channels` strips, 1 or more.
    ChannelBand(int channel, int channels, int top, int height);

    int top() const { return top_; }
    int bottom() const { return top_ + height_ - 1; }  // last row
    int zeroRow() const { return rowOf(0.0f, 1.0f); }
    // Where a sample (-1.0 to 1.0) lies that is drawn `scale` times its height; stays in the strip.
    double yOf(float sample, float scale) const;
    int rowOf(float sample, float scale) const;

  private:
    int top_;
    int height_;
};

}  // namespace tarnwick::widgets
