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

#include "sound/writing/sound_block.h"

namespace tarnwick::sound {

// Makes blocks of sound in advance on threads of its own and hands them out in order. The threads
// end with it. Used by one thread.
class OrderedBlocks {
  public:
    using Block = SoundBlock;
    // Fills the block with this number, counted from 0. Called on several threads, on each in
    // rising order. What it throws is rethrown by next(). Should return early on a stop request.
    using Make =
        std::function<void(std::int64_t number, Block& block, const std::stop_token& stop)>;

    // Makes `count` blocks on `threads` threads. Each thread keeps at most one block waiting while
    // it makes another.
    OrderedBlocks(std::int64_t count, int threads, Make make);
    ~OrderedBlocks();
    OrderedBlocks(const OrderedBlocks&) = delete;
    OrderedBlocks& operator=(const OrderedBlocks&) = delete;

    // Waits for the next block, which stays valid until the next call. Call at most `count` times.
    // Rethrows what making the block threw.
    const Block& next();

  private:
    struct Made {
        Block block;
        std::exception_ptr failure;
    };

    void run(const std::stop_token& stop);

    const std::int64_t count_;
    const std::int64_t ahead_;  // limit of blocks in the making or waiting
    const Make make_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::int64_t begun_ = 0;
    std::int64_t used_ = 0;
    std::map<std::int64_t, Made> made_;
    std::vector<Block> spare_;  // used blocks, kept to reuse their memory
    Block current_;
    std::vector<std::jthread> threads_;  // declared last, as they use the other members
};

}  // namespace tarnwick::sound
