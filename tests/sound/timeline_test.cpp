#include "sound/timeline.h"

#include <gtest/gtest.h>

#include <random>

#include "sound/silence_scan.h"
#include "sound/sound_writer.h"
#include "sound/test_sounds.h"
#include "sound/time.h"

namespace tarnwick::sound {
namespace {

// A 16-bit sound of loud and quiet stretches of all lengths, and plain vectors to hold it against.
class TimelineTest : public testing::Test {
  protected:
    std::shared_ptr<const Source> makeSource(int channels, int frames) {
        std::vector<double> values;
        for (int i = 0, left = 0, level = 0; i < frames; ++i, --left) {
            if (left <= 0) {
                level = random_() % 2 == 0 ? 20000 : 300;
                left = 1 + static_cast<int>(random_() % (random_() % 3 == 0 ? 6000 : 40));
            }
            for (int channel = 0; channel < channels; ++channel)
                values.push_back((static_cast<int>(random_() % (2 * level + 1)) - level) / 32768.0);
        }
        const TempFolder folder;
        const ListSound sound({44100, channels, 16, false}, values);
        writeSound(sound, 0, frames, {Container::Wav, sound.format()}, folder.path() / "take.wav");
        return Source::open(folder.path() / "take.wav");
    }
    std::int64_t upTo(std::int64_t limit) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(limit + 1));
    }
    static std::vector<double> all(const Timeline& timeline) {
        std::vector<double> values(
            static_cast<std::size_t>(timeline.frames() * timeline.format().channels));
        timeline.read(0, timeline.frames(), values.data());
        return values;
    }
    static std::vector<FrameRange> bruteForce(const std::vector<double>& values, int channels,
                                              int threshold, std::int64_t minimum) {
        std::vector<FrameRange> found;
        const auto frames = static_cast<std::int64_t>(values.size()) / channels;
        std::int64_t first = 0;
        for (std::int64_t frame = 0; frame <= frames; ++frame) {
            bool loud = frame == frames;
            for (int channel = 0; channel < channels && !loud; ++channel)
                loud = std::abs(values[static_cast<std::size_t>(frame * channels + channel)]) >
                       threshold / 32767.0;
            if (!loud) continue;
            if (frame - first >= minimum) found.push_back({first, frame});
            first = frame + 1;
        }
        return found;
    }
    void checkScans(const Timeline& timeline, const std::vector<double>& values) {
        const int channels = timeline.format().channels;
        for (const int threshold : {0, 150, 300, 589, 32767})
            for (const std::int64_t minimum : {1, 255, 256, 700, 5000}) {
                ASSERT_EQ(findSilences(timeline, threshold, minimum),
                          bruteForce(values, channels, threshold, minimum))
                    << threshold << " " << minimum;
            }
        const auto quiet = bruteForce(values, channels, 589, 1);
        const auto audible = audibleRange(timeline, 589);
        const bool silent = !quiet.empty() && quiet[0] == FrameRange{0, timeline.frames()};
        ASSERT_EQ(audible.has_value(), !silent && timeline.frames() > 0);
        if (!audible) return;
        EXPECT_EQ(audible->first, !quiet.empty() && quiet[0].first == 0 ? quiet[0].end : 0);
        EXPECT_EQ(audible->end, !quiet.empty() && quiet.back().end == timeline.frames()
                                    ? quiet.back().first
                                    : timeline.frames());
    }

    std::mt19937_64 random_{20};
};

