#pragma once

#include <array>
#include <functional>

#include "engine/one_shot_timer.h"
#include "engine/sound_editor.h"
#include "model/limits.h"
#include "model/silence_record.h"
#include "platform/clock.h"
#include "platform/notices.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"
#include "settings/settings_database.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

using SilenceArray = std::array<model::SilenceRecord, model::kSilenceSlots>;

// Finds the pauses of the recording and stores them in the array and in the settings database. The
// procedures are unguarded. UI thread.
class SilenceDetection {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        const runtime::ProcessState& state;
        engine::SoundEditor& EDT;
        settings::SettingsDatabase& database;
        const platform::Clock& clock;
        platform::Notices& notices;
        std::function<void()> align;
    };

    SilenceDetection(forms::frmMain& form, Services services);

    // Empties the list and starts a scan. Also runs as the last step after every sound change.
    void cbProcess_Click();

    // Valid from the end of a scan until the next click; zeros after the last silence found.
    const SilenceArray& silences() const { return Silences; }

    // True from the start of a scan until the list is filled again.
    bool scanning() const { return scanning_; }

    // Gives up a scan because the sound is closed or replaced.
    void drop();

  private:
    void startScan();
    qint16 showThreshold(const QString& decibels);
    void EDTTimerSilencePosDetectionDone_Timer();
    void storeSilences(qint32 count);
    void serviceWait() const;

    forms::frmMain& form_;
    Services services_;
    engine::OneShotTimer EDTTimerSilencePosDetectionDone;
    SilenceArray Silences{};
    qint32 nResult = 0;
    bool scanning_ = false;
};

}  // namespace tarnwick::segmentation
