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
    const bool wav = container == Container::Wav;
    const std::string end = wav ? "le" : "be";
    const std::pair<int, std::string> kinds[] = {{8, wav ? "pcm_u8" : "pcm_s8"},
                                                 {16, "pcm_s16" + end},
                                                 {24, "pcm_s24" + end},
                                                 {32, "pcm_s32" + end},
                                                 {32, "pcm_f32" + end}};
    std::vector<Way> ways;
    for (const int channels : {1, 2})
        for (const auto& [bits, codec] : kinds)
            ways.push_back({{container, {44100, channels, bits, codec[4] == 'f'}}, codec});
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
    // Those of MPEG 2.5, 2 and 1, in kilobits per second.
    const std::pair<std::vector<int>, std::vector<int>> versions[] = {
        {{8000, 11025, 12000}, {8, 16, 24, 32, 40, 48, 56, 64}},
        {{16000, 22050, 24000}, {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
        {{32000, 44100, 48000}, {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}}};
    std::vector<Way> ways;
    for (const auto& [rates, kilobits] : versions)
        for (const int rate : rates) {
            std::vector<int> offered;
            for (const int kilobit : kilobits) {
                offered.push_back(kilobit * 1000);
                for (const int channels : {1, 2}) {
                    Way way{{Container::Mp3, {rate, channels, 16, false}, offered.back()}, "mp3"};
                    // With a bit per sample or more, even a level change of 3 % would be detected.
                    way.decibels = offered.back() >= rate * channels ? 30.0 : 4.0;
                    ways.push_back(way);
                }
            }
            EXPECT_EQ(mp3BitRates(rate), offered);
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
            EXPECT_TRUE(ways[i].models() || std::filesystem::file_size(files[i]) % 2 == 0);
            const auto source = Source::open(files[i]);
            EXPECT_EQ(source->format().rate, ways[i].output.format.rate);
            EXPECT_EQ(source->format().channels, ways[i].output.format.channels);
            checkSamples(ways[i], samplesOf(*source), false);
            // Its samples are copied or, where a law or floats forbid that, computed to the same.
            EXPECT_TRUE(ways[i].models() ||
                        contentOf(write(ways[i], *source)) == contentOf(files[i]));
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
    const Way mp3{{Container::Mp3, {44100, 1, 16, false}, 128000}, "mp3"};
    const auto encoded = [&](double value) {
        values.assign(2000, value);
        return contentOf(write(mp3, ListSound(mp3.output.format, values)));
    };
    for (const auto& [beyond, kept] : {std::pair(1e300, 8.0), {-1e300, -8.0}, {NAN, 0.0}})
        EXPECT_TRUE(encoded(beyond) == encoded(kept)) << beyond;
    EXPECT_FALSE(encoded(8.0) == encoded(7.5));
}

TEST_F(Encoders, RefuseFormatsAndLengthsThatNoFileCanHold) {
    AtomicFile file(std::filesystem::temp_directory_path() / "never");
    const AudioFormat telephone{8000, 1, 0, false};
    constexpr std::int64_t kTooLong = 9'000'000'000;
    const std::vector<std::pair<OutputFormat, std::int64_t>> cases = {
        {{Container::Mp3, {44100, 1, 16, false}, 128001}, 1},
        {{Container::Mp3, {8000, 1, 16, false}, 128000}, 1},
        {{Container::Mp3, {96000, 1, 16, false}, 128000}, 1},
        {{Container::Mp3, {0, 1, 16, false}, 128000}, 1},
        {{Container::WavCodec, telephone, 0, -1}, 1},
        {{Container::WavCodec, telephone, 0, 6}, 1},
        {{Container::WavCodec, telephone, 0, kALawCodec}, 1},
        {{Container::WavCodec, {8000, 2, 0, false}, 0, kGsm610}, 1},
        {{Container::WavCodec, telephone, 0, kGsm610}, 0x100000000},
        {{Container::WavCodec, {8000, 2, 4, false}, 0, kImaAdpcm}, 4'210'752'300},
        {{Container::WavCodec, {8000, 2, 4, false}, 0, kMsAdpcm}, kTooLong / 2},
        {{Container::Aiff, {8000, 1, 12, false}}, 1},
        {{Container::Aiff, {8000, 1, 16, true}}, 1},
        {{Container::Aiff, {8000, 1, 8, false}}, kTooLong}};
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(failureOf([&] { makeEncoder(cases[i].first, cases[i].second, file); }),
                  SoundFailure::BadFormat)
            << "case " << i;
    EXPECT_EQ(file.size(), 0);
    makeEncoder({Container::WavCodec, telephone, 0, kGsm610}, 0xFFFFFFFF, file);
    makeEncoder({Container::WavCodec, {8000, 2, 4, false}, 0, kImaAdpcm}, 4'210'752'299, file);
}

// The bytes of words: each is a chunk's name or hexadecimal.
std::string bytesOf(const std::string& words) {
    std::string bytes;
    std::istringstream in(words);
    for (std::string word; in >> word;) {
        if (word.find_first_not_of("0123456789ABCDEF") != std::string::npos)
            bytes += word + std::string(4 - word.size(), ' ');
        else
            for (std::size_t at = 0; at < word.size(); at += 2)
                bytes += static_cast<char>(std::stoi(word.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

TEST(Headers, HoldEveryField) {
    constexpr std::int64_t kMany = 0x100000001;
    const std::string weights =
        "2000 F401 0700 00010000 000200FF 00000000 C0004000 F0000000 CC0130FF 880118FF ";
    const std::pair<std::vector<unsigned char>, std::string> rows[] = {
        {wavHeader({44100, 1, 8, false}, 3),
         "RIFF 28000000 WAVE fmt 10000000 0100 0100 44AC0000 44AC0000 0100 0800 data 03000000"},
        {wavHeader({48000, 2, 32, true}, 5),
         "RIFF 5A000000 WAVE fmt 12000000 0300 0200 80BB0000 00DC0500 0800 2000 0000 "
         "fact 04000000 05000000 data 28000000"},
        {wavHeader({8000, 1, 8, false}, kMany, Companding::MuLaw),
         "RF64 FFFFFFFF WAVE ds64 1C000000 5800000001000000 0100000001000000 0100000001000000 "
         "00000000 fmt 12000000 0700 0100 401F0000 401F0000 0100 0800 0000 "
         "fact 04000000 FFFFFFFF data FFFFFFFF"},
        {adpcmHeader({11025, 2, 4, false}, 501, 512, 500),
         "RIFF 52040000 WAVE fmt 32000000 0200 0200 112B0000 192C0000 0002 0400 " + weights +
             "fact 04000000 F5010000 data 00040000"},
        {aiffHeader({44100, 1, 8, false}, 3),
         "FORM 00000032 AIFF COMM 00000012 0001 00000003 0008 400EAC44000000000000 "
         "SSND 0000000B 00000000 00000000"},
        {aiffHeader({192000, 2, 32, true}, 2),
         "FORM 00000060 AIFC FVER 00000004 A2805140 COMM 00000028 0002 00000002 0020 "
         "4010BB80000000000000 fl32 11 IEEE 2033322D62697420666C6F6174 "
         "SSND 00000018 00000000 00000000"}};
    for (const auto& [header, words] : rows)
        EXPECT_EQ(std::string(header.begin(), header.end()), bytesOf(words)) << words;
}

TEST(Headers, HaveALongestSound) {
    constexpr std::int64_t kLargest = 0xFFFFFFFF;
    const AudioFormat bytes{8000, 1, 8, false};
    EXPECT_EQ(wavHeader(bytes, kLargest - 37)[1], 'I');
    EXPECT_EQ(wavHeader(bytes, kLargest - 36)[1], 'F');
    EXPECT_EQ(aiffHeader(bytes, kLargest - 47)[4], 0xFF);
    EXPECT_EQ(failureOf([&] { aiffHeader(bytes, kLargest - 46); }), SoundFailure::BadFormat);
    // One frame or two in a block of one byte: the size or the number of frames is the limit.
    for (const auto& [most, inBlock] : {std::pair(kLargest - 82, 1), {kLargest, 2}}) {
        const auto make = [&, n = inBlock](std::int64_t frames) {
            return failureOf([&] { adpcmHeader(bytes, frames, 1, n); });
        };
        EXPECT_EQ(make(most), std::nullopt);
        EXPECT_EQ(make(most + 1), SoundFailure::BadFormat);
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
    const std::string version = " LAME 332E313030 01 ";
    // MPEG 2, mono, and MPEG 1, joint stereo; both with padding and a checksum.
    const std::pair<std::vector<unsigned char>, std::string> rows[] = {
        {mp3LengthTag({0xFF, 0xF2, 0x16, 0xF0}, 66, {5, 0x1234, 576, 1105, 32000, 7000}),
         "FFF314C0" + std::string(18, '0') + " Info 00000003 00000005 00001234" + version +
             "46 000000000000000000 20 240451 00000000 00001234 0000 09BB 00"},
        {mp3LengthTag({0xFF, 0xFA, 0x92, 0x64}, 89, {kVast, kVast, 4095, 4095, 256000, 25600}),
         "FFFB9044" + std::string(64, '0') + " Info 00000003 FFFFFFFF FFFFFFFF" + version +
             "FF 000000000000000000 FF FFFFFF 00000000 FFFFFFFF 0000 B948 00"}};
    for (const auto& [tag, words] : rows)
        EXPECT_EQ(std::string(tag.begin(), tag.end()), bytesOf(words)) << words;
}

}  // namespace
}  // namespace tarnwick::sound
