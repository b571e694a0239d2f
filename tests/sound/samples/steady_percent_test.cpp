#include "sound/samples/steady_percent.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace tarnwick::sound {
namespace {

TEST(SteadyPercent, RisesFrom0To100AndTellsEachPercentOnce) {
    const std::tuple<std::int64_t, std::vector<std::int64_t>, std::vector<int>> cases[] = {
        {0, {0, 5}, {0, 100}},
        {1, {-1, 0, 1}, {0, 100}},
        {3, {1, 1, 2, 1, 3, 4}, {33, 66, 100}},
        {1000, {9, 10, 19, 20, 999, 1000}, {0, 1, 2, 99, 100}}};
    for (const auto& [whole, done, wanted] : cases) {
        std::vector<int> percents;
        const Progress progress{[&](int percent) { percents.push_back(percent); }, {}};
        SteadyPercent percent(progress, whole);
        for (const std::int64_t each : done)
            percent.reached(each);
        EXPECT_EQ(percents, wanted) << whole;
    }
}

}  // namespace
}  // namespace tarnwick::sound
