#pragma once

#include <functional>

#include "engine/sound_editor.h"
#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "platform/open_dialog.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"
#include "settings/settings_database.h"

namespace tarnwick::batch {

// The services available to the Batch Processor's classes. All of them outlive those classes.
struct Services {
    const runtime::FailurePath& failure;
    runtime::ProcessState& state;
    settings::SettingsDatabase& database;
    platform::Boxes& boxes;
    platform::OpenDialog& cmdlg;
    platform::FileSystem& files;
    platform::Notices& notices;
    const platform::Clock& clock;
    engine::SoundEditor& EDT;      // the main window's
    engine::SoundEditor& EDTX;     // this window's own
    std::function<void()> unload;  // closes the window
};

}  // namespace tarnwick::batch
