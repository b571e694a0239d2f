#include "sound/samples/peaks.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/drawn_sounds.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

RC_GTEST_PROP(Laws, PeaksAreTheExtremesRoundedOutward, ()) {
    const auto source = drawnSource();
    const std::vector<double> samples = samplesOf(*source);
    const int channels = source->format().channels;
    const auto units = [](double value) { return std::clamp(value, -32768.0, 32767.0); };
    for (int channel = 0; channel < channels; ++channel)
        for (int level = 0; level < source->peaks().levels(); ++level) {
            const auto peaks = source->peaks().level(channel, level);
            const std::int64_t step = Peaks::framesAt(level);
            RC_ASSERT(static_cast<std::int64_t>(peaks.size()) ==
                      (source->frames() + step - 1) / step);
            for (std::size_t i = 0; i < peaks.size(); ++i) {
                double low = 9.0, high = -9.0;
                const std::int64_t first = static_cast<std::int64_t>(i) * step;
                for (auto at = first; at < std::min(first + step, source->frames()); ++at) {
                    low = std::min(low, samples[at * channels + channel]);
                    high = std::max(high, samples[at * channels + channel]);
                }
                RC_ASSERT(peaks[i].minimum == units(std::floor(low * 32768.0)));
                RC_ASSERT(peaks[i].maximum == units(std::ceil(high * 32768.0)));
            }
        }
}

}  // namespace
}  // namespace tarnwick::sound
