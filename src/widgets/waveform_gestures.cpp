#include "widgets/waveform_gestures.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::widgets {

namespace {

constexpr int kDragDistance = 3;  // pixels after which a press becomes a drag
constexpr int kEdgeReach = 4;     // pixels around an edge in which it can be grabbed

}  // namespace

std::optional<WaveformGestures::Edge> WaveformGestures::edgeAt(double x,
                                                               const TimeAxis& axis) const {
    const auto stretch = hand_.stretch();
    if (!stretch || stretch->begin >= stretch->end) return std::nullopt;
    const double toBegin = std::abs(x - axis.xOf(stretch->begin));
    const double toEnd = std::abs(x - axis.xOf(stretch->end));
    if (std::min(toBegin, toEnd) > kEdgeReach) return std::nullopt;
    return toBegin < toEnd ? Edge{stretch->begin, stretch->end}
                           : Edge{stretch->end, stretch->begin};
}

qint32 WaveformGestures::positionAt(double x, const TimeAxis& axis) const {
    return axis.positionAt(std::clamp(x, axis.left(), axis.right()), waveform_.duration());
}

void WaveformGestures::press(double x, const TimeAxis& axis, bool extends) {
    phase_ = Phase::Pressed;
    pressedX_ = lastX_ = x;
    grip_ = 0.0;
    pressedMs_ = anchorMs_ = positionAt(x, axis);
    if (extends && hand_.stretch()) {
        hand_.extendNearer(pressedMs_);
        anchorMs_ = hand_.anchor();
        phase_ = Phase::Dragging;
    } else if (const auto edge = edgeAt(x, axis)) {
        anchorMs_ = edge->other;
        grip_ = x - axis.xOf(edge->ms);
    }
}

void WaveformGestures::move(double x, const TimeAxis& axis) {
    if (phase_ == Phase::None) return;
    lastX_ = x;
    if (phase_ == Phase::Pressed && std::abs(x - pressedX_) < kDragDistance) return;
    phase_ = Phase::Dragging;
    hand_.select(anchorMs_, positionAt(x - grip_, axis));
}

void WaveformGestures::release(double x, const TimeAxis& axis) {
    if (phase_ == Phase::Pressed)
        hand_.place(pressedMs_);
    else
        move(x, axis);
    drop();
}

double WaveformGestures::beyond(const TimeAxis& axis) const {
    if (phase_ != Phase::Dragging) return 0.0;
    return lastX_ - std::clamp(lastX_, axis.left(), axis.right());
}

}  // namespace tarnwick::widgets
