#include "segmentation/reading_pace.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::segmentation {

namespace {

constexpr double kFirstSpread = 0.35;
constexpr double kLeastSpread = 0.08;          // of a very steady talent; less would trust every ms
constexpr double kDeviationToSpread = 1.4826;  // of a normal distribution
constexpr double kMostLeadMs = 600.0;
constexpr double kLeadStepMs = 75.0;
constexpr std::size_t kLeastRows = 8;

double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

Deviation deviationOf(std::vector<double> values) {
    const double middle = median(values);
    for (double& value : values)
        value = std::abs(value - middle);
    return {middle, std::max(kDeviationToSpread * median(values), kLeastSpread)};
}

ReadingPace firstPace(const std::vector<double>& loads, const std::vector<double>& lengthsMs) {
    std::vector<double> load = loads, length = lengthsMs;
    return {0.0, median(length) / median(load), kFirstSpread};
}

ReadingPace fittedPace(const std::vector<ReadRow>& rows, const ReadingPace& before) {
    if (rows.size() < kLeastRows) return before;
    ReadingPace best = before;
    double least = 0.0;
    std::vector<double> values(rows.size());
    for (double lead = 0.0; lead <= kMostLeadMs; lead += kLeadStepMs) {
        std::ranges::transform(rows, values.begin(), [&](const ReadRow& row) {
            return std::max(row.second - lead, 1.0) / row.first;
        });
        ReadingPace pace{lead, median(values), 0.0};
        std::ranges::transform(rows, values.begin(), [&](const ReadRow& row) {
            return std::abs(std::log(row.second / pace.projectedMs(row.first)));
        });
        pace.spread = std::max(kDeviationToSpread * median(values), kLeastSpread);
        if (lead == 0.0 || pace.spread < least) {
            best = pace;
            least = pace.spread;
        }
    }
    return best;
}

}  // namespace tarnwick::segmentation
