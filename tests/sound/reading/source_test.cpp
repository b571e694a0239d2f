#include "sound/reading/source.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <random>
#include <tuple>

#include "sound/reading/source_headers.h"
#include "sound/samples/sample_coding.h"
#include "support/test_sounds.h"

// Files are built byte by byte, so that the readers are tested independently of our writers.

namespace tarnwick::sound {
namespace {

std::string chunk(const std::string& name, const std::string& body, bool big = false) {
    return name + number(body.size(), 4, big) + body + std::string(body.size() % 2, '\0');
}

std::string manyChunks(int count) {
    std::string all;
    for (; count > 0; --count)
        all += chunk("junk", "");
    return all;
}

// A format chunk; `block` is the size of a frame, 0 for the usual one.
std::string format(int tag, int channels, std::uint64_t rate, int bits, int block = 0) {
    if (block == 0) block = channels * ((bits + 7) / 8);
    return chunk("fmt ", number(tag, 2) + number(channels, 2) + number(rate, 4) +
                             number(rate * block, 4) + number(block, 2) + number(bits, 2));
}

// A format chunk for samples in blocks.
std::string blocks(int tag, int channels, int bytes, int bits, const std::string& more = "") {
    return chunk("fmt ", number(tag, 2) + number(channels, 2) + number(8000, 4) + number(4096, 4) +
                             number(bytes, 2) + number(bits, 2) + number(2, 2) + number(0, 2) +
                             more);
}

std::string extensible(int tag, int bits, char last = '\x71') {
    std::string body = format(0xFFFE, 1, 48000, bits).substr(8) + number(22, 2) + number(bits, 2) +
                       number(4, 4) + number(tag, 2);
    body += std::string("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B", 13);
    return chunk("fmt ", body + last);
}

std::string wave(const std::string& chunks, const std::string& kind = "RIFF") {
    return kind + number(chunks.size() + 4, 4) + "WAVE" + chunks;
}

// The format chunk of an AIFF file, or with a kind of coding that of an AIFC file. The rate is
// mantissa x 2^(exponent - 31).
std::string common(int channels, int frames, int bits, const std::string& kind = "",
                   int exponent = 15, std::uint32_t mantissa = 44100u << 16) {
    return chunk("COMM",
                 number(channels, 2, true) + number(frames, 4, true) + number(bits, 2, true) +
                     number(16383 + exponent, 2, true) + number(mantissa, 4, true) + number(0, 4) +
                     kind,
                 true);
}

// The sample chunk, with something between its header and the samples.
std::string sound(const std::string& samples, const std::string& between = "") {
    return chunk("SSND", number(between.size(), 4, true) + number(0, 4) + between + samples, true);
}

std::string form(const std::string& chunks, const std::string& kind = "AIFF") {
    return chunk("FORM", kind + chunks, true);
}

std::string aiff(int frames, int bits, const std::string& kind, const std::string& samples) {
    return form(common(1, frames, bits, kind) + chunk("NAME", "odd", true) + sound(samples),
                kind.empty() ? "AIFF" : "AIFC");
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

TEST_F(SourceTest, KnowsEveryFormatAndCoding) {
    using enum Coding;
    const auto formatOf = [](Coding coding, int rate, int channels) {
        const bool floating = coding == LittleFloat32 || coding == LittleFloat64 ||
                              coding == BigFloat32 || coding == BigFloat64;
        const bool law = coding == ALaw || coding == MuLaw;
        const int bits = floating ? 32 : law ? 16 : 8 * bytesOf(coding);
        return AudioFormat{rate, channels, bits, floating};
    };
    const std::tuple<int, int, int, Coding> wavs[] = {
        {1, 1, 1, Unsigned8},      {1, 8, 1, Unsigned8},      {1, 9, 2, Little16},
        {1, 16, 1, Little16},      {1, 16, 2, Little16},      {1, 16, 5, Little16},
        {1, 24, 3, Little24},      {1, 24, 4, Little32},      {1, 32, 4, Little32},
        {3, 32, 4, LittleFloat32}, {3, 64, 8, LittleFloat64}, {6, 8, 1, ALaw},
        {7, 8, 1, MuLaw}};
    for (const auto& [tag, bits, block, coding] : wavs)
        for (const auto& [channels, rate] : {std::pair(1, 1), {2, 768'000}}) {
            const std::string header = format(tag, channels, rate, bits, block * channels);
            const auto file = write(wave(header + chunk("data", std::string(32, 'a'))));
            const StoredSound sound = readWaveHeader(*SourceFile::open(file))->sound;
            EXPECT_EQ(sound.coding, coding) << tag << ", " << bits << " bits";
            EXPECT_EQ(sound.format, formatOf(coding, rate, channels));
            EXPECT_EQ(sound.frames, 32 / (channels * bytesOf(coding)));
        }
    const std::tuple<const char*, int, Coding> aiffs[] = {
        {"", 1, Signed8},         {"", 8, Signed8},         {"", 9, Big16},
        {"", 32, Big32},          {"NONE", 16, Big16},      {"twos", 16, Big16},
        {"in24", 24, Big24},      {"in32", 32, Big32},      {"sowt", 16, Little16},
        {"sowt", 24, Little24},   {"sowt", 32, Little32},   {"raw ", 8, Unsigned8},
        {"alaw", 16, ALaw},       {"ALAW", 16, ALaw},       {"ulaw", 16, MuLaw},
        {"ULAW", 16, MuLaw},      {"fl32", 32, BigFloat32}, {"FL32", 32, BigFloat32},
        {"fl64", 64, BigFloat64}, {"FL64", 64, BigFloat64}};
    for (const auto& [kind, bits, coding] : aiffs) {
        const auto file = write(aiff(1, bits, kind, "abcdefgh"));
        const StoredSound sound = readAiffHeader(*SourceFile::open(file))->sound;
        EXPECT_EQ(sound.coding, coding) << kind << ", " << bits << " bits";
        EXPECT_EQ(sound.format, formatOf(coding, 44100, 1));
    }
    for (const auto& [rate, exponent, mantissa] :
         {std::tuple(1, 0, 1u << 31), {768'000, 19, 768'000u << 12}}) {
        const auto file = write(form(common(1, 1, 8, "", exponent, mantissa) + sound("a")));
        EXPECT_EQ(Source::open(file)->format(), (AudioFormat{rate, 1, 8, false}));
    }
}

TEST_F(SourceTest, FindsTheSamplesInEveryLayout) {
    const std::string format16 = format(1, 1, 8000, 16);
    const std::string two = number(0x4000, 2) + number(0x8000, 2);
    const std::string data = chunk("data", two);
    const std::string big = number(0x4000, 2, true) + number(0x8000, 2, true);
    const std::string common16 = common(1, 2, 16);
    const std::string unsized = "SSND" + number(8, 4, true) + number(0, 8) + big;
    const auto rf64 = [&](const std::string& sizes, const std::string& samples) {
        return wave(chunk("ds64", sizes) + format16 + "data" + number(0xFFFFFFFF, 4) + samples,
                    "RF64");
    };
    const std::string list = chunk("LIST", "x");
    const std::pair<const char*, std::string> layouts[] = {
        {"plain", wave(format16 + data)},
        {"extensible", wave(extensible(1, 16) + data)},
        {"extensible float",
         wave(extensible(3, 32) + chunk("data", number(0x3F000000, 4) + number(0xBF800000, 4)))},
        {"odd chunks", wave(chunk("junk", "odd") + format16 + list + data + chunk("cue ", "abc"))},
        {"no padding",
         wave("junk" + number(3, 4) + "odd" + format16 + "LIST" + number(1, 4) + "x" + data)},
        {"many chunks", wave(manyChunks(19'998) + format16 + data)},
        {"two formats", wave(format16 + format(1, 1, 8000, 8) + data + data)},
        {"stereo, its frames larger", wave(format(1, 2, 8000, 16, 7) + data)},
        {"RF64", rf64(number(0, 8) + number(4, 8) + number(0, 12), two + list)},
        {"RF64 without a size", rf64(number(0, 28), two)},
        {"RF64 with a size beyond", rf64(number(0, 8) + number(~0ull, 8), two)},
        {"RF64 with half a size", rf64(number(0, 8) + number(2, 7), two)},
        {"BW64", wave(format16 + data, "BW64")},
        {"size never filled in", wave(format16 + "data" + number(0, 4) + two)},
        {"size unknown", wave(format16 + "data" + number(0xFFFFFFFF, 4) + two)},
        {"cut off in a frame", wave(format16 + "data" + number(1000, 4) + two + "x")},
        {"AIFF, chunks twice", form(common16 + common(2, 1, 8) + sound(big) + sound("abcd"))},
        {"AIFF, the first samples count", form(sound(big, "gap ") + sound("abcd") + common16)},
        {"AIFF, frames not counted", form(common(1, 0, 16) + sound(big))},
        {"AIFF, too many counted", form(common(1, 9, 16) + sound(big + "x"))},
        {"AIFF, fewer counted", form(common(1, 2, 16) + sound(big + big))},
        {"AIFF, samples without a size", form(common16 + unsized)}};
    for (const auto& [name, file] : layouts)
        EXPECT_EQ(samples(file), (std::vector<double>{0.5, -1})) << name;
    EXPECT_EQ(samples(aiff(1, 16, "", big)), std::vector<double>{0.5});
}

TEST_F(SourceTest, TellsHowLongAFileThatIsCutOffClaimsToBe) {
    // What it holds and claims, in ms.
    const auto lengths = [&](const std::string& file) {
        const auto [held, claimed] = Source::probe(write(file));
        return std::pair<int, int>(held, claimed);
    };
    const std::string twoMs(4, 'x');  // at 1 kHz
    for (const auto& [size, ms] :
         std::map<unsigned, int>{{1000, 500}, {4, 0}, {0, 0}, {0x7FFFFFFF, 0}, {0xFFFFFFFF, 0}})
        EXPECT_EQ(lengths(wave(format(1, 1, 1000, 16) + "data" + number(size, 4) + twoMs)),
                  std::pair(2, ms));
    const std::string whole = aiff(441, 16, "", std::string(882, 'x'));
    EXPECT_EQ(lengths(whole), std::pair(10, 0));
    EXPECT_EQ(lengths(whole.substr(0, whole.size() - 445)), std::pair(4, 10));
}

TEST_F(SourceTest, BelievesNoSizeThatALongFileContradicts) {
    constexpr std::int64_t kMost = INT32_MAX, kLong = 3'000'000'001, kLonger = 5'000'000'000;
    const std::string sizes = chunk("ds64", number(0, 8) + number(kLonger, 8));
    const std::tuple<std::string, std::int64_t, std::int64_t, std::string, std::int64_t> cases[] = {
        {"", 1000, kMost, "", 1000},
        {"", 1000, kMost + 1, "", kMost + 1},
        {"", kLong, kLong + 9, chunk("LI ~", ""), kLong},
        {"", kLong, kLong + 9, "", kLong + 9},
        {"", kLong, kLong + 9, chunk("\x1FIST", ""), kLong + 9},
        {"", kLong, kLong + 9, chunk("LIS\x7F", ""), kLong + 9},
        {"", kLong, kLong + 9, "LIST" + number(1, 4), kLong + 9},
        {chunk("ds64", number(0, 8) + number(1, 8)), 0xFFFFFFFF, 9, "", 1},
        {sizes, 0xFFFFFFFF, kLonger + 8, "", kLonger}};
    for (const auto& [sized, claimed, rest, end, frames] : cases) {
        const std::string head = wave(sized + format(1, 1, 8000, 8) + "data" + number(claimed, 4));
        const auto path = write(head);
        std::filesystem::resize_file(path, std::ssize(head) + rest - std::ssize(end));
        std::ofstream(path, std::ios::binary | std::ios::app) << end;
        EXPECT_EQ(readWaveHeader(*SourceFile::open(path))->sound.frames, frames)
            << claimed << " of " << rest << " " << end;
    }
}

TEST_F(SourceTest, PredictsByTheWeightsThatTheFileLists) {
    const std::string first = number(128, 2) + number(64, 2);
    const std::string second = number(0xFF00, 2) + number(0x200, 2);  // -1 and 2
    std::string most = second;
    for (int i = 0; i < 255; ++i)
        most = first + most;
    const std::tuple<int, std::string, char, int, int> cases[] = {
        {1, first, '\0', 600, 550},          {2, first + second, '\1', -200, 2200},
        {1, first + second, '\1', 600, 550}, {2, first + second.substr(0, 3), '\1', 600, 550},
        {0, second, '\0', 1000, 1000},       {256, most, '\xFF', -200, 2200},
        {256, most, '\xFE', 600, 550}};
    for (const auto& [listed, weights, chosen, third, fourth] : cases) {
        const std::string block =
            chosen + number(16, 2) + number(1000, 2) + number(400, 2) + std::string(1, '\0');
        const auto source = Source::open(
            write(wave(blocks(2, 1, 8, 4, number(listed, 2) + weights) + chunk("data", block))));
        EXPECT_EQ(source->format(), (AudioFormat{8000, 1, 16, false}));
        EXPECT_EQ(samplesOf(*source), (std::vector<double>{400 / 32768.0, 1000 / 32768.0,
                                                           third / 32768.0, fourth / 32768.0}))
            << listed << " weights";
    }
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
        {"less than a frame", wave(format(1, 2, 8000, 16) + chunk("data", "abc"))},
        {"rate 0", wave(format(1, 1, 0, 16) + data)},
        {"rate beyond", wave(format(1, 1, 768001, 16) + data)},
        {"rate far beyond", wave(format(1, 1, 0x80000001, 16) + data)},
        {"no channels", wave(format(1, 0, 8000, 16) + data)},
        {"17 channels", wave(format(1, 17, 8000, 16) + data)},
        {"0 bits", wave(format(1, 1, 8000, 0) + data)},
        {"33 bits", wave(format(1, 1, 8000, 33) + data)},
        {"floats of 16 bits", wave(format(3, 1, 8000, 16) + data)},
        {"unknown extension", wave(extensible(1, 16, 'x') + data)},
        {"short extension", wave(chunk("fmt ", extensible(1, 16).substr(8, 38)) + data)},
        {"other letters", wave(format16 + data, "RIFX")},
        {"RIFF of another kind", "RIFF" + number(40, 4) + "AVI " + format16 + data},
        {"no samples but chunks",
         wave(format16 + chunk("data", "") + "junk" + number(3, 4) + "odd" + chunk("LIST", ""))},
        {"unknown coding", wave(format(0x55, 1, 8000, 16) + data)},
        {"law, rate 0", wave(format(7, 1, 0, 8) + data)},
        {"blocks of 0 bytes", wave(blocks(0x11, 1, 0, 4) + data)},
        {"blocks without samples", wave(blocks(2, 2, 13, 4) + data)},
        {"ADPCM of 3 bits", wave(blocks(0x11, 1, 256, 3) + data)},
        {"GSM in stereo", wave(blocks(0x31, 2, 65, 0) + data)},
        {"GSM in other blocks", wave(blocks(0x31, 1, 33, 0) + data)},
        {"less than a block", wave(blocks(0x31, 1, 65, 0) + data)},
        {"G.721", wave(blocks(0x40, 1, 64, 4) + data)},
        {"AIFF without sound", aiff(0, 16, "", "")},
        {"AIFF, offset beyond",
         form(common(1, 1, 16) + chunk("SSND", number(9, 4, true) + "1234ab"))},
        {"AIFF, rate below", form(common(1, 1, 8, "", -1, 3u << 30) + sound("a"))},
        {"AIFF, rate beyond", form(common(1, 1, 8, "", 40, 1u << 31) + sound("a"))},
        {"AIFF, no channels", form(common(0, 1, 8) + sound("a"))},
        {"AIFF, 0 bits", aiff(1, 0, "", "abcd")},
        {"AIFF, 33 bits", aiff(1, 33, "", "abcdefgh")},
        {"AIFC, unknown coding", aiff(1, 16, "abcd", "ab")},
        {"FORM of another kind", form(common(1, 1, 8) + sound("a"), "8SVX")},
        {"AIFF in another file", "LIST" + form(common(1, 1, 8) + sound("a")).substr(4)}};
    const auto failure = [&](const std::string& file) {
        return failureOf([&] { Source::open(write(file)); });
    };
    for (const auto& [name, file] : noSounds) {
        EXPECT_EQ(failure(file), SoundFailure::NotASound) << name;
        EXPECT_THROW(Source::probe(folder_.path() / "take.mp3"), SoundError) << name;
    }
    const std::string body = format16.substr(8);
    const std::pair<const char*, std::string> damaged[] = {
        {"in the format", wave(format16 + data).substr(0, 30)},
        {"before the data", wave(format16 + data).substr(0, 36)},
        {"short format", wave(chunk("fmt ", body.substr(0, 15)) + data)},
        {"format after the data", wave(data + format16)},
        {"too many chunks", wave(manyChunks(19'999) + format16 + data)},
        {"AIFF in the format", aiff(1, 16, "", "ab").substr(0, 40)},
        {"AIFF before the samples", form(common(1, 1, 16) + "SSND" + number(8, 4, true) + "1234")},
        {"AIFF, short format",
         form("COMM" + number(17, 4, true) + common(1, 1, 8).substr(8) + sound("a"))},
        {"AIFC, no coding", form(common(1, 1, 8) + sound("a"), "AIFC")}};
    for (const auto& [name, file] : damaged)
        EXPECT_EQ(failure(file), SoundFailure::Damaged) << name;
    const auto fifo = folder_.path() / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const auto& path : {folder_.path(), fifo})
        EXPECT_EQ(failureOf([&] { Source::open(path); }), SoundFailure::NotASound) << path;
    EXPECT_EQ(failureOf([&] { SourceFile::scratch(INT64_MAX / 2); }), SoundFailure::NoSpace);
    std::array<std::uint8_t, 4> bytes;  // nothing is mapped at the address 0
    EXPECT_EQ(failureOf([&] { SourceFile::open("/proc/self/mem")->readSome(0, bytes); }),
              SoundFailure::Damaged);
    EXPECT_EQ(failureOf([&] { Source::open(folder_.path() / "gone.wav"); }),
              SoundFailure::NotFound);
}

TEST_F(SourceTest, GivesEveryStretchAndItsPeaks) {
    const NoiseSound noise({44100, 2, 16, false}, 100'003);
    std::string bytes;
    for (std::int64_t i = 0; i < 2 * noise.frames(); ++i)
        bytes += number(static_cast<std::uint64_t>(noise.sample(i)), 2);
    const auto source = Source::open(write(wave(format(1, 2, 44100, 16) + chunk("data", bytes))));
    EXPECT_TRUE(samplesOf(*source) == samplesOf(noise));
    std::string read(400, '\0');
    const auto stored = [&](std::int64_t first, std::int64_t count, Coding coding) {
        return source->readStored(first, count, coding,
                                  reinterpret_cast<std::uint8_t*>(read.data()));
    };
    EXPECT_TRUE(stored(99'903, 100, Coding::Little16));
    EXPECT_TRUE(read == bytes.substr(4 * 99'903));
    EXPECT_FALSE(stored(0, 1, Coding::Big16));
    EXPECT_TRUE(stored(100'003, 0, Coding::Little16));
    double values[4];
    for (const auto& [first, count] : {std::pair(-1, 1), {0, -1}, {100'002, 2}, {100'004, 0}}) {
        EXPECT_EQ(failureOf([&] { source->read(first, count, values); }), SoundFailure::BadRange);
        EXPECT_EQ(failureOf([&] { stored(first, count, Coding::Little16); }),
                  SoundFailure::BadRange);
    }
    std::vector<Peak> wanted[2];
    for (std::int64_t i = 0; i < 2 * noise.frames(); ++i) {
        const auto sample = static_cast<std::int16_t>(noise.sample(i));
        if (i % 512 < 2) wanted[i % 2].push_back({sample, sample});
        Peak& peak = wanted[i % 2].back();
        peak = {std::min(peak.minimum, sample), std::max(peak.maximum, sample)};
    }
    for (const int channel : {0, 1})
        EXPECT_TRUE(std::ranges::equal(source->peaks().level(channel, 0), wanted[channel]));
    const auto floats = Source::open(write(wave(format(3, 1, 8000, 32) + chunk("data", "abcd"))));
    EXPECT_FALSE(floats->readStored(0, 1, Coding::LittleFloat32, nullptr));  // may be a NaN
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

    const auto changed = [&] { return failureOf([&] { source->checkUnchanged(); }); };
    const auto time = std::filesystem::last_write_time(folder_.path() / "other");
    for (const auto later :
         {std::chrono::nanoseconds(1), std::chrono::nanoseconds(1'000'000'000)}) {
        std::filesystem::last_write_time(folder_.path() / "other", time + later);
        EXPECT_EQ(changed(), SoundFailure::SourceChanged) << later.count();
    }
    std::filesystem::resize_file(folder_.path() / "other", 46);
    std::filesystem::last_write_time(folder_.path() / "other", time);
    EXPECT_EQ(changed(), SoundFailure::SourceChanged);
    EXPECT_EQ(failureOf([&] { source->read(3, 1, &value); }), SoundFailure::SourceChanged);
}

TEST_F(SourceTest, ReportsEachPercentOnceAndStopsWhenAsked) {
    const auto path = write(wave(format(1, 1, 8000, 8) + chunk("data", std::string(9 << 20, 'a'))));
    std::vector<int> percents;
    Source::open(path, {[&](int percent) { percents.push_back(percent); }, {}});
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end(), std::less_equal<>()));
    std::stop_source stop;
    const Progress stopping{[&](int) { stop.request_stop(); }, stop.get_token()};
    for (const char* when : {"at the first report", "before"})
        EXPECT_EQ(failureOf([&] { Source::open(path, stopping); }), SoundFailure::Cancelled)
            << when;
}

}  // namespace
}  // namespace tarnwick::sound
