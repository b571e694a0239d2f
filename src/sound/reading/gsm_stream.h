#pragma once

#include <sndfile.h>

#include <array>
#include <cstdint>
#include <exception>
#include <span>

#include "sound/reading/block_decoder.h"

namespace tarnwick::sound {

constexpr int kGsmBlockBytes = 65;
constexpr int kGsmBlockFrames = 320;

// Decodes GSM 6.10 blocks, each of which packs two frames of speech. The library gets a header of
// our own followed by the file's blocks and sees nothing else of the file. Decoding cannot begin in
// the middle, as the decoder carries its state from block to block.
class GsmStream : public SampleStream {
  public:
    // Throws SoundError: Damaged, and what reading the file throws.
    GsmStream(const SourceFile& file, const StoredSound& sound, const BlockLayout& layout);
    ~GsmStream() override;
    GsmStream(const GsmStream&) = delete;
    GsmStream& operator=(const GsmStream&) = delete;

    std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) override;

  private:
    static constexpr std::int64_t kHeaderBytes = 60;

    void makeHeader(const StoredSound& sound);
    std::int64_t readBytes(std::span<std::uint8_t> bytes);
    SF_VIRTUAL_IO accessToBlocks();

    const SourceFile& file_;
    std::array<std::uint8_t, kHeaderBytes> header_ = {};
    std::int64_t offset_;
    std::int64_t blockBytes_;  // of all whole blocks
    std::int64_t left_;        // frames
    std::int64_t at_ = 0;      // in header and blocks
    SNDFILE* decoder_ = nullptr;
    std::exception_ptr failure_;  // of reading; must not be thrown through the library
};

}  // namespace tarnwick::sound
