#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>

#include "engine/event_queue.h"
#include "engine/sound_editor.h"
#include "sound/playback/player.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// What plays, and its events on the editor, in the order in which an operator would see them:
// whatever was asked for while the sound was ending by itself is silent. UI thread.
class Playback {
  public:
    // `failed` is told why playing broke off, just before SoundPlaybackStopped.
    Playback(SoundEditor& editor, EventQueue& events, std::function<void(ErrorCode)> failed);

    // A sound is coming that may be played.
    void prepare() { player_.prepare(); }

    // Plays the frames [first, end) instead of what plays now.
    void play(const sound::Timeline& timeline, qint64 first, qint64 end);
    void pause();
    void resume();
    void stop();    // no effect when nothing plays
    void forget();  // position 0 again, once stopped

    bool active() const { return state_ != State::AtRest; }  // playing or paused
    bool running() const { return state_ == State::Playing; }
    qint32 positionMs() const;  // stays where the last playing ended
    double exactMs() const;     // the same, to the frame

  private:
    enum class State { AtRest, Playing, Paused };
    using Signal = void (SoundEditor::*)();

    sound::PlayerEvents playerEvents();
    void report(Signal signal);
    void ended(quint64 play, ErrorCode code);  // an event of the player, delivered

    SoundEditor& editor_;
    EventQueue& events_;
    std::function<void(ErrorCode)> failed_;
    State state_ = State::AtRest;
    quint64 play_ = 0;              // counts the calls of play()
    quint64 over_ = 0;              // the last of them that ended by itself
    std::atomic<quint64> playing_;  // play_ as the player's thread may know it
    int rate_ = 0;                  // of what played last, 0 before that
    sound::Player player_;          // last: its thread uses the others
};

}  // namespace tarnwick::engine
