#include "segmentation/sound_notices.h"

#include "platform/notice_words.h"

namespace tarnwick::segmentation {

namespace {

QString failedEdit(EditKind kind, qint16 command) {
    if (kind == EditKind::StartPause)
        return u"The load could not add its pause at the start of the sound"_qs;
    if (kind == EditKind::EndPause)
        return u"The load could not add its pause at the end of the sound"_qs;
    switch (command) {
        case engine::kDeleteRange:
            return u"The selection was not deleted"_qs;
        case engine::kApplyVolume:
            return u"The selection was not flattened"_qs;
        case engine::kInsertSilence:
            return u"The silence was not inserted"_qs;
        case engine::kUndo:
            return u"Undo changed nothing"_qs;
        default:
            return u"The sound was not edited"_qs;
    }
}

// What to do after a failure that no setting can cause.
QString generalRemedy(engine::ErrorCode code) {
    switch (code) {
        case engine::kNoSound:
        case engine::kSourceChanged:
        case engine::kDamaged:
            return loadAgain();
        case engine::kNoMemory:
            return u"Close other programs or free some disk space, then try again."_qs;
        default:
            return {};
    }
}

QString reasonOfEdit(qint16 command, const engine::Failure& failure) {
    if (command == engine::kUndo && failure.code == engine::kNotSupported)
        return u"there is nothing to undo"_qs;
    if (command == engine::kInsertSilence && failure.code == engine::kBadRange)
        return u"the length is negative"_qs;
    return engine::reasonOf(failure);
}

QString remedyOfRange(EditKind kind, qint16 command) {
    if (kind != EditKind::Operator)
        return u"Set Duration to a number of milliseconds that is not negative. "_qs + loadAgain();
    return command == engine::kInsertSilence
               ? u"Enter a length in milliseconds that is not negative, and try again."_qs
               : u"Make the selection again."_qs;
}

}  // namespace

QString loadAgain() {
    return u"Move or rename the folder BU_Source_Files, then load the session again."_qs;
}

platform::Notice soundDeleted(const QString& recording) {
    return {.what =
                u"The whole sound was deleted, which cannot be undone. The rows and counts of "
                u"the list are out of date."_qs,
            .files = {recording},
            .safe = platform::bareName(recording) + u" is as it was last saved."_qs,
            .remedy = loadAgain()};
}

platform::Notice pauseUndone(EditKind pause) {
    const bool atStart = pause == EditKind::StartPause;
    return {.what = atStart ? u"Undo took back the pause that the load had added at the start, so "
                              u"each row can now hold the speech of the next one."_qs
                            : u"Undo took back the pause that the load had added at the end, so "
                              u"the last row can now lack its end."_qs,
            .files = {},
            .safe = {},
            .remedy = (atStart ? u"Clear the selection"_qs : u"Click at the end of the sound"_qs) +
                      u" and insert silence of at least the length in Duration. Or start "
                      u"over. "_qs +
                      loadAgain()};
}

platform::Notice editFailed(EditKind kind, qint16 command, const engine::Failure& failure) {
    return {.what = failedEdit(kind, command) + u": "_qs + reasonOfEdit(command, failure) + u'.',
            .files = failure.path.isEmpty() ? QStringList() : QStringList(failure.path),
            .safe = u"The sound is as it was before."_qs,
            .remedy = failure.code == engine::kBadRange ? remedyOfRange(kind, command)
                                                        : generalRemedy(failure.code)};
}

QString scanTopic() { return u"scan"_qs; }

platform::Notice scanFailed(const engine::Failure& failure) {
    const QString remedy = generalRemedy(failure.code);
    return {.what = u"The search for pauses failed, so the list has no usable rows: %1."_qs.arg(
                engine::reasonOf(failure)),
            .files = failure.path.isEmpty() ? QStringList() : QStringList(failure.path),
            .safe = u"The sound is as it was before."_qs,
            .remedy =
                remedy.isEmpty() ? u"Check Duration and Threshold, then click Process."_qs : remedy,
            .topic = scanTopic()};
}

}  // namespace tarnwick::segmentation
