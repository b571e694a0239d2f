#pragma once

#include "engine/sound_editor.h"
#include "runtime/failure_path.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// The labels and buttons around the waveform: selection, visible range, zoom and vertical scale. UI
// thread.
class WaveformControls {
  public:
    WaveformControls(forms::frmMain& form, const runtime::FailurePath& failure,
                     engine::SoundEditor& EDT);

    // Sets the waveform settings and the slider to their initial values.
    void setUp();

  private:
    void connectEvents();
    void connectZoom();
    void EDT_WaveSelectionChanged(qint16 available, qint32 begin, qint32 end);
    void EDT_WaveRangeChanged(qint32 begin, qint32 end);
    void EDT_WaveMouseNotification(qint16 kind);
    void slWAVFormScale_Scroll();
    qint16 scale() const;
    void showScale() const;

    forms::frmMain& form_;
    const runtime::FailurePath& failure_;
    engine::SoundEditor& EDT_;
};

}  // namespace tarnwick::segmentation
