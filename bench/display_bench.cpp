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
    std::vector<engine::SilenceMs> pauses;  // set by hand; none is a sound that was not scanned

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
    bool scanned() const override { return !pauses.empty(); }
    std::span<const engine::SilenceMs> silences() const override { return pauses; }
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

constexpr int kSilences = 500;

// The silences of as many prompts, evenly over the sound, with numbers and marks, many of them red.
void addRows(PlayedWaveform& waveform, widgets::WaveformView& view) {
    widgets::RowMarks marks;
    const qint32 distance = waveform.duration() / kSilences;
    for (int i = 0; i < kSilences; ++i) {
        waveform.pauses.push_back({i * distance, i * distance + distance / 5});
        marks.flagged.push_back(i % 7 == 0);
        marks.slipsMs.push_back(i * distance + distance / 2);
    }
    Q_EMIT waveform.displayChanged(engine::DisplayChange::Silences);
    view.showRows(marks);
    view.showPressedRow(1);
}

// Shows `ms` of sound (0 for all of it) in a view of the window's size at 200 percent.
// Calls `frame` with the number of each frame, after the play head was moved.
template <class Frame>
void playOnDisplay(benchmark::State& state, bool withRows, Frame frame) {
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
    if (withRows) addRows(waveform, view);
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
            frame(waveform, costs.size());
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

void look(PlayedWaveform& waveform, std::size_t frame) {
    if (frame % kFramesPerLook == 0) followPlayHead(waveform, waveform.heardMs);
}

void displayWhilePlaying(benchmark::State& state) { playOnDisplay(state, false, look); }
// Few of the rows are in a view of seconds, and playing does not redraw a view of the hour.
void displayWhilePlayingWithRows(benchmark::State& state) { playOnDisplay(state, true, look); }

// The whole picture drawn anew in every frame, so that all rows of the hour are.
void redraw(PlayedWaveform& waveform, std::size_t) {
    Q_EMIT waveform.displayChanged(engine::DisplayChange::Sound);
}
void displayRedrawn(benchmark::State& state) { playOnDisplay(state, false, redraw); }
void displayRedrawnWithRows(benchmark::State& state) { playOnDisplay(state, true, redraw); }

void everyView(benchmark::internal::Benchmark* row) {
    row->ArgsProduct({{0, 10'000, 1'000}, {1, 2}})
        ->ArgNames({"ms", "density"})
        ->UseManualTime()
        ->Iterations(kFrames)
        ->Unit(benchmark::kMillisecond);
}
BENCHMARK(displayWhilePlaying)->Apply(everyView);
BENCHMARK(displayWhilePlayingWithRows)->Apply(everyView);

void theHour(benchmark::internal::Benchmark* row) {
    row->ArgsProduct({{0}, {1, 2}})
        ->ArgNames({"ms", "density"})
        ->UseManualTime()
        ->Iterations(kFrames / 6)
        ->Unit(benchmark::kMillisecond);
}
BENCHMARK(displayRedrawn)->Apply(theHour);
BENCHMARK(displayRedrawnWithRows)->Apply(theHour);

}  // namespace
}  // namespace tarnwick::bench
