#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <tuple>

#include "sound/reading/mp3_index.h"
#include "sound/reading/source.h"
#include "support/test_sounds.h"

// How MP3 frames are found and counted, on frames without any sound.

namespace tarnwick::sound {
namespace {

constexpr std::uint32_t kSync = 0xFFE00000;

TEST(Mp3Header, TellsTheSizeOfEveryKindOfFrame) {
    for (std::uint32_t fields = 0; fields < 1 << 15; ++fields) {
        const std::uint32_t index = fields & 15;  // of the bit rate
        const std::uint32_t rate = fields >> 4 & 3;
        const std::uint32_t layer = fields >> 6 & 3;
        const std::uint32_t version = fields >> 8 & 3;
        const std::uint32_t unchecked = fields >> 10 & 1, padding = fields >> 11 & 1;
        const std::uint32_t mode = fields >> 12 & 3, emphasis = fields >> 14 << 1;
        const std::uint32_t kind = kSync | version << 19 | layer << 17 | rate << 10;
        const std::uint32_t word =
            kind | unchecked << 16 | index << 12 | padding << 9 | mode << 6 | emphasis;
        const auto header = Mp3Header::read(word);
        ASSERT_EQ(header.has_value(), version != 1 && layer == 1 && index > 0 && index < 15 &&
                                          rate < 3 && emphasis == 0)
            << std::hex << word;
        if (!header) continue;
        // Bit rates double in four steps, for MPEG 2 in eight below 64 kbit/s.
        const bool first = version == 3;
        const std::uint32_t octave = (index - 1) / 4, step = (index - 1) % 4;
        const std::uint32_t low = index > 8 ? 16 * (index - 4) : 8 * index;
        const auto bits = static_cast<int>(first ? (4 + step) << octave << 3 : low) * 1000;
        const int whole[] = {44100, 48000, 32000};
        const int hertz = whole[rate] / (first ? 1 : version == 2 ? 2 : 4);
        const int channels = mode == 3 ? 1 : 2;
        const int eighth = first ? 144 : 72;
        ASSERT_EQ(header->bytes, eighth * bits / hertz + static_cast<int>(padding));
        ASSERT_EQ(std::tuple(header->samples, header->rate, header->channels),
                  std::tuple(8 * eighth, hertz, channels));
        ASSERT_EQ(std::tuple(header->sideAt, header->sideBytes, header->backBits),
                  std::tuple(unchecked ? 4 : 6, first ? 2 + 15 * channels : 1 + 8 * channels,
                             first ? 9 : 8));
        ASSERT_EQ(header->shared, kind);
        ASSERT_GT(header->bytes, header->sideAt + header->sideBytes);
    }
    EXPECT_TRUE(Mp3Header::read(0xFFFB9003));
    EXPECT_FALSE(Mp3Header::read(0xFFDB9000));
}

// A frame whose header is `word`.
std::string frame(std::uint32_t word = 0xFFFB9000, const std::string& body = "") {
    std::string bytes = number(word, 4, true) + body;
    bytes.resize(static_cast<std::size_t>(Mp3Header::read(word)->bytes));
    return bytes;
}

std::string times(int count, const std::string& text) {
    std::string all;
    for (; count > 0; --count)
        all += text;
    return all;
}

// A tag before the sound; the bytes of its size have seven bits.
std::string id3(int size, bool footer = false) {
    std::string tag("ID3\4\0\0", 6);
    tag[5] = footer ? 0x10 : 0;
    for (int shift = 21; shift >= 0; shift -= 7)
        tag += static_cast<char>((size >> shift & 0x7F) | 0x80);
    return tag + std::string(static_cast<std::size_t>(size + (footer ? 10 : 0)), '\0');
}

class Mp3Frames : public testing::Test {
  protected:
    std::shared_ptr<const SourceFile> file(const std::string& bytes) {
        std::ofstream(folder_.path() / "frames", std::ios::binary) << bytes;
        return SourceFile::open(folder_.path() / "frames");
    }

