#include "rename/rename_notices.h"

#include "model/limits.h"
#include "platform/file_system.h"
#include "runtime/file_names.h"

namespace tarnwick::rename {

namespace {

// A name as a sentence shows it: readable, and shortened in the middle.
QString shown(const QString& name) {
    constexpr qsizetype kMost = 60, kEnd = 20;
    const QString readable = runtime::readableFileName(name);
    return readable.size() <= kMost ? readable
                                    : readable.left(kMost - kEnd) + u'…' + readable.right(kEnd);
}

// "a", "a and b", "a, b and c", "a, b, c and 37 more".
QString listed(QStringList items) {
    constexpr qsizetype kMost = 3;
    if (items.size() > kMost + 1)
        items = items.first(kMost) << u"%1 more"_qs.arg(items.size() - kMost);
    if (items.size() < 2) return items.join(QString());
    const QString last = items.takeLast();
    return items.join(u", ") + u" and "_qs + last;
}

QString listedNames(QStringList names) {
    std::transform(names.begin(), names.end(), names.begin(), shown);
    return listed(names);
}

QString listedReasons(const QList<Refused>& refused) {
    QStringList items;
    for (const auto& [name, reason] : refused)
        items << shown(name) + u" ("_qs + reason + u')';
    items.removeDuplicates();
    return listed(items);
}

QString counted(qsizetype count, const QString& one, const QString& more) {
    return u"%1 %2"_qs.arg(count).arg(count == 1 ? one : more);
}

QString bareName(const QString& path) { return path.section(u'/', -1); }

QStringList pathsIn(const QString& folder, const QList<Refused>& files) {
    QStringList paths;
    for (const Refused& file : files)
        paths << platform::pathIn(folder, file.name);
    return paths;
}

// Of a reason that may be a sentence and may name files of the folder by their full paths.
QString withBareNames(QString reason, const QString& folder) {
    if (folder != u"/")
        reason.remove(platform::pathIn(runtime::readableFileName(folder), QString()));
    return reason.endsWith(u'.') ? reason.chopped(1) : reason;
}

// Before the first file was moved.
platform::Notice perListNotStarted(const PerListRun& run, const QString& reason) {
    using Step = PerListRun::Step;
    const QString list = shown(bareName(run.workbook));
    const QString what = u"Rename Per List did not start: %1."_qs;
    const QString safe = u"No file was moved or renamed."_qs;
    if (run.step == Step::Reading && run.row > model::kRenameSlots)
        return {what.arg(u"%1 has more than %2 rows"_qs.arg(list).arg(model::kRenameSlots)),
                {run.workbook},
                safe,
                u"Divide the list, and move Original_Files to another place between two runs."_qs};
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

QString wayBack(const PerListRun& run) {
    const QString again = u"correct row %1 and start again."_qs.arg(run.row);
    if (run.originals.isEmpty()) return u"Remove the folder Original_Files, "_qs + again;
    const QString back =
        u"move the files in Original_Files back to the folder of the list, remove Original_Files, "_qs +
        again;
    return run.step == PerListRun::Step::Copying && run.row > 1
               ? u"To get back, remove the renamed copies, "_qs + back
               : u"To get back, "_qs + back;
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
    QList<Refused> refused, files;
    for (qsizetype i = 0; i < reasons.size(); ++i) {
        if (reasons[i].isEmpty()) continue;
        const auto& [original, renamed] = records[static_cast<std::size_t>(i)];
        refused << Refused{renamed.isEmpty() ? u"the one of "_qs + original : renamed, reasons[i]};
        files << Refused{original, reasons[i]};
    }
    return {
        u"%1 of %2 cannot be given: %3."_qs.arg(refused.size())
            .arg(counted(reasons.size(), u"new name"_qs, u"new names"_qs), listedReasons(refused)),
        pathsIn(folder, files), u"No file has been renamed yet."_qs,
        u"Choose Cancel and change the rules or the selection: Rename would end the program "
        u"at the first of these names."_qs};
}

QString markOfProtected(const QString& reason) {
    return u"The date of this file cannot be changed: %1."_qs.arg(reason);
}

platform::Notice datesNotSet(const QList<Refused>& files, qsizetype total, const QString& folder) {
    const qsizetype done = total - files.size();
    return {u"%1 of %2 kept the old date: %3."_qs.arg(files.size())
                .arg(counted(total, u"file"_qs, u"files"_qs), listedReasons(files)),
            pathsIn(folder, files),
            done == 0
                ? u"No date was changed."_qs
                : counted(done, u"file has its new date."_qs, u"files have their new dates."_qs),
            u"Allow writing to the files named, as their owner, and re-date these files alone."_qs};
}

platform::Notice perListEnded(const PerListRun& run, const QString& fullReason) {
    const QString folder = platform::folderOf(run.workbook);
    const QString reason = withBareNames(fullReason, folder);
    if (run.step < PerListRun::Step::Moving) return perListNotStarted(run, reason);
    QStringList paths;
    for (const QString& name : run.originals)
        paths << platform::pathIn(platform::pathIn(folder, kOriginals), name);
    const QString count = counted(run.originals.size(), u"file lies"_qs, u"files lie"_qs);
    return {
        u"Rename Per List ended at row %1 of %2: %3. %4"_qs.arg(
            QString::number(run.row), shown(bareName(run.workbook)), reason, renamedBefore(run)),
        paths,
        run.originals.isEmpty()
            ? u"All files are where they were; Original_Files is empty."_qs
            : u"%1 in Original_Files: %2."_qs.arg(count, listedNames(run.originals)),
        wayBack(run)};
}

platform::Notice volumeGone(const QString& volume) {
    return {u"The drive %1 is not there any more."_qs.arg(runtime::readableFileName(volume)),
            {volume},
            u"The Rename Wizard shows Home now and has changed no file."_qs,
            u"Connect the drive again and choose it in the list of drives."_qs};
}

QString sentencesOf(const platform::Notice& notice) {
    QStringList sentences{notice.what, notice.safe, notice.remedy};
    sentences.removeAll(QString());
    return sentences.join(u' ');
}

}  // namespace tarnwick::rename
