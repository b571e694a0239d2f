#include <algorithm>
#include <array>
#include <vector>

#include "sound/chunk_walker.h"
#include "sound/mp3_decoder.h"

namespace tarnwick::sound {

namespace {

// How much junk is forgiven before the first frame, and how many frames must fit together.
constexpr std::size_t kSearchBytes = 64 * 1024;
constexpr int kFramesWanted = 4;
constexpr int kFramesAtEnd = 2;  // enough when the file ends with them

// Kilobits per second by index, for MPEG 1 and for the lower rates of MPEG 2 and 2.5.
constexpr std::array<int, 15> kBitRates1 = {0,   32,  40,  48,  56,  64,  80, 96,
                                            112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> kBitRates2 = {0,  8,  16, 24,  32,  40,  48, 56,
                                            64, 80, 96, 112, 128, 144, 160};
constexpr std::array<int, 3> kRates = {44100, 48000, 32000};

// The bits of a frame header that all frames of a stream share: sync, version, layer, rate.
constexpr std::uint32_t kSharedBits = 0xFFFE0C00;

// Bytes of the Layer III frame with this header; 0 if it is not one.
int frameBytes(std::uint32_t header) {
    const std::uint32_t version = header >> 19 & 3;  // 0: 2.5, 2: 2, 3: 1
    const std::uint32_t layer = header >> 17 & 3;    // 1: III
    const std::uint32_t bitRate = header >> 12 & 15;
    const std::uint32_t rate = header >> 10 & 3;
    if (header >> 21 != 0x7FF || version == 1 || layer != 1) return 0;
    if (bitRate == 0 || bitRate == 15 || rate == 3 || (header & 3) == 2) return 0;
    const bool first = version == 3;
    const int hertz = kRates[rate] >> (first ? 0 : version == 2 ? 1 : 2);
    const int bits = (first ? kBitRates1 : kBitRates2)[bitRate] * 1000;
    return (first ? 144 : 72) * bits / hertz + static_cast<int>(header >> 9 & 1);
}

// Whether enough frames follow each other from `at` on.
bool framesFollow(const SourceFile& file, std::int64_t at) {
    std::uint32_t shared = 0;
    for (int frames = 0; frames < kFramesWanted; ++frames) {
        std::array<std::uint8_t, 4> bytes;
        const std::size_t got = at < file.size() ? file.readSome(at, bytes) : 0;
        const bool tag = got >= 3 && bytes[0] == 'T' && bytes[1] == 'A' && bytes[2] == 'G';
        if (got < bytes.size() || tag) return frames >= kFramesAtEnd;
        const std::uint32_t header = ChunkWalker::big32(bytes.data());
        const int length = frameBytes(header);
        if (length == 0 || (frames > 0 && (header & kSharedBits) != shared)) return false;
        shared = header & kSharedBits;
        at += length;
    }
    return true;
}

// Where the file goes on behind the tags at its beginning.
std::int64_t behindTags(const SourceFile& file) {
    std::int64_t at = 0;
    std::array<std::uint8_t, 10> tag;
    while (at < file.size() && file.readSome(at, tag) == tag.size() && tag[0] == 'I' &&
           tag[1] == 'D' && tag[2] == '3') {
        std::int64_t size = 0;  // seven bits in each byte
        for (std::size_t i = 6; i < tag.size(); ++i)
            size = size << 7 | (tag[i] & 0x7F);
        const bool footer = (tag[5] & 0x10) != 0;
        at += static_cast<std::int64_t>(tag.size()) * (footer ? 2 : 1) + size;
    }
    return at;
}

}  // namespace

bool looksLikeMp3(const SourceFile& file) {
    const std::int64_t begin = behindTags(file);
    if (begin >= file.size()) return false;
    std::vector<std::uint8_t> window(kSearchBytes);
    const std::size_t held = file.readSome(begin, window);
    for (std::size_t i = 0; i + 4 <= held; ++i)
        if (window[i] == 0xFF && frameBytes(ChunkWalker::big32(window.data() + i)) > 0 &&
            framesFollow(file, begin + static_cast<std::int64_t>(i)))
            return true;
    return false;
}

}  // namespace tarnwick::sound
