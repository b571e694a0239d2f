#include "sound/samples/loud_maps.h"

#include <gtest/gtest.h>

namespace tarnwick::sound {
namespace {

TEST(LoudBits, FindsTheFirstAndTheLastLoudFrameOfAnyStretch) {
    const int loud[] = {0, 62, 63, 64, 100, 191, 255};
    LoudBits bits;
    for (const int frame : loud)
        bits.set(frame);
    for (int end = 0; end <= 256; ++end)
        for (int first = 0; first <= end; ++first) {
            int found = -1;
            int last = -1;
            for (const int frame : loud)
                if (frame >= first && frame < end) {
                    found = found < 0 ? frame : found;
                    last = frame;
                }
            ASSERT_EQ(bits.firstIn(first, end), found) << first << " to " << end;
            ASSERT_EQ(bits.lastIn(first, end), last) << first << " to " << end;
        }
}

TEST(LoudMaps, KeepBlocksByKeyAndAreEmptiedWhenFull) {
    constexpr std::int64_t kMost = 100'000;
    const LoudMaps::Key key{0.5, 1.0};
    LoudMaps maps;
    for (std::int64_t block = 0; block < 2 * kMost; ++block) {
        LoudBits bits;
        bits.set(static_cast<int>(block % 256));
        maps.keep(key, block, bits);
        if (block % 2 == 0) maps.keep(key, block, {});  // already there
        const std::int64_t oldest = block / kMost * kMost;
        ASSERT_TRUE(maps.find(key, oldest)) << block;
        ASSERT_EQ(maps.find(key, block)->firstIn(0, 256), block % 256);
        ASSERT_FALSE(maps.find(key, oldest - 1)) << block;
    }
    EXPECT_FALSE(maps.find({0.25, 1.0}, kMost));
    EXPECT_FALSE(maps.find({0.5, 2.0}, kMost));
}

}  // namespace
}  // namespace tarnwick::sound
