#include "sound/timeline/timeline.h"

#include <gtest/gtest.h>

#include <functional>

#include "sound/timeline/loud_search.h"
#include "sound/timeline/peak_level.h"
#include "sound/timeline/piece_tree.h"
#include "sound/timeline/silence_scan.h"
#include "sound/writing/sound_writer.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

constexpr AudioFormat kMono{44100, 1, 16, false};

std::shared_ptr<const Source> sourceOf(const FrameReader& sound) {
    const TempFolder folder;
    writeSound(sound, 0, sound.frames(), {Container::Wav, sound.format()}, folder.path() / "take");
    return Source::open(folder.path() / "take");
}

TEST(Timeline, RefusesPlacesOutsideTheSound) {
    const Timeline timeline(sourceOf(NoiseSound(kMono, 100)));
    constexpr std::int64_t kMost = (std::int64_t{1} << 48) - 100;
    std::vector<double> samples(100);
    std::vector<std::uint8_t> bytes(200);
    std::vector<PeakRange> columns(1);
    const auto copied = [&](std::int64_t first, std::int64_t count) {
        return timeline.readStored(first, count, Coding::Little16, bytes.data());
    };
    const auto refused = [](const auto& work) {
        return failureOf(work) == std::optional(SoundFailure::BadRange);
    };
    using Pairs = std::vector<std::pair<std::int64_t, std::int64_t>>;
    for (const auto& [first, end] : Pairs{{-1, 5}, {6, 5}, {0, 101}}) {
        EXPECT_TRUE(refused([&, from = first, to = end] { timeline.removed(from, to); }));
        EXPECT_TRUE(refused(
            [&, range = FrameRange{first, end}] { withoutSilence(timeline, range, 589, 1); }));
    }
    for (const auto& [first, count] : Pairs{{-1, 1}, {1, 100}, {1, -1}})
        EXPECT_TRUE(refused([&, at = first, n = count] { timeline.read(at, n, samples.data()); }));
    EXPECT_TRUE(refused([&] { copied(1, 100); }));
    for (const auto& [at, count] : Pairs{{101, 1}, {-1, 1}, {0, -1}, {0, kMost + 1}})
        EXPECT_TRUE(refused([&, place = at, n = count] { timeline.inserted(place, n); }));
    EXPECT_TRUE(refused([&] { timeline.scaled(0, 101, 1); }));
    for (const double gain : {std::nan(""), -1.01e10})
        EXPECT_TRUE(refused([&] { timeline.scaled(0, 1, gain); }));
    EXPECT_TRUE(refused([&] { timeline.pieces(0, 101); }));
    EXPECT_EQ(timeline.inserted(100, kMost).frames(), kMost + 100);
    EXPECT_EQ(timeline.scaled(0, 1, -1e10).pieces(0, 1).at(0).gain, -1e10);
    EXPECT_TRUE(copied(0, 100) && copied(100, 0));
    EXPECT_FALSE(timeline.columns(1, 0, 10, columns));
    EXPECT_FALSE(timeline.columns(-1, 0, 10, columns));
    EXPECT_FALSE(timeline.columns(0, 10, 10, columns));
    EXPECT_FALSE(timeline.columns(0, 0, INFINITY, columns));
    EXPECT_FALSE(timeline.columns(0, 0, 10, {}));
    const Timeline empty = timeline.removed(0, 100);
    EXPECT_EQ(empty.frames(), 0);
    EXPECT_TRUE(findSilences(empty, 589, 1).empty());
    EXPECT_FALSE(audibleRange(empty, 589));
    EXPECT_EQ(empty.inserted(0, 7).frames(), 7);
}

TEST(Timeline, ColumnsReachZeroWhereSilenceBegins) {
    const ListSound offset(kMono, std::vector<double>(8192, 0.5));
    const Timeline timeline = Timeline(sourceOf(offset)).inserted(4096, 2048).scaled(8000, 9000, 2);
    std::vector<PeakRange> columns(3);
    EXPECT_TRUE(timeline.columns(0, 0, 3 * 5120, columns));
    for (const auto& [column, maximum] : {std::pair(0, 0.5f), {1, 1.0f}, {2, 0.0f}}) {
        EXPECT_EQ(columns[column].minimum, 0.0f) << column;
        EXPECT_EQ(columns[column].maximum, maximum) << column;
    }
}

