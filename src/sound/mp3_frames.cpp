#include "sound/mp3_frames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "sound/byte_order.h"
#include "sound/progress.h"
#include "sound/sound_error.h"

namespace tarnwick::sound {

namespace {

// How much junk and how many tags are forgiven before the first frame, and how many frames must
// fit together.
constexpr std::size_t kSearchBytes = 64 * 1024;
constexpr int kMostTags = 100;
constexpr int kFramesWanted = 4;
constexpr int kFramesAtEnd = 2;  // enough when the sound ends with them

constexpr int kHeaderBytes = 4;

// Kilobits per second by index, for MPEG 1 and for the lower rates of MPEG 2 and 2.5.
constexpr std::array<int, 15> kBitRates1 = {0,   32,  40,  48,  56,  64,  80, 96,
                                            112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> kBitRates2 = {0,  8,  16, 24,  32,  40,  48, 56,
                                            64, 80, 96, 112, 128, 144, 160};
constexpr std::array<int, 3> kRates = {44100, 48000, 32000};

std::string_view textAt(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

// Whether sound ends before these bytes of the file: at its end, at a tag or at padding.
bool endsBefore(const std::uint8_t* bytes, std::size_t count) {
    return count < kHeaderBytes || textAt(bytes, 3) == "TAG" ||
           textAt(bytes, count) == "APETAGEX" || big32(bytes) == 0;
}

// Whether enough frames follow each other from `at` on.
bool framesFollow(const SourceFile& file, std::int64_t at) {
    std::uint32_t shared = 0;
    for (int frames = 0; frames < kFramesWanted; ++frames) {
        std::array<std::uint8_t, 8> bytes;
        const std::size_t got = at < file.size() ? file.readSome(at, bytes) : 0;
        if (endsBefore(bytes.data(), got)) return frames >= kFramesAtEnd;
        const auto header = Mp3Header::read(big32(bytes.data()));
        if (!header || (frames > 0 && header->shared != shared)) return false;
        shared = header->shared;
        at += header->bytes;
    }
    return true;
}

// Where the file goes on behind the tags at `at`; behind some of them, where they are too
// many.
std::int64_t behindTags(const SourceFile& file, std::int64_t at) {
    std::array<std::uint8_t, 10> tag;
    for (int tags = 0; tags < kMostTags && at < file.size() &&
                       file.readSome(at, tag) == tag.size() && textAt(tag.data(), 3) == "ID3";
         ++tags) {
        std::int64_t size = 0;  // seven bits in each byte
        for (std::size_t i = 6; i < tag.size(); ++i)
            size = size << 7 | (tag[i] & 0x7F);
        const bool footer = (tag[5] & 0x10) != 0;
        at += static_cast<std::int64_t>(tag.size()) * (footer ? 2 : 1) + size;
    }
    return at;
}

// The byte at or behind `at`, but for tags and a little junk, where frames follow each other.
std::optional<std::int64_t> searchFrames(const SourceFile& file, std::int64_t at) {
    at = behindTags(file, at);
    if (at >= file.size()) return {};
    std::vector<std::uint8_t> window(kSearchBytes);
    const std::size_t held = file.readSome(at, window);
    for (std::size_t i = 0; i + kHeaderBytes <= held; ++i)
        if (window[i] == 0xFF && Mp3Header::read(big32(window.data() + i)) &&
            framesFollow(file, at + static_cast<std::int64_t>(i)))
            return at + static_cast<std::int64_t>(i);
    return {};
}

std::optional<Mp3Header> headerAt(const SourceFile& file, std::int64_t at) {
    std::array<std::uint8_t, kHeaderBytes> word;
    if (at >= file.size() || file.readSome(at, word) < word.size()) return {};
    return Mp3Header::read(big32(word.data()));
}

// What a frame tells that carries notes instead of sound; none in others. A VBRI frame is known,
// but what it tells is not needed.
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
    // The encoder's name, nine bytes, and twelve more stand before the two numbers of twelve bits.
    constexpr int kCutsAt = 21;
    if (bytes - frame.data() + kCutsAt + 3 <= header.bytes) {
        const std::uint32_t cuts = big32(bytes + kCutsAt) >> 8;
        tag.delay = static_cast<int>(cuts >> 12);
        tag.padding = static_cast<int>(cuts & 0xFFF);
    }
    return tag;
}

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
    header.sideAt = kHeaderBytes + ((word >> 16 & 1) != 0 ? 0 : 2);
    header.sideBytes = first ? (mono ? 17 : 32) : (mono ? 9 : 17);
    header.samples = first ? 1152 : 576;
    header.backBits = first ? 9 : 8;
    header.shared = word & 0xFFFE0C00;
    return header;
}

std::optional<Mp3Start> findMp3(const SourceFile& file) {
    const std::optional<std::int64_t> first = searchFrames(file, 0);
    if (!first) return {};
    Mp3Start start{*first, *headerAt(file, *first), {}};
    start.tag = readTag(file, start.byte, start.header);
    if (start.tag) {
        start.byte += start.header.bytes;
        const auto header = headerAt(file, start.byte);
        if (!header) return {};
        start.header = *header;
    }
    return start;
}

Mp3Index::Mp3Index(const SourceFile& file, const Mp3Start& start, const std::stop_token& stop) {
    std::vector<std::uint8_t> window(256 * 1024);
    std::int64_t place = 0;  // byte of the file where the window begins
    std::int64_t held = 0;
    for (std::int64_t at = start.byte; at + kHeaderBytes <= file.size();) {
        if (at < place || at + kHeaderBytes > place + held) {
            checkStop(stop);
            place = at;
            held = static_cast<std::int64_t>(file.readSome(at, window));
            if (held < kHeaderBytes) return;
        }
        const auto header = Mp3Header::read(big32(window.data() + (at - place)));
        if (header && header->shared == start.header.shared) {
            if (header->bytes > file.size() - at) return;  // cut off
            add(at, header->bytes);
            at += header->bytes;
        } else {
            checkStop(stop);
            const auto next = searchFrames(file, at);
            if (!next || ++gaps_ > kMostGaps) return;
            const auto found = headerAt(file, *next);
            changesKind_ = found && found->shared != start.header.shared;
            if (changesKind_) return;
            at = std::max(*next, at + 1);
        }
    }
}

void Mp3Index::add(std::int64_t byte, int size) {
    end_ = byte + size;
    if (frames_ % step_ == 0) {
        if (bytes_.size() == kMostEntries) {
            step_ *= 2;
            for (std::size_t i = 0; i < kMostEntries / 2; ++i)
                bytes_[i] = bytes_[2 * i];
            bytes_.resize(kMostEntries / 2);
        }
        bytes_.push_back(byte);
    }
    ++frames_;
}

Mp3Index::Entry Mp3Index::before(std::int64_t frame) const {
    if (bytes_.empty()) return {};
    const std::int64_t place =
        std::clamp<std::int64_t>(frame / step_, 0, static_cast<std::int64_t>(bytes_.size()) - 1);
    return {place * step_, bytes_[static_cast<std::size_t>(place)]};
}

Mp3LeadIn leadIn(const SourceFile& file, Mp3Index::Entry from) {
    // A frame's bits may begin in frames before it. How far at most, the field's width says.
    Mp3LeadIn lead{from.frame, from.frame, from.byte, {}};
    int reservoir = 0;  // bytes that the frames so far have left for later ones
    for (bool full = false; !full; ++lead.settled) {
        const std::int64_t at = lead.begin + static_cast<std::int64_t>(lead.bytes.size());
        const auto header = headerAt(file, at);
        if (!header || header->bytes <= header->sideAt + header->sideBytes)
            throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
        const int most = (1 << header->backBits) - 1;
        full = reservoir >= most;
        const std::size_t start = lead.bytes.size();
        lead.bytes.resize(start + static_cast<std::size_t>(header->bytes));
        const std::span<std::uint8_t> frame = std::span(lead.bytes).subspan(start);
        file.read(at, frame);
        const auto side = frame.subspan(static_cast<std::size_t>(header->sideAt),
                                        static_cast<std::size_t>(header->sideBytes));
        const int field = side[0] << 8 | side[1];
        if (field >> (16 - header->backBits) > reservoir) {
            // Such a frame without any coefficients is silent, and hands on what there is.
            std::fill(side.begin(), side.end(), std::uint8_t{0});
            const int back = reservoir << (16 - header->backBits);
            side[0] = static_cast<std::uint8_t>(back >> 8);
            side[1] = static_cast<std::uint8_t>(back);
        }
        reservoir = std::min(most, reservoir + header->bytes - header->sideAt - header->sideBytes);
    }
    ++lead.settled;  // one more for the overlap of the frames before
    return lead;
}

}  // namespace tarnwick::sound
