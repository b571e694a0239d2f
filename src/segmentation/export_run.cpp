#include "segmentation/export_run.h"

namespace tarnwick::segmentation {

ExportStep nextExportStep(const ExportMoment& moment) {
    if (!moment.runOpen || moment.exportsPending > 0) return ExportStep::Nothing;
    if (moment.listIsChanging) return ExportStep::Wait;
    if (moment.vfExportIndex >= static_cast<float>(moment.rowsOfRun)) return ExportStep::Finish;
    const bool rowIsThere = moment.vfExportIndex < static_cast<float>(moment.rowsInList);
    return rowIsThere ? ExportStep::NextRow : ExportStep::Wait;
}

bool isStuck(const ExportMoment& moment) {
    return nextExportStep(moment) == ExportStep::Wait && !moment.listIsChanging;
}

}  // namespace tarnwick::segmentation
