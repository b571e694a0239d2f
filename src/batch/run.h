#pragma once

#include <QStringList>
#include <optional>

#include "runtime/arithmetic.h"

namespace tarnwick::batch {

// What the subjects of one Batch Processor window share. Made anew with each window. UI thread.
struct Run {
    std::optional<QStringList> vsFiles;  // bare names to process; none before a listing succeeded
    QString vsRawFolder;                 // full path of Raw_Files; empty before that
    qint16 viFileIndex = 0;              // of the file in work
    QString vsFilterStep;                // which step of the chain a SoundEditDone belongs to
    qint16 nCommand = 0;                 // of the last SoundEditDone, whatever file it was for
    qint32 nResult = 0;                  // of the last operation of the engine; traced, not tested
    qint32 vlDuration = 0;               // length of the sound in ms as last asked for
    qint16 viThreshold = 0;              // silence threshold, 0 to 32767

    // "Subscript out of range" before a listing succeeded, and past its end.
    const QStringList& files() const {
        if (!vsFiles) runtime::subscriptOutOfRange();
        return *vsFiles;
    }
    const QString& fileInWork() const { return runtime::element(files(), viFileIndex); }
};

}  // namespace tarnwick::batch
