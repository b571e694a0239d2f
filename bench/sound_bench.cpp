#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "sound/silence_scan.h"
#include "sound/time.h"
#include "take.h"

// The store and the timeline on long recordings. Ratios are best run against best run, side by
// side on the same machine.

namespace tarnwick::bench {
namespace {

using namespace tarnwick::sound;

constexpr int kThreshold = 589;
constexpr std::int64_t kPauseMs = 1500;

// Notes how the best iteration compares with a command's best run.
class Ratio {
  public:
    template <class Work>
    void time(benchmark::State& state, Work work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(seconds);
        best_ = std::min(best_, seconds);
    }
    void report(benchmark::State& state, double reference) const {
        if (reference > 0.0) state.counters["ratio_to_ffmpeg"] = best_ / reference;
    }

  private:
    double best_ = 1e9;
};

std::int64_t pauseOf(const Timeline& timeline) { return frameAt(kPauseMs, timeline.format().rate); }

void openToFullPeaks(benchmark::State& state) {
    Source::open(take());  // warm
    Ratio ratio;
    for (auto _ : state)
        ratio.time(state, [] { benchmark::DoNotOptimize(Source::open(take())); });
    ratio.report(state, ffmpegSeconds(""));
}
BENCHMARK(openToFullPeaks)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void firstScan(benchmark::State& state) {
    Ratio ratio;
    for (auto _ : state) {
        const Timeline timeline(Source::open(take()));  // anew: nothing is remembered
        ratio.time(state, [&] {
            state.counters["silences"] =
                static_cast<double>(findSilences(timeline, kThreshold, pauseOf(timeline)).size());
        });
    }
    ratio.report(state, ffmpegSeconds("-af silencedetect"));
}
BENCHMARK(firstScan)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// What an inserted pause costs until the waveform and the silences are up to date.
void insertAndScan(benchmark::State& state) {
    const Timeline timeline(Source::open(state.range(0) == 6 ? sixHours() : take()));
    std::vector<PeakRange> columns(1500);
    findSilences(timeline, kThreshold, pauseOf(timeline));
    std::mt19937_64 random(3);
    for (auto _ : state) {
        const auto at =
            static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(timeline.frames()));
        const Timeline edited = timeline.inserted(at, pauseOf(timeline));
        edited.columns(0, 0.0, static_cast<double>(edited.frames()), columns);
        benchmark::DoNotOptimize(findSilences(edited, kThreshold, pauseOf(timeline)));
    }
}
BENCHMARK(insertAndScan)->Arg(1)->Arg(6)->ArgName("hours")->Unit(benchmark::kMillisecond);

// Six hours of stereo under thousands of edits, each with its scan and its undo state kept.
void editsOnSixHours(benchmark::State& state) {
    std::vector<Timeline> undo{Timeline(Source::open(sixHours()))};
    std::vector<PeakRange> columns(1500);
    std::mt19937_64 random(4);
    for (auto _ : state) {
        const Timeline& now = undo.back();
        const auto first = static_cast<std::int64_t>(
            random() % static_cast<std::uint64_t>(now.frames() - 200'000));
        switch (random() % 3) {
            case 0:
                undo.push_back(now.inserted(first, 66'150));
                break;
            case 1:
                undo.push_back(now.removed(first, first + 50'000));
                break;
            default:
                undo.push_back(now.scaled(first, first + 200'000, 0.7));
                break;
        }
        undo.back().columns(1, 0.0, static_cast<double>(undo.back().frames()), columns);
        benchmark::DoNotOptimize(findSilences(undo.back(), kThreshold, pauseOf(undo.back())));
    }
    state.counters["resident_MB"] = residentMegabytes();
}
BENCHMARK(editsOnSixHours)->Iterations(5000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
