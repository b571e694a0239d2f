#include "batch/pipeline.h"

#include <QDir>

#include "batch/batch_settings.h"
#include "batch/conversion_label.h"
#include "batch/level_boxes.h"
#include "batch/output_encoding.h"
#include "batch/run_checks.h"
#include "batch/run_watch.h"
#include "batch/trace.h"
#include "forms/frm_batch_processor.h"
#include "forms/texts.h"
#include "forms/units.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "runtime/numbers.h"

namespace tarnwick::batch {

namespace {

using runtime::Line;

}  // namespace

Pipeline::Pipeline(forms::frmBatchProcessor& form, Run& run, const Services& services, Trace& trace,
                   const Subjects& subjects)
    : form_(form),
      run_(run),
      services_(services),
      trace_(trace),
      subjects_(subjects),
      EDTXTimerSoundLoadingDone(services.failure, *form.EDTXTimerSoundLoadingDone,
                                [this] { EDTXTimerSoundLoadingDone_Timer(); }),
      TimerEDTXSoundEditDone(services.failure, *form.TimerEDTXSoundEditDone,
                             [this] { TimerEDTXSoundEditDone_Timer(); }),
      EDTXTimerSoundExportDone(services.failure, *form.EDTXTimerSoundExportDone,
                               [this] { EDTXTimerSoundExportDone_Timer(); }),
      EDTXTimerAppendAutomationDone(services.failure, *form.EDTXTimerAppendAutomationDone,
                                    [this] { EDTXTimerAppendAutomationDone_Timer(); }),
      ends_(form, run, services, trace, subjects.watch, [this] { TimerEDTXSoundEditDone.arm(); }),
      filters_(run, services, trace, subjects.levels) {
    runtime::onEvent(services_.failure, form_.cbProcess, &QPushButton::clicked, this,
                     [this] { cbProcess_Click(); });
    onEditor();
}

void Pipeline::onEditor() {
    const auto on = [this](auto signal, auto handler) {
        runtime::onEvent(services_.failure, &services_.EDTX, signal, this, handler);
    };
    using engine::SoundEditor;
    on(&SoundEditor::SoundLoadingDone, [this] { EDTX_SoundLoadingDone(); });
    on(&SoundEditor::SoundEditDone,
       [this](qint16 command, qint32) { EDTX_SoundEditDone(command); });
    on(&SoundEditor::SoundExportDone, [this] { EDTX_SoundExportDone(); });
    on(&SoundEditor::AppendAutomationDone, [this] { EDTX_AppendAutomationDone(); });
}

void Pipeline::cbProcess_Click() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.cbProcess_Click: ", [&](Line& line) {
        line(10);
        if (!subjects_.output.encoderIsThere()) return;
        line(20);
        subjects_.checks.entries();
        subjects_.settings.Save_BatchProcessor_Data();
        line(30);
        if (!subjects_.levels.silenceThresholdAllowed()) return;
        line(40);
        if (!subjects_.levels.normMaximumAllowed()) return;
        line(50);
        subjects_.checks.processing();
        lockControls();
        line(60);
        moveToRawFolder();
        subjects_.watch.started({form_.chSilenceEnds->isChecked(), form_.chNormalize->isChecked()});
        line(70);
        subjects_.levels.writeSilenceThreshold();
        line(80);
        run_.viFileIndex = 0;
        line(90);
        EDTX_Load_File();
    });
}

void Pipeline::lockControls() {
    form_.pbConversion->show();
    showConversion(form_, u"Batch Processing Progress..."_qs, true);
    form_.lbConversion->show();
    for (QWidget* control :
         std::initializer_list<QWidget*>{form_.frNormalizationFunction, form_.frSilenceFunction,
                                         form_.frOutputSpecs, form_.cbClose, form_.cbProcess})
        control->setEnabled(false);
}

void Pipeline::moveToRawFolder() {
    const qint16 last = runtime::roundToInteger(static_cast<double>(run_.files().size() - 1));
    for (qint16 viLoop = 0; viLoop <= last; viLoop = runtime::add<qint16>(viLoop, 1))
        services_.files.MoveFile(
            platform::pathIn(services_.state.vsProjectFolder, run_.files()[viLoop]),
            run_.vsRawFolder + QDir::separator());
}

