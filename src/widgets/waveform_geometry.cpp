#include "widgets/waveform_geometry.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::widgets {

namespace {

constexpr double kNearlyWhole = 0.995;  // of a sound; the rest is a few pixels on a screen
constexpr double kRoom = 0.1;           // of the view, beside a time that is scrolled into it

constexpr qint32 kSecond = 1000, kMinute = 60 * kSecond, kHour = 60 * kMinute;
constexpr qint32 kSteps[] = {1,
                             2,
                             5,
                             10,
                             20,
                             50,
                             100,
                             200,
                             500,
                             kSecond,
                             2 * kSecond,
                             5 * kSecond,
                             10 * kSecond,
                             15 * kSecond,
                             30 * kSecond,
                             kMinute,
                             2 * kMinute,
                             5 * kMinute,
                             10 * kMinute,
                             15 * kMinute,
                             30 * kMinute,
                             kHour,
                             2 * kHour,
                             6 * kHour,
                             24 * kHour};

}  // namespace

TimeRange visibleRange(qint32 beginMs, qint32 endMs, qint32 durationMs) {
    const double begin = beginMs;
    const double end = endMs == -1 ? durationMs : endMs;
    return {begin, std::max(end, begin + 1.0)};
}

TimeRange zoomed(TimeRange view, double factor, double fixedMs, double durationMs) {
    const double least = std::min(kLeastViewMs, durationMs);
    double width = std::clamp(view.width() * factor, least, durationMs);
    if (factor > 1.0 && width > kNearlyWhole * durationMs) width = durationMs;
    const double share = (fixedMs - view.beginMs) / view.width();
    const double begin = std::clamp(fixedMs - share * width, 0.0, durationMs - width);
    return {begin, begin + width};
}

TimeRange scrolled(TimeRange view, double byMs, double durationMs) {
    const double furthest = std::max({view.beginMs, durationMs - view.width(), 0.0});
    const double begin = std::clamp(view.beginMs + byMs, 0.0, furthest);
    return {begin, begin + view.width()};
}

TimeRange showing(TimeRange view, double ms, double durationMs) {
    const double room = kRoom * view.width();
    if (ms < view.beginMs) return scrolled(view, ms - room - view.beginMs, durationMs);
    if (ms > view.endMs) return scrolled(view, ms + room - view.endMs, durationMs);
    return view;
}

TimeAxis::TimeAxis(TimeRange view, double left, double width)
    : view_(view), left_(left), msPerPixel_(view.width() / std::max(width, 1.0)) {}

qint32 TimeAxis::positionAt(double x, qint32 durationMs) const {
    return static_cast<qint32>(std::nearbyint(std::clamp(msOf(x), 0.0, double(durationMs))));
}

qint32 rulerStepMs(double msPerPixel, double leastPixels) {
    return *std::lower_bound(std::begin(kSteps), std::end(kSteps) - 1, msPerPixel * leastPixels);
}

qint32 rulerMinorStepMs(qint32 stepMs, double msPerPixel, double leastPixels) {
    return *std::find_if(std::begin(kSteps), std::end(kSteps), [=](qint32 step) {
        return step == stepMs || (stepMs % step == 0 && step >= msPerPixel * leastPixels);
    });
}

ChannelBand::ChannelBand(int channel, int channels, int top, int height) {
    const int above = height * channel / channels;
    top_ = top + above;
    height_ = height * (channel + 1) / channels - above;
}

double ChannelBand::yOf(float sample, float scale) const {
    const double half = (height_ - 1) / 2.0;
    return top_ + half * (1.0 - std::clamp(double(sample) * scale, -1.0, 1.0));
}

int ChannelBand::rowOf(float sample, float scale) const {
    return static_cast<int>(std::lround(yOf(sample, scale)));
}

}  // namespace tarnwick::widgets
