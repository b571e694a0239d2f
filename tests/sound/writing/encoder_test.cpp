#include "sound/writing/encoder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>

#include "sound/reading/source.h"
#include "sound/samples/wav_codecs.h"
#include "sound/writing/header_writer.h"
#include "sound/writing/mp3_encoder.h"
#include "sound/writing/mp3_length_tag.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

// One way to write a sound, and how close the file must be to it: each sample may differ by `step`,
// in parts of full scale, plus `part` times its value. For codecs that model the sound, the whole
// must have a signal-to-noise ratio of at least `decibels` instead.
struct Way {
    OutputFormat output;
    std::string codec;  // its name in the independent decoder
    double step = 0.0;
    double part = 0.0;
    double decibels = 0.0;

    bool models() const { return decibels > 0.0; }
    bool hasLength() const {
        const AudioFormat& format = output.format;
        return output.container != Container::Mp3 ||
               mp3LengthTagFor(format.rate, format.channels, output.bitRate) != Mp3LengthTag::None;
    }
    std::unique_ptr<FrameReader> sound() const {
        const AudioFormat& format = output.format;
        if (models())
            return std::make_unique<ToneSound>(format, format.rate * 3 / 10 | 1, 440.0, 260.0);
        const int bits = step > 0.0 ? 16 : format.floating ? 24 : format.bits;
        return std::make_unique<NoiseSound>(AudioFormat{format.rate, format.channels, bits, false},
                                            format.rate / 20 | 1);
    }
};

std::ostream& operator<<(std::ostream& out, const Way& way) {
    return out << way.codec << " " << way.output.format.rate << " Hz, "
               << way.output.format.channels << " channels, " << way.output.bitRate << " bit/s";
}

std::vector<Way> uncompressed(Container container) {
    std::vector<Way> ways;
    const bool wav = container == Container::Wav;
    for (const int rate : {8000, 11025, 22050, 44100, 48000, 96000, 192000})
        for (const int channels : {1, 2}) {
            for (const int bits : {8, 16, 24, 32})
                ways.push_back({{container, {rate, channels, bits, false}},
                                bits == 8 ? (wav ? "pcm_u8" : "pcm_s8")
                                          : "pcm_s" + std::to_string(bits) + (wav ? "le" : "be")});
            ways.push_back(
                {{container, {rate, channels, 32, true}}, wav ? "pcm_f32le" : "pcm_f32be"});
        }
    return ways;
}

std::vector<Way> codecs() {
    // Half a step of a law is at most 1/32 of the value; the smallest are 8 (A-law) and 4 (mu-law).
    const std::vector<Way> kinds = {{{}, "pcm_"},
                                    {{}, "pcm_alaw", 8.0 / 32768, 1.0 / 32},
                                    {{}, "pcm_mulaw", 4.5 / 32768, 1.0 / 32},
                                    {{}, "adpcm_ima_wav", 0.0, 0.0, 22.0},
                                    {{}, "adpcm_ms", 0.0, 0.0, 26.0},
                                    {{}, "gsm_ms", 0.0, 0.0, 15.0}};
    std::vector<Way> ways;
    for (int codec = 0; codec < std::ssize(wavCodecs()); ++codec)
        for (const AudioFormat& format : wavCodecs().at(codec).formats) {
            Way way = kinds.at(codec);
            way.output = {Container::WavCodec, format, 0, codec};
            if (codec == kPcmCodec)
                way.codec = format.bits == 8    ? "pcm_u8"
                            : format.bits == 16 ? "pcm_s16le"
                                                : "pcm_s24le";
            ways.push_back(way);
        }
    return ways;
}

std::vector<Way> mp3s() {
    std::vector<Way> ways;
    for (const int rate : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000})
        for (const int channels : {1, 2})
            for (const int bitRate : mp3BitRates(rate)) {
                // With a bit per sample or more, even a level change of 3 % would be detected.
                Way way{{Container::Mp3, {rate, channels, 16, false}, bitRate}, "mp3"};
                way.decibels = bitRate >= rate * channels ? 30.0 : 4.0;
                ways.push_back(way);
            }
    return ways;
}

struct Decoded {
    std::string codec;
    int rate = 0;
    int channels = 0;
    int kilobits = 0;  // per second
    std::vector<double> samples;
};

