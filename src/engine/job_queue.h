#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarnwick::engine {

// Runs jobs on its threads in the order in which they were added. With more than one thread several
// jobs run at a time, but those with the same key still run one after the other in their order. A
// job must not throw. The destructor drops waiting jobs and waits for running ones.
class JobQueue {
  public:
    using Job = std::function<void()>;

    explicit JobQueue(int threads = 1);
    ~JobQueue();
    JobQueue(const JobQueue&) = delete;
    JobQueue& operator=(const JobQueue&) = delete;

    void add(Job job, std::string key = {});  // any thread

  private:
    struct Entry {
        std::string key;
        Job job;
        bool running = false;
    };

    void run();
    void end();
    std::list<Entry>::iterator nextReady();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::list<Entry> jobs_;  // includes those that are running
    bool ending_ = false;
    std::vector<std::jthread> threads_;  // declared last, as they use the other members
};

}  // namespace tarnwick::engine
