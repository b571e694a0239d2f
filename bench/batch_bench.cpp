#include <benchmark/benchmark.h>

#include <unistd.h>

#include <fstream>

#include "engine_desk.h"
#include "reference.h"
#include "take.h"

// Runs short files through the whole chain of the Batch Processor, without its pauses between
// steps.

namespace tarnwick::bench {
namespace {

using engine::SoundEditor;

constexpr int kFiles = 500;
constexpr qint32 kFileMs = 5000;
constexpr qint32 kStepMs = 7000;  // of the take, from one file to the next
constexpr qint16 kThreshold = 1638;
constexpr qint32 kEndMs = 500;  // of silence, wanted at both ends

double residentMegabytes() {
    std::ifstream state("/proc/self/status");
    double kilobytes = 0.0;
    for (std::string word; state >> word;)
        if (word == "VmRSS:" && state >> kilobytes) break;
    return kilobytes * 1024.0 / 1e6;
}

// A folder of recordings cut from the take, and one for the results.
class Files {
  public:
    Files() {
        std::filesystem::create_directories(sources());
        EngineDesk desk;
        if (!desk.load(take())) throw std::runtime_error("the take does not load");
        desk.editor->encodeFormats().WAV.EncodeMode = engine::kWav24;
        const auto all = [&] {
            for (int i = 0; i < kFiles; ++i)
                desk.editor->SoundExport(44100, 1, 0, i * kStepMs, i * kStepMs + kFileMs,
                                         name(sources(), i));
        };
        EngineDesk::until(*desk.editor, &SoundEditor::SoundExportDone, all, kFiles);
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    ~Files() { std::filesystem::remove_all(folder_); }

    std::filesystem::path sources() const { return folder_ / "in"; }
    std::filesystem::path outputs() const { return folder_ / "out"; }
    void clear() const {
        std::filesystem::remove_all(outputs());
        std::filesystem::create_directories(outputs());
        ::sync();
    }
    static QString name(const std::filesystem::path& folder, int i) {
        return QFile::decodeName((folder / (std::to_string(i) + ".wav")).c_str());
    }

  private:
    const std::filesystem::path folder_ = outputFile().string() + ".batch";
};

// Runs one file through the chain. Each step starts after the event of the previous one.
void process(SoundEditor& editor, const QString& source, const QString& target, qint32 rate,
             qint32 channels) {
    const auto edit = [&](auto start) {
        EngineDesk::until(editor, &SoundEditor::SoundEditDone, start);
    };
    const auto fit = [&](qint32 from, qint32 at, qint32 excess) {
        if (excess > 0) edit([&] { editor.RemoveSilence(from, from + excess, kThreshold, 1); });
        if (excess < 0) edit([&] { editor.InsertSilence(at, -excess); });
    };
    editor.SetLoadMode(0);
    EngineDesk::until(editor, &SoundEditor::SoundLoadingDone, [&] { editor.LoadSound(source); });
    edit([&] { editor.DeleteRange(0, 50); });
    edit([&] { editor.DeleteRange(editor.GetSoundDuration() - 300, -1); });
    qint32 begin = 0;
    qint32 end = 0;
    const auto range =
        QObject::connect(&editor, &SoundEditor::AudibleRangeDetected, [&](qint32 b, qint32 e) {
            begin = b;
            end = e;
        });
    EngineDesk::until(editor, &SoundEditor::AudibleRangeDetected,
                      [&] { editor.SilencePositionsDetect(kThreshold, 1, 0); });
    QObject::disconnect(range);
    const qint32 duration = editor.GetSoundDuration();
    const qint32 tail = duration - end - kEndMs;
    fit(duration - tail, duration, tail);
    fit(0, 0, begin - kEndMs);
    edit([&] { editor.effects().Normalize(0, -1, 98.9F, 100.0F, 100.0F); });
    EngineDesk::until(editor, &SoundEditor::SoundExportDone,
                      [&] { editor.SoundExport(rate, channels, 0, 0, -1, target); });
}

void batch(benchmark::State& state, qint32 rate, qint32 channels, const std::string& effects) {
    const Files files;
    const PeakMemory memory(state);
    EngineDesk desk;
    desk.editor->SetEditorOption(100);
    desk.editor->encodeFormats().WAV.EncodeMode = engine::kWav24;
    Race race("sox",
              "cd " + quoted(files.sources()) + " && for file in *; do sox -D $file -b 24 " +
                  quoted(files.outputs()) + "/$file " + effects + " || exit 1; done",
              [&] { files.clear(); });
    for (auto _ : state)
        race.round(state, [&] {
            for (int i = 0; i < kFiles; ++i) {
                process(*desk.editor, Files::name(files.sources(), i),
                        Files::name(files.outputs(), i), rate, channels);
                if (i == kFiles / 10) state.counters["MB_after_50"] = residentMegabytes();
            }
            state.counters["MB_after_500"] = residentMegabytes();
        });
    race.report(state);
}

void batchOfShortFiles(benchmark::State& state) {
    batch(state, 44100, 1, "trim 0.05 -0.3 pad 0.5 0.5 norm -0.1");
}
BENCHMARK(batchOfShortFiles)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void batchToAnotherRate(benchmark::State& state) {
    batch(state, 48000, 2, "trim 0.05 -0.3 pad 0.5 0.5 norm -0.1 rate -v 48000 channels 2");
}
BENCHMARK(batchToAnotherRate)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick::bench