    TempFolder folder_;
};

TEST_F(Mp3Frames, AreFoundWhereEnoughFollowEachOther) {
    const std::string two = times(2, frame());
    const std::string four = two + two;
    const std::string other = frame(0xFFFB9400);  // of another rate
    const std::tuple<const char*, std::string, std::int64_t> cases[] = {
        {"four", four + "junk", 0},
        {"three", two + frame() + "junk", -1},
        {"one at the end", frame(), -1},
        {"two at the end", two, 0},
        {"two and less than a header", two + "abc", 0},
        {"two and as much as a header", two + "abcd", -1},
        {"two and a tag", two + "TAGx", 0},
        {"two and another tag", two + "APETAGEX", 0},
        {"two and nearly a tag", two + "APETAGEx", -1},
        {"two and padding", two + std::string(4, '\0'), 0},
        {"kinds in turn", times(3, frame() + other), -1},
        {"another kind first", frame() + times(4, other), 417},
        {"much junk", std::string(65'532, 'x') + four, 65'532},
        {"too much junk", std::string(65'533, 'x') + four, -1},
        {"tag", id3(0x204081) + four, 10 + 0x204081},
        {"tag with a footer", id3(70'000, true) + four, 70'020},
        {"many tags", times(99, id3(0)) + id3(70'000) + four, 71'000},
        {"too many tags", times(100, id3(0)) + id3(70'000) + four, -1},
        {"part of a tag", "ID3\4", -1},
        {"nothing after the tag", id3(5), -1}};
    for (const auto& [name, bytes, byte] : cases)
        EXPECT_EQ(searchMp3Frames(*file(bytes), 0).value_or(-1), byte) << name;
}

TEST_F(Mp3Frames, OfInformationAreSkipped) {
    const auto found = [&](std::uint32_t word, const std::string& body) {
        const auto start = findMp3(*file(frame(word, body) + times(3, frame(word))));
        const Mp3Tag tag = start->tag.value_or(Mp3Tag{-1, -1, -1});
        return std::array{start->byte, tag.frames, std::int64_t{tag.delay},
                          std::int64_t{tag.padding}};
    };
    using Found = std::array<std::int64_t, 4>;
    for (std::uint64_t fields = 0; fields < 16; ++fields)
        for (const auto& [word, side, size] : {std::tuple(0xFFFB9000u, 32u, 417),
                                               {0xFFFB90C0u, 17u, 417},
                                               {0xFFFB1000u, 32u, 104}}) {
            std::string body = std::string(side, '\0') + (fields % 3 ? "Info" : "Xing");
            body += number(fields, 4, true) + (fields & 1 ? number(0x10203, 4, true) : "");
            body += std::string((fields >> 1 & 1) * 4 + (fields >> 2 & 1) * 100, 'x');
            body += std::string((fields >> 3 & 1) * 4 + 21, 'x') + number(0x123ABC, 3, true);
            const bool cuts = 4 + static_cast<int>(body.size()) <= size;
            EXPECT_EQ(found(word, body),
                      (Found{size, fields & 1 ? 0x10203 : 0, cuts ? 0x123 : 0, cuts ? 0xABC : 0}))
                << fields << " in " << size;
        }
    EXPECT_EQ(found(0xFFFB90C0, std::string(32, '\0') + "VBRI"), (Found{417, 0, 0, 0}));
    EXPECT_EQ(found(0xFFFB9000, std::string(32, '\0') + "Xinx"), (Found{0, -1, -1, -1}));
}

TEST_F(Mp3Frames, LoseWhatTheTagCutsOff) {
    const std::tuple<int, int, int, int> cases[] = {
        // frames in the tag, delay, padding, samples
        {3, 0, 0, 3456},      {3, 0, 1, 2927},      {3, 1, 0, 2926},      {3, 100, 1000, 2356},
        {0, 100, 1000, 2356}, {2, 100, 1000, 2827}, {4, 100, 1000, 2827}, {1, 100, 50, 2827},
        {3, 2000, 1455, 1},   {3, 2000, 1456, -1}};
    for (const auto& [frames, delay, padding, samples] : cases) {
        const std::string body = std::string(32, '\0') + "Info" + number(1, 4, true) +
                                 number(frames, 4, true) + std::string(21, 'x') +
                                 number(delay << 12 | padding, 3, true);
        file(frame(0xFFFB9000, body) + times(3, frame()));
        std::int64_t held = -1;
        const auto failure = failureOf([&] {
            const auto source = Source::open(folder_.path() / "frames");
            held = source->frames();
            EXPECT_EQ(source->format(), (AudioFormat{44100, 2, 24, false}));
        });
        EXPECT_EQ(held, samples) << frames << " " << delay << " " << padding;
        EXPECT_EQ(failure.value_or(SoundFailure::NotASound), SoundFailure::NotASound);
    }
}

TEST_F(Mp3Frames, TellTheirLengthBeforeTheyAreDecoded) {
    const auto tagged = [](int frames) {
        return frame(0xFFFB9000,
                     std::string(32, '\0') + "Info" + number(1, 4, true) + number(frames, 4, true));
    };
    const std::string hundred = times(100, frame());  // 1152 samples each
    for (const auto& [bytes, ms] : {std::pair(hundred, 2612),
                                    {id3(5000) + hundred + "TAG", 2612},
                                    {tagged(0) + hundred, 2612},
                                    {tagged(40) + hundred, 1044}}) {
        file(bytes);
        const Source::Lengths lengths = Source::probe(folder_.path() / "frames");
        EXPECT_EQ(lengths.held, ms);
        EXPECT_EQ(lengths.claimed, 0);
    }
}

TEST_F(Mp3Frames, AreCountedOverGapsUpToAnotherKind) {
    const std::string four = times(4, frame());
    const std::string other = frame(0xFFFB9400);
    // Frames found and bytes between them, whether the frames of a kind are contiguous and end.
    const std::tuple<const char*, std::string, int, int, bool, bool> cases[] = {
        {"cut off", four + frame().substr(0, 416), 4, 0, true, false},
        {"hardly begun", four + frame().substr(0, 3), 4, 0, true, false},
        {"many", times(250, four), 1000, 0, true, false},
        {"gap", four + std::string(100, 'x') + four, 8, 100, false, false},
        {"most gaps", times(101, four + "x"), 404, 100, false, false},
        {"too many gaps", times(102, four + "x"), 404, 100, false, false},
        {"another kind", four + times(4, other) + four, 4, 0, false, true}};
    for (const auto& [name, bytes, frames, gap, unbroken, changesKind] : cases) {
        const auto held = file(bytes);
        const Mp3Index index(*held, *findMp3(*held), {});
        EXPECT_EQ(index.frames(), frames) << name;
        EXPECT_EQ(index.end(), frames * 417 + gap) << name;
        EXPECT_EQ(index.unbroken(), unbroken) << name;
        EXPECT_EQ(index.changesKind(), changesKind) << name;
    }
}

TEST_F(Mp3Frames, AreListedMoreCoarselyInAVeryLongFile) {
    constexpr std::int64_t kSize = 24;
    const std::string smallest = frame(kSync | 2 << 19 | 1 << 17 | 1 << 16 | 1 << 12 | 1 << 10);
    for (const auto& [grid, frames] : {std::pair(8, 100), {16, (1 << 20) + 20}}) {
        const auto held = file(times(frames, smallest));
        const Mp3Index index(*held, *findMp3(*held), {});
        ASSERT_EQ(index.end(), frames * kSize);
        for (const std::int64_t wanted : {0, 7, 8, 15, 16, 47, 65, frames - 1, frames + 99}) {
            const auto [frame, byte] = index.before(wanted);
            EXPECT_EQ(frame, std::min<std::int64_t>(wanted, frames - 1) / grid * grid);
            EXPECT_EQ(byte, frame * kSize);
        }
    }
}

}  // namespace
}  // namespace tarnwick::sound
