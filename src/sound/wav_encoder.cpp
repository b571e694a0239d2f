#include "sound/wav_encoder.h"

#include <string_view>

namespace tarnwick::sound {

namespace {

constexpr std::uint16_t kPcm = 1;
constexpr std::uint16_t kFloat = 3;
constexpr std::int64_t kUnknown = 0xFFFFFFFF;  // a 32-bit size that stands in the ds64 chunk

// Collects little-endian fields.
class Bytes {
  public:
    Bytes& tag(std::string_view four) {
        bytes_.insert(bytes_.end(), four.begin(), four.end());
        return *this;
    }
    Bytes& number(std::int64_t value, int width) {
        for (int byte = 0; byte < width; ++byte) {
            bytes_.push_back(static_cast<unsigned char>(value >> (8 * byte)));
        }
        return *this;
    }
    std::int64_t size() const { return static_cast<std::int64_t>(bytes_.size()); }
    std::vector<unsigned char> take() { return std::move(bytes_); }

  private:
    std::vector<unsigned char> bytes_;
};

std::int64_t frameBytes(const AudioFormat& format) {
    return std::int64_t{format.channels} * (format.bits / 8);
}

void appendFormat(Bytes& header, const AudioFormat& format) {
    header.tag("fmt ").number(format.floating ? 18 : 16, 4);
    header.number(format.floating ? kFloat : kPcm, 2).number(format.channels, 2);
    header.number(format.rate, 4).number(format.rate * frameBytes(format), 4);
    header.number(frameBytes(format), 2).number(format.bits, 2);
    if (format.floating) header.number(0, 2);  // no extension
}

}  // namespace

std::vector<unsigned char> wavHeader(const AudioFormat& format, std::int64_t frames) {
    constexpr std::int64_t kDs64 = 28;
    const std::int64_t data = frames * frameBytes(format);
    const std::int64_t formatChunks = format.floating ? 8 + 18 + 12 : 8 + 16;
    const std::int64_t riff = 4 + formatChunks + 8 + data + data % 2;
    const bool large = riff >= kUnknown;
    Bytes header;
    header.tag(large ? "RF64" : "RIFF").number(large ? kUnknown : riff, 4).tag("WAVE");
    if (large) {
        header.tag("ds64").number(kDs64, 4);
        header.number(riff + 8 + kDs64, 8).number(data, 8).number(frames, 8).number(0, 4);
    }
    appendFormat(header, format);
    if (format.floating) {
        const bool counts = frames < kUnknown;
        header.tag("fact").number(4, 4).number(counts ? frames : kUnknown, 4);
    }
    header.tag("data").number(large ? kUnknown : data, 4);
    return header.take();
}

WavEncoder::WavEncoder(const AudioFormat& format, std::int64_t frames, AtomicFile& file)
    : file_(file),
      layout_{.bits = format.bits, .floating = format.floating},
      channels_(format.channels),
      dataBytes_(frames * frameBytes(format)) {
    const std::vector<unsigned char> header = wavHeader(format, frames);
    file_.write(header.data(), header.size());
}

void WavEncoder::write(const double* interleaved, std::int64_t frames) {
    const auto values = static_cast<std::size_t>(frames * channels_);
    bytes_.resize(values * static_cast<std::size_t>(layout_.bytes()));
    quantise(interleaved, values, layout_, bytes_.data());
    file_.write(bytes_.data(), bytes_.size());
}

void WavEncoder::finish() {
    if (dataBytes_ % 2 != 0) file_.write("", 1);  // chunks have an even length
}

}  // namespace tarnwick::sound
