#pragma once

#include <QtGlobal>

namespace tarnwick::segmentation {

// The state of an export run when the timer after a finished export fires.
struct ExportMoment {
    bool runOpen = false;         // a run was started and has neither finished nor been dropped
    float vfExportIndex = 0;      // last requested row, from 1
    qint32 rowsOfRun = 0;         // rows that the run has to write
    qint32 rowsInList = 0;        // rows in the list, or kept from it if it is empty
    bool listIsChanging = false;  // the sound is changing or being scanned: the list is not valid
    qint32 exportsPending = 0;    // requested exports that have not ended
};

enum class ExportStep {
    Nothing,  // no run, or an export is pending, whose end leads back here
    Wait,     // not known yet: check again later
    NextRow,  // export the next row
    Finish    // all rows are written
};

// The next step of a run. Backups can also end during a run, so a run continues only when no export
// is pending. It never takes a row from a list that does not match the current sound.
ExportStep nextExportStep(const ExportMoment& moment);

// Whether an open run would wait forever unless the operator acts: the list does not have the next
// row, and nothing is in progress that would fill it.
bool isStuck(const ExportMoment& moment);

}  // namespace tarnwick::segmentation
