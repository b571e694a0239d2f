#include "rename/rename_notices.h"

#include <algorithm>

#include "model/limits.h"
#include "platform/file_system.h"
#include "platform/notice_words.h"
#include "runtime/file_names.h"

namespace tarnwick::rename {

namespace {

using platform::bareName;
using platform::counted;
using platform::NameAndReason;

constexpr qsizetype kFew = 3;

// The items with their names shortened for display.
QString listedReasons(QList<NameAndReason> items) {
    for (NameAndReason& item : items)
        item.name = platform::shownName(item.name);
    return platform::listedByReason(items, kFew);
}

QString listedNames(QStringList names) {
    std::transform(names.begin(), names.end(), names.begin(), platform::shownName);
    return platform::listed(names, kFew);
}

// Takes the folder out of full paths in a reason, and a full stop from its end. Shortens the names.
QString withBareNames(QString reason, const QString& folder, const QStringList& names) {
    if (folder != u"/")
        reason.remove(platform::pathIn(runtime::readableFileName(folder), QString()));
    for (const QString& name : names)
        if (const QString shown = platform::shownName(name); shown.contains(u'…'))
            reason.replace(runtime::readableFileName(name), shown);
    return reason.endsWith(u'.') ? reason.chopped(1) : reason;
}

QString whyLeftOut() {
    return u"no more files are re-dated than the last preview of new names had"_qs;
}

// How the files get their dates that could not be changed, and those that were left out.
QString wayToDate(qsizetype refused, qsizetype leftOut) {
    QString allow;
    if (refused > 0)
        allow = refused == 1 ? u"Allow writing to the file that refused it, as its owner. "_qs
                             : u"Allow writing to the files that refused it, as their owner. "_qs;
    const QString select =
        refused + leftOut == 1 ? u"Select this file alone, "_qs : u"Select these files alone, "_qs;
    return allow + select +
           (leftOut > 0 ? u"press the upper Preview, then Cancel if it shows new names, and "
                          u"re-date again."_qs
                        : u"and re-date again."_qs);
}

// The notice of a run that ended before the first file was moved.
platform::Notice perListNotStarted(const PerListRun& run, const QString& reason) {
    using Step = PerListRun::Step;
    const QString list = bareName(run.workbook);
    const QString what = u"Rename Per List did not start: %1."_qs;
    const QString safe = u"No file was moved or renamed."_qs;
    if (run.step == Step::Reading && run.row > model::kRenameSlots)
        return {what.arg(
                    u"%1 has more than %2 rows"_qs.arg(list, QString::number(model::kRenameSlots))),
                {run.workbook},
                safe,
                u"Split the list, and move Original_Files elsewhere between two runs."_qs};
    if (run.step == Step::MakingFolder)
        return {what.arg(u"the folder Original_Files could not be made: "_qs + reason),
                {platform::pathIn(platform::folderOf(run.workbook), kOriginals)},
                safe,
                u"Make sure that the folder of %1 can be written to and that no file in it is "
                u"called Original_Files, and start again."_qs.arg(list)};
    if (run.step == Step::Choosing) return {what.arg(reason), {}, safe, u"Start again."_qs};
    return {what.arg(u"%1 could not be read: %2"_qs.arg(list, reason)),
            {run.workbook},
            safe,
            u"Save the list once more as a workbook and start again."_qs};
}

// What has to change before the next run. The reason begins with the description of a Fault.
QString correction(int row, const QString& reason) {
    if (reason.startsWith(u"disk full")) return u"free some space"_qs;
    const QStringView faultsOfTheRow[] = {u"bad file name", u"file not found", u"a folder has",
                                          u"file already exists", u"file name too long"};
    return std::ranges::any_of(faultsOfTheRow,
                               [&](QStringView fault) { return reason.startsWith(fault); })
               ? u"correct row %1"_qs.arg(row)
               : u"remove the cause"_qs;
}

QString wayBack(const PerListRun& run, const QString& reason) {
    const QString again = correction(run.row, reason) + u" and start again."_qs;
    if (run.originals.isEmpty()) return u"Remove the folder Original_Files, "_qs + again;
    const QString back =
        u"move the files in Original_Files back to the folder of the list, remove "
        u"Original_Files, "_qs +
        again;
    return run.step == PerListRun::Step::Copying && run.row > 1
               ? u"To undo this, remove the renamed copies, "_qs + back
               : u"To undo this, "_qs + back;
}

QString renamedBefore(const PerListRun& run) {
    const int rows = run.step == PerListRun::Step::Copying ? run.row - 1 : 0;
    if (rows == 0) return u"No file was renamed."_qs;
    return rows == 1 ? u"The row before it was renamed."_qs
                     : u"The %1 rows before it were renamed."_qs.arg(rows);
}

}  // namespace

QHash<QString, QString> marksOfNewNames(std::span<const model::RenameRecord> records,
                                        const QStringList& reasons) {
    QHash<QString, QString> marks;
    for (qsizetype i = 0; i < reasons.size(); ++i)
        if (!reasons[i].isEmpty())
            marks[records[static_cast<std::size_t>(i)].Renamed] =
                u"This name cannot be given: %1."_qs.arg(reasons[i]);
    return marks;
}

platform::Notice newNamesNotGiven(std::span<const model::RenameRecord> records,
                                  const QStringList& reasons, const QString& folder) {
    QList<NameAndReason> refused;
    QStringList files;
    for (qsizetype i = 0; i < reasons.size(); ++i) {
        if (reasons[i].isEmpty()) continue;
        const auto& [original, renamed] = records[static_cast<std::size_t>(i)];
        refused << NameAndReason{renamed.isEmpty() ? u"the name for "_qs + original : renamed,
                                 reasons[i]};
        files << original;
    }
    return {u"%1 of %2 cannot be given: %3."_qs.arg(
                QString::number(refused.size()),
                counted(reasons.size(), u"new name"_qs, u"new names"_qs), listedReasons(refused)),
            platform::pathsIn(folder, files), u"No file has been renamed yet."_qs,
            u"Choose Cancel and change the rules or the selection: Rename would end the program "
            u"at the new name of %1."_qs.arg(platform::shownName(files.value(0)))};
}

QString markOfProtected(const QString& reason) {
    return u"The date of this file cannot be changed: %1."_qs.arg(reason);
}

QString markOfLeftOut() {
    return u"The date of this file will not be changed: %1. Press the upper Preview with all files "
           u"first."_qs.arg(whyLeftOut());
}

platform::Notice datesNotSet(const QList<NameAndReason>& refused, const QStringList& leftOut,
                             qsizetype total, const QString& folder) {
    QList<NameAndReason> files = refused;
    for (const QString& name : leftOut)
        files << NameAndReason{name, whyLeftOut()};
    QStringList names;
    for (const NameAndReason& file : std::as_const(files))
        names << file.name;
    const qsizetype done = total - files.size();
    return {u"%1 of %2 kept the old date: %3."_qs.arg(QString::number(files.size()),
                                                      counted(total, u"file"_qs, u"files"_qs),
                                                      listedReasons(files)),
            platform::pathsIn(folder, names),
            done == 0
                ? u"No date was changed."_qs
                : counted(done, u"file has its new date."_qs, u"files have their new dates."_qs),
            wayToDate(refused.size(), leftOut.size())};
}

platform::Notice perListEnded(const PerListRun& run, const QString& fullReason) {
    const QString folder = platform::folderOf(run.workbook);
    const QString reason = withBareNames(fullReason, folder, run.names);
    if (run.step < PerListRun::Step::Moving) return perListNotStarted(run, reason);
    const QString count = counted(run.originals.size(), u"file is"_qs, u"files are"_qs);
    return {u"Rename Per List ended at row %1 of %2: %3. %4"_qs.arg(
                QString::number(run.row), bareName(run.workbook), reason, renamedBefore(run)),
            platform::pathsIn(platform::pathIn(folder, kOriginals), run.originals),
            run.originals.isEmpty()
                ? u"All files are where they were; Original_Files is empty."_qs
                : u"%1 in Original_Files: %2."_qs.arg(count, listedNames(run.originals)),
            wayBack(run, reason)};
}

platform::Notice volumeGone(const QString& volume) {
    return {u"The drive %1 is no longer there."_qs.arg(runtime::readableFileName(volume)),
            {volume},
            u"The Rename Wizard shows Home now and has changed no file."_qs,
            u"Connect the drive again and choose it in the list of drives."_qs};
}

}  // namespace tarnwick::rename
