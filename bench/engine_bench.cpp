#include <benchmark/benchmark.h>

#include <QPalette>
#include <algorithm>
#include <random>

#include "engine_desk.h"
#include "reference.h"
#include "take.h"
#include "widgets/waveform_painter.h"

// Editing as the window does it, and drawing and closing the edited sound.

namespace tarnwick::bench {
namespace {

using engine::SoundEditor;

constexpr int kEdits = 5000;

// Edits of every kind at pseudorandom places, the same in each run.
class RandomEdits {
  public:
    explicit RandomEdits(SoundEditor& editor) : editor_(editor) {}

    void operator()() {
        const qint32 at = below(editor_.GetSoundDuration());
        switch (below(6)) {
            case 0:
            case 1:
                editor_.InsertSilence(at, 1 + below(3000));
                break;
            case 2:
                editor_.DeleteRange(at, at + below(3000));
                break;
            case 3:
                editor_.effects().ApplyVolume(at, at + below(60'000), 0, 0.7f, 0);
                break;
            case 4:
                editor_.effects().Normalize(at, at + below(60'000), 80.0f, 100.0f, 100.0f);
                break;
            default:
                editor_.RemoveSilence(at, at + below(10'000), 589, 1);
        }
    }

  private:
    qint32 below(qint32 limit) {
        return static_cast<qint32>(random_() % static_cast<quint32>(limit));
    }

    SoundEditor& editor_;
    std::mt19937 random_{5};
};

// Inserts a pause and analyses the changed sound. The pauses of all rounds stay in the sound, each
// with its undo.
void insertAndAnalyse(benchmark::State& state) {
    const PeakMemory memory(state);
    EngineDesk desk;
    if (!desk.load(state.range(0) == 6 ? sixHours() : take()))
        return state.SkipWithError("the recording does not load");
    std::mt19937 random(1);
    for (auto _ : state) {
        const auto at =
            static_cast<qint32>(random() % static_cast<quint32>(desk.editor->GetSoundDuration()));
        desk.change([&] { desk.editor->InsertSilence(at, 10); });
    }
}
BENCHMARK(insertAndAnalyse)
    ->Arg(1)
    ->Arg(6)
    ->ArgName("hours")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// One iteration is an edit with its analysis.
void randomEdits(benchmark::State& state) {
    const PeakMemory memory(state);
    EngineDesk desk;
    if (!desk.load(sixHours())) return state.SkipWithError("the recording does not load");
    RandomEdits edits(*desk.editor);
    double worst = 0.0;
    for (auto _ : state) {
        const double seconds = secondsOf([&] { desk.change(edits); });
        state.SetIterationTime(seconds);
        worst = std::max(worst, seconds);
    }
    state.counters["worst_ms"] = worst * 1e3;
}
BENCHMARK(randomEdits)->UseManualTime()->Iterations(kEdits)->Unit(benchmark::kMillisecond);

// The whole picture, 1500 pixels wide, after those edits. Shows `ms` of sound (0 for all of it).
void paint(benchmark::State& state) {
    const PeakMemory memory(state);
    EngineDesk desk;
    if (!desk.load(sixHours())) return state.SkipWithError("the recording does not load");
    RandomEdits edits(*desk.editor);
    for (int i = 0; i < kEdits; ++i)
        desk.change(edits);
    engine::Waveform& waveform = desk.editor->waveform();
    const widgets::WaveformLayout layout({1500, 300}, 1.0, engine::WaveformSettings(), QFont());
    const widgets::WaveformColours colours{QPalette()};
    const qint32 duration = desk.editor->GetSoundDuration();
    const auto width = static_cast<qint32>(state.range(0));
    widgets::renderWaveform(waveform, layout, colours);  // loads the fonts
    std::mt19937 random(6);
    double worst = 0.0;
    for (auto _ : state) {
        const auto at = static_cast<qint32>(random() % static_cast<quint32>(duration - width));
        width > 0 ? waveform.SetDisplayRange(at, at + width) : waveform.SetDisplayRange(0, -1);
        const double seconds = secondsOf(
            [&] { benchmark::DoNotOptimize(widgets::renderWaveform(waveform, layout, colours)); });
        state.SetIterationTime(seconds);
        worst = std::max(worst, seconds);
    }
    state.counters["worst_ms"] = worst * 1e3;
}
BENCHMARK(paint)
    ->Arg(0)
    ->Arg(3'600'000)
    ->Arg(60'000)
    ->Arg(5'000)
    ->Arg(10)
    ->ArgName("ms")
    ->UseManualTime()
    ->Iterations(100)
    ->Unit(benchmark::kMillisecond);

// After those edits loads another recording or closes the sound. Measures until the editor's worker
// has freed the old sound and is ready for the next job.
void leave(benchmark::State& state) {
    const PeakMemory memory(state);
    const bool loads = state.range(0) == 1;
    take();  // created before the clock starts
    double worst = 0.0;
    for (auto _ : state) {
        EngineDesk desk;
        if (!desk.load(sixHours())) return state.SkipWithError("the recording does not load");
        RandomEdits edits(*desk.editor);
        for (int i = 0; i < kEdits; ++i)
            desk.change(edits);
        const double seconds = secondsOf([&] {
            if (loads) {
                desk.load(take());
                return;
            }
            desk.editor->SoundClose();
            EngineDesk::until(*desk.editor, &SoundEditor::SoundEditDone,
                              [&] { desk.editor->DeleteRange(0, 0); });  // refused, but queued
        });
        state.SetIterationTime(seconds);
        worst = std::max(worst, seconds);
    }
    state.counters["worst_ms"] = worst * 1e3;
}
BENCHMARK(leave)->Arg(0)->Arg(1)->ArgName("loads")->UseManualTime()->Iterations(3)->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