// Decodes the files with ffmpeg; none if it is not installed. Uses one process for all files,
// because starting it takes longer than decoding.
std::vector<Decoded> decodedByOthers(const std::vector<std::filesystem::path>& files) {
    if (std::system("command -v ffmpeg >/dev/null") != 0) return {};
    std::string inputs;
    std::string outputs;
    for (std::size_t i = 0; i < files.size(); ++i) {
        inputs += " -i " + files[i].string();
        outputs += " -map " + std::to_string(i) + " -f f64le " + files[i].string() + ".raw";
    }
    FILE* pipe = popen(("ffmpeg -nostdin" + inputs + outputs + " 2>&1").c_str(), "r");
    std::string told;
    for (char block[4096]; const auto count = fread(block, 1, sizeof block, pipe);)
        told.append(block, count);
    pclose(pipe);
    std::vector<Decoded> all;
    const std::regex stream(
        R"(Stream #\d+:0: Audio: (\w+).*, (\d+) Hz, (mono|stereo|1|2).*, (\d+) kb/s)");
    std::istringstream lines(told);
    for (std::string line; std::getline(lines, line) && !line.starts_with("Output #");) {
        std::smatch found;
        if (!std::regex_search(line, found, stream)) continue;
        const int channels = found[3] == "mono" || found[3] == "1" ? 1 : 2;
        all.push_back({found[1], std::stoi(found[2]), channels, std::stoi(found[4]), {}});
    }
    EXPECT_EQ(all.size(), files.size()) << told.substr(0, 2000);
    all.resize(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        all[i].samples = doublesIn(files[i].string() + ".raw");
    return all;
}

// The distance of `samples` from the wanted ones, in the way's own measure; up to 1 is close
// enough.
double distance(const Way& way, const std::vector<double>& wanted,
                const std::vector<double>& samples) {
    double worst = 0.0;
    double signal = 0.0;
    double noise = 0.0;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const double error = std::fabs(samples[i] - wanted[i]);
        const double allowed = way.step + std::fabs(wanted[i]) * way.part;
        if (error > allowed) worst = std::max(worst, 1.0 + error);
        signal += wanted[i] * wanted[i];
        noise += error * error;
    }
    return way.models() ? noise / signal * std::pow(10.0, way.decibels / 10) : worst;
}

class Encoders : public testing::Test {
  protected:
    std::filesystem::path write(const Way& way, const FrameReader& sound) {
        std::filesystem::path file = folder_.path() / std::to_string(++files_);
        writeSound(sound, 0, sound.frames(), way.output, file);
        return file;
    }

    // Writes in each way and reads back with our own decoder and another.
    void check(const std::vector<Way>& ways) {
        std::vector<std::filesystem::path> files;
        for (const Way& way : ways)
            files.push_back(write(way, *way.sound()));
        const std::vector<Decoded> others = decodedByOthers(files);
        for (std::size_t i = 0; i < ways.size(); ++i) {
            SCOPED_TRACE(testing::Message() << ways[i]);
            if (!others.empty()) checkOthers(ways[i], others[i]);
            const auto source = Source::open(files[i]);
            EXPECT_EQ(source->format().rate, ways[i].output.format.rate);
            EXPECT_EQ(source->format().channels, ways[i].output.format.channels);
            checkSamples(ways[i], samplesOf(*source), false);
        }
    }

  private:
    void checkOthers(const Way& way, const Decoded& decoded) {
        EXPECT_EQ(decoded.codec, way.codec);
        EXPECT_EQ(decoded.rate, way.output.format.rate);
        EXPECT_EQ(decoded.channels, way.output.format.channels);
        const bool blocks = way.output.container == Container::WavCodec && way.models();
        EXPECT_TRUE(way.output.bitRate == 0 || way.output.bitRate == decoded.kilobits * 1000);
        checkSamples(way, decoded.samples, blocks);  // ffmpeg ignores the stated length
    }

    void checkSamples(const Way& way, const std::vector<double>& samples, bool padded) {
        const std::vector<double> wanted = samplesOf(*way.sound());
        if (!way.hasLength()) {
            const std::size_t longer = 2100u * way.output.format.channels;
            EXPECT_GT(samples.size(), wanted.size());
            EXPECT_LT(samples.size(), wanted.size() + longer);
            return;
        }
        ASSERT_GE(samples.size(), wanted.size());
        EXPECT_TRUE(padded || samples.size() == wanted.size());
        EXPECT_LE(distance(way, wanted, samples), 1.0);
    }

