#include "engine/job_queue.h"

#include <utility>

namespace tarnwick::engine {

JobQueue::JobQueue() : thread_([this] { run(); }) {}

JobQueue::~JobQueue() {
    std::deque<Job> dropped;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        dropped.swap(jobs_);
    }
    changed_.notify_one();
    thread_.join();
}

void JobQueue::add(Job job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    changed_.notify_one();
}

void JobQueue::run() {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
            if (ending_) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job();
    }
}

}  // namespace tarnwick::engine
