#include "batch/file_ends.h"

#include "batch/chain_step.h"
#include "batch/run_watch.h"
#include "batch/trace.h"
#include "batch/words.h"
#include "forms/frm_batch_processor.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "runtime/numbers.h"

namespace tarnwick::batch {

namespace {

using runtime::Line;

qint32 milliseconds(QStringView name, const QLineEdit* box) {
    return runtime::withDetail(typedFor(name, box->text()),
                               [&] { return runtime::roundToLong(runtime::val(box->text())); });
}

}  // namespace

FileEnds::FileEnds(forms::frmBatchProcessor& form, Run& run, const Services& services, Trace& trace,
                   RunWatch& watch, std::function<void()> nothingToEdit)
    : form_(form),
      run_(run),
      services_(services),
      trace_(trace),
      watch_(watch),
      nothingToEdit_(std::move(nothingToEdit)) {
    runtime::onEvent(services_.failure, &services_.EDTX, &engine::SoundEditor::AudibleRangeDetected,
                     this,
                     [this](qint32 begin, qint32 end) { EDTX_AudibleRangeDetected(begin, end); });
}

void FileEnds::Cut_File_Start() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Cut_File_Start: ", [&](Line& line) {
        line(10);
        run_.vlDuration = services_.EDTX.GetSoundDuration();
        line(20);
        trace_.add(u"vlDuration BEFORE Cut_File_Start = %1"_qs.arg(run_.vlDuration));
        line(30);
        const qint32 cut = milliseconds(kCutStart, form_.txbCutStart);
        line(40);
        watch_.cutsStart(cut);
        run_.nResult = services_.EDTX.DeleteRange(0, cut);
        line(50);
        trace_.add(u"nResult for Cut_File_Start = %1"_qs.arg(run_.nResult));
    });
}

void FileEnds::Cut_File_End() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Cut_File_End: ", [&](Line& line) {
        line(10);
        run_.vlDuration = services_.EDTX.GetSoundDuration();
        line(20);
        const QString cut = form_.txbCutEnd->text();
        const qint32 begin = runtime::withDetail(typedFor(kCutEnd, cut), [&] {
            return runtime::roundToLong(run_.vlDuration - runtime::val(cut));
        });
        line(30);
        watch_.cutsEnd(begin);
        run_.nResult = services_.EDTX.DeleteRange(begin, -1);
        line(40);
        trace_.add(u"nResult for Cut_File_End = %1"_qs.arg(run_.nResult));
    });
}

// The only event that continues the chain without a timer, which is safe as it starts only an edit.
void FileEnds::EDTX_AudibleRangeDetected(qint32 beginMs, qint32 endMs) {
    runtime::guarded(services_.failure, u"frmBatchProcessor.EDTX_AudibleRangeDetected: ",
                     [&](Line& line) {
                         line(10);
                         vlAudibleStart = beginMs;
                         line(20);
                         vlAudibleEnd = endMs;
                         line(30);
                         vlSilenceStart = milliseconds(kHead, form_.txbSetSilenceStart);
                         line(40);
                         vlSilenceEnd = milliseconds(kTail, form_.txbSetSilenceEnd);
                         line(50);
                         run_.vlDuration = services_.EDTX.GetSoundDuration();
                         line(60);
                         watch_.hears(beginMs, endMs);
                         trace_.add(u"GetSoundDuration done in AudibleRangeDetected"_qs);
                         line(70);
                         run_.vsFilterStep = kSetSilenceEnd.toString();
                         line(80);
                         Set_Silence_End();
                     });
}

void FileEnds::Set_Silence_End() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Set_Silence_End: ", [&](Line& line) {
        line(10);
        const qint32 tail = runtime::subtract(run_.vlDuration, vlAudibleEnd);
        if (tail > vlSilenceEnd) {
            line(20);
            vlSilenceAdjustment = runtime::subtract(tail, vlSilenceEnd);
            line(30);
            traceAdjustment(u"Remove_End");
            line(40);
            Remove_Silence_End();
        } else if (tail < vlSilenceEnd) {
            line(50);
            vlSilenceAdjustment = runtime::subtract(vlSilenceEnd, tail);
            line(60);
            traceAdjustment(u"Add_End");
            line(70);
            Add_Silence_End();
        } else {
            line(80);
            nothingToEdit_();
        }
    });
}

void FileEnds::Set_Silence_Start() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Set_Silence_Start: ", [&](Line& line) {
        if (vlAudibleStart > vlSilenceStart) {
            line(10);
            vlSilenceAdjustment = runtime::subtract(vlAudibleStart, vlSilenceStart);
            line(20);
            traceAdjustment(u"Remove_Start");
            line(30);
            Remove_Silence_Start();
        } else if (vlAudibleStart < vlSilenceStart) {
            line(40);
            vlSilenceAdjustment = runtime::subtract(vlSilenceStart, vlAudibleStart);
            line(50);
            traceAdjustment(u"Add_Start");
            line(60);
            Add_Silence_Start();
        } else {
            line(70);
            nothingToEdit_();
        }
    });
}

void FileEnds::Add_Silence_Start() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Add_Silence_Start: ", [&](Line& line) {
        line(10);
        run_.nResult = services_.EDTX.InsertSilence(0, vlSilenceAdjustment);
    });
}

void FileEnds::Remove_Silence_Start() {
    runtime::guarded(
        services_.failure, u"frmBatchProcessor.Remove_Silence_Start: ", [&](Line& line) {
            line(10);
            run_.nResult =
                services_.EDTX.RemoveSilence(0, vlSilenceAdjustment, run_.viThreshold, 1);
        });
}

void FileEnds::Add_Silence_End() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Add_Silence_End: ", [&](Line& line) {
        line(10);
        run_.nResult = services_.EDTX.InsertSilence(run_.vlDuration, vlSilenceAdjustment);
    });
}

void FileEnds::Remove_Silence_End() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Remove_Silence_End: ", [&](Line& line) {
        line(10);
        const qint32 begin = runtime::subtract(run_.vlDuration, vlSilenceAdjustment);
        line(20);
        run_.nResult = services_.EDTX.RemoveSilence(begin, run_.vlDuration, run_.viThreshold, 1);
    });
}

void FileEnds::traceAdjustment(QStringView where) {
    trace_.add(u"vlSilenceAdjustment at %1 = %2"_qs.arg(where).arg(vlSilenceAdjustment));
}

}  // namespace tarnwick::batch
