#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <algorithm>
#include <cstdlib>
#include <random>
#include <thread>

#include "engine_desk.h"
#include "reference.h"
#include "take.h"

// The time from a click to the sound.

namespace tarnwick::bench {
namespace {

// A separate sound server with a null sink, which plays in real time without output.
class SoundServer {
  public:
    SoundServer() {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));
        qunsetenv("PULSE_SERVER");
        runs_ = std::system(
                    "pulseaudio -n --daemonize=yes --exit-idle-time=-1 --load=module-null-sink "
                    "--load=module-native-protocol-unix >/dev/null 2>&1") == 0;
    }
    ~SoundServer() {
        if (runs_ && std::system("pulseaudio --kill >/dev/null 2>&1") != 0) runs_ = false;
        qputenv("XDG_RUNTIME_DIR", former_);
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    bool runs() const { return runs_; }

  private:
    const QTemporaryDir folder_;
    const QByteArray former_ = qgetenv("XDG_RUNTIME_DIR");
    bool runs_ = false;
};

// From the call that plays until the server reports that the first millisecond was played. Includes
// the first round, which connects to the server. With `replaces`, another stretch is playing.
void clickToSound(benchmark::State& state) {
    using namespace std::chrono_literals;
    const PeakMemory memory(state);
    const SoundServer server;
    if (!server.runs()) return state.SkipWithError("pulseaudio does not start");
    EngineDesk desk;
    if (!desk.load(take())) return state.SkipWithError("the recording does not load");
    engine::SoundEditor& editor = *desk.editor;
    std::mt19937 random(7);
    double worst = 0.0;
    for (auto _ : state) {
        if (state.range(0) == 0) editor.SoundStop();
        std::this_thread::sleep_for(300ms);
        const auto at =
            static_cast<qint32>(random() % static_cast<quint32>(editor.GetSoundDuration() - 1000));
        const double seconds = secondsOf([&] {
            editor.SoundPlayRange(at, -1);
            while (editor.GetPlaybackPosition() <= at)
                std::this_thread::sleep_for(200us);
        });
        state.SetIterationTime(seconds);
        worst = std::max(worst, seconds);
    }
    state.counters["worst_ms"] = worst * 1e3;
}
BENCHMARK(clickToSound)
    ->Name("click to sound")
    ->Arg(0)
    ->Arg(1)
    ->ArgName("replaces")
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
