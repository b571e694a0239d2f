#include "sound/writing/block_encoder.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>

#include "sound/samples/quantiser.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

int libraryFormat(WavCodec codec) {
    return SF_FORMAT_WAV | (codec == kImaAdpcm ? SF_FORMAT_IMA_ADPCM : SF_FORMAT_GSM610);
}

// Whether the sizes certainly fit into 32 bits: including block headers, no codec takes more than
// 0.507 bytes per sample, so that 0.51 leave ample room for the file's header and the last block.
bool fits(std::int64_t frames, int channels) {
    constexpr std::int64_t kLargest = 0xFFFFFFFF;
    return frames <= kLargest && frames * channels / 100 * 51 <= kLargest;
}

}  // namespace

// The file as the library sees it. Exceptions must not be thrown through the library: the first one
// is stored, and nothing more is written.
class BlockEncoder::Target {
  public:
    explicit Target(AtomicFile& file) : file_(file) {}

    static SF_VIRTUAL_IO* functions() {
        static SF_VIRTUAL_IO io = {
            [](void* self) -> sf_count_t { return of(self).file_.size(); },
            [](sf_count_t offset, int whence, void* self) { return of(self).seek(offset, whence); },
            [](void*, sf_count_t, void*) -> sf_count_t { return 0; },
            [](const void* bytes, sf_count_t count, void* self) {
                return of(self).put(static_cast<const char*>(bytes), count);
            },
            [](void* self) -> sf_count_t { return of(self).at_; }};
        return &io;
    }

    void check() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    static Target& of(void* self) { return *static_cast<Target*>(self); }

    sf_count_t seek(sf_count_t offset, int whence) {
        if (whence == SEEK_CUR) offset += at_;
        if (whence == SEEK_END) offset += file_.size();
        return at_ = offset;
    }

    sf_count_t put(const char* bytes, sf_count_t count) {
        if (failure_) return 0;
        try {
            // The library never leaves a gap, but a rewrite may extend past the end.
            const sf_count_t old = std::clamp<sf_count_t>(file_.size() - at_, 0, count);
            file_.writeAt(at_, bytes, static_cast<std::size_t>(old));
            file_.write(bytes + old, static_cast<std::size_t>(count - old));
            at_ += count;
            return count;
        } catch (...) {
            failure_ = std::current_exception();
            return 0;
        }
    }

    AtomicFile& file_;
    std::int64_t at_ = 0;  // byte where the library writes next
    std::exception_ptr failure_;
};

BlockEncoder::BlockEncoder(WavCodec codec, const AudioFormat& format, std::int64_t frames,
                           AtomicFile& file)
    : file_(file),
      frames_(frames),
      channels_(format.channels),
      target_(std::make_unique<Target>(file)) {
    if (!fits(frames, channels_))
        throw SoundError(SoundFailure::BadFormat, "a WAV of this codec holds no more than 4 GiB");
    SF_INFO info = {};
    info.samplerate = format.rate;
    info.channels = channels_;
    info.format = libraryFormat(codec);
    library_.reset(sf_open_virtual(Target::functions(), SFM_WRITE, &info, target_.get()));
    target_->check();
    if (!library_) throw SoundError(SoundFailure::BadFormat, "a format that the codec refuses");
}

BlockEncoder::~BlockEncoder() = default;

void BlockEncoder::write(const double* interleaved, std::int64_t frames) {
    samples_.resize(static_cast<std::size_t>(frames * channels_));
    quantise(interleaved, samples_.size(), {.bits = 16},
             reinterpret_cast<unsigned char*>(samples_.data()));
    const sf_count_t written = sf_writef_short(library_.get(), samples_.data(), frames);
    target_->check();
    if (written != frames) throw SoundError(SoundFailure::WriteFailed, "the codec failed");
}

void BlockEncoder::finish() {
    const int error = sf_close(library_.release());
    target_->check();
    if (error != 0) throw SoundError(SoundFailure::WriteFailed, "the codec failed");
    correctLength();
}

// For IMA ADPCM the library stores the length of whole blocks; this replaces it.
void BlockEncoder::correctLength() {
    constexpr off_t kFact = 40;  // where the chunk "fact" stands, for both codecs
    std::array<char, 4> name;
    if (pread(file_.descriptor(), name.data(), name.size(), kFact) != std::ssize(name) ||
        std::string_view(name.data(), name.size()) != "fact")
        throw SoundError(SoundFailure::WriteFailed, "the codec's header is not known");
    std::array<unsigned char, 4> frames;
    for (std::size_t byte = 0; byte < frames.size(); ++byte)
        frames[byte] = static_cast<unsigned char>(frames_ >> (8 * byte));
    file_.writeAt(kFact + 8, frames.data(), frames.size());
}

}  // namespace tarnwick::sound
