#pragma once

#include <optional>

#include "engine/waveform.h"

namespace tarnwick::widgets {

// Makes selections on a waveform for mouse and keys. A selection has a fixed end, the anchor, and a
// moving one, the caret; for a cursor both are the same. Selections made elsewhere have their
// anchor at the beginning. Positions in ms, clamped to the sound. UI thread.
class SelectionHand {
  public:
    struct Stretch {
        qint32 begin;
        qint32 end;  // equal to begin: a cursor
    };

    // `waveform` must outlive this object.
    explicit SelectionHand(engine::Waveform& waveform) : waveform_(waveform) {}

    std::optional<Stretch> stretch() const;
    qint32 anchor() const;  // only if there is a stretch
    qint32 caret() const;

    void select(qint32 anchor, qint32 caret);
    void place(qint32 cursor) { select(cursor, cursor); }
    void extendNearer(qint32 towards);  // moves the nearer end there

  private:
    engine::Waveform& waveform_;
    qint32 anchor_ = 0;  // valid while it is an end of the stretch
};

}  // namespace tarnwick::widgets
