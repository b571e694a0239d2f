#pragma once

#include <QStringList>
#include <optional>

#include "platform/notice_words.h"

// The notices of the files that a run would take.

namespace tarnwick::batch {

// The name of an output without its extension: the source's less four characters, whatever they
// are. Faults if it has fewer.
QString stemOf(const QString& source);

// The bare name of an output; empty where stemOf() faults.
QString outputOf(const QString& source, const QString& extension);

// `files`: those that cannot be loaded; `all`: the number of files of the run; `folder`: where they
// are. None if all files can be loaded.
std::optional<platform::Notice> noticeOfNoSounds(const QList<platform::NameAndReason>& files,
                                                 qsizetype all, const QString& folder);

// Tells which sources would be written under the same name; none if there are none.
std::optional<platform::Notice> noticeOfSharedNames(const QStringList& sources,
                                                    const QString& folder);

// Other files of the folder with the names of outputs, which the run moves to Raw_Files; none
// without such files.
std::optional<platform::Notice> noticeOfForeignFiles(const QStringList& names,
                                                     const QString& folder);

// Browse could not show its dialog.
platform::Notice noticeOfDialog(const QString& reason);

// A folder was chosen after a run, which no further run can follow in the same window. `rawFolder`:
// the empty one that was made there.
platform::Notice noticeOfSpentWindow(const QString& rawFolder);

// None if `needed` bytes fit into `free` or if one of them is not known (below 0).
std::optional<platform::Notice> noticeOfSpace(qint64 needed, qint64 free, const QString& folder);

}  // namespace tarnwick::batch
