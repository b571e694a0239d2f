#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "sound/source_file.h"

namespace tarnwick::sound {

// Walks the chunks of a RIFF or IFF file: a four-letter name, a size, a body padded to an even
// length. Sizes are believed only as far as the file goes.
class ChunkWalker {
  public:
    static constexpr std::int64_t kHeaderBytes = 8;

    struct Chunk {
        std::array<char, 4> name = {};
        std::int64_t body = 0;      // byte where the body begins
        std::uint32_t claimed = 0;  // the size as written
        std::int64_t size = 0;      // bytes of the body that exist

        bool is(std::string_view text) const { return text == std::string_view(name.data(), 4); }
    };

    ChunkWalker(const SourceFile& file, std::int64_t at, bool bigEndian)
        : file_(file), at_(at), big_(bigEndian) {}

    // The next chunk; none at the end of the file.
    std::optional<Chunk> next() {
        std::array<std::uint8_t, kHeaderBytes> header;
        if (at_ > file_.size() || file_.readSome(at_, header) < header.size()) return {};
        Chunk chunk;
        std::memcpy(chunk.name.data(), header.data(), chunk.name.size());
        chunk.claimed = big_ ? big32(header.data() + 4) : little32(header.data() + 4);
        chunk.body = at_ + kHeaderBytes;
        chunk.size = std::min<std::int64_t>(chunk.claimed, file_.size() - chunk.body);
        at_ = chunk.body + chunk.claimed + chunk.claimed % 2;
        return chunk;
    }

    // Goes on at another byte than the one after the last chunk.
    void moveTo(std::int64_t at) { at_ = at; }

    // Whether whole chunks with printable names fill the file from `at` to its end.
    static bool fillsFile(const SourceFile& file, std::int64_t at, bool bigEndian) {
        ChunkWalker walker(file, at, bigEndian);
        while (const auto chunk = walker.next()) {
            for (const char letter : chunk->name)
                if (letter < ' ' || letter > '~') return false;
            if (chunk->size < static_cast<std::int64_t>(chunk->claimed)) return false;
        }
        return walker.at_ >= file.size();
    }

    static std::uint16_t little16(const std::uint8_t* bytes) {
        return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
    }
    static std::uint32_t little32(const std::uint8_t* bytes) {
        return little16(bytes) | std::uint32_t{little16(bytes + 2)} << 16;
    }
    static std::uint16_t big16(const std::uint8_t* bytes) {
        return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
    }
    static std::uint32_t big32(const std::uint8_t* bytes) {
        return std::uint32_t{big16(bytes)} << 16 | big16(bytes + 2);
    }

  private:
    const SourceFile& file_;
    std::int64_t at_;
    bool big_;
};

}  // namespace tarnwick::sound
