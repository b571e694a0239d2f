#include "segmentation/export_run.h"

namespace tarnwick::segmentation {

ExportStep nextExportStep(const ExportMoment& moment) {
    if (!moment.runOpen) return ExportStep::Nothing;
    if (moment.vfExportIndex < static_cast<float>(moment.rowsOfRun)) {
        const bool rowIsThere = moment.vfExportIndex < static_cast<float>(moment.rowsInList);
        return rowIsThere && !moment.listIsChanging ? ExportStep::NextRow : ExportStep::Wait;
    }
    // The event of an export that is still on its way will bring the run back here.
    const bool allWritten = moment.exportsPending == 0 && moment.lastWasPrompt;
    return allWritten ? ExportStep::Finish : ExportStep::Nothing;
}

}  // namespace tarnwick::segmentation
