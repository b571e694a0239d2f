#pragma once

#include <optional>

#include "batch/run_report.h"
#include "platform/notices.h"

// Notices about a run, made from its report.

namespace tarnwick::batch {

// Why a run waits forever.
enum class Halt {
    Load,           // its file could not be loaded
    Search,         // the search for the silences was refused
    Export,         // the output was refused
    Hiss,           // the hiss filter is on, and no event ends that step
    NothingToEdit,  // the tail already has its length, and there was no edit before
    Unexpected,     // an edit ended that is not the one of the present step
    Round           // the search for the tail repeats without end
};

// `reason`: words that continue a sentence; may be empty.
platform::Notice noticeOfHalt(const RunReport& report, Halt halt, const QString& reason);

// The window was closed while the run was under way.
platform::Notice noticeOfClosing(const RunReport& report);

// Another folder was chosen while the run was under way, so the rest of the run uses both folders.
platform::Notice noticeOfOtherFolder(const RunReport& report);

// None if no file has a mishap.
std::optional<platform::Notice> noticeOfEnd(const RunReport& report);

}  // namespace tarnwick::batch
