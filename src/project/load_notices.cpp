#include "project/load_notices.h"

#include <cerrno>

#include "platform/notice_words.h"

namespace tarnwick::project {

namespace {

using platform::bareName;

QString waysToLoad(const engine::Failure& failure) {
    switch (failure.code) {
        case engine::kFileNotFound:
            return u"Check that the file is there and may be read, then load it again."_qs;
        case engine::kNotASound:
            return u"Choose a WAV, AIFF or MP3 file."_qs;
        case engine::kDamaged:
            return u"Use another copy of the recording, or save it again in another program, "
                   u"then load it."_qs;
        case engine::kNoMemory:
            return u"Free some space, or split the recording, then load it again."_qs;
        default:
            return u"Load the recording again."_qs;
    }
}

QString wayToWrite(const engine::Failure& failure) {
    if (failure.code == engine::kBadFormat) return u"Set Channels in the Preferences to 1 or 2"_qs;
    switch (failure.systemError) {
        case ENOSPC:
        case EDQUOT:
            return u"Free some space"_qs;
        case EACCES:
        case EPERM:
            return u"Make the file and its folder writable"_qs;
        case EROFS:
            return u"Make the disk writable"_qs;
        default:
            return u"Remove the cause"_qs;
    }
}

QString stateOnDisk(const RecordingOnDisk& recording, const engine::Failure& failure) {
    const QString name = bareName(recording.path);
    const QString copy = bareName(recording.copy);
    if (failure.systemError == EEXIST)
        return u"%1 is now a file of another program and was not changed. The file that was "
               u"there before is %2 in BU_Source_Files."_qs.arg(name, copy);
    return stateOfFile(recording.path, recording.savedBefore) +
           (recording.savedBefore ? u"; a copy of it is %1 in BU_Source_Files."_qs
                                  : u"; an untouched copy is %1 in BU_Source_Files."_qs)
               .arg(copy);
}

}  // namespace

platform::Notice listEmptied(const QString& reason) {
    return {.what = reason +
                    u" The list of prompts was emptied anyway, so Export has nothing to write."_qs,
            .files = {},
            .safe = u"The recording that was loaded before is still there with its edits."_qs,
            .remedy = u"Click Process to bring the rows back."_qs};
}

platform::Notice nothingLoaded(const QString& reason) {
    return {.what = reason + u" Nothing was loaded."_qs,
            .files = {},
            .safe = {},
            .remedy = u"Choose Load Working Files again."_qs};
}

QString rowsCanComeBack() {
    return u"The list was emptied by Load Working Files. As long as its recording is loaded, "
           u"Process brings the rows back."_qs;
}

QString noSoundLoaded() {
    return u"The recording was not loaded, so there are no rows. Choose Load Working Files "
           u"again."_qs;
}

platform::Notice notLoaded(const engine::Failure& failure) {
    return {.what =
                u"%1 was not loaded: %2. No sound is loaded now; the duration and the counts in "
                u"the window are out of date."_qs.arg(bareName(failure.path), reasonOf(failure)),
            .files = {failure.path},
            .safe = u"Loading has changed nothing in the file."_qs,
            .remedy = waysToLoad(failure)};
}

platform::Notice endsEarly(const QString& path, qint64 toldMs, qint64 heldMs) {
    const auto seconds = [](qint64 ms) {
        return QString::number(static_cast<double>(ms) / 1000, 'f', 1);
    };
    return {.what = u"%1 ends early: its header tells of %2 s, the file holds %3 s."_qs.arg(
                bareName(path), seconds(toldMs), seconds(heldMs)),
            .files = {path},
            .safe = u"What the file holds is loaded."_qs,
            .remedy = u"If the end is missing, take another copy of the recording."_qs};
}

platform::Notice noSheetChosen(const QString& workbook, bool soundIsLoaded) {
    return {.what =
                u"No sheet of %1 was chosen, so nothing was loaded and the list of prompts is "
                u"empty."_qs.arg(bareName(workbook)),
            .files = {workbook},
            .safe = soundIsLoaded ? u"The recording that was loaded before is still there with its "
                                    u"edits; Process brings its rows back."_qs
                                  : QString(),
            .remedy = u"Choose Load Working Files again and select a sheet."_qs};
}

QString saveTopic() { return u"save"_qs; }

platform::Notice noBackupFolder(const QString& folder, const QString& reason, bool fileInTheWay) {
    return {.what =
                u"The folder BU_Source_Files is missing and could not be made: %1. Saving the "
                u"recording would end the program."_qs.arg(reason),
            .files = {folder},
            .safe = u"The recording is as it was."_qs,
            .remedy = fileInTheWay
                          ? u"Rename the file BU_Source_Files, and load again."_qs
                          : u"Turn off the automatic backup in Preferences, or load again from a "
                            u"folder that can be written."_qs,
            .topic = saveTopic()};
}

QString stateOfFile(const QString& path, bool savedBefore) {
    return (savedBefore ? u"%1 is on the disk as it was last saved, without the edits made since"_qs
                        : u"%1 is on the disk as it was loaded, without pauses and edits"_qs)
        .arg(bareName(path));
}

platform::Notice notSaved(const RecordingOnDisk& recording, const engine::Failure& failure) {
    return {.what = u"%1 was not saved: %2."_qs.arg(bareName(recording.path), reasonOf(failure)),
            .files = {recording.path, recording.copy},
            .safe = stateOnDisk(recording, failure),
            .remedy = wayToWrite(failure) +
                      u", then choose Backup Source File. The sound in the "
                      u"window has all pauses and edits."_qs,
            .topic = saveTopic()};
}

platform::Notice sourceChanged(const RecordingOnDisk& recording) {
    return {.what =
                u"Another program has changed %1 since it was loaded, so its sound can no "
                u"longer be played, edited, saved or exported."_qs.arg(bareName(recording.path)),
            .files = {recording.path},
            .safe = u"Files that were written before are complete."_qs,
            .remedy =
                u"Move BU_Source_Files out of the project folder and load the recording again. "
                u"Edits that were not saved must be made again."_qs};
}

platform::Notice playsInSilence() {
    return {.what = u"There is no working sound device, so the sound plays without being heard."_qs,
            .files = {},
            .safe = u"Editing, saving and exporting work as usual."_qs,
            .remedy = u"Connect or switch on a sound device, then play again."_qs};
}

platform::Notice lateFileNotWritten(const engine::Failure& failure) {
    return {.what =
                u"%1 was still being written when its recording was closed, and could not be "
                u"completed: %2."_qs.arg(bareName(failure.path), reasonOf(failure)),
            .files = {failure.path},
            .safe =
                u"An older file of that name is unchanged; copies of the recording are in "
                u"BU_Source_Files."_qs,
            .remedy = wayToWrite(failure) + u", then load the recording again."_qs};
}

}  // namespace tarnwick::project
