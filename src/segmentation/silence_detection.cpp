#include "segmentation/silence_detection.h"

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/levels.h"
#include "runtime/numbers.h"
#include "segmentation/field_value.h"
#include "segmentation/sound_notices.h"

namespace tarnwick::segmentation {

namespace {

QString tooManyPauses(qint32 count) {
    return u"the recording has %1 pauses, and there is room for %2; a larger Duration finds fewer"_qs
        .arg(count)
        .arg(model::kSilenceSlots);
}

}  // namespace

SilenceDetection::SilenceDetection(forms::frmMain& form, Services services)
    : form_(form),
      services_(std::move(services)),
      EDTTimerSilencePosDetectionDone(services_.failure, *form.EDTTimerSilencePosDetectionDone,
                                      [this] { EDTTimerSilencePosDetectionDone_Timer(); }) {
    runtime::onEvent(services_.failure, form_.cbProcess, &QPushButton::clicked, form_.cbProcess,
                     [this] { cbProcess_Click(); });
    runtime::onEvent(services_.failure, &services_.EDT,
                     &engine::SoundEditor::SilencePosDetectionDone, &form_, [this](qint32 bResult) {
                         if (bResult == 1) services_.notices.settle(scanTopic());
                         EDTTimerSilencePosDetectionDone.arm();
                     });
    runtime::onEvent(services_.failure, &services_.EDT, &engine::SoundEditor::failed, &form_,
                     [this](const engine::Failure& failure) {
                         if (failure.operation == engine::Operation::Scan &&
                             failure.code != engine::kSourceChanged)
                             services_.notices.tell(scanFailed(failure));
                     });
}

void SilenceDetection::cbProcess_Click() {
    form_.lvAudioDetails->clear();
    forms::repaintNow(form_);
    startScan();
}

void SilenceDetection::drop() {
    EDTTimerSilencePosDetectionDone.disarm();
    scanning_ = false;
}

void SilenceDetection::startScan() {
    form_.txbCalculating->show();
    forms::repaintNow(form_);
    Silences.fill({});
    const qint16 threshold =
        fieldValue(u"Threshold"_qs, form_.txbThreshold->text(),
                   [this](const QString& text) { return showThreshold(text); });
    const qint32 duration =
        fieldValue(u"Duration"_qs, form_.txbSilence->text(), runtime::strictLong);
    nResult = services_.EDT.SilencePositionsDetect(threshold, duration, 0);
    scanning_ = nResult == engine::kOk;
}

// Converts the threshold through the hidden boxes and returns the amplitude.
qint16 SilenceDetection::showThreshold(const QString& decibels) {
    form_.txbSilencePerc->setText(
        runtime::fixedOneDecimal(runtime::percentOfDecibels(runtime::strictDouble(decibels))));
    form_.txbSilenceThreshold->setText(runtime::amplitudeOfPercent(form_.txbSilencePerc->text()));
    return runtime::strictInteger(form_.txbSilenceThreshold->text());
}

void SilenceDetection::EDTTimerSilencePosDetectionDone_Timer() {
    const qint32 count = services_.EDT.SilencePositionsGetCount();
    storeSilences(count);
    form_.txbNberAudioFiles->setText(QString::number(count - 1));
    serviceWait();
    form_.txbCalculating->hide();
    forms::repaintNow(form_);
    services_.align();
    scanning_ = false;
    form_.mnuExport->setEnabled(true);
}

void SilenceDetection::storeSilences(qint32 count) {
    settings::SettingsDatabase& database = services_.database;
    const settings::Access access(database, services_.state.vsConnection);
    database.Execute(u"DELETE FROM Silences"_qs);
    const QString detail = tooManyPauses(count);
    for (qint32 i = 0; i < count; ++i) {
        qint32 start = 0;
        qint32 finish = 0;
        services_.EDT.SilencePositionsGetRange(i, start, finish);
        runtime::withDetail(detail, [&] {
            model::SilenceRecord& silence = runtime::element(Silences, i);
            silence.StartAt = start;
            silence.FinishAt = finish;
        });
        database.Execute(u"INSERT INTO Silences(Nber, StartAt, FinishAt)VALUES (%1,%2,%3)"_qs.arg(i)
                             .arg(start)
                             .arg(finish));
    }
    database.Release();
}

// Blocks the window if support staff have asked for it. The seconds in the box are read again at
// each pass.
void SilenceDetection::serviceWait() const {
    if (!form_.chRecalcTimer->isChecked()) return;
    const double begun = services_.clock.Timer();
    const auto seconds = [this] {
        return fieldValue(u"Process Timer"_qs, form_.txbRecalcTimer->text(), runtime::strictDouble);
    };
    while (services_.clock.Timer() - begun < seconds()) {
    }
}

}  // namespace tarnwick::segmentation
