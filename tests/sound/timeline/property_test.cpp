#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "sound/samples/sample_coding.h"
#include "sound/timeline/peak_level.h"
#include "support/drawn_sounds.h"
#include "support/plain_sound.h"
#include "support/test_sounds.h"

// Properties of timelines and scans, checked on random sounds and edits (drawn_sounds.h).

namespace tarnwick::sound {
namespace {

std::ostream& operator<<(std::ostream& out, const Edit& edit) {
    return out << std::array{"insert ", "remove ", "scale "}[edit.kind] << edit.first << " to "
               << edit.end << " by " << edit.gain;
}

// A random place from 0 to `last`, with a preference for the ends and block boundaries.
std::int64_t drawnPlace(std::int64_t last) {
    const auto place = *rc::gen::inRange<std::int64_t>(0, last + 1);
    return *rc::gen::weightedElement<std::int64_t>(
        {{7, place}, {1, 0}, {1, last}, {1, std::min(last, place / 256 * 256 + place % 2)}});
}

Edit drawnEdit(std::int64_t frames) {
    Edit edit;
    edit.kind = *rc::gen::element(Edit::Insert, Edit::Remove, Edit::Scale);
    edit.first = drawnPlace(frames);
    // Removes at most a quarter, so that enough remains for more cuts; gains may cover many pieces.
    const std::int64_t rest = frames - edit.first;
    edit.end = edit.first + drawnPlace(edit.kind == Edit::Insert   ? 3000
                                       : edit.kind == Edit::Remove ? std::min(rest, frames / 4)
                                                                   : rest);
    edit.gain = *rc::gen::elementOf(Edit::kGains);
    return edit;
}

// A timeline and the plain sound that it must equal after the same edits.
struct Twins {
    explicit Twins(std::shared_ptr<const Source> source) : timeline(source), plain(timeline) {}

    Timeline timeline;
    PlainSound plain;

