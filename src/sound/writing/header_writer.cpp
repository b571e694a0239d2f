#include "sound/writing/header_writer.h"

#include <bit>
#include <string_view>
#include <utility>

#include "sound/samples/adpcm.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kLargest = 0xFFFFFFFF;      // of a 32-bit size
constexpr std::int64_t kUnknown = 0xFFFFFFFF;      // the size is in the ds64 chunk
constexpr std::int64_t kAifcVersion = 0xA2805140;  // the only one that exists

// Collects the fields of a header.
class Bytes {
  public:
    Bytes& text(std::string_view letters) {
        bytes_.insert(bytes_.end(), letters.begin(), letters.end());
        return *this;
    }
    Bytes& little(std::int64_t value, int width) {
        for (int byte = 0; byte < width; ++byte)
            bytes_.push_back(static_cast<unsigned char>(value >> (8 * byte)));
        return *this;
    }
    Bytes& big(std::int64_t value, int width) {
        for (int byte = width - 1; byte >= 0; --byte)
            bytes_.push_back(static_cast<unsigned char>(value >> (8 * byte)));
        return *this;
    }
    std::vector<unsigned char> take() { return std::move(bytes_); }

  private:
    std::vector<unsigned char> bytes_;
};

std::int64_t frameBytes(const AudioFormat& format) {
    return std::int64_t{format.channels} * (format.bits / 8);
}

int formatTag(const AudioFormat& format, Companding law) {
    enum : int { kPcm = 1, kFloat = 3, kALaw = 6, kMuLaw = 7 };
    if (law == Companding::ALaw) return kALaw;
    if (law == Companding::MuLaw) return kMuLaw;
    return format.floating ? kFloat : kPcm;
}

// An 80-bit extended number: sign and exponent, then a mantissa with an explicit leading one.
void appendRate(Bytes& header, int rate) {
    const auto value = static_cast<std::uint64_t>(rate);
    const int width = std::bit_width(value);
    header.big(16383 + width - 1, 2).big(static_cast<std::int64_t>(value << (64 - width)), 8);
}

}  // namespace

std::vector<unsigned char> wavHeader(const AudioFormat& format, std::int64_t frames,
                                     Companding law) {
    constexpr std::int64_t kDs64 = 28;
    // All formats but plain PCM have an (empty) extension and a count of frames.
    const bool plain = !format.floating && law == Companding::None;
    const std::int64_t data = frames * frameBytes(format);
    const std::int64_t riff = 4 + (plain ? 8 + 16 : 8 + 18 + 12) + 8 + data + data % 2;
    const bool large = riff >= kUnknown;
    Bytes header;
    header.text(large ? "RF64" : "RIFF").little(large ? kUnknown : riff, 4).text("WAVE");
    if (large) {
        header.text("ds64").little(kDs64, 4);
        header.little(riff + 8 + kDs64, 8).little(data, 8).little(frames, 8).little(0, 4);
    }
    header.text("fmt ").little(plain ? 16 : 18, 4);
    header.little(formatTag(format, law), 2).little(format.channels, 2);
    header.little(format.rate, 4).little(format.rate * frameBytes(format), 4);
    header.little(frameBytes(format), 2).little(format.bits, 2);
    if (!plain) {
        header.little(0, 2).text("fact").little(4, 4);
        header.little(frames < kUnknown ? frames : kUnknown, 4);
    }
    header.text("data").little(large ? kUnknown : data, 4);
    return header.take();
}

std::vector<unsigned char> adpcmHeader(const AudioFormat& format, std::int64_t frames,
                                       std::int64_t blockBytes, std::int64_t blockFrames) {
    constexpr std::int64_t kWeights = kStandardWeights.size();
    constexpr std::int64_t kExtension = 4 + 4 * kWeights;
    const std::int64_t data = (frames + blockFrames - 1) / blockFrames * blockBytes;
    const std::int64_t riff = 4 + 8 + 18 + kExtension + 12 + 8 + data;
    if (riff > kLargest || frames > kLargest)
        throw SoundError(SoundFailure::BadFormat, "a WAV of this codec holds no more than 4 GiB");
    Bytes header;
    header.text("RIFF").little(riff, 4).text("WAVEfmt ").little(18 + kExtension, 4);
    header.little(2, 2).little(format.channels, 2).little(format.rate, 4);
    header.little(format.rate * blockBytes / blockFrames, 4).little(blockBytes, 2).little(4, 2);
    header.little(kExtension, 2).little(blockFrames, 2).little(kWeights, 2);
    for (const AdpcmWeights& pair : kStandardWeights)
        header.little(pair[0], 2).little(pair[1], 2);
    header.text("fact").little(4, 4).little(frames, 4).text("data").little(data, 4);
    return header.take();
}

std::vector<unsigned char> aiffHeader(const AudioFormat& format, std::int64_t frames) {
    // A text preceded by its length; even in total.
    constexpr std::string_view kFloatCoding = "fl32\x11IEEE 32-bit float";
    constexpr std::int64_t kVersion = 8 + 4;
    const bool aifc = format.floating;
    const std::int64_t common = 18 + (aifc ? std::ssize(kFloatCoding) : 0);
    const std::int64_t data = frames * frameBytes(format);
    const std::int64_t form = 4 + (aifc ? kVersion : 0) + 8 + common + 8 + 8 + data + data % 2;
    if (form > kLargest)
        throw SoundError(SoundFailure::BadFormat, "an AIFF file holds no more than 4 GiB");
    Bytes header;
    header.text("FORM").big(form, 4).text(aifc ? "AIFC" : "AIFF");
    if (aifc) header.text("FVER").big(4, 4).big(kAifcVersion, 4);
    header.text("COMM").big(common, 4).big(format.channels, 2).big(frames, 4).big(format.bits, 2);
    appendRate(header, format.rate);
    if (aifc) header.text(kFloatCoding);
    header.text("SSND").big(8 + data, 4).big(0, 4).big(0, 4);  // no offset, no alignment
    return header.take();
}

}  // namespace tarnwick::sound
