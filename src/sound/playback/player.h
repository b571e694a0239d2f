#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sound/samples/frame_reader.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

// What a player reports. Called on the player's own thread; a handler must not call the player
// and must not wait for the thread that does. Any of them may be empty.
struct PlayerEvents {
    std::function<void()> started;             // the stretch begins to sound
    std::function<void()> ended;               // its last frame has been heard
    std::function<void(SoundFailure)> failed;  // reading the sound failed; playing has stopped
    std::function<void()> silent{};            // no (more) device; once per stretch
};

// Plays a stretch of a sound on the default sound device. If there is none, or it goes away or
// hangs during playing, playing continues in silence and in real time, so that everything else
// happens as usual.
//
// All functions must be called from the same thread. They return promptly; the work is done on the
// player's own thread. After play(), stop() or the destructor has returned, nothing more is
// reported about what played before.
class Player {
  public:
    explicit Player(PlayerEvents events);
    ~Player();  // stops
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Connects to the sound server in the background, so that the first play() starts as fast as
    // later ones.
    void prepare();

    // Plays the frames [first, end). What is playing stops without an event. Reports `started`,
    // then `ended` or `failed`, unless stopped before. Throws SoundError: BadRange.
    void play(std::shared_ptr<const FrameReader> sound, std::int64_t first, std::int64_t end);

    void pause();   // no effect if nothing is playing
    void resume();  // continues after pause()
    void stop();    // no event

    // The frame of the sound that is heard now, within 20 ms. Does not move while paused; stays
    // where the sound ended or was stopped; 0 before the first play().
    std::int64_t position() const;

    bool playing() const;  // from play() to the end or stop(), also while paused
    bool paused() const;

  private:
    class Machine;  // the player's thread and what it shares with the caller
    std::unique_ptr<Machine> machine_;
};

}  // namespace tarnwick::sound
