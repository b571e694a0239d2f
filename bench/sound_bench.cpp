#include <benchmark/benchmark.h>

#include <random>

#include "reference.h"
#include "sound/samples/time.h"
#include "sound/timeline/silence_scan.h"
#include "take.h"

// The source and the timeline with long recordings.

namespace tarnwick::bench {
namespace {

using namespace tarnwick::sound;

constexpr int kThreshold = 589;
constexpr std::int64_t kPauseMs = 1500;

std::string ffmpeg(const char* filter) {
    return "ffmpeg -v error -nostdin -i " + quoted(take()) + " " + filter + " -f null -";
}

std::int64_t pauseOf(const Timeline& timeline) { return frameAt(kPauseMs, timeline.format().rate); }

void openToFullPeaks(benchmark::State& state) {
    const PeakMemory memory(state);
    Source::open(take());  // warms the disk cache
    Race race("ffmpeg", ffmpeg(""));
    for (auto _ : state)
        race.round(state, [] { benchmark::DoNotOptimize(Source::open(take())); });
    race.report(state);
}
BENCHMARK(openToFullPeaks)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void firstScan(benchmark::State& state) {
    const PeakMemory memory(state);
    Race race("ffmpeg", ffmpeg("-af silencedetect"));
    for (auto _ : state) {
        const Timeline timeline(Source::open(take()));  // a new source has an empty scan cache
        race.round(state, [&] {
            state.counters["silences"] =
                static_cast<double>(findSilences(timeline, kThreshold, pauseOf(timeline)).size());
        });
    }
    race.report(state);
}
BENCHMARK(firstScan)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// The operator changes the threshold; the scan cache holds nothing for the new one.
void scanAgain(benchmark::State& state) {
    const PeakMemory memory(state);
    const Timeline timeline(Source::open(take()));
    int threshold = kThreshold;
    findSilences(timeline, threshold, pauseOf(timeline));
    Race race("ffmpeg", ffmpeg("-af silencedetect"));
    for (auto _ : state) {
        threshold += 37;
        race.round(state, [&] {
            benchmark::DoNotOptimize(findSilences(timeline, threshold, pauseOf(timeline)));
        });
    }
    race.report(state);
}
BENCHMARK(scanAgain)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// Inserts a pause and updates the waveform and the silences.
void insertAndScan(benchmark::State& state) {
    const PeakMemory memory(state);
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

// Thousands of edits on six hours of stereo, each with a scan and with its undo state kept.
void editsOnSixHours(benchmark::State& state) {
    const PeakMemory memory(state);
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
}
BENCHMARK(editsOnSixHours)->Iterations(5000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
