#pragma once

#include <sys/types.h>

#include <cstdint>
#include <exception>
#include <span>
#include <stop_token>
#include <vector>

#include "sound/reading/mp3_lead_in.h"
#include "sound/reading/scratch_decoder.h"
#include "sound/reading/source_file.h"

struct mpg123_handle_struct;

namespace tarnwick::sound {

// The samples of an MP3 stream, rounded to 24 bits.
class Mp3Stream : public SampleStream {
  public:
    // Which part of a file's frames to decode, and which of their samples to deliver.
    struct Part {
        Mp3LeadIn lead;             // where it begins
        std::int64_t end = {};      // the byte after its last frame
        std::int64_t skipped = {};  // samples decoded but not delivered
        std::int64_t most = {};     // upper limit of the samples delivered
    };

    // `header` is that of any frame; a change of rate or channels counts as damage. Throws
    // SoundError: Damaged, NoSpace, Cancelled soon after a stop is requested, and what reading the
    // file throws.
    Mp3Stream(const SourceFile& file, const Mp3Header& header, Part part, std::stop_token stop);
    ~Mp3Stream() override;
    Mp3Stream(const Mp3Stream&) = delete;
    Mp3Stream& operator=(const Mp3Stream&) = delete;

    std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) override;

  private:
    void start();
    void checkFormat() const;
    void skip();
    [[noreturn]] void fail() const;
    std::size_t decodeFloats(std::span<float> interleaved);
    std::size_t readAt(std::int64_t offset, std::span<std::uint8_t> bytes);
    static ::ssize_t readBytes(void* self, void* bytes, std::size_t count);
    static ::off_t moveTo(void* self, ::off_t offset, int from);

    const SourceFile& file_;
    Mp3Header header_;
    Part part_;
    std::stop_token stop_;
    std::exception_ptr failure_;  // of reading; must not be thrown through the library
    mpg123_handle_struct* handle_ = nullptr;
    std::int64_t at_ = 0;  // byte that the decoder reads next, counted from the lead-in
    std::vector<std::uint8_t> window_;  // bytes read ahead
    std::int64_t windowAt_ = 0;         // their offset in the file
    std::vector<float> values_;
};

}  // namespace tarnwick::sound
