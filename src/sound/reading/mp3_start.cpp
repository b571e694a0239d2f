#include "sound/reading/mp3_start.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "sound/samples/byte_order.h"

namespace tarnwick::sound {

namespace {

// How much junk and how many tags are skipped before the first frame, and how many frames must
// follow each other.
constexpr std::size_t kSearchBytes = 64 * 1024;
constexpr int kMostTags = 100;
constexpr int kFramesWanted = 4;
constexpr int kFramesAtEnd = 2;  // enough if the sound ends with them

constexpr int kHeaderBytes = Mp3Header::kBytes;

std::string_view textAt(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

// Whether these bytes follow the end of the sound: the end of the file, a tag or padding.
bool endsBefore(const std::uint8_t* bytes, std::size_t count) {
    return count < kHeaderBytes || textAt(bytes, 3) == "TAG" ||
           textAt(bytes, count) == "APETAGEX" || big32(bytes) == 0;
}

// Whether enough frames follow each other from `at` on.
bool framesFollow(const SourceFile& file, std::int64_t at) {
    std::uint32_t shared = 0;
    for (int frames = 0; frames < kFramesWanted; ++frames) {
        std::array<std::uint8_t, 8> bytes;
        const std::size_t got = file.readSome(at, bytes);
        if (endsBefore(bytes.data(), got)) return frames >= kFramesAtEnd;
        const auto header = Mp3Header::read(big32(bytes.data()));
        if (!header || (frames > 0 && header->shared != shared)) return false;
        shared = header->shared;
        at += header->bytes;
    }
    return true;
}

// The position after the tags at `at`. Skips at most kMostTags of them.
std::int64_t behindTags(const SourceFile& file, std::int64_t at) {
    std::array<std::uint8_t, 10> tag;
    for (int tags = 0;
         tags < kMostTags && file.readSome(at, tag) == tag.size() && textAt(tag.data(), 3) == "ID3";
         ++tags) {
        std::int64_t size = 0;  // seven bits in each byte
        for (std::size_t i = 6; i < tag.size(); ++i)
            size = size << 7 | (tag[i] & 0x7F);
        const bool footer = (tag[5] & 0x10) != 0;
        at += static_cast<std::int64_t>(tag.size()) * (footer ? 2 : 1) + size;
    }
    return at;
}

// Reads a frame that holds information about the file instead of sound; none for other frames. A
// VBRI frame is recognised, but its content is not needed.
std::optional<Mp3Tag> readTag(const SourceFile& file, std::int64_t at, const Mp3Header& header) {
    std::array<std::uint8_t, 192> frame = {};
    file.readSome(at, frame);
    if (textAt(frame.data() + kHeaderBytes + 32, 4) == "VBRI") return Mp3Tag{};
    const std::uint8_t* bytes = frame.data() + kHeaderBytes + header.sideBytes;
    if (textAt(bytes, 4) != "Xing" && textAt(bytes, 4) != "Info") return {};
    const std::uint32_t fields = big32(bytes + 4);
    bytes += 8;
    Mp3Tag tag;
    if ((fields & 1) != 0) tag.frames = big32(bytes);
    for (const auto& [bit, size] :
         {std::pair(1, 4), std::pair(2, 4), std::pair(4, 100), std::pair(8, 4)})
        if ((fields & static_cast<std::uint32_t>(bit)) != 0) bytes += size;
    // The encoder's name, nine bytes, and twelve more bytes precede the two 12-bit numbers.
    constexpr int kCutsAt = 21;
    if (bytes - frame.data() + kCutsAt + 3 <= header.bytes) {
        const std::uint32_t cuts = big32(bytes + kCutsAt) >> 8;
        tag.delay = static_cast<int>(cuts >> 12);
        tag.padding = static_cast<int>(cuts & 0xFFF);
    }
    return tag;
}

}  // namespace

std::optional<std::int64_t> searchMp3Frames(const SourceFile& file, std::int64_t from) {
    const std::int64_t at = behindTags(file, from);
    std::vector<std::uint8_t> window(kSearchBytes);
    const std::size_t held = file.readSome(at, window);
    for (std::size_t i = 0; i + kHeaderBytes <= held; ++i)
        if (window[i] == 0xFF && Mp3Header::read(big32(window.data() + i)) &&
            framesFollow(file, at + static_cast<std::int64_t>(i)))
            return at + static_cast<std::int64_t>(i);
    return {};
}

std::optional<Mp3Start> findMp3(const SourceFile& file) {
    const std::optional<std::int64_t> first = searchMp3Frames(file, 0);
    if (!first) return {};
    Mp3Start start{*first, *Mp3Header::at(file, *first), {}};
    start.tag = readTag(file, start.byte, start.header);
    if (start.tag) {
        start.byte += start.header.bytes;
        const auto header = Mp3Header::at(file, start.byte);
        if (!header) return {};
        start.header = *header;
    }
    return start;
}

}  // namespace tarnwick::sound
