#include "project/sound_reports.h"

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
    on(&engine::SoundEditor::lateExportFailed, [this](const engine::Failure& failure) {
        services_.notices.tell(lateFileNotWritten(failure));
    });
}

void SoundReports::loadStarts() {
    recording_ = {};
    saving_ = changeTold_ = toldOfSilence_ = false;
}

void SoundReports::saveStarts(const QString& copy) {
    const model::Session& session = services_.session;
    recording_.path = platform::pathIn(session.loadedFolder, session.loadedFile);
    recording_.copy = copy;
    saving_ = true;
}

void SoundReports::exportEnded(bool written) {
    if (saving_ && written) recording_.savedBefore = true;
    saving_ = false;
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
        services_.notices.tell(notSaved(recording_, failure));
    }
}

// An export fails once for each prompt, but the operator is told only once.
void SoundReports::tellOfChange(engine::Operation operation) {
    if (std::exchange(changeTold_, true) && operation == engine::Operation::Export) return;
    const model::Session& session = services_.session;
    recording_.path = platform::pathIn(session.loadedFolder, session.loadedFile);
    services_.notices.tell(sourceChanged(recording_));
}

void SoundReports::tellOfSilence() {
    if (!std::exchange(toldOfSilence_, true)) services_.notices.tell(playsInSilence());
}

}  // namespace tarnwick::project
