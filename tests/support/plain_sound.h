#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "sound/timeline/silence_scan.h"
#include "sound/timeline/timeline.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {

// An edit of the frames [first, end). Gains are powers of two, so that products are exact in any
// order.
struct Edit {
    enum Kind { Insert, Remove, Scale };
    static constexpr std::array kGains = {0.0, 0.5, -2.0, -1.0, 4.0};

    Kind kind = Insert;
    std::int64_t first = 0;
    std::int64_t end = 0;
    double gain = 1.0;

    Timeline on(const Timeline& timeline) const {
        if (kind == Insert) return timeline.inserted(first, end - first);
        if (kind == Remove) return timeline.removed(first, end);
        return timeline.scaled(first, end, gain);
    }
};

// A reference to compare a timeline with: a vector of samples, edited and searched in the simplest
// way.
struct PlainSound {
    explicit PlainSound(const FrameReader& sound)
        : channels(sound.format().channels), values(samplesOf(sound)) {}

    int channels;
    std::vector<double> values;  // interleaved

    std::int64_t frames() const { return static_cast<std::int64_t>(values.size()) / channels; }

    std::vector<double> part(std::int64_t first, std::int64_t end) const {
        return {values.begin() + first * channels, values.begin() + end * channels};
    }

    void edit(const Edit& edit) {
        const auto from = values.begin() + edit.first * channels;
        const auto to = values.begin() + edit.end * channels;
        if (edit.kind == Edit::Scale)
            std::for_each(from, to, [&](double& value) { value *= edit.gain; });
        else if (edit.kind == Edit::Remove)
            values.erase(from, to);
        else
            values.insert(from, static_cast<std::size_t>((edit.end - edit.first) * channels), 0.0);
    }

    bool loud(std::int64_t frame, int threshold) const {
        const auto at = values.begin() + frame * channels;
        return std::any_of(at, at + channels,
                           [&](double value) { return std::abs(value) > threshold / 32767.0; });
    }

    std::vector<FrameRange> silences(int threshold, std::int64_t minimum) const {
        std::vector<FrameRange> found;
        for (std::int64_t first = 0, frame = 0; frame <= frames(); ++frame) {
            if (frame < frames() && !loud(frame, threshold)) continue;
            if (frame - first >= minimum) found.push_back({first, frame});
            first = frame + 1;
        }
        return found;
    }

    std::optional<FrameRange> audible(int threshold) const {
        std::optional<FrameRange> range;
        for (std::int64_t frame = 0; frame < frames(); ++frame)
            if (loud(frame, threshold)) range = {range ? range->first : frame, frame + 1};
        return range;
    }
};

}  // namespace tarnwick::sound
