#pragma once

#include <QtGlobal>
#include <optional>
#include <span>
#include <vector>

#include "engine/silence_ms.h"
#include "widgets/waveform_geometry.h"

// Finds the silences of a sound, the stretches of speech between them and the marks over them at
// places of a picture. Pure arithmetic, without widgets. A sound may have many thousands of
// silences, so the visible ones are found by binary search.
//
// Stretch i lies between the silences i-1 and i, counting silences from 0 and stretches from 1.

namespace tarnwick::widgets {

using Silences = std::span<const engine::SilenceMs>;  // in order, none overlaps another

// Numbers of stretches; `last` is less than `first` if there are none.
struct StretchRange {
    int first;
    int last;

    friend bool operator==(const StretchRange&, const StretchRange&) = default;
};

// The stretches of which a part lies in the view.
StretchRange stretchesIn(Silences silences, const TimeRange& view);

// The times of a stretch; none if there is no stretch of that number.
std::optional<TimeRange> stretchTimes(Silences silences, int stretch);

// The stretch that contains `ms`, or 0 in a silence and outside the first and last silence.
int stretchAt(Silences silences, double ms);

// The share of each of `columns` equal parts of the view that silences cover, 0.0 to 1.0.
std::vector<float> coverage(Silences silences, const TimeRange& view, int columns);

// Where the text of a stretch's number would stand, in pixels.
struct NumberPlace {
    int number;
    double left;
    double right;
};

// The smallest of 1, 2, 5, 10, 20, 50 ... whose multiples among the places stay at least `gap`
// pixels apart. The places are in order.
int numberStep(std::span<const NumberPlace> places, double gap);

// The index of the mark that is nearest to `ms`; none without marks. `marksMs` ascends.
std::optional<int> nearestMark(const std::vector<qint32>& marksMs, double ms);

}  // namespace tarnwick::widgets
