#pragma once

#include <optional>

#include "engine/waveform.h"

namespace tarnwick::widgets {

// What is selected, in ms, an end of -1 taken as the end of the sound.
struct Stretch {
    qint32 begin;
    qint32 end;  // equal to begin: a cursor
};

std::optional<Stretch> selectedStretch(const engine::Waveform& waveform);

// Selects on a waveform, for mouse and keys alike: a selection has an end that stays, the anchor,
// and one that moves, the caret; a cursor is both. What others selected is anchored at its begin.
// Positions in ms; those past the sound are drawn into it. UI thread.
class SelectionHand {
  public:
    // `waveform` outlives this object.
    explicit SelectionHand(engine::Waveform& waveform) : waveform_(waveform) {}

    std::optional<Stretch> stretch() const { return selectedStretch(waveform_); }

    // Only where something is selected.
    qint32 anchor() const;
    qint32 caret() const;
    void extendNearer(qint32 towards);  // the nearer end moves there

    void select(qint32 anchor, qint32 caret);
    void place(qint32 cursor) { select(cursor, cursor); }

  private:
    engine::Waveform& waveform_;
    qint32 anchor_ = 0;  // as long as it is an end of the stretch
};

}  // namespace tarnwick::widgets
