#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <tuple>
#include <utility>

#include "sound/reading/mp3_decoder.h"
#include "sound/reading/mp3_stream.h"
#include "sound/reading/peaks_builder.h"
#include "sound/reading/source.h"
#include "sound/reading/source_headers.h"
#include "support/by_sndfile.h"
#include "support/test_sounds.h"

// Compressed files, made by other programs and then modified, compared with other decoders.

namespace tarnwick::sound {
namespace {

using Bytes = std::string;

class Decoders : public testing::Test {
  protected:
    std::filesystem::path write(const Bytes& bytes) const {
        std::ofstream(path("sound"), std::ios::binary) << bytes;
        return path("sound");
    }
    std::filesystem::path path(const char* name) const { return folder_.path() / name; }

    void run(const std::string& command) const {
        const std::string whole = "cd '" + folder_.path().string() + "' && " + command;
        ASSERT_EQ(std::system(whole.c_str()), 0) << command;
    }

    // Runs a command that encodes "noise.wav" into "made"; returns the content of "made".
    Bytes made(const std::string& command) const {
        run(command);
        return contentOf(path("made"));
    }
    void makeNoise(int rate, int channels, double seconds) const {
        run("ffmpeg -v error -nostdin -y -f lavfi -i anoisesrc=c=pink:a=1:seed=5:r=" +
            std::to_string(rate) + ":d=" + std::to_string(seconds) +
            " -af aeval='val(0)*2|val(0)*t':c=stereo -ac " + std::to_string(channels) +
            " noise.wav");
    }

    std::vector<double> open(const Bytes& bytes) const {
        return samplesOf(*Source::open(write(bytes)));
    }

