#include "segmentation/export_notices.h"

#include <algorithm>
#include <cerrno>

#include "engine/sound_events.h"
#include "platform/notice_words.h"
#include "segmentation/sound_notices.h"

namespace tarnwick::segmentation {

namespace {

using platform::bareName;
using platform::sizeText;

constexpr qsizetype kMostNames = 10;

QString stillThere() { return u"The recording is still in the project folder."_qs; }

QString toLoadAgain() {
    return u"To load this folder again, first move or rename BU_Source_Files."_qs;
}

QString placeText(const ExportPlace& place) {
    return u"prompt %1 of %2"_qs.arg(place.row).arg(place.rows);
}

bool diskIsFull(const engine::Failure& failure) {
    return failure.systemError == ENOSPC || failure.systemError == EDQUOT ||
           failure.code == engine::kNoMemory;
}

}  // namespace

platform::Notice nothingToExport(bool listIsChanging) {
    if (listIsChanging)
        return {.what = u"The export did not start, because the list is being rebuilt."_qs,
                .files = {},
                .safe = {},
                .remedy = u"Export again when the list is complete."_qs};
    return {.what = u"There is nothing to export: the list is empty."_qs,
            .files = {},
            .safe = {},
            .remedy = u"Load a session. If its sound is loaded already, click Process."_qs};
}

platform::Notice spaceIsShort(const QString& folder, qint64 neededBytes, qint64 freeBytes) {
    return {.what = u"The prompts need %1 of disk space, but only %2 is free."_qs.arg(
                sizeText(neededBytes), sizeText(freeBytes)),
            .files = {folder},
            .safe = u"A prompt is written completely or not at all."_qs,
            .remedy =
                u"Free some space. A notice at the end of the export names the missing "
                u"prompts."_qs};
}

platform::Notice promptsNotWritten(qint32 rows, const QList<engine::Failure>& unwritten,
                                   bool recordingIsKept) {
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
                    platform::listedByReason(reasons, kMostNames) + u'.',
            .files = files,
            .safe = recordingIsKept ? u"The recording is in BU_Source_Files."_qs : stillThere(),
            .remedy = cause +
                      u"Then put the recording and its script into a new folder, load "
                      u"them there and export again."_qs};
}

platform::Notice rowRefused(const ExportPlace& place, const engine::Failure& failure) {
    const bool format = failure.code == engine::kBadFormat;
    const bool range = failure.code == engine::kBadRange;
    return {
        .what =
            u"The export stopped at %1, %2: %3. This prompt and those after it were not "
            u"written."_qs.arg(placeText(place), bareName(failure.path), engine::reasonOf(failure)),
        .files = {failure.path},
        .safe = stillThere(),
        .remedy = format  ? u"Set Channels in the Preferences to 1 or 2, then export again."_qs
                  : range ? u"Click Process, check the times of this row, then export again."_qs
                          : loadAgain()};
}

platform::Notice exportStandsStill(const ExportPlace& place, bool canProcess) {
    return {.what = u"The export is waiting after %1: the list has no next row."_qs.arg(
                placeText(place)),
            .files = {},
            .safe = stillThere(),
            .remedy = canProcess ? u"Click Process: the export continues when the list has its "
                                   u"rows again. If no sound is loaded, start over.  "_qs +
                                       loadAgain()
                                 : loadAgain()};
}

platform::Notice exportGivenUp(const ExportPlace& place) {
    return {.what =
                u"The export ended early, at %1, because its sound was closed or "
                u"replaced."_qs.arg(placeText(place)),
            .files = {},
            .safe = stillThere(),
            .remedy =
                u"To write all prompts, load the session again and export it. First move or "
                u"rename its folder BU_Source_Files."_qs};
}

platform::Notice sourceNotMoved(Source source, const QString& path, const QString& reason,
                                bool isThere) {
    const QString remedy =
        isThere && source == Source::Recording
            ? u"The Batch Processor would take it for a prompt, so move it out of the project "
              u"folder before you click Process. "_qs
            : QString();
    return {.what = u"%1 was not moved to BU_Source_Files: %2."_qs.arg(bareName(path), reason),
            .files = {path},
            .safe = isThere ? u"It is still in the project folder."_qs : QString(),
            .remedy = remedy + toLoadAgain()};
}

platform::Notice documentStays(const QString& path) {
    return {.what =
                u"%1 stays in the project folder: an export moves only workbooks to "
                u"BU_Source_Files."_qs.arg(bareName(path)),
            .files = {path},
            .safe = {},
            .remedy = toLoadAgain()};
}

}  // namespace tarnwick::segmentation
