#include "engine/playback.h"

#include <memory>

#include "engine/failure_codes.h"
#include "sound/samples/time.h"

namespace tarnwick::engine {

Playback::Playback(SoundEditor& editor, EventQueue& events, std::function<void(ErrorCode)> failed)
    : editor_(editor),
      events_(events),
      failed_(std::move(failed)),
      playing_(0),
      player_(playerEvents()) {}

sound::PlayerEvents Playback::playerEvents() {
    const auto over = [this](ErrorCode code) {
        events_.post(EventQueue::kAnyGeneration,
                     [this, play = playing_.load(), code] { ended(play, code); });
    };
    const auto silent = [this] {
        events_.post(EventQueue::kAnyGeneration, [this] {
            Q_EMIT editor_.failed({Operation::Play, {}, kPlaybackFailed, 0});
        });
    };
    return {.started = {},
            .ended = [over] { over(kOk); },
            .failed = [over](sound::SoundFailure failure) { over(codeOf(failure)); },
            .silent = silent};
}

void Playback::play(const sound::Timeline& timeline, qint64 first, qint64 end) {
    // After stop() the player reports nothing more about what played before, so its next report is
    // about this one.
    player_.stop();
    playing_ = ++play_;
    rate_ = timeline.format().rate;
    state_ = State::Playing;
    report(&SoundEditor::SoundPlaybackStarted);
    player_.play(std::make_shared<sound::Timeline>(timeline), first, end);
}

void Playback::pause() {
    if (state_ != State::Playing) return;
    player_.pause();
    state_ = State::Paused;
    report(&SoundEditor::SoundPlaybackPaused);
}

void Playback::resume() {
    if (state_ != State::Paused) return;
    player_.resume();
    state_ = State::Playing;
    report(&SoundEditor::SoundPlaybackStarted);
}

void Playback::stop() {
    if (!active()) return;
    player_.stop();
    state_ = State::AtRest;
    // Any generation: listeners must learn that playing is over even if the sound is dropped.
    events_.post(EventQueue::kAnyGeneration, [this] { Q_EMIT editor_.SoundPlaybackStopped(); });
}

void Playback::forget() { rate_ = 0; }

qint32 Playback::positionMs() const {
    return rate_ == 0 ? 0 : static_cast<qint32>(sound::msFloor(player_.position(), rate_));
}

double Playback::exactMs() const {
    return static_cast<double>(player_.position()) * 1000.0 / rate_;
}

void Playback::report(Signal signal) {
    events_.post([this, play = play_, signal] {
        if (play > over_) Q_EMIT(editor_.*signal)();
    });
}

void Playback::ended(quint64 play, ErrorCode code) {
    if (play != play_ || !active()) return;
    over_ = play;
    state_ = State::AtRest;
    if (code == kOk) {
        Q_EMIT editor_.SoundPlaybackEnded();
        return;
    }
    failed_(code);
    Q_EMIT editor_.SoundPlaybackStopped();
}

}  // namespace tarnwick::engine
