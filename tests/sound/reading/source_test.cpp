#include "sound/reading/source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "support/test_sounds.h"

// Files are built byte by byte, so that the readers are tested independently of our writers.

namespace tarnwick::sound {
namespace {

std::string chunk(const std::string& name, const std::string& body, bool big = false) {
    return name + number(body.size(), 4, big) + body + std::string(body.size() % 2, '\0');
}

std::string format(int tag, int channels, int rate, int bits) {
    const int block = channels * ((bits + 7) / 8);
    return chunk("fmt ", number(tag, 2) + number(channels, 2) + number(rate, 4) +
                             number(static_cast<std::uint64_t>(rate) * block, 4) +
                             number(block, 2) + number(bits, 2));
}

// A format chunk for samples in blocks.
std::string blocks(int tag, int channels, int bytes, int bits) {
    return chunk("fmt ", number(tag, 2) + number(channels, 2) + number(8000, 4) + number(4096, 4) +
                             number(bytes, 2) + number(bits, 2) + number(2, 2) + number(0, 2));
}

std::string extensible(int bits) {
    std::string body = format(0xFFFE, 1, 48000, bits).substr(8) + number(22, 2) + number(bits, 2) +
                       number(4, 4) + number(1, 2);
    body += std::string("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);
    return chunk("fmt ", body);
}

std::string wave(const std::string& chunks, const std::string& kind = "RIFF") {
    return kind + number(chunks.size() + 4, 4) + "WAVE" + chunks;
}

std::string aiff(int frames, int bits, const std::string& kind, const std::string& samples) {
    const std::string rate("\x40\x0E\xAC\x44\0\0\0\0\0\0", 10);  // 44100
    const std::string common =
        chunk("COMM",
              number(1, 2, true) + number(frames, 4, true) + number(bits, 2, true) + rate + kind +
                  (kind.empty() ? "" : std::string(2, '\0')),
              true);
    const std::string body = (kind.empty() ? "AIFF" : "AIFC") + common +
                             chunk("NAME", "odd", true) +
                             chunk("SSND", std::string(8, '\0') + samples, true);
    return chunk("FORM", body, true);
}

class SourceTest : public testing::Test {
  protected:
    std::filesystem::path write(const std::string& bytes) {
        const auto path = folder_.path() / "take.mp3";  // the name must not matter
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    std::vector<double> samples(const std::string& bytes) {
        return samplesOf(*Source::open(write(bytes)));
    }

    TempFolder folder_;
};

TEST_F(SourceTest, ReadsEveryCodingExactly) {
    const auto mono = [](int coding, int bits, const std::string& samples) {
        return wave(format(coding, 1, 8000, bits) + chunk("data", samples));
    };
    const std::pair<std::string, std::vector<double>> codings[] = {
        {mono(1, 8, "\x01\xC0"), {-127 / 128.0, 0.5}},
        {mono(1, 24, number(0x123456, 3) + number(0xFFFFFF, 3)),
         {0x123456 / 8388608.0, -1 / 8388608.0}},
        {wave(format(1, 2, 8000, 32) + chunk("data", number(1, 4) + number(1u << 31, 4))),
         {1 / 2147483648.0, -1}},
        {mono(3, 32, number(0x40000000, 4) + number(0x7FC00000, 4)), {2, 0}},  // a NaN is silent
        {mono(3, 64, number(0xBFD0000000000000, 8)), {-0.25}},
        {aiff(2, 16, "", number(0x4000, 2, true) + number(0x8000, 2, true)), {0.5, -1}},
        {aiff(1, 24, "", number(0x123456, 3, true)), {0x123456 / 8388608.0}},
        {aiff(3, 8, "", "\x40\x80\x01"), {0.5, -1, 1 / 128.0}},
        {aiff(1, 16, "sowt", number(0x4000, 2)), {0.5}},
        {mono(6, 8, "\xD5\x2A\x55"), {8 / 32768.0, -32256 / 32768.0, -8 / 32768.0}},
        {mono(7, 8, "\xFF\x80\x10"), {0, 32124 / 32768.0, -15996 / 32768.0}},
        {aiff(1, 16, "alaw", "\xAA"), {32256 / 32768.0}},
        {aiff(1, 16, "ULAW", std::string(1, '\0')), {-32124 / 32768.0}},
        {aiff(1, 32, "fl32", number(0xBF000000, 4, true)), {-0.5}}};
    for (const auto& [file, values] : codings)
        EXPECT_EQ(samples(file), values) << file.size();

    const std::string format16 = format(1, 1, 8000, 16);
    const std::string two = number(0x4000, 2) + number(0x8000, 2);
    const std::string data = chunk("data", two);
    const std::pair<const char*, std::string> layouts[] = {
        {"plain", wave(format16 + data)},
        {"extensible", wave(extensible(16) + data)},
        {"odd chunks",
         wave(chunk("junk", "odd") + format16 + chunk("LIST", "x") + data + chunk("cue ", "abc"))},
        {"no padding",
         wave("junk" + number(3, 4) + "odd" + format16 + "LIST" + number(1, 4) + "x" + data)},
        {"RF64", wave(chunk("ds64", number(0, 8) + number(4, 8) + number(0, 12)) + format16 +
                          "data" + number(0xFFFFFFFF, 4) + two + chunk("LIST", "x"),
                      "RF64")},
        {"size never filled in", wave(format16 + "data" + number(0, 4) + two)},
        {"size unknown", wave(format16 + "data" + number(0xFFFFFFFF, 4) + two)},
        {"cut off in a frame", wave(format16 + "data" + number(1000, 4) + two + "x")}};
    for (const auto& [name, file] : layouts)
        EXPECT_EQ(samples(file), (std::vector<double>{0.5, -1})) << name;
}

TEST_F(SourceTest, RefusesFilesWithoutUsableSound) {
    const std::string data = chunk("data", "abcd");
    const std::string format16 = format(1, 1, 8000, 16);
    std::string noise(100'000, '\0');
    std::mt19937 random(7);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    const std::pair<const char*, std::string> noSounds[] = {
        {"empty", ""},
        {"text", std::string(5000, 'a')},
        {"noise", noise},
        {"sync words", std::string(5000, '\xFF')},
        {"no frame", wave(format16 + chunk("data", "") + chunk("LIST", "abcd"))},
        {"less than a frame", wave(format(1, 2, 8000, 16) + chunk("data", "abc"))},
        {"rate 0", wave(format(1, 1, 0, 16) + data)},
        {"rate beyond", wave(format(1, 1, 768001, 16) + data)},
        {"no channels", wave(format(1, 0, 8000, 16) + data)},
        {"17 channels", wave(format(1, 17, 8000, 16) + data)},
        {"0 bits", wave(format(1, 1, 8000, 0) + data)},
        {"unknown coding", wave(format(0x55, 1, 8000, 16) + data)},
        {"law, rate 0", wave(format(7, 1, 0, 8) + data)},
        {"blocks of 0 bytes", wave(blocks(0x11, 1, 0, 4) + data)},
        {"blocks without samples", wave(blocks(2, 2, 13, 4) + data)},
        {"ADPCM of 3 bits", wave(blocks(0x11, 1, 256, 3) + data)},
        {"GSM in stereo", wave(blocks(0x31, 2, 65, 0) + data)},
        {"GSM in other blocks", wave(blocks(0x31, 1, 33, 0) + data)},
        {"less than a block", wave(blocks(0x31, 1, 65, 0) + data)},
        {"G.721", wave(blocks(0x40, 1, 64, 4) + data)},
        {"AIFF without sound", aiff(0, 16, "", "")}};
    const auto failure = [&](const std::string& file) {
        return failureOf([&] { Source::open(write(file)); });
    };
    for (const auto& [name, file] : noSounds) {
        EXPECT_EQ(failure(file), SoundFailure::NotASound) << name;
        EXPECT_THROW(Source::probe(folder_.path() / "take.mp3"), SoundError) << name;
    }
    for (const std::size_t end : {30, 36})  // in the header, before the data
        EXPECT_EQ(failure(wave(format16 + data).substr(0, end)), SoundFailure::Damaged) << end;
    EXPECT_EQ(failure(aiff(1, 16, "", "ab").substr(0, 40)), SoundFailure::Damaged);
    EXPECT_EQ(failure(wave(data + format16)), SoundFailure::Damaged);
    EXPECT_EQ(failure(wave(std::string(64 << 20, '\0') + format16 + data)), SoundFailure::Damaged);
    EXPECT_THROW(Source::open(folder_.path() / "gone.wav"), SoundError);
    EXPECT_THROW(Source::open(folder_.path()), SoundError);
}

TEST_F(SourceTest, SurvivesRenamesOfTheFileButDetectsChanges) {
    const auto path = write(wave(format(1, 1, 8000, 16) + chunk("data", "abcdefgh")));
    const auto source = Source::open(path);
    std::filesystem::rename(path, folder_.path() / "other");
    write("something else");
    EXPECT_NO_THROW(source->checkUnchanged());
    double value = 0;
    source->read(3, 1, &value);
    EXPECT_EQ(value, ('g' + 'h' * 256) / 32768.0);
    EXPECT_THROW(source->read(3, 2, &value), SoundError);

    std::filesystem::resize_file(folder_.path() / "other", 46);
    EXPECT_EQ(failureOf([&] { source->checkUnchanged(); }), SoundFailure::SourceChanged);
    EXPECT_EQ(failureOf([&] { source->read(3, 1, &value); }), SoundFailure::SourceChanged);
}

TEST_F(SourceTest, ReportsEachPercentOnceAndStopsWhenAsked) {
    const auto path = write(wave(format(1, 1, 8000, 8) + chunk("data", std::string(9 << 20, 'a'))));
    std::vector<int> percents;
    Source::open(path, {[&](int percent) { percents.push_back(percent); }, {}});
    EXPECT_FALSE(percents.empty());
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end(), std::less_equal<>()));
    std::stop_source stop;
    const Progress stopping{[&](int) { stop.request_stop(); }, stop.get_token()};
    EXPECT_EQ(failureOf([&] { Source::open(path, stopping); }), SoundFailure::Cancelled);
}

}  // namespace
}  // namespace tarnwick::sound
