#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cmath>
#include <csignal>
#include <fstream>
#include <numeric>

#include "sound/samples/sound_error.h"
#include "sound/samples/wav_codecs.h"
#include "sound/writing/atomic_file.h"
#include "sound/writing/ordered_blocks.h"
#include "sound/writing/rate_blocks.h"
#include "sound/writing/resampler.h"
#include "sound/writing/sound_writer.h"
#include "support/by_sndfile.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Writer : public testing::Test {
  protected:
    TempFolder folder_;
    const std::filesystem::path target_ = folder_.path() / "out.wav";
};

TEST_F(Writer, ChannelsAreCopiedAndAveragedAndFloatsKeptBeyondFullScale) {
    SF_INFO info;
    const ListSound floats({48000, 1, 32, true}, {0.1f, -2.5f, 1.0e-30f});
    writeSound(floats, 0, 3, {Container::Wav, floats.format()}, target_);
    EXPECT_THAT(bySndfile(target_, info), ElementsAre(0.1f, -2.5f, 1.0e-30f));
    const ListSound mono({44100, 1, 16, false}, {0.25, -0.5});
    writeSound(mono, 0, 2, {Container::Wav, {44100, 2, 16, false}}, target_);
    EXPECT_THAT(bySndfile(target_, info), ElementsAre(0.25f, 0.25f, -0.5f, -0.5f));
    const ListSound stereo({44100, 2, 16, false}, {0.5, 0.25, 1.0, -1.0});
    writeSound(stereo, 0, 2, {Container::Wav, {44100, 1, 16, false}}, target_);
    EXPECT_THAT(bySndfile(target_, info), ElementsAre(0.375f, 0.0f));
}

TEST_F(Writer, RateChangesKeepLengthAndTone) {
    for (const auto& [from, to] : std::vector<std::pair<int, int>>{
             {44100, 48000}, {48000, 44100}, {8000, 192000}, {192000, 8000}, {22050, 44100}}) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        const ToneSound tone({from, 1, 24, false}, from / 2 + 7, 440.0);
        writeSound(tone, 0, tone.frames(), {Container::Wav, {to, 2, 32, true}}, target_);
        SF_INFO info;
        const std::vector<double> samples = bySndfile(target_, info);
        ASSERT_EQ(info.frames, std::llround(static_cast<double>(tone.frames()) * to / from));
        double worst = 0.0;  // away from the ends, where the filter has all its input
        for (std::int64_t i = to / 10; i < info.frames - to / 10; ++i) {
            worst = std::max(worst, std::fabs(samples[2 * i + 1] - tone.valueAt(double(i) / to)));
        }
        EXPECT_LT(worst, 2.0e-7);  // the precision of a float and some ripple
    }
}

TEST(Resampler, RefusesWhatCannotBe) {
    for (const auto& [from, to, channels] : {std::tuple(0, 8000, 1), {8000, 0, 1}, {8000, 8000, 0}})
        EXPECT_EQ(failureOf([&, a = from, b = to, n = channels] { Resampler(a, b, n, 1); }),
                  SoundFailure::BadFormat);
    EXPECT_NO_THROW(Resampler(1, 1, 1, 1));
}

