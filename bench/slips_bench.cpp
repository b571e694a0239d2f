#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "segmentation/likely_slips.h"

// What a scan adds for the likely slips.

namespace {

using namespace tarnwick;

// 500 rows against 505 stretches: five prompts have a pause inside.
void likelySlips(benchmark::State& state) {
    std::mt19937 random(7);
    std::lognormal_distribution<> words(2.2, 0.55), pace(0.0, 0.18);
    segmentation::SlipQuestion question{{}, {}, {}, 1500.0};
    for (int row = 0; row < 500; ++row) {
        const double count = std::clamp(std::round(words(random)), 1.0, 40.0);
        question.words.push_back(count);
        question.letters.push_back(std::round(count * 4.8 * pace(random)));
        const double length = 250 + count * 370 * pace(random);
        const bool split = row % 100 == 50;
        question.lengths.push_back(split ? 0.4 * length : length);
        if (split) question.lengths.push_back(0.6 * length);
    }
    std::size_t found = 0;
    for (auto _ : state)
        found = segmentation::likelySlips(question).size();
    state.counters["found"] = double(found);
}
BENCHMARK(likelySlips)->Unit(benchmark::kMillisecond);

}  // namespace
