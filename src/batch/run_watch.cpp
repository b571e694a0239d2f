#include "batch/run_watch.h"

#include "batch/words.h"
#include "runtime/events.h"

namespace tarnwick::batch {

namespace {

constexpr int kMostRounds = 3;

QString failureOf(ChainStep step) {
    switch (step) {
        case ChainStep::CutStart:
            return u"the cut at the start failed"_qs;
        case ChainStep::CutEnd:
            return u"the cut at the end failed"_qs;
        case ChainStep::Detect:
            return u"setting the silence at the end failed"_qs;
        case ChainStep::SetHead:
            return u"setting the silence at the start failed"_qs;
        case ChainStep::Normalize:
            return u"normalizing failed"_qs;
        default:
            return u"an edit failed"_qs;
    }
}

bool isCut(ChainStep step) { return step == ChainStep::CutStart || step == ChainStep::CutEnd; }

}  // namespace

RunWatch::RunWatch(Run& run, const Services& services) : run_(run), services_(services) {
    runtime::onEvent(services_.failure, &services_.EDTX, &engine::SoundEditor::failed, this,
                     [this](const engine::Failure& failure) { failed(failure); });
}

void RunWatch::started(const Asked& asked) {
    asked_ = asked;
    run_.report = {};
    run_.report.underWay = true;
    run_.report.rawFolder = run_.vsRawFolder;
    run_.report.files = run_.vsFiles ? run_.vsFiles->size() : 0;
}

void RunWatch::loading(const QString& name) {
    run_.report.inWork = name;
    run_.report.output.clear();
    step_ = ChainStep::Wait;
    halted_ = headSet_ = normalized_ = false;
    reason_.clear();
    heard_.reset();
}

void RunWatch::begins(ChainStep step) {
    step_ = step;
    headSet_ |= step == ChainStep::SetHead;
    normalized_ |= step == ChainStep::Normalize;
    if (step == ChainStep::Hiss) halted(Halt::Hiss);
    if (step == ChainStep::Wait)
        halted(run_.nCommand == 0 ? Halt::NothingToEdit : Halt::Unexpected);
    if (step == ChainStep::Export) checkSteps();
}

// If the silence at the end is right already, the chain takes the last edit of the file before for
// one of this file and leaves steps out.
void RunWatch::checkSteps() {
    QStringList leftOut;
    if (asked_.ends && !headSet_) leftOut << u"no silence set at the start"_qs;
    if (asked_.level && !normalized_) leftOut << u"not normalized"_qs;
    if (!leftOut.isEmpty()) run_.report.add(Trouble::StepsLeftOut, leftOut.join(u", "_qs));
}

void RunWatch::cutsStart(qint32 cutMs) {
    if (cutMs >= run_.vlDuration) run_.report.add(Trouble::Empty);
}

void RunWatch::cutsEnd(qint32 beginMs) {
    if (beginMs <= 0 && !run_.report.has(Trouble::Empty))
        run_.report.add(beginMs < 0 ? Trouble::Uncut : Trouble::Empty);
}

void RunWatch::hears(qint32 beginMs, qint32 endMs) {
    const RunReport& report = run_.report;
    if (beginMs == 0 && endMs == 0 && !report.has(Trouble::EndsUnknown) &&
        !report.has(Trouble::Empty))
        run_.report.add(Trouble::Inaudible);
    const std::pair range{beginMs, endMs};
    rounds_ = heard_ == range ? rounds_ + 1 : 1;
    heard_ = range;
    if (rounds_ == kMostRounds) halted(Halt::Round);
}

void RunWatch::asked(Halt step) {
    if (run_.nResult != engine::kOk) halted(step);
}

void RunWatch::failed(const engine::Failure& failure) {
    // After a failed load, the other steps of the file fail for the same reason.
    if (!run_.report.underWay || halted_) return;
    reason_ = engine::reasonOf(failure);
    switch (failure.operation) {
        case engine::Operation::Load:
            return halted(Halt::Load);
        case engine::Operation::Edit:
            // cutsEnd() and cutsStart() report cuts that are too long.
            if (isCut(step_) && failure.code == engine::kBadRange) return;
            return run_.report.add(Trouble::EditFailed, failureOf(step_) + because(reason_));
        case engine::Operation::Scan:
            return run_.report.add(Trouble::EndsUnknown, reason_);
        case engine::Operation::Export:
            return run_.report.add(Trouble::NotWritten, reason_);
        case engine::Operation::Play:
            return;
    }
}

void RunWatch::halted(Halt halt) {
    if (!run_.report.underWay || std::exchange(halted_, true)) return;
    services_.notices.tell(noticeOfHalt(run_.report, halt, reason_));
}

void RunWatch::exported() {
    if (run_.report.underWay && !run_.report.has(Trouble::NotWritten)) run_.report.wrote();
}

void RunWatch::finished() {
    if (!std::exchange(run_.report.underWay, false)) return;
    if (const auto notice = noticeOfEnd(run_.report)) services_.notices.tell(*notice);
}

void RunWatch::closed() {
    if (!std::exchange(run_.report.underWay, false) || halted_) return;
    services_.notices.tell(noticeOfClosing(run_.report));
}

}  // namespace tarnwick::batch