    TempFolder folder_;
};

// Writes another count into the fact chunk, or renames the chunk to hide it from the reader.
Bytes counting(Bytes file, std::optional<std::uint32_t> frames) {
    const std::size_t at = file.find("fact");
    file.replace(at, 4, frames ? "fact" : "junk");
    return file.replace(at + 8, 4, number(frames.value_or(0), 4));
}

TEST_F(Decoders, BlocksAreCountedCorrectlyAndMatchAnotherDecoder) {
    constexpr std::int64_t kOneMore = 1;
    struct Case {
        const char* codec;
        int channels;
        std::uint32_t block;    // frames in a block
        std::uint32_t seconds;  // long files are decoded on two threads
    };
    for (const auto& [codec, channels, block, seconds] :
         {Case{"adpcm_ima_wav", 1, 2041, 140}, Case{"adpcm_ima_wav", 2, 1017, 3},
          Case{"adpcm_ms", 1, 2036, 3}, Case{"adpcm_ms", 2, 1012, 140},
          Case{"libgsm_ms", 1, 320, 3}}) {
        SCOPED_TRACE(codec);
        makeNoise(8000, channels, seconds + 0.1);
        const Bytes file = made(std::string("ffmpeg -v error -nostdin -y -i noise.wav -c:a ") +
                                codec + " -bitexact -f wav made");
        SF_INFO info;
        const std::vector<double> all = bySndfile(path("made"), info);
        const auto held = static_cast<std::uint32_t>(open(counting(file, std::nullopt)).size()) /
                          static_cast<std::uint32_t>(channels);
        ASSERT_GE(held, seconds * 8000 + 800);
        ASSERT_LT(held, seconds * 8000 + 800 + block);
        const std::pair<std::optional<std::uint32_t>, std::uint32_t> counts[] = {
            {held - 100, held - 100},  // the true end, in the last block
            {std::nullopt, held},     {0, held},
            {held / 2, held},  // half of the true count, as some writers store it
            {held + 1, held},         {held - block, held}};
        for (const auto& [counted, expected] : counts) {
            const std::vector<double> values = open(counting(file, counted));
            ASSERT_EQ(values.size(), expected * static_cast<std::size_t>(channels));
            EXPECT_TRUE(std::equal(values.begin(), values.end(), all.begin()));
        }
        const auto opened = SourceFile::open(path("made"));
        const auto found = readWaveHeader(*opened);
        for (const std::int64_t frames : {kWorthSplitting - 1, kWorthSplitting, held + kOneMore}) {
            StoredSound sound = found->sound;
            sound.frames = std::min(frames, held + kOneMore);
            const DecodedSound decoded = decodeBlocks(*opened, sound, *found->blocks, {});
            EXPECT_EQ(decoded.joined, sound.frames >= kWorthSplitting);
            EXPECT_EQ(decoded.sound.frames, std::min<std::int64_t>(frames, held));
        }
        const std::vector<double> shorter = open(file.substr(0, file.size() - 40));
        EXPECT_LT(shorter.size(), all.size());
        EXPECT_GT(shorter.size(), (held - 2 * block) * static_cast<std::size_t>(channels));
        EXPECT_TRUE(std::equal(shorter.begin(), shorter.end(), all.begin()));
    }
}

TEST_F(Decoders, Mp3HasTheLengthOfItsSoundAndMatchesAnotherDecoder) {
    makeNoise(44100, 2, 3.00007);  // an odd number of frames
    const auto lame = [&](const std::string& options) {
        return made("lame --quiet " + options + " noise.wav made");
    };
    const Bytes constant = lame("-m j -b 128");
    const Bytes variable = lame("-V 3");
    const Bytes bare = lame("-t -b 128");
    Bytes longer;
    for (int i = 0; i < 10; ++i)
        longer += bare;
    constexpr std::int64_t kSound = 132'303;
    constexpr std::int64_t kBare = 116 * 1152;  // with the encoder's delay and padding
    struct Case {
        const char* name;
        Bytes file;
        std::int64_t frames;
        bool compares = true;  // with ffmpeg, which cannot handle some of these
    };
    const Case cases[] = {
        {"constant rate", constant, kSound},
        {"variable rate", variable, kSound},
        {"with checksums", lame("-p -b 192"), kSound},
        {"mono", lame("-m m -b 64"), kSound},
        {"8 kHz", lame("--resample 8 -b 32"), 24000},
        {"22.05 kHz", lame("--resample 22.05 -V 5"), 66'152},
        {"long enough for two threads", longer, 10 * kBare},
        {"last frame cut off", bare.substr(0, bare.size() - 9), kBare - 1152, false},
        {"half", constant.substr(0, constant.size() / 2), 57 * 1152 - 1105, false},
        {"joined", constant + variable, 2 * 116 * 1152 + 1152 - 1105, false},
        {"joined with junk between", bare + Bytes(60'000, 'x') + bare, 2 * kBare, false},
        {"joined of mono and stereo", lame("-t -m m -b 64") + bare, 2 * kBare, false}};
    EXPECT_EQ(failureOf([&] { open(constant + lame("--resample 22.05")); }), SoundFailure::Damaged);
    for (const auto& [name, file, frames, compares] : cases) {
        SCOPED_TRACE(name);
        const auto source = Source::open(write(file));
        EXPECT_EQ(source->frames(), frames);
        EXPECT_NO_THROW(Source::probe(path("sound")));
        const auto opened = SourceFile::open(path("sound"));
        EXPECT_EQ(decodeMp3(*opened, *findMp3(*opened), {}).joined, frames == 10 * kBare);
        if (!compares) continue;
        run("ffmpeg -v error -nostdin -y -i sound -f f64le -c:a pcm_f64le other");
        const std::vector<double> values = samplesOf(*source);
        const std::vector<double> other = doublesIn(path("other"));
        ASSERT_EQ(other.size(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            ASSERT_NEAR(values[i], std::clamp(other[i], -1.0, 1 - 0x1p-23), 0x1p-17) << i;
    }
}

// Decodes up to `frames` frames with one stream.
Bytes inOneGo(Mp3Stream& stream, std::int64_t frames, int channels) {
    Bytes bytes(static_cast<std::size_t>(frames * channels * 3), '\0');
    const auto got = stream.decode(frames, reinterpret_cast<std::uint8_t*>(bytes.data()));
    return bytes.substr(0, static_cast<std::size_t>(got * channels * 3));
}

TEST_F(Decoders, Mp3FromEveryEighthFrameMatchesBitForBit) {
    for (const auto& [rate, options] :
         {std::pair(8000, "-m m -b 64"), std::pair(16000, "-m j -b 64"), std::pair(22050, "-V 4"),
          std::pair(24000, "-t -m m -b 16"), std::pair(32000, "-m m -b 64"),
          std::pair(44100, "-m j -V 2")}) {
        SCOPED_TRACE(std::to_string(rate) + options);
        makeNoise(rate, 2, 8);
        run(std::string("lame --quiet ") + options + " noise.wav made");
        const auto file = SourceFile::open(path("made"));
        const auto start = findMp3(*file);
        ASSERT_TRUE(start);
        const Mp3Header& header = start->header;
        const Mp3Index index(*file, *start, {});
        const Mp3Stream::Part everything{{0, 0, start->byte, {}}, index.end(), 0, INT64_MAX};
        Mp3Header other = header;
        ++other.rate;
        EXPECT_EQ(failureOf([&] { Mp3Stream(*file, other, everything, {}); }),
                  SoundFailure::Damaged);
        Mp3Stream whole(*file, header, everything, {});
        std::stop_source stop;
        stop.request_stop();
        EXPECT_EQ(failureOf([&] { Mp3Stream(*file, header, everything, stop.get_token()); }),
                  SoundFailure::Cancelled);
        EXPECT_EQ(failureOf([&] { Mp3Index(*file, *start, stop.get_token()); }),
                  SoundFailure::Cancelled);
        const std::int64_t all = index.frames() * header.samples;
        const Bytes wanted = inOneGo(whole, all, header.channels);
        ASSERT_EQ(wanted.size(), static_cast<std::size_t>(all * header.channels * 3));
        for (std::int64_t frame = 8; frame < index.frames() - 24; frame += 8) {
            const Mp3LeadIn lead = leadIn(*file, index.before(frame));
            ASSERT_EQ(lead.frame, frame);
            const std::int64_t skipped = (lead.settled - frame) * header.samples;
            Mp3Stream part(*file, header, {lead, index.end(), skipped, INT64_MAX}, {});
            const Bytes got = inOneGo(part, 4096, header.channels);
            const auto at = static_cast<std::size_t>(lead.settled * header.samples);
            ASSERT_EQ(
                wanted.compare(at * static_cast<std::size_t>(header.channels) * 3, got.size(), got),
                0)
                << frame;
        }
    }
}

// A 24-bit stereo sawtooth of `frames` frames in total, starting at `first`, `wrong` units too
// high.
class Sawtooth : public SampleStream {
  public:
    Sawtooth(std::int64_t first, std::int64_t frames, int wrong)
        : at_(first), end_(frames), wrong_(wrong) {}
    std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) override {
        const std::int64_t given = std::clamp<std::int64_t>(end_ - at_, 0, frames);
        for (std::int64_t i = 0; i < given; ++i, ++at_)
            for (const std::int64_t sample : {at_ % 30'000 * 100 + wrong_, -at_ % 7000 * 50})
                for (int byte = 0; byte < 3; ++byte)
                    *bytes++ = static_cast<std::uint8_t>(sample >> (8 * byte));
        return given;
    }

  private:
    std::int64_t at_;
    std::int64_t end_;
    int wrong_;
};

constexpr std::int64_t kFrames = 100'123;
constexpr std::int64_t kJoint = 50'001;

StoredSound expecting(std::int64_t frames) {
    return {{8000, 2, 24, false}, Coding::Little24, 99, frames};
}

TEST(ScratchDecoder, TheFirstStreamDeterminesTheSound) {
    const std::tuple<std::int64_t, std::int64_t, int> cases[] = {
        {kFrames, 0, 0},           {kFrames, kJoint, 0},        {kFrames, 1, 0},
        {kFrames, kFrames - 1, 0}, {kFrames, kJoint, 1},        {kFrames - 5000, kJoint, 0},
        {kFrames / 3, 0, 0},       {kFrames + 5000, kJoint, 1}, {3 * kFrames, 0, 0}};
    for (const auto& [expected, joint, wrong] : cases) {
        SCOPED_TRACE(testing::Message() << expected << " " << joint << " " << wrong);
        const auto streamFrom = [&](std::int64_t first) {
            return std::make_unique<Sawtooth>(first, kFrames, first > 0 ? wrong : 0);
        };
        const DecodedSound decoded = decodeToScratch(expecting(expected), streamFrom, joint, {});
        ASSERT_EQ(decoded.sound.frames, kFrames);
        EXPECT_EQ(decoded.joined, joint > 0 && wrong == 0);
        std::vector<std::uint8_t> bytes(kFrames * 6);
        std::vector<std::uint8_t> wanted(kFrames * 6);
        Sawtooth(0, kFrames, 0).decode(kFrames, wanted.data());
        decoded.file->read(decoded.sound.offset, bytes);
        EXPECT_TRUE(bytes == wanted);
        const Peaks peaks = buildPeaks(decoded.sound, *decoded.file, {});
        for (const int channel : {0, 1})
            for (int level = 0; level < peaks.levels(); ++level)
                EXPECT_TRUE(std::ranges::equal(decoded.peaks.level(channel, level),
                                               peaks.level(channel, level)))
                    << channel << " " << level;
    }
}

TEST(ScratchDecoder, FailsAsItsStreamsDo) {
    const auto failure = [](std::int64_t joint, std::int64_t frames, std::int64_t failing) {
        const auto streamFrom = [&](std::int64_t first) -> std::unique_ptr<SampleStream> {
            if (first == failing) throw SoundError(SoundFailure::SourceChanged, "it fails");
            return std::make_unique<Sawtooth>(first, frames, 0);
        };
        return failureOf([&] { decodeToScratch(expecting(kFrames), streamFrom, joint, {}); });
    };
    EXPECT_EQ(failure(0, 0, -1), SoundFailure::NotASound);
    EXPECT_EQ(failure(0, 1, -1), std::nullopt);
    EXPECT_EQ(failure(kJoint, kJoint - 1, -1), SoundFailure::Damaged);
    EXPECT_EQ(failure(kJoint, kFrames, kJoint), SoundFailure::SourceChanged);
}

TEST(ScratchDecoder, ReportsHowFarTheFirstStreamIsAndStopsWhenAsked) {
    const auto streamFrom = [](std::int64_t first) {
        return std::make_unique<Sawtooth>(first, kFrames, 0);
    };
    for (const auto& [joint, wanted] :
         {std::pair(std::int64_t{0}, std::vector{16, 32, 49, 65, 81, 98}),
          {kJoint, std::vector{32, 65, 98, 100}}}) {
        std::vector<int> percents;
        std::stop_source stop;
        const auto decode = [&, joint = joint] {
            decodeToScratch(expecting(kFrames), streamFrom, joint,
                            {[&](int percent) { percents.push_back(percent); }, stop.get_token()});
        };
        decode();
        stop.request_stop();
        EXPECT_EQ(failureOf(decode), SoundFailure::Cancelled);
        EXPECT_EQ(percents, wanted);
    }
}

TEST(ScratchDecoder, ItsFileCannotOutgrowTheDisk) {
    const auto scratch = SourceFile::scratch(200);
    std::vector<std::uint8_t> bytes(200, 7);
    struct rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    const struct rlimit small { 100, limit.rlim_max };
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const auto full = failureOf([&] { scratch->write(0, bytes); });
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(full, SoundFailure::NoSpace);
    EXPECT_EQ(scratch->readSome(0, bytes), 100);
}

TEST_F(Decoders, AFileThatChangesWhileItIsOpenedIsRefused) {
    makeNoise(44100, 2, 20);
    for (const char* command :
         {"cp noise.wav made", "lame --quiet -b 128 noise.wav made",
          "lame --quiet -t noise.wav made",
          "ffmpeg -v error -nostdin -y -i noise.wav -c:a adpcm_ms -f wav made"}) {
        const auto file = write(made(command));
        bool cut = false;
        const Progress cutting{[&](int) {
                                   if (!std::exchange(cut, true))
                                       std::filesystem::resize_file(file, 40'000);
                               },
                               {}};
        EXPECT_EQ(failureOf([&] { Source::open(file, cutting); }), SoundFailure::SourceChanged)
            << command;
    }
}

}  // namespace
}  // namespace tarnwick::sound
