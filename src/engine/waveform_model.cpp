#include "engine/waveform_model.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/failure_codes.h"
#include "engine/sound_editor.h"

namespace tarnwick::engine {

WaveformModel::WaveformModel(SoundEditor& editor, const DeliveredSound& sound,
                             const Playback& playback, std::function<void()> analyse)
    : editor_(editor), sound_(sound), playback_(playback), analyse_(std::move(analyse)) {
    settings_.setVerticalScale(1.0f);
    for (const auto signal : {&SoundEditor::SoundPlaybackStarted, &SoundEditor::SoundPlaybackPaused,
                              &SoundEditor::SoundPlaybackEnded, &SoundEditor::SoundPlaybackStopped})
        connect(&editor, signal, this, [this] { Q_EMIT displayChanged(DisplayChange::Playback); });
}

void WaveformModel::Create(WindowHandle parent, int left, int top, int width, int height) {
    displayed_ = true;
    Q_EMIT displayCreated(parent, QRect(left, top, width, height));
}

void WaveformModel::GetDisplayRange(qint32& beginMs, qint32& endMs) const {
    const ViewRange view = resolved(view_, duration());
    beginMs = view.begin;
    endMs = view.end;
}

void WaveformModel::SetDisplayRange(qint32 beginMs, qint32 endMs) {
    if (endMs != -1) std::tie(beginMs, endMs) = std::minmax({beginMs, endMs});
    show({beginMs, endMs});
}

void WaveformModel::show(ViewRange view) {
    view_ = view;
    Q_EMIT displayChanged(DisplayChange::Range);
    view = resolved(view_, duration());
    Q_EMIT editor_.WaveRangeChanged(view.begin, view.end);
}

void WaveformModel::GetSelection(qint16& available, qint32& beginMs, qint32& endMs) const {
    available = selected_ ? 1 : 0;
    beginMs = selection_.begin;
    endMs = selection_.end;
}

void WaveformModel::SetSelection(qint16 available, qint32 beginMs, qint32 endMs) {
    selected_ = available == 1 && sound_.timeline;
    selection_ = {0, 0};
    if (selected_) {
        const qint32 last = duration();
        if (endMs == -1) endMs = last;
        std::tie(beginMs, endMs) = std::minmax({beginMs, endMs});
        selection_ = {std::clamp(beginMs, 0, last), std::clamp(endMs, 0, last)};
    }
    Q_EMIT displayChanged(DisplayChange::Selection);
    Q_EMIT editor_.WaveSelectionChanged(selected_ ? 1 : 0, selection_.begin, selection_.end);
}

double WaveformModel::zoomCentre() const {
    const ViewRange view = selected_ ? selection_ : resolved(view_, duration());
    return (0.0 + view.begin + view.end) / 2;
}

void WaveformModel::ZoomIn() { show(zoomedIn(view_, zoomCentre(), duration())); }

void WaveformModel::ZoomOut() { show(zoomedOut(view_, zoomCentre(), duration())); }

void WaveformModel::ZoomFull() { show({}); }

void WaveformModel::ZoomToSelection(qint32) {
    show(selected_ ? zoomedTo(selection_, duration()) : view_);
}

void WaveformModel::SetSettings(const WaveformSettings& settings) {
    settings_ = settings;
    Q_EMIT displayChanged(DisplayChange::Settings);
}

int WaveformModel::channels() const {
    return sound_.timeline ? sound_.timeline->format().channels : 0;
}

int WaveformModel::sampleRate() const {
    return sound_.timeline ? sound_.timeline->format().rate : 0;
}

double WaveformModel::playPosition() const {
    return playback_.active() ? playback_.exactMs() : -1.0;
}

bool WaveformModel::columns(int channel, double beginMs, double endMs,
                            std::span<WaveColumn> columns) const {
    if (!sound_.timeline || !sound_.analysed) return false;
    const double framesPerMs = sound_.timeline->format().rate / 1000.0;
    bool drawn = false;
    const Reason reason = attempt([&] {
        std::vector<sound::PeakRange> peaks(columns.size());
        drawn =
            sound_.timeline->columns(channel, beginMs * framesPerMs, endMs * framesPerMs, peaks);
        std::ranges::transform(peaks, columns.begin(), [](const sound::PeakRange& peak) {
            return WaveColumn{peak.minimum, peak.maximum};
        });
    });
    return drawn && reason == kOk;
}

std::span<const SilenceMs> WaveformModel::silences() const {
    if (!sound_.silencesFit) return {};
    return sound_.silences;
}

void WaveformModel::notifyMouse(qint16 kind) { Q_EMIT editor_.WaveMouseNotification(kind, 0, 0); }

void WaveformModel::soundEdited() {
    Q_EMIT displayChanged(DisplayChange::Sound);
    if (!selected_ || selection_.end <= duration()) return;
    const bool behind = selection_.begin >= duration();
    SetSelection(behind ? 0 : 1, selection_.begin, selection_.end);
}

bool WaveformModel::reset() {
    view_ = {};
    selection_ = {0, 0};
    return std::exchange(selected_, false);
}

}  // namespace tarnwick::engine
