#pragma once

#include <QList>

#include "engine/failure.h"
#include "platform/notices.h"

// Notices about an export. All paths are full paths; rows count from 1.

namespace tarnwick::segmentation {

// How far a run has come: the last requested row, and the number of rows.
struct ExportPlace {
    qint32 row = 0;
    qint32 rows = 0;
};

platform::Notice nothingToExport(bool listIsChanging);

platform::Notice spaceIsShort(const QString& folder, qint64 neededBytes, qint64 freeBytes);

// `unwritten` must not be empty. `recordingIsKept`: the recording is in BU_Source_Files; otherwise
// it is still in the project folder.
platform::Notice promptsNotWritten(qint32 rows, const QList<engine::Failure>& unwritten,
                                   bool recordingIsKept);

// The engine has refused the row, which ends the run.
platform::Notice rowRefused(const ExportPlace& place, const engine::Failure& failure);

// The list has no row for the run to go on with.
platform::Notice exportStandsStill(const ExportPlace& place, bool canProcess);

// The sound was closed or replaced before the run was finished.
platform::Notice exportGivenUp(const ExportPlace& place);

enum class Source { Recording, Script };
// `isThere`: the file is still in the project folder.
platform::Notice sourceNotMoved(Source source, const QString& path, const QString& reason,
                                bool isThere);

// The script is a document; an export does not move it.
platform::Notice documentStays(const QString& path);

}  // namespace tarnwick::segmentation
