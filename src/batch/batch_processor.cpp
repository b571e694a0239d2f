#include "batch/batch_processor.h"

#include "forms/frm_batch_processor.h"
#include "runtime/guarded.h"

namespace tarnwick::batch {

namespace {

// The option for setting the silence at the head and tail of sounds.
constexpr qint16 kEditorOption = 100;

}  // namespace

BatchProcessor::BatchProcessor(forms::frmBatchProcessor& form, Services services)
    : form_(form),
      services_(std::move(services)),
      trace_(*form.txbDebug),
      levels_(form, services_),
      settings_(form, services_, levels_),
      files_(form, run_, services_),
      output_(form, run_, services_, trace_),
      checks_(form, run_, services_, output_),
      watch_(run_, services_),
      pipeline_(form, run_, services_, trace_, {levels_, settings_, output_, checks_, watch_}),
      prompt_(form, services_) {}

void BatchProcessor::Form_Load() {
    runtime::guarded(services_.failure, kFormLoad, [&](runtime::Line& line) {
        line(10);
        services_.EDTX.InitEditor(reinterpret_cast<quintptr>(&form_));
        line(20);
        services_.EDTX.SetEditorOption(kEditorOption);
        line(30);
        settings_.Save_LoadProcessor_Data();
        files_.open(line, 40);
        checks_.choices();
    });
}

void BatchProcessor::stop() {
    watch_.closed();
    services_.EDTX.blockSignals(true);
    for (QTimer* timer : form_.findChildren<QTimer*>())
        timer->stop();
}

}  // namespace tarnwick::batch
