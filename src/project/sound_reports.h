#pragma once

#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/notices.h"
#include "project/load_notices.h"
#include "runtime/failure_path.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// Tells the operator when the sound editor could not load, save, read or play the recording. Only
// listens and does not change any operation. UI thread.
class SoundReports {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        model::Session& session;  // its `recording` is kept up to date
        engine::SoundEditor& EDT;
        platform::Notices& notices;
    };

    SoundReports(forms::frmMain& form, Services services);

    // Call before a recording is loaded.
    void loadStarts();

    // Call when the load of the file has begun: tells if the file is cut off.
    void checkLength(const QString& path) const;

    // Call before each save. `copy`: full path of the copy that was made of the file. No earlier
    // export may be pending, unless the sound is closed before the save ends.
    void saveStarts(const QString& copy);

    // Whether a save of the loaded sound has succeeded.
    bool savedBefore() const { return recording_.savedBefore; }

    // Call at each SoundExportDone.
    void exportEnded(bool written);

  private:
    void failed(const engine::Failure& failure);
    void edited();
    void fileWasDamaged();
    void tellOfChange(engine::Operation operation);
    void tellOfSilence();
    bool endsSave(const engine::Failure& failure);

    forms::frmMain& form_;
    Services services_;
    RecordingOnDisk recording_;
    QString copyBefore_;          // goodCopy before the present save
    bool editedSince_ = false;    // an edit has ended after the present save has started
    bool saving_ = false;         // the next export that ends is a save
    bool changeTold_ = false;     // sourceChanged() was told for the loaded sound
    bool toldOfSilence_ = false;  // playsInSilence() was told in this session
};

}  // namespace tarnwick::project
