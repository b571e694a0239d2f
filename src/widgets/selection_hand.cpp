#include "widgets/selection_hand.h"

#include <algorithm>
#include <cstdlib>

namespace tarnwick::widgets {

std::optional<Stretch> selectedStretch(const engine::Waveform& waveform) {
    qint16 available{};
    Stretch stretch{};
    waveform.GetSelection(available, stretch.begin, stretch.end);
    if (available != 1) return std::nullopt;
    if (stretch.end == -1) stretch.end = waveform.duration();
    return stretch;
}

qint32 SelectionHand::anchor() const {
    const Stretch now = stretch().value();
    return anchor_ == now.end ? now.end : now.begin;
}

qint32 SelectionHand::caret() const {
    const Stretch now = stretch().value();
    return anchor_ == now.end ? now.begin : now.end;
}

void SelectionHand::select(qint32 anchor, qint32 caret) {
    const qint32 last = waveform_.duration();
    anchor_ = std::clamp(anchor, 0, last);
    caret = std::clamp(caret, 0, last);
    waveform_.SetSelection(1, std::min(anchor_, caret), std::max(anchor_, caret));
}

void SelectionHand::extendNearer(qint32 towards) {
    const Stretch now = stretch().value();
    const bool endIsNearer = std::abs(towards - now.end) < std::abs(towards - now.begin);
    select(endIsNearer ? now.begin : now.end, towards);
}

}  // namespace tarnwick::widgets
