#include "widgets/band_geometry.h"

#include <algorithm>
#include <limits>

namespace tarnwick::widgets {

namespace {

using engine::SilenceMs;

// How many silences begin at or before `ms`.
int begunBy(Silences silences, double ms) {
    const auto end = std::ranges::partition_point(
        silences, [ms](const SilenceMs& silence) { return silence.start <= ms; });
    return static_cast<int>(end - silences.begin());
}

// How many silences end before `ms`.
int endedBefore(Silences silences, double ms) {
    const auto end = std::ranges::partition_point(
        silences, [ms](const SilenceMs& silence) { return silence.finish < ms; });
    return static_cast<int>(end - silences.begin());
}

const SilenceMs& at(Silences silences, int index) {
    return silences[static_cast<std::size_t>(index)];
}

// Whether the texts of all multiples of the step keep the gap.
bool multiplesFit(std::span<const NumberPlace> places, int step, double gap) {
    double taken = -std::numeric_limits<double>::infinity();
    for (const auto& [number, left, right] : places) {
        if (number % step != 0) continue;
        if (left - taken < gap) return false;
        taken = right;
    }
    return true;
}

}  // namespace

StretchRange stretchesIn(Silences silences, const TimeRange& view) {
    const int last = std::min(endedBefore(silences, view.endMs), int(silences.size()) - 1);
    return {std::max(begunBy(silences, view.beginMs), 1), last};
}

std::optional<TimeRange> stretchTimes(Silences silences, int stretch) {
    if (stretch < 1 || stretch >= int(silences.size())) return std::nullopt;
    return TimeRange{double(at(silences, stretch - 1).finish), double(at(silences, stretch).start)};
}

int stretchAt(Silences silences, double ms) {
    const int begun = begunBy(silences, ms);
    const bool between = begun > 0 && begun < int(silences.size());
    return between && at(silences, begun - 1).finish <= ms ? begun : 0;
}

std::vector<float> coverage(Silences silences, const TimeRange& view, int columns) {
    std::vector<float> shares(std::size_t(std::max(columns, 0)));
    if (shares.empty()) return shares;
    const TimeAxis axis(view, 0.0, columns);
    const int end = begunBy(silences, view.endMs);
    for (int i = endedBefore(silences, view.beginMs); i < end; ++i) {
        const double from = std::clamp(axis.xOf(at(silences, i).start), 0.0, double(columns));
        const double to = std::clamp(axis.xOf(at(silences, i).finish), 0.0, double(columns));
        for (auto column = static_cast<std::size_t>(from); double(column) < to; ++column)
            shares[column] += static_cast<float>(std::min(to, double(column) + 1.0) -
                                                 std::max(from, double(column)));
    }
    for (float& share : shares)
        share = std::min(share, 1.0f);
    return shares;
}

int numberStep(std::span<const NumberPlace> places, double gap) {
    for (int tens = 1;; tens *= 10)
        for (const int step : {tens, 2 * tens, 5 * tens})
            if (multiplesFit(places, step, gap)) return step;
}

std::optional<int> nearestMark(const std::vector<qint32>& marksMs, double ms) {
    if (marksMs.empty()) return std::nullopt;
    auto nearest =
        std::ranges::lower_bound(marksMs, ms, {}, [](qint32 mark) { return double(mark); });
    if (nearest == marksMs.end() ||
        (nearest != marksMs.begin() && ms - *(nearest - 1) <= *nearest - ms))
        --nearest;
    return static_cast<int>(nearest - marksMs.begin());
}

}  // namespace tarnwick::widgets
