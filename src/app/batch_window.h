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

// What works in a Batch Processor's window: its own sound editor and the behaviour. A child of the
// window, made and gone with it. UI thread.
class BatchWindow : public QObject {
  public:
    // `EDT`: the main window's sound editor. `unload` closes the window.
    BatchWindow(forms::frmBatchProcessor& form, const Services& services, engine::SoundEditor& EDT,
                std::function<void()> unload);

    // Makes the sound editor, and finds the settings and the project folder's files. Guarded.
    void load();
    // The window closes: what still runs in it leads to nothing more.
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
