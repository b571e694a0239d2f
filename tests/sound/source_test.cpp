#include "sound/source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "sound/sound_error.h"

// Files are made byte by byte, so that the readers are not measured by our own writers.

namespace tarnwick::sound {
namespace {

std::string number(std::uint64_t value, int bytes, bool big = false) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += i < 8 ? static_cast<char>(value >> (8 * (big ? bytes - 1 - i : i))) : '\0';
    return text;
}

std::string chunk(const std::string& name, const std::string& body, bool big = false) {
    return name + number(body.size(), 4, big) + body + std::string(body.size() % 2, '\0');
}

std::string format(int tag, int channels, int rate, int bits) {
    const int block = channels * ((bits + 7) / 8);
    return chunk("fmt ", number(tag, 2) + number(channels, 2) + number(rate, 4) +
                             number(static_cast<std::uint64_t>(rate) * block, 4) +
                             number(block, 2) + number(bits, 2));
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
    void SetUp() override {
        std::string folder = testing::TempDir() + "source-XXXXXX";
        folder_ = ::mkdtemp(folder.data());
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path write(const std::string& bytes) {
        const auto path = folder_ / "take.mp3";  // the name must not matter
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    std::vector<double> samples(const std::string& bytes) {
        const auto source = Source::open(write(bytes));
        std::vector<double> values(
            static_cast<std::size_t>(source->frames() * source->format().channels));
        source->read(0, source->frames(), values.data());
        return values;
    }
    SoundFailure failure(const std::string& bytes) {
        try {
            Source::open(write(bytes));
        } catch (const SoundError& error) {
            return error.failure();
        }
        return SoundFailure::Cancelled;  // none
    }

    std::filesystem::path folder_;
};

TEST_F(SourceTest, ReadsEveryCodingExactly) {
    using testing::ElementsAre;
    const std::string data16 = chunk("data", number(0x4000, 2) + number(0x8000, 2));
    const std::string data24 = number(0x123456, 3) + number(0xFFFFFF, 3);
    const struct {
        const char* name;
        std::string file;
        std::vector<double> values;
    } cases[] = {
        {"8", wave(format(1, 1, 8000, 8) + chunk("data", "\x01\xC0")), {-127 / 128.0, 0.5}},
        {"16", wave(format(1, 1, 8000, 16) + data16), {0.5, -1}},
        {"24",
         wave(format(1, 1, 8000, 24) + chunk("data", data24)),
         {0x123456 / 8388608.0, -1 / 8388608.0}},
        {"32",
         wave(format(1, 2, 8000, 32) + chunk("data", number(1, 4) + number(1u << 31, 4))),
         {1 / 2147483648.0, -1}},
        {"float with a NaN",
         wave(format(3, 1, 8000, 32) +
              chunk("data", number(0x40000000, 4) + number(0x7FC00000, 4))),
         {2, 0}},
        {"double",
         wave(format(3, 1, 8000, 64) + chunk("data", number(0xBFD0000000000000, 8))),
         {-0.25}},
        {"extensible", wave(extensible(16) + data16), {0.5, -1}},
        {"odd chunks around",
         wave(chunk("junk", "odd") + format(1, 1, 8000, 16) + chunk("LIST", "x") + data16 +
              chunk("cue ", "abc")),
         {0.5, -1}},
        {"RF64",
         wave(chunk("ds64", number(0, 8) + number(4, 8) + number(0, 12)) + format(1, 1, 8000, 16) +
                  "data" + number(0xFFFFFFFF, 4) + data16.substr(8) + chunk("LIST", "x"),
              "RF64"),
         {0.5, -1}},
        {"size never filled in",
         wave(format(1, 1, 8000, 16) + "data" + number(0, 4) + data16.substr(8)),
         {0.5, -1}},
        {"size unknown",
         wave(format(1, 1, 8000, 16) + "data" + number(0xFFFFFFFF, 4) + data16.substr(8)),
         {0.5, -1}},
        {"cut off in a frame",
         wave(format(1, 1, 8000, 16) + "data" + number(1000, 4) + data16.substr(8) + "x"),
         {0.5, -1}},
        {"AIFF 16", aiff(2, 16, "", number(0x4000, 2, true) + number(0x8000, 2, true)), {0.5, -1}},
        {"AIFF 24", aiff(1, 24, "", number(0x123456, 3, true)), {0x123456 / 8388608.0}},
        {"AIFF 8, padded", aiff(3, 8, "", "\x40\x80\x01"), {0.5, -1, 1 / 128.0}},
        {"AIFC sowt", aiff(1, 16, "sowt", number(0x4000, 2)), {0.5}},
        {"AIFC fl32", aiff(1, 32, "fl32", number(0xBF000000, 4, true)), {-0.5}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(samples(each.file), each.values);
    }
}

TEST_F(SourceTest, RefusesWhatIsNoSound) {
    const std::string data = chunk("data", "abcd");
    const std::string whole = wave(format(1, 1, 8000, 16) + data);
    std::string noise(100'000, '\0');
    std::mt19937 random(7);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    const struct {
        const char* name;
        std::string file;
        SoundFailure failure;
    } cases[] = {
        {"empty", "", SoundFailure::NotASound},
        {"text", std::string(5000, 'a'), SoundFailure::NotASound},
        {"noise", noise, SoundFailure::NotASound},
        {"sync words", std::string(5000, '\xFF'), SoundFailure::NotASound},
        {"no frame", wave(format(1, 1, 8000, 16) + chunk("data", "") + chunk("LIST", "abcd")),
         SoundFailure::NotASound},
        {"less than a frame", wave(format(1, 2, 8000, 16) + chunk("data", "abc")),
         SoundFailure::NotASound},
        {"rate 0", wave(format(1, 1, 0, 16) + data), SoundFailure::NotASound},
        {"rate beyond", wave(format(1, 1, 768001, 16) + data), SoundFailure::NotASound},
        {"no channels", wave(format(1, 0, 8000, 16) + data), SoundFailure::NotASound},
        {"17 channels", wave(format(1, 17, 8000, 16) + data), SoundFailure::NotASound},
        {"0 bits", wave(format(1, 1, 8000, 0) + data), SoundFailure::NotASound},
        {"unknown coding", wave(format(0x55, 1, 8000, 16) + data), SoundFailure::NotASound},
        {"cut in the header", whole.substr(0, 30), SoundFailure::Damaged},
        {"cut before the data", whole.substr(0, 36), SoundFailure::Damaged},
        {"AIFF without sound", aiff(0, 16, "", ""), SoundFailure::NotASound},
        {"AIFF cut", aiff(1, 16, "", "ab").substr(0, 40), SoundFailure::Damaged},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(failure(each.file), each.failure);
    }
    EXPECT_THROW(Source::open(folder_ / "gone.wav"), SoundError);
    EXPECT_THROW(Source::open(folder_), SoundError);
}

TEST_F(SourceTest, PeaksBoundTheSamplesAtEveryLevel) {
    std::mt19937 random(3);
    for (const int bits : {8, 16, 24, 32}) {
        SCOPED_TRACE(bits);
        std::string data;
        for (int i = 0; i < 140'001 * 2 * bits / 8; ++i)
            data += static_cast<char>(random());
        const auto source =
            Source::open(write(wave(format(1, 2, 8000, bits) + chunk("data", data))));
        ASSERT_EQ(source->frames(), 140'001);
        std::vector<double> values(140'001 * 2);
        source->read(0, source->frames(), values.data());
        for (int level = 0; level < source->peaks().levels(); ++level)
            for (int channel = 0; channel < 2; ++channel) {
                std::int64_t first = 0;
                for (const Peak peak : source->peaks().level(channel, level)) {
                    double low = 1, high = -1;
                    const auto end = std::min(first + Peaks::framesAt(level), source->frames());
                    for (; first < end; ++first) {
                        low = std::min(low, values[static_cast<std::size_t>(first * 2 + channel)]);
                        high =
                            std::max(high, values[static_cast<std::size_t>(first * 2 + channel)]);
                    }
                    ASSERT_EQ(peak.minimum, std::floor(low * 32768));
                    ASSERT_EQ(peak.maximum, std::min(std::ceil(high * 32768), 32767.0));
                }
                ASSERT_EQ(first, source->frames());
            }
    }
}

TEST_F(SourceTest, HoldsTheFileThroughRenamesButNotThroughChanges) {
    const auto path = write(wave(format(1, 1, 8000, 16) + chunk("data", "abcdefgh")));
    const auto source = Source::open(path);
    std::filesystem::rename(path, folder_ / "other");
    write("something else");
    EXPECT_NO_THROW(source->checkUnchanged());
    double value = 0;
    source->read(3, 1, &value);
    EXPECT_EQ(value, ('g' + 'h' * 256) / 32768.0);
    EXPECT_THROW(source->read(3, 2, &value), SoundError);

    std::filesystem::resize_file(folder_ / "other", 46);
    for (const bool reading : {false, true})
        try {
            reading ? source->read(3, 1, &value) : source->checkUnchanged();
            ADD_FAILURE() << "no failure";
        } catch (const SoundError& error) {
            EXPECT_EQ(error.failure(), SoundFailure::SourceChanged);
        }
}

TEST_F(SourceTest, ReportsEachPercentOnceAndStopsWhenAsked) {
    const auto path = write(wave(format(1, 1, 8000, 8) + chunk("data", std::string(9 << 20, 'a'))));
    std::vector<int> percents;
    Source::open(path, {[&](int percent) { percents.push_back(percent); }, {}});
    EXPECT_FALSE(percents.empty());
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end(), std::less_equal<>()));
    std::stop_source stop;
    try {
        Source::open(path, {[&](int) { stop.request_stop(); }, stop.get_token()});
        ADD_FAILURE() << "not stopped";
    } catch (const SoundError& error) {
        EXPECT_EQ(error.failure(), SoundFailure::Cancelled);
    }
}

}  // namespace
}  // namespace tarnwick::sound
