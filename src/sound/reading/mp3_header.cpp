#include "sound/reading/mp3_header.h"

#include <array>

#include "sound/samples/byte_order.h"

namespace tarnwick::sound {

namespace {

// Kilobits per second by index, for MPEG 1 and for MPEG 2 and 2.5, which have lower sample rates.
constexpr std::array<int, 15> kBitRates1 = {0,   32,  40,  48,  56,  64,  80, 96,
                                            112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> kBitRates2 = {0,  8,  16, 24,  32,  40,  48, 56,
                                            64, 80, 96, 112, 128, 144, 160};
constexpr std::array<int, 3> kRates = {44100, 48000, 32000};

}  // namespace

std::optional<Mp3Header> Mp3Header::read(std::uint32_t word) {
    const std::uint32_t version = word >> 19 & 3;  // 0: 2.5, 2: 2, 3: 1
    const std::uint32_t layer = word >> 17 & 3;    // 1: III
    const std::uint32_t bitRate = word >> 12 & 15;
    const std::uint32_t rate = word >> 10 & 3;
    if (word >> 21 != 0x7FF || version == 1 || layer != 1) return {};
    if (bitRate == 0 || bitRate == 15 || rate == 3 || (word & 3) == 2) return {};
    const bool first = version == 3;
    const bool mono = (word >> 6 & 3) == 3;
    const int hertz = kRates[rate] >> (first ? 0 : version == 2 ? 1 : 2);
    const int bits = (first ? kBitRates1 : kBitRates2)[bitRate] * 1000;
    Mp3Header header;
    header.bytes = (first ? 144 : 72) * bits / hertz + static_cast<int>(word >> 9 & 1);
    header.rate = hertz;
    header.channels = mono ? 1 : 2;
    header.sideAt = kBytes + ((word >> 16 & 1) != 0 ? 0 : 2);
    header.sideBytes = first ? (mono ? 17 : 32) : (mono ? 9 : 17);
    header.samples = first ? 1152 : 576;
    header.backBits = first ? 9 : 8;
    header.shared = word & 0xFFFE0C00;
    return header;
}

std::optional<Mp3Header> Mp3Header::at(const SourceFile& file, std::int64_t byte) {
    std::array<std::uint8_t, kBytes> word;
    if (byte >= file.size() || file.readSome(byte, word) < word.size()) return {};
    return read(big32(word.data()));
}

}  // namespace tarnwick::sound
