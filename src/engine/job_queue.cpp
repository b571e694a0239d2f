#include "engine/job_queue.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tarnwick::engine {

JobQueue::JobQueue(int threads) {
    try {
        for (int i = 0; i < threads; ++i)
            threads_.emplace_back([this] { run(); });
    } catch (...) {
        end();
        throw;
    }
}

JobQueue::~JobQueue() { end(); }

void JobQueue::end() {
    std::list<Entry> dropped;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        for (auto entry = jobs_.begin(); entry != jobs_.end();) {
            const auto next = std::next(entry);
            if (!entry->running) dropped.splice(dropped.end(), jobs_, entry);
            entry = next;
        }
    }
    changed_.notify_all();
    threads_.clear();
}

void JobQueue::add(Job job, std::string key) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back({std::move(key), std::move(job)});
    }
    changed_.notify_one();
}

// The first job that need not wait for another with its key. Call with mutex_ held.
std::list<JobQueue::Entry>::iterator JobQueue::nextReady() {
    return std::find_if(jobs_.begin(), jobs_.end(), [this](const Entry& entry) {
        if (entry.running) return false;
        const auto first = std::ranges::find(jobs_, entry.key, &Entry::key);
        return &*first == &entry;
    });
}

void JobQueue::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        auto entry = jobs_.end();
        changed_.wait(lock, [&] { return ending_ || (entry = nextReady()) != jobs_.end(); });
        if (ending_) return;
        entry->running = true;
        Job job = std::move(entry->job);
        lock.unlock();
        job();
        job = nullptr;  // outside the lock, as freeing what it holds can take long
        lock.lock();
        jobs_.erase(entry);
        changed_.notify_all();  // a job with the same key may be waiting
    }
}

}  // namespace tarnwick::engine
