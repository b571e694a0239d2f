#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sound/reading/source_file.h"
#include "sound/samples/peaks.h"
#include "sound/samples/progress.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// Decodes a compressed sound sequentially. One thread.
class SampleStream {
  public:
    virtual ~SampleStream() = default;

    // Writes the next frames, up to `frames`, to `bytes` in the coding of the decoded sound.
    // Returns how many, less than `frames` only at the end. Throws SoundError.
    virtual std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) = 0;
};

// Creates a stream that begins at frame `first`. Called in any thread.
using StreamMaker = std::function<std::unique_ptr<SampleStream>(std::int64_t first)>;

// A compressed sound as samples in a scratch file of its own.
struct DecodedSound {
    StoredSound sound;
    std::shared_ptr<const SourceFile> file;
    Peaks peaks;
    bool joined;  // whether a second stream decoded a part
};

// Below this length in frames a second thread costs more than it saves.
constexpr std::int64_t kWorthSplitting = 1 << 20;

// Decodes a sound into a scratch file. `sound` holds its format, the coding to store it in and the
// expected number of frames; the number that the streams deliver is the one used. If `joint` is
// above 0, a second stream on its own thread decodes the frames from there on. The first stream
// then checks that it would continue with the same samples; if not, it decodes the rest itself.
// Throws SoundError: NotASound if there is no frame, Damaged, NoSpace, Cancelled.
DecodedSound decodeToScratch(const StoredSound& sound, const StreamMaker& streamFrom,
                             std::int64_t joint, const Progress& progress);

}  // namespace tarnwick::sound
