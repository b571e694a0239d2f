#include "project/sound_reports.h"

#include <cerrno>

#include "forms/frm_main.h"
#include "platform/file_system.h"
#include "project/empty_list.h"
#include "runtime/events.h"

namespace tarnwick::project {

SoundReports::SoundReports(forms::frmMain& form, Services services)
    : form_(form), services_(services) {
    const auto on = [this](auto signal, auto handler) {
        runtime::onEvent(services_.failure, &services_.EDT, signal, &form_, handler);
    };
    on(&engine::SoundEditor::failed, [this](const engine::Failure& failure) { failed(failure); });
    on(&engine::SoundEditor::SoundEditDone, [this](qint16, qint32 bResult) {
        if (bResult == 1) edited();
    });
    on(&engine::SoundEditor::lateExportFailed, [this](const engine::Failure& failure) {
        services_.notices.tell(lateFileNotWritten(failure));
    });
}

void SoundReports::loadStarts() {
    recording_ = {};
    services_.session.recording = {};
    copyBefore_.clear();
    saving_ = changeTold_ = toldOfSilence_ = false;
}

void SoundReports::checkLength(const QString& path) const {
    constexpr qint64 kNoticeable = 100;  // ms
    const engine::FileFacts facts = services_.EDT.factsOf(path);
    if (facts.claimedMs - facts.lengthMs >= kNoticeable)
        services_.notices.tell(endsEarly(path, facts.claimedMs, facts.lengthMs));
}

void SoundReports::saveStarts(const QString& copy) {
    model::Session& session = services_.session;
    recording_.path = platform::pathIn(session.loadedFolder, session.loadedFile);
    recording_.copy = copy;
    copyBefore_ = session.recording.goodCopy;
    if (!session.recording.damaged) session.recording.goodCopy = copy;
    editedSince_ = false;
    saving_ = true;
}

void SoundReports::exportEnded(bool written) {
    if (std::exchange(saving_, false) && written) {
        recording_.savedBefore = true;
        services_.session.recording.damaged = false;
        services_.session.recording.unsaved = editedSince_;
        services_.notices.settle(saveTopic());
    }
}

void SoundReports::edited() {
    editedSince_ = true;
    services_.session.recording.unsaved = true;
}

// A copy that was made for the save under way is already one of the changed file. The sound keeps
// reading the file that was loaded, so after a save, the file with that name is another, good one.
void SoundReports::fileWasDamaged() {
    if (recording_.savedBefore) return;
    model::RecordingState& state = services_.session.recording;
    if (saving_ && !state.damaged) state.goodCopy = copyBefore_;
    state.damaged = true;
}

// A refused save has no ending event, so the failure itself ends it.
bool SoundReports::endsSave(const engine::Failure& failure) {
    return failure.operation == engine::Operation::Export && failure.path == recording_.path &&
           std::exchange(saving_, false);
}

void SoundReports::failed(const engine::Failure& failure) {
    using engine::Operation;
    if (failure.operation == Operation::Load) {
        services_.notices.tell(notLoaded(failure));
        explainEmptyList(form_, noSoundLoaded());
    } else if (failure.code == engine::kSourceChanged) {
        tellOfChange(failure.operation);
    } else if (failure.code == engine::kPlaybackFailed) {
        tellOfSilence();
    } else if (endsSave(failure)) {
        // The copy was made before another program took the name.
        if (failure.systemError == EEXIST) services_.session.recording.damaged = true;
        services_.notices.tell(notSaved(recording_, failure));
    }
}

// An export fails once for each prompt, but the operator is told only once.
void SoundReports::tellOfChange(engine::Operation operation) {
    fileWasDamaged();
    if (std::exchange(changeTold_, true) && operation == engine::Operation::Export) return;
    const model::Session& session = services_.session;
    recording_.path = platform::pathIn(session.loadedFolder, session.loadedFile);
    services_.notices.tell(sourceChanged(recording_));
}

void SoundReports::tellOfSilence() {
    if (!std::exchange(toldOfSilence_, true)) services_.notices.tell(playsInSilence());
}

}  // namespace tarnwick::project
