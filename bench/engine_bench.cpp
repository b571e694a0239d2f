#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <functional>

#include "engine/create_sound_editor.h"
#include "take.h"

// The sound editor as the window meets it: calls, and events through the event loop.

namespace {

using tarnwick::engine::SoundEditor;

// Runs `start` and the event loop until the signal comes.
template <class Signal>
void until(SoundEditor& editor, Signal signal, const std::function<void()>& start) {
    QEventLoop loop;
    const auto connection =
        QObject::connect(&editor, signal, &loop, &QEventLoop::quit, Qt::DirectConnection);
    start();
    loop.exec();
    QObject::disconnect(connection);
}

// An inserted pause with the analysis of the changed sound, from the call to WaveAnalysisDone; the
// pauses of all rounds stay in the sound, each with its undo.
void insertAndAnalyse(benchmark::State& state, const std::filesystem::path& recording) {
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    const auto editor = tarnwick::engine::createSoundEditor();
    editor->EnableUndo(1);
    until(*editor, &SoundEditor::SoundLoadingDone,
          [&] { editor->LoadSound(QFile::decodeName(recording.c_str())); });
    if (editor->GetSoundDuration() == 0) return state.SkipWithError("the take does not load");
    quint32 place = 0;
    for (auto _ : state) {
        place = place * 1664525 + 1013904223;
        const auto at =
            static_cast<qint32>(place % static_cast<quint32>(editor->GetSoundDuration()));
        until(*editor, &SoundEditor::SoundEditDone, [&] { editor->InsertSilence(at, 10); });
        until(*editor, &SoundEditor::WaveAnalysisDone, [&] { editor->waveform().AnalyzeSound(); });
    }
}

void insertOnTake(benchmark::State& state) { insertAndAnalyse(state, tarnwick::bench::take()); }
void insertOnSixHours(benchmark::State& state) {
    insertAndAnalyse(state, tarnwick::bench::sixHours());
}

BENCHMARK(insertOnTake)
    ->Name("engine: insert and analyse, take")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(insertOnSixHours)
    ->Name("engine: insert and analyse, six hours")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
