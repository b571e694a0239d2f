#pragma once

#include <optional>

#include "batch/run_report.h"
#include "platform/notices.h"

// The notices of a run under way, made from its report.

namespace tarnwick::batch {

// Why a run waits for good.
enum class Halt {
    Load,           // its file could not be loaded
    Search,         // the search for the silences was refused
    Export,         // the output was refused
    Hiss,           // the filter that does not exist
    NothingToEdit,  // the tail is right, and no edit came before it
    Unexpected,     // an edit ended that does not belong to the step
    Round           // the search for the tail starts again and again
};

// `reason`: in words that continue a sentence; may be empty.
platform::Notice noticeOfHalt(const RunReport& report, Halt halt, const QString& reason);

// The window was closed while the run was under way.
platform::Notice noticeOfClosing(const RunReport& report);

// Another folder was chosen while the run was under way; the files of both are mixed up now.
platform::Notice noticeOfOtherFolder(const RunReport& report);

// None if all is well with every file.
std::optional<platform::Notice> noticeOfEnd(const RunReport& report);

}  // namespace tarnwick::batch
