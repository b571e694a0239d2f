#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

// What the rows of the benchmarks share: the command of another tool to compare with, and the
// memory that a row needs at most.

namespace tarnwick::bench {

// A path as a word of a shell command.
std::string quoted(const std::filesystem::path& path);

// Times our work and a shell command in turns, so that what else the machine does meets both, and
// compares the best run of each.
class Race {
  public:
    // `tool` is the program that `command` needs; where it is not installed, ours runs alone and
    // the row says so. `before` prepares each run, ours or the command's, untimed.
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

// Adds to a row the most resident memory of this process while this lives, in megabytes.
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
