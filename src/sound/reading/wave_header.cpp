#include <algorithm>
#include <array>
#include <vector>

#include "sound/reading/chunk_walker.h"
#include "sound/reading/source_headers.h"
#include "sound/samples/byte_order.h"
#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;
constexpr std::uint32_t kFirstPlaceholder = 0x7FFF0000;  // written while the size is unknown
constexpr int kMaximumRate = 768000;

enum FormatTag : std::uint16_t {
    kPcm = 1,
    kMicrosoftAdpcm = 2,
    kFloat = 3,
    kALaw = 6,
    kMuLaw = 7,
    kImaAdpcm = 0x11,
    kGsm610 = 0x31,
    kExtensible = 0xFFFE
};

// The last bytes of every sub-format GUID that is derived from a format tag.
constexpr std::array<std::uint8_t, 14> kSubFormatTail = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                         0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

[[noreturn]] void notASound(const char* what) { throw SoundError(SoundFailure::NotASound, what); }

// The bytes that one sample takes, according to the block size (24 bits may be stored in 4 bytes)
// unless that is implausible.
int containerBytes(int bits, int channels, int blockBytes) {
    const int needed = (bits + 7) / 8;
    if (channels > 0 && blockBytes % channels == 0) {
        const int each = blockBytes / channels;
        if (each >= needed && each <= 4) return each;
    }
    return needed;
}

void setCoding(StoredSound& sound, int tag, int bits, int blockBytes) {
    if (tag == kALaw || tag == kMuLaw) {
        sound.format.bits = 16;
        sound.coding = tag == kALaw ? Coding::ALaw : Coding::MuLaw;
        return;
    }
    if (tag == kFloat && (bits == 32 || bits == 64)) {
        sound.format.bits = 32;
        sound.format.floating = true;
        sound.coding = bits == 32 ? Coding::LittleFloat32 : Coding::LittleFloat64;
        return;
    }
    if (tag != kPcm) notASound("a coding that is not known");
    if (bits < 1 || bits > 32) notASound("a sample size that is not known");
    const int bytes = containerBytes(bits, sound.format.channels, blockBytes);
    constexpr std::array kCodings = {Coding::Unsigned8, Coding::Little16, Coding::Little24,
                                     Coding::Little32};
    sound.format.bits = bytes * 8;
    sound.coding = kCodings[static_cast<std::size_t>(bytes - 1)];
}

// The weights that a Microsoft ADPCM file lists; the standard ones if it lists none.
std::vector<AdpcmWeights> readWeights(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    constexpr std::size_t kMost = 256;  // a block selects its pair by one byte
    std::array<std::uint8_t, 22 + 4 * kMost> body = {};
    const auto size = std::min<std::size_t>(static_cast<std::size_t>(chunk.size), body.size());
    file.read(chunk.body, std::span(body).first(size));
    const std::size_t listed = little16(body.data() + 20);
    std::vector<AdpcmWeights> weights;
    for (std::size_t at = 22; at + 4 <= size && weights.size() < listed; at += 4) {
        const auto weight = [&](std::size_t place) -> int {
            return static_cast<std::int16_t>(little16(body.data() + place));
        };
        weights.push_back({weight(at), weight(at + 2)});
    }
    if (weights.empty()) weights.assign(kStandardWeights.begin(), kStandardWeights.end());
    return weights;
}

// The block layout for a coding that stores samples in blocks; none for other codings.
std::optional<BlockLayout> blockLayout(const SourceFile& file, const ChunkWalker::Chunk& chunk,
                                       int tag, int bits, int blockBytes) {
    BlockLayout layout{.blockBytes = blockBytes};
    switch (tag) {
        case kImaAdpcm:
            layout.codec = BlockCodec::ImaAdpcm;
            break;
        case kMicrosoftAdpcm:
            layout.codec = BlockCodec::MicrosoftAdpcm;
            layout.weights = readWeights(file, chunk);
            break;
        case kGsm610:
            layout.codec = BlockCodec::Gsm610;
            return layout;
        default:
            return {};
    }
    if (bits != 4) notASound("a sample size that is not known");
    return layout;
}

FoundSound readFormat(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    std::array<std::uint8_t, 40> body = {};
    const auto size = std::min<std::size_t>(static_cast<std::size_t>(chunk.size), body.size());
    file.read(chunk.body, std::span(body).first(size));
    if (size < 16) throw SoundError(SoundFailure::Damaged, "the format chunk is cut off");

    StoredSound sound;
    int tag = little16(body.data());
    sound.format.channels = little16(body.data() + 2);
    const std::uint32_t rate = little32(body.data() + 4);
    sound.format.rate = rate <= kMaximumRate ? static_cast<int>(rate) : 0;
    const int blockBytes = little16(body.data() + 12);
    const int bits = little16(body.data() + 14);
    if (tag == kExtensible) {
        if (size < body.size() ||
            !std::equal(kSubFormatTail.begin(), kSubFormatTail.end(), body.begin() + 26))
            notASound("a coding that is not known");
        tag = little16(body.data() + 24);
    }
    std::optional<BlockLayout> blocks = blockLayout(file, chunk, tag, bits, blockBytes);
    if (blocks) {
        if (!isUsable(*blocks, sound.format.channels)) notASound("blocks of an impossible size");
        sound.format.bits = 16;
    } else {
        setCoding(sound, tag, bits, blockBytes);
    }
    return {sound, std::move(blocks)};
}

