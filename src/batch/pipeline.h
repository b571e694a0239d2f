#pragma once

#include <QObject>

#include "batch/chain_step.h"
#include "batch/file_ends.h"
#include "batch/filters.h"
#include "batch/run.h"
#include "batch/services.h"
#include "engine/one_shot_timer.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class BatchSettings;
class LevelBoxes;
class OutputEncoding;
class RunChecks;
class RunWatch;
class Trace;

// A run: takes one file after the other through the chain. Each step starts one operation of EDTX;
// its event arms a timer, and the timer decides the next step. After a failed step the run goes on
// as if it had worked. If a step raises no event, the run stops there until the operator closes the
// window. UI thread.
class Pipeline : public QObject {
  public:
    struct Subjects {
        LevelBoxes& levels;
        BatchSettings& settings;
        OutputEncoding& output;
        RunChecks& checks;
        RunWatch& watch;
    };

    Pipeline(forms::frmBatchProcessor& form, Run& run, const Services& services, Trace& trace,
             const Subjects& subjects);

  private:
    void cbProcess_Click();
    void lockControls();
    void moveToRawFolder();
    void EDTX_Load_File();

    void onEditor();
    void EDTX_SoundLoadingDone();
    void EDTX_SoundEditDone(qint16 command);
    void EDTX_SoundExportDone();
    void EDTX_AppendAutomationDone();

    void EDTXTimerSoundLoadingDone_Timer();
    void TimerEDTXSoundEditDone_Timer();
    void EDTXTimerSoundExportDone_Timer();
    void EDTXTimerAppendAutomationDone_Timer();

    void Forced_Delay() const;
    ChainMoment moment() const;
    void carryOut(const Following& next);
    void nextFile();
    void finish();
    void reload();
    void bringBackName();
    QString rawPath(const QString& name) const;

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    Trace& trace_;
    Subjects subjects_;
    engine::OneShotTimer EDTXTimerSoundLoadingDone;
    engine::OneShotTimer TimerEDTXSoundEditDone;
    engine::OneShotTimer EDTXTimerSoundExportDone;
    engine::OneShotTimer EDTXTimerAppendAutomationDone;
    FileEnds ends_;
    Filters filters_;
    QString vsSourceFile;                 // full path of the current file, with its own name
    const bool appliesToEditor_ = false;  // never set
};

}  // namespace tarnwick::batch
