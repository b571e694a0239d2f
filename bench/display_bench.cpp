#include <benchmark/benchmark.h>
#include <time.h>

#include <QScopeGuard>
#include <algorithm>
#include <cmath>
#include <vector>

#include "engine_desk.h"
#include "reference.h"
#include "take.h"
#include "widgets/waveform_view.h"

// The display while an hour of sound plays: the cost of one frame at 60 frames per second.

namespace tarnwick::bench {
namespace {

constexpr double kFrameMs = 1000.0 / 60.0;
constexpr int kFramesPerLook = 6;  // the window checks the play head ten times per second
constexpr int kFrames = 3600;

// CPU time of this thread: the cost of a frame on an otherwise idle processor.
double processorMs() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The editor's own waveform, with a play position set by hand, so that a minute of playing takes
// less time.
class PlayedWaveform : public engine::Waveform {
  public:
    explicit PlayedWaveform(engine::Waveform& inner) : inner_(inner) {
        connect(&inner, &Waveform::displayChanged, this, &Waveform::displayChanged);
    }
    double heardMs = 0.0;

    void Create(engine::WindowHandle, int, int, int, int) override {}
    void AnalyzeSound() override { inner_.AnalyzeSound(); }
    void GetDisplayRange(qint32& begin, qint32& end) const override {
        inner_.GetDisplayRange(begin, end);
    }
    void SetDisplayRange(qint32 begin, qint32 end) override { inner_.SetDisplayRange(begin, end); }
    void GetSelection(qint16& available, qint32& begin, qint32& end) const override {
        inner_.GetSelection(available, begin, end);
    }
    void SetSelection(qint16 available, qint32 begin, qint32 end) override {
        inner_.SetSelection(available, begin, end);
    }
    void ZoomIn() override {}
    void ZoomOut() override {}
    void ZoomFull() override {}
    void ZoomToSelection(qint32) override {}
    void GetSettings(engine::WaveformSettings& out) const override { inner_.GetSettings(out); }
    void SetSettings(const engine::WaveformSettings& in) override { inner_.SetSettings(in); }
    int channels() const override { return inner_.channels(); }
    int sampleRate() const override { return inner_.sampleRate(); }
    qint32 duration() const override { return inner_.duration(); }
    double playPosition() const override { return heardMs; }
    bool playing() const override { return false; }  // the benchmark drives the frames
    bool columns(int channel, double begin, double end,
                 std::span<engine::WaveColumn> columns) const override {
        return inner_.columns(channel, begin, end, columns);
    }
    void notifyMouse(qint16) override {}

  private:
    engine::Waveform& inner_;
};

// As the window does: the view jumps ahead before the play head reaches its last tenth.
void followPlayHead(engine::Waveform& waveform, double heardMs) {
    qint32 begin = 0, end = 0;
    waveform.GetDisplayRange(begin, end);
    const double width = end - begin;
    if (heardMs + 0.1 * width < end) return;
    waveform.SetDisplayRange(static_cast<qint32>(std::nearbyint(begin + 0.8 * width)),
                             static_cast<qint32>(std::nearbyint(end + 0.8 * width)));
}

// Shows `ms` of sound (0 for all of it) in a view of the window's size at 200 percent.
void displayWhilePlaying(benchmark::State& state) {
    qputenv("QT_SCALE_FACTOR", QByteArray::number(qint64(state.range(1))));
    const auto restored = qScopeGuard([] { qunsetenv("QT_SCALE_FACTOR"); });
    const PeakMemory memory(state);
    EngineDesk desk;
    if (!desk.load(take())) return state.SkipWithError("the recording does not load");
    EngineDesk::until(*desk.editor, &engine::SoundEditor::WaveAnalysisDone,
                      [&] { desk.editor->waveform().AnalyzeSound(); });
    PlayedWaveform waveform(desk.editor->waveform());
    widgets::WaveformView view(waveform);
    view.resize(1450, 450);
    const auto width = static_cast<qint32>(state.range(0));
    waveform.SetDisplayRange(0, width == 0 ? -1 : width);
    view.show();
    QCoreApplication::processEvents();
    if (view.devicePixelRatioF() != double(state.range(1)))
        return state.SkipWithError("not the density that was asked for");

    std::vector<double> costs;
    double worstProcessorMs = 0.0;
    for (auto _ : state) {
        const double before = processorMs();
        const double seconds = secondsOf([&] {
            waveform.heardMs += kFrameMs;
            view.followPlayback();
            if (costs.size() % kFramesPerLook == 0) followPlayHead(waveform, waveform.heardMs);
            QCoreApplication::processEvents();
        });
        worstProcessorMs = std::max(worstProcessorMs, processorMs() - before);
        state.SetIterationTime(seconds);
        costs.push_back(seconds * 1e3);
    }
    std::ranges::sort(costs);
    state.counters["p99_ms"] = costs[costs.size() * 99 / 100];
    state.counters["worst_ms"] = costs.back();
    state.counters["worst_share"] = costs.back() / kFrameMs;
    state.counters["worst_cpu_ms"] = worstProcessorMs;
}
BENCHMARK(displayWhilePlaying)
    ->ArgsProduct({{0, 10'000, 1'000}, {1, 2}})
    ->ArgNames({"ms", "density"})
    ->UseManualTime()
    ->Iterations(kFrames)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
