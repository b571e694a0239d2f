#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sound/samples/frame_reader.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

// What a player reports. Called from the player's own thread; a handler must not call the player
// and must not wait for the thread that does. Any of them may be empty.
struct PlayerEvents {
    std::function<void()> started;             // the stretch begins to sound
    std::function<void()> ended;               // its last frame has been heard
    std::function<void(SoundFailure)> failed;  // the sound cannot be read further; it has stopped
};

// Plays a stretch of a sound on the default sound device. Where there is none, or it goes away or
// hangs in mid-play, playing goes on in silence and in real time, so that everything else happens
// as usual.
//
// All functions: one thread, the same always. They return promptly; the work is done on a thread
// of the player's own. Once play(), stop() or the destructor has returned, nothing is reported any
// more of what played before.
class Player {
  public:
    explicit Player(PlayerEvents events);
    ~Player();  // stops
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Connects to the sound server in the background, so that the first play() begins as soon as
    // every other.
    void prepare();

    // Plays the frames [first, end); what plays now is given up without an event. Reports started,
    // then ended or failed, unless stopped before. Throws SoundError: BadRange.
    void play(std::shared_ptr<const FrameReader> sound, std::int64_t first, std::int64_t end);

    void pause();   // holds; no effect when nothing plays
    void resume();  // goes on after pause()
    void stop();    // no event

    // The frame of the sound that is heard now, within 20 ms. Holds while paused, stays where the
    // sound ended or was stopped; 0 before the first play().
    std::int64_t position() const;

    bool playing() const;  // from play() to the end or stop(), while paused too
    bool paused() const;

  private:
    class Machine;  // the player's thread and what it shares with the caller
    std::unique_ptr<Machine> machine_;
};

}  // namespace tarnwick::sound
