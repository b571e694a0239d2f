#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <functional>

#include "engine/create_sound_editor.h"

// The sound editor as the window meets it: calls, and events through the event loop.

namespace {

using tarnwick::engine::SoundEditor;

// The recording to measure with, or as many seconds without sound: the content makes no difference
// to what is measured here, and such a file takes no space on the disk.
QString take(const QTemporaryDir& folder, qint64 seconds) {
    const QString given = qEnvironmentVariable("TARNWICK_BENCH_TAKE");
    if (!given.isEmpty()) return given;
    const auto bytes = static_cast<quint32>(seconds * 44100 * 3);
    QFile file(folder.filePath(QStringLiteral("take.wav")));
    QByteArray header(
        "RIFF....WAVEfmt \x10\0\0\0\1\0\1\0\x44\xac\0\0\xcc\x04\2\0\3\0\x18\0data....", 44);
    qToLittleEndian(bytes + 36, header.data() + 4);
    qToLittleEndian(bytes, header.data() + 40);
    if (!file.open(QIODevice::WriteOnly) || file.write(header) != 44 || !file.resize(bytes + 44))
        qFatal("the temporary folder cannot be written");
    return file.fileName();
}

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

// An inserted pause with the analysis of the changed sound, from the call to WaveAnalysisDone, in
// a sound of so many seconds; the pauses of all rounds stay in it.
void insertAndAnalyse(benchmark::State& state) {
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    const QTemporaryDir folder;
    const auto editor = tarnwick::engine::createSoundEditor();
    editor->EnableUndo(1);
    until(*editor, &SoundEditor::SoundLoadingDone,
          [&] { editor->LoadSound(take(folder, state.range(0))); });
    quint32 place = 0;
    for (auto _ : state) {
        place = place * 1664525 + 1013904223;
        const auto at =
            static_cast<qint32>(place % static_cast<quint32>(editor->GetSoundDuration()));
        until(*editor, &SoundEditor::SoundEditDone, [&] { editor->InsertSilence(at, 10); });
        until(*editor, &SoundEditor::WaveAnalysisDone, [&] { editor->waveform().AnalyzeSound(); });
    }
    state.counters["edits"] = static_cast<double>(state.iterations());
}
BENCHMARK(insertAndAnalyse)
    ->Name("engine: insert silence, analyse again")
    ->ArgName("seconds")
    ->Arg(60)
    ->Arg(3600)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
