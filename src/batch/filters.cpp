#include "batch/filters.h"

#include "batch/level_boxes.h"
#include "batch/trace.h"
#include "runtime/guarded.h"

namespace tarnwick::batch {

using runtime::Line;

Filters::Filters(Run& run, const Services& services, Trace& trace, const LevelBoxes& levels)
    : run_(run), services_(services), trace_(trace), levels_(levels) {}

void Filters::EDTX_Normalize() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_Normalize: ", [&](Line& line) {
        line(10);
        trace_.add(u"Enter Normalization"_qs);
        line(20);
        const float percent = levels_.normPercent();
        line(30);
        run_.nResult = services_.EDTX.effects().Normalize(0, -1, percent, 100.0F, 100.0F);
        line(40);
        trace_.add(u"nResult for Normalization: %1"_qs.arg(run_.nResult));
    });
}

void Filters::Hiss_Filter() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Hiss_Filter: ", [](Line&) {});
}

}  // namespace tarnwick::batch
