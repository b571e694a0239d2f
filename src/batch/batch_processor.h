#pragma once

#include "batch/batch_settings.h"
#include "batch/level_boxes.h"
#include "batch/output_encoding.h"
#include "batch/pipeline.h"
#include "batch/project_files.h"
#include "batch/run.h"
#include "batch/run_checks.h"
#include "batch/run_watch.h"
#include "batch/service_prompt.h"
#include "batch/services.h"
#include "batch/trace.h"

namespace tarnwick::batch {

// The log label of the window's load.
inline constexpr char16_t kFormLoad[] = u"frmBatchProcessor.Form_Load: ";

// The behaviour of one Batch Processor window: its classes and their shared state. UI thread.
class BatchProcessor {
  public:
    // `form` must outlive this object.
    BatchProcessor(forms::frmBatchProcessor& form, Services services);

    // Prepares the window before it is shown: editor, settings, the project folder's files.
    // Guarded.
    void Form_Load();

    // Call when the window closes: stops the timers and blocks the events of EDTX. A file being
    // written is completed, or its target is left unchanged, when EDTX is deleted.
    void stop();

  private:
    forms::frmBatchProcessor& form_;
    const Services services_;
    Run run_;
    Trace trace_;
    LevelBoxes levels_;
    BatchSettings settings_;
    ProjectFiles files_;
    OutputEncoding output_;
    RunChecks checks_;
    RunWatch watch_;
    Pipeline pipeline_;
    ServicePrompt prompt_;
};

}  // namespace tarnwick::batch
