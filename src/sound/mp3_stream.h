#pragma once

#include <sys/types.h>

#include <cstdint>
#include <span>
#include <vector>

#include "sound/mp3_frames.h"
#include "sound/scratch_decoder.h"
#include "sound/source_file.h"

struct mpg123_handle_struct;

namespace tarnwick::sound {

// The samples of an MP3 stream, rounded to 24 bits.
class Mp3Stream : public SampleStream {
  public:
    // Decodes from the beginning of a lead-in (which may be empty), gives what comes `skipped`
    // samples later, and at most `most` samples. `header` is a frame's: a change of rate or
    // channels on the way is damage. Throws SoundError: Damaged, NoSpace.
    Mp3Stream(const SourceFile& file, const Mp3Header& header, Mp3LeadIn lead, std::int64_t skipped,
              std::int64_t most);
    ~Mp3Stream() override;
    Mp3Stream(const Mp3Stream&) = delete;
    Mp3Stream& operator=(const Mp3Stream&) = delete;

    std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) override;

  private:
    void start();
    void checkFormat() const;
    void skip(std::int64_t frames);
    std::size_t decodeFloats(std::span<float> interleaved);
    std::size_t readAt(std::int64_t offset, std::span<std::uint8_t> bytes);
    static ::ssize_t readBytes(void* self, void* bytes, std::size_t count);
    static ::off_t moveTo(void* self, ::off_t offset, int from);

    const SourceFile& file_;
    Mp3Header header_;
    Mp3LeadIn lead_;
    std::int64_t left_;  // samples
    mpg123_handle_struct* handle_ = nullptr;
    std::int64_t at_ = 0;               // byte that the decoder reads next, from the lead-in on
    std::vector<std::uint8_t> window_;  // bytes read ahead
    std::int64_t windowAt_ = 0;         // where they begin in the file
    std::vector<float> values_;
};

}  // namespace tarnwick::sound