int depthOf(const PieceTree& tree) {
    return tree ? 1 + std::max(depthOf(tree->left), depthOf(tree->right)) : 0;
}

int nodesOf(const PieceTree& tree) {
    return tree ? 1 + nodesOf(tree->left) + nodesOf(tree->right) : 0;
}

TEST(PieceTree, StaysBalancedAndHasNoEmptyPieces) {
    PieceTree tree = sourcePiece(0, 4000);
    const auto cutEverywhere = [&tree] {
        for (std::int64_t at = 0; at < 4000; ++at) {
            const auto [before, from] = split(tree, at);
            tree = joined(before, from);
        }
    };
    cutEverywhere();
    EXPECT_LT(depthOf(tree), 48);
    cutEverywhere();  // now between pieces
    EXPECT_EQ(nodesOf(tree), 4000);
    EXPECT_EQ(silentPiece(0), nullptr);
}

// A recording of whole blocks with one peak each, and a shorter last block. Its file can be changed
// without a trace after the peaks were made, which shows which samples are read.
class BlockSound {
  public:
    explicit BlockSound(const std::vector<int>& peaks) {
        std::vector<double> values(peaks.size() * Peaks::kFinestFrames - 100, 0.0);
        for (std::size_t block = 0; block < peaks.size(); ++block)
            values[block * Peaks::kFinestFrames + 77] = peaks[block] / 32768.0;
        writeSound(ListSound(kMono, values), 0, std::ssize(values), {Container::Wav, kMono}, file_);
        source = Source::open(file_);
    }

    // Overwrites all samples of a block.
    void spoil(std::int64_t block, int value) {
        const auto written = std::filesystem::last_write_time(file_);
        std::string samples;
        for (int i = 0; i < Peaks::kFinestFrames; ++i)
            samples += number(static_cast<std::uint64_t>(value), 2);
        std::fstream out(file_, std::ios::in | std::ios::out | std::ios::binary);
        out.seekp(44 + block * Peaks::kFinestFrames * 2) << samples;
        out.close();
        std::filesystem::last_write_time(file_, written);
    }

    // Leaves only the first `frames`. No other sample can be read then.
    void cutOff(int frames = 0) {
        std::filesystem::resize_file(file_, static_cast<std::uintmax_t>(44 + 2 * frames));
    }

    std::shared_ptr<const Source> source;

  private:
    TempFolder folder_;
    std::filesystem::path file_ = folder_.path() / "take";
};

TEST(Timeline, ColumnsOfTwoBlocksOrMoreReadNoSamples) {
    BlockSound sound({100, 200, 300, 400, 500});
    const Timeline timeline(sound.source);
    std::vector<PeakRange> columns(3);
    const auto filled = [&](double width) {
        return timeline.columns(0, 0, 2 * width, std::span(columns).first(2));
    };
    EXPECT_TRUE(filled(511));
    EXPECT_EQ(columns[1].maximum, 400 / 32768.0f);
    EXPECT_EQ(columns[2].maximum, 0.0f) << "the third is not part of the picture";
    EXPECT_TRUE(timeline.columns(0, 600, 1060, std::span(columns).first(1)));
    EXPECT_EQ(columns[1].maximum, 400 / 32768.0f);
    sound.cutOff(2 * 511);
    EXPECT_TRUE(filled(511)) << "nothing behind the picture is read";
    sound.cutOff(2 * 511 - 1);
    EXPECT_FALSE(filled(511));
    sound.cutOff();
    EXPECT_TRUE(filled(512));
    EXPECT_EQ(columns[0].maximum, 200 / 32768.0f);
}

