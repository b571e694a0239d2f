#include "project/script_notices.h"

#include <QDir>
#include <QMap>
#include <climits>

#include "documents/sheet.h"
#include "platform/notice_words.h"
#include "runtime/file_names.h"

namespace tarnwick::project {

namespace {

using platform::bareName;
using platform::counted;
using platform::Notice;

constexpr qsizetype kFew = 3;

// The prompts whose names have the same fault.
struct Rows {
    QStringList places;  // "row 3 (a.wav)"
    QStringList files;

    void add(qsizetype row, const QString& file) {
        places << u"row %1 (%2)"_qs.arg(QString::number(row), bareName(file));
        files << file;
    }
    QString count(const QString& one, const QString& many) const {
        return counted(places.size(), one, many);
    }
    QString list() const { return platform::listed(places, kFew); }
};

struct SortedNames {
    Rows changed, hidden, recording, nameless, tooLong;
    QMap<QString, QStringList> rowsOfFile;  // the row numbers by the file that they are written to
};

SortedNames sortNames(const QStringList& names, const QString& recording) {
    SortedNames sorted;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const qsizetype row = i + 1;
        const QString file = runtime::promptFile(names[i]);
        if (names[i].isEmpty()) {
            sorted.nameless.add(row, file);
            continue;
        }
        if (names[i].contains(QDir::separator())) sorted.changed.add(row, file);
        if (file.startsWith(u'.')) sorted.hidden.add(row, file);
        if (file == recording) sorted.recording.add(row, file);
        if (runtime::bytesOfFileName(file).size() > NAME_MAX) sorted.tooLong.add(row, file);
        sorted.rowsOfFile[file] << QString::number(row);
    }
    return sorted;
}

const QString& changeTheScript() {
    static const QString text = u"Change the names in the script and load again."_qs;
    return text;
}

Notice changedNames(const Rows& rows) {
    return {.what = rows.count(u"file name has a slash"_qs, u"file names have a slash"_qs) +
                    u", which becomes an underscore: "_qs + rows.list() + u'.',
            .files = rows.files,
            .safe = {},
            .remedy = changeTheScript()};
}

Notice hiddenNames(const Rows& rows) {
    return {
        .what = rows.count(u"file name begins with a dot"_qs, u"file names begin with a dot"_qs) +
                u": "_qs + rows.list() +
                u". Such files are hidden, and the Batch Processor skips them."_qs,
        .files = rows.files,
        .safe = {},
        .remedy = changeTheScript()};
}

Notice nameOfRecording(const Rows& rows) {
    return {
        .what = u"The recording's own name is also the file name of "_qs + rows.list() +
                u". The export will replace the recording with the prompt."_qs,
        .files = rows.files,
        .safe = u"The export copies the recording to BU_Source_Files first."_qs,
        .remedy = u"Change the name in the script and load again if the recording is to stay."_qs};
}

Notice namelessRows(const Rows& rows) {
    return {.what = rows.count(u"prompt has no file name"_qs, u"prompts have no file name"_qs) +
                    u": "_qs + rows.list() +
                    u". The file is hidden, the Batch Processor skips it, and each further "
                    u"prompt without a name overwrites it."_qs,
            .files = rows.files,
            .safe = {},
            .remedy =
                u"Enter the names in the script, or let Tarnwick create them (Preferences), "
                u"and load again."_qs};
}

Notice tooLongNames(const Rows& rows) {
    return {
        .what = rows.count(u"file name is"_qs, u"file names are"_qs) +
                u" longer than the disk allows (%1 bytes with .wav) and cannot be written: "_qs.arg(
                    NAME_MAX) +
                rows.list() + u'.',
        .files = rows.files,
        .safe = {},
        .remedy = u"Shorten the names in the script and load again."_qs};
}

// The rows of one file: "a.wav (rows 2, 5 and 9)".
QString sharedFile(const QString& file, const QStringList& rows) {
    return u"%1 (rows %2)"_qs.arg(bareName(file), platform::listed(rows, kFew));
}

QList<Notice> sharedNames(const QMap<QString, QStringList>& rowsOfFile) {
    QStringList files, shared;
    for (auto file = rowsOfFile.begin(); file != rowsOfFile.end(); ++file) {
        if (file->size() < 2) continue;
        files << file.key();
        shared << sharedFile(file.key(), *file);
    }
    if (files.isEmpty()) return {};
    return {{.what = counted(files.size(), u"file name belongs"_qs, u"file names belong"_qs) +
                     u" to more than one prompt: "_qs + platform::listed(shared, kFew) +
                     u". Each later row overwrites the file of the row before."_qs,
             .files = files,
             .safe = {},
             .remedy = u"Give each prompt a name of its own in the script (or an Increment other "
                       u"than 0 in Preferences) and load again."_qs}};
}

QString cell(char16_t column, qint32 row) { return QString(QChar(column)) + QString::number(row); }

Notice withoutResult(const QString& what, const QStringList& cells) {
    return {.what = what + u", because the workbook has a formula without a stored result in "_qs +
                    platform::listed(cells, kFew) + u'.',
            .files = cells,
            .safe = {},
            .remedy =
                u"Open the workbook in a spreadsheet program, save it there, and load "
                u"again."_qs};
}

}  // namespace

QList<Notice> nameNotices(const QStringList& names, const QString& recording) {
    const SortedNames sorted = sortNames(names, recording);
    const std::pair<const Rows&, Notice (*)(const Rows&)> kinds[] = {
        {sorted.changed, changedNames},
        {sorted.hidden, hiddenNames},
        {sorted.recording, nameOfRecording},
        {sorted.nameless, namelessRows},
        {sorted.tooLong, tooLongNames}};
    QList<Notice> notices;
    for (const auto& [rows, notice] : kinds)
        if (!rows.files.isEmpty()) notices << notice(rows);
    return notices + sharedNames(sorted.rowsOfFile);
}

QList<Notice> formulaNotices(const documents::Sheet& sheet, const RowRange& rows, bool toTheEnd) {
    QList<Notice> notices;
    const bool oneColumn = sheet.text(1, 2).isEmpty();
    QStringList empty;
    for (qint32 row = rows.viFirstRow; row <= rows.viLastRow; ++row)
        if (sheet.lacksResult(row, oneColumn ? 1 : 2)) empty << cell(oneColumn ? u'A' : u'B', row);
    if (!empty.isEmpty())
        notices << withoutResult(
            counted(empty.size(), u"prompt is empty"_qs, u"prompts are empty"_qs), empty);
    if (sheet.lacksResult(1, 2))
        notices << withoutResult(
            u"The script was read as one column of texts, and its file names are numbered"_qs,
            {cell(u'B', 1)});
    const qint32 end = rows.viLastRow + 1;
    if (toTheEnd && sheet.lacksResult(end, 1))
        notices << withoutResult(u"The script was read only up to row %1"_qs.arg(rows.viLastRow),
                                 {cell(u'A', end)});
    return notices;
}

}  // namespace tarnwick::project
