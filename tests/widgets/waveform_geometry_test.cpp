#include "widgets/waveform_geometry.h"

#include <gtest/gtest.h>

#include "widgets/waveform_painter.h"

namespace tarnwick::widgets {
namespace {

TEST(WaveformGeometry, ZoomKeepsTheTimeUnderThePointerInsideTheSound) {
    const struct {
        TimeRange view;
        double factor, fixed, duration, begin, end;
    } cases[] = {
        {{0, 1000}, 0.5, 500, 10000, 250, 750},
        {{0, 1000}, 0.5, 0, 10000, 0, 500},
        {{1000, 2000}, 2.0, 1250, 10000, 750, 2750},
        {{0, 1000}, 4.0, 900, 10000, 0, 4000},           // would begin before the sound
        {{9000, 10000}, 2.0, 9100, 10000, 8000, 10000},  // would end behind it
        {{0, 8000}, 2.0, 4000, 10000, 0, 10000},
        {{100, 112}, 0.5, 106, 10000, 101, 111},  // not under the least view
        {{0, 4}, 0.5, 2, 4, 0, 4}                 // a sound shorter than that
    };
    for (const auto& c : cases) {
        const TimeRange now = zoomed(c.view, c.factor, c.fixed, c.duration);
        EXPECT_EQ(now.beginMs, c.begin) << c.view.beginMs << " x" << c.factor;
        EXPECT_EQ(now.endMs, c.end) << c.view.beginMs << " x" << c.factor;
    }
}

TEST(WaveformGeometry, ScrollStopsAtTheEndsButLeavesAViewThatIsAlreadyPastTheEnd) {
    EXPECT_DOUBLE_EQ(scrolled({1000, 2000}, -300, 10000).beginMs, 700);
    EXPECT_DOUBLE_EQ(scrolled({1000, 2000}, -3000, 10000).beginMs, 0);
    EXPECT_DOUBLE_EQ(scrolled({8500, 9500}, 3000, 10000).beginMs, 9000);
    EXPECT_DOUBLE_EQ(scrolled({9800, 10800}, 300, 10000).beginMs, 9800);
    EXPECT_DOUBLE_EQ(scrolled({9800, 10800}, -300, 10000).endMs, 10500);
}

TEST(WaveformGeometry, PositionsStayInsideTheSound) {
    const TimeAxis axis({1000, 3000}, 40, 500);
    EXPECT_DOUBLE_EQ(axis.xOf(2000), 290);
    EXPECT_EQ(axis.positionAt(290.3, 10000), 2001);
    EXPECT_EQ(axis.positionAt(-900, 10000), 0);
    EXPECT_EQ(axis.positionAt(540, 2500), 2500);
    EXPECT_DOUBLE_EQ(visibleRange(500, 500, 7000).width(), 1);
}

TEST(WaveformGeometry, RulerStepsAreRoundTimesWideEnoughToRead) {
    const struct {
        double msPerPixel;
        qint32 step, at;
        const char* text;
    } cases[] = {{0.01, 1, 61007, "1:01.007"},         {1.0, 100, 1900, "0:01.900"},
                 {9.0, 1000, 65000, "1:05"},           {130.0, 15000, 3605000, "1:00:05"},
                 {5000.0, 600000, 7800000, "2:10:00"}, {1e9, 86400000, 0, "0:00"}};
    for (const auto& c : cases) {
        EXPECT_EQ(rulerStepMs(c.msPerPixel, 80), c.step) << c.msPerPixel;
        EXPECT_EQ(rulerText(c.at, c.step).toStdString(), c.text);
    }
}

TEST(WaveformGeometry, BandsFillTheHeightAndClipWhatIsScaledPastThem) {
    const ChannelBand upper(0, 2, 10, 101), lower(1, 2, 10, 101);
    EXPECT_EQ(upper.top(), 10);
    EXPECT_EQ(upper.bottom() + 1, lower.top());
    EXPECT_EQ(lower.bottom(), 110);
    const ChannelBand band(0, 1, 0, 101);
    EXPECT_EQ(band.rowOf(0.0f, 1.0f), band.zeroRow());
    EXPECT_EQ(band.rowOf(0.5f, 1.0f), 25);
    EXPECT_EQ(band.rowOf(-0.25f, 2.0f), 75);
    EXPECT_EQ(band.rowOf(0.5f, 5.0f), 0);
    EXPECT_EQ(band.rowOf(-1.0f, 5.0f), 100);
}

}  // namespace
}  // namespace tarnwick::widgets
