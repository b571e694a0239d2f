#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sound/reading/source_file.h"
#include "sound/samples/peaks.h"
#include "sound/samples/progress.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// The samples of a compressed sound, one stretch after the other. One thread.
class SampleStream {
  public:
    virtual ~SampleStream() = default;

    // Puts up to `frames` next frames at `bytes`, in the coding of the decoded sound; returns how
    // many, fewer than asked for only at the end. Throws SoundError.
    virtual std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) = 0;
};

// Makes a stream that begins at a frame. Called in any thread.
using StreamMaker = std::function<std::unique_ptr<SampleStream>(std::int64_t first)>;

// A compressed sound as samples in a scratch file of its own.
struct DecodedSound {
    StoredSound sound;
    std::shared_ptr<const SourceFile> file;
    Peaks peaks;
};

// Under this length, in frames, a second thread costs more than it saves.
constexpr std::int64_t kWorthSplitting = 1 << 20;

// Decodes a sound into a scratch file. `sound` tells its format, its coding there and how many
// frames are expected; what the streams give is what counts. With a `joint` above 0 the frames from
// there on come from a second stream on a thread of their own, and the first one proves that it
// goes on with the same samples; where it does not, it decodes the rest itself. Throws SoundError:
// NotASound when there is no frame, Damaged, NoSpace, Cancelled.
DecodedSound decodeToScratch(const StoredSound& sound, const StreamMaker& streamFrom,
                             std::int64_t joint, const Progress& progress);

}  // namespace tarnwick::sound
