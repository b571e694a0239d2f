#include <benchmark/benchmark.h>

#include <cstdlib>

#include "reference.h"
#include "sound/reading/source.h"
#include "take.h"

// Opening an hour of MP3, compared with a player that decodes it and discards the samples.

namespace tarnwick::bench {
namespace {

void openMp3ToFullPeaks(benchmark::State& state) {
    const PeakMemory memory(state);
    const std::filesystem::path& file = outputFile();
    const std::string command =
        "lame --quiet -b 128 " + quoted(take()) + " " + quoted(file) + " 2>/dev/null";
    if (std::system(command.c_str()) != 0) {
        state.SkipWithError("lame is not installed");
        return;
    }
    Race race("mpg123", "mpg123 -q -t " + quoted(file));
    for (auto _ : state)
        race.round(state, [&] { benchmark::DoNotOptimize(sound::Source::open(file)); });
    race.report(state);
}
BENCHMARK(openMp3ToFullPeaks)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
