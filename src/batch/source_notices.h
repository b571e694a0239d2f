#pragma once

#include <QStringList>
#include <optional>

#include "platform/notice_words.h"

// Notices about the files of a run before it starts.

namespace tarnwick::batch {

// The name of an output without its extension: the name of the source without its last four
// characters. Faults if it has fewer.
QString stemOf(const QString& source);

// The bare name of an output; empty where stemOf() faults.
QString outputOf(const QString& source, const QString& extension);

// `files`: those that cannot be loaded; `all`: the number of files of the run; `folder`: where they
// are. None if all files can be loaded.
std::optional<platform::Notice> noticeOfNoSounds(const QList<platform::NameAndReason>& files,
                                                 qsizetype all, const QString& folder);

// Sources that would be written under the same name; none if all names differ.
std::optional<platform::Notice> noticeOfSharedNames(const QStringList& sources,
                                                    const QString& folder);

// Other files that have the name of an output. The run moves them to Raw_Files. None if `names` is
// empty.
std::optional<platform::Notice> noticeOfForeignFiles(const QStringList& names,
                                                     const QString& folder);

// The dialog of Browse failed.
platform::Notice noticeOfDialog(const QString& reason);

// A folder was chosen after a run, but a window can be used for only one run. `rawFolder`: the
// empty Raw_Files that was made in the folder.
platform::Notice noticeOfSpentWindow(const QString& rawFolder);

// None if `needed` bytes fit into `free`, or if either is unknown (negative).
std::optional<platform::Notice> noticeOfSpace(qint64 needed, qint64 free, const QString& folder);

}  // namespace tarnwick::batch
