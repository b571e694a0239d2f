#pragma once

#include <QObject>
#include <memory>

#include "app/services.h"
#include "batch/batch_processor.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::app {

// The contents of a Batch Processor window: its own sound editor and the behaviour. A child of the
// window, created and deleted with it. UI thread.
class BatchWindow : public QObject {
  public:
    BatchWindow(forms::frmBatchProcessor& form, const Services& services,
                std::function<void()> unload);

    // Finds the project folder's files and the settings. Guarded.
    void load() { processor_.Form_Load(); }
    // Call when the window closes: stops all processing in it.
    void stop() { processor_.stop(); }

  private:
    const std::unique_ptr<engine::SoundEditor> EDTX_;
    batch::BatchProcessor processor_;
};

}  // namespace tarnwick::app
