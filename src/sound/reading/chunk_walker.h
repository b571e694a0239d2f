#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

#include "sound/reading/source_file.h"
#include "sound/samples/byte_order.h"

namespace tarnwick::sound {

// Walks the chunks of a RIFF or IFF file: a four-letter name, a size, a body padded to an even
// length. Sizes are limited to the end of the file. The padding is assumed to be missing if a
// well-known name stands in its place.
class ChunkWalker {
  public:
    static constexpr std::int64_t kHeaderBytes = 8;
    // Far more than any recorder writes, yet few enough that a crafted file does not take long.
    static constexpr int kMostChunks = 20'000;

    struct Chunk {
        std::array<char, 4> name = {};
        std::int64_t body = {};      // byte where the body begins
        std::uint32_t claimed = {};  // the size as written
        std::int64_t size = {};      // bytes of the body that exist

        bool is(std::string_view text) const { return text == std::string_view(name.data(), 4); }
    };

    ChunkWalker(const SourceFile& file, std::int64_t at, bool bigEndian)
        : file_(file), at_(at), big_(bigEndian) {}

    // The next chunk; none at the end of the file.
    std::optional<Chunk> next() {
        std::array<std::uint8_t, kHeaderBytes + 1> bytes = {};
        if (at_ > file_.size() || ++walked_ > kMostChunks) return {};
        const std::size_t early = afterOdd_ ? 1 : 0;  // also read the byte of padding
        const std::size_t got = file_.readSome(at_ - static_cast<std::int64_t>(early),
                                               std::span(bytes).first(kHeaderBytes + early));
        std::span<const std::uint8_t> header(bytes.data() + early, kHeaderBytes);
        if (early > 0 && got >= kHeaderBytes && isLandmark(bytes.data())) {
            header = std::span(bytes).first(kHeaderBytes);
            --at_;
        } else if (got < kHeaderBytes + early) {
            return {};
        }
        Chunk chunk;
        std::memcpy(chunk.name.data(), header.data(), chunk.name.size());
        chunk.claimed = big_ ? big32(header.data() + 4) : little32(header.data() + 4);
        chunk.body = at_ + kHeaderBytes;
        chunk.size = std::min<std::int64_t>(chunk.claimed, file_.size() - chunk.body);
        afterOdd_ = chunk.claimed % 2 != 0;
        at_ = chunk.body + chunk.claimed + chunk.claimed % 2;
        return chunk;
    }

    // Whether complete chunks with printable names fill the file from `at` to its end.
    static bool fillsFile(const SourceFile& file, std::int64_t at, bool bigEndian) {
        ChunkWalker walker(file, at, bigEndian);
        while (const auto chunk = walker.next()) {
            for (const char letter : chunk->name)
                if (letter < ' ' || letter > '~') return false;
            if (chunk->size < static_cast<std::int64_t>(chunk->claimed)) return false;
        }
        return walker.at_ >= file.size();
    }

  private:
    // Whether this is the name of a chunk that every reader needs, or of one that often precedes
    // those.
    static bool isLandmark(const std::uint8_t* name) {
        const std::string_view text(reinterpret_cast<const char*>(name), 4);
        for (const char* known : {"fmt ", "data", "fact", "LIST", "COMM", "SSND"})
            if (text == known) return true;
        return false;
    }

    const SourceFile& file_;
    std::int64_t at_;
    bool big_;
    bool afterOdd_ = false;
    int walked_ = 0;
};

}  // namespace tarnwick::sound
