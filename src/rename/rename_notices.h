#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <span>

#include "model/rename_record.h"
#include "platform/notice_words.h"

// The notices of the Rename Wizard. All functions are pure.

namespace tarnwick::rename {

inline const QString kOriginals = u"Original_Files"_qs;  // folder of Rename Per List

// The marks in the list for new names that cannot be given, by name. `reasons`: one for each
// record, empty for a name that can be given (name_check.h).
QHash<QString, QString> marksOfNewNames(std::span<const model::RenameRecord> records,
                                        const QStringList& reasons);
// The notice that counts these names and says at which of them Rename ends. `folder`: full path,
// with or without a separator at its end.
platform::Notice newNamesNotGiven(std::span<const model::RenameRecord> records,
                                  const QStringList& reasons, const QString& folder);

// The mark of a file whose date cannot be changed.
QString markOfProtected(const QString& reason);
// The mark of a file that the run leaves out, because it takes only as many files as the last
// preview of new names had.
QString markOfLeftOut();
// `refused`: the files whose date could not be changed; `leftOut`: bare names of those that the run
// left out; `total`: the number of selected files.
platform::Notice datesNotSet(const QList<platform::NameAndReason>& refused,
                             const QStringList& leftOut, qsizetype total, const QString& folder);

// How far a run of Rename Per List has come.
struct PerListRun {
    enum class Step { Choosing, Opening, Reading, MakingFolder, Moving, Copying };

    Step step = Step::Choosing;
    QString workbook;       // full path
    int row = 0;            // row of the list that is being read, moved or copied, from 1
    QStringList names;      // the two names in that row; empty before the first is moved
    QStringList originals;  // bare names of the files now in Original_Files
};

// A run that ended early. `reason`: words that continue a sentence.
platform::Notice perListEnded(const PerListRun& run, const QString& reason);

// The volume of the listed folder was unmounted. `volume`: full path.
platform::Notice volumeGone(const QString& volume);

}  // namespace tarnwick::rename
