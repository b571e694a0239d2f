#pragma once

#include <QObject>
#include <memory>

#include "app/services.h"
#include "batch/batch_processor.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::app {

// What works in a Batch Processor's window: its own sound editor and the behaviour. A child of the
// window, made and gone with it. UI thread.
class BatchWindow : public QObject {
  public:
    BatchWindow(forms::frmBatchProcessor& form, const Services& services,
                std::function<void()> unload);

    // Finds the project folder's files and the settings. Guarded.
    void load() { processor_.Form_Load(); }
    // The window closes: what still runs in it leads to nothing more.
    void stop() { processor_.stop(); }

  private:
    const std::unique_ptr<engine::SoundEditor> EDTX_;
    batch::BatchProcessor processor_;
};

}  // namespace tarnwick::app
