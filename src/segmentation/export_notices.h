#pragma once

#include <QList>

#include "engine/failure.h"
#include "platform/notices.h"

// The notices of an export. All paths are full paths, rows count from 1.

namespace tarnwick::segmentation {

// How far a run has come: the last requested row, and the number of rows.
struct ExportPlace {
    qint32 row = 0;
    qint32 rows = 0;
};

platform::Notice nothingToExport(bool listIsChanging);

platform::Notice spaceIsShort(const QString& folder, qint64 neededBytes, qint64 freeBytes);

// `unwritten` is not empty. `recordingIsKept`: in BU_Source_Files, otherwise still in the folder.
platform::Notice promptsNotWritten(qint32 rows, const QList<engine::Failure>& unwritten,
                                   bool recordingIsKept);

// The engine has refused the row, which ends the run.
platform::Notice rowRefused(const ExportPlace& place, const engine::Failure& failure);

// The run waits for a row that the list does not have.
platform::Notice exportStandsStill(const ExportPlace& place, bool canProcess);

// The sound was closed or replaced before the run was finished.
platform::Notice exportGivenUp(const ExportPlace& place);

enum class Source { Recording, Script };
// `isThere`: its file is still in the project folder.
platform::Notice sourceNotMoved(Source source, const QString& path, const QString& reason,
                                bool isThere);

// The script is a document, which is never moved.
platform::Notice documentStays(const QString& path);

}  // namespace tarnwick::segmentation
