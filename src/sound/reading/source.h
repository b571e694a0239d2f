#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "sound/samples/frame_reader.h"
#include "sound/samples/peaks.h"
#include "sound/samples/progress.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

class LoudMaps;
class SourceFile;

// The samples of one recording, immutable. An uncompressed file is held open and read in place; a
// compressed one is decoded once into a file without a name in the temporary folder. Renaming,
// moving or replacing the file does no harm. Any thread.
class Source : public FrameReader {
  public:
    // Opens a WAV, AIFF or MP3 file, recognised by its content, and returns once its peaks are
    // complete. A truncated file yields the samples it holds. NaN and infinite samples read as 0.
    // Throws SoundError: NotFound, NotASound, Damaged, SourceChanged, NoSpace, Cancelled.
    static std::shared_ptr<const Source> open(const std::filesystem::path& path,
                                              const Progress& progress = {});

    // Lengths in ms. That of an MP3 file is an estimate unless the file states it.
    struct Lengths {
        std::int64_t held = 0;
        std::int64_t claimed = 0;  // by the header of a file that ends before, otherwise 0
    };
    // Reads only the header and throws what open() would throw for it.
    static Lengths probe(const std::filesystem::path& path);

    ~Source() override;

    AudioFormat format() const override { return sound_.format; }
    std::int64_t frames() const override { return sound_.frames; }
    void read(std::int64_t first, std::int64_t count, double* interleaved) const override;
    bool readStored(std::int64_t first, std::int64_t count, Coding coding,
                    std::uint8_t* bytes) const override;

    const Peaks& peaks() const { return peaks_; }

    // Throws SoundError(SourceChanged) if the size or the time stamp of the open file has changed.
    // A compressed source never fails here, as it no longer needs its file.
    void checkUnchanged() const;

    // The cache of blocks that scans had to examine sample by sample.
    LoudMaps& loudMaps() const { return *loudMaps_; }

  private:
    Source(StoredSound sound, std::shared_ptr<const SourceFile> file, Peaks peaks);

    static std::shared_ptr<const Source> readWhole(const std::shared_ptr<const SourceFile>& file,
                                                   const Progress& progress);

    StoredSound sound_;
    std::shared_ptr<const SourceFile> file_;
    Peaks peaks_;
    std::unique_ptr<LoudMaps> loudMaps_;
};

}  // namespace tarnwick::sound
