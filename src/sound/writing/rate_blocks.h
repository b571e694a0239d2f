#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "sound/samples/frame_reader.h"
#include "sound/writing/resampler.h"
#include "sound/writing/sound_block.h"

namespace tarnwick::sound {

// Converts a stretch of a sound to the output rate, block by block.
//
// A long stretch whose rate changes is divided in time. Each block is resampled separately, with
// some of the sound before it as lead-in, so that several can be made at once. The result differs
// from a single pass by about 1e-15 of full scale. If the ratio does not allow this (see
// splitsExactly), each block depends on the previous one, and they must be made in order.
class RateBlocks {
  public:
    // Takes the frames [first, end) of `sound`, which must outlive this, for output at `rate` with
    // `channels` channels. Throws SoundError.
    RateBlocks(const FrameReader& sound, std::int64_t first, std::int64_t end, int rate,
               int channels);

    std::int64_t count() const { return count_; }           // blocks
    bool isLong() const;                                    // worth extra threads
    int threads() const { return blockOut_ != 0 ? 2 : 1; }  // that may call make() at once
    std::int64_t frames() const { return framesOut_; }      // of all blocks
    int channels() const { return channels_; }              // of the blocks

    // Lets make() deliver blocks that need no conversion as bytes of `coding`. Call before the
    // first make().
    void copyStored(Coding coding);

    // Fills an empty block. Call in any order if threads() is more than 1, else once for each block
    // in order; a block may then stay empty. Stops when `givenUp`, called now and then, returns
    // true. Throws SoundError(Cancelled) and what reading throws.
    void make(std::int64_t number, SoundBlock& block, const std::function<bool()>& givenUp);

  private:
    // Reads frames of the stretch and converts them to the blocks' channels.
    void readInto(std::int64_t at, std::int64_t count, std::vector<double>& scratch,
                  std::vector<double>& frames) const;
    void makeAlone(std::int64_t number, std::vector<double>& block,
                   const std::function<bool()>& givenUp) const;

    const FrameReader& sound_;
    const std::int64_t first_;
    const std::int64_t framesIn_;
    const int from_;
    const int to_;
    const int channels_;
    const std::int64_t framesOut_;
    std::int64_t blockIn_{};     // input frames of each block but the last
    std::int64_t blockOut_ = 0;  // output frames of such a block; 0 if blocks are not independent
    std::int64_t lead_{};        // input frames resampled as lead-in of an independent block
    std::int64_t count_{};
    std::optional<Resampler> following_;
    std::optional<Coding> stored_;
    // Used only if blocks are made in order.
    std::vector<double> scratch_;
    std::vector<double> frames_;
};

// Converts channels: mono to stereo copies, stereo to mono averages. Returns `in` if `from` equals
// `to`, else the data of `out`, which holds the result.
const double* withChannels(const double* in, std::int64_t frames, int from, int to,
                           std::vector<double>& out);

// Whether separately resampled blocks join into the same result as a single pass. Other ratios go
// through steps of the library whose result depends on where the stretch began, or whose ratio is
// only close to the wanted one.
bool splitsExactly(int fromRate, int toRate);

}  // namespace tarnwick::sound