// The number of bytes of sound after a data chunk's header.
std::int64_t dataBytes(const SourceFile& file, const ChunkWalker::Chunk& chunk,
                       std::optional<std::int64_t> longSize) {
    const std::int64_t rest = file.size() - chunk.body;
    if (chunk.claimed == kUnknownSize) {
        const std::int64_t size = longSize.value_or(rest);
        return size > 0 ? std::min(size, rest) : rest;
    }
    // A size of 0 may be correct, or it was never filled in because the writer was interrupted.
    if (chunk.claimed == 0 && !ChunkWalker::fillsFile(file, chunk.body, false)) return rest;
    // If the sound is too long for a 32-bit size, writers store some other number. The size is
    // correct only if chunks follow.
    if (rest > INT32_MAX &&
        !ChunkWalker::fillsFile(file, chunk.body + chunk.size + chunk.size % 2, false))
        return rest;
    return chunk.size;
}

// The frames in `bytes` of sound. For blocks, the count in the fact chunk tells how much of the
// last block is sound. It is used only if it ends in that block, as some writers count samples,
// blocks or half of them instead.
std::int64_t countFrames(const FoundSound& found, std::int64_t bytes,
                         std::optional<std::uint32_t> counted) {
    const int channels = found.sound.format.channels;
    // A sound without channels is refused later.
    if (!found.blocks) return bytes / (std::max(channels, 1) * bytesOf(found.sound.coding));
    const std::int64_t held = found.blocks->framesIn(bytes, channels);
    const std::int64_t inBlock = found.blocks->framesIn(found.blocks->blockBytes, channels);
    const bool plausible = counted && *counted <= held && *counted > held - inBlock;
    return plausible ? std::int64_t{*counted} : held;
}

// The size of the data as an RF64 file states it; none if it does not.
std::optional<std::int64_t> readLongSize(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    std::array<std::uint8_t, 16> body;
    if (chunk.size < static_cast<std::int64_t>(body.size())) return {};
    file.read(chunk.body, body);
    const std::uint64_t high = little32(body.data() + 12);
    const std::uint64_t size = high << 32 | little32(body.data() + 8);
    return static_cast<std::int64_t>(std::min<std::uint64_t>(size, INT64_MAX));
}

// The number of frames as the fact chunk states it; none if it does not.
std::optional<std::uint32_t> readCount(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    std::array<std::uint8_t, 4> body;
    if (chunk.size < static_cast<std::int64_t>(body.size())) return {};
    file.read(chunk.body, body);
    return little32(body.data());
}

}  // namespace

void checkUsable(const StoredSound& sound) {
    if (sound.format.rate < 1 || sound.format.rate > kMaximumRate)
        notASound("an impossible sampling rate");
    if (sound.format.channels < 1 || sound.format.channels > 2) notASound("not mono or stereo");
    if (sound.frames < 1) notASound("no sound in the file");
}

std::optional<FoundSound> readWaveHeader(const SourceFile& file) {
    std::array<std::uint8_t, 12> magic;
    if (file.readSome(0, magic) < magic.size()) return {};
    const std::string_view text(reinterpret_cast<const char*>(magic.data()), magic.size());
    const std::string_view kind = text.substr(0, 4);
    if ((kind != "RIFF" && kind != "RF64" && kind != "BW64") || !text.ends_with("WAVE")) return {};

    ChunkWalker walker(file, static_cast<std::int64_t>(magic.size()), false);
    std::optional<FoundSound> found;
    std::optional<std::int64_t> longSize;
    std::optional<std::uint32_t> counted;
    while (const auto chunk = walker.next()) {
        if (chunk->is("ds64")) longSize = readLongSize(file, *chunk);
        if (chunk->is("fmt ") && !found) found = readFormat(file, *chunk);
        if (chunk->is("fact")) counted = readCount(file, *chunk);
        if (!chunk->is("data")) continue;
        if (!found) break;
        const std::int64_t bytes = dataBytes(file, *chunk, longSize);
        found->sound.offset = chunk->body;
        if (found->blocks) found->blocks->bytes = bytes;
        found->sound.frames = countFrames(*found, bytes, counted);
        if (chunk->claimed < kFirstPlaceholder && chunk->size < chunk->claimed)
            found->claimedFrames = countFrames(*found, chunk->claimed, {});
        checkUsable(found->sound);
        return found;
    }
    throw SoundError(SoundFailure::Damaged, "the header is cut off");
}

}  // namespace tarnwick::sound
