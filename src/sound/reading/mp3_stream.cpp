#include "sound/reading/mp3_stream.h"

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "sound/samples/progress.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

constexpr std::size_t kWindowBytes = 64 * 1024;
constexpr float kScale = 8388608.0f;

std::int32_t rounded(float value) {
    return static_cast<std::int32_t>(std::lrint(std::clamp(value * kScale, -kScale, kScale - 1)));
}

std::uint8_t* put24(std::int32_t sample, std::uint8_t* bytes) {
    bytes[0] = static_cast<std::uint8_t>(sample);
    bytes[1] = static_cast<std::uint8_t>(sample >> 8);
    bytes[2] = static_cast<std::uint8_t>(sample >> 16);
    return bytes + 3;
}

// Rounds to 24 bits, to nearest and halves to even, and clips. NaN becomes 0.
void pack24(std::span<const float> values, std::uint8_t* bytes) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128 scale = _mm_set1_ps(kScale);
    const __m128 least = _mm_set1_ps(-kScale);
    const __m128 most = _mm_set1_ps(kScale - 1);
    for (; i + 4 <= values.size(); i += 4) {
        __m128 four = _mm_mul_ps(_mm_loadu_ps(values.data() + i), scale);
        four = _mm_and_ps(four, _mm_cmpord_ps(four, four));
        alignas(16) std::array<std::int32_t, 4> samples;
        _mm_store_si128(reinterpret_cast<__m128i*>(samples.data()),
                        _mm_cvtps_epi32(_mm_min_ps(_mm_max_ps(four, least), most)));
        for (const std::int32_t sample : samples)
            bytes = put24(sample, bytes);
    }
#endif
    for (; i < values.size(); ++i)
        bytes = put24(std::isnan(values[i]) ? 0 : rounded(values[i]), bytes);
}

}  // namespace

Mp3Stream::Mp3Stream(const SourceFile& file, const Mp3Header& header, Part part,
                     std::stop_token stop)
    : file_(file), header_(header), part_(std::move(part)), stop_(std::move(stop)) {
    handle_ = mpg123_new(nullptr, nullptr);
    if (!handle_) throw SoundError(SoundFailure::NoSpace, "no decoder can be made");
    try {
        start();
        skip();
    } catch (...) {
        mpg123_delete(handle_);
        throw;
    }
}

Mp3Stream::~Mp3Stream() { mpg123_delete(handle_); }

void Mp3Stream::start() {
    // The decoder must not trim the ends: in some files it would then skip the first frame, which
    // the second one needs.
    mpg123_param(handle_, MPG123_FLAGS, MPG123_QUIET | MPG123_FORCE_FLOAT | MPG123_IGNORE_INFOFRAME,
                 0.0);
    mpg123_param(handle_, MPG123_RESYNC_LIMIT, -1, 0.0);
    // A section with another number of channels, as in joined files, is converted to that of the
    // first.
    mpg123_format_none(handle_);
    mpg123_format2(handle_, 0, header_.channels == 1 ? MPG123_MONO : MPG123_STEREO,
                   MPG123_ENC_FLOAT_32);
    mpg123_replace_reader_handle(handle_, &Mp3Stream::readBytes, &Mp3Stream::moveTo, nullptr);
    if (mpg123_open_handle(handle_, this) != MPG123_OK) fail();
    checkFormat();
}

void Mp3Stream::checkFormat() const {
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_getformat(handle_, &rate, &channels, &encoding) != MPG123_OK ||
        rate != header_.rate || channels != header_.channels || encoding != MPG123_ENC_FLOAT_32)
        fail();
}

// Throws the error for which the library gave up.
void Mp3Stream::fail() const {
    if (failure_) std::rethrow_exception(failure_);
    throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
}

void Mp3Stream::skip() {
    std::int64_t frames = part_.skipped;
    constexpr std::int64_t kTurn = 4096;
    std::vector<float> values(static_cast<std::size_t>(kTurn * header_.channels));
    while (frames > 0) {
        const std::int64_t turn = std::min(frames, kTurn);
        const auto wanted = static_cast<std::size_t>(turn * header_.channels);
        if (decodeFloats(std::span(values).first(wanted)) < wanted) return;
        frames -= turn;
    }
}

std::int64_t Mp3Stream::decode(std::int64_t frames, std::uint8_t* bytes) {
    const auto channels = static_cast<std::size_t>(header_.channels);
    const std::size_t wanted = static_cast<std::size_t>(std::min(frames, part_.most)) * channels;
    values_.resize(std::max(values_.size(), wanted));
    const std::size_t got = decodeFloats(std::span(values_).first(wanted)) / channels;
    pack24(std::span(values_).first(got * channels), bytes);
    part_.most -= static_cast<std::int64_t>(got);
    return static_cast<std::int64_t>(got);
}

// Fills the span; returns the number of values, less than its size only at the end.
std::size_t Mp3Stream::decodeFloats(std::span<float> interleaved) {
    std::size_t done = 0;
    while (done < interleaved.size()) {
        std::size_t bytes{};
        const std::span<float> rest = interleaved.subspan(done);
        const int result = mpg123_read(handle_, rest.data(), rest.size_bytes(), &bytes);
        done += bytes / sizeof(float);
        if (result == MPG123_NEW_FORMAT) {
            checkFormat();
            continue;
        }
        if (result != MPG123_OK && result != MPG123_DONE) fail();
        if (bytes == 0) break;
    }
    if (failure_) fail();  // the library may have treated it as the end
    return done;
}

// Serves the many small reads of the decoder from a buffer.
std::size_t Mp3Stream::readAt(std::int64_t offset, std::span<std::uint8_t> bytes) {
    const auto fromLead = static_cast<std::int64_t>(part_.lead.bytes.size()) - offset;
    if (fromLead > 0) {
        const auto count = std::min(static_cast<std::size_t>(fromLead), bytes.size());
        std::copy_n(part_.lead.bytes.begin() + offset, count, bytes.begin());
        return count;
    }
    const std::int64_t place = part_.lead.begin + offset;
    if (place >= part_.end) return 0;
    if (place < windowAt_ || place >= windowAt_ + static_cast<std::int64_t>(window_.size())) {
        checkStop(stop_);
        window_.resize(std::min(kWindowBytes, static_cast<std::size_t>(part_.end - place)));
        window_.resize(file_.readSome(place, window_));
        windowAt_ = place;
    }
    const auto start = static_cast<std::size_t>(place - windowAt_);
    const std::size_t count = std::min(window_.size() - start, bytes.size());
    std::copy_n(window_.begin() + static_cast<std::ptrdiff_t>(start), count, bytes.begin());
    return count;
}

::ssize_t Mp3Stream::readBytes(void* self, void* bytes, std::size_t count) {
    auto* const stream = static_cast<Mp3Stream*>(self);
    const std::span<std::uint8_t> wanted(static_cast<std::uint8_t*>(bytes), count);
    std::size_t done = 0;
    try {
        while (const std::size_t got = stream->readAt(stream->at_, wanted.subspan(done))) {
            stream->at_ += static_cast<std::int64_t>(got);
            done += got;
        }
    } catch (...) {
        stream->failure_ = std::current_exception();
        return -1;
    }
    return static_cast<::ssize_t>(done);
}

::off_t Mp3Stream::moveTo(void* self, ::off_t offset, int from) {
    auto* const stream = static_cast<Mp3Stream*>(self);
    if (from == SEEK_CUR) offset += stream->at_;
    if (from == SEEK_END) offset += stream->part_.end - stream->part_.lead.begin;
    if (offset < 0) return -1;
    return stream->at_ = offset;
}

}  // namespace tarnwick::sound
