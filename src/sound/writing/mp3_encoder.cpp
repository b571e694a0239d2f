#include "sound/writing/mp3_encoder.h"

#include <lame/lame.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "sound/samples/sound_error.h"
#include "sound/writing/mp3_length_tag.h"

namespace tarnwick::sound {

namespace {

// LAME's default. The next better one takes two and a half times as long.
constexpr int kQuality = 3;

constexpr std::int64_t kBlockFrames = 8192;

// More than the encoder outputs at the end, or for a block, which its manual limits to 5/4 bytes a
// frame and 7200.
constexpr std::size_t kBlockBytes = 65536;

// MP3 can represent values well above full scale, but not arbitrarily large ones.
constexpr double kLoudest = 8.0;

// Entries of the encoder's table: the first is no bit rate, and an MPEG version has at most 14.
constexpr int kBitRates = 15;

// The encoder's number of the MPEG version: 1 for MPEG 1, 0 for MPEG 2 and 2 for the extension 2.5
// for low rates.
constexpr int mpegVersion(int rate) { return rate >= 32000 ? 1 : rate >= 16000 ? 0 : 2; }

double bounded(double value) {
    return std::isnan(value) ? 0.0 : std::clamp(value, -kLoudest, kLoudest);
}

}  // namespace

std::vector<int> mp3BitRates(int rate) {
    std::vector<int> rates;
    for (int index = 1; index < kBitRates; ++index) {
        const int bitRate = lame_get_bitrate(mpegVersion(rate), index) * 1000;
        if (bitRate > 0 && Mp3Encoder::makeLame(rate, 1, bitRate) &&
            Mp3Encoder::makeLame(rate, 2, bitRate))
            rates.push_back(bitRate);
    }
    return rates;
}

void Mp3Encoder::Close::operator()(lame_global_struct* lame) const { lame_close(lame); }

// Returns none if the encoder would use other rates than these.
Mp3Encoder::Lame Mp3Encoder::makeLame(int rate, int channels, int bitRate) {
    Lame lame(lame_init());
    if (!lame) throw SoundError(SoundFailure::NoSpace, "no memory for the MP3 encoder");
    lame_set_errorf(lame.get(), nullptr);
    lame_set_msgf(lame.get(), nullptr);
    lame_set_debugf(lame.get(), nullptr);
    if (lame_set_in_samplerate(lame.get(), rate) != 0) return nullptr;
    lame_set_out_samplerate(lame.get(), rate);
    lame_set_num_channels(lame.get(), channels);
    lame_set_mode(lame.get(), channels == 1 ? MONO : JOINT_STEREO);
    lame_set_VBR(lame.get(), vbr_off);
    lame_set_brate(lame.get(), bitRate / 1000);
    lame_set_quality(lame.get(), kQuality);
    const bool tag = mp3LengthTagFor(rate, channels, bitRate) == Mp3LengthTag::ByLame;
    lame_set_bWriteVbrTag(lame.get(), tag ? 1 : 0);
    const bool honoured = lame_init_params(lame.get()) == 0 &&
                          lame_get_out_samplerate(lame.get()) == rate &&
                          lame_get_brate(lame.get()) * 1000 == bitRate;
    return honoured ? std::move(lame) : nullptr;
}

Mp3Encoder::Mp3Encoder(int rate, int channels, int bitRate, AtomicFile& file)
    : file_(file),
      channels_(channels),
      bitRate_(bitRate),
      lame_(makeLame(rate, channels, bitRate)),
      bytes_(kBlockBytes) {
    if (!lame_) throw SoundError(SoundFailure::BadFormat, "rates that MP3 does not have");
    gain_ = 1.0 / lame_get_scale(lame_.get());
    const bool own = mp3LengthTagFor(rate, channels, bitRate) == Mp3LengthTag::Here;
    ownTagBytes_ = own ? mp3FrameBytes(rate, bitRate) : 0;
    file_.write(std::vector<unsigned char>(ownTagBytes_).data(), ownTagBytes_);
}

void Mp3Encoder::append(int encoded) {
    if (encoded == -2) throw SoundError(SoundFailure::NoSpace, "no memory for the MP3 encoder");
    if (encoded < 0) throw SoundError(SoundFailure::WriteFailed, "the MP3 encoder failed");
    file_.write(bytes_.data(), static_cast<std::size_t>(encoded));
}

void Mp3Encoder::write(const double* interleaved, std::int64_t frames) {
    for (std::int64_t done = 0; done < frames; done += kBlockFrames) {
        const auto count = static_cast<int>(std::min(kBlockFrames, frames - done));
        const double* block = interleaved + done * channels_;
        values_.resize(static_cast<std::size_t>(count * channels_));
        std::transform(block, block + count * channels_, values_.begin(),
                       [this](double value) { return bounded(value) * gain_; });
        const auto room = static_cast<int>(bytes_.size());
        append(channels_ == 1
                   ? lame_encode_buffer_ieee_double(lame_.get(), values_.data(), values_.data(),
                                                    count, bytes_.data(), room)
                   : lame_encode_buffer_interleaved_ieee_double(lame_.get(), values_.data(), count,
                                                                bytes_.data(), room));
    }
}

void Mp3Encoder::finish() {
    append(lame_encode_flush(lame_.get(), bytes_.data(), static_cast<int>(bytes_.size())));
    // The lengths that the first frame must hold are known only now.
    if (ownTagBytes_ > 0) return writeOwnTag();
    const std::size_t tag = lame_get_lametag_frame(lame_.get(), bytes_.data(), bytes_.size());
    if (tag <= bytes_.size()) file_.writeAt(0, bytes_.data(), tag);
}

void Mp3Encoder::writeOwnTag() {
    const Mp3Length length{.mp3Frames = lame_get_frameNum(lame_.get()),
                           .bytes = file_.size(),
                           .delay = lame_get_encoder_delay(lame_.get()),
                           .padding = lame_get_encoder_padding(lame_.get()),
                           .bitRate = bitRate_,
                           .lowpass = lame_get_lowpassfreq(lame_.get())};
    std::array<unsigned char, 4> header;
    const auto second = static_cast<off_t>(ownTagBytes_);
    if (pread(file_.descriptor(), header.data(), header.size(), second) != std::ssize(header))
        throw SoundError(SoundFailure::WriteFailed, "the file cannot be read back");
    const std::vector<unsigned char> tag = mp3LengthTag(header, ownTagBytes_, length);
    file_.writeAt(0, tag.data(), tag.size());
}

}  // namespace tarnwick::sound
