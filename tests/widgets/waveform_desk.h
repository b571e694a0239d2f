#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "support/scripted_waveform.h"
#include "support/wait_until.h"
#include "widgets/waveform_view.h"

namespace tarnwick::widgets {

// A view of ten seconds without scales. The wave is 1000 x 201 pixels inside a frame of 2, so 10 ms
// are one pixel. Coordinates count from the corner of the wave.
class WaveformDesk : public testing::Test {
  protected:
    static constexpr int kFrame = 2;
    using Numbers = std::vector<qint32>;

    test::ScriptedWaveform waveform;
    WaveformView view{waveform};

    void SetUp() override {
        view.resize(1000 + 2 * kFrame, 201 + 2 * kFrame);
        waveform.settings.setByteAt(engine::WaveformSettings::kHideRuler, 1);
        waveform.settings.setByteAt(engine::WaveformSettings::kHideLevels, 1);
    }

    QImage picture(double ratio = 1.0) {
        QImage image(view.size() * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        view.render(&image);
        return image;
    }
    QColor at(int x, int y) { return picture().pixelColor(x + kFrame, y + kFrame); }
    WaveformColours colours() const { return WaveformColours(view.palette()); }

    // A letter for the colour of a pixel. In the selection, the background is ':', the wave '%',
    // the zero line '=' and clipping '*'. 'x' is a blend of two colours that is visible.
    char letterOf(const QColor& colour) const {
        const WaveformColours c = colours();
        const std::pair<QColor, char> letters[] = {
            {c.background, '.'},    {c.selected(c.background), ':'},
            {c.wave, '#'},          {c.selected(c.wave), '%'},
            {c.zeroLine, '-'},      {c.selected(c.zeroLine), '='},
            {c.clipped, '!'},       {c.selected(c.clipped), '*'},  // and the play head
            {c.selectionEdge, '|'}, {c.cursor, 'c'},               // and the pressed stretch
            {c.outside, ' '},       {c.scaleGround, '_'},
            {c.frame, '+'},         {c.band, '~'},
            {c.slip, 'v'}};
        const auto found = std::ranges::find(letters, colour, [](auto& l) { return l.first; });
        if (found != std::end(letters)) return found->second;
        return contrast(colour, c.background) > 2.0 ? 'x' : '.';
    }
    // Rows of the picture as text, a line for each.
    std::string drawn(double ratio = 1.0, int top = 0, int rows = INT_MAX) {
        const QImage image = picture(ratio);
        std::string text = "\n";
        for (int y = top; y < image.height() && y - top < rows; ++y) {
            for (int x = 0; x < image.width(); ++x)
                text += letterOf(image.pixelColor(x, y));
            text += '\n';
        }
        return text;
    }
    // The letters at some places.
    std::string seen(std::initializer_list<QPoint> places) {
        const QImage image = picture();
        std::string text;
        for (const QPoint& place : places)
            text += letterOf(image.pixelColor(place + QPoint(kFrame, kFrame)));
        return text;
    }
    // A press, moves and a release with the left button.
    void drag(double from, const std::vector<double>& over, double to,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        press(from, modifiers);
        for (const double x : over)
            move(x);
        release(to);
    }

    void mouse(QEvent::Type type, Qt::MouseButton button, double x,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF place(x + kFrame, 50);
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
        QMouseEvent event(type, place, place, button, held, modifiers);
        QCoreApplication::sendEvent(&view, &event);
    }
    void press(double x, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        mouse(QEvent::MouseButtonPress, Qt::LeftButton, x, modifiers);
    }
    void move(double x) { mouse(QEvent::MouseMove, Qt::LeftButton, x); }
    void hover(double x) { mouse(QEvent::MouseMove, Qt::NoButton, x); }
    void release(double x) { mouse(QEvent::MouseButtonRelease, Qt::LeftButton, x); }
    void wheel(const QPoint& turn, double x, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF place(x + kFrame, 50);
        QWheelEvent event(place, place, QPoint(), turn, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&view, &event);
    }
    void wheel(int turn, double x, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        wheel(QPoint(0, turn), x, modifiers);
    }
    // The timer that runs now; null when none does.
    QTimer* ticking() const {
        const auto timers = view.findChildren<QTimer*>();
        const auto active = std::ranges::find_if(timers, &QTimer::isActive);
        return active == timers.end() ? nullptr : *active;
    }
    bool key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }
    Numbers selection() const {
        return {waveform.selected, waveform.selectionBegin, waveform.selectionEnd};
    }
    Numbers range() const { return {waveform.rangeBegin, waveform.rangeEnd}; }
};

}  // namespace tarnwick::widgets
