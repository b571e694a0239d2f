#pragma once

#include "engine/waveform.h"
#include "widgets/selection_hand.h"
#include "widgets/waveform_navigation.h"

class QKeyEvent;

namespace tarnwick::widgets {

// What the keys do on a waveform:
//
//   Left, Right      move the cursor by ten pixels, with Ctrl by one; Home, End to either end
//   the same, Shift  extend the selection
//   Page Up, Down    scroll by a view
//   Up, +; Down, -   zoom in and out around the selection, the cursor or the centre
//   Ctrl+A, Esc      select all, ask for the selection to be cleared
//
// A step is at least 1 ms, and the view scrolls to keep the moved end visible. UI thread.
class WaveformKeys {
  public:
    // All must outlive this object.
    WaveformKeys(engine::Waveform& waveform, SelectionHand& hand, WaveformNavigation& navigation)
        : waveform_(waveform), hand_(hand), navigation_(navigation) {}

    // Returns false if the key is none of these. `msPerPixel` is that of the present view, in
    // logical pixels.
    bool press(const QKeyEvent& event, double msPerPixel);

  private:
    bool moveCaret(const QKeyEvent& event, double msPerPixel);
    bool moveView(const QKeyEvent& event);

    engine::Waveform& waveform_;
    SelectionHand& hand_;
    WaveformNavigation& navigation_;
};

}  // namespace tarnwick::widgets
