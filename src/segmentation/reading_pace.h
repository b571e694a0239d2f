#pragma once

#include <utility>
#include <vector>

namespace tarnwick::segmentation {

// How long a talent takes for a prompt: `leadMs` + load x `unitMs`, where the load is the number of
// words or letters, times a factor whose logarithm is normally distributed around 0 with the
// standard deviation `spread`.
struct ReadingPace {
    double leadMs = 0.0;
    double unitMs = 1.0;
    double spread = 1.0;

    double projectedMs(double load) const { return leadMs + load * unitMs; }
};

// The median of some values, at least one, and a robust estimate of their standard deviation.
struct Deviation {
    double median;
    double spread;
};
Deviation deviationOf(std::vector<double> values);

// A load and the length in ms of the stretch of speech that belongs to it, both above 0.
using ReadRow = std::pair<double, double>;

// A first estimate from loads and lengths that may not belong together, by their medians, with a
// spread that is wide on purpose. Neither list may be empty.
ReadingPace firstPace(const std::vector<double>& loads, const std::vector<double>& lengthsMs);

// The pace of rows that mostly belong together: unit and spread by median and median absolute
// deviation, which a minority of wrong rows does not move (Huber and Ronchetti, "Robust
// Statistics", 2nd ed., 2009, chapter 5); the lead is the one that leaves the smallest spread.
// Returns `before` for fewer than 8 rows.
ReadingPace fittedPace(const std::vector<ReadRow>& rows, const ReadingPace& before);

}  // namespace tarnwick::segmentation
