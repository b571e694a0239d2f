#include "widgets/waveform_geometry.h"

#include <gtest/gtest.h>

#include <QFontMetrics>
#include <QPalette>

#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"
#include "widgets/waveform_scales.h"

namespace tarnwick::widgets {
namespace {

QPalette paletteOf(const QColor& base, const QColor& text, const QColor& accent) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, accent);
    return palette;
}

TEST(WaveformGeometry, ZoomKeepsTheTimeUnderThePointerInsideTheSound) {
    const struct {
        TimeRange view;
        double factor, fixed, duration, begin, end;
    } cases[] = {
        {{0, 1000}, 0.5, 500, 10000, 250, 750},
        {{0, 1000}, 0.5, 0, 10000, 0, 500},
        {{1000, 2000}, 2.0, 1250, 10000, 750, 2750},
        {{0, 1000}, 4.0, 900, 10000, 0, 4000},           // would begin before the sound
        {{9000, 10000}, 2.0, 9100, 10000, 8000, 10000},  // would end after it
        {{0, 8000}, 2.0, 4000, 10000, 0, 10000},
        {{1000, 5977}, 2.0, 0, 10000, 0, 10000},  // a rounded step short of the whole
        {{0, 4975}, 2.0, 0, 10000, 0, 9950},      // further from it
        {{0, 9960}, 1.0, 0, 10000, 0, 9960},
        {{0, 9800}, 1.02, 0, 10000, 0, 10000},
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
    EXPECT_EQ(visibleRange(500, -1, 4000), (TimeRange{500, 4000}));
    EXPECT_EQ(visibleRange(500, 500, 4000), (TimeRange{500, 501}));
    const std::tuple<TimeRange, double, double> scrolls[] = {{{1000, 2000}, -3000, 0},
                                                             {{0, 20000}, 300, 0},
                                                             {{8500, 9500}, 3000, 9000},
                                                             {{9800, 10800}, 300, 9800},
                                                             {{9800, 10800}, -300, 9500}};
    for (const auto& [view, by, begin] : scrolls)
        EXPECT_EQ(scrolled(view, by, 10000), (TimeRange{begin, begin + view.endMs - view.beginMs}))
            << begin;
    const std::pair<double, double> shown[] = {
        {900, 800}, {1000, 1000}, {2000, 1000}, {2300, 1400}};
    for (const auto& [ms, begin] : shown)
        EXPECT_EQ(showing({1000, 2000}, ms, 10000), (TimeRange{begin, begin + 1000})) << ms;
}

TEST(WaveformGeometry, ASampleLiesInTheBandOfItsChannel) {
    EXPECT_EQ(TimeAxis({0, 100}, 0, 0).msPerPixel(), 100);
    const int rows[][2] = {{5, 37}, {38, 70}, {71, 104}};
    for (int channel = 0; channel < 3; ++channel) {
        const ChannelBand band(channel, 3, 5, 100);
        EXPECT_EQ(band.top(), rows[channel][0]);
        EXPECT_EQ(band.bottom(), rows[channel][1]);
        EXPECT_EQ(band.rowOf(1.0f, 1.0f), band.top());
        EXPECT_EQ(band.rowOf(-0.1f, 20.0f), band.bottom()) << "stays in it";
    }
    const ChannelBand band(0, 1, 10, 201);
    EXPECT_EQ(band.zeroRow(), 110);
    EXPECT_EQ(band.yOf(0.25f, 2.0f), 60.0);
    EXPECT_EQ(band.yOf(-0.125f, 2.0f), 135.0);
}

TEST(WaveformLayout, ItsPartsFillTheFrameAtAnyDensity) {
    QFont font;
    font.setPixelSize(20);
    const QRect part(5, 7, 30, 20);
    const struct {
        double ratio;
        int hair;
        QRect logical, device;  // what the part touches
    } rows[] = {{1.0, 1, part, part},
                {1.5, 1, {2, 4, 22, 15}, {6, 9, 48, 33}},
                {2.0, 2, {2, 3, 16, 11}, {10, 14, 60, 40}},
                {3.0, 3, {1, 2, 11, 7}, {15, 21, 90, 60}}};
    for (const auto& [ratio, hair, logical, device] : rows) {
        const WaveformLayout layout({400, 200}, ratio, engine::WaveformSettings(), font, true);
        const auto pixels = [&, one = ratio](int count) { return qRound(count * one); };
        const QRect wave = layout.wave();
        const QRect inside(2 * hair, 2 * hair, pixels(400) - 4 * hair, pixels(200) - 4 * hair);
        const QFontMetrics text(layout.font());
        EXPECT_EQ(layout.font().pixelSize(), pixels(18));
        EXPECT_EQ(layout.hair(), hair);
        EXPECT_EQ(layout.pixels(0.1), 1);
        EXPECT_EQ(layout.strip(),
                  QRect(wave.left(), inside.top(), wave.width(), text.height() + pixels(3)));
        EXPECT_EQ(layout.ruler(),
                  QRect(wave.left(), wave.bottom() + 1, wave.width(), text.height() + pixels(5)));
        EXPECT_EQ(layout.levels(),
                  QRect(inside.left(), wave.top(),
                        text.horizontalAdvance(QStringLiteral("−00")) + pixels(10), wave.height()));
        EXPECT_EQ(wave.left(), layout.levels().right() + 1);
        EXPECT_EQ(layout.strip().united(layout.ruler()).united(layout.levels()), inside);
        EXPECT_EQ(layout.logicalAxis({0, 9}).left(), wave.left() / ratio);
        EXPECT_EQ(layout.logical(part), logical) << ratio;
        EXPECT_EQ(layout.device(part), device) << ratio;
    }
}

TEST(WaveformGeometry, RulerStepsAreRoundTimesWideEnoughToRead) {
    const struct {
        double msPerPixel;
        qint32 step, minor, at;
        const char* text;
    } cases[] = {{0.01, 1, 1, 61007, "1:01.007"},     {1.0, 100, 10, 1900, "0:01.900"},
                 {9.0, 1000, 100, 65000, "1:05"},     {130.0, 15000, 1000, 3605000, "1:00:05"},
                 {300.0, 30000, 5000, 0, "0:00"},     {5000.0, 600000, 60000, 3600000, "1:00:00"},
                 {1e9, 86400000, 86400000, 0, "0:00"}};
    qint32 last = 0;
    for (const qint32 step :
         {1,      2,      5,       10,      20,      50,       100,     200,    500,
          1000,   2000,   5000,    10000,   15000,   30000,    60000,   120000, 300000,
          600000, 900000, 1800000, 3600000, 7200000, 21600000, 86400000}) {
        EXPECT_EQ(rulerStepMs(0.5, 2 * step), step);
        EXPECT_EQ(rulerStepMs(0.5, 2 * last + 1), step);
        last = step;
    }
    EXPECT_EQ(rulerMinorStepMs(10, 1.0, 5), 5);
    EXPECT_EQ(rulerText(6345777, 1).toStdString(), "1:45:45.777");
    for (const auto& c : cases) {
        EXPECT_EQ(rulerStepMs(c.msPerPixel, 80), c.step) << c.msPerPixel;
        EXPECT_EQ(rulerMinorStepMs(c.step, c.msPerPixel, 7), c.minor) << c.msPerPixel;
        EXPECT_EQ(rulerText(c.at, c.step).toStdString(), c.text);
    }
}

TEST(WaveformColoursTest, StandOutWhateverThePalette) {
    EXPECT_NEAR(contrast(Qt::white, QColor(118, 118, 118)), 4.542, 0.0005);
    EXPECT_NEAR(contrast(Qt::black, Qt::red), 5.252, 0.0005);
    EXPECT_NEAR(contrast(Qt::black, Qt::green), 15.304, 0.0005);
    EXPECT_NEAR(contrast(Qt::blue, Qt::black), 2.444, 0.0005);
    EXPECT_NEAR(contrast(QColor(9, 9, 9), Qt::black), 1.055, 0.0005) << "the linear part";
    const struct {
        QColor base, text, accent;
    } palettes[] = {{Qt::white, Qt::black, QColor(48, 140, 198)},
                    {QColor(25, 25, 25), Qt::white, QColor(42, 130, 218)},
                    {Qt::black, Qt::yellow, Qt::green},
                    {Qt::black, Qt::white, QColor(0, 0, 128)},
                    {Qt::white, Qt::black, Qt::yellow},
                    {Qt::white, Qt::black, QColor(255, 250, 160)},  // a nearly invisible accent
                    {QColor(248, 240, 220), QColor(51, 51, 51), QColor(255, 136, 0)},
                    {QColor(40, 40, 40), QColor(220, 220, 220), QColor(45, 45, 60)},
                    {QColor(110, 110, 110), Qt::white, Qt::white},  // one that hides the wave
                    {QColor(128, 128, 128), Qt::black, Qt::gray}};
    for (const auto& p : palettes) {
        const WaveformColours c(paletteOf(p.base, p.text, p.accent));
        const std::tuple<QColor, QColor, double> pairs[] = {
            {c.wave, c.background, 3.0},
            {c.selected(c.wave), c.selected(c.background), 3.0},
            {c.wave, c.band, 3.0},
            {c.selected(c.wave), c.selected(c.band), 3.0},
            {c.clipped, c.background, 3.0},
            {c.selectionEdge, c.background, 3.0},
            {c.cursor, c.background, 3.0},
            {c.focus, c.background, 3.0},
            {c.slip, c.background, 3.0},
            {c.slip, c.band, 3.0},
            {c.selected(c.slip), c.selected(c.band), 3.0},
            {c.pressed, c.scaleGround, 3.0},
            {c.flagged, c.scaleGround, 4.5},
            {c.ruler, c.scaleGround, 4.5}};
        for (const auto& [colour, ground, least] : pairs)
            EXPECT_GE(contrast(colour, ground), least)
                << colour.name().toStdString() << " on " << ground.name().toStdString();
        EXPECT_NE(c.band, c.background);
    }
}

TEST(WaveformColoursTest, AreThoseOfTheDesign) {
    const auto told = [](const QColor& base, const QColor& text, const QColor& accent) {
        const WaveformColours c(paletteOf(base, text, accent));
        std::string names;
        for (const QColor& colour :
             {c.background, c.outside, c.frame, c.focus, c.wave, c.clipped, c.zeroLine,
              c.scaleGround, c.ruler, c.selection, c.selectionEdge, c.cursor, c.playHead, c.band,
              c.flagged, c.pressed, c.slip})
            names += ' ' + colour.name().mid(1).toStdString();
        return names.substr(1);
    };
    EXPECT_EQ(told(Qt::white, Qt::black, QColor(48, 140, 198)),
              "ffffff e6e6e6 b3b3b3 308cc6 26709e cc1e1e bfbfbf f5f5f5 4d4d4d b4d6ea 308cc6 000000 "
              "cc1e1e e8e8e8 cc0000 308cc6 b36200");
    EXPECT_EQ(told(QColor(25, 25, 25), Qt::white, QColor(42, 130, 218)),
              "191919 303030 5e5e5e 2a82da 559be1 ff6b6b 535353 222222 bababa 0f2f4e 2a82da ffffff "
              "ff6b6b 323232 ff4d4d 2a82da ff8c00");
    EXPECT_EQ(told(Qt::white, Qt::black, QColor(255, 200, 0)),
              "ffffff e6e6e6 b3b3b3 b38c00 8f7000 cc1e1e bfbfbf f5f5f5 4d4d4d ffeba3 b38c00 000000 "
              "cc1e1e e8e8e8 cc0000 997800 b36200")
        << "an accent too light";
}

}  // namespace
}  // namespace tarnwick::widgets