    TempFolder folder_;
    int files_ = 0;
};

TEST_F(Encoders, WavIsExact) { check(uncompressed(Container::Wav)); }
TEST_F(Encoders, AiffIsExact) { check(uncompressed(Container::Aiff)); }
TEST_F(Encoders, CodecsInWavAreClose) { check(codecs()); }
TEST_F(Encoders, Mp3HasItsRateAndLength) { check(mp3s()); }

// The distance from the sound tells whether the encoder still finds the same codes: with others,
// it changes in either direction.
TEST_F(Encoders, MicrosoftAdpcmKeepsItsQuality) {
    const std::tuple<int, int, double> rows[] = {
        {8000, 1, 26.3855}, {22050, 2, 24.5521}, {44100, 1, 25.0883}, {44100, 2, 24.5034}};
    for (const auto& [rate, channels, decibels] : rows) {
        const Way way{{Container::WavCodec, {rate, channels, 4, false}, 0, kMsAdpcm}, "", 0, 0, 1};
        const NoiseSound noise({rate, channels, 16, false}, 12'000);
        std::vector<double> values = samplesOf(noise);
        for (std::size_t i = 0; i < values.size(); ++i) {
            // A triangle whose hum grows, then a square wave at full scale.
            const double triangle = std::abs(static_cast<double>(i % 256) - 128) / 160 - 0.4;
            values[i] = i > 9000u * channels ? (i / 200 % 2 ? 1.0 : -1.0)
                                             : triangle + values[i] * static_cast<double>(i) / 2e5;
        }
        const auto file = write(way, ListSound(noise.format(), values));
        const double distant = distance(way, values, samplesOf(*Source::open(file)));
        EXPECT_NEAR(1 - 10 * std::log10(distant), decibels, 0.0001) << way;
    }
}

TEST_F(Encoders, OverloadIsClippedAndNeverWraps) {
    // A slow square wave beyond full scale, and below one value that no file can hold.
    std::vector<double> values;
    for (int i = 0; i < 22050; ++i)
        values.push_back(i / 300 % 2 ? 3.0 : -3.0);
    std::vector<Way> ways;
    std::vector<std::filesystem::path> files;
    for (const auto& list :
         {uncompressed(Container::Wav), uncompressed(Container::Aiff), codecs(), mp3s()})
        for (const Way& way : list)
            // GSM models voices and cannot reproduce a square wave.
            if (way.output.format.rate == 44100 && way.output.format.channels == 1 &&
                way.codec != "gsm_ms") {
                values[5] = way.output.container == Container::Mp3 ? NAN : -1e300;
                files.push_back(write(way, ListSound(way.output.format, values)));
                ways.push_back(way);
            }
    const std::vector<Decoded> others = decodedByOthers(files);
    for (std::size_t i = 0; i < others.size(); ++i)
        for (std::size_t middle = 450; middle < values.size(); middle += 300)
            EXPECT_GT(others[i].samples.at(middle) * values[middle], 3.0 * 0.6)
                << ways[i] << " at " << middle;
}

TEST_F(Encoders, RefuseFormatsAndLengthsThatNoFileCanHold) {
    AtomicFile file(std::filesystem::temp_directory_path() / "never");
    const AudioFormat telephone{8000, 1, 0, false};
    constexpr std::int64_t kTooLong = 9'000'000'000;
    const std::vector<std::pair<OutputFormat, std::int64_t>> cases = {
        {{Container::Mp3, {44100, 1, 16, false}, 128001}, 1},
        {{Container::Mp3, {8000, 1, 16, false}, 128000}, 1},
        {{Container::Mp3, {96000, 1, 16, false}, 128000}, 1},
        {{Container::WavCodec, telephone, 0, -1}, 1},
        {{Container::WavCodec, telephone, 0, 6}, 1},
        {{Container::WavCodec, telephone, 0, kALawCodec}, 1},
        {{Container::WavCodec, {8000, 2, 0, false}, 0, kGsm610}, 1},
        {{Container::WavCodec, telephone, 0, kGsm610}, kTooLong},
        {{Container::WavCodec, {8000, 2, 4, false}, 0, kImaAdpcm}, kTooLong / 2},
        {{Container::WavCodec, {8000, 2, 4, false}, 0, kMsAdpcm}, kTooLong / 2},
        {{Container::Aiff, {8000, 1, 12, false}}, 1},
        {{Container::Aiff, {8000, 1, 16, true}}, 1},
        {{Container::Aiff, {8000, 1, 8, false}}, kTooLong}};
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(failureOf([&] { makeEncoder(cases[i].first, cases[i].second, file); }),
                  SoundFailure::BadFormat)
            << "case " << i;
    EXPECT_EQ(file.size(), 0);
}

// Numbers with their width in bytes, as a file stores them.
std::string fields(const std::vector<std::pair<std::int64_t, int>>& values, bool big = false) {
    std::string bytes;
    for (const auto& [value, width] : values)
        bytes += number(static_cast<std::uint64_t>(value), width, big);
    return bytes;
}

std::string big(const std::vector<std::pair<std::int64_t, int>>& values) {
    return fields(values, true);
}

TEST(Headers, HoldEveryField) {
    constexpr std::int64_t kMany = 0x100000001;
    std::vector<std::pair<std::int64_t, int>> weights{{7, 2}};
    for (const int weight : {256, 0, 512, -256, 0, 0, 192, 64, 240, 0, 460, -208, 392, -232})
        weights.push_back({weight, 2});
    const auto adpcm = [&](std::int64_t frames, std::int64_t data) {
        return "RIFF" + fields({{82 + data, 4}}) + "WAVEfmt " +
               fields({{50, 4}, {2, 2}, {2, 2}, {11025, 4}, {11289, 4}, {512, 2}, {4, 2}}) +
               fields({{32, 2}, {500, 2}}) + fields(weights) + "fact" +
               fields({{4, 4}, {frames, 4}}) + "data" + fields({{data, 4}});
    };
    const auto extended = [](int size, int tag, int bits, std::int64_t frames) {
        return "RIFF" + fields({{size, 4}}) + "WAVEfmt " +
               fields({{18, 4}, {tag, 2}, {2, 2}, {48000, 4}, {12000 * bits, 4}}) +
               fields({{bits / 4, 2}, {bits, 2}, {0, 2}}) + "fact" + fields({{4, 4}, {frames, 4}}) +
               "data" + fields({{frames * bits / 4, 4}});
    };
    const std::pair<std::vector<unsigned char>, std::string> rows[] = {
        {wavHeader({44100, 1, 8, false}, 3),
         "RIFF" + fields({{40, 4}}) + "WAVEfmt " +
             fields({{16, 4}, {1, 2}, {1, 2}, {44100, 4}, {44100, 4}, {1, 2}, {8, 2}}) + "data" +
             fields({{3, 4}})},
        {wavHeader({48000, 2, 32, true}, 5), extended(90, 3, 32, 5)},
        {wavHeader({48000, 2, 8, false}, 5, Companding::ALaw), extended(60, 6, 8, 5)},
        {wavHeader({48000, 2, 8, false}, 5, Companding::MuLaw), extended(60, 7, 8, 5)},
        {wavHeader({8000, 1, 8, false}, kMany, Companding::MuLaw),
         "RF64" + fields({{-1, 4}}) + "WAVEds64" +
             fields({{28, 4}, {kMany + 87, 8}, {kMany, 8}, {kMany, 8}, {0, 4}}) + "fmt " +
             fields({{18, 4}, {7, 2}, {1, 2}, {8000, 4}, {8000, 4}, {1, 2}, {8, 2}, {0, 2}}) +
             "fact" + fields({{4, 4}, {-1, 4}}) + "data" + fields({{-1, 4}})},
        {adpcmHeader({11025, 2, 4, false}, 500, 512, 500), adpcm(500, 512)},
        {adpcmHeader({11025, 2, 4, false}, 501, 512, 500), adpcm(501, 1024)},
        {aiffHeader({44100, 1, 8, false}, 3),
         "FORM" + big({{50, 4}}) + "AIFFCOMM" +
             big({{18, 4}, {1, 2}, {3, 4}, {8, 2}, {0x400E, 2}, {0xAC44, 2}, {0, 6}}) + "SSND" +
             big({{11, 4}, {0, 8}})},
        {aiffHeader({48000, 2, 32, true}, 2),
         "FORM" + big({{96, 4}}) + "AIFCFVER" + big({{4, 4}, {0xA2805140, 4}}) + "COMM" +
             big({{40, 4}, {2, 2}, {2, 4}, {32, 2}, {0x400E, 2}, {0xBB80, 2}, {0, 6}}) +
             "fl32\x11IEEE 32-bit floatSSND" + big({{24, 4}, {0, 8}})}};
    for (const auto& [header, expected] : rows)
        EXPECT_EQ(std::string(header.begin(), header.end()), expected);
}

TEST(Headers, HaveALongestSound) {
    constexpr std::int64_t kLargest = 0xFFFFFFFF;
    const AudioFormat bytes{8000, 1, 8, false};
    EXPECT_EQ(wavHeader(bytes, kLargest - 37)[1], 'I');
    EXPECT_EQ(wavHeader(bytes, kLargest - 36)[1], 'F');
    const auto refused = [](const auto& make) {
        return failureOf(make) == std::optional(SoundFailure::BadFormat);
    };
    EXPECT_FALSE(refused([&] { aiffHeader(bytes, kLargest - 47); }));
    EXPECT_TRUE(refused([&] { aiffHeader(bytes, kLargest - 46); }));
    // One frame or two in a block of one byte: the size or the number of frames is the limit.
    for (const auto& [frames, inBlock] : {std::pair(kLargest - 82, 1), {kLargest, 2}}) {
        EXPECT_FALSE(refused([&] { adpcmHeader(bytes, frames, 1, inBlock); }));
        EXPECT_TRUE(refused([&] { adpcmHeader(bytes, frames + 1, 1, inBlock); }));
    }
}

TEST(Mp3LengthTag, StandsWhereAFrameHasRoom) {
    const struct {
        int rate, channels, place;
    } rows[] = {{24000, 1, 13}, {24000, 2, 21}, {32000, 1, 21}, {32000, 2, 36}};
    for (const auto& [rate, channels, place] : rows)
        for (const auto& [more, expected] : {std::pair(51, Mp3LengthTag::None),
                                             {52, Mp3LengthTag::Here},
                                             {155, Mp3LengthTag::Here},
                                             {156, Mp3LengthTag::ByLame}}) {
            const int bitRate = (place + more) * rate / (rate == 32000 ? 144 : 72) + 1;
            EXPECT_EQ(mp3FrameBytes(rate, bitRate), static_cast<std::size_t>(place + more));
            EXPECT_EQ(mp3LengthTagFor(rate, channels, bitRate), expected) << rate << ' ' << more;
        }
}

TEST(Mp3LengthTag, HoldsEveryField) {
    constexpr std::int64_t kVast = 0x100000000;
    const auto text = [](std::int64_t frames, std::int64_t bytes, int lowpass, int rate,
                         std::int64_t gap, int sum) {
        return "Info" + big({{3, 4}, {frames, 4}, {bytes, 4}}) + "LAME3.100" +
               big({{1, 1}, {lowpass, 1}, {0, 9}, {rate, 1}, {gap, 3}, {0, 4}, {bytes, 4}}) +
               big({{0, 2}, {sum, 2}}) + '\0';
    };
    const auto made = [](const std::array<unsigned char, 4>& header, std::size_t bytes,
                         const Mp3Length& length) {
        const std::vector<unsigned char> tag = mp3LengthTag(header, bytes, length);
        return std::string(tag.begin(), tag.end());
    };
    // MPEG 2, mono, and MPEG 1, joint stereo; both with padding and a checksum.
    EXPECT_EQ(made({0xFF, 0xF2, 0x16, 0xF0}, 66, {5, 0x1234, 576, 1105, 32000, 7000}),
              "\xFF\xF3\x14\xC0" + std::string(9, '\0') +
                  text(5, 0x1234, 70, 32, 576 << 12 | 1105, 0x9BB));
    EXPECT_EQ(
        made({0xFF, 0xFA, 0x92, 0x64}, 89, {kVast, kVast, 4095, 4095, 256000, 25600}),
        "\xFF\xFB\x90\x44" + std::string(32, '\0') + text(-1, -1, 255, 255, 0xFFFFFF, 0xB948));
}

}  // namespace
}  // namespace tarnwick::sound
