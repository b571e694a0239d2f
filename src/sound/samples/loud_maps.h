#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "sound/samples/peaks.h"

namespace tarnwick::sound {

// Which frames of one block of Peaks::kFinestFrames are loud, one bit each.
class LoudBits {
  public:
    void set(int frame) { words_[static_cast<std::size_t>(frame / 64)] |= bit(frame); }

    // The first or last loud frame in [first, end), within 0 to 256; -1 if there is none.
    int firstIn(int first, int end) const {
        for (int word = first / 64; word * 64 < end; ++word)
            if (const std::uint64_t bits = masked(word, first, end))
                return word * 64 + std::countr_zero(bits);
        return -1;
    }
    int lastIn(int first, int end) const {
        for (int word = (end - 1) / 64; word >= first / 64; --word)
            if (const std::uint64_t bits = masked(word, first, end))
                return word * 64 + 63 - std::countl_zero(bits);
        return -1;
    }

  private:
    static std::uint64_t bit(int frame) { return std::uint64_t{1} << (frame % 64); }
    // The bits of a word that belong to frames in [first, end).
    std::uint64_t masked(int word, int first, int end) const {
        std::uint64_t bits = words_[static_cast<std::size_t>(word)];
        if (word == first / 64) bits &= ~std::uint64_t{0} << (first % 64);
        if (word == end / 64) bits &= bit(end) - 1;
        return bits;
    }

    std::array<std::uint64_t, Peaks::kFinestFrames / 64> words_ = {};
};

// Caches the blocks of a source that scans had to examine sample by sample, so that a scan after an
// edit reads only new blocks. Keyed by threshold and gain. Emptied when it reaches kMostBlocks. Any
// thread.
class LoudMaps {
  public:
    struct Key {
        double limit = 0.0;
        double gain = 1.0;
        friend auto operator<=>(const Key&, const Key&) = default;
    };

    std::optional<LoudBits> find(const Key& key, std::int64_t block) const {
        const std::lock_guard lock(mutex_);
        const auto map = maps_.find(key);
        if (map == maps_.end()) return {};
        const auto found = map->second.find(block);
        if (found == map->second.end()) return {};
        return found->second;
    }

    void keep(const Key& key, std::int64_t block, const LoudBits& bits) {
        const std::lock_guard lock(mutex_);
        if (held_ >= kMostBlocks) {
            maps_.clear();
            held_ = 0;
        }
        held_ += maps_[key].emplace(block, bits).second ? 1 : 0;
    }

  private:
    static constexpr std::size_t kMostBlocks = 100'000;  // about 8 MB

    mutable std::mutex mutex_;
    std::map<Key, std::unordered_map<std::int64_t, LoudBits>> maps_;
    std::size_t held_ = 0;
};

}  // namespace tarnwick::sound