QString Pipeline::rawPath(const QString& name) const {
    return platform::pathIn(run_.vsRawFolder, name);
}

void Pipeline::EDTX_Load_File() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_Load_File: ", [&](Line& line) {
        line(10);
        const QString name = run_.fileInWork();
        subjects_.watch.loading(name);
        vsSourceFile = rawPath(name);
        line(20);
        form_.txbFileToConvert->setText(name);
        trace_.clear();
        line(30);
        const QString inWork = rawPath(nameInWork(name));
        services_.files.MoveFile(vsSourceFile, inWork);
        line(40);
        services_.EDTX.SetLoadMode(0);
        line(50);
        if (services_.EDTX.LoadSound(inWork) != engine::kOk)
            services_.boxes.plain(u"Cannot load file "_qs + vsSourceFile + u" with error "_qs +
                                  QString::number(services_.EDTX.LastError()));
    });
}

void Pipeline::EDTX_SoundLoadingDone() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_SoundLoadingDone: ",
                     [&](Line& line) {
                         line(10);
                         EDTXTimerSoundLoadingDone.arm();
                     });
}

void Pipeline::EDTX_SoundEditDone(qint16 command) {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_SoundEditDone: ", [&](Line& line) {
        line(10);
        run_.nCommand = command;
        subjects_.watch.edited();
        line(20);
        TimerEDTXSoundEditDone.arm();
    });
}

void Pipeline::EDTX_SoundExportDone() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_SoundExportDone: ",
                     [&](Line& line) {
                         line(10);
                         subjects_.watch.exported();
                         EDTXTimerSoundExportDone.arm();
                     });
}

void Pipeline::EDTX_AppendAutomationDone() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTXTimerAppendAutomationDone: ",
                     [&](Line& line) {
                         line(10);
                         EDTXTimerAppendAutomationDone.arm();
                     });
}

void Pipeline::EDTXTimerSoundLoadingDone_Timer() {
    runtime::guarded(
        services_.failure, u"frmBatchProcessor.EDTXTimerSoundLoadingDone_Timer: ", [&](Line& line) {
            line(10);
            run_.viThreshold =
                runtime::roundToInteger(runtime::val(form_.txbSilenceThreshold->text()));
            line(20);
            Forced_Delay();
            line(30);
            trace_.start(u"File: "_qs + run_.fileInWork());
            line(40);
            const Following next = following(ChainEvent::SoundLoaded, moment());
            carryOut(next);
            line(50);
            // Detection after a cut is not traced.
            if (next.step == ChainStep::Detect)
                trace_.add(u"nResult for SilencePositionsDetect: %1"_qs.arg(run_.nResult));
        });
}

void Pipeline::TimerEDTXSoundEditDone_Timer() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.TimerEDTXSoundEditDone_Timer: ",
                     [&](Line& line) {
                         line(10);
                         Forced_Delay();
                         if (run_.nCommand == kCutEnded) {
                             line(20);
                             run_.vlDuration = services_.EDTX.GetSoundDuration();
                             line(30);
                             const bool start = run_.vsFilterStep == kCutFileStart;
                             trace_.add((start ? u"vlDuration AFTER Cut_File_Start = %1"_qs
                                               : u"vlDuration AFTER Cut_File_End = %1"_qs)
                                            .arg(run_.vlDuration));
                         }
                         line(40);
                         carryOut(following(ChainEvent::EditEnded, moment()));
                     });
}

void Pipeline::EDTXTimerSoundExportDone_Timer() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTXTimerSoundExportDone_Timer: ",
                     [&](Line& line) {
                         line(10);
                         Forced_Delay();
                         line(20);
                         carryOut(following(ChainEvent::ExportEnded, moment()));
                     });
}

// The end of a concatenation. Nothing here starts one.
void Pipeline::EDTXTimerAppendAutomationDone_Timer() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTXTimerAppendAutomationDone_Timer: ",
                     [&](Line& line) {
                         line(10);
                         subjects_.output.EDTX_Export_File();
                         line(20);
                         run_.vsFilterStep.clear();
                         line(30);
                         for (QWidget* control : std::initializer_list<QWidget*>{
                                  form_.cbClose, form_.frOutputSpecs, form_.frDirectories,
                                  form_.opBPMode[0], form_.opBPMode[1]})
                             control->setEnabled(true);
                     });
}

