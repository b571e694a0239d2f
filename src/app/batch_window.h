#pragma once

#include <QObject>
#include <memory>
#include <optional>

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
    // `EDT`: the main window's sound editor. `unload` closes the window.
    BatchWindow(forms::frmBatchProcessor& form, const Services& services, engine::SoundEditor& EDT,
                std::function<void()> unload);

    // Makes the sound editor and finds the project folder's files and the settings. Guarded.
    void load();
    // Call when the window closes: stops all processing in it.
    void stop();

  private:
    forms::frmBatchProcessor& form_;
    const Services& services_;
    engine::SoundEditor& EDT_;
    std::function<void()> unload_;
    std::unique_ptr<engine::SoundEditor> EDTX_;
    std::optional<batch::BatchProcessor> processor_;
};

}  // namespace tarnwick::app
