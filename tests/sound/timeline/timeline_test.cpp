#include "sound/timeline/timeline.h"

#include <gtest/gtest.h>

#include "sound/timeline/silence_scan.h"
#include "sound/writing/sound_writer.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

TEST(Timeline, RefusesPlacesOutsideTheSound) {
    const TempFolder folder;
    const NoiseSound sound({44100, 1, 16, false}, 100);
    writeSound(sound, 0, 100, {Container::Wav, sound.format()}, folder.path() / "take.wav");
    const Timeline timeline(Source::open(folder.path() / "take.wav"));
    EXPECT_THROW(timeline.inserted(101, 1), SoundError);
    EXPECT_THROW(timeline.inserted(0, -1), SoundError);
    EXPECT_THROW(timeline.inserted(0, INT64_MAX), SoundError);
    EXPECT_THROW(timeline.removed(-1, 5), SoundError);
    EXPECT_THROW(timeline.removed(6, 5), SoundError);
    EXPECT_THROW(timeline.scaled(0, 101, 1), SoundError);
    EXPECT_THROW(timeline.scaled(0, 1, std::nan("")), SoundError);
    std::vector<PeakRange> none(1);
    EXPECT_FALSE(timeline.columns(1, 0, 10, none));
    EXPECT_FALSE(timeline.columns(0, 10, 10, none));
    const Timeline empty = timeline.removed(0, 100);
    EXPECT_EQ(empty.frames(), 0);
    EXPECT_TRUE(findSilences(empty, 589, 1).empty());
    EXPECT_FALSE(audibleRange(empty, 589));
    EXPECT_EQ(empty.inserted(0, 7).frames(), 7);
}

}  // namespace
}  // namespace tarnwick::sound
