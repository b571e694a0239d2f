#include "sound/samples/time.h"

#include <gtest/gtest.h>

namespace tarnwick::sound {
namespace {

TEST(Time, IsRoundedAsEachConversionSays) {
    using Convert = std::int64_t (*)(std::int64_t, int);
    struct Case {
        Convert convert;
        std::int64_t from;
        int rate;
        std::int64_t to;
    };
    const Case cases[] = {{frameAt, 1, 500, 0},          {frameAt, 3, 500, 2},
                          {frameAt, 1500, 44100, 66150}, {frameAt, 5, 44100, 220},
                          {frameAt, 15, 44100, 662},     {frameAt, 7, 44100, 309},
                          {frameFloor, 1, 44100, 44},    {frameFloor, 10, 44100, 441},
                          {frameCeil, 1, 44100, 45},     {frameCeil, 10, 44100, 441},
                          {frameCeil, 1, 1, 1},          {msFloor, 44099, 44100, 999},
                          {msFloor, 44100, 44100, 1000}, {msCeil, 44099, 44100, 1000},
                          {msCeil, 44100, 44100, 1000},  {msCeil, 6, 7, 858}};
    for (const auto& [convert, from, rate, to] : cases)
        EXPECT_EQ(convert(from, rate), to) << from << " at " << rate;
}

}  // namespace
}  // namespace tarnwick::sound
