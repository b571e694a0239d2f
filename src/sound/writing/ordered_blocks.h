#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

#include "sound/samples/sound_block.h"

namespace tarnwick::sound {

// Blocks of sound that threads of its own make ahead of the one who uses them, and that are
// handed out in order. No thread outlives it. Used by one thread.
class OrderedBlocks {
  public:
    using Block = SoundBlock;
    // Fills the block of that number, counted from 0. Called on several threads, but by each in
    // rising order. What it throws comes out of next(). It ends early when a stop is requested.
    using Make =
        std::function<void(std::int64_t number, Block& block, const std::stop_token& stop)>;

    // Makes `count` blocks on `threads` threads; each is at most a block ahead of the user.
    OrderedBlocks(std::int64_t count, int threads, Make make);
    ~OrderedBlocks();
    OrderedBlocks(const OrderedBlocks&) = delete;
    OrderedBlocks& operator=(const OrderedBlocks&) = delete;

    // Waits for the next block, at most `count` times; it is valid until the next call. Rethrows
    // what making it threw.
    const Block& next();

  private:
    struct Made {
        Block block;
        std::exception_ptr failure;
    };

    void run(const std::stop_token& stop);

    const std::int64_t count_;
    const std::int64_t ahead_;  // blocks that may be made or wait at a time
    const Make make_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::int64_t begun_ = 0;
    std::int64_t used_ = 0;
    std::map<std::int64_t, Made> made_;
    std::vector<Block> spare_;  // given back, for the memory that they hold
    Block current_;
    std::vector<std::jthread> threads_;  // last: they use the others
};

}  // namespace tarnwick::sound
