#include "sound/reading/gsm_stream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// The most that fits the 32-bit sizes of the header: more than 700 hours.
constexpr std::int64_t kMostBytes = 0xFFFF0000 / kGsmBlockBytes * kGsmBlockBytes;

}  // namespace

GsmStream::GsmStream(const SourceFile& file, const StoredSound& sound, const BlockLayout& layout)
    : file_(file),
      offset_(sound.offset),
      blockBytes_(std::min(layout.bytes / kGsmBlockBytes * kGsmBlockBytes, kMostBytes)),
      left_(std::min(sound.frames, blockBytes_ / kGsmBlockBytes * kGsmBlockFrames)) {
    makeHeader(sound);
    SF_VIRTUAL_IO access = accessToBlocks();
    SF_INFO info = {};
    decoder_ = sf_open_virtual(&access, SFM_READ, &info, this);
    if (failure_) {
        sf_close(decoder_);
        std::rethrow_exception(failure_);
    }
    if (!decoder_) throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
}

GsmStream::~GsmStream() { sf_close(decoder_); }

std::int64_t GsmStream::decode(std::int64_t frames, std::uint8_t* bytes) {
    const std::int64_t wanted = std::min(frames, left_);
    // The callers' buffers are aligned for any type and hold whole samples.
    const std::int64_t got = sf_read_short(decoder_, reinterpret_cast<short*>(bytes), wanted);
    if (failure_) std::rethrow_exception(failure_);
    left_ -= got;
    return got;
}

void GsmStream::makeHeader(const StoredSound& sound) {
    std::uint8_t* at = header_.data();
    const auto tag = [&](const char* text) {
        std::memcpy(at, text, 4);
        at += 4;
    };
    const auto number = [&](std::int64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            *at++ = static_cast<std::uint8_t>(value >> (8 * i));
    };
    tag("RIFF");
    number(kHeaderBytes - 8 + blockBytes_, 4);
    tag("WAVE");
    tag("fmt ");
    number(20, 4);
    number(0x31, 2);
    number(1, 2);
    number(sound.format.rate, 4);
    number(std::int64_t{sound.format.rate} * kGsmBlockBytes / kGsmBlockFrames, 4);
    number(kGsmBlockBytes, 2);
    number(0, 2);
    number(2, 2);
    number(kGsmBlockFrames, 2);
    tag("fact");
    number(4, 4);
    number(left_, 4);
    tag("data");
    number(blockBytes_, 4);
}

// Reads what is left at most; returns how many bytes that is.
std::int64_t GsmStream::readBytes(std::span<std::uint8_t> bytes) {
    const std::int64_t before = at_;
    if (at_ < kHeaderBytes) {
        const auto count = std::min(bytes.size(), static_cast<std::size_t>(kHeaderBytes - at_));
        std::copy_n(header_.begin() + at_, count, bytes.begin());
        at_ += static_cast<std::int64_t>(count);
        bytes = bytes.subspan(count);
    }
    const auto left = static_cast<std::size_t>(kHeaderBytes + blockBytes_ - at_);
    at_ += static_cast<std::int64_t>(
        file_.readSome(offset_ + at_ - kHeaderBytes, bytes.first(std::min(bytes.size(), left))));
    return at_ - before;
}

SF_VIRTUAL_IO GsmStream::accessToBlocks() {
    SF_VIRTUAL_IO access = {};
    access.get_filelen = [](void* self) -> sf_count_t {
        return kHeaderBytes + static_cast<GsmStream*>(self)->blockBytes_;
    };
    access.tell = [](void* self) -> sf_count_t { return static_cast<GsmStream*>(self)->at_; };
    access.seek = [](sf_count_t offset, int from, void* self) -> sf_count_t {
        auto* const stream = static_cast<GsmStream*>(self);
        if (from == SEEK_CUR) offset += stream->at_;
        if (from == SEEK_END) offset += kHeaderBytes + stream->blockBytes_;
        return stream->at_ =
                   std::clamp<std::int64_t>(offset, 0, kHeaderBytes + stream->blockBytes_);
    };
    access.read = [](void* bytes, sf_count_t count, void* self) -> sf_count_t {
        auto* const stream = static_cast<GsmStream*>(self);
        try {
            return stream->readBytes(
                {static_cast<std::uint8_t*>(bytes), static_cast<std::size_t>(count)});
        } catch (...) {
            stream->failure_ = std::current_exception();
            return 0;  // the library accepts no error here, only the end of the file
        }
    };
    return access;
}

}  // namespace tarnwick::sound
