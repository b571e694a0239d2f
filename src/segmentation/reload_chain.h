#pragma once

#include <functional>

#include "engine/one_shot_timer.h"
#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "runtime/failure_path.h"
#include "segmentation/status_line.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// What follows every change of the sound: its display is brought up to date, after a load the
// pauses at both ends are added one by one, and then the list is rebuilt. Each step waits for an
// event of the engine and goes on from a one-shot timer. UI thread.
class ReloadChain {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        model::Session& session;
        engine::SoundEditor& EDT;
        platform::Boxes& boxes;
        StatusLine& status;
        std::function<void()> backUp;   // the action of mnuBackupSourceFile
        std::function<void()> process;  // the action of cbProcess
    };

    ReloadChain(forms::frmMain& form, Services services);

    // From the start of a load or edit until the list's rebuilding takes over or the chain ends.
    bool soundIsChanging() const { return rebuilding_ || editsUnderWay_ > 0; }

    // An edit was asked for: from here on the list is no guide.
    void editAsked() { ++editsUnderWay_; }

    // Gives up what is under way, because the sound is closed or replaced, and shows so: of what is
    // dropped no event comes that would.
    void drop();

  private:
    void connectLoading();
    void connectEditing();
    void connectAnalysis();

    void EDT_SoundLoadingDone(qint32 bResult);
    void EDT_SoundEditDone(qint32 bResult);
    void EDT_WaveAnalysisDone();
    void reportFailure();
    void end();
    void TimerReload_Timer();
    void TimerDisplayWaveform_Timer();
    void addPause(const QString& announcement, qint32 position, const char16_t* nextStage);

    template <class Signal, class Handler>
    void on(Signal signal, Handler handler);

    forms::frmMain& form_;
    Services services_;
    engine::OneShotTimer TimerReload;
    engine::OneShotTimer TimerDisplayWaveform;
    bool rebuilding_ = false;  // the sound has changed, the list has not yet
    int editsUnderWay_ = 0;    // asked for and not yet done
};

}  // namespace tarnwick::segmentation
