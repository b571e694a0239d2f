#include <benchmark/benchmark.h>
#include <unistd.h>

#include <optional>
#include <random>

#include "engine_desk.h"
#include "reference.h"
#include "sound/samples/time.h"
#include "sound/timeline/silence_scan.h"
#include "sound/writing/sound_writer.h"
#include "take.h"

// Writing the whole take, compared with other tools, and its prompts.

namespace tarnwick::bench {
namespace {

using namespace tarnwick::sound;

constexpr int kPrompts = 480;

OutputFormat wav24(int rate, int channels) {
    return {.container = Container::Wav, .format = {rate, channels, 24, false}};
}

// So that each run starts without the previous run's file and with an idle disk.
void clearDisk() {
    std::error_code none;
    std::filesystem::remove(outputFile(), none);
    ::sync();
}

void write(const Timeline& sound, const OutputFormat& output) {
    writeSound(sound, 0, sound.frames(), output, outputFile());
}

void resampleAndWrite(benchmark::State& state) {
    const PeakMemory memory(state);
    const Timeline sound(Source::open(take()));
    const std::string to = " -b 24 " + quoted(outputFile()) + " rate -v 48000";
    Race race("sox", "sox " + quoted(take()) + to, clearDisk);
    for (auto _ : state)
        race.round(state, [&] { write(sound, wav24(48000, sound.format().channels)); });
    race.report(state);
}
BENCHMARK(resampleAndWrite)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void writeWholeAfterEdits(benchmark::State& state) {
    const PeakMemory memory(state);
    Timeline sound(Source::open(take()));
    std::mt19937_64 random(7);
    for (int edit = 0; edit < 100; ++edit) {
        const auto at = static_cast<std::int64_t>(
            random() % static_cast<std::uint64_t>(sound.frames() - 50'000));
        if (edit % 3 == 0) sound = sound.inserted(at, 40'000);
        if (edit % 3 == 1) sound = sound.removed(at, at + 40'000);
        if (edit % 3 == 2) sound = sound.scaled(at, at + 50'000, 0.7);
    }
    const std::string out = quoted(outputFile());
    Race race("cp", "cp " + quoted(take()) + " " + out + " && sync " + out, clearDisk);
    for (auto _ : state)
        race.round(state,
                   [&] { write(sound, wav24(sound.format().rate, sound.format().channels)); });
    race.report(state);
}
BENCHMARK(writeWholeAfterEdits)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

// The lowest and the highest rate that can be written.
void resampleExtremes(benchmark::State& state) {
    const PeakMemory memory(state);
    const Timeline sound(Source::open(take()));
    const std::int64_t tenMinutes = frameAt(600'000, sound.format().rate);
    for (auto _ : state)
        writeSound(sound, 0, tenMinutes, wav24(static_cast<int>(state.range(0)), 2), outputFile());
    clearDisk();
}
BENCHMARK(resampleExtremes)
    ->Arg(8000)
    ->Arg(192000)
    ->ArgName("Hz")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

// The speech between the pauses of the take, in ms, as in the prompt list.
std::vector<std::pair<qint32, qint32>> prompts(engine::SoundEditor& editor) {
    EngineDesk::until(editor, &engine::SoundEditor::SilencePosDetectionDone,
                      [&] { editor.SilencePositionsDetect(589, 1500, 0); });
    std::vector<std::pair<qint32, qint32>> found;
    qint32 from = 0;
    for (qint32 i = 0; i < editor.SilencePositionsGetCount() && found.size() < kPrompts; ++i) {
        qint32 start, finish;
        editor.SilencePositionsGetRange(i, start, finish);
        if (start > from) found.emplace_back(from, start);
        from = finish;
    }
    return found;
}

void exportPrompts(benchmark::State& state) {
    const PeakMemory memory(state);
    EngineDesk desk;
    if (!desk.load(take())) return state.SkipWithError("the take does not load");
    const std::filesystem::path folder = outputFile().string() + ".prompts";
    const auto clear = [&] {
        std::error_code none;
        std::filesystem::remove_all(folder, none);
        std::filesystem::create_directory(folder, none);
        clearDisk();
    };
    const auto stretches = prompts(*desk.editor);
    if (stretches.empty()) return state.SkipWithError("the take has no pauses");
    engine::EncodeFormats& formats = desk.editor->encodeFormats();
    formats.FormatToUse = engine::kWavContainer;
    formats.WAV.EncodeMode = engine::kWav24;
    Race race("sox", "sox " + quoted(take()) + " " + quoted(outputFile()), clear);
    for (auto _ : state) {
        race.round(state, [&] {
            const auto all = [&] {
                int number = 0;
                for (const auto& [begin, end] : stretches)
                    desk.editor->SoundExport(
                        44100, 1, 0, begin, end,
                        QFile::decodeName((folder / std::to_string(++number)).c_str()));
            };
            EngineDesk::until(*desk.editor, &engine::SoundEditor::SoundExportDone, all,
                              static_cast<int>(stretches.size()));
        });
    }
    race.report(state);
    state.counters["prompts"] = static_cast<double>(stretches.size());
    std::error_code none;
    std::filesystem::remove_all(folder, none);
}
BENCHMARK(exportPrompts)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
