#pragma once

#include <functional>

#include "engine/sound_editor.h"
#include "model/session.h"
#include "runtime/failure_path.h"
#include "segmentation/selection.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// The operator's edits on the waveform. Each command starts one edit in the engine and returns; the
// reload chain rebuilds the list when the edit has ended. UI thread.
class Editing {
  public:
    Editing(forms::frmMain& form, const runtime::FailurePath& failure, model::Session& session,
            engine::SoundEditor& EDT, std::function<void()> editAsked);

  private:
    // Stops playback and saves the visible range, which is restored after the rebuild. Returns the
    // selection.
    Selection beginEdit();

    void undo();
    void cbDeleteSelection_Click();
    void cbFlattenSelection_Click();
    void cbInsertSilence_Click();

    forms::frmMain& form_;
    model::Session& session_;
    engine::SoundEditor& EDT_;
    std::function<void()> editAsked_;  // called before an edit: the list becomes outdated
};

}  // namespace tarnwick::segmentation
