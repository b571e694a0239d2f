#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

// Shared by the benchmarks: comparing with the command of another tool, and measuring the peak
// memory.

namespace tarnwick::bench {

// A path quoted as one word of a shell command.
std::string quoted(const std::filesystem::path& path);

// Times our work and a shell command alternately, so that other load on the machine affects both,
// and compares the best run of each.
class Race {
  public:
    // `tool` is the program that `command` needs. If it is not installed, only our work runs and
    // the row says so. `before` runs before each run of either and is not timed.
    Race(std::string tool, std::string command, std::function<void()> before = {});

    // One iteration of a benchmark with manual time.
    template <class Work>
    void round(benchmark::State& state, Work work) {
        if (before_) before_();
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(seconds.count());
        note(seconds.count());
    }

    // Adds the ratio and the best times to the row.
    void report(benchmark::State& state) const;

  private:
    void note(double seconds);

    std::string tool_;
    std::string command_;
    std::function<void()> before_;
    bool installed_;
    double ours_ = 0.0;  // best so far in seconds, 0 before the first run
    double theirs_ = 0.0;
};

// Adds to a row the peak resident memory of this process during its lifetime, in megabytes.
class PeakMemory {
  public:
    explicit PeakMemory(benchmark::State& state);
    ~PeakMemory();
    PeakMemory(const PeakMemory&) = delete;
    PeakMemory& operator=(const PeakMemory&) = delete;

  private:
    benchmark::State& state_;
};

}  // namespace tarnwick::bench
