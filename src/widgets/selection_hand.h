#pragma once

#include <optional>

#include "engine/waveform.h"

namespace tarnwick::widgets {

// The selection in ms, with an end of -1 replaced by the end of the sound.
struct Stretch {
    qint32 begin;
    qint32 end;  // equal to begin: a cursor
};

std::optional<Stretch> selectedStretch(const engine::Waveform& waveform);

// Makes selections on a waveform for mouse and keys. A selection has a fixed end, the anchor, and a
// moving one, the caret; for a cursor both are the same. Selections made elsewhere have their
// anchor at the beginning. Positions in ms, clamped to the sound. UI thread.
class SelectionHand {
  public:
    // `waveform` must outlive this object.
    explicit SelectionHand(engine::Waveform& waveform) : waveform_(waveform) {}

    std::optional<Stretch> stretch() const { return selectedStretch(waveform_); }

    // Only if something is selected.
    qint32 anchor() const;
    qint32 caret() const;
    void extendNearer(qint32 towards);  // the nearer end moves there

    void select(qint32 anchor, qint32 caret);
    void place(qint32 cursor) { select(cursor, cursor); }

  private:
    engine::Waveform& waveform_;
    qint32 anchor_{};  // valid while it is an end of the stretch
};

}  // namespace tarnwick::widgets