// Blocks the window for the number of ms in the box, which is read again at each pass. The box is
// empty unless support staff fill it. At midnight the clock returns to 0 and the wait starts again.
void Pipeline::Forced_Delay() const {
    double begun = services_.clock.Timer();
    for (;;) {
        const double elapsed = services_.clock.Timer() - begun;
        if (elapsed < 0.0) begun = 0.0;
        if (elapsed >= runtime::val(form_.txbDelay->text()) / 1000.0) return;
    }
}

ChainMoment Pipeline::moment() const {
    const auto above0 = [](const QLineEdit* box) { return runtime::val(box->text()) > 0.0; };
    return {.chCutEnd = form_.chCutEnd->isChecked(),
            .chSilenceEnds = form_.chSilenceEnds->isChecked(),
            .chHissFilter = form_.chHissFilter->isChecked(),
            .chNormalize = form_.chNormalize->isChecked(),
            .cutsStart = above0(form_.txbCutStart),
            .cutsEnd = above0(form_.txbCutEnd),
            .vsFilterStep = run_.vsFilterStep,
            .nCommand = run_.nCommand,
            .lastFile = run_.viFileIndex == run_.files().size() - 1,
            .appliesToEditor = appliesToEditor_};
}

void Pipeline::carryOut(const Following& next) {
    subjects_.watch.begins(next.step);
    // The step text of the tail is kept until the head has been set.
    if (next.step == ChainStep::SetHead) ends_.Set_Silence_Start();
    run_.vsFilterStep = next.vsFilterStep;
    switch (next.step) {
        case ChainStep::Wait:
        case ChainStep::SetHead:
            return;
        case ChainStep::CutStart:
            return ends_.Cut_File_Start();
        case ChainStep::CutEnd:
            return ends_.Cut_File_End();
        case ChainStep::Detect:
            run_.nResult = services_.EDTX.SilencePositionsDetect(run_.viThreshold, 1, 0);
            return subjects_.watch.asked(Halt::Search);
        case ChainStep::Hiss:
            return filters_.Hiss_Filter();
        case ChainStep::Normalize:
            return filters_.EDTX_Normalize();
        case ChainStep::Export:
            subjects_.output.EDTX_Export_File();
            return subjects_.watch.asked(Halt::Export);
        case ChainStep::ErrorBox:
            services_.boxes.plain(u"Error 1"_qs);
            // The operation may have ended while the box was open.
            return carryOut(following(ChainEvent::ErrorAnswered, moment()));
        case ChainStep::NextFile:
            return nextFile();
        case ChainStep::Finish:
            return finish();
        case ChainStep::Reload:
            return reload();
    }
}

void Pipeline::nextFile() {
    // Shows the index of the finished file, from 0, so it never reaches the number of files.
    forms::setCaption(
        form_.lbConversion,
        u"Batch Processing File %1 of %2 ..."_qs.arg(run_.viFileIndex).arg(run_.files().size()));
    form_.pbConversion->setValue(run_.viFileIndex);
    bringBackName();
    run_.viFileIndex = runtime::add<qint16>(run_.viFileIndex, 1);
    EDTX_Load_File();
}

void Pipeline::bringBackName() {
    const QString name = run_.fileInWork();
    services_.files.MoveFile(rawPath(nameInWork(name)), rawPath(name));
}

void Pipeline::finish() {
    for (QWidget* control :
         std::initializer_list<QWidget*>{form_.frNormalizationFunction, form_.frSilenceFunction,
                                         form_.frOutputSpecs, form_.cbClose})
        control->setEnabled(true);
    form_.cbClose->move(form_.cbClose->x(), forms::px(forms::frmBatchProcessor::kCloseTopAfterRun));
    form_.cbProcess->hide();
    showConversion(form_, u"%1 Files Have Been Processed!"_qs.arg(run_.files().size()), true);
    form_.pbConversion->hide();
    bringBackName();
    subjects_.watch.finished();
}

void Pipeline::reload() {
    run_.nResult = services_.EDT.LoadFromEditor(reinterpret_cast<quintptr>(&form_));
    if (run_.nResult != engine::kOk)
        services_.boxes.plain(u"Error loading sound from EDTX in EDT"_qs);
    services_.unload();
}

}  // namespace tarnwick::batch
