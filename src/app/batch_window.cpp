#include "app/batch_window.h"

#include "forms/frm_batch_processor.h"
#include "runtime/guarded.h"

namespace tarnwick::app {

BatchWindow::BatchWindow(forms::frmBatchProcessor& form, const Services& services,
                         engine::SoundEditor& EDT, std::function<void()> unload)
    : QObject(&form), form_(form), services_(services), EDT_(EDT), unload_(std::move(unload)) {}

void BatchWindow::load() {
    runtime::guarded(services_.failure, batch::kFormLoad, [&](runtime::Line& line) {
        line(10);
        EDTX_ = services_.createEDTX();
        processor_.emplace(form_, batch::Services{.failure = services_.failure,
                                                  .state = services_.state,
                                                  .database = services_.database,
                                                  .boxes = services_.boxes,
                                                  .cmdlg = services_.batchDialog,
                                                  .files = services_.files,
                                                  .notices = services_.notices,
                                                  .clock = services_.clock,
                                                  .EDT = EDT_,
                                                  .EDTX = *EDTX_,
                                                  .unload = unload_});
        processor_->Form_Load();
    });
}

void BatchWindow::stop() {
    if (processor_) processor_->stop();
}

}  // namespace tarnwick::app
