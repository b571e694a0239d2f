#include "sound/reading/source.h"

#include <algorithm>
#include <array>
#include <new>
#include <system_error>

#include "sound/reading/mp3_decoder.h"
#include "sound/reading/peaks_builder.h"
#include "sound/reading/source_headers.h"
#include "sound/samples/loud_maps.h"
#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/samples/time.h"

namespace tarnwick::sound {

Source::Source(StoredSound sound, std::shared_ptr<const SourceFile> file, Peaks peaks)
    : sound_(sound),
      file_(std::move(file)),
      peaks_(std::move(peaks)),
      loudMaps_(std::make_unique<LoudMaps>()) {}

Source::~Source() = default;

namespace {

[[noreturn]] void notASound(const SourceFile& file) {
    throw SoundError(SoundFailure::NotASound,
                     file.size() == 0 ? "the file is empty" : "no sound file of a known kind");
}

[[noreturn]] void outside() {
    throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
}

}  // namespace

Source::Lengths Source::probe(const std::filesystem::path& path) {
    const std::shared_ptr<const SourceFile> file = SourceFile::open(path);
    std::optional<FoundSound> found = readWaveHeader(*file);
    if (!found) found = readAiffHeader(*file);
    if (found) {
        const int rate = found->sound.format.rate;
        return {msFloor(found->sound.frames, rate), msFloor(found->claimedFrames, rate)};
    }
    const std::optional<Mp3Start> start = findMp3(*file);
    if (!start) notASound(*file);
    const std::int64_t stated = start->tag ? start->tag->frames : 0;
    const std::int64_t frames =
        stated > 0 ? stated : (file->size() - start->byte) / start->header.bytes;
    return {.held = msFloor(frames * start->header.samples, start->header.rate)};
}

std::shared_ptr<const Source> Source::open(const std::filesystem::path& path,
                                           const Progress& progress) try {
    const std::shared_ptr<const SourceFile> file = SourceFile::open(path);
    try {
        std::shared_ptr<const Source> source = readWhole(file, progress);
        file->checkUnchanged();
        return source;
    } catch (const SoundError& error) {
        // A file that is still being written may fail in any way; SourceChanged explains it best.
        if (error.failure() != SoundFailure::Cancelled) file->checkUnchanged();
        throw;
    }
} catch (const std::bad_alloc&) {
    throw SoundError(SoundFailure::NoSpace, "there is not enough memory");
} catch (const std::system_error&) {  // no thread can be started
    throw SoundError(SoundFailure::NoSpace, "there is not enough memory");
}

std::shared_ptr<const Source> Source::readWhole(const std::shared_ptr<const SourceFile>& file,
                                                const Progress& progress) {
    const auto made = [](StoredSound sound, std::shared_ptr<const SourceFile> held, Peaks peaks) {
        return std::shared_ptr<const Source>(new Source(sound, std::move(held), std::move(peaks)));
    };
    const auto decoded = [&](DecodedSound all) {
        return made(all.sound, std::move(all.file), std::move(all.peaks));
    };
    std::optional<FoundSound> found = readWaveHeader(*file);
    if (!found) found = readAiffHeader(*file);
    if (found && found->blocks)
        return decoded(decodeBlocks(*file, found->sound, *found->blocks, progress));
    if (found) return made(found->sound, file, buildPeaks(found->sound, *file, progress));
    if (const auto start = findMp3(*file)) return decoded(decodeMp3(*file, *start, progress));
    notASound(*file);
}

void Source::read(std::int64_t first, std::int64_t count, double* interleaved) const {
    if (first < 0 || count < 0 || first > frames() - count) outside();
    const std::int64_t sampleBytes = bytesOf(sound_.coding);
    const std::int64_t frameBytes = sampleBytes * sound_.format.channels;
    std::array<std::uint8_t, 48 * 1024> bytes;
    const std::int64_t most = static_cast<std::int64_t>(bytes.size()) / frameBytes;
    while (count > 0) {
        const std::int64_t frames = std::min(count, most);
        const auto values = static_cast<std::size_t>(frames * sound_.format.channels);
        file_->read(sound_.offset + first * frameBytes,
                    std::span(bytes).first(static_cast<std::size_t>(frames * frameBytes)));
        unpack(sound_.coding, bytes.data(), std::span(interleaved, values));
        interleaved += values;
        first += frames;
        count -= frames;
    }
}

bool Source::readStored(std::int64_t first, std::int64_t count, Coding coding,
                        std::uint8_t* bytes) const {
    if (coding != sound_.coding || !silentByte(coding)) return false;
    if (first < 0 || count < 0 || first > frames() - count) outside();
    const std::int64_t frameBytes = std::int64_t{bytesOf(coding)} * sound_.format.channels;
    file_->read(sound_.offset + first * frameBytes,
                std::span(bytes, static_cast<std::size_t>(count * frameBytes)));
    return true;
}

void Source::checkUnchanged() const { file_->checkUnchanged(); }

}  // namespace tarnwick::sound
