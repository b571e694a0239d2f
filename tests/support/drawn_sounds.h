#pragma once

#include <rapidcheck/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <vector>

#include "sound/reading/source.h"
#include "sound/writing/sound_writer.h"
#include "support/test_sounds.h"

// Random sounds for property tests. A failing case is reduced to a small one and printed with its
// seed. Every run uses the same seed; set RC_PARAMS="seed=7 max_success=2000" for other and more
// cases.

namespace tarnwick::sound {

inline const int kSeeded = setenv("RC_PARAMS", "seed=20", 0);

// A stretch of noise with a peak level, on the scale of the thresholds.
struct Run {
    int level = 0;
    int frames = 0;
};

inline std::ostream& operator<<(std::ostream& out, const Run& run) {
    return out << run.frames << " frames at " << run.level;
}

// Generates levels of sounds and thresholds.
inline rc::Gen<int> levels() {
    return rc::gen::oneOf(rc::gen::element(0, 589, 20'000), rc::gen::inRange(0, 32767));
}

// Writes random runs of noise into a file of a random kind and opens it.
inline std::shared_ptr<const Source> drawnSource() {
    const auto lengths = rc::gen::oneOf(rc::gen::inRange(1, 40), rc::gen::inRange(200, 9000));
    const auto run = rc::gen::build<Run>(rc::gen::set(&Run::level, levels()),
                                         rc::gen::set(&Run::frames, lengths));
    const auto runs = *rc::gen::resize(
        20, rc::gen::nonEmpty(rc::gen::container<std::vector<Run>>(rc::gen::resize(100, run))));
    const auto channels = *rc::gen::element(1, 2);
    const auto bits = *rc::gen::element(8, 16, 24, 32, 0);
    // Floating samples exceed full scale, which peaks cannot represent.
    const AudioFormat format{44100, channels, bits == 0 ? 32 : bits, bits == 0};
    const auto container = *rc::gen::element(Container::Wav, Container::Aiff);
    const double scale = (format.floating ? 3.0 : 1.0) / 32768.0;
    std::vector<double> values;
    for (std::uint32_t state = 1; const Run& run : runs)
        for (int i = 0; i < run.frames * channels; ++i) {
            state = state * 1664525 + 1013904223;
            const int level = static_cast<int>((state >> 8) % (2u * run.level + 1)) - run.level;
            // Half a unit above the level: peaks must round it up, scans must not.
            values.push_back((i % 16 < 2 ? run.level + 0.5 : level) * scale);
        }
    const TempFolder folder;
    const ListSound sound(format, values);
    writeSound(sound, 0, sound.frames(), {container, format}, folder.path() / "take");
    return Source::open(folder.path() / "take");
}

}  // namespace tarnwick::sound
