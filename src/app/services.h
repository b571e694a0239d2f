#pragma once

#include <functional>
#include <memory>

#include "app/notice_board.h"
#include "engine/sound_editor.h"
#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/open_dialog.h"
#include "platform/opener.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"
#include "settings/settings_database.h"

namespace tarnwick::app {

// The services available to all classes of the program. All of them outlive the windows.
struct Services {
    runtime::FailurePath& failure;
    runtime::ProcessState& state;
    settings::SettingsDatabase& database;
    platform::Boxes& boxes;
    platform::OpenDialog& cmdlg;         // the main window's
    platform::OpenDialog& batchDialog;   // the Batch Processor's
    platform::OpenDialog& renameDialog;  // the Rename Wizard's
    platform::FileSystem& files;
    NoticeBoard& notices;
    platform::Opener& opener;
    platform::Clock& clock;
    // Make the sound editors of the main window and of the Batch Processor, as those load. They can
    // exchange sounds.
    std::function<std::unique_ptr<engine::SoundEditor>()> createEDT, createEDTX;
    // Shows a sentence as a notification of the desktop if it has such a service.
    std::function<void(const QString& sentence)> notifyDesktop;
    std::function<void()> endProcess;
};

}  // namespace tarnwick::app
