#pragma once

#include <functional>

#include "engine/one_shot_timer.h"
#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "runtime/failure_path.h"
#include "segmentation/edit_log.h"
#include "segmentation/status_line.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// The steps after every change of the sound: update the display, after a load add the pauses at
// both ends one by one, then rebuild the list. Each step waits for an event of the engine and
// continues from a one-shot timer. UI thread.
class ReloadChain {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        model::Session& session;
        engine::SoundEditor& EDT;
        platform::Boxes& boxes;
        platform::Notices& notices;
        StatusLine& status;
        std::function<void()> backUp;     // the action of mnuBackupSourceFile
        std::function<void()> process;    // the action of cbProcess
        std::function<void()> soundGone;  // an edit has left nothing, and the sound is closed
    };

    ReloadChain(forms::frmMain& form, Services services);

    // True from the start of a load or edit until the list is being rebuilt or the chain ends.
    bool soundIsChanging() const { return rebuilding_ || edits_.anyUnderWay(); }

    // Call when an edit is requested: from then on the list is outdated.
    void editAsked() { edits_.asked(EditKind::Operator); }

    // Gives up all operations in progress because the sound is closed or replaced. Updates the
    // display, too, because dropped operations send no event that would.
    void drop();

  private:
    void connectLoading();
    void connectEditing();
    void connectAnalysis();

    void EDT_SoundLoadingDone(qint32 bResult);
    void EDT_SoundEditDone(qint16 nCommand, qint32 bResult);
    void enterEdit(qint16 nCommand, EditKind kind);
    void EDT_WaveAnalysisDone();
    void reportFailure();
    void end();
    void TimerReload_Timer();
    void TimerDisplayWaveform_Timer();
    void endWithoutSound();
    void addPause(const QString& announcement, EditKind pause, const char16_t* nextStage);

    template <class Signal, class Handler>
    void on(Signal signal, Handler handler);

    forms::frmMain& form_;
    Services services_;
    engine::OneShotTimer TimerReload;
    engine::OneShotTimer TimerDisplayWaveform;
    bool rebuilding_ = false;  // the sound has changed, but the list is not updated yet
    EditLog edits_;
    engine::Failure editFailure_;  // of the edit that is about to end
};

}  // namespace tarnwick::segmentation
