#include "sound/playback/player.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "sound/playback/patient_device.h"
#include "sound/playback/play_clock.h"
#include "sound/playback/playback.h"

namespace tarnwick::sound {

namespace {

// How often the device is polled. This bounds the delay of the `ended` event.
constexpr std::chrono::milliseconds kTick{10};

// How long the device stays open after the end, as it may report a little more than was heard.
constexpr std::chrono::milliseconds kTail{50};

PlayClock::Time now() { return std::chrono::steady_clock::now(); }

}  // namespace

// The caller stores what it wants under a lock; the thread compares that with what it is doing.
// Each play() and stop() starts a new generation, and the thread discards results of older ones.
class Player::Machine {
  public:
    explicit Machine(PlayerEvents events) : events_(std::move(events)) {
        thread_ = std::thread([this] { run(); });
    }

    ~Machine() {
        begin(std::nullopt, true);
        thread_.join();
    }

    // Stops what is playing, then plays `stretch`, if any. With `last`, the thread ends.
    void begin(std::optional<Stretch> stretch, bool last = false) {
        const std::lock_guard silence(reporting_);
        const std::lock_guard lock(mutex_);
        ++generation_;
        clock_.hold(now());
        playing_ = stretch.has_value();
        paused_ = false;
        leaving_ = last;
        if (stretch) {
            first_ = stretch->first;
            clock_ = PlayClock(stretch->sound->format().rate);
        }
        wanted_ = std::move(stretch);
        changed_.notify_one();
    }

    void prepare() {
        const std::lock_guard lock(mutex_);
        preparing_ = true;
        changed_.notify_one();
    }

    void setPaused(bool paused) {
        const std::lock_guard lock(mutex_);
        if (!playing_) return;
        if (paused) clock_.hold(now());  // the thread restarts it together with the device
        paused_ = paused;
        changed_.notify_one();
    }

    std::int64_t position() {
        const std::lock_guard lock(mutex_);
        return first_ + clock_.position(now());
    }

    bool playing() {
        const std::lock_guard lock(mutex_);
        return playing_;
    }

    bool paused() {
        const std::lock_guard lock(mutex_);
        return paused_;
    }

  private:
    void run();
    void perform(std::uint64_t generation, Stretch stretch);
    bool follow(std::uint64_t generation, Playback& playback);
    void finish(std::uint64_t generation, const std::function<void()>& event);
    void report(std::uint64_t generation, const std::function<void()>& event);
    bool current(std::uint64_t generation) const { return generation_.load() == generation; }

    const PlayerEvents events_;
    PatientDevice device_;  // used by the thread only

    std::mutex reporting_;  // held while an event is reported; locked before mutex_
    std::mutex mutex_;      // guards what follows
    std::condition_variable changed_;
    std::atomic<std::uint64_t> generation_{};  // written under the lock
    std::optional<Stretch> wanted_;
    PlayClock clock_;
    std::int64_t first_ = 0;
    bool playing_ = false;
    bool paused_ = false;
    bool preparing_{};
    bool leaving_ = false;

    std::thread thread_;
};

void Player::Machine::run() {
    std::unique_lock lock(mutex_);
    while (!leaving_) {
        if (std::exchange(preparing_, false)) device_.prepare();
        if (!wanted_) {
            changed_.wait(lock);
            continue;
        }
        const std::uint64_t generation = generation_;
        Stretch stretch = *std::exchange(wanted_, std::nullopt);
        lock.unlock();
        try {
            perform(generation, std::move(stretch));
        } catch (const SoundError& error) {
            finish(generation, [&] { events_.failed ? events_.failed(error.failure()) : void(); });
        } catch (const std::bad_alloc&) {
            finish(generation,
                   [&] { events_.failed ? events_.failed(SoundFailure::NoSpace) : void(); });
        }
        lock.lock();
    }
}

// Plays until the end, or until a newer generation begins.
void Player::Machine::perform(std::uint64_t generation, Stretch stretch) {
    Playback playback(std::move(stretch), device_);
    bool sounding = false;
    bool begun = false;
    bool silent = false;
    while (current(generation)) {
        while (playback.feed()) {
            if (!current(generation)) return;
        }
        std::unique_lock lock(mutex_);
        const bool pause = paused_;
        lock.unlock();
        if (pause == sounding) {
            pause ? playback.hold() : playback.start();
            sounding = !pause;
        }
        if (sounding && !begun) report(generation, events_.started);
        begun = begun || sounding;
        if (sounding && !silent && !playback.audible() && playback.frames() > 0) {
            report(generation, events_.silent);
            silent = true;
        }
        const bool ended = sounding && follow(generation, playback);
        lock.lock();
        if (ended) {
            changed_.wait_for(lock, kTail, [&] { return !current(generation); });
            return;
        }
        const auto otherwise = [&] { return !current(generation) || paused_ == sounding; };
        if (sounding) {
            changed_.wait_for(lock, kTick, otherwise);
        } else {
            changed_.wait(lock, otherwise);
        }
    }
}

// Corrects the clock. When the end is reached, reports it and returns true.
bool Player::Machine::follow(std::uint64_t generation, Playback& playback) {
    playback.watch(now());
    const std::optional<std::int64_t> played = playback.played();
    {
        const std::lock_guard lock(mutex_);
        if (!current(generation) || paused_) return false;
        clock_.limit(playback.taken());
        // The clock starts only when the device has begun to play, which takes some time.
        if (played != 0) clock_.run(now());
        if (clock_.running() && played) clock_.report(now(), *played);
        if (clock_.position(now()) < playback.frames()) return false;
    }
    finish(generation, events_.ended);
    return true;
}

// Marks the playing as over and calls `event`.
void Player::Machine::finish(std::uint64_t generation, const std::function<void()>& event) {
    const std::lock_guard silence(reporting_);
    {
        const std::lock_guard lock(mutex_);
        if (!current(generation)) return;
        clock_.hold(now());
        playing_ = false;
        paused_ = false;
    }
    if (event) event();
}

void Player::Machine::report(std::uint64_t generation, const std::function<void()>& event) {
    const std::lock_guard silence(reporting_);
    if (event && current(generation)) event();
}

Player::Player(PlayerEvents events) : machine_(std::make_unique<Machine>(std::move(events))) {}

Player::~Player() = default;

void Player::play(std::shared_ptr<const FrameReader> sound, std::int64_t first, std::int64_t end) {
    if (!sound || first < 0 || first > end || end > sound->frames()) {
        throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
    }
    machine_->begin(Stretch{std::move(sound), first, end});
}

void Player::prepare() { machine_->prepare(); }
void Player::pause() { machine_->setPaused(true); }
void Player::resume() { machine_->setPaused(false); }
void Player::stop() { machine_->begin(std::nullopt); }
std::int64_t Player::position() const { return machine_->position(); }
bool Player::playing() const { return machine_->playing(); }
bool Player::paused() const { return machine_->paused(); }

}  // namespace tarnwick::sound
