#include "reference.h"

#include <malloc.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace tarnwick::bench {

namespace {

double best(double known, double seconds) {
    return known == 0.0 || seconds < known ? seconds : known;
}

}  // namespace

std::string quoted(const std::filesystem::path& path) {
    std::string word = "'";
    for (const char letter : path.string())
        word += letter == '\'' ? "'\\''" : std::string(1, letter);
    return word + "'";
}

Race::Race(std::string tool, std::string command, std::function<void()> before)
    : tool_(std::move(tool)),
      command_(std::move(command) + " >/dev/null 2>&1"),
      before_(std::move(before)),
      installed_(std::system(("command -v " + tool_ + " >/dev/null 2>&1").c_str()) == 0) {}

void Race::note(double seconds) {
    ours_ = best(ours_, seconds);
    if (!installed_) return;
    if (before_) before_();
    const auto start = std::chrono::steady_clock::now();
    if (std::system(command_.c_str()) != 0) throw std::runtime_error(tool_ + " failed");
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    theirs_ = best(theirs_, taken.count());
}

void Race::report(benchmark::State& state) const {
    state.counters["best_ms"] = ours_ * 1e3;
    if (installed_) {
        state.counters[tool_ + "_ms"] = theirs_ * 1e3;
        state.counters["ratio_to_" + tool_] = ours_ / theirs_;
    } else {
        state.SetLabel(tool_ + " is not installed");
    }
}

PeakMemory::PeakMemory(benchmark::State& state) : state_(state) {
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // resets VmHWM, the peak memory
}

PeakMemory::~PeakMemory() {
    std::ifstream state("/proc/self/status");
    for (std::string word; state >> word;) {
        double kilobytes = 0.0;
        if (word == "VmHWM:" && state >> kilobytes)
            state_.counters["peak_MB"] = kilobytes * 1024.0 / 1e6;
    }
}

}  // namespace tarnwick::bench
