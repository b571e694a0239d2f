#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>

#include "engine/event_queue.h"
#include "engine/sound_editor.h"
#include "sound/playback/player.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// Plays the sound and emits the editor's playback events in an order that makes sense to an
// operator: a request made after the sound has ended by itself, but before that is delivered, emits
// no event. UI thread.
class Playback {
  public:
    // `failed` is called with the reason if playing fails, just before SoundPlaybackStopped. If
    // playing continues in silence because there is no device, only the signal failed is emitted.
    Playback(SoundEditor& editor, EventQueue& events, std::function<void(ErrorCode)> failed);

    // Call when a sound that may be played is about to be loaded.
    void prepare() { player_.prepare(); }

    // Plays the frames [first, end). Stops what is playing now.
    void play(const sound::Timeline& timeline, qint64 first, qint64 end);
    void pause();
    void resume();
    void stop();    // no effect if nothing is playing
    void forget();  // resets the position to 0; call after stop()

    bool active() const { return state_ != State::AtRest; }  // playing or paused
    bool running() const { return state_ == State::Playing; }
    qint32 positionMs() const;  // stays where the last playing ended
    double exactMs() const;     // the same, exact to the frame; only while active

  private:
    enum class State { AtRest, Playing, Paused };
    using Signal = void (SoundEditor::*)();

    sound::PlayerEvents playerEvents();
    void report(Signal signal);
    void ended(quint64 play, ErrorCode code);  // delivery of the player's event

    SoundEditor& editor_;
    EventQueue& events_;
    std::function<void(ErrorCode)> failed_;
    State state_ = State::AtRest;
    quint64 play_{};                // counts the calls of play()
    quint64 over_ = 0;              // the last of them that ended by itself
    std::atomic<quint64> playing_;  // play_ for the player's thread
    int rate_ = 0;                  // of what played last, 0 before that
    sound::Player player_;          // declared last, as its thread uses the other members
};

}  // namespace tarnwick::engine
