#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tarnwick::engine {

// A thread that runs jobs one after the other in the order in which they were added. A job must
// not throw. The destructor drops the jobs that wait and joins the one that runs.
class JobQueue {
  public:
    using Job = std::function<void()>;

    JobQueue();
    ~JobQueue();
    JobQueue(const JobQueue&) = delete;
    JobQueue& operator=(const JobQueue&) = delete;

    void add(Job job);  // any thread

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job> jobs_;
    bool ending_ = false;
    std::jthread thread_;  // last: it uses the others
};

}  // namespace tarnwick::engine
