#pragma once

#include <QtGlobal>

namespace tarnwick::segmentation {

// What the timer behind a finished export finds when it fires.
struct ExportMoment {
    bool runOpen = false;         // a run was started and has neither finished nor been dropped
    float vfExportIndex = 0;      // row asked for last, from 1
    qint32 rowsOfRun = 0;         // rows that the run has to write
    qint32 rowsInList = 0;        // rows that the list holds now
    bool listIsChanging = false;  // the sound changes or is scanned: the list is no guide now
    qint32 exportsPending = 0;    // exports asked for that have not ended
};

enum class ExportStep {
    Nothing,  // no run, or an export is still on its way: its end brings the run back here
    Wait,     // look again: what comes next cannot be told yet
    NextRow,  // ask for the next row
    Finish    // all is written
};

// What follows. Backups end in the middle of a run, too: a run goes on only when nothing is on its
// way any more, and takes no row from a list that does not belong to the sound as it stands.
ExportStep nextExportStep(const ExportMoment& moment);

// Whether a run that is open would wait for ever unless somebody acts: there is no list to take the
// next row from, and nothing is under way that would fill it.
bool isStuck(const ExportMoment& moment);

}  // namespace tarnwick::segmentation
