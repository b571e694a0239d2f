#include "sound/writing/mp3_length_tag.h"

#include <lame/lame.h>

#include <algorithm>
#include <string_view>

namespace tarnwick::sound {

namespace {

constexpr std::size_t kHeaderBytes = 4;
constexpr std::size_t kTagBytes = 16 + 36;              // the lengths, and LAME's additions
constexpr std::size_t kLameTagBytes = kTagBytes + 104;  // with a seek table

// Bytes between the header of a frame and its sound data.
std::size_t sideBytes(bool mpeg1, bool mono) {
    if (mono) return mpeg1 ? 17 : 9;
    return mpeg1 ? 32 : 17;
}

class Fields {
  public:
    explicit Fields(std::vector<unsigned char>& frame, std::size_t at) : frame_(frame), at_(at) {}

    Fields& text(std::string_view letters) {
        at_ = static_cast<std::size_t>(std::copy(letters.begin(), letters.end(), &frame_[at_]) -
                                       frame_.data());
        return *this;
    }
    // The lowest `bytes` bytes of a number, at most 8.
    Fields& number(std::int64_t value, int bytes) {
        while (bytes-- > 0)
            frame_[at_++] = static_cast<unsigned char>(value >> (8 * bytes));
        return *this;
    }
    // CRC-16, with reflected bits, of everything before.
    void sum() {
        unsigned crc = 0;
        for (std::size_t i = 0; i < at_; ++i) {
            crc ^= frame_[i];
            for (int bit = 0; bit < 8; ++bit)
                crc = crc & 1 ? crc >> 1 ^ 0xA001 : crc >> 1;
        }
        number(crc, 2);
    }

  private:
    std::vector<unsigned char>& frame_;
    std::size_t at_;
};

bool isMpeg1(int rate) { return rate >= 32000; }

}  // namespace

std::size_t mp3FrameBytes(int rate, int bitRate) {
    return static_cast<std::size_t>((isMpeg1(rate) ? 144 : 72) * bitRate / rate);
}

Mp3LengthTag mp3LengthTagFor(int rate, int channels, int bitRate) {
    const std::size_t bytes = mp3FrameBytes(rate, bitRate);
    const std::size_t place = kHeaderBytes + sideBytes(isMpeg1(rate), channels == 1);
    if (place + kLameTagBytes <= bytes) return Mp3LengthTag::ByLame;
    return place + kTagBytes <= bytes ? Mp3LengthTag::Here : Mp3LengthTag::None;
}

std::vector<unsigned char> mp3LengthTag(const std::array<unsigned char, 4>& header,
                                        std::size_t bytes, const Mp3Length& length) {
    constexpr int kFramesAndBytes = 3;
    constexpr int kConstantRate = 1;
    constexpr std::int64_t kLargest = 0xFFFFFFFF;
    std::vector<unsigned char> frame(bytes);
    std::copy(header.begin(), header.end(), frame.begin());
    frame[1] |= 0x01;                                        // no checksum for this frame
    frame[2] = static_cast<unsigned char>(frame[2] & 0xFD);  // no padding
    frame[3] = static_cast<unsigned char>(frame[3] & 0xCF);  // no joint stereo
    const bool mpeg1 = (header[1] & 0x08) != 0;
    const bool mono = header[3] >> 6 == 3;
    Fields fields(frame, kHeaderBytes + sideBytes(mpeg1, mono));
    const std::int64_t fileBytes = std::min(length.bytes, kLargest);
    fields.text("Info").number(kFramesAndBytes, 4);
    fields.number(std::min(length.mp3Frames, kLargest), 4).number(fileBytes, 4);
    fields.text("LAME").text(std::string_view(get_lame_short_version()).substr(0, 5));
    fields.number(kConstantRate, 1).number(std::min(length.lowpass / 100, 255), 1);
    fields.number(0, 8).number(0, 1);  // no gains
    fields.number(std::min(length.bitRate / 1000, 255), 1);
    fields.number(length.delay << 12 | length.padding, 3).number(0, 4).number(fileBytes, 4);
    fields.number(0, 2).sum();
    return frame;
}

}  // namespace tarnwick::sound
