#pragma once

#include <functional>

#include "documents/workbook.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "platform/open_dialog.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

namespace tarnwick::rename {

// The services available to the Rename Wizard's classes. All of them outlive those classes. None is
// about sounds or settings, because the wizard renames files of any kind.
struct Services {
    const runtime::FailurePath& failure;
    runtime::ProcessState& state;
    platform::Boxes& boxes;
    platform::OpenDialog& cmdlg;
    platform::FileSystem& files;
    platform::Notices& notices;
    std::function<documents::Workbook(const QString& path)> openWorkbook;
};

}  // namespace tarnwick::rename
