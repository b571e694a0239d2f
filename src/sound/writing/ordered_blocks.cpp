#include "sound/writing/ordered_blocks.h"

#include <utility>

namespace tarnwick::sound {

OrderedBlocks::OrderedBlocks(std::int64_t count, int threads, Make make)
    : count_(count), ahead_(2 * threads), make_(std::move(make)) {
    for (int i = 0; i < threads; ++i)
        threads_.emplace_back([this](const std::stop_token& stop) { run(stop); });
}

OrderedBlocks::~OrderedBlocks() {
    // Stop all of them before the first is joined.
    for (std::jthread& thread : threads_)
        thread.request_stop();
}

const OrderedBlocks::Block& OrderedBlocks::next() {
    std::unique_lock lock(mutex_);
    spare_.push_back(std::move(current_));
    changed_.wait(lock, [this] { return made_.contains(used_); });
    Made made = std::move(made_.extract(used_).mapped());
    if (made.failure) std::rethrow_exception(made.failure);
    ++used_;
    current_ = std::move(made.block);
    lock.unlock();
    changed_.notify_all();
    return current_;
}

void OrderedBlocks::run(const std::stop_token& stop) {
    for (;;) {
        std::int64_t number = 0;
        Made made;
        {
            std::unique_lock lock(mutex_);
            const auto mayBegin = [this] { return begun_ == count_ || begun_ < used_ + ahead_; };
            if (!changed_.wait(lock, stop, mayBegin) || begun_ == count_) return;
            number = begun_++;
            if (!spare_.empty()) {
                made.block = std::move(spare_.back());
                spare_.pop_back();
            }
        }
        made.block.clear();
        try {
            make_(number, made.block, stop);
        } catch (...) {
            made.failure = std::current_exception();
        }
        const bool failed = made.failure != nullptr;
        {
            const std::lock_guard lock(mutex_);
            if (failed) begun_ = count_;  // nothing after this one will be used
            made_.insert_or_assign(number, std::move(made));
        }
        changed_.notify_all();
        if (failed) return;
    }
}

}  // namespace tarnwick::sound
