#pragma once

#include "engine/waveform.h"
#include "widgets/selection_hand.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// What the left button does on a waveform: a click sets the cursor, a drag selects or moves the
// edge of the selection where it began, and both extend the selection on request. Places are in
// logical pixels along an axis, which may differ from call to call, as the view may move during a
// gesture. UI thread.
class WaveformGestures {
  public:
    // Both must outlive this object.
    WaveformGestures(const engine::Waveform& waveform, SelectionHand& hand)
        : waveform_(waveform), hand_(hand) {}

    void press(double x, const TimeAxis& axis, bool extends);
    void move(double x, const TimeAxis& axis);
    void follow(const TimeAxis& axis) { move(lastX_, axis); }  // the view moved under the pointer
    void release(double x, const TimeAxis& axis);
    void drop() { phase_ = Phase::None; }  // ends the gesture without further effect

    bool underway() const { return phase_ != Phase::None; }
    // Whether a press at x would grab an edge of the selection.
    bool holdsAt(double x, const TimeAxis& axis) const { return edgeAt(x, axis).has_value(); }
    // How far a drag is outside the axis, in pixels; negative before its start, 0 within.
    double beyond(const TimeAxis& axis) const;

  private:
    enum class Phase { None, Pressed, Dragging };
    struct Edge {
        qint32 ms;
        qint32 other;
    };

    std::optional<Edge> edgeAt(double x, const TimeAxis& axis) const;
    qint32 positionAt(double x, const TimeAxis& axis) const;

    const engine::Waveform& waveform_;
    SelectionHand& hand_;
    Phase phase_ = Phase::None;
    double pressedX_{};
    double lastX_{};
    double grip_{};       // distance of the press from the grabbed edge
    qint32 pressedMs_{};  // time at the press
    qint32 anchorMs_{};   // the fixed end of the selection
};

}  // namespace tarnwick::widgets
