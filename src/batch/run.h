#pragma once

#include <QStringList>
#include <optional>

#include "batch/run_report.h"
#include "runtime/arithmetic.h"

namespace tarnwick::batch {

// State shared by the classes of one Batch Processor window, created with the window. UI thread.
struct Run {
    std::optional<QStringList> vsFiles;  // bare names to process; nullopt until a listing succeeds
    QString vsRawFolder;                 // full path of Raw_Files; empty before that
    qint16 viFileIndex = 0;              // index of the current file, from 0
    QString vsFilterStep;                // the step of the chain a SoundEditDone belongs to
    qint16 nCommand = 0;                 // of the last SoundEditDone, for whichever file
    qint32 nResult = 0;                  // of the last engine operation; a run only traces it
    qint32 vlDuration = 0;               // length of the sound in ms when it was last read
    qint16 viThreshold{};                // silence threshold, 0 to 32767

    qint64 soundMs{};  // estimated length of all the files together
    RunReport report;

    // Both fault with "Subscript out of range" before a listing has succeeded, fileInWork also past
    // its end.
    const QStringList& files() const {
        if (!vsFiles) runtime::subscriptOutOfRange();
        return *vsFiles;
    }
    const QString& fileInWork() const { return runtime::element(files(), viFileIndex); }
};

}  // namespace tarnwick::batch
