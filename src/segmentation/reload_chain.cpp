#include "segmentation/reload_chain.h"

#include <QCoreApplication>

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "runtime/events.h"
#include "runtime/numbers.h"
#include "segmentation/field_value.h"
#include "segmentation/sound_notices.h"

namespace tarnwick::segmentation {

ReloadChain::ReloadChain(forms::frmMain& form, Services services)
    : form_(form),
      services_(std::move(services)),
      TimerReload(services_.failure, *form.TimerReload, [this] { TimerReload_Timer(); }),
      TimerDisplayWaveform(services_.failure, *form.TimerDisplayWaveform,
                           [this] { TimerDisplayWaveform_Timer(); }) {
    connectLoading();
    connectEditing();
    connectAnalysis();
}

void ReloadChain::drop() {
    TimerReload.disarm();
    TimerDisplayWaveform.disarm();
    // No event will reset the percentage any more. A progress bar of playback is left alone.
    if (soundIsChanging() && !form_.pbWAVFormBuilding->isHidden())
        services_.status.finished(u"Status: Idle"_qs);
    edits_.clear();
    end();
}

// Ends the chain before it has reached the list: nothing is being calculated any more.
void ReloadChain::end() {
    rebuilding_ = false;
    form_.txbCalculating->hide();
}

template <class Signal, class Handler>
void ReloadChain::on(Signal signal, Handler handler) {
    runtime::onEvent(services_.failure, &services_.EDT, signal, &form_, std::move(handler));
}

void ReloadChain::connectLoading() {
    on(&engine::SoundEditor::SoundLoadingStarted, [this] {
        rebuilding_ = true;
        form_.txbCalculating->show();
        services_.status.calculating(u"Loading Audio File..."_qs);
        services_.status.started(u"Status6: Loading... 0%"_qs);
    });
    on(&engine::SoundEditor::SoundLoadingPerc,
       [this](qint16 percent) { services_.status.advanced(u"Status5: Loading... "_qs, percent); });
    on(&engine::SoundEditor::SoundLoadingDone,
       [this](qint32 bResult) { EDT_SoundLoadingDone(bResult); });
}

void ReloadChain::connectEditing() {
    on(&engine::SoundEditor::SoundEditStarted,
       [this] { services_.status.started(u"Status3: Editing...  0%"_qs); });
    on(&engine::SoundEditor::SoundEditPerc,
       [this](qint16 percent) { services_.status.advanced(u"Status2: Editing... "_qs, percent); });
    on(&engine::SoundEditor::SoundEditDone,
       [this](qint16 nCommand, qint32 bResult) { EDT_SoundEditDone(nCommand, bResult); });
    on(&engine::SoundEditor::failed, [this](const engine::Failure& failure) {
        if (failure.operation == engine::Operation::Edit) editFailure_ = failure;
    });
}

void ReloadChain::connectAnalysis() {
    on(&engine::SoundEditor::WaveAnalysisStarted, [this] {
        services_.status.calculating(u"Analyzing Audio File..."_qs);
        services_.status.started(u"Status12: Analyzing waveform..."_qs);
    });
    on(&engine::SoundEditor::WaveAnalysisPerc, [this](qint16 percent) {
        services_.status.advanced(u"Status7: Analyzing waveform... "_qs, percent);
    });
    on(&engine::SoundEditor::WaveAnalysisDone, [this] { EDT_WaveAnalysisDone(); });
}

void ReloadChain::EDT_SoundLoadingDone(qint32 bResult) {
    services_.status.finished(u"Status4: Idle"_qs);
    if (bResult == 0) {
        reportFailure();
        services_.EDT.SoundClose();
    }
    TimerReload.arm();
}

void ReloadChain::EDT_SoundEditDone(qint16 nCommand, qint32 bResult) {
    services_.status.finished(u"Status1: Idle"_qs);
    const EditKind kind = edits_.ended();
    if (bResult == 1) {
        rebuilding_ = true;
        enterEdit(nCommand, kind);
        return TimerReload.arm();
    }
    // The chain of an earlier edit may still be running.
    if (!TimerReload.armed() && !TimerDisplayWaveform.armed()) end();
    const engine::Failure failure = std::exchange(editFailure_, {});
    // The project room tells that the file of the sound was changed, whatever has failed by it.
    if (failure.code != engine::kSourceChanged)
        services_.notices.tell(editFailed(kind, nCommand, failure));
    reportFailure();
}

void ReloadChain::enterEdit(qint16 nCommand, EditKind kind) {
    if (nCommand != engine::kUndo) return edits_.done(kind);
    const EditKind undone = edits_.undone().value_or(EditKind::Operator);
    if (undone != EditKind::Operator) services_.notices.tell(pauseUndone(undone));
}

void ReloadChain::EDT_WaveAnalysisDone() {
    TimerDisplayWaveform.arm();
    services_.status.finished(u"Status13: Idle"_qs);
    form_.CommandPlay->setEnabled(true);
    form_.CommandPause->setEnabled(true);
    form_.CommandStop->setEnabled(true);
}

void ReloadChain::reportFailure() {
    const qint32 code = services_.EDT.LastError();
    services_.boxes.plain(
        code == engine::kNoMemory
            ? u"Not enough memory to handle this file. Try splitting the file in 10-20 minutes "
              u"segments. Specify the Excel rows corresponding to each segment in Preferences."_qs
            : u"Cannot complete the operation due to the following error: "_qs +
                  QString::number(code));
}

void ReloadChain::TimerReload_Timer() {
    engine::SoundEditor& EDT = services_.EDT;
    const qint32 duration = EDT.GetSoundDuration();
    if (duration == 0) return endWithoutSound();
    form_.LabelTotalDuration->setText(EDT.FormatMs(duration, 0, 1));
    forms::repaintNow(form_);
    QCoreApplication::processEvents();
    EDT.waveform().AnalyzeSound();
    QCoreApplication::processEvents();
    if (form_.chBUSource->isChecked()) {
        services_.backUp();
        form_.cbProcess->setEnabled(true);
    }
}

// There is no sound after a failed load, or after an edit that deleted everything.
void ReloadChain::endWithoutSound() {
    const model::Session& session = services_.session;
    if (edits_.anyDone())
        services_.notices.tell(
            soundDeleted(platform::pathIn(session.loadedFolder, session.loadedFile)));
    services_.EDT.SoundClose();
    drop();
    services_.soundGone();
}

void ReloadChain::TimerDisplayWaveform_Timer() {
    const model::Session& session = services_.session;
    const bool saved = session.vlSavedRangeBegin != session.vlSavedRangeEnd;
    services_.EDT.waveform().SetDisplayRange(saved ? session.vlSavedRangeBegin : 0,
                                             saved ? session.vlSavedRangeEnd : -1);
    if (session.vsLoadStage == QStringView(model::kInitialLoad))
        return addPause(u"Adding Initial Pause..."_qs, EditKind::StartPause,
                        model::kStartSilenceAdded);
    if (session.vsLoadStage == QStringView(model::kStartSilenceAdded))
        return addPause(u"Adding Final Pause..."_qs, EditKind::EndPause, model::kEndSilenceAdded);
    rebuilding_ = TimerReload.armed();  // true if another edit has ended since
    services_.process();
}

void ReloadChain::addPause(const QString& announcement, EditKind pause, const char16_t* nextStage) {
    services_.status.calculating(announcement);
    const qint32 length = fieldValue(u"Duration"_qs, form_.txbSilence->text(), leadingLong);
    edits_.asked(pause);
    services_.EDT.InsertSilence(
        pause == EditKind::StartPause ? 0 : services_.EDT.GetSoundDuration(), length);
    services_.session.vsLoadStage = QString::fromUtf16(nextStage);
}

}  // namespace tarnwick::segmentation
