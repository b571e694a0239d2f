#include "segmentation/mending.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tarnwick::segmentation {

namespace {

constexpr qint32 kQuietMs = 300;           // length of the quiet place for a pause
constexpr qint32 kWidestViewMs = 120'000;  // in which a stretch of a second is some pixels wide
constexpr qint32 kNarrowViewMs = 30'000;
constexpr qint32 kColumnMs = 10;      // resolution of the search for it
constexpr double kSearchPart = 0.25;  // of the stretch, on either side of the projected border
constexpr qint32 kSearchMs = 2500;    // the same, at most

// Stretch `stretch`, from 1, lies between two silences.
ViewRange stretchOf(int stretch, const SilenceArray& silences) {
    const auto index = static_cast<std::size_t>(stretch);
    return {silences[index - 1].FinishAt, silences[index].StartAt};
}

ViewRange pauseOf(int silence, const SilenceArray& silences) {
    const model::SilenceRecord& record = silences[static_cast<std::size_t>(silence)];
    return {record.StartAt, record.FinishAt};
}

qint32 middleOf(ViewRange range) { return range.begin + (range.end - range.begin) / 2; }

qint32 borderOf(const LikelySlip& slip, ViewRange stretch) {
    return stretch.begin +
           static_cast<qint32>(std::lround(slip.share * (stretch.end - stretch.begin)));
}

// The loudest sample of any channel, in each column of kColumnMs from `begin`.
std::vector<float> levels(const engine::Waveform& waveform, ViewRange range) {
    const auto count = static_cast<std::size_t>((range.end - range.begin) / kColumnMs);
    std::vector<float> levels(count, 0.0f);
    std::vector<engine::WaveColumn> columns(count);
    for (int channel = 0; channel < waveform.channels(); ++channel) {
        if (!waveform.columns(channel, range.begin,
                              range.begin + static_cast<double>(count) * kColumnMs, columns))
            continue;
        for (std::size_t i = 0; i < count; ++i)
            levels[i] = std::max({levels[i], -columns[i].minimum, columns[i].maximum});
    }
    return levels;
}

// The middle of the kQuietMs within `range` that have the least sum of levels; of equal ones, the
// nearest to `wanted`.
qint32 quietestIn(const engine::Waveform& waveform, ViewRange range, qint32 wanted) {
    const std::vector<float> level = levels(waveform, range);
    constexpr std::size_t kWindow = kQuietMs / kColumnMs;
    if (level.size() < kWindow) return wanted;
    qint32 best = wanted;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t first = 0; first + kWindow <= level.size(); ++first) {
        double sum = 0.0;
        for (std::size_t i = first; i < first + kWindow; ++i)
            sum += level[i];
        const qint32 middle = range.begin + static_cast<qint32>(first) * kColumnMs + kQuietMs / 2;
        if (sum > least || (sum == least && std::abs(middle - wanted) >= std::abs(best - wanted)))
            continue;
        least = sum;
        best = middle;
    }
    return best;
}

ViewRange caretAt(qint32 ms) { return {ms, ms}; }

// The middle of a pause. What stays at its ends keeps the words from running into each other.
ViewRange partToCut(ViewRange pause, qint32 shortestPauseMs) {
    const qint32 kept = shortestPauseMs / 3;
    const qint32 begin = pause.begin + kept / 2;
    return {begin, std::max(pause.end - (kept - kept / 2), begin)};
}

qint32 placeForPause(const LikelySlip& slip, ViewRange stretch, const engine::Waveform& waveform) {
    const qint32 border = borderOf(slip, stretch);
    const auto reach =
        std::min(kSearchMs, static_cast<qint32>(kSearchPart * (stretch.end - stretch.begin)));
    const ViewRange search{std::max(border - reach, stretch.begin),
                           std::min(border + reach, stretch.end)};
    return quietestIn(waveform, search, border);
}

}  // namespace

qint32 placeOf(const LikelySlip& slip, const SilenceArray& silences) {
    switch (slip.kind) {
        case LikelySlip::Split:
            return middleOf(pauseOf(slip.stretch, silences));
        case LikelySlip::Merged:
            return borderOf(slip, stretchOf(slip.stretch, silences));
        case LikelySlip::Extra:
            return middleOf(stretchOf(slip.stretch, silences));
        case LikelySlip::Missing:
            break;
    }
    return middleOf(pauseOf(slip.stretch - 1, silences));
}

ViewRange mendingOf(const LikelySlip& slip, const SilenceArray& silences, qint32 shortestPauseMs,
                    const engine::Waveform& waveform) {
    switch (slip.kind) {
        case LikelySlip::Split:
            return partToCut(pauseOf(slip.stretch, silences), shortestPauseMs);
        case LikelySlip::Merged:
            return caretAt(placeForPause(slip, stretchOf(slip.stretch, silences), waveform));
        case LikelySlip::Extra:
            return stretchOf(slip.stretch, silences);
        case LikelySlip::Missing:
            break;  // `stretch` may be one past the last
    }
    return caretAt(placeOf(slip, silences));
}

ViewRange viewShowing(ViewRange range, ViewRange now) {
    const bool narrow = now.end - now.begin > kWidestViewMs;
    if (!narrow && range.begin >= now.begin && range.end <= now.end) return now;
    const qint32 width = narrow ? kNarrowViewMs : now.end - now.begin;
    const qint32 begin = std::max(middleOf(range) - width / 2, 0);
    return {begin, begin + width};
}

}  // namespace tarnwick::segmentation
