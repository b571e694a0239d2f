#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <span>

#include "model/rename_record.h"
#include "platform/notice_words.h"

// What the Rename Wizard tells the operator without stopping. All functions are pure.

namespace tarnwick::rename {

inline const QString kOriginals = u"Original_Files"_qs;  // folder of Rename Per List

// The marks of the new names that cannot be given, by name. `reasons`: one for each record, empty
// for a name that can be given (name_check.h).
QHash<QString, QString> marksOfNewNames(std::span<const model::RenameRecord> records,
                                        const QStringList& reasons);
// Counts them. `folder`: full path, with or without a separator at its end.
platform::Notice newNamesNotGiven(std::span<const model::RenameRecord> records,
                                  const QStringList& reasons, const QString& folder);

// The mark of a file that re-dating would pass over.
QString markOfProtected(const QString& reason);
// The files that were passed over, out of `total`.
platform::Notice datesNotSet(const QList<platform::NameAndReason>& files, qsizetype total,
                             const QString& folder);

// How far a run of Rename Per List has come.
struct PerListRun {
    enum class Step { Choosing, Opening, Reading, MakingFolder, Moving, Copying };

    Step step = Step::Choosing;
    QString workbook;       // full path
    int row = 0;            // of the list, from 1: the one that is being moved, copied or read
    QStringList originals;  // what lies in Original_Files now, bare names
};

// A run that ended early, because of `reason`.
platform::Notice perListEnded(const PerListRun& run, const QString& reason);

// The volume of the listed folder was unmounted. `volume`: full path.
platform::Notice volumeGone(const QString& volume);

}  // namespace tarnwick::rename
