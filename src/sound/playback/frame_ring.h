#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <vector>

namespace tarnwick::sound {

// A lock-free ring buffer of samples between two threads: one writes, one reads.
class FrameRing {
  public:
    // Holds up to `capacity` samples.
    explicit FrameRing(std::size_t capacity) : samples_(capacity) {}

    // Writer: the number of samples that fit now.
    std::size_t room() const {
        return samples_.size() -
               (written_.load(std::memory_order_relaxed) - read_.load(std::memory_order_acquire));
    }

    // Writer: appends samples; `count` must be at most room().
    void write(const float* samples, std::size_t count) {
        const std::size_t at = written_.load(std::memory_order_relaxed);
        const std::size_t place = at % samples_.size();
        const std::size_t straight = std::min(count, samples_.size() - place);
        std::copy_n(samples, straight, samples_.begin() + static_cast<std::ptrdiff_t>(place));
        std::copy_n(samples + straight, count - straight, samples_.begin());
        written_.store(at + count, std::memory_order_release);
    }

    // Reader: takes up to `count` samples and returns how many it got.
    std::size_t read(float* samples, std::size_t count) {
        const std::size_t at = read_.load(std::memory_order_relaxed);
        count = std::min(count, written_.load(std::memory_order_acquire) - at);
        const std::size_t place = at % samples_.size();
        const std::size_t straight = std::min(count, samples_.size() - place);
        std::copy_n(samples_.begin() + static_cast<std::ptrdiff_t>(place), straight, samples);
        std::copy_n(samples_.begin(), count - straight, samples + straight);
        read_.store(at + count, std::memory_order_release);
        return count;
    }

  private:
    std::vector<float> samples_;
    std::atomic<std::size_t> written_{0};  // in total; the index is this modulo the capacity
    std::atomic<std::size_t> read_{0};
};

}  // namespace tarnwick::sound
