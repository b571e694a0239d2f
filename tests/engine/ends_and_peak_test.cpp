#include <cmath>
#include <random>

#include "desk.h"
#include "sound/writing/sound_writer.h"

// What an operator who asks for a head, a tail and a maximum finds in the written file.

namespace tarnwick::engine {
namespace {

constexpr double kFullScale = 8388608.0;
constexpr float kPercent = 99.0f;
constexpr int kRates[] = {sound::kLowestRate, 11025, 22050, 32000, 44100, 48000, 96000,
                          sound::kHighestRate};

struct Wish {
    qint16 threshold;
    qint32 headMs, tailMs;
};

class EndsAndPeak : public Desk {
  protected:
    int random(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }

    // A voice between two noises that nobody hears. It sets in and ends at once, in passages
    // through zero: where a sound creeps over the threshold, another rate finds its edge waves
    // away.
    Samples voice(int rate, int noise) {
        const int wave = rate / random(90, 900);
        const auto silence = [&] {
            Samples samples(static_cast<std::size_t>(rate) * random(500, 1500) / 1000);
            std::ranges::generate(samples, [&] { return random(-noise, noise); });
            return samples;
        };
        Samples voice(static_cast<std::size_t>(wave) * random(100, 200));
        for (std::size_t i = 0; i < voice.size(); ++i)
            voice[i] = static_cast<qint32>(
                0.4 * kFullScale * std::sin(2.0 * std::acos(-1.0) * static_cast<double>(i) / wave));
        return silence() + voice + silence();
    }

    void edited(qint32 started) {
        EXPECT_EQ(started, kOk);
        events.clear();
        ASSERT_TRUE(waitUntil([&] { return said().find("EditDone") != std::string::npos; }));
        EXPECT_TRUE(events.last().endsWith(u" 1")) << said();
    }
    void chain(const Wish& wish) {
        edited(editor->DeleteRange(0, random(1, 100)));
        edited(editor->DeleteRange(editor->GetSoundDuration() - random(1, 400), -1));
        ASSERT_EQ(editor->SilencePositionsDetect(wish.threshold, 1, 0), kOk);
        ASSERT_TRUE(waitUntil([&] { return events.last().startsWith(u"Audible"); })) << said();
        const qint32 begin = events.last().section(u' ', 1, 1).toInt();
        const qint32 end = events.last().section(u' ', 2, 2).toInt();
        const qint32 duration = editor->GetSoundDuration();
        fit(duration - end - wish.tailMs, end + wish.tailMs, duration, wish.threshold);
        fit(begin - wish.headMs, 0, 0, wish.threshold);
        edited(editor->effects().Normalize(0, -1, kPercent, 100.0f, 100.0f));
    }
    // Cuts what is too much of a silence behind `from`, or adds what is missing at `to`.
    void fit(qint32 excess, qint32 from, qint32 to, qint16 threshold) {
        if (excess > 0) edited(editor->RemoveSilence(from, from + excess, threshold, 1));
        if (excess < 0) edited(editor->InsertSilence(to, -excess));
    }

  private:
    // Lengths whose frames round away from what was asked.
    std::mt19937 random_{4};
};

TEST_F(EndsAndPeak, AreAsWishedAtEveryRate) {
    editor->SetEditorOption(100);
    for (const int source : kRates) {
        const Wish wish{static_cast<qint16>(random(300, 3276)), random(0, 1500), random(0, 1500)};
        const Samples take = voice(source, 60 * wish.threshold);
        const auto [lowest, highest] = std::ranges::minmax(take);
        const double gain = kFullScale * kPercent / 100.0 / std::max(-lowest, highest);
        load(take, source);
        chain(wish);
        const double threshold = wish.threshold / 32767.0 * kFullScale * gain;
        for (const int rate : kRates) {
            SCOPED_TRACE(testing::Message()
                         << source << " to " << rate << " threshold " << wish.threshold);
            const Samples samples = written("out.wav", 0, -1, rate);
            const auto loud = [&](qint32 sample) { return std::abs(sample) > threshold; };
            const auto begin = std::ranges::find_if(samples, loud);
            const auto end = std::find_if(samples.rbegin(), samples.rend(), loud);
            // Between two rates what is loud begins a frame sooner or later.
            const double frames = rate == source ? 0.0 : 1.0;
            const double within = 1.0 + frames * 1000.0 / std::min(rate, source);
            EXPECT_NEAR((begin - samples.begin()) * 1000.0 / rate, wish.headMs, within);
            EXPECT_NEAR((end - samples.rbegin()) * 1000.0 / rate, wish.tailMs, within);
            const auto [low, high] = std::ranges::minmax(samples);
            const double peak = std::max(-low, high) / kFullScale * 100.0 / kPercent;
            if (rate != source) continue;
            EXPECT_NEAR(20.0 * std::log10(peak), 0.0, 0.05);
        }
    }
}

}  // namespace
}  // namespace tarnwick::engine
