#include <algorithm>
#include <array>
#include <cmath>

#include "sound/reading/chunk_walker.h"
#include "sound/reading/source_headers.h"
#include "sound/samples/byte_order.h"
#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

[[noreturn]] void notASound(const char* what) { throw SoundError(SoundFailure::NotASound, what); }

// Reads the rate from an 80-bit extended number: sign and exponent, then a mantissa with an
// explicit leading one, of which 32 bits are enough. Returns 0 if it is not a sensible rate.
int readRate(const std::uint8_t* bytes) {
    const int exponent = big16(bytes) - 16383;
    if (exponent < 0 || exponent > 19) return 0;  // no rate reaches 2^20 Hz
    return static_cast<int>(std::lround(std::ldexp(big32(bytes + 2), exponent - 31)));
}

Coding integerCoding(int bits, bool little) {
    constexpr std::array kBig = {Coding::Signed8, Coding::Big16, Coding::Big24, Coding::Big32};
    constexpr std::array kLittle = {Coding::Signed8, Coding::Little16, Coding::Little24,
                                    Coding::Little32};
    if (bits < 1 || bits > 32) notASound("a sample size that is not known");
    const auto bytes = static_cast<std::size_t>((bits + 7) / 8);
    return little ? kLittle[bytes - 1] : kBig[bytes - 1];
}

// The coding for the name in an AIFC file.
Coding compressedCoding(std::string_view kind, int bits) {
    if (kind == "NONE" || kind == "twos" || kind == "in24" || kind == "in32")
        return integerCoding(bits, false);
    if (kind == "sowt") return integerCoding(bits, true);
    if (kind == "raw ") return Coding::Unsigned8;
    if (kind == "alaw" || kind == "ALAW") return Coding::ALaw;
    if (kind == "ulaw" || kind == "ULAW") return Coding::MuLaw;
    if (kind == "fl32" || kind == "FL32") return Coding::BigFloat32;
    if (kind == "fl64" || kind == "FL64") return Coding::BigFloat64;
    notASound("a coding that is not known");
}

// The frames of the result are what the chunk claims.
StoredSound readCommon(const SourceFile& file, const ChunkWalker::Chunk& chunk, bool aifc) {
    std::array<std::uint8_t, 22> body = {};
    const std::size_t needed = aifc ? body.size() : 18;
    if (chunk.size < static_cast<std::int64_t>(needed))
        throw SoundError(SoundFailure::Damaged, "the format chunk is cut off");
    file.read(chunk.body, std::span(body).first(needed));

    StoredSound sound;
    sound.format.channels = big16(body.data());
    sound.frames = big32(body.data() + 2);
    const int bits = big16(body.data() + 6);
    sound.format.rate = readRate(body.data() + 8);
    const std::string_view kind(reinterpret_cast<const char*>(body.data() + 18), 4);
    sound.coding = aifc ? compressedCoding(kind, bits) : integerCoding(bits, false);
    sound.format.floating =
        sound.coding == Coding::BigFloat32 || sound.coding == Coding::BigFloat64;
    const bool law = sound.coding == Coding::ALaw || sound.coding == Coding::MuLaw;
    sound.format.bits = sound.format.floating ? 32 : law ? 16 : bytesOf(sound.coding) * 8;
    return sound;
}

// Sets the offset of the samples; returns how many bytes they take.
std::int64_t readSamplePlace(const SourceFile& file, const ChunkWalker::Chunk& chunk,
                             StoredSound& sound) {
    std::array<std::uint8_t, 8> body;
    if (chunk.body + static_cast<std::int64_t>(body.size()) > file.size())
        throw SoundError(SoundFailure::Damaged, "the sample chunk is cut off");
    file.read(chunk.body, body);
    sound.offset = chunk.body + 8 + big32(body.data());
    const bool sized = chunk.claimed > body.size();
    return (sized ? chunk.body + chunk.size : file.size()) - sound.offset;
}

}  // namespace

std::optional<FoundSound> readAiffHeader(const SourceFile& file) {
    std::array<std::uint8_t, 12> magic;
    if (file.readSome(0, magic) < magic.size()) return {};
    const std::string_view text(reinterpret_cast<const char*>(magic.data()), magic.size());
    const bool aifc = text.ends_with("AIFC");
    if (!text.starts_with("FORM") || (!aifc && !text.ends_with("AIFF"))) return {};

    ChunkWalker walker(file, static_cast<std::int64_t>(magic.size()), true);
    std::optional<ChunkWalker::Chunk> common;
    std::optional<ChunkWalker::Chunk> samples;
    while (!common || !samples) {
        const auto chunk = walker.next();
        if (!chunk) break;
        if (chunk->is("COMM") && !common) common = chunk;
        if (chunk->is("SSND") && !samples) samples = chunk;
    }
    if (!common || !samples) throw SoundError(SoundFailure::Damaged, "the header is cut off");

    StoredSound sound = readCommon(file, *common, aifc);
    const std::int64_t claimed = samples->size < samples->claimed ? sound.frames : 0;
    const std::int64_t bytes = readSamplePlace(file, *samples, sound);
    if (sound.format.channels > 0 && bytes > 0) {
        const std::int64_t held = bytes / (sound.format.channels * bytesOf(sound.coding));
        // The chunk may hold a byte of padding after the frames. A count of 0 means that the writer
        // never filled it in.
        sound.frames = sound.frames > 0 ? std::min(sound.frames, held) : held;
    } else {
        sound.frames = 0;
    }
    checkUsable(sound);
    return FoundSound{.sound = sound, .claimedFrames = claimed};
}

}  // namespace tarnwick::sound
