#include "batch/chain_step.h"

namespace tarnwick::batch {

namespace {

Following unchanged(ChainStep step, const ChainMoment& moment) {
    return {step, moment.vsFilterStep};
}

ChainStep normalizeOrExport(const ChainMoment& moment) {
    return moment.chNormalize ? ChainStep::Normalize : ChainStep::Export;
}

ChainStep behindSilences(const ChainMoment& moment) {
    return moment.chHissFilter ? ChainStep::Hiss : normalizeOrExport(moment);
}

ChainStep behindCuts(const ChainMoment& moment) {
    return moment.chSilenceEnds ? ChainStep::Detect : behindSilences(moment);
}

Following afterLoading(const ChainMoment& moment) {
    if (moment.chCutEnd && moment.cutsStart) return {ChainStep::CutStart, kCutFileStart.toString()};
    // Does not check how much is to be cut there.
    if (moment.chCutEnd) return {ChainStep::CutEnd, kCutFileEnd.toString()};
    const ChainStep step = behindCuts(moment);
    if (step == ChainStep::Normalize) return {step, kAllFiltersDone.toString()};
    return unchanged(step, moment);
}

Following afterCut(const ChainMoment& moment) {
    if (moment.vsFilterStep == kCutFileStart && moment.cutsEnd)
        return {ChainStep::CutEnd, kCutFileEnd.toString()};
    return unchanged(behindCuts(moment), moment);
}

Following afterSilence(const ChainMoment& moment) {
    if (moment.vsFilterStep == kSetSilenceEnd) return {ChainStep::SetHead, {}};
    if (!moment.vsFilterStep.isEmpty()) return unchanged(ChainStep::ErrorBox, moment);
    return unchanged(behindSilences(moment), moment);
}

ChainStep afterLevels(const ChainMoment& moment) {
    if (moment.nCommand == kHissEnded) return normalizeOrExport(moment);
    return moment.nCommand == kNormalizeEnded ? ChainStep::Export : ChainStep::Wait;
}

Following afterEdit(const ChainMoment& moment) {
    switch (moment.nCommand) {
        case kCutEnded:
            return afterCut(moment);
        case kSilenceEnded:
        case kOtherSilenceEnded:
            return afterSilence(moment);
        default:
            return unchanged(afterLevels(moment), moment);
    }
}

ChainStep afterExport(const ChainMoment& moment) {
    if (moment.appliesToEditor) return ChainStep::Reload;
    return moment.lastFile ? ChainStep::Finish : ChainStep::NextFile;
}

}  // namespace

Following following(ChainEvent event, const ChainMoment& moment) {
    switch (event) {
        case ChainEvent::SoundLoaded:
            return afterLoading(moment);
        case ChainEvent::EditEnded:
            return afterEdit(moment);
        case ChainEvent::ErrorAnswered:
            return unchanged(afterLevels(moment), moment);
        case ChainEvent::ExportEnded:
            return unchanged(afterExport(moment), moment);
    }
    return unchanged(ChainStep::Wait, moment);
}

}  // namespace tarnwick::batch
