#include "app/batch_window.h"

#include "forms/frm_batch_processor.h"

namespace tarnwick::app {

BatchWindow::BatchWindow(forms::frmBatchProcessor& form, const Services& services,
                         std::function<void()> unload)
    : QObject(&form),
      EDTX_(services.createEDTX()),
      processor_(form, {.failure = services.failure,
                        .state = services.state,
                        .database = services.database,
                        .boxes = services.boxes,
                        .cmdlg = services.batchDialog,
                        .files = services.files,
                        .clock = services.clock,
                        .EDT = services.EDT,
                        .EDTX = *EDTX_,
                        .unload = std::move(unload)}) {}

}  // namespace tarnwick::app
