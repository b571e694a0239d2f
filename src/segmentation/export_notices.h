#pragma once

#include <QList>

#include "engine/failure.h"
#include "model/session.h"
#include "platform/notices.h"

// Notices about an export. All paths are full paths; rows count from 1.

namespace tarnwick::segmentation {

// How far a run has come: the last requested row, and the number of rows.
struct ExportPlace {
    qint32 row = 0;
    qint32 rows = 0;
};

// Where the recording lies.
struct RecordingPlace {
    bool inBackupFolder = false;
    bool inProjectFolder = false;
    model::RecordingState state = {};  // goodCopy: empty if that file is not there any more
};

// The topics of the notices below: why an export did not start, that the disk is too small, why a
// run does not go on, and which prompts of a folder are missing.
QString startTopic();
QString spaceTopic();
QString runTopic();
QString promptsTopic(const QString& folder);

platform::Notice nothingToExport(bool listIsChanging);

platform::Notice spaceIsShort(const QString& folder, qint64 neededBytes, qint64 freeBytes);

// `unwritten` must not be empty.
platform::Notice promptsNotWritten(qint32 rows, const QList<engine::Failure>& unwritten,
                                   const RecordingPlace& recording);

// The engine has refused the row, which ends the run.
platform::Notice rowRefused(const ExportPlace& place, const engine::Failure& failure,
                            const RecordingPlace& recording);

// The list has no row for the run to go on with.
platform::Notice exportStandsStill(const ExportPlace& place, bool canProcess,
                                   const RecordingPlace& recording);

// The sound was closed or replaced before the run was finished.
platform::Notice exportGivenUp(const ExportPlace& place, const RecordingPlace& recording);

enum class Source { Recording, Script };
struct Unmoved {
    Source source = Source::Recording;
    QString path;
    QString reason;
    bool isThere = false;  // the file is still in the project folder
    bool backupFolderIsThere = false;
};
platform::Notice sourceNotMoved(const Unmoved& file);

// The script is a document; an export does not move it.
platform::Notice documentStays(const QString& path, bool backupFolderIsThere);

}  // namespace tarnwick::segmentation
