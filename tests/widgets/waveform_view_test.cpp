#include "widgets/waveform_view.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWheelEvent>

#include "widgets/scripted_waveform.h"
#include "widgets/waveform_colours.h"

namespace tarnwick::widgets {
namespace {

// A view of ten seconds on 1000 x 201 pixels: 10 ms are a pixel.
class WaveformViewTest : public testing::Test {
  protected:
    ScriptedWaveform waveform;
    WaveformView view{waveform};

    void SetUp() override { view.resize(1000, 201); }

    QImage picture() { return view.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QColor at(int x, int y) { return picture().pixelColor(x, y); }
    WaveformColours colours() const { return WaveformColours(view.palette()); }

    void mouse(QEvent::Type type, Qt::MouseButton button, double x) {
        QMouseEvent event(type, QPointF(x, 50), QPointF(x, 50), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    }
    void wheel(int turn, double x, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWheelEvent event(QPointF(x, 50), QPointF(x, 50), QPoint(), QPoint(0, turn), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }
    void press(Qt::MouseButton button, double x) { mouse(QEvent::MouseButtonPress, button, x); }
    void move(double x) { mouse(QEvent::MouseMove, Qt::LeftButton, x); }
    void release(double x) { mouse(QEvent::MouseButtonRelease, Qt::LeftButton, x); }
    using Numbers = std::vector<qint32>;
    Numbers selection() const {
        return {waveform.selected, waveform.selectionBegin, waveform.selectionEnd};
    }
    Numbers range() const { return {waveform.rangeBegin, waveform.rangeEnd}; }
};

TEST_F(WaveformViewTest, ClickSetsTheCursorAndDragSelectsInEitherDirection) {
    press(Qt::LeftButton, 300);
    move(301);  // a hand is not that steady
    release(301);
    EXPECT_EQ(selection(), (Numbers{1, 3000, 3000}));

    press(Qt::LeftButton, 400);
    move(150);
    EXPECT_EQ(selection(), (Numbers{1, 1500, 4000}));
    release(2000);
    EXPECT_EQ(selection(), (Numbers{1, 4000, 10000}));

    press(Qt::RightButton, 100);
    EXPECT_EQ(waveform.notifications, std::vector<qint16>{3});
    EXPECT_EQ(selection(), (Numbers{1, 4000, 10000})) << "clearing is the owner's decision";
}

TEST_F(WaveformViewTest, WheelZoomsAtThePointerAndScrollsWithShift) {
    wheel(240, 500);
    EXPECT_EQ(range(), (Numbers{2500, 7500}));
    wheel(-120, 0, Qt::ShiftModifier);
    EXPECT_EQ(range(), (Numbers{3000, 8000}));
    for (int i = 0; i < 16; ++i)
        wheel(-15, 500);  // a fine wheel adds up
    EXPECT_EQ(range(), (Numbers{0, -1}));
}

TEST_F(WaveformViewTest, PaintsTheWaveWhereThePeaksAre) {
    EXPECT_EQ(at(100, 60), colours().wave);
    EXPECT_EQ(at(100, 40), colours().background);  // above half of full scale
    EXPECT_EQ(at(700, 60), colours().background);  // silent there
    EXPECT_EQ(at(700, 100), colours().wave);
    waveform.channelCount = 2;
    waveform.SetDisplayRange(2500, 12500);
    EXPECT_EQ(at(100, 60), colours().wave);
    EXPECT_EQ(at(100, 100), colours().frame) << "between the channels";
    EXPECT_EQ(at(900, 60), colours().outside);
    waveform.settings.setVerticalScale(2.0f);
    waveform.SetDisplayRange(0, -1);
    EXPECT_EQ(at(100, 5), colours().wave);
}

TEST_F(WaveformViewTest, RulerAndLevelsStandOutsideTheWave) {
    waveform.settings.setByteAt(engine::WaveformSettings::kShowRuler, 1);
    waveform.settings.setByteAt(engine::WaveformSettings::kShowLevels, 1);
    waveform.swing = 1.0f;
    waveform.SetDisplayRange(0, -1);
    EXPECT_EQ(at(10, 20), colours().background);
    EXPECT_EQ(at(200, 195), colours().background);
    EXPECT_EQ(at(200, 30), colours().wave);
    press(Qt::LeftButton, 36);
    release(36);
    EXPECT_EQ(waveform.selectionBegin, 0);
}

TEST_F(WaveformViewTest, WithoutASoundNothingIsPaintedAndNoGestureDoesAnything) {
    waveform.channelCount = 0;
    const QImage image = picture();
    for (int x = 1; x < 999; x += 7)
        EXPECT_EQ(image.pixelColor(x, 100), colours().outside) << x;
    press(Qt::LeftButton, 300);
    release(300);
    press(Qt::RightButton, 300);
    wheel(120, 300);
    EXPECT_EQ(selection(), (Numbers{0, 0, 0}));
    EXPECT_TRUE(waveform.notifications.empty());
    EXPECT_EQ(waveform.rangeEnd, -1);
}

TEST_F(WaveformViewTest, SelectionCursorAndPlayHeadAreDrawnOverTheKeptPicture) {
    waveform.SetSelection(1, 6000, 8000);
    EXPECT_EQ(at(600, 50), colours().selectionEdge);
    EXPECT_NE(at(700, 50), colours().background);
    waveform.SetSelection(1, 9000, -1);
    EXPECT_NE(at(950, 50), colours().background);
    waveform.SetSelection(1, 6000, 6000);
    EXPECT_EQ(at(600, 50), colours().cursor);

    waveform.renderings = 0;
    auto* timer = view.findChild<QTimer*>();
    waveform.playMs = 7000;
    view.followPlayback();
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(at(700, 50), colours().playHead);
    waveform.playMs = 7500;
    view.followPlayback();
    EXPECT_EQ(at(750, 50), colours().playHead);
    EXPECT_EQ(at(700, 50), colours().background);
    waveform.playMs = -1;
    view.followPlayback();
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(at(750, 50), colours().background);
    EXPECT_EQ(waveform.renderings, 0) << "a moving play head must not draw the wave anew";
}

}  // namespace
}  // namespace tarnwick::widgets