    void edit() {
        const Edit edit = drawnEdit(timeline.frames());
        RC_LOG() << edit << '\n';
        timeline = edit.on(timeline);
        plain.edit(edit);
        RC_ASSERT(timeline.frames() == plain.frames());
    }
};

Twins drawnTwins() {
    Twins twins(drawnSource());
    for (int left = *rc::gen::inRange(0, 15); left > 0; --left)
        twins.edit();
    return twins;
}

// Compared outside RC_ASSERT, which would print every sample of two long sounds.
void same(const std::vector<double>& values, const std::vector<double>& expected) {
    const bool equal = values == expected;
    RC_ASSERT(equal);
}

// Samples that can be copied in this coding must equal the computed ones.
void sameCopied(const Timeline& timeline, std::int64_t first, std::int64_t end, Coding coding,
                const PlainSound& plain) {
    std::vector<double> values(static_cast<std::size_t>((end - first) * plain.channels));
    std::vector<std::uint8_t> bytes(values.size() * static_cast<std::size_t>(bytesOf(coding)));
    if (!timeline.readStored(first, end - first, coding, bytes.data())) return;
    unpack(coding, bytes.data(), values);
    same(values, plain.part(first, end));
}

RC_GTEST_PROP(Laws, EditsMatchThoseOfAPlainVectorAndOldValuesStay, ()) {
    std::vector<Twins> states{Twins(drawnSource())};
    for (int left = *rc::gen::inRange(1, 25); left > 0; --left) {
        states.push_back(states.back());
        states.back().edit();
        const auto& [timeline, plain] = states.back();
        const std::int64_t first = drawnPlace(plain.frames());
        const std::int64_t end = first + drawnPlace(plain.frames() - first);
        same(samplesOf(timeline, first, end), plain.part(first, end));
        for (int coding = 0; coding <= static_cast<int>(Coding::BigFloat64); ++coding)
            sameCopied(timeline, first, end, Coding{coding}, plain);
        // Its pieces must describe the same samples.
        std::int64_t at = first;
        for (const Piece& piece : timeline.pieces(first, end)) {
            RC_ASSERT(piece.at == at);
            RC_ASSERT(piece.count > 0);
            std::vector<double> values(
                static_cast<std::size_t>(piece.count * timeline.format().channels));
            if (!piece.silent()) timeline.source()->read(piece.source, piece.count, values.data());
            for (double& value : values)
                value *= piece.gain;
            at += piece.count;
            same(values, plain.part(piece.at, at));
        }
        RC_ASSERT(at == end);
    }
    for (const auto& [timeline, plain] : states)
        same(samplesOf(timeline, 0, timeline.frames()), plain.values);
}

RC_GTEST_PROP(Laws, ScansMatchACheckOfEverySample, ()) {
    const auto [timeline, plain] = drawnTwins();
    // Several in a row, as the blocks cached by one scan must not mislead the next.
    for (int left = *rc::gen::inRange(1, 6); left > 0; --left) {
        const int threshold = *levels();
        const auto minimum = *rc::gen::oneOf(rc::gen::element<std::int64_t>(1, 255, 256, 257),
                                             rc::gen::inRange<std::int64_t>(1, 6000));
        RC_ASSERT(findSilences(timeline, threshold, minimum) == plain.silences(threshold, minimum));
        RC_ASSERT(audibleRange(timeline, threshold) == plain.audible(threshold));
    }
}

RC_GTEST_PROP(Laws, PeakLevelIsTheLargestSampleAndOnlyQuietFramesAreCut, ()) {
    auto [timeline, plain] = drawnTwins();
    FrameRange range{drawnPlace(timeline.frames()), 0};
    range.end = range.first + drawnPlace(timeline.frames() - range.first);
    double largest = 0.0;
    for (const double value : plain.part(range.first, range.end))
        largest = std::max(largest, std::abs(value));
    RC_ASSERT(peakLevel(timeline, range) == largest);

    const int threshold = *levels();
    const auto minimum = *rc::gen::element<std::int64_t>(1, 2, 300, 4000);
    timeline = withoutSilence(timeline, range, threshold, minimum);
    // At the edges of the range any silence is removed, inside it only those that are long enough.
    PlainSound inside = plain;
    inside.values = plain.part(range.first, range.end);
    const auto silences = inside.silences(threshold, 1);
    for (auto silence = silences.rbegin(); silence != silences.rend(); ++silence)
        if (silence->first == 0 || silence->end == range.end - range.first ||
            silence->end - silence->first >= minimum)
            plain.edit({Edit::Remove, range.first + silence->first, range.first + silence->end});
    RC_ASSERT(timeline.frames() == plain.frames());
    same(samplesOf(timeline, 0, timeline.frames()), plain.values);
}

constexpr float kFar = std::numeric_limits<float>::max();

// The range that a column must show at least for a piece, which is the extremes of its samples, or
// with `outward` the range it may show at most. A narrow column comes from samples, a wide one from
// peaks, which are rounded outward, limited to full scale, and may extend beyond the piece.
PeakRange shown(const PlainSound& source, int channel, const Piece& piece, bool wide,
                bool outward) {
    if (piece.silent()) return {};
    const std::int64_t slack =
        wide && outward ? std::max(Peaks::kFinestFrames, piece.count / 2) : 0;
    const double step = wide && outward ? 1.01 / 32768.0 * std::abs(piece.gain) : 0.0;
    const std::int64_t end = std::min(piece.source + piece.count + slack, source.frames());
    PeakRange range{kFar, -kFar};
    for (auto at = std::max<std::int64_t>(piece.source - slack, 0); at < end; ++at) {
        double value = source.values[at * source.channels + channel];
        if (wide) value = std::clamp(value, -1.0, 32767.0 / 32768.0);
        range = {std::min(range.minimum, static_cast<float>(value * piece.gain - step)),
                 std::max(range.maximum, static_cast<float>(value * piece.gain + step))};
    }
    return range;
}

RC_GTEST_PROP(Laws, ColumnsCoverTheirSamplesAndExceedThemByAPeakAtMost, ()) {
    const auto [timeline, plain] = drawnTwins();
    const PlainSound source(*timeline.source());
    const int channel = *rc::gen::inRange(0, plain.channels);
    const double width = *rc::gen::element(0.3, 1.0, 17.5, 511.0, 600.0, 9000.0, 70'000.0);
    const double begin = static_cast<double>(drawnPlace(plain.frames())) - 2.5 * width;
    std::vector<PeakRange> columns(12);
    RC_ASSERT(timeline.columns(channel, begin, begin + 12 * width, columns));
    const auto edge = [&](std::size_t i) {
        return std::floor(begin + static_cast<double>(i) * width);
    };
    const auto cut = [&](double frame) {
        return static_cast<std::int64_t>(
            std::clamp(frame, 0.0, static_cast<double>(plain.frames())));
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto pieces =
            timeline.pieces(cut(edge(i)), cut(std::max(edge(i + 1), edge(i) + 1.0)));
        PeakRange least{pieces.empty() ? 0 : kFar, pieces.empty() ? 0 : -kFar}, most = least;
        for (const Piece& piece : pieces)
            for (PeakRange* const range : {&least, &most}) {
                const PeakRange more = shown(source, channel, piece,
                                             width >= 2.0 * Peaks::kFinestFrames, range == &most);
                *range = {std::min(range->minimum, more.minimum),
                          std::max(range->maximum, more.maximum)};
            }
        RC_ASSERT(columns[i].minimum <= least.minimum);
        RC_ASSERT(columns[i].maximum >= least.maximum);
        RC_ASSERT(columns[i].minimum >= most.minimum);
        RC_ASSERT(columns[i].maximum <= most.maximum);
    }
}

}  // namespace
}  // namespace tarnwick::sound
