#pragma once

#include <QObject>
#include <functional>

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class RunWatch;
class Trace;

// Works on the two ends of the sound in EDTX: cuts off a fixed length, and gives the silence there
// the requested length. Each procedure is guarded and starts at most one edit, whose SoundEditDone
// continues the chain. UI thread.
class FileEnds : public QObject {
  public:
    // `nothingToEdit`: called if the silence already has the right length, so no event will come.
    FileEnds(forms::frmBatchProcessor& form, Run& run, const Services& services, Trace& trace,
             RunWatch& watch, std::function<void()> nothingToEdit);

    void Cut_File_Start();
    void Cut_File_End();
    // Sets the silence at the head. The tail is set first, as soon as the audible range is known,
    // so that the positions of the range stay valid.
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
    RunWatch& watch_;
    std::function<void()> nothingToEdit_;

    // In ms.
    qint32 vlAudibleStart = 0;
    qint32 vlAudibleEnd = 0;
    qint32 vlSilenceStart = 0;       // wanted
    qint32 vlSilenceEnd = 0;         // wanted
    qint32 vlSilenceAdjustment = 0;  // to add or to remove, always positive
};

}  // namespace tarnwick::batch
