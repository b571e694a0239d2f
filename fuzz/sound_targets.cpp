#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "sound/reading/source.h"
#include "sound/reading/source_headers.h"
#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/timeline/silence_scan.h"
#include "targets.h"

namespace tarnwick::fuzz {

namespace {

using namespace tarnwick::sound;

// Frames read of a sound at a time, and in total from each end. Limited, as a few bytes may claim
// to hold hours.
constexpr std::int64_t kTurnFrames = 1000;
constexpr std::int64_t kMostFrames = 32 * 1024;

void promise(bool kept, const char* what) {
    if (!kept) throw std::logic_error(what);
}

// A file in memory.
class MemoryFile {
  public:
    explicit MemoryFile(Bytes bytes) : descriptor_(::memfd_create("fuzz", MFD_CLOEXEC)) {
        const auto size = static_cast<::ssize_t>(bytes.size());
        if (descriptor_ < 0 || ::write(descriptor_, bytes.data(), bytes.size()) != size)
            throw std::runtime_error("no memory for a file");
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

template <class Work>
void refusing(Work&& work) {
    try {
        work();
    } catch (const SoundError&) {
    }
}

void checkFormat(const AudioFormat& format, std::int64_t frames) {
    promise(frames > 0, "a sound without frames");
    promise(format.rate > 0 && (format.channels == 1 || format.channels == 2), "a useless format");
}

// Checks that the samples a header describes lie within its file.
void checkPlace(const FoundSound& found, const SourceFile& file) {
    const auto& [format, coding, offset, frames] = found.sound;
    checkFormat(format, frames);
    promise(offset >= 0 && offset <= file.size(), "samples outside the file");
    const std::int64_t held = file.size() - offset;
    if (found.blocks)
        promise(frames <= found.blocks->framesIn(held, format.channels), "blocks that are missing");
    else
        promise(frames <= held / (format.channels * bytesOf(coding)), "frames that are missing");
}

// Reads a part of a sound and compares it with the peaks.
void readPart(const Source& sound, std::int64_t first, std::int64_t end) {
    const int channels = sound.format().channels;
    std::vector<double> values(static_cast<std::size_t>(kTurnFrames * channels));
    for (; first < end; first += kTurnFrames) {
        const std::int64_t count = std::min(kTurnFrames, end - first);
        sound.read(first, count, values.data());
        for (std::int64_t i = 0; i < count * channels; ++i) {
            const double value = values[static_cast<std::size_t>(i)];
            promise(std::isfinite(value), "a sample that is no number");
            const auto block = static_cast<std::size_t>((first + i / channels) / 256);
            const Peak peak = sound.peaks().level(static_cast<int>(i % channels), 0)[block];
            const double unit = std::clamp(value * 32768.0, -32768.0, 32767.0);
            promise(peak.minimum <= unit && unit <= peak.maximum, "a sample outside its peak");
        }
    }
}

}  // namespace

void waveHeader(Bytes bytes) {
    const MemoryFile memory(bytes);
    refusing([&] {
        const auto file = SourceFile::open(memory.path());
        if (const auto sound = readWaveHeader(*file)) checkPlace(*sound, *file);
    });
}

void aiffHeader(Bytes bytes) {
    const MemoryFile memory(bytes);
    refusing([&] {
        const auto file = SourceFile::open(memory.path());
        if (const auto sound = readAiffHeader(*file)) checkPlace(*sound, *file);
    });
}

void source(Bytes bytes) {
    const MemoryFile memory(bytes);
    std::shared_ptr<const Source> sound;
    refusing([&] { sound = Source::open(memory.path()); });
    if (!sound) return;
    // A sound that opens must be readable.
    checkFormat(sound->format(), sound->frames());
    readPart(*sound, 0, std::min(sound->frames(), kMostFrames));
    readPart(*sound, std::max<std::int64_t>(sound->frames() - kMostFrames, 0), sound->frames());
    findSilences(Timeline(sound), 589, 10);
}

void longMp3(Bytes bytes) {
    constexpr std::size_t kLongBytes = 256 * 1024;
    std::vector<std::uint8_t> again;
    while (!bytes.empty() && again.size() < kLongBytes)
        again.insert(again.end(), bytes.begin(), bytes.end());
    source(again);
}

}  // namespace tarnwick::fuzz
