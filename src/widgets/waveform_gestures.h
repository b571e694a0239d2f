#pragma once

#include "engine/waveform.h"
#include "widgets/selection_hand.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// What the left button does on a waveform: a click sets the cursor, a drag selects or moves the
// edge of the selection that it took hold of, and either extends the selection where it is asked
// to. Fed with places, in logical pixels along an axis that may be another one in each call: the
// view may move under a gesture. UI thread.
class WaveformGestures {
  public:
    // Both outlive this object.
    WaveformGestures(const engine::Waveform& waveform, SelectionHand& hand)
        : waveform_(waveform), hand_(hand) {}

    void press(double x, const TimeAxis& axis, bool extends);
    void move(double x, const TimeAxis& axis);
    void follow(const TimeAxis& axis) { move(lastX_, axis); }  // the view moved under the pointer
    void release(double x, const TimeAxis& axis);
    void drop() { phase_ = Phase::None; }  // the gesture is over and does nothing more

    bool underway() const { return phase_ != Phase::None; }
    // True where a press takes hold of an edge of the selection.
    bool holdsAt(double x, const TimeAxis& axis) const { return edgeAt(x, axis).has_value(); }
    // How far a drag is held beyond the axis, in pixels, less than 0 before its start; 0 within.
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
    double pressedX_ = 0.0;
    double lastX_ = 0.0;
    double grip_ = 0.0;     // from the edge to where it was taken
    qint32 pressedMs_ = 0;  // where the press was
    qint32 anchorMs_ = 0;   // what stays while it moves
};

}  // namespace tarnwick::widgets
