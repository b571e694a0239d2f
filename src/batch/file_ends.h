#pragma once

#include <QObject>
#include <functional>

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class Trace;

// Works on the two ends of the sound in EDTX: cuts a fixed length off, and gives the silence there
// the length that was asked for. Each procedure is guarded and starts at most one edit, whose
// SoundEditDone brings the chain on. UI thread.
class FileEnds : public QObject {
  public:
    // `nothingToEdit`: the silence is as long as it should be, so no event will come.
    FileEnds(forms::frmBatchProcessor& form, Run& run, const Services& services, Trace& trace,
             std::function<void()> nothingToEdit);

    void Cut_File_Start();
    void Cut_File_End();
    // The head's silence; the tail's is set as soon as the audible range is known, before it, so
    // that the positions of the range stay right.
    void Set_Silence_Start();

  private:
    void EDTX_AudibleRangeDetected(qint32 beginMs, qint32 endMs);
    void Set_Silence_End();
    void Add_Silence_Start();
    void Remove_Silence_Start();
    void Add_Silence_End();
    void Remove_Silence_End();
    void traceAdjustment(QStringView where);

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    Trace& trace_;
    std::function<void()> nothingToEdit_;

    // In ms.
    qint32 vlAudibleStart = 0;
    qint32 vlAudibleEnd = 0;
    qint32 vlSilenceStart = 0;       // wanted
    qint32 vlSilenceEnd = 0;         // wanted
    qint32 vlSilenceAdjustment = 0;  // to add or to remove, always positive
};

}  // namespace tarnwick::batch
