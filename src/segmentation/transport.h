#pragma once

#include <QTimer>

#include "engine/sound_editor.h"
#include "runtime/failure_path.h"
#include "segmentation/status_line.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Play, pause and stop, and the display during playback. Only the caption of CommandPause records
// whether playback is paused. UI thread.
class Transport {
  public:
    Transport(forms::frmMain& form, const runtime::FailurePath& failure, engine::SoundEditor& EDT,
              StatusLine& status);

  private:
    void connectEvents();
    void CommandPlay_Click();
    void CommandPause_Click();
    void EDT_SoundPlaybackStarted();
    void EDT_SoundPlaybackPaused();
    void playbackOver(const QString& text);
    void TimerPlaybackPos_Timer();
    void showPosition(qint32 position, qint32 limit);
    void followPlayHead(qint32 position);

    forms::frmMain& form_;
    const runtime::FailurePath& failure_;
    engine::SoundEditor& EDT_;
    StatusLine& status_;
    QTimer& TimerPlaybackPos;  // runs from the start to the end of playback, even while paused
};

}  // namespace tarnwick::segmentation
