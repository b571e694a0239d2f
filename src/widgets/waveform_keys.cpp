#include "widgets/waveform_keys.h"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "engine/sound_events.h"
#include "widgets/waveform_painter.h"

namespace tarnwick::widgets {

namespace {

constexpr int kStepPixels = 10;
constexpr int kFineStepPixels = 1;

}  // namespace

bool WaveformKeys::press(const QKeyEvent& event, double msPerPixel) {
    if (waveform_.channels() == 0 || event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    if (event.matches(QKeySequence::SelectAll)) {
        hand_.select(0, waveform_.duration());
        return true;
    }
    if (event.key() == Qt::Key_Escape) {
        if (!hand_.stretch()) return false;
        waveform_.notifyMouse(engine::kMouseClearsSelection);
        return true;
    }
    return moveCaret(event, msPerPixel) || moveView(event);
}

bool WaveformKeys::moveCaret(const QKeyEvent& event, double msPerPixel) {
    const bool fine = event.modifiers().testFlag(Qt::ControlModifier);
    const int pixels = fine ? kFineStepPixels : kStepPixels;
    const auto step = static_cast<qint32>(std::max(std::nearbyint(pixels * msPerPixel), 1.0));
    // The first step starts from the play position, or else from the left edge of the view.
    const double seen = std::max(shownRange(waveform_).beginMs, 0.0);
    const double heard = waveform_.playPosition();
    const qint32 from =
        hand_.stretch() ? hand_.caret() : static_cast<qint32>(heard >= 0.0 ? heard : seen);
    qint32 to = 0;
    switch (event.key()) {
        case Qt::Key_Left:
            to = from - std::min(from, step);
            break;
        case Qt::Key_Right:
            to = from + std::min(waveform_.duration() - from, step);
            break;
        case Qt::Key_Home:
            break;
        case Qt::Key_End:
            to = waveform_.duration();
            break;
        default:
            return false;
    }
    if (event.modifiers().testFlag(Qt::ShiftModifier))
        hand_.select(hand_.stretch() ? hand_.anchor() : from, to);
    else
        hand_.place(to);
    navigation_.show(to);
    return true;
}

bool WaveformKeys::moveView(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_PageUp:
            navigation_.scrollByViews(-1.0);
            return true;
        case Qt::Key_PageDown:
            navigation_.scrollByViews(1.0);
            return true;
        case Qt::Key_Up:
        case Qt::Key_Plus:
        case Qt::Key_Equal:  // the plus key without Shift on many keyboards
            waveform_.ZoomIn();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Minus:
            waveform_.ZoomOut();
            return true;
        default:
            return false;
    }
}

}  // namespace tarnwick::widgets
