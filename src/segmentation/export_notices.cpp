#include "segmentation/export_notices.h"

#include <algorithm>
#include <cerrno>

#include "engine/sound_events.h"
#include "platform/file_system.h"
#include "platform/notice_words.h"
#include "segmentation/sound_notices.h"

namespace tarnwick::segmentation {

namespace {

using platform::bareName;
using platform::sizeText;

constexpr qsizetype kMostNames = 10;
constexpr qsizetype kMostLongNames = 3;
constexpr qsizetype kLongName = 30;  // characters

QString whereFileIs(const RecordingPlace& recording) {
    const QString copy = bareName(recording.state.goodCopy);
    if (recording.state.damaged)
        return copy.isEmpty()
                   ? u"The file of the recording was changed by another program, and there is no "
                     u"copy from before."_qs
                   : u"The file of the recording was changed by another program; the newest copy "
                     u"from before is %1 in BU_Source_Files."_qs.arg(copy);
    if (recording.inBackupFolder) return u"The recording is in BU_Source_Files."_qs;
    if (recording.inProjectFolder) return u"The recording is still in the project folder."_qs;
    return copy.isEmpty()
               ? QString()
               : u"The newest copy of the recording is %1 in BU_Source_Files."_qs.arg(copy);
}

QString whereItIs(const RecordingPlace& recording) {
    const QString edits = recording.state.unsaved
                              ? u" Pauses and edits that were not saved are in no file."_qs
                              : QString();
    return (whereFileIs(recording) + edits).trimmed();
}

QString toLoadAgain(bool backupFolderIsThere) {
    return backupFolderIsThere
               ? u"To load this folder again, first move or rename BU_Source_Files."_qs
               : QString();
}

QString placeText(const ExportPlace& place) {
    return u"prompt %1 of %2"_qs.arg(place.row).arg(place.rows);
}

bool diskIsFull(const engine::Failure& failure) {
    return failure.systemError == ENOSPC || failure.systemError == EDQUOT ||
           failure.code == engine::kNoMemory;
}

// Fewer long names, so that the notice stays a few lines high.
qsizetype mostNames(const QList<platform::NameAndReason>& failed) {
    const bool someAreLong = std::ranges::any_of(
        failed, [](const QString& name) { return name.size() > kLongName; },
        &platform::NameAndReason::name);
    return someAreLong ? kMostLongNames : kMostNames;
}

}  // namespace

QString startTopic() { return u"export start"_qs; }
QString spaceTopic() { return u"export space"_qs; }
QString runTopic() { return u"export run"_qs; }
QString promptsTopic(const QString& folder) { return u"prompts "_qs + folder; }

platform::Notice nothingToExport(bool listIsChanging) {
    if (listIsChanging)
        return {.what = u"The export did not start, because the list is being rebuilt."_qs,
                .files = {},
                .safe = {},
                .remedy = u"Export again when the list is complete."_qs,
                .topic = startTopic()};
    return {.what = u"There is nothing to export: the list is empty."_qs,
            .files = {},
            .safe = {},
            .remedy = u"Load a session. If its sound is loaded already, click Process."_qs,
            .topic = startTopic()};
}

platform::Notice spaceIsShort(const QString& folder, qint64 neededBytes, qint64 freeBytes) {
    return {.what = u"The prompts need %1 of disk space, but only %2 is free."_qs.arg(
                sizeText(neededBytes), sizeText(freeBytes)),
            .files = {folder},
            .safe = u"A prompt is written completely or not at all."_qs,
            .remedy = u"Free some space. The end of the export tells which prompts are missing."_qs,
            .topic = spaceTopic()};
}

platform::Notice promptsNotWritten(qint32 rows, const QList<engine::Failure>& unwritten,
                                   const RecordingPlace& recording) {
    QStringList files;
    QList<platform::NameAndReason> reasons;
    for (const engine::Failure& failure : unwritten) {
        files << failure.path;
        reasons << platform::NameAndReason{bareName(failure.path), engine::reasonOf(failure)};
    }
    const QString cause = std::any_of(unwritten.begin(), unwritten.end(), diskIsFull)
                              ? u"Free some space. "_qs
                              : u"Remove the cause. "_qs;
    return {.what = u"%1 of %2 %3 not written: "_qs.arg(
                        QString::number(unwritten.size()),
                        platform::counted(rows, u"prompt"_qs, u"prompts"_qs),
                        unwritten.size() == 1 ? u"was"_qs : u"were"_qs) +
                    platform::listedByReason(reasons, mostNames(reasons), u"%1: %2"_qs) + u'.',
            .files = files,
            .safe = whereItIs(recording),
            .remedy = cause +
                      u"Then put the recording and its script into a new folder, load "
                      u"them there and export again."_qs,
            .topic = promptsTopic(platform::folderOf(unwritten.first().path))};
}

platform::Notice rowRefused(const ExportPlace& place, const engine::Failure& failure,
                            const RecordingPlace& recording) {
    const bool format = failure.code == engine::kBadFormat;
    const bool range = failure.code == engine::kBadRange;
    return {
        .what =
            u"The export stopped at %1, %2: %3. This prompt and those after it were not "
            u"written."_qs.arg(placeText(place), bareName(failure.path), engine::reasonOf(failure)),
        .files = {failure.path},
        .safe = whereItIs(recording),
        .remedy = format  ? u"Set Channels in the Preferences to 1 or 2, then export again."_qs
                  : range ? u"Click Process, check the times of this row, then export again."_qs
                          : loadAgain(),
        .topic = runTopic()};
}

platform::Notice exportStandsStill(const ExportPlace& place, bool canProcess,
                                   const RecordingPlace& recording) {
    return {
        .what =
            u"The export is waiting after %1: the list has no next row."_qs.arg(placeText(place)),
        .files = {},
        .safe = whereItIs(recording),
        .remedy = canProcess ? u"Click Process: the export continues when the list has its rows "
                               u"again. If there is no sound any more, do this: "_qs +
                                   loadAgain()
                             : loadAgain(),
        .topic = runTopic()};
}

platform::Notice exportGivenUp(const ExportPlace& place, const RecordingPlace& recording) {
    return {.what =
                u"The export ended early, at %1, because its sound was closed or "
                u"replaced."_qs.arg(placeText(place)),
            .files = {},
            .safe = whereItIs(recording),
            .remedy =
                u"To write all prompts, load the session again and export it. First move or "
                u"rename its folder BU_Source_Files."_qs};
}

platform::Notice sourceNotMoved(const Unmoved& file) {
    const QString remedy =
        file.isThere && file.source == Source::Recording
            ? u"The Batch Processor would take it for a prompt, so move it out of the project "
              u"folder before you click Process. "_qs
            : QString();
    return {.what = u"%1 was not moved to BU_Source_Files: %2."_qs.arg(bareName(file.path),
                                                                       file.reason),
            .files = {file.path},
            .safe = file.isThere ? u"It is still in the project folder."_qs : QString(),
            .remedy = (remedy + toLoadAgain(file.backupFolderIsThere)).trimmed()};
}

platform::Notice documentStays(const QString& path, bool backupFolderIsThere) {
    return {.what =
                u"%1 stays in the project folder: an export moves only workbooks to "
                u"BU_Source_Files."_qs.arg(bareName(path)),
            .files = {path},
            .safe = {},
            .remedy = toLoadAgain(backupFolderIsThere)};
}

}  // namespace tarnwick::segmentation