TEST(PeakLevel, ReadsOnlyBlocksThatMayHoldTheLargestSample) {
    BlockSound sound({32000, 29'998, -29'999, 0, 30'000, 30'000, -30'000});
    for (const int block : {0, 1, 3, 5})
        sound.spoil(block, 32767);
    const Timeline timeline = Timeline(sound.source).scaled(0, 256, -0.5);
    EXPECT_EQ(peakLevel(timeline, {0, timeline.frames()}), 30'000 / 32768.0);
    BlockSound last({29'998, 29'998, 30'000});
    last.spoil(0, 32767);
    last.spoil(1, 32767);
    EXPECT_EQ(peakLevel(Timeline(last.source), {0, 3 * 256 - 100}), 30'000 / 32768.0);
    EXPECT_EQ(peakLevel(Timeline(last.source), {256, 300}), 32767 / 32768.0);  // part of a block
    const BlockSound edges({30'000, 1000, 30'000, 0});  // the loud samples lie outside the range
    EXPECT_EQ(peakLevel(Timeline(edges.source), {100, 550}), 1000 / 32768.0);
}

TEST(SourceSearch, ReadsOnlyBlocksThatMayBeLoud) {
    // With the gain, peaks up to 1178 are quiet, and those from 1180 on certainly loud.
    std::vector<int> peaks(40, 1178);
    peaks[2] = -1179;
    peaks[9] = 1179;
    peaks[20] = -1180;
    peaks[30] = 1180;
    BlockSound sound(peaks);
    for (int block = 0; block < 39; ++block)
        if (block != 2 && block != 9) sound.spoil(block, peaks[block] == 1178 ? 30'000 : 0);
    SourceSearch search(*sound.source, 589 / 32767.0);
    search.setGain(-0.5);
    const auto place = [](std::int64_t block) { return block * 256 + 77; };
    EXPECT_EQ(search.firstLoud(0, 256 * 15), place(2));
    EXPECT_EQ(search.firstLoud(place(2) + 1, 256 * 15), place(9));
    EXPECT_EQ(search.firstLoud(place(9) + 1, 256 * 40 - 100), -1);
    EXPECT_EQ(search.firstLoud(0, place(2)), -1);
    EXPECT_EQ(search.lastLoud(0, 256 * 15), place(9));
    EXPECT_EQ(search.lastLoud(0, place(9)), place(2));
    EXPECT_EQ(search.lastLoud(place(2), place(2) + 1), place(2));
    EXPECT_EQ(search.lastLoud(place(2) + 1, place(9)), -1);

    // Tells of whole blocks near the end.
    EXPECT_EQ(search.quickLoud(0, 256 * 40 - 100), 256 * 30);
    EXPECT_EQ(search.quickLoud(0, 256 * 31 - 1), 256 * 20);
    EXPECT_EQ(search.quickLoud(256 * 20, 256 * 21), 256 * 20);
    EXPECT_EQ(search.quickLoud(256 * 20 + 1, 256 * 21), -1);
    EXPECT_EQ(search.quickLoud(0, 256 * 32), 256 * 30);
    EXPECT_EQ(search.quickLoud(0, 256 * 12), -1);
    Timeline timeline = Timeline(sound.source).inserted(256 * 25, 10).removed(0, 100);
    timeline = timeline.scaled(0, timeline.frames(), -0.5);
    LoudSearch pieces(timeline, 589 / 32767.0);
    EXPECT_EQ(pieces.firstLoud(0, 256), -1);
    EXPECT_EQ(pieces.lastLoud(0, 256), -1);
    EXPECT_EQ(pieces.quickLoud(0, 256 * 12 - 100), -1);
    EXPECT_EQ(pieces.quickLoud(256 * 20 - 100, 256 * 21 - 101), -1);  // less than a block
    EXPECT_EQ(pieces.quickLoud(0, 256 * 25 - 100), 256 * 20 - 100);
    EXPECT_EQ(pieces.quickLoud(0, 256 * 25 - 95), -1);  // ends in the inserted silence
    EXPECT_EQ(pieces.quickLoud(256 * 29, 256 * 31 - 90), 256 * 30 - 90);
    EXPECT_EQ(pieces.quickLoud(256 * 20 - 100, 256 * 21 - 100), 256 * 20 - 100);

    BlockSound full({-32768, 9});
    EXPECT_EQ(LoudSearch(Timeline(full.source), 0.5).quickLoud(0, 256), 0);
    // Samples of 16 bits cannot exceed the highest threshold, so none are read.
    SourceSearch highest(*full.source, 1.0);
    highest.setGain(1.0);
    full.cutOff();
    EXPECT_EQ(highest.firstLoud(0, 400), -1);
    highest.setGain(2.0);
    EXPECT_THROW(highest.firstLoud(0, 400), SoundError);
}

TEST(Scans, RefuseAChangedSourceAlsoWhereTheyWouldReadNothing) {
    BlockSound sound({0, 0});
    const Timeline timeline(sound.source);
    sound.cutOff();
    const std::function<void()> scans[] = {[&] { findSilences(timeline, 589, 1); },
                                           [&] { audibleRange(timeline, 589); },
                                           [&] {
                                               withoutSilence(timeline, {0, 9}, 589, 1);
                                           },
                                           [&] {
                                               peakLevel(timeline, {0, 9});
                                           }};
    for (const auto& scan : scans)
        EXPECT_EQ(failureOf(scan), SoundFailure::SourceChanged);
}

TEST(Scans, TakeAThresholdOutsideItsScaleForTheNearestOnIt) {
    const AudioFormat floats{44100, 1, 32, true};
    const Timeline timeline(sourceOf(ListSound(floats, {0.0, 1.00002, -1e-9, 0.0})));
    for (const auto& [threshold, end] : {std::pair(40'000, 2), {32'767, 2}, {0, 3}, {-40'000, 3}})
        EXPECT_EQ(audibleRange(timeline, threshold), (FrameRange{1, end})) << threshold;
}

TEST(Scans, ReportProgressAndStop) {
    BlockSound sound({0, 9000, 0, 0, 0, 9000, 0, 9000});
    const Timeline whole(sound.source);
    const Timeline parts = whole.inserted(256, 256).inserted(1024, 300);
    const Timeline noise(sourceOf(NoiseSound(kMono, 200'000)));
    using Work = std::function<void(const Progress&)>;
    const Work cut = [&](const auto& progress) {
        withoutSilence(whole, {0, 1900}, 589, 256, progress);
    };
    const std::pair<Work, std::vector<int>> rows[] = {
        {[&](const auto& progress) {
             peakLevel(parts, {56, 1056}, progress);
         },
         {0, 20, 45, 96, 100}},
        {[&](const auto& progress) { findSilences(noise, 589, 1, progress); },
         {0, 32, 65, 98, 100}},
        {[&](const auto& progress) { audibleRange(whole, 589, progress); }, {50, 100}},
        {cut, {0, 100}}};
    for (const auto& [work, expected] : rows) {
        std::vector<int> seen;
        work({[&](int percent) { seen.push_back(percent); }, {}});
        EXPECT_EQ(seen, expected);
    }
    // Stopped before the work begins, between the two ends, and after the search.
    const std::tuple<Work, int, std::vector<int>> stops[] = {
        {rows[0].first, -1, {0, 20, 45}},
        {rows[1].first, -1, {}},
        {rows[2].first, -1, {}},
        {cut, -1, {}},
        {[&](const auto& progress) { findSilences(whole, 589, 1900, progress); }, -1, {}},
        {rows[2].first, 50, {50}},
        {cut, 100, {0, 100}}};
    for (const auto& [work, when, expected] : stops) {
        std::stop_source stop;
        std::vector<int> seen;
        const auto heard = [&, at = when](int percent) {
            seen.push_back(percent);
            if (percent == at) stop.request_stop();
        };
        if (when < 0) stop.request_stop();
        EXPECT_EQ(failureOf([&, &task = work] {
                      task({heard, stop.get_token()});
                  }),
                  SoundFailure::Cancelled);
        EXPECT_EQ(seen, expected);
    }
}

}  // namespace
}  // namespace tarnwick::sound
