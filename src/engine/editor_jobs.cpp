#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "engine/editor.h"
#include "engine/failure_codes.h"
#include "sound/timeline/peak_level.h"
#include "sound/timeline/silence_scan.h"

// The sound editor's operations on a loaded sound that run on the worker: edits, analysis, scans.

namespace tarnwick::engine {

namespace {

qint32 milliseconds(std::int64_t ms) {
    return static_cast<qint32>(std::min<std::int64_t>(ms, std::numeric_limits<qint32>::max()));
}

}  // namespace

qint32 Editor::startEdit(EditCommand command, Edit run) {
    playback_.stop();
    submit([this, command, run = std::move(run)](const Ticket& ticket) {
        announce(ticket, &SoundEditor::SoundEditStarted);
        std::optional<sound::Timeline> edited;
        const sound::Progress progress = progressOf(ticket, &SoundEditor::SoundEditPerc);
        const Reason reason = attempt([&] { edited = run(working_, progress); });
        if (reason == kOk) progress.percent(100);
        events_.post(ticket.generation, [this, command, reason, edited = std::move(edited),
                                         undoAvailable = working_.undoAvailable()] {
            fail(Operation::Edit, reason);
            if (reason == kOk) {
                sound_.timeline = edited;
                sound_.undoAvailable = undoAvailable;
                sound_.silencesFit = false;
                waveform_.soundEdited();
            }
            Q_EMIT SoundEditDone(command, reason == kOk ? 1 : 0);
        });
    });
    return kOk;
}

qint32 Editor::startChange(EditCommand command, WorkingSound::Change change) {
    return startEdit(command, [change = std::move(change), keepUndo = keepUndo_](
                                  WorkingSound& working, const sound::Progress& progress) {
        return working.edit(change, keepUndo, progress);
    });
}

qint32 Editor::refuseEdit(EditCommand command, ErrorCode code) {
    // Posted by the worker, so that the event comes after those of earlier requests.
    submit([this, command, code](const Ticket& ticket) {
        events_.post(ticket.generation, [this, command, code] {
            fail(Operation::Edit, {code});
            Q_EMIT SoundEditDone(command, 0);
        });
    });
    lastError_ = code;
    return code;
}

qint32 Editor::DeleteRange(qint32 beginMs, qint32 endMs) {
    if (!sound_.timeline) return refuseEdit(kDeleteRange, kNoSound);
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (!stretch || stretch->reversed()) return refuseEdit(kDeleteRange, kBadRange);
    return startChange(kDeleteRange,
                       [stretch](const sound::Timeline& head, const sound::Progress&) {
                           return head.removed(stretch->firstIn(head), stretch->endIn(head));
                       });
}

qint32 Editor::InsertSilence(qint32 positionMs, qint32 lengthMs) {
    if (!sound_.timeline) return refuseEdit(kInsertSilence, kNoSound);
    const auto position = Position::of(positionMs, sound_.durationMs());
    if (!position || lengthMs < 0) return refuseEdit(kInsertSilence, kBadRange);
    return startChange(kInsertSilence, [position, lengthMs, headAndTail = headAndTail_](
                                           const sound::Timeline& head, const sound::Progress&) {
        const qint64 place = position->frameIn(head);
        const int rate = head.format().rate;
        if (!headAndTail) return head.inserted(place, sound::frameAt(lengthMs, rate));
        const qint64 count = place == head.frames()
                                 ? sound::frameFloor(lengthOf(head) + lengthMs, rate) - place
                                 : sound::frameFloor(lengthMs, rate);
        return head.inserted(place, std::max<qint64>(count, 0));
    });
}

qint32 Editor::RemoveSilence(qint32 beginMs, qint32 endMs, qint16 threshold, qint32 mode) {
    if (!sound_.timeline) return refuseEdit(kRemoveSilence, kNoSound);
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (!stretch || stretch->reversed() || threshold < 0 || mode < 1)
        return refuseEdit(kRemoveSilence, kBadRange);
    return startChange(
        kRemoveSilence, [stretch, threshold, mode, headAndTail = headAndTail_](
                            const sound::Timeline& head, const sound::Progress& progress) {
            const sound::FrameRange range =
                headAndTail ? stretch->outwardIn(head)
                            : sound::FrameRange{stretch->firstIn(head), stretch->endIn(head)};
            return sound::withoutSilence(head, range, threshold,
                                         sound::frameAt(mode, head.format().rate), progress);
        });
}

void Editor::ApplyVolume(qint32 beginMs, qint32 endMs, qint32, float level, qint32) {
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (!sound_.timeline || !stretch || stretch->reversed()) {
        refuseEdit(kApplyVolume, sound_.timeline ? kBadRange : kNoSound);
        return;
    }
    startChange(kApplyVolume,
                [stretch, level](const sound::Timeline& head, const sound::Progress&) {
                    return head.scaled(stretch->firstIn(head), stretch->endIn(head), level);
                });
}

qint32 Editor::Normalize(qint32 beginMs, qint32 endMs, float percent, float, float) {
    if (!sound_.timeline) return refuseEdit(kNormalize, kNoSound);
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (!stretch || stretch->reversed() || !std::isfinite(percent) || percent < 0.0f)
        return refuseEdit(kNormalize, kBadRange);
    return startChange(kNormalize, [stretch, percent](const sound::Timeline& head,
                                                      const sound::Progress& progress) {
        const sound::FrameRange range{stretch->firstIn(head), stretch->endIn(head)};
        const double peak = sound::peakLevel(head, range, progress);
        if (peak == 0.0) return head;
        const double gain = std::min(percent / 100.0 / peak, sound::Timeline::kMaximumGain);
        return head.scaled(range.first, range.end, gain);
    });
}

void Editor::Undo() {
    if (sound_.timeline)
        startEdit(kUndo,
                  [](WorkingSound& working, const sound::Progress&) { return working.undo(); });
    else
        refuseEdit(kUndo, kNoSound);
}

void Editor::analyse() {
    if (!sound_.timeline) return;
    // The peaks belong to the source and stay valid after edits, so there is nothing to compute.
    submit([this](const Ticket& ticket) {
        announce(ticket, &SoundEditor::WaveAnalysisStarted);
        announce(ticket, &SoundEditor::WaveAnalysisPerc, qint16{100});
        events_.post(ticket.generation, [this] {
            sound_.analysed = true;
            Q_EMIT waveform_.displayChanged(DisplayChange::Sound);
            Q_EMIT WaveAnalysisDone();
        });
    });
}

qint32 Editor::SilencePositionsDetect(qint16 threshold, qint32 minimumMs, qint32) {
    if (!sound_.timeline) return refuse(Operation::Scan, {kNoSound});
    if (threshold < 0) return refuse(Operation::Scan, {kBadRange});
    submit([this, threshold, minimumMs, audible = headAndTail_](const Ticket& ticket) {
        if (audible)
            scanAudibleRange(ticket, threshold);
        else
            scanSilences(ticket, threshold, minimumMs);
    });
    return kOk;
}

void Editor::scanSilences(const Ticket& ticket, qint16 threshold, qint32 minimumMs) {
    std::vector<SilenceMs> silences;
    const Reason reason = attempt([&] {
        const sound::Timeline& head = working_.head();
        const int rate = head.format().rate;
        const std::int64_t minimum = sound::frameAt(std::max(minimumMs, 0), rate);
        for (const sound::FrameRange& silence :
             sound::findSilences(head, threshold, minimum, {.percent = {}, .stop = ticket.stop})) {
            const qint32 start = milliseconds(sound::msCeil(silence.first, rate));
            const qint32 finish = milliseconds(sound::msFloor(silence.end, rate));
            silences.push_back({start, std::max(start, finish)});
        }
    });
    events_.post(ticket.generation, [this, reason, silences = std::move(silences)] {
        fail(Operation::Scan, reason);
        sound_.silences = silences;  // none after a failure, as old ones would not fit the sound
        sound_.silencesFit = true;
        if (reason == kOk) sound_.scanned = true;
        Q_EMIT waveform_.displayChanged(DisplayChange::Silences);
        Q_EMIT SilencePosDetectionDone(reason == kOk ? 1 : 0);
    });
}

void Editor::scanAudibleRange(const Ticket& ticket, qint16 threshold) {
    qint32 begin = 0;
    qint32 end = 0;
    const Reason reason = attempt([&] {
        const sound::Timeline& head = working_.head();
        const int rate = head.format().rate;
        const auto range =
            sound::audibleRange(head, threshold, {.percent = {}, .stop = ticket.stop});
        if (!range) return;
        begin = milliseconds(sound::msFloor(range->first, rate));
        // At most the duration, which is rounded down and stands for the end of the sound.
        end = milliseconds(std::min<std::int64_t>(sound::msCeil(range->end, rate), lengthOf(head)));
    });
    // The event cannot report a failure; (0, 0) is emitted so that callers do not wait forever.
    events_.post(ticket.generation, [this, reason, begin, end] {
        fail(Operation::Scan, reason);
        Q_EMIT AudibleRangeDetected(begin, end);
    });
}

qint32 Editor::SilencePositionsGetCount() const {
    return static_cast<qint32>(sound_.silences.size());
}

void Editor::SilencePositionsGetRange(qint32 index, qint32& startMs, qint32& endMs) const {
    const bool known = index >= 0 && index < SilencePositionsGetCount();
    const SilenceMs silence =
        known ? sound_.silences[static_cast<std::size_t>(index)] : SilenceMs{};
    startMs = silence.start;
    endMs = silence.finish;
}

}  // namespace tarnwick::engine
