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

// The samples of one recording, never changed. An uncompressed file is held open and read where
// its samples lie; a compressed one is decoded once into a nameless file in the temporary folder.
// Renaming, moving or replacing the file does not disturb it. Any thread.
class Source : public FrameReader {
  public:
    // Opens a WAV, AIFF or MP3 file, told by its content, and returns when its peaks are complete.
    // A file that ends early gives what it holds. A sample that is no finite number reads as 0.
    // Throws SoundError: NotFound, NotASound, Damaged, SourceChanged, NoSpace, Cancelled.
    static std::shared_ptr<const Source> open(const std::filesystem::path& path,
                                              const Progress& progress = {});

    // Throws at once what opening the file would throw for its header alone.
    static void probe(const std::filesystem::path& path);

    ~Source() override;

    AudioFormat format() const override { return sound_.format; }
    std::int64_t frames() const override { return sound_.frames; }
    void read(std::int64_t first, std::int64_t count, double* interleaved) const override;
    bool readStored(std::int64_t first, std::int64_t count, Coding coding,
                    std::uint8_t* bytes) const override;

    const Peaks& peaks() const { return peaks_; }

    // Throws SoundError(SourceChanged) when the size or the time stamp of the open file is not
    // what it was. A compressed source never fails here: it no longer needs its file.
    void checkUnchanged() const;

    // What scans remember of the samples that they had to look at.
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
