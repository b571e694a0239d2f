#include "sound/playback/patient_device.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace tarnwick::sound {

namespace {

// A working sound server answers within milliseconds, one that must be started within a second.
constexpr std::chrono::seconds kPatience{2};

}  // namespace

// Shared with the thread, so that a thread left waiting for a hung server keeps its device alive.
class PatientDevice::Line {
  public:
    using Task = std::function<bool(AudioDevice&)>;

    AudioDevice& device() { return *device_; }

    // Runs a task on the thread and returns its result; false if that takes too long.
    bool ask(Task task) {
        std::unique_lock lock(mutex_);
        if (hung_) return false;
        tasks_.push_back(std::move(task));
        const std::uint64_t ticket = ++asked_;
        changed_.notify_all();
        if (changed_.wait_for(lock, kPatience, [&] { return done_ >= ticket; })) return result_;
        hung_ = true;
        tasks_.clear();
        return false;
    }

    // Queues a task and does not wait for it.
    void tell(Task task) {
        const std::lock_guard lock(mutex_);
        if (hung_) return;
        tasks_.push_back(std::move(task));
        ++asked_;
        changed_.notify_all();
    }

    // Ends the thread after the tasks in the queue; none may follow. Returns false if that takes
    // too long.
    bool end() {
        std::unique_lock lock(mutex_);
        ending_ = true;
        changed_.notify_all();
        return changed_.wait_for(lock, kPatience, [&] { return ended_; });
    }

    void run() {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [&] { return ending_ || !tasks_.empty(); });
            if (tasks_.empty()) break;
            const Task task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            const bool result = task(*device_);
            lock.lock();
            result_ = result;
            ++done_;
            if (hung_) renew(lock);
            changed_.notify_all();
        }
        lock.unlock();
        device_.reset();
        lock.lock();
        ended_ = true;
        changed_.notify_all();
    }

  private:
    // The server answers again. Starts afresh, as the callers have given up on all earlier tasks.
    void renew(std::unique_lock<std::mutex>& lock) {
        lock.unlock();
        device_ = std::make_unique<AudioDevice>();
        lock.lock();
        done_ = asked_;
        hung_ = false;
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::unique_ptr<AudioDevice> device_ = std::make_unique<AudioDevice>();
    std::deque<Task> tasks_;
    std::uint64_t asked_ = 0;
    std::uint64_t done_ = 0;
    bool result_ = false;  // of the task done last
    bool hung_ = false;
    bool ending_ = false;
    bool ended_ = false;
};

PatientDevice::PatientDevice()
    : line_(std::make_shared<Line>()), thread_([line = line_] { line->run(); }) {}

PatientDevice::~PatientDevice() {
    if (line_->end())
        thread_.join();
    else
        thread_.detach();
}

void PatientDevice::prepare() {
    line_->tell([](AudioDevice& device) { return device.connect(); });
}

bool PatientDevice::open(int rate, int channels, std::int64_t frames,
                         std::shared_ptr<FrameRing> ring) {
    open_ = line_->ask([=](AudioDevice& device) mutable {
        return device.open(rate, channels, frames, std::move(ring));
    });
    return open_;
}

bool PatientDevice::start() {
    return open_ && line_->ask([](AudioDevice& device) { return device.start(); });
}

void PatientDevice::hold() {
    line_->tell([](AudioDevice& device) {
        device.hold();
        return true;
    });
}

void PatientDevice::close() {
    if (!std::exchange(open_, false)) return;
    line_->tell([](AudioDevice& device) {
        device.close();
        return true;
    });
}

bool PatientDevice::lost() const { return line_->device().lost(); }

std::int64_t PatientDevice::taken() const { return line_->device().taken(); }

std::optional<std::int64_t> PatientDevice::played() const {
    return open_ ? line_->device().played() : std::nullopt;
}

}  // namespace tarnwick::sound
