#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "sound/samples/steady_percent.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

using testing::ElementsAre;

TEST(SteadyPercent, RisesFromZeroToAHundredAndTellsOfAStop) {
    std::vector<int> told;
    std::stop_source stop;
    const Progress progress{[&](int percent) { told.push_back(percent); }, stop.get_token()};
    SteadyPercent percent(progress, 300);
    for (const int done : {-1, 0, 2, 3, 5, 150, 100, 299, 300, 400})
        percent.reached(done);
    EXPECT_THAT(told, ElementsAre(0, 1, 50, 99, 100));
    told.clear();
    SteadyPercent nothing(progress, 0);  // counts as one unit
    nothing.reached(0);
    nothing.reached(1);
    EXPECT_THAT(told, ElementsAre(0, 100));
    EXPECT_NO_THROW(percent.checkStop());
    stop.request_stop();
    EXPECT_EQ(failureOf([&] { percent.checkStop(); }), SoundFailure::Cancelled);
}

}  // namespace
}  // namespace tarnwick::sound
