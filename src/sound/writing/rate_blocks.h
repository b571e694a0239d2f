#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "sound/samples/frame_reader.h"
#include "sound/samples/sound_block.h"
#include "sound/writing/resampler.h"

namespace tarnwick::sound {

// A stretch of a sound at the rate it is to be written in, block by block.
//
// A long stretch whose rate changes is divided in time, and each block is resampled on its own with
// a lead of the sound before it, so that several can be made at once. The result is that of
// resampling it in one piece, but for some 1e-15 of full scale. Where the ratio does not allow that
// (see splitsExactly) the blocks follow from each other and have to be made in order.
class RateBlocks {
  public:
    // The frames [first, end) of `sound`, which outlives this, to be written at `rate` in
    // `channels`. Throws SoundError.
    RateBlocks(const FrameReader& sound, std::int64_t first, std::int64_t end, int rate,
               int channels);

    std::int64_t count() const { return count_; }           // blocks
    bool isLong() const;                                    // worth threads of its own
    int threads() const { return blockOut_ != 0 ? 2 : 1; }  // that may make blocks at once
    std::int64_t frames() const { return framesOut_; }      // of all blocks
    int channels() const { return channels_; }              // of the blocks

    // Lets blocks that need no computing come as bytes of `coding`. Before the first is made.
    void copyStored(Coding coding);

    // Fills an empty block. With more than one thread in any order, else each
    // once and in order; a block can be empty then. Asks `givenUp` now and then. Throws
    // SoundError(Cancelled) and what reading throws.
    void make(std::int64_t number, SoundBlock& block, const std::function<bool()>& givenUp);

  private:
    // Reads frames of the stretch in the blocks' channels.
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
    std::int64_t blockIn_ = 0;   // frames that one block stands for, but for the last
    std::int64_t blockOut_ = 0;  // the same at the output's rate, where blocks are independent
    std::int64_t lead_ = 0;      // frames that are resampled before an independent block
    std::int64_t count_ = 0;
    std::optional<Resampler> following_;
    std::optional<Coding> stored_;
    // Of the one thread that makes blocks in order.
    std::vector<double> scratch_;
    std::vector<double> frames_;
};

// Mono to stereo copies, stereo to mono averages. Gives `in` when nothing is to be changed, else
// `out` with the result.
const double* withChannels(const double* in, std::int64_t frames, int from, int to,
                           std::vector<double>& out);

// Whether blocks that are resampled on their own join to what one piece gives. Other ratios go
// through steps of the library whose result depends on where the stretch began, or whose ratio is
// only near the wanted one.
bool splitsExactly(int fromRate, int toRate);

}  // namespace tarnwick::sound