TEST_F(TimelineTest, EditsAndScansAsAPlainVectorWould) {
    for (const int channels : {1, 2}) {
        const auto source = makeSource(channels, 60'000);
        std::vector<Timeline> undo{Timeline(source)};
        std::vector<std::vector<double>> plain{all(undo[0])};
        for (int edit = 0; edit < 60; ++edit) {
            const Timeline& now = undo.back();
            std::vector<double> values = plain.back();
            const std::int64_t first = upTo(now.frames());
            const std::int64_t end =
                first + upTo(std::min<std::int64_t>(now.frames() - first, 4000));
            const auto from = values.begin() + first * channels;
            const auto to = values.begin() + end * channels;
            // Powers of two: products are exact in whatever order they are taken.
            const double gain = std::array{0.0, 0.5, -2.0}[random_() % 3];
            switch (edit % 3) {
                case 0:
                    undo.push_back(now.inserted(first, end - first));
                    values.insert(from, static_cast<std::size_t>((end - first) * channels), 0.0);
                    break;
                case 1:
                    undo.push_back(now.removed(first, end));
                    values.erase(from, to);
                    break;
                default:
                    undo.push_back(now.scaled(first, end, gain));
                    for (auto each = from; each < to; ++each)
                        *each *= gain;
            }
            plain.push_back(values);
            ASSERT_EQ(all(undo.back()), plain.back()) << "edit " << edit;
        }
        checkScans(undo.front(), plain.front());
        checkScans(undo.back(), plain.back());
        for (std::size_t i = 0; i < undo.size(); ++i)
            ASSERT_EQ(all(undo[i]), plain[i]) << "undo";
    }
}

TEST_F(TimelineTest, ColumnsHoldTheirExtremes) {
    const auto source = makeSource(2, 300'000);
    const Timeline timeline =
        Timeline(source).inserted(1000, 700).scaled(50'000, 90'000, -0.5).removed(5000, 5100);
    const std::vector<double> values = all(timeline);
    const auto frames = static_cast<double>(timeline.frames());
    for (const double width : {0.3, 1.0, 17.5, 511.0, 600.0, 9000.0}) {
        std::vector<PeakRange> columns(40);
        const double begin = -1.5 * width;
        ASSERT_TRUE(timeline.columns(1, begin, begin + 40 * width, columns));
        const std::int64_t slack =
            width < 512 ? 0 : 2 * Peaks::kFinestFrames + (width > 8192 ? 8192 : 0);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto place = begin + static_cast<double>(i) * width;
            const auto first =
                static_cast<std::int64_t>(std::clamp(std::floor(place), 0.0, frames));
            const auto end = static_cast<std::int64_t>(
                std::clamp(std::max(std::floor(begin + static_cast<double>(i + 1) * width),
                                    std::floor(place) + 1),
                           0.0, frames));
            const auto extremes = [&](std::int64_t from, std::int64_t to) {
                PeakRange range{first < end ? 9.0f : 0.0f, first < end ? -9.0f : 0.0f};
                for (auto at = std::max<std::int64_t>(from, 0);
                     at < std::min(to, timeline.frames()) && first < end; ++at) {
                    const auto value =
                        static_cast<float>(values[static_cast<std::size_t>(2 * at + 1)]);
                    range = {std::min(range.minimum, value), std::max(range.maximum, value)};
                }
                return range;
            };
            constexpr float kStep = 1.01f / 32768;  // peaks are rounded outward
            const PeakRange inner = extremes(first, end);
            const PeakRange outer = extremes(first - slack, end + slack);
            EXPECT_LE(columns[i].minimum, inner.minimum) << width << " " << i;
            EXPECT_GE(columns[i].maximum, inner.maximum) << width << " " << i;
            EXPECT_GE(columns[i].minimum, outer.minimum - (slack > 0 ? kStep : 0)) << width;
            EXPECT_LE(columns[i].maximum, outer.maximum + (slack > 0 ? kStep : 0)) << width;
        }
    }
    std::vector<PeakRange> none(1);
    EXPECT_FALSE(timeline.columns(2, 0, 10, none));
    EXPECT_FALSE(timeline.columns(0, 10, 10, none));
}

TEST_F(TimelineTest, RefusesPlacesOutsideTheSound) {
    const Timeline timeline(makeSource(1, 100));
    EXPECT_THROW(timeline.inserted(101, 1), SoundError);
    EXPECT_THROW(timeline.inserted(0, -1), SoundError);
    EXPECT_THROW(timeline.inserted(0, INT64_MAX), SoundError);
    EXPECT_THROW(timeline.removed(-1, 5), SoundError);
    EXPECT_THROW(timeline.removed(6, 5), SoundError);
    EXPECT_THROW(timeline.scaled(0, 101, 1), SoundError);
    EXPECT_THROW(timeline.scaled(0, 1, std::nan("")), SoundError);
    const Timeline empty = timeline.removed(0, 100);
    EXPECT_EQ(empty.frames(), 0);
    EXPECT_TRUE(findSilences(empty, 589, 1).empty());
    EXPECT_FALSE(audibleRange(empty, 589));
    EXPECT_EQ(empty.inserted(0, 7).frames(), 7);
}

static_assert(frameAt(1, 500) == 0 && frameAt(3, 500) == 2 && frameAt(1500, 44100) == 66150);
static_assert(frameAt(5, 44100) == 220 && frameAt(15, 44100) == 662);  // 220.5, 661.5: to even
static_assert(msFloor(44099, 44100) == 999 && msCeil(44099, 44100) == 1000);
static_assert(msFloor(44100, 44100) == 1000 && msCeil(44100, 44100) == 1000);

}  // namespace
}  // namespace tarnwick::sound