std::vector<double> inOnePiece(const FrameReader& sound, std::int64_t first, int to) {
    const auto [from, channels, bits, floating] = sound.format();
    const std::int64_t frames = sound.frames() - first;
    std::vector<double> whole(static_cast<std::size_t>(frames * channels));
    sound.read(first, frames, whole.data());
    Resampler resampler(from, to, channels, frames);
    std::vector<double> made;
    for (std::int64_t at = 0; at <= frames; at += 10'000) {
        const std::int64_t count = std::min<std::int64_t>(10'000, frames - at);
        const auto& ready = resampler.process(whole.data() + at * channels, count);
        made.insert(made.end(), ready.begin(), ready.end());
    }
    const std::vector<double>& rest = resampler.finish();
    made.insert(made.end(), rest.begin(), rest.end());
    return made;
}

// The largest difference between two values; infinite if the sizes differ.
double worstDifference(const std::vector<double>& one, const std::vector<double>& other) {
    if (one.size() != other.size()) return std::numeric_limits<double>::infinity();
    double worst = 0.0;
    for (std::size_t i = 0; i < one.size(); ++i)
        worst = std::max(worst, std::fabs(one[i] - other[i]));
    return worst;
}

// Ratios that are split, from one frame to another number of them, and ratios that are not.
constexpr int kExact[][2] = {{1, 2},   {1, 3},   {1, 4},      {1, 8},     {1, 12},  {1, 16},
                             {1, 24},  {3, 4},   {3, 8},      {3, 2},     {3, 1},   {6, 1},
                             {12, 1},  {24, 1},  {8, 3},      {10, 1999}, {24, 25}, {25, 24},
                             {51, 25}, {53, 38}, {1999, 2000}};
constexpr int kOthers[][2] = {{2, 1},   {1, 6},   {9, 1999}, {2000, 2001},
                              {24, 23}, {51, 26}, {53, 37}};

TEST(RateBlocks, AreIndependentForRatiosThatAllowIt) {
    for (const auto& [from, to] : kExact)
        EXPECT_TRUE(splitsExactly(from * 50, to * 50)) << from << " to " << to;
    for (const auto& [from, to] : kOthers)
        EXPECT_FALSE(splitsExactly(from * 50, to * 50)) << from << " to " << to;
    const struct {
        int from, to, channels;
        std::int64_t frames, out, count;
        int threads;
        bool isLong;
    } rows[] = {{44100, 44100, 1, 3 * 32768 + 1, 3 * 32768 + 1, 4, 1, false},
                {44100, 44100, 2, 1 << 20, 1 << 20, 64, 1, true},
                {44100, 44100, 1, (1 << 20) - 1, (1 << 20) - 1, 32, 1, false},
                {44100, 48000, 1, 959'616, 1'044'480, 4, 2, false},
                {44100, 48000, 1, 959'615, 1'044'479, 59, 1, false},
                {44100, 48000, 2, 479'808, 522'240, 4, 2, false},
                {8000, 192000, 1, 45'000, 1'080'000, 5, 2, true}};
    for (const auto& [from, to, channels, frames, out, count, threads, isLong] : rows) {
        const NoiseSound sound({from, channels, 16, false}, frames + 7);
        const RateBlocks blocks(sound, 7, 7 + frames, to, channels);
        EXPECT_EQ(std::tuple(blocks.frames(), blocks.count(), blocks.threads(), blocks.isLong()),
                  std::tuple(out, count, threads, isLong))
            << frames << " frames, " << from << " to " << to;
    }
}

// The stereo ones are split but too short for extra threads.
TEST(RateBlocks, JoinToTheResultOfASinglePass) {
    const struct {
        int from, to, channels;
        bool splits;
    } rows[] = {{44100, 48000, 1, true},  {48000, 44100, 2, true},  {8000, 192000, 1, true},
                {96000, 8000, 1, true},   {96000, 44100, 1, true},  {11025, 48000, 1, true},
                {44100, 8000, 1, true},   {48000, 16000, 1, true},  {8000, 44100, 2, true},
                {44100, 24000, 1, false}, {22051, 48000, 1, false}, {8000, 48000, 1, false}};
    const TempFolder folder;
    std::int64_t odd = 0;
    for (const auto& [from, to, channels, splits] : rows) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        const std::int64_t frames = 1'400'000ll / channels * from / to + (odd += 37);
        const NoiseSound sound({from, channels, 24, false}, frames + 5);
        EXPECT_EQ(RateBlocks(sound, 5, 5 + frames, to, 2).threads() > 1, splits);
        std::vector<double> expected = inOnePiece(sound, 5, to);
        for (double& value : expected)
            value = std::clamp(value, -1.0, 1.0);
        const auto file = folder.path() / "out.wav";
        writeSound(sound, 5, sound.frames(), {Container::Wav, {to, channels, 32, false}}, file);
        SF_INFO info;
        EXPECT_LT(worstDifference(bySndfile(file, info), expected), 0x1p-31 * 1.01);
    }
}

TEST(OrderedBlocks, AreMadeOnceEachAndHandedOutInOrder) {
    std::mutex mutex;
    std::vector<std::int64_t> made, expected(20);
    std::iota(expected.begin(), expected.end(), 0);
    {
        OrderedBlocks blocks(20, 2, [&](std::int64_t number, SoundBlock& block, auto&) {
            block.values = {double(number)};
            const std::lock_guard lock(mutex);
            made.push_back(number);
        });
        for (const std::int64_t number : expected)
            EXPECT_THAT(blocks.next().values, ElementsAre(number));
    }
    std::ranges::sort(made);
    EXPECT_EQ(made, expected);
}

TEST_F(Writer, RefusalsLeaveTheOldFileUntouched) {
    std::ofstream(target_) << "old";
    const NoiseSound sound({44100, 1, 16, false}, 100'000);
    const OutputFormat wav{Container::Wav, sound.format()};
    using Range = std::pair<std::int64_t, std::int64_t>;
    const auto outcome = [&](Range range, const OutputFormat& output,
                             const std::filesystem::path& target) {
        return failureOf([&] { writeSound(sound, range.first, range.second, output, target); });
    };
    for (const Range& range : {Range{5, 4}, Range{-1, 4}, Range{0, 100'001}})
        EXPECT_EQ(outcome(range, wav, target_), SoundFailure::BadRange) << range.second;
    for (const AudioFormat format : {AudioFormat{7999, 1, 16, false},
                                     {192001, 1, 16, false},
                                     {44100, 3, 16, false},
                                     {44100, 1, 12, false}})
        EXPECT_EQ(outcome({0, 4}, {Container::Wav, format}, target_), SoundFailure::BadFormat)
            << format.rate;
    mknod((folder_.path() / "pipe").c_str(), S_IFIFO | 0666, 0);
    mknod((folder_.path() / "socket").c_str(), S_IFSOCK | 0666, 0);
    for (const auto& [to, name] :
         {std::pair{"pipe", "aside"}, {"gone", "astray"}, {"loop", "loop"}})
        std::filesystem::create_symlink(to, folder_.path() / name);
    const std::vector<std::string> names = folder_.names();
    for (const char* target : {"gone/x.wav", "", "pipe", "socket", "aside", "astray", "loop"})
        EXPECT_EQ(outcome({0, 4}, wav, folder_.path() / target), SoundFailure::WriteFailed)
            << target;
    EXPECT_EQ(outcome({0, 4}, wav, {}), SoundFailure::WriteFailed);
    EXPECT_EQ(outcome({0, 4}, wav, folder_.path().string()), SoundFailure::WriteFailed);
    EXPECT_EQ(contentOf(target_), "old");
    EXPECT_EQ(folder_.names(), names);
}

TEST_F(Writer, UnfinishedWritesLeaveTheOldFileUntouched) {
    std::ofstream(target_) << "old";
    chmod(target_.c_str(), 0640);
    const AudioFormat format{44100, 1, 16, false};
    // Short sounds are written by the caller alone, long ones with one or two extra threads.
    std::signal(SIGXFSZ, SIG_IGN);
    const std::pair<int, OutputFormat> cases[] = {
        {100'000, {Container::Wav, format}},
        {1'500'000, {Container::Wav, format}},
        {1'500'000, {Container::Wav, {48000, 1, 16, false}}},
        {1'500'000, {Container::Wav, {22050, 1, 16, false}}},
        {1'500'000, {Container::Mp3, format, 128000}},
        {1'500'000, {Container::WavCodec, {44100, 1, 4, false}, 0, kImaAdpcm}},
        {1'500'000, {Container::WavCodec, {44100, 1, 4, false}, 0, kMsAdpcm}},
        {1'500'000, {Container::WavCodec, {44100, 1, 0, false}, 0, kGsm610}}};
    for (const auto& [frames, output] : cases) {
        SCOPED_TRACE(testing::Message() << frames << " frames at " << output.format.rate
                                        << " Hz in " << static_cast<int>(output.container));
        const NoiseSound all(format, frames);
        const BrokenSound broken(format, frames, frames / 2);
        const auto written = [&](const FrameReader& from, const Progress& progress) {
            return failureOf([&] { writeSound(from, 0, frames, output, target_, progress); });
        };
        std::stop_source stop;
        std::vector<int> seen;
        const auto stopAtHalf = [&](int percent) {
            seen.push_back(percent);
            if (percent >= 50) stop.request_stop();
        };
        EXPECT_EQ(written(all, {stopAtHalf, stop.get_token()}), SoundFailure::Cancelled);
        EXPECT_TRUE(std::ranges::adjacent_find(seen, std::greater_equal<>()) == seen.end());
        EXPECT_LT(seen.back(), 70);
        EXPECT_EQ(written(broken, {}), SoundFailure::SourceChanged);
        // Simulates a full disk by limiting the size of files.
        struct rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        for (const rlim_t most : {10, 100'000}) {  // within the header and behind it
            const struct rlimit small { most, limit.rlim_max };
            setrlimit(RLIMIT_FSIZE, &small);
            const auto full = written(all, {});
            setrlimit(RLIMIT_FSIZE, &limit);
            EXPECT_EQ(full, SoundFailure::NoSpace);
        }
        EXPECT_EQ(contentOf(target_), "old");
        EXPECT_THAT(folder_.names(), ElementsAre("out.wav"));
        seen.clear();
        writeSound(all, 0, frames, output, folder_.path() / "new.wav",
                   {[&](int percent) { seen.push_back(percent); }, {}});
        EXPECT_EQ(seen.back(), 100);
        std::filesystem::remove(folder_.path() / "new.wav");
    }
    std::vector<int> seen;
    writeSound(NoiseSound(format, 4), 0, 4, {Container::Wav, format}, target_,
               {[&](int percent) { seen.push_back(percent); }, {}});
    EXPECT_THAT(seen, ElementsAre(0, 100));
    struct stat now;
    ASSERT_EQ(stat(target_.c_str(), &now), 0);
    EXPECT_EQ(now.st_mode & 0777, 0640u);
}

TEST_F(Writer, EachPercentIsToldOnce) {
    const AudioFormat format{44100, 1, 16, false};
    const std::pair<int, std::vector<int>> rows[] = {
        {0, {100}}, {100'000, {0, 32, 65, 98, 100}}, {1 << 22, {}}};
    for (const auto& [frames, percents] : rows) {
        std::vector<int> seen, all(101);
        std::iota(all.begin(), all.end(), 0);
        writeSound(NoiseSound(format, frames), 0, frames, {Container::Wav, format}, target_,
                   {[&](int percent) { seen.push_back(percent); }, {}});
        EXPECT_EQ(seen, frames > 100'000 ? all : percents) << frames;
        EXPECT_EQ(std::filesystem::file_size(target_), 44u + 2 * frames);
    }
}

std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(AtomicFile, BothKindsOfTemporaryReplaceTheTargetOnlyAtTheEnd) {
    for (const auto kind : {AtomicFile::Temporary::Nameless, AtomicFile::Temporary::Hidden}) {
        const bool hidden = kind == AtomicFile::Temporary::Hidden;
        TempFolder folder;
        const std::filesystem::path target = folder.path() / "name";
        const auto begin = [kind](const std::filesystem::path& name) {
            auto file = std::make_unique<AtomicFile>(name, kind);
            file->write("abc", 3);
            file->writeAt(1, "X", 1);
            file->write("def", 3);
            return file;
        };
        begin(target).reset();
        EXPECT_THAT(folder.names(), IsEmpty());
        begin(target)->commit();
        EXPECT_EQ(contentOf(target), "aXcdef");
        const TempFolder links;
        const std::filesystem::path usual = links.path() / "usual";
        std::ofstream(usual) << "made by others";
        EXPECT_EQ(status(target).permissions(), status(usual).permissions());
        std::filesystem::remove(usual);
        std::filesystem::create_symlink(target, links.path() / "link");
        for (const auto& name : {target, links.path() / "link"}) {
            std::ofstream(target) << "old";
            const std::ptrdiff_t opened = openFiles();
            auto file = begin(name);
            EXPECT_EQ(contentOf(target), "old");
            EXPECT_THAT(links.names(), ElementsAre("link"));
            EXPECT_TRUE(!hidden || folder.names().size() == 2);
            file->commit();
            file.reset();
            EXPECT_EQ(openFiles(), opened);
            EXPECT_EQ(contentOf(target), "aXcdef");
            EXPECT_THAT(folder.names(), ElementsAre("name"));
        }
        EXPECT_TRUE(std::filesystem::is_symlink(links.path() / "link"));
    }
}

TEST(AtomicFile, AnotherFileThatHasTakenTheNameStays) {
    for (const auto kind : {AtomicFile::Temporary::Nameless, AtomicFile::Temporary::Hidden})
        for (const bool replaces : {false, true}) {
            const TempFolder folder;
            const std::filesystem::path target = folder.path() / "name";
            if (replaces) std::ofstream(target) << "old";
            AtomicFile file(target, kind);
            file.write("new", 3);
            if (replaces) std::filesystem::remove(target);
            std::ofstream(target) << "another";
            EXPECT_THROW(file.commit(), SoundError);
            EXPECT_EQ(contentOf(target), "another");
            EXPECT_THAT(folder.names(), ElementsAre("name"));
        }
}

}  // namespace
}  // namespace tarnwick::sound
