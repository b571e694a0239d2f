#include <algorithm>
#include <array>

#include "sound/chunk_walker.h"
#include "sound/sample_coding.h"
#include "sound/sound_error.h"
#include "sound/source_headers.h"

namespace tarnwick::sound {

namespace {

constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;
constexpr int kMaximumRate = 768000;

enum FormatTag : std::uint16_t { kPcm = 1, kFloat = 3, kExtensible = 0xFFFE };

// The tail that all sub-formats made from a format tag share.
constexpr std::array<std::uint8_t, 14> kSubFormatTail = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                         0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

[[noreturn]] void notASound(const char* what) { throw SoundError(SoundFailure::NotASound, what); }

// The bytes that one sample takes. The block size decides (24 bits may lie in 4 bytes), unless it
// is nonsense.
int containerBytes(int bits, int channels, int blockBytes) {
    const int needed = (bits + 7) / 8;
    if (channels > 0 && blockBytes % channels == 0) {
        const int each = blockBytes / channels;
        if (each >= needed && each <= 4) return each;
    }
    return needed;
}

void setCoding(StoredSound& sound, int tag, int bits, int blockBytes) {
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

StoredSound readFormat(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    std::array<std::uint8_t, 40> body = {};
    const auto size = std::min<std::size_t>(static_cast<std::size_t>(chunk.size), body.size());
    file.read(chunk.body, std::span(body).first(size));
    if (size < 16) throw SoundError(SoundFailure::Damaged, "the format chunk is cut off");

    StoredSound sound;
    int tag = ChunkWalker::little16(body.data());
    sound.format.channels = ChunkWalker::little16(body.data() + 2);
    const std::uint32_t rate = ChunkWalker::little32(body.data() + 4);
    sound.format.rate = rate <= kMaximumRate ? static_cast<int>(rate) : 0;
    const int blockBytes = ChunkWalker::little16(body.data() + 12);
    const int bits = ChunkWalker::little16(body.data() + 14);
    if (tag == kExtensible) {
        if (size < body.size() ||
            !std::equal(kSubFormatTail.begin(), kSubFormatTail.end(), body.begin() + 26))
            notASound("a coding that is not known");
        tag = ChunkWalker::little16(body.data() + 24);
    }
    setCoding(sound, tag, bits, blockBytes);
    return sound;
}

// The bytes of sound behind a data chunk's header.
std::int64_t dataBytes(const SourceFile& file, const ChunkWalker::Chunk& chunk,
                       std::optional<std::int64_t> longSize) {
    const std::int64_t rest = file.size() - chunk.body;
    if (chunk.claimed == kUnknownSize) {
        const std::int64_t size = longSize.value_or(rest);
        return size > 0 ? std::min(size, rest) : rest;
    }
    // A writer that never came back to fill in its size leaves 0; but 0 may also be the truth.
    if (chunk.claimed == 0 && !ChunkWalker::fillsFile(file, chunk.body, false)) return rest;
    return chunk.size;
}

// The size of the data as an RF64 file states it; none when it does not.
std::optional<std::int64_t> readLongSize(const SourceFile& file, const ChunkWalker::Chunk& chunk) {
    std::array<std::uint8_t, 16> body;
    if (chunk.size < static_cast<std::int64_t>(body.size())) return {};
    file.read(chunk.body, body);
    const std::uint64_t size = ChunkWalker::little32(body.data() + 8) |
                               std::uint64_t{ChunkWalker::little32(body.data() + 12)} << 32;
    return static_cast<std::int64_t>(std::min<std::uint64_t>(size, INT64_MAX));
}

}  // namespace

void checkUsable(const StoredSound& sound) {
    if (sound.format.rate < 1 || sound.format.rate > kMaximumRate)
        notASound("an impossible sampling rate");
    if (sound.format.channels < 1 || sound.format.channels > 2) notASound("not mono or stereo");
    if (sound.frames < 1) notASound("no sound in the file");
}

std::optional<StoredSound> readWaveHeader(const SourceFile& file) {
    std::array<std::uint8_t, 12> magic;
    if (file.readSome(0, magic) < magic.size()) return {};
    const std::string_view text(reinterpret_cast<const char*>(magic.data()), magic.size());
    if ((!text.starts_with("RIFF") && !text.starts_with("RF64")) || !text.ends_with("WAVE"))
        return {};

    ChunkWalker walker(file, static_cast<std::int64_t>(magic.size()), false);
    std::optional<StoredSound> sound;
    std::optional<std::int64_t> longSize;
    std::optional<ChunkWalker::Chunk> data;
    std::int64_t bytes = 0;
    while (!sound || !data) {
        const auto chunk = walker.next();
        if (!chunk) break;
        if (chunk->is("ds64")) longSize = readLongSize(file, *chunk);
        if (chunk->is("fmt ") && !sound) sound = readFormat(file, *chunk);
        if (chunk->is("data") && !data) {
            data = chunk;
            bytes = dataBytes(file, *chunk, longSize);
            walker.moveTo(chunk->body + bytes + bytes % 2);
        }
    }
    if (!sound || !data) throw SoundError(SoundFailure::Damaged, "the header is cut off");
    sound->offset = data->body;
    if (sound->format.channels > 0)
        sound->frames = bytes / (sound->format.channels * bytesOf(sound->coding));
    checkUsable(*sound);
    return sound;
}

}  // namespace tarnwick::sound
